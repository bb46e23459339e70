// Heliocentric places of the planets from the truncated VSOP87 series of
// PLANETS.NDX and PLANETS.BIN, of Pluto from its periodic series, and the
// Sun as the Earth reversed. The series are evaluated for any time: no
// routine here tests an epoch range.
#pragma once

#include "astro/instant.h"

// Body identifiers, which index every table of the engine.
inline constexpr int kSun = 0, kMercury = 1, kVenus = 2, kEarth = 3, kMars = 4, kJupiter = 5,
                     kSaturn = 6, kUranus = 7, kNeptune = 8, kPluto = 9, kMoon = 10,
                     kEarthShadow = 11;
inline constexpr int kBodyCount = 12;

// The planet series and the Pluto series as loaded by PlanetFilesOpen; the
// loaders answer 0 on a missing or short file. The planet records read
// before a short one stay until PlanetSeriesFree, and give their places;
// "loaded" means every record was read.
int PlanetSeriesLoad(const char* folder);
int PlutoTableLoad(const char* folder);
void PlanetSeriesFree();
void PlutoTableFree();
bool PlanetSeriesLoaded();
bool PlutoTableLoaded();

// Longitude, latitude (radians) and radius (au) of `bodyId` at `tDyn`
// (Julian centuries of dynamical time from J2000.0). Bodies 1 to 8 and the
// Earth of J2000 (record 0) on the planet series, referred to the FK5
// frame; body 9 on the Pluto series, J2000. A body without a loaded table
// answers zeros.
void HelioSpherical(int bodyId, double tDyn, double result[3]);

// The Earth of date at the instant's dynamical time.
void EarthHeliocentric(const Instant* instant, double result[3]);

// The Sun seen from the Earth: longitude plus pi, latitude negated, the
// same radius.
void SunGeocentric(const double earth[3], double result[3]);

// The geocentric Sun as rectangular coordinates in au. `earthFrame` 1 takes
// the Earth of date and turns the ecliptic into the equator of date by
// `obliquity`; 0 takes the Earth of J2000 and gives the equator of J2000
// (FK5).
void SunRectangular(double tDyn, int earthFrame, double obliquity, double vector[3]);
