// The user's minor-planet store: record and index images against bytes
// written by hand at the documented offsets, every answer of the add rule,
// the sort, the row for an instant, deletes with stale indexes, compaction,
// the two text imports and failing writes.
#include <cmath>
#include <cstring>
#include <filesystem>
#include <numbers>
#include <string>
#include <vector>

#include "catalog/minor_planet_import.h"
#include "catalog/user_minor_planets.h"
#include "support.h"

namespace {

constexpr double kDeg = std::numbers::pi / 180.0;


UserMpRecord Mp(uint32_t number, const char* name, double epoch, double e = 0.1, double a = 2.5) {
    UserMpRecord r;
    EXPECT_EQ(packUserMp(&r, number, name, "Test", 0.0, epoch, 10.0, a, 0.0, e, 30.0, 40.0, 5.0, 0.0,
                         7.0, 0.15),
              1);
    return r;
}

// A record of the store with its PID given, as an earlier import left it.
UserMpRecord MpRow(uint32_t number, uint32_t pid, double epoch) {
    UserMpRecord r = Mp(number, "X", epoch);
    r.pid = pid;
    return r;
}

// A store written row by row through the layout, with the PIDs given.
void WriteStore(const std::vector<UserMpRecord>& rows, uint32_t lastPid) {
    Bytes b(8, 0);
    PokeU32(b, 0, static_cast<uint32_t>(rows.size()));
    PokeU32(b, 4, lastPid);
    for (const UserMpRecord& r : rows) {
        const auto image = RecordImage<UserMpLayout>(r);
        b.insert(b.end(), image.begin(), image.end());
    }
    WriteFileBytes(kUserMpPath, b);
}

std::vector<UserMpRecord> Rows() {
    FilePtr f = openUserMp(nullptr);
    std::vector<UserMpRecord> rows;
    EXPECT_TRUE(f && readUserMpAll(f.get(), &rows, nullptr));
    return rows;
}

class UserMpTest : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        MakeDirs("user");
    }
};

TEST_F(UserMpTest, RecordImageHasEveryFieldAtItsOffset) {
    UserMpRecord r;
    std::strcpy(r.name, "Ceres");
    r.number = 0x01020304;
    r.perihelionEpoch = -0.0041;
    r.epoch = 0.2589;
    r.perihelionDistance = 2.55;
    r.semiMajorAxis = 2.77;
    r.eccentricity = 0.0795;
    r.inclination = 0.18f;
    r.argPerihelion = 1.28f;
    r.node = 1.40f;
    r.h = 3.35f;
    r.g = 0.15f;
    r.pid = 0xA0B0C0D0;
    r.computed = 6.5f;
    std::strcpy(r.source, "Bowell");
    Bytes want(116, 0);
    std::memcpy(want.data(), "Ceres", 5);
    PokeU32(want, 33, 0x01020304);
    PokeF64(want, 37, -0.0041);
    PokeF64(want, 45, 0.2589);
    PokeF64(want, 53, 2.55);
    PokeF64(want, 61, 2.77);
    PokeF64(want, 69, 0.0795);
    PokeF32(want, 77, 0.18f);
    PokeF32(want, 81, 1.28f);
    PokeF32(want, 85, 1.40f);
    PokeF32(want, 89, 3.35f);
    PokeF32(want, 93, 0.15f);
    PokeU32(want, 97, 0xA0B0C0D0);
    PokeF32(want, 101, 6.5f);
    std::memcpy(want.data() + 105, "Bowell", 6);
    const auto image = RecordImage<UserMpLayout>(r);
    EXPECT_EQ(Bytes(image.begin(), image.end()), want);
}

// Ceres (1), Vesta (4) and the unnumbered "2003 AB" added in this order:
// rows 0, 1, 2 and PIDs 1, 2, 3.
TEST_F(UserMpTest, IndexFilesHoldTheRowsAndAreRebuiltTheSameWhenDeleted) {
    {
        uint32_t count = 0;
        FilePtr f = openUserMp(&count);
        ASSERT_EQ(addOrReplaceUserMp(f.get(), Mp(1, "Ceres", 0.25), &count), 1);
        ASSERT_EQ(addOrReplaceUserMp(f.get(), Mp(4, "Vesta", 0.25), &count), 1);
        ASSERT_EQ(addOrReplaceUserMp(f.get(), Mp(0, "2003 AB", 0.25), &count), 1);
        EXPECT_EQ(count, 3u);
    }
    Bytes number(8 + 65535 * 4, 0);
    for (size_t i = 0; i < 65535; ++i) PokeU32(number, 8 + 4 * i, 65535);
    PokeU32(number, 0, 2);   // numbered objects
    PokeU32(number, 4, 4);   // highest number
    PokeU32(number, 8, 0);   // number 1: row 0
    PokeU32(number, 20, 1);  // number 4: row 1
    Bytes pid(16, 0);
    PokeU32(pid, 0, 3);
    PokeU32(pid, 4, 0);
    PokeU32(pid, 8, 1);
    PokeU32(pid, 12, 2);
    Bytes alpha(4 + 3 * 37, 0);
    PokeU32(alpha, 0, 3);
    const char* names[] = {"2003 AB", "CERES", "VESTA"};
    const uint32_t rows[] = {2, 0, 1};
    for (int i = 0; i < 3; ++i) {
        std::memcpy(alpha.data() + 4 + 37 * i, names[i], std::strlen(names[i]));
        PokeU32(alpha, 4 + 37 * i + 33, rows[i]);
    }
    for (int pass = 0; pass < 2; ++pass) {
        SCOPED_TRACE(pass == 0 ? "kept up by the adds" : "built again");
        EXPECT_EQ(ReadFileBytes(kUserMpNumberPath), number);
        EXPECT_EQ(ReadFileBytes(kUserMpPidPath), pid);
        EXPECT_EQ(ReadFileBytes(kUserMpAlphaPath), alpha);
        dropUserMpIndexes();
        uint32_t count = 0;
        FilePtr f = openUserMp(&count);
        ASSERT_EQ(addOrReplaceUserMp(f.get(), Mp(4, "Vesta", 0.25), &count), 3);
    }
    const Bytes store = ReadFileBytes(kUserMpPath);
    EXPECT_EQ(PeekU32(store, 0), 3u);
    EXPECT_EQ(PeekU32(store, 4), 3u);
    EXPECT_EQ(store.size(), 8u + 3 * 116);
}

TEST_F(UserMpTest, AddRuleAnswers) {
    UserMpRecord changed = Mp(1, "Ceres", 0.25, 0.2);
    UserMpRecord moved = changed;
    moved.perihelionEpoch += 0.01;
    const struct {
        const char* what;
        UserMpRecord record;
        int answer;
        uint32_t pid, count;
    } steps[] = {
        {"new", Mp(1, "Ceres", 0.25), 1, 1, 1},
        {"same orbit", Mp(1, "Ceres", 0.25), 3, 1, 1},
        {"epoch 1e-10 century away", Mp(1, "Ceres", 0.25 + 1e-10), 3, 1, 1},
        {"other eccentricity", changed, 2, 1, 1},
        {"another mean anomaly only", moved, 3, 1, 1},
        {"another epoch is another object", Mp(1, "Ceres", 0.26), 1, 2, 2},
        {"another number", Mp(4, "Vesta", 0.25), 1, 3, 3},
        {"unnumbered", Mp(0, "2003 AB", 0.25), 1, 4, 4},
        {"unnumbered, by name in any case", Mp(0, "2003 ab", 0.25), 3, 4, 4},
        {"unnumbered, by the start of a name", Mp(0, "2003", 0.25), 3, 4, 4},
        {"a number without a slot", Mp(70000, "Big", 0.25), 1, 5, 5},
        {"found by its name", Mp(70000, "Big", 0.25), 3, 5, 5},
    };
    uint32_t count = 0;
    FilePtr f = openUserMp(&count);
    for (const auto& s : steps) {
        SCOPED_TRACE(s.what);
        EXPECT_EQ(addOrReplaceUserMp(f.get(), s.record, &count), s.answer);
        EXPECT_EQ(count, s.count);
        UserMpRecord found;
        uint32_t row = 0;
        ASSERT_EQ(findUserMpByPid(f.get(), s.pid, &found, &row), 1);
        EXPECT_EQ(found.number, s.record.number);
        EXPECT_NEAR(found.epoch, s.record.epoch, 1e-9);
    }
    // The replaced row took the new elements and a brightest magnitude.
    UserMpRecord ceres;
    uint32_t row = 0;
    ASSERT_EQ(findUserMpByPid(f.get(), 1, &ceres, &row), 1);
    EXPECT_EQ(findUserMpByPid(f.get(), 1, nullptr, nullptr), 1);  // asked only whether it is there
    EXPECT_EQ(ceres.eccentricity, 0.2);
    EXPECT_NE(ceres.computed, 0.0f);
    EXPECT_EQ(FileSize(kUserMpNumberPath), 8u + 65535 * 4);

    UserMpRecord none;
    EXPECT_EQ(packUserMp(&none, 0, "", "x", 0, 0.25, 10, 2.5, 0, 0.1, 0, 0, 0, 0, 0, 0), 0);
    EXPECT_EQ(packUserMp(&none, 5, "No axis", "x", 0, 0.25, 10, 0, 0, 0.1, 0, 0, 0, 0, 0, 0), 0);
}

TEST_F(UserMpTest, UnpackGivesDegreesAndTheAxisFromQ) {
    const UserMpRecord r = Mp(1, "Ceres", 0.25, 0.2, 2.5);
    UserMpElements e;
    unpackUserMp(r, &e);
    EXPECT_DOUBLE_EQ(r.perihelionDistance, 2.0);
    EXPECT_DOUBLE_EQ(e.semiMajorAxis, 2.5);
    EXPECT_NEAR(e.inclination, 5.0, 1e-5);
    EXPECT_NEAR(e.argPerihelion, 30.0, 1e-5);
    EXPECT_NEAR(e.node, 40.0, 1e-5);
    // Past the parabola the axis is negative, whatever the record holds.
    UserMpRecord open = r;
    open.perihelionDistance = 1.0;
    open.eccentricity = 1.5;
    unpackUserMp(open, &e);
    EXPECT_DOUBLE_EQ(e.semiMajorAxis, -2.0);
}

TEST_F(UserMpTest, SortPutsNumberedFirstThenNamesAndTheNewestEpochFirst) {
    auto row = [](uint32_t number, const char* name, uint32_t pid, double epoch) {
        UserMpRecord r = Mp(number, name, epoch);
        r.pid = pid;
        return r;
    };
    WriteStore({row(0, "beta", 5, 0.1), row(4, "Vesta", 2, 0.1), row(1, "Ceres", 1, 0.1),
                row(0, "Alpha", 6, 0.1), row(1, "Ceres", 1, 0.3), row(1, "Ceres B", 7, 0.1),
                row(4, "Vesta", 2, 0.2)},
               7);
    uint32_t count = 0;
    FilePtr f = openUserMp(&count);
    ASSERT_EQ(sortUserMp(&f, &count), 1);
    const struct {
        uint32_t pid;
        double epoch;
    } want[] = {{7, 0.1}, {1, 0.3}, {1, 0.1}, {2, 0.2}, {2, 0.1}, {6, 0.1}, {5, 0.1}};
    const std::vector<UserMpRecord> rows = Rows();
    ASSERT_EQ(rows.size(), 7u);
    for (size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(rows[i].pid, want[i].pid) << i;
        EXPECT_EQ(rows[i].epoch, want[i].epoch) << i;
    }
    EXPECT_FALSE(std::filesystem::exists(kUserMpTempPath));
    EXPECT_EQ(PeekU32(ReadFileBytes(kUserMpPath), 4), 7u);
}

TEST_F(UserMpTest, RowForAnInstantIsTheNearestEpochAndTheFirstOnATie) {
    auto row = [](double epoch) {
        UserMpRecord r = Mp(1, "Ceres", epoch);
        r.pid = 1;
        return r;
    };
    WriteStore({row(0.5), row(0.25), row(0.0)}, 1);
    const struct {
        double t, epoch;
    } cases[] = {{0.9, 0.5}, {0.375, 0.5}, {0.3, 0.25}, {0.1, 0.0}, {-3, 0.0}};
    FilePtr f = openUserMp(nullptr);
    for (const auto& c : cases) {
        UserMpRecord r;
        ASSERT_EQ(userMpRowForInstant(f.get(), 1, c.t, &r, nullptr), 1);
        EXPECT_EQ(r.epoch, c.epoch) << c.t;
    }
    UserMpRecord r;
    EXPECT_EQ(userMpRowForInstant(f.get(), 2, 0.0, &r, nullptr), 0);
}

struct Cascaded {
    int objectClass;
    uint32_t mask, pid;
    bool operator==(const Cascaded&) const = default;
};

TEST_F(UserMpTest, AfterADeleteFindsTrustNoStaleSlotButTheAddRuleLooksAgain) {
    uint32_t count = 0;
    FilePtr f = openUserMp(&count);
    for (auto r : {Mp(1, "Ceres", 0.25), Mp(2, "Pallas", 0.25), Mp(3, "Juno", 0.25)})
        ASSERT_EQ(addOrReplaceUserMp(f.get(), r, &count), 1);
    const Bytes pidIndex = ReadFileBytes(kUserMpPidPath);
    std::vector<Cascaded> cascaded;
    const DeleteCascade cascade = [&](int c, uint32_t m, uint32_t p) { cascaded.push_back({c, m, p}); };
    ASSERT_EQ(deleteUserMpRow(f.get(), 0, cascade), 1);
    EXPECT_EQ(cascaded, (std::vector<Cascaded>{{14, 8, 1}}));
    EXPECT_EQ(ReadFileBytes(kUserMpPidPath), pidIndex);  // left as it was
    // PID 2's slot leads to Juno's row now, PID 3's past the end.
    UserMpRecord r;
    uint32_t row = 0;
    for (uint32_t pid : {1u, 2u, 3u}) EXPECT_EQ(findUserMpByPid(f.get(), pid, &r, &row), 0) << pid;
    // Juno is found all the same, and nothing is added twice.
    EXPECT_EQ(addOrReplaceUserMp(f.get(), Mp(3, "Juno", 0.25), &count), 3);
    ASSERT_EQ(findUserMpByPid(f.get(), 3, &r, &row), 1);
    EXPECT_EQ(row, 1u);
    EXPECT_STREQ(r.name, "Juno");
}

TEST_F(UserMpTest, AnObjectOfSeveralRowsGoesWithOneCascade) {
    WriteStore({MpRow(1, 1, 0.3), MpRow(2, 2, 0.3), MpRow(2, 2, 0.1), MpRow(3, 3, 0.3)}, 3);
    uint32_t count = 0;
    FilePtr f = openUserMp(&count);
    std::vector<Cascaded> cascaded;
    const DeleteCascade cascade = [&](int c, uint32_t m, uint32_t p) { cascaded.push_back({c, m, p}); };
    // One of two rows: the object is still there, its attachments stay.
    ASSERT_EQ(deleteUserMpRow(f.get(), 1, cascade), 1);
    EXPECT_TRUE(cascaded.empty());
    WriteStore({MpRow(1, 1, 0.3), MpRow(2, 2, 0.3), MpRow(2, 2, 0.1), MpRow(3, 3, 0.3)}, 3);
    f = openUserMp(&count);
    ASSERT_EQ(deleteUserMpByPid(f.get(), 2, cascade), 1);
    EXPECT_EQ(cascaded, (std::vector<Cascaded>{{14, 8, 2}}));
    uint32_t lastPid = 0;
    ASSERT_EQ(readUserMpHead(f.get(), &count, &lastPid), 1);
    EXPECT_EQ(count, 2u);
    EXPECT_EQ(lastPid, 3u);
    EXPECT_EQ(deleteUserMpByPid(f.get(), 2, cascade), 0);
}

TEST_F(UserMpTest, CompactionDropsMarkedRowsAndBringsTheLastPidDown) {
    WriteStore({MpRow(1, 1, 0.3), MpRow(2, 2, 0.3), MpRow(3, 3, 0.3), MpRow(3, 3, 0.1)}, 9);
    WriteFileBytes(kUserMpAlphaPath, Bytes(4, 0));
    std::vector<Cascaded> cascaded;
    const DeleteCascade cascade = [&](int c, uint32_t m, uint32_t p) { cascaded.push_back({c, m, p}); };
    ASSERT_EQ(compactUserMp({0, 0, 1, 1}, cascade), 1);
    EXPECT_EQ(cascaded, (std::vector<Cascaded>{{14, 8, 3}}));
    const Bytes b = ReadFileBytes(kUserMpPath);
    EXPECT_EQ(PeekU32(b, 0), 2u);
    EXPECT_EQ(PeekU32(b, 4), 2u);  // down from 9
    EXPECT_FALSE(std::filesystem::exists(kUserMpAlphaPath));
    EXPECT_FALSE(std::filesystem::exists(kUserMpTempPath));
    // A row of an object that keeps another row runs no cascade.
    cascaded.clear();
    WriteStore({MpRow(1, 1, 0.3), MpRow(1, 1, 0.1)}, 1);
    ASSERT_EQ(compactUserMp({0, 1}, cascade), 1);
    EXPECT_TRUE(cascaded.empty());
}

TEST_F(UserMpTest, AFullStoreTakesNoMoreRows) {
    Bytes b(8 + 65535 * 116, 0);
    PokeU32(b, 0, 65535);
    PokeU32(b, 4, 65535);
    for (uint32_t i = 0; i < 65535; ++i) PokeU32(b, 8 + i * 116 + 97, i + 1);
    WriteFileBytes(kUserMpPath, b);
    uint32_t count = 0;
    FilePtr f = openUserMp(&count);
    EXPECT_EQ(addOrReplaceUserMp(f.get(), Mp(1, "Ceres", 0.25), &count), 0);
    f.reset();
    EXPECT_EQ(FileSize(kUserMpPath), b.size());
}

// Lowell's sample record of (1) Ceres (astorb.dat, epoch 1996 Apr 27.0 TT)
// with its number in five columns, as this format reads it.
const std::string kCeres =
    "    1 Ceres              E. Bowell        3.34  0.12 0.72 913.0 G?      0   0   0   0   0   "
    "0 56959 4750 19960427  80.477333  71.802404  80.659857 10.600303 0.07604100   2.76788714 "
    "19960414 2.3E-02  1.4E-04 19960416 2.7E-02 19960530 3.1E-02 20040111 3.1E-02 20040111";

std::string With(std::string line, size_t at, const std::string& text) {
    return line.replace(at, text.size(), text);
}

TEST_F(UserMpTest, BowellLines) {
    UserMpRecord r;
    ASSERT_EQ(parseBowellLine(kCeres.c_str(), false, &r), 1);
    EXPECT_STREQ(r.name, "Ceres");
    EXPECT_EQ(r.number, 1u);
    EXPECT_EQ(r.h, 3.34f);
    EXPECT_EQ(r.g, 0.12f);
    EXPECT_DOUBLE_EQ(r.epoch, (2450200.5 - 2451545.0) / 36525.0);
    EXPECT_DOUBLE_EQ(r.eccentricity, 0.07604100);
    EXPECT_DOUBLE_EQ(r.semiMajorAxis, 2.76788714);
    EXPECT_DOUBLE_EQ(r.perihelionDistance, (1 - 0.07604100) * 2.76788714);
    EXPECT_EQ(r.inclination, static_cast<float>(10.600303 * kDeg));
    EXPECT_EQ(r.node, static_cast<float>(80.659857 * kDeg));
    EXPECT_STREQ(r.source, "Bowell");
    const struct {
        const char* what;
        std::string line;
        bool numberedOnly;
        int answer;
    } cases[] = {
        {"no number", With(kCeres, 0, "     "), false, 1},
        {"no number, numbered only", With(kCeres, 0, "     "), true, -1},
        {"no H", With(kCeres, 41, "     "), false, 1},
        {"no year", With(kCeres, 105, "    "), false, 0},
        {"month 13", With(kCeres, 109, "13"), false, 0},
        {"node of 400", With(kCeres, 136, "400.000000"), false, 0},
        {"eccentricity 2", With(kCeres, 157, "2.00000000"), false, 0},
        {"a hyperbola", With(kCeres, 157, "1.50000000"), false, 0},
        {"no axis", With(kCeres, 168, "            "), false, 0},
        {"cut short", kCeres.substr(0, 150), false, 0},
        {"empty", "", false, 0},
    };
    for (const auto& c : cases)
        EXPECT_EQ(parseBowellLine(c.line.c_str(), c.numberedOnly, &r), c.answer) << c.what;
}

// An "MP " line with its fields at the documented offsets (after "MP ").
std::string MpLine(const std::string& name, const std::string& a = " 2.7656157") {
    std::string line(140, ' ');
    auto put = [&line](size_t at, const std::string& text) { line.replace(3 + at, text.size(), text); };
    line.replace(0, 3, "MP ");
    put(0, name);
    put(41, "2025");
    put(46, "11");
    put(49, "21.5");
    put(54, "231.540");
    put(62, a);
    put(73, "0.079576");
    put(82, " 73.300");
    put(90, " 80.250");
    put(98, " 10.588");
    put(106, " 3.35");
    put(112, "  0.15");
    put(119, "MPC");
    return line;
}

TEST_F(UserMpTest, MpLines) {
    UserMpRecord r;
    ASSERT_EQ(parseMpLine(MpLine("(1) Ceres").c_str(), true, &r), 1);
    EXPECT_EQ(r.number, 1u);
    EXPECT_STREQ(r.name, "Ceres");
    EXPECT_STREQ(r.source, "MPC");
    EXPECT_DOUBLE_EQ(r.epoch, (2461001.0 - 2451545.0) / 36525.0);  // 2025 Nov 21.5
    EXPECT_DOUBLE_EQ(r.semiMajorAxis, 2.7656157);
    EXPECT_EQ(r.argPerihelion, static_cast<float>(73.3 * kDeg));
    const struct {
        const char* what;
        std::string line;
        bool numberedOnly;
        int answer;
    } cases[] = {
        {"unnumbered", MpLine("2003 AB"), false, 1},
        {"unnumbered, numbered only", MpLine("2003 AB"), true, -1},
        {"not a data line", "XP " + MpLine("(1) Ceres").substr(3), false, -1},
        {"six digits", MpLine("(123456) Big"), false, 0},
        {"no bracket", MpLine("(12 Big"), false, 0},
        {"no axis", MpLine("(1) Ceres", "          "), false, 0},
        {"cut short", MpLine("(1) Ceres").substr(0, 100), false, 0},
    };
    for (const auto& c : cases) EXPECT_EQ(parseMpLine(c.line.c_str(), c.numberedOnly, &r), c.answer) << c.what;
}

TEST_F(UserMpTest, ImportCountsAndASecondRunIsUnchanged) {
    WriteFileText("list.txt", MpLine("(1) Ceres") + "\n" + "a comment\n" + MpLine("(2) Pallas", "bad") + "\n" +
                                  MpLine("2003 AB") + "\n");
    const long want[2][4] = {{2, 0, 0, 1}, {0, 0, 2, 1}};
    for (const auto& w : want) {
        MpImportState s;
        ASSERT_EQ(beginMpImport(&s, "list.txt", MpTextFormat::kMp, false, 3), 1);
        EXPECT_GT(s.totalLines, 0);
        int answer;
        int batches = 0;
        while ((answer = nextMpImportBatch(&s)) == 1) ++batches;
        EXPECT_EQ(answer, 0);
        EXPECT_GE(batches, 1);
        endMpImport(&s);
        EXPECT_EQ(s.added, w[0]);
        EXPECT_EQ(s.replaced, w[1]);
        EXPECT_EQ(s.unchanged, w[2]);
        EXPECT_EQ(s.bad, w[3]);
        EXPECT_FALSE(std::filesystem::exists(kUserMpNumberPath));
    }
    WriteFileText("empty.txt", "");
    MpImportState s;
    ASSERT_EQ(beginMpImport(&s, "empty.txt", MpTextFormat::kBowell, false, 3), 1);
    EXPECT_EQ(s.remainingLines, kMpLinesUnknown);
    EXPECT_EQ(nextMpImportBatch(&s), 0);
    endMpImport(&s);
}

// Every write of an add and of a compaction fails in turn, outright or half
// way: the rows that stood stand, and the store opens with its rows whole.
TEST_F(UserMpTest, FailingWritesLoseNoRow) {
    auto make = [] {
        dropUserMpIndexes();
        std::filesystem::remove(kUserMpPath);
        uint32_t count = 0;
        FilePtr f = openUserMp(&count);
        for (auto r : {Mp(1, "A", 0.25), Mp(2, "B", 0.25), Mp(3, "C", 0.25)})
            addOrReplaceUserMp(f.get(), r, &count);
    };
    auto add = [] {
        uint32_t count = 0;
        FilePtr f = openUserMp(&count);
        return addOrReplaceUserMp(f.get(), Mp(4, "D", 0.25), &count);
    };
    auto compact = [] { return compactUserMp({0, 1, 0}, nullptr); };
    for (FileFault fault : {FileFault::kFail, FileFault::kShort}) {
        for (int which = 0; which < 2; ++which) {
            int n = 1;
            for (;; ++n) {
                make();
                const Bytes before = ReadFileBytes(kUserMpPath);
                bool fired;
                {
                    ScopedFault armed(FileOp::kWrite, n, fault);
                    which == 0 ? add() : compact();
                    fired = FileFaultFired();
                }
                SCOPED_TRACE((which == 0 ? "add, write " : "compact, write ") + std::to_string(n));
                const Bytes after = ReadFileBytes(kUserMpPath);
                const uint32_t count = PeekU32(after, 0);
                if (which == 0 || after == before) {
                    EXPECT_EQ(Slice(after, 8, 3 * 116), Slice(before, 8, 3 * 116));
                    EXPECT_TRUE(count == 3 || count == 4) << count;
                } else {
                    EXPECT_EQ(count, 2u);
                    EXPECT_EQ(Slice(after, 8, 116), Slice(before, 8, 116));
                    EXPECT_EQ(Slice(after, 8 + 116, 116), Slice(before, 8 + 2 * 116, 116));
                }
                EXPECT_GE(after.size(), 8 + 116 * static_cast<size_t>(count));
                EXPECT_FALSE(std::filesystem::exists(kUserMpTempPath));
                if (!fired) break;
            }
            EXPECT_GT(n, 2);
        }
    }
}

}  // namespace
