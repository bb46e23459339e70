#include "shell/page_content.h"

#include <algorithm>

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
