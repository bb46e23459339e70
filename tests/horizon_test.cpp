#include <cmath>

#include "stores/horizon.h"
#include "support.h"

namespace {

constexpr double kDeg = 0.017453292519943295;

class HorizonTest : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        MakeDirs("user");
    }
    static Site At(const char* name, double latDeg, double height) {
        Site s;
        std::string n = name;
        SiteInit(&s, 0.0, latDeg * kDeg, height, 6.5, 0.0, n.data());
        return s;
    }
};

TEST_F(HorizonTest, CreateWritesSixtyOneRowsAtTenDegreesClosingOnRowZero) {
    const Site site = At("Ridge", 40.0, 0.0);
    ASSERT_EQ(HorizonCreate(site), 1);
    const Bytes b = ReadFileBytes("user/horizons/Ridge.bin");
    ASSERT_EQ(b.size(), 1464u);
    for (int i = 0; i < 61; ++i) {
        const double az = PeekF64(b, i * 24);
        EXPECT_NEAR(az, (i % 60) * 6.0 * kDeg, 1e-12) << i;
        EXPECT_EQ(PeekF64(b, i * 24 + 8), 0.17453292519943295) << i;
    }
    EXPECT_EQ(PeekF64(b, 60 * 24), 0.0);
    // Latitude 40, altitude 10: toward azimuth 0 the limit is 90 - (40 - 10)
    // = 60 degrees, toward azimuth 180 it is -(90 - 40 - 10) = -40 degrees.
    EXPECT_NEAR(PeekF64(b, 16) / kDeg, 60.0, 1e-9);
    EXPECT_NEAR(PeekF64(b, 30 * 24 + 16) / kDeg, -40.0, 1e-9);
    EXPECT_EQ(PeekF64(b, 60 * 24 + 16), PeekF64(b, 16));
}

TEST_F(HorizonTest, LimitsCountFromTheDippedHorizonOfARaisedSite) {
    // 10000 m: dip -0.061668 rad, so the 10-degree obstruction stands
    // 10 - 3.53331 degrees above the apparent horizon.
    const Site site = At("Summit", 40.0, 10000.0);
    ASSERT_EQ(HorizonCreate(site), 1);
    HorizonTable t;
    ASSERT_EQ(HorizonLoad(site, t), 1);
    const double a = 10.0 - 0.061668 / kDeg;
    EXPECT_NEAR(t[0].declinationLimit / kDeg, 90.0 - (40.0 - a), 1e-9);
    EXPECT_NEAR(t[30].declinationLimit / kDeg, -(90.0 - 40.0 - a), 1e-9);
}

TEST_F(HorizonTest, FileIsKeyedByTheEscapedNameAndOnlyCreateMakesIt) {
    EXPECT_FALSE(HorizonOpen("North/South: 2"));
    EXPECT_TRUE(FileExists("user/horizons"));  // the folder is made, the file not
    ASSERT_EQ(HorizonCreate(At("North/South: 2", 10.0, 0.0)), 1);
    EXPECT_TRUE(FileExists("user/horizons/North&South@ 2.bin"));
    EXPECT_TRUE(HorizonExists("North/South: 2"));
    EXPECT_EQ(HorizonDelete("North/South: 2"), 1);
    EXPECT_FALSE(HorizonExists("North/South: 2"));
    EXPECT_EQ(HorizonDelete("North/South: 2"), 0);
    std::filesystem::remove_all("user");
    EXPECT_FALSE(HorizonOpen("Nowhere"));
}

TEST_F(HorizonTest, SecondTableLiesBehindTheFirstAndMustBeWhole) {
    ASSERT_EQ(HorizonCreate(At("Two", 0.0, 0.0)), 1);
    FilePtr f = HorizonOpen("Two");
    ASSERT_TRUE(f);
    HorizonTable first, second;
    ASSERT_EQ(HorizonReadTable(f.get(), first, 0), 1);
    EXPECT_EQ(HorizonReadTable(f.get(), second, 1), 0);  // a new file ends after table 0
    for (int i = 0; i < kHorizonRows; ++i) second[i] = HorizonRow{i * 1.0, 0.25, -0.5};
    ASSERT_EQ(HorizonWriteTable(f.get(), second, 7), 1);  // any nonzero selects table 1
    f.reset();
    const Bytes b = ReadFileBytes("user/horizons/Two.bin");
    ASSERT_EQ(b.size(), 2928u);
    EXPECT_EQ(PeekF64(b, 1464 + 24 * 3), 3.0);
    EXPECT_EQ(PeekF64(b, 1464 + 24 * 3 + 8), 0.25);
    f = HorizonOpen("Two");
    HorizonTable again;
    ASSERT_EQ(HorizonReadTable(f.get(), again, 0), 1);
    EXPECT_EQ(again[5].azimuth, first[5].azimuth);
    EXPECT_EQ(again[5].declinationLimit, first[5].declinationLimit);
}

}  // namespace
