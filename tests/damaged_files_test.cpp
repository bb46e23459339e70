// Stores whose count cannot be true, names without their end, and folders
// or devices in the place of files: the stores refuse to open, the jobs say
// which file is damaged, and the folder check names each problem.
#include <filesystem>
#include <string>
#include <vector>

#ifndef _WIN32
#include <sys/stat.h>
#endif

#include "job_support.h"
#include "legacy/import_locations.h"
#include "legacy/legacy_instruments.h"
#include "legacy/legacy_lists.h"
#include "legacy/legacy_locations.h"
#include "shell/folder_check.h"
#include "stores/eyepiece_pool.h"
#include "stores/instrument_store.h"
#include "stores/location_store.h"
#include "stores/observer_store.h"

namespace {

const std::string kBeyond = "damaged (its count promises more records than the file holds)";
const std::string kOutOfRange = "damaged (its count is out of range)";

Bytes WithCount(Bytes b, size_t at, int16_t count) {
    PokeI16(b, at, count);
    return b;
}

StoreDamage OpenDamage(const std::string& path) {
    StoreDamage damage = StoreDamage::kNone;
    FilePtr f;
    if (path == "user/loc.bin") f = LocationStoreOpen(nullptr, &damage);
    if (path == "user/observer.bin") f = ObserverStoreOpen(nullptr, &damage);
    if (path == "user/instr.bin") f = InstrumentStoreOpen(nullptr, &damage);
    if (path == "user/eyep.bin") f = EyepiecePoolOpen(&damage);
    EXPECT_EQ(f == nullptr, damage != StoreDamage::kNone) << path;
    return damage;
}

struct StoreCase {
    const char* path;
    Bytes bytes;
    StoreDamage damage;
    std::string checkLine;  // after "<path>: "; empty for none
};

const Bytes kTwoLocations = LocationFileBytes({LocationBytes("A", 1, 0), LocationBytes("B", 2, 0)});
const Bytes kTwoPool = PoolBytes(2, {{"A", 10, 50, 1}, {"B", 20, 60, 2}});

std::vector<StoreCase> StoreCases() {
    Bytes unterminated = LocationBytes("", 1, 0);
    std::fill(unterminated.begin() + 99, unterminated.begin() + 132, 'x');
    return {
        {"user/loc.bin", kTwoLocations, StoreDamage::kNone, ""},
        {"user/loc.bin", WithCount(kTwoLocations, 0, 1), StoreDamage::kNone, ""},  // a stale row
        {"user/loc.bin", WithCount(kTwoLocations, 0, 3), StoreDamage::kCountBeyondFile, kBeyond},
        {"user/loc.bin", WithCount(kTwoLocations, 0, -1), StoreDamage::kCountOutOfRange, kOutOfRange},
        {"user/loc.bin", LocationFileBytes({unterminated}), StoreDamage::kNone,
         "record 1 has an unterminated name"},
        {"user/observer.bin", WithCount(Bytes(84 + 2, 0), 0, 2), StoreDamage::kCountBeyondFile, kBeyond},
        {"user/instr.bin", InstrumentStoreBytes({"A", "B"}, 2), StoreDamage::kNone, ""},
        {"user/instr.bin", WithCount(InstrumentStoreBytes({"A", "B"}, 2), 2, 3),
         StoreDamage::kCountBeyondFile, kBeyond},
        {"user/eyep.bin", WithCount(kTwoPool, 2, 1), StoreDamage::kNone, ""},
        {"user/eyep.bin", WithCount(kTwoPool, 2, 3), StoreDamage::kCountBeyondFile, kBeyond},
    };
}

class DamagedFilesTest : public JobTest {
protected:
    void SetUp() override {
        JobTest::SetUp();
        MakeDirs("user");
        MakeDirs("legacy");
    }
};

TEST_F(DamagedFilesTest, StoresWithAnImpossibleCountDoNotOpenAndTheCheckNamesThem) {
    for (const StoreCase& c : StoreCases()) {
        std::filesystem::remove_all("user");
        MakeDirs("user");
        WriteFileBytes(c.path, c.bytes);
        SCOPED_TRACE(c.path + (" " + c.checkLine));
        EXPECT_EQ(OpenDamage(c.path), c.damage);
        EXPECT_EQ(ReadFileBytes(c.path), c.bytes);
        std::vector<std::string> problems;
        EXPECT_EQ(CheckFolders("legacy", problems), c.checkLine.empty());
        const std::vector<std::string> expected =
            c.checkLine.empty() ? std::vector<std::string>{}
                                : std::vector<std::string>{c.path + (": " + c.checkLine)};
        EXPECT_EQ(problems, expected);
    }
}

// Folders, devices and pipes in the place of legacy files open as missing
// files; the check names them.
TEST_F(DamagedFilesTest, OddLegacyFilesCountAsFilesThatCannotBeOpened) {
    MakeDirs("legacy/instr.bin");
    Bytes index = {1, 0, 'L'};  // one list row: a 33-byte name, 2 objects
    index.resize(2 + 33, 0);
    index.insert(index.end(), {2, 0});
    WriteFileBytes("legacy/obs.idx", index);
    MakeDirs("legacy/obs.000");
    std::vector<std::string> expected = {"legacy/instr.bin: is not a regular file",
                                         "legacy/obs.000: is not a regular file"};
#ifndef _WIN32
    std::filesystem::create_symlink("/dev/zero", "legacy/loc.bin");
    expected.insert(expected.begin(), "legacy/loc.bin: is not a regular file");
    ASSERT_EQ(::mkfifo("user/observer.bin", 0600), 0);
    expected.insert(expected.begin(), "user/observer.bin: is not a regular file");
    int count = 0;
    EXPECT_FALSE(OpenLegacyLocations("legacy", &count));
    EXPECT_FALSE(ObserverStoreOpen(&count));
    const std::vector<uint8_t> ticks = {1};
    EXPECT_EQ(RunJob(ImportLocations, &ticks), 0);
    EXPECT_TRUE(messages_.empty());
#endif
    int count2 = 0;
    EXPECT_FALSE(OpenLegacyInstruments("legacy", &count2));
    EXPECT_FALSE(OpenLegacyList("legacy", 0, &count2));
    std::vector<std::string> problems;
    EXPECT_FALSE(CheckFolders("legacy", problems));
    EXPECT_EQ(problems, expected);
}

}  // namespace
