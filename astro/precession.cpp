#include "astro/precession.h"

#include <cmath>

#include "astro/numeric.h"

namespace {

// Julian centuries to tropical ones, and J2000.0 to B1900.0 in Julian
// centuries.
constexpr double kTropicalPerJulian = 1.0000213584301634;
constexpr double kB1900FromJ2000 = 0.9999914168377778;

// The equinox correction from FK4 to FK5 in right ascension, radians.
double EquinoxCorrection(double t) { return (0.0775 + 0.085 * t) * 15.0 * kRadiansPerArcsecond; }

void ApplyMotion(double* ra, double* dec, double raRate, double decRate, double interval) {
    *ra = Wrap(*ra + raRate * interval * 100.0, kTwoPi);
    *dec += decRate * interval * 100.0;
}

void Rotate(const PrecessionContext& c, double* ra, double* dec, double raRate, double decRate,
            int motionAfter) {
    if (!motionAfter) ApplyMotion(ra, dec, raRate, decRate, c.interval);
    const double a = Wrap(*ra + c.zeta, kTwoPi);
    const double cd = std::cos(*dec);
    const double sd = std::sin(*dec);
    const double x = cd * std::sin(a);
    const double y = c.cosTheta * cd * std::cos(a) - c.sinTheta * sd;
    const double w = c.sinTheta * cd * std::cos(a) + c.cosTheta * sd;
    *ra = Wrap(SafeAtan2(x, y) + c.z, kTwoPi);
    *dec = SafeAsin(w);
    if (motionAfter) ApplyMotion(ra, dec, raRate, decRate, c.interval);
}

}  // namespace

int PrecessionPrepare(PrecessionContext* context, double fromEpoch, double toEpoch,
                      int sourceSystem, int targetSystem) {
    if (!context) return 0;
    PrecessionContext& c = *context;
    c.fromEpoch = fromEpoch;
    c.toEpoch = toEpoch;
    c.sourceSystem = static_cast<int16_t>(sourceSystem);
    c.targetSystem = static_cast<int16_t>(targetSystem);
    double zeta, z, theta;
    if (sourceSystem == kFk4) {
        const double T = (fromEpoch + kB1900FromJ2000) * kTropicalPerJulian;
        const double t = (toEpoch - fromEpoch) * kTropicalPerJulian;
        const double first = 2304.25 + 1.396 * T;
        zeta = (first + (0.302 + 0.018 * t) * t) * t;
        z = (first + (0.791 + 0.001 * t) * t) * t;
        theta = (2004.682 - 0.853 * T - (0.426 + 0.042 * t) * t) * t;
        c.interval = t;
    } else {
        const double T = fromEpoch;
        const double t = toEpoch - fromEpoch;
        const double first = 2306.2181 + 1.39656 * T - 0.000139 * T * T;
        zeta = (first + ((0.30188 - 0.000344 * T) + 0.017998 * t) * t) * t;
        z = (first + ((1.09468 + 0.000066 * T) + 0.018203 * t) * t) * t;
        theta = ((2004.3109 - 0.8533 * T - 0.000217 * T * T) -
                 ((0.42665 + 0.000217 * T) + 0.041833 * t) * t) *
                t;
        c.interval = t;
    }
    c.zeta = zeta * kRadiansPerArcsecond;
    c.z = z * kRadiansPerArcsecond;
    c.sinTheta = std::sin(theta * kRadiansPerArcsecond);
    c.cosTheta = std::cos(theta * kRadiansPerArcsecond);
    return 1;
}

int PrecessionRetarget(PrecessionContext* context, double fromEpoch, double toEpoch,
                       int sourceSystem, int targetSystem) {
    if (!context) return 0;
    double interval = toEpoch - fromEpoch;
    if (sourceSystem == kFk4) interval *= kTropicalPerJulian;
    context->interval = interval;
    context->targetSystem = static_cast<int16_t>(targetSystem);
    return 1;
}

void Fk4ETerms(int direction, double* ra, double* dec) {
    const double r = *ra + 2.945243112740431;  // 168.75 degrees
    const double cd = std::cos(*dec);
    const double dRa = 1.65079058417797e-06 * std::sin(r) / cd;
    const double dDec = 1.653214652583518e-06 * std::cos(r) * std::sin(*dec) + 1.405959675217654e-07 * cd;
    if (direction == 2) {
        *ra += dRa;
        *dec += dDec;
    } else if (direction == 1) {
        *ra -= dRa;
        *dec -= dDec;
    }
}

int PrecessionApply(const PrecessionContext* context, double* ra, double* dec, double raRate,
                    double decRate, int motionAfter) {
    if (!context || !ra || !dec) return 0;
    const PrecessionContext& c = *context;
    if (c.interval == 0.0) return 1;
    const bool fromFk4 = c.sourceSystem == kFk4;
    const bool toFk4 = c.targetSystem == kFk4;
    if (fromFk4 && !toFk4) {
        Fk4ETerms(1, ra, dec);
        Rotate(c, ra, dec, raRate, decRate, motionAfter);
        *ra += EquinoxCorrection(c.fromEpoch);
    } else if (!fromFk4 && toFk4) {
        *ra -= EquinoxCorrection(c.toEpoch);
        Rotate(c, ra, dec, raRate, decRate, motionAfter);
        Fk4ETerms(2, ra, dec);
    } else {
        Rotate(c, ra, dec, raRate, decRate, motionAfter);
    }
    return 1;
}
