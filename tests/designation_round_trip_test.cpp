// Every designation kind that has both a printed form and a parser reads
// its own print back to the same numbers, over the whole range the
// catalogues use. A print form and a parser that drift apart (a changed
// width, a sign dropped, a suffix letter off by one) fail here even where
// the single-form tables still pass.
#include <gtest/gtest.h>

#include <string>

#include "catalog/designation_parse.h"
#include "catalog/designation_print.h"
#include "catalog/star_file.h"

namespace {

// The suffix letters as the records hold them: 0 none, 1 'A' to 26 'Z'.
constexpr int kSuffixes[] = {0, 1, 2, 13, 26};

bool NumberBack(const std::string& text, long number, int suffix) {
    long n = -1;
    int s = -1;
    return parseNumberSuffix(text.c_str(), &n, &s) == 1 && n == number && s == suffix;
}

}  // namespace

TEST(DesignationRoundTrip, NumberAndSuffixForms) {
    using Print = std::string (*)(int, int);
    struct Kind {
        const char* name;
        Print print;
        int last;
    } kinds[] = {
        {"NGC", ngcName, 7840},
        {"IC", icName, 5386},
        {"Markarian", markarianName, 1544},
        {"UGC", ugcName, 12921},
    };
    for (const Kind& k : kinds)
        for (int n = 1; n <= k.last; ++n)
            for (int s : kSuffixes) {
                const std::string text = k.print(n, s);
                ASSERT_TRUE(NumberBack(text, n, s)) << k.name << ' ' << text;
            }
    for (int n = 1; n <= 370; ++n)
        for (char s : {'\0', ' ', 'A', 'B'}) {
            const std::string text = barnardName(n, s);
            ASSERT_TRUE(NumberBack(text, n, s == 'A' ? 1 : s == 'B' ? 2 : 0)) << text;
        }
}

TEST(DesignationRoundTrip, PlainNumberForms) {
    using Print = std::string (*)(int);
    using PrintLong = std::string (*)(long);
    struct Kind {
        const char* name;
        Print print;
        int last;
    } kinds[] = {
        {"M", messierName, 110},   {"Arp", arpName, 338},          {"Hickson", hicksonName, 100},
        {"Abell", abellPlanetaryName, 86}, {"ARO", aroName, 200},
        {"vdB", vdbName, 158},     {"Gum", gumName, 85},           {"RCW", rcwName, 182},
        {"LBN", lbnName, 1125},    {"LDN", ldnName, 1802},         {"Palomar", palomarName, 15},
        {"Terzan", terzanName, 11}, {"Struve", struveName, 3134},  {"ADS", adsName, 17180},
        {"AGC", agcName, 4076},
    };
    for (const Kind& k : kinds)
        for (int n = 1; n <= k.last; ++n) ASSERT_TRUE(NumberBack(k.print(n), n, 0)) << k.name << ' ' << n;
    // Sharpless numbers are typed after the catalogue word "Sh 2-".
    for (int n = 1; n <= 313; ++n) {
        const std::string text = sharplessName(n);
        ASSERT_EQ(text.rfind("Sh 2-", 0), 0u) << text;
        ASSERT_TRUE(NumberBack(text.substr(5), n, 0)) << text;
    }
    struct LongKind {
        const char* name;
        PrintLong print;
        long last;
    } longKinds[] = {
        {"HR", hrName, 9110},     {"HD", hdName, 359083},  {"SAO", saoName, 258997},
        {"PPM", ppmName, 789676}, {"HIP", hipName, 120416}, {"GC", gcName, 33342},
        {"PGC", pgcName, 4715000}, {"NSV", nsvName, 26206},
    };
    // The six-figure ranges are walked in steps that still reach every digit
    // count and the last number.
    for (const LongKind& k : longKinds) {
        for (long n = 1; n <= k.last; n += n < 10000 ? 1 : 997)
            ASSERT_TRUE(NumberBack(k.print(n), n, 0)) << k.name << ' ' << n;
        ASSERT_TRUE(NumberBack(k.print(k.last), k.last, 0)) << k.name;
    }
}

TEST(DesignationRoundTrip, BayerAndFlamsteedGroups) {
    for (int constellation = 0; constellation < 88; ++constellation) {
        for (int letter = 1; letter <= 24; ++letter)
            for (int superscript = 0; superscript <= 9; ++superscript) {
                const std::string text = bayerName(designationGroup(0, constellation, letter, superscript));
                int l = -1, s = -1, c = -1;
                ASSERT_EQ(parseBayer(text.c_str(), &l, &s, &c), 1) << text;
                EXPECT_EQ(l, letter - 1) << text;
                EXPECT_EQ(s, superscript) << text;
                EXPECT_EQ(c, constellation) << text;
            }
        for (int number = 1; number <= 255; ++number) {
            const std::string text = flamsteedName(designationGroup(number, constellation, 0, 0));
            int n = -1, c = -1;
            ASSERT_EQ(parseFlamsteed(text.c_str(), &n, &c), 1) << text;
            EXPECT_EQ(n, number) << text;
            EXPECT_EQ(c, constellation) << text;
        }
    }
}

TEST(DesignationRoundTrip, CcdmOverItsRanges) {
    for (int ra = 0; ra <= 23598; ra += ra < 100 ? 1 : 37)
        for (int dec : {1, 9, 10, 99, 100, 999, 1000, 4549, 8915})
            for (char sign : {'+', '-'}) {
                const std::string text = ccdmName(ra, sign, dec);
                int r = -1, d = -1;
                char s = 0;
                ASSERT_EQ(parseCcdm(text.c_str(), &r, &d, &s), 1) << text;
                EXPECT_EQ(r, ra) << text;
                EXPECT_EQ(d, dec) << text;
                EXPECT_EQ(s, sign) << text;
            }
}

TEST(DesignationRoundTrip, McgAndEsoForms) {
    for (int zone = -6; zone <= 15; ++zone)
        for (int field = 1; field <= 60; field += 7)
            for (int number = 1; number <= 999; number += number < 20 ? 1 : 41)
                for (int part : {0, 1, 2}) {
                    const std::string text = mcgName(zone, field, number, part);
                    int z = 99, f = -1, n = -1, p = -1;
                    ASSERT_EQ(parseMcg(text.c_str(), &z, &f, &n, &p), part ? 4 : 3) << text;
                    EXPECT_EQ(z, zone) << text;
                    EXPECT_EQ(f, field) << text;
                    EXPECT_EQ(n, number) << text;
                    EXPECT_EQ(p, part) << text;
                }
    for (int field = 1; field <= 609; field += 4)
        for (int number = 1; number <= 999; number += number < 20 ? 1 : 53)
            for (int suffix : kSuffixes) {
                const std::string text = esoName(field, number, suffix);
                long f = -1, n = -1;
                int s = -1;
                ASSERT_EQ(parseEso(text.c_str(), &f, &n, &s), 1) << text;
                EXPECT_EQ(f, field) << text;
                EXPECT_EQ(n, number) << text;
                EXPECT_EQ(s, suffix) << text;
            }
}

TEST(DesignationRoundTrip, PkOverTheSky) {
    for (int longitude = 0; longitude <= 359; ++longitude)
        for (int latitude = -900; latitude <= 900; latitude += 7) {
            const std::string text = pkName(longitude, latitude < 0 ? '-' : '+', latitude < 0 ? -latitude : latitude);
            long l = -1;
            int b = 0;
            ASSERT_EQ(parsePk(text.c_str(), &l, &b), 1) << text;
            EXPECT_EQ(l, longitude) << text;
            EXPECT_EQ(b, latitude) << text;
        }
}

TEST(DesignationRoundTrip, TychoAndGscNumbers) {
    for (int region = 1; region <= 9537; region += region < 20 ? 1 : 13)
        for (int number = 1; number <= 12000; number += number < 20 ? 1 : 499)
            for (int component = 1; component <= 3; ++component) {
                int r = -1, n = -1, c = -1;
                const std::string tyc = tychoName(region, number, component);
                ASSERT_EQ(parseTycho(tyc.c_str(), &r, &n, &c), 1) << tyc;
                EXPECT_EQ(r, region) << tyc;
                EXPECT_EQ(n, number) << tyc;
                EXPECT_EQ(c, component) << tyc;
                if (component != 1) continue;
                const std::string gsc = gscName(region, number);
                ASSERT_EQ(parseTycho(gsc.c_str(), &r, &n, &c), 1) << gsc;
                EXPECT_EQ(r, region) << gsc;
                EXPECT_EQ(n, number) << gsc;
                EXPECT_EQ(c, 1) << gsc;
            }
}

TEST(DesignationRoundTrip, QuasarHewittBurbidgeNumbers) {
    for (int ra = 0; ra <= 2359; ra += ra < 60 ? 1 : 17)
        for (int dec = -8959; dec <= 8959; dec += 113)
            for (char suffix : {' ', 'A', 'B'}) {
                const std::string text = quasarQName(ra, dec, suffix);
                int r = -1, d = -1;
                char s = 0;
                ASSERT_EQ(parseQuasarQ(text.c_str(), &r, &d, &s), suffix == ' ' ? 2 : 3) << text;
                EXPECT_EQ(r, ra) << text;
                EXPECT_EQ(d, dec) << text;
                EXPECT_EQ(s, suffix) << text;
            }
}
