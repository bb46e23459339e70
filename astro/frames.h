// Ecliptic, equatorial and galactic frames, in place on pairs of reals,
// radians.
#pragma once

#include "astro/instant.h"

// `which` 2 takes the true obliquity (mean plus nutation), anything else
// the mean one.
void EclipticToEquatorial(const Instant* instant, double longitude, double latitude, double* ra,
                          double* dec, int which);
void EquatorialToEcliptic(const Instant* instant, double ra, double dec, double* longitude,
                          double* latitude, int which);

// On B1950.0 equatorial coordinates.
void EquatorialToGalactic(double ra, double dec, double* l, double* b);
void GalacticToEquatorial(double l, double b, double* ra, double* dec);
