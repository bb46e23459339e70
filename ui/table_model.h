// The state and rules of the Table control (a list with an optional tick
// column, a header and optional sorting), kept apart from the window so
// that they can be tested anywhere. The window procedure draws and routes
// messages; every decision is made here.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

// Messages of the Table protocol.
inline constexpr unsigned kTmRowDoubleClick = 1533;
inline constexpr unsigned kTmRowRightClick = 1534;
inline constexpr unsigned kTmSetColumnWidths = 1539;
inline constexpr unsigned kTmGetTicks = 1540;
inline constexpr unsigned kTmSetTicks = 1541;
inline constexpr unsigned kTmGetTickCount = 1542;
inline constexpr unsigned kTmGetColumnWidths = 1543;
inline constexpr unsigned kTmGetColumnCount = 1544;
inline constexpr unsigned kTmSetSort = 1545;

// Notification code (HIWORD of WM_COMMAND) of a changed tick.
inline constexpr unsigned kTableTickChanged = 0x629;

inline constexpr int kTableListId = 100;
inline constexpr int kTableHeaderId = 101;
inline constexpr int kTableMaxColumns = 64;
inline constexpr int kTickColumnWidth = 15;
inline constexpr int kTableHeaderHeight = 23;
inline constexpr int kTableListTop = 19;  // overlaps the header by 4 pixels
inline constexpr int kTableDefaultWidth = 32;

// Style bits of a Table window.
inline constexpr uint32_t kTableUseItemData = 0x4;
inline constexpr uint32_t kTableTickClickOff = 0x10000;

// Fills sortOrder (display row to list index) for a click on `column`.
using TableSortCallback = void (*)(int32_t* sortOrder, int rowCount, int column);
// The list box's item data of list index i.
using TableItemData = std::function<intptr_t(int index)>;

struct TableModel {
    int columnCount = 0;
    std::array<uint16_t, kTableMaxColumns> columnWidths{};
    bool hasTicks = false;
    std::vector<uint8_t> ticks;  // tickCount bytes, never without storage once set
    int tickCount = 0;
    bool tickClickOff = false;
    bool useItemData = false;
    bool sortable = false;
    uint8_t sortColumn = 0;
    int32_t* sortOrder = nullptr;  // the caller's
    TableSortCallback sortCallback = nullptr;
    int rowHeight = 0;
    int drawnRowHeight = 0;
};

struct TableHeaderItem {
    std::string text;
    int width;  // 0 means the whole header width
};

// The flags a new Table takes from its window style.
void TableModelInit(TableModel& table, uint32_t style);

// The tick index of a display row: through the sort order when a sort is
// on, and through the item data when sorted or asked for by the style.
int TableTickIndex(const TableModel& table, int row, const TableItemData& itemData);

// The header's items after a rebuild from `text` (or, when it is empty, the
// window title) with all widths set to `width` unless it is 0. The tick
// column, when there is one, comes first at 15 pixels.
std::vector<TableHeaderItem> TableRebuildHeader(TableModel& table, const std::string& text, int width,
                                                const std::string& windowTitle);

// The width shared by the columns after a new title.
int TableCommonWidth(const TableModel& table, int headerClientWidth);

// Replaces the tick array with n bytes of `fill`. Returns the width to
// rebuild the header with: a shared width the first time, 0 after that.
int TableSetTicks(TableModel& table, int n, uint8_t fill, int headerClientWidth);

uint8_t* TableTicks(TableModel& table);  // null when there is no tick array
int TableTickCountOf(const TableModel& table);

// Whether a click at x on a row falls in a live tick column.
bool TableTickClickHits(const TableModel& table, int x);

// Flips the tick of a display row; gives the tick index and its new value.
// False when there is no tick array or the index lies outside it.
bool TableFlipTick(TableModel& table, int row, const TableItemData& itemData, int* indexOut,
                   uint8_t* valueOut);

// The row under y in the list, from its top index and row height.
int TableRowAt(int topIndex, int y, int rowHeight);

// Row height from the font's text height: 0.91 of it, rounded half away
// from zero.
int TableRowHeight(int textHeight);

// Installs a sort; refused (false) when either part is missing.
bool TableSetSort(TableModel& table, int32_t* sortOrder, TableSortCallback callback);

// A header click: when sortable, the column becomes the sort column and the
// caller's sorter fills the order. True when the list must be redrawn.
bool TableHeaderClick(TableModel& table, int column, int rowCount);

// A dragged divider: the column keeps the new width.
void TableEndTrack(TableModel& table, int column, int width);

// Column texts of a row or title; empty parts are kept for rows.
std::vector<std::string> TableSplitRow(const std::string& text);
