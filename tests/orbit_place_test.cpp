// The geocentric place of a comet or minor planet: against the worked
// example of Meeus, Astronomical Algorithms (2nd ed.), 33.a, and against
// the sum of the Sun's vector and the body's place found by the classical
// formulae, with its light time, worked out here. Needs the planet tables.
#include <cmath>
#include <string>

#include "astro/calendar.h"
#include "astro/instant.h"
#include "astro/numeric.h"
#include "astro/obliquity.h"
#include "astro/orbit.h"
#include "astro/orbit_magnitudes.h"
#include "astro/orbit_place.h"
#include "astro/planet_files.h"
#include "astro/planet_series.h"
#include "conic_oracle.h"
#include "support.h"

namespace {

const std::string kSolar = FERRY2_SOLAR_DIR;
constexpr double kDeg = kRadiansPerDegree;
// The light time of one astronomical unit, 499.004783836 s, in days.
constexpr double kLightDaysPerAu = 499.004783836 / 86400.0;

Instant AtDynamical(double jde) {
    Instant i;
    i.tDyn = (jde - kJ2000) / kDaysPerCentury;
    return i;
}

double Length(const double v[3]) { return std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]); }
double Dot(const double a[3], const double b[3]) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

class OrbitPlaceTest : public ::testing::Test {
protected:
    void SetUp() override {
        PlanetFilesClose();
        PlanetFilesOpen(kSolar.c_str());
        ASSERT_TRUE(PlanetSeriesLoaded());
    }
    void TearDown() override { PlanetFilesClose(); }
};

// Example 33.a, comet Encke on 1990 October 6.0 TD: the geometric J2000.0
// place, light time included, is ra 158.558965, dec 19.158496 degrees. The
// planet tables are truncated series, which costs a fraction of an arc
// second.
TEST_F(OrbitPlaceTest, EnckeOfTheWorkedExample) {
    OrbitRecord o;
    const double t0 = JdToCenturies(JulianDay(10, 28, 1990, 0.54502 * 24));
    ASSERT_EQ(OrbitInit(&o, t0, 0, 0, 2.2091404, 0, 0.8502196, 186.23352, 334.75006, 11.94524, 0,
                        0, 0, 0),
              1);
    OrbitVectors(&o);
    const Instant instant = AtDynamical(JulianDay(10, 6, 1990, 0));
    double ra = 0, dec = 0;
    ASSERT_EQ(OrbitGeocentric(&instant, &o, &ra, &dec, nullptr, nullptr, nullptr, nullptr, nullptr),
              1);
    const double arcsecond = kRadiansPerArcsecond;
    EXPECT_NEAR(ra, 158.558965 * kDeg, 1.0 * arcsecond);
    EXPECT_NEAR(dec, 19.158496 * kDeg, 1.0 * arcsecond);
}

// The place is the body seen from the Earth when its light left it: the
// Sun's vector plus the body's heliocentric place one light time earlier.
// The phase is the angle at the body, the elongation the angle at the
// Earth, each from the vectors; the magnitude follows the orbit's law.
TEST_F(OrbitPlaceTest, SumOfTheSunAndTheBodyWithLightTime) {
    const struct {
        double a, q, e, incl, node, peri;
        int law;
        double h, g;
        double days;  // after perihelion
        double jde;
    } rows[] = {
        {2.5, 0, 0.2, 8, 100, 50, 0, 10.5, 0.15, 120, 2451545.0},
        {0, 0.6, 1.0, 130, 20, 300, 1, 6.0, 4.0, -35, 2460000.5},
        {0, 1.3, 1.1, 60, 250, 10, 0, 14.0, 0.3, 200, 2455197.5},
        {0, 0.9, 0.99, 20, 80, 190, 1, 9.0, 2.5, 10, 2448000.5},
    };
    for (const auto& r : rows) {
        OrbitRecord o;
        const double t0 = (r.jde - r.days - kJ2000) / kDaysPerCentury;
        ASSERT_EQ(OrbitInit(&o, t0, 0, 0, r.a, r.q, r.e, r.peri, r.node, r.incl, 0, r.h, r.g,
                            r.law),
                  1);
        OrbitVectors(&o);
        const Instant instant = AtDynamical(r.jde);
        double ra, dec, delta, helio, phase, magnitude, elongation;
        ASSERT_EQ(OrbitGeocentric(&instant, &o, &ra, &dec, &delta, &helio, &phase, &magnitude,
                                  &elongation),
                  1);

        double sun[3];
        SunRectangular(instant.tDyn, 0, kJ2000Obliquity, sun);
        const double q = r.q != 0 ? r.q : r.a * (1 - r.e);
        const auto geo = [&](double days, double body[3], double out[3]) {
            oracle::Place(oracle::ConicAt(days, q, r.e), r.peri * kDeg, r.node * kDeg,
                          r.incl * kDeg, body);
            for (int i = 0; i < 3; ++i) out[i] = body[i] + sun[i];
        };
        double body[3], g[3];
        geo(r.days, body, g);
        geo(r.days - Length(g) * kLightDaysPerAu, body, g);
        const double d = Length(g), rr = Length(body), sunDistance = Length(sun);
        const double toSun[3] = {-body[0], -body[1], -body[2]};
        const double toEarth[3] = {-g[0], -g[1], -g[2]};
        const double wantPhase = std::acos(Dot(toSun, toEarth) / (rr * d));
        const double wantElongation = std::acos(Dot(sun, g) / (sunDistance * d));

        EXPECT_NEAR(ra, Wrap(std::atan2(g[1], g[0]), kTwoPi), 1e-7) << "row e " << r.e;
        EXPECT_NEAR(dec, std::asin(g[2] / d), 1e-7) << "row e " << r.e;
        EXPECT_NEAR(delta, d, 1e-7 * d);
        EXPECT_NEAR(helio, rr, 1e-7 * rr);
        EXPECT_NEAR(phase, wantPhase, 1e-7);
        EXPECT_NEAR(elongation, wantElongation, 1e-7);
        const double wantMagnitude = r.law == 1 ? r.h + 5 * std::log10(d) + 2.5 * r.g * std::log10(rr)
                                                : MinorPlanetMagnitude(rr, d, wantPhase, r.h, r.g);
        EXPECT_NEAR(magnitude, wantMagnitude, 1e-6) << "row e " << r.e;
    }
}

}  // namespace
