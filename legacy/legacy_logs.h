// The observation logs of a version 1.x folder: per class slot 0 to 11 an
// index file of chains, and one file per entry.
//
//   log/class.%d     u32 count (logged only), u32 num, then num 8-byte
//                    rows: u32 flags (not used), i32 firstEntry
//   log/c%c/%08ld.bin  one entry: the 440-byte head below, then noteLength
//                    bytes of note with its own terminator. The letter is
//                    'A' + the slot.
//
// An entry's first field chains it to the next entry of the same row:
// above 0 goes on, below 0 ends the chain, 0 counts as a failed read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "astro/site.h"
#include "base/file_utils.h"
#include "base/record_layout.h"

inline constexpr int kLegacyLogSlots = 12;

// What an empty observer or instrument name is looked up and shown as.
inline constexpr const char* kBlankName = "(blank)";
// The instrument name that needs no store record.
inline constexpr const char* kNakedEyeName = "Naked Eye";

struct LegacyLogIndexHead {
    uint32_t count = 0;  // only written to the log
    uint32_t num = 0;    // rows that follow
};

struct LegacyLogIndexHeadLayout {
    static constexpr size_t kSize = 8;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U32(0, r.count);
        io.U32(4, r.num);
    }
};
static_assert(LayoutIsPacked<LegacyLogIndexHeadLayout, LegacyLogIndexHead>());

struct LegacyLogIndexRow {
    uint32_t flags = 0;  // not used
    int32_t firstEntry = 0;
};

struct LegacyLogIndexRowLayout {
    static constexpr size_t kSize = 8;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U32(0, r.flags);
        io.I32(4, r.firstEntry);
    }
};
static_assert(LayoutIsPacked<LegacyLogIndexRowLayout, LegacyLogIndexRow>());

inline constexpr size_t kLegacyLogObserverSize = 65;
inline constexpr size_t kLegacyLogInstrumentSize = 65;
inline constexpr size_t kLegacyLogConditionsSize = 81;

// The head of an entry file.
struct LegacyLogEntry {
    int32_t nextEntry = 0;
    double jd = 0;  // UT
    Site site;
    float ra = 0;   // radians
    float dec = 0;  // radians
    uint8_t unused152[8] = {};
    uint8_t sizeUnit = 0;
    uint8_t unused161[5] = {};
    float magnitude = 0;
    uint32_t pid = 0;         // the version 1.x PID
    uint8_t objectClass = 0;  // the codes of ObjectClass
    uint8_t unused175[52] = {};
    char observer[kLegacyLogObserverSize] = {};
    char instrument[kLegacyLogInstrumentSize] = {};
    char conditions[kLegacyLogConditionsSize] = {};
    uint16_t noteLength = 0;
};

struct LegacyLogEntryLayout {
    static constexpr size_t kSize = 440;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.I32(0, r.nextEntry);
        io.F64(4, r.jd);
        NestedFields<SiteLayout>(io, 12, r.site);
        io.F32(144, r.ra);
        io.F32(148, r.dec);
        io.Raw(152, r.unused152);
        io.U8(160, r.sizeUnit);
        io.Raw(161, r.unused161);
        io.F32(166, r.magnitude);
        io.U32(170, r.pid);
        io.U8(174, r.objectClass);
        io.Raw(175, r.unused175);
        io.Text(227, r.observer);
        io.Text(292, r.instrument);
        io.Text(357, r.conditions);
        io.U16(438, r.noteLength);
    }
};
static_assert(LayoutIsPacked<LegacyLogEntryLayout, LegacyLogEntry>());

// <legacyRoot>/log/class.%d and <legacyRoot>/log/c%c/%08ld.bin
std::string LegacyLogIndexPath(const std::string& legacyRoot, int slot);
std::string LegacyLogEntryPath(const std::string& legacyRoot, int slot, long number);

// Opens the slot's index file ("rb"); only a regular file opens.
FilePtr OpenLegacyLogIndex(const std::string& legacyRoot, int slot);
// The count and num at the head, each read on its own so that a caller can
// tell which one failed; then the place of the first row.
int ReadLegacyLogCount(FILE* index, uint32_t* count);
int ReadLegacyLogNum(FILE* index, uint32_t* num);
int SeekLegacyLogRows(FILE* index);
// The row at the stream's place; 1 or 0.
int ReadLegacyLogRow(FILE* index, LegacyLogIndexRow* row);

// Reads the entry `number` of the slot: its head, and the note (an empty
// string when it has none or can't be read). The name fields and the
// site's name always end in a NUL. The entry's nextEntry, or 0 when the file
// can't be opened or its head read (0 also when the file itself says 0).
long ReadLegacyLogEntry(const std::string& legacyRoot, int slot, long number, LegacyLogEntry* entryOut,
                        std::string* noteOut);

// Takes every tab, line feed and carriage return out of the name, in place.
void CleanObserverName(char* name);
