// The user's own stars, class 12: "user/stellar.bin" with its alphabetical
// index "user/us_alpha.bin" and PID index "user/us_pid.bin". Stars are
// added by hand, from a text file, or by the version 1.x importer for the
// ones the reference catalogues don't know; every reader treats them as
// stars without catalogues. The operations are those of every supplemental
// store (catalog/supplemental_store.h).
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "base/file_utils.h"
#include "base/record_layout.h"
#include "catalog/delete_cascade.h"
#include "catalog/object_record.h"
#include "catalog/supplemental_store.h"

inline constexpr const char* kStellarPath = "user/stellar.bin";
inline constexpr const char* kStellarAlphaPath = "user/us_alpha.bin";
inline constexpr const char* kStellarPidPath = "user/us_pid.bin";
inline constexpr const char* kStellarCompactPath = "stellart.bin";

// The head of the data file. The count has 16 bits: the store holds at most
// 65535 stars, and a further one wraps it to 0.
struct StellarHeader {
    uint16_t count = 0;
    uint32_t lastPid = 0;
};

struct StellarHeaderLayout {
    static constexpr size_t kSize = 6;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U16(0, r.count);
        io.U32(2, r.lastPid);
    }
};
static_assert(LayoutIsPacked<StellarHeaderLayout, StellarHeader>());

struct StellarRecord {
    uint32_t pid = 0;
    int32_t ra = 0;  // J2000, scaled angle
    int32_t dec = 0;
    int16_t magnitude = 0;  // hundredths
    char name[33] = {};  // empty names are kept, but have no alphabetical entry
};

struct StellarRecordLayout {
    static constexpr size_t kSize = 47;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U32(0, r.pid);
        io.I32(4, r.ra);
        io.I32(8, r.dec);
        io.I16(12, r.magnitude);
        io.Text(14, r.name);
    }
};
static_assert(LayoutIsPacked<StellarRecordLayout, StellarRecord>());

// A record of a star at a J2000 place (radians) with a magnitude; the name
// is cut at 32 characters. 0 when the magnitude doesn't fit its field.
int makeStellarRecord(StellarRecord* out, const std::string& name, double ra, double dec, double magnitude);

// Opens the store for update, making an empty one (and removing both
// indexes) when there is none; null on failure. `outCount` may be null.
FilePtr openStellar(long* outCount);
// The same for reading only, without making anything; null when missing.
FilePtr openStellarForReading(long* outCount);

int readStellarRow(FILE* file, StellarRecord* record, long row);
// Fails when `row` is not below the count.
int rewriteStellarRow(FILE* file, const StellarRecord& record, long row);
// Gives the record the next PID and writes it behind the last.
int appendStellar(FILE* file, StellarRecord* record);
// 1 added, 2 replaced (same name, exactly: the PID is kept), 0 failed.
int addOrReplaceStellar(FILE* file, StellarRecord* record);
// Row + 1 of a star whose name begins with the text, without case; 0 none,
// -1 for an empty text or a read failure.
long findStellarByName(FILE* file, const char* text, StellarRecord* recordOut);
// 1 when found; `rowOut` (may be null) gets row + 1.
int findStellarByPid(FILE* file, uint32_t pid, StellarRecord* recordOut, long* rowOut);
// By PID: the name, the J2000 place in radians and the magnitude.
int stellarPlace(FILE* file, uint32_t pid, std::string* nameOut, double* raOut, double* decOut,
                 double* magOut);

// The cascade gets class 12, mask 16 and the PID before the record goes; a
// delete by PID runs it twice.
int deleteStellarRow(FILE* file, long row, const DeleteCascade& cascade);
int deleteStellarByPid(FILE* file, uint32_t pid, const DeleteCascade& cascade);
// Rewrites the store without the marked rows (a byte per row) through
// "stellart.bin"; `file` comes back open on the store.
int compactStellar(FilePtr& file, const std::vector<uint8_t>& deleteMarks, const DeleteCascade& cascade);

// The text import of "S " lines: the name in the 32 columns from column 3,
// then RA (hours), Dec (degrees), equinox and magnitude from column 36.
int beginStellarImport(SupplementalImport* state, const char* textPath, int steps);
int nextStellarImportBatch(SupplementalImport* state, long* added, long* replaced, long* bad);
void endStellarImport(SupplementalImport* state);
// One line: 1 a star, 0 a bad "S " line, -1 a line of another kind.
int parseStellarLine(const char* line, StellarRecord* out);

int beginStellarScan(SupplementalScan* scan, const SupplementalScanLimits& limits);
int64_t nextStellarScan(SupplementalScan* scan);
void endStellarScan(SupplementalScan* scan);

void dropStellarIndexes();

// The reader of the object fill: the star of `pid` as a star without
// catalogues, its place, magnitude and class mask 16, sizes 0. 1 when found.
int readStellarObject(ObjectRecord* record, uint32_t pid);
