// The two derived indexes of the user's star and deep-sky stores: the
// alphabetical index (every non-empty name, upper-cased, with its record
// row, sorted) and the PID index (the record row of each PID at byte PID x
// 4, behind the highest PID). Both may be deleted at any time; they are
// built again from the data file when they are next opened. A failure while
// building or updating one removes it, so a half-written index is never
// read.
#pragma once

#include <cstdint>
#include <cstdio>

#include "base/file_utils.h"
#include "base/record_layout.h"

// What the indexes need of one record.
struct SupplementalKey {
    uint32_t pid = 0;
    char name[33] = {};
};

// The files of one store, and how its data file is read.
struct SupplementalFiles {
    const char* dataPath;
    const char* alphaPath;
    const char* pidPath;
    const char* compactPath;  // the rewritten store before it takes the data file's place
    // Whether recording a PID while no PID index exists builds it at once
    // (the star store) or fails and leaves it to the next open (the deep-sky
    // store).
    bool rebuildOnRecord;
    // The number of records, and the key of a row, read from the data file.
    int (*readCount)(FILE* data, long* countOut);
    int (*readKey)(FILE* data, long row, SupplementalKey* keyOut);
};

// One entry of the alphabetical index.
struct AlphaEntry {
    char name[33] = {};  // upper case
    uint32_t row = 0;
};

struct AlphaEntryLayout {
    static constexpr size_t kSize = 37;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.Text(0, r.name);
        io.U32(33, r.row);
    }
};
static_assert(LayoutIsPacked<AlphaEntryLayout, AlphaEntry>());

inline constexpr long kAlphaHeaderSize = 4;  // u32 entry count
inline constexpr long kPidIndexHeaderSize = 4;  // u32 highest PID

// The name as text: at most 33 bytes, with or without its terminator.
void supplementalNameText(const char (&name)[33], char (&out)[34]);

// Opens the alphabetical index, building it from `data` when it can't be
// opened. Null when it can be neither opened nor built; `countOut` gets the
// number of entries.
FilePtr openAlpha(const SupplementalFiles& files, FILE* data, long* countOut);

// Searches the index for an entry that begins with the text, without case:
// a bisection that stops at the first entry it meets that matches, so of
// several such entries it finds one, not the first. 1 with the entry, 0
// when none matches, -1 on a read failure.
int searchAlpha(FILE* alpha, long count, const char* text, AlphaEntry* entryOut);

// Opens the PID index, building it from `data` when it can't be opened.
// Null when it can be neither opened nor built; `highestOut` gets the
// highest PID it holds.
FilePtr openPidIndex(const SupplementalFiles& files, FILE* data, uint32_t* highestOut);

// The row slot of `pid`: 1 with the row, 0 when the PID lies above the
// highest or has no slot, -1 on a read failure. A gap reads as row 0.
int readPidSlot(FILE* index, uint32_t highest, uint32_t pid, uint32_t* rowOut);

// Writes the row of `pid` into the index and raises its highest PID when
// `pid` is above it. A PID below 1 does nothing and answers 1. Without an
// index, the star store builds one (which takes in the new record) and the
// deep-sky store answers 0. On a failure the index is removed.
int recordPid(const SupplementalFiles& files, FILE* data, uint32_t pid, long row);

void dropAlpha(const SupplementalFiles& files);
void dropPidIndex(const SupplementalFiles& files);
void dropSupplementalIndexes(const SupplementalFiles& files);
