// The object record: its 224-byte image, the class masks and the fixed
// position, and a refill by class and PID.
#include <cmath>
#include <cstring>
#include <numbers>

#include "astro/instant.h"
#include "astro/site.h"
#include "base/string_table.h"
#include "catalog/catalogue_roots.h"
#include "catalog/class_names.h"
#include "catalog/object_fill.h"
#include "catalog/object_record.h"
#include "catalog/star_file.h"
#include "support.h"

namespace {

constexpr double kDeg = std::numbers::pi / 180.0;

void Fill(Bytes& b, size_t off, std::initializer_list<uint8_t> bytes) {
    for (const uint8_t v : bytes) b[off++] = v;
}

TEST(ObjectRecordTest, TheInitialImageHasItsValuesAtTheirOffsets) {
    Bytes want(224, 0);
    const std::initializer_list<uint8_t> minusOne64 = {0, 0, 0, 0, 0, 0, 0xF0, 0xBF};
    for (size_t off = 16; off <= 88; off += 8) Fill(want, off, minusOne64);  // raJ2000 .. azimuth
    want[120] = 2;                                                            // sizeUnit
    Fill(want, 133, {0xCD, 0xCC, 0xC7, 0x42});                                // magnitude 99.9f
    Fill(want, 137, {0xCD, 0xCC, 0xC7, 0x42});                                // magnitude2
    for (size_t off : {151, 155, 159, 163, 167, 179, 183, 187, 191, 195})
        Fill(want, off, {0, 0, 0x80, 0xBF});  // rise .. setObstructed, plannerTimes: -1
    want[205] = 255;                          // constellation not determined
    ObjectRecord r;
    r.pid = 7;
    initObjectRecord(&r);
    const auto image = RecordImage<ObjectRecordLayout>(r);
    for (size_t i = 0; i < want.size(); ++i) EXPECT_EQ(image[i], want[i]) << "byte " << i;
}

TEST(ObjectRecordTest, FieldsLandAtTheirOffsets) {
    ObjectRecord r;
    r.pid = 0x01020304;
    r.objectClass = 5;
    r.nameConstellation = 0x0A0B0C0D;
    r.classMask = 0x33f00;
    r.componentCode = 0x83;
    r.gridKey4 = 0xDEADBEEF;
    const auto image = RecordImage<ObjectRecordLayout>(r);
    const struct {
        size_t off;
        uint8_t value;
    } rows[] = {{141, 4}, {144, 1}, {145, 5}, {147, 0x0D}, {150, 0x0A},
                {201, 0x00}, {202, 0x3F}, {203, 0x03}, {207, 0x83}, {220, 0xEF}, {223, 0xDE}};
    for (const auto& row : rows) EXPECT_EQ(image[row.off], row.value) << row.off;
}

TEST(ObjectRecordTest, ClassMasks) {
    const struct {
        int objectClass;
        bool multiple, orbit, variable;
        uint32_t mask;
    } rows[] = {
        {1, 0, 0, 0, 1},        {2, 0, 0, 0, 2},        {3, 0, 0, 0, 4},       {13, 0, 0, 0, 4},
        {4, 0, 0, 0, 8},        {14, 0, 0, 0, 8},       {12, 0, 0, 0, 16},     {6, 0, 0, 0, 256},
        {7, 0, 0, 0, 512},      {8, 0, 0, 0, 1024},     {9, 0, 0, 0, 2048},    {10, 0, 0, 0, 4096},
        {11, 0, 0, 0, 8192},    {15, 0, 0, 0, 32768},   {16, 0, 0, 0, 0x10000}, {17, 0, 0, 0, 0x20000},
        {18, 0, 0, 0, 0x33f00}, {19, 0, 0, 0, 0},       {20, 0, 0, 0, 0},      {5, 0, 0, 0, 16},
        {5, 1, 0, 0, 32},       {5, 1, 1, 0, 64},       {5, 0, 0, 1, 128},     {5, 1, 1, 1, 192},
    };
    for (const auto& row : rows)
        EXPECT_EQ(classMaskOf(row.objectClass, row.multiple, row.orbit, row.variable), row.mask)
            << row.objectClass << row.multiple << row.orbit << row.variable;
    for (int c = 0; c <= 20; ++c)
        EXPECT_EQ(IsUserClass(c), c == 12 || c == 13 || c == 14 || c == 18) << c;
}

TEST(ObjectRecordTest, ComponentKeepsBitSeven) {
    ObjectRecord r;
    EXPECT_EQ(getComponent(&r), -1);
    r.componentCode = 0x80;
    setComponent(&r, 0);
    EXPECT_EQ(r.componentCode, 0x81);
    EXPECT_EQ(getComponent(&r), 0);
    setComponent(&r, 125);
    EXPECT_EQ(getComponent(&r), 125);
    EXPECT_EQ(r.componentCode & 0x80, 0x80);
}

TEST(ObjectRecordTest, AFixedPositionIsMadeWith16384AndReadAgainWith32768) {
    ObjectRecord r;
    makeFixedPosition(&r, 83.82 * kDeg, -5.39 * kDeg, 0, 0);
    EXPECT_EQ(r.objectClass, 15);
    EXPECT_EQ(r.classMask, 16384u);
    EXPECT_EQ(r.fixedRa, 500005776);  // 83.82 / 360 x 2147483647, rounded
    EXPECT_EQ(r.fixedDec, -32152602);
    ASSERT_EQ(refillByIdentity(&r, 0, 0, nullptr, nullptr), 1);
    EXPECT_EQ(r.classMask, 32768u);
    EXPECT_NEAR(r.raJ2000, 83.82 * kDeg, 1e-8);
    EXPECT_EQ(r.pid, 0u);
    EXPECT_EQ(r.magnitude2, 99.9f);
}

TEST(ClassNamesTest, FixedTablesAndDisplayLists) {
    EXPECT_STREQ(folderWord(0), "constellations");
    EXPECT_STREQ(folderWord(9), "bright nebulae");
    EXPECT_STREQ(folderWord(13), "");
    EXPECT_STREQ(bodyName(11), "Earth Shadow");
    EXPECT_STREQ(bodyName(-1), "");
    EXPECT_STREQ(browserGroupName(8), "Globular Clusters");
    for (int i = 0; i < kFolderWordRows; ++i) EXPECT_LT(std::strlen(folderWord(i)), 19u);
    for (int i = 0; i < kBrowserGroupRows; ++i) EXPECT_LT(std::strlen(browserGroupName(i)), 18u);
    const struct {
        int number;
        const char* text;
    } rows[] = {{8448 + 10, "Moon"}, {8464 + 19, "Fixed Positions"}, {8528 + 5, "Multple Star System"},
                {9233 + 18, "Glob"}, {8300 + 17, "Tycho-2"}, {8339, "Henize"}, {8340, "Haro"},
                {8347 + 52, "Raab"}, {8295 + 4, "Objective Prism"}};
    for (const auto& row : rows) EXPECT_STREQ(StringText(row.number), row.text) << row.number;
}

class StarObjectTest : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        setCatalogueRoots(".", ".", ".");
    }
};

TEST_F(StarObjectTest, AStarNeedsASiteAndInstantAndTakesItsPlaceFromTheFile) {
    {
        FilePtr f = OpenFile("stars.bin", "wb");
        LongStarRecord s;
        s.ra = 1665699270;  // Vega
        s.dec = 231353251;
        s.magnitudeCode = 163;
        s.pmRaCode = 750201;
        s.pmDecCode = 750287;
        WriteRecord<LongStarLayout>(f.get(), s);
    }
    ObjectRecord r;
    r.objectClass = kClassStar;
    r.pid = 1;
    EXPECT_EQ(refillByIdentity(&r, 0, 0, nullptr, nullptr), 0);
    Site site;
    char name[] = "Greenwich";
    SiteInit(&site, 0.0, 51.4779 * kDeg, 0, 6.0, 0, name);
    Instant instant;
    InstantSet(&instant, &site, 1, 1, 2000, 12.0, kUniversalTime);
    InstantScales(&instant, 0.0);
    InstantSidereal(&site, &instant);
    ASSERT_EQ(refillByIdentity(&r, 0, 0, &site, &instant), 1);
    EXPECT_NEAR(r.raJ2000, 279.2346 * kDeg, 1e-7);
    EXPECT_NEAR(r.magnitude, 0.03, 1e-6);
    EXPECT_EQ(r.classMask, 16u);
    EXPECT_GT(r.altitude, -std::numbers::pi / 2);
    EXPECT_NE(r.raApparent, r.raJ2000);
    r.pid = 0;  // not a star
    EXPECT_EQ(refillByIdentity(&r, 0, 0, &site, &instant), 0);
}

}  // namespace
