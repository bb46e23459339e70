// The galaxy file `gal`, its number indexes (`pgc`, `arp`, `mkn`, `ugc`,
// `mcg`, `esob`) and the galaxy group file `gg`. Galaxy and group records
// are numbered from 1. The indexes' number fields cannot hold every
// catalogue entry, so a few fixed rows of each are part of its lookup.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

#include "base/file_utils.h"
#include "base/record_layout.h"

// The galaxy record as it lies in the file, every field as its code.
struct GalaxyRecord {
    uint32_t pgc = 0;
    uint8_t mcgPart = 0;        // 3 bits, letter code
    uint8_t mcgNumber = 0;      // 8 bits
    uint8_t mcgField = 0;       // 6 bits
    uint8_t mcgZonePlus7 = 0;   // 5 bits
    uint16_t arp = 0;           // 10 bits
    uint8_t esoSuffix = 0;      // 4 bits
    uint16_t esoField = 0;      // 12 bits
    uint8_t esoNumber = 0;
    uint16_t ngc = 0;           // 13 bits
    uint8_t ngcSuffix = 0;      // 3 bits
    uint16_t ic = 0;            // 13 bits
    uint8_t icSuffix = 0;       // 3 bits
    uint8_t markarianSuffix = 0;  // 2 bits
    uint16_t markarian = 0;       // 14 bits
    uint8_t messier = 0;
    uint16_t ugc = 0;
    uint8_t ugcSuffix = 0;
    uint8_t commonNameRow = 255;  // 255 none
    int32_t ra = 0;
    int32_t dec = 0;
    uint8_t hubbleType = 0;   // 5 bits: row from 1 of the type words
    uint16_t hubbleStage = 0;  // 11 bits: row below 8 of the stage words
    uint8_t classCode[6] = {};  // widths 4, 2, 4, 3, 2, 1
    uint8_t interaction = 0;    // 3 bits
    bool flagA = false;
    bool flagB = false;
    uint8_t spare34 = 0;        // bits 5 to 7
    uint8_t magnitude = 255;    // tenths, 255 unknown
    uint8_t surfaceBrightness = 255;  // (v + 170) x 0.1, 255 computed
    int32_t radialVelocity = -1;      // -1 unknown
    uint16_t value41 = 65535;         // 65535 unknown
    uint16_t value43 = 65535;
    uint8_t colour45 = 255;  // v x 0.01 - 1.02, 255 unknown
    uint8_t colour46 = 255;  // v x 0.01 - 0.71, 255 unknown
    uint16_t value47 = 0;    // hundredths
    uint16_t major = 65535;  // v / 62 arc minutes, 65535 none
    uint16_t minor = 65535;
};

struct GalaxyLayout {
    static constexpr size_t kSize = 53;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U32(0, r.pgc);
        io.Bits32(4, 0, 3, r.mcgPart);
        io.Bits32(4, 3, 8, r.mcgNumber);
        io.Bits32(4, 11, 6, r.mcgField);
        io.Bits32(4, 17, 5, r.mcgZonePlus7);
        io.Bits32(4, 22, 10, r.arp);
        io.Bits16(8, 0, 4, r.esoSuffix);
        io.Bits16(8, 4, 12, r.esoField);
        io.U8(10, r.esoNumber);
        io.Bits16(11, 0, 13, r.ngc);
        io.Bits16(11, 13, 3, r.ngcSuffix);
        io.Bits16(13, 0, 13, r.ic);
        io.Bits16(13, 13, 3, r.icSuffix);
        io.Bits16(15, 0, 2, r.markarianSuffix);
        io.Bits16(15, 2, 14, r.markarian);
        io.U8(17, r.messier);
        io.U16(18, r.ugc);
        io.U8(20, r.ugcSuffix);
        io.U8(21, r.commonNameRow);
        io.I32(22, r.ra);
        io.I32(26, r.dec);
        io.Bits16(30, 0, 5, r.hubbleType);
        io.Bits16(30, 5, 11, r.hubbleStage);
        io.Bits16(32, 0, 4, r.classCode[0]);
        io.Bits16(32, 4, 2, r.classCode[1]);
        io.Bits16(32, 6, 4, r.classCode[2]);
        io.Bits16(32, 10, 3, r.classCode[3]);
        io.Bits16(32, 13, 2, r.classCode[4]);
        io.Bits16(32, 15, 1, r.classCode[5]);
        io.Bits8(34, 0, 3, r.interaction);
        io.Bits8(34, 3, 1, r.flagA);
        io.Bits8(34, 4, 1, r.flagB);
        io.Bits8(34, 5, 3, r.spare34);
        io.U8(35, r.magnitude);
        io.U8(36, r.surfaceBrightness);
        io.I32(37, r.radialVelocity);
        io.U16(41, r.value41);
        io.U16(43, r.value43);
        io.U8(45, r.colour45);
        io.U8(46, r.colour46);
        io.U16(47, r.value47);
        io.U16(49, r.major);
        io.U16(51, r.minor);
    }
};
static_assert(LayoutIsPacked<GalaxyLayout, GalaxyRecord>());

// One galaxy as the readers hand it on: values, not codes. Fields a read
// mask left out keep these initial values. Designations stay numbers; the
// codecs print them.
struct GalaxyData {
    long record = 0;
    double ra = 0;  // radians, J2000
    double dec = 0;
    double magnitude = 99.9;
    double magnitude2 = 99.9;  // surface brightness, magnitudes a square arc second
    double sizeMajor = 0;      // radians
    double sizeMinor = 0;
    double sizeDefault = 0;  // the major diameter, or 1 arc minute without one
    long pgc = 0;
    int mcgZone = 0;
    int mcgField = 0;
    int mcgNumber = 0;
    int mcgPart = 0;
    int arp = 0;
    int esoField = 0;
    int esoNumber = 0;
    int esoSuffix = 0;
    int ngc = 0;
    int ngcSuffix = 0;
    int ic = 0;
    int icSuffix = 0;
    int markarian = 0;
    int markarianSuffix = 0;
    int messier = 0;
    int ugc = 0;
    int ugcSuffix = 0;
    int commonNameRow = -1;  // -1 none
    std::string hubble;      // "Sb c", "E" and the like; "" unknown
    int classCode[6] = {};
    int interaction = 0;
    bool flagA = false;
    bool flagB = false;
    long radialVelocity = -1;  // -1 unknown
    int value41 = 65535;       // 65535 unknown
    int value43 = 65535;
    double colour45 = 99.9;
    double colour46 = 99.9;
    double value47 = 0;
};

// The Hubble text: the type word (row from 1 of the type strings), then a
// blank and the stage word when the stage row is 1 to 7.
std::string hubbleText(int type, int stage);

// The stored surface brightness, or with the code 255 the one computed from
// the diameters (one standing for the other when it is 0) and the
// magnitude; 99.9 when both diameters are 0 or the magnitude is unknown.
double galaxySurfaceBrightness(uint8_t code, double majorArcmin, double minorArcmin,
                               double magnitude);

FilePtr openGalaxies();

// Galaxy `number` (from 1); 1 on success, 0 for a number below 1 or a short
// read.
int readGalaxy(FILE* file, long number, GalaxyData* out, int readMask);
void decodeGalaxy(const GalaxyRecord& record, GalaxyData* out, int readMask);

// What one typed designation can lead to: several galaxies at most this
// many (a caller keeps what it has room for).
inline constexpr int kMaxGalaxyHits = 10;

FilePtr openPgc();
FilePtr openArp();
FilePtr openMarkarian();
FilePtr openUgc();
FilePtr openMcg();
FilePtr openEsob();

// One-galaxy indexes: the record, 0 when not found.
long lookupPgc(FILE* file, long pgc);
long lookupArp(FILE* file, int arp);

// The several-galaxy indexes: the number of records written to `out`.
// Suffixes and parts are letter codes: 0 none, 1 for A, and so on.
int lookupMarkarian(FILE* file, int number, int suffix, long out[kMaxGalaxyHits]);
int lookupUgc(FILE* file, int number, int suffix, long out[kMaxGalaxyHits]);
int lookupMcg(FILE* file, int zone, int field, int number, int part, long out[kMaxGalaxyHits]);
int lookupEso(FILE* file, int field, int number, int part, long out[kMaxGalaxyHits]);

// `gg`: a 4-byte head, then 22-byte records from 1.
struct GroupRecord {
    int32_t ra = 0;
    int32_t dec = 0;
    uint16_t agc = 0;
    uint8_t hickson = 0;
    uint8_t commonNameRow = 255;
    uint8_t magnitudeA = 255;  // tenths, 255 unknown
    uint8_t magnitude = 255;
    uint8_t magnitudeB = 255;
    uint8_t members = 0;       // member count or richness
    uint16_t redshift = 0;     // v x 0.0001
    uint16_t diameter = 0;     // tenths of an arc minute
    uint8_t code20 = 0;
    uint8_t code21 = 0;
};

struct GroupLayout {
    static constexpr size_t kSize = 22;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.I32(0, r.ra);
        io.I32(4, r.dec);
        io.U16(8, r.agc);
        io.U8(10, r.hickson);
        io.U8(11, r.commonNameRow);
        io.U8(12, r.magnitudeA);
        io.U8(13, r.magnitude);
        io.U8(14, r.magnitudeB);
        io.U8(15, r.members);
        io.U16(16, r.redshift);
        io.U16(18, r.diameter);
        io.U8(20, r.code20);
        io.U8(21, r.code21);
    }
};
static_assert(LayoutIsPacked<GroupLayout, GroupRecord>());

inline constexpr long kGroupFileHead = 4;
inline constexpr int kLastAgcGroup = 4076;

struct GroupData {
    long record = 0;
    double ra = 0;
    double dec = 0;
    double magnitude = 99.9;
    double magnitudeA = 99.9;
    double magnitudeB = 99.9;
    double sizeMajor = 0;  // radians
    double sizeMinor = 0;
    double sizeDefault = 0;  // the diameter, or 1 degree without one
    int agc = 0;
    int hickson = 0;
    int commonNameRow = -1;
    int members = 0;
    double redshift = 0;
    int code20 = 0;
    int code21 = 0;
};

FilePtr openGroups();

// Group `number` (from 1); 1 on success.
int readGroup(FILE* file, long number, GroupData* out, int readMask);
void decodeGroup(const GroupRecord& record, GroupData* out, int readMask);

// The group `PID` of an AGC number (1 to 4076: the number itself) or a
// Hickson number (1 to 100: number + 4076); 0 outside those ranges.
long groupPidOfAgc(int agc);
long groupPidOfHickson(int hickson);
