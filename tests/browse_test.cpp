// The designation lists: first rows, caps, the row a start text selects,
// pattern filters, the Serpens zones and the user store pages.
#include "catalog/browse.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "catalog/alternative_name.h"
#include "catalog/catalogue_files.h"
#include "catalog/catalogue_roots.h"
#include "catalog/fill_by_designation.h"
#include "catalog/minor_planet_roots.h"
#include "catalog/object_record.h"
#include "support.h"

namespace {

const std::string kSet = FERRY2_REFDATA_DIR;

struct Listed {
    std::vector<BrowseRow> rows;
    long foundId = -1;
    long foundRow = -1;
};

// Every row of a list (up to its cap).
Listed ListAll(BrowseState& state) {
    Listed l;
    BrowseRow row;
    while (nextBrowseRow(&state, &row)) l.rows.push_back(row);
    l.foundId = state.foundId;
    l.foundRow = state.foundRow;
    return l;
}

Listed Browse(int objectClass, int kind, const char* start) {
    BrowseState state;
    EXPECT_EQ(beginBrowse(&state, objectClass, kind, start), 1) << objectClass << "/" << kind << " " << start;
    return ListAll(state);
}

std::vector<std::string> Texts(const Listed& l, size_t n) {
    std::vector<std::string> out;
    for (size_t i = 0; i < n && i < l.rows.size(); ++i) out.push_back(l.rows[i].text);
    return out;
}

// The PIDs that fillByDesignation finds for a row's text.
std::vector<uint32_t> Found(int objectClass, int kind, const std::string& text) {
    ObjectRecord records[kMaxDesignationRecords];
    const int n = fillByDesignation(objectClass, kind, 0, 0, text.c_str(), nullptr, nullptr, nullptr, records);
    std::vector<uint32_t> pids;
    for (int i = 0; i < n; ++i) pids.push_back(records[i].pid);
    return pids;
}

// Each row's text (up to 200 rows spread over the list) finds an object
// whose own name of that kind is the text.
void ExpectRowsNameTheirObjects(int objectClass, int kind, const Listed& l) {
    const size_t step = l.rows.size() / 200 + 1;
    for (size_t i = 0; i < l.rows.size(); i += step) {
        const BrowseRow& row = l.rows[i];
        ObjectRecord records[kMaxDesignationRecords];
        ASSERT_GE(fillByDesignation(objectClass, kind, 0, 0, row.text.c_str(), nullptr, nullptr, nullptr, records), 1)
            << row.text;
        std::string name;
        EXPECT_EQ(alternativeName(kind, records[0], records[0].pid, &name, nullptr), 1) << row.text;
        EXPECT_EQ(name, row.text);
    }
}

class BrowseRefTest : public ::testing::Test {
protected:
    void SetUp() override {
        setCatalogueRoots((kSet + "small/").c_str(), (kSet + "stars/").c_str(), (kSet + "gsc/").c_str());
    }
};

// The Bright Star Catalogue has no stars under HR 92, 95 and 182: the list
// passes them over, and HR 1000 stands 996th (three numbers missing below).
TEST_F(BrowseRefTest, NumberedListsStartAtTheirFirstNumberAndSelectTheNumberTyped) {
    Listed hr = Browse(kClassStar, 5, "HR 1000");
    ASSERT_GT(hr.rows.size(), 1000u);
    EXPECT_EQ(Texts(hr, 3), (std::vector<std::string>{"HR 1", "HR 2", "HR 3"}));
    EXPECT_EQ(hr.rows[91].text, "HR 93");
    EXPECT_EQ(hr.rows[93].text, "HR 96");
    EXPECT_EQ(hr.foundId, 1000);
    EXPECT_EQ(hr.foundRow, 996);
    EXPECT_EQ(hr.rows[996].id, 1000);
    EXPECT_EQ(hr.rows.size(), 9096u);  // the catalogue's stars, below the cap

    // HD 3 is HR 1, HD 6 HR 2, HD 28 HR 3 (33 Psc).
    Listed hd = Browse(kClassStar, 6, "*");
    EXPECT_EQ(Texts(hd, 3), (std::vector<std::string>{"HD 3", "HD 6", "HD 28"}));
    EXPECT_EQ(hd.foundId, -1);

    // Vega, HD 172167, lies in the 13th block of 14000 numbers.
    Listed vega = Browse(kClassStar, 6, "HD 172167");
    ASSERT_FALSE(vega.rows.empty());
    EXPECT_GE(vega.rows.front().id, 168001);
    ASSERT_GE(vega.foundRow, 0);
    EXPECT_EQ(vega.rows[vega.foundRow].text, "HD 172167");

    EXPECT_EQ(Browse(kClassStar, 5, "HR 92").foundId, -1);
}

// Serpens' Bayer stars of the catalogue, letter by letter and superscript
// by superscript; the two stars of Delta share one slot, Tau 4 has none.
TEST_F(BrowseRefTest, BayerListOfSerpensIsTheSameFromBothZones) {
    const std::vector<std::string> expected = {
        "Alpha Ser", "Beta Ser",  "Gamma Ser", "Delta Ser", "Epsilon Ser", "Zeta Ser",  "Eta Ser",   "Theta 1 Ser",
        "Theta 2 Ser", "Iota Ser", "Kappa Ser", "Lambda Ser", "Mu Ser",    "Nu Ser",    "Xi Ser",    "Omicron Ser",
        "Pi Ser",    "Rho Ser",   "Sigma Ser", "Tau 1 Ser", "Tau 2 Ser",   "Tau 3 Ser", "Tau 5 Ser", "Tau 6 Ser",
        "Tau 7 Ser", "Tau 8 Ser", "Upsilon Ser", "Phi Ser", "Chi Ser",     "Psi Ser",   "Omega Ser"};
    for (int zone : {76, 77}) {
        SCOPED_TRACE(zone);
        BrowseState state;
        // Theta without a superscript selects Theta 1, as the lookup retries.
        ASSERT_EQ(beginConstellationBrowse(&state, 2, zone, "Theta Ser"), 1);
        Listed l = ListAll(state);
        EXPECT_EQ(Texts(l, 100), expected);
        EXPECT_EQ(l.foundRow, 7);
        // The id names the slot: ((75 x 24 + 8) x 9 + 1) + 1 for Theta 1.
        EXPECT_EQ(l.foundId, (75 * 24 + 8) * 9 + 1 + 1);
    }
    // Scutum stands before Serpens (zone 75), Sextans after it (zone 78).
    BrowseState sex;
    ASSERT_EQ(beginConstellationBrowse(&sex, 2, 78, "*"), 1);
    EXPECT_EQ(ListAll(sex).rows.front().text, "Alpha Sex");
    BrowseState sct;
    ASSERT_EQ(beginConstellationBrowse(&sct, 2, 75, "*"), 1);
    EXPECT_EQ(ListAll(sct).rows.front().text, "Alpha Sct");
    // The abbreviation as start text gives the same one-constellation list.
    EXPECT_EQ(Texts(Browse(kClassStar, 2, "Ser"), 100), expected);
}

// Andromeda leads the whole Bayer and Flamsteed lists: Alpha And is HR 15,
// and 1 And is the first Flamsteed number of the sky.
TEST_F(BrowseRefTest, LetteredListsRunOverEveryConstellation) {
    Listed bayer = Browse(kClassStar, 2, "");
    ASSERT_GT(bayer.rows.size(), 1000u);
    EXPECT_EQ(Texts(bayer, 3), (std::vector<std::string>{"Alpha And", "Beta And", "Gamma 1 And"}));
    Listed flamsteed = Browse(kClassStar, 3, "61 Cyg");
    EXPECT_EQ(Texts(flamsteed, 2), (std::vector<std::string>{"1 Cyg", "2 Cyg"}));
    ASSERT_GE(flamsteed.foundRow, 0);
    EXPECT_EQ(flamsteed.rows[flamsteed.foundRow].text, "61 Cyg");
}

// The globulars among the Messier objects: M 2, 3, 4, 5, 9, 10, 12, 13 ...,
// 29 in all; M 13 is the eighth.
TEST_F(BrowseRefTest, MessierListOfAClassAndItsSelection) {
    Listed glob = Browse(kClassGlobular, 2, "M 13");
    EXPECT_EQ(Texts(glob, 8),
              (std::vector<std::string>{"M 2", "M 3", "M 4", "M 5", "M 9", "M 10", "M 12", "M 13"}));
    EXPECT_EQ(glob.rows.size(), 29u);
    EXPECT_EQ(glob.foundId, 13);
    EXPECT_EQ(glob.foundRow, 7);
    Listed galaxies = Browse(kClassGalaxy, 2, "M 31");
    EXPECT_EQ(Texts(galaxies, 3), (std::vector<std::string>{"M 31", "M 32", "M 33"}));
    EXPECT_EQ(galaxies.foundRow, 0);
    // M 13 is no galaxy: nothing to select.
    EXPECT_EQ(Browse(kClassGalaxy, 2, "M 13").foundId, -1);
}

// The common star names "Alp..." of the IAU list, in alphabetical order.
TEST_F(BrowseRefTest, NameListsShowOnlyWhatThePatternBegins) {
    Listed alp = Browse(kClassStar, 1, "alph");
    EXPECT_EQ(Texts(alp, 10), (std::vector<std::string>{"Alphard", "Alphecca", "Alpheratz", "Alpherg"}));
    EXPECT_EQ(alp.foundRow, 0);
    EXPECT_EQ(alp.foundId, alp.rows[0].id);
    Listed all = Browse(kClassStar, 1, "*");
    EXPECT_LE(all.rows.size(), static_cast<size_t>(kCommonStarRows));
    EXPECT_EQ(all.rows[0].id, 1);
}

TEST_F(BrowseRefTest, SolarSystemListAndKindsWithoutAList) {
    Listed bodies = Browse(kClassMajorBody, 0, "Mars");
    ASSERT_EQ(bodies.rows.size(), 11u);
    EXPECT_EQ(bodies.rows[0].text, "Sun");
    EXPECT_EQ(bodies.rows[10].text, "Moon");
    EXPECT_EQ(bodies.foundId, 4);
    EXPECT_EQ(bodies.foundRow, 4);
    BrowseState state;
    EXPECT_EQ(beginBrowse(&state, kClassStar, 20, "*"), 0);
    EXPECT_EQ(beginBrowse(&state, kClassGalaxyGroup, 3 + 1, "*"), 0);
    EXPECT_EQ(beginBrowse(&state, 19, 1, "*"), 0);
    EXPECT_EQ(beginBrowse(&state, kClassStar, 12, "*"), 0);  // no `cp` in the set
}

// OpenNGC's first objects are galaxies; NGC 224 is M 31.
TEST_F(BrowseRefTest, NgcListOfGalaxies) {
    Listed ngc = Browse(kClassGalaxy, 3, "NGC 224");
    EXPECT_EQ(Texts(ngc, 3), (std::vector<std::string>{"NGC 1", "NGC 2", "NGC 3"}));
    ASSERT_GE(ngc.foundRow, 0);
    EXPECT_EQ(ngc.rows[ngc.foundRow].text, "NGC 224");
    EXPECT_EQ(Browse(kClassGlobular, 3, "NGC 224").foundId, -1);
    // M 31 is UGC 454, M 33 UGC 1117.
    Listed ugc = Browse(kClassGalaxy, 9, "Uppsala 454");
    ASSERT_GE(ugc.foundRow, 0);
    EXPECT_EQ(ugc.rows[ugc.foundRow].text, "Uppsala 454");
    EXPECT_EQ(ugc.foundId, 454);
}

// The variables of the set in `vref` order: the runs of Andromeda, then
// the constellations after it; each row's text finds the star whose
// variable name it is.
TEST_F(BrowseRefTest, VariableListRunsInIndexOrder) {
    Listed all = Browse(kClassStar, 4, "*");
    ASSERT_GT(all.rows.size(), 10u);
    EXPECT_EQ(all.rows[0].text.substr(all.rows[0].text.size() - 3), "And");
    for (size_t i = 1; i < all.rows.size(); ++i) EXPECT_GT(all.rows[i].id, all.rows[i - 1].id);
    ExpectRowsNameTheirObjects(kClassStar, 4, all);
    const BrowseRow& pick = all.rows[all.rows.size() / 2];
    Listed found = Browse(kClassStar, 4, pick.text.c_str());
    EXPECT_EQ(found.foundId, pick.id);
    EXPECT_EQ(found.foundRow, static_cast<long>(all.rows.size() / 2));
}

// MCG and ESO by their runs: every row names its galaxy, and a typed
// designation selects its row, the list starting at the run that holds it.
TEST_F(BrowseRefTest, GalaxyRunListsNameTheirGalaxies) {
    for (int kind : {8, 10}) {
        SCOPED_TRACE(kind);
        Listed all = Browse(kClassGalaxy, kind, "*");
        ASSERT_GT(all.rows.size(), 5u);
        EXPECT_EQ(all.rows[0].text.substr(0, 4), kind == 8 ? "MCG " : "ESO ");
        ExpectRowsNameTheirObjects(kClassGalaxy, kind, all);
        const BrowseRow& pick = all.rows.back();
        Listed found = Browse(kClassGalaxy, kind, pick.text.c_str());
        ASSERT_GE(found.foundRow, 0);
        EXPECT_EQ(found.rows[found.foundRow].text, pick.text);
        EXPECT_EQ(found.foundId, pick.id);
    }
}

// The 88 constellations, Serpens once (zone 75); the id is the zone.
TEST_F(BrowseRefTest, ConstellationListHasEightyEightRows) {
    Listed l = Browse(kClassConstellation, 0, "Serp");
    ASSERT_EQ(l.rows.size(), 88u);
    EXPECT_EQ(l.rows[0].text, "Andromeda");
    EXPECT_EQ(l.rows[0].id, 0);
    EXPECT_EQ(l.rows[75].id, 75);
    EXPECT_EQ(l.rows[76].id, 77);
    EXPECT_EQ(l.rows.back().id, 88);
    EXPECT_EQ(l.rows.back().text, "Vulpecula");
    EXPECT_EQ(l.foundId, 75);
    EXPECT_EQ(l.foundRow, 75);
    EXPECT_EQ(Browse(kClassConstellation, 0, "Cyg").rows.size(), 88u);
    for (const BrowseRow& row : l.rows)
        EXPECT_EQ(Found(kClassConstellation, 0, row.text), (std::vector<uint32_t>{static_cast<uint32_t>(row.id)}))
            << row.text;
}

class BrowseOrbitTest : public BrowseRefTest {
protected:
    void SetUp() override {
        BrowseRefTest::SetUp();
        const std::string solar = FERRY2_SOLAR_DIR;
        setMinorPlanetRoots(solar.c_str(), (solar + "elements/").c_str());
    }
    void TearDown() override { setMinorPlanetRoots("", ""); }
};

// The periodic comets of the set in file order, which is by number: 1P,
// 2I, 2P ... 103P; the full name form of a comet without a designation.
TEST_F(BrowseOrbitTest, CometNumberListAndTheNumberSelected) {
    Listed periodic = Browse(kClassComet, 3, "9");
    ASSERT_EQ(periodic.rows.size(), 14u);
    EXPECT_EQ(Texts(periodic, 3), (std::vector<std::string>{"1P/Halley", "2I/Borisov", "2P/Encke"}));
    EXPECT_EQ(periodic.rows[0].id, 1);
    EXPECT_EQ(periodic.rows.back().text, "103P/Hartley");
    EXPECT_EQ(periodic.foundRow, 3);
    Listed named = Browse(kClassComet, 1, "Tempel");
    EXPECT_EQ(named.rows.size(), 2u);  // 9P and 10P
}

// The first thirty minor planets, by number and by name.
TEST_F(BrowseOrbitTest, MinorPlanetListsByNumberAndName) {
    Listed numbered = Browse(kClassMinorPlanet, 2, "(4) Vesta");
    ASSERT_EQ(numbered.rows.size(), 30u);
    EXPECT_EQ(Texts(numbered, 2), (std::vector<std::string>{"(1) Ceres", "(2) Pallas"}));
    EXPECT_EQ(numbered.foundRow, 3);
    Listed th = Browse(kClassMinorPlanet, 1, "Th");
    EXPECT_EQ(Texts(th, 5), (std::vector<std::string>{"Thalia", "Themis", "Thetis"}));
    EXPECT_EQ(th.rows[0].id, 23);
}

class BrowseScratchTest : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        setCatalogueRoots("./", "./", "./");
    }
};

// A crafted `hd` of 15000 filled slots (two 3-byte star numbers each, the
// second empty): the list stops at its cap, and a number beyond the first
// block opens the second.
TEST_F(BrowseScratchTest, NumberedListStopsAtItsCap) {
    Bytes hd;
    for (long n = 1; n <= 15000; ++n) {
        const uint8_t slot[6] = {static_cast<uint8_t>(n & 0xFF), static_cast<uint8_t>(n >> 8 & 0xFF), 0, 0, 0, 0};
        hd.insert(hd.end(), slot, slot + 6);
    }
    hd[6 * 9] = hd[6 * 9 + 1] = hd[6 * 9 + 2] = 0xFF;  // HD 10: an empty slot
    WriteFileBytes("hd.bin", hd);
    Listed top = Browse(kClassStar, 6, "*");
    ASSERT_EQ(top.rows.size(), 14000u);
    EXPECT_EQ(top.rows[9].text, "HD 11");
    EXPECT_EQ(top.rows.back().id, 14001);
    Listed second = Browse(kClassStar, 6, "HD 14500");
    ASSERT_EQ(second.rows.size(), 1000u);
    EXPECT_EQ(second.rows.front().text, "HD 14001");
    EXPECT_EQ(second.foundRow, 499);
    BrowseState none;
    EXPECT_EQ(beginBrowse(&none, kClassStar, 5, "*"), 0);  // no `hrbs` here
}

// A user star store of 2500 stars written byte by byte: a 6-byte head (u16
// count, u32 last PID), 47-byte rows (u32 PID, i32 RA, i32 Dec, i16
// magnitude, 33-byte name).
TEST_F(BrowseScratchTest, UserListsComeInPagesOfAThousand) {
    MakeDirs("user");
    Bytes b(6 + 2500 * 47, 0);
    PokeU16(b, 0, 2500);
    PokeU32(b, 2, 2600);
    for (int i = 0; i < 2500; ++i) {
        const size_t at = 6 + static_cast<size_t>(i) * 47;
        PokeU32(b, at, 100 + i);
        char name[33];
        std::snprintf(name, sizeof name, "Star %04d", i + 1);
        for (int k = 0; name[k]; ++k) b[at + 14 + k] = static_cast<uint8_t>(name[k]);
    }
    WriteFileBytes("user/stellar.bin", b);

    BrowseState state;
    ASSERT_EQ(beginUserBrowsePage(&state, kClassSupplementalStar, 2), 1);
    Listed third = ListAll(state);
    ASSERT_EQ(third.rows.size(), 500u);
    EXPECT_EQ(third.rows.front().text, "Star 2001");
    EXPECT_EQ(third.rows.front().id, 2100);
    ASSERT_EQ(beginUserBrowsePage(&state, kClassSupplementalStar, 0), 1);
    Listed first = ListAll(state);
    ASSERT_EQ(first.rows.size(), 1000u);
    EXPECT_EQ(first.rows.back().text, "Star 1000");

    Listed named = Browse(kClassSupplementalStar, 1, "star 1500");
    ASSERT_EQ(named.rows.size(), 1000u);
    EXPECT_EQ(named.rows.front().text, "Star 1001");
    EXPECT_EQ(named.foundId, 1599);
    EXPECT_EQ(named.foundRow, 499);

    EXPECT_EQ(beginBrowse(&state, kClassUserComet, 1, "*"), 0);  // no store: none made
    EXPECT_FALSE(FileExists("user/comet.bin"));
}

}  // namespace

namespace {

// Crafted index files beside the set's class files: the small-data root is
// the set's, the star-data root the scratch folder, with a copy of `stars`.
class BrowseCraftedTest : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        setCatalogueRoots((kSet + "small/").c_str(), "./", "./");
        const std::string stars = catalogueFileName(kCatStars) + ".bin";
        ASSERT_EQ(CopyFileTo((kSet + "stars/" + stars).c_str(), stars.c_str()), 1);
    }
    static void Write(int id, const Bytes& bytes) { WriteFileBytes(catalogueFileName(id) + ".bin", bytes); }
};

// BD +89: `dmb` gives the zone (code 0) three numbers. Number 1 has a blank
// slot (star 1) and an 'A' slot (star 2, suffix code 1 in the top 3 bits);
// number 2 none; number 3 two blank slots (stars 3, 4), one row.
TEST_F(BrowseCraftedTest, BdListWalksTheZonesOfDmb) {
    Bytes dmb(181 * 6, 0);
    dmb[0] = 3;  // zone code 0: BD's largest number 3
    Write(kCatDmb, dmb);
    Write(kCatBd, {0x01, 0x00, 0x00, 0x02, 0x00, 0x20, 0xFF, 0xFF, 0xFF, 0x00, 0x00, 0x00,   // BD +89 1
                   0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,   // BD +89 2
                   0x03, 0x00, 0x00, 0x04, 0x00, 0x00, 0xFF, 0xFF, 0xFF, 0x00, 0x00, 0x00}); // BD +89 3
    Listed l = Browse(kClassStar, 10, "BD +89 3");
    ASSERT_EQ(Texts(l, 5), (std::vector<std::string>{"BD +89 00001", "BD +89 00001a", "BD +89 00003"}));
    EXPECT_EQ(l.rows[1].id, 2);  // slot 1 of number 1
    EXPECT_EQ(l.rows[2].id, 9);  // slot 0 of number 3: 2 x 4 + 1
    EXPECT_EQ(l.foundId, 9);
    EXPECT_EQ(l.foundRow, 2);
    const std::vector<std::vector<uint32_t>> stars = {{1}, {1, 2}, {3, 4}};  // a blank slot answers 'A' too
    for (size_t i = 0; i < l.rows.size(); ++i) EXPECT_EQ(Found(kClassStar, 10, l.rows[i].text), stars[i]);
    BrowseState none;
    EXPECT_EQ(beginBrowse(&none, kClassStar, 11, "*"), 0);  // no `cd`
}

// The pair indexes: one filled slot each among empty ones (65535; 0 for
// Henize, whose slot holds the record + 1). Slot (a - 1) x width + b - 1.
TEST_F(BrowseCraftedTest, PlanetaryPairListsShowTheirFilledSlots) {
    struct Case {
        int kind, file;
        long slots, filled;
        uint16_t value, empty;
        const char* text;
        uint32_t record;
    };
    const Case cases[] = {
        {6, kCatMinkowski, 100, 93 + 1, 2, 65535, "M 2-2", 2},     // (2 - 1) x 93 + 2 - 1
        {8, kCatHaro, 90, 76 + 4, 1, 65535, "H 2-5", 1},           // x 76
        {9, kCatKohoutek, 100, 2, 3, 65535, "K 1-3", 3},           // x 95
        {13, kCatEso, 100, 82 + 9, 2, 65535, "ESO 12-10", 2},       // (12 - 11) x 82 + 10 - 1
        {7, kCatHenize, 480, 477, 3, 0, "He 3-520", 2},            // 520 - 519 + 476; record + 1
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        Bytes b(static_cast<size_t>(c.slots) * 2, 0);
        for (long s = 0; s < c.slots; ++s) PokeU16(b, static_cast<size_t>(s) * 2, c.empty);
        PokeU16(b, static_cast<size_t>(c.filled) * 2, c.value);
        Write(c.file, b);
        Listed l = Browse(kClassPlanetary, c.kind, c.text);
        ASSERT_EQ(Texts(l, 3), (std::vector<std::string>{c.text}));
        EXPECT_EQ(l.rows[0].id, c.filled + 1);
        EXPECT_EQ(l.foundRow, 0);
        EXPECT_EQ(Found(kClassPlanetary, c.kind, c.text), (std::vector<uint32_t>{c.record}));
    }
}

}  // namespace
