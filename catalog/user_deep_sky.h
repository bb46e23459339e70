// The user's own deep-sky objects, class 18: "user/uds.bin" with its
// alphabetical index "user/uds_alpha.bin" and PID index "user/uds_pid.bin".
// The twin of the star store (catalog/user_stars.h) in all but the record:
// each object carries its own deep-sky class, sizes and position angle,
// and the count has 32 bits.
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

inline constexpr const char* kUdsPath = "user/uds.bin";
inline constexpr const char* kUdsAlphaPath = "user/uds_alpha.bin";
inline constexpr const char* kUdsPidPath = "user/uds_pid.bin";
inline constexpr const char* kUdsCompactPath = "udst.bin";

struct UdsHeader {
    uint32_t count = 0;
    uint32_t lastPid = 0;
};

struct UdsHeaderLayout {
    static constexpr size_t kSize = 8;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U32(0, r.count);
        io.U32(4, r.lastPid);
    }
};
static_assert(LayoutIsPacked<UdsHeaderLayout, UdsHeader>());

struct UdsRecord {
    uint32_t pid = 0;
    int32_t ra = 0;  // J2000, scaled angle
    int32_t dec = 0;
    int16_t magnitude = 0;      // hundredths
    int16_t positionAngle = 0;  // tenths of a degree
    char name[33] = {};
    uint8_t objectClass = 0;  // 6, 7, 8, 9, 10, 11, 16 or 17
    int16_t major = 0;        // hundredths of an arc minute
    int16_t minor = 0;
};

struct UdsRecordLayout {
    static constexpr size_t kSize = 54;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U32(0, r.pid);
        io.I32(4, r.ra);
        io.I32(8, r.dec);
        io.I16(12, r.magnitude);
        io.I16(14, r.positionAngle);
        io.Text(16, r.name);
        io.U8(49, r.objectClass);
        io.I16(50, r.major);
        io.I16(52, r.minor);
    }
};
static_assert(LayoutIsPacked<UdsRecordLayout, UdsRecord>());

// The class mask of one deep-sky class (6 gives 256 ... 17 gives 0x20000);
// 0 for any other class.
uint32_t udsClassMask(int objectClass);

// A record of an object of a deep-sky class at a J2000 place (radians),
// with its magnitude, diameters in arc minutes and position angle in
// degrees; the name is cut at 32 characters. 0 when a value doesn't fit
// its field.
int makeUdsRecord(UdsRecord* out, int objectClass, const std::string& name, double ra, double dec,
                  double magnitude, double majorArcmin, double minorArcmin, double positionAngleDegrees);

// One import line: 1 an object, 0 a bad line of a deep-sky class word, -1
// a line of another kind. The line starts with its class word, "G "
// galaxy, "GG " galaxy group, "Q " quasar, "PN " planetary nebula, "NE "
// diffuse nebula, "DN " dark nebula, "OC " open cluster or "GC " globular
// cluster; the name is in the 32 columns from column 4; from column 36
// come RA, Dec, equinox and magnitude, then optionally the major and minor
// diameter (arc minutes) and the position angle (degrees).
int parseUdsLine(const char* line, UdsRecord* out);

// How the shared store engine sees this store.
struct UdsShape {
    using Header = UdsHeader;
    using HeaderLayout = UdsHeaderLayout;
    using Record = UdsRecord;
    using Layout = UdsRecordLayout;
    static constexpr int kObjectClass = kClassSupplementalDeepSky;
    static const SupplementalFiles& Files();
    static uint32_t CascadeMask(const Record& r) { return udsClassMask(r.objectClass); }
    static SupplementalPlace Place(const Record& r);
    static int ParseLine(const char* line, Record* out) { return parseUdsLine(line, out); }
    static bool ScanPasses(const Record& r, const SupplementalScanLimits& limits);
};

// The store's operations, named as the star store's (catalog/user_stars.h)
// with "Uds" for "Stellar". The deletes and the compaction give the
// cascade class 18 and the mask of the object's own class.
inline constexpr auto& openUds = supplemental::Open<UdsShape>;
inline constexpr auto& openUdsForReading = supplemental::OpenForReading<UdsShape>;
inline constexpr auto& readUdsRow = supplemental::ReadRow<UdsShape>;
inline constexpr auto& rewriteUdsRow = supplemental::RewriteRow<UdsShape>;
inline constexpr auto& appendUds = supplemental::Append<UdsShape>;
inline constexpr auto& addOrReplaceUds = supplemental::AddOrReplace<UdsShape>;
inline constexpr auto& findUdsByName = supplemental::FindByName<UdsShape>;
inline constexpr auto& findUdsByPid = supplemental::FindByPid<UdsShape>;
inline constexpr auto& deleteUdsRow = supplemental::DeleteRow<UdsShape>;
inline constexpr auto& deleteUdsByPid = supplemental::DeleteByPid<UdsShape>;
inline constexpr auto& compactUds = supplemental::Compact<UdsShape>;
inline constexpr auto& udsLastPid = supplemental::LastPid<UdsShape>;
inline constexpr auto& beginUdsImport = supplemental::BeginImport<UdsShape>;
inline constexpr auto& nextUdsImportBatch = supplemental::NextImportBatch<UdsShape>;
inline constexpr auto& endUdsImport = supplemental::EndImport<UdsShape>;
inline constexpr auto& beginUdsScan = supplemental::BeginScan<UdsShape>;
inline constexpr auto& nextUdsScan = supplemental::NextScan<UdsShape>;
inline constexpr auto& endUdsScan = supplemental::EndScan;

// By PID: the class, name, J2000 place, magnitude, diameters and position
// angle, all angles in radians.
int udsPlace(FILE* file, uint32_t pid, int* classOut, std::string* nameOut, double* raOut, double* decOut,
             double* magOut, double* majorOut, double* minorOut, double* paOut);

void dropUdsIndexes();

// The reader of the object fill: place, magnitude, the diameters in radians
// with the larger as the default size, and the class mask of the object's
// own class. 1 when found.
int readUdsObject(ObjectRecord* record, uint32_t pid);
