// The engine against ERFA, the open implementation of the IAU's standard
// routines, over many dates.
#include <erfa.h>

#include <cmath>

#include "astro/calendar.h"
#include "astro/instant.h"
#include "astro/numeric.h"
#include "astro/nutation.h"
#include "astro/obliquity.h"
#include "support.h"

namespace {

constexpr double kMas = kRadiansPerArcsecond / 1000.0;

// Julian days from 1800 to 2200, not on whole days.
std::vector<double> Dates() {
    std::vector<double> jds;
    for (double jd = 2378496.5; jd < 2524593.5; jd += 1234.567) jds.push_back(jd);
    return jds;
}

// The 63 largest of the 106 terms: the rest add up to a few milliarcseconds.
TEST(AgainstErfa, NutationWithinFourMilliarcseconds) {
    ASSERT_EQ(NutationLoad(FERRY2_NUTCON_DIR), 1);
    double worstPsi = 0.0, worstEps = 0.0;
    for (double jd : Dates()) {
        Instant i;
        i.tDyn = JdToCenturies(jd);
        NutationCompute(&i);
        double dpsi, deps;
        eraNut80(jd, 0.0, &dpsi, &deps);
        worstPsi = std::max(worstPsi, std::fabs(i.nutLongitude - dpsi));
        worstEps = std::max(worstEps, std::fabs(i.nutObliquity - deps));
    }
    EXPECT_LT(worstPsi, 4.0 * kMas);
    EXPECT_LT(worstEps, 4.0 * kMas);
}

// Laskar's polynomial and the IAU 1980 one part by 0.006" a century.
TEST(AgainstErfa, MeanObliquityNearJ2000) {
    for (double t = -1.0; t <= 1.0; t += 0.125) {
        const double jd = kJ2000 + t * kDaysPerCentury;
        EXPECT_NEAR(MeanObliquity(t), eraObl80(jd, 0.0), 8.0 * kMas) << t;
    }
    EXPECT_NEAR(MeanObliquity(0.0), eraObl80(kJ2000, 0.0), 1e-12);
}

// The same 1982 expression, written in degrees from the Julian day: the two
// forms' rounded constants part by about 5e-9 rad (0.07 ms of time).
TEST(AgainstErfa, MeanSiderealTimeWithinATenthOfAMillisecond) {
    Site greenwich;
    for (double jd : Dates()) {
        Instant i;
        i.jd = jd;
        i.t = JdToCenturies(jd);
        InstantSidereal(&greenwich, &i);
        const double expected = eraGmst82(jd, 0.0);
        EXPECT_NEAR(AngleDiff(i.gmst, expected), 0.0, 1e-4 * kTwoPi / 86400.0) << jd;
    }
}

}  // namespace
