// The observation log under user/log: its folders, the per-class tables of
// logged objects (pid.bin), the per-object row files (.pix), the making of
// an entry, and the registry of imported exchange files. The records and
// paths are in log_records.h.
//
// The store keeps no open state between calls: each operation opens and
// closes its files, and answers 1 or 0 unless told otherwise.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <vector>

#include "base/file_utils.h"
#include "stores/log_index.h"
#include "stores/log_records.h"

// Makes user/log, the six index folders, the slot's class folder and an
// empty pid.bin (8 bytes of zero). An existing pid.bin is left as it is.
// 0 for a slot without a folder or when anything can't be made.
int LogCreateClass(int slot);

// Makes the class of every slot whose pid.bin can't be opened; 0 when one
// of them can't be made.
int LogEnsureFolders();

// A class's pid.bin as read: the head and the first objectCount keys.
struct LogPidTable {
    LogPidHead head;
    std::vector<uint32_t> keys;  // ascending, unsigned
};

// Reads the slot's pid.bin, making the folders first when it is missing.
// 0 when it can't be read or is too short for its count.
int LogPidRead(int slot, LogPidTable* tableOut);

// Hands out the class's next entry number for an object already logged:
// nextEntry grows by one. The number, or -1.
long LogPidNextEntry(int slot);

// Hands out the next entry number for a new object: its key goes in front
// of the first key not below it (or at the end), and nextEntry and
// objectCount grow by one. The number, or -1.
long LogPidInsertKey(int slot, uint32_t key);

// Takes a key out of the table; nextEntry stays. 0 when the key isn't there.
int LogPidRemoveKey(int slot, uint32_t key);

// Opens an object's .pix for reading and writing, making it with a row
// count of 0 when it is missing; the stream stands on the first row. Null
// for a mask without a class folder or a file that can't be opened, made or
// read.
FilePtr LogOpenRows(uint32_t classMask, uint32_t id, bool userFlag, uint32_t* rowCountOut);

// Reads the row at the stream's position: its entry number, or -1.
long LogReadRow(FILE* rows, ObjectLogRow* rowOut);

// Writes the parts of a new entry: version, moment, images, the object's
// class, mask and PID, and the remark as strncpy puts it into its 128
// bytes (a remark of 128 characters or more keeps no NUL there). The
// reserved bytes and the note length stay as they were. 0 for a null entry.
int LogFillEntry(LogEntry* entry, const Site& site, const LocationTail& tail, const Instant& instant,
                 const ObserverRecord& observer, const InstrumentRecord& instrument,
                 const ObjectRecord& object, const char* remark);

// For a class of the user's stores, sets marks[id] = 1 for every logged
// user object of that class whose id is below `size`. 0 for another class
// or when a table can't be read.
int LogMarkUserKeys(int objectClass, uint8_t* marks, size_t size);

// The keys of every class with a folder, read from their pid.bin files.
struct LogPresence {
    std::vector<uint32_t> keys[kLogClassFolders];
};

// 0 when any table can't be read; the table is then left empty.
int LogPresenceLoad(LogPresence* table);
int LogPresenceFree(LogPresence* table);
// Only the table of one class, the others left empty: all that deciding
// on one object needs, since a reference comet or minor planet and the
// user's own share their class's folder. 0 when it can't be read.
int LogPresenceLoadSlot(LogPresence* table, int slot);
// Whether the object's key is in its class's table.
int LogObjectLogged(const LogPresence& table, const ObjectRecord& object);

// The row of the exchange file `name` in registry.bin, with its stamp when
// asked for; -1 for none or no registry.
long LogRegistryFind(const char* name, uint8_t* stampOut /* 8 bytes or null */);
// Sets the stamp of the name's row, or adds a row. The registry is made
// with a count of 0 when missing.
int LogRegistryPut(const char* name, const uint8_t* stamp /* 8 bytes */);

// The night an observation belongs to: the local date of its moment twelve
// hours earlier, so that 02:00 local on 5 March falls in the night of
// 4 March.
struct LogNight {
    int year = 0, month = 0, day = 0;
};
LogNight LogNightOf(double jd, const Site& site);
// year * 10000 + month * 100 + day, the form a date range compares.
long LogNightNumber(const LogNight& night);

// The moment of `jd` at the site with all three stages filled.
Instant LogInstantOf(double jd, const Site& site);

// A fresh record of the entry's object (its class, PID and mask) placed at
// the entry's moment, which also gives its constellation. 0 when the object
// can't be read or placed.
int LogPlaceEntryObject(const LogEntry& entry, ObjectRecord* objectOut);

// 1 when the object is logged. A reference comet or minor planet that isn't
// may be the same body as a logged object of the user's stores: found by
// its designation, that object replaces the record and the answer is 1.
// 0 not logged; -1 for a reference comet with no designation to search by.
int LogResolveObject(const LogPresence& table, const Site& site, const Instant& instant,
                     ObjectRecord* object);

// Adds the entry (made by LogFillEntry) with its note (null for none): its
// object is resolved, the entry may so move to a user object, and its
// class and PID change with it; noteLength is set. The new entry's number;
// the older entry's number, with nothing changed, when the entry repeats
// it (same observer, location and instrument, a minute or less apart, the
// same note); -1 on failure, with what was written before left.
long LogAddEntry(LogEntry* entry, const char* note);

// Reads entry `entryNumber` of the class of `classMask`, with its note when
// asked for. 1, or 0 when the file can't be opened or read.
int LogReadEntry(uint32_t classMask, uint32_t entryNumber, LogEntry* entryOut, std::string* noteOut);

// Writes the entry and note over the entry file (which keeps its length)
// and moves the object in the indexes whose key changed. 1; -1 when the
// write succeeded and an index moved; 0 on failure.
int LogReplaceEntry(uint32_t classMask, uint32_t entryNumber, const LogEntry& entry, const char* note);

// The object put into the index file of a key (or taken out of it, the file
// then going when its member drops empty files), the file opened and
// closed for it. 1 or 0.
int IndexPutByKey(const IndexKey& key, const ObjectRecord& object, uint32_t entryNumber);
int IndexRemoveByKey(const IndexKey& key, const ObjectRecord& object);

// The object of the entry moved from the index of the old key to that of
// the entry's key. 1 or 0.
int IndexMoveNight(const LogEntry& entry, uint32_t entryNumber, double oldJd);
int IndexMoveCons(const LogEntry& entry, uint32_t entryNumber, double oldJd);
int IndexMoveObserver(const LogEntry& entry, uint32_t entryNumber, const char* oldName);
int IndexMoveInstrument(const LogEntry& entry, uint32_t entryNumber, const char* oldName);
int IndexMoveLoc(const LogEntry& entry, uint32_t entryNumber, const char* oldName);

// The stages of a deletion; a failure at one leaves the earlier ones done.
inline constexpr int kLogDeleteRows = -1;
inline constexpr int kLogDeletePid = -2;
inline constexpr int kLogDeleteNight = -3;
inline constexpr int kLogDeleteCons = -4;
inline constexpr int kLogDeleteInstrument = -5;
inline constexpr int kLogDeleteObserver = -6;
inline constexpr int kLogDeleteLoc = -7;
inline constexpr int kLogDeleteClass = -8;
inline constexpr int kLogDeleteRepair = -9;

// Deletes entry `entryNumber`, read beforehand into `entry`: its file, its
// row, and the object's index rows under its keys, which the object's
// remaining rows then put back. 1; 0 when the file can't be deleted or the
// object isn't logged; else the stage code.
int LogDeleteEntry(const LogEntry& entry, uint32_t entryNumber);

// Deletes every entry of the object. 1, 0, or the stage code of the
// deletion that failed.
int LogDeleteObject(const ObjectRecord& object);
