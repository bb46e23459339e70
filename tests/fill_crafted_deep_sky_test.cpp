// The deep-sky designations whose index files the generated reference set
// lacks: Arp, Markarian, MCG and ESO galaxies, the quasar lists, the
// planetary catalogues, Sharpless, vdB, Gum, RCW and the other nebula names,
// OCL and the cluster families, Palomar, Terzan and the globular names,
// AGC and Hickson groups, and the dark nebula lists. Small index files are
// written byte by byte in a scratch folder beside copies of the set's class
// files, pointing at objects whose records are known (M 31 is galaxy 4270,
// M 57 planetary 93, M 42 nebula 170, M 44 open cluster 416, M 13 globular
// 135 in the set), and each designation is looked up by the fill and, as
// version 1.x wrote it, by the resolver.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "astro/numeric.h"
#include "catalog/catalogue_files.h"
#include "catalog/catalogue_roots.h"
#include "catalog/dark_nebula_files.h"
#include "catalog/fill_by_designation.h"
#include "catalog/legacy_name.h"
#include "catalogue_bytes.h"
#include "support.h"

namespace {

const std::string kSet = FERRY2_REFDATA_DIR;
constexpr double kDeg = kRadiansPerDegree;

constexpr uint32_t kM31 = 4270, kM57 = 93, kM42 = 170, kM44 = 416, kM13 = 135;

struct Expected {
    int objectClass;
    int kind;
    const char* fillText;
    const char* legacy;  // as version 1.x wrote it, or null
    std::vector<uint32_t> pids;
};

class CraftedDeepSkyTest : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        setCatalogueRoots(".", ".", ".");
        const struct {
            int id;
            const char* from;
        } copies[] = {{kCatGal, "stars/gal.bin"}, {kCatM, "stars/m.bin"},     {kCatPln, "small/pln.bin"},
                      {kCatNeb, "small/neb.bin"}, {kCatOc, "small/oc.bin"},    {kCatGlob, "small/glob.bin"},
                      {kCatConrect, "small/conrect.bin"}};
        for (const auto& c : copies) std::filesystem::copy_file(kSet + c.from, catalogueFilePath(c.id));
    }
    int Fill(int objectClass, int kind, const char* text, long number = 0) {
        return fillByDesignation(objectClass, kind, 0, number, text, nullptr, nullptr, nullptr, r_);
    }
    std::vector<uint32_t> Pids(int count, int objectClass, int kind) {
        std::vector<uint32_t> pids;
        for (int i = 0; i < count; ++i) {
            EXPECT_EQ(r_[i].objectClass, objectClass);
            EXPECT_EQ(r_[i].designationKind, kind);
            EXPECT_EQ(r_[i].nameConstellation, 0u);
            pids.push_back(r_[i].pid);
        }
        return pids;
    }
    void Check(const Expected& e) {
        SCOPED_TRACE(std::string(e.fillText) + " / " + (e.legacy ? e.legacy : "-"));
        EXPECT_EQ(Pids(Fill(e.objectClass, e.kind, e.fillText), e.objectClass, e.kind), e.pids);
        if (!e.legacy) return;
        const int resolved = resolveLegacyName(e.legacy, nullptr, nullptr, nullptr, r_);
        EXPECT_EQ(Pids(resolved, e.objectClass, e.kind), e.pids);
    }
    // The place of the first record, in degrees.
    void ExpectPlace(double raDeg, double decDeg) {
        EXPECT_NEAR(r_[0].raJ2000, raDeg * kDeg, 1e-5);
        EXPECT_NEAR(r_[0].decJ2000, decDeg * kDeg, 1e-5);
    }
    ObjectRecord r_[kMaxDesignationRecords];
};

// arp: record at (n - 1) x 3; mkn at ((n - 1) x 2 + suffix) x 3; mcg a head
// of ((zone + 7) x 61 + field) x 5 (offset, count), then record - 1 at
// (number x 3 + part) x 3; esob a head of (field - 1) x 6 (offset, count),
// then a u32 at ((number - 1) x 3 + part) x 4: low 20 bits the first
// record, high 12 bits the second less the first.
TEST_F(CraftedDeepSkyTest, GalaxyNumbersMayNameSeveralGalaxiesOfWhichThreeAreKept) {
    // The fixed exceptions of MCG and ESO name galaxies far past the set's
    // last one: the copy is lengthened with empty records.
    std::filesystem::resize_file(catalogueFilePath(kCatGal), 65610 * 53);
    Bytes arp;
    Put(arp, 729, {0xAE, 0x10, 0x00});  // Arp 244 -> 4270
    WriteFileBytes(catalogueFilePath(kCatArp), arp);
    Bytes mkn;
    Put(mkn, 2520, {0x05, 0x00, 0x00});  // Mkn 421 -> 5
    Put(mkn, 2523, {0xFF, 0xFF, 0xFF});  // Mkn 421A: empty
    Put(mkn, 5598, {0xAE, 0x10, 0x00});  // Mkn 934 -> 4270, and by rule 97, 101, 108
    WriteFileBytes(catalogueFilePath(kCatMkn), mkn);
    Bytes mcg;
    Put(mcg, 1840, {0x40, 0x1F, 0x00, 0x00, 10});  // zone -1, field 2: run at 8000
    Put(mcg, 8027, {0xAD, 0x10, 0x00});            // number 3, part 0: record 4269 + 1
    Put(mcg, 8030, {0xFF, 0xFF, 0xFF});            // number 3, part 1: none
    WriteFileBytes(catalogueFilePath(kCatMcg), mcg);
    Bytes eso;
    Put(eso, 1116, {0x40, 0x1F, 0x00, 0x00, 100, 0});  // field 187: run at 8000
    Put(eso, 8288, {0x0A, 0x00, 0x20, 0x00});          // 187-25: records 10 and 12
    Put(eso, 2094, {0x28, 0x23, 0x00, 0x00, 50, 0});   // field 350: run at 9000
    Put(eso, 9468, {0xFF, 0xFF, 0xFF, 0xFF});          // 350-40: none
    Put(eso, 9480, {0xAE, 0x10, 0x00, 0x00});          // 350-41: 4270 alone
    WriteFileBytes(catalogueFilePath(kCatEsob), eso);

    const Expected cases[] = {
        {6, 5, "Arp 244", "Arp 244", {kM31}},
        {6, 5, "Arp 245", nullptr, {}},
        {6, 6, "421", "MKN 421", {5}},
        {6, 6, "Markarian 421", "Markarian 421", {5}},
        {6, 6, "421A", nullptr, {}},
        {6, 6, "934", "MKN 934", {kM31, 97, 101}},  // four galaxies, three kept
        {6, 8, "MCG -01-02-003", "MCG -01-02-003", {kM31}},
        {6, 8, "-1 2 3", nullptr, {kM31}},
        {6, 8, "MCG -01-02-003A", nullptr, {}},
        {6, 8, "MCG 9-16-47C", "MCG 9-16-47C", {28115}},  // a part above 2, fixed by rule
        {6, 8, "MCG 9-16-48C", nullptr, {}},
        {6, 10, "ESO 187 25", "ESO 187 25", {10, 12, 65593}},  // two by the file, three more by rule
        {6, 10, "ESO 350 40", nullptr, {}},
        {6, 10, "ESO 350 41", "ESO 350 41", {kM31}},
    };
    for (const Expected& e : cases) Check(e);
    ASSERT_EQ(Fill(6, 5, "Arp 244"), 1);
    ExpectPlace(10.684792, 41.269056);  // M 31, OpenNGC
    EXPECT_EQ(r_[0].classMask, 256u);
}

// qso: 40-byte records, PID n at (n - 1) x 40. qso_des: 4334 sorted rows of
// an 18-byte name and a u16 record. q: a 5-byte head per cell (RA hours x
// 60 + minutes), then 5-byte entries: i16 Dec part, suffix, u16 record.
TEST_F(CraftedDeepSkyTest, QuasarsByDiscovererAndByQNumber) {
    Bytes qso(3 * 40, 0);
    PokeU32(qso, 40, 0x20000000);  // quasar 2 at RA 90 degrees, a quarter turn
    PokeU32(qso, 80, 0x40000000);  // quasar 3 at RA 180 degrees
    WriteFileBytes(catalogueFilePath(kCatQso), qso);
    Bytes names;
    char name[19];
    for (int row = 0; row < 4334; ++row) {
        std::snprintf(name, sizeof name, "PKS %04d", row);
        PutText(names, row * 20, name, 18);
        Put(names, row * 20 + 18, {static_cast<uint8_t>(row == 1234 ? 3 : row == 0 ? 2 : 1), 0});
    }
    WriteFileBytes(catalogueFilePath(kCatQsoDes), names);
    Bytes q;
    Put(q, 597 * 5, {0x40, 0x1F, 0x00, 0x00, 2});  // cell 09h57m: 2 entries at 8000
    Put(q, 8000, {0x32, 0x02, 'B', 0x01, 0x00});    // 0957+562B -> 1
    Put(q, 8005, {0x31, 0x02, 'A', 0x02, 0x00});    // 0957+561A -> 2
    Put(q, 42 * 5, {0x50, 0x1F, 0x00, 0x00, 1});    // cell 00h42m: 1 entry at 8016
    Put(q, 8016, {0xA0, 0xF5, ' ', 0x03, 0x00});    // 0042-2656 -> 3
    WriteFileBytes(catalogueFilePath(kCatQ), q);

    const Expected cases[] = {
        {7, 2, "PKS 1234", "PKS 1234", {3}},
        {7, 2, "PKS 0000", nullptr, {2}},
        {7, 2, "PKS 9999", nullptr, {}},
        {7, 3, "Q0957+561", "Q0957+561", {2}},  // a blank takes the 'A'
        {7, 3, "Q 0957+561A", nullptr, {2}},
        {7, 3, "Q0957+562B", "q0957+562B", {1}},
        {7, 3, "Q0957+562", nullptr, {}},
        {7, 3, "Q0042-2656", "Q0042-2656", {3}},
        {7, 3, "Q0957", nullptr, {}},  // a lone number is no Q designation
    };
    for (const Expected& e : cases) Check(e);
    ASSERT_EQ(Fill(7, 2, "PKS 1234"), 1);
    EXPECT_NEAR(r_[0].raJ2000, 180.0 * kDeg, 1e-6);
}

// Planetary indexes: u16 records at (n - 1) x 2 (Abell, ARO), at
// ((a - 1) x 93 + b - 1) x 2 (Minkowski), ((a - 1) x 76 + b - 1) x 2 (Haro),
// ((a - 1) x 95 + b - 1) x 2 (Kohoutek), ((a - 11) x 82 + b - 1) x 2 (ESO);
// Henize an i16 record + 1 at (b - {1, 1, 519} + {0, 8, 476}) x 2; pk a head
// per whole longitude, then records by (latitude tenths + 741) x 2; pn_des
// 715 sorted 19-byte names whose row is the record.
TEST_F(CraftedDeepSkyTest, PlanetaryCatalogues) {
    const struct {
        int id;
        size_t at;
        std::initializer_list<uint8_t> bytes;
    } slots[] = {
        {kCatAbellPn, 76, {0x5D, 0x00}},      // A 39
        {kCatMinkowski, 2, {0x5D, 0x00}},     // M 1-2
        {kCatHenize, 24, {0x5E, 0x00}},       // He 2-5
        {kCatHenize, 954, {0x5E, 0x00}},      // He 3-520
        {kCatHaro, 16, {0x5D, 0x00}},         // H 1-9
        {kCatKohoutek, 388, {0x5D, 0x00}},    // K 3-5
        {kCatAro, 22, {0x5D, 0x00}},          // ARO 12
        {kCatEso, 55674, {0x5D, 0x00}},       // ESO 350-40
        {kCatPk, 384, {0x70, 0x08, 0, 0, 0xCB, 0x05}},  // longitude 64: run at 2160
        {kCatPk, 3744, {0x5D, 0x00}},         // 64+5.1
    };
    std::map<int, Bytes> files;
    for (const auto& s : slots) Put(files[s.id], s.at, s.bytes);
    Bytes& names = files[kCatPnDes];
    char name[20];
    for (int row = 0; row < 715; ++row) {
        std::snprintf(name, sizeof name, "Vy %03d", row);
        PutText(names, row * 19, name, 19);
    }
    for (const auto& [id, bytes] : files) WriteFileBytes(catalogueFilePath(id), bytes);

    const Expected cases[] = {
        {8, 5, "39", "A 39", {kM57}},
        {8, 5, "Abell 39", "Abell 39", {kM57}},
        {8, 6, "M 1-2", "M 1-2", {kM57}},
        {8, 6, "1-2", "Minkowski 1-2", {kM57}},
        {8, 7, "He 2-5", "He 2-5", {kM57}},
        {8, 7, "3-520", "Henize 3-520", {kM57}},
        {8, 8, "H 1-9", "H 1-9", {kM57}},
        {8, 9, "K 3-5", "Kohoutek 3-5", {kM57}},
        {8, 12, "ARO 12", "ARO 12", {kM57}},
        {8, 13, "ESO 350-40", "ESO 350-40", {kM57}},
        {8, 11, "PK 64+5.1", "PK 64+5.1", {kM57}},
        {8, 11, "064+05.1", "PK 064+05.1", {kM57}},
        {8, 14, "Vy 093", "Vy 093", {kM57}},
        {8, 5, "40", nullptr, {}},
        {8, 6, "M 1-3", nullptr, {}},
        {8, 11, "PK 64+5.2", nullptr, {}},
        {8, 14, "Vy 093x", nullptr, {}},
    };
    for (const Expected& e : cases) Check(e);
    ASSERT_EQ(Fill(8, 9, "K 3-5"), 1);
    ExpectPlace(283.395875, 33.028583);  // M 57, OpenNGC
    EXPECT_EQ(r_[0].classMask, 1024u);
}

// Nebula indexes: u16 records at (n - 1) x 2 (Sh 2, vdB, Gum, RCW); nebother
// 205 sorted 17-byte names whose row is the record.
TEST_F(CraftedDeepSkyTest, NebulaCatalogues) {
    Bytes sh, vdb, gum, rcw, other;
    Put(sh, 308, {0xAA, 0x00});  // Sh 2-155
    Put(vdb, 282, {0xAA, 0x00});  // vdB 142
    Put(gum, 22, {0xAA, 0x00});  // Gum 12
    Put(rcw, 170, {0xAA, 0x00});  // RCW 86
    char name[18];
    for (int row = 0; row < 205; ++row) {
        std::snprintf(name, sizeof name, "Ced %03d", row);
        PutText(other, row * 17, name, 17);
    }
    WriteFileBytes(catalogueFilePath(kCatSh), sh);
    WriteFileBytes(catalogueFilePath(kCatVdb), vdb);
    WriteFileBytes(catalogueFilePath(kCatGum), gum);
    WriteFileBytes(catalogueFilePath(kCatRcw), rcw);
    WriteFileBytes(catalogueFilePath(kCatNebother), other);

    const Expected cases[] = {
        {9, 5, "Sh 2-155", "Sh 2-155", {kM42}},
        {9, 5, "155", nullptr, {kM42}},
        {9, 5, "", nullptr, {}},
        {9, 6, "142", "vdB 142", {kM42}},
        {9, 7, "12", "Gum 12", {kM42}},
        {9, 8, "86", "RCW 86", {kM42}},
        {9, 10, "Ced 170", "Ced 170", {kM42}},
        {9, 6, "143", nullptr, {}},
        {9, 10, "Ced 999", nullptr, {}},
    };
    for (const Expected& e : cases) Check(e);
    ASSERT_EQ(Fill(9, 5, "", 155), 1);
    ExpectPlace(83.818667, -5.389667);  // M 42, OpenNGC
}

// ocl: u16 record at ((whole - 1) x 9 + tenth) x 2; oc_cross: a head per
// family code at code x 6 (offset, count), then u16 records at
// (number - 1) x 2. Collinder is family 5, Melotte 24.
TEST_F(CraftedDeepSkyTest, OpenClustersByOclAndByFamily) {
    Bytes ocl;
    Put(ocl, 2204, {0xA0, 0x01});  // OCL 123.4
    WriteFileBytes(catalogueFilePath(kCatOcl), ocl);
    Bytes cross;
    Put(cross, 30, {0x90, 0x01, 0x00, 0x00, 0xD7, 0x01});   // Collinder: 471 at 400
    Put(cross, 1196, {0xA0, 0x01});                         // Collinder 399
    Put(cross, 144, {0x00, 0x08, 0x00, 0x00, 0xF5, 0x00});  // Melotte: 245 at 2048
    Put(cross, 2268, {0xA0, 0x01});                         // Melotte 111
    Put(cross, 2270, {0xFF, 0xFF});                         // Melotte 112: none
    WriteFileBytes(catalogueFilePath(kCatOcCross), cross);

    ASSERT_EQ(Fill(10, 2, "M 44"), 1);
    const double ra = r_[0].raJ2000, dec = r_[0].decJ2000;
    const Expected cases[] = {
        {10, 5, "OCL 123.4", "OCL 123.4", {kM44}},
        {10, 5, "123.4", nullptr, {kM44}},
        {10, 5, "OCL 123.5", nullptr, {}},
        {10, 9, "399", "Collinder 399", {kM44}},
        {10, 9, "472", nullptr, {}},  // past the family's count
        {10, 28, "111", "Melotte 111", {kM44}},
        {10, 28, "112", "Melotte 112", {}},
    };
    for (const Expected& e : cases) Check(e);
    ASSERT_EQ(Fill(10, 9, "", 399), 1);
    EXPECT_EQ(r_[0].raJ2000, ra);
    EXPECT_EQ(r_[0].decJ2000, dec);
    EXPECT_EQ(r_[0].classMask, 4096u);
}

// palomar and terzan: one record byte at n - 1; GDes: 20 rows of a 19-byte
// name and a record byte, the typed text a prefix of the name.
TEST_F(CraftedDeepSkyTest, GlobularsByPalomarTerzanAndName) {
    Bytes palomar, terzan, names;
    Put(palomar, 4, {0x87});  // Palomar 5
    Put(terzan, 4, {0x01});   // Terzan 5
    PutText(names, 0, "Liller 1", 19);
    Put(names, 19, {0x02});
    PutText(names, 20, "Djorg 2", 19);
    Put(names, 39, {0x87});
    Put(names, 20 * 20 - 1, {0});
    WriteFileBytes(catalogueFilePath(kCatPalomar), palomar);
    WriteFileBytes(catalogueFilePath(kCatTerzan), terzan);
    WriteFileBytes(catalogueFilePath(kCatGDes), names);

    const Expected cases[] = {
        {11, 5, "5", "Palomar 5", {kM13}},
        {11, 5, "Pal 5", "Pal 5", {kM13}},
        {11, 5, "6", nullptr, {}},
        {11, 6, "5", "Terzan 5", {1}},
        {11, 7, "Djorg 2", "Djorg 2", {kM13}},
        {11, 7, "Liller", nullptr, {2}},
        {11, 7, "Whiting 1", nullptr, {}},
    };
    for (const Expected& e : cases) Check(e);
}

// Groups: AGC n is record n, Hickson n record n + 4076 of gg (a 4-byte head,
// then 22-byte records from 1).
TEST_F(CraftedDeepSkyTest, GroupsByAgcAndHickson) {
    Bytes gg(4 + 4176 * 22, 0);
    PokeU32(gg, 4 + 2150 * 22, 0x20000000);  // record 2151 at RA 90 degrees
    PokeU32(gg, 4 + 4167 * 22, 0x40000000);  // record 4168 at RA 180 degrees
    WriteFileBytes(catalogueFilePath(kCatGg), gg);

    const Expected cases[] = {
        {16, 2, "2151", "AGC 2151", {2151}},
        {16, 3, "92", "HCG 92", {4168}},
        {16, 3, "Hickson 92", "Hickson 92", {4168}},
        {16, 3, "5", nullptr, {4081}},
        {16, 2, "4077", nullptr, {}},
        {16, 3, "101", nullptr, {}},
        {16, 3, "0", nullptr, {}},
    };
    for (const Expected& e : cases) Check(e);
    ASSERT_EQ(Fill(16, 3, "", 92), 1);
    EXPECT_NEAR(r_[0].raJ2000, 180.0 * kDeg, 1e-6);
    ASSERT_EQ(Fill(16, 2, "AGC 2151"), 1);
    EXPECT_NEAR(r_[0].raJ2000, 90.0 * kDeg, 1e-6);
}

// Dark nebulae: Barnard and LDN u16 records at (n - 1) x 2; dc 1101 rows
// sorted by longitude, latitude and suffix (u16 longitude tenths and
// suffix, i16 latitude tenths, u16 record + 1); gbc 16-byte rows of a name
// and a u16 record, sorted by the globule order.
TEST_F(CraftedDeepSkyTest, DarkNebulaCatalogues) {
    Bytes dn(2900 * 25, 0);
    for (int record = 0; record < 2900; ++record) {
        PokeU32(dn, record * 25, static_cast<uint32_t>(record) * 65536u);  // RA: record x 65536
        dn[record * 25 + 8] = record >= 2888 ? 10 : 3;  // from 2888 on, the globule form
    }
    WriteFileBytes(catalogueFilePath(kCatDn), dn);
    Bytes barnard, ldn, gbc;
    Put(barnard, 64, {0x01, 0x00});   // B 33
    Put(barnard, 164, {0x03, 0x00});  // B 83
    Put(ldn, 3242, {0x02, 0x00});     // LDN 1622
    Put(gbc, 0, {'W', ' ', '1', '2', 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x48, 0x0B});  // 2888
    Put(gbc, 16, {'W', ' ', '3', '4', 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x49, 0x0B});  // 2889
    Put(gbc, 32, {'W', ' ', '5', '6', 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x4A, 0x0B});  // 2890
    WriteFileBytes(catalogueFilePath(kCatBarnard), barnard);
    WriteFileBytes(catalogueFilePath(kCatLdn), ldn);
    WriteFileBytes(catalogueFilePath(kCatGbc), gbc);
    Bytes dc;
    for (int row = 0; row < kDcRows; ++row) {
        DcEntry e;
        e.longitude = static_cast<uint16_t>(2500 + row);
        e.recordPlus1 = 100;
        const auto image = RecordImage<DcEntryLayout>(e);
        dc.insert(dc.end(), image.begin(), image.end());
    }
    Put(dc, 538 * 6, {0xDE, 0x0B, 0xFE, 0xFF, 0x06, 0x00});  // 303.8-0.2 -> 5
    Put(dc, 539 * 6, {0xDE, 0x2B, 0xFE, 0xFF, 0x07, 0x00});  // 303.8-0.2A -> 6
    WriteFileBytes(catalogueFilePath(kCatDc), dc);

    const Expected cases[] = {
        {17, 2, "33", "B 33", {1}},
        {17, 2, "Barnard 33", "Barnard 33", {1}},
        {17, 2, "33A", nullptr, {1}},  // 'A' reads the same slot
        {17, 2, "83", nullptr, {3}},
        {17, 2, "83A", nullptr, {229}},  // by rule
        {17, 2, "84A", nullptr, {300}},
        {17, 2, "83B", nullptr, {}},
        {17, 3, "1622", "LDN 1622", {2}},
        {17, 3, "1623", nullptr, {}},
        {17, 4, "303.8-0.2", "DC 303.8-0.2", {5}},
        {17, 4, "DC 303.8-0.2A", "DC 303.8-0.2A", {6}},
        {17, 4, "303.84-0.16", nullptr, {5}},  // rounded to tenths
        {17, 4, "303.8+0.2", nullptr, {}},
        {17, 5, "W 34", "W 34", {2889}},
        {17, 5, "W 35", nullptr, {}},
    };
    for (const Expected& e : cases) Check(e);
    ASSERT_EQ(Fill(17, 2, "84A"), 1);
    EXPECT_NEAR(r_[0].raJ2000, 300 * 65536.0 / 2147483647.0 * 2 * kPi, 1e-9);
    ASSERT_EQ(Fill(17, 5, "W 56"), 1);
    EXPECT_NEAR(r_[0].raJ2000, 2890 * 65536.0 / 2147483647.0 * 2 * kPi, 1e-9);
}

}  // namespace
