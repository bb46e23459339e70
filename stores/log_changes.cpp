// Changing and deleting entries of the log, and keeping the indexes in step
// with them. The indexes have no rebuild of their own: each change moves
// the object where a key changed, and each deletion puts the object back
// under the keys of the rows it still has.
#include <cstring>
#include <string>
#include <vector>

#include "base/file_io.h"
#include "base/platform.h"
#include "base/string_helpers.h"
#include "stores/log_index.h"
#include "stores/log_store.h"
#include "stores/object_block.h"

namespace {

// The object of an entry as the index rows name it: class, PID and mask.
ObjectRecord IndexedObject(const LogEntry& entry) {
    ObjectRecord object = identityRecord(entry.objectClass, entry.id);
    object.classMask = entry.classMask;
    return object;
}

int MoveInIndex(const IndexKey& from, const IndexKey& to, const ObjectRecord& object, uint32_t entryNumber) {
    if (!IndexRemoveByKey(from, object)) return 0;
    return IndexPutByKey(to, object, entryNumber);
}

IndexKey NightKey(double jd, const Site& site) {
    const LogNight night = LogNightOf(jd, site);
    return IndexNightKey(night.year, night.month, night.day);
}

// The constellation of the entry's object at the moment `jd`, -1 when the
// object can't be placed.
int ConstellationAt(const LogEntry& entry, double jd) {
    LogEntry then = entry;
    then.jd = jd;
    ObjectRecord object;
    if (!LogPlaceEntryObject(then, &object)) return -1;
    return object.constellation;
}

// Reads the object's rows, leaving out those of `entryNumber`.
int ReadOtherRows(FILE* rows, uint32_t count, uint32_t entryNumber, std::vector<ObjectLogRow>* kept) {
    if (std::fseek(rows, kLogRowsHead, SEEK_SET) != 0) return 0;
    for (uint32_t i = 0; i < count; ++i) {
        ObjectLogRow row;
        if (LogReadRow(rows, &row) < 0) return 0;
        if (row.entryNumber != entryNumber) kept->push_back(row);
    }
    return 1;
}

int WriteRows(FILE* rows, const std::vector<ObjectLogRow>& kept) {
    if (std::fseek(rows, kLogRowsHead, SEEK_SET) != 0) return 0;
    for (const ObjectLogRow& row : kept)
        if (!WriteRecord<ObjectLogRowLayout>(rows, row)) return 0;
    if (std::fseek(rows, 0, SEEK_SET) != 0) return 0;
    return WriteU32(rows, static_cast<uint32_t>(kept.size()));
}

}  // namespace

int IndexPutByKey(const IndexKey& key, const ObjectRecord& object, uint32_t entryNumber) {
    FilePtr index = IndexOpen(key, nullptr);
    if (!index || !IndexPut(index.get(), object, entryNumber)) return 0;
    return std::fclose(index.release()) == 0 ? 1 : 0;
}

int IndexRemoveByKey(const IndexKey& key, const ObjectRecord& object) {
    int removed = 0;
    {
        FilePtr index = IndexOpen(key, nullptr);
        removed = index && IndexRemove(index.get(), object);
        if (index && std::fclose(index.release()) != 0) removed = 0;
    }
    IndexDropIfEmpty(key);
    return removed;
}

int IndexMoveNight(const LogEntry& entry, uint32_t entryNumber, double oldJd) {
    return MoveInIndex(NightKey(oldJd, entry.site), NightKey(entry.jd, entry.site), IndexedObject(entry),
                       entryNumber);
}

int IndexMoveCons(const LogEntry& entry, uint32_t entryNumber, double oldJd) {
    const int before = ConstellationAt(entry, oldJd);
    const int after = ConstellationAt(entry, entry.jd);
    if (before < 0 || after < 0) return 0;
    return MoveInIndex(IndexConsKey(before), IndexConsKey(after), IndexedObject(entry), entryNumber);
}

int IndexMoveObserver(const LogEntry& entry, uint32_t entryNumber, const char* oldName) {
    return MoveInIndex(IndexObserverKey(oldName), IndexObserverKey(entry.observer.name), IndexedObject(entry),
                       entryNumber);
}

int IndexMoveInstrument(const LogEntry& entry, uint32_t entryNumber, const char* oldName) {
    return MoveInIndex(IndexInstrumentKey(oldName), IndexInstrumentKey(entry.instrument.name),
                       IndexedObject(entry), entryNumber);
}

int IndexMoveLoc(const LogEntry& entry, uint32_t entryNumber, const char* oldName) {
    return MoveInIndex(IndexLocKey(oldName), IndexLocKey(entry.site.name), IndexedObject(entry), entryNumber);
}

int LogReplaceEntry(uint32_t classMask, uint32_t entryNumber, const LogEntry& entry, const char* note) {
    LogEntry old;
    if (!LogReadEntry(classMask, entryNumber, &old, nullptr)) return 0;
    LogEntry fresh = entry;
    fresh.noteLength = static_cast<uint32_t>((note ? std::strlen(note) : 0) + 1);
    {
        // Written over the old file, which keeps its length: a shorter note
        // leaves old bytes past the end, hidden by the note's length. The
        // object block between entry and note stays as it was.
        const std::string path = LogEntryPath(ClassSlotOf(classMask), entryNumber);
        FilePtr file = OpenFile(path.c_str(), "r+b");
        if (!file || !WriteRecord<LogEntryLayout>(file.get(), fresh)) return 0;
        if (std::fseek(file.get(), 0, SEEK_CUR) != 0 || !ObjectBlockSkip(file.get(), old.objectClass)) return 0;
        if (std::fseek(file.get(), 0, SEEK_CUR) != 0) return 0;
        if (fresh.noteLength > 1 && FileWrite(note, fresh.noteLength, file.get()) != fresh.noteLength) return 0;
        if (std::fclose(file.release()) != 0) return 0;
    }
    bool moved = false, failed = false;
    auto move = [&](int done) {
        moved = true;
        if (!done) failed = true;
    };
    if (old.jd != fresh.jd) {
        move(IndexMoveNight(fresh, entryNumber, old.jd));
        move(IndexMoveCons(fresh, entryNumber, old.jd));
    }
    if (NameCompare(old.instrument.name, fresh.instrument.name) != 0)
        move(IndexMoveInstrument(fresh, entryNumber, old.instrument.name));
    if (NameCompare(old.site.name, fresh.site.name) != 0) move(IndexMoveLoc(fresh, entryNumber, old.site.name));
    if (NameCompare(old.observer.name, fresh.observer.name) != 0)
        move(IndexMoveObserver(fresh, entryNumber, old.observer.name));
    // A move that failed leaves the indexes behind the entry; the caller
    // hears of it rather than of a move.
    if (failed) return 0;
    return moved ? -1 : 1;
}

int LogDeleteEntry(const LogEntry& entry, uint32_t entryNumber) {
    const int slot = ClassSlotOf(entry.classMask);
    const std::string path = LogEntryPath(slot, entryNumber);
    if (path.empty() || !platform::RemoveFile(path.c_str())) return 0;

    ObjectRecord object;
    if (!LogPlaceEntryObject(entry, &object)) return 0;
    {
        LogPresence table;
        if (!LogPresenceLoadSlot(&table, slot)) return 0;
        const int logged = LogResolveObject(table, entry.site, LogInstantOf(entry.jd, entry.site), &object);
        LogPresenceFree(&table);
        if (logged != 1) return 0;
    }
    object.classMask = entry.classMask;
    const bool user = IsUserClass(object.objectClass);

    std::vector<ObjectLogRow> kept;
    {
        uint32_t count = 0;
        FilePtr rows = LogOpenRows(object.classMask, object.pid, user, &count);
        if (!rows || !ReadOtherRows(rows.get(), count, entryNumber, &kept)) return kLogDeleteRows;
        if (!WriteRows(rows.get(), kept) || std::fclose(rows.release()) != 0) return kLogDeleteRows;
    }

    if (kept.empty()) {
        platform::RemoveFile(LogRowsPath(slot, object.pid, user).c_str());
        if (!LogPidRemoveKey(slot, logKey(object))) return kLogDeletePid;
        if (!IndexRemoveByKey(IndexConsKey(object.constellation), object)) return kLogDeleteCons;
        if (!IndexRemoveByKey(IndexClassKey(slot), object)) return kLogDeleteClass;
    }

    const LogNight night = LogNightOf(entry.jd, entry.site);
    if (!IndexRemoveByKey(IndexNightKey(night.year, night.month, night.day), object)) return kLogDeleteNight;
    if (!IndexRemoveByKey(IndexInstrumentKey(entry.instrument.name), object)) return kLogDeleteInstrument;
    if (!IndexRemoveByKey(IndexObserverKey(entry.observer.name), object)) return kLogDeleteObserver;
    if (!IndexRemoveByKey(IndexLocKey(entry.site.name), object)) return kLogDeleteLoc;

    // The removals above went by this entry's keys, which other rows of the
    // object may share: each remaining row puts the object back under its own.
    for (const ObjectLogRow& row : kept) {
        const LogNight rowNight = LogNightOf(row.instant.jd, row.site);
        const IndexKey keys[] = {
            IndexNightKey(rowNight.year, rowNight.month, rowNight.day),
            IndexObserverKey(row.observer.name),
            IndexInstrumentKey(row.instrument.name),
            IndexLocKey(row.site.name),
        };
        for (const IndexKey& key : keys)
            if (!IndexPutByKey(key, object, row.entryNumber)) return kLogDeleteRepair;
    }
    return 1;
}

int LogDeleteObject(const ObjectRecord& object) {
    // An object never logged has nothing to delete, and gets no empty .pix.
    const std::string path = LogRowsPath(ClassSlotOf(object.classMask), object.pid, IsUserClass(object.objectClass));
    if (path.empty()) return 0;
    if (!FileExists(path.c_str())) return 1;
    std::vector<uint32_t> numbers;
    {
        uint32_t count = 0;
        FilePtr rows = LogOpenRows(object.classMask, object.pid, IsUserClass(object.objectClass), &count);
        if (!rows) return 0;
        for (uint32_t i = 0; i < count; ++i) {
            ObjectLogRow row;
            if (LogReadRow(rows.get(), &row) < 0) return 0;
            numbers.push_back(row.entryNumber);
        }
    }
    for (uint32_t number : numbers) {
        LogEntry entry;
        if (!LogReadEntry(object.classMask, number, &entry, nullptr)) return 0;
        const int result = LogDeleteEntry(entry, number);
        if (result != 1) return result;
    }
    return 1;
}
