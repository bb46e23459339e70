#include "stores/log_query.h"

#include <algorithm>
#include <cstring>

#include "base/file_utils.h"
#include "base/string_helpers.h"
#include "stores/log_index.h"
#include "stores/log_store.h"

namespace {

bool AnySelected(const uint8_t* selection, size_t size) {
    return std::any_of(selection, selection + size, [](uint8_t v) { return v != kLogNotSelected; });
}

bool NameSelected(const std::vector<std::string>& names, const char* name) {
    return std::any_of(names.begin(), names.end(),
                       [&](const std::string& n) { return NameCompare(n.c_str(), name) == 0; });
}

bool RowPasses(const LogQuery& query, const ObjectLogRow& row, long first, long last) {
    const long night = LogNightNumber(LogNightOf(row.instant.jd, row.site));
    if (night < first || night > last) return false;
    if (!NameSelected(query.observers, row.observer.name)) return false;
    if (!NameSelected(query.locations, row.site.name)) return false;
    if (!NameSelected(query.instruments, row.instrument.name)) return false;
    const uint8_t* cons = query.constellations;
    return std::find(cons, cons + kConstellationZones, row.constellation) != cons + kConstellationZones &&
           row.constellation != kLogNotSelected;
}

// Whether the object's first row passes. An object whose .pix is gone has
// no rows; the walk makes no file for it.
bool FirstRowPasses(const LogQuery& query, const IndexRow& entry, bool user, long first, long last,
                    ObjectLogRow* rowOut) {
    const uint32_t mask = ClassMaskOfSlot(static_cast<int>(entry.classSlot));
    const std::string path = LogRowsPath(static_cast<int>(entry.classSlot), entry.logKey, user);
    if (path.empty() || !FileExists(path.c_str())) return false;
    uint32_t count = 0;
    FilePtr rows = LogOpenRows(mask, entry.logKey, user, &count);
    if (!rows || count == 0 || LogReadRow(rows.get(), rowOut) < 0) return false;
    return RowPasses(query, *rowOut, first, last);
}

}  // namespace

void LogQueryInit(LogQuery* query) {
    if (!query) return;
    *query = LogQuery{};
    std::memset(query->classes, kLogNotSelected, sizeof query->classes);
    std::memset(query->constellations, kLogNotSelected, sizeof query->constellations);
}

void LogQueryFree(LogQuery* query) {
    if (!query) return;
    std::vector<std::string>().swap(query->observers);
    std::vector<std::string>().swap(query->locations);
    std::vector<std::string>().swap(query->instruments);
}

void LogQuerySelectName(std::vector<std::string>* names, const char* name) {
    if (!names || !name) return;
    names->emplace_back(name, std::min(std::strlen(name), kLogQueryNameChars));
}

int LogQueryRun(const LogQuery& query, std::vector<LogQueryHit>* hits) {
    if (!hits || query.observers.empty() || query.locations.empty() || query.instruments.empty()) return 0;
    if (!AnySelected(query.classes, kLogClassSlots)) return 0;
    if (!AnySelected(query.constellations, kConstellationZones)) return 0;
    const long first = static_cast<long>(query.startYear) * 10000 + query.startMonth * 100 + query.startDay;
    const long last = static_cast<long>(query.endYear) * 10000 + query.endMonth * 100 + query.endDay;
    bool any = false;
    // Slot 13 has no class folder, and no walk reaches it.
    for (int slot = 0; slot < kLogClassFolders; ++slot) {
        if (query.classes[slot] == kLogNotSelected) continue;
        uint32_t count = 0;
        FilePtr index = IndexOpenClass(slot, &count);
        if (!index) continue;
        for (uint32_t i = 0; i < count; ++i) {
            IndexRow entry;
            const int kind = IndexReadRow(index.get(), static_cast<long>(i), &entry);
            if (kind == 0) continue;
            const bool user = kind == 2;
            ObjectLogRow row;
            if (!FirstRowPasses(query, entry, user, first, last, &row)) continue;
            LogQueryHit hit;
            hit.objectClass = row.objectClass;
            hit.classMask = row.classMask;
            hit.logKey = entry.logKey | (user ? kLogUserKeyBit : 0);
            hits->push_back(hit);
            any = true;
        }
    }
    return any ? 1 : 0;
}
