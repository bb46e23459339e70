// What the three list pages show for a legacy folder, and the readers behind
// them.
#include <cstring>

#include "legacy/legacy_lists.h"
#include "shell/import_log.h"
#include "shell/page_content.h"
#include "support.h"

namespace {

class PageContentTest : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        MakeDirs("v1");
    }
    // Each row as its text and item data, "text@data".
    static std::vector<std::string> Rows(const PageContent& p) {
        std::vector<std::string> out;
        for (const auto& r : p.rows) out.push_back(r.text + "@" + std::to_string(r.itemData));
        return out;
    }
};

// obs.idx from (name, object count) rows; a null name is a free row.
Bytes ListIndex(const std::vector<std::pair<const char*, uint16_t>>& rows) {
    Bytes out(2, 0);
    PokeI16(out, 0, static_cast<int16_t>(rows.size()));
    for (const auto& [name, count] : rows) {
        Bytes row(35, 0);
        if (name) std::memcpy(row.data(), name, std::strlen(name));
        const uint16_t c = name ? count : 65535;
        row[33] = static_cast<uint8_t>(c);
        row[34] = static_cast<uint8_t>(c >> 8);
        out.insert(out.end(), row.begin(), row.end());
    }
    return out;
}

TEST_F(PageContentTest, LocationsPageShowsEveryReadableRecordTicked) {
    // The count says 1, but the page lists what it can read.
    WriteFileBytes("v1/loc.bin",
                   LocationFileBytes({LocationBytes("One", 1, 0), LocationBytes("", 2, 0)}, 1));
    PageContent page;
    FillLocationsPage("v1", page);
    EXPECT_EQ(page.columns, "Observing Location");
    EXPECT_EQ(Rows(page), (std::vector<std::string>{"One@0", "@1"}));
    EXPECT_EQ(page.ticks, (std::vector<uint8_t>{1, 1}));

    WriteFileBytes("v1/loc.bin", LocationFileBytes({}));
    FillLocationsPage("v1", page);
    EXPECT_TRUE(page.rows.empty());
    EXPECT_FALSE(page.hasTicks);
    EXPECT_EQ(page.Ticks().data, nullptr);
}

TEST_F(PageContentTest, InstrumentsPageNamesTheTypeByTheKindByte) {
    WriteFileBytes("v1/instr.bin",
                   LegacyInstrumentFile({LegacyInstrumentBytes("Dob", 1, 0), LegacyInstrumentBytes("10x50", 1, 1),
                                         LegacyInstrumentBytes("Big Eyes", 1, 3)},
                                        4));  // a fourth record that is not there
    PageContent page;
    FillInstrumentsPage("v1", page);
    EXPECT_EQ(page.columns, "Instrument\tType");
    EXPECT_EQ(Rows(page), (std::vector<std::string>{"Dob\tTelescope@0", "10x50\tBinoculars@1",
                                                    "Big Eyes\tBinoculars@2"}));
    EXPECT_EQ(page.ticks, (std::vector<uint8_t>{1, 1, 1}));
}

TEST_F(PageContentTest, ListsPageTicksFallOnTheRunningRowCountNotTheIndexRow) {
    WriteFileBytes("v1/obs.idx", ListIndex({{"Messier", 3},
                                            {nullptr, 0},
                                            {"Lost", 2},  // no object file
                                            {"Messier", 1},
                                            {"Caldwell", 12}}));
    WriteFileBytes("v1/obs.000", Bytes(44 + 3 * 83, 0));
    WriteFileBytes("v1/obs.003", Bytes(44 + 83, 0));
    WriteFileBytes("v1/obs.004", Bytes(44 + 12 * 83, 0));
    {
        FilePtr log = OpenImportLog();
        PageContent page;
        FillListsPage("v1", log.get(), page);
        EXPECT_EQ(page.columns, "Observing List\tObjects");
        EXPECT_EQ(Rows(page), (std::vector<std::string>{"Messier\t   3@0", "Messier\t   1@3", "Caldwell\t  12@4"}));
        // Up to the highest row in use; set at 0, 1, 2 although the rows are
        // 0, 3 and 4: the second Messier and Caldwell come up unticked.
        EXPECT_EQ(page.ticks, (std::vector<uint8_t>{1, 1, 1, 0, 0}));
    }
    EXPECT_EQ(ReadFileText("ferry2.log"),
              "index=  0 ret=  0 n=  0 Messier\t   3\n"
              "index=  1 ret=  3 n=  1 Messier\t   1\n"
              "index=  2 ret=  4 n=  2 Caldwell\t  12\n");
}

TEST_F(PageContentTest, MissingLegacyFilesGiveEmptyPages) {
    for (int i = 0; i < 3; ++i) {
        PageContent page;
        FillPage(i, "v1", nullptr, page);
        EXPECT_TRUE(page.rows.empty()) << i;
        EXPECT_FALSE(page.hasTicks) << i;
        EXPECT_FALSE(page.columns.empty()) << i;
    }
}

TEST_F(PageContentTest, ListReadersStopAtTheLimitAndOnShortRows) {
    Bytes index = ListIndex({{nullptr, 0}, {"A", 1}, {"B", 2}});
    index.resize(index.size() - 10);  // the last row cut short
    WriteFileBytes("v1/obs.idx", index);
    int count = 0;
    FilePtr f = OpenLegacyListIndex("v1", &count);
    ASSERT_TRUE(f);
    EXPECT_EQ(count, 3);
    char name[33];
    EXPECT_EQ(NextLegacyList(f.get(), count, name), 2);  // the free row is passed over
    EXPECT_STREQ(name, "A");
    EXPECT_EQ(NextLegacyList(f.get(), count, name), -1);
    ASSERT_EQ(RewindLegacyListIndex(f.get()), 1);
    EXPECT_EQ(NextLegacyList(f.get(), 1, name), 0);  // row 1 lies at the limit

    EXPECT_FALSE(OpenLegacyList("v1", 3, &count));
    EXPECT_FALSE(OpenLegacyList("v1", 1, &count));  // no obs.001
    WriteFileBytes("v1/obs.001", Bytes(44 + 83, 7));
    FilePtr list = OpenLegacyList("v1", 1, &count);
    ASSERT_TRUE(list);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(std::ftell(list.get()), 44);
}

}  // namespace
