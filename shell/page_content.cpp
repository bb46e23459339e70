#include "shell/page_content.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "legacy/legacy_instruments.h"
#include "legacy/legacy_lists.h"
#include "legacy/legacy_locations.h"

void PageSetTicks(PageContent& page, size_t count, uint8_t fill) {
    page.hasTicks = true;
    page.ticks.assign(count, fill);
}

void FillLocationsPage(const std::string& legacyRoot, PageContent& page) {
    page = PageContent{};
    page.columns = "Observing Location";
    int count = 0;
    FilePtr legacy = OpenLegacyLocations(legacyRoot, &count);
    if (!legacy) return;
    // Rows come from every record that can be read, whatever the count says.
    char name[33];
    while (ReadLegacyLocationName(legacy.get(), name))
        page.rows.push_back(PageRow{name, static_cast<intptr_t>(page.rows.size())});
    if (!page.rows.empty()) PageSetTicks(page, page.rows.size(), 1);
}

bool PageTickOnlyRows(PageContent& page, const std::vector<size_t>& rows) {
    for (size_t row : rows)
        if (row >= page.rows.size()) return false;
    std::fill(page.ticks.begin(), page.ticks.end(), 0);
    for (size_t row : rows) {
        const intptr_t index = page.rows[row].itemData;
        if (index >= 0 && static_cast<size_t>(index) < page.ticks.size()) page.ticks[index] = 1;
    }
    return true;
}

void FillInstrumentsPage(const std::string& legacyRoot, PageContent& page) {
    page = PageContent{};
    page.columns = "Instrument\tType";
    int count = 0;
    FilePtr legacy = OpenLegacyInstruments(legacyRoot, &count);
    if (!legacy) return;
    for (int i = 0; i < count; ++i) {
        LegacyInstrument record;
        if (!ReadLegacyInstrument(legacy.get(), &record, i)) continue;
        char name[sizeof record.name + 1] = {};
        std::memcpy(name, record.name, sizeof record.name);
        std::string text = name;
        text += record.kind != 0 ? "\tBinoculars" : "\tTelescope";
        page.rows.push_back(PageRow{text, i});
    }
    if (!page.rows.empty()) PageSetTicks(page, page.rows.size(), 1);
}

void FillListsPage(const std::string& legacyRoot, FILE* log, PageContent& page) {
    page = PageContent{};
    page.columns = "Observing List\tObjects";
    int listCount = 0;
    FilePtr index = OpenLegacyListIndex(legacyRoot, &listCount);
    if (!index) return;
    std::vector<uint8_t> work(listCount > 0 ? static_cast<size_t>(listCount) : 0, 0);
    int highest = 0;
    int rowCount = 0;
    char name[33];
    int result;
    while ((result = NextLegacyList(index.get(), listCount, name)) >= 1) {
        const int r = result - 1;
        int objects = 0;
        FilePtr list = OpenLegacyList(legacyRoot, r, &objects);
        if (!list) continue;
        char text[64];
        std::snprintf(text, sizeof text, "%s\t%4d", name, objects);
        const int position = static_cast<int>(page.rows.size());
        page.rows.push_back(PageRow{text, r});
        LogPrintf(log, "index=%3d ret=%3d n=%3d %s\n", position, r, rowCount, text);
        highest = r + 1;
        if (static_cast<size_t>(rowCount) < work.size()) work[rowCount] = 1;
        ++rowCount;
    }
    if (page.rows.empty()) return;
    PageSetTicks(page, static_cast<size_t>(highest), 0);
    for (int i = 0; i < highest && static_cast<size_t>(i) < work.size(); ++i) page.ticks[i] = work[i];
}

void FillPage(int index, const std::string& legacyRoot, FILE* log, PageContent& page) {
    switch (index) {
        case kLocationsPage: FillLocationsPage(legacyRoot, page); break;
        case kInstrumentsPage: FillInstrumentsPage(legacyRoot, page); break;
        case kListsPage: FillListsPage(legacyRoot, log, page); break;
        default: page = PageContent{}; break;
    }
}
