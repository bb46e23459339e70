#include "astro/apparent_place.h"

#include <cmath>

#include "astro/frames.h"
#include "astro/numeric.h"

namespace {

// Beyond this declination the direct formulas lose their tangent.
constexpr double kNutationPoleDec = 1.54;
constexpr double kAberrationPoleDistance = 0.0002908882086657216;  // one arc minute
constexpr double kAberrationConstant = 9.936508497454117e-05;     // 20.49552"

}  // namespace

void NutationApply(const Instant* instant, double* ra, double* dec, int add) {
    const double dPsi = instant->nutLongitude;
    const double dEps = instant->nutObliquity;
    if (std::fabs(*dec) < kNutationPoleDec) {
        const double eps = instant->meanObliquity;
        const double a = *ra;
        const double td = std::tan(*dec);
        const double dRa = (std::cos(eps) + std::sin(eps) * std::sin(a) * td) * dPsi - std::cos(a) * td * dEps;
        const double dDec = std::sin(eps) * std::cos(a) * dPsi + std::sin(a) * dEps;
        const double sign = add == 1 ? 1.0 : -1.0;
        *ra += sign * dRa;
        *dec += sign * dDec;
        return;
    }
    double longitude, latitude;
    EquatorialToEcliptic(instant, *ra, *dec, &longitude, &latitude, 1);
    longitude += add == 1 ? dPsi : -dPsi;
    EclipticToEquatorial(instant, longitude, latitude, ra, dec, 2);
}

void SolarLongitudeForAberration(const Instant* instant, double* longitude, double* eccentricity) {
    const double t = instant->tDyn;
    const double l0 = (280.46646 + 36000.76983 * t + 0.0003032 * t * t) * kRadiansPerDegree;
    const double m = (357.5291 + 35999.05028 * t - 0.0001561 * t * t) * kRadiansPerDegree;
    const double e = 0.016708617 - 4.204e-05 * t - 1.236e-07 * t * t;
    *eccentricity = e;
    *longitude = l0 + (2.0 - e * e / 4.0) * e * std::sin(m) + 1.25 * e * e * std::sin(2.0 * m) +
                 1.0833333333 * e * e * e * std::sin(3.0 * m);
}

void AberrationApply(const Instant* instant, double* ra, double* dec, int withETerms, int add) {
    if (kPi / 2.0 - std::fabs(*dec) < kAberrationPoleDistance) return;
    double sun, e;
    SolarLongitudeForAberration(instant, &sun, &e);
    double cs = std::cos(sun);
    double ss = std::sin(sun);
    if (withETerms) {
        const double t = instant->tDyn;
        const double p = (102.93735 + 1.71954 * t + 0.00046 * t * t) * kRadiansPerDegree;
        cs -= e * std::cos(p);
        ss -= e * std::sin(p);
    }
    const double k = kAberrationConstant;
    const double eps = instant->meanObliquity;
    const double a = *ra;
    const double d = *dec;
    const double dRa = k * (std::cos(a) * cs * std::cos(eps) + std::sin(a) * ss) / std::cos(d);
    const double dDec = k * ((std::sin(eps) * std::cos(d) - std::sin(a) * std::sin(d) * std::cos(eps)) * cs +
                             std::cos(a) * std::sin(d) * ss);
    // The formulas give the correction with its sign reversed.
    const double sign = add ? -1.0 : 1.0;
    *ra += sign * dRa;
    *dec += sign * dDec;
}

void MeanToApparent(const Instant* instant, double* ra, double* dec, int withETerms) {
    NutationApply(instant, ra, dec, 1);
    AberrationApply(instant, ra, dec, withETerms, 1);
}

void ApparentToMean(const Instant* instant, double* ra, double* dec, int withETerms) {
    AberrationApply(instant, ra, dec, withETerms, 0);
    NutationApply(instant, ra, dec, 0);
}
