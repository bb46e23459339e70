// The commentary exchange file: its records against bytes written by hand,
// a round trip between two fresh data folders, and the records and files
// an import refuses.
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "base/platform.h"
#include "stores/comment_exchange.h"
#include "stores/log_store.h"
#include "support.h"

namespace {

namespace fs = std::filesystem;

uint64_t FixedStamp() { return 0x01D9A1B2C3D4E5F6ull; }

class CommentExchangeTest : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        previousStamp_ = platform::SetSystemFileTimeOverride(FixedStamp);
    }
    void TearDown() override {
        platform::SetSystemFileTimeOverride(previousStamp_);
        ScratchTest::TearDown();
    }
    platform::SystemFileTimeFn previousStamp_ = nullptr;
};

struct Commented {
    IndexKey key;
    const char* text;  // null: an index without commentary
    bool indexed;
};

void MakeKey(const Commented& c) {
    ObjectRecord star = identityRecord(5, 7);
    star.classMask = 16;
    if (c.indexed) {
        uint32_t count = 0;
        FilePtr index = IndexOpen(c.key, &count);
        ASSERT_TRUE(index);
        ASSERT_EQ(IndexPut(index.get(), star, 3), 1);
    }
    FilePtr comment = CommentOpen(c.key);
    ASSERT_TRUE(comment);
    if (c.text) {
        ASSERT_EQ(CommentWrite(comment.get(), c.text, static_cast<long>(std::strlen(c.text) + 1)), 1);
    }
}

struct Record {
    uint16_t kind;
    std::string key, text;
    bool operator==(const Record&) const = default;
};

// The records of an exchange file, read by their documented offsets.
std::vector<Record> RecordsOf(const Bytes& file, size_t at) {
    std::vector<Record> records;
    while (at + 134 <= file.size()) {
        const uint16_t kind = static_cast<uint16_t>(file[at] | file[at + 1] << 8);
        const uint32_t length = PeekU32(file, at + 2);
        const std::string key(reinterpret_cast<const char*>(&file[at + 6]));
        // The text, its NUL and one more byte follow.
        const std::string text(reinterpret_cast<const char*>(&file[at + 134]));
        EXPECT_EQ(file[at + 134 + length], 0);
        records.push_back({kind, key, text});
        at += 134 + length + 1;
        if (kind == 0) {
            EXPECT_EQ(length, 0u);
            EXPECT_EQ(at, file.size());
            break;
        }
    }
    return records;
}

const char* const kCommentFiles[] = {
    "user/log/class/04.bin", "user/log/night/20240304.bin", "user/log/observer/Ann.bin",
    "user/log/loc/Home.Field.bin", "user/log/instrument/8~ f&6.bin", "user/log/cons/01.bin"};

TEST_F(CommentExchangeTest, ExportedCommentaryArrivesWholeInAnotherFolder) {
    MakeDirs("a");
    MakeDirs("b");
    fs::current_path("a");
    const Commented keys[] = {
        {IndexConsKey(1), "Antlia tonight", true},
        {IndexInstrumentKey("8\" f/6"), "Needs collimation", true},
        {IndexLocKey("Home.Field"), "Dark site", true},
        {IndexObserverKey("Ann"), "Patient", true},
        {IndexObserverKey("Bob"), nullptr, true},     // nothing to say
        {IndexObserverKey("Ghost"), "Boo", false},    // no index: not exported
        {IndexNightKey(2024, 3, 4), "Good seeing", true},
        {IndexClassKey(4), "Stars galore", true},
    };
    for (const Commented& c : keys) MakeKey(c);
    ASSERT_EQ(CommentExport(kIndexAllMembers, "../c.vex", "Log notes", "Six keys"), 6);

    const Bytes file = ReadFileBytes("../c.vex");
    ASSERT_GT(file.size(), 112u + 148u);
    EXPECT_EQ(PeekU32(file, 0) & 0xFFFFFF, 0x02D903u);  // magic, major 2
    EXPECT_EQ(file[5], 7);
    EXPECT_EQ(PeekU32(file, 75), 6u);
    EXPECT_EQ(PeekU32(file, 99), 8u);
    Bytes first(148, 0);
    PokeU16(first, 0, 1);
    PokeU32(first, 2, 13);
    first[6] = '4';
    std::memcpy(&first[134], "Stars galore", 12);
    EXPECT_EQ(Slice(file, 112, 148), first);
    const std::vector<Record> expected = {{1, "4", "Stars galore"},    {2, "2024 03 04", "Good seeing"},
                                          {4, "Ann", "Patient"},       {8, "Home.Field", "Dark site"},
                                          {16, "8\" f/6", "Needs collimation"}, {32, "1", "Antlia tonight"},
                                          {0, "", ""}};
    EXPECT_EQ(RecordsOf(file, 112), expected);
    EXPECT_EQ(LogRegistryFind("Log notes", nullptr), 0);

    fs::current_path("../b");
    ExchangeHeader header;
    std::string description;
    int steps = 0;
    const auto count = [](int step, void* context) { *static_cast<int*>(context) += step; };
    ASSERT_EQ(CommentImport("../c.vex", &header, &description, count, &steps), 6);
    EXPECT_EQ(description, "Six keys");
    EXPECT_EQ(steps, 60);  // a pace of 1 for six records
    EXPECT_EQ(LogRegistryFind("Log notes", nullptr), 0);
    for (const char* path : kCommentFiles)
        EXPECT_EQ(ReadFileBytes(path), ReadFileBytes(std::string("../a/") + path)) << path;
    EXPECT_FALSE(fs::exists("user/log/observer/Ghost.bin"));
    // A second import finds every text there already.
    EXPECT_EQ(CommentImport("../c.vex", &header, &description, nullptr, nullptr), 0);
    for (const char* path : kCommentFiles)
        EXPECT_EQ(ReadFileBytes(path), ReadFileBytes(std::string("../a/") + path)) << path;
}

TEST_F(CommentExchangeTest, ImportRefusesOtherFilesAndSkipsBadRecords) {
    ASSERT_EQ(CommentExport(kIndexAllMembers, "empty.vex", "Nothing", nullptr), 0);
    const Bytes empty = ReadFileBytes("empty.vex");
    ASSERT_EQ(empty.size(), 103u + 1 + 135);
    ExchangeHeader header;
    std::string description;
    EXPECT_EQ(CommentImport("empty.vex", &header, &description, nullptr, nullptr), 0);
    struct Refusal {
        size_t offset;
        uint8_t value;
    };
    for (const Refusal r : {Refusal{5, 6}, Refusal{2, 1}, Refusal{0, 0}}) {
        Bytes b = empty;
        b[r.offset] = r.value;
        WriteFileBytes("bad.vex", b);
        EXPECT_EQ(CommentImport("bad.vex", &header, &description, nullptr, nullptr), -1) << r.offset;
    }
    WriteFileBytes("bad.vex", Slice(empty, 0, 110));  // no closing record
    EXPECT_EQ(CommentImport("bad.vex", &header, &description, nullptr, nullptr), -1);
    EXPECT_EQ(CommentImport("missing.vex", &header, &description, nullptr, nullptr), -1);
    EXPECT_EQ(CommentExport(kIndexAllMembers, "no/such/folder.vex", "x", nullptr), -1);

    struct RecordCase {
        uint16_t kind;
        const char* key;
        const char* text;
        int result;
    };
    const RecordCase cases[] = {
        {kIndexNight, "2024 3 4", "Cold", 1}, {kIndexNight, "2024 3 4", "Cold", 2},
        {kIndexNight, "x", "Cold", 0},        {kIndexNight, "2024 3 5", "", 0},
        {kIndexClass, "99", "Cold", 0},       {64, "1", "Cold", 0},
        {kIndexCons, "5", "Ara", 1},          {kIndexObserver, "../x", "Cold", 0},
    };
    for (const RecordCase& c : cases) {
        CommentRecord record;
        record.kind = c.kind;
        std::strncpy(record.keyText, c.key, sizeof record.keyText - 1);
        record.length = static_cast<uint32_t>(std::strlen(c.text) + 1);
        EXPECT_EQ(CommentImportRecord(record, c.text), c.result) << c.kind << " " << c.key;
    }
    EXPECT_EQ(ReadFileBytes("user/log/night/20240304.bin"), (Bytes{5, 0, 0, 0, 'C', 'o', 'l', 'd', 0}));
    EXPECT_FALSE(fs::exists("user/log/night/20240305.bin"));
}

}  // namespace
