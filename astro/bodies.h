// The place of each major solar-system body at an instant: heliocentric,
// geocentric, mean of date and apparent topocentric. The Earth's shadow is
// one more body, for the eclipse events.
#pragma once

#include <cstdint>

#include "astro/instant.h"
#include "astro/planet_series.h"

struct BodyState {
    int16_t bodyId = 0;
    const char* name = nullptr;  // into the body name table
    double helioLongitude = 0;   // radians; ecliptic of date, Pluto J2000
    double helioLatitude = 0;
    double helioRadius = 0;      // au
    double geoLongitude = 0;     // radians
    double geoLatitude = 0;
    double geoDistance = 0;      // au; kilometres for the Moon and the shadow
    double topoDistance = 0;     // kilometres, Moon and shadow, by BodyApparent
    double meanRa = 0;           // radians, mean equator and equinox of date
    double meanDec = 0;
    double apparentRa = 0;       // apparent and topocentric
    double apparentDec = 0;
    double magnitude = 0;
    double equatorialDiameter = 0;  // radians; umbra for the shadow
    double polarDiameter = 0;       // penumbra for the shadow
    int16_t satelliteCount = 0;
};

// "Sun" to "Earth Shadow" by body id; null outside 0 to 11.
const char* BodyName(int index);

// With `body->bodyId` set, fills the body up to `meanDec`. `earth` is
// EarthHeliocentric of the same instant, passed in so that a list of bodies
// computes it once. 1, or 0 on a null argument.
int BodyPlace(Instant* instant, const double earth[3], BodyState* body);

// After BodyPlace: the apparent topocentric place for `site`, and the
// Moon's and the shadow's topocentric distance. Nothing on null.
void BodyApparent(const Site* site, const Instant* instant, BodyState* body);

// The Moon from the abridged lunar series: 0 when moontab.bin isn't loaded.
int MoonPlace(const Instant* instant, BodyState* body);
int MoonTableLoad(const char* folder);
void MoonTableFree();
bool MoonTableLoaded();

// The umbra and penumbra of the Earth's shadow at the Moon's distance, as
// angular radii: the caller doubles them.
void EarthShadow(double sunDistance, double moonDistanceAu, double sunSemiDiameter, double* umbra,
                 double* penumbra);
