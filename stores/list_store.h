// The user's observing lists, under user/lists: one index file obs.idx for
// every list, and per list an item file obs.NNN and a description desc.NNN,
// NNN being the list's slot. A list's slot is its identity for as long as it
// lives; a freed slot is taken again, lowest first, by the next new list.
//
// obs.idx: i16 slotCount, then 58-byte rows, live or free (itemCount -1).
// obs.NNN: a 44-byte header keyed to the last refresh of the computed
// columns, then itemCount object records of 224 bytes in list order. Rows
// past the count may stand there: files are never truncated.
// desc.NNN: u32 length, then the text and its NUL.
//
// Every operation answers 1 or 0 unless told otherwise and reports nothing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

#include "base/file_utils.h"
#include "base/record_layout.h"
#include "catalog/object_record.h"

inline constexpr const char* kListFolder = "user/lists";

inline constexpr size_t kListNameSize = 48;
// A name keeps 47 characters when the list is made, 45 when it is renamed.
// Lists made by renaming are two shorter: existing folders hold such names.
inline constexpr size_t kListNameAtCreation = 47;
inline constexpr size_t kListNameAtRename = 45;
inline constexpr int kListMaxItems = 32767;
inline constexpr int16_t kListFreeSlot = -1;
inline constexpr long kListIndexHead = 2;

// One row of obs.idx.
struct ListIndexRow {
    char name[kListNameSize] = {};
    int16_t itemCount = 0;        // -1 for a free slot
    uint8_t stamp[8] = {};        // file time of the exchange file the list came from; 0 for none
};

struct ListIndexRowLayout {
    static constexpr size_t kSize = 58;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.Text(0, r.name);
        io.I16(48, r.itemCount);
        io.Raw(50, r.stamp);
    }
};
static_assert(LayoutIsPacked<ListIndexRowLayout, ListIndexRow>());

// The head of an item file: the instant and site the rows' computed values
// were worked out for. While `stale` is 1 the other values mean nothing and
// are written as 0.
struct ListItemHeader {
    uint16_t reserved = 0;
    double tDyn = 0;
    double longitude = 0;
    double latitude = 0;
    double height = 0;
    double zoneHours = 0;
    uint8_t dstMode = 0;
    uint8_t stale = 1;
};

struct ListItemHeaderLayout {
    static constexpr size_t kSize = 44;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U16(0, r.reserved);
        io.F64(2, r.tDyn);
        io.F64(10, r.longitude);
        io.F64(18, r.latitude);
        io.F64(26, r.height);
        io.F64(34, r.zoneHours);
        io.U8(42, r.dstMode);
        io.U8(43, r.stale);
    }
};
static_assert(LayoutIsPacked<ListItemHeaderLayout, ListItemHeader>());

inline constexpr long kListItemHead = static_cast<long>(ListItemHeaderLayout::kSize);
inline constexpr long kListItemSize = static_cast<long>(ObjectRecordLayout::kSize);

// In a list, the record's `sizeUnit` byte holds the row's flags, and the
// top bit of `componentCode` says the object has log entries; its low 7
// bits are the component letter index + 1.
inline constexpr uint8_t kListTicked = 1;
inline constexpr uint8_t kListRedo = 2;
inline constexpr uint8_t kListLogged = 0x80;
// `filterPassed`: 0 failed the filter, 255 takes no part, others passed.
inline constexpr uint8_t kListNotWalked = 255;

std::string ListIndexPath();           // "user/lists/obs.idx"
std::string ListItemPath(int slot);    // "user/lists/obs.%03d"
std::string ListDescriptionPath(int slot);  // "user/lists/desc.%03d"

// Makes user/lists when it is missing and writes an empty obs.idx. Without
// `keepFiles` the item file of every live row of the old index goes first.
int ListStoreInit(bool keepFiles);

// Opens obs.idx "r+b", making an empty store when there is none, and reads
// the slot count; the stream stands on slot 0. Null when the file is too
// short for its count or cannot be opened or made.
FilePtr ListIndexOpen(int* slotCountOut);
int ListIndexRewind(FILE* index);

// From the current place, reads rows until a live one: its slot + 1, 0 at
// the end, -1 on a short read. The name, when asked for, is copied out.
int ListNextLive(FILE* index, int slotCount, char* nameOut /* kListNameSize or null */);

// The row of `slot`: its item count (-1 free), 0 when the seek fails, -1 on
// a short read.
int ListGetBySlot(FILE* index, int slot, char* nameOut /* kListNameSize or null */);

// The slot of the first row, live or free, whose name is `name` exactly
// (case counts); -1 for none or a failed read. The stamp when asked for.
int ListFindByName(const char* name, uint8_t* stampOut /* 8 bytes or null */);

// Takes the lowest free slot, or a new one at the end, for an empty list of
// that name (cut to 47 characters) and makes its item file. The slot; -1
// when the index can't be read or written; 2 when the row was written but
// the item file could not be made, an answer a caller can't tell from slot
// 2. Callers take only negative answers as failures.
int ListCreate(const char* name, const uint8_t* stamp /* 8 bytes or null */);

// Frees the slot's row (a freed last slot shortens the index by one) and
// deletes the item file. The description stays until the slot is used again.
int ListDelete(int slot);
int ListSetStamp(int slot, const uint8_t* stamp /* 8 bytes */);
// The name is cut to 45 characters.
int ListRename(int slot, const char* name);

// Opens the item file of a live slot "r+b" with its count; null for a slot
// out of range, a free slot or a file that won't open.
FilePtr ListOpenItems(int slot, int* itemCountOut);
// Closes the item file, then writes the count into the slot's row: the
// commit of every change made through an open item file.
int ListCloseItems(FilePtr items, int slot, int itemCount);
int ListSeekItem(FILE* items, int index);
int ListSeekFirst(FILE* items);

// Writes the record at the current place with its tick cleared (in the
// caller's record too) and counts it; refused at 32767 items.
int ListAppendItem(FILE* items, ObjectRecord* record, int* itemCount);
int ListReadItem(FILE* items, int index, int count, ObjectRecord* out);
int ListToggleTick(FILE* items, int index);
int ListSetTick(FILE* items, int index, bool state);
int ListSetAllTicks(FILE* items, int count, bool state);
// Only the rows that passed the filter (`filterPassed` 1 to 254).
int ListSetPassedTicks(FILE* items, int count, bool state);
bool ListIsTicked(const ObjectRecord& record);
int ListSetLogged(FILE* items, int index, bool state);

// Close up the rows behind; the count falls, the file keeps its length.
int ListRemoveItem(FILE* items, int index, int* itemCount);
int ListRemoveTicked(FILE* items, int* itemCount);

// Append a copy (tick cleared) to the list in `targetSlot`, committing it
// there; a move then removes the row here.
int ListCopyItem(FILE* items, int index, int* itemCount, int targetSlot);
int ListMoveItem(FILE* items, int index, int* itemCount, int targetSlot);
int ListCopyTicked(FILE* items, int* itemCount, int targetSlot);
int ListMoveTicked(FILE* items, int* itemCount, int targetSlot);

// 1 with the text; 0 with an empty text when the file is missing or short.
int ListReadDescription(int slot, std::string* textOut);
int ListWriteDescription(int slot, const char* text);

// Sets marks[pid] = 1 for every item of class `objectClass` in any list
// whose PID is below `size`, so that a user object a list still names is
// kept. 1, or 0 when the index can't be read.
int ListMarkClassMembers(int objectClass, uint8_t* marks, size_t size);

// The class of a row of the list filter; an index above 17 comes back as it is.
int ListFilterClass(int index);
