// Angle, time and date texts: carry rules, wraps and signs; the parsers'
// spellings.
#include <cstring>
#include <string>

#include "astro/angle_text.h"
#include "astro/calendar.h"
#include "astro/date_text.h"
#include "astro/fixed_fields.h"
#include "astro/magnitudes.h"
#include "astro/numeric.h"
#include "base/string_helpers.h"
#include "astro/text_parse.h"
#include "base/platform.h"
#include "support.h"

namespace {

constexpr double kArcsec = kRadiansPerArcsecond;
using Formatter = char* (*)(char*, double);

std::string Text(Formatter f, double value) {
    char buffer[32];
    return f(buffer, value);
}

// 75 degrees west, five hours behind Greenwich.
Site EastSite() {
    char name[] = "East";
    Site east;
    SiteInit(&east, 75.0 * kRadiansPerDegree, 0.7, 0.0, 6.0, -5.0, name);
    return east;
}

TEST(AngleText, FormsCarriesWrapsAndSigns) {
    struct Case {
        Formatter f;
        double value;
        const char* text;
    } cases[] = {
        {DegMinText, 12.5, "+12\xb0" "30'"},
        {DegMinText, -0.999999, "-01\xb0" "00'"},  // the carry works on the magnitude
        {DegMinText, 359.995, "+00\xb0" "00'"},
        {LonDegMinText, 5.25, "+005\xb0" "15'"},
        {DegMinSecText, 359.9999999, "+00\xb0" "00'00\""},
        {DegMinSecText, -0.0000001, "+00\xb0" "00'00\""},  // the sign of the biased value
        {DegMinSecText, 10.0 + 59.0 / 60.0 + 59.6 / 3600.0, "+11\xb0" "00'00\""},
        {DegMinSecText, 10.0 + 59.4 / 3600.0, "+10\xb0" "00'59\""},
        {DegMinSecTenthsText, 1.0 + 59.96 / 3600.0, "+01\xb0" "01'00.0\""},
        {DegMinSecTenthsText, 1.0 + 59.94 / 3600.0, "+01\xb0" "00'59.9\""},
        {HourMinText, 23.9999999, " 00h00m"},
        {HourMinText, -5.5, "-05h30m"},
        {HourMinSecText, 23.9999999, " 24h00m00s"},  // no top wrap
        {HourMinSecText, 25.5, " 25h30m00s"},
        {HourMinSecTenthsText, 1.0, " 01h00m00.0s"},
        {HourMinSecTenthsText, -1.0, "-01h00m00.00s"},  // two decimals, on purpose
        {HourMinSecTenthsText, -2.5 - 12.34 / 3600.0, "-02h30m12.34s"},
        {ClockText, 13.75, "13:45"},
        {ClockText, 24.25, "00:15"},
        {ClockText, -1.5, "01:30"},  // the sign is dropped
        {ClockSecondsText, 6.0 + 7.0 / 60.0 + 8.6 / 3600.0, "06:07:09"},
        // Small angles choose their unit.
        {SmallAngleText, 12.4 * kArcsec, "12\""},
        {SmallAngleText, 754.0 * kArcsec, "12'34\""},
        {SmallAngleText, 2.5 * kRadiansPerDegree, "+02\xb0" "30'"},
        {SmallAngleText, 45.2 * kRadiansPerDegree, "45\xb0"},
        {SmallAngleTenthsText, 12.44 * kArcsec, "12.4\""},
        {SmallAngleTenthsText, 754.0 * kArcsec, "12'34\""},
        {SmallAngleTenthsText, 2.5 * kRadiansPerDegree, "+02\xb0" "30'00\""},
    };
    for (const Case& c : cases) EXPECT_EQ(Text(c.f, c.value), c.text) << c.value;
}

TEST(AngleText, TwelveHourClockAndOppositeLongitude) {
    SetClockTwelveHour(true);  // the twelve is never shown
    for (auto [hours, text] : {std::pair{12.0, "00:00p"}, {12.5, "00:30p"}, {0.5, "00:30a"}, {23.0, "11:00p"}})
        EXPECT_EQ(Text(ClockText, hours), text);
    EXPECT_EQ(Text(ClockSecondsText, 13.5), "01:30:00p");
    SetClockTwelveHour(false);
    EXPECT_EQ(Text(ClockText, 12.0), "12:00");

    EXPECT_EQ(Text(LongitudeText, 100.0), "+100\xb0" "00'");
    SetLongitudeFromOpposite(true);
    EXPECT_EQ(Text(LongitudeText, 100.0), "+280\xb0" "00'");
    EXPECT_EQ(Text(LongitudeText, 190.0), "+010\xb0" "00'");
    SetLongitudeFromOpposite(false);
}

TEST(TextParse, SexagesimalSpellings) {
    const double v = 12.0 + 34.0 / 60.0 + 56.0 / 3600.0;
    for (const char* t : {"12h34m56s", "12:34:56", "12 34 56", "12\xb0" "34'56\"", "  12:34:56  "})
        EXPECT_DOUBLE_EQ(ParseSexagesimal(t), v) << t;
    const std::pair<const char*, double> cases[] = {
        {"-0 30", -0.5}, {"12h34m", 12.0 + 34.0 / 60.0}, {"12h 34m", kParseFailed} /* an empty piece */, {"", 0.0},
        {"-", kParseFailed}, {"+", kParseFailed}, {"abc", kParseFailed}, {"1:30p", 13.5}, {"12:30p", 12.5},
        {"12:00p", 24.0}, {"2451545.25", 2451545.25}, {"1:2:3:4", 1.0 + 2.0 / 60.0 + 3.0 / 3600.0}};
    for (const auto& [text, value] : cases) EXPECT_DOUBLE_EQ(ParseSexagesimal(text), value) << text;
}

int Parse(const char* text, Instant* instant, Site* site = nullptr) {
    char copy[128];
    std::strncpy(copy, text, sizeof copy - 1);
    copy[sizeof copy - 1] = '\0';
    return ParseDateTime(copy, site, instant);
}

TEST(TextParse, DatesWithMonthsKeywordsAndEras) {
    Site east = EastSite();
    const struct {
        const char* text;
        Site* site;
        int result, year = 0, month = 0, day = 0;
        double utHours = 0.0;
    } cases[] = {
        {"2000 1 1", nullptr, 1, 2000, 1, 1, 0.0},
        {"2000 January 1", nullptr, 1, 2000, 1, 1, 0.0},
        {"1999 Aug 11.5", nullptr, 1, 1999, 8, 11, 12.0},
        {"1999 ju 1", nullptr, 1, 1999, 6, 1, 0.0},  // the first month it begins
        {"1999 * 1", nullptr, 1, 1999, 1, 1, 0.0},
        {"2000 Jan 1 20:30 UT", &east, 1, 2000, 1, 1, 20.5},
        {"2000 Jan 1 20:30 UTC", &east, 1, 2000, 1, 1, 20.5},
        {"2000 Jan 1 8:30 PM", &east, 1, 2000, 1, 1, 25.5},  // 20:30 on the site's clock
        {"44 BC 3 15", nullptr, 1, -45, 3, 15, 0.0},
        {"1 BC 1 1", nullptr, 1, -2, 1, 1, 0.0},
        {"1999 Januaryx 1", nullptr, 0},  // no month, and no number either
        {"jd", nullptr, -1},
        {"2000 13 1", nullptr, 0},
        {"2000 1 1 1 1", nullptr, 0},  // a fifth value
        {"", nullptr, 0},
    };
    for (const auto& c : cases) {
        Instant a;
        ASSERT_EQ(Parse(c.text, &a, c.site), c.result) << c.text;
        if (c.result != 1) continue;
        EXPECT_EQ((std::vector<double>{1.0 * a.year, 1.0 * a.month, 1.0 * a.day, a.utHours}),
                  (std::vector<double>{1.0 * c.year, 1.0 * c.month, 1.0 * c.day, c.utHours})) << c.text;
    }
    Instant a;
    ASSERT_EQ(Parse("2000 1 1", &a), 1);
    EXPECT_EQ(a.jd, 2451544.5);
    ASSERT_EQ(Parse("1999.5", &a), 1);
    EXPECT_DOUBLE_EQ(a.jd, JulianDay(1, 1, 1999, 0.0) + 182.5);
    ASSERT_EQ(Parse("JD 2451545.0", &a), 1);
    EXPECT_EQ(a.year, 2000);
    EXPECT_NEAR(a.utHours, 12.0, 1e-5);
    EXPECT_EQ(ParseDateTime(nullptr, nullptr, &a), 0);
}

TEST(TextParse, ClockWords) {
    Site east = EastSite();
    EXPECT_EQ(ParseClock("20:30 UT", &east), 15.5);  // standard clock time
    // PM only below 12; a first time of 0.0 may be followed.
    const std::pair<const char*, double> cases[] = {{"8:30 PM", 20.5}, {"20:30 PM", 20.5}, {"20:30 UT", 20.5},
                                                    {"8 9", kParseFailed}, {"0 9", 9.0}, {"x", kParseFailed},
                                                    {nullptr, 0.0}};
    for (const auto& [text, hours] : cases) EXPECT_EQ(ParseClock(text, nullptr), hours) << (text ? text : "null");
}

TEST(StringHelpers, TrimsCompareAndBaseName) {
    char text[] = "  two words  ";
    EXPECT_STREQ(TrimLeft(TrimRight(text)), "two words");
    char target[32];
    RemoveBlanks(" a b  c ", target);
    EXPECT_STREQ(target, "abc");
    BaseName("C:\\data\\maps/1/file.bin", target);
    EXPECT_STREQ(target, "file.bin");
    EXPECT_EQ(StringCompareNoCase("Alpha", "aLPHA"), 0);
    EXPECT_LT(StringCompareNoCase("alpha", "Beta"), 0);
    EXPECT_GT(StringCompareNoCase("alphas", "ALPHA"), 0);
}

platform::LocalClock FixedClock() { return {2001, 3, 9, 7, 5, 30}; }

TEST(DateText, EveningRuleAndTheLocalClock) {
    Site east = EastSite();
    char buffer[64];
    const double early = JulianDay(3, 10, 2001, 7.5);  // 02:30 on 10 March, local
    EXPECT_STREQ(DateText(buffer, &east, early, 0), "2001 Mar 10");
    EXPECT_STREQ(DateText(buffer, &east, early, 1), "2001 Mar  9");
    // The clock is that of the moment, the date the evening's.
    EXPECT_STREQ(DateTimeText(buffer, &east, early, 1), "2001 Mar  9 02:30");
    EXPECT_STREQ(DateText(buffer, &east, JulianDay(3, 10, 2001, 20.0), 1), "2001 Mar 10");
    EXPECT_STREQ(DateText(buffer, nullptr, JulianDay(1, 1, -43, 0.0), 0), " -43 Jan  1");

    platform::SetLocalTimeOverride(FixedClock);
    EXPECT_STREQ(StampText(), "2001 Mar 09 0705");
    Instant now;
    InstantNow(&east, &now);
    EXPECT_EQ(now.day, 9);
    EXPECT_NEAR(now.localHours, 7.0 + 5.5 / 60.0, 1e-5);
    EXPECT_NEAR(now.utHours, 12.0 + 5.5 / 60.0, 1e-5);
    InstantNowEvening(&east, &now);
    EXPECT_EQ(now.day, 8);
    EXPECT_NEAR(now.localHours, 19.0 + 5.5 / 60.0, 1e-5);
    InstantToday(&east, &now);
    EXPECT_EQ(now.day, 9);
    EXPECT_NEAR(now.localHours, 0.0, 1e-5);
    platform::SetLocalTimeOverride(nullptr);
}

TEST(FixedFields, ColumnsOfCatalogueLines) {
    EXPECT_EQ((std::vector<long>{FixedInt(" 12 3xyz", 5), FixedInt("  -45", 5), FixedInt("   ab", 5),
                                 FixedInt("12", 5)}),
              (std::vector<long>{123, -45, kParseFailedInt, 12}));  // the last line ends early
    EXPECT_EQ((std::vector<double>{FixedReal(" 1 2.5 ", 7), FixedReal("     ", 5), FixedReal(" x   ", 5)}),
              (std::vector<double>{12.5, kParseFailed, kParseFailed}));
    EXPECT_STREQ(FixedText("NGC 224 M31", 7), "NGC 224");
    const char* first = FixedText("abc", 2);
    FixedText("xyz", 3);
    EXPECT_STREQ(first, "xyz");  // one shared buffer
}

TEST(Magnitudes, RoundingColourSurfaceAndDistance) {
    for (auto [value, digits, rounded] :
         {std::tuple{0.0, 3, 0.0}, {123456.0, 3, 123000.0}, {-0.0012345, 2, -0.0012}, {2.45, 2, 2.5}})
        EXPECT_DOUBLE_EQ(RoundSignificant(value, digits), rounded) << value;

    const std::pair<const char*, double> colours[] = {{"G2", 0.62}, {"K", 0.85}, {"O9", -0.31}, {"M9.5", 1.79},
                                                      {"W5", kParseFailed}, {"g2", kParseFailed},
                                                      {"A12", kParseFailed}, {"", kParseFailed}};
    for (const auto& [type, index] : colours) EXPECT_EQ(ColorIndexOfClass(type), index) << type;

    // A 10' by 10' ellipse of magnitude 10: 10 + 2.5 log10(90000 pi).
    EXPECT_NEAR(SurfaceBrightness(10.0, 10.0, 10.0), 23.6285, 0.0001);
    EXPECT_NEAR(RedshiftDistance(1.0), 9000.0, 1e-9);
    EXPECT_EQ(VelocityDistance(1000.0), 50.0);
    EXPECT_EQ(VelocityRedshift(30000.0), 0.1);
}

}  // namespace
