// Entries of the log: the night and place of an entry, the resolution of a
// reference comet or minor planet to the user's own, the reading of an
// entry file and the adding of a new entry.
#include <cmath>
#include <cstring>
#include <string>

#include "base/file_io.h"
#include "base/platform.h"
#include "base/string_helpers.h"
#include "catalog/comet_files.h"
#include "catalog/fill_by_designation.h"
#include "catalog/minor_planet_files.h"
#include "catalog/object_fill.h"
#include "stores/log_index.h"
#include "stores/log_store.h"
#include "stores/object_block.h"

namespace {

// Two entries closer than this are one observation (a minute, as the
// stored constant has it).
constexpr double kSameMomentDays = 0.0006944;

// The user object that `kind` and the designation name, placed at the
// moment, when it is logged.
int ResolveToUser(const LogPresence& table, int userClass, int kind, long number, const char* text,
                  const Site& site, const Instant& instant, ObjectRecord* object) {
    ObjectRecord found[kMaxDesignationRecords];
    if (fillByDesignation(userClass, kind, 0, number, text, &site, &instant, nullptr, found) < 1) return 0;
    found[0].classMask = classMaskOf(userClass);
    if (!LogObjectLogged(table, found[0])) return 0;
    *object = found[0];
    return 1;
}

int ResolveComet(const LogPresence& table, const Site& site, const Instant& instant, ObjectRecord* object) {
    FilePtr comets = openComets();
    CometRecord row;
    if (!comets || !readComet(comets.get(), static_cast<long>(object->pid), nullptr, nullptr, &row)) return 0;
    // The periodic number names the comet best, then its second designation,
    // then its first.
    if (row.number != 0) {
        const std::string periodic = std::to_string(row.number) + "P";
        return ResolveToUser(table, kClassUserComet, 3, 0, periodic.c_str(), site, instant, object);
    }
    if (row.iau[0]) return ResolveToUser(table, kClassUserComet, 2, 0, row.iau, site, instant, object);
    if (row.name[0]) return ResolveToUser(table, kClassUserComet, 1, 0, row.name, site, instant, object);
    return -1;
}

int ResolveMinorPlanet(const LogPresence& table, const Site& site, const Instant& instant, ObjectRecord* object) {
    FilePtr names = openMpNames();
    std::string name;
    if (names) readMpName(names.get(), object->pid, &name);
    return ResolveToUser(table, kClassUserMinorPlanet, 2, static_cast<long>(object->pid), name.c_str(), site,
                         instant, object);
}

// The number of the first row of the object's .pix that the entry repeats,
// or -1. 0 into `failed` when the rows can't be read.
long FindDuplicate(const LogEntry& entry, const char* note, const ObjectRecord& object, bool* failed) {
    uint32_t count = 0;
    FilePtr rows = LogOpenRows(object.classMask, object.pid, IsUserClass(object.objectClass), &count);
    if (!rows) {
        *failed = true;
        return -1;
    }
    const size_t noteLength = (note ? std::strlen(note) : 0) + 1;
    for (uint32_t i = 0; i < count; ++i) {
        ObjectLogRow row;
        if (LogReadRow(rows.get(), &row) < 0) {
            *failed = true;
            return -1;
        }
        if (NameCompare(row.observer.name, entry.observer.name) != 0) continue;
        if (NameCompare(row.site.name, entry.site.name) != 0) continue;
        if (NameCompare(row.instrument.name, entry.instrument.name) != 0) continue;
        if (std::fabs(row.instant.jd - entry.jd) >= kSameMomentDays) continue;
        LogEntry older;
        std::string olderNote;
        if (!LogReadEntry(object.classMask, row.entryNumber, &older, &olderNote)) continue;
        if (older.noteLength != noteLength) continue;
        if (noteLength > 1 && NameCompare(olderNote.c_str(), note) != 0) continue;
        return static_cast<long>(row.entryNumber);
    }
    return -1;
}

int AppendRow(const ObjectRecord& object, const ObjectLogRow& row) {
    uint32_t count = 0;
    FilePtr rows = LogOpenRows(object.classMask, object.pid, IsUserClass(object.objectClass), &count);
    if (!rows) return 0;
    if (std::fseek(rows.get(), kLogRowsHead + static_cast<long>(ObjectLogRowLayout::kSize) * count, SEEK_SET) != 0)
        return 0;
    if (!WriteRecord<ObjectLogRowLayout>(rows.get(), row)) return 0;
    if (std::fseek(rows.get(), 0, SEEK_SET) != 0 || !WriteU32(rows.get(), count + 1)) return 0;
    return std::fclose(rows.release()) == 0 ? 1 : 0;
}

int WriteEntryFile(const LogEntry& entry, const char* note, uint32_t entryNumber) {
    const std::string path = LogEntryPath(ClassSlotOf(entry.classMask), entryNumber);
    FilePtr file = OpenFile(path.c_str(), "wb");
    if (!file) return 0;
    bool written = WriteRecord<LogEntryLayout>(file.get(), entry) &&
                   ObjectBlockWrite(file.get(), entry.objectClass, entry.id);
    if (written && entry.noteLength > 1) written = FileWrite(note, entry.noteLength, file.get()) == entry.noteLength;
    if (written && std::fclose(file.release()) == 0) return 1;
    // A half-written entry would read as damage; a missing one reads as gone.
    file.reset();
    platform::RemoveFile(path.c_str());
    return 0;
}

}  // namespace

LogNight LogNightOf(double jd, const Site& site) {
    Site here = site;
    Instant moment;
    moment.jd = jd;
    InstantFromJd(&here, &moment);
    Instant earlier;
    InstantSet(&earlier, &here, moment.month, moment.day, moment.year, moment.localHours - 12.0, kSiteClock);
    InstantFromJd(&here, &earlier);
    return LogNight{earlier.year, earlier.month, earlier.day};
}

long LogNightNumber(const LogNight& night) {
    return static_cast<long>(night.year) * 10000 + night.month * 100 + night.day;
}

Instant LogInstantOf(double jd, const Site& site) {
    Site here = site;
    Instant instant;
    instant.jd = jd;
    InstantFromJd(&here, &instant);
    InstantScales(&instant, 0.0);
    InstantSidereal(&here, &instant);
    return instant;
}

int LogPlaceEntryObject(const LogEntry& entry, ObjectRecord* objectOut) {
    if (!objectOut) return 0;
    ObjectRecord object = identityRecord(entry.objectClass, entry.id);
    const Instant instant = LogInstantOf(entry.jd, entry.site);
    if (refillByIdentity(&object, 0.0, 0.0, &entry.site, &instant) < 1) return 0;
    // The reader sets the mask of the class; the entry's mask is the one its
    // files were filed under.
    object.classMask = entry.classMask;
    *objectOut = object;
    return 1;
}

int LogResolveObject(const LogPresence& table, const Site& site, const Instant& instant, ObjectRecord* object) {
    if (!object) return -1;
    if (LogObjectLogged(table, *object)) return 1;
    if (IsUserClass(object->objectClass)) return 0;
    if (object->classMask == 8) return ResolveMinorPlanet(table, site, instant, object);
    if (object->classMask == 4) return ResolveComet(table, site, instant, object);
    return 0;
}

int LogReadEntry(uint32_t classMask, uint32_t entryNumber, LogEntry* entryOut, std::string* noteOut) {
    const std::string path = LogEntryPath(ClassSlotOf(classMask), entryNumber);
    if (path.empty()) return 0;
    FilePtr file = OpenRegularFile(path.c_str(), "rb");
    LogEntry entry;
    if (!file || !ReadRecord<LogEntryLayout>(file.get(), entry)) return 0;
    std::string note;
    if (noteOut && entry.noteLength >= 2) {
        // A length the file can't hold is damage, not a size to allocate.
        if (entry.noteLength > FileSize(path.c_str())) return 0;
        if (!ObjectBlockSkip(file.get(), entry.objectClass)) return 0;
        std::string bytes(entry.noteLength, '\0');
        if (FileRead(bytes.data(), bytes.size(), file.get()) != bytes.size()) return 0;
        note.assign(bytes.c_str());
    }
    if (entryOut) *entryOut = entry;
    if (noteOut) *noteOut = std::move(note);
    return 1;
}

long LogAddEntry(LogEntry* entry, const char* note) {
    if (!entry) return -1;
    entry->noteLength = static_cast<uint32_t>((note ? std::strlen(note) : 0) + 1);
    const Instant instant = LogInstantOf(entry->jd, entry->site);
    // Every reader opens its store afresh, so an object the caller has just
    // made in the user's stores is seen without more ado.
    ObjectRecord object;
    if (!LogPlaceEntryObject(*entry, &object)) return -1;
    // An object no constellation was found for can't be filed under one.
    if (object.constellation >= kConstellationZones) return -1;
    // Each entry reads only its class's table: a log of thousands of
    // entries is added to without reading every class's table each time.
    LogPresence table;
    if (!LogPresenceLoadSlot(&table, ClassSlotOf(entry->classMask))) return -1;
    const int logged = LogResolveObject(table, entry->site, instant, &object);
    LogPresenceFree(&table);
    if (logged < 0) return -1;
    entry->objectClass = object.objectClass;
    entry->id = object.pid;
    object.classMask = entry->classMask;
    const int slot = ClassSlotOf(entry->classMask);
    if (slot < 0) return -1;

    long number = -1;
    if (logged) {
        bool failed = false;
        const long older = FindDuplicate(*entry, note, object, &failed);
        if (failed) return -1;
        if (older >= 0) return older;
        number = LogPidNextEntry(slot);
    } else {
        number = LogPidInsertKey(slot, logKey(object));
    }
    if (number < 0) return -1;
    const uint32_t entryNumber = static_cast<uint32_t>(number);

    ObjectLogRow row;
    row.entryNumber = entryNumber;
    row.objectClass = entry->objectClass;
    row.id = entry->id;
    row.classMask = entry->classMask;
    row.instant = MakeInstantImage(instant);
    row.site = entry->site;
    row.observer = entry->observer;
    row.instrument = entry->instrument;
    row.constellation = object.constellation;
    if (!AppendRow(object, row)) return -1;

    const LogNight night = LogNightOf(entry->jd, entry->site);
    const IndexKey keys[] = {
        IndexClassKey(slot),
        IndexNightKey(night.year, night.month, night.day),
        IndexObserverKey(entry->observer.name),
        IndexInstrumentKey(entry->instrument.name),
        IndexLocKey(entry->site.name),
        IndexConsKey(object.constellation),
    };
    for (const IndexKey& key : keys)
        if (!IndexPutByKey(key, object, entryNumber)) return -1;
    if (!WriteEntryFile(*entry, note, entryNumber)) return -1;
    return number;
}
