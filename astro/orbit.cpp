#include "astro/orbit.h"

#include <cmath>

#include "astro/kepler.h"
#include "astro/numeric.h"

namespace {

// The mean obliquity of J2000.0 as the Gaussian vectors take it.
constexpr double kSinObliquity = 0.39777716;
constexpr double kCosObliquity = 0.91748206;

// k / a^(3/2), degrees a day.
double MeanMotionOfAxis(double a) {
    return kGaussK / (a * std::sqrt(a)) / kRadiansPerDegree;
}

}  // namespace

int OrbitInit(OrbitRecord* orbit, double perihelionEpoch, double epoch, double meanAnomaly,
              double semiMajorAxis, double perihelionDistance, double eccentricity,
              double argPerihelion, double node, double inclination, double meanMotion,
              double brightnessH, double brightnessG, int magnitudeLaw) {
    if (!orbit) return 0;
    OrbitRecord& o = *orbit;
    const double e = eccentricity;
    double a = semiMajorAxis;
    double q = perihelionDistance;
    double n = meanMotion;  // degrees a day
    double t0 = perihelionEpoch;

    o.eccentricity = e;
    o.argPerihelion = argPerihelion * kRadiansPerDegree;
    o.node = node * kRadiansPerDegree;
    o.inclination = inclination * kRadiansPerDegree;
    o.brightnessH = brightnessH;
    o.brightnessG = brightnessG;
    o.magnitudeLaw = static_cast<int16_t>(magnitudeLaw);
    if (!(e >= 0)) return 0;

    // Without a perihelion epoch or a mean motion, the mean motion comes
    // from the axis, or from the perihelion distance.
    if (t0 == 0 && n == 0) {
        if (a == 0 && q == 0) return 0;
        if (a == 0) a = q / (1.0 - e);
        n = MeanMotionOfAxis(a);
    }
    // The perihelion before the epoch's mean anomaly.
    if (t0 == 0 && n != 0) t0 = epoch - Wrap(meanAnomaly, 360.0) / (n * kDaysPerCentury);
    // Hyperbolic elements with a mean anomaly leave no real mean motion.
    if (t0 == 0 || !std::isfinite(t0)) return 0;
    o.perihelionEpoch = t0;

    if (e < 1.0) {
        if (a == 0 && q != 0) a = q / (1.0 - e);
        o.meanMotion = (n == 0 && a != 0) ? kGaussK / (a * std::sqrt(a)) : n * kRadiansPerDegree;
        if (!(o.meanMotion > 0) || !std::isfinite(o.meanMotion)) return 0;
        if (a == 0) a = std::pow(kGaussK / o.meanMotion, 2.0 / 3.0);
        if (!(a > 0)) return 0;
    }
    o.semiMajorAxis = a;
    o.perihelionDistance = q != 0 ? q : (1.0 - e) * a;
    // Barker's equation and the series divide by the perihelion distance.
    return o.perihelionDistance > 0 ? 1 : 0;
}

void OrbitVectors(OrbitRecord* orbit) {
    if (!orbit) return;
    OrbitRecord& o = *orbit;
    const double cosNode = std::cos(o.node), sinNode = std::sin(o.node);
    const double cosI = std::cos(o.inclination), sinI = std::sin(o.inclination);
    const double f = cosNode;
    const double g = sinNode * kCosObliquity;
    const double h = sinNode * kSinObliquity;
    const double p = -sinNode * cosI;
    const double q = cosNode * cosI * kCosObliquity - sinI * kSinObliquity;
    const double r = cosNode * cosI * kSinObliquity + sinI * kCosObliquity;
    o.angleA = SafeAtan2(f, p);
    o.angleB = SafeAtan2(g, q);
    o.angleC = SafeAtan2(h, r);
    o.sizeA = std::sqrt(f * f + p * p);
    o.sizeB = std::sqrt(g * g + q * q);
    o.sizeC = std::sqrt(h * h + r * r);
    if (o.eccentricity < 1.0)
        o.anomalyFactor = std::sqrt((1.0 + o.eccentricity) / (1.0 - o.eccentricity));
}

void OrbitHeliocentric(double t, const OrbitRecord* orbit, double vector[3]) {
    if (!orbit || !vector) return;
    const OrbitRecord& o = *orbit;
    const double e = o.eccentricity;
    const double dt = t - o.perihelionEpoch;
    double v, r;
    if (e < 1.0) {
        const double E = KeplerSolve(dt * o.meanMotion * kDaysPerCentury, e);
        v = TrueFromEccentric(E, o.anomalyFactor);
        r = o.semiMajorAxis * (1.0 - e * e) / (1.0 + e * std::cos(v));
    } else {
        const double q = o.perihelionDistance;
        v = e == 1.0 ? ParabolaSolve(dt, q) : NearParabolaSolve(dt, q, e);
        r = q * (1.0 + e) / (1.0 + e * std::cos(v));
    }
    const double u = o.argPerihelion + v;
    vector[0] = r * o.sizeA * std::sin(o.angleA + u);
    vector[1] = r * o.sizeB * std::sin(o.angleB + u);
    vector[2] = r * o.sizeC * std::sin(o.angleC + u);
}
