#include "astro/binary_orbit.h"

#include <cmath>

#include "astro/numeric.h"

namespace {

// Newton's method stops once a step is this small.
constexpr double kKeplerTolerance = 1e-06;

// A start close to the root for orbits near the parabola, where E = M would
// send the first Newton steps far away.
double NearParabolicStart(double m, double e) {
    const double alpha = (1.0 - e) / (4.0 * e + 0.5);
    const double beta = m / (8.0 * e + 1.0);
    const double w = std::sqrt(alpha * alpha + beta * beta);
    const double z = beta < 0 ? -std::cbrt(-beta + w) : std::cbrt(beta + w);
    const double s = z - alpha / 2.0;
    const double s1 = s * (1.0 - 0.078 * std::pow(s, 4) / (1.0 + e));
    return m + e * s1 * (3.0 - 4.0 * s1 * s1);
}

}  // namespace

double KeplerSolve(double meanAnomaly, double e) {
    const double m = WrapPi(meanAnomaly);
    double E = (e > 0.97 && std::fabs(m) < 0.6) ? NearParabolicStart(m, e) : m;
    double d;
    do {
        d = (m + e * std::sin(E) - E) / (1.0 - e * std::cos(E));
        E += d;
    } while (std::fabs(d) > kKeplerTolerance);
    return E;
}

double TrueFromEccentric(double eccentricAnomaly, double anomalyFactor) {
    return 2.0 * std::atan(anomalyFactor * std::tan(eccentricAnomaly / 2.0));
}

int BinaryPosition(BinaryOrbit* orbit, double year, double* positionAngle, double* separation) {
    if (!orbit || !positionAngle || !separation || orbit->period == 0) return 0;
    BinaryOrbit& o = *orbit;
    const double e = o.eccentricity;
    // Kepler's equation has no solution to wait for outside the ellipse, and
    // a damaged row must not hang the caller.
    if (!(e >= 0 && e < 1)) return 0;
    if (o.meanMotion == 0) {
        o.meanMotion = kTwoPi / o.period;
        o.anomalyFactor = std::sqrt((1.0 + e) / (1.0 - e));
    }
    const double E = KeplerSolve((year - o.periastronTime) * o.meanMotion, e);
    const double v = TrueFromEccentric(E, o.anomalyFactor);
    const double r = o.semiMajorAxis * (1.0 - e * std::cos(E));

    // The orbit projected on the sky: the angle from the node, measured in
    // the plane of the sky.
    const double u = v + o.argPeriastron * kRadiansPerDegree;
    const double angle = SafeAtan2(std::sin(u) * std::cos(o.inclination * kRadiansPerDegree),
                                   std::cos(u));
    const double c = std::cos(angle);
    if (c == 0) return 0;
    *separation = r * std::cos(u) / c;
    *positionAngle = Wrap(angle / kRadiansPerDegree + o.node, 360.0);
    return 1;
}
