// The deep-sky class files and their indexes, read from records and index
// slots whose bytes are written by hand at the documented offsets.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "catalog/cluster_files.h"
#include "catalog/dark_nebula_files.h"
#include "catalog/galaxy_files.h"
#include "catalog/nebula_files.h"
#include "catalog/planetary_files.h"
#include "catalog/quasar_files.h"
#include "catalogue_bytes.h"

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kArcmin = kPi / 10800.0;

using DeepSkyFileTest = CatalogueFileTest;

std::vector<long> Hits(const long* out, int count) { return std::vector<long>(out, out + count); }

// Real fields within a tolerance, index by index.
void ExpectReals(const std::vector<double>& got, const std::vector<double>& want, double tolerance = 1e-8) {
    ASSERT_EQ(got.size(), want.size());
    for (size_t i = 0; i < got.size(); ++i) EXPECT_NEAR(got[i], want[i], tolerance) << "value " << i;
}

// ---- Galaxies ---------------------------------------------------------------

TEST_F(DeepSkyFileTest, GalaxyRecordDecodesFromHandWrittenBytes) {
    Bytes gal(53, 0);  // record 1 left empty
    Put(gal, 53, {0xFD, 0x09, 0x00, 0x00,     // PGC 2557
                  0x80, 0x10, 0x5C, 0x01,     // MCG +07-02-016, Arp 5
                  0xB2, 0x07, 0x2D,           // ESO 123-45B
                  0xE0, 0x20, 0x4D, 0xE6,     // NGC 224A, IC 1613G
                  0x95, 0x06, 0x1F,           // Markarian 421A, M 31
                  0xC6, 0x01, 0x00, 0x03,     // UGC 454, common name row 3
                  0x00, 0x00, 0x00, 0x10,     // RA 2^28: pi/4
                  0x00, 0x00, 0x00, 0xF8,     // Dec -2^27: -pi/8
                  0x67, 0x00, 0x69, 0xB9,     // Sb, stage c; six class codes
                  0x0D, 0x22, 0x32,           // interaction 5 + flag; 3.4; (50 + 170) / 10
                  0xD4, 0xFE, 0xFF, 0xFF,     // -300
                  0xE8, 0x03, 0xFF, 0xFF,     // 1000, unknown
                  0xC2, 0xFF, 0xD2, 0x04,     // 1.94 - 1.02, unknown, 12.34
                  0x1C, 0x2B, 0x42, 0x0F});   // 178 x 62, 63 x 62
    WriteFileBytes("gal.bin", gal);
    FilePtr f = openGalaxies();
    ASSERT_TRUE(f);
    GalaxyData g;
    ASSERT_EQ(readGalaxy(f.get(), 2, &g, kReadAll), 1);
    EXPECT_EQ((std::vector<long>{g.record, g.pgc, g.mcgZone, g.mcgField, g.mcgNumber, g.mcgPart, g.arp,
                                 g.esoField, g.esoNumber, g.esoSuffix, g.ngc, g.ngcSuffix, g.ic, g.icSuffix,
                                 g.markarian, g.markarianSuffix, g.messier, g.ugc, g.commonNameRow}),
              (std::vector<long>{2, 2557, 7, 2, 16, 0, 5, 123, 45, 2, 224, 1, 1613, 7, 421, 1, 31, 454, 3}));
    EXPECT_EQ((std::vector<long>{g.classCode[0], g.classCode[1], g.classCode[2], g.classCode[3], g.classCode[4],
                                 g.classCode[5], g.interaction, g.flagA, g.flagB, g.radialVelocity, g.value41,
                                 g.value43}),
              (std::vector<long>{9, 2, 5, 6, 1, 1, 5, 1, 0, -300, 1000, 65535}));
    EXPECT_EQ(g.hubble, "Sb c");
    ExpectReals({g.ra, g.dec, g.magnitude, g.magnitude2, g.colour45, g.colour46, g.value47, g.sizeMajor / kArcmin,
                 g.sizeMinor / kArcmin},
                {kPi / 4, -kPi / 8, 3.4, 22.0, 0.92, 99.9, 12.34, 178, 63});
    EXPECT_EQ(g.sizeDefault, g.sizeMajor);

    GalaxyData onlyPlace;
    ASSERT_EQ(readGalaxy(f.get(), 2, &onlyPlace, kReadPosition), 1);
    EXPECT_EQ(onlyPlace.pgc, 0);
    EXPECT_EQ(onlyPlace.magnitude, 99.9);
    EXPECT_EQ(readGalaxy(f.get(), 0, &g, kReadAll), 0);
    EXPECT_EQ(readGalaxy(f.get(), 3, &g, kReadAll), 0);
}

TEST(GalaxyText, SurfaceBrightnessStoredOrComputed) {
    const struct {
        uint8_t code;
        double major, minor, magnitude, expected;
    } rows[] = {
        {0, 10, 5, 9.0, 17.0},                   // stored: (0 + 170) / 10
        {255, 1, 1, 10.0, 18.628480955333647},   // 10 + 2.5 log10(900 pi)
        {255, 1, 0, 10.0, 18.628480955333647},   // the missing diameter takes the other
        {255, 0, 1, 10.0, 18.628480955333647},
        {255, 2, 1, 12.3, 21.6810559444936},
        {255, 0, 0, 12.3, 99.9},                 // no size
        {255, 2, 1, 99.9, 99.9},                 // no magnitude
    };
    for (const auto& row : rows)
        EXPECT_NEAR(galaxySurfaceBrightness(row.code, row.major, row.minor, row.magnitude), row.expected, 1e-9)
            << int(row.code) << " " << row.major << " " << row.minor;
}

TEST_F(DeepSkyFileTest, GalaxyWithoutSizeReadsNoSurfaceBrightness) {
    GalaxyRecord record;
    record.magnitude = 123;
    record.surfaceBrightness = 255;
    record.major = 0;
    record.minor = 0;
    const auto image = RecordImage<GalaxyLayout>(record);
    WriteFileBytes("gal.bin", Bytes(image.begin(), image.end()));
    FilePtr f = openGalaxies();
    GalaxyData g;
    ASSERT_EQ(readGalaxy(f.get(), 1, &g, kReadAll), 1);
    EXPECT_NEAR(g.magnitude, 12.3, 1e-9);
    EXPECT_EQ(g.magnitude2, 99.9);
    EXPECT_EQ(g.sizeMajor, 0);
    EXPECT_EQ(static_cast<float>(g.sizeDefault), static_cast<float>(kArcmin));  // 1 arc minute
}

TEST(GalaxyText, HubbleTypeAndStage) {
    const struct {
        int type, stage;
        const char* text;
    } rows[] = {{1, 0, "E"}, {15, 0, "?"}, {7, 3, "Sb c"}, {3, 5, "S0 a-b"}, {9, 7, "Sc cd"},
                {9, 8, "Sc"}, {0, 0, ""}, {16, 0, ""}};
    for (const auto& row : rows) EXPECT_EQ(hubbleText(row.type, row.stage), row.text) << row.type << " " << row.stage;
}

TEST_F(DeepSkyFileTest, PgcAndArpSlots) {
    Bytes pgc, arp;
    Put(pgc, 7668, {0x02, 0x00, 0x00});  // PGC 2557: galaxy 2
    Put(arp, 0, {0xFF, 0xFF, 0xFF});     // Arp 1: empty
    Put(arp, 3, {0x01, 0x01, 0x01});     // Arp 2: 65793
    WriteFileBytes("pgc.bin", pgc);
    WriteFileBytes("arp.bin", arp);
    FilePtr p = openPgc(), a = openArp();
    EXPECT_EQ(lookupPgc(p.get(), 2557), 2);
    EXPECT_EQ(lookupPgc(p.get(), 2556), 0);
    EXPECT_EQ(lookupPgc(p.get(), 0), 0);
    EXPECT_EQ(lookupArp(a.get(), 1), 0);
    EXPECT_EQ(lookupArp(a.get(), 2), 65793);
}

TEST_F(DeepSkyFileTest, MarkarianSlotsAndTheGalaxiesThatJoinThem) {
    const struct {
        int number;
        std::vector<long> joined;
    } rows[] = {
        {116, {27183}}, {171, {35326}}, {628, {24862}}, {983, {82333}}, {988, {5089}},  {1000, {83836}},
        {1034, {9074}}, {1213, {23082}}, {1325, {40697}}, {1374, {50655}}, {934, {97, 101, 108}}, {5, {}},
    };
    Bytes mkn;
    for (const auto& row : rows) PutLe(mkn, (row.number - 1) * 6, 4242, 3);
    Put(mkn, 5 * 6 + 3, {0x07, 0x00, 0x00});  // Mkn 6A
    Put(mkn, 6 * 6, {0xFF, 0xFF, 0xFF});      // Mkn 7: empty
    WriteFileBytes("mkn.bin", mkn);
    FilePtr f = openMarkarian();
    long out[kMaxGalaxyHits];
    for (const auto& row : rows) {
        std::vector<long> expected{4242};
        expected.insert(expected.end(), row.joined.begin(), row.joined.end());
        EXPECT_EQ(Hits(out, lookupMarkarian(f.get(), row.number, 0, out)), expected) << row.number;
    }
    EXPECT_EQ(Hits(out, lookupMarkarian(f.get(), 6, 1, out)), (std::vector<long>{7}));
    EXPECT_EQ(lookupMarkarian(f.get(), 6, 0, out), 0);
    EXPECT_EQ(lookupMarkarian(f.get(), 7, 0, out), 0);
    EXPECT_EQ(lookupMarkarian(f.get(), 6, 2, out), 0);
}

TEST_F(DeepSkyFileTest, UgcSlotsMatchTheirSuffix) {
    Bytes ugc(27 * 10638, 0xFF);
    const size_t row = 27 * 10637;
    Put(ugc, row, {0x78, 0xE6, 0x00, 0x79, 0xE6, 0x10, 0x7A, 0xE6, 0x00});  // 59000, 59001 A, 59002
    Put(ugc, 0, {0x05, 0x00, 0x20});  // UGC 1: 5 with suffix B
    WriteFileBytes("ugc.bin", ugc);
    FilePtr f = openUgc();
    long out[kMaxGalaxyHits];
    EXPECT_EQ(Hits(out, lookupUgc(f.get(), 10638, 0, out)),
              (std::vector<long>{59000, 59002, 59212, 59226, 59227}));
    EXPECT_EQ(Hits(out, lookupUgc(f.get(), 10638, 1, out)), (std::vector<long>{59001}));
    EXPECT_EQ(Hits(out, lookupUgc(f.get(), 1, 2, out)), (std::vector<long>{5}));
    EXPECT_EQ(lookupUgc(f.get(), 1, 0, out), 0);
}

TEST_F(DeepSkyFileTest, McgRunsAndTheFixedParts) {
    Bytes mcg;
    // MCG +07-02-016: head ((7 + 7) x 61 + 2) x 5 = 4280, run at 5000 of 20
    // numbers; slot (16 x 3 + part) x 3 holds record - 1.
    Put(mcg, 4280, {0x88, 0x13, 0x00, 0x00, 20});
    Put(mcg, 5144, {0xFC, 0x09, 0x00, 0xFF, 0xFF, 0xFF, 0x00, 0x00, 0x00});
    PutLe(mcg, 5000 + 21 * 9, 0, 3);
    WriteFileBytes("mcg.bin", mcg);
    FilePtr f = openMcg();
    long out[kMaxGalaxyHits];
    const struct {
        FILE* file;
        int zone, field, number, part;
        std::vector<long> expected;
    } rows[] = {
        {f.get(), 7, 2, 16, 0, {2557}},
        {f.get(), 7, 2, 16, 1, {}},    // empty slot
        {f.get(), 7, 2, 16, 2, {1}},   // a stored 0 is record 1
        {f.get(), 7, 2, 21, 0, {}},    // beyond the run's count
        {f.get(), 7, 2, 16, 3, {}},    // parts above 2 fail...
        {nullptr, 9, 16, 47, 3, {28115}},  // ...except these
        {nullptr, 12, 11, 28, 3, {35573}},
        {nullptr, 12, 11, 28, 4, {35574}},
        {nullptr, 12, 11, 28, 5, {35576}},
        {nullptr, -4, 14, 22, 3, {17746}},
        {nullptr, 3, 39, 6, 3, {54009}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Hits(out, lookupMcg(row.file, row.zone, row.field, row.number, row.part, out)), row.expected)
            << row.zone << " " << row.field << " " << row.number << " " << row.part;
}

// An `esob` image with slot values at (field, number, part): heads at
// (field - 1) x 6, each field's run of `count` numbers after the heads.
Bytes EsobImage(const std::vector<std::vector<long>>& slots, int count = 100) {
    Bytes esob(600 * 6, 0);
    std::vector<long> fields;
    for (const auto& s : slots)
        if (std::find(fields.begin(), fields.end(), s[0]) == fields.end()) fields.push_back(s[0]);
    size_t run = esob.size();
    for (const long field : fields) {
        PutLe(esob, (field - 1) * 6, run, 4);
        PutLe(esob, (field - 1) * 6 + 4, count, 2);
        esob.resize(run + count * 12, 0xFF);
        for (const auto& s : slots)
            if (s[0] == field) PutLe(esob, run + ((s[1] - 1) * 3 + s[2]) * 4, static_cast<uint32_t>(s[3]), 4);
        run = esob.size();
    }
    return esob;
}

TEST_F(DeepSkyFileTest, EsoSlotsAndTheirFixedRows) {
    // A second galaxy for slots that carry no high bits.
    const long second[][4] = {
        {113, 16, 1, 4031},  {152, 19, 0, 6148},  {544, 2, 0, 7408},   {115, 6, 0, 8989},
        {417, 17, 0, 11664}, {417, 18, 0, 11691}, {200, 44, 0, 13240}, {118, 27, 0, 15182},
        {202, 30, 0, 15371}, {214, 7, 0, 30811},  {509, 15, 0, 47164}, {383, 3, 0, 47290},
        {383, 33, 0, 47918}, {510, 9, 0, 49421},  {399, 9, 0, 63887},  {233, 35, 0, 64179},
        {105, 30, 0, 64306}, {144, 5, 0, 65370},  {235, 28, 0, 65851}, {74, 28, 0, 66525},
        {47, 28, 0, 66594},  {342, 53, 0, 66843}, {405, 24, 0, 68990}, {147, 3, 2, 69303},
        {408, 12, 0, 71934}, {537, 9, 0, 72356},  {77, 31, 0, 72371},  {292, 23, 0, 72377},
    };
    // Third and later galaxies after the slot's own (part -1: any part).
    const struct {
        long field, number, part;
        std::vector<long> joined;
    } joins[] = {
        {539, 13, 1, {1570}},  {116, 6, 0, {11507}}, {187, 25, 2, {65593, 65597, 65610}},
        {107, 31, 0, {66931}}, {147, 9, 0, {69742, 69747}}, {110, 4, 0, {70652}},
        {303, 3, 0, {14682}},  {303, 9, 0, {14835}}, {303, 3, 1, {}},
    };
    // Field 539: a slot with its second record in the high bits, a plain one,
    // an empty one (-1).
    std::vector<std::vector<long>> slots{{539, 2, 1, 1000 | (5 << 20)}, {539, 4, 0, 1000}};
    for (const auto& s : second) slots.push_back({s[0], s[1], s[2], 1});
    for (const auto& j : joins) slots.push_back({j.field, j.number, j.part, 2 | (3 << 20)});
    WriteFileBytes("esob.bin", EsobImage(slots));
    FilePtr f = openEsob();
    long out[kMaxGalaxyHits];
    EXPECT_EQ(Hits(out, lookupEso(f.get(), 539, 2, 1, out)), (std::vector<long>{1000, 1005}));
    EXPECT_EQ(Hits(out, lookupEso(f.get(), 539, 4, 0, out)), (std::vector<long>{1000}));
    EXPECT_EQ(lookupEso(f.get(), 539, 3, 0, out), 0);    // -1: none
    EXPECT_EQ(lookupEso(f.get(), 539, 101, 0, out), 0);  // beyond the run
    EXPECT_EQ(lookupEso(f.get(), 538, 1, 0, out), 0);    // empty head
    for (const auto& s : second)
        EXPECT_EQ(Hits(out, lookupEso(f.get(), s[0], s[1], s[2], out)), (std::vector<long>{1, s[3]})) << s[0];
    for (const auto& j : joins) {
        std::vector<long> expected{2, 5};
        expected.insert(expected.end(), j.joined.begin(), j.joined.end());
        EXPECT_EQ(Hits(out, lookupEso(f.get(), j.field, j.number, j.part, out)), expected) << j.field;
    }
    // Parts above 2 only by rule.
    const long fixed[][4] = {{284, 8, 3, 63986}, {186, 69, 9, 65069}, {286, 83, 3, 66440}};
    for (const auto& x : fixed)
        EXPECT_EQ(Hits(out, lookupEso(nullptr, x[0], x[1], x[2], out)), (std::vector<long>{x[3]})) << x[0];
    EXPECT_EQ(lookupEso(f.get(), 284, 8, 4, out), 0);
}

TEST_F(DeepSkyFileTest, GroupRecordAndTheHicksonNumbers) {
    Bytes gg;
    Put(gg, 0, {0x02, 0x00, 0x00, 0x00});  // head
    Put(gg, 26, {0x00, 0x00, 0x00, 0x20, 0x00, 0x00, 0x00, 0x04,  // pi/2, pi/16
                 0x00, 0x00, 0x05, 0xFF,                          // no AGC, Hickson 5, no name
                 0xFF, 0x7B, 0x82, 0x04,                          // magnitudes -, 12.3, 13.0; 4 members
                 0xD7, 0x00, 0x19, 0x00, 0x01, 0x02});            // 0.0215, 2.5', codes
    WriteFileBytes("gg.bin", gg);
    FilePtr f = openGroups();
    GroupData g;
    ASSERT_EQ(readGroup(f.get(), 2, &g, kReadAll), 1);
    EXPECT_EQ((std::vector<long>{g.agc, g.hickson, g.commonNameRow, g.members, g.code20, g.code21}),
              (std::vector<long>{0, 5, -1, 4, 1, 2}));
    ExpectReals({g.ra, g.dec, g.magnitudeA, g.magnitude, g.magnitudeB, g.redshift, g.sizeMajor / kArcmin, g.sizeMinor},
                {kPi / 2, kPi / 16, 99.9, 12.3, 13.0, 0.0215, 2.5, 0});
    ASSERT_EQ(readGroup(f.get(), 1, &g, kReadSize), 1);  // zero diameter: 1 degree
    EXPECT_EQ(static_cast<float>(g.sizeDefault), static_cast<float>(kPi / 180));
    EXPECT_EQ(groupPidOfHickson(5), 4081);
    EXPECT_EQ(groupPidOfHickson(100), 4176);
    EXPECT_EQ(groupPidOfHickson(101), 0);
    EXPECT_EQ(groupPidOfAgc(4076), 4076);
    EXPECT_EQ(groupPidOfAgc(4077), 0);
    EXPECT_EQ(groupPidOfAgc(0), 0);
}

// ---- Quasars ----------------------------------------------------------------

TEST_F(DeepSkyFileTest, QuasarRecordDecodesFromHandWrittenBytes) {
    Bytes qso;
    Put(qso, 0, {0x00, 0x00, 0x00, 0x40, 0x00, 0x00, 0x00, 0x00,  // pi, 0
                 0xCA, 0x04, 0xD0, 0x00, 0x41});                  // Q 1226+208A
    PutText(qso, 13, "3C 273", 17);
    Put(qso, 30, {0xFF, 0x15, 0x81, 0xE7, 0xFF, 0xFF, 0x7F, 0x9E, 0x00, 0x05});
    PutText(qso, 40 + 13, "AB", 17);  // quasar 2: too short a name
    PutLe(qso, 79, 0, 1);
    WriteFileBytes("qso.bin", qso);
    FilePtr f = openQuasars();
    QuasarData q;
    ASSERT_EQ(readQuasar(f.get(), 1, &q, kReadAll), 1);
    EXPECT_EQ((std::vector<long>{q.qRaPart, q.qDecPart, q.qSuffix, q.commonNameRow, q.flags, q.flags39}),
              (std::vector<long>{1226, 208, 'A', -1, 0x15, 5}));
    EXPECT_EQ(q.discoverer, "3C 273");
    EXPECT_EQ(q.flagText, "Radio, Variability, Objective Prism");
    ExpectReals({q.ra, q.magnitude, q.value33, q.value35, q.redshift}, {kPi, 12.9, -0.25, 99.9, 0.158});
    ASSERT_EQ(readQuasar(f.get(), 2, &q, kReadAll), 1);
    EXPECT_EQ(q.discoverer, "");
    EXPECT_EQ(readQuasar(f.get(), 0, &q, kReadAll), 0);
    EXPECT_EQ(quasarFlagText(0x1F), "Radio, X-ray, Variability, UV Excess, Objective Prism");
    EXPECT_EQ(quasarFlagText(0), "");
}

TEST(QuasarNames, DiscovererNormalForm) {
    const struct {
        const char* text;
        const char* normal;
    } rows[] = {
        {"IRAS F12345+6789", "IRAS 12345+6789"}, {"IRAS L1234", "IRAS 1234"},
        {"1WGA J1234.5-6789", "1WGA 1234.5-6789"}, {"MC 2 0123+45", "MC2 0123+45"},
        {"MC 1 0123+45", "MC1 0123+45"},          {"3C 273 jet", "3C 273"},
        {"3C 273", "3C 273"},                     {"PKS 0405-12", "PKS 0405-12"},
    };
    for (const auto& row : rows) EXPECT_EQ(normaliseDiscoverer(row.text), row.normal) << row.text;
}

TEST_F(DeepSkyFileTest, QsoDesignationsByTheFloatStepSearch) {
    std::vector<std::string> names;
    for (int i = 0; i < kQsoDesignationRows - 2; ++i) {
        char name[32];
        std::snprintf(name, sizeof name, "N%05d", i * 2);
        names.push_back(name);
    }
    names.push_back("IRAS 12345+6789");
    names.push_back("3C 273");
    std::sort(names.begin(), names.end());
    Bytes file;
    for (size_t i = 0; i < names.size(); ++i) {
        PutText(file, i * 20, names[i].c_str(), 18);
        PutLe(file, i * 20 + 18, i + 1, 2);
    }
    WriteFileBytes("qso_des.bin", file);
    FilePtr f = openQsoDesignations();
    const auto recordOf = [&](const char* name) {
        return static_cast<long>(std::find(names.begin(), names.end(), name) - names.begin()) + 1;
    };
    EXPECT_EQ(lookupQsoDesignation(f.get(), names.front().c_str()), 1);
    EXPECT_EQ(lookupQsoDesignation(f.get(), names.back().c_str()), kQsoDesignationRows);
    EXPECT_EQ(lookupQsoDesignation(f.get(), "N04000"), recordOf("N04000"));
    EXPECT_EQ(lookupQsoDesignation(f.get(), "IRAS F12345+6789"), recordOf("IRAS 12345+6789"));
    EXPECT_EQ(lookupQsoDesignation(f.get(), "3C 273 jet"), recordOf("3C 273"));
    EXPECT_EQ(lookupQsoDesignation(f.get(), "N04001"), 0);  // between two rows
    EXPECT_EQ(lookupQsoDesignation(f.get(), "0"), 0);       // before the first
    EXPECT_EQ(lookupQsoDesignation(f.get(), "Z"), 0);       // after the last
}

TEST_F(DeepSkyFileTest, QCellsMatchDecPartAndSuffix) {
    Bytes q;
    // Q 1226: cell 12 x 60 + 26 = 746, head at 3730: run at 4000, 3 entries.
    Put(q, 3730, {0xA0, 0x0F, 0x00, 0x00, 0x03});
    Put(q, 4000, {0xD0, 0x00, 0x42, 0x0B, 0x00,    // +208 B: 11
                  0xD0, 0x00, 0x41, 0x0C, 0x00,    // +208 A: 12
                  0x2E, 0xFF, 0x20, 0x0D, 0x00});  // -210 blank: 13
    WriteFileBytes("q.bin", q);
    FilePtr f = openQ();
    const struct {
        int ra, dec;
        char suffix;
        long record;
    } rows[] = {
        {1226, 208, 'A', 12}, {1226, 208, ' ', 12}, {1226, 208, '\0', 12}, {1226, 208, 'B', 11},
        {1226, -210, ' ', 13}, {1226, -210, 'A', 0}, {1226, 209, 'A', 0},   {1260, 208, 'A', 0},
        {2400, 208, 'A', 0},
    };
    for (const auto& row : rows)
        EXPECT_EQ(lookupQ(f.get(), row.ra, row.dec, row.suffix), row.record) << row.ra << row.dec << row.suffix;
    EXPECT_EQ(qCell(2359), 23 * 60 + 59);
    EXPECT_EQ(qWantedSuffix('4', true), 'a');
    EXPECT_EQ(qWantedSuffix('4', false), '4');
    EXPECT_EQ(qWantedSuffix('B', true), 'B');
}

// ---- Planetary nebulae ------------------------------------------------------

TEST_F(DeepSkyFileTest, PlanetaryRecordDecodesFromHandWrittenBytes) {
    Bytes pln(70, 0);
    Put(pln, 70, {0x69, 0x01, 0xC5, 0xFD,                         // PN G 036.1-57.1
                  0x00, 0x00, 0x00, 0x50, 0x00, 0x00, 0x00, 0xF0,  // 5 pi/4, -pi/4
                  0x03});
    PutText(pln, 83, "NGC 7293", 17);
    Put(pln, 100, {0x24, 0xEC, 0x08, 0x00,    // PK 036-57.1
                   0x7D, 0x1C, 0x00, 0x00,    // NGC 7293, no IC
                   0x00, 0x05,                // no M; common name row 4
                   0x01, 0x02, 0x02, 0x11,    // M 1-2, pair 2-17
                   0xE8, 0xFB, 0xFF, 0x00,    // 1000, 2047, 3
                   0x07, 0x08, 0x09,
                   0x2C, 0x01, 0x90, 0x01, 0xF4, 0x01, 0xF4, 0xFF,  // 300, 400, 500, -12
                   0x49, 0x87, 0xFF,          // 7.3, 13.5, none
                   0x80, 0x25, 0xFF, 0xFF,    // 960 arc seconds, none
                   0x23, 0x41, 0x8D, 0x02});  // flags with bit 14; class 5 code 17, class 2
    WriteFileBytes("pln.bin", pln);
    FilePtr f = openPlanetaries();
    PlanetaryData p;
    ASSERT_EQ(readPlanetary(f.get(), 1, &p, kReadAll), 1);
    EXPECT_EQ(p.designation, "NGC 7293");
    EXPECT_EQ((std::vector<long>{p.pngLongitude, p.pngLatitude, p.code12, p.pkLongitude, p.pkSign, p.pkLatitude,
                                 p.ngc, p.ic, p.messier, p.commonNameRow, p.minkowski[0], p.minkowski[1],
                                 p.haroHenize[0], p.haroHenize[1], p.fields44[0], p.fields44[1], p.fields44[2],
                                 p.pair48[0], p.pair48[1], p.code50, p.numbers51[0], p.numbers51[1], p.number55,
                                 p.value57, p.value61, p.diameterTenths, p.value64}),
              (std::vector<long>{361, -571, 3, 36, '-', 571, 7293, 0, 0, 4, 1, 2, 2, 17, 1000, 2047, 3,
                                 7, 8, 9, 300, 400, 500, -12, 255, 9600, 65535}));
    EXPECT_EQ((std::vector<long>{p.flags66, p.flag14, p.flag15, p.class68[0], p.code68[0], p.class68[1],
                                 p.code68[1]}),
              (std::vector<long>{0x123, 1, 0, 5, 17, 2, 0}));
    // The surface brightness: 7.3 + 2.5 log10(900 pi 16 16).
    ExpectReals({p.ra, p.dec, p.magnitude, p.centralStarMagnitude, p.magnitude2, p.sizeMajor / kArcmin},
                {5 * kPi / 4, -kPi / 4, 7.3, 13.5, 21.949080868613272, 16});
    EXPECT_EQ(p.sizeDefault, p.sizeMajor);

    PlanetaryData bare;  // the flag of bit 14 comes whatever the mask
    ASSERT_EQ(readPlanetary(f.get(), 1, &bare, 0), 1);
    EXPECT_TRUE(bare.flag14);
    EXPECT_EQ(bare.ngc, 0);
}

TEST_F(DeepSkyFileTest, PlanetaryWithoutDiameter) {
    PlanetaryRecord record;
    record.magnitude = 100;
    record.diameter = 65535;
    const auto image = RecordImage<PlanetaryLayout>(record);
    WriteFileBytes("pln.bin", Bytes(image.begin(), image.end()));
    FilePtr f = openPlanetaries();
    PlanetaryData p;
    ASSERT_EQ(readPlanetary(f.get(), 0, &p, kReadAll), 1);
    EXPECT_EQ(p.diameterTenths, -1);
    EXPECT_EQ(p.sizeMajor, 0);
    EXPECT_EQ(p.magnitude2, 99.9);
}

TEST_F(DeepSkyFileTest, PlanetaryNumberIndexes) {
    const struct {
        const char* file;
        long (*lookup)(FILE*, int, int);
        int a, b;
        long at;  // worked out by hand; -1: out of range
    } rows[] = {
        {"eso.bin", lookupPlanetaryEso, 11, 1, 0},      {"eso.bin", lookupPlanetaryEso, 12, 5, 172},
        {"eso.bin", lookupPlanetaryEso, 10, 1, -1},     {"eso.bin", lookupPlanetaryEso, 11, 83, -1},
        {"Minkowski.bin", lookupMinkowski, 1, 2, 2},    {"Minkowski.bin", lookupMinkowski, 2, 1, 186},
        {"Minkowski.bin", lookupMinkowski, 1, 94, -1},  {"haro.bin", lookupHaro, 2, 1, 152},
        {"haro.bin", lookupHaro, 1, 77, -1},            {"kohoutek.bin", lookupKohoutek, 3, 5, 388},
        {"kohoutek.bin", lookupKohoutek, 1, 96, -1},
    };
    for (const auto& row : rows) {
        // In range: only the slot holds a record (0). Out of range: every
        // slot does, so only the range test can refuse.
        Bytes b(1200, row.at >= 0 ? 0xFF : 0x00);
        if (row.at >= 0) Put(b, row.at, {0x00, 0x00});
        WriteFileBytes(row.file, b);
        FilePtr f = OpenFile(row.file, "rb");
        EXPECT_EQ(row.lookup(f.get(), row.a, row.b), row.at >= 0 ? 0 : -1) << row.file << " " << row.a << "-" << row.b;
    }
    Bytes abell(200, 0xFF);
    Put(abell, 76, {0x2A, 0x00});  // Abell 39: 42
    WriteFileBytes("abell_pn.bin", abell);
    FilePtr a = openAbellPn();
    EXPECT_EQ(lookupAbellPn(a.get(), 39), 42);
    EXPECT_EQ(lookupAbellPn(a.get(), 38), -1);
    EXPECT_EQ(lookupAbellPn(a.get(), 0), -1);
}

TEST_F(DeepSkyFileTest, HenizeSlotsHoldRecordPlusOne) {
    Bytes he(1200, 0);
    Put(he, 0, {0x2B, 0x00});     // He 1-1: 42
    Put(he, 16, {0x01, 0x00});    // He 2-1: 0
    Put(he, 952, {0x64, 0x00});   // He 3-519: 99
    Put(he, 1114, {0x0A, 0x00});  // He 3-600: 9
    WriteFileBytes("Henize.bin", he);
    FilePtr f = openHenize();
    const struct {
        int a, b;
        long record;
    } rows[] = {{1, 1, 42}, {2, 1, 0}, {3, 519, 99}, {3, 600, 9}, {1, 2, -1},
                {1, 9, -1}, {2, 469, -1}, {3, 518, -1}, {4, 1, -1}, {0, 1, -1}};
    for (const auto& row : rows) EXPECT_EQ(lookupHenize(f.get(), row.a, row.b), row.record) << row.a << "-" << row.b;
}

TEST_F(DeepSkyFileTest, PkAndPngRuns) {
    Bytes pk;
    Put(pk, 216, {0xB8, 0x0B, 0x00, 0x00, 0xCB, 0x05});  // longitude 36: run at 3000, 1483 entries
    PutLe(pk, 3000 + 1482 * 2, 0xFFFF, 2);
    Put(pk, 3340, {0x01, 0x00});                          // latitude -57.1: (-571 + 741) x 2
    WriteFileBytes("pk.bin", pk);
    FilePtr k = openPk();
    EXPECT_EQ(lookupPk(k.get(), 36, -571), 1);
    EXPECT_EQ(lookupPk(k.get(), 36, 741), -1);  // the last entry: 65535
    EXPECT_EQ(lookupPk(k.get(), 36, 742), -1);  // beyond the count
    EXPECT_EQ(lookupPk(k.get(), 360, 0), -1);

    Bytes png;
    Put(png, 216, {0xB8, 0x0B, 0x00, 0x00, 0x02, 0x00});
    Put(png, 3000, {0x01, 0xC5, 0xFD, 0x01, 0x00, 0x02, 0xC5, 0xFD, 0x07, 0x00});
    WriteFileBytes("PNG.bin", png);
    FilePtr g = openPng();
    EXPECT_EQ(lookupPng(g.get(), 361, -571), 1);
    EXPECT_EQ(lookupPng(g.get(), 362, -571), 7);
    EXPECT_EQ(lookupPng(g.get(), 363, -571), -1);
    EXPECT_EQ(lookupPng(g.get(), 361, -570), -1);
}

TEST_F(DeepSkyFileTest, PngBrowserWalksTheRunsInOrder) {
    Bytes png;
    // Index rows of 6 bytes: offset, count. Run 0 has two entries, run 36
    // one empty slot and one entry, run 359 one; run 360 lies beyond the
    // browse.
    Put(png, 0, {0xA0, 0x08, 0x00, 0x00, 0x02, 0x00});    // 2208
    Put(png, 216, {0xAA, 0x08, 0x00, 0x00, 0x02, 0x00});  // 2218
    Put(png, 2154, {0xB4, 0x08, 0x00, 0x00, 0x01, 0x00});  // 2228
    Put(png, 2160, {0xB9, 0x08, 0x00, 0x00, 0x01, 0x00});  // 2233
    Put(png, 2208, {0x03, 0x32, 0x00, 0x05, 0x00, 0x09, 0xF6, 0xFF, 0x06, 0x00});
    Put(png, 2218, {0x00, 0x00, 0x00, 0xFF, 0xFF, 0x01, 0xC5, 0xFD, 0x01, 0x00});
    Put(png, 2228, {0x09, 0x84, 0x03, 0x02, 0x01});
    Put(png, 2233, {0x00, 0x00, 0x00, 0x03, 0x01});
    WriteFileBytes("PNG.bin", png);
    PngBrowser browser;
    ASSERT_EQ(beginPngBrowse(&browser), 1);
    std::vector<long> seen;  // longitude and latitude in tenths, record
    int l = 0, b = 0;
    long record = 0;
    while (nextPngBrowse(&browser, &l, &b, &record)) seen.insert(seen.end(), {l, b, record});
    EXPECT_EQ(seen, (std::vector<long>{3, 50, 5, 9, -10, 6, 361, -571, 1, 3599, 900, 258}));
}

// `rows` sorted names of `size` bytes: "A0000", "A0002", ...
Bytes SortedNames(long rows, size_t size) {
    Bytes b;
    for (long i = 0; i < rows; ++i) {
        char name[32];
        std::snprintf(name, sizeof name, "A%04ld", i * 2);
        PutText(b, i * size, name, size);
    }
    return b;
}

TEST_F(DeepSkyFileTest, SortedNameListsAnswerTheRow) {
    WriteFileBytes("pn_des.bin", SortedNames(kPnDesignationRows, kPnDesignationSize));
    WriteFileBytes("nebother.bin", SortedNames(kNebulaOtherRows, kNebulaOtherSize));
    FilePtr p = openPnDesignations(), n = openNebulaOther();
    EXPECT_EQ(lookupPnDesignation(p.get(), "A0000"), 0);
    EXPECT_EQ(lookupPnDesignation(p.get(), "A1428"), 714);
    EXPECT_EQ(lookupPnDesignation(p.get(), "A0001"), -1);
    EXPECT_EQ(lookupNebulaOther(n.get(), "A0408"), 204);
    EXPECT_EQ(lookupNebulaOther(n.get(), "A0200"), 100);
    EXPECT_EQ(lookupNebulaOther(n.get(), "B"), -1);
}

// ---- Diffuse nebulae --------------------------------------------------------

TEST_F(DeepSkyFileTest, NebulaRecordDecodesFromHandWrittenBytes) {
    Bytes neb;
    Put(neb, 0, {0x00, 0x00, 0x00, 0x0E, 0x00, 0x00, 0x00, 0xFC,  // 7 pi/32, -pi/16
                 0x83, 0x07, 0x2A,                                // type 3 + flag, row 7, M 42
                 0xB8, 0x07, 0xBE, 0x07, 0x00, 0x00, 0xB2, 0x01,  // NGC 1976, 1982; IC -, 434
                 0x0D, 0x00, 0x00, 0x19, 0x01, 0xCE, 0x03,        // vdB 13, Sh 2-281, LBN 974
                 0x28, 0x52, 0x03});                              // 4.0, 85.0'
    PutText(neb, 29, "Orion Nebula", 15);
    WriteFileBytes("neb.bin", neb);
    FilePtr f = openNebulae();
    NebulaData n;
    ASSERT_EQ(readNebula(f.get(), 0, &n, kReadAll), 1);
    EXPECT_EQ((std::vector<long>{n.type, n.flag, n.commonNameRow, n.messier, n.ngc[0], n.ngc[1], n.ic[0], n.ic[1],
                                 n.vdb, n.gum, n.rcw, n.sharpless, n.lbn}),
              (std::vector<long>{3, 1, 7, 42, 1976, 1982, 0, 434, 13, 0, 0, 281, 974}));
    ExpectReals({n.ra, n.dec, n.magnitude, n.sizeMajor / kArcmin}, {7 * kPi / 32, -kPi / 16, 4.0, 85});
    EXPECT_EQ(n.designation, "Orion Nebula");
    EXPECT_EQ(readNebula(f.get(), 1, &n, kReadAll), 0);
}

TEST_F(DeepSkyFileTest, NebulaNumberIndexesAndTheirBounds) {
    const struct {
        const char* file;
        long (*lookup)(FILE*, int);
        int last;
    } rows[] = {{"sh.bin", lookupSharpless, 312}, {"vdB.bin", lookupVdb, 152}, {"gum.bin", lookupGum, 80},
                {"RCW.bin", lookupRcw, 158},      {"LBN.bin", lookupLbn, 1627}};
    for (const auto& row : rows) {
        Bytes b(2 * (row.last + 1), 0);
        PutLe(b, (row.last - 1) * 2, 77, 2);
        PutLe(b, row.last * 2, 88, 2);  // a slot past the last number
        Put(b, 0, {0xFF, 0xFF});
        WriteFileBytes(row.file, b);
        FilePtr f = OpenFile(row.file, "rb");
        EXPECT_EQ(row.lookup(f.get(), row.last), 77) << row.file;
        EXPECT_EQ(row.lookup(f.get(), row.last + 1), -1) << row.file;
        EXPECT_EQ(row.lookup(f.get(), 1), -1) << row.file;  // empty
        EXPECT_EQ(row.lookup(f.get(), 2), 0) << row.file;   // record 0
        EXPECT_EQ(row.lookup(f.get(), 0), -1) << row.file;
    }
}

// ---- Dark nebulae -----------------------------------------------------------

TEST_F(DeepSkyFileTest, DarkNebulaFileHoldsBothForms) {
    Bytes dn(2889 * 25, 0);
    Put(dn, 125, {0x00, 0x00, 0x00, 0x30, 0x00, 0x00, 0x00, 0x02,  // 3 pi/4, pi/32
                  0x06, 0x96, 0x00, 0xFF,                          // opacity 6, 1.50 degrees
                  0x5E, 0x06, 0x21, 0x00,                          // LDN 1630, B 33
                  0x29, 0x28, 0x58, 0xFF,                          // DC 208.9-16.8A
                  0x41, 0x01, 0x02, 0x03, 0x04});                  // B 33A, codes
    Put(dn, 72200, {0x00, 0x00, 0x00, 0x60, 0x00, 0x00, 0x00, 0xF8,  // 3 pi/2, -pi/8
                    0x0C, 0x23, 0x14});                              // type 12, 3.5' x 2.0'
    PutText(dn, 72211, "CB 130", 14);
    WriteFileBytes("dn.bin", dn);

    FilePtr f = openDn(0);
    DarkNebulaData d;
    ASSERT_EQ(readDarkNebula(f.get(), 5, &d, kReadAll), 1);
    EXPECT_EQ((std::vector<long>{d.isGlobule, d.kind, d.commonNameRow, d.ldn, d.barnard, d.barnardSuffix,
                                 d.dcLongitude, d.dcSuffix, d.dcLatitude, d.codes[0], d.codes[3]}),
              (std::vector<long>{0, 6, -1, 1630, 33, 'A', 2089, 1, -168, 1, 4}));
    ExpectReals({d.ra, d.dec, d.sizeMajor, d.magnitude}, {3 * kPi / 4, kPi / 32, 1.5 * kPi / 180, 99.9});

    ASSERT_EQ(readDarkNebula(f.get(), 2888, &d, kReadAll), 1);
    EXPECT_TRUE(d.isGlobule);

    FilePtr globules = openDn(1);  // stands at record 2888
    DarkNebulaData g;
    ASSERT_EQ(readDarkNebula(globules.get(), -1, &g, kReadAll), 1);
    EXPECT_EQ((std::vector<long>{g.record, g.isGlobule, g.kind}), (std::vector<long>{2888, 1, 12}));
    ExpectReals({g.ra, g.dec, g.sizeMajor / kArcmin, g.sizeMinor / kArcmin}, {3 * kPi / 2, -kPi / 8, 3.5, 2.0});
    EXPECT_EQ(g.designation, "CB 130");
    EXPECT_EQ(readDarkNebula(globules.get(), -1, &g, kReadAll), 0);  // the end of the file
}

TEST_F(DeepSkyFileTest, LdnAndBarnardSlots) {
    Bytes ldn(1803 * 2, 0xFF), barnard(370 * 2, 0xFF);
    Put(ldn, 3602, {0x05, 0x00});  // LDN 1802: 5
    Put(ldn, 3604, {0x06, 0x00});  // past the last number
    Put(barnard, 64, {0x21, 0x00});  // B 33: 33
    Put(barnard, 164, {0x50, 0x00}); // B 83: 80
    Put(barnard, 736, {0x09, 0x00}); // B 369: 9
    WriteFileBytes("ldn.bin", ldn);
    WriteFileBytes("Barnard.bin", barnard);
    FilePtr l = openLdn(), b = openBarnard();
    EXPECT_EQ(lookupLdn(l.get(), 1802), 5);
    EXPECT_EQ(lookupLdn(l.get(), 1803), -1);
    EXPECT_EQ(lookupLdn(l.get(), 1), -1);
    const struct {
        int number, suffix;
        long record;
    } rows[] = {{83, 1, 229}, {84, 1, 300}, {83, 2, -1}, {83, 0, 80}, {33, 0, 33},
                {33, 1, 33},  {33, 2, -1},  {369, 0, 9}, {370, 0, -1}, {0, 0, -1}};
    for (const auto& row : rows)
        EXPECT_EQ(lookupBarnard(b.get(), row.number, row.suffix), row.record) << row.number << " " << row.suffix;
}

TEST_F(DeepSkyFileTest, DcByTheFloatStepSearch) {
    Bytes dc;
    for (long i = 0; i < kDcRows; ++i) {
        PutLe(dc, i * 6, i * 3 | ((i % 2) << 13), 2);  // longitude i x 0.3, suffix 0 or 1
        PutLe(dc, i * 6 + 2, static_cast<uint16_t>(static_cast<int16_t>(i % 7 - 3)), 2);
        PutLe(dc, i * 6 + 4, i + 1, 2);
    }
    Put(dc, 600, {0x2C, 0x21, 0x58, 0xFF, 0x65, 0x00});  // row 100: DC 030.0-16.8A, record 100
    WriteFileBytes("dc.bin", dc);
    FilePtr f = openDc();
    const struct {
        double longitude, latitude;
        int suffix;
        long record;
    } rows[] = {
        {0.0, -0.3, 0, 0},        // the first row
        {0.04, -0.26, 0, 0},      // typed values round to tenths
        {330.0, -0.2, 0, 1100},   // the last: row 1100 has i % 7 = 1
        {30.0, -16.8, 1, 100},
        {30.0, -16.8, 0, -1},     // suffix differs
        {0.1, -0.3, 0, -1},       // between rows
        {400.0, 0.0, 0, -1},      // after the last
    };
    for (const auto& row : rows)
        EXPECT_EQ(lookupDc(f.get(), row.longitude, row.latitude, row.suffix), row.record) << row.longitude;
}

TEST(GlobuleNames, ComparatorOrders) {
    const struct {
        const char* a;
        const char* b;
        int order;
    } rows[] = {
        {"W 5", "W 12", -1},          // by number, not by text
        {"W 12", "W 12", 0},
        {"Sa II-3", "Sa I-40", 1},    // roman rank first
        {"Sa II-3", "Sa II-12", -1},  // then the number
        {"Sa IV-1", "Sa V-1", -1},
        {"CB 12", "CB 3", -1},        // plain text
        {"CB 12", "CB 12", 0},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(compareGlobuleNames(row.a, row.b), row.order) << row.a << " : " << row.b;
        EXPECT_EQ(compareGlobuleNames(row.b, row.a), -row.order) << row.b << " : " << row.a;
    }
    testing::internal::CaptureStderr();
    EXPECT_LT(compareGlobuleNames("FeSt 1-457", "FeSt 2-1"), 0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "error: FeSt 1-457 = :1:\nerror: FeSt 2-1 = :2:\n");
}

TEST_F(DeepSkyFileTest, GlobuleNamesLeadToTheirRecord) {
    Bytes gbc;
    const char* names[] = {"Sa I-5", "Sa I-40", "Sa II-3", "Sa III-1"};
    for (int i = 0; i < 4; ++i) {
        PutText(gbc, i * 16, names[i], 14);
        PutLe(gbc, i * 16 + 14, 2900 + i, 2);
    }
    WriteFileBytes("gbc.bin", gbc);
    FilePtr f = openGbc();
    EXPECT_EQ(lookupGlobule(f.get(), "Sa I-5"), 2900);
    EXPECT_EQ(lookupGlobule(f.get(), "Sa I-40"), 2901);
    EXPECT_EQ(lookupGlobule(f.get(), "Sa III-1"), 2903);
    EXPECT_EQ(lookupGlobule(f.get(), "Sa IV-1"), -1);
}

// ---- Clusters ---------------------------------------------------------------

TEST_F(DeepSkyFileTest, OpenClusterRecordDecodesFromHandWrittenBytes) {
    Bytes oc(36, 0);
    Put(oc, 36, {0x00, 0x05, 0x18, 0x00, 0x00,                          // NGC, Collinder, Melotte
                 0x48, 0x0A, 0xBD, 0x00, 0x58, 0x00, 0x00, 0x00, 0x00, 0x00,  // 2632, 189, 88
                 0x09,                                                  // common name row 9
                 0x00, 0x00, 0x00, 0x40, 0x00, 0x00, 0x00, 0x3F,        // 2.0, 0.5 radians
                 0xFC, 0x0F, 0x1F, 0xFE, 0xFB, 0xFF,                    // OCL 409.2; 3.1; -2; -0.05; none
                 0xD2, 0x84, 0x4D, 0x00, 0xB6, 0x03});                  // 1234 + flag; 77; 95.0'
    WriteFileBytes("oc.bin", oc);
    FilePtr f = openOpenClusters();
    OpenClusterData c;
    ASSERT_EQ(readOpenCluster(f.get(), 1, &c, kReadAll), 1);
    EXPECT_EQ((std::vector<long>{c.family[0], c.family[1], c.family[2], c.family[3], c.number[0], c.number[1],
                                 c.number[2], c.commonNameRow, c.value27, c.number30, c.flag30, c.number32}),
              (std::vector<long>{0, 5, 24, 0, 2632, 189, 88, 9, -2, 1234, 1, 77}));
    ExpectReals({c.ra, c.dec, c.ocl, c.magnitude, c.value28, c.value29, c.sizeMajor / kArcmin},
                {2.0, 0.5, 409.2, 3.1, -0.05, 99.9, 95});
    EXPECT_EQ(c.sizeDefault, c.sizeMajor);
}

TEST_F(DeepSkyFileTest, OpenClusterIndexes) {
    Bytes ocl(8000, 0xFF), cross;
    Put(ocl, 7348, {0x01, 0x00});  // OCL 409.2: ((409 - 1) x 9 + 2) x 2
    Put(ocl, 0, {0x00, 0x00});     // OCL 1.0: record 0
    WriteFileBytes("ocl.bin", ocl);
    Put(cross, 30, {0xE8, 0x03, 0x00, 0x00, 0xD7, 0x01});  // Collinder (5): run at 1000, 471 numbers
    Put(cross, 1376, {0x01, 0x00});                        // Collinder 189: 1
    PutLe(cross, 1000 + 471 * 2, 7, 2);                    // a slot past the count
    WriteFileBytes("oc_cross.bin", cross);
    FilePtr o = openOcl(), x = openOcCross();
    EXPECT_EQ(lookupOcl(o.get(), 409.2), 1);
    EXPECT_EQ(lookupOcl(o.get(), 1.0), 0);
    EXPECT_EQ(lookupOcl(o.get(), 409.3), -1);
    EXPECT_EQ(lookupOcl(o.get(), 409.9), -1);  // a tenth of 9 has no slot
    EXPECT_EQ(lookupOcl(o.get(), 0.5), -1);
    EXPECT_EQ(lookupOcCross(x.get(), 5, 189), 1);
    EXPECT_EQ(lookupOcCross(x.get(), 5, 472), -1);
    EXPECT_EQ(lookupOcCross(x.get(), 5, 0), -1);
    EXPECT_EQ(lookupOcCross(x.get(), 1, 189), -1);
    EXPECT_EQ(lookupOcCross(x.get(), 56, 1), -1);
}

TEST_F(DeepSkyFileTest, GlobularRecordAndIndexes) {
    Bytes glob;
    Put(glob, 0, {0x13, 0x14, 0x00, 0x00, 0x00, 0x02, 0x00, 0x00, 0x00, 0x00,  // NGC 5139, name row 2
                  0x00, 0x00, 0x00, 0x48, 0x00, 0x00, 0x00, 0xF0,              // 9 pi/8, -pi/4
                  0x6B, 0x01, 0x35, 0x00, 0x04, 0x00, 0x25});                  // 36.3', 5.3, 4, 3.7
    PutText(glob, 25, "Omega Centauri", 18);
    PutLe(glob, 43 + 42, 0, 1);  // globular 2: magnitude 0, unknown
    WriteFileBytes("glob.bin", glob);
    FilePtr f = openGlobulars();
    GlobularData g;
    ASSERT_EQ(readGlobular(f.get(), 1, &g, kReadAll), 1);
    EXPECT_EQ((std::vector<long>{g.ngc, g.ic, g.messier, g.commonNameRow, g.palomar, g.terzan, g.value22}),
              (std::vector<long>{5139, 0, 0, 2, 0, 0, 4}));
    ExpectReals({g.ra, g.dec, g.sizeMajor / kArcmin, g.value20, g.magnitude}, {9 * kPi / 8, -kPi / 4, 36.3, 5.3, 3.7});
    EXPECT_EQ(g.designation, "Omega Centauri");
    ASSERT_EQ(readGlobular(f.get(), 2, &g, kReadMagnitude), 1);
    EXPECT_EQ(g.magnitude, 99.9);
    EXPECT_EQ(readGlobular(f.get(), 0, &g, kReadAll), 0);

    Bytes pal(15, 0);
    Put(pal, 4, {0x07});
    WriteFileBytes("palomar.bin", pal);
    WriteFileBytes("terzan.bin", pal);
    FilePtr p = openPalomar(), t = openTerzan();
    EXPECT_EQ(lookupPalomar(p.get(), 5), 7);
    EXPECT_EQ(lookupTerzan(t.get(), 5), 7);
    EXPECT_EQ(lookupPalomar(p.get(), 4), 0);
    EXPECT_EQ(lookupPalomar(p.get(), 16), 0);
    EXPECT_EQ(lookupTerzan(t.get(), 0), 0);

    Bytes des(400, 0);
    PutText(des, 0, "HP 1", 19);
    Put(des, 19, {0x03});
    PutText(des, 20, "Liller 1", 19);
    Put(des, 39, {0x04});
    WriteFileBytes("GDes.bin", des);
    FilePtr d = openGlobularDesignations();
    EXPECT_EQ(lookupGlobularDesignation(d.get(), "liller"), 4);
    EXPECT_EQ(lookupGlobularDesignation(d.get(), "HP 1"), 3);
    EXPECT_EQ(lookupGlobularDesignation(d.get(), "Pyxis"), 0);
    EXPECT_EQ(lookupGlobularDesignation(d.get(), ""), 0);
}

}  // namespace
