#include "catalog/cluster_files.h"

#include <cmath>
#include <cstring>

#include "astro/numeric.h"
#include "base/le_bytes.h"
#include "base/prefix_match.h"
#include "catalog/catalogue_codes.h"
#include "catalog/catalogue_files.h"
#include "catalog/index_runs.h"

namespace {

constexpr double kRadiansPerArcminute = kPi / 10800.0;
constexpr int kFirstCrossFamily = 2;
constexpr int kLastCrossFamily = 55;
constexpr int kOclTenths = 9;  // tenths 0 to 8 in a row of the index
constexpr int kLastPalomarTerzan = 15;

// The u16 record slot at `offset`; -1 when unread or 65535.
long ReadSlot(FILE* file, long offset) {
    uint8_t b[2];
    if (!readAt(file, offset, b, sizeof b)) return -1;
    const uint16_t value = le::GetU16(b);
    return value == 65535 ? -1 : value;
}

long ReadByteRecord(FILE* file, int number) {
    uint8_t b = 0;
    if (number < 1 || number > kLastPalomarTerzan || !readAt(file, number - 1L, &b, 1)) return 0;
    return b;
}

}  // namespace

FilePtr openOpenClusters() { return openCatalogue(kCatOc); }

void decodeOpenCluster(const OpenClusterRecord& r, OpenClusterData* out, int readMask) {
    if (readMask & kReadPosition) {
        out->ra = r.ra;
        out->dec = r.dec;
    }
    if (readMask & kReadMagnitude) out->magnitude = r.magnitude == 255 ? 99.9 : r.magnitude * 0.1;
    if (readMask & kReadSize) {
        out->sizeMajor = r.size * 0.1 * kRadiansPerArcminute;
        out->sizeMinor = 0;
        out->sizeDefault = out->sizeMajor;
    }
    if (readMask & kReadDesignations) {
        for (int i = 0; i < kClusterDesignations; ++i) {
            out->family[i] = r.family[i];
            out->number[i] = r.number[i];
        }
        out->commonNameRow = r.commonNameRow == 255 ? -1 : r.commonNameRow;
        out->ocl = r.ocl * 0.1;
    }
    if (readMask & kReadDescriptive) {
        out->value27 = r.value27 == 255 ? 255 : static_cast<int8_t>(r.value27);
        out->value28 = r.value28 == -1 ? 99.9 : r.value28 * 0.01;
        out->value29 = r.value29 == 255 ? 99.9 : r.value29 * 0.01;
        out->number30 = r.number30;
        out->flag30 = r.flag30;
        out->number32 = r.number32;
    }
}

int readOpenCluster(FILE* file, long number, OpenClusterData* out, int readMask) {
    uint8_t image[OpenClusterLayout::kSize];
    if (number < 0 || !readAt(file, number * static_cast<long>(OpenClusterLayout::kSize), image, sizeof image))
        return 0;
    OpenClusterRecord record;
    DecodeRecord<OpenClusterLayout>(image, record);
    out->record = number;
    decodeOpenCluster(record, out, readMask);
    return 1;
}

FilePtr openOcl() { return openCatalogue(kCatOcl); }
FilePtr openOcCross() { return openCatalogue(kCatOcCross); }

long lookupOcl(FILE* file, double ocl) {
    const long tenths = std::lround(ocl * 10.0);
    const long whole = tenths / 10;
    const long tenth = tenths % 10;
    if (whole < 1 || tenth >= kOclTenths) return -1;
    return ReadSlot(file, ((whole - 1) * kOclTenths + tenth) * 2);
}

long lookupOcCross(FILE* file, int family, int number) {
    RunHead run;
    if (family < kFirstCrossFamily || family > kLastCrossFamily || !readRunHead(file, family, &run)) return -1;
    if (number < 1 || number > run.count) return -1;
    return ReadSlot(file, static_cast<long>(run.offset) + (number - 1L) * 2);
}

FilePtr openGlobulars() { return openCatalogue(kCatGlob); }

void decodeGlobular(const GlobularRecord& r, GlobularData* out, int readMask) {
    if (readMask & kReadPosition) {
        out->ra = scaledAngleToRadians(r.ra);
        out->dec = scaledAngleToRadians(r.dec);
    }
    if (readMask & kReadMagnitude) out->magnitude = r.magnitude == 0 ? 99.9 : r.magnitude * 0.1;
    if (readMask & kReadSize) {
        out->sizeMajor = r.size * 0.1 * kRadiansPerArcminute;
        out->sizeMinor = 0;
        out->sizeDefault = out->sizeMajor;
    }
    if (readMask & kReadDesignations) {
        out->ngc = r.ngc;
        out->ic = r.ic;
        out->messier = r.messier;
        out->commonNameRow = r.commonNameRow == 255 ? -1 : r.commonNameRow;
        out->palomar = r.palomar;
        out->terzan = r.terzan;
        out->designation = std::string(r.designation, strnlen(r.designation, sizeof r.designation));
    }
    if (readMask & kReadDescriptive) {
        out->value20 = r.value20 * 0.1;
        out->value22 = r.value22;
    }
}

int readGlobular(FILE* file, long number, GlobularData* out, int readMask) {
    uint8_t image[GlobularLayout::kSize];
    if (number < 1 || !readAt(file, (number - 1) * static_cast<long>(GlobularLayout::kSize), image, sizeof image))
        return 0;
    GlobularRecord record;
    DecodeRecord<GlobularLayout>(image, record);
    out->record = number;
    decodeGlobular(record, out, readMask);
    return 1;
}

FilePtr openPalomar() { return openCatalogue(kCatPalomar); }
FilePtr openTerzan() { return openCatalogue(kCatTerzan); }
FilePtr openGlobularDesignations() { return openCatalogue(kCatGDes); }

long lookupPalomar(FILE* file, int number) { return ReadByteRecord(file, number); }
long lookupTerzan(FILE* file, int number) { return ReadByteRecord(file, number); }

long lookupGlobularDesignation(FILE* file, const char* text) {
    if (!text || !*text) return 0;
    for (int row = 0; row < kGlobularDesignationRows; ++row) {
        uint8_t image[GlobularDesignationLayout::kSize];
        if (!readAt(file, row * static_cast<long>(GlobularDesignationLayout::kSize), image, sizeof image)) return 0;
        GlobularDesignationRow entry;
        DecodeRecord<GlobularDesignationLayout>(image, entry);
        const std::string name(entry.name, strnlen(entry.name, sizeof entry.name));
        if (!name.empty() && PrefixMatch(text, name.c_str())) return entry.record;
    }
    return 0;
}
