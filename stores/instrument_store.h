// Telescopes and binoculars, user/instr.bin: u16 nextId (the last id given),
// u16 count, then 8750-byte records. The store is never made by opening:
// InstrumentStoreCreate makes it.
#pragma once

#include <cstdio>
#include <map>
#include <string>
#include <utility>

#include "base/file_utils.h"
#include "base/store_damage.h"
#include "stores/instrument_records.h"

inline constexpr const char* kInstrumentStorePath = "user/instr.bin";
inline constexpr const char* kInstrumentBackupPath = "user/instr.bak";

// A new empty store (nextId 0, count 0).
int InstrumentStoreCreate();

// Opens an existing store for update and reads its header; null when the
// file is missing or damaged (`damageOut`, when given, tells the damage).
FilePtr InstrumentStoreOpen(int* countOut, StoreDamage* damageOut = nullptr);

// The count in the header of an open store.
int InstrumentCount(FILE* stream, int* countOut);

int InstrumentRead(FILE* stream, int index, InstrumentRecord* recordOut);
int InstrumentWrite(FILE* stream, const InstrumentRecord& record, int index);

// Raises nextId and count and writes the header first, then the record with
// the new id at the end: a failed record write leaves the count raised, and
// the store damaged, so that no later add puts a record behind the gap.
// The record given gets its new id.
int InstrumentAdd(FILE* stream, InstrumentRecord* record);

// Moves all later records down one place in one block and lowers the count;
// nextId stays, so ids are never given twice.
int InstrumentDelete(FILE* stream, int index);

int InstrumentFindById(FILE* stream, InstrumentRecord* recordOut, int id);

// Exact compare of the given record's name over `count` records; on a match
// the stored record is copied out and its index given.
int InstrumentFindByName(FILE* stream, InstrumentRecord* recordInOut, int count, int* indexOut);

// The records InstrumentFindByName has found in one job that doesn't change
// the store: a name met again is answered without searching the records
// once more. Names not found are searched every time.
struct InstrumentNameMemo {
    std::map<std::string, std::pair<InstrumentRecord, int>> found;
};
int InstrumentFindByNameMemo(FILE* stream, InstrumentRecord* recordInOut, int count, int* indexOut,
                             InstrumentNameMemo* memo);

// Swaps the record with the nearest one above (direction -1) or below (+1)
// of the same kind. `indexOut` gives the record's new place.
int InstrumentMove(FILE* stream, int index, int count, int direction, int* indexOut);

int InstrumentBackup();
int InstrumentRestore();
