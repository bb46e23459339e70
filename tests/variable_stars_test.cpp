// The variable-star files: names found in their constellation's run, the
// record's values from hand-made bytes, and the NSV rows and magnitudes.
#include <algorithm>

#include "catalog/catalogue_roots.h"
#include "catalog/variable_stars.h"
#include "support.h"

namespace {

template <class Layout, class R>
void Append(Bytes& file, const R& record) {
    const auto image = RecordImage<Layout>(record);
    file.insert(file.end(), image.begin(), image.end());
}

VariableRecord Named(int constellation, long number) {
    VariableRecord r;
    r.constellation1 = static_cast<uint8_t>(constellation);
    r.add9000First = number >= 9000;
    r.number1 = static_cast<uint32_t>(number % 9000);
    r.star1 = static_cast<uint32_t>(constellation * 1000 + number % 1000);  // tells rows apart
    return r;
}

class VariableFilesTest : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        MakeDirs("stars");
        setCatalogueRoots("small", "stars", "gsc-root");
        // Constellation 1: rows 1, 2. Constellation 2: rows 3 to 6, the
        // searched names last and out of order.
        Bytes index, vref;
        Append<VariableIndexLayout>(index, VariableIndexRow{0, 0, 2});
        Append<VariableIndexLayout>(index, VariableIndexRow{2 * 59, 0, 4});
        for (const auto& [c, n] : {std::pair{1, 1L}, {1, 2L}, {2, 1L}, {2, 2L}, {2, 9101L}, {2, 9017L}}) {
            Append<VariableRecordLayout>(vref, Named(c, n));
        }
        WriteFileBytes("stars/vindex.bin", index);
        WriteFileBytes("stars/vref.bin", vref);
        files_ = openVariables();
        ASSERT_TRUE(files_);
    }
    VariableFilesPtr files_;
};

TEST_F(VariableFilesTest, NamesAreReadAtTheirPlaceOrSearchedAndCheckedAgainstTheRecord) {
    struct Case { int constellation; long number; long row; };
    const Case cases[] = {
        {1, 2, 2},      // at offset + (n - 1) x 59
        {2, 2, 4},
        {2, 9017, 6},   // searched through the run
        {2, 9101, 5},
        {2, 3, 0},      // row 5 carries 9101: the name check refuses it
        {2, 9018, 0},   // not in the run
        {3, 1, 0},      // no vindex row
        {0, 1, 0},
    };
    for (const Case& c : cases) {
        VariableData v;
        EXPECT_EQ(readVariable(files_.get(), c.constellation, c.number, &v), c.row != 0)
            << c.constellation << " " << c.number;
        EXPECT_EQ(v.row, c.row) << c.constellation << " " << c.number;
    }
}

TEST_F(VariableFilesTest, AListOfNamesStopsAtTheFirstOneNotFound) {
    const VariableName names[] = {{1, 2}, {2, 9101}, {2, 3}, {1, 1}};
    VariableData out[4];
    EXPECT_EQ(readVariables(files_.get(), names, 4, out), 2);
    EXPECT_EQ(out[0].star1, 1002);
    EXPECT_EQ(out[1].star1, 2101);
    EXPECT_EQ(out[2].row, 0);

    VariableName many[10];
    std::fill(many, many + 10, VariableName{1, 1});
    VariableData tenOut[10];
    EXPECT_EQ(readVariables(files_.get(), many, 10, tenOut), 8);  // at most 8 a call
    closeVariables(files_);
    EXPECT_FALSE(files_);
}

TEST_F(ScratchTest, VrefRecordReadFromHandMadeBytesAndRowsEndAt28485) {
    const Bytes record = {
        0x00, 0x00, 0x00, 0x20,  // RA 2^29: a quarter turn
        0x55, 0x55, 0x55, 0xF5,  // Dec -178956971: -30 degrees
        0x50, 0xF8, 0x0C,        // pmRa code 850000: +1"/yr
        0x60, 0xAE, 0x0A,        // pmDec code 700000: -0.5"/yr
        0x05, 0x03, 0xF0, 0xFF,  // second name: constellation 5, number 3; min unknown
        0x85, 0x11, 0x40, 0x29,  // first name: 5, 9000 + 17; max code 660
        0x50, 0x62, 0x25, 0xFF,  // epoch JD 2450000
        0x00, 0x00, 0x80, 0x3E,  // + 0.25
        0x00, 0x00, 0xC9, 0x42,  // period 100.5 days
        0x00, 0x00, 0x00, 0x00, 0x00,
        0x87, 0xD6, 0x12, 0x00,  // star 1234567
        0x02, 0x01, 0x00, 0x00,  // star 258
    };
    Bytes file(59 * 28486, 0);  // one row more than there may be
    std::copy(record.begin(), record.end(), file.begin() + 59);
    WriteFileBytes("vref.bin", file);
    FilePtr f = OpenFile("vref.bin", "rb");
    VariableData v;
    ASSERT_EQ(readVariableRow(f.get(), 2, &v), 1);
    EXPECT_NEAR(v.ra, 1.5707963268, 2e-9);
    EXPECT_NEAR(v.dec, -0.5235987756, 1e-8);
    EXPECT_NEAR(v.pmRa, 5.5981462e-6, 1e-12);  // 1" / cos 30
    EXPECT_NEAR(v.pmDec, -2.4240684e-6, 1e-12);
    EXPECT_EQ(v.name.constellation, 5);
    EXPECT_EQ(v.name.number, 9017);
    EXPECT_EQ(v.name2.number, 3);
    EXPECT_NEAR(v.maxMagnitude, 5.0, 1e-9);
    EXPECT_EQ(v.minMagnitude, 99.9);
    EXPECT_DOUBLE_EQ(v.epoch, 2450000.25);
    EXPECT_DOUBLE_EQ(v.period, 100.5);
    EXPECT_EQ(v.star1, 1234567);
    EXPECT_EQ(v.star2, 258);
    EXPECT_EQ(readVariableRow(f.get(), 28485, &v), 1);
    EXPECT_EQ(readVariableRow(f.get(), 28486, &v), 0);
}

TEST_F(ScratchTest, NsvRowsAndTheSuffixRowFromHandMadeBytes) {
    Bytes file(26 * 14813, 0);
    const Bytes nsv2 = {0, 0, 0, 0, 0, 0, 0, 0,
                        0x50, 0x25, 0x0D, 0x7F,  // codes 1360 (12.0) and 210 (0.5), top 0x7F
                        0x02, 0x01, 0x00,        // star 258
                        0x03, 0x00, 0x00};
    std::copy(nsv2.begin(), nsv2.end(), file.begin() + 26);
    file[26 * 14812 + 12] = 0x09;  // the suffix row's first star
    WriteFileBytes("nsvref.bin", file);
    FilePtr f = OpenFile("nsvref.bin", "rb");
    NsvData n;
    ASSERT_EQ(readNsv(f.get(), 2, ' ', &n), 1);
    EXPECT_NEAR(n.magnitude1, 12.0, 1e-9);
    EXPECT_NEAR(n.magnitude2, 12.5, 1e-9);  // the amplitude is added
    EXPECT_EQ(n.star1, 258);
    EXPECT_EQ(n.star2, 3);
    ASSERT_EQ(readNsv(f.get(), 2, 'a', &n), 1);
    EXPECT_EQ(n.row, 14812);
    EXPECT_EQ(n.star1, 9);
    EXPECT_EQ(readNsv(f.get(), 0, ' ', &n), 0);
}

TEST(NsvMagnitudes, ASecondValueBelowTheFirstIsAnAmplitude) {
    struct Case { uint32_t code1, code2; double m1, m2; };
    const Case cases[] = {
        {1360, 210, 12.0, 12.5},    // amplitude 0.5
        {1360, 1460, 12.0, 13.0},   // a range
        {1360, 0xFFF, 12.0, 99.9},  // unknown second
        {0xFFF, 210, 99.9, 0.5},    // unknown first: nothing added
    };
    for (const Case& c : cases) {
        NsvRecord r;
        r.magnitudeCode1 = c.code1;
        r.magnitudeCode2 = c.code2;
        NsvData n;
        decodeNsv(r, &n);
        EXPECT_NEAR(n.magnitude1, c.m1, 1e-9) << c.code1 << " " << c.code2;
        EXPECT_NEAR(n.magnitude2, c.m2, 1e-9) << c.code1 << " " << c.code2;
    }
}

}  // namespace
