// What an import page shows: the column titles, one text per row with its
// item data, and the tick array the page's table owns. The window program
// copies it into its table; the command line prints it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "legacy/job_host.h"

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

// The pages of the three list tabs, in tab order.
enum PageIndex { kLocationsPage = 0, kInstrumentsPage = 1, kListsPage = 2, kLogsPage = 3 };

// The Locations page: one row per readable record of the legacy loc.bin,
// all ticked.
void FillLocationsPage(const std::string& legacyRoot, PageContent& page);

// The Instruments page: a row per readable record, "name\tTelescope" or
// "name\tBinoculars", with the record index as item data; all ticked. An
// unreadable record gives no row, so item data and row count may disagree.
void FillInstrumentsPage(const std::string& legacyRoot, PageContent& page);

// The Observing Lists page: a row per list in use whose object file opens,
// "name\t%4d" with the object count, its index row as item data, and a line
// in the log for each. The ticks run to the highest index row in use; the
// ones set are those at the running row count, not at the index row, so
// with free rows in the index they fall on other rows. Users' habits rest
// on this, so it stays.
void FillListsPage(const std::string& legacyRoot, FILE* log, PageContent& page);

// Fills the page of tab `index` (0 to 2); the Logs page has its own form.
void FillPage(int index, const std::string& legacyRoot, FILE* log, PageContent& page);

// Leaves ticked only the given rows (numbered from 0 in page order): each
// row's tick index is its item data. False when a row is not on the page.
bool PageTickOnlyRows(PageContent& page, const std::vector<size_t>& rows);
