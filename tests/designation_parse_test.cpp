#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/string_helpers.h"
#include "catalog/designation_parse.h"
#include "catalog/dm_numbers.h"

namespace {

// Each parser's answer written as "fail" or its numbers joined by '/'.
std::string Join(const std::vector<long>& values) {
    std::string text;
    for (long v : values) text += (text.empty() ? "" : "/") + std::to_string(v);
    return text;
}

std::string NumberSuffix(const char* t) {
    long n = 0;
    int s = 0;
    return parseNumberSuffix(t, &n, &s) ? Join({n, s}) : "fail";
}
std::string Bayer(const char* t) {
    int l = 0, s = 0, c = 0;
    return parseBayer(t, &l, &s, &c) ? Join({l, s, c}) : "fail";
}
std::string Flamsteed(const char* t) {
    int n = 0, c = 0;
    return parseFlamsteed(t, &n, &c) ? Join({n, c}) : "fail";
}
std::string Ccdm(const char* t) {  // a south Dec part written negative
    int ra = 0, dec = 0;
    char sign = 0;
    return parseCcdm(t, &ra, &dec, &sign) ? Join({ra, sign == '-' ? -dec : dec}) : "fail";
}
std::string Dm(const char* t) {
    int zone = 0;
    char sign = 0, suffix = 0;
    long n = 0;
    return parseDm(t, &zone, &sign, &n, &suffix) ? std::string(1, sign) + Join({zone, n}) + suffix : "fail";
}
std::string Mcg(const char* t) {  // the count read first
    int z = 0, f = 0, n = 0, p = 0, count = parseMcg(t, &z, &f, &n, &p);
    return count >= 3 ? Join({count, z, f, n, p}) : "fail";
}
std::string Eso(const char* t) {
    long f = 0, n = 0;
    int s = 0;
    return parseEso(t, &f, &n, &s) ? Join({f, n, s}) : "fail";
}
std::string Pk(const char* t) {
    long l = 0;
    int b = 0;
    return parsePk(t, &l, &b) ? Join({l, b}) : "fail";
}
std::string Tycho(const char* t) {
    int r = 0, n = 0, c = 0;
    return parseTycho(t, &r, &n, &c) ? Join({r, n, c}) : "fail";
}
std::string Quasar(const char* t) {  // the count read first
    int ra = 0, dec = 0;
    char s = 0;
    const int count = parseQuasarQ(t, &ra, &dec, &s);
    return count ? Join({count, ra, dec}) + s : "fail";
}

struct Case {
    std::string (*parse)(const char*);
    const char* text;
    const char* want;
};

}  // namespace

TEST(DesignationParse, EachParserTakesItsForms) {
    const Case cases[] = {
        {NumberSuffix, "NGC 224", "224/0"}, {NumberSuffix, "NGC 224A", "224/1"}, {NumberSuffix, "224", "224/0"},
        {NumberSuffix, "IC 434Z", "434/26"}, {NumberSuffix, "NGC 224a", "224/0"},
        {NumberSuffix, "NGC224", "fail"}, {NumberSuffix, "", "fail"}, {NumberSuffix, "* 31", "fail"},
        {NumberSuffix, "Z", "fail"}, {NumberSuffix, nullptr, "fail"},
        // Greek row, superscript, constellation row.
        {Bayer, "Alpha And", "0/0/0"}, {Bayer, "Alpha 2 Cen", "0/2/18"}, {Bayer, "Ze And", "5/0/0"},
        {Bayer, "zeta cyg", "5/0/30"}, {Bayer, "Alpha Xyz", "fail"}, {Bayer, "Z And", "fail"},
        {Bayer, "Alpha", "fail"}, {Bayer, "Alpha x Cen", "fail"}, {Flamsteed, "61 Cyg", "61/30"},
        {Flamsteed, "61 Xyz", "fail"}, {Flamsteed, "Cyg 61", "fail"},
        // RA part and Dec part, negative for a south declination.
        {Ccdm, "CCDM 00057+4549", "57/4549"}, {Ccdm, "CCDM 00057-4549", "57/-4549"},
        {Ccdm, "00057+4549", "57/4549"}, {Ccdm, "CCDM 12345", "12345/1"},
        {Ccdm, "CCDM 23598+8915", "23598/8915"}, {Ccdm, "CCDM 23599+0001", "fail"},
        {Ccdm, "CCDM 00057+8916", "fail"}, {Ccdm, "CCDM A1", "fail"}, {Dm, "BD +12 345a", "+12/345A"},
        {Dm, "CD -45 1234", "-45/1234 "}, {Dm, "-0 17", "-0/17 "}, {Dm, "BD +12", "fail"},
        {Dm, "BD +12 x", "fail"},
        // Count read, zone, field, number, part.
        {Mcg, "MCG -01-02-003", "3/-1/2/3/0"}, {Mcg, "MCG 1 2 3A", "4/1/2/3/1"},
        {Mcg, "+05-10-012b", "4/5/10/12/2"}, {Mcg, "MCG x", "fail"}, {Eso, "ESO 123 45A", "123/45/1"},
        {Eso, "ESO 123", "fail"},
        // Longitude and latitude in tenths; -761 when no latitude was read.
        {Pk, "PK 120+01.2", "120/12"}, {Pk, "PK 120-01.2", "120/-12"}, {Pk, "PK 064 +05.1", "64/51"},
        {Pk, "PK 120  -01.2", "120/-12"}, {Pk, "120-1.25", "120/-13"}, {Pk, "PK 120", "120/-761"},
        {Pk, "PK", "fail"}, {Tycho, "TYC 1234-567 2", "1234/567/2"}, {Tycho, "GSC 1234-567", "1234/567/1"},
        {Tycho, "1234", "1234/1/1"}, {Tycho, "TYC", "fail"},
        // Count read, RA part, Dec part, suffix.
        {Quasar, "Q0042-2656", "2/42/-2656 "}, {Quasar, "Q 1226+023A", "3/1226/23A"},
        {Quasar, "Q1226", "1/1226/0 "}, {Quasar, "Qx", "fail"},
    };
    for (const Case& c : cases) EXPECT_EQ(c.parse(c.text), c.want) << (c.text ? c.text : "(null)");
}

TEST(DesignationParse, DmNumberPacksAndPrintsBack) {
    int zone = 0;
    char sign = 0, suffix = 0;
    long number = 0;
    ASSERT_EQ(parseDm("BD +12 345a", &zone, &sign, &number, &suffix), 1);
    EXPECT_EQ(dmZoneCode(sign, zone), 77);
    const uint32_t packed = packDm(sign, zone, number, suffix);
    EXPECT_EQ(packed, 0x00A68159u);  // 345, zone code 77, suffix code 1
    EXPECT_EQ(dmName(kDmBd, unpackDm(packed)), "BD +12 00345a");
}

TEST(DesignationParse, TextNormalFormKeepsSingleBlanks) {
    const std::pair<const char*, const char*> cases[] = {{"  a   b  c ", "a b c"}, {"a b", "a b"}, {"   ", ""}, {"", ""}};
    for (const auto& [in, out] : cases) {
        std::string text = in;
        EXPECT_STREQ(NormaliseBlanks(text.data()), out) << '[' << in << ']';
    }
}
