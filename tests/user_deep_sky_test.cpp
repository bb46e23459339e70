// What the user's deep-sky store does beyond the star store it shares its
// code with: its record and 32-bit count, the class words of its import
// lines, the class mask its objects take, and a PID index that a record
// doesn't make.
#include <filesystem>
#include <string>
#include <tuple>
#include <vector>

#include "astro/numeric.h"
#include "catalog/object_fill.h"
#include "catalog/user_deep_sky.h"
#include "support.h"
#include "user_object_bytes.h"

namespace {

constexpr double kArcmin = kRadiansPerDegree / 60.0;


// A 54-byte record written field by field at its offsets.
Bytes ObjectBytes(uint32_t pid, uint32_t ra, uint32_t dec, uint16_t magnitude, uint16_t pa, const std::string& name,
                  uint8_t objectClass, uint16_t major, uint16_t minor) {
    Bytes b;
    PutU32(b, pid);
    PutU32(b, ra);
    PutU32(b, dec);
    PutU16(b, magnitude);
    PutU16(b, pa);
    PutName(b, name);
    PutBytes(b, {objectClass});
    PutU16(b, major);
    PutU16(b, minor);
    return b;
}

Bytes StoreBytes(uint32_t count, uint32_t lastPid, const std::vector<Bytes>& records) {
    Bytes b;
    PutU32(b, count);
    PutU32(b, lastPid);
    for (const Bytes& r : records) b.insert(b.end(), r.begin(), r.end());
    return b;
}

// An import line: the class word and the name in their columns, then the
// fields from column 36.
std::string Line(const std::string& word, const std::string& name, const std::string& fields) {
    std::string line = word;
    line.resize(3, ' ');
    line += name;
    line.resize(35, ' ');
    return line + fields;
}

class UserDeepSkyTest : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        MakeDirs("user");
    }
};

TEST_F(UserDeepSkyTest, TheThreeFilesHoldTheBytesWrittenByHand) {
    FilePtr f = openUds(nullptr);
    ASSERT_TRUE(f);
    UdsRecord galaxy, group;
    ASSERT_EQ(makeUdsRecord(&galaxy, kClassGalaxy, "NGC 224", kPi / 2, kPi / 4, 3.44, 190.5, 61.7, 35), 1);
    ASSERT_EQ(makeUdsRecord(&group, kClassGalaxyGroup, "Hickson 44", kPi, -kPi / 4, -0.125, 0.125, 0, -12.5), 1);
    ASSERT_EQ(addOrReplaceUds(f.get(), &galaxy), 1);
    // Unlike the star store's, recording a PID makes no missing index.
    EXPECT_FALSE(std::filesystem::exists(kUdsPidPath));
    UdsRecord found;
    ASSERT_EQ(findUdsByPid(f.get(), 1, &found, nullptr), 1);
    ASSERT_EQ(addOrReplaceUds(f.get(), &group), 1);
    ASSERT_EQ(findUdsByName(f.get(), "hick", &found), 2);

    // 3.44 -> 344, 35 degrees -> 350 tenths, 190.5' -> 19050, 61.7' -> 6170;
    // -0.125 -> -13, 0.125' -> 13, -12.5 degrees -> -125 tenths.
    EXPECT_EQ(ReadFileBytes(kUdsPath),
              StoreBytes(2, 2, {ObjectBytes(1, 0x20000000, 0x10000000, 344, 350, "NGC 224", 6, 19050, 6170),
                                ObjectBytes(2, 0x40000000, 0xF0000000, 0xFFF3, 0xFF83, "Hickson 44", 16, 13, 0)}));
    EXPECT_EQ(ReadFileBytes(kUdsAlphaPath), AlphaBytes({{"HICKSON 44", 1}, {"NGC 224", 0}}));
    EXPECT_EQ(ReadFileBytes(kUdsPidPath), PidIndexBytes({2, 0, 1}));

    int objectClass = 0;
    std::string name;
    double ra, dec, magnitude, major, minor, pa;
    ASSERT_EQ(udsPlace(f.get(), 1, &objectClass, &name, &ra, &dec, &magnitude, &major, &minor, &pa), 1);
    EXPECT_EQ(objectClass, 6);
    EXPECT_EQ(name, "NGC 224");
    EXPECT_NEAR(magnitude, 3.44, 1e-12);
    EXPECT_NEAR(major, 190.5 * kArcmin, 1e-12);
    EXPECT_NEAR(minor, 61.7 * kArcmin, 1e-12);
    EXPECT_NEAR(pa, 35 * kRadiansPerDegree, 1e-12);
}

TEST_F(UserDeepSkyTest, TheClassWordOfALineNamesTheClass) {
    const std::string place = "00:42:44.3 +41:16:09 J2000 ";
    const struct {
        std::string line;
        int answer;
        int objectClass;
    } lines[] = {
        {Line("G", "NGC 224", place + "3.44 190.5 61.7 35"), 1, 6},
        {Line("GG", "Hickson 44", place + "9.5"), 1, 16},
        {Line("Q", "3C 273", place + "12.9"), 1, 7},
        {Line("PN", "NGC 7293", place + "7.3 16 12"), 1, 8},
        {Line("NE", "NGC 1976", place + "4"), 1, 9},
        {Line("DN", "B 33", place + "99.9 6 4"), 1, 17},
        {Line("OC", "M 45", place + "1.6"), 1, 10},
        {Line("GC", "M 13", place + "5.8 20"), 1, 11},
        {Line("G", "NGC 224", place), 0, 0},  // a name and a place, no magnitude
        {Line("G", "NGC 224", place + "bright"), 0, 0},
        {Line("G", "", place + "3.44"), 0, 0},
        {Line("G", "NGC 224", "00:42:44.3 +41:16:09 B 3.44"), 0, 0},
        {Line("G", "NGC 224", place + "3.44 400"), 0, 0},  // 400' does not fit its field
        {"GX NGC 224", -1, 0},
        {"GNGC 224", -1, 0},
        {"S  Vega", -1, 0},
        {"pn NGC 7293", -1, 0},
    };
    for (const auto& l : lines) {
        UdsRecord r;
        ASSERT_EQ(parseUdsLine(l.line.c_str(), &r), l.answer) << l.line;
        if (l.answer == 1) {
            EXPECT_EQ(r.objectClass, l.objectClass) << l.line;
        }
    }
    UdsRecord r;
    ASSERT_EQ(parseUdsLine(Line("OC", "M 45", place + "1.6").c_str(), &r), 1);
    EXPECT_EQ(std::string(r.name), "M 45");
    EXPECT_EQ(r.magnitude, 160);
    EXPECT_EQ(r.major, 0);
    EXPECT_EQ(r.minor, 0);
    EXPECT_EQ(r.positionAngle, 0);
}

TEST_F(UserDeepSkyTest, TheCascadeTakesTheMaskOfTheObjectsOwnClass) {
    WriteFileBytes(kUdsPath, StoreBytes(3, 3, {ObjectBytes(1, 0, 0, 0, 0, "Hickson 44", 16, 0, 0),
                                               ObjectBytes(2, 0, 0, 0, 0, "B 33", 17, 0, 0),
                                               ObjectBytes(3, 0, 0, 0, 0, "odd", 5, 0, 0)}));
    std::vector<std::tuple<int, uint32_t, uint32_t>> calls;
    const DeleteCascade record = [&](int c, uint32_t mask, uint32_t pid) { calls.emplace_back(c, mask, pid); };
    FilePtr f = openUds(nullptr);
    ASSERT_EQ(deleteUdsByPid(f.get(), 1, record), 1);
    ASSERT_EQ(compactUds(f, {1, 1}, record), 1);
    EXPECT_EQ(calls, (std::vector<std::tuple<int, uint32_t, uint32_t>>{
                         {18, 0x10000, 1}, {18, 0x10000, 1}, {18, 0x20000, 2}, {18, 0, 3}}));
    EXPECT_EQ(ReadFileBytes(kUdsPath), StoreBytes(0, 0, {}));
    EXPECT_FALSE(std::filesystem::exists(kUdsCompactPath));
}

TEST_F(UserDeepSkyTest, AnObjectReadByItsIdentityTakesItsOwnClassMaskAndTheLargerSize) {
    WriteFileBytes(kUdsPath, StoreBytes(2, 4, {ObjectBytes(3, 0x20000000, 0x10000000, 950, 0, "Hickson 44", 16, 200, 300),
                                               ObjectBytes(4, 0, 0, 0, 0, "no class", 0, 0, 0)}));
    ObjectRecord r;
    r.objectClass = kClassSupplementalDeepSky;
    r.pid = 3;
    ASSERT_EQ(refillByIdentity(&r, 0, 0, nullptr, nullptr), 1);
    EXPECT_EQ(r.classMask, 0x10000u);
    EXPECT_NEAR(r.raJ2000, kPi / 2, 1e-9);
    EXPECT_NEAR(r.decJ2000, kPi / 4, 1e-9);
    EXPECT_FLOAT_EQ(r.magnitude, 9.5f);
    EXPECT_FLOAT_EQ(r.sizeMajor, static_cast<float>(2 * kArcmin));
    EXPECT_FLOAT_EQ(r.sizeMinor, static_cast<float>(3 * kArcmin));
    EXPECT_FLOAT_EQ(r.sizeDefault, static_cast<float>(3 * kArcmin));
    r.pid = 4;
    ASSERT_EQ(refillByIdentity(&r, 0, 0, nullptr, nullptr), 1);
    EXPECT_EQ(r.classMask, 0x33f00u);  // a class byte of no deep-sky class leaves them all
    r.pid = 5;
    EXPECT_EQ(refillByIdentity(&r, 0, 0, nullptr, nullptr), 0);
}

TEST_F(UserDeepSkyTest, AFilteredPassKeepsTheObjectsWithinItsLimits) {
    // M 13, M 31 and a faint galaxy without a size, and a place of no
    // magnitude; a meter step after every twentieth, here every row.
    WriteFileBytes(kUdsPath,
                   StoreBytes(4, 4, {ObjectBytes(1, 0x5909C8EE, 0x0CF6AB94, 580, 0, "M 13", 11, 2000, 2000),
                                     ObjectBytes(2, 0x03CC1E0A, 0x0EAC7CB3, 344, 350, "M 31", 6, 19050, 6170),
                                     ObjectBytes(3, 0x03E93E94, 0x0EC16C17, 1500, 0, "faint", 6, 0, 0),
                                     ObjectBytes(4, 0, 0, 9990, 0, "none", 6, 100, 100)}));
    const struct {
        const char* what;
        SupplementalScanLimits limits;
        std::vector<int64_t> pids;
    } cases[] = {
        {"no limits", {}, {1, 2, 3, 4}},
        {"brighter than 10", [] { SupplementalScanLimits l; l.magnitudeHigh = 10; return l; }(), {1, 2}},
        {"fainter than 5", [] { SupplementalScanLimits l; l.magnitudeLow = 5; return l; }(), {1, 3}},
        {"galaxies", [] { SupplementalScanLimits l; l.classMask = 256; return l; }(), {2, 3, 4}},
        {"major up to 60'", [] { SupplementalScanLimits l; l.majorLimit = 60 * kArcmin; return l; }(), {1, 4}},
        {"within 5 degrees of M 31", [] {
             SupplementalScanLimits l;
             l.flags = kScanDistance;
             l.centreRa = 10.68 * kRadiansPerDegree;
             l.centreDec = 41.27 * kRadiansPerDegree;
             l.distance = 5 * kRadiansPerDegree;
             return l;
         }(), {2, 3}},
    };
    for (const auto& c : cases) {
        SupplementalScan scan;
        ASSERT_EQ(beginUdsScan(&scan, c.limits), 1);
        std::vector<int64_t> pids;
        int progress = 0;
        for (int64_t a; (a = nextUdsScan(&scan)) != 0;) {
            if (a == kScanProgress)
                ++progress;
            else
                pids.push_back(a);
        }
        endUdsScan(&scan);
        EXPECT_EQ(pids, c.pids) << c.what;
        EXPECT_EQ(progress, 3) << c.what;
    }
    int cancel = 1;
    SupplementalScanLimits stop;
    stop.cancel = &cancel;
    SupplementalScan scan;
    ASSERT_EQ(beginUdsScan(&scan, stop), 1);
    EXPECT_EQ(nextUdsScan(&scan), 0);
}

}  // namespace
