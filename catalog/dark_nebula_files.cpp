#include "catalog/dark_nebula_files.h"

#include <cmath>
#include <cstdlib>
#include <cstring>

#include "astro/numeric.h"
#include "base/debug_channel.h"
#include "base/file_io.h"
#include "base/le_bytes.h"
#include "catalog/catalogue_codes.h"
#include "catalog/catalogue_files.h"
#include "catalog/float_step_search.h"

namespace {

constexpr long kRecordSize = 25;
constexpr double kRadiansPerArcminute = kPi / 10800.0;

// Barnard numbers with an 'A' that is an object of its own.
struct BarnardFixed {
    int number;
    int suffix;
    long record;
};
constexpr BarnardFixed kBarnardFixed[] = {
    {83, 1, 229},  // B 83A
    {84, 1, 300},  // B 84A
};

// The roman elements of globule names and their ranks 1 to 5.
constexpr const char* kRomanRanks[] = {"I", "II", "III", "IV", "V"};

// A name the comparator can't split goes to the debug channel.
void DebugLine(const char* name, const char* element) {
    DebugPrint("error: %s = :%s:\n", name, element);
}

// A name split at its first blank and the first '-' after it: the roman
// rank of the part between (0 when there is no such part, or it is no
// roman numeral) and the number after the '-'.
struct RomanSplit {
    int rank = 0;
    long number = 0;
};

RomanSplit SplitRoman(const char* name) {
    RomanSplit split;
    const char* blank = std::strchr(name, ' ');
    const char* dash = blank ? std::strchr(blank + 1, '-') : nullptr;
    if (!dash) return split;
    const std::string element(blank + 1, dash);
    for (int i = 0; i < 5; ++i)
        if (element == kRomanRanks[i]) split.rank = i + 1;
    if (split.rank == 0) {
        DebugLine(name, element.c_str());
        return split;
    }
    split.number = std::strtol(dash + 1, nullptr, 10);
    return split;
}

// The number after "W " (or after the 'W' when no blank follows).
long WNumber(const char* name) { return std::strtol(name + 1, nullptr, 10); }

int Order(long a, long b) { return a < b ? -1 : a > b ? 1 : 0; }

}  // namespace

FilePtr openDn(int globules) {
    FilePtr file = openCatalogue(kCatDn);
    if (file && globules && std::fseek(file.get(), kGlobuleOffset, SEEK_SET) != 0) return nullptr;
    return file;
}

void decodeDarkNebula(const uint8_t* image, DarkNebulaData* out, int readMask) {
    out->isGlobule = image[8] >= kGlobuleFormFrom;
    if (out->isGlobule) {
        GlobuleRecord r;
        DecodeRecord<GlobuleLayout>(image, r);
        if (readMask & kReadPosition) {
            out->ra = scaledAngleToRadians(r.ra);
            out->dec = scaledAngleToRadians(r.dec);
        }
        if (readMask & kReadSize) {
            out->sizeMajor = r.major * 0.1 * kRadiansPerArcminute;
            out->sizeMinor = r.minor * 0.1 * kRadiansPerArcminute;
            out->sizeDefault = out->sizeMajor;
        }
        if (readMask & kReadDesignations)
            out->designation = std::string(r.designation, strnlen(r.designation, sizeof r.designation));
        if (readMask & kReadDescriptive) out->kind = r.type;
        return;
    }
    DarkNebulaRecord r;
    DecodeRecord<DarkNebulaLayout>(image, r);
    if (readMask & kReadPosition) {
        out->ra = scaledAngleToRadians(r.ra);
        out->dec = scaledAngleToRadians(r.dec);
    }
    if (readMask & kReadSize) {
        out->sizeMajor = r.size * 0.01 * kRadiansPerDegree;
        out->sizeMinor = 0;
        out->sizeDefault = out->sizeMajor;
    }
    if (readMask & kReadDesignations) {
        out->commonNameRow = r.commonNameRow == 255 ? -1 : r.commonNameRow;
        out->ldn = r.ldn;
        out->barnard = r.barnard;
        out->barnardSuffix = r.barnardSuffix == ' ' ? 0 : static_cast<char>(r.barnardSuffix);
        out->dcLongitude = r.dcLongitude;
        out->dcSuffix = r.dcSuffix;
        out->dcLatitude = r.dcLatitude;
    }
    if (readMask & kReadDescriptive) {
        out->kind = r.opacity;
        for (int i = 0; i < 4; ++i) out->codes[i] = r.codes[i];
    }
}

int readDarkNebula(FILE* file, long number, DarkNebulaData* out, int readMask) {
    if (!file || number < -1) return 0;
    uint8_t image[kRecordSize];
    if (number == -1) {
        const long at = std::ftell(file);
        if (at < 0 || at % kRecordSize != 0 || FileRead(image, sizeof image, file) != sizeof image) return 0;
        number = at / kRecordSize;
    } else if (!readAt(file, number * kRecordSize, image, sizeof image)) {
        return 0;
    }
    out->record = number;
    decodeDarkNebula(image, out, readMask);
    return 1;
}

FilePtr openLdn() { return openCatalogue(kCatLdn); }
FilePtr openBarnard() { return openCatalogue(kCatBarnard); }
FilePtr openDc() { return openCatalogue(kCatDc); }
FilePtr openGbc() { return openCatalogue(kCatGbc); }

namespace {

long ReadNumberSlot(FILE* file, int number, int last) {
    uint8_t b[2];
    if (number < 1 || number > last || !readAt(file, (number - 1) * 2L, b, sizeof b)) return -1;
    const uint16_t value = le::GetU16(b);
    return value == 65535 ? -1 : value;
}

}  // namespace

long lookupLdn(FILE* file, int number) { return ReadNumberSlot(file, number, 1802); }

long lookupBarnard(FILE* file, int number, int suffix) {
    for (const BarnardFixed& fixed : kBarnardFixed)
        if (fixed.number == number && fixed.suffix == suffix) return fixed.record;
    if (suffix != 0 && suffix != 1) return -1;
    return ReadNumberSlot(file, number, 369);
}

long lookupDc(FILE* file, double longitude, double latitude, int suffix) {
    if (!file) return -1;
    const long wantedLongitude = std::lround(longitude * 10.0);
    const long wantedLatitude = std::lround(latitude * 10.0);
    DcEntry found;
    const auto compareAt = [&](long position) {
        uint8_t image[DcEntryLayout::kSize];
        if (!readAt(file, position * static_cast<long>(DcEntryLayout::kSize), image, sizeof image))
            return kStepReadFailed;
        DecodeRecord<DcEntryLayout>(image, found);
        if (found.longitude != wantedLongitude) return Order(found.longitude, wantedLongitude);
        if (found.latitude != wantedLatitude) return Order(found.latitude, wantedLatitude);
        return Order(found.suffix, suffix);
    };
    const long position = floatStepSearch(kDcRows, (kDcRows + 4) * 0.5, floatStepLimit(kDcRows), compareAt);
    if (position < 0 || found.recordPlus1 == 0) return -1;
    return found.recordPlus1 - 1L;
}

int compareGlobuleNames(const char* a, const char* b) {
    if (a[0] == 'W' && b[0] == 'W') return Order(WNumber(a), WNumber(b));
    const RomanSplit left = SplitRoman(a);
    const RomanSplit right = SplitRoman(b);
    if (left.rank != 0 && right.rank != 0) {
        if (left.rank != right.rank) return Order(left.rank, right.rank);
        return Order(left.number, right.number);
    }
    const int order = std::strcmp(a, b);
    return order < 0 ? -1 : order > 0 ? 1 : 0;
}

long lookupGlobule(FILE* file, const char* name) {
    if (!file || !name || std::fseek(file, 0, SEEK_END) != 0) return -1;
    const long size = std::ftell(file);
    if (size < 0) return -1;
    long low = 0, high = size / static_cast<long>(GlobuleNameLayout::kSize) - 1;
    while (low <= high) {
        const long middle = (low + high) / 2;
        uint8_t image[GlobuleNameLayout::kSize];
        if (!readAt(file, middle * static_cast<long>(GlobuleNameLayout::kSize), image, sizeof image)) return -1;
        GlobuleNameRow row;
        DecodeRecord<GlobuleNameLayout>(image, row);
        const std::string rowName(row.name, strnlen(row.name, sizeof row.name));
        const int order = compareGlobuleNames(rowName.c_str(), name);
        if (order == 0) return row.record;
        if (order < 0)
            low = middle + 1;
        else
            high = middle - 1;
    }
    return -1;
}
