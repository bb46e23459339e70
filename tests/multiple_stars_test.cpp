// The multiple-star files and the double-star orbits: records against
// hand-written bytes, the number indexes, the search of ccdm_i, and the
// places of components walked through their chains of primaries.
#include <cmath>
#include <cstdio>
#include <cstring>
#include <initializer_list>
#include <utility>

#include "astro/numeric.h"
#include "catalog/catalogue_roots.h"
#include "catalog/double_star_orbits.h"
#include "catalog/multiple_stars.h"
#include "support.h"

namespace {

constexpr double kDeg = kRadiansPerDegree;
constexpr double kArcsec = kRadiansPerArcsecond;

template <class Layout, class R>
void Append(Bytes& file, const R& record) {
    const auto image = RecordImage<Layout>(record);
    file.insert(file.end(), image.begin(), image.end());
}

class MultipleStars : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        setCatalogueRoots(".", ".", ".");
    }
};

uint16_t AngleCode(double degrees) {
    return static_cast<uint16_t>(std::lround(degrees / 361.0 * 65535.0));
}

CcdmComponent Component(char letter, char reference, double pa, double rho, int16_t mag,
                        uint16_t lp = 0) {
    CcdmComponent c;
    c.letter = static_cast<uint8_t>(letter);
    c.reference = static_cast<uint8_t>(reference);
    c.positionAngleCode = AngleCode(pa);
    c.separationCode = static_cast<uint32_t>(std::lround(rho * 1000));
    c.magnitude = mag;
    c.lpIndexRow = lp;
    return c;
}

// Checks a place against steps (separation ", angle degrees) of a few arc
// seconds from (fromRa, fromDec), added by the flat-sky approximation.
void ExpectOffsets(double ra, double dec, double fromRa, double fromDec,
                   std::initializer_list<std::pair<double, double>> steps) {
    for (const auto& [rho, pa] : steps) {
        fromRa += rho * kArcsec * std::sin(pa * kDeg) / std::cos(fromDec);
        fromDec += rho * kArcsec * std::cos(pa * kDeg);
    }
    EXPECT_NEAR((ra - fromRa) * std::cos(dec), 0, 0.001 * kArcsec);
    EXPECT_NEAR(dec - fromDec, 0, 0.001 * kArcsec);
}

template <class Layout, class R>
Bytes Image(const R& record) {
    const auto image = RecordImage<Layout>(record);
    return Bytes(image.begin(), image.end());
}

// Each record as the layout writes it against bytes laid out by hand, then
// decoded back and read through the value helpers.
TEST_F(MultipleStars, RecordsMatchHandWrittenBytes) {
    const Bytes row = {0x4A, 0x01, 0x00, 0x04, 0x39, 0x30, 0x00, 0x07, 0x00, 0x09, 0x00,
                       0x00, 0x00, 0x00, 0x40, 0x00, 0x00, 0x00, 0xC0, 0xB0, 0x71, 0x2B,
                       0x70, 0x71, 0x0B, 0x0E, 0x00, 0x61, 0x8F, 0x2E, 0x01};
    CcdmIndexRow r{.componentOffset = 0x14A, .componentsPlusOne = 4, .star = 12345,
                   .catalogueNumber7 = 7, .catalogueNumber9 = 9, .ra = 0x40000000,
                   .dec = static_cast<int32_t>(0xC0000000), .pmRaCode = 750000, .pmRaSpare = 1,
                   .pmDecCode = 750000 - 64, .ccdmRa = 14, .ccdmDec = 3937, .ccdmNorth = 1,
                   .magnitude = 302};
    EXPECT_EQ(Image<CcdmIndexLayout>(r), row);
    DecodeRecord<CcdmIndexLayout>(row.data(), r);
    EXPECT_EQ(Image<CcdmIndexLayout>(r), row);
    EXPECT_EQ(componentCount(r), 3);
    EXPECT_EQ(componentCount(CcdmIndexRow{}), 0);

    const Bytes comp = {'S', 'T', 'F', ' ', '6', '0', 0,  // discoverer
                        0x70, 0x17,                       // ADS 6000
                        0x05, 0x40, 0x00, 0x80,           // GSC region 1, number 5
                        0, 0, 0, 0,                       // further numbers
                        0xFF, 0x7F,                       // angle code 32767
                        'A', 'B',                         // B measured from A
                        0x39, 0x30, 0x00,                 // 12.345"
                        0xF4, 0x01,                       // 5.00
                        0, 0, 0, 0, 0,                    // spare, further, spare
                        0x02, 0x01,                       // lp_index row 258
                        0, 0, 0, 0};
    CcdmComponent c{.discoverer = {'S', 'T', 'F', ' ', '6', '0'}, .ads = 6000, .star = 5 | 1 << 14,
                    .gscFlag = 1, .positionAngleCode = 32767, .reference = 'A', .letter = 'B',
                    .separationCode = 12345, .magnitude = 500, .lpIndexRow = 258};
    EXPECT_EQ(Image<CcdmComponentLayout>(c), comp);
    DecodeRecord<CcdmComponentLayout>(comp.data(), c);
    EXPECT_EQ(Image<CcdmComponentLayout>(c), comp);
    EXPECT_EQ(struveNumberOf(c), 60);
    EXPECT_EQ(componentGscRegion(c), 1u);
    EXPECT_EQ(componentGscNumber(c), 5u);
    EXPECT_NEAR(componentPositionAngle(c), 180.4972457465, 1e-9);
    EXPECT_NEAR(componentSeparation(c), 12.345, 1e-12);
    EXPECT_NEAR(hundredthsMagnitude(c.magnitude), 5.0, 1e-12);
    c.positionAngleCode = 0xFFFF;
    EXPECT_FALSE(componentHasPositionAngle(c));  // 361 degrees: none

    EXPECT_EQ(Image<LpIndexLayout>(LpIndexRow{3, 0x2010, 0x100EF}),
              (Bytes{3, 0x10, 0x20, 0, 0, 0xEF, 0x00, 0x01, 0}));
}

TEST_F(MultipleStars, StruveAndAdsIndexes) {
    Bytes struve(2 * kLastStruve, 0xFF), ads(8 * kLastAds, 0);
    struve[0] = 7;  // Struve 1: row 7; Struve 2: 65535, none
    struve[1] = 0;
    struve[2 * kLastStruve - 2] = 0xF8;  // Struve 5012: row 37368
    struve[2 * kLastStruve - 1] = 0x91;
    ads[0] = 12;                // ADS 1: rows 12 and 0
    ads[8 * kLastAds - 4] = 6;  // ADS 17180: rows 0 and 6
    WriteFileBytes("struve.bin", struve);
    WriteFileBytes("ads_ccdm.bin", ads);
    auto s = openStruve();
    auto a = openAdsCcdm();
    const struct {
        long number, struveRow, adsCount, ads0, ads1;
    } cases[] = {{1, 7, 1, 12, 0},       {2, 0, 0, 0, 0}, {kLastStruve, 37368, 0, 0, 0},
                 {kLastAds, 0, 1, 0, 6}, {0, 0, 0, 0, 0}, {kLastAds + 1, 0, 0, 0, 0}};
    for (const auto& c : cases) {
        long out[2] = {-1, -1};
        EXPECT_EQ(lookupStruve(s.get(), c.number), c.struveRow) << c.number;
        EXPECT_EQ(lookupAdsCcdm(a.get(), c.number, out), c.adsCount) << c.number;
        EXPECT_EQ(out[0], c.ads0);
        EXPECT_EQ(out[1], c.ads1);
    }
    EXPECT_EQ(lookupStruve(s.get(), kLastStruve + 1), 0);
}

// Rows go in pairs of one RA part, the south one first; every 500th pair
// has Dec part 0, so that -0000 and +0000 are told apart.
TEST_F(MultipleStars, SearchFindsEveryRowAndMissesTheRest) {
    auto key = [](long r) {
        CcdmIndexRow row;
        row.ccdmRa = static_cast<uint16_t>((r + 1) / 2);
        row.ccdmDec = row.ccdmRa % 500 == 0 ? 0 : 3937;
        row.ccdmNorth = r % 2 == 0;
        return row;
    };
    Bytes file;
    for (long r = 1; r <= kLastCcdmRow; ++r) Append<CcdmIndexLayout>(file, key(r));
    WriteFileBytes("ccdm_i.bin", file);
    auto f = openCcdmIndex();
    for (long r = 1; r <= kLastCcdmRow; ++r) {
        const CcdmIndexRow k = key(r);
        ASSERT_EQ(findCcdm(f.get(), k.ccdmRa, k.ccdmDec, k.ccdmNorth), r);
    }
    EXPECT_EQ(findCcdm(f.get(), 0, 3937, true), 0);     // below the first row: leaves the file
    EXPECT_EQ(findCcdm(f.get(), 100, 1200, true), -1);  // between rows: 50 steps
    EXPECT_EQ(findCcdm(f.get(), 20000, 0, true), -1);   // past the last row
    CcdmIndexRow row;
    EXPECT_EQ(readCcdmIndex(f.get(), kLastCcdmRow + 1, &row), 0);
}

// A system in ccdm_i row 2: B from A on eta CrB's orbit, C from B and D
// from A as catalogued, E from a letter nobody has, F without an angle.
class ComponentChain : public MultipleStars {
protected:
    void SetUp() override {
        MultipleStars::SetUp();
        list_ = {Component('B', 'A', 100, 3.0, 512, 1), Component('C', 'B', 0, 5.0, 731),
                 Component('D', 'A', 250, 20.0, kHundredthsUnknown),
                 Component('E', 'Q', 10, 1.0, 0), Component('F', 'A', 361, 2.0, 0)};
        std::memcpy(list_[0].discoverer, "STF 303", 7);
        Bytes components(3, 0), index;  // the run starts at byte 3
        for (const auto& c : list_) Append<CcdmComponentLayout>(components, c);
        Append<CcdmIndexLayout>(index, CcdmIndexRow{});
        Append<CcdmIndexLayout>(index, CcdmIndexRow{3, 6});
        WriteFileBytes("ccdm.bin", components);
        WriteFileBytes("ccdm_i.bin", index);
        WriteOrbit(2000);
    }

    // lp_ref by hand, second record: the elements in file order (period,
    // first angle, semi-axis, eccentricity, periastron argument, second
    // angle, time), then two reals, the equinox and a byte.
    void WriteOrbit(uint16_t equinox) {
        Bytes index, ref(2 * 39, 0);
        Append<LpIndexLayout>(index, LpIndexRow{1, 39, 0});
        const float values[] = {41.623f, 59.025f, 0.907f, 0.2763f, 219.907f, 23.717f, 1934.008f};
        for (int k = 0; k < 7; ++k) PokeF32(ref, 39 + 4 * k, values[k]);
        ref[39 + 36] = equinox & 0xFF;
        ref[39 + 37] = equinox >> 8;
        WriteFileBytes("lp_index.bin", index);
        WriteFileBytes("lp_ref.bin", ref);
    }

    int Locate(LpFiles* lp, int which, double* ra, double* dec) {
        return locateComponent(lp, list_.data(), 5, which, ra_, dec_, 1980.0, ra, dec);
    }

    std::vector<CcdmComponent> list_;
    const double ra_ = 240 * kDeg, dec_ = 30 * kDeg;
};

TEST_F(ComponentChain, TwoLevelChainReadThroughTheHandles) {
    CcdmHandle h = openCcdm();
    CcdmIndexRow row;
    ASSERT_EQ(readCcdmSystem(h.get(), 2, &row, &list_), 1);
    ASSERT_EQ(list_.size(), 5u);
    EXPECT_EQ(struveNumberOf(list_[0]), 303);
    LpHandle lp = openDoubleStarOrbits();
    double ra = 0, dec = 0;
    // B at the published 318.4 degrees, 0.411" for 1980, then C 5" north of B.
    ASSERT_EQ(Locate(lp.get(), 1, &ra, &dec), 1);
    ExpectOffsets(ra, dec, ra_, dec_, {{0.411, 318.4}, {5.0, 0.0}});
    // Without the orbit files B sits at its catalogued 100 degrees, 3".
    ASSERT_EQ(Locate(nullptr, 1, &ra, &dec), 1);
    ExpectOffsets(ra, dec, ra_, dec_, {{3.0, AngleCode(100) * 361.0 / 65535}, {5.0, 0.0}});
    // Broken chains: an unknown letter, no angle, out of the list, a loop.
    EXPECT_EQ(Locate(nullptr, 3, &ra, &dec), 0);
    EXPECT_EQ(Locate(nullptr, 4, &ra, &dec), 0);
    EXPECT_EQ(Locate(nullptr, 9, &ra, &dec), 0);
    EXPECT_NEAR(referenceMagnitude(list_.data(), 5, 'C'), 7.31, 1e-12);
    EXPECT_EQ(referenceMagnitude(list_.data(), 5, 'D'), 99.9);  // unknown magnitude
    EXPECT_EQ(referenceMagnitude(list_.data(), 5, 'Z'), 99.9);  // no such component
    list_[0].reference = 'C';
    EXPECT_EQ(Locate(nullptr, 1, &ra, &dec), 0);

    EXPECT_EQ(readCcdmSystem(h.get(), 1, &row, &list_), 1);  // a row with no components
    EXPECT_TRUE(list_.empty());
    closeCcdm(h);
    EXPECT_FALSE(h);
    closeDoubleStarOrbits(lp);  // Windows keeps an open file from being removed
    std::remove("lp_ref.bin");
    EXPECT_FALSE(openDoubleStarOrbits());
}

// Elements of equinox 1950: the angle turns by n sin(ra) sec(dec) over the
// fifty years, n = 20.043" a year, taken at the place of 1975 (the J2000
// place less 25 years of the first-order rates m + n sin(ra) tan(dec) and
// n cos(ra), m = 46.124" a year).
TEST_F(ComponentChain, PositionAngleOfAnOlderEquinox) {
    const double n = 20.0431 / 3600, m = 46.1244 / 3600;
    const double places[][2] = {{90, 60}, {270, 0}, {0, 45}, {200, -70}};
    for (const auto& p : places) {
        const double a = p[0] * kDeg, d = p[1] * kDeg;
        const double midRa = a - (m + n * std::sin(a) * std::tan(d)) * 25 * kDeg;
        const double midDec = d - n * std::cos(a) * 25 * kDeg;
        const double want = 123.0 + n * 50 * std::sin(midRa) / std::cos(midDec);
        EXPECT_NEAR(positionAngleToJ2000(a, d, 123.0, 1950), want, 0.0005) << p[0] << " " << p[1];
    }
    WriteOrbit(1950);
    LpHandle lp = openDoubleStarOrbits();
    double pa = 0, rho = 0;
    ASSERT_EQ(componentOffsetAt(lp.get(), list_[0], 90 * kDeg, 60 * kDeg, 1980.0, &pa, &rho), 1);
    EXPECT_NEAR(pa, 318.4 + n * 100, 0.06);
    EXPECT_NEAR(rho, 0.411, 0.0005);

    // lp_sup places of 1950.0 come back for 2000.0: at 0h on the equator
    // fifty years of the rates m and n.
    WriteFileBytes("lp_sup.bin", Bytes(2 * 239, 0));
    auto sup = OpenFile("lp_sup.bin", "rb");
    LpSupRecord s;
    ASSERT_EQ(readLpSup(sup.get(), 239, 0, &s), 1);
    EXPECT_NEAR(s.ra, m * 50 * kDeg, 2 * kArcsec);
    EXPECT_NEAR(s.dec, n * 50 * kDeg, 2 * kArcsec);
    EXPECT_EQ(readLpSup(sup.get(), 239, 1, &s), 0);  // past the end
}

}  // namespace
