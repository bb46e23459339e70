// Where a comet or minor planet stands from the Earth: its J2000.0 place
// with one pass of light time, its distances, phase, elongation and
// magnitude.
#pragma once

#include "astro/instant.h"
#include "astro/orbit.h"

// At the instant's dynamical time (stage 2 of `instant`), for an orbit made
// by OrbitInit and OrbitVectors: right ascension (0 to 2 pi) and
// declination of J2000.0, the distances from the Earth and the Sun (au),
// the phase angle and the elongation (radians) and the magnitude by the
// orbit's law. The Sun comes from the planet series, which must be loaded.
// Any output may be null. 1, or 0 when `instant` or `orbit` is null.
// Precession, nutation, aberration and parallax are the caller's.
int OrbitGeocentric(const Instant* instant, const OrbitRecord* orbit, double* ra, double* dec,
                    double* geoDistance, double* helioDistance, double* phaseAngle,
                    double* magnitude, double* elongation);
