#include "stores/list_refresh.h"

#include <cstring>

#include "base/record_layout.h"
#include "catalog/object_fill.h"
#include "stores/list_store.h"

namespace {

bool HeaderMatches(const ListItemHeader& h, const Site& site, const Instant& instant) {
    return h.stale == 0 && h.tDyn == instant.tDyn && h.longitude == site.longitude &&
           h.latitude == site.latitude && h.height == site.height && h.zoneHours == site.zoneHours &&
           h.dstMode == site.dstMode;
}

int WriteHeader(FILE* items, const ListItemHeader& h) {
    return std::fseek(items, 0, SEEK_SET) == 0 && WriteRecord<ListItemHeaderLayout>(items, h) &&
           std::fflush(items) == 0;
}

// A walk that placed every row and ends early leaves rows placed for
// another moment: the header goes back to stale so that they are all
// placed next time. Best effort: the walk is failing or cancelled already.
void LeaveUnfinished(ListRefresh* walk) {
    if (!walk->recompute || !walk->items) return;
    ListItemHeader stale;
    WriteHeader(walk->items.get(), stale);
    walk->recompute = false;
}

bool Passes(const ObjectRecord& r, const ListFilter& filter) {
    if ((r.classMask & filter.classMask) == 0) return false;
    if (filter.magnitudeLimit < 90.0 && r.magnitude > filter.magnitudeLimit) return false;
    return !filter.tickedOnly || ListIsTicked(r);
}

bool SameImage(const ObjectRecord& a, const ObjectRecord& b) {
    return RecordImage<ObjectRecordLayout>(a) == RecordImage<ObjectRecordLayout>(b);
}

}  // namespace

int ListRefreshBegin(ListRefresh* walk, int slot, const Site& site, const Instant& instant,
                     const ListFilter& filter, const int* cancel, ListHasLogEntries hasLogEntries,
                     void* logContext) {
    *walk = ListRefresh{};
    walk->items = ListOpenItems(slot, &walk->itemCount);
    if (!walk->items) return 0;
    walk->slot = slot;
    walk->site = site;
    walk->instant = instant;
    walk->filter = filter;
    walk->cancel = cancel;
    walk->hasLogEntries = hasLogEntries;
    walk->logContext = logContext;
    ListItemHeader header;
    if (std::fseek(walk->items.get(), 0, SEEK_SET) != 0 ||
        !ReadRecord<ListItemHeaderLayout>(walk->items.get(), header)) {
        walk->items.reset();
        return 0;
    }
    if (HeaderMatches(header, site, instant)) return 1;
    ListItemHeader fresh;
    fresh.tDyn = instant.tDyn;
    fresh.longitude = site.longitude;
    fresh.latitude = site.latitude;
    fresh.height = site.height;
    fresh.zoneHours = site.zoneHours;
    fresh.dstMode = site.dstMode;
    fresh.stale = 0;
    if (!WriteHeader(walk->items.get(), fresh)) {
        walk->items.reset();
        return 0;
    }
    walk->recompute = true;
    return 1;
}

int ListRefreshStep(ListRefresh* walk) {
    if (!walk->items) return -1;
    while (walk->index < walk->itemCount) {
        if (walk->cancel && *walk->cancel) {
            LeaveUnfinished(walk);
            return 0;
        }
        const int index = walk->index++;
        ObjectRecord read;
        if (!ListReadItem(walk->items.get(), index, walk->itemCount, &read)) {
            LeaveUnfinished(walk);
            return -1;
        }
        ObjectRecord row = read;
        const bool logged =
            walk->hasLogEntries && walk->hasLogEntries(row.objectClass, row.pid, walk->logContext);
        row.componentCode = static_cast<uint8_t>(logged ? row.componentCode | kListLogged
                                                        : row.componentCode & ~kListLogged);
        bool passed = false;
        if (row.filterPassed != kListNotWalked) {
            if (walk->recompute || (row.sizeUnit & kListRedo) != 0) {
                // An object that can't be placed now (its catalogue is
                // missing) keeps the values it has, and its redo mark.
                ObjectRecord placed = row;
                if (refillByIdentity(&placed, 0.0, 0.0, &walk->site, &walk->instant) > 0) {
                    row = placed;
                    row.sizeUnit = static_cast<uint8_t>(row.sizeUnit & ~kListRedo);
                }
            }
            passed = Passes(row, walk->filter);
            row.filterPassed = passed ? 1 : 0;
        }
        if (!SameImage(row, read)) {
            if (!ListSeekItem(walk->items.get(), index) ||
                !WriteRecord<ObjectRecordLayout>(walk->items.get(), row)) {
                LeaveUnfinished(walk);
                return -1;
            }
        }
        if (passed) return index + 1;
    }
    return 0;
}

int ListRefreshEnd(ListRefresh* walk) {
    if (!walk->items) return 0;
    if (walk->index < walk->itemCount) LeaveUnfinished(walk);
    return std::fclose(walk->items.release()) == 0 ? 1 : 0;
}
