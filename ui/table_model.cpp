#include "ui/table_model.h"

#include <cmath>

void TableModelInit(TableModel& table, uint32_t style) {
    table = TableModel{};
    table.useItemData = (style & kTableUseItemData) != 0;
    table.tickClickOff = (style & kTableTickClickOff) != 0;
}

int TableTickIndex(const TableModel& table, int row, const TableItemData& itemData) {
    const bool sorted = table.sortColumn != 0 && table.sortOrder != nullptr;
    const int mapped = sorted ? table.sortOrder[row] : row;
    if (sorted || table.useItemData) return static_cast<int>(itemData ? itemData(mapped) : mapped);
    return mapped;
}

namespace {

// Title parts as the header takes them: split at tabs, empty parts dropped.
std::vector<std::string> TitleParts(const std::string& text) {
    std::vector<std::string> parts;
    for (const std::string& part : TableSplitRow(text))
        if (!part.empty()) parts.push_back(part);
    return parts;
}

}  // namespace

std::vector<TableHeaderItem> TableRebuildHeader(TableModel& table, const std::string& text, int width,
                                                const std::string& windowTitle) {
    if (width != 0) table.columnWidths.fill(static_cast<uint16_t>(width));
    if (table.hasTicks) table.columnWidths[0] = kTickColumnWidth;
    std::vector<TableHeaderItem> items;
    table.columnCount = 0;
    if (table.hasTicks) {
        items.push_back({" ", table.columnWidths[0]});
        ++table.columnCount;
    }
    const std::string source = text.empty() ? windowTitle.substr(0, 511) : text;
    for (const std::string& part : TitleParts(source)) {
        if (table.columnCount >= kTableMaxColumns) break;
        items.push_back({part, table.columnWidths[table.columnCount]});
        ++table.columnCount;
    }
    return items;
}

int TableCommonWidth(const TableModel& table, int headerClientWidth) {
    if (table.hasTicks && table.columnCount > 1)
        return (headerClientWidth - kTickColumnWidth) / (table.columnCount - 1);
    if (!table.hasTicks && table.columnCount > 0) return headerClientWidth / table.columnCount;
    return kTableDefaultWidth;
}

int TableSetTicks(TableModel& table, int n, uint8_t fill, int headerClientWidth) {
    const bool first = !table.hasTicks;
    table.tickCount = n;
    // One spare byte keeps storage behind a zero-row array.
    table.ticks.assign(static_cast<size_t>(n > 0 ? n : 0) + 1, fill);
    table.ticks.back() = 0;
    table.hasTicks = true;
    if (!first) return 0;
    return table.columnCount > 0 ? (headerClientWidth - kTickColumnWidth) / table.columnCount
                                 : kTableDefaultWidth;
}

uint8_t* TableTicks(TableModel& table) { return table.hasTicks ? table.ticks.data() : nullptr; }

int TableTickCountOf(const TableModel& table) { return table.hasTicks ? table.tickCount : 0; }

bool TableTickClickHits(const TableModel& table, int x) {
    return table.hasTicks && !table.tickClickOff && x < table.columnWidths[0];
}

bool TableFlipTick(TableModel& table, int row, const TableItemData& itemData, int* indexOut,
                   uint8_t* valueOut) {
    if (!table.hasTicks) return false;
    const int index = TableTickIndex(table, row, itemData);
    if (index < 0 || index >= table.tickCount) return false;
    uint8_t& tick = table.ticks[static_cast<size_t>(index)];
    tick = tick ? 0 : 1;
    *indexOut = index;
    *valueOut = tick;
    return true;
}

int TableRowAt(int topIndex, int y, int rowHeight) {
    return rowHeight > 0 ? topIndex + y / rowHeight : topIndex;
}

int TableRowHeight(int textHeight) { return static_cast<int>(std::lround(textHeight * 0.91)); }

bool TableSetSort(TableModel& table, int32_t* sortOrder, TableSortCallback callback) {
    if (!sortOrder || !callback) return false;
    table.sortOrder = sortOrder;
    table.sortCallback = callback;
    table.sortable = true;
    table.sortColumn = 0;
    return true;
}

bool TableHeaderClick(TableModel& table, int column, int rowCount) {
    if (!table.sortable) return false;
    table.sortColumn = static_cast<uint8_t>(column);
    table.sortCallback(table.sortOrder, rowCount, table.sortColumn);
    return true;
}

void TableEndTrack(TableModel& table, int column, int width) {
    if (column >= 0 && column < kTableMaxColumns)
        table.columnWidths[static_cast<size_t>(column)] = static_cast<uint16_t>(width);
}

std::vector<std::string> TableSplitRow(const std::string& text) {
    std::vector<std::string> parts;
    size_t start = 0;
    for (;;) {
        const size_t tab = text.find('\t', start);
        parts.push_back(text.substr(start, tab == std::string::npos ? std::string::npos : tab - start));
        if (tab == std::string::npos) break;
        start = tab + 1;
    }
    return parts;
}
