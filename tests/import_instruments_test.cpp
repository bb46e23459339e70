#include <cstring>

#include "job_support.h"
#include "legacy/import_instruments.h"

namespace {

// Version 1.x instrument images written by hand at the documented offsets:
// 1705-byte records, two 821-byte systems from 31 and 852, each with its
// eyepiece count at 58 and 60-byte slots from 59.
constexpr size_t kSystem[2] = {31, 852};
constexpr size_t kSlots = 59;

// The version 2 store: header of 4, records of 8750, systems at 31 and
// 4374 with slots from 101.
constexpr size_t kStoreRecord = 8750;
constexpr size_t kStoreSystem[2] = {31, 4374};

// Record i of the store file.
Bytes StoredRecord(int i) {
    return Slice(ReadFileBytes("user/instr.bin"), 4 + kStoreRecord * i, kStoreRecord);
}

class ImportInstrumentsTest : public JobTest {
protected:
    void SetUp() override {
        JobTest::SetUp();
        MakeDirs("user");
        MakeDirs("legacy");
        WriteFileBytes("user/instr.bin", InstrumentStoreBytes({}));
    }
    int Run(std::vector<uint8_t> ticks) { return RunJob(ImportInstruments, &ticks); }
    int RunAll(size_t rows) { return Run(std::vector<uint8_t>(rows, 1)); }
};

TEST_F(ImportInstrumentsTest, RecordIsWidenedFieldByField) {
    WriteFileBytes("eyep.bin", PoolBytes(12, {{"Plossl 25mm", 25.0f, 52.0f, 11},
                                              {"Barlowed 9mm", 9.0f, 60.0f, 12}}));
    Bytes in = LegacyInstrumentBytes("Big Dob", 2, 3);
    in[3] = 0x11;  // spare
    in[5] = 1;     // finder flag
    for (size_t i = 6; i < 30; ++i) in[i] = static_cast<uint8_t>(0x30 + i);  // six f32 circles
    in[30] = 255;
    const size_t m = kSystem[0];
    PokeF64(in, m, 254.0);
    PokeF64(in, m + 8, 1200.0);
    PokeF64(in, m + 16, 4.724409448818897);
    in[m + 24] = 0;
    in[m + 25] = 1;
    std::memcpy(&in[m + 26], "ABCDEFGHIJKLMNOPQRSTUVWXYZ012345", 32);  // no terminator
    AddLegacySlot(in, 0, "Plossl 25mm", 25.0, 52.0);
    AddLegacySlot(in, 0, "Barlowed 9mm", 9.0, 60.0);
    PokeF64(in, m + kSlots + 60 + 16, 2.5);  // barlow
    in[m + kSlots + 60 + 24] = 1;            // mirror diagonal
    in[m + kSlots + 60 + 25] = 0x44;         // slot spare
    PokeF64(in, m + 779, 13.1);
    PokeF64(in, m + 787, 550.0);
    PokeF64(in, m + 795, 0.456);
    in[m + 803] = 7;
    PokeF64(in, m + 804, 48.0);
    PokeF64(in, m + 812, 0.0189);
    in[m + 820] = 0x99;
    const size_t f = kSystem[1];
    PokeF64(in, f, 50.0);
    PokeF64(in, f + 8, 200.0);
    std::memcpy(&in[f + 26], "Finder", 6);
    in[f + 820] = 0x22;
    WriteFileBytes("legacy/instr.bin", LegacyInstrumentFile({in}));

    ASSERT_EQ(RunAll(1), 1);
    EXPECT_EQ(OnlyMessage(), Plain("Imported 1 of 1, 0 skipped"));
    EXPECT_EQ(ReadFileText("ferry2.log"), "");
    const Bytes out = StoredRecord(0);
    // The store's first id, two systems, the spare, kind 3 as binoculars, the finder flag.
    EXPECT_EQ(Slice(out, 0, 6), (Bytes{1, 0, 2, 0x11, 1, 1}));
    EXPECT_EQ(Slice(out, 6, 24), Slice(in, 6, 24));  // the circles bit for bit
    EXPECT_EQ(out[30], 0);  // 255, none chosen, becomes 0

    const size_t om = kStoreSystem[0];
    EXPECT_EQ(out[om], 1);  // every system comes in as a refractor
    EXPECT_EQ(Slice(out, om + 1, 24), Slice(in, m, 24));
    EXPECT_EQ(Slice(out, om + 25, 2), (Bytes{0, 1}));
    EXPECT_EQ(Slice(out, om + 27, 8), Bytes(8, 0));  // condition 0.0
    EXPECT_EQ(Slice(out, om + 35, 32), Slice(in, m + 26, 32));
    EXPECT_EQ(Slice(out, om + 67, 33), Bytes(33, 0));
    EXPECT_EQ(out[om + 100], 2);
    Bytes slot0 = Slice(in, m + kSlots, 60);
    slot0[26] = 11;  // the pool's id
    EXPECT_EQ(Slice(out, om + 101, 60), slot0);
    Bytes slot1 = Slice(in, m + kSlots + 60, 60);
    slot1[26] = 12;
    EXPECT_EQ(Slice(out, om + 161, 60), slot1);
    EXPECT_EQ(Slice(out, om + 221, 68 * 60), Bytes(68 * 60, 0));
    EXPECT_EQ(Slice(out, om + 4301, 24), Slice(in, m + 779, 24));  // not computed again
    EXPECT_EQ(out[om + 4325], 7);
    EXPECT_EQ(Slice(out, om + 4326, 16), Slice(in, m + 804, 16));
    EXPECT_EQ(out[om + 4342], 0x99);

    const size_t of = kStoreSystem[1];
    EXPECT_EQ(out[of], 1);
    EXPECT_EQ(PeekF64(out, of + 1), 50.0);
    EXPECT_STREQ(reinterpret_cast<const char*>(&out[of + 35]), "Finder");
    EXPECT_EQ(out[of + 100], 0);
    EXPECT_EQ(out[of + 4342], 0x22);
    EXPECT_EQ(out[8717], 0);  // alt/azimuth
    EXPECT_EQ(Slice(out, 8718, 32), Slice(in, 1673, 32));
}

TEST_F(ImportInstrumentsTest, EyepiecesMatchByNameOrOpticsAndTheRestAreDropped) {
    WriteFileBytes("eyep.bin", PoolBytes(9, {{"Plossl 25mm", 25.0f, 52.0f, 2},
                                             {"Wide Field 20mm", 20.0f, 68.0f, 7},
                                             {"Ortho 6mm  ", 6.0f, 45.0f, 9}}));
    Bytes in = LegacyInstrumentBytes("Scope", 1);
    in[30] = 3;                 // default eyepiece
    in[kSystem[0] + 803] = 3;   // current eyepiece
    AddLegacySlot(in, 0, "PLOSSL 25MM   ", 26.0, 60.0);    // name, other case, trailing blanks
    AddLegacySlot(in, 0, " Plossl 25mm", 12.0, 30.0);      // a leading blank counts
    AddLegacySlot(in, 0, "Widefield 20mm", 20.09, 68.09);  // the same optics
    AddLegacySlot(in, 0, "Near Miss 6mm", 6.0, 45.15);     // 0.15 degree off
    AddLegacySlot(in, 0, "ortho 6mm", 7.0, 40.0);
    WriteFileBytes("legacy/instr.bin", LegacyInstrumentFile({in}));

    ASSERT_EQ(RunAll(1), 1);
    EXPECT_EQ(OnlyMessage(), Plain("Imported 1 of 1, 0 skipped"));
    EXPECT_EQ(ReadFileText("ferry2.log"),
              "Instrument: Warning,  Plossl 25mm eyepiece not found in pool (skipped)\n"
              "Instrument: Warning, Near Miss 6mm eyepiece not found in pool (skipped)\n");
    const Bytes out = StoredRecord(0);
    const size_t om = kStoreSystem[0];
    EXPECT_EQ(out[om + 100], 3);
    const size_t kept[3] = {om + 101, om + 161, om + 221};
    EXPECT_EQ(out[kept[0] + 26], 2);
    EXPECT_EQ(out[kept[1] + 26], 7);
    EXPECT_EQ(out[kept[2] + 26], 9);
    // The slot keeps its own name, less the trailing blanks.
    Bytes trimmed(32, 0);
    std::memcpy(trimmed.data(), "PLOSSL 25MM", 11);
    EXPECT_EQ(Slice(out, kept[0] + 28, 32), trimmed);
    EXPECT_EQ(PeekF64(out, kept[0]), 26.0);
    EXPECT_STREQ(reinterpret_cast<const char*>(&out[kept[1] + 28]), "Widefield 20mm");
    EXPECT_STREQ(reinterpret_cast<const char*>(&out[kept[2] + 28]), "ortho 6mm");
    EXPECT_EQ(Slice(out, om + 281, 60), Bytes(60, 0));
    // Indices are not moved after the drops: both now point past the end.
    EXPECT_EQ(out[30], 3);
    EXPECT_EQ(out[om + 4325], 3);
}

TEST_F(ImportInstrumentsTest, DuplicatesAreExactNamesIncludingOnesAddedByThisRun) {
    WriteFileBytes("user/instr.bin", InstrumentStoreBytes({"Dob"}, 5));
    WriteFileBytes("legacy/instr.bin",
                   LegacyInstrumentFile({LegacyInstrumentBytes("Dob", 1), LegacyInstrumentBytes("dob", 1), LegacyInstrumentBytes("Dob ", 1),
                               LegacyInstrumentBytes("Twin", 1), LegacyInstrumentBytes("Twin", 1)}));
    ASSERT_EQ(RunAll(5), 1);
    EXPECT_EQ(OnlyMessage(), Plain("Imported 3 of 5, 2 skipped"));
    EXPECT_EQ(ReadFileText("ferry2.log"),
              "Instrument: Warning Dob already exists (not added)\n"
              "Instrument: Warning Twin already exists (not added)\n");
    EXPECT_EQ(PeekI16(ReadFileBytes("user/instr.bin"), 2), 4);
    EXPECT_EQ(StoredRecord(3)[0], 8);  // ids go on from the store's nextId
}

TEST_F(ImportInstrumentsTest, EachRecordStartsClearAndOnlyTheTickedOnesCome) {
    Bytes first = LegacyInstrumentBytes("With Finder", 2);
    PokeF64(first, kSystem[1], 50.0);
    first[kSystem[1] + 820] = 0x77;
    Bytes second = LegacyInstrumentBytes("Single", 1);
    second[30] = 254;                    // stays as it is
    PokeF64(second, kSystem[1], 60.0);   // a finder left behind in the file
    Bytes unticked = LegacyInstrumentBytes("Unticked", 1);
    WriteFileBytes("legacy/instr.bin", LegacyInstrumentFile({first, second, unticked}));
    ASSERT_EQ(Run({1, 1, 0}), 1);
    EXPECT_EQ(OnlyMessage(), Plain("Imported 2 of 2, 0 skipped"));
    const Bytes out = StoredRecord(1);
    EXPECT_EQ(out[4], 0);  // telescope
    EXPECT_EQ(out[30], 254);
    EXPECT_EQ(Slice(out, kStoreSystem[1], 4343), Bytes(4343, 0));
}

TEST(EyepieceNames, NormalisingCutsBlanksInPlaceAndWritesNoTerminator) {
    char name[32] = "Plossl 25MM   ";
    char lower[32];
    std::memset(lower, 'x', sizeof lower);
    NormalizeEyepieceName(lower, name, sizeof name);
    EXPECT_EQ(std::string(lower, 12), "plossl 25mmx");
    EXPECT_EQ(std::string(name, 15), std::string("Plossl 25MM\0\0\0\0", 15));

    // A short name after a long one keeps the long one's tail unless the
    // buffer is cleared, which is why the job clears it each time.
    char shorter[32] = " Ab";
    NormalizeEyepieceName(lower, shorter, sizeof shorter);
    EXPECT_EQ(std::string(lower, 12), " abssl 25mmx");

    char full[32];
    std::memset(full, 'Q', sizeof full);  // no terminator within the field
    char wide[33] = {};
    NormalizeEyepieceName(wide, full, sizeof full);
    EXPECT_EQ(std::string(wide), std::string(32, 'q'));
}

}  // namespace
