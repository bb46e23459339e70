#include <cstring>
#include <tuple>

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

class InstrumentStoreTest : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        MakeDirs("user");
    }
    // A new store with the given (name, kind) records added, left open.
    static FilePtr StoreWith(std::initializer_list<std::pair<const char*, int>> records) {
        EXPECT_EQ(InstrumentStoreCreate(), 1);
        int count = 0;
        FilePtr f = InstrumentStoreOpen(&count);
        for (auto [n, k] : records) {
            InstrumentRecord r = Named(n, static_cast<uint8_t>(k));
            EXPECT_EQ(InstrumentAdd(f.get(), &r), 1);
        }
        return f;
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

TEST_F(InstrumentStoreTest, IdsAreNeverGivenTwiceAndDeleteMovesTheTailKeepingTheLength) {
    FilePtr f = StoreWith({{"A", 0}, {"B", 0}, {"C", 0}});
    ASSERT_EQ(InstrumentDelete(f.get(), 0), 1);
    EXPECT_EQ(InstrumentDelete(f.get(), 2), 0);
    f.reset();
    const Bytes b = ReadFileBytes("user/instr.bin");
    EXPECT_EQ(b.size(), 4u + 3 * 8750);
    EXPECT_EQ(Header(), std::make_pair(3, 2));
    EXPECT_EQ(b[4 + 8718], 'B');
    EXPECT_EQ(b[4 + 8750 + 8718], 'C');
    EXPECT_EQ(b[4 + 2 * 8750 + 8718], 'C');  // stale copy behind the count

    // A record other than the first: only what follows it moves.
    int count = 0;
    f = InstrumentStoreOpen(&count);
    InstrumentRecord d = Named("D", 0);
    ASSERT_EQ(InstrumentAdd(f.get(), &d), 1);
    EXPECT_EQ(d.id, 4);
    ASSERT_EQ(InstrumentDelete(f.get(), 1), 1);
    EXPECT_EQ(NameAt(f.get(), 0), "B");
    EXPECT_EQ(NameAt(f.get(), 1), "D");
    InstrumentRecord found;
    ASSERT_EQ(InstrumentFindById(f.get(), &found, 4), 1);
    EXPECT_STREQ(found.name, "D");
    EXPECT_EQ(InstrumentFindById(f.get(), &found, 1), 0);
    f.reset();
    EXPECT_EQ(Header(), std::make_pair(4, 2));
}

TEST_F(InstrumentStoreTest, WrittenRecordReadsBackFieldByField) {
    FilePtr f = StoreWith({{"A", 0}, {"B", 1}});
    InstrumentRecord b = Named("Big Dob", 1);
    b.id = 2;
    b.mounting = 1;
    b.defaultEyepiece = 2;
    b.mainSystem.aperture = 254.0;
    b.mainSystem.eyepieceCount = 3;
    b.mainSystem.eyepieces[2].poolId = 0x0A0B;
    b.finderSystem.systemSpare = 0x5A;
    ASSERT_EQ(InstrumentWrite(f.get(), b, 1), 1);
    EXPECT_EQ(InstrumentWrite(f.get(), b, 2), 0);  // only inside the count
    InstrumentRecord r;
    ASSERT_EQ(InstrumentRead(f.get(), 1, &r), 1);
    EXPECT_EQ(r.id, 2);
    EXPECT_EQ(r.instrumentKind, 1);
    EXPECT_EQ(r.mounting, 1);
    EXPECT_EQ(r.defaultEyepiece, 2);
    EXPECT_EQ(r.mainSystem.aperture, 254.0);
    EXPECT_EQ(r.mainSystem.eyepieceCount, 3);
    EXPECT_EQ(r.mainSystem.eyepieces[2].poolId, 0x0A0B);
    EXPECT_EQ(r.finderSystem.systemSpare, 0x5A);
    EXPECT_STREQ(r.name, "Big Dob");
    EXPECT_EQ(NameAt(f.get(), 0), "A");  // its neighbour is untouched
}

TEST_F(InstrumentStoreTest, FindByNameIsExactAndFindsDoNotReadTheStaleRecordPastTheCount) {
    FilePtr f = StoreWith({{"Refractor", 0}, {"Stale", 0}});
    InstrumentRecord a = Named("Refractor", 0);
    a.id = 1;
    a.mounting = 1;
    ASSERT_EQ(InstrumentWrite(f.get(), a, 0), 1);
    ASSERT_EQ(InstrumentDelete(f.get(), 1), 1);  // "Stale", id 2, stays behind the count
    const struct {
        const char* name;
        int result;
    } cases[] = {{"Refractor", 1}, {"refractor", 0}, {"Refractor ", 0}, {"Stale", 0}};
    for (const auto& c : cases) {
        InstrumentRecord probe = Named(c.name, 0);
        int index = -1;
        EXPECT_EQ(InstrumentFindByName(f.get(), &probe, 1, &index), c.result) << c.name;
        if (c.result) {  // the stored record is handed back
            EXPECT_EQ(std::tuple(index, int(probe.mounting), int(probe.id)), std::tuple(0, 1, 1));
        }
    }
    InstrumentRecord found;
    EXPECT_EQ(InstrumentFindById(f.get(), &found, 2), 0);
}

TEST_F(InstrumentStoreTest, TheMemoAnswersAFoundNameAgainAndSearchesForAnAbsentOne) {
    FilePtr f = StoreWith({{"Refractor", 0}, {"Dob", 0}});
    InstrumentNameMemo memo;
    InstrumentRecord probe = Named("Dob", 0);
    int index = -1;
    ASSERT_EQ(InstrumentFindByNameMemo(f.get(), &probe, 2, &index, &memo), 1);
    EXPECT_EQ(index, 1);
    // The store changes behind the memo: a found name keeps its answer, an
    // absent one is looked for in the store each time.
    InstrumentRecord other = Named("Binos", 1);
    ASSERT_EQ(InstrumentWrite(f.get(), other, 1), 1);
    probe = Named("Dob", 1);
    index = -1;
    ASSERT_EQ(InstrumentFindByNameMemo(f.get(), &probe, 2, &index, &memo), 1);
    EXPECT_EQ(index, 1);
    EXPECT_STREQ(probe.name, "Dob");
    EXPECT_EQ(probe.instrumentKind, 0);
    InstrumentRecord binos = Named("Binos", 0);
    EXPECT_EQ(InstrumentFindByNameMemo(f.get(), &binos, 2, &index, &memo), 1);
    InstrumentRecord none = Named("None", 0);
    EXPECT_EQ(InstrumentFindByNameMemo(f.get(), &none, 2, &index, &memo), 0);
}

TEST_F(InstrumentStoreTest, MoveSwapsOnlyWithTheNearestOfTheSameKind) {
    FilePtr f = StoreWith({{"T1", 0}, {"B1", 1}, {"T2", 0}});
    int to = -1;
    ASSERT_EQ(InstrumentMove(f.get(), 0, 3, +1, &to), 1);
    EXPECT_EQ(to, 2);
    EXPECT_EQ(NameAt(f.get(), 0), "T2");
    EXPECT_EQ(NameAt(f.get(), 1), "B1");
    EXPECT_EQ(NameAt(f.get(), 2), "T1");
    EXPECT_EQ(InstrumentMove(f.get(), 1, 3, -1, &to), 0);  // no other binoculars
    EXPECT_EQ(InstrumentMove(f.get(), 0, 3, -1, &to), 0);  // nothing above
    EXPECT_EQ(InstrumentMove(f.get(), 0, 1, +1, &to), 0);  // fewer than two
    ASSERT_EQ(InstrumentMove(f.get(), 2, 3, -1, &to), 1);  // up, past the binoculars
    EXPECT_EQ(to, 0);
    EXPECT_EQ(NameAt(f.get(), 0), "T1");
    EXPECT_EQ(NameAt(f.get(), 2), "T2");
    ASSERT_EQ(InstrumentDelete(f.get(), 1), 1);
    ASSERT_EQ(InstrumentMove(f.get(), 0, 2, +1, &to), 1);  // exactly two
    EXPECT_EQ(NameAt(f.get(), 0), "T2");
}

TEST_F(InstrumentStoreTest, BackupCopiesHeaderAndCountedRecords) {
    StoreWith({{"Only", 0}});
    const Bytes before = ReadFileBytes("user/instr.bin");
    ASSERT_EQ(InstrumentBackup(), 1);
    EXPECT_EQ(ReadFileBytes("user/instr.bak"), before);
    ASSERT_EQ(InstrumentStoreCreate(), 1);
    ASSERT_EQ(InstrumentRestore(), 1);
    EXPECT_EQ(ReadFileBytes("user/instr.bin"), before);
}

}  // namespace
