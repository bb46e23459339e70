// The reference minor-planet files: images written by hand at the
// documented offsets, the element-file number and its limits, the name
// rule, and a real minor planet of the reference set against its place
// worked out here from the Minor Planet Center's elements.
#include <cmath>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>

#include "astro/calendar.h"
#include "astro/numeric.h"
#include "astro/obliquity.h"
#include "astro/planet_files.h"
#include "astro/planet_series.h"
#include "catalog/minor_planet_files.h"
#include "catalog/minor_planet_objects.h"
#include "catalog/minor_planet_roots.h"
#include "catalog/user_minor_planets.h"
#include "catalog/user_mp_scan.h"
#include "conic_oracle.h"
#include "support.h"

namespace {


Instant AtJd(double jd) {
    Instant i;
    i.tDyn = (jd - 2451545.0) / 36525.0;
    return i;
}

class MinorPlanetFilesTest : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        MakeDirs("mp/elements");
        setMinorPlanetRoots("mp", "mp\\");
        // Ceres, Pallas and Vesta, numbers 1, 2 and 4.
        Bytes alpha(203 + 3 * 19, 0);
        const struct {
            char letter;
            uint32_t offset;
            uint16_t count;
        } heads[] = {{'C', 203, 1}, {'P', 222, 1}, {'V', 241, 1}};
        for (int i = 0; i < 3; ++i) {
            alpha[7 * i] = static_cast<uint8_t>(heads[i].letter);
            PokeU32(alpha, 7 * i + 1, heads[i].offset);
            alpha[7 * i + 5] = static_cast<uint8_t>(heads[i].count);
        }
        const char* names[] = {"Ceres", "Pallas", "Vesta"};
        const uint8_t numbers[] = {1, 2, 4};
        for (int i = 0; i < 3; ++i) {
            std::memcpy(alpha.data() + 203 + 19 * i, names[i], std::strlen(names[i]));
            alpha[203 + 19 * i + 17] = numbers[i];
        }
        WriteFileBytes("mp/mp_alpha.bin", alpha);
        Bytes limits(8, 0);
        PokeU32(limits, 0, 61289);
        PokeU32(limits, 4, 61290);
        WriteFileBytes("mp/limits.bin", limits);
        Bytes elements(2 * 36, 0);
        PokeF64(elements, 36, 0.125);
        PokeF64(elements, 44, 2.5);
        PokeF64(elements, 52, 0.25);
        PokeF32(elements, 60, 7.5f);
        PokeF32(elements, 64, 100.25f);
        PokeF32(elements, 68, 200.5f);
        WriteFileBytes("mp/elements/61289.bin", elements);
        WriteFileBytes("mp/elements/61290.bin", elements);
        Bytes data(2 * 28, 0);
        PokeF32(data, 28 + 12, 4.25f);
        PokeF32(data, 28 + 16, 0.5f);
        WriteFileBytes("mp/mp_data.bin", data);
        Bytes names17(2 * 17, 0);
        std::memcpy(names17.data() + 17, "Pallas", 6);
        WriteFileBytes("mp/mp_names.bin", names17);
    }
};

TEST_F(MinorPlanetFilesTest, ElementFileNumberEveryFortyDays) {
    const struct {
        double jd;
        long number;
    } cases[] = {
        {2451545.0, 61289},  // 2451545 x 0.025 = 61288.625
        {2451544.9, 61289},  // cut to 2451544: 61288.6
        {2451540.0, 61289},  // 61288.5, half away from zero
        {2451539.7, 61288},  // cut to 2451539: 61288.475
        {2451524.0, 61288},  // 61288.1
    };
    for (const auto& c : cases) EXPECT_EQ(elementFileNumber((c.jd - 2451545.0) / 36525.0), c.number) << c.jd;
}

TEST_F(MinorPlanetFilesTest, ElementFilesAreHeldToTheLimits) {
    const struct {
        double jd;
        long number;
        bool out;
    } cases[] = {{2440000.5, 61289, true}, {2451545.0, 61289, false}, {2451580.0, 61290, false},
                 {2470000.5, 61290, true}};
    for (const auto& c : cases) {
        bool out = !c.out;
        long number = 0;
        const Instant at = AtJd(c.jd);
        EXPECT_TRUE(openElementFile(&at, &out, &number)) << c.jd;
        EXPECT_EQ(number, c.number);
        EXPECT_EQ(out, c.out);
    }
    EXPECT_EQ(elementFilePath(61289), "mp/elements/61289.bin");
    EXPECT_EQ(minorPlanetFilePath("mp_data"), "mp/mp_data.bin");
}

TEST_F(MinorPlanetFilesTest, RecordsReadFromTheirOffsets) {
    const Instant at = AtJd(2451545.0);
    FilePtr elements = openElementFile(&at, nullptr);
    MpElements e;
    ASSERT_EQ(readElements(elements.get(), 2, &e), 1);
    EXPECT_EQ(e.perihelionEpoch, 0.125);
    EXPECT_EQ(e.semiMajorAxis, 2.5);
    EXPECT_EQ(e.eccentricity, 0.25);
    EXPECT_EQ(e.inclination, 7.5f);
    EXPECT_EQ(e.argPerihelion, 100.25f);
    EXPECT_EQ(e.node, 200.5f);
    EXPECT_EQ(readElements(elements.get(), 3, &e), 0);
    FilePtr data = openMpData();
    MpData d;
    ASSERT_EQ(readMpData(data.get(), 2, &d), 1);
    EXPECT_EQ(d.h, 4.25f);
    EXPECT_EQ(d.g, 0.5f);
    FilePtr names = openMpNames();
    std::string name;
    ASSERT_EQ(readMpName(names.get(), 2, &name), 1);
    EXPECT_EQ(name, "Pallas");
}

TEST_F(MinorPlanetFilesTest, NamesByThePrefixRuleAndATypedNumber) {
    const struct {
        const char* text;
        uint32_t number;
    } cases[] = {{"ceres", 1}, {"Ves", 4}, {"(1) Ceres", 1}, {"1 Ceres", 1}, {"(4) vesta", 4},
                 {"(2) Ceres", 0}, {"4 Ceres", 0}, {"Zeus", 0}, {"*", 1}, {"Pallas Athene", 0},
                 {"12", 0}};
    for (const auto& c : cases) EXPECT_EQ(findMpByName(c.text), c.number) << c.text;
}

// Ceres from the reference set on 2026 January 1.0 TT against the classical
// route: the perihelion time from the mean anomaly and Gauss's mean motion,
// the conic by bisection, the Sun's vector, one pass of light time. The
// element files keep the angles as f32 degrees, worth about 1e-7 radians.
TEST(MinorPlanetReferenceTest, CeresOfTheReferenceSetStandsWhereItsElementsPutIt) {
    const std::string solar = FERRY2_SOLAR_DIR;
    setMinorPlanetRoots(solar.c_str(), (solar + "elements/").c_str());
    PlanetFilesClose();
    PlanetFilesOpen(solar.c_str());
    ASSERT_TRUE(PlanetSeriesLoaded());
    // The row of Ceres in the source list, read here on its own.
    std::ifstream csv(std::string(FERRY2_REFDATA_SOURCE) + "orbits/minor-planets.csv");
    std::string line;
    while (std::getline(csv, line) && line.rfind("1,Ceres,", 0) != 0) {
    }
    ASSERT_EQ(line.rfind("1,Ceres,", 0), 0u);
    std::stringstream fields(line.substr(8));
    double v[9];
    for (double& x : v) {
        std::string f;
        std::getline(fields, f, ',');
        x = std::stod(f);
    }
    const double epochJd = v[0], m = v[1], peri = v[2], node = v[3], incl = v[4], e = v[5], a = v[6];
    const double jd = 2461041.5;
    const double meanMotion = oracle::kGauss / (a * std::sqrt(a));  // radians a day
    const double perihelionJd = epochJd - m * oracle::kDeg / meanMotion;
    double sun[3];
    const Instant at = AtJd(jd);
    SunRectangular(at.tDyn, 0, kJ2000Obliquity, sun);
    double body[3], g[3];
    auto geo = [&](double when) {
        oracle::Place(oracle::ConicAt(when - perihelionJd, a * (1 - e), e), peri * oracle::kDeg,
                      node * oracle::kDeg, incl * oracle::kDeg, body);
        for (int i = 0; i < 3; ++i) g[i] = body[i] + sun[i];
    };
    geo(jd);
    geo(jd - std::sqrt(g[0] * g[0] + g[1] * g[1] + g[2] * g[2]) * 499.004783836 / 86400.0);
    const double d = std::sqrt(g[0] * g[0] + g[1] * g[1] + g[2] * g[2]);

    ObjectRecord r;
    initObjectRecord(&r);
    double distance = 0;
    ASSERT_EQ(readMinorPlanetObject(&r, 1, &at, &distance), 1);
    EXPECT_EQ(r.pid, 1u);
    EXPECT_NEAR(r.raJ2000, Wrap(std::atan2(g[1], g[0]), 2 * oracle::kPi), 5e-7);
    EXPECT_NEAR(r.decJ2000, std::asin(g[2] / d), 5e-7);
    EXPECT_NEAR(distance, d, 1e-6);
    // Not a number of the set.
    EXPECT_EQ(readMinorPlanetObject(&r, 31, &at, &distance), 0);
    EXPECT_EQ(findMpByName("(4) Vesta"), 4u);
    PlanetFilesClose();
}

// The filtered pass over the user's minor planets: Ceres (with elements of
// two epochs), Pallas and Vesta on 2026 January 1.0 TT, each placed once by
// the class reader's route, then held to the limits.
class UserMpScanTest : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        MakeDirs("user");
        PlanetFilesClose();
        PlanetFilesOpen(FERRY2_SOLAR_DIR);
        ASSERT_TRUE(PlanetSeriesLoaded());
        // MPCORB elements of 2025 Nov 21.0 TT: M, peri, node, incl, e, a, H, G.
        struct Row { uint32_t number; const char* name; double epochJd, m, peri, node, incl, e, a, h; };
        const Row rows[] = {
            {1, "Ceres", 2461000.5, 231.53975, 73.29974, 80.24963, 10.58789, 0.0795763, 2.7656157, 3.35},
            {2, "Pallas", 2461000.5, 211.52977, 310.93340, 172.88859, 34.92833, 0.2306430, 2.7699258, 4.11},
            {4, "Vesta", 2461000.5, 26.80968, 151.53712, 103.70232, 7.14406, 0.0901676, 2.3615413, 3.25},
            // Ceres again, 400 days on with the mean anomaly moved on with it.
            {1, "Ceres", 2461400.5, 318.75, 73.29974, 80.24963, 10.58789, 0.0795763, 2.7656157, 3.35},
        };
        // The store as the user's imports left it, Ceres's two rows under one
        // PID.
        Bytes store(8, 0);
        PokeU32(store, 0, 4);
        PokeU32(store, 4, 3);
        const uint32_t pids[] = {1, 2, 3, 1};
        for (size_t i = 0; i < std::size(rows); ++i) {
            const Row& r = rows[i];
            UserMpRecord record;
            ASSERT_EQ(packUserMp(&record, r.number, r.name, "MPC", 0.0, (r.epochJd - 2451545.0) / 36525.0, r.m,
                                 r.a, 0.0, r.e, r.peri, r.node, r.incl, 0.0, r.h, 0.15),
                      1);
            record.pid = pids[i];
            const auto image = RecordImage<UserMpLayout>(record);
            store.insert(store.end(), image.begin(), image.end());
        }
        WriteFileBytes(kUserMpPath, store);
        at_ = AtJd(2461041.5);
        for (uint32_t pid = 1; pid <= 3; ++pid) {
            initObjectRecord(&objects_[pid]);
            double distance = 0;
            ASSERT_EQ(readUserMinorPlanetObject(&objects_[pid], pid, &at_, &distance), 1) << pid;
        }
    }
    void TearDown() override {
        PlanetFilesClose();
        ScratchTest::TearDown();
    }
    // The PIDs a pass gives, in order, and how many progress answers came.
    std::vector<int64_t> Pass(const SupplementalScanLimits& limits, int* ticks = nullptr) {
        UserMpScan scan;
        EXPECT_EQ(beginUserMpScan(&scan, limits, at_), 1);
        std::vector<int64_t> pids;
        int progress = 0;
        for (int64_t answer; (answer = nextUserMpScan(&scan)) != 0;)
            answer == kScanProgress ? ++progress : (pids.push_back(answer), 0);
        endUserMpScan(&scan);
        if (ticks) *ticks = progress;
        return pids;
    }
    Instant at_;
    ObjectRecord objects_[4];
};

TEST_F(UserMpScanTest, EachObjectOnceHeldToTheLimits) {
    // PID 1 Ceres, 2 Pallas, 3 Vesta (the order in which they came).
    const double ceres = objects_[1].magnitude, pallas = objects_[2].magnitude, vesta = objects_[3].magnitude;
    ASSERT_LT(vesta, ceres);  // Vesta is the brightest of the three in January 2026
    ASSERT_LT(ceres, pallas);
    SupplementalScanLimits none;
    SupplementalScanLimits bright;
    bright.magnitudeHigh = (vesta + ceres) / 2;
    SupplementalScanLimits faint;
    faint.magnitudeLow = (ceres + pallas) / 2;
    SupplementalScanLimits nearCeres;
    nearCeres.flags = kScanDistance;
    nearCeres.centreRa = objects_[1].raJ2000;
    nearCeres.centreDec = objects_[1].decJ2000 + 0.001;
    nearCeres.distance = 0.002;
    const struct {
        const char* what;
        const SupplementalScanLimits& limits;
        std::vector<int64_t> pids;
    } cases[] = {
        {"no limits: Ceres once for its two rows", none, {1, 2, 3}},
        {"an upper magnitude limit", bright, {3}},
        {"a lower magnitude limit", faint, {2}},
        {"a distance from a centre", nearCeres, {1}},
    };
    for (const auto& c : cases) {
        int ticks = 0;
        EXPECT_EQ(Pass(c.limits, &ticks), c.pids) << c.what;
        EXPECT_EQ(ticks, 3) << c.what;  // four rows, one step a row: a tick before each after the first
    }
    int cancel = 1;
    SupplementalScanLimits cancelled;
    cancelled.cancel = &cancel;
    EXPECT_TRUE(Pass(cancelled).empty());
}

}  // namespace
