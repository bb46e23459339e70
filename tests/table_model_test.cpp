// The Table's rules without a window: tick indexes, header widths, ticks.
#include "support.h"
#include "ui/table_model.h"

namespace {

TEST(TableModel, TickIndexFollowsSortOrderAndItemData) {
    TableModel t;
    TableModelInit(t, 0);
    const TableItemData data = [](int i) { return static_cast<intptr_t>(100 + i); };
    EXPECT_EQ(TableTickIndex(t, 5, data), 5);
    TableModelInit(t, kTableUseItemData);
    EXPECT_EQ(TableTickIndex(t, 5, data), 105);
    int32_t order[3] = {2, 0, 1};
    TableModelInit(t, 0);
    ASSERT_TRUE(TableSetSort(t, order, [](int32_t*, int, int) {}));
    EXPECT_EQ(TableTickIndex(t, 0, data), 0);  // sort column 0: natural order
    t.sortColumn = 1;
    EXPECT_EQ(TableTickIndex(t, 0, data), 102);  // sorted rows always go through item data
    EXPECT_FALSE(TableSetSort(t, nullptr, [](int32_t*, int, int) {}));
    EXPECT_FALSE(TableSetSort(t, order, nullptr));
}

TEST(TableModel, FirstTicksShareTheHeaderWidthAndLaterOnesKeepIt) {
    TableModel t;
    TableModelInit(t, 0);
    auto items = TableRebuildHeader(t, "", 0, "Name\tKind");
    ASSERT_EQ(items.size(), 2u);
    EXPECT_EQ(TableSetTicks(t, 3, 1, 315), (315 - 15) / 2);
    items = TableRebuildHeader(t, "", 150, "Name\tKind");
    ASSERT_EQ(items.size(), 3u);
    EXPECT_EQ(items[0].text, " ");
    EXPECT_EQ(items[0].width, 15);
    EXPECT_EQ(items[1].width, 150);
    EXPECT_EQ(t.columnCount, 3);
    EXPECT_EQ(TableSetTicks(t, 4, 0, 315), 0);
    EXPECT_EQ(TableCommonWidth(t, 315), 150);
}

TEST(TableModel, HeaderTakesTheGivenTextOrTheTitleWithoutEmptyParts) {
    TableModel t;
    TableModelInit(t, 0);
    EXPECT_EQ(TableRebuildHeader(t, "A\t\tB", 0, "ignored").size(), 2u);
    EXPECT_EQ(TableRebuildHeader(t, "", 0, std::string(600, 'x')).front().text.size(), 511u);
    EXPECT_EQ(TableCommonWidth(t, 300), 300);
    TableRebuildHeader(t, "", 0, "");
    EXPECT_EQ(t.columnCount, 0);
    EXPECT_EQ(TableCommonWidth(t, 300), 32);
    EXPECT_EQ(TableSetTicks(t, 0, 1, 300), 32);
    EXPECT_NE(TableTicks(t), nullptr);
    EXPECT_EQ(TableTickCountOf(t), 0);
}

TEST(TableModel, FlipsStayInsideTheArray) {
    TableModel t;
    TableModelInit(t, kTableUseItemData);
    int index = -1;
    uint8_t value = 9;
    EXPECT_FALSE(TableFlipTick(t, 0, nullptr, &index, &value));
    TableSetTicks(t, 2, 0, 100);
    const TableItemData data = [](int i) { return static_cast<intptr_t>(i * 5); };
    EXPECT_TRUE(TableFlipTick(t, 0, data, &index, &value));
    EXPECT_EQ(index, 0);
    EXPECT_EQ(value, 1);
    EXPECT_FALSE(TableFlipTick(t, 1, data, &index, &value));  // item data 5 lies past the array
    EXPECT_EQ(t.ticks[1], 0);
}

TEST(TableModel, RowHeightIsRoundedHalfAwayFromZero) {
    EXPECT_EQ(TableRowHeight(13), 12);  // 11.83
    EXPECT_EQ(TableRowHeight(11), 10);  // 10.01
    EXPECT_EQ(TableRowHeight(50), 46);  // 45.5
    EXPECT_EQ(TableRowAt(3, 25, 12), 5);
}

TEST(TableModel, RowTextsKeepEmptyColumns) {
    EXPECT_EQ(TableSplitRow("\tTelescope"), (std::vector<std::string>{"", "Telescope"}));
    EXPECT_EQ(TableSplitRow("a"), (std::vector<std::string>{"a"}));
    EXPECT_EQ(TableSplitRow("a\tb\t"), (std::vector<std::string>{"a", "b", ""}));
}

}  // namespace
