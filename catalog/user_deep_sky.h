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

FilePtr openUds(long* outCount);
FilePtr openUdsForReading(long* outCount);
int readUdsRow(FILE* file, UdsRecord* record, long row);
int rewriteUdsRow(FILE* file, const UdsRecord& record, long row);
int appendUds(FILE* file, UdsRecord* record);
int addOrReplaceUds(FILE* file, UdsRecord* record);
long findUdsByName(FILE* file, const char* text, UdsRecord* recordOut);
int findUdsByPid(FILE* file, uint32_t pid, UdsRecord* recordOut, long* rowOut);
// By PID: the class, name, J2000 place, magnitude, diameters and position
// angle, all angles in radians.
int udsPlace(FILE* file, uint32_t pid, int* classOut, std::string* nameOut, double* raOut, double* decOut,
             double* magOut, double* majorOut, double* minorOut, double* paOut);

// The cascade gets class 18 and the mask of the object's own class.
int deleteUdsRow(FILE* file, long row, const DeleteCascade& cascade);
int deleteUdsByPid(FILE* file, uint32_t pid, const DeleteCascade& cascade);
int compactUds(FilePtr& file, const std::vector<uint8_t>& deleteMarks, const DeleteCascade& cascade);

// The text import: a line starts with its class word, "G " galaxy, "GG "
// galaxy group, "Q " quasar, "PN " planetary nebula, "NE " diffuse nebula,
// "DN " dark nebula, "OC " open cluster or "GC " globular cluster; the name
// is in the 32 columns from column 4; from column 36 come RA, Dec, equinox
// and magnitude, then optionally the major and minor diameter (arc
// minutes) and the position angle (degrees).
int beginUdsImport(SupplementalImport* state, const char* textPath, int steps);
int nextUdsImportBatch(SupplementalImport* state, long* added, long* replaced, long* bad);
void endUdsImport(SupplementalImport* state);
int parseUdsLine(const char* line, UdsRecord* out);

int beginUdsScan(SupplementalScan* scan, const SupplementalScanLimits& limits);
int64_t nextUdsScan(SupplementalScan* scan);
void endUdsScan(SupplementalScan* scan);

void dropUdsIndexes();

// The reader of the object fill: place, magnitude, the diameters in radians
// with the larger as the default size, and the class mask of the object's
// own class. 1 when found.
int readUdsObject(ObjectRecord* record, uint32_t pid);
