// Precession, apparent place, frames, refraction and the horizontal frame
// against Meeus, Astronomical Algorithms (2nd ed.).
#include <cmath>

#include "astro/apparent_place.h"
#include "astro/calendar.h"
#include "astro/frames.h"
#include "astro/horizontal.h"
#include "astro/numeric.h"
#include "astro/nutation.h"
#include "astro/obliquity.h"
#include "astro/parallax.h"
#include "astro/precession.h"
#include "astro/spherical.h"
#include "support.h"

namespace {

constexpr double kDeg = kRadiansPerDegree;
constexpr double kArcsec = kRadiansPerArcsecond;
constexpr double kTimeSecond = 15.0 * kRadiansPerArcsecond;

double Hms(double h, double m, double s) { return (h * 3600 + m * 60 + s) * kTimeSecond; }
double Dms(double d, double m, double s) { return (d + m / 60.0 + s / 3600.0) * kDeg; }

Site MakeSite(double west, double north, double height) {
    Site site;
    SiteInit(&site, west, north, height, 6.0, 0.0, nullptr);
    return site;
}

// Stage 2 for a dynamical-time Julian day, with the nutation table.
Instant DynamicalInstant(double jde) {
    Instant i;
    i.jd = jde;
    i.tDyn = JdToCenturies(jde);
    i.t = i.tDyn;
    i.meanObliquity = MeanObliquity(i.tDyn);
    NutationLoad(FERRY2_SOLAR_DIR);
    NutationCompute(&i);
    return i;
}

// Theta Persei, examples 21.b and 23.a: J2000.0 to 2028 November 13.19 TD,
// with its proper motion, then to the apparent place.
TEST(PlaceChain, ThetaPerseiFromCatalogueToApparent) {
    const double jde = 2462088.69;
    double ra = Hms(2, 44, 11.986), dec = Dms(49, 13, 42.48);
    PrecessionContext c;
    ASSERT_EQ(PrecessionPrepare(&c, 0.0, JdToCenturies(jde), kFk5, kFk5), 1);
    ASSERT_EQ(PrecessionApply(&c, &ra, &dec, 0.03425 * kTimeSecond, -0.0895 * kArcsec, 0), 1);
    EXPECT_NEAR(ra, Hms(2, 46, 11.331), 0.001 * kTimeSecond);
    EXPECT_NEAR(dec, Dms(49, 20, 54.54), 0.01 * kArcsec);

    const Instant i = DynamicalInstant(jde);
    MeanToApparent(&i, &ra, &dec, 1);
    EXPECT_NEAR(ra, Hms(2, 46, 14.390), 0.005 * kTimeSecond);
    EXPECT_NEAR(dec, Dms(49, 21, 7.45), 0.05 * kArcsec);

    ApparentToMean(&i, &ra, &dec, 1);
    EXPECT_NEAR(ra, Hms(2, 46, 11.331), 0.002 * kTimeSecond);
    EXPECT_NEAR(dec, Dms(49, 20, 54.54), 0.02 * kArcsec);
}

TEST(PlaceChain, PrecessionEdges) {
    PrecessionContext c;
    PrecessionPrepare(&c, 0.3, 0.3, kFk5, kFk5);
    double ra = 1.0, dec = 0.5;
    PrecessionApply(&c, &ra, &dec, 1e-6, 1e-6, 0);  // equal epochs: motion ignored too
    EXPECT_EQ(ra, 1.0);
    EXPECT_EQ(dec, 0.5);
    EXPECT_EQ(PrecessionPrepare(nullptr, 0, 1, kFk5, kFk5), 0);
    EXPECT_EQ(PrecessionApply(nullptr, &ra, &dec, 0, 0, 0), 0);

    // FK4 to FK5 over no time still takes the E-terms off and corrects the equinox.
    PrecessionPrepare(&c, -0.5, -0.5, kFk4, kFk5);
    PrecessionRetarget(&c, -0.5, -0.4999, kFk4, kFk5);
    EXPECT_NEAR(c.interval, 0.0001 * 1.0000213584301634, 1e-15);
    ra = 1.0, dec = 0.5;
    PrecessionApply(&c, &ra, &dec, 0.0, 0.0, 0);  // equinox correction 0.0775 - 0.085 T seconds
    double eRa = 1.0, eDec = 0.5;
    Fk4ETerms(1, &eRa, &eDec);
    EXPECT_NEAR(ra - eRa, (0.0775 - 0.085 * 0.5) * kTimeSecond, 1e-9);
}

TEST(Frames, EclipticOfPolluxMeeus13a) {
    Instant i;
    i.meanObliquity = 23.4392911 * kDeg;
    double lon, lat;
    EquatorialToEcliptic(&i, 116.328942 * kDeg, 28.026183 * kDeg, &lon, &lat, 1);
    EXPECT_NEAR(lon / kDeg, 113.215630, 1e-6);
    EXPECT_NEAR(lat / kDeg, 6.684170, 1e-6);
    double ra, dec;
    EclipticToEquatorial(&i, lon, lat, &ra, &dec, 1);
    EXPECT_NEAR(ra / kDeg, 116.328942, 1e-9);
    EXPECT_NEAR(dec / kDeg, 28.026183, 1e-9);
    // At an ecliptic pole the longitude is set.
    EclipticToEquatorial(&i, 1.0, kPi / 2.0, &ra, &dec, 1);
    EXPECT_EQ(ra, 1.5 * kPi);
}

TEST(Frames, GalacticCentreAndPole) {
    double l, b;
    // The B1950.0 galactic centre, 17h42m26.6s -28 55' 00".
    EquatorialToGalactic(Hms(17, 42, 26.6), -Dms(28, 55, 0), &l, &b);
    EXPECT_NEAR(AngleDiff(l, 0.0), 0.0, 0.002 * kDeg);
    EXPECT_NEAR(b, 0.0, 0.002 * kDeg);
    EquatorialToGalactic(3.355395487, 27.4 * kDeg, &l, &b);  // the north galactic pole
    EXPECT_NEAR(b, kPi / 2.0, 1e-4);  // the constants' squares sum to a hair under 1
    double ra, dec;
    GalacticToEquatorial(1.2, -0.3, &ra, &dec);
    EquatorialToGalactic(ra, dec, &l, &b);
    EXPECT_NEAR(l, 1.2, 1e-8);
    EXPECT_NEAR(b, -0.3, 1e-8);
}

// Venus seen from Washington, example 13.b.
TEST(Horizontal, VenusFromWashingtonMeeus13b) {
    const Site site = MakeSite(Dms(77, 3, 56), Dms(38, 55, 17), 0.0);
    Instant i;
    i.last = Wrap(Hms(8, 34, 56.853) - site.longitude, kTwoPi);  // Greenwich apparent, less the west longitude
    const double ra = Hms(23, 9, 16.641), dec = -Dms(6, 43, 11.61);
    // 128.736887 - 77.065556 - 347.319338 degrees; the book prints 64.352133
    // and goes on from that.
    EXPECT_NEAR(HourAngle(&i, ra, 2) / kDeg, 64.351994, 1e-5);
    const double h = 64.352133 * kDeg;
    double az, alt;
    EXPECT_EQ(EquatorialToHorizontal(&site, h, dec, &az, &alt, 0), 1);
    EXPECT_NEAR(az / kDeg, 68.0337, 1e-4);
    EXPECT_NEAR(alt / kDeg, 15.1249, 1e-4);
    EXPECT_NEAR(AltitudeOf(&site, h, dec), alt, 1e-12);
    EXPECT_NEAR(AzimuthOf(&site, h, dec), az, 1e-12);
    double h2, dec2;
    HorizontalToEquatorial(&site, az, alt, &h2, &dec2);
    EXPECT_NEAR(h2, h, 1e-10);
    EXPECT_NEAR(dec2, dec, 1e-10);

    EXPECT_EQ(HourAngle(&i, ra, 3), kNoAngle);
    EXPECT_EQ(AltitudeOf(nullptr, h, dec), kNoAngle);
    EXPECT_EQ(EquatorialToHorizontal(nullptr, h, dec, &az, &alt, 0), -1);
}

TEST(Horizontal, RefractionBothWaysAndItsEdges) {
    // Example 16.a: 28.754' at an apparent altitude of 0.5 degree.
    EXPECT_NEAR(RefractionForApparent(0.5 * kDeg) / kDeg * 60.0, 28.754, 0.1);
    EXPECT_NEAR(RefractionForTrue(90.0 * kDeg), 0.0, 1e-7);
    EXPECT_NEAR(RefractionForApparent(90.0 * kDeg), 0.0, 1e-7);
    EXPECT_TRUE(RefractionForTrue(-5.0 * kDeg) > 0.0 && std::isfinite(RefractionForTrue(-5.0 * kDeg)));
    EXPECT_EQ(RefractionForTrue(-5.01 * kDeg), 0.0);
    EXPECT_NEAR(RefractionForApparent(0.0) / kDeg * 60.0, 34.5, 0.6);
    EXPECT_EQ(RefractionForApparent(-1.0 * kDeg), 0.009890199094634533);
    // The radian limit against degrees: -0.005 degree still takes the formula.
    EXPECT_NE(RefractionForApparent(-0.005 * kDeg), 0.009890199094634533);
    EXPECT_NEAR(AirMass(kPi / 2.0), 1.0, 1e-12);
    EXPECT_NEAR(AirMass(30.0 * kDeg), 2.0 * (1.0 - 0.0012 * 3.0), 1e-12);
}

TEST(Horizontal, ApparentToHorizontalAndBack) {
    Site site = MakeSite(0.5, 0.8, 0.0);
    Instant i;
    i.last = 2.0;
    // A star on the meridian at the zenith: refraction would lift it past.
    double a = 2.0, b = 0.8, magnitude = 99.0;
    EXPECT_EQ(ApparentToHorizontal(&site, &i, &a, &b, &magnitude, 0), 1);
    EXPECT_TRUE(b <= kPi / 2.0 && b > kPi / 2.0 - 1e-7);
    EXPECT_EQ(magnitude, 99.0);

    double ra = 1.2, dec = 0.3, mag = 5.0;
    ASSERT_EQ(ApparentToHorizontal(&site, &i, &ra, &dec, &mag, 1), 1);
    EXPECT_NEAR(mag, 5.0 + 0.1 / std::sin(dec), 1e-12);
    HorizontalToApparent(&site, &i, &ra, &dec, &mag);
    EXPECT_NEAR(ra, 1.2, 2e-5);  // the two refractions are not exact inverses
    EXPECT_NEAR(dec, 0.3, 2e-5);
    EXPECT_NEAR(mag, 5.0, 1e-3);

    double below = 2.0 + kPi, low = -0.5;
    EXPECT_EQ(ApparentToHorizontal(&site, &i, &below, &low, nullptr, 0), 0);
}

TEST(PlaceChain, AberrationLeavesThePoleAlone) {
    const Instant i = DynamicalInstant(2451545.0);
    double ra = 1.0, dec = kPi / 2.0;
    AberrationApply(&i, &ra, &dec, 1, 1);
    EXPECT_EQ(ra, 1.0);
    EXPECT_EQ(dec, kPi / 2.0);
    // Near the pole nutation goes through the ecliptic: the star moves by
    // about the nutation, along the ecliptic.
    ra = 1.0, dec = 1.56;
    NutationApply(&i, &ra, &dec, 1);
    EXPECT_LT(Separation(1.0, 1.56, ra, dec), 20.0 * kArcsec);
    EXPECT_GT(Separation(1.0, 1.56, ra, dec), 1.0 * kArcsec);
}

TEST(Spherical, SeparationPositionAngleAndVectors) {
    // Example 17.a: Arcturus and Spica are 32.7930 degrees apart.
    const double sep = Separation(213.9154 * kDeg, 19.1825 * kDeg, 201.2983 * kDeg, -11.1614 * kDeg);
    EXPECT_NEAR(sep / kDeg, 32.7930, 1e-4);
    const double angles[][3] = {{0.0, 0.1, 0.0}, {0.1, 0.0, kPi / 2.0}, {-0.1, 0.0, 1.5 * kPi}};  // N, E, W
    for (const auto& a : angles) EXPECT_NEAR(PositionAngle(0.0, 0.0, a[0], a[1]), a[2], 1e-12) << a[2];

    double v[3] = {1.0, 2.0, 3.0}, r[3];
    RotateAboutZ(v, 0.0, 1.0, r);
    EXPECT_NEAR(r[0], -2.0, 1e-15);
    EXPECT_NEAR(r[1], 1.0, 1e-15);
    RotateAboutX(v, 0.0, 1.0, r);
    EXPECT_NEAR(r[1], -3.0, 1e-15);
    EXPECT_NEAR(r[2], 2.0, 1e-15);

    const double a[3] = {0.0, 0.0, 2.0}, b[3] = {kPi / 2.0, 0.0, 1.0};
    VectorDifference(a, b, r);  // (2, 0, 0) - (0, 1, 0)
    EXPECT_NEAR(r[0], kTwoPi - std::atan(0.5), 1e-12);
    EXPECT_NEAR(r[2], std::sqrt(5.0), 1e-12);
    const double x[3] = {-1.0, 0.0, 0.0}, y[3] = {0.0, -1.0, 0.0};
    VectorSum(x, y, r);
    EXPECT_NEAR(r[0], 1.25 * kPi, 1e-12);
    EXPECT_NEAR(r[2], std::sqrt(2.0), 1e-12);
}

TEST(Parallax, TheMoonSeenFromTheSite) {
    Site site = MakeSite(0.0, 0.7, 0.0);
    Instant i;
    i.last = 1.0;
    // On the meridian the shift is all in declination, toward the horizon.
    double ra = 1.0, dec = 0.2;
    ApplyParallax(&site, &i, 0.00257, &ra, &dec);
    EXPECT_NEAR(ra, 1.0, 1e-12);
    EXPECT_LT(dec, 0.2);
    double ra3 = 1.0, dec3 = 0.2, ratio = 1.0;
    ParallaxRigorous(&site, &i, std::sin(4.263451511677259e-05 / 0.00257), &ra3, &dec3, &ratio);
    EXPECT_NEAR(dec3, dec, 1e-9);
    EXPECT_LT(ratio, 1.0);
}

TEST(Parallax, MarsFromPalomarMeeus40a) {
    // 0.37276 au away, hour angle 288.7958 degrees: the topocentric place
    // is 1.29 s of time east and 22h38m08.54s, -15 46' 30.0".
    Site site = MakeSite(Hms(7, 47, 27), Dms(33, 21, 22), 1706.0);
    Instant i;
    const double ra0 = 339.530208 * kDeg;
    i.last = ra0 + 288.7958 * kDeg;
    double ra = ra0, dec = -15.771083 * kDeg;
    ApplyParallax(&site, &i, 0.37276, &ra, &dec);
    EXPECT_NEAR(ra - ra0, 1.29 * kTimeSecond, 0.01 * kTimeSecond);
    EXPECT_NEAR(ra, Hms(22, 38, 8.54), 0.01 * kTimeSecond);
    EXPECT_NEAR(dec, -Dms(15, 46, 30.0), 0.1 * kArcsec);
}

}  // namespace
