#include "astro/obliquity.h"

#include "astro/numeric.h"

namespace {
// Arc seconds over U = T / 100, lowest power first.
constexpr double kLaskar[] = {84381.448, -4680.93, -1.55, 1999.25, -51.38, -249.67,
                              -39.05,    7.12,     27.87, 5.79,    2.45};
}  // namespace

double MeanObliquity(double tDyn) {
    return Polynomial(kLaskar, 10, tDyn / 100.0) * kRadiansPerArcsecond;
}
