#include <cstring>

#include "stores/instrument_store.h"
#include "support.h"

namespace {

InstrumentRecord Named(const char* name, uint8_t kind) {
    InstrumentRecord r;
    std::strncpy(r.name, name, sizeof r.name - 1);
    r.instrumentKind = kind;
    r.systemCount = 1;
    return r;
}

uint32_t U32At(const uint8_t* p) {
    uint32_t v;
    std::memcpy(&v, p, 4);
    return v;
}

TEST(InstrumentImage, FieldsStandAtTheirOffsets) {
    InstrumentRecord r;
    r.id = 0x0102;
    r.systemCount = 2;
    r.instrumentKind = 1;
    const uint32_t circle = 0x3C0EFA35;  // 0.5 degrees in radians, as f32
    std::memcpy(&r.finderCircles[0], &circle, 4);
    r.defaultEyepiece = 255;
    r.mainSystem.aperture = 254.0;
    r.mainSystem.eyepieceCount = 3;
    r.mainSystem.eyepieces[2].poolId = 0x0A0B;
    r.mainSystem.eyepieces[2].apparentField = 1.0;
    r.finderSystem.opticsType = 1;
    r.finderSystem.systemSpare = 0x5A;
    r.mounting = 1;
    std::strcpy(r.name, "Dob");
    const auto img = RecordImage<InstrumentRecordLayout>(r);
    ASSERT_EQ(img.size(), 8750u);
    EXPECT_EQ(img[0], 0x02);
    EXPECT_EQ(img[1], 0x01);
    EXPECT_EQ(img[2], 2);
    EXPECT_EQ(img[4], 1);
    EXPECT_EQ(U32At(&img[6]), 0x3C0EFA35u);
    EXPECT_EQ(img[30], 255);
    EXPECT_EQ(PeekF64(Bytes(img.begin(), img.end()), 31 + 1), 254.0);
    EXPECT_EQ(img[31 + 100], 3);
    const size_t slot = 31 + 101 + 2 * 60;
    EXPECT_EQ(img[slot + 26], 0x0B);
    EXPECT_EQ(img[slot + 27], 0x0A);
    EXPECT_EQ(PeekF64(Bytes(img.begin(), img.end()), slot + 8), 1.0);
    EXPECT_EQ(img[4374], 1);
    EXPECT_EQ(img[4374 + 4342], 0x5A);
    EXPECT_EQ(img[8717], 1);
    EXPECT_EQ(std::memcmp(&img[8718], "Dob", 4), 0);

    // The pool keeps its field in degrees, as an f32 at 37.
    EyepieceRecord e;
    std::strcpy(e.name, "Plossl 25");
    e.focalLength = 25.0f;
    e.apparentField = 52.0f;
    e.id = 7;
    const auto pool = RecordImage<EyepieceRecordLayout>(e);
    ASSERT_EQ(pool.size(), 43u);
    EXPECT_EQ(U32At(&pool[33]), 0x41C80000u);  // 25.0f
    EXPECT_EQ(U32At(&pool[37]), 0x42500000u);  // 52.0f
    EXPECT_EQ(pool[41], 7);
}

class InstrumentStoreTest : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        MakeDirs("user");
    }
    static std::pair<int, int> Header() {
        const Bytes b = ReadFileBytes("user/instr.bin");
        return {b[0] | (b[1] << 8), b[2] | (b[3] << 8)};
    }
    static std::string NameAt(FILE* f, int index) {
        InstrumentRecord r;
        return InstrumentRead(f, index, &r) ? std::string(r.name) : std::string("?");
    }
};

TEST_F(InstrumentStoreTest, OpenNeedsTheStoreToBeCreatedFirst) {
    int count = -1;
    EXPECT_FALSE(InstrumentStoreOpen(&count));
    EXPECT_FALSE(FileExists("user/instr.bin"));
    ASSERT_EQ(InstrumentStoreCreate(), 1);
    EXPECT_EQ(ReadFileBytes("user/instr.bin"), (Bytes{0, 0, 0, 0}));
    EXPECT_TRUE(InstrumentStoreOpen(&count));
    EXPECT_EQ(count, 0);
}

TEST_F(InstrumentStoreTest, IdsStartAtOneAndAreNeverGivenTwice) {
    ASSERT_EQ(InstrumentStoreCreate(), 1);
    int count = 0;
    FilePtr f = InstrumentStoreOpen(&count);
    InstrumentRecord a = Named("A", 0), b = Named("B", 0), c = Named("C", 1);
    ASSERT_EQ(InstrumentAdd(f.get(), &a), 1);
    EXPECT_EQ(a.id, 1);
    ASSERT_EQ(InstrumentAdd(f.get(), &b), 1);
    EXPECT_EQ(b.id, 2);
    ASSERT_EQ(InstrumentDelete(f.get(), 0), 1);
    ASSERT_EQ(InstrumentAdd(f.get(), &c), 1);
    EXPECT_EQ(c.id, 3);
    f.reset();
    EXPECT_EQ(Header(), std::make_pair(3, 2));
    f = InstrumentStoreOpen(&count);
    EXPECT_EQ(NameAt(f.get(), 0), "B");
    EXPECT_EQ(NameAt(f.get(), 1), "C");
    InstrumentRecord found;
    ASSERT_EQ(InstrumentFindById(f.get(), &found, 3), 1);
    EXPECT_STREQ(found.name, "C");
    EXPECT_EQ(InstrumentFindById(f.get(), &found, 1), 0);
}

TEST_F(InstrumentStoreTest, DeleteMovesTheTailAsOneBlockAndKeepsTheFileLength) {
    ASSERT_EQ(InstrumentStoreCreate(), 1);
    int count = 0;
    FilePtr f = InstrumentStoreOpen(&count);
    for (const char* n : {"A", "B", "C"}) {
        InstrumentRecord r = Named(n, 0);
        ASSERT_EQ(InstrumentAdd(f.get(), &r), 1);
    }
    ASSERT_EQ(InstrumentDelete(f.get(), 0), 1);
    EXPECT_EQ(InstrumentDelete(f.get(), 2), 0);
    f.reset();
    const Bytes b = ReadFileBytes("user/instr.bin");
    EXPECT_EQ(b.size(), 4u + 3 * 8750);
    EXPECT_EQ(Header(), std::make_pair(3, 2));
    EXPECT_EQ(b[4 + 8718], 'B');
    EXPECT_EQ(b[4 + 8750 + 8718], 'C');
    EXPECT_EQ(b[4 + 2 * 8750 + 8718], 'C');  // stale copy behind the count
}

TEST_F(InstrumentStoreTest, FindByNameIsExactAndWriteStaysInsideTheCount) {
    ASSERT_EQ(InstrumentStoreCreate(), 1);
    int count = 0;
    FilePtr f = InstrumentStoreOpen(&count);
    InstrumentRecord a = Named("Refractor", 0);
    a.mounting = 1;
    ASSERT_EQ(InstrumentAdd(f.get(), &a), 1);
    InstrumentRecord probe = Named("Refractor", 0);
    int index = -1;
    ASSERT_EQ(InstrumentFindByName(f.get(), &probe, 1, &index), 1);
    EXPECT_EQ(index, 0);
    EXPECT_EQ(probe.mounting, 1);
    EXPECT_EQ(probe.id, 1);
    probe = Named("refractor", 0);
    EXPECT_EQ(InstrumentFindByName(f.get(), &probe, 1, &index), 0);
    probe = Named("Refractor ", 0);
    EXPECT_EQ(InstrumentFindByName(f.get(), &probe, 1, &index), 0);

    a.mounting = 0;
    EXPECT_EQ(InstrumentWrite(f.get(), a, 0), 1);
    EXPECT_EQ(InstrumentWrite(f.get(), a, 1), 0);
}

TEST_F(InstrumentStoreTest, MoveSwapsOnlyWithTheNearestOfTheSameKind) {
    ASSERT_EQ(InstrumentStoreCreate(), 1);
    int count = 0;
    FilePtr f = InstrumentStoreOpen(&count);
    for (auto [n, k] : {std::pair{"T1", 0}, {"B1", 1}, {"T2", 0}}) {
        InstrumentRecord r = Named(n, static_cast<uint8_t>(k));
        ASSERT_EQ(InstrumentAdd(f.get(), &r), 1);
    }
    int to = -1;
    ASSERT_EQ(InstrumentMove(f.get(), 0, 3, +1, &to), 1);
    EXPECT_EQ(to, 2);
    EXPECT_EQ(NameAt(f.get(), 0), "T2");
    EXPECT_EQ(NameAt(f.get(), 1), "B1");
    EXPECT_EQ(NameAt(f.get(), 2), "T1");
    EXPECT_EQ(InstrumentMove(f.get(), 1, 3, -1, &to), 0);  // no other binoculars
    EXPECT_EQ(InstrumentMove(f.get(), 0, 3, -1, &to), 0);  // nothing above
    EXPECT_EQ(InstrumentMove(f.get(), 0, 1, +1, &to), 0);  // fewer than two
}

TEST_F(InstrumentStoreTest, BackupCopiesHeaderAndCountedRecords) {
    ASSERT_EQ(InstrumentStoreCreate(), 1);
    {
        int count = 0;
        FilePtr f = InstrumentStoreOpen(&count);
        InstrumentRecord r = Named("Only", 0);
        ASSERT_EQ(InstrumentAdd(f.get(), &r), 1);
    }
    const Bytes before = ReadFileBytes("user/instr.bin");
    ASSERT_EQ(InstrumentBackup(), 1);
    EXPECT_EQ(ReadFileBytes("user/instr.bak"), before);
    ASSERT_EQ(InstrumentStoreCreate(), 1);
    ASSERT_EQ(InstrumentRestore(), 1);
    EXPECT_EQ(ReadFileBytes("user/instr.bin"), before);
}

}  // namespace
