// Whether the count at the head of a store can be true: a count that
// promises more records than the file holds, or one below 0, marks a damaged
// store, which must not be added to (an add would land far past the end and
// leave blank records behind). Rows past the count are stale and legal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>

enum class StoreDamage {
    kNone,
    kCountOutOfRange,
    kCountBeyondFile,
};

// The reason in the words of the log and the folder check.
const char* StoreDamageText(StoreDamage damage);

// Size in bytes of the file behind an open stream, whose position is kept;
// -1 when it cannot be told.
int64_t StreamSize(FILE* stream);

// Tests `count` records of `recordSize` bytes behind a header of
// `headerSize` bytes against a file of `fileSize` bytes.
StoreDamage CheckRecordCount(int64_t fileSize, long headerSize, size_t recordSize, long count);

// The same for the file behind an open stream; a size that cannot be told
// passes.
StoreDamage CheckStreamCount(FILE* stream, long headerSize, size_t recordSize, long count);
