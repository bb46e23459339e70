// The dark nebula file `dn` (records from 0, at number x 25) and its
// indexes `ldn`, `Barnard`, `dc` and `gbc`. The file holds two forms, told
// by the byte at offset 8: below 10 a catalogue dark nebula, 10 or more a
// globule; the globules lie from record 2888 on. Dark nebula record 0 is a
// real object, so the lookups answer -1 for none.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

#include "base/file_utils.h"
#include "base/record_layout.h"

inline constexpr long kFirstGlobule = 2888;
inline constexpr long kGlobuleOffset = 72200;  // 2888 x 25
inline constexpr int kGlobuleFormFrom = 10;

// A catalogue dark nebula.
struct DarkNebulaRecord {
    int32_t ra = 0;
    int32_t dec = 0;
    uint8_t opacity = 0;  // below 10
    uint16_t size = 0;    // hundredths of a degree
    uint8_t commonNameRow = 255;
    uint16_t ldn = 0;
    uint16_t barnard = 0;
    uint16_t dcLongitude = 0;  // 13 bits, tenths
    uint8_t dcSuffix = 0;      // 3 bits, letter code from 1
    int16_t dcLatitude = 0;    // tenths
    uint8_t barnardSuffix = 0;  // a letter, or 0 or blank for none
    uint8_t codes[4] = {};
};

struct DarkNebulaLayout {
    static constexpr size_t kSize = 25;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.I32(0, r.ra);
        io.I32(4, r.dec);
        io.U8(8, r.opacity);
        io.U16(9, r.size);
        io.U8(11, r.commonNameRow);
        io.U16(12, r.ldn);
        io.U16(14, r.barnard);
        io.Bits16(16, 0, 13, r.dcLongitude);
        io.Bits16(16, 13, 3, r.dcSuffix);
        io.I16(18, r.dcLatitude);
        io.U8(20, r.barnardSuffix);
        io.Raw(21, r.codes);
    }
};
static_assert(LayoutIsPacked<DarkNebulaLayout, DarkNebulaRecord>());

// A globule, in the same 25 bytes.
struct GlobuleRecord {
    int32_t ra = 0;
    int32_t dec = 0;
    uint8_t type = kGlobuleFormFrom;  // 10 or more
    uint8_t major = 0;  // tenths of an arc minute
    uint8_t minor = 0;
    char designation[14] = {};
};

struct GlobuleLayout {
    static constexpr size_t kSize = 25;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.I32(0, r.ra);
        io.I32(4, r.dec);
        io.U8(8, r.type);
        io.U8(9, r.major);
        io.U8(10, r.minor);
        io.Text(11, r.designation);
    }
};
static_assert(LayoutIsPacked<GlobuleLayout, GlobuleRecord>());

struct DarkNebulaData {
    long record = 0;
    bool isGlobule = false;
    double ra = 0;
    double dec = 0;
    double magnitude = 99.9;  // dark nebulae have none
    double sizeMajor = 0;     // radians
    double sizeMinor = 0;     // a globule's minor axis
    double sizeDefault = 0;
    int kind = 0;  // opacity class, or the globule's type
    int commonNameRow = -1;
    int ldn = 0;
    int barnard = 0;
    char barnardSuffix = 0;  // 0 none
    int dcLongitude = 0;     // tenths
    int dcSuffix = 0;
    int dcLatitude = 0;  // tenths
    int codes[4] = {};
    std::string designation;  // a globule's name
};

// Opens `dn`; with `globules` not 0 the stream stands at the first globule.
FilePtr openDn(int globules);

// Dark nebula `number` (from 0), or with -1 the record at the stream's
// position, its number told from that position. 1 on success.
int readDarkNebula(FILE* file, long number, DarkNebulaData* out, int readMask);
// Decodes a 25-byte image in the form its byte 8 names.
void decodeDarkNebula(const uint8_t* image, DarkNebulaData* out, int readMask);

FilePtr openLdn();
FilePtr openBarnard();
FilePtr openDc();
FilePtr openGbc();

// LDN 1 to 1802; -1 when none. Slots of 65535 are empty.
long lookupLdn(FILE* file, int number);

// Barnard 1 to 369 with a suffix code 0 (none) or 1 (A), which read the
// same slot; 83A and 84A are their own objects, kept by rule. Any other
// suffix finds nothing.
long lookupBarnard(FILE* file, int number, int suffix);

// `dc`: 1101 rows sorted by longitude, latitude and suffix.
inline constexpr long kDcRows = 1101;

struct DcEntry {
    uint16_t longitude = 0;  // 13 bits, tenths
    uint8_t suffix = 0;      // 3 bits
    int16_t latitude = 0;    // tenths
    uint16_t recordPlus1 = 0;
};

struct DcEntryLayout {
    static constexpr size_t kSize = 6;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.Bits16(0, 0, 13, r.longitude);
        io.Bits16(0, 13, 3, r.suffix);
        io.I16(2, r.latitude);
        io.U16(4, r.recordPlus1);
    }
};
static_assert(LayoutIsPacked<DcEntryLayout, DcEntry>());

// The dark nebula of a DC designation: longitude and latitude in degrees,
// rounded to tenths, and the suffix code; -1 when none.
long lookupDc(FILE* file, double longitude, double latitude, int suffix);

// `gbc`: 16-byte rows of a 14-byte globule name and a u16 record, sorted
// by the globule comparator.
struct GlobuleNameRow {
    char name[14] = {};
    uint16_t record = 0;
};

struct GlobuleNameLayout {
    static constexpr size_t kSize = 16;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.Text(0, r.name);
        io.U16(14, r.record);
    }
};
static_assert(LayoutIsPacked<GlobuleNameLayout, GlobuleNameRow>());

// The order of globule names: two "W" names by the number after "W ";
// two names with a roman element (between the first blank and the first
// '-', "I" to "V") by that element's rank and then the number after the
// '-'; anything else by plain string compare. An element that is no roman
// numeral is told on the debug channel as "error: %s = :%s:\n".
int compareGlobuleNames(const char* a, const char* b);

// The dark nebula record of a globule name, searched by halving over every
// row of `gbc`; -1 when none.
long lookupGlobule(FILE* file, const char* name);
