#include "legacy/scan_undefined.h"

#include <algorithm>
#include <cstring>
#include <set>

#include "legacy/import_logs.h"
#include "legacy/legacy_logs.h"
#include "stores/instrument_store.h"
#include "stores/location_store.h"
#include "stores/observer_store.h"

namespace {

enum class Walk { kGoOn, kEnd };

// One walk over the old logs: the names it lists, and the instruments found
// in the store so far (the scan adds none).
struct Scan {
    const JobHost& host;
    UndefinedNames* names;
    InstrumentNameMemo instruments;
};

bool Listed(const std::vector<std::string>& list, const char* text) {
    return std::find(list.begin(), list.end(), text) != list.end();
}

// A log location the store lacks by name joins it, with a cleared tail; a
// name the store holds at another place adds nothing.
Walk ScanLocation(const JobHost& host, const Site& site) {
    int count = 0;
    FilePtr store = LocationStoreOpen(&count);
    if (!store) {
        LogPrintf(host.log, "Log: error opening location database\n");
        return Walk::kEnd;
    }
    Site found = site;
    LocationTail tail;
    int index = 0;
    if (LocationFind(store.get(), &found, &tail, &index) == 0 &&
        !LocationAdd(store.get(), site, LocationTail{})) {
        LogPrintf(host.log, "Log: error adding new location\n");
        return Walk::kEnd;
    }
    return Walk::kGoOn;
}

// The store is asked with the cleaned name first; only a name it doesn't
// know meets the blank rule and the list.
Walk ScanObserver(char* name, UndefinedNames* names) {
    int count = 0;
    FilePtr store = ObserverStoreOpen(&count);
    if (!store) return Walk::kEnd;
    CleanObserverName(name);
    ObserverRecord stored;
    if (!FindObserverByPrefix(store.get(), name, &stored)) {
        const char* shown = name[0] ? name : kBlankName;
        if (!Listed(names->observers, shown)) names->observers.emplace_back(shown);
    }
    return Walk::kGoOn;
}

// "Naked Eye" is always known. The list is searched for the name as the
// entry gives it, so every entry with an empty name adds another "(blank)".
Walk ScanInstrument(const char* name, Scan& scan) {
    int count = 0;
    FilePtr store = InstrumentStoreOpen(&count);
    if (!store) return Walk::kEnd;
    if (std::strcmp(name, kNakedEyeName) == 0) return Walk::kGoOn;
    InstrumentRecord search;
    std::strncpy(search.name, name, sizeof search.name - 1);
    int index = 0;
    if (!InstrumentFindByNameMemo(store.get(), &search, count, &index, &scan.instruments) &&
        !Listed(scan.names->instruments, name))
        scan.names->instruments.emplace_back(name[0] ? name : kBlankName);
    return Walk::kGoOn;
}

Walk ScanEntry(Scan& scan, LegacyLogEntry& entry) {
    if (ScanLocation(scan.host, entry.site) == Walk::kEnd) return Walk::kEnd;
    if (ScanObserver(entry.observer, scan.names) == Walk::kEnd) return Walk::kEnd;
    return ScanInstrument(entry.instrument, scan);
}

// Follows one chain of entries from `number`. An entry that can't be read
// ends the chain; so does one met before, so that a damaged folder whose
// chain runs in a circle cannot hold the page forever.
Walk ScanChain(Scan& scan, int slot, long number) {
    std::set<long> seen;
    do {
        if (!seen.insert(number).second) return Walk::kGoOn;
        LegacyLogEntry entry;
        const long next = ReadLegacyLogEntry(scan.host.legacyRoot, slot, number, &entry, nullptr);
        if (next == 0) return Walk::kGoOn;
        if (ScanEntry(scan, entry) == Walk::kEnd) return Walk::kEnd;
        number = next;
    } while (number > 0);
    return Walk::kGoOn;
}

Walk ScanSlot(Scan& scan, int slot) {
    FilePtr index = OpenLegacyLogIndex(scan.host.legacyRoot, slot);
    uint32_t count = 0;
    uint32_t num = 0;
    if (!index || !ReadLegacyLogCount(index.get(), &count) || !ReadLegacyLogNum(index.get(), &num))
        return Walk::kEnd;
    if (num == 0) return Walk::kGoOn;
    if (!SeekLegacyLogRows(index.get())) return Walk::kEnd;
    for (uint32_t r = 0; r < num; ++r) {
        LegacyLogIndexRow row;
        if (!ReadLegacyLogRow(index.get(), &row)) return Walk::kEnd;
        // The chain's own files are read while the index stays open at the
        // next row.
        if (ScanChain(scan, slot, row.firstEntry) == Walk::kEnd) return Walk::kEnd;
    }
    return Walk::kGoOn;
}

}  // namespace

int ScanUndefined(const JobHost& host, UndefinedNames* names) {
    UndefinedNames scratch;
    Scan scan{host, names ? names : &scratch, {}};
    for (int slot = 0; slot < kLegacyLogSlots; ++slot)
        if (ScanSlot(scan, slot) == Walk::kEnd) return 0;
    ShowJobMessage(host, kDefineNamesMessage, kLogImportTitle);
    return 1;
}
