// The object block: what an exchange file carries after the class and id
// of one of the user's own objects, so that the importing side can make the
// object again in its own store, where it may get another PID. Objects of
// the other classes have no block.
//
//   12 supplemental star            one 47-byte star record
//   13 user comet                   u16 count, then count 130-byte rows
//   14 user minor planet            u32 count, then count 116-byte rows
//   18 supplemental deep-sky object one 54-byte record
//
// The list, log and attachment exchange files all write it the same way.
#pragma once

#include <cstdint>
#include <cstdio>

// Writes the block of the object (class, PID) from the user's stores at the
// stream's position; nothing for a class that has none. An object that is
// no longer in its store (or a store that isn't there) gets an empty block,
// a zero record or a count of 0, so that the file stays whole. 1, or 0 when
// a store can't be read or the write fails.
int ObjectBlockWrite(FILE* out, int objectClass, uint32_t pid);

// What the reading side did with the stores, for the tidying at its end.
struct ObjectBlockImport {
    bool minorPlanetsAdded = false;  // the minor-planet store wants sorting
};

// Reads the block of an object of `objectClass` and makes the object again
// through its store's add rule: a star or deep-sky object of the same name
// is written over and keeps its PID, a comet or minor planet already known
// keeps its own. `pid` becomes the PID the store gives; an empty block
// leaves it as it is. 1, or 0 on a short read or a store that fails.
int ObjectBlockRead(FILE* in, int objectClass, uint32_t* pid, ObjectBlockImport* import);

// Steps over the block of an object of `objectClass` without reading it
// into a store, as a reader of a log entry file does on its way to the
// note. 1, or 0 on a short read.
int ObjectBlockSkip(FILE* in, int objectClass);

// Sorts the minor-planet store when rows were added to it, as its own text
// import does at its end. 1, or 0 when the sort failed.
int ObjectBlockFinish(ObjectBlockImport* import);
