// The user's comets (class 13) in "user/comet.bin": a 4-byte head of u16
// record count and u16 last PID issued, then 130-byte comet records, kept
// sorted: numbered comets by number, then the unnumbered ones by IAU
// designation; the rows of one comet (one PID, one row per set of
// elements) stand together in ascending order of epoch. There are no index
// files: a linear walk does the finding.
#pragma once

#include <cstdint>
#include <cstdio>
#include <vector>

#include "base/file_utils.h"
#include "catalog/comet_files.h"
#include "catalog/delete_cascade.h"

inline constexpr char kUserCometPath[] = "user/comet.bin";
inline constexpr char kCometCompactPath[] = "comett.bin";
inline constexpr size_t kUserCometHeadSize = 4;

struct UserCometHead {
    uint16_t count = 0;
    uint16_t lastPid = 0;
};

struct UserCometHeadLayout {
    static constexpr size_t kSize = kUserCometHeadSize;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U16(0, r.count);
        io.U16(2, r.lastPid);
    }
};
static_assert(LayoutIsPacked<UserCometHeadLayout, UserCometHead>());

// Opens the store read-write, making the file with a zero head (and the
// user folder) when it is missing; the count when asked for. Nothing when
// the file can be neither opened nor made.
FilePtr openUserComets(int* outCount);

int readUserCometHead(FILE* file, UserCometHead* head);
int readUserCometRow(FILE* file, long row, CometRecord* record);

// The add rule. A stored row is the same comet when type letter and number
// agree and, for a comet without a number, the new name and designation
// are prefixes of the row's. A new comet takes last PID + 1 and its sorted
// place: 1. The same comet takes the found PID; elements of an epoch it
// already has (within 3e-10 centuries) that are the same in every value
// answer -1 and write nothing (a new coefficient of 2000 counts as the
// same), other values overwrite that row (the default coefficient keeps the
// row's): 2. Elements of another epoch go in among the comet's rows by
// epoch: 1. 0 when the store cannot be read, or a new row cannot be written
// (the rows written so far are put back); -1 also when an overwrite fails,
// and then `writeFailed` (if given) is set. `pidOut` (if given) gets the PID
// the record takes, new or found, whenever the answer isn't 0.
int addOrReplaceUserComet(FILE* file, const CometRecord& record, bool* writeFailed = nullptr,
                          uint16_t* pidOut = nullptr);

// Deletes one row, or every row of a PID; the cascade runs for the PID, with
// class 13 and class mask 4, when its last row goes, before the rows do.
// 1 on success, 0 when there is no such row or a read or write fails (the
// store is then put back as it was).
int deleteUserCometRow(FILE* file, long row, const DeleteCascade& cascade);
int deleteUserCometByPid(FILE* file, uint32_t pid, const DeleteCascade& cascade);

// Rewrites the store through "comett.bin" in the current folder without the
// rows whose mark is nonzero (one byte a row; rows past the marks stay).
// The new head holds the kept count and, as last PID, the highest kept one,
// so a PID can come back. The cascade runs for each PID none of whose rows
// are kept, once the new file is whole. 1 on success; 0 when the store
// cannot be read or the new file written, and the store stays as it was.
int compactUserComets(const std::vector<uint8_t>& deleteMarks, const DeleteCascade& cascade);

// A walk over the rows, one open stream.
struct CometWalk {
    FILE* file = nullptr;
    long row = 0;
    long count = 0;
};
int beginCometWalk(CometWalk* walk, FILE* file);
// The next row: its number (from 0) and the record; -1 at the end or on a
// failed read.
long nextCometRow(CometWalk* walk, CometRecord* record);
// The next row of comet `pid`: -1 when there are no more.
long nextCometByPid(CometWalk* walk, uint32_t pid, CometRecord* record);

// The first row of a comet that matches: its PID is `pid`; or the given
// name is a prefix of the row's name (rows with a name); or the row's IAU
// designation is a prefix of the given one (rows with a designation); or the
// number is equal (when `number` isn't 0). Each comet is tested once, at its
// first row. The row, with the record in `out`; -1 for none or a failed
// read. Null or empty texts and a zero PID or number take no part: an
// empty name would be a prefix of every name, and a zero number would take
// any unnumbered comet for the one wanted.
long findUserComet(FILE* file, uint32_t pid, const char* name, const char* iau, int number,
                   CometRecord* out);
