// The list exchange file: its bytes against an image written by hand for
// an object of each of the user's stores, the way back into another folder
// with the user's objects made again, the import into a list of the same
// name, the batches, discarding, the files it refuses, and failing writes.
#include <cstring>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "base/platform.h"
#include "stores/exchange_header.h"
#include "stores/list_exchange.h"
#include "stores/list_store.h"
#include "support.h"
#include "user_object_bytes.h"
#include "user_object_stores.h"

namespace {

namespace fs = std::filesystem;

constexpr uint64_t kStampValue = 0x01D6A1B2C3D4E5F6ull;
const Bytes kStampBytes = {0xF6, 0xE5, 0xD4, 0xC3, 0xB2, 0xA1, 0xD6, 0x01};

uint64_t FixedStamp() { return kStampValue; }

// A field of `width` bytes holding the text and zeros.
void PutText(Bytes& b, const std::string& text, size_t width) {
    Bytes field(width, 0);
    std::memcpy(field.data(), text.data(), std::min(text.size(), width));
    b.insert(b.end(), field.begin(), field.end());
}

void Append(Bytes& b, const Bytes& more) { b.insert(b.end(), more.begin(), more.end()); }

// Bytes from..to of a record, a pattern that no two fields share.
void PutPattern(Bytes& b, size_t from, size_t to, uint8_t seed) {
    for (size_t i = from; i < to; ++i) b.push_back(static_cast<uint8_t>(seed + 3 * i));
}

Bytes StarRow(uint32_t pid, const std::string& name) {
    Bytes b;
    PutU32(b, pid);
    PutU32(b, 0x11223344);
    PutU32(b, 0x05060708);
    PutU16(b, 750);
    PutText(b, name, 33);
    return b;
}

Bytes DeepSkyRow(uint32_t pid, const std::string& name) {
    Bytes b;
    PutU32(b, pid);
    PutU32(b, 0x21222324);
    PutU32(b, 0xF5F6F7F8);
    PutU16(b, 1100);
    PutU16(b, 450);
    PutText(b, name, 33);
    b.push_back(8);  // planetary nebula
    PutU16(b, 50);
    PutU16(b, 25);
    return b;
}

Bytes CometRow(uint16_t pid, const std::string& name, uint8_t seed) {
    Bytes b;
    PutU16(b, 0);
    b.push_back('C');
    PutText(b, name, 29);
    PutText(b, "2020 F3", 17);
    PutU16(b, pid);
    PutPattern(b, 51, 97, seed);
    PutText(b, "test", 33);
    return b;
}

Bytes MinorPlanetRow(uint32_t pid, const std::string& name, uint8_t seed) {
    Bytes b;
    PutText(b, name, 33);
    PutU32(b, 433);
    PutPattern(b, 37, 97, seed);
    PutU32(b, pid);
    PutPattern(b, 101, 105, seed);
    PutText(b, "MPC", 11);
    return b;
}

class ListExchangeTest : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        previousStamp_ = platform::SetSystemFileTimeOverride(FixedStamp);
        MakeDirs("user");
    }
    void TearDown() override {
        platform::SetSystemFileTimeOverride(previousStamp_);
        ScratchTest::TearDown();
    }

    // A list of the objects (class, PID) in order; its slot.
    static int MakeList(const char* name, const std::vector<std::pair<int, uint32_t>>& objects) {
        const int slot = ListCreate(name, nullptr);
        int count = 0;
        FilePtr items = ListOpenItems(slot, &count);
        for (const auto& [objectClass, pid] : objects) {
            ObjectRecord r = identityRecord(objectClass, pid);
            EXPECT_EQ(ListAppendItem(items.get(), &r, &count), 1);
        }
        EXPECT_EQ(ListCloseItems(std::move(items), slot, count), 1);
        return slot;
    }

    static std::vector<ObjectRecord> Rows(int slot) {
        int count = 0;
        FilePtr items = ListOpenItems(slot, &count);
        std::vector<ObjectRecord> rows(static_cast<size_t>(count));
        for (int i = 0; i < count; ++i) EXPECT_EQ(ListReadItem(items.get(), i, count, &rows[i]), 1);
        return rows;
    }

    std::string ExchangePath() const { return (root_ / "autumn.vle").string(); }

    int Export(int slot, const char* title, const char* description) {
        FilePtr file = ListExportBegin(ExchangePath().c_str(), title, description);
        return file && ListExportWrite(file.get(), slot, 0, nullptr, nullptr) ? 1 : 0;
    }

    // Runs a whole import; the steps taken, or -1 at a failed one.
    int Import(const std::string& path, int percent = 10, bool discard = false) {
        ListImport state;
        ExchangeHeader header;
        std::string description;
        if (!ListImportBegin(&state, path.c_str(), percent, &header, &description)) return -1;
        int steps = 0, answer = 0;
        while ((answer = ListImportStep(&state, nullptr)) == 1) ++steps;
        const int ended = ListImportEnd(&state, discard || answer < 0);
        return answer < 0 || !ended ? -1 : steps + 1;
    }

    // Every file under user/ with its bytes.
    static std::map<std::string, Bytes> Snapshot() {
        std::map<std::string, Bytes> files;
        for (const auto& e : fs::recursive_directory_iterator("user"))
            if (e.is_regular_file()) files[e.path().generic_string()] = ReadFileBytes(e.path().string());
        return files;
    }

    platform::SystemFileTimeFn previousStamp_ = nullptr;
};

TEST_F(ListExchangeTest, AListOfEachUserClassIsWrittenAsTheseBytes) {
    Bytes stars;
    PutU16(stars, 1);
    PutU32(stars, 1);
    Append(stars, StarRow(1, "My Star"));
    WriteFileBytes("user/stellar.bin", stars);
    Bytes deepSky;
    PutU32(deepSky, 1);
    PutU32(deepSky, 1);
    Append(deepSky, DeepSkyRow(1, "My Nebula"));
    WriteFileBytes("user/uds.bin", deepSky);
    Bytes comets;
    PutU16(comets, 3);
    PutU16(comets, 2);
    for (const Bytes& row : {CometRow(1, "NEOWISE", 10), CometRow(1, "NEOWISE", 20), CometRow(2, "ATLAS", 30)})
        Append(comets, row);
    WriteFileBytes("user/comet.bin", comets);
    Bytes planets;
    PutU32(planets, 2);
    PutU32(planets, 2);
    Append(planets, MinorPlanetRow(2, "Other", 40));
    Append(planets, MinorPlanetRow(1, "Eros", 50));
    WriteFileBytes("user/mp.bin", planets);

    const int slot = MakeList("Autumn", {{kClassStar, 7}, {kClassSupplementalStar, 1}, {kClassUserComet, 1},
                                         {kClassUserMinorPlanet, 1}, {kClassSupplementalDeepSky, 1},
                                         {kClassSupplementalStar, 9}});
    const std::string title(70, 'T');  // cut to 64
    ASSERT_EQ(Export(slot, title.c_str(), "Desc"), 1);

    Bytes want(103, 0);
    PokeU16(want, 0, 55555);
    want[2] = 2;
    want[3] = 0;
    want[4] = 'f';
    want[5] = 1;
    std::memset(want.data() + 6, 'T', 64);  // byte 70 stays the NUL
    PokeU32(want, 75, 6);
    std::memcpy(want.data() + 91, kStampBytes.data(), 8);
    PokeU32(want, 99, 4);
    PutText(want, "Desc", 5);
    PutText(want, "Autumn", 48);
    PutU16(want, 6);
    PutU16(want, 0);
    PutBytes(want, {5, 7, 0, 0, 0});
    PutBytes(want, {12, 1, 0, 0, 0});
    Append(want, Slice(stars, 6, 47));
    PutBytes(want, {13, 1, 0, 0, 0});
    PutU16(want, 2);
    Append(want, Slice(comets, 4, 2 * 130));
    PutBytes(want, {14, 1, 0, 0, 0});
    PutU32(want, 1);
    Append(want, Slice(planets, 8 + 116, 116));
    PutBytes(want, {18, 1, 0, 0, 0});
    Append(want, Slice(deepSky, 8, 54));
    PutBytes(want, {12, 9, 0, 0, 0});  // gone from its store: a zero record
    Append(want, Bytes(47, 0));
    EXPECT_EQ(ReadFileBytes(ExchangePath()), want);

    // The header reads back as written.
    FilePtr file = OpenFile(ExchangePath().c_str(), "rb");
    ExchangeHeader header;
    std::string description;
    ASSERT_EQ(ExchangeReadHeader(file.get(), &header, &description), 1);
    EXPECT_EQ(std::string(header.title), std::string(64, 'T'));
    EXPECT_EQ(header.recordCount, 6u);
    EXPECT_EQ(description, "Desc");
}

TEST_F(ListExchangeTest, AnExportIsCountedInTenthsAndRefusesIncludedRecords) {
    std::vector<std::pair<int, uint32_t>> objects;
    for (uint32_t i = 0; i < 25; ++i) objects.push_back({kClassGalaxy, i + 1});
    const int slot = MakeList("Galaxies", objects);
    FilePtr file = ListExportBegin(ExchangePath().c_str(), "t", "");
    int calls = 0;
    ASSERT_EQ(ListExportWrite(file.get(), slot, 0, [](int step, void* c) { *static_cast<int*>(c) += step; }, &calls),
              1);
    EXPECT_EQ(calls, 100);
    file.reset();

    for (uint16_t flags : {kListIncludeNotes, kListIncludeLinks, kListIncludeImages}) {
        FilePtr refused = ListExportBegin(ExchangePath().c_str(), "t", "");
        EXPECT_EQ(ListExportWrite(refused.get(), slot, flags, nullptr, nullptr), 0) << flags;
        refused.reset();
        EXPECT_EQ(ReadFileBytes(ExchangePath()).size(), 104u) << "the header alone";
    }
}

TEST_F(ListExchangeTest, TheUsersObjectsComeBackUnderTheirNewStoresPids) {
    MakeDirs("a/user");
    MakeDirs("b/user");
    fs::current_path(root_ / "a");
    WriteOneObjectPerUserStore();
    const int slot = MakeList("Autumn", {{kClassStar, 7}, {kClassSupplementalStar, 1}, {kClassUserComet, 1},
                                         {kClassUserMinorPlanet, 1}, {kClassSupplementalDeepSky, 1}});
    ASSERT_EQ(Export(slot, "Autumn", "Lists of the season"), 1);

    // The other folder has an object of each store already, and the nebula
    // by its name.
    fs::current_path(root_ / "b");
    {
        FilePtr s = openStellar(nullptr);
        StellarRecord star;
        makeStellarRecord(&star, "Other Star", 0.1, 0.1, 3.0);
        ASSERT_EQ(addOrReplaceStellar(s.get(), &star), 1);
        FilePtr u = openUds(nullptr);
        UdsRecord object;
        makeUdsRecord(&object, kClassGalaxy, "Filler", 0.2, 0.2, 9.0, 1, 1, 0);
        ASSERT_EQ(addOrReplaceUds(u.get(), &object), 1);
        makeUdsRecord(&object, kClassPlanetary, "My Nebula", 2.0, -0.25, 11.0, 0.5, 0.25, 0);
        ASSERT_EQ(addOrReplaceUds(u.get(), &object), 1);
        FilePtr c = openUserComets(nullptr);
        CometRecord comet;
        ASSERT_EQ(packComet(&comet, 1, 'P', "", "Halley", NeowiseElements(), "t"), 1);
        ASSERT_EQ(addOrReplaceUserComet(c.get(), comet), 1);
        uint32_t count = 0;
        FilePtr m = openUserMp(&count);
        UserMpRecord mp;
        ASSERT_EQ(packUserMp(&mp, 1, "Ceres", "t", 0, 0, 10, 2.77, 0, 0.0785, 73.6, 80.3, 10.6, 0, 3.34, 0.12), 1);
        ASSERT_EQ(addOrReplaceUserMp(m.get(), mp, &count), 1);
    }
    ASSERT_GT(Import(ExchangePath()), 0);

    const int imported = ListFindByName("Autumn", nullptr);
    ASSERT_EQ(imported, 0);
    const std::vector<ObjectRecord> rows = Rows(imported);
    struct Want {
        int objectClass;
        uint32_t pid;
    };
    const Want want[] = {{kClassStar, 7}, {kClassSupplementalStar, 2}, {kClassUserComet, 2},
                         {kClassUserMinorPlanet, 2}, {kClassSupplementalDeepSky, 2}};
    ASSERT_EQ(rows.size(), std::size(want));
    for (size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(rows[i].objectClass, want[i].objectClass) << i;
        EXPECT_EQ(rows[i].pid, want[i].pid) << i;
        EXPECT_EQ(rows[i].classMask, classMaskOf(want[i].objectClass)) << i;
        EXPECT_EQ(rows[i].sizeUnit, 2) << "placed at the next refresh";
    }

    StellarRecord star;
    FilePtr s = openStellar(nullptr);
    ASSERT_EQ(findStellarByPid(s.get(), 2, &star, nullptr), 1);
    EXPECT_STREQ(star.name, "My Star");
    long udsCount = 0;
    FilePtr u = openUds(&udsCount);
    EXPECT_EQ(udsCount, 2) << "the nebula was written over";
    FilePtr c = openUserComets(nullptr);
    CometRecord comet;
    ASSERT_GE(findUserComet(c.get(), 2, nullptr, nullptr, 0, &comet), 0);
    EXPECT_STREQ(comet.name, "NEOWISE");
    uint32_t count = 0;
    FilePtr m = openUserMp(&count);
    UserMpRecord mp;
    uint32_t row = 0;
    ASSERT_EQ(findUserMpByPid(m.get(), 2, &mp, &row), 1);
    EXPECT_STREQ(mp.name, "Eros");

    std::string description;
    ASSERT_EQ(ListReadDescription(imported, &description), 1);
    EXPECT_EQ(description, "Lists of the season");
}

TEST_F(ListExchangeTest, AnImportAddsToTheListOfItsNameWithTheFilesStamp) {
    const int slot = MakeList("Autumn", {{kClassGalaxy, 31}, {kClassGalaxy, 33}});
    ASSERT_EQ(Export(slot, "t", "New text"), 1);
    MakeList("Other", {});
    ASSERT_EQ(ListWriteDescription(slot, "Old text"), 1);

    ASSERT_GT(Import(ExchangePath()), 0);
    EXPECT_EQ(ListFindByName("Autumn", nullptr), slot) << "no second list";
    const Bytes index = ReadFileBytes("user/lists/obs.idx");
    EXPECT_EQ(PeekI16(index, 0), 2);
    EXPECT_EQ(PeekI16(index, 2 + 48), 4);
    EXPECT_EQ(Slice(index, 2 + 50, 8), kStampBytes);
    Bytes description;
    PutU32(description, 8);
    PutText(description, "New text", 9);
    EXPECT_EQ(ReadFileBytes("user/lists/desc.000"), description);
    std::vector<uint32_t> pids;
    for (const ObjectRecord& r : Rows(slot)) pids.push_back(r.pid);
    EXPECT_EQ(pids, (std::vector<uint32_t>{31, 33, 31, 33}));

    // Discarded, the list keeps what it had.
    ASSERT_GT(Import(ExchangePath(), 10, true), 0);
    EXPECT_EQ(Rows(slot).size(), 4u);
}

TEST_F(ListExchangeTest, ItemsComeInBatchesOfTheStepPercent) {
    struct Case {
        int items, percent, steps;
    } cases[] = {{25, 10, 13}, {25, 50, 3}, {25, 100, 1}, {5, 10, 5}, {0, 10, 1}};
    for (const Case& c : cases) {
        std::vector<std::pair<int, uint32_t>> objects(static_cast<size_t>(c.items), {kClassGalaxy, 1});
        const int slot = MakeList("Source", objects);
        ASSERT_EQ(Export(slot, "t", ""), 1);
        ASSERT_EQ(ListDelete(slot), 1);
        EXPECT_EQ(Import(ExchangePath(), c.percent), c.steps) << c.items << " at " << c.percent;
        const int imported = ListFindByName("Source", nullptr);
        EXPECT_EQ(Rows(imported).size(), static_cast<size_t>(c.items));
        ListDelete(imported);
    }
}

TEST_F(ListExchangeTest, ADiscardedImportDeletesTheListItMade) {
    const int slot = MakeList("Autumn", {{kClassGalaxy, 31}});
    ASSERT_EQ(Export(slot, "t", ""), 1);
    ASSERT_EQ(ListDelete(slot), 1);
    ASSERT_GT(Import(ExchangePath(), 10, true), 0);
    EXPECT_EQ(ListFindByName("Autumn", nullptr), -1);
    EXPECT_FALSE(fs::exists("user/lists/obs.000"));
}

TEST_F(ListExchangeTest, AFileOfAnotherKindVersionOrContentLeavesTheStoresAlone) {
    WriteOneObjectPerUserStore();
    const int slot = MakeList("Autumn", {{kClassSupplementalStar, 1}, {kClassUserComet, 1}});
    ASSERT_EQ(Export(slot, "t", "abc"), 1);
    const Bytes good = ReadFileBytes(ExchangePath());
    const size_t flags = 103 + 4 + 50;
    struct Case {
        const char* what;
        size_t offset;
        uint8_t value;
        bool imports;
    } cases[] = {
        {"magic", 0, 0x04, false},        {"major 1", 2, 1, false},       {"kind 6", 5, 6, false},
        {"notes", flags, 1, false},       {"links", flags, 2, false},
        {"images", flags, 8, false},      {"major 3", 2, 3, true},
    };
    const std::string path = (root_ / "changed.vle").string();
    for (const Case& c : cases) {
        Bytes changed = good;
        changed[c.offset] = c.value;
        WriteFileBytes(path, changed);
        const auto before = Snapshot();
        ListImport state;
        ExchangeHeader header;
        std::string description = "left over";
        const int begun = ListImportBegin(&state, path.c_str(), 10, &header, &description);
        EXPECT_EQ(begun, c.imports ? 1 : 0) << c.what;
        if (!begun) {
            EXPECT_EQ(description, "") << c.what;
            EXPECT_EQ(Snapshot(), before) << c.what;
        } else {
            ListImportEnd(&state, true);
        }
    }
}

TEST_F(ListExchangeTest, AFileCutShortFailsItsStepAndLeavesNoList) {
    const int slot = MakeList("Autumn", {{kClassStar, 7}, {kClassGalaxy, 31}, {kClassStar, 9}});
    ASSERT_EQ(Export(slot, "t", "abc"), 1);
    ASSERT_EQ(ListDelete(slot), 1);
    Bytes cut = ReadFileBytes(ExchangePath());
    cut.resize(cut.size() - 3);  // the last key loses its PID
    WriteFileBytes(ExchangePath(), cut);
    EXPECT_EQ(Import(ExchangePath(), 100), -1);
    EXPECT_EQ(ListFindByName("Autumn", nullptr), -1);
}

TEST_F(ListExchangeTest, AFailingWriteLeavesNoHalfImportedList) {
    WriteOneObjectPerUserStore();
    const int slot = MakeList("Autumn", {{kClassStar, 7}, {kClassSupplementalStar, 1}, {kClassUserComet, 1},
                                         {kClassUserMinorPlanet, 1}, {kClassSupplementalDeepSky, 1}});
    ASSERT_EQ(Export(slot, "t", "abc"), 1);
    ASSERT_EQ(ListDelete(slot), 1);
    int failures = 0;
    for (int nth = 1; nth < 200; ++nth) {
        int steps = 0;
        bool fired = false;
        {
            ScopedFault fault(FileOp::kWrite, nth, FileFault::kFail);
            steps = Import(ExchangePath());
            fired = FileFaultFired();
        }
        if (!fired) {
            EXPECT_GT(steps, 0);
            break;
        }
        ++failures;
        // A write that failed leaves no list, or the whole of it.
        const int found = ListFindByName("Autumn", nullptr);
        if (found >= 0) {
            EXPECT_EQ(Rows(found).size(), 5u) << "write " << nth;
            ListDelete(found);
        } else {
            EXPECT_LT(steps, 0) << "write " << nth;
        }
    }
    EXPECT_GT(failures, 5);
}

TEST_F(ListExchangeTest, AFailingReadOrWriteFailsTheExport) {
    WriteOneObjectPerUserStore();
    const int slot = MakeList("Autumn", {{kClassStar, 7}, {kClassSupplementalStar, 1}, {kClassUserComet, 1},
                                         {kClassUserMinorPlanet, 1}, {kClassSupplementalDeepSky, 1}});
    for (FileOp op : {FileOp::kRead, FileOp::kWrite}) {
        for (int nth = 1; nth < 100; ++nth) {
            ScopedFault fault(op, nth, FileFault::kShort);
            const int exported = Export(slot, "t", "abc");
            if (!FileFaultFired()) {
                EXPECT_EQ(exported, 1);
                break;
            }
            EXPECT_EQ(exported, 0) << (op == FileOp::kRead ? "read " : "write ") << nth;
        }
    }
}

}  // namespace
