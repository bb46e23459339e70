#include "legacy/legacy_object_step.h"

#include <cstring>

#include "catalog/legacy_name.h"
#include "catalog/user_comets.h"
#include "catalog/user_minor_planets.h"
#include "legacy/legacy_objects.h"

namespace {

#if defined(__GNUC__)
__attribute__((format(printf, 2, 0)))
#endif
void LogSkip(const ObjectStepFrame& frame, const char* format, const ObjectRowPlace& at) {
    // The short forms use none of the place; printf leaves what it doesn't use.
    LogPrintf(frame.host->log, format, at.name, at.row, at.count);
}

void SetRowClass(ObjectRecord* record, const LegacyObjectRef& ref) {
    record->objectClass = ref.objectClass;
    record->classMask = classMaskOf(ref.objectClass);
    record->sizeUnit = ref.sizeUnit;
}

// A supplemental star: the catalogue object of its name when the reference
// catalogues know it, else the user's star of that name.
bool StarObject(const ObjectStepFrame& frame, const ObjectRowPlace& at, const LegacyObjectRef& ref,
                ObjectRecord* record) {
    const JobHost& host = *frame.host;
    StellarRecord& buffer = *frame.starBuffer;
    {
        FilePtr legacy = OpenLegacyStellar(host.legacyRoot, nullptr);
        if (!legacy) {
            LogSkip(frame, frame.texts->openLegacyStars, at);
            return false;
        }
        long rowNumber = 0;
        // A search that fails answers 0 and passes: the buffer keeps the star
        // it held before.
        if (FindLegacyStar(host.legacyRoot, legacy.get(), ref.pid, &buffer, &rowNumber) < 0) {
            LogSkip(frame, frame.texts->findLegacyStar, at);
            return false;
        }
    }
    char name[sizeof buffer.name + 1] = {};
    std::memcpy(name, buffer.name, sizeof buffer.name);
    ObjectRecord found[kMaxDesignationRecords];
    if (resolveLegacyName(name, frame.site, frame.instant, nullptr, found) > 0) {
        *record = found[0];
        return true;
    }
    FilePtr store = openStellar(nullptr);
    if (!store) {
        NoteUnopenedStore(host, kStellarPath);
        LogSkip(frame, frame.texts->openStars, at);
        return false;
    }
    if (addOrReplaceStellar(store.get(), &buffer) != 0) record->pid = buffer.pid;
    SetRowClass(record, ref);
    return true;
}

// A comet: every row of its run goes to the user's comet store; the last
// add that works gives the PID.
bool CometObject(const ObjectStepFrame& frame, const ObjectRowPlace& at, const LegacyObjectRef& ref,
                 ObjectRecord* record) {
    const JobHost& host = *frame.host;
    int count = 0;
    FilePtr legacy = OpenLegacyComets(host.legacyRoot, &count);
    if (!legacy) {
        LogSkip(frame, frame.texts->openLegacyComets, at);
        return false;
    }
    LegacyCometRow buffer;
    RewindLegacyComets(legacy.get(), &buffer);
    FilePtr store = openUserComets(nullptr);
    if (!store) {
        legacy.reset();
        NoteUnopenedStore(host, kUserCometPath);
        LogSkip(frame, frame.texts->openComets, at);
        return false;
    }
    long index = 0;
    // PID 0 names no comet; it would also look like a buffer just rewound.
    while (ref.pid != 0 && NextLegacyCometRow(legacy.get(), &buffer, &index, ref.pid, count)) {
        uint16_t pid = 0;
        if (addOrReplaceUserComet(store.get(), WidenLegacyComet(buffer), nullptr, &pid) != 0) record->pid = pid;
    }
    SetRowClass(record, ref);
    return true;
}

// A minor planet: every row of its run goes to the user's store as it
// stands; the last add that works gives the PID.
bool MinorPlanetObject(const ObjectStepFrame& frame, const ObjectRowPlace& at, const LegacyObjectRef& ref,
                       ObjectRecord* record) {
    const JobHost& host = *frame.host;
    uint32_t count = 0;
    FilePtr legacy = OpenLegacyMinorPlanets(host.legacyRoot, &count);
    if (!legacy) {
        LogSkip(frame, frame.texts->openLegacyMinorPlanets, at);
        return false;
    }
    UserMpRecord buffer;
    RewindLegacyMinorPlanets(legacy.get(), &buffer);
    uint32_t storeCount = 0;
    FilePtr store = openUserMp(&storeCount);
    if (!store) {
        legacy.reset();
        NoteUnopenedStore(host, kUserMpPath);
        LogSkip(frame, frame.texts->openMinorPlanets, at);
        return false;
    }
    long index = 0;
    while (ref.pid != 0 && NextLegacyMinorPlanetRow(legacy.get(), &buffer, &index, ref.pid, count)) {
        uint32_t pid = 0;
        if (addOrReplaceUserMp(store.get(), buffer, &storeCount, &pid) != 0) record->pid = pid;
    }
    SetRowClass(record, ref);
    return true;
}

}  // namespace

int LegacyObjectRecord(const ObjectStepFrame& frame, const ObjectRowPlace& at, const LegacyObjectRef& ref,
                       ObjectRecord* record) {
    initObjectRecord(record);
    if (!IsUserClass(ref.objectClass)) {
        record->pid = ref.pid;
        SetRowClass(record, ref);
        return 1;
    }
    record->pid = kNoObjectPid;
    bool kept = false;
    switch (ref.objectClass) {
        case kClassSupplementalStar: kept = StarObject(frame, at, ref, record); break;
        case kClassUserComet: kept = CometObject(frame, at, ref, record); break;
        case kClassUserMinorPlanet: kept = MinorPlanetObject(frame, at, ref, record); break;
        default: LogSkip(frame, frame.texts->unknownClass, at); break;
    }
    if (!kept) return 0;
    if (record->pid == kNoObjectPid) {
        LogSkip(frame, frame.texts->noPid, at);
        return 0;
    }
    return 1;
}
