// The apparent orbit of a double star, against Meeus, Astronomical
// Algorithms (2nd ed.).
#include <cmath>

#include "astro/binary_orbit.h"
#include "astro/numeric.h"
#include "support.h"

namespace {

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
