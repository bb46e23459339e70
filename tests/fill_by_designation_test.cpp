// The fill by designation: typed names and direct numbers of every class
// turned into full object records, read back from the generated reference
// set and from user stores written in a scratch folder, and held against
// the published catalogues (places from the Bright Star Catalogue and
// OpenNGC, catalogue numbers from their own cross-identifications).
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <string>

#include "astro/instant.h"
#include "astro/numeric.h"
#include "astro/planet_files.h"
#include "astro/planet_series.h"
#include "astro/site.h"
#include "catalog/catalogue_files.h"
#include "catalog/catalogue_roots.h"
#include "catalog/comet_files.h"
#include "catalog/fill_by_designation.h"
#include "catalog/minor_planet_roots.h"
#include "catalog/user_comets.h"
#include "catalog/user_deep_sky.h"
#include "catalog/user_minor_planets.h"
#include "catalog/user_stars.h"
#include "catalogue_bytes.h"
#include "support.h"
#include "user_object_stores.h"

namespace {

const std::string kSet = FERRY2_REFDATA_DIR;
const std::string kSolar = FERRY2_SOLAR_DIR;
constexpr double kDeg = kRadiansPerDegree;
// Catalogue places are kept as scaled integers or f32: well inside 1e-5 rad.
constexpr double kPlaceTolerance = 1e-5;

class FillByDesignationTest : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        setCatalogueRoots((kSet + "small/").c_str(), (kSet + "stars/").c_str(), (kSet + "gsc/").c_str());
        setMinorPlanetRoots(kSolar.c_str(), (kSolar + "elements").c_str());
    }
    void TearDown() override {
        setMinorPlanetRoots("", "");
        ScratchTest::TearDown();
    }
    int Fill(int objectClass, int kind, const char* text, long number = 0, int component = 0) {
        return fillByDesignation(objectClass, kind, component, number, text, nullptr, nullptr, nullptr, r_);
    }
    ObjectRecord r_[kMaxDesignationRecords];
};

struct Named {
    int objectClass;
    int kind;
    const char* text;
    long number;
    double raDeg;  // J2000, from the published catalogue
    double decDeg;
    uint32_t mask;
};

// Vega (HR 7001, HD 172167, SAO 67174, HIP 91262, Alpha Lyr); Sirius
// (9 CMa); R Lyr (13 Lyr, HR 7157); M 31 = NGC 224 = UGC 454 = PGC 2557 =
// MCG +07-02-016; IC 342; M 42 = LBN 974; M 57 = PN G063.1+13.9.
constexpr double kVegaRa = 279.234583, kVegaDec = 38.783611;
const Named kNamed[] = {
    {5, 1, "Vega", 0, kVegaRa, kVegaDec, 0},
    {5, 2, "Alpha Lyr", 0, kVegaRa, kVegaDec, 0},
    {5, 3, "9 CMa", 0, 101.287083, -16.716111, 0},
    {5, 4, "R Lyr", 0, 283.833750, 43.946111, 0},
    {5, 5, "HR 7001", 0, kVegaRa, kVegaDec, 0},
    {5, 5, "", 7001, kVegaRa, kVegaDec, 0},
    {5, 6, "172167", 0, kVegaRa, kVegaDec, 0},
    {5, 7, "SAO 67174", 0, kVegaRa, kVegaDec, 0},
    {5, 9, "HIP 91262", 0, kVegaRa, kVegaDec, 0},
    {6, 1, "Andromeda", 0, 10.684792, 41.269056, 256},
    {6, 2, "M 31", 0, 10.684792, 41.269056, 256},
    {6, 2, "", 31, 10.684792, 41.269056, 256},
    {6, 3, "NGC 224", 0, 10.684792, 41.269056, 256},
    {6, 4, "IC 342", 0, 56.702083, 68.096361, 256},
    {6, 7, "PGC 2557", 0, 10.684792, 41.269056, 256},
    {6, 8, "MCG +07-02-016", 0, 10.684792, 41.269056, 256},
    {6, 9, "UGC 454", 0, 10.684792, 41.269056, 256},
    {9, 2, "M 42", 0, 83.818667, -5.389667, 2048},
    {9, 3, "1976", 0, 83.818667, -5.389667, 2048},
    {9, 9, "LBN 974", 0, 83.818667, -5.389667, 2048},
    {8, 2, "M 57", 0, 283.395875, 33.028583, 1024},
    {8, 10, "PN G063.1+13.9", 0, 283.395875, 33.028583, 1024},
    {8, 10, "063.1+13.9", 0, 283.395875, 33.028583, 1024},
};

TEST_F(FillByDesignationTest, KnownDesignationsLeadToThePublishedPlaces) {
    for (const Named& n : kNamed) {
        SCOPED_TRACE(std::string(n.text) + " #" + std::to_string(n.number));
        ASSERT_EQ(Fill(n.objectClass, n.kind, n.text, n.number), 1);
        EXPECT_EQ(r_[0].objectClass, n.objectClass);
        EXPECT_EQ(r_[0].designationKind, n.kind);
        EXPECT_NEAR(r_[0].raJ2000, n.raDeg * kDeg, kPlaceTolerance);
        EXPECT_NEAR(r_[0].decJ2000, n.decDeg * kDeg, kPlaceTolerance);
        if (n.mask != 0) {
            EXPECT_EQ(r_[0].classMask, n.mask);
        }
        EXPECT_NE(r_[0].constellation, 255);
        EXPECT_EQ(r_[1].pid, 0u);  // the unused records stay as initialised
        EXPECT_EQ(r_[1].objectClass, 0);
    }
}

TEST_F(FillByDesignationTest, HdOfVegaIsTheStarWhoseRecordIsVega) {
    ASSERT_EQ(Fill(5, 6, "HD 172167"), 1);
    EXPECT_EQ(r_[0].pid, 6990u);  // the generated set's star number, row 6990 of the catalogue
    EXPECT_NEAR(r_[0].magnitude, 0.03, 1e-6);
    EXPECT_EQ(r_[0].constellation, 51);  // Lyr
    EXPECT_EQ(r_[0].classMask, 16u);     // a single star, not variable
    EXPECT_EQ(r_[0].nameConstellation, 0u);
    EXPECT_EQ(getComponent(&r_[0]), -1);
}

TEST_F(FillByDesignationTest, NamesGivenInAConstellationKeepIt) {
    const struct {
        int kind;
        const char* text;
        uint32_t nameConstellation;  // row + 1
    } cases[] = {{2, "Alpha Lyr", 52}, {3, "9 CMa", 14}, {4, "R Lyr", 52}, {2, "Alpha Cma", 14}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        ASSERT_EQ(Fill(5, c.kind, c.text, 77), 1);
        EXPECT_EQ(r_[0].nameConstellation, c.nameConstellation);
    }
    // R Lyr is a variable: the class mask says so.
    ASSERT_EQ(Fill(5, 4, "R Lyr"), 1);
    EXPECT_EQ(r_[0].classMask, 128u);
}

TEST_F(FillByDesignationTest, AComponentLetterIsStoredFromB) {
    const struct {
        int letter;
        int component;
    } cases[] = {{'B', 0}, {'b', 0}, {'C', 1}, {'A', -1}, {0, -1}, {'1', -1}};
    for (const auto& c : cases) {
        ASSERT_EQ(Fill(5, 1, "Sirius", 0, c.letter), 1);
        EXPECT_EQ(getComponent(&r_[0]), c.component) << c.letter;
        EXPECT_NEAR(r_[0].raJ2000, 101.287083 * kDeg, kPlaceTolerance);
    }
    // A name with its component letter still on finds the star.
    ASSERT_EQ(Fill(5, 1, "Sirius B", 0, 'B'), 1);
    EXPECT_NEAR(r_[0].decJ2000, -16.716111 * kDeg, kPlaceTolerance);
    // Only stars carry a component.
    ASSERT_EQ(Fill(6, 2, "M 31", 0, 'B'), 1);
    EXPECT_EQ(getComponent(&r_[0]), -1);
}

TEST_F(FillByDesignationTest, NotFoundAnswersZeroWithInitialisedRecords) {
    const struct {
        int objectClass;
        int kind;
        const char* text;
    } cases[] = {
        {5, 6, "HD 999999999"}, {5, 5, "HR"},        {5, 1, "Nosuchstar"}, {5, 2, "Alpha Xyz"},
        {5, 20, "1"},           {5, 0, "Vega"},      {9, 2, "M 31"},       {6, 2, "M 42"},
        {6, 3, "NGC"},          {6, 1, "Nosuch"},    {9, 1, "Andromeda"},  {0, 1, "Vega"},
        {19, 1, "Vega"},        {20, 1, "Vega"},     {-1, 1, "Vega"},      {6, 11, "1"},
        {12, 1, "Vega"},        {13, 1, "Halley"},   {14, 1, "Ceres"},     {18, 1, "NGC 224"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::to_string(c.objectClass) + "/" + std::to_string(c.kind) + " " + c.text);
        EXPECT_EQ(Fill(c.objectClass, c.kind, c.text), 0);
        EXPECT_EQ(r_[0].objectClass, 0);
        EXPECT_EQ(r_[0].raJ2000, -1);
    }
    EXPECT_EQ(fillByDesignation(5, 5, 0, 7001, nullptr, nullptr, nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(Fill(5, 5, nullptr, 7001), 1);
    // The user stores were only looked at, never made.
    EXPECT_FALSE(std::filesystem::exists("user"));
}

// One HD number written by hand to stand for two stars of the set: both come
// back, each with its own place, and both carry the class, kind and name
// constellation of the first.
TEST_F(FillByDesignationTest, OneDesignationCanFillSeveralRecords) {
    std::filesystem::copy_file(kSet + "stars/stars.bin", "stars.bin");
    Bytes hd;
    Put(hd, (7 - 1) * 6, {0x4E, 0x1B, 0x00, 0xB5, 0x09, 0x00});  // stars 6990 and 2485
    WriteFileBytes("hd.bin", hd);
    setCatalogueRoots((kSet + "small/").c_str(), ".", ".");
    ASSERT_EQ(Fill(5, 6, "HD 7"), 2);
    EXPECT_NEAR(r_[0].raJ2000, kVegaRa * kDeg, kPlaceTolerance);
    EXPECT_NEAR(r_[1].raJ2000, 101.287083 * kDeg, kPlaceTolerance);
    EXPECT_EQ(r_[1].objectClass, 5);
    EXPECT_EQ(r_[1].designationKind, 6);
    EXPECT_EQ(r_[1].constellation, 13);  // CMa
    EXPECT_EQ(r_[2].pid, 0u);
}

// The double-star and GSC files are not in the generated set: small ones
// are written here by hand at the offsets their formats give, beside a copy
// of the set's star file.
class CraftedStarFilesTest : public FillByDesignationTest {
protected:
    void SetUp() override {
        FillByDesignationTest::SetUp();
        setCatalogueRoots(".", ".", ".");
        std::filesystem::copy_file(kSet + "stars/stars.bin", catalogueFilePath(kCatStars));
        std::filesystem::copy_file(kSet + "small/conrect.bin", catalogueFilePath(kCatConrect));
    }
};

TEST_F(CraftedStarFilesTest, StruveAndAdsLeadThroughTheCcdmRowsToTheirStars) {
    Bytes struve;
    Put(struve, (3 - 1) * 2, {0x02, 0x00});  // Struve 3 -> ccdm_i row 2
    Put(struve, (4 - 1) * 2, {0xFF, 0xFF});  // Struve 4: no row
    WriteFileBytes(catalogueFilePath(kCatStruve), struve);
    Bytes ads;
    Put(ads, (5 - 1) * 8, {0x02, 0, 0, 0, 0x01, 0, 0, 0});  // ADS 5 -> rows 2 and 1
    WriteFileBytes(catalogueFilePath(kCatAdsCcdm), ads);
    Bytes index(2 * 31, 0);
    Put(index, 0 * 31 + 4, {0xB5, 0x09, 0x00});  // row 1: star 2485, Sirius
    Put(index, 1 * 31 + 4, {0x4E, 0x1B, 0x00});  // row 2: star 6990, Vega
    WriteFileBytes(catalogueFilePath(kCatCcdmI), index);

    ASSERT_EQ(Fill(5, 14, "Struve 3"), 1);
    EXPECT_EQ(r_[0].pid, 6990u);
    EXPECT_NEAR(r_[0].decJ2000, kVegaDec * kDeg, kPlaceTolerance);
    ASSERT_EQ(Fill(5, 14, "", 3), 1);
    EXPECT_EQ(r_[0].pid, 6990u);
    EXPECT_EQ(Fill(5, 14, "Struve 4"), 0);
    ASSERT_EQ(Fill(5, 15, "ADS 5"), 2);
    EXPECT_EQ(r_[0].pid, 6990u);
    EXPECT_EQ(r_[1].pid, 2485u);
    EXPECT_EQ(r_[1].designationKind, 15);
    EXPECT_EQ(Fill(5, 15, "ADS 6"), 0);
}

TEST_F(CraftedStarFilesTest, GscSlotsAreStarReferencesOrStarsOfTheirOwnWithBit31) {
    MakeDirs("gsc/N0000");
    Bytes band(16 * 593, 0);  // region 1: RA 0h to 1h, Dec 0 to 2.5 degrees
    Put(band, 0, {0x00, 0x00, 0x80, 0x3F, 0, 0, 0, 0, 0x00, 0x00, 0x20, 0x40, 0, 0, 0, 0});
    WriteFileBytes("gsc/N0000.bin", band);
    Bytes region;
    Put(region, 0, {0x4E, 0x1B, 0x00, 0x80, 0x00, 0x00});  // star 1: a reference to star 6990
    // Star 2 at the middle of the box: RA code 262143, Dec code 65535,
    // magnitude code 100.
    Put(region, 6, {0xFF, 0xF0, 0xFF, 0x3F, 0x64, 0xFF});
    WriteFileBytes("gsc/N0000/0001.bin", region);

    ASSERT_EQ(Fill(5, 19, "GSC 00001-0001"), 1);
    EXPECT_EQ(r_[0].pid, 6990u);
    EXPECT_NEAR(r_[0].raJ2000, kVegaRa * kDeg, kPlaceTolerance);
    ASSERT_EQ(Fill(5, 19, "GSC 00001-0002"), 1);
    EXPECT_EQ(r_[0].pid, 0x80004002u);  // number 2, region 1 shifted by 14, bit 31
    EXPECT_NEAR(r_[0].raJ2000, 0.5 * 15 * kDeg, 1e-4);
    EXPECT_NEAR(r_[0].decJ2000, 1.25 * kDeg, 1e-4);
    EXPECT_NEAR(r_[0].magnitude, 100 * 0.08941176470588236 - 1.6, 1e-5);
    EXPECT_EQ(r_[0].classMask, 16u);
    EXPECT_EQ(Fill(5, 19, "GSC 00001-0003"), 0);
    EXPECT_EQ(Fill(5, 19, "GSC 00002-0001"), 0);
}

TEST_F(FillByDesignationTest, ConstellationsAndBodiesByName) {
    const struct {
        int objectClass;
        const char* text;
        long number;
        uint32_t pid;
    } cases[] = {
        {1, "Orion", 0, 59}, {1, "Ori", 0, 59},  {1, "", 59, 59}, {1, "Vul", 0, 88}, {2, "Mars", 0, 4},
        {2, "moon", 0, 10},  {2, "Earth Sh", 0, 11}, {2, "", 9, 9},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        ASSERT_EQ(Fill(c.objectClass, 0, c.text, c.number), 1);
        EXPECT_EQ(r_[0].pid, c.pid);
        EXPECT_EQ(r_[0].classMask, c.objectClass == 1 ? 1u : 2u);
    }
    // A constellation's place is its box's middle, inside the constellation.
    ASSERT_EQ(Fill(1, 0, "Lyra"), 1);
    EXPECT_EQ(r_[0].constellation, 51);
    EXPECT_EQ(Fill(1, 0, "", 89), 0);
    EXPECT_EQ(Fill(2, 0, "Vulcan"), 0);
    EXPECT_EQ(Fill(2, 0, "", 12), 0);
}

TEST_F(FillByDesignationTest, ReferenceCometsAndMinorPlanets) {
    // Hale-Bopp by name and by designation; the periodic number 2 is the
    // first numbered comet 2 of the file, 2I/Borisov (row 1).
    ASSERT_EQ(Fill(3, 1, "Hale"), 1);
    const uint32_t haleBopp = r_[0].pid;
    ASSERT_EQ(Fill(3, 2, "1995 O1"), 1);
    EXPECT_EQ(r_[0].pid, haleBopp);
    ASSERT_EQ(Fill(3, 3, "", 2), 1);
    EXPECT_EQ(r_[0].pid, 1u);
    EXPECT_EQ(r_[0].classMask, 4u);
    // (1) Ceres and (4) Vesta.
    ASSERT_EQ(Fill(4, 1, "Ceres"), 1);
    EXPECT_EQ(r_[0].pid, 1u);
    ASSERT_EQ(Fill(4, 2, "(4) Vesta"), 1);
    EXPECT_EQ(r_[0].pid, 4u);
    ASSERT_EQ(Fill(4, 2, "", 4), 1);
    EXPECT_EQ(r_[0].pid, 4u);
    EXPECT_EQ(r_[0].classMask, 8u);
    EXPECT_EQ(Fill(4, 1, "Nosuchplanet"), 0);
}

TEST_F(FillByDesignationTest, TheUsersOwnObjectsByName) {
    MakeDirs("user");
    ASSERT_NO_FATAL_FAILURE(WriteOneObjectPerUserStore());
    const struct {
        int objectClass;
        int kind;
        const char* text;
        long number;
        uint32_t mask;
    } cases[] = {
        {12, 1, "my star", 0, 16},   {18, 1, "My Neb", 0, 1024}, {13, 1, "NEOWISE", 0, 4},
        {13, 2, "2020 F3", 0, 4},    {14, 1, "eros", 0, 8},      {14, 2, "", 433, 8},
        {14, 2, "(433) Eros", 0, 8},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        ASSERT_EQ(Fill(c.objectClass, c.kind, c.text, c.number), 1);
        EXPECT_EQ(r_[0].pid, 1u);  // the first object each store issued
        EXPECT_EQ(r_[0].objectClass, c.objectClass);
        EXPECT_EQ(r_[0].classMask, c.mask);
    }
    ASSERT_EQ(Fill(12, 1, "My Star"), 1);
    EXPECT_NEAR(r_[0].raJ2000, 1.25, kPlaceTolerance);
    EXPECT_NEAR(r_[0].decJ2000, 0.5, kPlaceTolerance);
    EXPECT_NEAR(r_[0].magnitude, 7.5, 1e-6);
    ASSERT_EQ(Fill(18, 1, "My Nebula"), 1);
    EXPECT_NEAR(r_[0].decJ2000, -0.25, kPlaceTolerance);
    EXPECT_EQ(Fill(14, 2, "", 434), 0);
    EXPECT_EQ(Fill(13, 3, "", 7), 0);
    EXPECT_EQ(Fill(12, 1, "Other"), 0);
}

// With a site and an instant each record gets its place for the observer.
TEST_F(FillByDesignationTest, WithASiteTheRecordIsPlacedForTheObserver) {
    PlanetFilesClose();
    PlanetFilesOpen(kSolar.c_str());
    Site site;
    Instant instant;
    char name[] = "Greenwich";
    SiteInit(&site, 0.0, 51.4779 * kDeg, 0, 6.0, 0, name);
    InstantSet(&instant, &site, 1, 1, 2000, 12.0, kUniversalTime);
    InstantScales(&instant, 64.0);
    InstantSidereal(&site, &instant);
    RiseSetSpan span{18.0, 30.0};
    ASSERT_EQ(fillByDesignation(5, 6, 0, 0, "HD 172167", &site, &instant, &span, r_), 1);
    EXPECT_NEAR(r_[0].raJ2000, kVegaRa * kDeg, kPlaceTolerance);
    EXPECT_NE(r_[0].altitude, -1.0);
    // Apparent place of date stays within a few arc minutes of J2000 at 2000.
    EXPECT_NEAR(r_[0].raApparent, kVegaRa * kDeg, 5e-4);
    EXPECT_EQ(r_[0].rise, -1.0f);
    EXPECT_EQ(r_[0].set, -1.0f);
    ASSERT_EQ(fillByDesignation(2, 0, 0, 0, "Mars", &site, &instant, &span, r_), 1);
    EXPECT_EQ(r_[0].pid, 4u);
    EXPECT_NE(r_[0].raJ2000, -1.0);
    PlanetFilesClose();
}

}  // namespace
