// The user's own minor planets (class 14): "user/mp.bin", an 8-byte head
// (u32 record count, u32 last PID) and 116-byte records of osculating
// elements, kept sorted so that the rows of one object (one PID, several
// epochs) follow each other, newest first. Three derived index files sit
// beside it: "user/mpn.bin" by number, "user/mpid.bin" by PID and
// "user/mp_alpha.bin" by name. They are built when missing and deleted
// together whenever the rows move.
#pragma once

#include <cstdint>
#include <vector>

#include "base/file_utils.h"
#include "base/record_layout.h"
#include "catalog/delete_cascade.h"
#include "catalog/supplemental_indexes.h"

inline constexpr char kUserMpPath[] = "user/mp.bin";
inline constexpr char kUserMpNumberPath[] = "user/mpn.bin";
inline constexpr char kUserMpPidPath[] = "user/mpid.bin";
inline constexpr char kUserMpAlphaPath[] = "user/mp_alpha.bin";
// Compaction and sorting write the new store here, in the current folder.
inline constexpr char kUserMpTempPath[] = "mpt.bin";

inline constexpr long kUserMpHeadSize = 8;
// Rows are numbered from 0; the number index keeps a row in a u32 slot
// where 65535 means empty, so the store holds at most 65535 rows.
inline constexpr uint32_t kUserMpMaxRows = 65535;
// Numbers 1 to 65535 have a slot in the number index; higher numbers are
// found by name only.
inline constexpr uint32_t kUserMpNumberSlots = 65535;
inline constexpr uint32_t kUserMpEmptySlot = 65535;
// Two epochs closer than this (Julian centuries, about 0.9 ms) are one.
inline constexpr double kUserMpEpochTolerance = 3e-10;

struct UserMpRecord {
    char name[33] = {};
    uint32_t number = 0;           // 0 for an unnumbered object
    double perihelionEpoch = 0;    // Julian centuries from J2000.0
    double epoch = 0;              // of the elements, Julian centuries
    double perihelionDistance = 0; // au
    double semiMajorAxis = 0;      // au
    double eccentricity = 0;
    float inclination = 0;         // radians
    float argPerihelion = 0;       // radians
    float node = 0;                // radians
    float h = 0;
    float g = 0;
    uint32_t pid = 0;
    float computed = 0;            // brightest magnitude, refreshed on a replace
    char source[11] = {};          // "Bowell", "MPC", ...
};

struct UserMpLayout {
    static constexpr size_t kSize = 116;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.Text(0, r.name);
        io.U32(33, r.number);
        io.F64(37, r.perihelionEpoch);
        io.F64(45, r.epoch);
        io.F64(53, r.perihelionDistance);
        io.F64(61, r.semiMajorAxis);
        io.F64(69, r.eccentricity);
        io.F32(77, r.inclination);
        io.F32(81, r.argPerihelion);
        io.F32(85, r.node);
        io.F32(89, r.h);
        io.F32(93, r.g);
        io.U32(97, r.pid);
        io.F32(101, r.computed);
        io.Text(105, r.source);
    }
};
static_assert(LayoutIsPacked<UserMpLayout, UserMpRecord>());

// "user/mp_alpha.bin" has the rows of the user stars' alphabetical index
// (`AlphaEntry`): the upper-cased name and its row.

// The elements as the text imports and the orbit code see them: degrees,
// and a from q and e.
struct UserMpElements {
    double perihelionEpoch = 0, epoch = 0;
    double perihelionDistance = 0, semiMajorAxis = 0, eccentricity = 0;
    double inclination = 0, argPerihelion = 0, node = 0;  // degrees
    double h = 0, g = 0;
};

// ---- Records ------------------------------------------------------------

// Runs OrbitInit with the elements (unknown ones 0.0; angles degrees, times
// Julian centuries, mean motion degrees a day) and fills the record from the
// completed orbit: q from the orbit when above 0, else (1 - e) a; angles in
// radians. `name` is cut to 32 characters, `source` to 10. 0, and nothing
// filled, when the orbit fails or the object has neither number nor name.
int packUserMp(UserMpRecord* record, uint32_t number, const char* name, const char* source,
               double perihelionEpoch, double epoch, double meanAnomaly, double semiMajorAxis,
               double perihelionDistance, double eccentricity, double argPerihelion, double node,
               double inclination, double meanMotion, double h, double g);

// Angles in degrees again; a is q / (1 - e) whatever the record holds
// (negative for a hyperbola, infinite for a parabola).
void unpackUserMp(const UserMpRecord& record, UserMpElements* out);

// The brightest magnitude of the object: at a perihelic opposition, seen
// from 1 au nearer or farther (at least 0.05 au), at phase 0.
float userMpBrightest(double perihelionDistance, double h, double g);

// ---- The store ------------------------------------------------------------

// Opens "user/mp.bin" for reading and writing at its first record, making
// it with a zero head (and deleting the derived files) when it is missing.
// Null when it can't be opened or its head can't be read.
FilePtr openUserMp(uint32_t* outCount);
int readUserMpHead(FILE* file, uint32_t* count, uint32_t* lastPid);
int readUserMpRow(FILE* file, uint32_t row, UserMpRecord* out);
// Reads every record below the count.
int readUserMpAll(FILE* file, std::vector<UserMpRecord>* out, uint32_t* lastPid);

// The add rule. The row of the record's epoch (to within 3e-10 century) is
// looked for among the rows of the object the number index leads to, then
// among those of the object the name index leads to (a case-blind prefix,
// found by bisection). Found with the same elements: 3, unchanged, nothing
// written. Found otherwise: the row is written over under its PID, 2. Not
// found: the record goes at the end as a new object with the next PID, 1,
// even when an object of that number or name is there at other epochs.
// 0 for a read or write failure, a full store, or indexes that can't be
// made. `count` follows the store's count. The record's `pid` and
// `computed` are the store's business; `pidOut` (if given) gets the PID the
// row has in the store whenever the answer isn't 0.
int addOrReplaceUserMp(FILE* file, const UserMpRecord& record, uint32_t* count,
                       uint32_t* pidOut = nullptr);

// Sorts the whole store (numbered rows by number, PID descending, epoch
// descending, before the unnumbered ones; those by upper-cased name) and
// writes it anew through "mpt.bin"; the derived files go. The rows are the
// same bytes an overwrite in place would leave, but a write that fails
// half-way can't leave a store of mixed rows: it fails with the store as it
// was. `file` is closed and opened again on the new store.
int sortUserMp(FilePtr* file, uint32_t* count);

// The row of the object `pid` whose epoch is nearest `t` (Julian
// centuries); a later row must be strictly nearer to displace an earlier.
// 1 and the record and row, 0 when the object isn't there.
int userMpRowForInstant(FILE* file, uint32_t pid, double t, UserMpRecord* out, uint32_t* rowOut);

// The first row of the object: 1, or 0 when there is none. The record and
// row are given where asked for (either may be null).
int findUserMpByPid(FILE* file, uint32_t pid, UserMpRecord* out, uint32_t* rowOut);

// The row the number index gives for `number` ("user/mpn.bin"), or the row
// of a name that begins with `name`, case aside, found by the bisection of
// the user stars' names ("user/mp_alpha.bin"). 1 and the record and row, 0
// when there is none or the index is stale.
int findUserMpByNumber(FILE* file, uint32_t number, UserMpRecord* out, uint32_t* rowOut);
int findUserMpByName(FILE* file, const char* name, UserMpRecord* out, uint32_t* rowOut);

// Removes one row; the rows after it move down and the count goes down,
// the last PID stays and the index files are left as they are. The
// cascade runs when the row was the object's last. 1, or 0.
int deleteUserMpRow(FILE* file, uint32_t row, const DeleteCascade& cascade);
// Removes every row of the object, after one run of the cascade. 1, or 0
// when there is no such object or a write fails.
int deleteUserMpByPid(FILE* file, uint32_t pid, const DeleteCascade& cascade);

// Rewrites the store without the rows whose mark is nonzero (one byte a
// row; rows past the marks are kept). The cascade runs once for each PID
// that no kept row carries. The last PID becomes the highest kept one.
// The store must not be open elsewhere. 1, or 0 with the store as it was.
int compactUserMp(const std::vector<uint8_t>& deleteMarks, const DeleteCascade& cascade);

// Deletes the three derived files.
void dropUserMpIndexes();

// Makes whichever derived files are missing from the store. 1, or 0 (and
// the file that failed removed).
int buildUserMpIndexes(FILE* file);
