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

// One import line: 1 a star, 0 a bad "S " line, -1 a line of another kind.
// A star line is "S ", the name in the 32 columns from column 3, then RA
// (hours), Dec (degrees), equinox and magnitude from column 36.
int parseStellarLine(const char* line, StellarRecord* out);

// How the shared store engine sees this store.
struct StellarShape {
    using Header = StellarHeader;
    using HeaderLayout = StellarHeaderLayout;
    using Record = StellarRecord;
    using Layout = StellarRecordLayout;
    static constexpr int kObjectClass = kClassSupplementalStar;
    static const SupplementalFiles& Files();
    static uint32_t CascadeMask(const Record&) { return classMaskOf(kClassSupplementalStar); }
    static SupplementalPlace Place(const Record& r);
    static int ParseLine(const char* line, Record* out) { return parseStellarLine(line, out); }
    static bool ScanPasses(const Record&, const SupplementalScanLimits&) { return true; }
};

// The store's operations, as catalog/supplemental_store.h tells them.
// openStellar(outCount) opens the store for update, making an empty one
// (and removing both indexes) when there is none; openStellarForReading
// makes nothing. findStellarByName answers row + 1, 0 or -1;
// findStellarByPid 1 or 0 with row + 1. The deletes and the compaction run
// the cascade with class 12, mask 16 and the PID; a delete by PID runs it
// twice.
inline constexpr auto& openStellar = supplemental::Open<StellarShape>;
inline constexpr auto& openStellarForReading = supplemental::OpenForReading<StellarShape>;
inline constexpr auto& readStellarRow = supplemental::ReadRow<StellarShape>;
inline constexpr auto& rewriteStellarRow = supplemental::RewriteRow<StellarShape>;
inline constexpr auto& appendStellar = supplemental::Append<StellarShape>;
inline constexpr auto& addOrReplaceStellar = supplemental::AddOrReplace<StellarShape>;
inline constexpr auto& findStellarByName = supplemental::FindByName<StellarShape>;
inline constexpr auto& findStellarByPid = supplemental::FindByPid<StellarShape>;
inline constexpr auto& deleteStellarRow = supplemental::DeleteRow<StellarShape>;
inline constexpr auto& deleteStellarByPid = supplemental::DeleteByPid<StellarShape>;
inline constexpr auto& compactStellar = supplemental::Compact<StellarShape>;
inline constexpr auto& stellarLastPid = supplemental::LastPid<StellarShape>;
inline constexpr auto& beginStellarImport = supplemental::BeginImport<StellarShape>;
inline constexpr auto& nextStellarImportBatch = supplemental::NextImportBatch<StellarShape>;
inline constexpr auto& endStellarImport = supplemental::EndImport<StellarShape>;
inline constexpr auto& beginStellarScan = supplemental::BeginScan<StellarShape>;
inline constexpr auto& nextStellarScan = supplemental::NextScan<StellarShape>;
inline constexpr auto& endStellarScan = supplemental::EndScan;

// By PID: the name, the J2000 place in radians and the magnitude.
int stellarPlace(FILE* file, uint32_t pid, std::string* nameOut, double* raOut, double* decOut,
                 double* magOut);

void dropStellarIndexes();

// The reader of the object fill: the star of `pid` as a star without
// catalogues, its place, magnitude and class mask 16, sizes 0. 1 when found.
int readStellarObject(ObjectRecord* record, uint32_t pid);
