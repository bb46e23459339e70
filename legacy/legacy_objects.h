// The version 1.x files of the user's own objects, all under the legacy
// folder and opened "rb":
//
// comet.bin: u16 record count, two bytes not read, then 101-byte rows from
//   offset 4. All rows of one comet (one PID, one row per set of elements)
//   stand together.
// mp.bin: u32 record count, four bytes not read, then rows from offset 8
//   that are version 2 minor-planet records (UserMpLayout), the legacy PID
//   at offset 97.
// stellar.bin: u16 record count, four bytes not read, then rows from offset
//   6 that are version 2 supplemental-star records (StellarRecordLayout).
// us_pid.bin: u32 highest PID, then at 4 * pid the row of stellar.bin where
//   that PID's run begins. It may be missing; it is then rebuilt in the
//   legacy folder, the only file the program ever writes there.
//
// A run is the rows of one PID. The run readers find the run of a PID from
// the start of the file and then step along it row by row.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

#include "base/file_utils.h"
#include "base/record_layout.h"
#include "catalog/comet_files.h"
#include "catalog/user_minor_planets.h"
#include "catalog/user_stars.h"

inline constexpr long kLegacyCometHead = 4;
inline constexpr long kLegacyMinorPlanetHead = 8;
inline constexpr long kLegacyStellarHead = 6;

// One row of comet.bin. The orbital data and the fields around it are those
// of the version 2 comet record, a few bytes shorter: the designation has 10
// characters and the source 11.
struct LegacyCometRow {
    uint16_t number = 0;
    uint8_t letter = 0;
    char name[29] = {};
    char iau[10] = {};  // not NUL-terminated when all ten are used
    uint16_t pid = 0;
    double perihelionEpoch = 0;
    double epoch = 0;
    float perihelionDistance = 0;
    float eccentricity = 0;
    float argPerihelion = 0;
    float node = 0;
    float inclination = 0;
    float brightnessG = 0;
    float brightnessK = 0;
    int16_t coefficient = 0;
    char source[11] = {};
};

struct LegacyCometLayout {
    static constexpr size_t kSize = 101;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U16(0, r.number);
        io.U8(2, r.letter);
        io.Text(3, r.name);
        io.Text(32, r.iau);
        io.U16(42, r.pid);
        io.F64(44, r.perihelionEpoch);
        io.F64(52, r.epoch);
        io.F32(60, r.perihelionDistance);
        io.F32(64, r.eccentricity);
        io.F32(68, r.argPerihelion);
        io.F32(72, r.node);
        io.F32(76, r.inclination);
        io.F32(80, r.brightnessG);
        io.F32(84, r.brightnessK);
        io.I16(88, r.coefficient);
        io.Text(90, r.source);
    }
};
static_assert(LayoutIsPacked<LegacyCometLayout, LegacyCometRow>());

// The version 2 comet record of a legacy row: every field carried over as it
// stands, the designation closed by a NUL after its ten characters, the rest
// of the designation and of the source zero. The PID is the legacy one; the
// store gives its own when the record is added.
CometRecord WidenLegacyComet(const LegacyCometRow& row);

// ---- comet.bin ------------------------------------------------------------

FilePtr OpenLegacyComets(const std::string& legacyRoot, int* countOut);
// Seeks to the first row and clears the buffer's PID, so that the next run
// read searches from the start. 1, or 0 when the seek fails.
int RewindLegacyComets(FILE* stream, LegacyCometRow* rowBuffer);
// The run reader. The first call after a rewind reads rows until one of
// `pid` turns up (or `count` rows are read): 1 when it did. Each later call
// reads the next row: 1 while it is still of `pid`, 0 when it belongs to
// another comet, lies past `count` or can't be read. `indexOut` gets the
// row number of the row in the buffer (0 when there is no stream).
int NextLegacyCometRow(FILE* stream, LegacyCometRow* row, long* indexOut, uint32_t pid, long count);

// ---- mp.bin ---------------------------------------------------------------

FilePtr OpenLegacyMinorPlanets(const std::string& legacyRoot, uint32_t* countOut);
int RewindLegacyMinorPlanets(FILE* stream, UserMpRecord* rowBuffer);
// As NextLegacyCometRow, over the 116-byte rows of mp.bin.
int NextLegacyMinorPlanetRow(FILE* stream, UserMpRecord* row, long* indexOut, uint32_t pid,
                             long count);

// ---- stellar.bin and us_pid.bin ---------------------------------------------

// The stream on the first row, with the record count.
FilePtr OpenLegacyStellar(const std::string& legacyRoot, int* countOut);

// <legacyRoot>/us_pid.bin
std::string LegacyPidMapPath(const std::string& legacyRoot);

// Opens the PID map, rebuilding it from the open stellar.bin when it is
// missing; the highest PID it holds. A map that can't be made or read is
// removed again; null then.
FilePtr OpenLegacyPidMap(const std::string& legacyRoot, FILE* stellarStream, uint32_t* maxPidOut);

// The first row of star `pid`, through the map: the PID of the row read, as
// a signed number (a PID with its top bit set reads as negative), or 0 when
// any step failed. `rowOut` and `rowNumberOut` (the row number + 1) change
// only when a row was read; after a failure the buffer holds what it held.
int FindLegacyStar(const std::string& legacyRoot, FILE* stellarStream, uint32_t pid,
                   StellarRecord* rowOut, long* rowNumberOut);
