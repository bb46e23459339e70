// The designation kinds of the classes: which catalogue the user named an
// object by, numbered from 1 in the class's list (0 is none). Each list's
// titles are rows of the string table from the class's base. Open clusters
// also carry a family code, the row of `ClusterFamilyTable` that their
// records and `oc_cross` use; most kinds stand for one family.
#pragma once

#include <cstdint>

// How many kinds a class has and where its titles start in the string
// table; count 0 for the classes whose objects are found by name alone.
struct DesignationKindList {
    int count = 0;
    int stringBase = 0;
};

DesignationKindList designationKindList(int objectClass);

// The title of a kind ("Bayer", "NGC", "Berkeley" ...); "" for a kind the
// class doesn't have.
const char* designationKindTitle(int objectClass, int kind);

inline constexpr int kClusterFamilies = 56;
inline constexpr int kClusterFamilyWidth = 23;
inline constexpr int kOpenClusterKinds = 53;

// The family words, row = family code.
extern const char ClusterFamilyTable[kClusterFamilies][kClusterFamilyWidth];

// The word of a family code; "" outside 0 to 55.
const char* clusterFamilyName(int family);

// The family of an open-cluster kind: kind 2 (Messier) 54, 3 (NGC) 0,
// 4 (IC) 1, 6 to 53 the family of that name; -1 for kinds 1 and 5 (common
// name, OCL) and outside 1 to 53.
int familyOfKind(int kind);

// The kind of a family code; 0 for the families no kind names (26
// Trapezium, 27 Pleiades, 32 Hyades, 43 Sigma Ori, 53 C2306+606) and
// outside 0 to 55.
int kindOfFamily(int family);

// The family a typed word names: the first row from 2 to 55 that the word
// is a prefix of, without regard to case. Rows 27, 32, 43 and 54
// (Pleiades, Hyades, Sigma Ori, M) are passed over, and NGC and IC stand
// before the search, so none of those is a family word. Since the word
// need only begin the row, "van den Bergh" finds row 33
// (van den Bergh-Hagen) before row 40. -1 when no row fits, and for an
// empty word.
int findClusterFamily(const char* word);
