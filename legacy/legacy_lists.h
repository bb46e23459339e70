// The version 1.x observing lists: obs.idx names them, obs.%03d holds the
// objects of the list in index row %d.
//
// obs.idx: i16 listCount, then 35-byte rows of a 33-byte name and a u16
// object count, 65535 marking a free row.
#pragma once

#include <string>

#include "base/file_utils.h"

inline constexpr size_t kLegacyListRowSize = 35;
inline constexpr uint16_t kLegacyFreeListRow = 65535;
inline constexpr long kLegacyListHeaderSize = 44;
inline constexpr size_t kLegacyListObjectSize = 83;

FilePtr OpenLegacyListIndex(const std::string& legacyRoot, int* countOut);

// Back to the first row; 1 on success.
int RewindLegacyListIndex(FILE* stream);

// Reads rows from the current place until one is in use: its row number
// plus 1; 0 when the row number before a read is `limit` or beyond; -1 when
// a read fails.
int NextLegacyList(FILE* stream, int limit, char (&nameOut)[33]);

// Reads index row `index` and opens its object file on the first object
// row; null when the index is beyond the count or a step fails.
FilePtr OpenLegacyList(const std::string& legacyRoot, int index, int* countOut);
