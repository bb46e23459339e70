#include "astro/orbit_place.h"

#include <cmath>

#include "astro/numeric.h"
#include "astro/obliquity.h"
#include "astro/orbit_magnitudes.h"
#include "astro/planet_series.h"
#include "astro/spherical.h"

namespace {

// The light time of one astronomical unit, in Julian centuries.
constexpr double kLightTimePerAu = 1.581250732375086e-07;

// The Sun's place in the frame of J2000.0.
constexpr int kJ2000Frame = 0;

double Length(const double v[3]) {
    return std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
}

}  // namespace

int OrbitGeocentric(const Instant* instant, const OrbitRecord* orbit, double* ra, double* dec,
                    double* geoDistance, double* helioDistance, double* phaseAngle,
                    double* magnitude, double* elongation) {
    if (!instant || !orbit) return 0;
    double sun[3];
    SunRectangular(instant->tDyn, kJ2000Frame, kJ2000Obliquity, sun);

    // The body where it was when the light left it: one pass, against the
    // same Sun.
    double body[3], geo[3];
    OrbitHeliocentric(instant->tDyn, orbit, body);
    VectorSum(body, sun, geo);
    OrbitHeliocentric(instant->tDyn - geo[2] * kLightTimePerAu, orbit, body);
    VectorSum(body, sun, geo);

    const double r = Length(body);
    const double sunDistance = Length(sun);
    const double d = geo[2];
    const double phase = TriangleAngle(r, sunDistance, d);
    if (ra) *ra = Wrap(geo[0], kTwoPi);
    if (dec) *dec = geo[1];
    if (geoDistance) *geoDistance = d;
    if (helioDistance) *helioDistance = r;
    if (phaseAngle) *phaseAngle = phase;
    if (magnitude)
        *magnitude = orbit->magnitudeLaw == kCometMagnitudeLaw
                         ? CometMagnitude(r, d, orbit->brightnessH, orbit->brightnessG)
                         : MinorPlanetMagnitude(r, d, phase, orbit->brightnessH,
                                                orbit->brightnessG);
    if (elongation) *elongation = TriangleAngle(sunDistance, r, d);
    return 1;
}
