#include <cstring>

#include "legacy/scan_undefined.h"
#include "legacy_log_fixtures.h"
#include "shell/import_log.h"
#include "stores/location_store.h"
#include "stores/observer_store.h"

namespace {

using Names = std::vector<std::string>;

Bytes ObserverStoreBytes(const std::vector<const char*>& names) {
    Bytes b(2, 0);
    PokeI16(b, 0, static_cast<int16_t>(names.size()));
    for (const char* name : names) {
        Bytes r(84, 0);
        std::memcpy(r.data(), name, std::strlen(name));
        b.insert(b.end(), r.begin(), r.end());
    }
    return b;
}

class ScanUndefinedTest : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        MakeFolders();
    }
    static void MakeFolders() {
        std::filesystem::remove_all("user");
        std::filesystem::remove_all("legacy");
        MakeDirs("user");
        MakeDirs("legacy");
        WriteFileBytes("user/observer.bin", ObserverStoreBytes({"Ann"}));
        WriteFileBytes("user/instr.bin", InstrumentStoreBytes({"Dob"}));
    }
    // Runs the scan with the log open; the log's text is in log_ after.
    int Scan() {
        messages_.clear();
        FilePtr log = OpenImportLog();
        JobHost host;
        host.log = log.get();
        host.legacyRoot = "legacy";
        host.showMessage = [this](const char* text, const char* title) {
            messages_.push_back(title + std::string("|") + text);
        };
        const int status = ScanUndefined(host, &names_);
        log.reset();
        log_ = ReadFileText("ferry2.log");
        return status;
    }
    UndefinedNames names_;
    std::vector<std::string> messages_;
    std::string log_;
};

TEST_F(ScanUndefinedTest, NoIndexFilesEndsAtOnceWithoutAMessage) {
    EXPECT_EQ(Scan(), 0);
    EXPECT_TRUE(names_.observers.empty());
    EXPECT_TRUE(names_.instruments.empty());
    EXPECT_TRUE(messages_.empty());
    EXPECT_EQ(log_, "");
}

TEST_F(ScanUndefinedTest, FullWalkShowsTheMessageEvenWhenEverythingIsKnown) {
    // "Ann" is a prefix of the log's name, in any case; "Naked Eye" needs no record.
    WriteLegacyLogChains(4, {{{"ANN Smith", "Dob"}, {"Ann", "Naked Eye"}}});
    EXPECT_EQ(Scan(), 1);
    EXPECT_TRUE(names_.observers.empty());
    EXPECT_TRUE(names_.instruments.empty());
    ASSERT_EQ(messages_.size(), 1u);
    EXPECT_EQ(messages_[0],
              "Vesperal 2 Log Import|Before you can import log entries you must first define all of the\r\n"
              "instruments and observers that are not present in Vesperal 2.\r\n"
              "Select each of the undefined entries and either create a new entry\r\n"
              "or link it to an existing one.  Once all of the entries are cleared\r\n"
              "you may proceed to import your logs.");
}

TEST_F(ScanUndefinedTest, EachDistinctTextIsListedOnceInWalkOrder) {
    WriteLegacyLogChains(0,
                         {{{"Bob", "Refractor"}, {"Bo\tb\r\n", "Refractor"}, {"bob", "refractor"}},
                          {{"", ""}, {"\t", "Naked Eye"}, {"Ann", "naked eye"}},
                          {{"Cy", ""}, {"(blank)", "Re\tfractor"}}});
    EXPECT_EQ(Scan(), 1);
    // Observers are cleaned, and a cleaned empty name is "(blank)".
    EXPECT_EQ(names_.observers, (Names{"Bob", "bob", "(blank)", "Cy"}));
    // Instruments are not cleaned, and are looked up in the list before the
    // blank rule: each empty name adds another "(blank)".
    EXPECT_EQ(names_.instruments,
              (Names{"Refractor", "refractor", "(blank)", "naked eye", "(blank)", "Re\tfractor"}));
}

TEST_F(ScanUndefinedTest, LocationsTheStoreLacksByNameAreAdded) {
    const auto stored = [](const char* name, double latitude, uint8_t zone) {
        const auto image = RecordImage<LocationRecordLayout>(LocationRecord{LogSite(name, 0.0, latitude), {zone, 0, 0}});
        return Bytes(image.begin(), image.end());
    };
    WriteFileBytes("user/loc.bin", LocationFileBytes({stored("Home", 51.5, 1), stored("Away", 10.0, 2)}));
    WriteLegacyLogChains(11, {{{"Ann", "Dob", "Home"},
                               {"Ann", "Dob", "Away"},  // the same name at another place
                               {"Ann", "Dob", "Cabin", 30.0},
                               {"Ann", "Dob", "Cabin", 30.0}}});
    EXPECT_EQ(Scan(), 1);
    EXPECT_EQ(ReadFileBytes("user/loc.bin"),
              LocationFileBytes({stored("Home", 51.5, 1), stored("Away", 10.0, 2), stored("Cabin", 30.0, 0)}));
}

TEST_F(ScanUndefinedTest, EntryAndIndexWrittenByHandAreRead) {
    MakeDirs("legacy/log/cC");
    for (int slot = 0; slot < 12; ++slot) WriteFileBytes("legacy/log/class." + std::to_string(slot), Bytes(8, 0));
    // class.2: count 9, num 1, one row: flags 0xFFFFFFFF, first entry 7.
    WriteFileBytes("legacy/log/class.2", {9, 0, 0, 0, 1, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF, 7, 0, 0, 0});
    Bytes entry(440 + 3, 0);
    PokeU32(entry, 0, 0xFFFFFFFFu);  // next -1: the chain ends
    PokeF64(entry, 12, 1.0);          // the place: longitude, latitude, name
    PokeF64(entry, 20, 0.5);
    std::memcpy(&entry[12 + 99], "Field", 5);
    std::memcpy(&entry[227], "Zed", 3);
    std::memcpy(&entry[292], "Big Mak", 7);
    std::memcpy(&entry[357], "Clear", 5);
    PokeU16(entry, 438, 3);
    std::memcpy(&entry[440], "ok", 3);
    WriteFileBytes("legacy/log/cC/00000007.bin", entry);
    EXPECT_EQ(Scan(), 1);
    EXPECT_EQ(names_.observers, (Names{"Zed"}));
    EXPECT_EQ(names_.instruments, (Names{"Big Mak"}));
    EXPECT_EQ(ReadFileBytes("user/loc.bin"), LocationFileBytes({LocationBytes("Field", 1.0, 0.5)}));
}

TEST_F(ScanUndefinedTest, UnreadableEntryEndsOnlyItsChain) {
    WriteLegacyLogChains(3, {{{"Bob", "Dob"}, {"Lost", "Dob"}, {"Gone", "Dob"}}, {{"Cy", "Dob"}}});
    std::filesystem::remove(LegacyLogEntryPath("legacy", 3, 2));
    EXPECT_EQ(Scan(), 1);
    EXPECT_EQ(names_.observers, (Names{"Bob", "Cy"}));
    EXPECT_EQ(messages_.size(), 1u);
}

TEST_F(ScanUndefinedTest, ChainInACircleEndsWhereItComesBack) {
    WriteLegacyLogChains(0, {{{"Bob", "Dob"}, {"Cy", "Dob"}}});
    WriteLegacyLogEntry(0, 2, LegacyEntry(5, 6990, 2450000.5, "Cy", "Dob", LogSite("Home")), 1);
    EXPECT_EQ(Scan(), 1);
    EXPECT_EQ(names_.observers, (Names{"Bob", "Cy"}));
}

// Each way the walk can stop early keeps what it found, shows nothing, and
// logs only the location store's failures.
struct EarlyEnd {
    const char* what;
    void (*damage)();
    Names observers;
    const char* log;
};

const EarlyEnd kEarlyEnds[] = {
    {"a later class file missing",
     [] { std::filesystem::remove(LegacyLogIndexPath("legacy", 6)); }, {"Bob", "Cy", "Dee"}, ""},
    {"a short index",
     [] { WriteFileBytes(LegacyLogIndexPath("legacy", 0), Bytes{2, 0, 0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0}); },
     {"Bob", "Cy"}, ""},
    {"an index without num", [] { WriteFileBytes(LegacyLogIndexPath("legacy", 0), Bytes{2, 0, 0, 0, 2}); }, {}, ""},
    {"no instrument store", [] { std::filesystem::remove("user/instr.bin"); }, {"Bob"}, ""},
    {"an observer store in the way",
     [] { std::filesystem::remove("user/observer.bin"); MakeDirs("user/observer.bin"); }, {}, ""},
    {"a location store in the way", [] { MakeDirs("user/loc.bin"); }, {},
     "Log: error opening location database\n"},
};

TEST_F(ScanUndefinedTest, EarlyEndsAreSilentAndKeepWhatWasFound) {
    for (const EarlyEnd& c : kEarlyEnds) {
        SCOPED_TRACE(c.what);
        MakeFolders();
        WriteLegacyLogChains(0, {{{"Bob", "Dob"}, {"Cy", "Dob"}}, {{"Dee", "Dob"}}});
        c.damage();
        names_ = UndefinedNames{};
        EXPECT_EQ(Scan(), 0);
        EXPECT_EQ(names_.observers, c.observers);
        EXPECT_TRUE(messages_.empty());
        EXPECT_EQ(log_, c.log);
    }
}

}  // namespace
