#include "legacy/import_lists.h"

#include <cstdio>

#include "astro/instant.h"
#include "astro/site.h"
#include "catalog/user_stars.h"
#include "legacy/import_result.h"
#include "legacy/legacy_lists.h"
#include "legacy/legacy_object_step.h"
#include "stores/list_store.h"

namespace {

constexpr const char* kImportedDescription = "This observing list was imported from Vesperal 1.x";

// Legacy classes from this one up never come into a list.
constexpr int kFirstDroppedClass = 15;

// The state of one run of the job. The star buffer lives as long as the
// job, as the object step asks.
struct ListJob {
    explicit ListJob(const JobHost& h) : host(h) {}
    const JobHost& host;
    Site site;
    Instant instant;
    int listsImported = 0;
    int listsTried = 0;
    int listsSkipped = 0;
    int objectsSkipped = 0;
    StellarRecord starBuffer;
};

enum class Step { kNextRow, kLeaveJob };

#if defined(__GNUC__)
__attribute__((format(printf, 2, 0)))
#endif
void LogRow(const ListJob& job, const char* format, const ObjectRowPlace& at) {
    LogPrintf(job.host.log, format, at.name, at.row, at.count);
}

// The fixed frame the catalogue search places its objects for: Palomar
// Observatory at 0 h UT on 1 January 2000. The lists are not refreshed here.
void MakeReferenceFrame(Site* site, Instant* instant) {
    char name[] = "Palomar Observatory";
    SiteInit(site, 2.0395917638805736, 0.5822418384653083, 0.0, 6.5, -8.0, name);
    InstantSet(instant, site, 1, 1, 2000, 0.0, kUniversalTime);
    InstantScales(instant, 0.0);
    InstantSidereal(site, instant);
}

constexpr ObjectStepTexts kListObjectTexts = {
    "Observing List: Error opening V1.x stellar data for %s -> %d of %d (skipped)\n",
    "Observing List: Error finding V1.x stellar database entry for %s -> %d of %d (skipped)\n",
    "Observing List: Error opening stellar database for %s -> %d of %d (skipped)\n",
    "Observing List: Error opening V1.x comet data for %s -> %d of %d (skipped)\n",
    "Observing List: Error opening comet database for %s -> %d of %d (skipped)\n",
    "Observing List: Error opening V1.x MP data for %s -> %d of %d (skipped)\n",
    "Observing List: Error opening MP database for %s -> %d of %d (skipped)\n",
    "Observing List: Unknown supplemental class for %s -> %d of %d (skipped)\n",
    "Observing List: No object PID for %s -> %d of %d (skipped)\n",
};

// One legacy object row into the new list.
Step ObjectStep(ListJob& job, const ObjectRowPlace& at, const LegacyListObject& row, FILE* items, int* itemCount) {
    const int cls = row.objectClass;
    if (cls == kClassNone || cls >= kFirstDroppedClass) return Step::kNextRow;

    const ObjectStepFrame frame{&job.host, &kListObjectTexts, &job.site, &job.instant, &job.starBuffer};
    ObjectRecord record;
    if (!LegacyObjectRecord(frame, at, LegacyObjectRef{row.objectClass, row.pid, row.sizeUnit}, &record)) {
        ++job.objectsSkipped;
        return Step::kNextRow;
    }
    if (!AppendListObject(items, &record, itemCount)) {
        LogRow(job, "Observing List: Error adding object to database for %s -> %d of %d\n", at);
        return Step::kLeaveJob;
    }
    return Step::kNextRow;
}

// Makes the new list with its description and an open, empty item file;
// null (with the reason logged) when the job has to stop.
FilePtr CreateImportedList(const ListJob& job, const char* name, int* slotOut) {
    const int slot = ListCreate(name, nullptr);
    if (slot < 0) {
        NoteUnopenedStore(job.host, ListIndexPath().c_str());
        LogPrintf(job.host.log, "Observing List: Error creating new observing list\n");
        return nullptr;
    }
    int itemCount = 0;
    FilePtr items;
    {
        int slotCount = 0;
        FilePtr index = ListIndexOpen(&slotCount);
        if (index) {
            index.reset();
            items = ListOpenItems(slot, &itemCount);
        }
    }
    if (!items) {
        LogPrintf(job.host.log, "Observing List: Error opening new observing list\n");
        return nullptr;
    }
    if (!ListSeekItem(items.get(), itemCount)) {
        LogPrintf(job.host.log, "Observing List: Error inializing new observing list\n");
        return nullptr;
    }
    if (!ListWriteDescription(slot, kImportedDescription)) {
        LogPrintf(job.host.log, "Observing List: Error writing new observing list description\n");
        return nullptr;
    }
    *slotOut = slot;
    return items;
}

// One ticked row of the index. A list the job can't finish keeps the count
// 0 it was made with: its rows are written but not committed.
Step ListStep(ListJob& job, int i, const LegacyListRow& entry) {
    ++job.listsTried;
    const std::string path = LegacyListPath(job.host.legacyRoot, i);
    FilePtr legacy = OpenRegularFile(path.c_str(), "rb");
    if (!legacy) {
        LogPrintf(job.host.log, "Observing List: Warning: unable to open V1.x observing list -> %s (%d)\n",
                  path.c_str(), i);
        return Step::kNextRow;
    }
    if (std::fseek(legacy.get(), kLegacyListHeaderSize, SEEK_SET) != 0) {
        LogPrintf(job.host.log, "Observing List: Warning: error initializing V1.x observing list -> %d\n", i);
        return Step::kNextRow;
    }
    // Lists are never merged: a name the store holds is left alone.
    if (ListFindByName(entry.name, nullptr) >= 0) {
        LogPrintf(job.host.log, "Observing List: Warning: observing list already exists (not imported) -> %s\n",
                  entry.name);
        ++job.listsSkipped;
        return Step::kNextRow;
    }

    int slot = 0;
    FilePtr items = CreateImportedList(job, entry.name, &slot);
    if (!items) return Step::kLeaveJob;
    int itemCount = 0;
    const int count = entry.objectCount;
    for (int j = 0; j < count; ++j) {
        const ObjectRowPlace at{entry.name, j, count};
        LegacyListObject row;
        if (!ReadRecord<LegacyListObjectLayout>(legacy.get(), row)) {
            LogRow(job, "Observing List: Error reading %s -> %d of %d\n", at);
            ++job.listsSkipped;
            return Step::kNextRow;
        }
        if (ObjectStep(job, at, row, items.get(), &itemCount) == Step::kLeaveJob) return Step::kLeaveJob;
    }
    ++job.listsImported;
    ListCloseItems(std::move(items), slot, itemCount);
    return Step::kNextRow;
}

// Every row of the index, ticked or not, so that the stream stays in step;
// 1 when the end of the index was reached.
int ImportTickedLists(ListJob& job) {
    const TickArray ticks = JobTicks(job.host);
    if (!ticks.data) {
        LogPrintf(job.host.log, "Observing List: Internal error\n");
        return 0;
    }
    int listCount = 0;
    FilePtr index = OpenLegacyListIndex(job.host.legacyRoot, &listCount);
    if (!index) {
        NoteUnreadableFile(job.host, LegacyListIndexPath(job.host.legacyRoot));
        LogPrintf(job.host.log, "Observing List: Unable to open V1.x observing list index\n");
        return 0;
    }
    if (!RewindLegacyListIndex(index.get())) {
        LogPrintf(job.host.log, "Observing List: Error initializing V1.x observing list index\n");
        return 0;
    }
    for (int i = 0; i < listCount; ++i) {
        LegacyListRow entry;
        if (!ReadLegacyListRow(index.get(), &entry)) {
            LogPrintf(job.host.log, "Observing List: Error reading V1.x observing list index -> %d of %d\n", i,
                      listCount);
            return 0;
        }
        // Ticks follow row numbers: a free row has a tick place, always 0.
        if (!IsTicked(ticks, static_cast<size_t>(i))) continue;
        if (ListStep(job, i, entry) == Step::kLeaveJob) return 0;
    }
    return 1;
}

void ShowListResult(const ListJob& job, int succeeded) {
    char counts[128];
    std::snprintf(counts, sizeof counts, "Imported %d of %d, %d lists skipped, %d objects skipped",
                  job.listsImported, job.listsTried, job.listsSkipped, job.objectsSkipped);
    ShowJobCounts(job.host, succeeded, counts);
}

}  // namespace

int AppendListObject(FILE* stream, const ObjectRecord* record, int* countInOut) {
    if (!stream || !record || !countInOut || *countInOut >= kListMaxItems) return 0;
    if (!WriteRecord<ObjectRecordLayout>(stream, *record)) return 0;
    ++*countInOut;
    return 1;
}

int ImportObservingLists(const JobHost& host) {
    ListJob job(host);
    MakeReferenceFrame(&job.site, &job.instant);
    const int succeeded = ImportTickedLists(job);
    ShowListResult(job, succeeded);
    return succeeded;
}
