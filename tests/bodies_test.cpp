// The Sun, Moon and planets against the worked examples of J. Meeus,
// Astronomical Algorithms (2nd ed., 1998), on the planet tables that
// make-refdata writes from the published series. Where the program's own
// constants differ from the book's, the difference is stated and checked
// as such.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "astro/bodies.h"
#include "astro/instant.h"
#include "astro/numeric.h"
#include "astro/nutation.h"
#include "astro/planet_files.h"
#include "astro/satellite_table.h"
#include "support.h"

namespace {

const std::string kSolar = FERRY2_SOLAR_DIR;
constexpr double kDeg = kRadiansPerDegree;

double Centuries(double jde) { return (jde - kJ2000) / kDaysPerCentury; }

// An instant given in dynamical time, as the worked examples are.
Instant Dynamical(int year, int month, int day) {
    Instant i;
    InstantSet(&i, nullptr, month, day, year, 0.0, kUniversalTime);
    InstantScales(&i, 1e-9);  // delta T of (almost) nothing: UT is TD
    return i;
}

class BodiesTest : public ::testing::Test {
protected:
    void SetUp() override {
        PlanetFilesClose();
        PlanetFilesOpen(kSolar.c_str());  // 0 without usats.bin; the rest is read
        ASSERT_TRUE(PlanetSeriesLoaded() && MoonTableLoaded() && PlutoTableLoaded() && NutationLoaded());
    }
    void TearDown() override { PlanetFilesClose(); }

    // BodyPlace, then BodyApparent for the centre of the Earth (a site whose
    // rho values are 0 sees no parallax).
    static BodyState Place(int id, Instant* i) {
        double earth[3];
        EarthHeliocentric(i, earth);
        BodyState b;
        b.bodyId = static_cast<int16_t>(id);
        EXPECT_EQ(BodyPlace(i, earth, &b), 1);
        const Site geocentre;
        BodyApparent(&geocentre, i, &b);
        return b;
    }
};

// 32.a and 25.b: the truncated series give the book's sums; the program
// then turns them to the FK5 frame, by -0.09033" in longitude (plus a term
// in tan B) and 0.03916"(cos L' - sin L') in latitude.
TEST_F(BodiesTest, HeliocentricSeriesGiveTheWorkedExamples) {
    double venus[3], earth[3];
    HelioSpherical(kVenus, Centuries(2448976.5), venus);
    EXPECT_NEAR(venus[0] / kDeg, 26.11428 - 0.09033 / 3600, 0.000006);
    EXPECT_NEAR(venus[1] / kDeg, -2.62070, 0.000006);
    EXPECT_NEAR(venus[2], 0.724603, 0.0000006);
    HelioSpherical(kEarth, Centuries(2448908.5), earth);
    const double l = -43.63484796 + 7 * kTwoPi;  // the book's unwrapped sum
    EXPECT_NEAR(earth[0], l - 0.09033 * kRadiansPerArcsecond, 2e-8);
    // L' = L - 1.397 T (T = -0.0721834) degrees: cos L' - sin L' = 0.5975.
    EXPECT_NEAR(earth[1], -0.00000312 + 0.03916 * 0.5975 * kRadiansPerArcsecond, 1e-8);
    EXPECT_NEAR(earth[2], 0.99760775, 1e-8);
}

// 25.b: the apparent Sun of 1992 October 13.0 TD.
TEST_F(BodiesTest, SunOfTheHighAccuracyExample) {
    Instant i = Dynamical(1992, 10, 13);
    const BodyState sun = Place(kSun, &i);
    EXPECT_STREQ(sun.name, "Sun");
    EXPECT_NEAR(sun.geoDistance, 0.99760775, 1e-8);  // the Earth's radius vector, no light time
    EXPECT_NEAR(sun.apparentRa / kDeg, 198.378178, 0.000002);
    EXPECT_NEAR(sun.apparentDec / kDeg, -7.783871, 0.000002);
}

// 33.a: Venus on 1992 December 20.0 TD. The book forms the geocentric place
// on the dynamical ecliptic and turns it to FK5 afterwards, and takes
// aberration in ecliptic terms; the program corrects each heliocentric
// place and takes aberration in right ascension and declination, so the
// results part by up to 0.5".
TEST_F(BodiesTest, VenusApparentPlace) {
    Instant i = Dynamical(1992, 12, 20);
    const BodyState venus = Place(kVenus, &i);
    EXPECT_NEAR(venus.geoLongitude / kDeg, 313.08102, 0.00015);
    EXPECT_NEAR(venus.geoLatitude / kDeg, -2.08474, 0.00002);
    EXPECT_NEAR(venus.geoDistance, 0.910947, 0.000002);
    EXPECT_NEAR(venus.apparentRa / kDeg, 316.17291, 0.00015);
    EXPECT_NEAR(venus.apparentDec / kDeg, -18.88801, 0.00015);
}

// 47.a: the Moon of 1992 April 12.0 TD. The program's mean longitude
// differs from the book's in its constant, rate and square terms, by
// 0.0000045 degree at this date.
TEST_F(BodiesTest, MoonOfTheWorkedExample) {
    Instant i = Dynamical(1992, 4, 12);
    const BodyState moon = Place(kMoon, &i);
    EXPECT_STREQ(moon.name, "Moon");
    EXPECT_NEAR(moon.geoLongitude / kDeg, 133.162655 + 0.0000045, 0.000002);
    EXPECT_NEAR(moon.geoLatitude / kDeg, -3.229126, 0.000002);
    EXPECT_NEAR(moon.geoDistance, 368409.7, 0.05);
    EXPECT_NEAR(moon.apparentRa / kDeg, 134.688470, 0.00001);
    EXPECT_NEAR(moon.apparentDec / kDeg, 13.768368, 0.00001);
    // At the Earth's centre the topocentric distance is the geocentric one.
    EXPECT_NEAR(moon.topoDistance, moon.geoDistance, 1e-6);
}

// From a real site the Moon moves by up to its horizontal parallax, about a
// degree, and comes nearer when it is high.
TEST_F(BodiesTest, MoonFromASiteIsShiftedByItsParallax) {
    Instant i = Dynamical(1992, 4, 12);
    Site site;
    char name[] = "Greenwich";
    SiteInit(&site, 0.0, 51.4779 * kDeg, 0.0, 6.0, 0.0, name);
    InstantSidereal(&site, &i);
    double earth[3];
    EarthHeliocentric(&i, earth);
    BodyState moon;
    moon.bodyId = kMoon;
    BodyPlace(&i, earth, &moon);
    BodyApparent(&site, &i, &moon);
    const double shift = std::hypot((moon.apparentRa - 134.688470 * kDeg) * std::cos(moon.apparentDec),
                                    moon.apparentDec - 13.768368 * kDeg);
    EXPECT_GT(shift, 0.1 * kDeg);
    EXPECT_LT(shift, 1.0 * kDeg);
    EXPECT_LT(moon.topoDistance, moon.geoDistance + 6378.14);
    EXPECT_NE(moon.topoDistance, moon.geoDistance);
}

// 37.a: Pluto on 1992 October 13.0 TD. The program's constant terms of the
// series are 238.956785 deg, -3.908202 deg and 40.7247248 au where the book
// has 238.958116, -3.908239 and 40.7241346: the periodic sums are the
// book's, the results part by exactly those differences.
TEST_F(BodiesTest, PlutoSeriesWithTheProgramsConstants) {
    double pluto[3];
    HelioSpherical(kPluto, Centuries(2448908.5), pluto);
    EXPECT_NEAR(pluto[0] / kDeg, 232.74071 + (238.956785 - 238.958116), 0.000006);
    EXPECT_NEAR(pluto[1] / kDeg, 14.58782 + (-3.908202 + 3.908239), 0.000006);
    EXPECT_NEAR(pluto[2], 29.711111 + (40.7247248 - 40.7241346), 0.0000006);
    // Its place is on the J2000 ecliptic: BodyPlace leaves the instant's
    // obliquity as it found it.
    Instant i = Dynamical(1992, 10, 13);
    const double obliquity = i.meanObliquity;
    const BodyState b = Place(kPluto, &i);
    EXPECT_EQ(i.meanObliquity, obliquity);
    EXPECT_NEAR(b.geoDistance, 30.528, 0.002);  // the book's 30.528746 au, shifted by the constants
}

TEST_F(BodiesTest, EarthShadowAndTheEarthItself) {
    Instant i = Dynamical(1992, 10, 13);
    const BodyState earth = Place(kEarth, &i);
    EXPECT_STREQ(earth.name, "Earth");
    EXPECT_NEAR(earth.helioRadius, 0.99760775, 1e-8);
    EXPECT_EQ(earth.geoDistance, 0.0);  // the heliocentric triple only
    EXPECT_EQ(earth.meanRa, 0.0);

    const BodyState sun = Place(kSun, &i);
    const BodyState moon = Place(kMoon, &i);
    const BodyState shadow = Place(kEarthShadow, &i);
    EXPECT_STREQ(shadow.name, "Earth Shadow");
    EXPECT_NEAR(shadow.geoDistance, moon.geoDistance, 1e-9);
    EXPECT_NEAR(Wrap(shadow.geoLongitude - sun.geoLongitude, kTwoPi), kPi, 1e-12);
    EXPECT_NEAR(shadow.geoLatitude, -sun.geoLatitude, 1e-15);
    double umbra = 0, penumbra = 0;
    EarthShadow(sun.geoDistance, moon.geoDistance / 149597870.0, 0.004652417528, &umbra, &penumbra);
    EXPECT_DOUBLE_EQ(shadow.equatorialDiameter, 2 * umbra);
    EXPECT_DOUBLE_EQ(shadow.polarDiameter, 2 * penumbra);
}

// The shadow cone by hand: at 60 Earth radii and 1 au, with the Sun's
// radius of 0.004652417528, a = 0.99834 asin(1/60) = 0.0166398,
// b = asin(4.263521265e-05) = 0.0000426: umbra 1.02 (a + b - s) =
// 0.0122706, penumbra 1.02 (a + b + s) = 0.0217615.
TEST(EarthShadow, ConeByHand) {
    double umbra = 0, penumbra = 0;
    EarthShadow(1.0, 60 * 4.263521265e-05, 0.004652417528, &umbra, &penumbra);
    EXPECT_NEAR(umbra, 0.0122706, 2e-7);
    EXPECT_NEAR(penumbra, 0.0217615, 2e-7);
}

TEST(BodyNames, TwelveBodiesAndNothingOutside) {
    const char* names[] = {"Sun",    "Mercury", "Venus",   "Earth", "Mars", "Jupiter",
                           "Saturn", "Uranus",  "Neptune", "Pluto", "Moon", "Earth Shadow"};
    for (int id = 0; id < 12; ++id) EXPECT_STREQ(BodyName(id), names[id]);
    EXPECT_EQ(BodyName(-1), nullptr);
    EXPECT_EQ(BodyName(12), nullptr);
}

// The tables are read in order and the first failure stops the open; what
// was read stays until PlanetFilesClose. Once all is loaded, a second open
// with another folder changes nothing.
class PlanetFilesTest : public ScratchTest {};

TEST_F(PlanetFilesTest, OpenStopsAtTheFirstBadFileAndCloseFreesAll) {
    for (const char* name : {"PLANETS.NDX", "PLANETS.BIN", "nutcon.bin", "moontab.bin", "plutotab.bin"})
        WriteFileBytes(name, ReadFileBytes(kSolar + name));
    Bytes moon = ReadFileBytes(kSolar + "moontab.bin");
    moon.pop_back();  // one byte short
    WriteFileBytes("moontab.bin", moon);
    PlanetFilesClose();
    EXPECT_EQ(PlanetFilesOpen("./"), 0);
    EXPECT_TRUE(PlanetSeriesLoaded());
    EXPECT_TRUE(NutationLoaded());
    EXPECT_FALSE(MoonTableLoaded());
    EXPECT_FALSE(PlutoTableLoaded());
    PlanetFilesClose();
    EXPECT_FALSE(PlanetSeriesLoaded());
    EXPECT_FALSE(NutationLoaded());

    WriteFileBytes("moontab.bin", ReadFileBytes(kSolar + "moontab.bin"));
    WriteFileBytes("usats.bin", Bytes(kSatelliteTableSize, 0x11));
    EXPECT_EQ(PlanetFilesOpen("./"), 1);
    EXPECT_NE(SatelliteTable(), nullptr);
    EXPECT_EQ(PlanetFilesOpen("/nowhere/"), 1);  // already loaded: a no-op
    EXPECT_EQ(PlanetFilesFolder(), "./");
    PlanetFilesClose();
    EXPECT_EQ(SatelliteTable(), nullptr);
}

TEST_F(PlanetFilesTest, ShortPlanetTermsAreRefused) {
    WriteFileBytes("PLANETS.NDX", ReadFileBytes(kSolar + "PLANETS.NDX"));
    Bytes terms = ReadFileBytes(kSolar + "PLANETS.BIN");
    terms.resize(terms.size() - 24);  // Neptune's last term is missing
    WriteFileBytes("PLANETS.BIN", terms);
    PlanetFilesClose();
    EXPECT_EQ(PlanetFilesOpen("./"), 0);
    EXPECT_FALSE(PlanetSeriesLoaded());
    double r[3] = {1, 1, 1};
    HelioSpherical(kNeptune, 0.0, r);
    EXPECT_EQ(r[2], 0.0);  // no terms, no place
    HelioSpherical(kMars, 0.0, r);
    EXPECT_NEAR(r[2], 1.391, 0.001);  // read before Neptune's record: kept until the close
    PlanetFilesClose();
    HelioSpherical(kMars, 0.0, r);
    EXPECT_EQ(r[2], 0.0);
}

}  // namespace
