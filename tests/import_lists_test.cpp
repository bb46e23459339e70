// The version 1.x object files' readers and the observing-list import job,
// held to hand-written bytes, the exact log lines and messages, and what
// the list store and the user's object stores hold afterwards.
#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "astro/numeric.h"
#include "catalog/catalogue_roots.h"
#include "catalog/minor_planet_roots.h"
#include "job_support.h"
#include "legacy/import_lists.h"
#include "legacy_list_fixtures.h"
#include "stores/list_store.h"
#include "user_object_bytes.h"

namespace {

namespace fs = std::filesystem;

// ---- Readers ----------------------------------------------------------------

class LegacyObjectsTest : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        MakeDirs("legacy");
    }
};

TEST_F(LegacyObjectsTest, TheRunReaderFindsARunAndStepsAlongItUntilAnotherComet) {
    WriteLegacyComets({LegacyComet(5, "A", 0.1), LegacyComet(7, "B", 0.1), LegacyComet(7, "B", 0.2),
                       LegacyComet(7, "B", 0.3), LegacyComet(9, "C", 0.1)});
    const struct {
        uint32_t pid;
        long count;
        std::vector<std::pair<int, long>> calls;  // answer and row of each call
    } cases[] = {
        {7, 5, {{1, 1}, {1, 2}, {1, 3}, {0, 4}}},
        {5, 5, {{1, 0}, {0, 1}}},
        {9, 5, {{1, 4}, {0, 0}}},          // the next read is short
        {7, 3, {{1, 1}, {1, 2}, {0, 4}}},  // the third row of 7 lies past the count
        {8, 5, {{0, 4}}},                  // a comet without rows
        {7, 0, {{0, -1}}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.pid);
        int count = 0;
        FilePtr f = OpenLegacyComets("legacy", &count);
        ASSERT_TRUE(f);
        EXPECT_EQ(count, 5);
        LegacyCometRow row;
        row.pid = 123;
        ASSERT_EQ(RewindLegacyComets(f.get(), &row), 1);
        for (const auto& [answer, index] : c.calls) {
            long at = -9;
            EXPECT_EQ(NextLegacyCometRow(f.get(), &row, &at, c.pid, c.count), answer);
            EXPECT_EQ(at, index);
        }
    }
    long at = -9;
    LegacyCometRow row;
    EXPECT_EQ(NextLegacyCometRow(nullptr, &row, &at, 7, 5), 0);
    EXPECT_EQ(at, 0);

    // Minor planets: the same walk over 116-byte rows behind an 8-byte head,
    // read from bytes written by hand (PID at 97).
    Bytes mp = {3, 0, 0, 0, 9, 9, 9, 9};
    for (uint32_t pid : {4u, 6u, 6u}) {
        Bytes r(116, 0);
        std::memcpy(r.data(), pid == 4 ? "Eros" : "Ceres", 5);
        PokeU32(r, 97, pid);
        mp.insert(mp.end(), r.begin(), r.end());
    }
    WriteFileBytes("legacy/mp.bin", mp);
    uint32_t mpCount = 0;
    FilePtr m = OpenLegacyMinorPlanets("legacy", &mpCount);
    ASSERT_TRUE(m);
    EXPECT_EQ(mpCount, 3u);
    UserMpRecord planet;
    ASSERT_EQ(RewindLegacyMinorPlanets(m.get(), &planet), 1);
    EXPECT_EQ(NextLegacyMinorPlanetRow(m.get(), &planet, &at, 6, 3), 1);
    EXPECT_EQ(at, 1);
    EXPECT_STREQ(planet.name, "Ceres");
    EXPECT_EQ(NextLegacyMinorPlanetRow(m.get(), &planet, &at, 6, 3), 1);
    EXPECT_EQ(at, 2);
    EXPECT_EQ(NextLegacyMinorPlanetRow(m.get(), &planet, &at, 6, 3), 0);
}

TEST_F(LegacyObjectsTest, ALegacyCometRowMovesToTheVersionTwoOffsets) {
    Bytes file = {1, 0, 0xEE, 0xEE};
    Bytes row(101, 0);
    PokeU16(row, 0, 2);
    row[2] = 'P';
    std::memcpy(&row[3], "Encke", 5);
    std::memcpy(&row[32], "1786 B1XYZ", 10);  // all ten characters used
    PokeU16(row, 42, 31);
    for (size_t i = 0; i < 44; ++i) row[44 + i] = static_cast<uint8_t>(0x40 + i);
    PokeI16(row, 88, 1234);
    std::memcpy(&row[90], "MPC 12345ab", 11);
    file.insert(file.end(), row.begin(), row.end());
    WriteFileBytes("legacy/comet.bin", file);

    Bytes expected(130, 0);
    PokeU16(expected, 0, 2);
    expected[2] = 'P';
    std::memcpy(&expected[3], "Encke", 5);
    std::memcpy(&expected[32], "1786 B1XYZ", 10);  // then the NUL at 42 and zeros
    PokeU16(expected, 49, 31);
    for (size_t i = 0; i < 44; ++i) expected[51 + i] = static_cast<uint8_t>(0x40 + i);
    PokeI16(expected, 95, 1234);
    std::memcpy(&expected[97], "MPC 12345ab", 11);

    int count = 0;
    FilePtr f = OpenLegacyComets("legacy", &count);
    LegacyCometRow buffer;
    long at = 0;
    ASSERT_EQ(RewindLegacyComets(f.get(), &buffer), 1);
    ASSERT_EQ(NextLegacyCometRow(f.get(), &buffer, &at, 31, count), 1);
    const auto image = RecordImage<CometLayout>(WidenLegacyComet(buffer));
    EXPECT_EQ(Bytes(image.begin(), image.end()), expected);
}

// Stars written by hand: PID at 0, name at 14, rows of 47 from offset 6.
void WriteStarsByHand(std::initializer_list<std::pair<uint32_t, const char*>> stars) {
    Bytes b = {static_cast<uint8_t>(stars.size()), 0, 0xEE, 0xEE, 0xEE, 0xEE};
    for (const auto& [pid, name] : stars) {
        Bytes r(47, 0);
        PokeU32(r, 0, pid);
        std::memcpy(&r[14], name, std::strlen(name));
        b.insert(b.end(), r.begin(), r.end());
    }
    WriteFileBytes("legacy/stellar.bin", b);
}

TEST_F(LegacyObjectsTest, ThePidMapIsRebuiltInTheLegacyFolderWithTheFirstRowOfEachRun) {
    WriteStarsByHand({{3, "Three"}, {3, "Three again"}, {1, "One"}, {4, "Four"}});
    FilePtr stars = OpenLegacyStellar("legacy", nullptr);
    ASSERT_TRUE(stars);
    const struct {
        uint32_t pid;
        int answer;
        const char* name;
        long rowNumber;
    } cases[] = {
        {3, 3, "Three", 1},
        {1, 1, "One", 3},
        {4, 4, "Four", 4},
        {2, 3, "Three", 1},  // a gap in the map holds 0: the first row is read
        {5, 0, "kept", 77},  // past the highest PID: nothing changes
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.pid);
        StellarRecord row = LegacyStar(0, "kept");
        long rowNumber = 77;
        EXPECT_EQ(FindLegacyStar("legacy", stars.get(), c.pid, &row, &rowNumber), c.answer);
        EXPECT_STREQ(row.name, c.name);
        EXPECT_EQ(rowNumber, c.rowNumber);
    }
    EXPECT_EQ(ReadFileBytes("legacy/us_pid.bin"), PidIndexBytes({4, 2, 0, 0, 3}));

    // A map that is there is taken as it stands.
    WriteFileBytes("legacy/us_pid.bin", PidIndexBytes({1, 3}));
    StellarRecord row;
    EXPECT_EQ(FindLegacyStar("legacy", stars.get(), 1, &row, nullptr), 4);
}

TEST_F(LegacyObjectsTest, AMapThatCannotBeMadeFindsNothingAndLeavesTheBufferAlone) {
    WriteStarsByHand({{1, "One"}});
    FilePtr stars = OpenLegacyStellar("legacy", nullptr);
    StellarRecord row = LegacyStar(0, "before");
    {
        // The legacy folder refuses the new file: its write fails.
        ScopedFault fault(FileOp::kWrite, 1, FileFault::kFail);
        EXPECT_EQ(FindLegacyStar("legacy", stars.get(), 1, &row, nullptr), 0);
    }
    EXPECT_STREQ(row.name, "before");
    EXPECT_FALSE(fs::exists("legacy/us_pid.bin"));  // nothing half-made is left
    // Something that is no file stands in the map's place: never replaced.
    MakeDirs("legacy/us_pid.bin/keep");
    uint32_t maxPid = 0;
    EXPECT_FALSE(OpenLegacyPidMap("legacy", stars.get(), &maxPid));
    EXPECT_EQ(FindLegacyStar("legacy", stars.get(), 1, &row, nullptr), 0);
    EXPECT_TRUE(fs::is_directory("legacy/us_pid.bin/keep"));
    EXPECT_FALSE(OpenLegacyPidMap("nowhere", nullptr, &maxPid));
}

// ---- The job ----------------------------------------------------------------

// What a list row in the store says: class, PID, flags, class mask.
struct Item {
    int objectClass;
    uint32_t pid;
    int sizeUnit;
    uint32_t classMask;
    bool operator==(const Item&) const = default;
};
std::ostream& operator<<(std::ostream& os, const Item& i) {
    return os << "{" << i.objectClass << ", " << i.pid << ", " << i.sizeUnit << ", " << i.classMask << "}";
}

class ImportListsTest : public JobTest {
protected:
    void SetUp() override {
        JobTest::SetUp();
        MakeDirs("user");
        MakeDirs("legacy");
        const std::string set = FERRY2_REFDATA_DIR, solar = FERRY2_SOLAR_DIR;
        setCatalogueRoots((set + "small/").c_str(), (set + "stars/").c_str(), (set + "gsc/").c_str());
        setMinorPlanetRoots(solar.c_str(), (solar + "elements").c_str());
    }
    void TearDown() override {
        setMinorPlanetRoots("", "");
        JobTest::TearDown();
    }
    int RunTicked(std::vector<uint8_t> ticks) { return RunJob(ImportObservingLists, &ticks); }

    // Name and count of a slot of user/lists/obs.idx.
    static std::pair<std::string, int> Slot(int slot) {
        const Bytes idx = ReadFileBytes("user/lists/obs.idx");
        const size_t at = 2 + 58 * static_cast<size_t>(slot);
        if (idx.size() < at + 58) return {"<none>", -2};
        return {std::string(reinterpret_cast<const char*>(&idx[at])), PeekI16(idx, at + 48)};
    }
    // The slots the index holds whole rows for.
    static int SlotCount() {
        const Bytes idx = ReadFileBytes("user/lists/obs.idx");
        if (idx.size() < 2) return 0;
        return std::min<int>(PeekI16(idx, 0), static_cast<int>((idx.size() - 2) / 58));
    }
    // Every row written to a slot's item file, counted or not.
    static std::vector<Item> Items(int slot) {
        const Bytes b = ReadFileBytes(ListItemPath(slot));
        std::vector<Item> items;
        for (size_t at = 44; at + 224 <= b.size(); at += 224)
            items.push_back({b[at + 145], PeekU32(b, at + 141), b[at + 120], PeekU32(b, at + 201)});
        return items;
    }
};

TEST_F(ImportListsTest, TickedListsBecomeNewListsWhoseRowsKeepClassPidAndFlags) {
    // Written by hand: obs.idx rows of a 33-byte name and a u16 count, and
    // object rows of 83 bytes with the flags at 16, PID at 26, class at 30.
    auto indexRow = [](Bytes& b, const char* name, uint16_t count) {
        Bytes r(35, 0);
        std::memcpy(r.data(), name, std::strlen(name));
        PokeU16(r, 33, count);
        b.insert(b.end(), r.begin(), r.end());
    };
    Bytes index = {4, 0};
    indexRow(index, "Messier", 6);
    indexRow(index, "", 65535);  // a free row
    indexRow(index, "Empty", 0);
    indexRow(index, "Unticked", 1);
    WriteFileBytes("legacy/obs.idx", index);
    Bytes list(44, 0x77);
    const struct {
        uint8_t cls;
        uint32_t pid;
        uint8_t flags;
    } rows[] = {{6, 31, 2}, {0, 5, 2}, {8, 57, 3}, {15, 1, 2}, {20, 1, 2}, {5, 0x80001234u, 2}};
    for (const auto& r : rows) {
        Bytes b(83, 0x33);
        b[16] = r.flags;
        PokeU32(b, 26, r.pid);
        b[30] = r.cls;
        list.insert(list.end(), b.begin(), b.end());
    }
    WriteFileBytes("legacy/obs.000", list);
    WriteFileBytes("legacy/obs.002", Bytes(44, 0));
    WriteFileBytes("legacy/obs.003", LegacyListFile({ListObject(6, 1)}));

    // The second visible row has tick 2: ticks go by row number.
    EXPECT_EQ(RunTicked({1, 0, 1, 0}), 1);
    EXPECT_EQ(OnlyMessage(), Plain("Imported 2 of 2, 0 lists skipped, 0 objects skipped"));
    EXPECT_EQ(ReadFileText("ferry2.log"), "");
    EXPECT_EQ(SlotCount(), 2);
    EXPECT_EQ(Slot(0), std::make_pair(std::string("Messier"), 3));
    EXPECT_EQ(Slot(1), std::make_pair(std::string("Empty"), 0));
    // Classes 0 and 15 up are dropped without a word.
    EXPECT_EQ(Items(0), (std::vector<Item>{{6, 31, 2, 256}, {8, 57, 3, 1024}, {5, 0x80001234u, 2, 16}}));
    const std::string text = "This observing list was imported from Vesperal 1.x";
    Bytes desc = {static_cast<uint8_t>(text.size()), 0, 0, 0};
    desc.insert(desc.end(), text.begin(), text.end());
    desc.push_back(0);
    EXPECT_EQ(ReadFileBytes(ListDescriptionPath(0)), desc);
    EXPECT_EQ(ReadFileBytes(ListDescriptionPath(1)), desc);
}

TEST_F(ImportListsTest, ListsTriedSkippedAndImportedAreCountedApart) {
    ASSERT_EQ(ListCreate("Dup", nullptr), 0);
    WriteLegacyLists({FreeRow(),
                      {"Dup", {ListObject(6, 1)}},
                      {"Gone", {ListObject(6, 1)}},
                      {"Short", {ListObject(6, 1), ListObject(6, 2)}, false, 3},
                      {"After", {ListObject(11, 4)}}});
    fs::remove("legacy/obs.002");

    EXPECT_EQ(RunTicked({0, 1, 1, 1, 1}), 1);
    EXPECT_EQ(OnlyMessage(), Plain("Imported 1 of 4, 2 lists skipped, 0 objects skipped"));
    EXPECT_EQ(ReadFileText("ferry2.log"),
              "Observing List: Warning: observing list already exists (not imported) -> Dup\n"
              "Observing List: Warning: unable to open V1.x observing list -> legacy/obs.002 (2)\n"
              "Observing List: Error reading Short -> 2 of 3\n");
    // The short list stays with its rows uncounted.
    EXPECT_EQ(Slot(1), std::make_pair(std::string("Short"), 0));
    EXPECT_EQ(Items(1).size(), 2u);
    EXPECT_EQ(Slot(2), std::make_pair(std::string("After"), 1));
    EXPECT_EQ(Items(2), (std::vector<Item>{{11, 4, 2, 8192}}));

    // An index of free rows only: the plain form with four zeros.
    WriteLegacyLists({FreeRow(), FreeRow()});
    EXPECT_EQ(RunTicked({0, 0}), 1);
    EXPECT_EQ(OnlyMessage(), Plain("Imported 0 of 0, 0 lists skipped, 0 objects skipped"));
}

TEST_F(ImportListsTest, AJobThatStopsShowsTheErrorFormWithTheCountsSoFar) {
    const std::vector<LegacyListObject> big(32768, ListObject(5, 7));
    const std::vector<uint8_t> one = {1}, two = {1, 1};
    const struct {
        const char* what;
        std::vector<LegacyList> lists;
        int indexCount;  // the index's list count, -1 for the rows' number, -2 for no index
        const std::vector<uint8_t>* ticks;
        const char* log;
        const char* counts;
        int firstSlotCount;  // -2: no such slot
    } cases[] = {
        {"no tick array", {{"A", {}}}, -1, nullptr, "Observing List: Internal error\n",
         "Imported 0 of 0, 0 lists skipped, 0 objects skipped", -2},
        {"no index", {}, -2, &one,
         "Observing List: Unable to open V1.x observing list index\n",
         "Imported 0 of 0, 0 lists skipped, 0 objects skipped", -2},
        {"index shorter than its count", {{"A", {ListObject(6, 1)}}}, 2, &two,
         "Observing List: Error reading V1.x observing list index -> 1 of 2\n",
         "Imported 1 of 1, 0 lists skipped, 0 objects skipped", 1},
        {"more objects than a list holds", {{"Big", big}}, -1, &one,
         "Observing List: Error adding object to database for Big -> 32767 of 32768\n",
         "Imported 0 of 1, 0 lists skipped, 0 objects skipped", 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        fs::remove_all("user/lists");
        fs::remove_all("legacy");
        MakeDirs("legacy");
        if (c.indexCount != -2) WriteLegacyLists(c.lists);
        if (c.indexCount >= 0) {
            Bytes idx = ReadFileBytes("legacy/obs.idx");
            PokeI16(idx, 0, static_cast<int16_t>(c.indexCount));
            WriteFileBytes("legacy/obs.idx", idx);
        }
        std::remove("ferry2.log");
        EXPECT_EQ(RunJob(ImportObservingLists, c.ticks), 0);
        EXPECT_EQ(OnlyMessage(), Error(c.counts));
        EXPECT_EQ(ReadFileText("ferry2.log"), c.log);
        EXPECT_EQ(Slot(0).second, c.firstSlotCount);
    }
}

TEST_F(ImportListsTest, UserCometsAndMinorPlanetsAreCopiedOnceAndShareTheirPid) {
    WriteLegacyComets({LegacyComet(5, "Other", 0.1), LegacyComet(7, "NEOWISE", 0.2),
                       LegacyComet(7, "NEOWISE", 0.3), LegacyComet(9, "Later", 0.1)});
    WriteLegacyMinorPlanets({LegacyMinorPlanet(4, "Eros", 433, 0.0), LegacyMinorPlanet(6, "Ceres", 1, 0.0)});
    WriteLegacyLists({{"One", {ListObject(13, 7, 3), ListObject(13, 3), ListObject(14, 4)}},
                      {"Two", {ListObject(13, 7), ListObject(14, 4), ListObject(13, 9)}}});

    EXPECT_EQ(RunTicked({1, 1}), 1);
    EXPECT_EQ(OnlyMessage(), Plain("Imported 2 of 2, 0 lists skipped, 1 objects skipped"));
    EXPECT_EQ(ReadFileText("ferry2.log"), "Observing List: No object PID for One -> 1 of 3 (skipped)\n");
    EXPECT_EQ(Items(0), (std::vector<Item>{{13, 1, 3, 4}, {14, 1, 2, 8}}));
    EXPECT_EQ(Items(1), (std::vector<Item>{{13, 1, 2, 4}, {14, 1, 2, 8}, {13, 2, 2, 4}}));
    // Both rows of NEOWISE under PID 1, then the other comet; one planet.
    const Bytes comets = ReadFileBytes("user/comet.bin");
    EXPECT_EQ(Slice(comets, 0, 4), (Bytes{3, 0, 2, 0}));
    EXPECT_EQ(PeekU32(ReadFileBytes("user/mp.bin"), 0), 1u);
}

TEST_F(ImportListsTest, AStarTheCataloguesKnowBecomesTheirObjectAndTheRestGoToTheUserStore) {
    WriteLegacyStars({LegacyStar(1, "Vega"), LegacyStar(2, "My Own Star")});
    // The third row's PID is past the map: the search gives 0, and the row
    // goes on with the star the buffer held last.
    WriteLegacyLists({{"Stars", {ListObject(12, 1), ListObject(12, 2, 3), ListObject(12, 99)}}});

    EXPECT_EQ(RunTicked({1}), 1);
    EXPECT_EQ(OnlyMessage(), Plain("Imported 1 of 1, 0 lists skipped, 0 objects skipped"));
    EXPECT_EQ(ReadFileText("ferry2.log"), "");
    const std::vector<Item> items = Items(0);
    ASSERT_EQ(items.size(), 3u);
    EXPECT_EQ(items[0].objectClass, 5);
    const Bytes b = ReadFileBytes(ListItemPath(0));
    EXPECT_NEAR(PeekF64(b, 44 + 16), 279.234583 * kRadiansPerDegree, 1e-5);  // Vega, J2000
    EXPECT_NEAR(PeekF64(b, 44 + 24), 38.783611 * kRadiansPerDegree, 1e-5);
    EXPECT_EQ(items[1], (Item{12, 1, 3, 16}));
    EXPECT_EQ(items[2], (Item{12, 1, 2, 16}));
    const Bytes stellar = ReadFileBytes("user/stellar.bin");
    EXPECT_EQ(PeekI16(stellar, 0), 1);
    EXPECT_STREQ(reinterpret_cast<const char*>(&stellar[6 + 14]), "My Own Star");
    EXPECT_EQ(ReadFileBytes("legacy/us_pid.bin"), PidIndexBytes({2, 0, 1}));
}

TEST_F(ImportListsTest, AFaultAnywhereKeepsFinishedListsAndLeavesTheOpenOneAtZero) {
    const std::vector<LegacyListObject> three = {ListObject(6, 1), ListObject(6, 2), ListObject(6, 3)};
    bool sawHalfWay = false;
    for (int nth = 1;; ++nth) {
        SCOPED_TRACE(nth);
        fs::remove_all("user");
        MakeDirs("user");
        WriteLegacyLists({{"First", three}, {"Second", three}});
        std::remove("ferry2.log");
        int result = 0;
        {
            ScopedFault fault(FileOp::kWrite, nth, FileFault::kShort);
            result = RunTicked({1, 1});
            if (!FileFaultFired()) {
                EXPECT_EQ(result, 1);
                break;
            }
        }
        EXPECT_EQ(messages_.size(), 1u);
        // Whatever the store kept is a whole list or an empty one.
        const int slots = SlotCount();
        for (int s = 0; s < slots; ++s) {
            const int count = Slot(s).second;
            EXPECT_TRUE(count == 0 || count == 3) << "slot " << s << " count " << count;
            if (count == 3) {
                EXPECT_EQ(Items(s), (std::vector<Item>{{6, 1, 2, 256}, {6, 2, 2, 256}, {6, 3, 2, 256}}));
            }
        }
        if (result == 0 && slots == 2 && Slot(0).second == 3 && Slot(1).second == 0 &&
            ReadFileText("ferry2.log").find("Error adding object to database for Second -> ") != std::string::npos) {
            sawHalfWay = true;
            EXPECT_EQ(OnlyMessage(), Error("Imported 1 of 2, 0 lists skipped, 0 objects skipped"));
        }
    }
    EXPECT_TRUE(sawHalfWay);
}

}  // namespace
