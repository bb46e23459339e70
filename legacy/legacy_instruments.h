// The version 1.x instrument file, <legacyRoot>/instr.bin: u16 nextId (not
// used), u16 count, then 1705-byte records.
#pragma once

#include <string>

#include "shell/file_utils.h"
#include "stores/record_layout.h"

inline constexpr size_t kLegacySystemSize = 821;

struct LegacyInstrument {
    uint16_t id = 0;
    uint8_t systemCount = 0;
    uint8_t spare = 0;
    uint8_t kind = 0;  // 0 telescope, anything else binoculars
    uint8_t finderFlag = 0;
    float finderCircles[6] = {};
    uint8_t defaultEyepiece = 0;
    uint8_t systems[2][kLegacySystemSize] = {};  // main system, finder system
    char name[32] = {};
};

struct LegacyInstrumentLayout {
    static constexpr size_t kSize = 1705;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U16(0, r.id);
        io.U8(2, r.systemCount);
        io.U8(3, r.spare);
        io.U8(4, r.kind);
        io.U8(5, r.finderFlag);
        for (size_t i = 0; i < 6; ++i) io.F32(6 + 4 * i, r.finderCircles[i]);
        io.U8(30, r.defaultEyepiece);
        io.Raw(31, r.systems[0]);
        io.Raw(852, r.systems[1]);
        io.Text(1673, r.name);
    }
};
static_assert(LayoutIsPacked<LegacyInstrumentLayout, LegacyInstrument>());

// Opens the file and reads the two header words; null on failure.
FilePtr OpenLegacyInstruments(const std::string& legacyRoot, int* countOut);

// Seeks to record `index` and reads it; 0 on any failure.
int ReadLegacyInstrument(FILE* stream, LegacyInstrument* recordOut, int index);
