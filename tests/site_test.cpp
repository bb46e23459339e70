#include <cmath>
#include <cstring>
#include <numbers>
#include <random>

#include "stores/location_store.h"
#include "astro/site.h"
#include "support.h"

namespace {

constexpr double kDeg = 0.017453292519943295;

Bytes Image(const Site& s) {
    const auto a = RecordImage<SiteLayout>(s);
    return Bytes(a.begin(), a.end());
}

Bytes Slice(const Bytes& b, size_t off, size_t n) { return Bytes(b.begin() + off, b.begin() + off + n); }

TEST(SiteImage, FieldsStandAtTheirOffsetsInLittleEndian) {
    Site s;
    char name[] = "Palomar";
    ASSERT_EQ(SiteInit(&s, 2.0, 0.0, 10000.0, 6.5, -8.0, name), 1);
    const Bytes b = Image(s);
    ASSERT_EQ(b.size(), 132u);
    EXPECT_EQ(Slice(b, 0, 8), (Bytes{0, 0, 0, 0, 0, 0, 0, 0x40}));        // longitude 2.0
    EXPECT_EQ(Slice(b, 8, 8), (Bytes{0, 0, 0, 0, 0, 0, 0, 0}));           // latitude 0.0
    EXPECT_EQ(Slice(b, 16, 8), (Bytes{0, 0, 0, 0, 0, 0x88, 0xC3, 0x40}));  // height 10000.0
    EXPECT_EQ(Slice(b, 24, 16), (Bytes{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xF0, 0x3F}));  // sin 0, cos 0
    EXPECT_EQ(Slice(b, 48, 8), (Bytes{0, 0, 0, 0, 0, 0, 0x1A, 0x40}));    // limit 6.5
    EXPECT_EQ(Slice(b, 72, 8), (Bytes{0, 0, 0, 0, 0, 0, 0x20, 0xC0}));    // zone -8.0
    // Start and end hour 2.0f, shift 1.0f; weekdays 0 0, weeks 0 3, months 4 10, mode 0.
    EXPECT_EQ(Slice(b, 80, 19), (Bytes{0, 0, 0, 0x40, 0, 0, 0, 0x40, 0, 0, 0x80, 0x3F, 0, 0, 0, 3, 4, 10, 0}));
    Bytes name33(33, 0);
    std::memcpy(name33.data(), "Palomar", 7);
    EXPECT_EQ(Slice(b, 99, 33), name33);
}

TEST(SiteImage, EveryByteSurvivesDecodeAndEncode) {
    // Odd reals (NaN payloads, denormals) and bytes after the name's NUL
    // must come back unchanged: imported records are copied as they are.
    std::mt19937 rng(1234);
    for (int round = 0; round < 50; ++round) {
        Bytes b(132);
        for (auto& x : b) x = static_cast<uint8_t>(rng());
        b[40 + 7] = 0x7F;  // a NaN with a payload in horizonDip
        b[40 + 6] = 0xF1;
        Site s;
        DecodeRecord<SiteLayout>(b.data(), s);
        EXPECT_EQ(Image(s), b);
    }
}

TEST(SiteInit, DerivedGeocentricTermsMatchPalomar) {
    // Meeus, Astronomical Algorithms, example 11.a: Palomar, latitude
    // +33 21' 22", 1706 m: rho sin phi' = +0.546861, rho cos phi' = +0.836339.
    Site s;
    const double lat = (33.0 + 21.0 / 60 + 22.0 / 3600) * kDeg;
    ASSERT_EQ(SiteInit(&s, 116.8625 * kDeg, lat, 1706.0, 6.5, -8.0, nullptr), 1);
    EXPECT_NEAR(s.rhoSinPhi, 0.546861, 5e-7);
    EXPECT_NEAR(s.rhoCosPhi, 0.836339, 5e-7);
    EXPECT_DOUBLE_EQ(s.sinLatitude, std::sin(lat));
    EXPECT_DOUBLE_EQ(s.cosLatitude, std::cos(lat));
    // sqrt(1706) = 41.303753, times -0.00061668
    EXPECT_NEAR(s.horizonDip, -0.0254712, 5e-9);
}

// On the equator u = 0: rho sin = 0, rho cos = 1 + h / 6378140; at the pole
// rho sin = 1 - f = 0.99664719 at sea level. No dip at or below sea level.
TEST(SiteInit, EquatorPoleAndSeaLevelWorkedByHand) {
    const struct {
        double latitude, height, rhoSin, rhoCos, dip;
    } cases[] = {{0.0, 10000.0, 0.0, 1.0015678552, -0.061668}, {std::numbers::pi / 2, 0.0, 0.99664719, 0.0, 0.0}};
    Site s;
    for (const auto& c : cases) {
        SiteInit(&s, 0.0, c.latitude, c.height, 6.5, 0.0, nullptr);
        EXPECT_NEAR(s.rhoSinPhi, c.rhoSin, 1e-10) << c.height;
        EXPECT_NEAR(s.rhoCosPhi, c.rhoCos, 1e-10) << c.height;
        EXPECT_NEAR(s.horizonDip, c.dip, 1e-15) << c.height;
    }
    for (double height : {0.0, -400.0}) {
        SiteInit(&s, 0.0, 0.5, height, 6.5, 0.0, nullptr);
        EXPECT_EQ(s.horizonDip, 0.0) << height;  // never NaN
    }
}

TEST(SiteInit, LongNameIsCutInTheCallersStringAndNullSiteFails) {
    char name[] = "A name that runs well past thirty-two characters";
    Site s;
    ASSERT_EQ(SiteInit(&s, 0, 0, 0, 6.5, 0, name), 1);
    EXPECT_STREQ(name, "A name that runs well past thirt");
    EXPECT_STREQ(s.name, "A name that runs well past thirt");
    EXPECT_EQ(SiteInit(nullptr, 0, 0, 0, 6.5, 0, name), 0);
}

TEST(SiteSetDst, RangesAreCheckedOnlyForTheRuleMode) {
    Site s;
    SiteInit(&s, 0, 0, 0, 6.5, 0, nullptr);
    const Site before = s;
    EXPECT_EQ(SiteSetDst(nullptr, 0, 0, 4, 2, 3, 0, 10, 2, 1, 2), 0);
    // Refused, nothing changed: a bad mode; in mode 2 a start week 2, weekday 7,
    // end weekday 7, month 0 or 13, end week 4.
    const int refused[][7] = {{0, 0, 4, 3, 0, 10, 3},  {0, 0, 4, 3, 0, 10, -1}, {2, 0, 4, 3, 0, 10, 2},
                              {0, 7, 4, 3, 0, 10, 2},  {0, 0, 4, 3, 7, 10, 2},  {0, 0, 0, 3, 0, 10, 2},
                              {0, 0, 4, 3, 0, 13, 2},  {0, 0, 4, 4, 0, 10, 2}};
    for (const auto& r : refused) EXPECT_EQ(SiteSetDst(&s, r[0], r[1], r[2], 2, r[3], r[4], r[5], 2, 1, r[6]), 0);
    EXPECT_EQ(Image(s), Image(before));

    // Limits pass; the hours are never checked.
    ASSERT_EQ(SiteSetDst(&s, 1, 6, 12, 25.5, 3, 6, 1, -3.0, 1.5, 2), 1);
    EXPECT_EQ((std::vector<int>{s.dstStartWeek, s.dstStartWeekday, s.dstStartMonth, s.dstEndWeek, s.dstEndWeekday,
                                s.dstEndMonth, s.dstMode}),
              (std::vector<int>{1, 6, 12, 3, 6, 1, 2}));
    EXPECT_EQ((std::vector<float>{s.dstStartHour, s.dstEndHour, s.dstShiftHours}),
              (std::vector<float>{25.5f, -3.0f, 1.5f}));

    // Modes 0 and 1 take out-of-range fields as they come.
    ASSERT_EQ(SiteSetDst(&s, 9, 9, 0, 2, 9, 9, 99, 2, 1, 1), 1);
    EXPECT_EQ(s.dstStartWeek, 9);
    EXPECT_EQ(s.dstEndMonth, 99);
    EXPECT_EQ(s.dstMode, 1);
}

}  // namespace
