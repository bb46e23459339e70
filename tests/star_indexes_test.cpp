// The number indexes and name files of the star catalogue, read from files
// whose bytes are placed by hand at the places the catalogue numbers give.
#include <cstdio>
#include <cstring>
#include <string>

#include "catalog/catalogue_roots.h"
#include "catalog/star_indexes.h"
#include "catalog/star_texts.h"
#include "catalog/tycho_index.h"
#include "support.h"

namespace {

class IndexFileTest : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        setCatalogueRoots(".", ".", ".");
    }
    // Writes three-byte numbers at byte `at` of a file of `size` bytes.
    static void Place(const char* file, long size, long at, std::initializer_list<uint32_t> numbers) {
        Bytes b(static_cast<size_t>(size), 0);
        for (const uint32_t n : numbers) {
            b[at] = static_cast<uint8_t>(n);
            b[at + 1] = static_cast<uint8_t>(n >> 8);
            b[at + 2] = static_cast<uint8_t>(n >> 16);
            at += 3;
        }
        WriteFileBytes(file, b);
    }
};

TEST_F(IndexFileTest, OneStarIndexesReadAtTheNumbersPlace) {
    const struct {
        const char* file;
        long (*lookup)(FILE*, long);
        long key;
        long at;  // worked out by hand
    } rows[] = {
        {"hrbs.bin", lookupHrbs, 7001, 21000},
        {"sao.bin", lookupSao, 67174, 201519},
        {"sao.bin", lookupSao, 258997, 776988},
        {"hc.bin", lookupHc, 91262, 273783},
        {"gc.bin", lookupGc, 1, 0},
        {"ppm.bin", lookupPpm, 378910, 1136727},
        {"ppm.bin", lookupPpm, 700001, 1136730},  // the first southern row follows
        {"ppm.bin", lookupPpm, 700000, 2099997},  // its own row, as always
    };
    for (const auto& row : rows) {
        Place(row.file, row.at + 3, row.at, {4242});
        FilePtr f = OpenFile(row.file, "rb");
        EXPECT_EQ(row.lookup(f.get(), row.key), 4242) << row.file << " " << row.key;
    }
}

TEST_F(IndexFileTest, NumbersOutsideAnIndexFindNothing) {
    Bytes all(3 * 700010, 0x11);
    WriteFileBytes("ppm.bin", all);
    WriteFileBytes("sao.bin", Bytes(3 * 260000, 0x11));
    FilePtr ppm = OpenFile("ppm.bin", "rb");
    FilePtr sao = OpenFile("sao.bin", "rb");
    EXPECT_EQ(lookupPpm(ppm.get(), 378911), 0);
    EXPECT_EQ(lookupPpm(ppm.get(), 699999), 0);
    EXPECT_EQ(lookupPpm(ppm.get(), 0), 0);
    EXPECT_EQ(lookupSao(sao.get(), 258998), 0);
    EXPECT_EQ(lookupSao(sao.get(), 258997), 0x111111);
}

TEST_F(IndexFileTest, EmptySlotsAndShortFilesFindNothing) {
    Place("hrbs.bin", 6, 0, {0xFFFFFF, 0});
    FilePtr f = OpenFile("hrbs.bin", "rb");
    EXPECT_EQ(lookupHrbs(f.get(), 1), 0);
    EXPECT_EQ(lookupHrbs(f.get(), 2), 0);
    EXPECT_EQ(lookupHrbs(f.get(), 3), 0);  // beyond the end
    EXPECT_EQ(lookupHrbs(nullptr, 1), 0);
}

TEST_F(IndexFileTest, TwoStarIndexesCountWhatTheyFound) {
    // HD 48915 at (48915 - 1) x 6; Flamsteed 9 CMa (row 13) at (13 x 139 + 8) x 6.
    Place("hd.bin", 293490, 293484, {2491, 2492});
    Place("flamstd.bin", 10900, 10890, {2491, 0});
    FilePtr hd = OpenFile("hd.bin", "rb");
    FilePtr fl = OpenFile("flamstd.bin", "rb");
    long out[2] = {};
    EXPECT_EQ(lookupHd(hd.get(), 48915, out), 2);
    EXPECT_EQ(out[0], 2491);
    EXPECT_EQ(out[1], 2492);
    EXPECT_EQ(lookupFlamsteed(fl.get(), 13, 9, out), 1);
    EXPECT_EQ(out[0], 2491);
    EXPECT_EQ(lookupFlamsteed(fl.get(), 13, 8, out), 0);  // no retry for Flamsteed
}

TEST_F(IndexFileTest, BayerWithoutASuperscriptIsTriedWithSuperscriptOne) {
    // Alpha (letter 1) Cen (row 18): ((18 x 24 + 1) x 9 + s) x 6.
    const long base = (18L * 24 + 1) * 9 * 6;
    Place("bayer.bin", base + 18, base + 6, {5459, 0});
    FilePtr f = OpenFile("bayer.bin", "rb");
    long out[2] = {};
    EXPECT_EQ(lookupBayer(f.get(), 18, 1, 0, out), 1);
    EXPECT_EQ(out[0], 5459);
    EXPECT_EQ(lookupBayer(f.get(), 18, 1, 1, out), 1);
    EXPECT_EQ(lookupBayer(f.get(), 18, 1, 2, out), 0);  // a named superscript has no retry
}

TEST_F(IndexFileTest, BdSlotsMatchBySuffix) {
    // BD +38 3238 (zone code 51): (51 x 6877 + 3237) x 12.
    const long at = (51L * 6877 + 3237) * 12;
    const uint32_t blank = 7001, a = (1u << 21) | 7002, b = (2u << 21) | 7003;
    const struct {
        std::initializer_list<uint32_t> slots;
        char wanted;
        int answer;
        long first;
    } rows[] = {
        {{blank, b, 0xFFFFFF}, 'A', 1, 7001},   // blank stands for A
        {{blank, b, 0xFFFFFF}, ' ', 1, 7001},
        {{a, b, 0xFFFFFF}, 'a', 1, 7002},       // wanted letter upper-cased
        {{a, b, 0xFFFFFF}, 'B', 1, 7003},
        {{a, 0xFFFFFF}, 'C', -1, 0},            // one slot filled
        {{a, b, 0xFFFFFF}, 'C', 0, 0},          // two filled, no match
        {{blank, a, b, blank}, ' ', 2, 7001},
        {{a, a, b, (2u << 21) | 7004}, 'B', 2, 7003},  // the fourth slot is read too
    };
    for (const auto& row : rows) {
        Place("bd.bin", at + 12, at, row.slots);
        FilePtr f = OpenFile("bd.bin", "rb");
        long out[4] = {};
        EXPECT_EQ(lookupBd(f.get(), '+', 38, 3238, row.wanted, out), row.answer) << row.wanted;
        EXPECT_EQ(out[0], row.first) << row.wanted;
    }
}

TEST_F(IndexFileTest, CdAndCpZonesOutsideTheirRangeAreNotRead) {
    // CD -37 (code 127) 1: (127 - 112) x 19834 x 9; CP -18 is code 108.
    const long cdAt = 15L * 19834 * 9;
    Place("cd.bin", cdAt + 9, cdAt, {10, 11, 12});
    Place("cp.bin", 12, 0, {20, 0, 21, 22});
    FilePtr cd = OpenFile("cd.bin", "rb");
    FilePtr cp = OpenFile("cp.bin", "rb");
    long out[4] = {};
    EXPECT_EQ(lookupCd(cd.get(), '-', 37, 1, out), 3);
    EXPECT_EQ(lookupCd(cd.get(), '-', 21, 1, out), 0);  // code 111
    EXPECT_EQ(cdOffset(179, 1), 67L * 19834 * 9);
    EXPECT_EQ(cdOffset(180, 1), -1);
    EXPECT_EQ(cpOffset(180, 1), 72L * 29075 * 12);
    EXPECT_EQ(cpOffset(181, 1), -1);
    EXPECT_EQ(lookupCp(cp.get(), '-', 18, 1, out), 3);
    EXPECT_EQ(out[1], 21);
    EXPECT_EQ(lookupCp(cp.get(), '-', 17, 1, out), 0);
    EXPECT_EQ(dmZoneCode('+', 89), 0);
    EXPECT_EQ(dmZoneCode(' ', 5), 180);
}

TEST_F(IndexFileTest, CommonNamesAlphabeticalAndByRow) {
    Bytes alp(36 * 3, 0);
    const char* names[] = {"Sirius", "Vega", "Vindemiatrix"};
    const uint32_t stars[] = {2491, 7001, 4932};
    for (int i = 0; i < 3; ++i) {
        alp[36 * i] = static_cast<uint8_t>(stars[i]);
        alp[36 * i + 1] = static_cast<uint8_t>(stars[i] >> 8);
        std::memcpy(&alp[36 * i + 4], names[i], std::strlen(names[i]));
    }
    WriteFileBytes("csn_alp.bin", alp);
    FilePtr f = openCsnAlpha();
    ASSERT_TRUE(f);
    const struct {
        const char* text;
        int found;
        long row;
    } rows[] = {{"Vega", 1, 2}, {"vega", 1, 2}, {"Vega B", 1, 2}, {"Vi", 1, 3},
                {"Vegas", 0, 0}, {"Arcturus", 0, 0}, {"", 0, 0}};
    for (const auto& row : rows) {
        long r = 0;
        uint32_t star = 0;
        EXPECT_EQ(findCsnAlpha(f.get(), row.text, &r, &star), row.found) << row.text;
        EXPECT_EQ(r, row.row) << row.text;
    }
}

TEST_F(IndexFileTest, IndexedTextFilesPointIntoThemselves) {
    // Two index rows, then "RR Lyr" and "V Cen".
    const Bytes b = {12, 0, 0, 0, 6, 0, 18, 0, 0, 0, 5, 0, 'R', 'R', ' ', 'L', 'y', 'r',
                     'V', ' ', 'C', 'e', 'n'};
    WriteFileBytes("vnames.bin", b);
    FilePtr f = openVariableNames();
    std::string text;
    ASSERT_EQ(readIndexedText(f.get(), 2, &text), 1);
    EXPECT_EQ(text, "V Cen");
    ASSERT_EQ(readIndexedText(f.get(), 1, &text), 1);
    EXPECT_EQ(text, "RR Lyr");
    EXPECT_EQ(readIndexedText(f.get(), 4, &text), 0);
}

TEST_F(IndexFileTest, OrbitNotesStopBeforeRow260) {
    Bytes b(260 * 6 + 2, 0);
    for (const long row : {259L, 260L}) {
        b[(row - 1) * 6] = static_cast<uint8_t>((260 * 6) & 0xFF);
        b[(row - 1) * 6 + 1] = static_cast<uint8_t>((260 * 6) >> 8);
        b[(row - 1) * 6 + 4] = 2;
    }
    b[260 * 6] = 'o';
    b[260 * 6 + 1] = 'k';
    WriteFileBytes("lp_notes.bin", b);
    FilePtr f = openOrbitNotes();
    std::string text;
    ASSERT_EQ(readOrbitNote(f.get(), 259, &text), 1);
    EXPECT_EQ(text, "ok");
    EXPECT_EQ(readOrbitNote(f.get(), 260, &text), 0);
}

TEST_F(IndexFileTest, DmbHoldsThreeZoneSizes) {
    WriteFileBytes("dmb.bin", {0, 0, 0, 0, 0, 0, 0x5D, 0x1A, 0x7A, 0x4D, 0x93, 0x71});
    FilePtr f = openDmb();
    uint16_t out[3] = {};
    ASSERT_EQ(readDmb(f.get(), 1, out), 1);
    EXPECT_EQ(out[0], 6749);
    EXPECT_EQ(out[1], 19834);
    EXPECT_EQ(out[2], 29075);
    EXPECT_EQ(readDmb(f.get(), 2, out), 0);
}

// A region's run of Tycho entries: number - 1 in 14 bits, component - 1 in
// the top 2, after the three-byte star number.
class TychoTest : public IndexFileTest {
protected:
    static Bytes Run(int region, int count) {
        Bytes b(9537 * 8, 0);
        const long at = static_cast<long>(b.size());
        b[(region - 1) * 8] = static_cast<uint8_t>(at);
        b[(region - 1) * 8 + 1] = static_cast<uint8_t>(at >> 8);
        b[(region - 1) * 8 + 2] = static_cast<uint8_t>(at >> 16);
        b[(region - 1) * 8 + 4] = static_cast<uint8_t>(count);
        for (int i = 0; i < count; ++i) {
            // Entries numbered 2, 4, 6, ...; entry 3 also has component 2.
            const int number = i < 3 ? 2 * (i + 1) : 2 * i;
            const int component = i == 3 ? 2 : 1;
            const uint16_t word = static_cast<uint16_t>((number - 1) | ((component - 1) << 14));
            const uint32_t star = 100 + i;
            for (uint8_t v : {static_cast<uint8_t>(star), static_cast<uint8_t>(star >> 8),
                              static_cast<uint8_t>(star >> 16), static_cast<uint8_t>(word),
                              static_cast<uint8_t>(word >> 8)})
                b.push_back(v);
        }
        return b;
    }
};

TEST_F(TychoTest, TheStepSearchFindsFirstLastAndComponentsAndMissesTheRest) {
    for (const int count : {1, 2, 7, 40}) {
        WriteFileBytes("tycho.bin", Run(4663, count));
        FilePtr f = openTycho();
        ASSERT_TRUE(f);
        EXPECT_EQ(lookupTycho(f.get(), 4663, 2, 1), 100) << count;
        const int lastNumber = count <= 3 ? 2 * count : 2 * (count - 1);
        const int lastComponent = count == 4 ? 2 : 1;
        EXPECT_EQ(lookupTycho(f.get(), 4663, lastNumber, lastComponent), 100 + count - 1) << count;
        EXPECT_EQ(lookupTycho(f.get(), 4663, 3, 1), 0) << count;
        EXPECT_EQ(lookupTycho(f.get(), 4663, 1000, 1), 0) << count;
        if (count >= 4) {
            EXPECT_EQ(lookupTycho(f.get(), 4663, 6, 1), 102);
            EXPECT_EQ(lookupTycho(f.get(), 4663, 6, 2), 103);
        }
        EXPECT_EQ(lookupTycho(f.get(), 4662, 2, 1), 0);  // an empty region
    }
    FilePtr f = openTycho();
    EXPECT_EQ(lookupTycho(f.get(), 0, 2, 1), 0);
    EXPECT_EQ(lookupTycho(f.get(), 9538, 2, 1), 0);
}

}  // namespace
