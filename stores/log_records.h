// The records and names of the observation log under user/log.
//
// Per class folder:  pid.bin          u32 nextEntry, u32 objectCount, then
//                                     objectCount u32 log keys, ascending
//                    NNNNNNNNN.pix    u32 rowCount, then 9098-byte rows, one
//                    (NNNNNNNNNs.pix  per entry of the object, in order of
//                     for a user      adding
//                     object)
//                    NNNNNNNN.bin     one entry: the 9124-byte LogEntry, the
//                                     object block of a user object, the note
// user/log/registry.bin               u32 count, then 46-byte rows of the
//                                     exchange files imported into the log
//
// An object is stored everywhere by its log key: its PID, with bit 30 set
// for an object of the user's stores, so that a reference object and a
// user object of equal PID stay apart.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "astro/instant_image.h"
#include "astro/site.h"
#include "base/record_layout.h"
#include "catalog/object_record.h"
#include "stores/instrument_records.h"
#include "stores/location_store.h"
#include "stores/observer_store.h"

inline constexpr const char* kLogFolder = "user/log";
inline constexpr const char* kLogRegistryPath = "user/log/registry.bin";

// Fourteen class slots; the first thirteen have folders. Slot 13 has a name
// and a mask but no folder and no pid.bin, so an object of it can't be
// logged: the folder-making and every walk over classes stop at 13.
inline constexpr int kLogClassSlots = 14;
inline constexpr int kLogClassFolders = 13;

// The index folders under user/log, in their table order.
inline constexpr int kLogIndexFolderCount = 6;
extern const char* const kLogIndexFolders[kLogIndexFolderCount];

// The slot of a display-class mask, -1 when no slot fits. Any of the star
// bits 16, 32, 64 and 128 gives the stars' slot.
int ClassSlotOf(uint32_t classMask);
// The mask of a slot (16 for the stars), 0 for a slot out of range.
uint32_t ClassMaskOfSlot(int slot);
// The folder name of slots 0 to 13; null for others.
const char* ClassNameAt(int slot);
// The names of the thirteen folders in turn from a static cursor, back to
// the first after the last. Not for two callers at once.
const char* ClassNameNext();

// Bit 30 of a log key marks an object of the user's stores.
inline constexpr uint32_t kLogUserKeyBit = 0x40000000u;

uint32_t logKey(int objectClass, uint32_t id);
uint32_t logKey(const ObjectRecord& record);

struct LogKeyParts {
    uint32_t id = 0;  // the key without bit 30
    bool user = false;
};
LogKeyParts LogKeySplit(uint32_t key);

// "user/log/<folder>" of a slot with a folder; empty otherwise.
std::string LogClassFolderPath(int slot);
// "user/log/<folder>/pid.bin" of a slot with a folder; empty otherwise.
std::string LogPidPath(int slot);
// "user/log/<folder>/NNNNNNNNN.pix", with an "s" before the dot for a user
// object; nine digits of the id without its flag bit. Empty for a slot
// without a folder.
std::string LogRowsPath(int slot, uint32_t id, bool userFlag);
// "user/log/<folder>/NNNNNNNN.bin" of an entry number; empty for a slot
// without a folder.
std::string LogEntryPath(int slot, uint32_t entryNumber);
// "user/log/<index folder>" of the six index folders; empty out of range.
std::string LogIndexFolderPath(int index);

// The head of pid.bin. The keys follow.
struct LogPidHead {
    uint32_t nextEntry = 0;    // number of the next entry of the class; never lowered
    uint32_t objectCount = 0;  // keys that follow; rows past it are stale
};

struct LogPidHeadLayout {
    static constexpr size_t kSize = 8;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U32(0, r.nextEntry);
        io.U32(4, r.objectCount);
    }
};
static_assert(LayoutIsPacked<LogPidHeadLayout, LogPidHead>());

inline constexpr uint8_t kLogEntryMajor = 2;
inline constexpr uint8_t kLogEntryMinor = 0;
inline constexpr uint8_t kLogEntryLetter = 'f';
inline constexpr size_t kLogRemarkSize = 128;

// One entry, the head of its .bin file. The note text follows it on disk.
struct LogEntry {
    uint16_t reserved0 = 0;  // never read
    uint8_t major = kLogEntryMajor;
    uint8_t minor = kLogEntryMinor;
    uint8_t letter = kLogEntryLetter;
    double jd = 0;  // UT of the observation
    Site site;      // the location's name is the site's name
    LocationTail locationTail;
    uint8_t objectClass = 0;
    uint32_t id = 0;  // PID, no flag bit
    uint32_t classMask = 0;  // selects the class folder
    ObserverRecord observer;
    InstrumentRecord instrument;
    char remark[kLogRemarkSize] = {};
    uint8_t reserved9119 = 0;
    uint32_t noteLength = 1;  // strlen(note) + 1; 1 for no note
};

struct LogEntryLayout {
    static constexpr size_t kSize = 9124;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U16(0, r.reserved0);
        io.U8(2, r.major);
        io.U8(3, r.minor);
        io.U8(4, r.letter);
        io.F64(5, r.jd);
        NestedFields<SiteLayout>(io, 13, r.site);
        NestedFields<LocationTailLayout>(io, 145, r.locationTail);
        io.U8(148, r.objectClass);
        io.U32(149, r.id);
        io.U32(153, r.classMask);
        NestedFields<ObserverRecordLayout>(io, 157, r.observer);
        NestedFields<InstrumentRecordLayout>(io, 241, r.instrument);
        io.Text(8991, r.remark);
        io.U8(9119, r.reserved9119);
        io.U32(9120, r.noteLength);
    }
};
static_assert(LayoutIsPacked<LogEntryLayout, LogEntry>());

// One row of an object's .pix: what a query needs of an entry, so that it
// need not open the entry file.
struct ObjectLogRow {
    uint32_t entryNumber = 0;
    uint8_t objectClass = 0;
    uint32_t id = 0;  // PID, no flag bit
    uint32_t classMask = 0;
    InstantImage instant;
    Site site;
    ObserverRecord observer;  // the name is its first field
    InstrumentRecord instrument;
    uint8_t constellation = 0;  // of the object at the entry's moment
};

struct ObjectLogRowLayout {
    static constexpr size_t kSize = 9098;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U32(0, r.entryNumber);
        io.U8(4, r.objectClass);
        io.U32(5, r.id);
        io.U32(9, r.classMask);
        NestedFields<InstantLayout>(io, 13, r.instant);
        NestedFields<SiteLayout>(io, 131, r.site);
        NestedFields<ObserverRecordLayout>(io, 263, r.observer);
        NestedFields<InstrumentRecordLayout>(io, 347, r.instrument);
        io.U8(9097, r.constellation);
    }
};
static_assert(LayoutIsPacked<ObjectLogRowLayout, ObjectLogRow>());

inline constexpr long kLogRowsHead = 4;

// One row of registry.bin. The name field is 38 bytes: a name of 38
// characters or more runs into the stamp and the stamp then writes over its
// end, so 37 characters are what a name can use.
inline constexpr size_t kLogRegistryNameSize = 38;

struct LogRegistryRow {
    char name[kLogRegistryNameSize] = {};
    uint8_t stamp[8] = {};  // file time of the export
};

struct LogRegistryRowLayout {
    static constexpr size_t kSize = 46;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.Text(0, r.name);
        io.Raw(38, r.stamp);
    }
};
static_assert(LayoutIsPacked<LogRegistryRowLayout, LogRegistryRow>());
