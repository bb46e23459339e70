// The log store's folders, pid.bin tables, row files, presence table and
// registry against bytes written by hand, and what a failing read or write
// of pid.bin or the registry leaves behind.
#include <algorithm>
#include <cstring>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "stores/log_store.h"
#include "support.h"

namespace {

using LogStoreTest = ScratchTest;

Bytes PidBytes(uint32_t nextEntry, uint32_t count, const std::vector<uint32_t>& keys) {
    Bytes b(8 + 4 * keys.size(), 0);
    PokeU32(b, 0, nextEntry);
    PokeU32(b, 4, count);
    for (size_t i = 0; i < keys.size(); ++i) PokeU32(b, 8 + 4 * i, keys[i]);
    return b;
}

Bytes RegistryRowBytes(const std::string& name, uint8_t stampByte) {
    Bytes b(46, 0);
    std::memcpy(b.data(), name.data(), std::min<size_t>(name.size(), 38));
    for (int i = 0; i < 8; ++i) b[38 + i] = static_cast<uint8_t>(stampByte + i);
    return b;
}

ObjectRecord Object(int objectClass, uint32_t pid, uint32_t mask) {
    ObjectRecord r = identityRecord(objectClass, pid);
    r.classMask = mask;
    return r;
}

TEST_F(LogStoreTest, FoldersComeWithEmptyTablesButNoneForTheLastSlot) {
    ASSERT_EQ(LogEnsureFolders(), 1);
    for (int slot = 0; slot < 13; ++slot) EXPECT_EQ(ReadFileBytes(LogPidPath(slot)), Bytes(8, 0)) << slot;
    for (const char* f : {"class", "night", "loc", "observer", "instrument", "cons"})
        EXPECT_TRUE(std::filesystem::is_directory(std::string("user/log/") + f)) << f;
    EXPECT_FALSE(std::filesystem::exists("user/log/constellation"));
    EXPECT_EQ(LogCreateClass(13), 0);
    // An existing table is kept.
    WriteFileBytes("user/log/stars/pid.bin", PidBytes(4, 1, {9}));
    ASSERT_EQ(LogCreateClass(4), 1);
    EXPECT_EQ(ReadFileBytes("user/log/stars/pid.bin"), PidBytes(4, 1, {9}));
}

TEST_F(LogStoreTest, PidTableHandsOutNumbersAndKeepsKeysAscending) {
    // The first entry of a class gets number 0.
    EXPECT_EQ(LogPidInsertKey(4, 0x40000005), 0);
    EXPECT_EQ(ReadFileBytes("user/log/stars/pid.bin"), PidBytes(1, 1, {0x40000005}));
    EXPECT_EQ(LogPidInsertKey(4, 0x80000000u), 1);
    EXPECT_EQ(LogPidInsertKey(4, 7), 2);
    EXPECT_EQ(LogPidNextEntry(4), 3);
    EXPECT_EQ(ReadFileBytes("user/log/stars/pid.bin"), PidBytes(4, 3, {7, 0x40000005, 0x80000000u}));
    // A removal keeps nextEntry; a key not there is refused.
    EXPECT_EQ(LogPidRemoveKey(4, 0x40000005), 1);
    EXPECT_EQ(LogPidRemoveKey(4, 0x40000005), 0);
    EXPECT_EQ(ReadFileBytes("user/log/stars/pid.bin"), PidBytes(4, 2, {7, 0x80000000u}));

    // Rows past the count are ignored; a count the file can't hold fails.
    WriteFileBytes("user/log/comets/pid.bin", PidBytes(9, 1, {3, 2}));
    LogPidTable table;
    ASSERT_EQ(LogPidRead(2, &table), 1);
    EXPECT_EQ(table.keys, std::vector<uint32_t>{3});
    EXPECT_EQ(LogPidInsertKey(2, 1), 9);
    EXPECT_EQ(ReadFileBytes("user/log/comets/pid.bin"), PidBytes(10, 2, {1, 3}));
    WriteFileBytes("user/log/comets/pid.bin", PidBytes(9, 3, {3, 2}));
    EXPECT_EQ(LogPidRead(2, &table), 0);
    EXPECT_EQ(LogPidInsertKey(2, 1), -1);
    EXPECT_EQ(LogPidInsertKey(13, 1), -1);
}

TEST_F(LogStoreTest, PresenceTableFindsKeysOfTheirClass) {
    ASSERT_EQ(LogEnsureFolders(), 1);
    WriteFileBytes("user/log/stars/pid.bin", PidBytes(5, 3, {3, 10, 0x40000002}));
    WriteFileBytes("user/log/galaxies/pid.bin", PidBytes(1, 1, {5}));
    LogPresence table;
    ASSERT_EQ(LogPresenceLoad(&table), 1);
    struct Row {
        ObjectRecord object;
        int logged;
    };
    const Row rows[] = {
        {Object(kClassStar, 10, 16), 1},
        {Object(kClassStar, 3, 64 | 128), 1},
        {Object(kClassSupplementalStar, 2, 16), 1},
        {Object(kClassStar, 2, 16), 0},
        {Object(kClassSupplementalStar, 3, 16), 0},
        {Object(kClassStar, 4, 16), 0},
        {Object(kClassGalaxy, 5, 256), 1},
        {Object(kClassGalaxyGroup, 5, 0x10000), 0},
        {Object(kClassFixedPosition, 5, 32768), 0},
    };
    for (const Row& r : rows)
        EXPECT_EQ(LogObjectLogged(table, r.object), r.logged) << int(r.object.objectClass) << " " << r.object.pid;

    uint8_t marks[4] = {};
    ASSERT_EQ(LogMarkUserKeys(kClassSupplementalStar, marks, sizeof marks), 1);
    EXPECT_EQ(Bytes(marks, marks + 4), (Bytes{0, 0, 1, 0}));
    EXPECT_EQ(LogMarkUserKeys(kClassStar, marks, sizeof marks), 0);

    // A table too short for its count fails the load and leaves nothing.
    WriteFileBytes("user/log/quasars/pid.bin", PidBytes(1, 2, {1}));
    EXPECT_EQ(LogPresenceLoad(&table), 0);
    EXPECT_EQ(LogObjectLogged(table, Object(kClassStar, 10, 16)), 0);
}

TEST_F(LogStoreTest, RowFilesAreMadeEmptyAndReadThroughTheLayout) {
    uint32_t count = 99;
    FilePtr rows = LogOpenRows(16, 1234, true, &count);
    ASSERT_TRUE(rows);
    EXPECT_EQ(count, 0u);
    rows.reset();
    EXPECT_EQ(ReadFileBytes("user/log/stars/000001234s.pix"), Bytes(4, 0));

    Bytes file(4 + 9098, 0);
    PokeU32(file, 0, 1);
    PokeU32(file, 4, 17);
    std::memcpy(file.data() + 4 + 131 + 99, "Hill", 4);
    std::memcpy(file.data() + 4 + 263, "Ben", 3);
    std::memcpy(file.data() + 4 + 347 + 8718, "Refractor", 9);
    WriteFileBytes("user/log/galaxies/000000005.pix", file);
    rows = LogOpenRows(256, 5, false, &count);
    ASSERT_TRUE(rows);
    EXPECT_EQ(count, 1u);
    ObjectLogRow row;
    EXPECT_EQ(LogReadRow(rows.get(), &row), 17);
    EXPECT_STREQ(row.site.name, "Hill");
    EXPECT_STREQ(row.observer.name, "Ben");
    EXPECT_STREQ(row.instrument.name, "Refractor");
    EXPECT_EQ(LogReadRow(rows.get(), &row), -1);
    // No folder for the last slot, none for an unknown mask.
    EXPECT_FALSE(LogOpenRows(32768, 1, false, &count));
    EXPECT_FALSE(LogOpenRows(16384, 1, false, &count));
}

TEST_F(LogStoreTest, RegistryRowsByNameWithTheStampOverLongNames) {
    const uint8_t spring[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    const uint8_t later[8] = {9, 10, 11, 12, 13, 14, 15, 16};
    EXPECT_EQ(LogRegistryFind("Spring", nullptr), -1);
    ASSERT_EQ(LogRegistryPut("Spring", spring), 1);
    Bytes want = {1, 0, 0, 0};
    Bytes row = RegistryRowBytes("Spring", 1);
    want.insert(want.end(), row.begin(), row.end());
    EXPECT_EQ(ReadFileBytes("user/log/registry.bin"), want);

    // Names compare without case; a known name gets the new stamp.
    ASSERT_EQ(LogRegistryPut("SPRING", later), 1);
    uint8_t stamp[8] = {};
    EXPECT_EQ(LogRegistryFind("spring", stamp), 0);
    EXPECT_EQ(Bytes(stamp, stamp + 8), Bytes(later, later + 8));

    // A name of 38 characters runs into the stamp, is cut by it and is
    // never found again: each put adds a row.
    const std::string longName(38, 'n');
    ASSERT_EQ(LogRegistryPut(longName.c_str(), spring), 1);
    ASSERT_EQ(LogRegistryPut(longName.c_str(), spring), 1);
    EXPECT_EQ(LogRegistryFind(longName.c_str(), nullptr), -1);
    const Bytes file = ReadFileBytes("user/log/registry.bin");
    EXPECT_EQ(PeekU32(file, 0), 3u);
    EXPECT_EQ(Slice(file, 4 + 46, 46), RegistryRowBytes(longName, 1));
    EXPECT_EQ(LogRegistryFind(std::string(37, 'n').c_str(), nullptr), -1);
}

TEST_F(LogStoreTest, FailedReadsAndWritesLeaveTheOldFiles) {
    const uint8_t stamp[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    struct Operation {
        const char* what;
        const char* file;
        std::function<long()> run;
    };
    const Operation operations[] = {
        {"insert", "user/log/stars/pid.bin", [] { return LogPidInsertKey(4, 8); }},
        {"next", "user/log/stars/pid.bin", [] { return LogPidNextEntry(4); }},
        {"remove", "user/log/stars/pid.bin", [] { return static_cast<long>(LogPidRemoveKey(4, 9)); }},
        {"registry", "user/log/registry.bin", [&] { return static_cast<long>(LogRegistryPut("New", stamp)); }},
    };
    for (const Operation& op : operations)
        for (FileOp kind : {FileOp::kRead, FileOp::kWrite})
            for (FileFault fault : {FileFault::kFail, FileFault::kShort}) {
                int firedCount = 0;
                for (int n = 1; n < 6; ++n) {
                    SCOPED_TRACE(std::string(op.what) + " call " + std::to_string(n));
                    std::filesystem::remove_all("user");
                    ASSERT_EQ(LogEnsureFolders(), 1);
                    WriteFileBytes("user/log/stars/pid.bin", PidBytes(6, 2, {9, 0x40000001}));
                    ASSERT_EQ(LogRegistryPut("Old", stamp), 1);
                    const Bytes before = ReadFileBytes(op.file);
                    long result = 0;
                    bool fired = false;
                    {
                        ScopedFault armed(kind, n, fault);
                        result = op.run();
                        fired = FileFaultFired();
                    }
                    firedCount += fired ? 1 : 0;
                    if (fired) {
                        EXPECT_LE(result, 0);
                        EXPECT_EQ(ReadFileBytes(op.file), before);
                    } else {
                        EXPECT_GE(result, 1);
                    }
                    EXPECT_FALSE(std::filesystem::exists(std::string(op.file) + ".new"));
                }
                EXPECT_GT(firedCount, 0) << op.what;
            }
}

}  // namespace
