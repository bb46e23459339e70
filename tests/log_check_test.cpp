// The log check against a healthy log written by hand and against each
// kind of damage, and proof that looking changes no file.
#include <algorithm>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "shell/folder_check.h"
#include "stores/log_check.h"
#include "stores/log_index.h"
#include "stores/log_records.h"
#include "support.h"

namespace {

namespace fs = std::filesystem;
using LogCheckTest = ScratchTest;
using Lines = std::vector<std::string>;

constexpr uint32_t kUser42 = 0x40000000u | 42;

Bytes PidBytes(uint32_t nextEntry, uint32_t count, const std::vector<uint32_t>& keys) {
    LogPidHead head;
    head.nextEntry = nextEntry;
    head.objectCount = count;
    const auto image = RecordImage<LogPidHeadLayout>(head);
    Bytes b(image.begin(), image.end());
    for (uint32_t key : keys) {
        b.resize(b.size() + 4);
        PokeU32(b, b.size() - 4, key);
    }
    return b;
}

struct Row {
    uint32_t entry;
    uint8_t objectClass;
    uint32_t id;
    uint32_t mask;
};

Bytes RowsBytes(uint32_t count, const std::vector<Row>& rows) {
    Bytes b(4, 0);
    PokeU32(b, 0, count);
    for (const Row& r : rows) {
        ObjectLogRow row;
        row.entryNumber = r.entry;
        row.objectClass = r.objectClass;
        row.id = r.id;
        row.classMask = r.mask;
        const auto image = RecordImage<ObjectLogRowLayout>(row);
        b.insert(b.end(), image.begin(), image.end());
    }
    return b;
}

Bytes IndexBytes(uint32_t count, const std::vector<IndexRow>& rows) {
    Bytes b(4, 0);
    PokeU32(b, 0, count);
    for (const IndexRow& r : rows) {
        const auto image = RecordImage<IndexRowLayout>(r);
        b.insert(b.end(), image.begin(), image.end());
    }
    return b;
}

Bytes EntryBytes() {
    const auto image = RecordImage<LogEntryLayout>(LogEntry{});
    return Bytes(image.begin(), image.end());
}

// Stars: reference star 42 with entries 0 and 2, user star 42 with entry 1,
// and an empty .pix of star 99 that a reader left behind. Galaxies: galaxy
// 7 with entry 0, its files written byte by byte. The indexes name each
// object once; an empty class file stays.
void WriteHealthyLog() {
    for (const char* f : {"stars", "galaxies", "class", "night", "loc", "observer", "instrument", "cons"})
        MakeDirs(std::string("user/log/") + f);
    WriteFileBytes("user/log/stars/pid.bin", PidBytes(3, 2, {42, kUser42}));
    WriteFileBytes("user/log/stars/000000042.pix",
                   RowsBytes(2, {{0, kClassStar, 42, 16}, {2, kClassStar, 42, 64}}));
    WriteFileBytes("user/log/stars/000000042s.pix", RowsBytes(1, {{1, kClassSupplementalStar, 42, 16}}));
    WriteFileBytes("user/log/stars/000000099.pix", RowsBytes(0, {}));
    for (const char* e : {"00000000", "00000001", "00000002"})
        WriteFileBytes(std::string("user/log/stars/") + e + ".bin", EntryBytes());

    WriteFileBytes("user/log/galaxies/pid.bin", {1, 0, 0, 0, 1, 0, 0, 0, 7, 0, 0, 0});
    Bytes rows(4 + 9098, 0);
    rows[0] = 1;          // one row: entry 0,
    rows[4 + 4] = 6;      // class 6,
    rows[4 + 5] = 7;      // id 7,
    rows[4 + 10] = 1;     // mask 256
    WriteFileBytes("user/log/galaxies/000000007.pix", rows);
    WriteFileBytes("user/log/galaxies/00000000.bin", EntryBytes());
    WriteFileBytes("user/log/class/05.idx", {1, 0, 0, 0, 7, 0, 0, 0, 5, 0, 0, 0, 0, 0, 0, 0});

    WriteFileBytes("user/log/class/04.idx", IndexBytes(2, {{42, 4, 2}, {kUser42, 4, 1}}));
    WriteFileBytes("user/log/class/00.idx", IndexBytes(0, {}));
    WriteFileBytes("user/log/night/20240304.idx", IndexBytes(2, {{42, 4, 0}, {7, 5, 0}}));
    WriteFileBytes("user/log/observer/Ann.idx", IndexBytes(3, {{42, 4, 2}, {kUser42, 4, 1}, {7, 5, 0}}));
    WriteFileText("user/log/observer/Ann.bin", "");  // commentary is no index
}

TEST_F(LogCheckTest, HealthyOrMissingLogGivesNoProblem) {
    Lines problems;
    EXPECT_TRUE(LogCheck(problems));  // no user/log at all
    WriteHealthyLog();
    EXPECT_TRUE(LogCheck(problems));
    EXPECT_EQ(problems, Lines{});
}

struct Damage {
    const char* what;
    std::function<void()> apply;
    Lines lines;
};

void Remove(const char* path) { fs::remove_all(path); }

TEST_F(LogCheckTest, EachDamageGivesItsLine) {
    const std::string stars = "user/log/stars/", galaxies = "user/log/galaxies/";
    const std::vector<Damage> cases = {
        {"pid.bin shorter than its head", [] { WriteFileBytes("user/log/stars/pid.bin", {3, 0, 0}); },
         {"user/log/stars/pid.bin: too short for its header"}},
        {"pid.bin shorter than its count",
         [] { WriteFileBytes("user/log/stars/pid.bin", PidBytes(3, 3, {42, kUser42})); },
         {"user/log/stars/pid.bin: damaged (its count promises more records than the file holds)"}},
        {"keys not ascending unsigned",
         [] { WriteFileBytes("user/log/stars/pid.bin", PidBytes(3, 2, {kUser42, 42})); },
         {"user/log/stars/pid.bin: key 2 (object 42) does not follow key 1 (user object 42) in "
          "ascending order"}},
        {"pid.bin a folder", [] { Remove("user/log/stars/pid.bin"); MakeDirs("user/log/stars/pid.bin"); },
         {"user/log/stars/pid.bin: is not a regular file"}},
        {"listed object without .pix", [] { Remove("user/log/stars/000000042s.pix"); },
         {"user/log/stars/000000042s.pix: is missing, though pid.bin lists its object",
          "user/log/class/04.idx: row 2 names user object 42 of stars, which has no rows",
          "user/log/observer/Ann.idx: row 2 names user object 42 of stars, which has no rows"}},
        {"listed object with an empty .pix",
         [] { WriteFileBytes("user/log/stars/000000042s.pix", RowsBytes(0, {})); },
         {"user/log/stars/000000042s.pix: holds no rows, though pid.bin lists its object",
          "user/log/class/04.idx: row 2 names user object 42 of stars, which has no rows",
          "user/log/observer/Ann.idx: row 2 names user object 42 of stars, which has no rows"}},
        {".pix shorter than its count",
         [] { WriteFileBytes("user/log/stars/000000042.pix", RowsBytes(3, {{0, kClassStar, 42, 16}})); },
         {"user/log/stars/000000042.pix: damaged (its count promises more records than the file holds)"}},
        {"entry file missing", [] { Remove("user/log/stars/00000002.bin"); },
         {"user/log/stars/000000042.pix: row 2 names entry 2, whose file is missing"}},
        {"entry file short", [] { WriteFileBytes("user/log/stars/00000001.bin", Bytes(9123, 0)); },
         {"user/log/stars/000000042s.pix: row 1 names entry 1, whose file is too short for an entry"}},
        {"row of another object",
         [] { WriteFileBytes("user/log/galaxies/000000007.pix", RowsBytes(1, {{0, kClassGalaxy, 8, 256}})); },
         {"user/log/galaxies/000000007.pix: row 1 names object 8, not the file's object 7"}},
        {"row of a reference object in a user file",
         [] { WriteFileBytes("user/log/stars/000000042s.pix", RowsBytes(1, {{1, kClassStar, 42, 16}})); },
         {"user/log/stars/000000042s.pix: row 1 names object 42, not the file's user object 42"}},
        {"row of another class",
         [] { WriteFileBytes("user/log/galaxies/000000007.pix", RowsBytes(1, {{0, kClassGalaxy, 7, 512}})); },
         {"user/log/galaxies/000000007.pix: row 1 has the class mask 512 (quasars), not one of galaxies"}},
        {"entry not handed out yet",
         [] { WriteFileBytes("user/log/galaxies/pid.bin", PidBytes(0, 1, {7})); },
         {"user/log/galaxies/000000007.pix: row 1 names entry 0, which the class has not handed out "
          "(its next number is 0)"}},
        {".pix of an unlisted object",
         [] { WriteFileBytes("user/log/stars/000000077.pix", RowsBytes(1, {{0, kClassStar, 77, 16}})); },
         {"user/log/stars/000000077.pix: holds 1 row(s) of an object that pid.bin does not list"}},
        {".idx shorter than its count",
         [] { WriteFileBytes("user/log/night/20240304.idx", IndexBytes(3, {{42, 4, 0}, {7, 5, 0}})); },
         {"user/log/night/20240304.idx: damaged (its count promises more records than the file holds)"}},
        {".idx shorter than its head", [] { WriteFileBytes("user/log/cons/12.idx", {0, 0}); },
         {"user/log/cons/12.idx: too short for its header"}},
        {"index rows out of order",
         [] { WriteFileBytes("user/log/night/20240304.idx", IndexBytes(2, {{7, 5, 0}, {42, 4, 0}})); },
         {"user/log/night/20240304.idx: row 2 is out of order: it sorts before row 1"}},
        {"an object twice",
         [] { WriteFileBytes("user/log/loc/Home.idx", IndexBytes(2, {{7, 5, 0}, {7, 5, 0}})); },
         {"user/log/loc/Home.idx: row 2 names the same object as row 1"}},
        // Keys compare as signed values: a key with bit 31 comes first.
        {"index row of an object without rows",
         [] {
             WriteFileBytes("user/log/cons/12.idx",
                            IndexBytes(3, {{0x80000001u, 4, 0}, {42, 4, 0}, {99, 4, 0}}));
         },
         {"user/log/cons/12.idx: row 1 names object 2147483649 of stars, which has no rows",
          "user/log/cons/12.idx: row 3 names object 99 of stars, which has no rows"}},
        {"index row of a slot without folder",
         [] { WriteFileBytes("user/log/class/13.idx", IndexBytes(1, {{1, 13, 0}})); },
         {"user/log/class/13.idx: row 1 names the class slot 13, which has no folder"}},
    };
    for (const Damage& c : cases) {
        SCOPED_TRACE(c.what);
        Remove("user");
        WriteHealthyLog();
        c.apply();
        Lines problems;
        EXPECT_FALSE(LogCheck(problems));
        EXPECT_EQ(problems, c.lines);
    }
}

// Every file and folder of the working folder, with the files' bytes.
std::map<std::string, Bytes> Snapshot() {
    std::map<std::string, Bytes> files;
    for (const auto& e : fs::recursive_directory_iterator("."))
        files[e.path().generic_string()] = e.is_regular_file() ? ReadFileBytes(e.path().string()) : Bytes{};
    return files;
}

// The folder check runs the log check, and neither makes, changes nor
// removes a file: not the missing pid.bin of other classes, not the .pix
// a damaged index names.
TEST_F(LogCheckTest, FolderCheckReportsTheLogAndChangesNothing) {
    WriteHealthyLog();
    WriteFileBytes("user/log/cons/12.idx", IndexBytes(1, {{5, 2, 0}}));
    const auto before = Snapshot();
    Lines problems;
    EXPECT_FALSE(CheckFolders("legacy", problems));
    EXPECT_EQ(problems, Lines{"user/log/cons/12.idx: row 1 names object 5 of comets, which has no rows"});
    EXPECT_EQ(Snapshot(), before);
}

}  // namespace
