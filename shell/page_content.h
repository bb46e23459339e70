// What an import page shows: the column titles, one text per row with its
// item data, and the tick array the page's table owns. The window program
// copies it into its table; the command line prints it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "shell/job_host.h"

struct PageRow {
    std::string text;    // columns separated by tabs
    intptr_t itemData;   // the row's tick index
};

struct PageContent {
    std::string columns;  // tab-separated titles
    std::vector<PageRow> rows;
    bool hasTicks = false;  // a page with no rows has no tick array
    std::vector<uint8_t> ticks;

    TickArray Ticks() {
        return hasTicks ? TickArray{ticks.data(), ticks.size()} : TickArray{};
    }
};

// Gives the page a tick array of `count` bytes, all `fill`.
void PageSetTicks(PageContent& page, size_t count, uint8_t fill);

// The Locations page: one row per readable record of the legacy loc.bin,
// all ticked.
void FillLocationsPage(const std::string& legacyRoot, PageContent& page);

// Leaves ticked only the given rows (numbered from 0 in page order): each
// row's tick index is its item data. False when a row is not on the page.
bool PageTickOnlyRows(PageContent& page, const std::vector<size_t>& rows);
