// The version 1.x instrument file, <legacyRoot>/instr.bin: u16 nextId (not
// used), u16 count, then 1705-byte records. A legacy optical system holds at
// most 12 eyepiece slots, each laid out as in the version 2 store.
#pragma once

#include <string>

#include "base/file_utils.h"
#include "stores/instrument_records.h"
#include "base/record_layout.h"

inline constexpr int kLegacyMaxEyepieces = 12;

struct LegacySystem {
    double aperture = 0;     // millimetres
    double focalLength = 0;  // millimetres
    double focalRatio = 0;
    uint8_t imageFlipA = 0;
    uint8_t imageFlipB = 0;
    char systemName[32] = {};
    uint8_t eyepieceCount = 0;  // at most 12
    EyepieceSlot eyepieces[kLegacyMaxEyepieces] = {};
    double limitingMagnitude = 0;
    double highestPower = 0;
    double dawesLimit = 0;
    uint8_t currentEyepiece = 0;
    double magnification = 0;
    double trueField = 0;  // radians
    uint8_t systemSpare = 0;
};

struct LegacySystemLayout {
    static constexpr size_t kSize = 821;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.F64(0, r.aperture);
        io.F64(8, r.focalLength);
        io.F64(16, r.focalRatio);
        io.U8(24, r.imageFlipA);
        io.U8(25, r.imageFlipB);
        io.Text(26, r.systemName);
        io.U8(58, r.eyepieceCount);
        for (size_t i = 0; i < kLegacyMaxEyepieces; ++i)
            NestedFields<EyepieceSlotLayout>(io, 59 + EyepieceSlotLayout::kSize * i, r.eyepieces[i]);
        io.F64(779, r.limitingMagnitude);
        io.F64(787, r.highestPower);
        io.F64(795, r.dawesLimit);
        io.U8(803, r.currentEyepiece);
        io.F64(804, r.magnification);
        io.F64(812, r.trueField);
        io.U8(820, r.systemSpare);
    }
};
static_assert(LayoutIsPacked<LegacySystemLayout, LegacySystem>());

struct LegacyInstrument {
    uint16_t id = 0;
    uint8_t systemCount = 0;
    uint8_t spare = 0;
    uint8_t kind = 0;  // 0 telescope, anything else binoculars
    uint8_t finderFlag = 0;
    float finderCircles[6] = {};
    uint8_t defaultEyepiece = 0;
    LegacySystem systems[2];  // main system, finder system
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
        NestedFields<LegacySystemLayout>(io, 31, r.systems[0]);
        NestedFields<LegacySystemLayout>(io, 852, r.systems[1]);
        io.Text(1673, r.name);
    }
};
static_assert(LayoutIsPacked<LegacyInstrumentLayout, LegacyInstrument>());

// <legacyRoot>/instr.bin
std::string LegacyInstrumentsPath(const std::string& legacyRoot);

// Opens the file and reads the two header words; null on failure.
FilePtr OpenLegacyInstruments(const std::string& legacyRoot, int* countOut);

// Seeks to record `index` and reads it; 0 on any failure.
int ReadLegacyInstrument(FILE* stream, LegacyInstrument* recordOut, int index);
