// Diurnal parallax: the shift of a near body seen from the site instead of
// the Earth's centre.
#pragma once

#include "astro/instant.h"

// Above 0.05 au the small-angle form, at or under it the exact one.
void ApplyParallax(const Site* site, const Instant* instant, double distanceAu, double* ra,
                   double* dec);

// For the Moon: `distanceRatio` is scaled by the topocentric distance
// factor.
void ParallaxRigorous(const Site* site, const Instant* instant, double sinParallax, double* ra,
                      double* dec, double* distanceRatio);
