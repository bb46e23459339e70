// The designation lists: first rows, caps, the row a start text selects,
// pattern filters, the Serpens zones and the user store pages.
#include "catalog/browse.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "catalog/catalogue_roots.h"
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
