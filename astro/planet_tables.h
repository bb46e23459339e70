// The record layouts of the planet engine's table files, shared by the
// engine that reads them and the tool that writes them. All little-endian.
//
//   PLANETS.NDX  9 records of 72 bytes. Record 0 is the Earth on the fixed
//                ecliptic of J2000 (only Pluto's geocentric place uses it),
//                records 1 to 8 Mercury to Neptune on the ecliptic and
//                equinox of date: the index of the record's first term in
//                PLANETS.BIN, then a term count for each coordinate (0
//                longitude, 1 latitude, 2 radius) and power of time (0 to
//                5). Each count is followed by two bytes that are not read;
//                the last count ends the record.
//   PLANETS.BIN  24-byte terms A, B, C meaning A cos(B + C tau), tau in
//                Julian millennia; a record's terms stand by coordinate and
//                then by power, in the order of its counts.
//   moontab.bin  60 rows of six i32 (multipliers of D, M, M', F, longitude
//                sine coefficient in 0.000001 degree, distance cosine
//                coefficient in 0.001 km), then 60 rows of five i32 (the
//                multipliers and the latitude sine coefficient).
//   plutotab.bin 43 rows of three i16 multipliers of J, S, P, then 43 rows
//                of six f64: sine and cosine amplitude of longitude,
//                latitude and radius in turn.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/record_layout.h"

inline constexpr const char* kPlanetIndexFileName = "PLANETS.NDX";
inline constexpr const char* kPlanetTermFileName = "PLANETS.BIN";
inline constexpr const char* kMoonTableFileName = "moontab.bin";
inline constexpr const char* kPlutoTableFileName = "plutotab.bin";

inline constexpr int kPlanetRecords = 9;
inline constexpr int kSeriesCoordinates = 3;
inline constexpr int kSeriesPowers = 6;

struct PlanetIndexRecord {
    int16_t firstTerm = 0;
    int16_t count[kSeriesCoordinates][kSeriesPowers] = {};
    uint8_t unread[kSeriesCoordinates * kSeriesPowers - 1][2] = {};
};

struct PlanetIndexLayout {
    static constexpr size_t kSize = 72;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.I16(0, r.firstTerm);
        for (size_t c = 0; c < kSeriesCoordinates; ++c)
            for (size_t p = 0; p < kSeriesPowers; ++p) {
                const size_t slot = c * kSeriesPowers + p;
                io.I16(2 + 24 * c + 4 * p, r.count[c][p]);
                if (slot + 1 < kSeriesCoordinates * kSeriesPowers) io.Raw(4 + 4 * slot, r.unread[slot]);
            }
    }
};
static_assert(LayoutIsPacked<PlanetIndexLayout, PlanetIndexRecord>());

struct PlanetTerm {
    double a = 0;  // amplitude, radians or astronomical units
    double b = 0;  // phase, radians
    double c = 0;  // frequency, radians per Julian millennium
};

struct PlanetTermLayout {
    static constexpr size_t kSize = 24;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.F64(0, r.a);
        io.F64(8, r.b);
        io.F64(16, r.c);
    }
};
static_assert(LayoutIsPacked<PlanetTermLayout, PlanetTerm>());

inline constexpr int kMoonRows = 60;

// Multipliers of D, M, M', F and the coefficients.
struct MoonLongitudeRow {
    int32_t multiplier[4] = {};
    int32_t longitudeSine = 0;     // 0.000001 degree
    int32_t distanceCosine = 0;    // 0.001 km
};

struct MoonLongitudeLayout {
    static constexpr size_t kSize = 24;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        for (size_t i = 0; i < 4; ++i) io.I32(4 * i, r.multiplier[i]);
        io.I32(16, r.longitudeSine);
        io.I32(20, r.distanceCosine);
    }
};
static_assert(LayoutIsPacked<MoonLongitudeLayout, MoonLongitudeRow>());

struct MoonLatitudeRow {
    int32_t multiplier[4] = {};
    int32_t latitudeSine = 0;  // 0.000001 degree
};

struct MoonLatitudeLayout {
    static constexpr size_t kSize = 20;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        for (size_t i = 0; i < 4; ++i) io.I32(4 * i, r.multiplier[i]);
        io.I32(16, r.latitudeSine);
    }
};
static_assert(LayoutIsPacked<MoonLatitudeLayout, MoonLatitudeRow>());

inline constexpr size_t kMoonTableSize =
    kMoonRows * (MoonLongitudeLayout::kSize + MoonLatitudeLayout::kSize);  // 2640

// The largest multiple of D, M, M', F that a row may ask for: the routine
// tabulates these once per call.
inline constexpr int kMoonMaxMultiple[4] = {4, 2, 4, 3};

inline constexpr int kPlutoRows = 43;

struct PlutoMultiplierRow {
    int16_t multiplier[3] = {};  // J, S, P
};

struct PlutoMultiplierLayout {
    static constexpr size_t kSize = 6;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        for (size_t i = 0; i < 3; ++i) io.I16(2 * i, r.multiplier[i]);
    }
};
static_assert(LayoutIsPacked<PlutoMultiplierLayout, PlutoMultiplierRow>());

// Longitude and latitude in 0.000001 degree, radius in 0.0000001 au: sine
// then cosine amplitude of each.
struct PlutoAmplitudeRow {
    double amplitude[6] = {};
};

struct PlutoAmplitudeLayout {
    static constexpr size_t kSize = 48;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        for (size_t i = 0; i < 6; ++i) io.F64(8 * i, r.amplitude[i]);
    }
};
static_assert(LayoutIsPacked<PlutoAmplitudeLayout, PlutoAmplitudeRow>());

inline constexpr size_t kPlutoTableSize =
    kPlutoRows * (PlutoMultiplierLayout::kSize + PlutoAmplitudeLayout::kSize);  // 2322

// The largest multiple of J, S, P that a row may ask for.
inline constexpr int kPlutoMaxMultiple[3] = {3, 2, 6};
