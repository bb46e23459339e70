// The star designations whose index files the generated reference set
// lacks (BD, CD, CP, GC, PPM, NSV, CCDM and the Struve and ADS numbers that
// lead into it, Tycho, GSC): small index files are written in a scratch
// folder beside a copy of the set's star file, mostly byte by byte at the
// offsets their formats give, and each designation is looked up both by
// the fill with its class and kind known and by the version 1.x resolver
// from the name as a user of version 1.x wrote it.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "astro/numeric.h"
#include "catalog/catalogue_files.h"
#include "catalog/catalogue_roots.h"
#include "catalog/fill_by_designation.h"
#include "catalog/legacy_name.h"
#include "catalog/multiple_stars.h"
#include "catalog/tycho_index.h"
#include "catalogue_bytes.h"
#include "support.h"

namespace {

const std::string kSet = FERRY2_REFDATA_DIR;
constexpr double kDeg = kRadiansPerDegree;

// Star numbers of the generated set (the n-th star of the Bright Star
// Catalogue that has a place): Vega, Sirius, and the set's first two.
constexpr uint32_t kVega = 6990, kSirius = 2485, kStar1 = 1, kStar2 = 2;
constexpr double kVegaRa = 279.234583, kVegaDec = 38.783611;  // J2000, published

struct Expected {
    int kind;
    const char* fillText;  // handed to the fill with class 5 and the kind
    const char* legacy;    // the same designation as version 1.x wrote it, or null
    std::vector<uint32_t> pids;  // in order; at most three are kept
};

class CraftedStarIndexTest : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        setCatalogueRoots(".", ".", ".");
        std::filesystem::copy_file(kSet + "stars/stars.bin", catalogueFilePath(kCatStars));
        std::filesystem::copy_file(kSet + "small/conrect.bin", catalogueFilePath(kCatConrect));
    }
    int Fill(int kind, const char* text, long number = 0) {
        return fillByDesignation(kClassStar, kind, 0, number, text, nullptr, nullptr, nullptr, r_);
    }
    // The PIDs of the records filled, after checking that every record of
    // the answer is a star of the wanted kind with a place read.
    std::vector<uint32_t> Pids(int count, int kind) {
        std::vector<uint32_t> pids;
        for (int i = 0; i < count; ++i) {
            EXPECT_EQ(r_[i].objectClass, kClassStar);
            EXPECT_EQ(r_[i].designationKind, kind);
            EXPECT_NE(r_[i].raJ2000, -1.0);
            EXPECT_NE(r_[i].constellation, 255);
            pids.push_back(r_[i].pid);
        }
        return pids;
    }
    void Check(const Expected& e) {
        SCOPED_TRACE(std::string(e.fillText) + " / " + (e.legacy ? e.legacy : "-"));
        const int filled = Fill(e.kind, e.fillText);
        EXPECT_EQ(Pids(filled, e.kind), e.pids);
        if (!e.legacy) return;
        const int resolved = resolveLegacyName(e.legacy, nullptr, nullptr, nullptr, r_);
        EXPECT_EQ(Pids(resolved, e.kind), e.pids);
    }
    ObjectRecord r_[kMaxDesignationRecords];
};

// BD slots: 3 bytes, the suffix code into " ABCDNPS" in the top 3 bits,
// the star in the low 21; 0xFFFFFF ends the list. CD and CP slots are
// plain star numbers. BD +38 3238 is row (89 - 38) x 6877 + 3237 of 12
// bytes; CD -60 5483 row (150 - 112) x 19834 + 5482 of 9; CP -18 5 row 4
// of 12.
TEST_F(CraftedStarIndexTest, ADurchmusterungNumberGivesUpToFourStars) {
    Bytes bd;
    Put(bd, 4247568, {0x4E, 0x1B, 0x00, 0xFF, 0xFF, 0xFF});  // +38 3238: Vega alone
    Put(bd, 4247580, {0x4E, 0x1B, 0x00, 0xB5, 0x09, 0x00, 0x01, 0x00, 0x00, 0x02, 0x00, 0x00});  // +38 3239
    // +38 3240: Vega without a suffix, Sirius as 'A', star 1 as 'B'.
    Put(bd, 4247592, {0x4E, 0x1B, 0x00, 0xB5, 0x09, 0x20, 0x01, 0x00, 0x40, 0xFF, 0xFF, 0xFF});
    Put(bd, 8766624, {0xB5, 0x09, 0x00, 0xFF, 0xFF, 0xFF});  // -16 1591, zone code 106: Sirius
    WriteFileBytes(catalogueFilePath(kCatBd), bd);
    Bytes cd;
    Put(cd, 6832566, {0x4E, 0x1B, 0x00, 0xFF, 0xFF, 0xFF, 0xB5, 0x09, 0x00});  // an empty slot between
    WriteFileBytes(catalogueFilePath(kCatCd), cd);
    Bytes cp;
    Put(cp, 48, {0x01, 0x00, 0x00, 0x02, 0x00, 0x00, 0x4E, 0x1B, 0x00, 0xB5, 0x09, 0x00});
    WriteFileBytes(catalogueFilePath(kCatCp), cp);

    const Expected cases[] = {
        {10, "BD +38 3238", "BD +38 3238", {kVega}},
        {10, "BD +38 03238", "BD +38 03238", {kVega}},  // the printed form
        {10, "+38 3238", nullptr, {kVega}},
        {10, "BD +38 3239", "BD +38 3239", {kVega, kSirius, kStar1}},  // four stars, three kept
        {10, "BD +38 3240", "BD +38 3240", {kVega}},
        {10, "BD +38 3240a", "BD +38 03240a", {kVega, kSirius}},  // 'A' also takes the blank slot
        {10, "BD +38 3240B", nullptr, {kStar1}},
        {10, "BD +38 3240c", nullptr, {}},
        {10, "BD -16 1591", "BD -16 1591", {kSirius}},
        {10, "BD +16 1591", nullptr, {}},  // the other hemisphere's zone
        {10, "BD +38 3241", nullptr, {}},  // a zero slot: nothing
        {10, "BD +38", nullptr, {}},
        {11, "CD -60 5483", "CD -60 5483", {kVega, kSirius}},
        {11, "CD -60 5484", nullptr, {}},
        {11, "CD -21 5", nullptr, {}},  // CD zones run from -22 on
        {12, "CP -18 5", "CP -18 5", {kStar1, kStar2, kVega}},
        {12, "CP +10 5", nullptr, {}},  // CP zones run from -18 on
    };
    for (const Expected& e : cases) Check(e);
}

// One-number indexes: GC and PPM 3-byte star numbers at (n - 1) x 3, NSV
// records of 26 bytes at (n - 1) x 26 with two star numbers at 12 and 15.
TEST_F(CraftedStarIndexTest, GcPpmAndNsvNumbers) {
    Bytes gc;
    Put(gc, 76395, {0x4E, 0x1B, 0x00});  // GC 25466
    WriteFileBytes(catalogueFilePath(kCatGc), gc);
    Bytes ppm;
    Put(ppm, 244671, {0x4E, 0x1B, 0x00});   // PPM 81558
    Put(ppm, 1136730, {0xB5, 0x09, 0x00});  // row 378911: PPM 700001, the first southern one
    WriteFileBytes(catalogueFilePath(kCatPpm), ppm);
    Bytes nsv;
    Put(nsv, 320944 + 12, {0x4E, 0x1B, 0x00, 0xB5, 0x09, 0x00});  // NSV 12345: two stars
    Put(nsv, 385112 + 12, {0x01, 0x00, 0x00});  // row 14812: every NSV with a suffix letter
    Put(nsv, 385112 + 26, {0});
    WriteFileBytes(catalogueFilePath(kCatNsvref), nsv);

    const Expected cases[] = {
        {13, "GC 25466", "GC 25466", {kVega}},
        {13, "25466", nullptr, {kVega}},
        {13, "GC 25467", nullptr, {}},
        {8, "PPM 81558", "PPM 81558", {kVega}},
        {8, "PPM 700001", "PPM 700001", {kSirius}},
        {8, "PPM 378911", "PPM 378911", {}},  // between the two ranges: no row, although row 378911 is filled
        {17, "NSV 12345", "NSV 12345", {kVega, kSirius}},
        {17, "NSV 12346", nullptr, {}},
        {17, "NSV 12345A", nullptr, {kStar1}},
        {17, "NSV 7B", nullptr, {kStar1}},
    };
    for (const Expected& e : cases) Check(e);
    // A direct number needs no text.
    ASSERT_EQ(Fill(13, "", 25466), 1);
    EXPECT_EQ(r_[0].pid, kVega);
    EXPECT_NEAR(r_[0].raJ2000, kVegaRa * kDeg, 1e-5);
    EXPECT_NEAR(r_[0].decJ2000, kVegaDec * kDeg, 1e-5);
    ASSERT_EQ(Fill(8, "", 700001), 1);
    EXPECT_EQ(r_[0].pid, kSirius);
}

// ccdm_i: all 37368 rows, sorted by CCDM number and searched from row 18684
// with a halving step. The rows of Vega and Sirius are written by hand; the
// filler rows around them through the row layout.
class CraftedCcdmTest : public CraftedStarIndexTest {
protected:
    static constexpr long kVegaRow = 30001, kSiriusRow = 9000;
    void SetUp() override {
        CraftedStarIndexTest::SetUp();
        Bytes index(kLastCcdmRow * CcdmIndexLayout::kSize, 0);
        for (long row = 1; row <= kLastCcdmRow; ++row) {
            CcdmIndexRow r;
            r.ccdmNorth = 1;
            r.ccdmDec = 100;
            r.ccdmRa = row < kSiriusRow ? 100 : row < kVegaRow ? 10000 : 23000;
            if (row == 1) {  // 00000+0001, the first number there can be
                r.ccdmRa = 0;
                r.ccdmDec = 1;
                r.star = kStar1;
            }
            if (row == kLastCcdmRow) {  // 23590+8900
                r.ccdmRa = 23590;
                r.ccdmDec = 8900;
                r.star = kStar2;
            }
            const auto image = RecordImage<CcdmIndexLayout>(r);
            std::copy(image.begin(), image.end(), index.begin() + (row - 1) * CcdmIndexLayout::kSize);
        }
        // 18443+3940: RA part 0x480B, Dec part 3940 with bit 15 for '+'.
        const size_t vega = (kVegaRow - 1) * 31;
        Put(index, vega + 4, {0x4E, 0x1B, 0x00});
        Put(index, vega + 25, {0x0B, 0x48, 0x64, 0x8F});
        // 06451-1643: bit 15 clear for '-'.
        const size_t sirius = (kSiriusRow - 1) * 31;
        Put(index, sirius + 4, {0xB5, 0x09, 0x00});
        Put(index, sirius + 25, {0x33, 0x19, 0x6B, 0x06});
        WriteFileBytes(catalogueFilePath(kCatCcdmI), index);
    }
};

TEST_F(CraftedCcdmTest, CcdmNumbersAreFoundByTheBinarySearch) {
    const Expected cases[] = {
        {16, "CCDM 18443+3940", "CCDM 18443+3940", {kVega}},
        {16, "18443+3940", nullptr, {kVega}},
        {16, "CCDM 06451-1643", "CCDM 06451-1643", {kSirius}},
        {16, "CCDM 00000+0001", "CCDM 00000+0001", {kStar1}},  // the first row
        {16, "CCDM 23590+8900", nullptr, {kStar2}},             // the last row
        {16, "CCDM 18443-3940", nullptr, {}},                    // south of Vega's number
        {16, "CCDM 06451+1643", nullptr, {}},
        {16, "CCDM 18444+3940", nullptr, {}},
        {16, "CCDM", nullptr, {}},
    };
    for (const Expected& e : cases) Check(e);
}

// Struve and ADS numbers lead to ccdm_i rows: struve u16 at (n - 1) x 2,
// ads_ccdm two u32 at (n - 1) x 8. E is Struve's letter.
TEST_F(CraftedCcdmTest, StruveAndAdsNumbersAsVersionOneWroteThem) {
    Bytes struve;
    Put(struve, 4762, {0x31, 0x75});  // Struve 2382 -> row 30001
    Put(struve, 4764, {0xFF, 0xFF});  // Struve 2383: none
    WriteFileBytes(catalogueFilePath(kCatStruve), struve);
    Bytes ads;
    Put(ads, 93072, {0x31, 0x75, 0, 0, 0x28, 0x23, 0, 0});  // ADS 11635 -> rows 30001 and 9000
    Put(ads, 93080, {0x28, 0x23, 0, 0, 0, 0, 0, 0});        // ADS 11636 -> row 9000 only
    WriteFileBytes(catalogueFilePath(kCatAdsCcdm), ads);

    const Expected cases[] = {
        {14, "2382", "STF 2382", {kVega}},
        {14, "Struve 2382", "Struve 2382", {kVega}},
        {14, "STF 2382", "E 2382", {kVega}},
        {14, "Struve 2383", "STF 2383", {}},
        {14, "Struve 5013", nullptr, {}},  // past the last Struve number
        {15, "ADS 11635", "ADS 11635", {kVega, kSirius}},
        {15, "ADS 11636", "ADS 11636", {kSirius}},
        {15, "ADS 11637", nullptr, {}},
    };
    for (const Expected& e : cases) Check(e);
}

// tycho: one 8-byte head entry per GSC region (offset, count of its run),
// then runs of 5-byte entries sorted by number and component: the star,
// and a u16 of number - 1 (14 bits) and component - 1 (2 bits).
TEST_F(CraftedStarIndexTest, TychoNumbersAreFoundInTheirRegionsRun) {
    Bytes tycho(kTychoRegions * 8, 0);
    const uint32_t run = kTychoRegions * 8;  // 76296 = 0x12A08
    Put(tycho, (3105 - 1) * 8, {0x08, 0x2A, 0x01, 0x00, 0x05, 0x00, 0x00, 0x00});
    // The run: (2068, 1) Sirius, (2070, 1) Vega, (2070, 2) star 1,
    // (2071, 1) star 2, (2100, 3) Vega.
    const TychoRunEntry entries[] = {
        {kSirius, 2067, 0}, {0, 0, 0}, {kStar1, 2069, 1}, {kStar2, 2070, 0}, {kVega, 2099, 2}};
    for (int i = 0; i < 5; ++i) {
        const auto image = RecordImage<TychoRunLayout>(entries[i]);
        std::copy(image.begin(), image.end(), std::back_inserter(tycho));
    }
    Put(tycho, run + 5, {0x4E, 0x1B, 0x00, 0x15, 0x08});  // Vega: 2069 = 0x815, component 1
    WriteFileBytes(catalogueFilePath(kCatTycho), tycho);

    const Expected cases[] = {
        {18, "TYC 3105-2070 1", "TYC 03105-2070 1", {kVega}},  // the printed form
        {18, "3105-2070 1", "TYC 3105-2070 1", {kVega}},
        {18, "3105-2070-1", "TYC 3105-2070-1", {kVega}},  // the common written form
        {18, "3105-2070", "TYC 3105-2070", {kVega}},      // component 1 when none is written
        {18, "3105-2070 2", nullptr, {kStar1}},
        {18, "3105-2068 1", nullptr, {kSirius}},
        {18, "3105-2071 1", nullptr, {kStar2}},
        {18, "3105-2100 3", nullptr, {kVega}},
        {18, "3105-2069 1", nullptr, {}},
        {18, "3105-2070 3", nullptr, {}},
        {18, "3106-2070 1", nullptr, {}},  // an empty run
        {18, "9538-1 1", nullptr, {}},     // past the last region
    };
    for (const Expected& e : cases) Check(e);
}

// GSC: the band table N0000 (16 bytes a region: RA high, RA low, Dec high,
// Dec low) and region 1's file of 6-byte slots. Slot 1 refers to a star of
// the star file (top bit of the first half); slot 2 is a star of the GSC
// alone at the middle of the region's box.
TEST_F(CraftedStarIndexTest, GscNumbersAsVersionOneWroteThem) {
    MakeDirs("gsc/N0000");
    Bytes band(16 * 593, 0);  // region 1: RA from 0h to 1h, Dec from 0 to 2.5 degrees
    Put(band, 0, {0x00, 0x00, 0x80, 0x3F, 0, 0, 0, 0, 0x00, 0x00, 0x20, 0x40, 0, 0, 0, 0});
    WriteFileBytes("gsc/N0000.bin", band);
    Bytes region;
    Put(region, 0, {0x4E, 0x1B, 0x00, 0x80, 0x00, 0x00});
    Put(region, 6, {0xFF, 0xF0, 0xFF, 0x3F, 0x64, 0xFF});
    WriteFileBytes("gsc/N0000/0001.bin", region);

    constexpr uint32_t kGscOwn = 0x80004002;  // number 2 | region 1 << 14 | bit 31
    const Expected cases[] = {
        {19, "GSC 00001-0001", "GSC 00001-0001", {kVega}},
        {19, "1-1", "GSC 1-1", {kVega}},
        {19, "00001-0002", "GSC 00001-0002", {kGscOwn}},
        {19, "00001-0003", "GSC 00001-0003", {}},  // six zero bytes: no star
        {19, "00001-9999", nullptr, {}},           // past the end of the region's file
        {19, "00002-0001", nullptr, {}},           // a region without its file
    };
    for (const Expected& e : cases) Check(e);
    ASSERT_EQ(resolveLegacyName("GSC 00001-0002", nullptr, nullptr, nullptr, r_), 1);
    EXPECT_NEAR(r_[0].raJ2000, 7.5 * kDeg, 1e-4);
    EXPECT_NEAR(r_[0].decJ2000, 1.25 * kDeg, 1e-4);
}

// With no index file at all every kind finds nothing and the records stay
// as initialised.
TEST_F(CraftedStarIndexTest, MissingIndexFilesFindNothing) {
    const char* texts[] = {"BD +38 3238", "CD -60 5483", "CP -18 5", "GC 1", "PPM 1", "STF 1", "ADS 1",
                           "CCDM 18443+3940", "NSV 1", "TYC 1-1 1", "GSC 1-1"};
    const int kinds[] = {10, 11, 12, 13, 8, 14, 15, 16, 17, 18, 19};
    for (int i = 0; i < 11; ++i) {
        SCOPED_TRACE(texts[i]);
        EXPECT_EQ(Fill(kinds[i], texts[i]), 0);
        EXPECT_EQ(r_[0].objectClass, 0);
        EXPECT_EQ(resolveLegacyName(texts[i], nullptr, nullptr, nullptr, r_), 0);
    }
}

}  // namespace
