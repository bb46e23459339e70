// `tycho`: from a Tycho designation (GSC region, number, component) to the
// star. The file begins with one 8-byte entry per GSC region (offset and
// count of its run); a run holds 5-byte entries sorted by number, then
// component.
#pragma once

#include <cstdint>
#include <cstdio>

#include "base/file_utils.h"
#include "base/record_layout.h"

inline constexpr int kTychoRegions = 9537;

struct TychoRegionEntry {
    uint32_t offset = 0;
    uint32_t count = 0;
};

struct TychoRegionLayout {
    static constexpr size_t kSize = 8;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U32(0, r.offset);
        io.U32(4, r.count);
    }
};
static_assert(LayoutIsPacked<TychoRegionLayout, TychoRegionEntry>());

struct TychoRunEntry {
    uint32_t star = 0;
    uint16_t numberLess1 = 0;     // 14 bits: GSC number - 1
    uint8_t componentLess1 = 0;   // 2 bits: component - 1
};

struct TychoRunLayout {
    static constexpr size_t kSize = 5;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U24(0, r.star);
        io.Bits16(3, 0, 14, r.numberLess1);
        io.Bits16(3, 14, 2, r.componentLess1);
    }
};
static_assert(LayoutIsPacked<TychoRunLayout, TychoRunEntry>());

FilePtr openTycho();

// The star of a Tycho designation; 0 when not found or the region is out of
// 1 to 9537.
long lookupTycho(FILE* file, int region, int number, int component);
