// The reference catalogue set that make-refdata writes from the public
// catalogues (the test fixture runs it into the build tree), read back
// through the catalogue readers and held against the catalogue CSVs, star
// by star.
#include <gtest/gtest.h>

#include <cctype>
#include <cmath>
#include <cstring>
#include <fstream>
#include <map>
#include <numbers>
#include <string>
#include <vector>

#include "astro/precession.h"
#include "base/le_bytes.h"
#include "base/record_layout.h"
#include "base/string_helpers.h"
#include "base/windows_text.h"
#include "catalog/catalogue_files.h"
#include "catalog/catalogue_roots.h"
#include "catalog/cluster_files.h"
#include "catalog/constellation_files.h"
#include "catalog/cross_tables.h"
#include "catalog/galaxy_files.h"
#include "catalog/nebula_files.h"
#include "catalog/planetary_files.h"
#include "catalog/constellation_names.h"
#include "catalog/greek_letters.h"
#include "catalog/star_file.h"
#include "catalog/star_indexes.h"
#include "catalog/star_texts.h"
#include "catalog/variable_stars.h"
#include "support.h"

namespace {

const std::string kSet = FERRY2_REFDATA_DIR;
const std::string kSource = FERRY2_REFDATA_SOURCE;

// A catalogue CSV as rows of named fields; a field with a comma is quoted.
using Row = std::map<std::string, std::string>;

std::vector<Row> ReadCsv(const std::string& path) {
    std::ifstream in(path);
    std::vector<Row> rows;
    std::vector<std::string> header;
    std::string line;
    while (std::getline(in, line)) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (line.empty() || line[0] == '#') continue;
        std::vector<std::string> fields(1);
        bool quoted = false;
        for (const char c : line) {
            if (c == '"')
                quoted = !quoted;
            else if (c == ',' && !quoted)
                fields.emplace_back();
            else
                fields.back().push_back(c);
        }
        if (header.empty()) {
            header = fields;
            continue;
        }
        Row row;
        for (size_t i = 0; i < header.size() && i < fields.size(); ++i) row[header[i]] = fields[i];
        rows.push_back(row);
    }
    return rows;
}

long Number(const std::string& text) { return text.empty() ? 0 : std::stol(text); }

// Every name of the lettered scheme in numbering order: R to Z, then RR to
// ZZ, then AA to QZ with no J, each first letter followed by the letters
// from itself on.
std::map<std::string, int> LetteredNames() {
    std::map<std::string, int> numbers;
    int n = 0;
    for (char c = 'R'; c <= 'Z'; ++c) numbers[std::string(1, c)] = ++n;
    for (char a = 'R'; a <= 'Z'; ++a)
        for (char b = a; b <= 'Z'; ++b) numbers[std::string{a, b}] = ++n;
    for (char a = 'A'; a <= 'Q'; ++a)
        for (char b = a; b <= 'Z'; ++b)
            if (a != 'J' && b != 'J') numbers[std::string{a, b}] = ++n;
    return numbers;
}

class RefdataTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        stars_ = ReadCsv(kSource + "bright-stars.csv");
        names_ = ReadCsv(kSource + "star-names.csv");
    }
    void SetUp() override {
        ASSERT_EQ(stars_.size(), 9096u);
        setCatalogueRoots((kSet + "small/").c_str(), (kSet + "stars/").c_str(),
                          (kSet + "gsc/").c_str());
        file_ = openStars();
        ASSERT_TRUE(file_);
    }
    // Star n's row; the record number is the row's place in the CSV.
    static long StarOfHr(long hr) {
        for (size_t i = 0; i < stars_.size(); ++i)
            if (Number(stars_[i].at("hr")) == hr) return static_cast<long>(i) + 1;
        return 0;
    }
    LongStarRecord Raw(long number) {
        uint8_t image[LongStarLayout::kSize];
        LongStarRecord r;
        EXPECT_TRUE(readAt(file_.get(), starRecordOffset(number), image, sizeof image));
        DecodeRecord<LongStarLayout>(image, r);
        return r;
    }
    static std::vector<Row> stars_, names_;
    FilePtr file_;
};
std::vector<Row> RefdataTest::stars_, RefdataTest::names_;

constexpr double kScale = 2147483647.0;

TEST_F(RefdataTest, EveryStarReadsBackAtItsPlaceInTheCatalogue) {
    for (size_t i = 0; i < stars_.size(); ++i) {
        Row& row = stars_[i];
        SCOPED_TRACE("HR " + row["hr"]);
        StarData d;
        ASSERT_EQ(readStar(file_.get(), static_cast<long>(i) + 1, &d, kReadAll), 1);
        // Within one unit of the scaled angle: degrees / 360 of the scale.
        EXPECT_NEAR(d.ra / (2 * std::numbers::pi) * kScale, std::stod(row["ra_deg"]) / 360 * kScale,
                    1.0);
        EXPECT_NEAR(d.dec / (2 * std::numbers::pi) * kScale,
                    std::stod(row["dec_deg"]) / 360 * kScale, 1.0);
        // The reader divides RA's motion by cos(dec); the catalogue's is on the sky.
        const double arcsec = 180 / std::numbers::pi * 3600;
        EXPECT_NEAR(d.pmRa * std::cos(d.dec) * arcsec, std::stod(row["pm_ra"]), 6e-6);
        EXPECT_NEAR(d.pmDec * arcsec, std::stod(row["pm_dec"]), 6e-6);
        EXPECT_NEAR(d.magnitude, std::stod(row["vmag"]), 0.0051);
        EXPECT_NEAR(d.colour, row["b_v"].empty() ? 99.9 : std::stod(row["b_v"]), 0.00051);
        EXPECT_EQ(static_cast<long>(d.hr), Number(row["hr"]));
        EXPECT_EQ(static_cast<long>(d.hd), Number(row["hd"]));
        EXPECT_EQ(static_cast<long>(d.sao), Number(row["sao"]));
        EXPECT_EQ(d.flamsteed, Number(row["flamsteed"]));
        EXPECT_EQ(d.bayerSuperscript, Number(row["bayer_sup"]));
        EXPECT_EQ(StringCompareNoCase(greekLetterName(d.bayerLetter - 1), row["bayer"].c_str()), 0);
        if (!row["con"].empty()) {
            EXPECT_STREQ(constellationAbbreviation(d.designationConstellation), row["con"].c_str());
        }
    }
}

TEST_F(RefdataTest, NumberIndexesLandOnTheRightStar) {
    FilePtr hrbs = openHrbs(), hd = openHd(), sao = openSao(), flam = openFlamstd(),
            bayer = openBayer();
    // The stars of each designation, in catalogue order.
    std::map<std::string, std::vector<long>> byFlamsteed, byBayer;
    for (size_t i = 0; i < stars_.size(); ++i) {
        Row& row = stars_[i];
        if (!row["flamsteed"].empty()) byFlamsteed[row["con"] + row["flamsteed"]].push_back(i + 1);
        if (!row["bayer"].empty())
            byBayer[row["con"] + row["bayer"] + row["bayer_sup"]].push_back(i + 1);
    }
    std::map<long, long> firstOfSao;
    for (size_t i = 0; i < stars_.size(); ++i) {
        Row& row = stars_[i];
        SCOPED_TRACE("HR " + row["hr"]);
        const long n = static_cast<long>(i) + 1;
        long two[2];
        EXPECT_EQ(lookupHrbs(hrbs.get(), Number(row["hr"])), n);
        EXPECT_EQ(lookupHd(hd.get(), Number(row["hd"]), two), 1);
        EXPECT_EQ(two[0], n);
        // One slot a number: of two stars with one SAO number the first keeps it.
        if (const long s = Number(row["sao"])) {
            EXPECT_EQ(lookupSao(sao.get(), s), firstOfSao.emplace(s, n).first->second);
        }
        // Two slots a designation: a third star of one designation is left out.
        const int con = constellationRowOf(row["con"].c_str());
        if (const long f = Number(row["flamsteed"])) {
            const std::vector<long>& same = byFlamsteed[row["con"] + row["flamsteed"]];
            ASSERT_EQ(lookupFlamsteed(flam.get(), con, static_cast<int>(f), two),
                      std::min<int>(2, same.size()));
            EXPECT_TRUE(two[0] == same[0] && (same.size() == 1 || two[1] == same[1]));
        }
        if (!row["bayer"].empty()) {
            int letter = 1;
            while (letter <= 24 &&
                   StringCompareNoCase(greekLetterName(letter - 1), row["bayer"].c_str()))
                ++letter;
            const long sup = Number(row["bayer_sup"]);
            const std::vector<long>& same = byBayer[row["con"] + row["bayer"] + row["bayer_sup"]];
            const int found = lookupBayer(bayer.get(), con, letter, static_cast<int>(sup), two);
            if (sup <= 8) {  // a ninth superscript has no slot and is left out
                ASSERT_GE(found, 1);
                EXPECT_TRUE(two[0] == same[0] && (found == 1 || two[1] == same[1]));
            }
        }
    }
    // The HR numbers that have no star answer nothing.
    for (long hr : {92L, 95L, 182L, 8296L}) EXPECT_EQ(lookupHrbs(hrbs.get(), hr), 0);
}

TEST_F(RefdataTest, NamedStarsByRowAlphabetAndHip) {
    FilePtr csn = openCsn(), alpha = openCsnAlpha(), hc = openHc();
    long named = 0;
    for (Row& row : names_) {
        if (row["hr"].empty()) continue;
        SCOPED_TRACE(row["name"]);
        ++named;
        const long n = StarOfHr(Number(row["hr"]));
        const std::string name = Utf8ToWindowsText(row["name_utf8"]);
        StarData d;
        ASSERT_EQ(readStar(file_.get(), n, &d, kReadAll), 1);
        EXPECT_EQ(static_cast<long>(d.hip), Number(row["hip"]));
        EXPECT_EQ(lookupHc(hc.get(), Number(row["hip"])), n);
        CsnRecord text;
        ASSERT_EQ(readCsn(csn.get(), d.csnRow, &text), 1);
        EXPECT_EQ(name, text.name);
        long place = 0;
        uint32_t star = 0;
        ASSERT_EQ(findCsnAlpha(alpha.get(), name.c_str(), &place, &star), 1);
        EXPECT_EQ(star, static_cast<uint32_t>(n));
    }
    EXPECT_EQ(named, 338);
    // Alphabetical, without case.
    CsnAlphaRecord a, b;
    ASSERT_EQ(readCsnAlpha(alpha.get(), 1, &a), 1);
    for (long r = 2; readCsnAlpha(alpha.get(), r, &b); ++r, a = b)
        EXPECT_LT(StringCompareNoCase(a.name, b.name), 0) << a.name << " " << b.name;
}

TEST_F(RefdataTest, LetteredAndVNumberVariablesSitAtTheirNameNumber) {
    const std::map<std::string, int> lettered = LetteredNames();
    const std::map<std::string, int> published = {{"Z", 9},   {"RR", 10},  {"SS", 19}, {"ZZ", 54},
                                                  {"AA", 55}, {"KK", 244}, {"QZ", 334}};
    for (const auto& [name, number] : published) ASSERT_EQ(lettered.at(name), number) << name;
    VariableFilesPtr files = openVariables();
    FilePtr vnames = openVariableNames();
    ASSERT_TRUE(files && vnames);
    int variables = 0;
    for (size_t i = 0; i < stars_.size(); ++i) {
        const std::string& id = stars_[i]["var_id"];
        const size_t blank = id.find(' ');
        const int con =
            blank == std::string::npos ? -1 : constellationRowOf(id.c_str() + blank + 1);
        const std::string name = id.substr(0, blank);
        int number = lettered.count(name) ? lettered.at(name) : 0;
        if (name.size() > 1 && name[0] == 'V' && std::isdigit(static_cast<unsigned char>(name[1])))
            number = std::stoi(name.substr(1));
        if (con < 0 || number == 0) continue;
        SCOPED_TRACE(id);
        ++variables;
        VariableData v;
        ASSERT_EQ(readVariable(files.get(), con + 1, number, &v), 1);
        EXPECT_EQ(v.star1, static_cast<long>(i) + 1);
        EXPECT_NEAR(v.dec / (2 * std::numbers::pi) * kScale,
                    std::stod(stars_[i]["dec_deg"]) / 360 * kScale, 1.0);
        // The star's variable index is that row, and names it in vnames.
        StarData d;
        ASSERT_EQ(readStar(file_.get(), static_cast<long>(i) + 1, &d, kReadAll), 1);
        EXPECT_EQ(static_cast<long>(d.vrefIndex), v.row);
        std::string text;
        ASSERT_EQ(readIndexedText(vnames.get(), v.row, &text), 1);
        EXPECT_EQ(text, id);
    }
    EXPECT_EQ(variables, 686);
    // R Sgr is no bright star: its row in the run is empty. V4090 Sgr is the
    // run's last name, and the row past it belongs to another constellation.
    const int sgr = constellationRowOf("Sgr") + 1;
    VariableData v;
    EXPECT_EQ(readVariable(files.get(), sgr, 1, &v), 0);
    EXPECT_EQ(readVariable(files.get(), sgr, 4090, &v), 1);
    EXPECT_EQ(readVariable(files.get(), sgr, 4091, &v), 0);
}

// Vega, HR 7001, is the 6990th star with a position.
TEST_F(RefdataTest, VegaRecordBytesAsComputedByHand) {
    EXPECT_EQ(StarOfHr(7001), 6990);
    EXPECT_EQ(StarOfHr(2491), 2485);
    const Bytes expected = {
        0x61, 0x8D, 0x48, 0x63,  // RA 279.234583 deg = 1665699169
        0xA3, 0x2B, 0xCA, 0x0D,  // Dec 38.783611 deg = 231353251
        0x98, 0xC0, 0x8B, 0x21,  // pmRa 0.202"/yr = 770200, name row 268 from bit 21
        0x68, 0xE1, 0x0B, 0x00,  // pmDec 0.286"/yr = 778600
        0xA3, 0x28,              // A0 V: class 3, subclass 10, luminosity 5 from bit 11
        0x60, 0x67, 0x65, 0x6D,  // parallax 0 = 92000, HR 7001 from bit 18
        0x00, 0x00, 0x00, 0x00,  // parallax error, tenths value
        0x00, 0x00,              // B-V 0.00
    };
    const Bytes image = Slice(ReadFileBytes(kSet + "stars/stars.bin"), (6990 - 1) * 77, 77);
    EXPECT_EQ(Slice(image, 0, expected.size()), expected);
    // Flamsteed 3, then Lyr (row 51) from bit 8 and alpha (row 0 + 1) from bit 15.
    EXPECT_EQ(Slice(image, 66, 3), (Bytes{0x03, 0xB3, 0x00}));
}

// Spectral codes of the catalogue's spectral types, by hand: class from 1 in
// OBAFGKMRNSCP, subclass x 10 + 10 from bit 4, luminosity row from bit 11.
TEST_F(RefdataTest, SpectralTypesCoded) {
    const struct {
        long hr;
        const char* type;
        uint16_t code;
    } cases[] = {
        {7001, "A0Va", 3 | 10 << 4 | 5 << 11},
        {424, "F7:Ib-II", 4 | 80 << 4 | 1 << 11},
        {612, "B9.5pSi", 2 | 105 << 4},
        {423, "C6II", 11 | 70 << 4 | 2 << 11},
        {5044, "KIII", 6 | 3 << 11},
        {47, "M0-1III", 7 | 10 << 4 | 3 << 11},
        {158, "dF6", 4 | 70 << 4 | 5 << 11},
        {36, "gK4", 6 | 50 << 4 | 3 << 11},
        {312, "sgG6", 5 | 70 << 4 | 4 << 11},
        {5958, "sdBe+gM3+Q", 2},
        {2583, "WN5-B", 0},
        {4210, "pec", 0},
    };
    for (const auto& c : cases) {
        const long n = StarOfHr(c.hr);
        EXPECT_EQ(stars_[n - 1]["sptype"], c.type);
        EXPECT_EQ(Raw(n).spectralCode, c.code) << c.type;
    }
}

}  // namespace

// ---- Constellations ----------------------------------------------------------

// The abbreviation of a zone: Serpens is zones 75 and 76, so the zones after
// it take the row below.
std::string ZoneAbbreviation(int zone) {
    if (zone < 0) return "";
    return constellationAbbreviation(zone > 75 ? zone - 1 : zone);
}

double Radians(double degrees) { return degrees * std::numbers::pi / 180; }

TEST_F(RefdataTest, EveryDesignatedStarLiesInItsOwnConstellation) {
    int checked = 0;
    for (Row& row : stars_) {
        if (row["con"].empty() || (row["flamsteed"].empty() && row["bayer"].empty())) continue;
        SCOPED_TRACE("HR " + row["hr"]);
        const int zone = constellationOfPlace(Radians(std::stod(row["ra_deg"])),
                                              Radians(std::stod(row["dec_deg"])));
        EXPECT_EQ(ZoneAbbreviation(zone), row["con"]);
        ++checked;
    }
    EXPECT_EQ(checked, 3143);
}

// The boundary table read as published: the first row with dec_low <= dec
// and ra_low <= ra < ra_high.
TEST_F(RefdataTest, ZoneRectanglesAgreeWithTheFirstMatchTable) {
    const std::vector<Row> rows = ReadCsv(kSource + "constellation-boundaries-b1875.csv");
    ASSERT_EQ(rows.size(), 357u);
    FilePtr conrect = openConstellationRectangles();
    ASSERT_TRUE(conrect);
    // A spread of places (off the table's round numbers) over the sphere.
    for (int i = 0; i < 2000; ++i) {
        const double hours = std::fmod(i * 0.61803398875 * 24, 24);
        const double dec = std::asin(std::fmod(i * 0.7548776662 + 0.5, 1.0) * 2 - 1) * 180 /
                           std::numbers::pi;
        std::string expected;
        for (const Row& r : rows)
            if (std::stod(r.at("dec_low_deg")) <= dec && std::stod(r.at("ra_low_h")) <= hours &&
                hours < std::stod(r.at("ra_high_h"))) {
                expected = r.at("con");
                break;
            }
        const int zone = constellationOfB1875Place(conrect.get(), hours * std::numbers::pi / 12,
                                                   dec * std::numbers::pi / 180);
        EXPECT_EQ(ZoneAbbreviation(zone), expected) << hours << " h " << dec << " deg";
    }
}

TEST_F(RefdataTest, PlacesFallInThePublishedConstellations) {
    struct Case {
        double ra, dec;  // J2000 degrees
        const char* abbreviation;
        int zone;
    };
    const Case cases[] = {
        {83.82, -5.39, "Ori", 59},          // the Orion Nebula
        {10.684792, 41.269056, "And", 0},   // M31
        {37.95, 89.26, "UMi", 84},          // Polaris
        {236.067, 6.4256, "Ser", 75},       // alpha Ser, in Serpens Caput
        {275.327, -2.899, "Ser", 76},       // eta Ser, in Serpens Cauda
        {279.234583, 38.783611, "Lyr", 51}, // Vega
        {0.0, -89.9, "Oct", 57},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.abbreviation);
        const int zone = constellationOfPlace(Radians(c.ra), Radians(c.dec));
        EXPECT_EQ(zone, c.zone);
        EXPECT_EQ(ZoneAbbreviation(zone), c.abbreviation);
    }
}

// The eight test positions published with the boundary table (Roman 1987,
// PASP 99, 695), given for the equinox of 1950 and precessed here to the
// boundaries' own B1875.0.
TEST_F(RefdataTest, TheBoundaryTablesTestPositions) {
    struct Case {
        double hours, degrees;
        const char* abbreviation;
    };
    const Case cases[] = {
        {9.0, 65.0, "UMa"},       {23.5, -20.0, "Aqr"},      {5.12, 9.12, "Ori"},
        {9.4555, -19.9, "Hya"},   {12.8888, 22.0, "Com"},    {15.6687, -12.1234, "Lib"},
        {19.0, -40.0, "CrA"},     {6.2222, -81.1234, "Men"},
    };
    // B1950.0 and B1875.0 in Julian centuries from J2000.0.
    constexpr double kB1950 = (2433282.4235 - 2451545.0) / 36525.0;
    constexpr double kB1875 = (2405889.258550475 - 2451545.0) / 36525.0;
    PrecessionContext context;
    ASSERT_EQ(PrecessionPrepare(&context, kB1950, kB1875, kFk5, kFk5), 1);
    FilePtr conrect = openConstellationRectangles();
    ASSERT_TRUE(conrect);
    for (const Case& c : cases) {
        double ra = c.hours * std::numbers::pi / 12, dec = Radians(c.degrees);
        PrecessionApply(&context, &ra, &dec, 0.0, 0.0, 0);
        EXPECT_EQ(ZoneAbbreviation(constellationOfB1875Place(conrect.get(), ra, dec)), c.abbreviation)
            << c.hours << " h " << c.degrees << " deg";
    }
}

TEST_F(RefdataTest, ConstellationNamesAndBoxes) {
    FilePtr names = openConstellationNames();
    ASSERT_TRUE(names);
    // Zone 0 by hand: "Andromeda", then the label point 10.0934, +40.4837
    // degrees as scaled angles (degrees / 360 x 2147483647).
    uint8_t image[28];
    ASSERT_TRUE(readAt(names.get(), 0, image, sizeof image));
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(image)), "Andromeda");
    EXPECT_EQ(le::GetI32(image + 20), 60209476);
    EXPECT_EQ(le::GetI32(image + 24), 241494677);
    const struct {
        int zone;
        const char* name;
    } zones[] = {{0, "Andromeda"}, {75, "Serpens Caput"}, {76, "Serpens Cauda"},
                 {77, "Sextans"}, {88, "Vulpecula"}};
    for (const auto& z : zones) {
        ConstellationLabel label;
        ASSERT_EQ(readConstellationName(names.get(), z.zone, &label), 1);
        EXPECT_EQ(label.name, z.name);
        // The label point lies in its own zone.
        EXPECT_EQ(constellationOfPlace(label.ra, label.dec), z.zone) << z.name;
    }
    EXPECT_EQ(findConstellationName(names.get(), "serpens ca"), 75);
    // The first run of conrect starts straight after the 89 heads (445 bytes).
    FilePtr rects = openConstellationRectangles();
    ASSERT_TRUE(rects);
    ASSERT_TRUE(readAt(rects.get(), 0, image, 4));
    EXPECT_EQ(std::vector<uint8_t>(image, image + 4), (std::vector<uint8_t>{0xBD, 0x01, 0, 0}));
    // Boxes: Andromeda's holds M31; Ursa Minor's runs round the pole.
    FilePtr bounds = openConstellationBounds();
    ConstellationData box;
    ASSERT_EQ(readConstellationBox(bounds.get(), 0, &box), 1);
    EXPECT_LT(box.decLow, Radians(41.27));
    EXPECT_GT(box.decHigh, Radians(41.27));
    EXPECT_NEAR(box.ra, Radians(10), Radians(15));
    ASSERT_EQ(readConstellationBox(bounds.get(), 84, &box), 1);
    EXPECT_NEAR(box.decHigh, Radians(90), 1e-6);
}

// ---- Deep-sky objects ----------------------------------------------------------

// The record of a row of deep-sky.csv within its class: rows of the class
// counted in order, from `first`.
long RecordInClass(const std::vector<Row>& rows, const std::string& name, long first) {
    std::string cls;
    for (const Row& r : rows)
        if (r.at("name") == name) cls = r.at("class");
    long record = first;
    for (const Row& r : rows) {
        if (r.at("name") == name) return record;
        if (r.at("class") == cls) ++record;
    }
    return -1;
}

TEST_F(RefdataTest, MessierThirtyOneIsTheAndromedaGalaxy) {
    const std::vector<Row> rows = ReadCsv(kSource + "deep-sky.csv");
    ASSERT_EQ(rows.size(), 14033u);
    const long m31 = RecordInClass(rows, "NGC0224", 1);
    // `m` row 30 by hand: cross class 4 (galaxy), then the record, u16.
    FilePtr m = openMessierCross();
    ASSERT_TRUE(m);
    uint8_t row[3];
    ASSERT_TRUE(readAt(m.get(), 30 * 3, row, sizeof row));
    EXPECT_EQ(row[0], 4);
    EXPECT_EQ(row[1] | row[2] << 8, m31);

    FilePtr gal = openGalaxies();
    GalaxyData g;
    ASSERT_EQ(readGalaxy(gal.get(), m31, &g, kReadAll), 1);
    const double unit = 360.0 / 2147483647;  // degrees of one scaled-angle step
    EXPECT_NEAR(g.ra * 180 / std::numbers::pi, 10.684792, unit);
    EXPECT_NEAR(g.dec * 180 / std::numbers::pi, 41.269056, unit);
    EXPECT_EQ(g.ngc, 224);
    EXPECT_EQ(g.messier, 31);
    EXPECT_EQ(g.pgc, 2557);
    EXPECT_EQ(g.ugc, 454);
    EXPECT_EQ(g.mcgZone, 7);  // MCG +07-02-016
    EXPECT_EQ(g.mcgField, 2);
    EXPECT_EQ(g.mcgNumber, 16);
    EXPECT_NEAR(g.magnitude, 3.4, 1e-9);  // V 3.44 in tenths
    EXPECT_NEAR(g.sizeMajor * 180 / std::numbers::pi * 60, 177.83, 1.0 / 62);
    // Its place lies in Andromeda.
    FilePtr names = openConstellationNames();
    ConstellationLabel label;
    ASSERT_EQ(readConstellationName(names.get(), constellationOfPlace(g.ra, g.dec), &label), 1);
    EXPECT_EQ(label.name, "Andromeda");
    // The galaxy record by hand: NGC 224 at byte 11, Messier 31 at 17.
    uint8_t image[GalaxyLayout::kSize];
    ASSERT_TRUE(readAt(gal.get(), (m31 - 1) * 53, image, sizeof image));
    EXPECT_EQ(image[11], 0xE0);
    EXPECT_EQ(image[12], 0x00);
    EXPECT_EQ(image[17], 31);
    // PGC and the common name lead to the same galaxy.
    EXPECT_EQ(lookupPgc(openPgc().get(), 2557), m31);
    long found[kMaxGalaxyHits] = {};
    ASSERT_EQ(lookupMcg(openMcg().get(), 7, 2, 16, 0, found), 1);
    EXPECT_EQ(found[0], m31);
    FilePtr cnames = openCommonNames();
    const int nameRow = findCommonName(cnames.get(), "Andromeda Gal");
    ASSERT_GE(nameRow, 0);
    EXPECT_EQ(g.commonNameRow, nameRow);
    CrossHit hit;
    ASSERT_EQ(lookupCommonNameCross(openCommonNameCross().get(), nameRow, &hit), 1);
    EXPECT_EQ(hit.crossClass, 4);
    EXPECT_EQ(hit.record, m31);
}

TEST_F(RefdataTest, CrossTablesLeadToTheirClassFiles) {
    const std::vector<Row> rows = ReadCsv(kSource + "deep-sky.csv");
    struct Case {
        const char* table;  // "M", "NGC" or "IC"
        int number, suffix;
        const char* name;  // the row in deep-sky.csv
        int crossClass;
        long first;  // the class file's first record
    };
    const Case cases[] = {
        {"M", 42, 0, "NGC1976", 2, 0},  {"M", 13, 0, "NGC6205", 1, 1},
        {"M", 57, 0, "NGC6720", 3, 0},  {"M", 51, 0, "NGC5194", 4, 1},
        {"NGC", 5195, 0, "NGC5195", 4, 1}, {"NGC", 1976, 0, "NGC1976", 2, 0},
        {"NGC", 6720, 0, "NGC6720", 3, 0}, {"IC", 434, 0, "IC0434", 2, 0},
        {"NGC", 61, 1, "NGC0061A", 4, 1}, {"NGC", 61, 2, "NGC0061B", 4, 1},
    };
    FilePtr m = openMessierCross(), ngc = openNgcCross(), ic = openIcCross();
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.table) + " " + std::to_string(c.number));
        CrossHit hits[2];
        const int found = c.table[0] == 'M'   ? lookupMessierCross(m.get(), c.number, hits)
                          : c.table[0] == 'N' ? lookupNgcCross(ngc.get(), c.number, c.suffix, hits)
                                              : lookupIcCross(ic.get(), c.number, c.suffix, hits);
        ASSERT_GE(found, 1);
        EXPECT_EQ(hits[0].crossClass, c.crossClass);
        EXPECT_EQ(hits[0].record, RecordInClass(rows, c.name, c.first));
    }
    // The class files hold what the rows say. NGC 65: "ESO 473-010A,
    // MCG -04-02-001", B 14.67 for want of V.
    GalaxyData g;
    ASSERT_EQ(readGalaxy(openGalaxies().get(), RecordInClass(rows, "NGC0065", 1), &g, kReadAll), 1);
    EXPECT_EQ(g.esoField, 473);
    EXPECT_EQ(g.esoNumber, 10);
    EXPECT_EQ(g.esoSuffix, 1);
    EXPECT_EQ(g.mcgZone, -4);
    EXPECT_EQ(g.mcgField, 2);
    EXPECT_EQ(g.mcgNumber, 1);
    EXPECT_NEAR(g.magnitude, 14.7, 1e-9);
    // And both indexes lead back to it.
    const long ngc65 = RecordInClass(rows, "NGC0065", 1);
    long found[kMaxGalaxyHits] = {};
    ASSERT_GE(lookupEso(openEsob().get(), 473, 10, 1, found), 1);
    EXPECT_EQ(found[0], ngc65);
    ASSERT_EQ(lookupMcg(openMcg().get(), -4, 2, 1, 0, found), 1);
    EXPECT_EQ(found[0], ngc65);
    NebulaData neb;
    ASSERT_EQ(readNebula(openNebulae().get(), RecordInClass(rows, "NGC1976", 0), &neb, kReadAll), 1);
    EXPECT_EQ(neb.designation, "NGC 1976");
    EXPECT_EQ(neb.messier, 42);
    EXPECT_EQ(neb.lbn, 974);
    GlobularData glob;
    ASSERT_EQ(readGlobular(openGlobulars().get(), RecordInClass(rows, "NGC6205", 1), &glob, kReadAll), 1);
    EXPECT_EQ(glob.ngc, 6205);
    EXPECT_NEAR(glob.magnitude, 5.8, 1e-9);
    PlanetaryData pn;
    ASSERT_EQ(readPlanetary(openPlanetaries().get(), RecordInClass(rows, "NGC6720", 0), &pn, kReadAll), 1);
    EXPECT_EQ(pn.designation, "NGC 6720");
    EXPECT_EQ(pn.diameterTenths, 762);  // 1.27 arc minutes
    EXPECT_EQ(pn.pngLongitude, 631);  // PN G063.1+13.9
    EXPECT_EQ(pn.pngLatitude, 139);
    EXPECT_EQ(lookupPng(openPng().get(), 631, 139), RecordInClass(rows, "NGC6720", 0));
    EXPECT_EQ(lookupLbn(openLbn().get(), 974), RecordInClass(rows, "NGC1976", 0));
    // Nothing under an unused number.
    CrossHit none[2];
    EXPECT_EQ(lookupMessierCross(m.get(), 40, none), 0);  // a double star
}
