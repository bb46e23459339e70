#include <cmath>
#include <memory>

#include "astro/bodies.h"
#include "astro/frames.h"
#include "astro/numeric.h"
#include "astro/planet_tables.h"
#include "astro/two_block_table.h"

namespace {

std::unique_ptr<MoonLongitudeRow[]> gLongitude;
std::unique_ptr<MoonLatitudeRow[]> gLatitude;

// A polynomial in T of degrees, as radians in 0 to 2 pi.
double Angle(const double (&coefficients)[5], double t) {
    return Wrap(Polynomial(coefficients, 4, t) * kRadiansPerDegree, kTwoPi);
}

// The sines and cosines of the multiples of one argument, entry k for k
// times the argument; the Sun's anomaly M carries E to the power of the
// multiple in both.
struct Multiples {
    double sine[5] = {0.0};
    double cosine[5] = {1.0};
};

// sin and cos of the row's combined argument, by the addition formulas.
void Combine(const int32_t (&multiplier)[4], const Multiples (&m)[4], double* s, double* c) {
    *s = 0.0;
    *c = 1.0;
    for (int a = 0; a < 4; ++a) {
        const int k = multiplier[a];
        if (k == 0 || std::abs(k) > kMoonMaxMultiple[a]) continue;
        const double sk = k < 0 ? -m[a].sine[-k] : m[a].sine[k];
        const double ck = m[a].cosine[std::abs(k)];
        const double s2 = *s * ck + *c * sk;
        *c = *c * ck - *s * sk;
        *s = s2;
    }
}

}  // namespace

int MoonTableLoad(const char* folder) {
    MoonTableFree();
    return ReadTwoBlockTable<MoonLongitudeLayout, MoonLongitudeRow, MoonLatitudeLayout, MoonLatitudeRow>(
               folder, kMoonTableFileName, kMoonRows, &gLongitude, &gLatitude)
               ? 1
               : 0;
}

void MoonTableFree() {
    gLongitude.reset();
    gLatitude.reset();
}

bool MoonTableLoaded() { return gLongitude != nullptr; }

int MoonPlace(const Instant* instant, BodyState* body) {
    if (!instant || !body || !gLongitude) return 0;
    const double t = instant->tDyn;
    // The coefficients as the program has always used them, the fourth-power
    // term of D included.
    const double meanLongitude = Angle({218.3164591, 481267.88134236, -0.0013268, 1.855835e-06, 1.53388e-08}, t);
    const double d = Angle({297.8502042, 445267.1115168, -0.00163, 1.831945e-06, 8.84447e-06}, t);
    const double m = Angle({357.5291092, 35999.0502909, -0.0001536, 4.083299e-08, 0.0}, t);
    const double mp = Angle({134.9634114, 477198.8676313, 0.008997, 1.434741e-05, 6.79717e-08}, t);
    const double f = Angle({93.2720993, 483202.0175273, -0.0034029, 2.836075e-07, 1.15833e-09}, t);
    const double e = 1.0 - 0.002516 * t - 7.4e-06 * t * t;
    const double a1 = Wrap((119.75 + 131.849 * t) * kRadiansPerDegree, kTwoPi);
    const double a2 = Wrap((53.09 + 479264.29 * t) * kRadiansPerDegree, kTwoPi);
    const double a3 = Wrap((313.45 + 481266.484 * t) * kRadiansPerDegree, kTwoPi);

    Multiples mult[4];
    const double args[4] = {d, m, mp, f};
    for (int a = 0; a < 4; ++a) SinCosMultiples(args[a], kMoonMaxMultiple[a], mult[a].sine, mult[a].cosine);
    // The terms in M shrink with the Earth's orbital eccentricity: E for a
    // single multiple, E squared for a double.
    for (int k = 1; k <= kMoonMaxMultiple[1]; ++k) {
        const double scale = k == 1 ? e : e * e;
        mult[1].sine[k] *= scale;
        mult[1].cosine[k] *= scale;
    }

    double sumL = 0.0, sumR = 0.0, sumB = 0.0, s = 0.0, c = 0.0;
    for (int i = 0; i < kMoonRows; ++i) {
        Combine(gLongitude[i].multiplier, mult, &s, &c);
        sumL += gLongitude[i].longitudeSine * s;
        sumR += gLongitude[i].distanceCosine * c;
        Combine(gLatitude[i].multiplier, mult, &s, &c);
        sumB += gLatitude[i].latitudeSine * s;
    }
    sumL += 3958.0 * std::sin(a1) + 1962.0 * std::sin(meanLongitude - f) + 318.0 * std::sin(a2);
    sumB += -2235.0 * std::sin(meanLongitude) + 382.0 * std::sin(a3) + 350.0 * std::sin(a1) * std::cos(f) +
            127.0 * std::sin(meanLongitude - mp) - 115.0 * std::sin(meanLongitude + mp);

    // No upper wrap: the longitude may pass 2 pi.
    double longitude = meanLongitude + sumL * 0.000001 * kRadiansPerDegree;
    while (longitude < 0.0) longitude += kTwoPi;
    body->geoLongitude = longitude;
    body->geoLatitude = sumB * 0.000001 * kRadiansPerDegree;
    body->geoDistance = 385000.56 + 0.001 * sumR;
    body->topoDistance = body->geoDistance;
    EclipticToEquatorial(instant, body->geoLongitude, body->geoLatitude, &body->meanRa, &body->meanDec, 1);
    body->meanRa = Wrap(body->meanRa, kTwoPi);
    return 1;
}
