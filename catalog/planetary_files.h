// The planetary nebula file `pln` (records from 0, at number x 70) and the
// indexes that lead to it: `abell_pn`, `aro`, `eso`, `Minkowski`, `haro`,
// `kohoutek`, `Henize`, `pk`, `PNG` and the sorted name list `pn_des`.
// Planetary record 0 is a real object, so the lookups answer -1 for none.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

#include "base/file_utils.h"
#include "base/record_layout.h"
#include "catalog/index_runs.h"

struct PlanetaryRecord {
    int16_t pngLongitude = 0;  // tenths of a degree
    int16_t pngLatitude = 0;
    int32_t ra = 0;
    int32_t dec = 0;
    uint8_t code12 = 0;
    char designation[17] = {};
    uint16_t pkLongitude = 0;  // 9 bits, degrees
    bool pkPlus = false;       // the sign bit, set for '+'
    uint16_t pkLatitude = 0;   // 10 bits, tenths
    uint16_t spare30 = 0;      // bits 20 to 31
    uint16_t ngc = 0;
    uint16_t ic = 0;
    uint8_t messier = 0;
    uint8_t commonNameRowPlus1 = 0;  // 0 none
    uint8_t minkowski[2] = {};
    uint8_t haroHenize[2] = {};
    uint16_t fields44[3] = {};  // 11, 11 and 10 bits from the bottom
    uint8_t pair48[2] = {};
    uint8_t code50 = 0;
    uint16_t numbers51[2] = {};
    uint16_t number55 = 0;
    int16_t value57 = 32767;  // 32767 none
    uint8_t magnitude = 255;  // tenths, 255 unknown
    uint8_t centralStarMagnitude = 255;
    uint8_t value61 = 255;       // 255 none
    uint16_t diameter = 65535;   // tenths of an arc second, 65535 none
    uint16_t value64 = 65535;    // 65535 none
    uint16_t flags66 = 0;        // bits 0 to 13
    bool flag14 = false;
    bool flag15 = false;
    uint8_t class68[2] = {};  // low 3 bits of bytes 68 and 69
    uint8_t code68[2] = {};   // their upper 5 bits
};

struct PlanetaryLayout {
    static constexpr size_t kSize = 70;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.I16(0, r.pngLongitude);
        io.I16(2, r.pngLatitude);
        io.I32(4, r.ra);
        io.I32(8, r.dec);
        io.U8(12, r.code12);
        io.Text(13, r.designation);
        io.Bits32(30, 0, 9, r.pkLongitude);
        io.Bits32(30, 9, 1, r.pkPlus);
        io.Bits32(30, 10, 10, r.pkLatitude);
        io.Bits32(30, 20, 12, r.spare30);
        io.U16(34, r.ngc);
        io.U16(36, r.ic);
        io.U8(38, r.messier);
        io.U8(39, r.commonNameRowPlus1);
        io.U8(40, r.minkowski[0]);
        io.U8(41, r.minkowski[1]);
        io.U8(42, r.haroHenize[0]);
        io.U8(43, r.haroHenize[1]);
        io.Bits32(44, 0, 11, r.fields44[0]);
        io.Bits32(44, 11, 11, r.fields44[1]);
        io.Bits32(44, 22, 10, r.fields44[2]);
        io.U8(48, r.pair48[0]);
        io.U8(49, r.pair48[1]);
        io.U8(50, r.code50);
        io.U16(51, r.numbers51[0]);
        io.U16(53, r.numbers51[1]);
        io.U16(55, r.number55);
        io.I16(57, r.value57);
        io.U8(59, r.magnitude);
        io.U8(60, r.centralStarMagnitude);
        io.U8(61, r.value61);
        io.U16(62, r.diameter);
        io.U16(64, r.value64);
        io.Bits16(66, 0, 14, r.flags66);
        io.Bits16(66, 14, 1, r.flag14);
        io.Bits16(66, 15, 1, r.flag15);
        io.Bits8(68, 0, 3, r.class68[0]);
        io.Bits8(68, 3, 5, r.code68[0]);
        io.Bits8(69, 0, 3, r.class68[1]);
        io.Bits8(69, 3, 5, r.code68[1]);
    }
};
static_assert(LayoutIsPacked<PlanetaryLayout, PlanetaryRecord>());

struct PlanetaryData {
    long record = 0;
    double ra = 0;
    double dec = 0;
    double magnitude = 99.9;
    double magnitude2 = 99.9;  // surface brightness from the diameter and magnitude
    double centralStarMagnitude = 99.9;
    double sizeMajor = 0;  // radians
    double sizeMinor = 0;
    double sizeDefault = 0;
    int diameterTenths = -1;  // tenths of an arc second, -1 none
    int pngLongitude = 0;     // tenths
    int pngLatitude = 0;
    std::string designation;
    int pkLongitude = 0;
    char pkSign = '-';
    int pkLatitude = 0;  // tenths
    int ngc = 0;
    int ic = 0;
    int messier = 0;
    int commonNameRow = -1;
    int minkowski[2] = {};
    int haroHenize[2] = {};
    int fields44[3] = {};
    int pair48[2] = {};
    int code12 = 0;
    int code50 = 0;
    int numbers51[2] = {};
    int number55 = 0;
    int value57 = 32767;
    int value61 = 255;
    int value64 = 65535;
    int flags66 = 0;
    bool flag14 = false;  // read on every call, whatever the mask
    bool flag15 = false;
    int class68[2] = {};
    int code68[2] = {};
};

FilePtr openPlanetaries();

// Planetary `number` (from 0); 1 on success.
int readPlanetary(FILE* file, long number, PlanetaryData* out, int readMask);
void decodePlanetary(const PlanetaryRecord& record, PlanetaryData* out, int readMask);

FilePtr openAbellPn();
FilePtr openAro();
FilePtr openPlanetaryEso();
FilePtr openMinkowski();
FilePtr openHaro();
FilePtr openKohoutek();
FilePtr openHenize();
FilePtr openPk();
FilePtr openPng();
FilePtr openPnDesignations();

// The planetary record of a designation, -1 when none; a slot of 65535 is
// empty.
long lookupAbellPn(FILE* file, int number);
long lookupAro(FILE* file, int number);
long lookupPlanetaryEso(FILE* file, int a, int b);  // a from 11, b 1 to 82
long lookupMinkowski(FILE* file, int a, int b);     // b 1 to 93
long lookupHaro(FILE* file, int a, int b);          // b 1 to 76
long lookupKohoutek(FILE* file, int a, int b);      // b 1 to 95
// Henize a-b, a 1 to 3 (b 1 to 8, 1 to 468, from 519); the slot holds the
// record + 1 as an i16, 0 none.
long lookupHenize(FILE* file, int a, int b);
// PK by whole longitude 0 to 359 and latitude in tenths (from -741).
long lookupPk(FILE* file, int longitude, int latitudeTenths);
// PN G by longitude in tenths (0 to 3609) and latitude in tenths: the run
// of the whole degree is searched for the tenth and the latitude.
long lookupPng(FILE* file, int longitudeTenths, int latitudeTenths);

struct PngEntry {
    uint8_t longitudeTenth = 0;
    int16_t latitude = 0;  // tenths
    uint16_t record = 0;
};

struct PngEntryLayout {
    static constexpr size_t kSize = 5;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U8(0, r.longitudeTenth);
        io.I16(1, r.latitude);
        io.U16(3, r.record);
    }
};
static_assert(LayoutIsPacked<PngEntryLayout, PngEntry>());

// The PN G list in index order: the runs of longitudes 0 to 359 one after
// the other, each entry in its run's order; empty slots (65535) are passed
// over.
inline constexpr int kPngBrowseRuns = 360;

struct PngBrowser {
    FilePtr file;
    int run = -1;    // the run being walked
    long entry = 0;  // the next entry of that run
    RunHead head;
};

// Opens `PNG`; 0 when it won't open.
int beginPngBrowse(PngBrowser* browser);
// The next designation (longitude and latitude in tenths) and its record;
// 0 at the end or when an index row or entry can't be read.
int nextPngBrowse(PngBrowser* browser, int* longitudeTenths, int* latitudeTenths, long* record);

// `pn_des`: 715 sorted names of 19 bytes; the row found is the planetary
// name number. -1 when the text isn't there.
inline constexpr long kPnDesignationRows = 715;
inline constexpr size_t kPnDesignationSize = 19;
long lookupPnDesignation(FILE* file, const char* text);

