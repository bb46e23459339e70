// The version 1.x observing lists: obs.idx names them, obs.%03d holds the
// objects of the list in index row %d.
//
// obs.idx: i16 listCount, then 35-byte rows of a 33-byte name and a u16
// object count, 65535 marking a free row.
// obs.%03d: 44 header bytes that nothing reads, then one 83-byte row per
// object, as many as the index row's object count.
#pragma once

#include <cstdint>
#include <string>

#include "base/file_utils.h"
#include "base/record_layout.h"

inline constexpr size_t kLegacyListRowSize = 35;
inline constexpr uint16_t kLegacyFreeListRow = 65535;
inline constexpr long kLegacyListHeaderSize = 44;
inline constexpr size_t kLegacyListObjectSize = 83;

struct LegacyListRow {
    char name[33] = {};
    uint16_t objectCount = 0;  // 65535 for a free row
};

struct LegacyListRowLayout {
    static constexpr size_t kSize = kLegacyListRowSize;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.Text(0, r.name);
        io.U16(33, r.objectCount);
    }
};
static_assert(LayoutIsPacked<LegacyListRowLayout, LegacyListRow>());

// One object of a list: its class and PID, and the byte that becomes the
// list row's flags. The other bytes are the old program's own business.
struct LegacyListObject {
    uint8_t lead[16] = {};
    uint8_t sizeUnit = 0;
    uint8_t middle[9] = {};
    uint32_t pid = 0;
    uint8_t objectClass = 0;  // the codes of ObjectClass
    uint8_t tail[52] = {};
};

struct LegacyListObjectLayout {
    static constexpr size_t kSize = kLegacyListObjectSize;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.Raw(0, r.lead);
        io.U8(16, r.sizeUnit);
        io.Raw(17, r.middle);
        io.U32(26, r.pid);
        io.U8(30, r.objectClass);
        io.Raw(31, r.tail);
    }
};
static_assert(LayoutIsPacked<LegacyListObjectLayout, LegacyListObject>());

// <legacyRoot>/obs.idx and <legacyRoot>/obs.%03d
std::string LegacyListIndexPath(const std::string& legacyRoot);
std::string LegacyListPath(const std::string& legacyRoot, int index);

FilePtr OpenLegacyListIndex(const std::string& legacyRoot, int* countOut);

// Back to the first row; 1 on success.
int RewindLegacyListIndex(FILE* stream);

// Reads the index row at the current place; the name always ends in a NUL.
// 1, or 0 on a short read.
int ReadLegacyListRow(FILE* stream, LegacyListRow* row);

// Reads rows from the current place until one is in use: its row number
// plus 1; 0 when the row number before a read is `limit` or beyond; -1 when
// a read fails.
int NextLegacyList(FILE* stream, int limit, char (&nameOut)[33]);

// Reads index row `index` and opens its object file on the first object
// row; null when the index is beyond the count or a step fails.
FilePtr OpenLegacyList(const std::string& legacyRoot, int index, int* countOut);
