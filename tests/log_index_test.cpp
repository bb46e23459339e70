// The log's index and commentary files against bytes written by hand: the
// order of rows, removal, the file names of the members and their walks,
// the guard on names, commentary appending, and what a failing read or
// write leaves behind.
#include <filesystem>
#include <string>
#include <vector>

#include "catalogue_bytes.h"
#include "stores/log_index.h"
#include "support.h"

namespace {

namespace fs = std::filesystem;
using LogIndexTest = CatalogueFileTest;

struct Row {
    uint32_t key, slot, entry;
};

Bytes IndexBytes(uint32_t count, const std::vector<Row>& rows) {
    Bytes b(4 + 12 * rows.size(), 0);
    PokeU32(b, 0, count);
    for (size_t i = 0; i < rows.size(); ++i) {
        PokeU32(b, 4 + 12 * i, rows[i].key);
        PokeU32(b, 8 + 12 * i, rows[i].slot);
        PokeU32(b, 12 + 12 * i, rows[i].entry);
    }
    return b;
}

ObjectRecord Object(int objectClass, uint32_t pid, uint32_t mask) {
    ObjectRecord r = identityRecord(objectClass, pid);
    r.classMask = mask;
    return r;
}

const ObjectRecord kAndromeda = Object(1, 1, 1);         // slot 0
const ObjectRecord kGscStar = Object(5, 0x80000005u, 16);  // slot 4, negative key
const ObjectRecord kStar7 = Object(5, 7, 16);
const ObjectRecord kUserStar7 = Object(12, 7, 16);  // key 0x40000007
const ObjectRecord kGalaxy = Object(6, 2, 256);     // slot 5

// The five objects above in the order of the file.
const std::vector<Row> kSortedRows = {
    {1, 0, 11}, {0x80000005u, 4, 12}, {7, 4, 19}, {0x40000007, 4, 14}, {2, 5, 15}};

TEST_F(LogIndexTest, RowsSortBySlotThenSignedKeyAndAnObjectStandsOnce) {
    uint32_t count = 99;
    FilePtr f = IndexOpenNight(2024, 3, 4, &count);
    ASSERT_TRUE(f);
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(ReadFileBytes("user/log/night/20240304.idx"), IndexBytes(0, {}));
    // Put in an order unlike the file's; the star's second entry replaces
    // the number of its first.
    EXPECT_EQ(IndexPut(f.get(), kGalaxy, 15), 1);
    EXPECT_EQ(IndexPut(f.get(), kUserStar7, 14), 1);
    EXPECT_EQ(IndexPut(f.get(), kStar7, 13), 1);
    EXPECT_EQ(IndexPut(f.get(), kGscStar, 12), 1);
    EXPECT_EQ(IndexPut(f.get(), kAndromeda, 11), 1);
    EXPECT_EQ(IndexPut(f.get(), kStar7, 19), 1);
    f.reset();
    EXPECT_EQ(ReadFileBytes("user/log/night/20240304.idx"), IndexBytes(5, kSortedRows));

    f = IndexOpenNight(2024, 3, 4, &count);
    ASSERT_TRUE(f);
    EXPECT_EQ(count, 5u);
    EXPECT_EQ(IndexFind(f.get(), 4, 0x40000007, &count), 3);
    EXPECT_EQ(IndexFind(f.get(), 4, 8, &count), -1);
    EXPECT_EQ(IndexCompare(4, 8, f.get(), 2), 1);    // the row sorts below the key
    EXPECT_EQ(IndexCompare(4, 6, f.get(), 2), -1);   // and above this one
    EXPECT_EQ(IndexCompare(4, 6, f.get(), 40), 0);   // a failed read
    IndexRow row;
    EXPECT_EQ(IndexReadRow(f.get(), 3, &row), 2);
    EXPECT_EQ(row.logKey, 7u);
    EXPECT_EQ(row.entryNumber, 14u);
    EXPECT_EQ(IndexReadRow(f.get(), 2, &row), 1);
    EXPECT_EQ(row.logKey, 7u);
    EXPECT_EQ(row.entryNumber, 19u);
    // A mask without a slot has no place in an index.
    EXPECT_EQ(IndexPut(f.get(), Object(5, 3, 0), 1), 0);
}

TEST_F(LogIndexTest, RemoveShiftsRowsDownAndKeepsTheFileLength) {
    MakeDirs("user/log/cons");
    WriteFileBytes("user/log/cons/07.idx", IndexBytes(5, kSortedRows));
    uint32_t count = 0;
    FilePtr f = IndexOpenCons(7, &count);
    ASSERT_TRUE(f);
    EXPECT_EQ(IndexRemove(f.get(), kStar7), 1);
    EXPECT_EQ(IndexRemove(f.get(), kStar7), 0);
    EXPECT_EQ(IndexRemove(f.get(), kGalaxy), 1);
    f.reset();
    // The last row stays twice past the count: rows there mean nothing.
    EXPECT_EQ(ReadFileBytes("user/log/cons/07.idx"),
              IndexBytes(3, {kSortedRows[0], kSortedRows[1], kSortedRows[3], kSortedRows[4], kSortedRows[4]}));
    // A count the file can't hold refuses the file.
    WriteFileBytes("user/log/cons/08.idx", IndexBytes(2, {kSortedRows[0]}));
    EXPECT_FALSE(IndexOpenCons(8, &count));
}

TEST_F(LogIndexTest, EmptyIndexesGoExceptTheClassOnesWhichTheWalkSkips) {
    uint32_t count = 0;
    for (const IndexKey& key : {IndexNightKey(2024, 3, 4), IndexClassKey(4)}) {
        FilePtr f = IndexOpen(key, &count);
        ASSERT_TRUE(f);
        ASSERT_EQ(IndexPut(f.get(), kStar7, 1), 1);
        ASSERT_EQ(IndexRemove(f.get(), kStar7), 1);
    }
    IndexDropIfEmpty(IndexNightKey(2024, 3, 4));
    IndexDropIfEmpty(IndexClassKey(4));
    EXPECT_FALSE(fs::exists("user/log/night/20240304.idx"));
    EXPECT_TRUE(fs::exists("user/log/class/04.idx"));
    FilePtr galaxies = IndexOpenClass(5, &count);
    ASSERT_EQ(IndexPut(galaxies.get(), kGalaxy, 2), 1);
    galaxies.reset();
    // A file with rows stays.
    IndexDropIfEmpty(IndexClassKey(5));
    EXPECT_TRUE(fs::exists("user/log/class/05.idx"));

    IndexEnum walk;
    IndexItem item;
    ASSERT_EQ(IndexFirst(&walk, kIndexClass, &item), 1);
    EXPECT_EQ(item.number, 5);
    EXPECT_EQ(item.text, "galaxies");
    EXPECT_EQ(IndexNext(&walk, &item), 0);
}

TEST_F(LogIndexTest, MembersNameTheirFilesAndWalksGiveTheKeysBack) {
    uint32_t count = 0;
    EXPECT_TRUE(IndexOpenInstrument("8\" f/6", &count));
    EXPECT_TRUE(CommentOpen(IndexInstrumentKey("8\" f/6")));
    EXPECT_TRUE(IndexOpenLoc("Home.Field", &count));
    EXPECT_TRUE(CommentOpen(IndexLocKey("Home.Field")));
    EXPECT_TRUE(IndexOpenObserver("J. Doe", &count));
    EXPECT_TRUE(CommentOpen(IndexObserverKey("J. Doe")));
    for (const char* path : {"user/log/instrument/8~ f&6.idx", "user/log/instrument/8~ f&6.bin",
                             "user/log/loc/Home]Field.idx", "user/log/loc/Home.Field.bin",
                             "user/log/observer/J. Doe.idx", "user/log/observer/J. Doe.bin"})
        EXPECT_TRUE(fs::exists(path)) << path;
    EXPECT_EQ(ReadFileBytes("user/log/loc/Home.Field.bin"), Bytes(4, 0));

    struct WalkCase {
        IndexMember member;
        std::vector<std::string> files;  // in user/log/<folder>
        bool longNames;
        std::vector<int> results;
        std::vector<std::string> texts;  // of the items
    };
    const WalkCase cases[] = {
        {kIndexInstrument, {}, false, {1, 0}, {"8\" f/6"}},
        {kIndexLoc, {}, false, {1, 0}, {"Home.Field"}},
        {kIndexObserver, {}, false, {1, 0}, {"J. Doe"}},
        {kIndexNight, {"night/20240304.idx", "night/x.idx"}, false, {1, -1, 0}, {"2024 Mar  4"}},
        {kIndexCons, {"cons/01.idx", "cons/76.idx", "cons/89.idx"}, false, {1, 1, -1, 0}, {"Ant", "Ser"}},
        {kIndexCons, {}, true, {1, 1, -1, 0}, {"Antlia", "Serpens"}},
        {kIndexClass, {"class/xy.idx", "class/20.idx"}, false, {-1, -1, 0}, {}},
    };
    Bytes names(77 * 28, 0);  // 28-byte rows: the name, then the label point
    PutText(names, 28, "Antlia", 20);
    PutText(names, 76 * 28, "Serpens", 20);
    WriteFileBytes("connames.bin", names);
    for (const WalkCase& c : cases) {
        for (const std::string& file : c.files) {
            MakeDirs("user/log/" + fs::path(file).parent_path().string());
            WriteFileBytes("user/log/" + file, IndexBytes(1, {{1, 0, 0}}));
        }
        IndexEnum walk;
        IndexItem item;
        std::vector<int> results;
        std::vector<std::string> texts;
        for (int r = IndexFirst(&walk, c.member, &item, c.longNames);; r = IndexNext(&walk, &item, c.longNames)) {
            results.push_back(r);
            if (r == 1) texts.push_back(item.text);
            if (r == 0) break;
        }
        EXPECT_EQ(results, c.results) << c.member;
        EXPECT_EQ(texts, c.texts) << c.member;
    }
}

TEST_F(LogIndexTest, NamesThatWouldLeaveTheFolderGiveNoFile) {
    struct GuardCase {
        IndexMember member;
        bool indexOpens, commentOpens;  // the instrument escapes both names, loc its .idx
    };
    const GuardCase cases[] = {
        {kIndexObserver, false, false}, {kIndexInstrument, true, true}, {kIndexLoc, true, false}};
    for (const GuardCase& c : cases) {
        for (const char* name : {"../../x", "a/b", "a\\b", ".", "..", "C:x"}) {
            IndexKey key = IndexObserverKey(name);
            key.member = c.member;
            uint32_t count = 0;
            EXPECT_EQ(static_cast<bool>(IndexOpen(key, &count)), c.indexOpens) << c.member << " " << name;
            EXPECT_EQ(static_cast<bool>(CommentOpen(key)), c.commentOpens) << c.member << " " << name;
        }
    }
    uint32_t count = 0;
    EXPECT_FALSE(IndexOpen(IndexObserverKey(""), &count));
    EXPECT_FALSE(IndexOpenLoc(nullptr, &count));
    EXPECT_FALSE(IndexOpenCons(-1, nullptr));
    for (const auto& e : fs::recursive_directory_iterator(".")) {
        if (e.is_regular_file()) {
            EXPECT_EQ(e.path().lexically_normal().generic_string().rfind("user/log/", 0), 0u) << e.path();
        }
    }
    EXPECT_TRUE(fs::exists("user/log/instrument/]]&]]&x.idx"));
    EXPECT_TRUE(fs::exists("user/log/loc/C@x.idx"));
}

TEST_F(LogIndexTest, CommentaryAppendsOnceAndWritesOnlySizeBytes) {
    const std::string path = "user/log/observer/Ann.bin";
    FilePtr f = CommentOpen(IndexObserverKey("Ann"));
    ASSERT_TRUE(f);
    EXPECT_EQ(ReadFileBytes(path), Bytes(4, 0));
    std::string text = "x";
    ASSERT_EQ(CommentRead(f.get(), &text), 1);
    EXPECT_EQ(text, "");
    ASSERT_EQ(CommentWrite(f.get(), "Clear sky", 10), 1);
    const Bytes clearSky = {10, 0, 0, 0, 'C', 'l', 'e', 'a', 'r', ' ', 's', 'k', 'y', 0};
    EXPECT_EQ(ReadFileBytes(path), clearSky);
    // Found case-sensitively, leading blanks not counted: nothing changes.
    EXPECT_EQ(CommentAppend(f.get(), "   sky", 7), 2);
    EXPECT_EQ(ReadFileBytes(path), clearSky);
    // "Clear sky Sky" is 13 characters, so the length is 14, but only the
    // 4 bytes asked for are written over the old text.
    EXPECT_EQ(CommentAppend(f.get(), "Sky", 4), 1);
    Bytes appended = clearSky;
    appended[0] = 14;
    EXPECT_EQ(ReadFileBytes(path), appended);
    ASSERT_EQ(CommentRead(f.get(), &text), 1);
    EXPECT_EQ(text, "Clear sky");

    // Into an empty commentary the text goes alone.
    ASSERT_EQ(CommentWrite(f.get(), "", -5), 1);
    EXPECT_EQ(ReadFileBytes(path), (Bytes{0, 0, 0, 0, 'C', 'l', 'e', 'a', 'r', ' ', 's', 'k', 'y', 0}));
    EXPECT_EQ(CommentAppend(f.get(), "Calm", 5), 1);
    EXPECT_EQ(ReadFileBytes(path), (Bytes{5, 0, 0, 0, 'C', 'a', 'l', 'm', 0, ' ', 's', 'k', 'y', 0}));
    ASSERT_EQ(CommentRead(f.get(), &text), 1);
    EXPECT_EQ(text, "Calm");
}

TEST_F(LogIndexTest, FailedReadsAndWritesLeaveTheOldRows) {
    const std::vector<Row> rows = {kSortedRows[0], kSortedRows[2], kSortedRows[4]};
    struct FaultCase {
        const char* what;
        bool put;  // else remove
        ObjectRecord object;
        FileOp op;
        FileFault fault;
        int lastNth;  // the faults that leave the old rows; 0 for all that fire
    };
    const FaultCase cases[] = {
        // Every read comes before the first write.
        {"put in the middle, reads", true, kGscStar, FileOp::kRead, FileFault::kShort, 0},
        // The rows' write; a failed count after it would show the shifted rows.
        {"put in the middle, writes", true, kGscStar, FileOp::kWrite, FileFault::kFail, 1},
        {"put last, writes", true, Object(6, 9, 256), FileOp::kWrite, FileFault::kFail, 0},
        {"remove the first, writes", false, kAndromeda, FileOp::kWrite, FileFault::kFail, 1},
        {"remove the second, reads", false, kStar7, FileOp::kRead, FileFault::kFail, 0},
        {"remove the last, writes", false, kGalaxy, FileOp::kWrite, FileFault::kFail, 0},
    };
    for (const FaultCase& c : cases) {
        int fired = 0;
        for (int nth = 1; c.lastNth == 0 || nth <= c.lastNth; ++nth) {
            MakeDirs("user/log/class");
            WriteFileBytes("user/log/class/05.idx", IndexBytes(3, rows));
            uint32_t count = 0;
            FilePtr f = IndexOpenClass(5, &count);
            ASSERT_TRUE(f);
            int result = 0;
            {
                ScopedFault fault(c.op, nth, c.fault);
                result = c.put ? IndexPut(f.get(), c.object, 30) : IndexRemove(f.get(), c.object);
                if (!FileFaultFired()) break;
            }
            ++fired;
            f.reset();
            EXPECT_EQ(result, 0) << c.what << " " << nth;
            const Bytes after = ReadFileBytes("user/log/class/05.idx");
            EXPECT_EQ(Slice(after, 0, 40), IndexBytes(3, rows)) << c.what << " " << nth;
        }
        EXPECT_GT(fired, 0) << c.what;
    }
}

}  // namespace
