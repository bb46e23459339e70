#include "astro/binary_orbit.h"

#include <cmath>

#include "astro/kepler.h"
#include "astro/numeric.h"

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
