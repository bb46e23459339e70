// The run heads of the two-level catalogue indexes: a head at a place
// computed from the key gives the offset of a run of entries and how many
// it holds. `mcg`, `q` and `conrect` keep a u8 count (5-byte heads);
// `esob`, `pk`, `PNG` and `oc_cross` a u16 count (6-byte heads).
#pragma once

#include <cstdint>
#include <cstdio>

#include "base/record_layout.h"

struct ShortRunHead {
    uint32_t offset = 0;
    uint8_t count = 0;
};

struct ShortRunLayout {
    static constexpr size_t kSize = 5;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U32(0, r.offset);
        io.U8(4, r.count);
    }
};
static_assert(LayoutIsPacked<ShortRunLayout, ShortRunHead>());

struct RunHead {
    uint32_t offset = 0;
    uint16_t count = 0;
};

struct RunLayout {
    static constexpr size_t kSize = 6;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U32(0, r.offset);
        io.U16(4, r.count);
    }
};
static_assert(LayoutIsPacked<RunLayout, RunHead>());

// The head of index row `row` (at row x 5 or row x 6); 1 on success.
int readShortRunHead(FILE* file, long row, ShortRunHead* out);
int readRunHead(FILE* file, long row, RunHead* out);
