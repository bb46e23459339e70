// The GSC files: bands and region numbers, slots decoded from hand-made
// bytes, the cursor's reload rule and the collection of regions round a set
// of sky points.
#include <filesystem>
#include <numbers>

#include "catalog/catalogue_roots.h"
#include "catalog/gsc.h"
#include "support.h"

namespace {

constexpr double kHour = std::numbers::pi / 12;
constexpr double kDegree = std::numbers::pi / 180;

TEST(GscBands, RegionNumbersFallInTheirBandsCountedFromOne) {
    struct Case { int region; int band; const char* name; int file; };
    const Case cases[] = {
        {1, 0, "N0000", 1},      {593, 0, "N0000", 593}, {594, 1, "N0730", 1},
        {4662, 11, "N8230", 48}, {4663, 12, "S0000", 1}, {9537, 23, "S8230", 48},
        {0, -1, "", 0},          {9538, -1, "", 0},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(gscBandOfRegion(c.region), c.band) << c.region;
        EXPECT_STREQ(gscBandName(c.band), c.name) << c.region;
        EXPECT_EQ(gscRegionFileNumber(c.region), c.file) << c.region;
    }
    const double decs[] = {0, 7.4, 7.5, 89.9, -0.1, -7.5, -89.9};
    const int bands[] = {0, 0, 1, 11, 12, 13, 23};
    for (int i = 0; i < 7; ++i) EXPECT_EQ(gscBandOfDeclination(decs[i]), bands[i]) << decs[i];
}

TEST(GscSlots, DecodedFromHandMadeBytes) {
    GscStar s;
    const GscBox nearZero{0.5f, 0.0f, 5.0f, 7.5f};  // Dec bounds out of order
    // Dec code 131070 (top of the box), class 3, RA code 0 (below the box's
    // centre by the whole step, across 0h), magnitude code 100.
    const uint8_t plain[6] = {0xFF, 0x07, 0x00, 0x00, 0x64, 0xFE};
    ASSERT_EQ(decodeGscSlot(plain, nearZero, &s), kGscPlainStar);
    EXPECT_NEAR(s.ra, 6.261194158604457, 1e-12);
    EXPECT_NEAR(s.dec, 0.13177235852557187, 1e-12);
    EXPECT_NEAR(s.magnitude, 7.341176470588236, 1e-12);
    EXPECT_EQ(s.starClass, 3);

    const uint8_t reference[6] = {0x39, 0x30, 0x00, 0x80, 0x00, 0x00};
    ASSERT_EQ(decodeGscSlot(reference, nearZero, &s), kGscStarReference);
    EXPECT_EQ(s.starNumber, 12345);
    const uint8_t empty[6] = {};
    EXPECT_EQ(decodeGscSlot(empty, nearZero, &s), kGscNoStar);
    const uint8_t faintest[6] = {0, 0, 0, 0, 0xFF, 0};
    ASSERT_EQ(decodeGscSlot(faintest, nearZero, &s), kGscPlainStar);
    EXPECT_NEAR(s.magnitude, 21.2, 1e-12);
}

TEST(GscSlots, StepsFollowTheBoxSize) {
    // A slot of codes 0 lies one step below the centre on both axes.
    struct Case { float raSpan, decSpan; double raStep, decStep; };
    const Case cases[] = {
        {0.6f, 1.85f, 0.08744099552491591, 0.01658062789394613},
        {0.7f, 1.95f, 0.26197392072434883, 0.022689280275926284},
        {0.7f, 2.55f, 0.26197392072434883, 0.022689280275926284},
        {0.6f, 2.65f, 0.08744099552491591, 0.032812189937493394},
    };
    const uint8_t slot[6] = {0, 0, 0, 0, 1, 0};
    for (const Case& c : cases) {
        const GscBox box{6 + c.raSpan, 6, 10 + c.decSpan, 10};
        GscStar s;
        ASSERT_EQ(decodeGscSlot(slot, box, &s), kGscPlainStar);
        EXPECT_NEAR(s.ra, (6 + c.raSpan / 2.0) * kHour - c.raStep, 1e-6) << c.raSpan;
        EXPECT_NEAR(s.dec, (10 + c.decSpan / 2.0) * kDegree - c.decStep, 1e-6) << c.decSpan;
    }
}

class GscFilesTest : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        MakeDirs("gscroot/gsc/N0000");
        MakeDirs("gscroot/gsc/S0000");
        setCatalogueRoots("small", "stars", "gscroot");
    }
    static void WriteBand(const char* band, int regions, const std::vector<GscBox>& boxes) {
        Bytes file(16 * regions, 0);
        for (size_t i = 0; i < boxes.size(); ++i) EncodeRecord<GscBoxLayout>(boxes[i], &file[16 * i]);
        WriteFileBytes(std::string("gscroot/gsc/") + band + ".bin", file);
    }
    // Stars at the centre of their box.
    static void WriteRegion(const std::string& path, int stars) {
        GscSlot slot;
        slot.raCode = 262143;
        slot.decHigh = 65535 >> 8;
        slot.decLow = 65535 & 0xFF;
        slot.magnitudeCode = 100;
        Bytes file(6 * stars);
        for (int i = 0; i < stars; ++i) EncodeRecord<GscSlotLayout>(slot, &file[6 * i]);
        WriteFileBytes(path, file);
    }
};

TEST_F(GscFilesTest, CursorReloadsTheBandTableAndRegionFileOnlyOnAChange) {
    WriteBand("S0000", 597, {{0.5f, 0, 0, -2.5f}, {1, 0.5f, 0, -2.5f}});
    WriteBand("N0000", 593, {{1, 0, 2.5f, 0}});
    WriteRegion("gscroot/gsc/S0000/0001.bin", 2);  // region 4663
    WriteRegion("gscroot/gsc/S0000/0002.bin", 1);
    WriteRegion("gscroot/gsc/N0000/0001.bin", 1);

    GscCursor cursor;
    GscStar s;
    ASSERT_EQ(readGscStar(&cursor, 4663, 1, &s), kGscPlainStar);
    EXPECT_NEAR(s.ra, 0.25 * kHour, 1e-12);
    EXPECT_EQ(readGscStar(&cursor, 4663, 3, &s), 0);  // past the file's end

    // The same band keeps the table it read.
    WriteBand("S0000", 597, {{2.5f, 2, 0, -2.5f}, {3, 2.5f, 0, -2.5f}});
    ASSERT_EQ(readGscStar(&cursor, 4663, 1, &s), kGscPlainStar);
    EXPECT_NEAR(s.ra, 0.25 * kHour, 1e-12);

    std::error_code ec;
    if (!std::filesystem::remove("gscroot/gsc/S0000/0001.bin", ec)) {
        GTEST_SKIP() << "an open file can't be removed here";
    }
    EXPECT_EQ(readGscStar(&cursor, 4663, 2, &s), kGscPlainStar);  // still open
    ASSERT_EQ(readGscStar(&cursor, 4664, 1, &s), kGscPlainStar);
    EXPECT_NEAR(s.ra, 0.75 * kHour, 1e-12);
    EXPECT_EQ(readGscStar(&cursor, 4663, 1, &s), 0);  // reopened: gone

    ASSERT_EQ(readGscStar(&cursor, 1, 1, &s), kGscPlainStar);
    ASSERT_EQ(readGscStar(&cursor, 4664, 1, &s), kGscPlainStar);
    EXPECT_NEAR(s.ra, 2.75 * kHour, 1e-12);  // a new band: the table is read again
    closeGscCursor(&cursor);
    EXPECT_EQ(cursor.band, -1);
}

TEST_F(GscFilesTest, RegionSetTakesEveryBoxHoldingAPointOnce) {
    WriteBand("N0000", 593, {{1, 0, 4, 0}, {2, 1, 4, 0}, {2, 0, 7.5f, 3}, {0.5f, 23.5f, 7.5f, 0}});
    WriteBand("S0000", 597, {{3, 0, -7.5f, 0}});
    const GscSkyPoint points[] = {
        {0.25 * kHour, 2 * kDegree},   // 1 and the box across 0h, 4
        {1.5 * kHour, 3.5 * kDegree},  // 2, 3
        {0.5 * kHour, 3.5 * kDegree},  // 1, 3, 4 again
        {-0.2 * kHour, 1 * kDegree},   // 23.8h: 4 again
        {1.5 * kHour, -2 * kDegree},   // the southern band
        {1 * kHour, 20 * kDegree},     // a band without its table
    };
    GscRegionSet set;
    ASSERT_EQ(buildGscRegionSet(&set, points, 6), 5);
    const uint16_t expected[] = {1, 4, 2, 3, 4663};
    for (int i = 0; i < 5; ++i) EXPECT_EQ(set.regions[i], expected[i]) << i;
    // Bounds are inclusive, across 0h too.
    const GscBox crossing{0.5f, 23.5f, 7.5f, 0};
    EXPECT_TRUE(gscBoxContains(crossing, 0.5, 0) && gscBoxContains(crossing, 23.5, 7.5));
    EXPECT_FALSE(gscBoxContains(crossing, 0.51, 1) || gscBoxContains(crossing, 12, 1));
}

}  // namespace
