// The comet record and its files, the name forms, the user's comet store
// (its add rule, deletes, compaction and what a failing disk leaves), the
// orbit of a comet for an instant and its place against Meeus's worked
// example, and the reference comets of the generated set.
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "astro/calendar.h"
#include "astro/instant.h"
#include "astro/numeric.h"
#include "astro/planet_files.h"
#include "astro/planet_series.h"
#include "astro/site.h"
#include "catalog/catalogue_roots.h"
#include "catalog/comet_elements_text.h"
#include "catalog/comet_files.h"
#include "catalog/comet_names.h"
#include "catalog/comet_orbit.h"
#include "catalog/minor_planet_roots.h"
#include "catalog/object_fill.h"
#include "catalog/user_comets.h"
#include "support.h"

namespace {

const std::string kSolar = FERRY2_SOLAR_DIR;
const std::string kSource = FERRY2_REFDATA_SOURCE;
constexpr double kDeg = kRadiansPerDegree;

void PokeText(Bytes& b, size_t off, const char* text) { std::memcpy(&b[off], text, std::strlen(text)); }

// A comet record written byte by byte at the offsets of the file format.
Bytes CometBytes(uint16_t number, char letter, const char* name, const char* iau, uint16_t pid,
                 double perihelionEpoch, double epoch, float q, float e, int16_t coefficient) {
    Bytes b(130, 0);
    PokeU16(b, 0, number);
    b[2] = static_cast<uint8_t>(letter);
    PokeText(b, 3, name);
    PokeText(b, 32, iau);
    PokeU16(b, 49, pid);
    PokeF64(b, 51, perihelionEpoch);
    PokeF64(b, 59, epoch);
    PokeF32(b, 67, q);
    PokeF32(b, 71, e);
    PokeF32(b, 75, 1.5f);
    PokeF32(b, 79, 2.5f);
    PokeF32(b, 83, 0.25f);
    PokeF32(b, 87, 6.0f);
    PokeF32(b, 91, 4.0f);
    PokeI16(b, 95, coefficient);
    PokeText(b, 97, "MPC 12345");
    return b;
}

CometRecord Comet(int number, char letter, const char* iau, const char* name, double epoch,
                  double q = 1.0, double coefficient = 0.002) {
    CometElements e;
    e.perihelionEpoch = -0.05;
    e.epoch = epoch;
    e.perihelionDistance = q;
    e.eccentricity = 0.7;
    e.argPerihelion = 10;
    e.node = 20;
    e.inclination = 30;
    e.brightnessG = 8;
    e.brightnessK = 4;
    e.coefficient = coefficient;
    CometRecord r;
    EXPECT_EQ(packComet(&r, number, letter, iau, name, e, "test"), 1);
    return r;
}

Bytes StoreBytes(uint16_t lastPid, const std::vector<Bytes>& rows) {
    Bytes b(4, 0);
    PokeU16(b, 0, static_cast<uint16_t>(rows.size()));
    PokeU16(b, 2, lastPid);
    for (const Bytes& r : rows) b.insert(b.end(), r.begin(), r.end());
    return b;
}

uint16_t U16At(const Bytes& b, size_t off) { return static_cast<uint16_t>(b[off] | b[off + 1] << 8); }

// The PIDs and epochs of the store's rows, in order.
std::vector<std::pair<int, double>> StoreRows() {
    const Bytes b = ReadFileBytes(kUserCometPath);
    std::vector<std::pair<int, double>> rows;
    for (int i = 0; i < U16At(b, 0); ++i) rows.emplace_back(U16At(b, 4 + 130 * i + 49), PeekF64(b, 4 + 130 * i + 59));
    return rows;
}

class CometStoreTest : public ScratchTest {};

TEST_F(CometStoreTest, RecordNameRowAndHeadMatchHandWrittenBytes) {
    const Bytes hand = CometBytes(67, 'P', "Churyumov-Gerasimenko", "1969 R1", 7, -0.02, 0.264, 1.25f,
                                  0.640625f, -123);
    CometRecord r;
    DecodeRecord<CometLayout>(hand.data(), r);
    EXPECT_EQ(r.number, 67);
    EXPECT_EQ(r.letter, 'P');
    EXPECT_STREQ(r.name, "Churyumov-Gerasimenko");
    EXPECT_STREQ(r.iau, "1969 R1");
    EXPECT_EQ(r.pid, 7);
    EXPECT_EQ(r.perihelionEpoch, -0.02);
    EXPECT_EQ(r.epoch, 0.264);
    EXPECT_EQ(r.perihelionDistance, 1.25f);
    EXPECT_EQ(r.eccentricity, 0.640625f);
    EXPECT_EQ(r.argPerihelion, 1.5f);
    EXPECT_EQ(r.node, 2.5f);
    EXPECT_EQ(r.inclination, 0.25f);
    EXPECT_EQ(r.brightnessG, 6.0f);
    EXPECT_EQ(r.brightnessK, 4.0f);
    EXPECT_EQ(r.coefficient, -123);
    EXPECT_STREQ(r.source, "MPC 12345");
    const auto image = RecordImage<CometLayout>(r);
    EXPECT_EQ(Bytes(image.begin(), image.end()), hand);
    const auto name = RecordImage<CometNameLayout>(r);
    EXPECT_EQ(Bytes(name.begin(), name.end()), Slice(hand, 0, 51));
    const auto head = RecordImage<UserCometHeadLayout>(UserCometHead{0x0201, 0x0403});
    EXPECT_EQ(Bytes(head.begin(), head.end()), (Bytes{1, 2, 3, 4}));
}

TEST_F(CometStoreTest, PackKeepsTheCoefficientWithinItsField) {
    const struct {
        double value;
        int16_t code;
    } cases[] = {{0.002, 2000}, {0.04, 32767}, {0.032767, 32767}, {0.0327664, 32766},
                 {0.0000015, 2}, {-0.0000015, -2}, {-0.05, -32768}};
    for (const auto& c : cases) {
        const CometRecord r = Comet(1, 'P', "", "Test", 0.1, 1.0, c.value);
        EXPECT_EQ(r.coefficient, c.code) << c.value;
        EXPECT_NEAR(unpackComet(r).coefficient, c.code * 1e-6, 1e-12) << c.value;
    }
    // No number, no designation, and a blank letter or no name: refused.
    CometElements e;
    e.perihelionEpoch = 0.1;
    e.perihelionDistance = 1;
    e.eccentricity = 0.5;
    CometRecord r;
    EXPECT_EQ(packComet(&r, 0, ' ', "", "Nameless", e, ""), 0);
    EXPECT_EQ(packComet(&r, 0, 'C', "", "", e, ""), 0);
    EXPECT_EQ(packComet(&r, 0, 'C', "", "Named", e, ""), 1);
    e.perihelionEpoch = 0;  // perihelion at J2000.0 exactly can't be said
    EXPECT_EQ(packComet(&r, 1, 'P', "", "Halley", e, ""), 0);
    // Unpack: a = q / (1 - e), angles in degrees.
    const CometElements back = unpackComet(Comet(1, 'P', "", "Halley", 0.1, 0.5));
    EXPECT_NEAR(back.semiMajorAxis, 0.5 / 0.3, 1e-6);
    EXPECT_NEAR(back.node, 20, 1e-5);
}

TEST_F(CometStoreTest, NameForms) {
    const struct {
        int number;
        char letter;
        const char* iau;
        const char* name;
        const char* full;
        const char* shortName;
        const char* iauForm;
        const char* search;
    } cases[] = {
        {1, 'P', "1982 U1", "Halley", "1P/1982 U1 (Halley)", "1P/Halley", "P/1982 U1", "Halley"},
        {0, 'C', "1995 O1", "Hale-Bopp", "C/1995 O1 (Hale-Bopp)", "C/1995 O1 (Hale-Bopp)", "C/1995 O1",
         "Hale-Bopp 1995 O1"},
        {40000, 'P', "2030 A1", "Far", "40000P/2030 A1 (Far)", "P/2030 A1 (Far)", "P/2030 A1", "Far"},
        {32767, 'P', "", "Last", "32767P/ (Last)", "32767P/Last", "", "Last"},
        {0, 'C', "X", "Short", "C/X (Short)", "C/X (Short)", "", "Short X"},
    };
    for (const auto& c : cases) {
        CometRecord r;
        r.number = static_cast<uint16_t>(c.number);
        r.letter = static_cast<uint8_t>(c.letter);
        std::strcpy(r.iau, c.iau);
        std::strcpy(r.name, c.name);
        EXPECT_EQ(cometFullName(r), c.full);
        EXPECT_EQ(cometShortName(r), c.shortName);
        EXPECT_EQ(cometIauName(r), c.iauForm);
        EXPECT_EQ(cometSearchText(r), c.search);
    }
    CometRecord blank;
    std::strcpy(blank.iau, " 1995");
    EXPECT_EQ(cometIauName(blank), "");
}

TEST_F(CometStoreTest, AddRuleAnswersAndKeepsTheStoreSorted) {
    MakeDirs("user");
    int count = -1;
    FilePtr f = openUserComets(&count);
    ASSERT_TRUE(f);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(ReadFileBytes(kUserCometPath), (Bytes{0, 0, 0, 0}));
    using Rows = std::vector<std::pair<int, double>>;
    const struct {
        const char* what;
        CometRecord record;
        int answer;
        Rows rows;
    } steps[] = {
        {"a new comet", Comet(2, 'P', "", "Encke", 0.20), 1, {{1, 0.20}}},
        {"the same elements", Comet(2, 'P', "", "Encke", 0.20), -1, {{1, 0.20}}},
        {"another coefficient", Comet(2, 'P', "", "Encke", 0.20, 1.0, 0.005), 2, {{1, 0.20}}},
        {"the default coefficient counts as the same", Comet(2, 'P', "", "Encke", 0.20 + 1e-10), -1, {{1, 0.20}}},
        {"another q at that epoch", Comet(2, 'P', "", "Encke", 0.20, 1.1), 2, {{1, 0.20}}},
        {"an earlier epoch", Comet(2, 'P', "", "Encke", 0.10), 1, {{1, 0.10}, {1, 0.20}}},
        {"a later epoch", Comet(2, 'P', "", "Encke", 0.30), 1, {{1, 0.10}, {1, 0.20}, {1, 0.30}}},
        {"a number that sorts first", Comet(1, 'P', "", "Halley", 0.25), 1,
         {{2, 0.25}, {1, 0.10}, {1, 0.20}, {1, 0.30}}},
        {"another letter, another comet", Comet(2, 'I', "", "Borisov", 0.25), 1,
         {{2, 0.25}, {1, 0.10}, {1, 0.20}, {1, 0.30}, {3, 0.25}}},
        {"unnumbered after numbered", Comet(0, 'C', "1995 O1", "Hale-Bopp", 0.25), 1,
         {{2, 0.25}, {1, 0.10}, {1, 0.20}, {1, 0.30}, {3, 0.25}, {4, 0.25}}},
        {"by designation", Comet(0, 'C', "1990 A1", "Austin", 0.25), 1,
         {{2, 0.25}, {1, 0.10}, {1, 0.20}, {1, 0.30}, {3, 0.25}, {5, 0.25}, {4, 0.25}}},
        {"name and designation prefixes find the comet", Comet(0, 'C', "1995", "Hale", 0.35), 1,
         {{2, 0.25}, {1, 0.10}, {1, 0.20}, {1, 0.30}, {3, 0.25}, {5, 0.25}, {4, 0.25}, {4, 0.35}}},
    };
    for (const auto& s : steps) {
        const Bytes before = ReadFileBytes(kUserCometPath);
        EXPECT_EQ(addOrReplaceUserComet(f.get(), s.record), s.answer) << s.what;
        std::fflush(f.get());
        EXPECT_EQ(StoreRows(), s.rows) << s.what;
        const Bytes after = ReadFileBytes(kUserCometPath);
        if (s.answer == -1) {
            EXPECT_EQ(after, before) << s.what;
        }
        // A comet that sorts in front of all rows moves every one, byte for byte.
        if (s.rows.size() == 4 && s.answer == 1 && s.rows[0].first == 2) {
            EXPECT_EQ(Slice(after, 4 + 130, 3 * 130), Slice(before, 4, 3 * 130)) << s.what;
        }
    }
    // The overwrites kept the coefficient that a default gave way to.
    CometRecord row;
    ASSERT_EQ(readUserCometRow(f.get(), 2, &row), 1);
    EXPECT_EQ(row.coefficient, 5000);
    EXPECT_EQ(row.perihelionDistance, 1.1f);
    EXPECT_EQ(U16At(ReadFileBytes(kUserCometPath), 2), 5);
}

TEST_F(CometStoreTest, AStoreThatCannotBeReadAnswersZero) {
    MakeDirs("user");
    // The count promises two rows; the file holds one.
    WriteFileBytes(kUserCometPath, StoreBytes(1, {CometBytes(2, 'P', "Encke", "", 1, 0.1, 0.2, 1, 0.5f, 2000)}));
    Bytes b = ReadFileBytes(kUserCometPath);
    PokeU16(b, 0, 2);
    WriteFileBytes(kUserCometPath, b);
    FilePtr f = openUserComets(nullptr);
    EXPECT_EQ(addOrReplaceUserComet(f.get(), Comet(3, 'P', "", "X", 0.1)), 0);
    EXPECT_EQ(ReadFileBytes(kUserCometPath), b);
}

// Comets 1P (PID 2), 2P with two rows (PID 1) and C/1995 O1 (PID 3); the
// last PID issued was 4.
void MakeStore() {
    MakeDirs("user");
    WriteFileBytes(kUserCometPath,
                   StoreBytes(4, {CometBytes(1, 'P', "Halley", "", 2, 0.1, 0.2, 0.6f, 0.9f, 2000),
                                  CometBytes(2, 'P', "Encke", "", 1, 0.1, 0.1, 0.3f, 0.8f, 2000),
                                  CometBytes(2, 'P', "Encke", "", 1, 0.1, 0.3, 0.3f, 0.8f, 2000),
                                  CometBytes(0, 'C', "Hale-Bopp", "1995 O1", 3, 0.1, 0.2, 0.9f, 0.99f, 2000)}));
}

using Cascades = std::vector<std::tuple<int, uint32_t, uint32_t>>;

TEST_F(CometStoreTest, DeletesRunTheCascadeWhenTheLastRowOfAComets) {
    MakeStore();
    Cascades ran;
    const DeleteCascade cascade = [&](int c, uint32_t mask, uint32_t pid) { ran.emplace_back(c, mask, pid); };
    FilePtr f = openUserComets(nullptr);
    ASSERT_EQ(deleteUserCometRow(f.get(), 1, cascade), 1);  // one of Encke's two rows
    EXPECT_TRUE(ran.empty());
    std::fflush(f.get());
    EXPECT_EQ(StoreRows(), (std::vector<std::pair<int, double>>{{2, 0.2}, {1, 0.3}, {3, 0.2}}));
    ASSERT_EQ(deleteUserCometRow(f.get(), 1, cascade), 1);  // its last
    EXPECT_EQ(ran, (Cascades{{13, 4, 1}}));
    EXPECT_EQ(deleteUserCometRow(f.get(), 2, cascade), 0);  // past the count
    EXPECT_EQ(deleteUserCometByPid(f.get(), 9, cascade), 0);
    ASSERT_EQ(deleteUserCometByPid(f.get(), 2, cascade), 1);
    EXPECT_EQ(ran, (Cascades{{13, 4, 1}, {13, 4, 2}}));
    std::fflush(f.get());
    const Bytes b = ReadFileBytes(kUserCometPath);
    EXPECT_EQ(U16At(b, 0), 1);
    EXPECT_EQ(U16At(b, 2), 4);  // a delete keeps the last PID
    CometRecord r;
    EXPECT_EQ(findUserComet(f.get(), 1, nullptr, nullptr, 0, &r), -1);
}

TEST_F(CometStoreTest, CompactionBringsTheLastPidDown) {
    MakeStore();
    Cascades ran;
    const DeleteCascade cascade = [&](int c, uint32_t mask, uint32_t pid) { ran.emplace_back(c, mask, pid); };
    const Bytes before = ReadFileBytes(kUserCometPath);
    ASSERT_EQ(compactUserComets({0, 1, 0, 1}, cascade), 1);
    EXPECT_EQ(ran, (Cascades{{13, 4, 3}}));  // Encke keeps a row
    EXPECT_FALSE(std::filesystem::exists(kCometCompactPath));
    const Bytes after = ReadFileBytes(kUserCometPath);
    EXPECT_EQ(after, StoreBytes(2, {Slice(before, 4, 130), Slice(before, 4 + 260, 130)}));
    // The next comet takes PID 3 again.
    FilePtr f = openUserComets(nullptr);
    EXPECT_EQ(addOrReplaceUserComet(f.get(), Comet(0, 'C', "2020 F3", "NEOWISE", 0.2)), 1);
    std::fflush(f.get());
    EXPECT_EQ(StoreRows().back(), std::make_pair(3, 0.2));
}

TEST_F(CometStoreTest, FindersWalkEachCometOnce) {
    MakeStore();
    FilePtr f = openUserComets(nullptr);
    const struct {
        uint32_t pid;
        const char* name;
        const char* iau;
        int number;
        long row;
    } cases[] = {{1, nullptr, nullptr, 0, 1},      {0, "enc", nullptr, 0, 1},
                 {0, "Hale", nullptr, 0, 3},       {0, nullptr, "1995 O1 (Hale-Bopp)", 0, 3},
                 {0, nullptr, "1995", 0, -1},      {0, nullptr, nullptr, 1, 0},
                 {0, "Enckes", nullptr, 0, -1},    {7, nullptr, nullptr, 0, -1}};
    for (const auto& c : cases) {
        CometRecord r;
        EXPECT_EQ(findUserComet(f.get(), c.pid, c.name, c.iau, c.number, &r), c.row)
            << c.pid << " " << (c.name ? c.name : "") << (c.iau ? c.iau : "");
    }
    CometWalk walk;
    ASSERT_EQ(beginCometWalk(&walk, f.get()), 1);
    CometRecord r;
    EXPECT_EQ(nextCometByPid(&walk, 1, &r), 1);
    EXPECT_EQ(nextCometByPid(&walk, 1, &r), 2);
    EXPECT_EQ(nextCometByPid(&walk, 1, &r), -1);
}

TEST_F(CometStoreTest, TheNearestEpochWinsAndTiesKeepTheEarlier) {
    const struct {
        std::vector<double> epochs;
        double t;
        int index;
    } cases[] = {{{0.25}, 5, 0},
                 {{0.25, 0.5, 0.75}, 0.5625, 1},
                 {{0.25, 0.5, 0.75}, 0.625, 1},  // a tie keeps the earlier
                 {{0.25, 0.5, 0.75}, 0.6875, 2},
                 {{0.25, 0.5, 0.75}, 9, 2},
                 {{0.25, 0.5, 0.75}, -9, 0},
                 {{0.75, 0.25}, 0.5, 0}};
    for (const auto& c : cases) {
        std::vector<CometRecord> records(c.epochs.size());
        for (size_t i = 0; i < records.size(); ++i) records[i].epoch = c.epochs[i];
        EXPECT_EQ(nearestCometEpoch(records.data(), static_cast<int>(records.size()), c.t), c.index) << c.t;
    }
}

// The orbit of a comet is its perihelion time, q, e and the angles: the
// elements' epoch plays no part, so a record without a perihelion time has
// no orbit even when it has an epoch.
TEST(CometOrbitTest, NoPerihelionTimeNoOrbitWhateverTheEpoch) {
    CometRecord r;
    r.perihelionDistance = 1.0f;
    r.eccentricity = 0.5f;
    r.epoch = 0.25;
    OrbitRecord orbit;
    r.perihelionEpoch = 0.0;
    EXPECT_EQ(cometOrbit(r, &orbit), 0);
    r.perihelionEpoch = 0.125;
    EXPECT_EQ(cometOrbit(r, &orbit), 1);
}

// Every write of an add that moves all rows, of an overwrite, of a delete
// and of a compaction fails in turn, outright or half-way: the rows that
// stood before stand, and the count is the old one or the new one.
TEST_F(CometStoreTest, AFailingWriteLosesNothing) {
    const struct {
        const char* what;
        int (*run)();
        int rowsAfter;
    } cases[] = {
        {"add among the rows", [] {
             FilePtr f = openUserComets(nullptr);
             return addOrReplaceUserComet(f.get(), Comet(1, 'A', "", "Zero", 0.1));
         }, 5},
        {"overwrite", [] {
             FilePtr f = openUserComets(nullptr);
             CometRecord r = Comet(2, 'P', "", "Encke", 0.3, 0.4);
             return addOrReplaceUserComet(f.get(), r);
         }, 4},
        {"delete", [] {
             FilePtr f = openUserComets(nullptr);
             return deleteUserCometRow(f.get(), 0, DeleteCascade());
         }, 3},
        {"compact", [] { return compactUserComets({1, 0, 0, 0}, DeleteCascade()); }, 3},
    };
    for (const auto& c : cases) {
        for (FileFault fault : {FileFault::kFail, FileFault::kShort}) {
            int fired = 0;
            for (int n = 1; n < 50; ++n) {
                MakeStore();
                const Bytes before = ReadFileBytes(kUserCometPath);
                bool didFire = false;
                {
                    ScopedFault armed(FileOp::kWrite, n, fault);
                    c.run();
                    didFire = FileFaultFired();
                }
                const Bytes after = ReadFileBytes(kUserCometPath);
                SCOPED_TRACE(std::string(c.what) + ", write " + std::to_string(n));
                EXPECT_FALSE(std::filesystem::exists(kCometCompactPath));
                if (!didFire) {
                    EXPECT_EQ(U16At(after, 0), c.rowsAfter);
                    break;
                }
                ++fired;
                EXPECT_EQ(Slice(after, 0, 4 + 4 * 130), before);
            }
            EXPECT_GT(fired, 0) << c.what;
        }
    }
}

// Meeus, Astronomical Algorithms (2nd ed.), example 33.a: comet Encke with
// a = 2.2091404, e = 0.8502196, i = 11.94524, node 334.75006, peri
// 186.23352, T = 1990 October 28.54502 TD stands on 1990 October 6.0 TD at
// ra 158.558965, dec 19.158496 degrees (J2000.0, light time included). Kept
// in the user store as q and f32 values, it lands within 1e-5 rad.
class CometPlaceTest : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        PlanetFilesClose();
        PlanetFilesOpen(kSolar.c_str());
        ASSERT_TRUE(PlanetSeriesLoaded());
        char name[] = "Greenwich";
        SiteInit(&site_, 0.0, 51.4779 * kDeg, 0, 6.0, 0, name);
        InstantSet(&instant_, &site_, 10, 6, 1990, 0.0, kUniversalTime);
        InstantScales(&instant_, 1e-9);  // UT is TD
        InstantSidereal(&site_, &instant_);
    }
    void TearDown() override {
        PlanetFilesClose();
        ScratchTest::TearDown();
    }
    CometRecord Encke(double g, double k) {
        CometElements e;
        e.perihelionEpoch = JdToCenturies(JulianDay(10, 28, 1990, 0.54502 * 24));
        e.epoch = e.perihelionEpoch;
        e.semiMajorAxis = 2.2091404;
        e.eccentricity = 0.8502196;
        e.argPerihelion = 186.23352;
        e.node = 334.75006;
        e.inclination = 11.94524;
        e.brightnessG = g;
        e.brightnessK = k;
        CometRecord r;
        EXPECT_EQ(packComet(&r, 2, 'P', "", "Encke", e, "Meeus 33.a"), 1);
        return r;
    }
    Site site_;
    Instant instant_;
};

TEST_F(CometPlaceTest, AUserCometStandsWhereTheWorkedExampleSays) {
    MakeDirs("user");
    FilePtr f = openUserComets(nullptr);
    ASSERT_EQ(addOrReplaceUserComet(f.get(), Encke(0, 0)), 1);
    ASSERT_EQ(addOrReplaceUserComet(f.get(), [&] {
                  CometRecord r = Encke(7.5, 4);
                  r.number = 3;
                  return r;
              }()),
              1);
    f.reset();
    ObjectRecord r;
    r.objectClass = kClassUserComet;
    r.pid = 1;
    ASSERT_EQ(refillByIdentity(&r, 0, 0, &site_, &instant_), 1);
    EXPECT_NEAR(r.raJ2000, 158.558965 * kDeg, 1e-5);
    EXPECT_NEAR(r.decJ2000, 19.158496 * kDeg, 1e-5);
    EXPECT_EQ(r.classMask, 4u);
    EXPECT_EQ(r.sizeDefault, 0.0f);
    EXPECT_NE(r.raApparent, r.raJ2000);
    // Both brightness values 0: the comet shines with g = 7.5, k = 4.
    ObjectRecord same;
    same.objectClass = kClassUserComet;
    same.pid = 2;
    ASSERT_EQ(refillByIdentity(&same, 0, 0, &site_, &instant_), 1);
    EXPECT_EQ(r.magnitude, same.magnitude);
    EXPECT_LT(r.magnitude, 90.0f);
    r.pid = 3;
    EXPECT_EQ(refillByIdentity(&r, 0, 0, &site_, &instant_), 0);
    r.pid = 1;
    EXPECT_EQ(refillByIdentity(&r, 0, 0, nullptr, nullptr), 0);
}

// The comet element lines of the set's source against the independent
// transcription of the same lines in comets.csv.
TEST(CometElementsText, EveryLineAgreesWithItsTranscription) {
    std::ifstream text(kSource + "orbits/cometels-excerpt.txt"), csv(kSource + "orbits/comets.csv");
    ASSERT_TRUE(text && csv);
    std::vector<CometRecord> parsed;
    for (std::string line; std::getline(text, line);) {
        CometRecord r;
        const int answer = parseCometElementsLine(line.c_str(), &r);
        if (answer < 0) continue;
        ASSERT_EQ(answer, 1) << line;
        parsed.push_back(r);
    }
    size_t row = 0;
    for (std::string line; std::getline(csv, line);) {
        if (line.empty() || line[0] == '#' || line.rfind("number,", 0) == 0) continue;
        std::vector<std::string> f;
        std::stringstream fields(line);
        for (std::string field; std::getline(fields, field, ',');) f.push_back(field);
        ASSERT_EQ(f.size(), 13u) << line;
        ASSERT_LT(row, parsed.size());
        const CometRecord& r = parsed[row++];
        SCOPED_TRACE(line);
        EXPECT_EQ(r.number, f[0].empty() ? 0 : std::stoi(f[0]));
        EXPECT_EQ(r.letter, f[1][0]);
        EXPECT_EQ(std::string(r.iau), f[0].empty() ? f[2].substr(2) : "");
        EXPECT_EQ(std::string(r.name), f[3]);
        EXPECT_NEAR(CenturiesToJd(r.perihelionEpoch), std::stod(f[4]), 1e-6);
        EXPECT_NEAR(r.perihelionDistance, std::stod(f[5]), 1e-6);
        EXPECT_NEAR(r.eccentricity, std::stod(f[6]), 1e-6);
        EXPECT_NEAR(r.argPerihelion, std::stod(f[7]) * kDeg, 1e-6);
        EXPECT_NEAR(r.node, std::stod(f[8]) * kDeg, 1e-6);
        EXPECT_NEAR(r.inclination, std::stod(f[9]) * kDeg, 1e-6);
        EXPECT_NEAR(CenturiesToJd(r.epoch), std::stod(f[10]), 1e-6);
        EXPECT_EQ(r.brightnessG, std::stof(f[11]));
        EXPECT_EQ(r.brightnessK, std::stof(f[12]));
        EXPECT_EQ(r.coefficient, kDefaultCometCoefficient);
    }
    EXPECT_EQ(row, 22u);
    EXPECT_EQ(row, parsed.size());
    CometRecord r;
    EXPECT_EQ(parseCometElementsLine("", &r), -1);
    EXPECT_EQ(parseCometElementsLine("0002P  too short", &r), 0);
}

// The reference comets that make-refdata wrote into the set's solar folder.
class ReferenceCometTest : public CometPlaceTest {
protected:
    void SetUp() override {
        CometPlaceTest::SetUp();
        setMinorPlanetRoots(kSolar.c_str(), (kSolar + "elements").c_str());
        const std::string set = FERRY2_REFDATA_DIR;
        setCatalogueRoots((set + "small").c_str(), (set + "stars").c_str(), (set + "gsc").c_str());
    }
    void TearDown() override {
        setMinorPlanetRoots("", "");
        CometPlaceTest::TearDown();
    }
};

TEST_F(ReferenceCometTest, FindersAndTheRecordZero) {
    EXPECT_EQ(findCometByNumber(1), 0);  // numbered comets first, by number
    EXPECT_EQ(findCometByNumber(2), 1);  // 2I/Borisov, before 2P/Encke by its letter
    // The two comets numbered 2 are told apart by their letters.
    CometRecord chosen;
    ASSERT_EQ(orbitOfComet(&site_, &instant_, kClassComet, 1, nullptr, &chosen), 1);
    EXPECT_EQ(chosen.letter, 'I');
    ASSERT_EQ(orbitOfComet(&site_, &instant_, kClassComet, 2, nullptr, &chosen), 1);
    EXPECT_EQ(chosen.letter, 'P');
    EXPECT_EQ(findCometByNumber(4), -1);
    const long haleBopp = findCometByIau("1995 O1");
    ASSERT_GE(haleBopp, 0);
    EXPECT_EQ(findCometByName("hale"), haleBopp);
    EXPECT_EQ(findCometByName("Nosuch"), -1);
    FilePtr file = openComets();
    std::string iau, name;
    ASSERT_EQ(readComet(file.get(), haleBopp, &iau, &name), 1);
    EXPECT_EQ(iau, "C/1995 O1");
    EXPECT_EQ(name, "C/1995 O1 (Hale-Bopp)");
    FilePtr names = openCometNames();
    std::string text, full;
    long pid = -1, rows = 0;
    while (readCometNameRow(names.get(), rows, &text, &full, &pid)) ++rows;
    EXPECT_EQ(rows, 22);
    // PID 0 is a valid comet: Halley, far out in 2026.
    ObjectRecord r;
    r.objectClass = kClassComet;
    r.pid = 0;
    ASSERT_EQ(refillByIdentity(&r, 0, 0, &site_, &instant_), 1);
    EXPECT_EQ(r.pid, 0u);
    EXPECT_EQ(r.classMask, 4u);
    r.pid = 22;
    EXPECT_EQ(refillByIdentity(&r, 0, 0, &site_, &instant_), 0);
}

}  // namespace
