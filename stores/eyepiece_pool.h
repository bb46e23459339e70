// The eyepieces the user owns, user/eyep.bin: u16 nextId (the last id
// given), u16 count, then 43-byte records. The pool is made on first use by
// copying the seed eyep.bin of the working folder. Every call opens and
// closes the file itself, so no caller may hold it open across a call.
#pragma once

#include <cstdio>

#include "base/file_utils.h"
#include "base/store_damage.h"
#include "stores/instrument_records.h"

inline constexpr const char* kEyepiecePoolPath = "user/eyep.bin";
inline constexpr const char* kEyepieceSeedPath = "eyep.bin";
inline constexpr const char* kEyepieceBackupPath = "eyep.bak";

// Makes `user` when missing, seeds the pool when missing, and opens it for
// update. Null when the pool cannot be opened (a missing seed, a failed
// seeding) or is damaged; `damageOut`, when given, tells the damage.
FilePtr EyepiecePoolOpen(StoreDamage* damageOut = nullptr);

// The pool's header from an open stream, which is left at the first record.
int EyepiecePoolReadHeader(FILE* stream, int* nextIdOut, int* countOut);

// The next record of an open stream.
int EyepiecePoolReadNext(FILE* stream, EyepieceRecord* recordOut);

// Each returns the eyepiece's id, 0 on failure. Outputs may be null; the
// name buffer holds 33 bytes.
int EyepieceRead(int index, char* nameOut, double* focalOut, double* fieldOut);
int EyepieceFindById(int id, char* nameOut, double* focalOut, double* fieldOut);

// Rewrites record `index`; the id stays, and a null name keeps the old one.
int EyepieceWrite(int index, const char* nameOrNull, double focal, double field);

// Appends an eyepiece with the next id; returns that id, 0 on failure.
int EyepieceAdd(const char* name, double focal, double field);

// Moves the later records down and lowers the count; nextId stays, so a
// deleted eyepiece's id lives on only in the instruments' slots.
int EyepieceDelete(int index);

// user/eyep.bin to and from eyep.bak in the working folder.
int EyepieceBackup();
int EyepieceRestore();
