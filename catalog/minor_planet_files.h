// The reference minor planets (class 4): read-only files under the two
// minor-planet roots. The first root holds `mp_data` (what doesn't change
// with the epoch: H and G), `mp_names`, `mp_alpha` and `limits`; the second
// the folder `elements`, with one element file for every 40 days, named by
// its number. An object's PID is its minor-planet number, from 1.
#pragma once

#include <cstdint>
#include <string>

#include "astro/instant.h"
#include "astro/orbit.h"
#include "base/file_utils.h"
#include "base/record_layout.h"

// One object in an element file, at (number - 1) x 36.
struct MpElements {
    double perihelionEpoch = 0;  // Julian centuries from J2000.0
    double semiMajorAxis = 0;    // au
    double eccentricity = 0;
    float inclination = 0;       // degrees
    float argPerihelion = 0;     // degrees
    float node = 0;              // degrees
};
struct MpElementsLayout {
    static constexpr size_t kSize = 36;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.F64(0, r.perihelionEpoch);
        io.F64(8, r.semiMajorAxis);
        io.F64(16, r.eccentricity);
        io.F32(24, r.inclination);
        io.F32(28, r.argPerihelion);
        io.F32(32, r.node);
    }
};
static_assert(LayoutIsPacked<MpElementsLayout, MpElements>());

// One object in `mp_data`, at (number - 1) x 28. The orbit code reads only
// H and G; the number and the epoch of the orbit the element files were
// made from are kept for the reader's checks.
struct MpData {
    uint32_t number = 0;
    double sourceEpoch = 0;  // Julian centuries from J2000.0
    float h = 0;
    float g = 0;
    uint8_t spare[8] = {};
};
struct MpDataLayout {
    static constexpr size_t kSize = 28;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U32(0, r.number);
        io.F64(4, r.sourceEpoch);
        io.F32(12, r.h);
        io.F32(16, r.g);
        io.Raw(20, r.spare);
    }
};
static_assert(LayoutIsPacked<MpDataLayout, MpData>());

// `mp_names`: a 17-byte zero-terminated name at (number - 1) x 17.
inline constexpr size_t kMpNameSize = 17;

// `mp_alpha`: a head of 29 rows, one per first letter, then the name rows
// sorted by name from byte 203.
struct MpAlphaHead {
    uint8_t letter = 0;   // upper-case; 0 for an unused row
    uint32_t offset = 0;  // of the letter's first row, from the file's start
    uint16_t count = 0;   // rows of the run
};
struct MpAlphaHeadLayout {
    static constexpr size_t kSize = 7;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U8(0, r.letter);
        io.U32(1, r.offset);
        io.U16(5, r.count);
    }
};
static_assert(LayoutIsPacked<MpAlphaHeadLayout, MpAlphaHead>());
inline constexpr int kMpAlphaHeadRows = 29;
inline constexpr long kMpAlphaRowsStart = kMpAlphaHeadRows * 7;  // 203

struct MpAlphaRow {
    char name[17] = {};
    uint16_t number = 0;
};
struct MpAlphaRowLayout {
    static constexpr size_t kSize = 19;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.Text(0, r.name);
        io.U16(17, r.number);
    }
};
static_assert(LayoutIsPacked<MpAlphaRowLayout, MpAlphaRow>());

// `limits`: the lowest and the highest element-file number.
struct MpLimits {
    uint32_t lowest = 0;
    uint32_t highest = 0;
};
struct MpLimitsLayout {
    static constexpr size_t kSize = 8;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U32(0, r.lowest);
        io.U32(4, r.highest);
    }
};
static_assert(LayoutIsPacked<MpLimitsLayout, MpLimits>());

// "%s%s.bin" of the first root and a short name ("mp_data").
std::string minorPlanetFilePath(const char* shortName);
// "%selements/%ld.bin" of the second root.
std::string elementFilePath(long number);

// The element file for a time in Julian centuries from J2000.0: the Julian
// date cut to a whole number, times 0.025, rounded half away from zero.
long elementFileNumber(double t);

// `limits`, read once and kept while the roots stay the same. 1, or 0 when
// the file can't be read.
int readMpLimits(MpLimits* out);

// Opens the element file for the instant's dynamical time, held to the
// limits with `outOfRange` raised when it had to be. Null when `limits` or
// the file is missing. `fileNumber` (may be null) gets the number used.
FilePtr openElementFile(const Instant* instant, bool* outOfRange, long* fileNumber = nullptr);
int readElements(FILE* file, uint32_t number, MpElements* out);

FilePtr openMpData();
int readMpData(FILE* file, uint32_t number, MpData* out);
FilePtr openMpNames();
// The name of `number`, "" when it has none. 1, or 0 when it can't be read.
int readMpName(FILE* file, uint32_t number, std::string* out);

// A run of `mp_alpha` rows: those of one first letter, or all of them.
struct MpAlphaRun {
    FilePtr file;
    long next = 0;       // offset of the next row
    long remaining = 0;  // rows left in the run
};
// Opens the run of the letter (upper-cased); a blank or '*' runs over all
// rows. 1, or 0 when the file is missing or has no run for the letter.
int openMpAlpha(char firstLetter, MpAlphaRun* run);
int nextMpAlpha(MpAlphaRun* run, std::string* name, uint32_t* number);

// The number of the minor planet named by `text`, by the prefix rule, or 0.
// A number in front of the name, "(1) Ceres" or "1 Ceres", is first tried as
// part of the name; then the name alone is looked up and must give the
// number typed.
uint32_t findMpByName(const char* text);

// Keeps `mp_data` and the current element file open over many objects,
// and the last object's orbit.
struct MpCursor {
    FilePtr data;
    FilePtr elements;
    long fileNumber = 0;
    uint32_t number = 0;
    bool outOfRange = false;
    bool haveOrbit = false;
    OrbitRecord orbit;
};
int openMpCursor(MpCursor* cursor);
void closeMpCursor(MpCursor* cursor);

// Where the minor planet stands at the instant (OrbitGeocentric: the J2000.0
// place with light time, distances in au, magnitude). The element file is
// opened again only when the instant needs another; the orbit is built
// again only when the object or the file changed. 1; -1 when the elements
// make no usable orbit; 0 when a file or the object can't be read.
struct MpPlace {
    double ra = 0, dec = 0, geoDistance = 0, helioDistance = 0;
    double phaseAngle = 0, magnitude = 99.9, elongation = 0;
};
int orbitOfMinorPlanet(MpCursor* cursor, const Instant* instant, uint32_t number, MpPlace* place);
