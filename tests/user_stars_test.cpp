// The user's star store: its three files against bytes written by hand, the
// add rule, the lookups by name and PID with their indexes built again, the
// delete cascade, the compaction, the text import, and the files under
// failing writes. What the deep-sky store adds is in user_deep_sky_test.
#include <cmath>
#include <cstring>
#include <filesystem>
#include <string>
#include <tuple>
#include <vector>

#include "astro/instant.h"
#include "astro/numeric.h"
#include "astro/site.h"
#include "astro/spherical.h"
#include "catalog/object_fill.h"
#include "catalog/user_stars.h"
#include "support.h"
#include "user_object_bytes.h"

namespace {

using Calls = std::vector<std::tuple<int, uint32_t, uint32_t>>;

// A 47-byte star record written field by field at its offsets.
Bytes StarBytes(uint32_t pid, uint32_t ra, uint32_t dec, uint16_t magnitude, const std::string& name) {
    Bytes b;
    PutU32(b, pid);
    PutU32(b, ra);
    PutU32(b, dec);
    PutU16(b, magnitude);
    PutName(b, name);
    return b;
}

Bytes StoreBytes(uint16_t count, uint32_t lastPid, const std::vector<Bytes>& records) {
    Bytes b;
    PutU16(b, count);
    PutU32(b, lastPid);
    for (const Bytes& r : records) b.insert(b.end(), r.begin(), r.end());
    return b;
}

StellarRecord Star(const char* name, double ra = 1.0, double dec = 0.5, double magnitude = 5.0) {
    StellarRecord r;
    EXPECT_EQ(makeStellarRecord(&r, name, ra, dec, magnitude), 1);
    return r;
}

std::string NameOf(const StellarRecord& r) { return std::string(r.name, strnlen(r.name, sizeof r.name)); }

class UserStarsTest : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        MakeDirs("user");
    }
    // Adds the stars in order; 1 each time.
    FilePtr Store(std::initializer_list<const char*> names) {
        FilePtr f = openStellar(nullptr);
        EXPECT_TRUE(f);
        for (const char* name : names) {
            StellarRecord r = Star(name);
            EXPECT_EQ(addOrReplaceStellar(f.get(), &r), 1) << name;
        }
        return f;
    }
    Calls calls_;
    DeleteCascade Recorder() {
        return [this](int c, uint32_t mask, uint32_t pid) { calls_.emplace_back(c, mask, pid); };
    }
};

TEST_F(UserStarsTest, TheThreeFilesHoldTheBytesWrittenByHand) {
    FilePtr f = openStellar(nullptr);
    // A half turn, an eighth and a quarter are 0x40000000, 0x10000000 and
    // 0x20000000 in the scale of 2147483647 to the turn, rounded away from
    // 0; magnitudes go in hundredths, 0.125 to 13 and -0.125 to -13.
    StellarRecord vega = Star("Vega", kPi, kPi / 4, 0.125);
    StellarRecord alcor = Star("alcor", kPi / 2, -kPi / 4, -0.125);
    StellarRecord unnamed = Star("", 0, 0, 99.9);
    for (StellarRecord* r : {&vega, &alcor, &unnamed}) ASSERT_EQ(addOrReplaceStellar(f.get(), r), 1);
    StellarRecord found;
    ASSERT_EQ(findStellarByName(f.get(), "v", &found), 1);

    EXPECT_EQ(ReadFileBytes(kStellarPath),
              StoreBytes(3, 3, {StarBytes(1, 0x40000000, 0x10000000, 13, "Vega"),
                                StarBytes(2, 0x20000000, 0xF0000000, 0xFFF3, "alcor"),
                                StarBytes(3, 0, 0, 9990, "")}));
    // The empty name has no entry; the others are upper case, sorted.
    EXPECT_EQ(ReadFileBytes(kStellarAlphaPath), AlphaBytes({{"ALCOR", 1}, {"VEGA", 0}}));
    // The highest PID, then the row of each PID at PID x 4.
    EXPECT_EQ(ReadFileBytes(kStellarPidPath), PidIndexBytes({3, 0, 1, 2}));
}

// A store made byte by byte as an older program left it: PIDs 2, 5 and 7,
// the last PID issued 9.
class CraftedStoreTest : public UserStarsTest {
protected:
    void SetUp() override {
        UserStarsTest::SetUp();
        WriteFileBytes(kStellarPath, StoreBytes(3, 9, {StarBytes(2, 0x40000000, 0x10000000, 3, "VEGA"),
                                                       StarBytes(5, 0x20000000, 0xF0000000, 283, "Vindemiatrix"),
                                                       StarBytes(7, 0, 0, 125, "deneb")}));
    }
};

TEST_F(CraftedStoreTest, StarsAreFoundByTheStartOfTheirNameInAnyCaseAndByPid) {
    long count = 0;
    FilePtr f = openStellar(&count);
    ASSERT_TRUE(f);
    EXPECT_EQ(count, 3);
    const struct {
        const char* text;
        long answer;  // row + 1
    } names[] = {{"VEG", 1}, {"veg", 1}, {"Veg", 1}, {"vega", 1}, {"vin", 2}, {"DENEB", 3},
                 {"vegas", 0}, {"Altair", 0}, {"", -1}};
    for (const auto& n : names) {
        StellarRecord r;
        EXPECT_EQ(findStellarByName(f.get(), n.text, &r), n.answer) << n.text;
    }
    StellarRecord r;
    long row = 0;
    ASSERT_EQ(findStellarByPid(f.get(), 5, &r, &row), 1);
    EXPECT_EQ(NameOf(r), "Vindemiatrix");
    EXPECT_EQ(row, 2);
    for (uint32_t missing : {0u, 1u, 3u, 8u, 9u}) EXPECT_EQ(findStellarByPid(f.get(), missing, &r, &row), 0) << missing;

    std::string name;
    double ra = 0, dec = 0, magnitude = 0;
    ASSERT_EQ(stellarPlace(f.get(), 5, &name, &ra, &dec, &magnitude), 1);
    EXPECT_EQ(name, "Vindemiatrix");
    EXPECT_NEAR(ra, kPi / 2, 1e-9);
    EXPECT_NEAR(dec, -kPi / 4, 1e-9);
    EXPECT_NEAR(magnitude, 2.83, 1e-12);
}

TEST_F(CraftedStoreTest, ACompactionKeepsTheUnmarkedRowsAndTheLastPidGoesDown) {
    FilePtr f = openStellar(nullptr);
    ASSERT_EQ(compactStellar(f, {0, 0, 1}, Recorder()), 1);
    EXPECT_EQ(calls_, (Calls{{12, 16, 7}}));
    EXPECT_EQ(ReadFileBytes(kStellarPath), StoreBytes(2, 5, {StarBytes(2, 0x40000000, 0x10000000, 3, "VEGA"),
                                                              StarBytes(5, 0x20000000, 0xF0000000, 283, "Vindemiatrix")}));
    EXPECT_FALSE(std::filesystem::exists(kStellarCompactPath));
    // The store came back open: the next star takes PID 6, which PID 7 had.
    ASSERT_TRUE(f);
    StellarRecord r = Star("Mizar");
    EXPECT_EQ(addOrReplaceStellar(f.get(), &r), 1);
    EXPECT_EQ(r.pid, 6u);
}

TEST_F(UserStarsTest, AShortTextFindsTheNameTheBisectionMeetsFirst) {
    // Index order ALGOL, VEGA, VESTA, VINDEMIATRIX, ZETA: the middle entry,
    // VESTA, is the first one met, though VEGA comes before it.
    FilePtr f = Store({"Vega", "Vesta", "Vindemiatrix", "Algol", "Zeta"});
    const struct {
        const char* text;
        long answer;  // row + 1
    } names[] = {{"V", 2}, {"v", 2}, {"VI", 3}, {"A", 4}, {"Z", 5}, {"VEG", 1}};
    for (const auto& n : names) {
        StellarRecord r;
        EXPECT_EQ(findStellarByName(f.get(), n.text, &r), n.answer) << n.text;
    }
}

TEST_F(UserStarsTest, TheSameNameKeepsItsPidAndAnotherCaseIsAnotherStar) {
    FilePtr f = Store({"Vega"});
    StellarRecord upper = Star("VEGA");
    EXPECT_EQ(addOrReplaceStellar(f.get(), &upper), 1);
    EXPECT_EQ(upper.pid, 2u);
    StellarRecord moved = Star("Vega", 2.0, 0.25, 0.03);
    EXPECT_EQ(addOrReplaceStellar(f.get(), &moved), 2);
    EXPECT_EQ(moved.pid, 1u);
    long count = 0;
    f = openStellar(&count);
    EXPECT_EQ(count, 2);
    StellarRecord r;
    ASSERT_EQ(findStellarByPid(f.get(), 1, &r, nullptr), 1);
    EXPECT_EQ(r.ra, moved.ra);
    EXPECT_EQ(r.magnitude, 3);
}

TEST_F(UserStarsTest, DeletedIndexesAreBuiltAgainAlike) {
    FilePtr f = Store({"Vega", "Deneb", "Altair", "Albireo"});
    StellarRecord r;
    ASSERT_EQ(findStellarByName(f.get(), "alb", &r), 4);
    const Bytes alpha = ReadFileBytes(kStellarAlphaPath), pids = ReadFileBytes(kStellarPidPath);
    dropStellarIndexes();
    EXPECT_FALSE(std::filesystem::exists(kStellarAlphaPath) || std::filesystem::exists(kStellarPidPath));
    long row = 0;
    EXPECT_EQ(findStellarByPid(f.get(), 3, &r, &row), 1);
    EXPECT_EQ(NameOf(r), "Altair");
    EXPECT_EQ(findStellarByName(f.get(), "DEN", &r), 2);
    EXPECT_EQ(ReadFileBytes(kStellarAlphaPath), alpha);
    EXPECT_EQ(ReadFileBytes(kStellarPidPath), pids);
    // A star added later is in the PID index at once; the alphabetical one
    // learns its name only when it is made again.
    StellarRecord mizar = Star("Mizar");
    ASSERT_EQ(addOrReplaceStellar(f.get(), &mizar), 1);
    EXPECT_EQ(ReadFileBytes(kStellarAlphaPath), alpha);
    EXPECT_EQ(findStellarByName(f.get(), "miz", &r), 0);
    EXPECT_EQ(findStellarByPid(f.get(), 5, &r, &row), 1);
    EXPECT_EQ(row, 5);
    dropStellarIndexes();
    EXPECT_EQ(findStellarByName(f.get(), "miz", &r), 5);
}

TEST_F(UserStarsTest, AfterADeleteTheStaleIndexesNeverAnswerAnotherStar) {
    FilePtr f = Store({"Vega", "Deneb", "Altair"});
    StellarRecord r;
    ASSERT_EQ(findStellarByName(f.get(), "A", &r), 3);
    const Bytes pids = ReadFileBytes(kStellarPidPath);
    ASSERT_EQ(deleteStellarRow(f.get(), 0, nullptr), 1);
    // The delete leaves the index files: slot 1 still says row 0.
    EXPECT_EQ(ReadFileBytes(kStellarPidPath), pids);
    // Slot 1 leads to Deneb now, and slot 3 past the end: neither answers.
    long row = 0;
    EXPECT_EQ(findStellarByPid(f.get(), 1, &r, &row), 0);
    EXPECT_EQ(findStellarByPid(f.get(), 2, &r, &row), 0);
    EXPECT_EQ(findStellarByPid(f.get(), 3, &r, &row), 0);
    EXPECT_EQ(findStellarByName(f.get(), "altair", &r), 0);
    EXPECT_EQ(findStellarByName(f.get(), "vega", &r), 0);
    // Made again, the indexes find the stars in their new rows.
    dropStellarIndexes();
    ASSERT_EQ(findStellarByPid(f.get(), 3, &r, &row), 1);
    EXPECT_EQ(NameOf(r), "Altair");
    EXPECT_EQ(row, 2);
    EXPECT_EQ(findStellarByName(f.get(), "altair", &r), 2);
    EXPECT_EQ(findStellarByName(f.get(), "vega", &r), 0);
}

TEST_F(UserStarsTest, TheCascadeRunsForEachDeletedStarBeforeItGoes) {
    const struct {
        const char* what;
        int (*run)(FilePtr&, const DeleteCascade&);
        Calls calls;
        long countAfter;
    } cases[] = {
        {"delete row 1", [](FilePtr& f, const DeleteCascade& c) { return deleteStellarRow(f.get(), 1, c); },
         {{12, 16, 2}}, 2},
        {"delete PID 3", [](FilePtr& f, const DeleteCascade& c) { return deleteStellarByPid(f.get(), 3, c); },
         {{12, 16, 3}, {12, 16, 3}}, 2},
        {"compact", [](FilePtr& f, const DeleteCascade& c) { return compactStellar(f, {1, 0, 1}, c); },
         {{12, 16, 1}, {12, 16, 3}}, 1},
        {"delete a missing PID", [](FilePtr& f, const DeleteCascade& c) { return 1 - deleteStellarByPid(f.get(), 4, c); },
         {}, 3},
    };
    for (const auto& c : cases) {
        std::filesystem::remove(kStellarPath);
        calls_.clear();
        FilePtr f = Store({"A", "B", "C"});
        // The record must still be there when its cascade runs.
        const DeleteCascade check = [&](int cls, uint32_t mask, uint32_t pid) {
            StellarRecord r;
            EXPECT_EQ(findStellarByPid(f.get(), pid, &r, nullptr), 1) << c.what;
            calls_.emplace_back(cls, mask, pid);
        };
        EXPECT_EQ(c.run(f, check), 1) << c.what;
        EXPECT_EQ(calls_, c.calls) << c.what;
        long count = 0;
        f = openStellar(&count);
        EXPECT_EQ(count, c.countAfter) << c.what;
    }
}

TEST_F(UserStarsTest, ImportLinesAreStarsBadOrOtherKinds) {
    const std::string name = "Vega                              ";  // columns 3 to 35
    const struct {
        std::string line;
        int answer;
    } lines[] = {
        {"S " + name + "18:36:56.3 +38:47:01 J2000 0.03", 1},
        {"S " + name + "18h36m56.3s 38 j2000.0 -1.5", 1},
        {"S " + name + "18.6 -16.7 2000 12", 1},
        {"S " + name + "18:36:56.3", 0},  // a name and a RA only
        {"S " + name + "18:36:56.3 +38:47:01 J2000", 0},
        {"S " + name + "18:36:56.3 +38:47:01 X1950 0.03", 0},
        {"S " + name + "18:36:56.3 +38:47:01 B 0.03", 0},
        {"S " + name + "18:36:56.3 +38:47:01 J-5 0.03", 0},
        {"S " + name + "18:36:56.3 +38:47:01 B0 0.03", 0},
        {"S " + name + "18:36:56.3 +38:47:01 J2000 bright", 0},
        {"S " + name + "18:36:56.3 +95 J2000 0.03", 0},
        {"S " + name + "24:00:00 +38 J2000 0.03", 0},
        {"S                                   18:36:56.3 +38:47:01 J2000 0.03", 0},  // no name
        {"S", -1},
        {"s " + name + "18:36:56.3 +38:47:01 J2000 0.03", -1},
        {"# S " + name, -1},
    };
    for (const auto& l : lines) {
        StellarRecord r;
        EXPECT_EQ(parseStellarLine(l.line.c_str(), &r), l.answer) << l.line;
    }
    StellarRecord r;
    ASSERT_EQ(parseStellarLine(("S " + name + "18:36:56.3 +38:47:01 J2000 0.03").c_str(), &r), 1);
    EXPECT_EQ(NameOf(r), "Vega");
    EXPECT_EQ(r.ra, radiansToScaledAngle((18 + 36 / 60.0 + 56.3 / 3600) * kPi / 12));
    EXPECT_EQ(r.dec, radiansToScaledAngle((38 + 47 / 60.0 + 1 / 3600.0) * kRadiansPerDegree));
    EXPECT_EQ(r.magnitude, 3);
}

TEST_F(UserStarsTest, AnImportCountsItsLinesAndCutsNamesAt32) {
    const std::string name33 = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456";
    WriteFileText("stars.txt",
                  "S Vega                              18:36:56.3 +38:47:01 J2000 0.03\r\n"
                  "S Vega                              18:36:56.3 +38:47:01 J2000 0.05\r\n"
                  "S " + name33 + "18:00 +10 J2000 5.5\r\n"
                  "S Bad                               18:36:56.3\r\n"
                  "a comment\r\n"
                  "S Bad equinox                       18:36:56.3 +38:47:01 Q2000 1\r\n");
    SupplementalImport state;
    ASSERT_EQ(beginStellarImport(&state, "stars.txt", 4), 1);
    long added = 0, replaced = 0, bad = 0;
    int batches = 0;
    while (nextStellarImportBatch(&state, &added, &replaced, &bad)) ++batches;
    endStellarImport(&state);
    // Six lines of about 70 bytes: a batch of one line each.
    EXPECT_EQ(batches, 6);
    EXPECT_EQ(added, 2);
    EXPECT_EQ(replaced, 1);
    EXPECT_EQ(bad, 2);
    EXPECT_FALSE(std::filesystem::exists(kStellarPidPath));
    FilePtr f = openStellar(nullptr);
    StellarRecord r;
    ASSERT_EQ(readStellarRow(f.get(), &r, 1), 1);
    EXPECT_EQ(NameOf(r), name33.substr(0, 32));
    EXPECT_EQ(r.name[32], '\0');
    // Names given to the writer are cut the same way.
    EXPECT_EQ(NameOf(Star(name33.c_str())), name33.substr(0, 32));
    EXPECT_EQ(beginStellarImport(&state, "missing.txt", 4), -1);
}

// The places of three stars given for B1950 (FK4) and J1950 (FK5), against
// ERFA: eraFk45z for B1950, which also corrects the FK4 frame's rotation
// (the precession of the import does not: up to 1.5"), and the IAU 1976
// precession matrix eraPmat76 for J1950.
TEST_F(UserStarsTest, OtherEquinoxesArePrecessedToJ2000) {
    const struct {
        const char* ra;
        const char* dec;
        const char* equinox;
        double raJ2000, decJ2000;  // degrees, from ERFA
        double within;             // arc seconds
    } cases[] = {
        {"19:48:20.6", "+08:44:05", "B1950", 297.6883311506, 8.8627936304, 1.5},
        {"01:48:48.8", "+89:01:43", "b1950", 37.9095642608, 89.2640879990, 1.5},
        {"05:32:49.0", "-00:19:35", "B1950.0", 83.8432452427, -0.2949791323, 1.5},
        {"19:48:20.6", "+08:44:05", "J1950", 297.6880904059, 8.8627878383, 0.01},
        {"01:48:48.8", "+89:01:43", "1950", 37.9125485241, 89.2641727900, 0.01},
        {"05:32:49.0", "-00:19:35", "j1950", 83.8431870390, -0.2949867002, 0.01},
    };
    for (const auto& c : cases) {
        double ra = 0, dec = 0;
        ASSERT_EQ(supplementalPlace(c.ra, c.dec, c.equinox, &ra, &dec), 1) << c.equinox;
        const double wantRa = c.raJ2000 * kRadiansPerDegree, wantDec = c.decJ2000 * kRadiansPerDegree;
        EXPECT_LT(Separation(ra, dec, wantRa, wantDec) / kRadiansPerArcsecond, c.within) << c.ra << " " << c.equinox;
    }
    // B2000 is not J2000: at 12h +30 the FK4 place moves by the equinox
    // correction of 0.0775 s (1.16" in RA) and the E-terms taken off (0.08"
    // in RA, -0.19" in Dec): 1.09" on the sky, worked out by hand.
    double ra = 0, dec = 0;
    ASSERT_EQ(supplementalPlace("12:00:00", "+30:00:00", "B2000", &ra, &dec), 1);
    EXPECT_NEAR(Separation(ra, dec, kPi, kPi / 6) / kRadiansPerArcsecond, 1.09, 0.1);
    ASSERT_EQ(supplementalPlace("12:00:00", "+30:00:00", "J2000", &ra, &dec), 1);
    EXPECT_EQ(ra, kPi);
    EXPECT_EQ(dec, 30 * kRadiansPerDegree);
}

TEST_F(UserStarsTest, TheCountOf65535StarsWrapsToNought) {
    Bytes image = StoreBytes(0xFFFF, 0xFFFF, {});
    image.resize(6 + 47 * 65535, 0);
    WriteFileBytes(kStellarPath, image);
    FilePtr f = openStellar(nullptr);
    ASSERT_TRUE(f);
    StellarRecord r = Star("One too many");
    ASSERT_EQ(appendStellar(f.get(), &r), 1);
    EXPECT_EQ(r.pid, 65536u);
    f.reset();
    const Bytes after = ReadFileBytes(kStellarPath);
    EXPECT_EQ(Slice(after, 0, 6), Bytes({0, 0, 0, 0, 1, 0}));
    EXPECT_EQ(Slice(after, 6 + 47 * 65535, 47), StarBytes(65536, uint32_t(r.ra), uint32_t(r.dec), 500, "One too many"));
    long count = -1;
    f = openStellar(&count);
    EXPECT_EQ(count, 0);
}

TEST_F(UserStarsTest, AStoreIsMadeWhereNoneIsAndRefusedWhenItsCountRunsPastItsEnd) {
    WriteFileBytes(kStellarAlphaPath, Bytes(4, 0));
    long count = -1;
    ASSERT_TRUE(openStellar(&count));
    EXPECT_EQ(count, 0);
    EXPECT_EQ(ReadFileBytes(kStellarPath), Bytes(6, 0));
    EXPECT_FALSE(std::filesystem::exists(kStellarAlphaPath));
    WriteFileBytes(kStellarPath, StoreBytes(2, 2, {StarBytes(1, 0, 0, 0, "A")}));
    EXPECT_FALSE(openStellar(&count));
    EXPECT_FALSE(openStellarForReading(&count));
}

// Each write of an add and of a compaction is made to fail, outright or
// half-way: the stars that stood before stand, and a failed compaction
// leaves the store as it was.
TEST_F(UserStarsTest, FailingWritesNeverLoseTheStarsThatStood) {
    const auto make = [this] {
        std::filesystem::remove(kStellarPath);
        Store({"A", "B", "C"});
        StellarRecord r;
        FilePtr f = openStellar(nullptr);
        findStellarByName(f.get(), "A", &r);  // both indexes there
    };
    const struct {
        const char* what;
        int (*run)();
        long countAfter;
    } operations[] = {
        {"add", [] { FilePtr f = openStellar(nullptr); StellarRecord r = Star("D"); return addOrReplaceStellar(f.get(), &r); }, 4},
        {"replace", [] { FilePtr f = openStellar(nullptr); StellarRecord r = Star("B", 2.0); return addOrReplaceStellar(f.get(), &r); }, 3},
        {"compact", [] { FilePtr f = openStellar(nullptr); return compactStellar(f, {0, 1, 0}, nullptr); }, 2},
    };
    for (const auto& op : operations) {
        for (FileFault fault : {FileFault::kFail, FileFault::kShort}) {
            int n = 1;
            for (;; ++n) {
                make();
                const Bytes before = ReadFileBytes(kStellarPath);
                int result = 0;
                bool fired = false;
                {
                    ScopedFault armed(FileOp::kWrite, n, fault);
                    result = op.run();
                    fired = FileFaultFired();
                }
                SCOPED_TRACE(std::string(op.what) + ": write " + std::to_string(n));
                const Bytes after = ReadFileBytes(kStellarPath);
                long count = -1;
                FilePtr f = openStellar(&count);
                ASSERT_TRUE(f);
                if (!fired) {
                    EXPECT_GT(result, 0);
                    EXPECT_EQ(count, op.countAfter);
                    break;
                }
                EXPECT_FALSE(std::filesystem::exists(kStellarCompactPath));
                if (std::string(op.what) == "compact") {
                    // Only the new file is written: the old store stands.
                    EXPECT_EQ(result, 0);
                    EXPECT_EQ(after, before);
                    continue;
                }
                // Rows 0, 2 stand; row 1 stands or is the replacement.
                EXPECT_EQ(Slice(after, 6, 47), Slice(before, 6, 47));
                EXPECT_EQ(Slice(after, 6 + 2 * 47, 47), Slice(before, 6 + 2 * 47, 47));
                EXPECT_TRUE(count == 3 || count == op.countAfter) << count;
                // Every PID that can be found leads to its own star.
                for (uint32_t pid = 1; pid <= 4; ++pid) {
                    StellarRecord r;
                    if (findStellarByPid(f.get(), pid, &r, nullptr)) {
                        EXPECT_EQ(r.pid, pid);
                    }
                }
                StellarRecord r;
                EXPECT_EQ(findStellarByName(f.get(), "C", &r), 3);
            }
            EXPECT_GT(n, 1) << op.what;
        }
    }
}

TEST_F(UserStarsTest, AStarIsReadByItsIdentityWithItsPlaceMagnitudeAndMask) {
    FilePtr f = Store({"Vega"});
    StellarRecord vega = Star("Deneb", 5.4, 0.79, 1.25);
    ASSERT_EQ(addOrReplaceStellar(f.get(), &vega), 1);
    f.reset();
    char name[] = "Greenwich";
    Site site;
    SiteInit(&site, 0.0, 51.4779 * kRadiansPerDegree, 0, 6.0, 0, name);
    Instant instant;
    InstantSet(&instant, &site, 1, 1, 2000, 12.0, kUniversalTime);
    ObjectRecord r;
    r.objectClass = kClassSupplementalStar;
    r.pid = 2;
    EXPECT_EQ(refillByIdentity(&r, 0, 0, nullptr, nullptr), 0);  // a star needs the site
    ASSERT_EQ(refillByIdentity(&r, 0, 0, &site, &instant), 1);
    EXPECT_NEAR(r.raJ2000, 5.4, 1e-8);
    EXPECT_NEAR(r.decJ2000, 0.79, 1e-8);
    EXPECT_FLOAT_EQ(r.magnitude, 1.25f);
    EXPECT_EQ(r.classMask, 16u);
    EXPECT_EQ(r.sizeDefault, 0.0f);
    EXPECT_NE(r.altitude, -1.0);
    r.pid = 3;
    EXPECT_EQ(refillByIdentity(&r, 0, 0, &site, &instant), 0);
}

}  // namespace
