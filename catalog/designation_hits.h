// The objects one typed designation leads to, before they are read: the
// class readers of the fill by designation collect PIDs here. The file
// lookups may hand back up to 10 numbers (several galaxies under one MCG
// or ESO number), so the list holds more than the three records a caller
// gets; the fill keeps the first three.
#pragma once

#include <cstdint>

inline constexpr int kMaxDesignationHits = 10;

struct DesignationHits {
    uint32_t pids[kMaxDesignationHits] = {};
    int count = 0;
    // For a star named by Bayer, Flamsteed or variable name: the
    // constellation (row + 1) the name was given in, 0 when not known.
    uint32_t nameConstellation = 0;
};

// Appends a PID, once; a full list takes no more. Answers the count.
inline int addDesignationHit(DesignationHits* hits, uint32_t pid) {
    for (int i = 0; i < hits->count; ++i)
        if (hits->pids[i] == pid) return hits->count;
    if (hits->count < kMaxDesignationHits) hits->pids[hits->count++] = pid;
    return hits->count;
}
