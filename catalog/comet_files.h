// The comet record, shared by the reference comets (class 3) and the
// user's comet store (class 13), and the two read-only reference files:
// `comets`, the records from row 0 with no head, and `cnames`, one name row
// per comet sorted for the list. A comet may have several records, one per
// set of elements; rows with the same PID are the same comet.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

#include "base/file_utils.h"
#include "base/record_layout.h"

// Epochs are Julian centuries of dynamical time from J2000.0; angles are
// radians of the ecliptic and equinox J2000.0; distances astronomical units.
struct CometRecord {
    uint16_t number = 0;     // periodic number, 0 for none
    uint8_t letter = ' ';    // type letter ('C', 'P', 'D', 'X', 'I', ...), blank for none
    char name[29] = {};
    char iau[17] = {};       // IAU designation without the letter: year and letter code
    uint16_t pid = 0;
    double perihelionEpoch = 0;
    double epoch = 0;              // epoch of the elements
    float perihelionDistance = 0;  // (1 - e) a when none was given
    float eccentricity = 0;
    float argPerihelion = 0;
    float node = 0;
    float inclination = 0;
    float brightnessG = 0;
    float brightnessK = 0;
    int16_t coefficient = 0;  // a small coefficient x 1000000; 2000 is the default
    char source[33] = {};     // where the elements come from
};

// A `cnames` row: the first 51 bytes of a comet record, whose PID is the
// `comets` row of the comet's first elements.
struct CometNameLayout {
    static constexpr size_t kSize = 51;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U16(0, r.number);
        io.U8(2, r.letter);
        io.Text(3, r.name);
        io.Text(32, r.iau);
        io.U16(49, r.pid);
    }
};

struct CometLayout {
    static constexpr size_t kSize = 130;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        CometNameLayout::Fields(io, r);
        io.F64(51, r.perihelionEpoch);
        io.F64(59, r.epoch);
        io.F32(67, r.perihelionDistance);
        io.F32(71, r.eccentricity);
        io.F32(75, r.argPerihelion);
        io.F32(79, r.node);
        io.F32(83, r.inclination);
        io.F32(87, r.brightnessG);
        io.F32(91, r.brightnessK);
        io.I16(95, r.coefficient);
        io.Text(97, r.source);
    }
};
static_assert(LayoutIsPacked<CometLayout, CometRecord>());
static_assert(LayoutIsPacked<CometNameLayout, CometRecord>());


// The coefficient's default, 0.002, as stored.
inline constexpr int16_t kDefaultCometCoefficient = 2000;
// The name list holds rows below this one.
inline constexpr long kCometNameRowCap = 1017;

// The reference files "%scomets.bin" and "%scnames.bin" under the first
// minor-planet root; "" before the roots are set.
std::string cometFilePath(const char* shortName);

// Opens `comets` or `cnames` for reading; nothing when the roots are not set
// or the file is missing.
FilePtr openComets();
FilePtr openCometNames();

// Record `row` of `comets`: 1 and the record, with its IAU form and full
// name when asked for (either may be null); 0 when the read fails.
int readComet(FILE* file, long row, std::string* iauOut, std::string* nameOut,
              CometRecord* recordOut = nullptr);
// The periodic number and the full name of record `row`.
int readCometNumber(FILE* file, long row, int* numberOut, std::string* nameOut);
// Row `row` of `cnames`: its search text, its full name and the `comets`
// row of its first elements. 0 past the end or on a failed read.
int readCometNameRow(FILE* file, long row, std::string* text, std::string* fullName,
                     long* pidOut);

// The first comet that matches, as its `comets` row (the class 3 PID); -1
// for none or a failed read. By name on `cnames`: the given text is a
// prefix of the row's search text, ignoring case. By IAU designation on
// `comets`: the same rule against the designation (year and letter code,
// without the type letter). By number on `comets`: equal periodic numbers.
long findCometByName(const char* text);
long findCometByIau(const char* text);
long findCometByNumber(int number);

// Fills a record from elements. Epochs are Julian centuries from J2000.0,
// angles degrees; an unknown element is 0 (q or a, one of them is needed).
// The coefficient is cut to what the record holds (0.032767 and above as
// 32767). 1 on success; 0 when the elements make no orbit, or the comet has
// no number, no designation and either a blank letter or no name. The PID
// is left 0.
struct CometElements {
    double perihelionEpoch = 0;
    double epoch = 0;
    double perihelionDistance = 0;
    double semiMajorAxis = 0;
    double eccentricity = 0;
    double argPerihelion = 0;  // degrees
    double node = 0;
    double inclination = 0;
    double brightnessG = 0;
    double brightnessK = 0;
    double coefficient = kDefaultCometCoefficient * 1e-6;
};
int packComet(CometRecord* record, int number, char letter, const char* iau, const char* name,
              const CometElements& elements, const char* source);
// The elements back: a = q / (1 - e) (0 for a parabola or hyperbola),
// angles in degrees, the coefficient times 1e-6.
CometElements unpackComet(const CometRecord& record);

// The stored coefficient for a value: times 1000000, rounded half away from
// zero, held to -32768 ... 32767.
int16_t cometCoefficientCode(double value);
