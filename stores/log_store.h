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
// Whether the object's key is in its class's table.
int LogObjectLogged(const LogPresence& table, const ObjectRecord& object);

// The row of the exchange file `name` in registry.bin, with its stamp when
// asked for; -1 for none or no registry.
long LogRegistryFind(const char* name, uint8_t* stampOut /* 8 bytes or null */);
// Sets the stamp of the name's row, or adds a row. The registry is made
// with a count of 0 when missing.
int LogRegistryPut(const char* name, const uint8_t* stamp /* 8 bytes */);
