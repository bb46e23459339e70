// The engine against ERFA, the open implementation of the IAU's standard
// routines, over many dates.
#include <erfa.h>

#include <cmath>

#include "astro/bodies.h"
#include "astro/calendar.h"
#include "astro/frames.h"
#include "astro/horizontal.h"
#include "astro/instant.h"
#include "astro/numeric.h"
#include "astro/nutation.h"
#include "astro/obliquity.h"
#include "astro/planet_files.h"
#include "astro/precession.h"
#include "astro/site.h"
#include "astro/spherical.h"
#include "catalog/object_place.h"
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
    ASSERT_EQ(NutationLoad(FERRY2_SOLAR_DIR), 1);
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
        EXPECT_NEAR(AngleDiff(i.gmst, eraGmst82(jd, 0.0)), 0.0, 1e-4 * kTwoPi / 86400.0) << jd;
    }
}

// The same 1976 expressions for the three angles, between many epochs.
TEST(AgainstErfa, PrecessionAnglesOfTheFk5System) {
    for (double from = -2.0; from <= 2.0; from += 0.7) {
        for (double to = -2.5; to <= 2.5; to += 0.9) {
            PrecessionContext c;
            PrecessionPrepare(&c, from, to, kFk5, kFk5);
            double zeta, z, theta;
            eraPrec76(kJ2000, from * kDaysPerCentury, kJ2000, to * kDaysPerCentury, &zeta, &z, &theta);
            EXPECT_NEAR(c.zeta, zeta, 1e-12);
            EXPECT_NEAR(c.z, z, 1e-12);
            EXPECT_NEAR(c.sinTheta, std::sin(theta), 1e-12);
        }
    }
}

// B1950.0 FK4 places to J2000.0 FK5 by precession, E-terms and the equinox
// correction, and back, against ERFA's full transformations (no proper
// motion). ERFA also corrects the FK4 frame's own rotation and the motion
// it gives to stars that have none; the simpler way leaves those out, and
// the two part by up to 1.32" over this grid of the sky.
TEST(AgainstErfa, Fk4AndFk5BothWaysWithinOneAndAHalfArcseconds) {
    const double b1950 = JdToCenturies(2433282.4235);
    for (bool toFk5 : {true, false}) {
        PrecessionContext c;
        PrecessionPrepare(&c, toFk5 ? b1950 : 0.0, toFk5 ? 0.0 : b1950, toFk5 ? kFk4 : kFk5, toFk5 ? kFk5 : kFk4);
        double worst = 0.0;
        for (double ra = 0.1; ra < kTwoPi; ra += 0.5) {
            for (double dec = -1.4; dec <= 1.4; dec += 0.35) {
                double r = ra, d = dec, rE, dE, dr, dd;
                PrecessionApply(&c, &r, &d, 0.0, 0.0, 0);
                toFk5 ? eraFk45z(ra, dec, 1950.0, &rE, &dE) : eraFk54z(ra, dec, 1950.0, &rE, &dE, &dr, &dd);
                worst = std::max(worst, eraSeps(r, d, rE, dE));
            }
        }
        EXPECT_LT(worst, 1.5 * kRadiansPerArcsecond) << toFk5;
    }
}

// Catalogue places of bright stars (J2000, proper motion in RA with cos(dec)
// divided out) carried to the observer's apparent place and altitude, against
// ERFA's star-independent astrometry. ERFA also bends light round the Sun and
// takes the diurnal aberration; together those stay well under a second of
// arc for stars far from the Sun.
TEST(AgainstErfa, ApparentPlaceAndAltitudeOfStarsWithinOneArcsecond) {
    ASSERT_EQ(NutationLoad(FERRY2_SOLAR_DIR), 1);
    const struct {
        const char* name;
        double raDeg, decDeg, pmRaArcsec, pmDecArcsec;  // pmRa on the sky
    } stars[] = {
        {"Vega", 279.234583, 38.783611, 0.201, 0.287},
        {"Sirius", 101.2875, -16.716111, -0.553, -1.205},
        {"Polaris", 37.954167, 89.264167, 0.038, -0.015},
        {"Arcturus", 213.915417, 19.1825, -1.093, -1.999},
    };
    char name[] = "Kitt Peak";
    Site site;
    SiteInit(&site, 111.6 * kRadiansPerDegree, 31.96 * kRadiansPerDegree, 0.0, 6.0, 0, name);
    for (const double jd : {2447892.5 + 0.3, 2451545.0 + 0.8, 2455197.5 + 0.1, 2462502.5 + 0.6}) {
        Instant instant;
        instant.jd = jd;
        InstantFromJd(&site, &instant);
        InstantScales(&instant, 0.0);
        InstantSidereal(&site, &instant);
        const double tt = jd + instant.deltaTDays;
        for (const auto& star : stars) {
            ObjectRecord r;
            r.raJ2000 = star.raDeg * kRadiansPerDegree;
            r.decJ2000 = star.decDeg * kRadiansPerDegree;
            r.pmRa = static_cast<float>(star.pmRaArcsec * kRadiansPerArcsecond / std::cos(r.decJ2000));
            r.pmDec = static_cast<float>(star.pmDecArcsec * kRadiansPerArcsecond);
            applyObjectPlace(&r, &site, &instant, 0.0);

            double ri, di, eo;
            eraAtci13(r.raJ2000, r.decJ2000, r.pmRa, r.pmDec, 0.0, 0.0, tt, 0.0, &ri, &di, &eo);
            const double ra = eraAnp(ri - eo);
            EXPECT_LT(eraSeps(ra, di, r.raApparent, r.decApparent), kRadiansPerArcsecond)
                << star.name << " " << jd;

            // The altitude without refraction, from ERFA's apparent place and
            // its apparent sidereal time (UT1 taken as UT).
            const double last = eraGst94(jd, 0.0) - site.longitude;
            double azimuth, altitude;
            eraHd2ae(last - ra, di, site.latitude, &azimuth, &altitude);
            if (altitude < 5 * kRadiansPerDegree) continue;
            EXPECT_NEAR(r.altitude - RefractionForTrue(altitude), altitude, kRadiansPerArcsecond)
                << star.name << " " << jd;
            EXPECT_NEAR(AngleDiff(r.azimuth, azimuth), 0.0,
                        kRadiansPerArcsecond / std::cos(altitude))
                << star.name << " " << jd;
        }
    }
}

}  // namespace

namespace {

// The planet tables, loaded for the tests that need the Sun and the Moon.
class AgainstErfaBodies : public ::testing::Test {
protected:
    void SetUp() override {
        PlanetFilesClose();
        PlanetFilesOpen(FERRY2_SOLAR_DIR);
        ASSERT_TRUE(PlanetSeriesLoaded() && MoonTableLoaded());
    }
    void TearDown() override { PlanetFilesClose(); }
};

// Angle between two rectangular vectors.
double AngleBetween(const double* a, const double* b) {
    const double cross[3] = {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
    return std::atan2(std::hypot(cross[0], cross[1], cross[2]), a[0] * b[0] + a[1] * b[1] + a[2] * b[2]);
}

double Length(const double* v) { return std::hypot(v[0], v[1], v[2]); }

// Dates from 1900 to 2100, off whole days.
std::vector<double> ModernDates() {
    std::vector<double> jds;
    for (double jd = 2415020.3; jd < 2488070.0; jd += 1011.37) jds.push_back(jd);
    return jds;
}

}  // namespace

// The geocentric Sun on the equator of J2000 from the truncated series
// against the fuller planetary ephemeris of eraEpv00: over 1900 to 2100 the
// terms left out amount to half a second of arc and two millionths of an
// au.
TEST_F(AgainstErfaBodies, SunOfJ2000WithinTheTruncation) {
    double worstAngle = 0.0, worstDistance = 0.0;
    for (double jd : ModernDates()) {
        double sun[3];
        SunRectangular(JdToCenturies(jd), 0, 0.0, sun);
        double pvh[2][3], pvb[2][3];
        eraEpv00(jd, 0.0, pvh, pvb);
        const double want[3] = {-pvh[0][0], -pvh[0][1], -pvh[0][2]};
        worstAngle = std::max(worstAngle, AngleBetween(sun, want));
        worstDistance = std::max(worstDistance, std::fabs(Length(sun) - Length(want)));
    }
    EXPECT_LT(worstAngle, 1.0 * kRadiansPerArcsecond);
    EXPECT_LT(worstDistance, 3e-6);
}

// The Sun of date: ecliptic longitude and latitude of date from the series
// against eraEpv00 turned to the mean equator of date by the 1976
// precession and to the ecliptic by the 1980 obliquity.
TEST_F(AgainstErfaBodies, SunOfDateWithinTheTruncation) {
    double worstAngle = 0.0, worstLatitude = 0.0;
    for (double jd : ModernDates()) {
        Instant i;
        i.tDyn = JdToCenturies(jd);
        i.meanObliquity = MeanObliquity(i.tDyn);
        double sun[3];
        SunRectangular(i.tDyn, 1, i.meanObliquity, sun);
        double pvh[2][3], pvb[2][3], p[3][3], date[3];
        eraEpv00(jd, 0.0, pvh, pvb);
        eraPmat76(jd, 0.0, p);
        double geo[3] = {-pvh[0][0], -pvh[0][1], -pvh[0][2]};
        eraRxp(p, geo, date);
        worstAngle = std::max(worstAngle, AngleBetween(sun, date));
        double earth[3], geoSun[3];
        HelioSpherical(kEarth, i.tDyn, earth);
        SunGeocentric(earth, geoSun);
        double ra, dec, lon, lat;
        eraC2s(date, &ra, &dec);
        EquatorialToEcliptic(&i, ra, dec, &lon, &lat, 1);
        worstLatitude = std::max(worstLatitude, std::fabs(geoSun[1] - lat));
    }
    EXPECT_LT(worstAngle, 1.0 * kRadiansPerArcsecond);
    EXPECT_LT(worstLatitude, 0.4 * kRadiansPerArcsecond);
}

// The Moon of the abridged lunar theory against eraMoon98, which evaluates
// the same abridged series with the full fundamental arguments: over 1900 to
// 2100 they agree within a second of arc and a fifth of a kilometre.
TEST_F(AgainstErfaBodies, MoonWithinTheAbridgedTheory) {
    double worstAngle = 0.0, worstDistance = 0.0;
    for (double jd : ModernDates()) {
        Instant i;
        i.tDyn = JdToCenturies(jd);
        i.meanObliquity = MeanObliquity(i.tDyn);
        BodyState moon;
        moon.bodyId = kMoon;
        ASSERT_EQ(MoonPlace(&i, &moon), 1);
        double ours[3];
        SphericalToRect(moon.meanRa, moon.meanDec, moon.geoDistance, ours);
        double pv[2][3], p[3][3], want[3];
        eraMoon98(jd, 0.0, pv);
        eraPmat76(jd, 0.0, p);
        eraRxp(p, pv[0], want);
        worstAngle = std::max(worstAngle, AngleBetween(ours, want));
        worstDistance = std::max(worstDistance, std::fabs(moon.geoDistance - Length(want) * 149597870.7));
    }
    EXPECT_LT(worstAngle, 2.0 * kRadiansPerArcsecond);
    EXPECT_LT(worstDistance, 0.5);
}
