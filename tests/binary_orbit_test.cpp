// Kepler's equation and the apparent orbit of a double star, against Meeus,
// Astronomical Algorithms (2nd ed.), and against Kepler's equation itself.
#include <cmath>

#include "astro/binary_orbit.h"
#include "astro/numeric.h"
#include "support.h"

namespace {

constexpr double kDeg = kRadiansPerDegree;

// Example 30.a: e = 0.1, M = 5 degrees gives E = 5.554589 degrees; a whole
// turn more of mean anomaly gives the same root.
TEST(Kepler, PublishedRoot) {
    EXPECT_NEAR(KeplerSolve(5.0 * kDeg, 0.1) / kDeg, 5.554589, 1e-6);
    EXPECT_NEAR(KeplerSolve(5.0 * kDeg + kTwoPi, 0.1) / kDeg, 5.554589, 1e-6);
}

// The root must satisfy M = E - e sin E, here worked out from the root
// alone, and the true anomaly must agree with cos v = (cos E - e)/(1 - e cos E).
// Rows with e above 0.97 and |M| below 0.6 take the near-parabolic start.
TEST(Kepler, RootsSatisfyTheEquation) {
    const struct {
        double e, m;
    } rows[] = {{0.99, 0.1}, {0.999, 0.01}, {0.98, -0.3}, {0.995, 2.5}, {0.9, -3.0}, {0.5, 1.0}};
    for (const auto& r : rows) {
        const double E = KeplerSolve(r.m, r.e);
        EXPECT_NEAR(E - r.e * std::sin(E), r.m, 1e-10) << "e " << r.e << " M " << r.m;
        const double v = TrueFromEccentric(E, std::sqrt((1 + r.e) / (1 - r.e)));
        const double cosV = (std::cos(E) - r.e) / (1 - r.e * std::cos(E));
        EXPECT_NEAR(std::cos(v), cosV, 1e-9);
        EXPECT_EQ(std::signbit(v), std::signbit(E));
    }
}

// The worked example of the chapter on binary stars: eta Coronae Borealis
// for 1980.0 stands at position angle 318.4 degrees, 0.411 arc seconds.
TEST(BinaryStar, EtaCoronaeBorealis1980) {
    BinaryOrbit orbit{41.623, 1934.008, 0.2763, 0.907, 59.025, 23.717, 219.907};
    double pa = 0, rho = 0;
    ASSERT_EQ(BinaryPosition(&orbit, 1980.0, &pa, &rho), 1);
    EXPECT_NEAR(pa, 318.4, 0.05);
    EXPECT_NEAR(rho, 0.411, 0.0005);
    EXPECT_NEAR(orbit.meanMotion, kTwoPi / 41.623, 1e-12);  // filled on first use

    // One period later the companion is back where it was.
    double pa2 = 0, rho2 = 0;
    ASSERT_EQ(BinaryPosition(&orbit, 1980.0 + 41.623, &pa2, &rho2), 1);
    EXPECT_NEAR(pa2, pa, 1e-6);
    EXPECT_NEAR(rho2, rho, 1e-9);
}

TEST(BinaryStar, UnusableOrbitsFail) {
    double pa = 0, rho = 0;
    EXPECT_EQ(BinaryPosition(nullptr, 1980.0, &pa, &rho), 0);
    BinaryOrbit noPeriod{0.0, 1934.008, 0.2763, 0.907, 59.025, 23.717, 219.907};
    EXPECT_EQ(BinaryPosition(&noPeriod, 1980.0, &pa, &rho), 0);
    BinaryOrbit open{41.623, 1934.008, 1.0, 0.907, 59.025, 23.717, 219.907};
    EXPECT_EQ(BinaryPosition(&open, 1980.0, &pa, &rho), 0);
}

}  // namespace
