#include "legacy/import_locations.h"

#include <cstdio>

#include "legacy/import_result.h"
#include "legacy/legacy_locations.h"
#include "stores/location_store.h"

namespace {

// Runs over every record below the count, ticked or not, so that the stream
// stays in step. 1 when the loop reached the count.
int CopyTickedLocations(const JobHost& host, FILE* legacy, int count, FILE* store,
                        const TickArray& ticks, ImportCounters& c) {
    for (int i = 0; i < count; ++i) {
        Site site;
        LocationTail tail;
        if (!ReadRecord<SiteLayout>(legacy, site) || !ReadRecord<LocationTailLayout>(legacy, tail)) {
            LogPrintf(host.log, "Location: error reading V1.x location database\n");
            return 0;
        }
        if (!IsTicked(ticks, static_cast<size_t>(i))) continue;

        // Same place (1) or same name elsewhere (2): a duplicate either way.
        Site probe = site;
        LocationTail foundTail;
        int foundIndex = 0;
        if (LocationFind(store, &probe, &foundTail, &foundIndex) != 0) {
            LogPrintf(host.log, "Location: Warning %.33s already exists (not added)\n", site.name);
            ++c.skipped;
            ++c.counted;
            continue;
        }
        if (LocationAdd(store, site, tail)) {
            ++c.imported;
            ++c.counted;
        } else {
            // A failed add is skipped but not counted, and the job goes on.
            LogPrintf(host.log, "Location: error adding new location\n");
            ++c.skipped;
            NoteFailedAdd(host);
        }
    }
    return 1;
}

}  // namespace

int ImportLocations(const JobHost& host) {
    int count = 0;
    FilePtr legacy = OpenLegacyLocations(host.legacyRoot, &count);
    if (!legacy) {
        NoteUnreadableFile(host, LegacyLocationsPath(host.legacyRoot));
        return 0;
    }

    int storeCount = 0;
    StoreDamage damage = StoreDamage::kNone;
    FilePtr store = LocationStoreOpen(&storeCount, &damage);
    LogStoreDamage(host, "Location", kLocationStorePath, damage);
    if (!store && damage == StoreDamage::kNone) NoteUnopenedStore(host, kLocationStorePath);
    return RunTickedImport(host, legacy.get(), count, store.get(), "Location: Internal error\n",
                           CopyTickedLocations);
}
