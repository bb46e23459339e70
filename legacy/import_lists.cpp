#include "legacy/import_lists.h"

#include <cstdio>
#include <cstring>

#include "astro/instant.h"
#include "astro/site.h"
#include "catalog/legacy_name.h"
#include "catalog/user_comets.h"
#include "catalog/user_minor_planets.h"
#include "catalog/user_stars.h"
#include "legacy/import_result.h"
#include "legacy/legacy_lists.h"
#include "legacy/legacy_objects.h"
#include "stores/list_store.h"

namespace {

constexpr const char* kImportedDescription = "This observing list was imported from Vesperal 1.x";

// A list row that has found no object keeps this PID.
constexpr uint32_t kNoPid = 0xFFFFFFFFu;

// Legacy classes from this one up never come into a list.
constexpr int kFirstDroppedClass = 15;

// The state of one run of the job. The star buffer lives as long as the
// job: a star the PID map can't find goes on with whatever the buffer last
// held, as the old program did.
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

// Where an object row stands, for the log lines: list name, row, count.
struct RowPlace {
    const char* listName;
    int row;
    int count;
};

#if defined(__GNUC__)
__attribute__((format(printf, 2, 0)))
#endif
void LogRow(const ListJob& job, const char* format, const RowPlace& at) {
    LogPrintf(job.host.log, format, at.listName, at.row, at.count);
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

void SetListedClass(ObjectRecord& record, const LegacyListObject& row) {
    record.objectClass = row.objectClass;
    record.classMask = classMaskOf(row.objectClass);
    record.sizeUnit = row.sizeUnit;
}

// A supplemental star: the catalogue object of its name when the reference
// catalogues know it, else the user's star of that name. False when the
// row was skipped, with the reason logged.
bool StarObject(ListJob& job, const RowPlace& at, const LegacyListObject& row, ObjectRecord& record) {
    {
        FilePtr legacy = OpenLegacyStellar(job.host.legacyRoot, nullptr);
        if (!legacy) {
            LogRow(job, "Observing List: Error opening V1.x stellar data for %s -> %d of %d (skipped)\n", at);
            return false;
        }
        long rowNumber = 0;
        // A search that fails answers 0 and passes: the buffer keeps the star
        // it held before.
        if (FindLegacyStar(job.host.legacyRoot, legacy.get(), row.pid, &job.starBuffer, &rowNumber) < 0) {
            LogRow(job, "Observing List: Error finding V1.x stellar database entry for %s -> %d of %d (skipped)\n",
                   at);
            return false;
        }
    }
    char name[sizeof job.starBuffer.name + 1] = {};
    std::memcpy(name, job.starBuffer.name, sizeof job.starBuffer.name);
    ObjectRecord found[kMaxDesignationRecords];
    if (resolveLegacyName(name, &job.site, &job.instant, nullptr, found) > 0) {
        record = found[0];
        return true;
    }
    FilePtr store = openStellar(nullptr);
    if (!store) {
        NoteUnopenedStore(job.host, kStellarPath);
        LogRow(job, "Observing List: Error opening stellar database for %s -> %d of %d (skipped)\n", at);
        return false;
    }
    if (addOrReplaceStellar(store.get(), &job.starBuffer) != 0) record.pid = job.starBuffer.pid;
    SetListedClass(record, row);
    return true;
}

// A comet: every row of its run goes to the user's comet store; the last
// add that works gives the PID.
bool CometObject(ListJob& job, const RowPlace& at, const LegacyListObject& row, ObjectRecord& record) {
    int count = 0;
    FilePtr legacy = OpenLegacyComets(job.host.legacyRoot, &count);
    if (!legacy) {
        LogRow(job, "Observing List: Error opening V1.x comet data for %s -> %d of %d (skipped)\n", at);
        return false;
    }
    LegacyCometRow buffer;
    RewindLegacyComets(legacy.get(), &buffer);
    FilePtr store = openUserComets(nullptr);
    if (!store) {
        legacy.reset();
        NoteUnopenedStore(job.host, kUserCometPath);
        LogRow(job, "Observing List: Error opening comet database for %s -> %d of %d (skipped)\n", at);
        return false;
    }
    long index = 0;
    // PID 0 names no comet; it would also look like a buffer just rewound.
    while (row.pid != 0 && NextLegacyCometRow(legacy.get(), &buffer, &index, row.pid, count)) {
        uint16_t pid = 0;
        if (addOrReplaceUserComet(store.get(), WidenLegacyComet(buffer), nullptr, &pid) != 0) record.pid = pid;
    }
    SetListedClass(record, row);
    return true;
}

// A minor planet: every row of its run goes to the user's store as it
// stands; the last add that works gives the PID.
bool MinorPlanetObject(ListJob& job, const RowPlace& at, const LegacyListObject& row, ObjectRecord& record) {
    uint32_t count = 0;
    FilePtr legacy = OpenLegacyMinorPlanets(job.host.legacyRoot, &count);
    if (!legacy) {
        LogRow(job, "Observing List: Error opening V1.x MP data for %s -> %d of %d (skipped)\n", at);
        return false;
    }
    UserMpRecord buffer;
    RewindLegacyMinorPlanets(legacy.get(), &buffer);
    uint32_t storeCount = 0;
    FilePtr store = openUserMp(&storeCount);
    if (!store) {
        legacy.reset();
        NoteUnopenedStore(job.host, kUserMpPath);
        LogRow(job, "Observing List: Error opening MP database for %s -> %d of %d (skipped)\n", at);
        return false;
    }
    long index = 0;
    while (row.pid != 0 && NextLegacyMinorPlanetRow(legacy.get(), &buffer, &index, row.pid, count)) {
        uint32_t pid = 0;
        if (addOrReplaceUserMp(store.get(), buffer, &storeCount, &pid) != 0) record.pid = pid;
    }
    SetListedClass(record, row);
    return true;
}

// One legacy object row into the new list.
Step ObjectStep(ListJob& job, const RowPlace& at, const LegacyListObject& row, FILE* items, int* itemCount) {
    const int cls = row.objectClass;
    if (cls == kClassNone || cls >= kFirstDroppedClass) return Step::kNextRow;

    ObjectRecord record;
    initObjectRecord(&record);
    if (!IsUserClass(cls)) {
        record.pid = row.pid;
        SetListedClass(record, row);
    } else {
        record.pid = kNoPid;
        bool kept = false;
        switch (cls) {
            case kClassSupplementalStar: kept = StarObject(job, at, row, record); break;
            case kClassUserComet: kept = CometObject(job, at, row, record); break;
            case kClassUserMinorPlanet: kept = MinorPlanetObject(job, at, row, record); break;
            default:
                LogRow(job, "Observing List: Unknown supplemental class for %s -> %d of %d (skipped)\n", at);
                break;
        }
        if (!kept) {
            ++job.objectsSkipped;
            return Step::kNextRow;
        }
    }
    if (record.pid == kNoPid) {
        LogRow(job, "Observing List: No object PID for %s -> %d of %d (skipped)\n", at);
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
        const RowPlace at{entry.name, j, count};
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
