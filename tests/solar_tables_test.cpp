// The planet engine's tables that make-refdata writes into the solar folder
// of the reference set (the test fixture runs it into the build tree): the
// VSOP87 reader against the authors' check values, the cut series as
// written against Meeus's worked examples, and the files' first bytes
// against bytes worked out by hand.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <map>
#include <numbers>
#include <string>
#include <vector>

#include "astro/planet_tables.h"
#include "base/record_layout.h"
#include "support.h"
#include "tools/refdata_vsop87.h"

namespace {

const std::string kSolar = FERRY2_SOLAR_DIR;
const std::string kSeriesSource = std::string(FERRY2_REFDATA_SOURCE) + "solar/";
constexpr double kTwoPi = 2.0 * std::numbers::pi;
constexpr double kDegree = std::numbers::pi / 180.0;

using Series = std::vector<PlanetTerm>[kSeriesPowers];

// One coordinate: the sum over each power's terms of A cos(B + C tau),
// times tau to the power.
double Sum(const Series& series, double tau) {
    double total = 0.0;
    double power = 1.0;
    for (const std::vector<PlanetTerm>& terms : series) {
        double sum = 0.0;
        for (const PlanetTerm& t : terms) sum += t.a * std::cos(t.b + t.c * tau);
        total += sum * power;
        power *= tau;
    }
    return total;
}

class Vsop87Reader : public ScratchTest {};

TEST_F(Vsop87Reader, FullSeriesGiveTheAuthorsCheckValues) {
    const std::map<std::string, std::string> extension = {
        {"MERCURY", "mer"}, {"VENUS", "ven"},  {"EARTH", "ear"},  {"MARS", "mar"},
        {"JUPITER", "jup"}, {"SATURN", "sat"}, {"URANUS", "ura"}, {"NEPTUNE", "nep"}};
    std::map<std::string, Vsop87File> files;
    std::ifstream check(kSeriesSource + "vsop87.chk");
    ASSERT_TRUE(check.good());
    std::string title;
    int compared = 0;
    // Blocks of a title (" VSOP87D  VENUS       JD2451545.0 ...") and the
    // line "l ... rad  b ... rad  r ... au".
    while (std::getline(check, title)) {
        char version = 0;
        char body[16] = {};
        double jd = 0;
        if (std::sscanf(title.c_str(), " VSOP87%c %15s JD%lf", &version, body, &jd) != 3) continue;
        if (version != 'D' && !(version == 'B' && std::string(body) == "EARTH")) continue;
        std::string values;
        ASSERT_TRUE(std::getline(check, values));
        double l = 0, b = 0, r = 0;
        ASSERT_EQ(std::sscanf(values.c_str(), " l %lf rad b %lf rad r %lf au", &l, &b, &r), 3)
            << title;
        ASSERT_TRUE(extension.count(body)) << title;
        const std::string name = std::string("VSOP87") + version + "." + extension.at(body);
        if (!files.count(name)) {
            std::string error;
            ASSERT_TRUE(ReadVsop87(kSeriesSource + name, &files[name], &error)) << error;
            EXPECT_EQ(files[name].version, version == 'B' ? 2 : 4);
            EXPECT_EQ(files[name].body, body);
        }
        const Vsop87File& file = files[name];
        const double tau = (jd - 2451545.0) / 365250.0;
        EXPECT_NEAR(std::remainder(Sum(file.series[0], tau) - l, kTwoPi), 0.0, 1e-9) << title;
        EXPECT_NEAR(Sum(file.series[1], tau), b, 1e-9) << title;
        EXPECT_NEAR(Sum(file.series[2], tau), r, 1e-9) << title;
        ++compared;
    }
    EXPECT_EQ(files.size(), 9u);
    EXPECT_EQ(compared, 90);  // nine files, ten epochs each
}

TEST_F(Vsop87Reader, RefusesBrokenSeries) {
    const std::string header =
        " VSOP87 VERSION D4    VENUS     VARIABLE 1 (LBR)       *T**0      1 TERMS    "
        "HELIOCENTRIC DYNAMICAL ECLIPTIC AND EQUINOX OF THE DATE\n";
    const std::string term =
        " 4210    1  0  0  0  0  0  0  0  0  0  0  0  0  0.00000000000     3.17614666774     "
        "3.17614666774 0.00000000000       0.00000000000 \n";
    std::string otherCoordinate = term;
    otherCoordinate[3] = '2';
    std::string twoTerms = header;
    twoTerms.replace(66, 1, "2");
    const struct {
        std::string text;
        bool reads;
    } cases[] = {
        {header + term, true},
        {header + term + term, false},                      // more terms than announced
        {twoTerms + term, false},                           // fewer
        {header + otherCoordinate, false},                  // a term of another series
        {header + term.substr(0, 100) + "\n", false},       // a short line
        {header + term + header + term, false},             // the same series twice
        {term, false},                                      // no header
    };
    for (const auto& c : cases) {
        WriteFileText("series", c.text);
        Vsop87File file;
        std::string error;
        EXPECT_EQ(ReadVsop87("series", &file, &error), c.reads) << c.text;
        if (c.reads) {
            ASSERT_EQ(file.series[0][0].size(), 1u);
            EXPECT_EQ(file.series[0][0][0].a, 3.17614666774);
            EXPECT_EQ(file.body, "VENUS");
        }
    }
}

struct Planet {
    PlanetIndexRecord index;
    std::vector<PlanetTerm> terms;
    Series series[kSeriesCoordinates];
};

std::vector<Planet> ReadPlanets() {
    const Bytes ndx = ReadFileBytes(kSolar + kPlanetIndexFileName);
    const Bytes bin = ReadFileBytes(kSolar + kPlanetTermFileName);
    std::vector<Planet> planets(kPlanetRecords);
    if (ndx.size() != kPlanetRecords * PlanetIndexLayout::kSize) return {};
    for (int i = 0; i < kPlanetRecords; ++i) {
        Planet& p = planets[i];
        DecodeRecord<PlanetIndexLayout>(ndx.data() + i * PlanetIndexLayout::kSize, p.index);
        size_t at = static_cast<size_t>(p.index.firstTerm) * PlanetTermLayout::kSize;
        for (int c = 0; c < kSeriesCoordinates; ++c)
            for (int k = 0; k < kSeriesPowers; ++k)
                for (int n = 0; n < p.index.count[c][k]; ++n, at += PlanetTermLayout::kSize) {
                    if (at + PlanetTermLayout::kSize > bin.size()) return {};
                    PlanetTerm t;
                    DecodeRecord<PlanetTermLayout>(bin.data() + at, t);
                    p.series[c][k].push_back(t);
                }
    }
    return planets;
}

TEST(PlanetTables, CountsOfTheAbridgedSeriesAndMeeusExamples) {
    const std::vector<Planet> planets = ReadPlanets();
    ASSERT_EQ(planets.size(), 9u);
    // L0..L5, B0..B5, R0..R5 of each record: Meeus's Appendix III, and for
    // record 0 his J2000 Earth (L1-L4 and B1-B4 replaced).
    const int counts[9][18] = {
        {64, 34, 20, 7, 2, 1, 5, 7, 4, 3, 2, 0, 40, 10, 6, 2, 1, 0},
        {38, 16, 10, 8, 6, 1, 14, 11, 9, 7, 2, 0, 13, 8, 7, 5, 0, 0},
        {24, 12, 8, 3, 3, 1, 9, 4, 4, 4, 1, 0, 12, 3, 3, 1, 1, 0},
        {64, 34, 20, 7, 3, 1, 5, 2, 0, 0, 0, 0, 40, 10, 6, 2, 1, 0},
        {69, 46, 33, 12, 8, 2, 16, 9, 7, 4, 3, 0, 45, 27, 11, 6, 4, 0},
        {64, 61, 57, 39, 19, 5, 26, 22, 14, 9, 6, 1, 46, 43, 36, 28, 15, 7},
        {90, 79, 63, 48, 27, 12, 34, 32, 29, 21, 12, 2, 44, 38, 32, 28, 23, 18},
        {91, 57, 35, 18, 4, 0, 28, 20, 11, 4, 1, 0, 59, 35, 18, 10, 2, 0},
        {38, 18, 7, 4, 1, 0, 17, 13, 6, 4, 1, 0, 32, 15, 5, 1, 0, 0},
    };
    int first = 0;
    for (int i = 0; i < 9; ++i) {
        EXPECT_EQ(planets[i].index.firstTerm, first) << i;
        for (int s = 0; s < 18; ++s) {
            EXPECT_EQ(planets[i].index.count[s / 6][s % 6], counts[i][s]) << i << " " << s;
            first += counts[i][s];
        }
    }
    EXPECT_EQ(ReadFileBytes(kSolar + kPlanetTermFileName).size(), 2638u * 24u);

    const auto tau = [](double jde) { return (jde - 2451545.0) / 36525.0 / 10.0; };
    // Example 32.a: Venus, 1992 December 20, 0h TD.
    const Planet& venus = planets[2];
    const double t = tau(2448976.5);
    const double l = std::fmod(Sum(venus.series[0], t), kTwoPi);
    EXPECT_NEAR((l < 0 ? l + kTwoPi : l) / kDegree, 26.11428, 0.000005);
    EXPECT_NEAR(Sum(venus.series[1], t) / kDegree, -2.62070, 0.000005);
    EXPECT_NEAR(Sum(venus.series[2], t), 0.724603, 0.0000005);
    // Example 25.b: the Earth, 1992 October 13, 0h TD, the longitude as the
    // series sum it, before any wrapping.
    const Planet& earth = planets[3];
    const double u = tau(2448908.5);
    EXPECT_NEAR(Sum(earth.series[0], u), -43.63484796, 0.000000005);
    EXPECT_NEAR(Sum(earth.series[1], u), -0.00000312, 0.000000005);
    EXPECT_NEAR(Sum(earth.series[2], u), 0.99760775, 0.000000005);
}

TEST(PlanetTables, FirstBytesAndSizesAsWorkedOutByHand) {
    const Bytes ndx = ReadFileBytes(kSolar + "PLANETS.NDX");
    const Bytes bin = ReadFileBytes(kSolar + "PLANETS.BIN");
    const Bytes moon = ReadFileBytes(kSolar + "moontab.bin");
    const Bytes pluto = ReadFileBytes(kSolar + "plutotab.bin");
    EXPECT_EQ(ndx.size(), 648u);
    EXPECT_EQ(moon.size(), 2640u);
    EXPECT_EQ(pluto.size(), 2322u);
    EXPECT_EQ(ReadFileBytes(kSolar + "nutcon.bin").size(), 1116u);

    // Record 0, the J2000 Earth: first term 0, then each count (L0 64, L1
    // 34, L2 20, ...) followed by two zero bytes, the last count without.
    const Bytes record0 = {0x00, 0x00,                                               //
                           0x40, 0, 0, 0, 0x22, 0, 0, 0, 0x14, 0, 0, 0, 0x07, 0, 0, 0,  // L0-L3
                           0x02, 0, 0, 0, 0x01, 0, 0, 0,                              // L4 L5
                           0x05, 0, 0, 0, 0x07, 0, 0, 0, 0x04, 0, 0, 0, 0x03, 0, 0, 0,  // B0-B3
                           0x02, 0, 0, 0, 0x00, 0, 0, 0,                              // B4 B5
                           0x28, 0, 0, 0, 0x0a, 0, 0, 0, 0x06, 0, 0, 0, 0x02, 0, 0, 0,  // R0-R3
                           0x01, 0, 0, 0, 0x00, 0};                                   // R4 R5
    ASSERT_EQ(record0.size(), 72u);
    EXPECT_EQ(Slice(ndx, 0, 72), record0);
    // Mercury's terms begin after the J2000 Earth's 208; its L0 keeps 38.
    EXPECT_EQ(Slice(ndx, 72, 4), (Bytes{0xd0, 0x00, 0x26, 0x00}));

    // The largest L0 term of VSOP87B.ear: A 1.75347045673, B 0, C 0.
    Bytes term(24, 0);
    const uint8_t a[8] = {0x41, 0x85, 0xa2, 0x09, 0x37, 0x0e, 0xfc, 0x3f};
    std::copy(a, a + 8, term.begin());
    EXPECT_EQ(Slice(bin, 0, 24), term);

    // Longitude row 1: D 0, M 0, M' 1, F 0, 6288774, -20905355; latitude
    // row 1 (from byte 60 x 24): F 1, 5128122.
    EXPECT_EQ(Slice(moon, 0, 24), (Bytes{0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0,
                                         0x86, 0xf5, 0x5f, 0x00, 0x75, 0x02, 0xc1, 0xfe}));
    EXPECT_EQ(Slice(moon, 1440, 20), (Bytes{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0,
                                            0xba, 0x3f, 0x4e, 0x00}));

    // Pluto's row 1: J 0, S 0, P 1; its amplitudes (from byte 43 x 6) begin
    // with longitude -19799805 sin, 19850055 cos.
    EXPECT_EQ(Slice(pluto, 0, 6), (Bytes{0, 0, 0, 0, 1, 0}));
    EXPECT_EQ(Slice(pluto, 258, 16), (Bytes{0x00, 0x00, 0x00, 0xd0, 0xef, 0xe1, 0x72, 0xc1,  //
                                            0x00, 0x00, 0x00, 0x70, 0x34, 0xee, 0x72, 0x41}));
}

}  // namespace
