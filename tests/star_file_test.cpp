// The main star file: both record forms read from bytes placed by hand, the
// boundary at record 1121815, and the codes of magnitude, motion and
// spectral type.
#include <cmath>
#include <cstdio>
#include <numbers>

#include "base/le_bytes.h"
#include "catalog/catalogue_codes.h"
#include "catalog/catalogue_files.h"
#include "catalog/catalogue_roots.h"
#include "catalog/star_file.h"
#include "support.h"

namespace {

constexpr double kArcsec = std::numbers::pi / 648000.0;


// A long record with every field set to a value of its own, so that a field
// read at the wrong offset or shift shows.
Bytes HandLongRecord() {
    Bytes r(77, 0);
    PokeU32(r, 0, 0x12345678);
    PokeU32(r, 4, 0xF0000001);                        // a negative declination
    PokeU32(r, 8, 750000u | (123u << 21));            // pmRa zero, csn row 123
    PokeU32(r, 12, 760000u | (45u << 21));            // pmDec +0.1"/yr, text row 45
    PokeU16(r, 16, 0x1A6);                            // K1.6
    PokeU32(r, 18, 102000u | (7001u << 18));          // parallax 0.1", HR 7001
    PokeU16(r, 22, 250);
    PokeU16(r, 24, 0xFFF6);                           // -10 tenths
    PokeU16(r, 26, 0xFFFF);                           // colour -0.001
    PokeU32(r, 28, 91262u | (2u << 17));              // HIP 91262, vref 2
    PokeU32(r, 32, 5u | (1u << 20) | (1u << 21) | (0xABu << 24));  // PPM 1100005
    PokeU32(r, 36, 172167u | (3u << 19));
    PokeU32(r, 40, 67174u | (888u << 18));            // SAO, NSV 888
    PokeU32(r, 44, 0x11111111);
    PokeU32(r, 48, 0x22222222);
    PokeU32(r, 52, 0x33333333);
    PokeU16(r, 56, 25466);                            // GC
    PokeU32(r, 58, 163u | (37368u << 11) | (9u << 28));  // V 0.03, CCDM row
    PokeU32(r, 62, 1234u | (4663u << 14) | (2u << 28));  // GSC/Tycho
    r[66] = 3;                                      // Flamsteed 3
    r[67] = 51 | (1 << 7);                          // Lyr; letter bit 15 = 1 (Alpha)
    r[68] = 0x20;                                   // superscript 2 in bits 20 to 23
    r[76] = 'x';
    return r;
}

TEST(StarRecordTest, LongRecordFieldsComeFromTheirOffsetsAndBits) {
    LongStarRecord r;
    DecodeRecord<LongStarLayout>(HandLongRecord().data(), r);
    const struct {
        const char* field;
        long long got, want;
    } rows[] = {
        {"ra", r.ra, 0x12345678},        {"dec", r.dec, static_cast<int32_t>(0xF0000001)},
        {"pmRaCode", r.pmRaCode, 750000}, {"csnRow", r.csnRow, 123},
        {"pmDecCode", r.pmDecCode, 760000}, {"textRow", r.textRow, 45},
        {"spectralCode", r.spectralCode, 0x1A6}, {"parallaxCode", r.parallaxCode, 102000},
        {"hr", r.hr, 7001},              {"parallaxError", r.parallaxError, 250},
        {"tenthsValue", r.tenthsValue, -10}, {"colour", r.colour, -1},
        {"hip", r.hip, 91262},           {"vrefIndex", r.vrefIndex, 2},
        {"ppmLow", r.ppmLow, 5},         {"qualityCode", r.qualityCode, 0xAB},
        {"hd", r.hd, 172167},            {"hdFurther", r.hdFurther, 3},
        {"sao", r.sao, 67174},           {"nsv", r.nsv, 888},
        {"bd", r.bd, 0x11111111},        {"cd", r.cd, 0x22222222},
        {"cp", r.cp, 0x33333333},        {"gc", r.gc, 25466},
        {"magnitudeCode", r.magnitudeCode, 163}, {"ccdmRow", r.ccdmRow, 37368},
        {"furtherCode", r.furtherCode, 9}, {"gscNumber", r.gscNumber, 1234},
        {"gscRegion", r.gscRegion, 4663}, {"tychoComponent", r.tychoComponent, 2},
        {"flamsteed", r.flamsteed, 3},   {"designationConstellation", r.designationConstellation, 51},
        {"bayerLetter", r.bayerLetter, 1}, {"bayerSuperscript", r.bayerSuperscript, 2},
        {"charCode", r.charCode, 'x'},
    };
    for (const auto& row : rows) EXPECT_EQ(row.got, row.want) << row.field;
    // And the writer puts every field back where it came from.
    const auto image = RecordImage<LongStarLayout>(r);
    const Bytes hand = HandLongRecord();
    for (size_t i = 0; i < hand.size(); ++i) EXPECT_EQ(image[i], hand[i]) << "byte " << i;
}

TEST(StarRecordTest, DecodedValuesOfALongRecord) {
    LongStarRecord r;
    DecodeRecord<LongStarLayout>(HandLongRecord().data(), r);
    StarData s;
    decodeLongStar(r, &s, kReadAll);
    EXPECT_NEAR(s.ra, 0x12345678 * 2 * std::numbers::pi / 2147483647.0, 1e-15);
    EXPECT_EQ(s.ppm, 1100005u);  // low bits + 700000 + 400000
    EXPECT_NEAR(s.magnitude, 0.03, 1e-9);
    EXPECT_NEAR(s.colour, -0.001, 1e-12);
    EXPECT_NEAR(s.parallax, 0.1, 1e-12);
    EXPECT_NEAR(s.pmDec, 0.1 * kArcsec, 1e-15);
    EXPECT_NEAR(s.pmRa, 0.0, 1e-18);
    EXPECT_EQ(s.name, "");  // a long record's name comes from csn
}

TEST(StarRecordTest, RightAscensionMotionIsDividedByTheCosineOfDeclination) {
    LongStarRecord r;
    r.dec = radiansToScaledAngle(60.0 * std::numbers::pi / 180.0);
    r.pmRaCode = 760000;  // 0.1" a year on the sky
    StarData s;
    decodeLongStar(r, &s, kReadProperMotion);
    EXPECT_NEAR(s.pmRa, 0.2 * kArcsec, 1e-9 * kArcsec);
}

TEST(StarRecordTest, TheReadMaskLeavesOutWhatIsNotAskedFor) {
    LongStarRecord r;
    DecodeRecord<LongStarLayout>(HandLongRecord().data(), r);
    StarData s;
    decodeLongStar(r, &s, kReadPosition);
    EXPECT_EQ(s.hr, 0u);
    EXPECT_EQ(s.magnitude, 99.9);
    EXPECT_EQ(s.spectral, "");
    EXPECT_NE(s.ra, 0.0);
}

TEST(StarRecordTest, ShortRecordFieldsAndItsTychoName) {
    Bytes b(22, 0);
    PokeU32(b, 0, 1000);
    PokeU32(b, 4, 0xFFFFFC18);  // -1000
    PokeU32(b, 8, 750000u | (0x7FFu << 21));  // magnitude unknown
    PokeU32(b, 12, 740000u | (17u << 21));
    PokeU16(b, 16, 32767);
    PokeU32(b, 18, 56u | (9537u << 14) | (3u << 28));
    ShortStarRecord r;
    DecodeRecord<ShortStarLayout>(b.data(), r);
    StarData s;
    decodeShortStar(r, &s, kReadAll);
    EXPECT_EQ(r.dec, -1000);
    EXPECT_EQ(r.qualityCode, 17u);
    EXPECT_EQ(s.magnitude, 99.9);
    EXPECT_EQ(s.colour, 99.9);
    EXPECT_NEAR(s.pmDec, -0.1 * kArcsec, 1e-15);
    EXPECT_EQ(s.name, "TYC 09537-0056 3");
    EXPECT_EQ(s.hr, 0u);
}

TEST(StarRecordTest, RecordPlacesAroundTheFormBoundary) {
    const struct {
        long number;
        long offset;
        bool isShort;
    } rows[] = {
        {0, -1, false},
        {1, 0, false},
        {2, 77, false},
        {1121814, 1121813L * 77, false},
        {1121815, 1121814L * 77, true},  // long place, short form
        {1121816, 86379755, true},
        {1121817, 86379777, true},
        {2591873, 86379755 + (2591873L - 1121816) * 22, true},
        {2591874, -1, true},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(starRecordOffset(row.number), row.offset) << row.number;
        if (row.offset >= 0) {
            EXPECT_EQ(starIsShortForm(row.number), row.isShort) << row.number;
        }
    }
}

class StarFileTest : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        setCatalogueRoots(".", ".", ".");
    }
};

// A sparse file: the short record 1121815 sits at its long place, 1121816
// at the start of the short records.
TEST_F(StarFileTest, Record1121815IsReadInTheShortFormFromItsLongPlace) {
    {
        FilePtr f = OpenFile("stars.bin", "wb");
        ShortStarRecord a;
        a.gscRegion = 11;
        a.gscNumber = 15;
        a.tychoComponent = 1;
        ShortStarRecord b;
        b.gscRegion = 12;
        b.gscNumber = 16;
        b.tychoComponent = 1;
        std::fseek(f.get(), 1121814L * 77, SEEK_SET);
        WriteRecord<ShortStarLayout>(f.get(), a);
        std::fseek(f.get(), 86379755L, SEEK_SET);
        WriteRecord<ShortStarLayout>(f.get(), b);
        b.gscNumber = 17;
        WriteRecord<ShortStarLayout>(f.get(), b);
    }
    FilePtr f = openStars();
    ASSERT_TRUE(f);
    StarData s;
    ASSERT_EQ(readStar(f.get(), 1121815, &s, kReadAll), 1);
    EXPECT_TRUE(s.isShort);
    EXPECT_EQ(s.name, "TYC 00011-0015 1");
    ASSERT_EQ(readStar(f.get(), 1121816, &s, kReadAll), 1);
    EXPECT_EQ(s.name, "TYC 00012-0016 1");
    ASSERT_EQ(readStar(f.get(), -1, &s, kReadAll), 1);  // the next short record
    EXPECT_EQ(s.number, 1121817);
    EXPECT_EQ(s.name, "TYC 00012-0017 1");
    ASSERT_EQ(readStar(f.get(), 1121814, &s, kReadAll), 1);
    EXPECT_FALSE(s.isShort);
    EXPECT_EQ(readStar(f.get(), 1121818, &s, kReadAll), 0);  // past the end
    EXPECT_EQ(readStar(f.get(), 0, &s, kReadAll), 0);
}

TEST_F(StarFileTest, NextRecordFollowsTheLastOne) {
    {
        FilePtr f = OpenFile("stars.bin", "wb");
        for (uint32_t hr = 1; hr <= 3; ++hr) {
            LongStarRecord r;
            r.hr = hr;
            WriteRecord<LongStarLayout>(f.get(), r);
        }
    }
    FilePtr f = openStars();
    StarData s;
    ASSERT_EQ(readStar(f.get(), 2, &s, kReadAll), 1);
    ASSERT_EQ(readStar(f.get(), -1, &s, kReadAll), 1);
    EXPECT_EQ(s.number, 3);
    EXPECT_EQ(s.hr, 3u);
    EXPECT_EQ(readStar(f.get(), -1, &s, kReadAll), 0);
}

TEST_F(StarFileTest, AFailedOrShortReadFindsNoStar) {
    {
        FilePtr f = OpenFile("stars.bin", "wb");
        WriteRecord<LongStarLayout>(f.get(), LongStarRecord{});
    }
    FilePtr f = openStars();
    StarData s;
    for (const FileFault fault : {FileFault::kFail, FileFault::kShort}) {
        ScopedFault armed(FileOp::kRead, 1, fault);
        EXPECT_EQ(readStar(f.get(), 1, &s, kReadAll), 0);
    }
    EXPECT_EQ(readStar(f.get(), 1, &s, kReadAll), 1);
}

TEST_F(StarFileTest, AMissingFileDoesNotOpenAndPathsJoinRootAndName) {
    EXPECT_FALSE(openStars());
    WriteFileBytes("notes.bin", Bytes(6, 0));
    EXPECT_TRUE(openCatalogue(kCatNotes));
    EXPECT_EQ(catalogueFilePath(kCatCsnAlp), "./csn_alp.bin");
}

TEST(CatalogueFilesTest, NamesAndRootsOfTheFileTable) {
    setCatalogueRoots("small\\\\data", "stars/", "g");
    const struct {
        int id;
        const char* path;
    } rows[] = {
        {kCatStars, "stars/stars.bin"},   {kCatCsnAlp, "small/data/csn_alp.bin"},
        {kCatTycho, "stars/tycho.bin"},   {kCatStruve, "stars/struve.bin"},
        {36, "small/data/pln.bin"},       {84, "stars/nebother.bin"},
    };
    for (const auto& row : rows) EXPECT_EQ(catalogueFilePath(row.id), row.path) << row.id;
    EXPECT_EQ(catalogueFileName(84), "nebother");
    EXPECT_EQ(catalogueFileName(63), "Minkowski");
    EXPECT_EQ(gscRegionPath("S0000", 1), "g/gsc/S0000/0001.bin");
}

TEST(CatalogueCodesTest, SpectralText) {
    const struct {
        uint16_t code;
        const char* text;
    } rows[] = {
        {3 | 10 << 4 | 5 << 11, "A0"},        // dwarfs stay unmarked
        {6 | 10 << 4 | 3 << 11, "K0III"},
        {2 | 35 << 4 | 3 << 11, "B2.5 III"},
        {5 | 30 << 4 | 4 << 11, "G2IV"},
        {1 | 0 << 4 | 1 << 11, "OI"},
        {7 | 40 << 4 | 2 << 11, "M3II"},
        {0 | 20 << 4, ""},
        {15 | 20 << 4, ""},
    };
    for (const auto& row : rows) EXPECT_EQ(spectralText(row.code), row.text) << row.code;
}

TEST(CatalogueCodesTest, CodesAndTheirUnknowns) {
    EXPECT_EQ(starMagnitudeFromCode(0x7FF), 99.9);
    EXPECT_NEAR(starMagnitudeFromCode(0), -1.6, 1e-12);
    EXPECT_EQ(starMagnitudeCode(0.03), 163u);
    EXPECT_EQ(starMagnitudeCode(99.9), 0x7FFu);
    EXPECT_EQ(properMotionCode(-0.287), 721300u);
    EXPECT_EQ(parallaxCode(0.1289), 104890u);
    EXPECT_EQ(thousandthsValue(32767), 99.9);
    EXPECT_EQ(radiansToScaledAngle(std::numbers::pi), 1073741824);  // 1073741823.5 away from 0
    EXPECT_EQ(radiansToScaledAngle(-std::numbers::pi), -1073741824);
}

}  // namespace
