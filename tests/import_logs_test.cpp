// The version 1.x log files' readers and the log import job over the
// generated reference set: hand-written bytes, the exact log lines, report
// blocks and messages, and what the log store's entry files hold.
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "astro/planet_files.h"
#include "catalog/catalogue_roots.h"
#include "catalog/minor_planet_roots.h"
#include "job_support.h"
#include "legacy/import_logs.h"
#include "legacy/log_links.h"
#include "legacy_log_fixtures.h"
#include "shell/import_log.h"
#include "stores/log_check.h"
#include "stores/log_store.h"

namespace {

namespace fs = std::filesystem;

constexpr double kPiValue = 3.14159265358979323846;

// 2009-06-18 0h UT, counted by hand from 2009-01-01 0h (JD 2454832.5):
// 31 + 28 + 31 + 30 + 31 + 17 days.
constexpr double kJune18 = 2455000.5;
constexpr double kHour = 1.0 / 24.0;

// The generated reference set's M31 (a galaxy) and M13 (a globular).
constexpr uint32_t kM31 = 4270, kM13 = 135;

// ---- Readers ----------------------------------------------------------------

class LegacyLogFilesTest : public ScratchTest {};

TEST_F(LegacyLogFilesTest, ALegacyEntryAndIndexAreReadFromHandWrittenBytes) {
    Bytes e(440, 0xEE);
    PokeU32(e, 0, 0xFFFFFFFFu);  // nextEntry -1: the chain ends
    PokeF64(e, 4, 2451545.25);
    std::memset(&e[12 + 99], 'N', 33);  // a site name that fills its field
    PokeF32(e, 144, 1.5f);
    PokeF32(e, 148, -0.25f);
    e[160] = 3;
    PokeF32(e, 166, 4.5f);
    PokeU32(e, 170, 4270);
    e[174] = 6;
    std::memset(&e[227], 0, 65 + 65 + 81);
    std::memcpy(&e[227], "Ann\tB", 5);
    std::memcpy(&e[292], "Dob", 3);
    std::memset(&e[357], 'C', 81);  // conditions without a terminator
    PokeU16(e, 438, 6);
    const std::string note("Halo!\0tail", 10);
    e.insert(e.end(), note.begin(), note.end());
    MakeDirs("legacy/log/cC");
    WriteFileBytes("legacy/log/cC/00000012.bin", e);

    LegacyLogEntry entry;
    std::string text;
    EXPECT_EQ(ReadLegacyLogEntry("legacy", 2, 12, &entry, &text), -1);
    EXPECT_EQ(entry.jd, 2451545.25);
    EXPECT_EQ(std::string(entry.site.name), std::string(32, 'N'));
    EXPECT_EQ(entry.ra, 1.5f);
    EXPECT_EQ(entry.dec, -0.25f);
    EXPECT_EQ(entry.sizeUnit, 3);
    EXPECT_EQ(entry.magnitude, 4.5f);
    EXPECT_EQ(entry.pid, 4270u);
    EXPECT_EQ(entry.objectClass, 6);
    EXPECT_STREQ(entry.observer, "Ann\tB");
    EXPECT_STREQ(entry.instrument, "Dob");
    EXPECT_EQ(std::string(entry.conditions), std::string(80, 'C'));
    EXPECT_EQ(text, "Halo!");
    EXPECT_EQ(ReadLegacyLogEntry("legacy", 2, 13, &entry, &text), 0);  // no such file

    // An index: count 9, num 2, rows of flags and first entry.
    WriteFileBytes("legacy/log/class.4", {9, 0, 0, 0, 2, 0, 0, 0, 1, 1, 1, 1, 12, 0, 0, 0, 2, 2, 2, 2, 0xFE, 0xFF,
                                          0xFF, 0xFF});
    FilePtr index = OpenLegacyLogIndex("legacy", 4);
    uint32_t count = 0, num = 0;
    ASSERT_TRUE(index);
    EXPECT_EQ(ReadLegacyLogCount(index.get(), &count), 1);
    EXPECT_EQ(ReadLegacyLogNum(index.get(), &num), 1);
    EXPECT_EQ(count, 9u);
    EXPECT_EQ(num, 2u);
    LegacyLogIndexRow row;
    ASSERT_EQ(SeekLegacyLogRows(index.get()), 1);
    EXPECT_EQ(ReadLegacyLogRow(index.get(), &row), 1);
    EXPECT_EQ(row.firstEntry, 12);
    EXPECT_EQ(ReadLegacyLogRow(index.get(), &row), 1);
    EXPECT_EQ(row.firstEntry, -2);
    EXPECT_EQ(ReadLegacyLogRow(index.get(), &row), 0);
}

TEST_F(LegacyLogFilesTest, AnObserverIsFoundByTheFirstStoredNameThatBeginsTheGivenOne) {
    MakeDirs("user");
    {
        FilePtr store = ObserverStoreOpen(nullptr);
        ObserverRecord r;
        for (const char* name : {"Bob", "ANN", "Annabel"}) {
            ObserverInit(&r, name, 40, 0.0, 0.5);
            ASSERT_EQ(ObserverAdd(store.get(), r), 1);
        }
    }
    FilePtr store = ObserverStoreOpen(nullptr);
    const struct {
        const char* name;
        int found;
        const char* stored;
    } cases[] = {
        {"annabel", 1, "ANN"},  // the first prefix, ignoring case
        {"Bobby", 1, "Bob"},
        {"An", 0, ""},  // a given name shorter than every stored one
        {"Carl", 0, ""},
        {"", 0, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        ObserverRecord out;
        EXPECT_EQ(FindObserverByPrefix(store.get(), c.name, &out), c.found);
        EXPECT_STREQ(out.name, c.stored);
    }
}

// ---- The job ----------------------------------------------------------------

// Every file under user/log with its bytes.
std::map<std::string, Bytes> LogTree() {
    std::map<std::string, Bytes> tree;
    for (const auto& e : fs::recursive_directory_iterator("user/log"))
        if (e.is_regular_file()) tree[e.path().generic_string()] = ReadFileBytes(e.path().string());
    return tree;
}

std::string Text(const Bytes& b, size_t at) { return std::string(reinterpret_cast<const char*>(&b[at])); }

// The imported count of either form of the closing message, -1 for none.
int ImportedOf(const std::string& message) {
    int imported = -1;
    const size_t error = message.find("Imported ");
    if (error != std::string::npos)
        std::sscanf(message.c_str() + error, "Imported %d of", &imported);
    else
        std::sscanf(message.c_str(), "Ferry 2 Message|%d log entries imported", &imported);
    return imported;
}

std::string Success(int imported, int counted, int skipped) {
    char text[256];
    std::snprintf(text, sizeof text,
                  "Ferry 2 Message|%d log entries imported of %d (%d skipped).\r\n"
                  "See the ferry2.log file for details.\r\nNote: duplicate logs are not imported twice.\n",
                  imported, counted, skipped);
    return text;
}

// The lines of the slots without rows, from `first` to the last.
std::string EmptySlots(int first) {
    std::string text;
    for (int sc = first; sc < kLegacyLogSlots; ++sc)
        text += "Logs: Warning no logs for index " + std::to_string(sc) + "\nLog: 0 for sc " + std::to_string(sc) +
                "\n";
    return text;
}

class ImportLogsTest : public JobTest {
protected:
    void SetUp() override {
        JobTest::SetUp();
        MakeDirs("user");
        MakeDirs("legacy");
        const std::string set = FERRY2_REFDATA_DIR, solar = FERRY2_SOLAR_DIR;
        setCatalogueRoots((set + "small/").c_str(), (set + "stars/").c_str(), (set + "gsc/").c_str());
        setMinorPlanetRoots(solar.c_str(), (solar + "elements").c_str());
        PlanetFilesOpen(solar.c_str());  // comets are placed with the Earth's orbit
        // Stored: observer "Ann", instrument "Dob", the location "Field"
        // with a tail and no derived fields, and a "Home" somewhere else.
        FilePtr observers = ObserverStoreOpen(nullptr);
        ObserverRecord ann;
        ObserverInit(&ann, "Ann", 40, 0.0, 0.5);
        ObserverAdd(observers.get(), ann);
        WriteFileBytes("user/instr.bin", InstrumentStoreBytes({"Dob"}));
        WriteFileBytes("user/loc.bin", LocationFileBytes({LocationBytes("Field", 0.0, 51.5 * kPiValue / 180.0, 3, 7),
                                                          LocationBytes("Home", 1.0, 0.2)}));
        WriteEmptyLegacyLogIndexes();
    }
    void TearDown() override {
        setMinorPlanetRoots("", "");
        JobTest::TearDown();
    }

    // Runs the job as the Logs page does, with its links.
    int Run() {
        messages_.clear();
        FilePtr log = OpenImportLog();
        JobHost host;
        host.log = log.get();
        host.legacyRoot = "legacy";
        host.logLinks = &links_;
        host.showMessage = [this](const char* text, const char* title) {
            messages_.push_back(title + std::string("|") + text);
        };
        return ImportLogs(host);
    }

    // Two chains of slot 0: M31 seen by "Annabel" (the stored "Ann" begins
    // the name) from the stored Field, then M13 by eye with a date of 0;
    // and M31 by a tabs-only observer with an empty instrument, both
    // linked, from a place the store doesn't know.
    void WriteThreeEntries() {
        LegacyLogEntry first =
            LegacyEntry(kClassGalaxy, kM31, kJune18 + 21 * kHour, "Anna\tbel", "Dob", LogSite("Field"), "Clear");
        first.site.nakedEyeLimit = 5.5;  // the stored record has 0
        WriteLegacyLogEntry(0, 1, first, 2, "Faint halo");
        WriteLegacyLogEntry(0, 2, LegacyEntry(kClassGlobular, kM13, 0.0, "Ann", "Naked Eye", LogSite("Home")), -1);
        WriteLegacyLogEntry(0, 5, LegacyEntry(kClassGalaxy, kM31, kJune18 + 22 * kHour, "\t\t", "", LogSite("Away")),
                            -7);
        WriteLegacyLogIndex(0, {1, 5}, 3);
        ObserverRecord lou;
        ObserverInit(&lou, "Linked Lou", 30, 0.0, 1.0);
        AddObserverLink(&links_, lou, "(blank)", 0);
        InstrumentRecord scope;
        std::strcpy(scope.name, "Linked Scope");
        AddInstrumentLink(&links_, scope, "(blank)");
    }

    LogLinks links_;
};

TEST_F(ImportLogsTest, EveryEntryGoesInWithItsSettledNamesPlaceRemarkAndNote) {
    WriteThreeEntries();
    EXPECT_EQ(Run(), 1);
    EXPECT_EQ(OnlyMessage(), Success(3, 3, 0));
    EXPECT_EQ(ReadFileText("ferry2.log"), "Logs: sc 0 num=2 count=3\nLog: 3 for sc 0\n" + EmptySlots(1));

    // The log entry's offsets: jd 5, site 13 (naked-eye limit at 61, name at
    // 112), tail 145, class 148, PID 149, observer name 157, instrument name
    // 8959, remark 8991, note length 9120, note 9124.
    const Bytes a = ReadFileBytes("user/log/galaxies/00000000.bin");
    ASSERT_EQ(a.size(), 9124u + 11u);
    EXPECT_EQ(PeekF64(a, 5), kJune18 + 21 * kHour);
    EXPECT_EQ(Text(a, 112), "Field");
    EXPECT_EQ(PeekF64(a, 61), 0.0);  // the stored place replaced the entry's
    EXPECT_EQ(Slice(a, 145, 3), (Bytes{3, 7, 0}));
    EXPECT_EQ(Slice(a, 148, 5), (Bytes{6, 0xAE, 0x10, 0, 0}));
    EXPECT_EQ(Text(a, 157), "Ann");
    EXPECT_EQ(Text(a, 8959), "Dob");
    EXPECT_EQ(Text(a, 8991), "Clear");
    EXPECT_EQ(PeekU32(a, 9120), 11u);
    EXPECT_EQ(Slice(a, 9124, 11), (Bytes{'F', 'a', 'i', 'n', 't', ' ', 'h', 'a', 'l', 'o', 0}));

    const Bytes b = ReadFileBytes("user/log/globular clusters/00000000.bin");
    ASSERT_EQ(b.size(), 9124u);  // an empty note is stored as none
    EXPECT_EQ(PeekF64(b, 5), 2451544.4);
    EXPECT_EQ(Text(b, 112), "Home");  // same name elsewhere: the entry's own place
    EXPECT_EQ(PeekF64(b, 61), 6.0);
    EXPECT_EQ(Slice(b, 145, 3), (Bytes{0, 0, 0}));
    EXPECT_EQ(Text(b, 8959), "Naked Eye");
    EXPECT_EQ(PeekU32(b, 9120), 1u);

    const Bytes c = ReadFileBytes("user/log/galaxies/00000001.bin");
    EXPECT_EQ(Text(c, 112), "Away");
    EXPECT_EQ(Text(c, 157), "Linked Lou");
    EXPECT_EQ(Text(c, 8959), "Linked Scope");
}

TEST_F(ImportLogsTest, ASecondRunCountsEverythingAsImportedAndChangesNothing) {
    WriteThreeEntries();
    ASSERT_EQ(Run(), 1);
    const auto before = LogTree();
    EXPECT_EQ(Run(), 1);
    EXPECT_EQ(OnlyMessage(), Success(3, 3, 0));
    EXPECT_EQ(LogTree(), before);
}

TEST_F(ImportLogsTest, EntriesItCannotTakeAreReportedBlockByBlockAndTheWalkGoesOn) {
    // Chain 1 -> 2 -> 3 (missing) and chain 7 in slot 0; chain 4 in slot 1.
    LegacyLogEntry seen = LegacyEntry(kClassGalaxy, kM31, kJune18 + 21 * kHour, "Ann", "Dob", LogSite("Home", 1.0));
    WriteLegacyLogEntry(0, 1, seen, 2);
    LegacyLogEntry stranger = LegacyEntry(kClassGalaxy, kM31, kJune18, "Zed", "Dob", LogSite("Home", 1.0), "Hazy");
    stranger.ra = static_cast<float>(kPiValue / 2);
    stranger.dec = -0.5f;  // -28.6478897565 degrees
    stranger.magnitude = 3.4f;
    WriteLegacyLogEntry(0, 2, stranger, 3, "Low in the west");
    // A user comet that comet.bin doesn't hold: no PID. Noon UT on
    // 2000-01-01 is 07:00 on a clock five hours behind.
    WriteLegacyComets({LegacyComet(5, "Other", 2451000.5)});
    WriteLegacyLogEntry(0, 7, LegacyEntry(kClassUserComet, 42, 2451545.0, "Ann", "Dob", LogSite("Camp", -5.0)), -1);
    WriteLegacyLogIndex(0, {1, 7}, 5);
    WriteLegacyLogEntry(1, 4, LegacyEntry(kClassGalaxy, kM31, kJune18, "\t\r\n", "Dob", LogSite("Home")), -1);
    WriteLegacyLogIndex(1, {4}, 1);

    EXPECT_EQ(Run(), 1);
    EXPECT_EQ(OnlyMessage(), Success(1, 4, 3));
    // The first report shows the moment of the entry before it: the
    // observer step comes before the entry's own moment is made.
    EXPECT_EQ(ReadFileText("ferry2.log"),
              "Logs: sc 0 num=2 count=5\n"
              "Log: observer not found -> Zed (skipped)\n"
              "\n"
              "**** Log Entry not imported:\n"
              "Date/time: 2009  6 18 22:00\n"
              "Location: Home\n"
              "Observer: Zed\n"
              "Instrument: Dob\n"
              "Target Name?: Andromeda Galaxy\n"
              "Target Data: RA=6.000000 Dec=-28.647890 Mag=  3.40\n"
              "Conditions: Hazy\n"
              "Description: Low in the west\n"
              "****\n"
              "\n"
              "Log: internal error -> sc_index= 0 ret= 0\n"
              "Log: No object PID (skipped)\n"
              "\n"
              "**** Log Entry not imported:\n"
              "Date/time: 2000  1  1 07:00\n"
              "Location: Camp\n"
              "Observer: Ann\n"
              "Instrument: Dob\n"
              "Target Data: RA=0.000000 Dec=0.000000 Mag=  0.00\n"
              "Conditions: \n"
              "Description: \n"
              "****\n"
              "\n"
              "Log: 3 for sc 0\n"
              "Logs: sc 1 num=1 count=1\n"
              "Log: observer not found -> (blank) (skipped)\n"
              "\n"
              "**** Log Entry not imported:\n"
              "Date/time: 2000  1  1 07:00\n"
              "Location: Home\n"
              "Observer: (blank)\n"
              "Instrument: Dob\n"
              "Target Name?: Andromeda Galaxy\n"
              "Target Data: RA=0.000000 Dec=0.000000 Mag=  0.00\n"
              "Conditions: \n"
              "Description: \n"
              "****\n"
              "\n"
              "Log: 1 for sc 1\n" +
                  EmptySlots(2));
}

TEST_F(ImportLogsTest, UserObjectsGoThroughTheObjectStepWithTheEntrysOwnFrame) {
    const struct {
        const char* what;
        uint8_t cls;
        uint32_t pid;
        bool withFiles;
        const char* line;        // the skip line, or null when imported
        const char* entryFile;   // where the imported entry lies
        int storedClass;
    } cases[] = {
        {"a star the catalogues know", 12, 1, true, nullptr, "user/log/stars/00000000.bin", kClassStar},
        {"the user's own star", 12, 2, true, nullptr, "user/log/stars/00000000.bin", 12},
        {"a comet", 13, 7, true, nullptr, "user/log/comets/00000000.bin", 13},
        {"a minor planet", 14, 6, true, nullptr, "user/log/minor planets/00000000.bin", 14},
        {"a user deep-sky object", 18, 1, true, "Log: Unknown supplemental class (skipped)\n", nullptr, 0},
        {"no stellar.bin", 12, 1, false, "Log: Error opening V1.x stellar data (skipped)\n", nullptr, 0},
        {"no comet.bin", 13, 7, false, "Log: Error opening V1.x comet data (skipped)\n", nullptr, 0},
        {"no mp.bin", 14, 6, false, "Log: Error opening V1.x MP data (skipped)\n", nullptr, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        fs::remove_all("user/log");
        for (const char* f : {"user/stellar.bin", "user/comet.bin", "user/mp.bin", "legacy/stellar.bin",
                              "legacy/us_pid.bin", "legacy/comet.bin", "legacy/mp.bin", "ferry2.log"})
            fs::remove(f);
        if (c.withFiles) {
            WriteLegacyStars({LegacyStar(1, "Vega"), LegacyStar(2, "My Own Star")});
            WriteLegacyComets({LegacyComet(7, "NEOWISE", 2459034.0), LegacyComet(7, "NEOWISE", 2459100.0)});
            WriteLegacyMinorPlanets({LegacyMinorPlanet(6, "Eros", 433, kJune18)});
        }
        WriteLegacyLogEntry(3, 1, LegacyEntry(c.cls, c.pid, kJune18, "Ann", "Dob", LogSite("Home")), -1);
        WriteLegacyLogIndex(3, {1}, 1);
        EXPECT_EQ(Run(), 1);
        const std::string log = ReadFileText("ferry2.log");
        if (c.line) {
            EXPECT_EQ(OnlyMessage(), Success(0, 1, 1));
            EXPECT_NE(log.find(std::string("Logs: sc 3 num=1 count=1\n") + c.line + "\n**** Log Entry not imported:\n"),
                      std::string::npos)
                << log;
            continue;
        }
        EXPECT_EQ(OnlyMessage(), Success(1, 1, 0));
        const Bytes entry = ReadFileBytes(c.entryFile);
        ASSERT_GE(entry.size(), 9124u);
        EXPECT_EQ(entry[148], c.storedClass);
    }
}

TEST_F(ImportLogsTest, AFailureThatLeavesTheJobShowsTheErrorFormWithTheSlotsBeforeItDone) {
    const struct {
        const char* what;
        int slot;      // the slot whose index file is replaced
        Bytes index;   // its bytes; empty: no file
        bool dropInstrumentStore;
        const char* lastLines;
        const char* counts;
    } cases[] = {
        {"a missing class file", 3, {}, false, "Logs: error opening index file -> 3\n", "Imported 1 of 1, 0 skipped"},
        {"no count", 2, {1, 0}, false, "Logs: error reading count in index file -> 2\n",
         "Imported 1 of 1, 0 skipped"},
        {"no num", 2, {1, 0, 0, 0, 1}, false, "Logs: error reading num in index file -> 2\n",
         "Imported 1 of 1, 0 skipped"},
        {"a short row", 2, {0, 0, 0, 0, 1, 0, 0, 0, 9}, false,
         "Logs: sc 2 num=1 count=0\nLogs: error reading index file -> 2 0\n", "Imported 1 of 1, 0 skipped"},
        {"no instrument store", 2, {}, true,
         "Logs: sc 0 num=1 count=1\nLog: unable to open instrument database\n", "Imported 0 of 0, 0 skipped"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        fs::remove_all("user/log");
        fs::remove("ferry2.log");
        WriteEmptyLegacyLogIndexes();
        WriteLegacyLogEntry(0, 1, LegacyEntry(kClassGalaxy, kM31, kJune18, "Ann", "Dob", LogSite("Home")), -1);
        WriteLegacyLogIndex(0, {1}, 1);
        if (c.dropInstrumentStore) {
            fs::remove("user/instr.bin");
        } else if (c.index.empty()) {
            fs::remove(LegacyLogIndexPath("legacy", c.slot));
        } else {
            WriteFileBytes(LegacyLogIndexPath("legacy", c.slot), c.index);
        }
        EXPECT_EQ(Run(), 0);
        EXPECT_EQ(OnlyMessage(), Error(c.counts));
        const std::string log = ReadFileText("ferry2.log");
        const std::string tail = c.lastLines;
        ASSERT_GE(log.size(), tail.size());
        EXPECT_EQ(log.substr(log.size() - tail.size()), tail) << log;
    }
}

TEST_F(ImportLogsTest, AChainThatComesBackToItselfEndsAsAnUnreadableEntry) {
    WriteLegacyLogEntry(0, 1, LegacyEntry(kClassGalaxy, kM31, kJune18, "Ann", "Dob", LogSite("Home")), 1);
    WriteLegacyLogIndex(0, {1}, 1);
    EXPECT_EQ(Run(), 1);
    EXPECT_EQ(OnlyMessage(), Success(1, 1, 0));
    EXPECT_EQ(ReadFileText("ferry2.log"),
              "Logs: sc 0 num=1 count=1\nLog: internal error -> sc_index= 0 ret= 0\nLog: 1 for sc 0\n" +
                  EmptySlots(1));
}

// Counts the entries of the store that read back whole.
int ReadableEntries() {
    int readable = 0;
    for (int slot = 0; slot < kLogClassFolders; ++slot) {
        LogPidTable table;
        if (!LogPidRead(slot, &table)) continue;
        for (uint32_t n = 0; n < table.head.nextEntry; ++n) {
            LogEntry entry;
            readable += LogReadEntry(ClassMaskOfSlot(slot), n, &entry, nullptr);
        }
    }
    return readable;
}

// Runs the four-entry import once for every call of `op` it makes, with
// that call failing, and checks the store each time: every entry the
// message counts as imported reads back, the tables load, and the store's
// own check reads it all. An add that fails keeps what it wrote before the
// failure, so the check may find the rows of that one entry without their
// entry file; nothing of the other entries may be amiss.
class ImportLogsFaultTest : public ImportLogsTest {
protected:
    void SetUp() override {
        ImportLogsTest::SetUp();
        WriteThreeEntries();
        WriteLegacyComets({LegacyComet(7, "NEOWISE", 2459034.0)});
        WriteLegacyLogEntry(4, 1, LegacyEntry(kClassUserComet, 7, kJune18, "Ann", "Dob", LogSite("Home")), -1);
        WriteLegacyLogIndex(4, {1}, 1);
    }

    void Sweep(FileOp op, FileFault kind) {
        bool sawFault = false;
        for (int nth = 1;; ++nth) {
            SCOPED_TRACE(nth);
            fs::remove_all("user/log");
            fs::remove("user/comet.bin");
            int result = 0;
            {
                ScopedFault fault(op, nth, kind);
                result = Run();
                if (!FileFaultFired()) {
                    EXPECT_EQ(result, 1);
                    EXPECT_EQ(OnlyMessage(), Success(4, 4, 0));
                    break;
                }
            }
            sawFault = true;
            const int imported = ImportedOf(OnlyMessage());
            ASSERT_GE(imported, 0) << OnlyMessage();
            LogPresence presence;
            ASSERT_EQ(LogPresenceLoad(&presence), 1);
            EXPECT_EQ(ReadableEntries(), imported);
            std::vector<std::string> problems;
            if (!LogCheck(problems)) {
                EXPECT_LT(imported, 4);
                EXPECT_EQ(problems.size(), 1u) << ::testing::PrintToString(problems);
            }
        }
        EXPECT_TRUE(sawFault);
    }
};

TEST_F(ImportLogsFaultTest, AWriteFaultAnywhereKeepsTheEntriesAddedAndTheStoreReadable) {
    Sweep(FileOp::kWrite, FileFault::kShort);
}

TEST_F(ImportLogsFaultTest, AReadFaultAnywhereKeepsTheEntriesAddedAndTheStoreReadable) {
    Sweep(FileOp::kRead, FileFault::kFail);
}

}  // namespace
