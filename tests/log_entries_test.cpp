// Entries of the log over the generated reference set: the files an entry
// makes, byte for byte; the duplicate rule; the night; the resolution of a
// reference comet to the user's own; deleting, with every stage's failure
// made by an injected fault; replacing; the query's first-row rule.
#include <algorithm>
#include <cstring>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "astro/planet_files.h"
#include "catalog/catalogue_roots.h"
#include "catalog/comet_files.h"
#include "catalog/constellation_names.h"
#include "catalog/minor_planet_roots.h"
#include "catalog/user_comets.h"
#include "catalog/user_minor_planets.h"
#include "stores/list_exchange.h"
#include "stores/list_store.h"
#include "stores/log_exchange.h"
#include "stores/log_query.h"
#include "stores/log_store.h"
#include "support.h"

namespace fs = std::filesystem;

namespace {

// 2026-03-05 0h UT, counted by hand from 2000-01-01 0h (JD 2451544.5):
// 26 years with 7 leap days, then 31 + 28 + 4 days.
constexpr double kMarch5 = 2461104.5;
constexpr double kHour = 1.0 / 24.0;

// The generated reference set's M31 (a galaxy) and M13 (a globular).
constexpr uint32_t kM31 = 4270, kM13 = 135;

class LogEntriesTest : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        const std::string set = FERRY2_REFDATA_DIR, solar = FERRY2_SOLAR_DIR;
        setCatalogueRoots((set + "small/").c_str(), (set + "stars/").c_str(), (set + "gsc/").c_str());
        setMinorPlanetRoots(solar.c_str(), (solar + "elements").c_str());
        PlanetFilesOpen(solar.c_str());  // comets are placed with the Earth's orbit
    }
    void TearDown() override {
        setMinorPlanetRoots("", "");
        ScratchTest::TearDown();
    }
};

// A site on the Greenwich meridian whose clock runs an hour ahead of UT.
Site Home(const char* name = "Home") {
    Site site;
    char text[33] = {};
    std::strncpy(text, name, 32);
    SiteInit(&site, 0.0, 51.5 * 3.14159265358979 / 180.0, 0.0, 6.0, 1.0, text);
    return site;
}

LogEntry Entry(int objectClass, uint32_t pid, double jd, const char* observer = "Ann",
               const char* instrument = "Dob", const char* location = "Home") {
    ObjectRecord object = identityRecord(objectClass, pid);
    object.classMask = classMaskOf(objectClass);
    ObserverRecord who;
    std::strncpy(who.name, observer, sizeof who.name - 1);
    InstrumentRecord with;
    std::strncpy(with.name, instrument, sizeof with.name - 1);
    Instant instant;
    instant.jd = jd;
    LogEntry entry;
    LogFillEntry(&entry, Home(location), LocationTail{}, instant, who, with, object, "seen");
    return entry;
}

long Add(LogEntry entry, const char* note = nullptr) { return LogAddEntry(&entry, note); }

// The index rows of a file as (key, slot, entry) triples.
std::vector<std::vector<uint32_t>> IndexRows(const std::string& path) {
    const Bytes b = ReadFileBytes(path);
    std::vector<std::vector<uint32_t>> rows;
    if (b.size() < 4) return rows;
    for (uint32_t i = 0; i < PeekU32(b, 0); ++i)
        rows.push_back({PeekU32(b, 4 + 12 * i), PeekU32(b, 8 + 12 * i), PeekU32(b, 12 + 12 * i)});
    return rows;
}

int ZoneOf(const char* abbreviation) {
    for (int zone = 0; zone < 89; ++zone)
        if (std::strcmp(constellationZoneAbbreviation(zone), abbreviation) == 0) return zone;
    return -1;
}

std::string ConsPath(const char* abbreviation) {
    char name[40];
    std::snprintf(name, sizeof name, "user/log/cons/%02d.idx", ZoneOf(abbreviation));
    return name;
}

// Every file under user/log with its bytes.
std::map<std::string, Bytes> LogTree() {
    std::map<std::string, Bytes> tree;
    if (!fs::exists("user/log")) return tree;
    for (const auto& e : fs::recursive_directory_iterator("user/log"))
        if (e.is_regular_file()) tree[e.path().generic_string()] = ReadFileBytes(e.path().string());
    return tree;
}

TEST_F(LogEntriesTest, TheFirstEntryMakesItsFilesByteForByte) {
    ASSERT_EQ(Add(Entry(kClassGalaxy, kM31, kMarch5 + 21 * kHour)), 0);

    // pid.bin: nextEntry 1, one key.
    EXPECT_EQ(ReadFileBytes("user/log/galaxies/pid.bin"), (Bytes{1, 0, 0, 0, 1, 0, 0, 0, 0xAE, 0x10, 0, 0}));
    // The entry file: 9124 bytes and no note.
    const Bytes entry = ReadFileBytes("user/log/galaxies/00000000.bin");
    ASSERT_EQ(entry.size(), 9124u);
    EXPECT_EQ((Bytes{entry[2], entry[3], entry[4]}), (Bytes{2, 0, 'f'}));
    EXPECT_DOUBLE_EQ(PeekF64(entry, 5), kMarch5 + 21 * kHour);
    EXPECT_STREQ(reinterpret_cast<const char*>(&entry[112]), "Home");
    EXPECT_EQ(entry[148], kClassGalaxy);
    EXPECT_EQ(PeekU32(entry, 149), kM31);
    EXPECT_EQ(PeekU32(entry, 153), 256u);
    EXPECT_STREQ(reinterpret_cast<const char*>(&entry[157]), "Ann");
    EXPECT_STREQ(reinterpret_cast<const char*>(&entry[8959]), "Dob");
    EXPECT_STREQ(reinterpret_cast<const char*>(&entry[8991]), "seen");
    EXPECT_EQ(PeekU32(entry, 9120), 1u);

    // The row file: a count and one 9098-byte row.
    const Bytes rows = ReadFileBytes("user/log/galaxies/000004270.pix");
    ASSERT_EQ(rows.size(), 4u + 9098u);
    EXPECT_EQ(PeekU32(rows, 0), 1u);
    EXPECT_EQ(PeekU32(rows, 4), 0u);
    EXPECT_EQ(rows[8], kClassGalaxy);
    EXPECT_EQ(PeekU32(rows, 9), kM31);
    EXPECT_EQ(PeekU32(rows, 13), 256u);
    EXPECT_DOUBLE_EQ(PeekF64(rows, 4 + 13 + 30), kMarch5 + 21 * kHour);  // the instant's jd
    EXPECT_EQ(PeekI16(rows, 4 + 13 + 4), 2026);                          // its year
    EXPECT_STREQ(reinterpret_cast<const char*>(&rows[4 + 131 + 99]), "Home");
    EXPECT_STREQ(reinterpret_cast<const char*>(&rows[4 + 263]), "Ann");
    EXPECT_STREQ(reinterpret_cast<const char*>(&rows[4 + 347 + 8718]), "Dob");
    EXPECT_EQ(rows[4 + 9097], ZoneOf("And"));

    // The six indexes: one row each, class slot 5, entry 0.
    const std::vector<std::vector<uint32_t>> one = {{kM31, 5, 0}};
    for (const std::string path : {"user/log/class/05.idx", "user/log/night/20260305.idx", "user/log/observer/Ann.idx",
                                   "user/log/instrument/Dob.idx", "user/log/loc/Home.idx"})
        EXPECT_EQ(IndexRows(path), one) << path;
    EXPECT_EQ(IndexRows(ConsPath("And")), one);
    EXPECT_EQ(ReadFileBytes("user/log/class/05.idx"), (Bytes{1, 0, 0, 0, 0xAE, 0x10, 0, 0, 5, 0, 0, 0, 0, 0, 0, 0}));
}

TEST_F(LogEntriesTest, AnEntryRepeatsAnotherOnlyWithinAMinuteWithTheSameNamesAndNote) {
    const double at = kMarch5 + 21 * kHour;
    ASSERT_EQ(Add(Entry(kClassGalaxy, kM31, at), "Faint core"), 0);
    const struct {
        const char* what;
        LogEntry entry;
        const char* note;
        long number;  // -2: a new number
    } cases[] = {
        {"the same", Entry(kClassGalaxy, kM31, at), "Faint core", 0},
        {"30 s later", Entry(kClassGalaxy, kM31, at + 30.0 / 86400), "Faint core", 0},
        {"names in other case", Entry(kClassGalaxy, kM31, at, "ANN", "dob", "HOME"), "Faint core", 0},
        {"note in other case", Entry(kClassGalaxy, kM31, at), "FAINT CORE", 0},
        {"61 s later", Entry(kClassGalaxy, kM31, at + 61.0 / 86400), "Faint core", -2},
        {"no note", Entry(kClassGalaxy, kM31, at), nullptr, -2},
        {"another observer", Entry(kClassGalaxy, kM31, at, "Bob"), "Faint core", -2},
        {"another instrument", Entry(kClassGalaxy, kM31, at, "Ann", "Refractor"), "Faint core", -2},
    };
    long next = 1;
    for (const auto& c : cases) {
        const long got = Add(c.entry, c.note);
        EXPECT_EQ(got, c.number == -2 ? next : c.number) << c.what;
        if (c.number == -2) ++next;
    }
    EXPECT_EQ(PeekU32(ReadFileBytes("user/log/galaxies/000004270.pix"), 0), static_cast<uint32_t>(next));
    EXPECT_EQ(PeekU32(ReadFileBytes("user/log/galaxies/pid.bin"), 0), static_cast<uint32_t>(next));
    // A remark takes no part.
    LogEntry remarked = Entry(kClassGalaxy, kM31, at);
    std::strcpy(remarked.remark, "another remark");
    EXPECT_EQ(Add(remarked, "Faint core"), 0);
}

TEST_F(LogEntriesTest, TwoInTheMorningBelongsToTheNightBefore) {
    // 01:00 UT is 02:00 on the site's clock; 12:00 UT is 13:00.
    const struct {
        double jd;
        const char* night;
    } cases[] = {{kMarch5 + 1 * kHour, "20260304"}, {kMarch5 + 12 * kHour, "20260305"},
                 {kMarch5 - 2 * kHour, "20260304"}};
    for (const auto& c : cases) {
        const LogNight n = LogNightOf(c.jd, Home());
        char text[16];
        std::snprintf(text, sizeof text, "%04d%02d%02d", n.year, n.month, n.day);
        EXPECT_STREQ(text, c.night) << c.jd;
    }
    ASSERT_EQ(Add(Entry(kClassGalaxy, kM31, kMarch5 + 1 * kHour)), 0);
    EXPECT_TRUE(fs::exists("user/log/night/20260304.idx"));
    EXPECT_FALSE(fs::exists("user/log/night/20260305.idx"));
}

TEST_F(LogEntriesTest, NotesReadBackAndAnEntryWithoutOneHasNoTextBytes) {
    ASSERT_EQ(Add(Entry(kClassGalaxy, kM31, kMarch5), "Dust lane seen"), 0);
    ASSERT_EQ(Add(Entry(kClassGlobular, kM13, kMarch5)), 0);
    EXPECT_EQ(fs::file_size("user/log/galaxies/00000000.bin"), 9124u + 15u);
    EXPECT_EQ(fs::file_size("user/log/globular clusters/00000000.bin"), 9124u);
    LogEntry entry;
    std::string note = "left over";
    ASSERT_EQ(LogReadEntry(256, 0, &entry, &note), 1);
    EXPECT_EQ(note, "Dust lane seen");
    EXPECT_EQ(entry.noteLength, 15u);
    ASSERT_EQ(LogReadEntry(8192, 0, &entry, &note), 1);
    EXPECT_EQ(note, "");
    EXPECT_EQ(LogReadEntry(8192, 1, &entry, &note), 0);
}

TEST_F(LogEntriesTest, AReferenceCometLoggedAsTheUsersOwnGoesToItsFileWithTheLetterS) {
    // The user's store holds Hale-Bopp (the reference set's comet 14, whose
    // designation is 1995 O1) under PID 1, and it has an entry.
    CometRecord haleBopp;
    {
        FilePtr comets = openComets();
        ASSERT_TRUE(comets);
        ASSERT_EQ(readComet(comets.get(), 14, nullptr, nullptr, &haleBopp), 1);
        MakeDirs("user");
        FilePtr store = openUserComets(nullptr);
        ASSERT_TRUE(store);
        uint16_t pid = 0;
        ASSERT_NE(addOrReplaceUserComet(store.get(), haleBopp, nullptr, &pid), 0);
        ASSERT_EQ(pid, 1);
    }
    const double at = 2450537.5;  // 1997-03-22
    ASSERT_EQ(Add(Entry(kClassUserComet, 1, at)), 0);
    ASSERT_TRUE(fs::exists("user/log/comets/000000001s.pix"));
    // An entry for the reference comet lands there too.
    LogEntry reference = Entry(kClassComet, 14, at + 1);
    EXPECT_EQ(LogAddEntry(&reference, nullptr), 1);
    EXPECT_EQ(reference.objectClass, kClassUserComet);
    EXPECT_EQ(reference.id, 1u);
    EXPECT_EQ(PeekU32(ReadFileBytes("user/log/comets/000000001s.pix"), 0), 2u);
    EXPECT_FALSE(fs::exists("user/log/comets/000000014.pix"));
    EXPECT_EQ(ReadFileBytes("user/log/comets/pid.bin"), (Bytes{2, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0x40}));
    // Its entry file carries the comet's rows for another installation.
    EXPECT_EQ(fs::file_size("user/log/comets/00000001.bin"), 9124u + 2u + 130u);
}

TEST_F(LogEntriesTest, AReferenceMinorPlanetJoinsTheUsersOwnAndTheObjectIsDeletedWhole) {
    // The user's store holds a (1) Ceres; the reference set has one too.
    {
        MakeDirs("user");
        uint32_t count = 0;
        FilePtr store = openUserMp(&count);
        UserMpRecord ceres;
        ASSERT_EQ(packUserMp(&ceres, 1, "Ceres", "MPC", 0.0, 0.0, 10.0, 2.77, 0.0, 0.079, 73.0, 80.3, 10.6, 0.0,
                             3.3, 0.12),
                  1);
        uint32_t pid = 0;
        ASSERT_EQ(addOrReplaceUserMp(store.get(), ceres, &count, &pid), 1);
        ASSERT_EQ(pid, 1u);
        ASSERT_EQ(sortUserMp(&store, &count), 1);
    }
    // The user's Ceres has an entry, so a reference entry joins it.
    ASSERT_EQ(Add(Entry(kClassUserMinorPlanet, 1, kMarch5)), 0);
    LogEntry reference = Entry(kClassMinorPlanet, 1, kMarch5 + 2);
    ASSERT_EQ(LogAddEntry(&reference, nullptr), 1);
    EXPECT_EQ(reference.objectClass, kClassUserMinorPlanet);
    EXPECT_EQ(PeekU32(ReadFileBytes("user/log/minor planets/000000001s.pix"), 0), 2u);
    EXPECT_FALSE(fs::exists("user/log/minor planets/000000001.pix"));
    // Deleting the object deletes both entries; the numbers stay used.
    ObjectRecord user = identityRecord(kClassUserMinorPlanet, 1);
    user.classMask = 8;
    EXPECT_EQ(LogDeleteObject(user), 1);
    EXPECT_FALSE(fs::exists("user/log/minor planets/000000001s.pix"));
    EXPECT_EQ(ReadFileBytes("user/log/minor planets/pid.bin"), (Bytes{2, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(IndexRows("user/log/class/03.idx"), (std::vector<std::vector<uint32_t>>{}));
}

TEST_F(LogEntriesTest, DeletingTheOnlyEntryTakesTheObjectOutEverywhereButKeepsTheNumber) {
    ASSERT_EQ(Add(Entry(kClassGalaxy, kM31, kMarch5 + 21 * kHour)), 0);
    LogEntry entry;
    ASSERT_EQ(LogReadEntry(256, 0, &entry, nullptr), 1);
    ASSERT_EQ(LogDeleteEntry(entry, 0), 1);
    EXPECT_FALSE(fs::exists("user/log/galaxies/00000000.bin"));
    EXPECT_FALSE(fs::exists("user/log/galaxies/000004270.pix"));
    EXPECT_EQ(ReadFileBytes("user/log/galaxies/pid.bin"), (Bytes{1, 0, 0, 0, 0, 0, 0, 0}));
    for (const std::string path : {"user/log/night/20260305.idx", "user/log/observer/Ann.idx",
                                   "user/log/instrument/Dob.idx", "user/log/loc/Home.idx"})
        EXPECT_FALSE(fs::exists(path)) << path;
    EXPECT_FALSE(fs::exists(ConsPath("And")));
    EXPECT_EQ(ReadFileBytes("user/log/class/05.idx").size() >= 4, true);
    EXPECT_EQ(PeekU32(ReadFileBytes("user/log/class/05.idx"), 0), 0u);
    // The next entry gets the next number, not the freed one.
    EXPECT_EQ(Add(Entry(kClassGalaxy, kM31, kMarch5)), 1);
}

TEST_F(LogEntriesTest, DeletingOneOfTwoEntriesPutsTheOtherBackUnderItsKeys) {
    // Two nights, one observer: the deletion takes the object out of the
    // observer's file, and the other entry's row puts it back.
    ASSERT_EQ(Add(Entry(kClassGalaxy, kM31, kMarch5 + 21 * kHour)), 0);
    ASSERT_EQ(Add(Entry(kClassGalaxy, kM31, kMarch5 + 45 * kHour)), 1);
    EXPECT_EQ(IndexRows("user/log/observer/Ann.idx"), (std::vector<std::vector<uint32_t>>{{kM31, 5, 1}}));
    LogEntry second;
    ASSERT_EQ(LogReadEntry(256, 1, &second, nullptr), 1);
    ASSERT_EQ(LogDeleteEntry(second, 1), 1);
    EXPECT_FALSE(fs::exists("user/log/night/20260306.idx"));
    EXPECT_EQ(IndexRows("user/log/night/20260305.idx"), (std::vector<std::vector<uint32_t>>{{kM31, 5, 0}}));
    EXPECT_EQ(IndexRows("user/log/observer/Ann.idx"), (std::vector<std::vector<uint32_t>>{{kM31, 5, 0}}));
    EXPECT_EQ(IndexRows(ConsPath("And")), (std::vector<std::vector<uint32_t>>{{kM31, 5, 1}}));
    // The row file keeps its length; its count says one row.
    const Bytes rows = ReadFileBytes("user/log/galaxies/000004270.pix");
    EXPECT_EQ(rows.size(), 4u + 2 * 9098u);
    EXPECT_EQ(PeekU32(rows, 0), 1u);
    EXPECT_EQ(PeekU32(rows, 4), 0u);
}

// Deletes with a write fault at the nth write from the deletion on, in a
// fresh log of one or two entries; the stage codes met on the way.
std::set<int> DeleteStagesUnderWriteFaults(int entries) {
    std::set<int> codes;
    for (int nth = 1; nth < 60; ++nth) {
        std::error_code ec;
        fs::remove_all("user/log", ec);
        for (int i = 0; i < entries; ++i)
            if (Add(Entry(kClassGalaxy, kM31, kMarch5 + (21 + 24 * i) * kHour)) != i) return {};
        LogEntry entry;
        if (!LogReadEntry(256, 0, &entry, nullptr)) return {};
        int result = 0;
        {
            ScopedFault fault(FileOp::kWrite, nth, FileFault::kFail);
            result = LogDeleteEntry(entry, 0);
            if (!FileFaultFired()) break;
        }
        codes.insert(result);
        // What is left reads: the tables load and the other entry is whole.
        LogPresence table;
        EXPECT_EQ(LogPresenceLoad(&table), 1) << nth;
        if (entries > 1) {
            EXPECT_EQ(LogReadEntry(256, 1, &entry, nullptr), 1) << nth;
        }
    }
    return codes;
}

TEST_F(LogEntriesTest, AFailingWriteAtEachStageOfADeletionGivesThatStagesCode) {
    EXPECT_EQ(DeleteStagesUnderWriteFaults(1),
              (std::set<int>{kLogDeleteRows, kLogDeletePid, kLogDeleteNight, kLogDeleteCons, kLogDeleteInstrument,
                             kLogDeleteObserver, kLogDeleteLoc, kLogDeleteClass}));
    EXPECT_EQ(DeleteStagesUnderWriteFaults(2),
              (std::set<int>{kLogDeleteRows, kLogDeleteNight, kLogDeleteInstrument, kLogDeleteObserver,
                             kLogDeleteLoc, kLogDeleteRepair}));
}

TEST_F(LogEntriesTest, AReplacedEntryMovesOnlyWhereAKeyChanged) {
    ASSERT_EQ(Add(Entry(kClassGalaxy, kM31, kMarch5 + 21 * kHour), "A long first note"), 0);
    const uintmax_t size = fs::file_size("user/log/galaxies/00000000.bin");
    // Another remark and a shorter note: nothing moves.
    LogEntry entry = Entry(kClassGalaxy, kM31, kMarch5 + 21 * kHour);
    std::strcpy(entry.remark, "revised");
    EXPECT_EQ(LogReplaceEntry(256, 0, entry, "Short"), 1);
    EXPECT_EQ(fs::file_size("user/log/galaxies/00000000.bin"), size);
    std::string note;
    ASSERT_EQ(LogReadEntry(256, 0, &entry, &note), 1);
    EXPECT_EQ(note, "Short");
    EXPECT_STREQ(entry.remark, "revised");
    // A day later with another observer: night and observer move.
    entry = Entry(kClassGalaxy, kM31, kMarch5 + 45 * kHour, "Bob");
    EXPECT_EQ(LogReplaceEntry(256, 0, entry, nullptr), -1);
    EXPECT_FALSE(fs::exists("user/log/night/20260305.idx"));
    EXPECT_FALSE(fs::exists("user/log/observer/Ann.idx"));
    EXPECT_EQ(IndexRows("user/log/night/20260306.idx"), (std::vector<std::vector<uint32_t>>{{kM31, 5, 0}}));
    EXPECT_EQ(IndexRows("user/log/observer/Bob.idx"), (std::vector<std::vector<uint32_t>>{{kM31, 5, 0}}));
    EXPECT_EQ(IndexRows("user/log/instrument/Dob.idx"), (std::vector<std::vector<uint32_t>>{{kM31, 5, 0}}));
}

TEST_F(LogEntriesTest, AQueryLooksOnlyAtAnObjectsFirstRow) {
    ASSERT_EQ(Add(Entry(kClassGalaxy, kM31, kMarch5 + 21 * kHour, "Ann")), 0);
    ASSERT_EQ(Add(Entry(kClassGalaxy, kM31, kMarch5 + 45 * kHour, "Bob")), 1);
    ASSERT_EQ(Add(Entry(kClassGlobular, kM13, kMarch5 + 21 * kHour, "Bob")), 0);
    auto run = [](const char* observer, int fromDay, int toDay) {
        LogQuery q;
        LogQueryInit(&q);
        for (int s = 0; s < 13; ++s) q.classes[s] = static_cast<uint8_t>(s);
        for (int c = 0; c < 89; ++c) q.constellations[c] = static_cast<uint8_t>(c);
        LogQuerySelectName(&q.observers, observer);
        LogQuerySelectName(&q.locations, "home");
        LogQuerySelectName(&q.instruments, "Dob");
        q.startYear = q.endYear = 2026;
        q.startMonth = q.endMonth = 3;
        q.startDay = fromDay;
        q.endDay = toDay;
        std::vector<LogQueryHit> hits;
        LogQueryRun(q, &hits);
        std::vector<uint32_t> keys;
        for (const LogQueryHit& h : hits) keys.push_back(h.logKey);
        return keys;
    };
    EXPECT_EQ(run("Ann", 1, 31), (std::vector<uint32_t>{kM31}));
    // Bob's row of M31 is its second: M31 doesn't come.
    EXPECT_EQ(run("Bob", 1, 31), (std::vector<uint32_t>{kM13}));
    // The first row's night decides too.
    EXPECT_EQ(run("Ann", 6, 31), (std::vector<uint32_t>{}));
    // No constellation selected: no query.
    LogQuery empty;
    LogQueryInit(&empty);
    std::vector<LogQueryHit> hits;
    EXPECT_EQ(LogQueryRun(empty, &hits), 0);
}

TEST_F(LogEntriesTest, ANameThatWouldLeaveTheLogIsRefusedAndWritesNothingOutside) {
    for (const char* observer : {"../../escaped", "a/b", "..", "C:x"}) {
        EXPECT_EQ(Add(Entry(kClassGalaxy, kM31, kMarch5, observer)), -1) << observer;
    }
    for (const auto& e : fs::recursive_directory_iterator("."))
        if (e.is_regular_file()) {
            EXPECT_EQ(e.path().generic_string().rfind("./user/log/", 0), 0u) << e.path();
        }
}

TEST_F(LogEntriesTest, AnEntryAddedToAFolderWrittenElsewhereLandsWhereTheFormatSays) {
    // A log written by hand: M31 in the galaxies with two entries already
    // (numbers 3 and 7, nextEntry 8), a user galaxy's key after it, and the
    // class index holding both.
    MakeDirs("user/log/galaxies");
    for (const char* f : {"class", "night", "loc", "observer", "instrument", "cons"}) MakeDirs(std::string("user/log/") + f);
    WriteFileBytes("user/log/galaxies/pid.bin", {8, 0, 0, 0, 2, 0, 0, 0, 0xAE, 0x10, 0, 0, 9, 0, 0, 0x40});
    Bytes rows(4 + 2 * 9098, 0);
    rows[0] = 2;
    rows[4] = 3;
    rows[4 + 9098] = 7;
    for (int r = 0; r < 2; ++r) {
        const size_t at = 4 + 9098 * static_cast<size_t>(r);
        rows[at + 4] = kClassGalaxy;
        PokeU32(rows, at + 5, kM31);
        PokeU32(rows, at + 9, 256);
        PokeF64(rows, at + 13 + 30, kMarch5 - 30 + r);  // a month earlier
        std::memcpy(&rows[at + 131 + 99], "Field", 5);
        std::memcpy(&rows[at + 263], "Cy", 2);
        std::memcpy(&rows[at + 347 + 8718], "Binoculars", 10);
    }
    WriteFileBytes("user/log/galaxies/000004270.pix", rows);
    Bytes classIndex = {2, 0, 0, 0};
    for (uint32_t key : {kM31, 0x40000009u}) {
        Bytes row(12, 0);
        PokeU32(row, 0, key);
        PokeU32(row, 4, 5);
        PokeU32(row, 8, key == kM31 ? 7 : 2);
        classIndex.insert(classIndex.end(), row.begin(), row.end());
    }
    WriteFileBytes("user/log/class/05.idx", classIndex);
    Bytes oldEntry(9124, 0);
    oldEntry[2] = 2;
    oldEntry[4] = 'f';
    PokeF64(oldEntry, 5, kMarch5 - 29);
    std::memcpy(&oldEntry[112], "Field", 5);
    oldEntry[148] = kClassGalaxy;
    PokeU32(oldEntry, 149, kM31);
    PokeU32(oldEntry, 153, 256);
    std::memcpy(&oldEntry[157], "Cy", 2);
    std::memcpy(&oldEntry[8959], "Binoculars", 10);
    PokeU32(oldEntry, 9120, 6);
    const char text[] = "Faint";
    oldEntry.insert(oldEntry.end(), text, text + 6);
    WriteFileBytes("user/log/galaxies/00000007.bin", oldEntry);
    for (int slot = 0; slot < 13; ++slot)
        if (slot != 5) {
            ASSERT_EQ(LogCreateClass(slot), 1);
        }

    // It reads as written.
    LogEntry read;
    std::string note;
    ASSERT_EQ(LogReadEntry(256, 7, &read, &note), 1);
    EXPECT_EQ(note, "Faint");
    EXPECT_STREQ(read.observer.name, "Cy");
    EXPECT_STREQ(read.site.name, "Field");

    // A new entry takes number 8, its row goes third, the key table keeps
    // its keys, the class index only takes the new number.
    ASSERT_EQ(Add(Entry(kClassGalaxy, kM31, kMarch5 + 21 * kHour)), 8);
    EXPECT_EQ(ReadFileBytes("user/log/galaxies/pid.bin"),
              (Bytes{9, 0, 0, 0, 2, 0, 0, 0, 0xAE, 0x10, 0, 0, 9, 0, 0, 0x40}));
    const Bytes after = ReadFileBytes("user/log/galaxies/000004270.pix");
    ASSERT_EQ(after.size(), 4u + 3 * 9098u);
    EXPECT_EQ(PeekU32(after, 0), 3u);
    EXPECT_EQ(Slice(after, 0 + 4, 2 * 9098), Slice(rows, 4, 2 * 9098));
    EXPECT_EQ(PeekU32(after, 4 + 2 * 9098), 8u);
    EXPECT_EQ(IndexRows("user/log/class/05.idx"),
              (std::vector<std::vector<uint32_t>>{{kM31, 5, 8}, {0x40000009u, 5, 2}}));
    EXPECT_EQ(fs::file_size("user/log/galaxies/00000008.bin"), 9124u);
}

// Moves the working folder to a fresh one beside the scratch root.
void EnterFolder(const fs::path& folder) {
    fs::create_directories(folder);
    fs::current_path(folder);
}

TEST_F(LogEntriesTest, ALogCarriedThroughAnExchangeFileMakesTheSameFilesInAFreshFolder) {
    EnterFolder(root_ / "a");
    CometRecord haleBopp;
    {
        FilePtr comets = openComets();
        ASSERT_EQ(readComet(comets.get(), 14, nullptr, nullptr, &haleBopp), 1);
        MakeDirs("user");
        FilePtr store = openUserComets(nullptr);
        uint16_t pid = 0;
        ASSERT_NE(addOrReplaceUserComet(store.get(), haleBopp, nullptr, &pid), 0);
    }
    ASSERT_EQ(Add(Entry(kClassGalaxy, kM31, kMarch5 + 21 * kHour), "Dust lane"), 0);
    ASSERT_EQ(Add(Entry(kClassGalaxy, kM31, kMarch5 + 45 * kHour, "Bob")), 1);
    ASSERT_EQ(Add(Entry(kClassGlobular, kM13, kMarch5 + 22 * kHour)), 0);
    ASSERT_EQ(Add(Entry(kClassUserComet, 1, 2450537.5), "Two tails"), 0);
    int calls = 0;
    const auto count = [](int step, void* context) { *static_cast<int*>(context) += step; };
    ASSERT_EQ(LogExportAll((root_ / "log.vle").string().c_str(), "Spring", "Four entries", nullptr, count, &calls), 4);
    EXPECT_EQ(calls, 100);
    const Bytes file = ReadFileBytes((root_ / "log.vle").string());
    EXPECT_EQ((Bytes{file[0], file[1], file[2], file[5]}), (Bytes{0x03, 0xD9, 2, 6}));
    EXPECT_EQ(PeekU32(file, 75), 4u);
    // The first record, of the first class slot with entries (the comets):
    // note length, the entry, its note, the comet's block of one row.
    const size_t first = 103 + std::strlen("Four entries") + 1;
    EXPECT_EQ(PeekU32(file, first), 10u);
    EXPECT_EQ(file[first + 4 + 148], kClassUserComet);
    EXPECT_EQ(PeekU32(file, first + 4 + 149), 1u);
    EXPECT_STREQ(reinterpret_cast<const char*>(&file[first + 4 + 9124]), "Two tails");
    EXPECT_EQ((Bytes{file[first + 4 + 9124 + 10], file[first + 4 + 9124 + 11]}), (Bytes{1, 0}));
    EXPECT_EQ(PeekU32(file, first + 4 + 9124 + 10 + 2 + 130), 10u);  // M31's, with "Dust lane"
    EXPECT_EQ(PeekU32(file, file.size() - 4), 0u);
    const auto tree = LogTree();

    EnterFolder(root_ / "b");
    ExchangeHeader header;
    std::string description;
    ASSERT_EQ(LogImportFile((root_ / "log.vle").string().c_str(), &header, &description, nullptr, nullptr), 4);
    EXPECT_EQ(description, "Four entries");
    EXPECT_EQ(LogTree(), tree);
    EXPECT_EQ(ReadFileBytes("user/comet.bin"), ReadFileBytes((root_ / "a/user/comet.bin").string()));
    // A second import adds nothing: each entry is there already.
    EXPECT_EQ(LogImportFile((root_ / "log.vle").string().c_str(), &header, &description, nullptr, nullptr), 4);
    EXPECT_EQ(LogTree(), tree);
    // A file of another kind is refused.
    Bytes other = file;
    other[5] = 7;
    WriteFileBytes((root_ / "other.vle").string(), other);
    EXPECT_EQ(LogImportFile((root_ / "other.vle").string().c_str(), &header, &description, nullptr, nullptr), -1);
    EXPECT_EQ(description, "");
}

TEST_F(LogEntriesTest, AListExchangeFileCarriesTheEntriesOfItsObjectsWhenAsked) {
    EnterFolder(root_ / "a");
    ASSERT_EQ(Add(Entry(kClassGalaxy, kM31, kMarch5 + 21 * kHour), "Dust lane"), 0);
    ASSERT_EQ(Add(Entry(kClassGalaxy, kM31, kMarch5 + 45 * kHour)), 1);
    ASSERT_GE(ListCreate("Autumn", nullptr), 0);
    const int slot = ListFindByName("Autumn", nullptr);
    {
        int count = 0;
        FilePtr items = ListOpenItems(slot, &count);
        for (const auto& [cls, pid] : {std::pair{kClassGalaxy, kM31}, std::pair{kClassGlobular, kM13}}) {
            ObjectRecord r = identityRecord(cls, pid);
            r.classMask = classMaskOf(cls);
            ASSERT_EQ(ListAppendItem(items.get(), &r, &count), 1);
        }
        ASSERT_EQ(ListCloseItems(std::move(items), slot, count), 1);
    }
    const std::string path = (root_ / "autumn.lst").string();
    FilePtr out = ListExportBegin(path.c_str(), "Autumn", "");
    ASSERT_EQ(ListExportWrite(out.get(), slot, kListIncludeLogEntries, nullptr, nullptr), 1);
    out.reset();
    const auto tree = LogTree();

    EnterFolder(root_ / "b");
    ListImport state;
    ExchangeHeader header;
    std::string description;
    ASSERT_EQ(ListImportBegin(&state, path.c_str(), 100, &header, &description), 1);
    while (ListImportStep(&state, nullptr) == 1) {
    }
    ASSERT_EQ(ListImportEnd(&state, false), 1);
    // M13 has no entries; M31's two come with their numbers.
    for (const auto& [name, bytes] : tree)
        if (name.find("globular") == std::string::npos && name.find("registry") == std::string::npos) {
            EXPECT_EQ(ReadFileBytes(name), bytes) << name;
        }
    LogEntry entry;
    std::string note;
    ASSERT_EQ(LogReadEntry(256, 0, &entry, &note), 1);
    EXPECT_EQ(note, "Dust lane");
}

}  // namespace
