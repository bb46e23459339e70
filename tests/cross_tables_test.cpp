// The Messier, NGC, IC and common-name cross tables, read from rows whose
// bytes are written by hand.
#include <iterator>
#include <string>
#include <vector>

#include "catalog/cross_tables.h"
#include "catalogue_bytes.h"

namespace {

TEST(CrossClass, MapsToObjectClassesAndBackForTheBrowsedFive) {
    const int objectClass[] = {10, 11, 9, 8, 6, 7, 16, 17};
    for (int cc = 0; cc < 8; ++cc) EXPECT_EQ(crossClassToObjectClass(cc), objectClass[cc]) << cc;
    EXPECT_EQ(crossClassToObjectClass(-1), -1);
    EXPECT_EQ(crossClassToObjectClass(8), -1);
    const struct {
        int objectClass, crossClass;
    } back[] = {{10, 0}, {11, 1}, {9, 2}, {8, 3}, {6, 4}, {7, -1}, {16, -1}, {17, -1}, {5, -1}, {0, -1}};
    for (const auto& row : back) EXPECT_EQ(objectClassToCrossClass(row.objectClass), row.crossClass) << row.objectClass;
}

using CrossTableTest = CatalogueFileTest;

TEST_F(CrossTableTest, MessierRowsGiveClassAndRecord) {
    Bytes m;
    Put(m, 0, {0xFF, 0x01, 0x00});   // M 1: class byte 255, none
    Put(m, 3, {0x00, 0x00, 0x00});   // M 2: class 0, record 0, nothing
    Put(m, 6, {0x01, 0x05, 0x00});   // M 3: globular 5
    Put(m, 90, {0x04, 0x39, 0x30});  // M 31: galaxy 12345
    WriteFileBytes("m.bin", m);
    FilePtr f = openMessierCross();
    ASSERT_TRUE(f);
    CrossHit hit;
    EXPECT_EQ(lookupMessierCross(f.get(), 1, &hit), 0);
    EXPECT_EQ(lookupMessierCross(f.get(), 2, &hit), 0);
    ASSERT_EQ(lookupMessierCross(f.get(), 3, &hit), 1);
    EXPECT_EQ(hit.crossClass, 1);
    EXPECT_EQ(hit.record, 5);
    ASSERT_EQ(lookupMessierCross(f.get(), 31, &hit), 1);
    EXPECT_EQ(hit.crossClass, 4);
    EXPECT_EQ(hit.record, 12345);
    EXPECT_EQ(lookupMessierCross(f.get(), 0, &hit), 0);
    EXPECT_EQ(lookupMessierCross(f.get(), 32, &hit), 0);  // beyond the file
}

// NGC 1: no suffix in use, two galaxies (100 and 0x010203) under the bare
// number. NGC 2: suffixes up to B; diffuse 7, planetary 8, dark 9. NGC 3:
// open cluster 12 alone.
Bytes NgcImage() {
    Bytes ngc;
    Put(ngc, 0, {0x00, 0x24, 0x00, 0x00, 0x00, 0x64, 0, 0, 0, 0x03, 0x02, 0x01, 0x00});
    Put(ngc, 33, {0x02, 0xDA, 0x01, 0x00, 0x00, 0x07, 0, 0, 0, 0x08, 0, 0, 0, 0x09, 0, 0, 0});
    Put(ngc, 66, {0x00, 0x00, 0x00, 0x00, 0x00, 0x0C, 0, 0, 0});
    PutLe(ngc, 98, 0, 1);  // the rest of row 3
    return ngc;
}

TEST_F(CrossTableTest, NgcSuffixRulesAndTheTwoObjectAnswer) {
    WriteFileBytes("ngc.bin", NgcImage());
    FilePtr f = openNgcCross();
    ASSERT_TRUE(f);
    const struct {
        int ngc, suffix, count;
        CrossHit first, second;
    } rows[] = {
        {1, 0, 2, {4, 100}, {4, 0x010203}},  // two objects without suffix
        {1, 1, 0, {}, {}},                   // a suffix on a row without any
        {2, 0, 1, {2, 7}, {}},               // the second record is suffix A here
        {2, 1, 1, {3, 8}, {}},
        {2, 2, 1, {7, 9}, {}},
        {2, 3, 0, {}, {}},                   // above the highest suffix
        {3, 0, 1, {0, 12}, {}},
        {4, 0, 0, {}, {}},                   // beyond the file
        {0, 0, 0, {}, {}},
    };
    for (const auto& row : rows) {
        CrossHit out[2];
        ASSERT_EQ(lookupNgcCross(f.get(), row.ngc, row.suffix, out), row.count) << row.ngc << " " << row.suffix;
        if (row.count >= 1) {
            EXPECT_EQ(out[0].crossClass, row.first.crossClass);
            EXPECT_EQ(out[0].record, row.first.record);
        }
        if (row.count == 2) {
            EXPECT_EQ(out[1].crossClass, row.second.crossClass);
            EXPECT_EQ(out[1].record, row.second.record);
        }
    }
}

TEST_F(CrossTableTest, IcSlotsAndTheTwoRowsKeptByRule) {
    Bytes ic;
    // IC 1: galaxy 10, diffuse 11, globular 12.
    Put(ic, 0, {0x54, 0x00, 0x0A, 0, 0, 0, 0x0B, 0, 0, 0, 0x0C, 0, 0, 0});
    WriteFileBytes("ic.bin", ic);
    FilePtr f = openIcCross();
    ASSERT_TRUE(f);
    const struct {
        FILE* file;
        int ic, suffix, found, crossClass;
        long record;
    } rows[] = {
        {f.get(), 1, 0, 1, 4, 10},
        {f.get(), 1, 1, 1, 2, 11},
        {f.get(), 1, 2, 1, 1, 12},
        {f.get(), 1, 3, 0, 0, 0},
        {nullptr, 683, 5, 1, 4, 34807},   // IC 683E
        {nullptr, 5269, 3, 1, 4, 70253},  // IC 5269C
        {nullptr, 683, 0, 0, 0, 0},       // the rest of IC 683 is in the file
    };
    for (const auto& row : rows) {
        CrossHit hit;
        ASSERT_EQ(lookupIcCross(row.file, row.ic, row.suffix, &hit), row.found) << row.ic << " " << row.suffix;
        if (!row.found) continue;
        EXPECT_EQ(hit.crossClass, row.crossClass);
        EXPECT_EQ(hit.record, row.record);
    }
}

TEST_F(CrossTableTest, CommonNamesAndTheirObjects) {
    Bytes names;
    PutText(names, 0, "Andromeda Galaxy", 32);
    PutText(names, 32, "Crab Nebula", 32);
    PutText(names, 126 * 32, "Last Name", 32);
    WriteFileBytes("cnames.bin", names);
    Bytes cross;
    Put(cross, 0, {0x04, 0x39, 0x30, 0x00, 0x00});  // galaxy 12345
    Put(cross, 5, {0x02, 0x01, 0x00, 0x00, 0x00});  // diffuse nebula 1
    Put(cross, 10, {0x00, 0x00, 0x00, 0x00, 0x00});  // nothing
    WriteFileBytes("cn_cross.bin", cross);
    FilePtr n = openCommonNames();
    FilePtr c = openCommonNameCross();
    ASSERT_TRUE(n && c);
    char name[kCommonNameSize];
    ASSERT_EQ(readCommonName(n.get(), 1, name), 1);
    EXPECT_STREQ(name, "Crab Nebula");
    EXPECT_EQ(readCommonName(n.get(), 127, name), 0);
    EXPECT_EQ(findCommonName(n.get(), "crab"), 1);
    EXPECT_EQ(findCommonName(n.get(), "Andromeda Galaxy"), 0);
    EXPECT_EQ(findCommonName(n.get(), "Last"), 126);
    EXPECT_EQ(findCommonName(n.get(), "Orion"), -1);
    EXPECT_EQ(findCommonName(n.get(), ""), -1);
    CrossHit hit;
    ASSERT_EQ(lookupCommonNameCross(c.get(), 1, &hit), 1);
    EXPECT_EQ(hit.crossClass, 2);
    EXPECT_EQ(hit.record, 1);
    EXPECT_EQ(lookupCommonNameCross(c.get(), 2, &hit), 0);
}

TEST_F(CrossTableTest, BrowsersWalkSlotsOfOneClass) {
    WriteFileBytes("ngc.bin", NgcImage());
    Bytes ic;
    Put(ic, 0, {0x54, 0x00, 0x0A, 0, 0, 0, 0x0B, 0, 0, 0, 0x0C, 0, 0, 0});
    WriteFileBytes("ic.bin", ic);
    const auto walk = [](bool ngc, int objectClass, int filter) {
        CrossBrowser browser;
        std::vector<long> seen;  // number x 100 + suffix, then the record
        const int begun = ngc ? beginNgcBrowse(&browser, objectClass, filter)
                              : beginIcBrowse(&browser, objectClass, filter);
        if (!begun) return std::vector<long>{-1};
        CrossBrowseRow row;
        while (nextCrossBrowse(&browser, &row)) {
            seen.push_back(row.number * 100 + row.suffix);
            seen.push_back(row.hit.record);
        }
        return seen;
    };
    EXPECT_EQ(walk(true, 6, -1), (std::vector<long>{100, 100, 101, 0x010203}));
    EXPECT_EQ(walk(true, 6, 1), (std::vector<long>{101, 0x010203}));
    EXPECT_EQ(walk(true, 9, -1), (std::vector<long>{200, 7}));
    EXPECT_EQ(walk(true, 8, -1), (std::vector<long>{201, 8}));
    EXPECT_EQ(walk(true, 10, -1), (std::vector<long>{300, 12}));
    EXPECT_EQ(walk(true, 17, -1), (std::vector<long>{-1}));  // dark nebulae aren't browsed
    EXPECT_EQ(walk(false, 11, -1), (std::vector<long>{102, 12}));
}

TEST_F(CrossTableTest, MessierBrowserStopsAtOneHundredAndTen) {
    Bytes m;
    Put(m, 0, {0x04, 0x0A, 0x00});          // M 1: galaxy 10
    Put(m, 3, {0x01, 0x0B, 0x00});          // M 2: globular 11
    Put(m, 6, {0xFF, 0x0C, 0x00});          // M 3: none
    Put(m, 9, {0x04, 0x00, 0x00});          // M 4: galaxy record 0 still counts
    Put(m, 327, {0x04, 0x0D, 0x00});        // M 110: galaxy 13
    Put(m, 330, {0x04, 0x0E, 0x00});        // M 111: beyond the list
    WriteFileBytes("m.bin", m);
    const auto walk = [](int objectClass) {
        MessierBrowser browser;
        if (!beginMessierBrowse(&browser, objectClass)) return std::vector<long>{-1};
        std::vector<long> seen;  // Messier number, then the record
        int messier = 0;
        CrossHit hit;
        while (nextMessierBrowse(&browser, &messier, &hit)) {
            seen.push_back(messier);
            seen.push_back(hit.record);
        }
        return seen;
    };
    EXPECT_EQ(walk(6), (std::vector<long>{1, 10, 4, 0, 110, 13}));
    EXPECT_EQ(walk(11), (std::vector<long>{2, 11}));
    EXPECT_EQ(walk(10), (std::vector<long>{}));
    EXPECT_EQ(walk(7), (std::vector<long>{-1}));  // quasars aren't browsed by Messier number
}

TEST_F(CrossTableTest, CommonNameBrowserByClassAndPattern) {
    Bytes names, cross;
    const struct {
        const char* name;
        uint8_t crossClass;
        uint8_t record;
    } rows[] = {
        {"Andromeda Galaxy", 4, 1}, {"Crab Nebula", 2, 2},       {"Whirlpool Galaxy", 4, 3},
        {"Horsehead Nebula", 7, 4}, {"Stephan's Quintet", 6, 5}, {"Antennae", 4, 6},
    };
    for (size_t i = 0; i < std::size(rows); ++i) {
        PutText(names, i * 32, rows[i].name, 32);
        Put(cross, i * 5, {rows[i].crossClass, rows[i].record, 0, 0, 0});
    }
    PutText(names, 126 * 32, "", 32);
    PutLe(cross, 126 * 5, 0, 5);
    WriteFileBytes("cnames.bin", names);
    WriteFileBytes("cn_cross.bin", cross);
    const auto walk = [](int objectClass, const char* pattern) {
        CommonNameBrowser browser;
        std::vector<std::string> seen;
        if (!beginCommonNameBrowse(&browser, objectClass, pattern)) return std::vector<std::string>{"closed"};
        int row = 0;
        char name[kCommonNameSize];
        CrossHit hit;
        while (nextCommonNameBrowse(&browser, &row, name, &hit))
            seen.push_back(std::to_string(row) + " " + name + " " + std::to_string(hit.record));
        return seen;
    };
    using Seen = std::vector<std::string>;
    EXPECT_EQ(walk(6, "*"), (Seen{"0 Andromeda Galaxy 1", "2 Whirlpool Galaxy 3", "5 Antennae 6"}));
    EXPECT_EQ(walk(6, "an"), (Seen{"0 Andromeda Galaxy 1", "5 Antennae 6"}));
    EXPECT_EQ(walk(6, nullptr), walk(6, ""));
    EXPECT_EQ(walk(17, ""), (Seen{"3 Horsehead Nebula 4"}));  // dark nebulae and groups have names too
    EXPECT_EQ(walk(16, ""), (Seen{"4 Stephan's Quintet 5"}));
    EXPECT_EQ(walk(9, "Horse"), (Seen{}));
}

}  // namespace
