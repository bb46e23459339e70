// The instrument records of user/instr.bin and the eyepiece pool: a
// telescope or binoculars holds up to two optical systems (main and finder),
// each with up to 70 eyepiece slots.
#pragma once

#include <cstdint>

#include "base/record_layout.h"

inline constexpr int kMaxEyepieceSlots = 70;

struct EyepieceSlot {
    double focalLength = 0;    // millimetres
    double apparentField = 0;  // radians (the pool keeps degrees)
    double barlowFactor = 0;   // 1.0 when none
    uint8_t mirrorDiagonal = 0;
    uint8_t slotSpare = 0;
    uint16_t poolId = 0;
    char name[32] = {};
};

struct EyepieceSlotLayout {
    static constexpr size_t kSize = 60;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.F64(0, r.focalLength);
        io.F64(8, r.apparentField);
        io.F64(16, r.barlowFactor);
        io.U8(24, r.mirrorDiagonal);
        io.U8(25, r.slotSpare);
        io.U16(26, r.poolId);
        io.Text(28, r.name);
    }
};
static_assert(LayoutIsPacked<EyepieceSlotLayout, EyepieceSlot>());

struct OpticalSystem {
    uint8_t opticsType = 0;  // 0 eye, 1 refractor, 2 reflector, 3 SCT, 10 binoculars
    double aperture = 0;     // millimetres
    double focalLength = 0;  // millimetres, 0 when unknown
    double focalRatio = 0;   // 0 when unknown
    uint8_t imageFlipA = 0;
    uint8_t imageFlipB = 0;
    double condition = 0;  // optics cleanness, 0 very clean to 1 filthy
    char systemName[65] = {};
    uint8_t eyepieceCount = 0;
    EyepieceSlot eyepieces[kMaxEyepieceSlots] = {};
    double limitingMagnitude = 0;  // derived
    double highestPower = 0;       // derived
    double dawesLimit = 0;         // derived, arc seconds
    uint8_t currentEyepiece = 0;
    double magnification = 0;
    double trueField = 0;  // radians
    uint8_t systemSpare = 0;
};

struct OpticalSystemLayout {
    static constexpr size_t kSize = 4343;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U8(0, r.opticsType);
        io.F64(1, r.aperture);
        io.F64(9, r.focalLength);
        io.F64(17, r.focalRatio);
        io.U8(25, r.imageFlipA);
        io.U8(26, r.imageFlipB);
        io.F64(27, r.condition);
        io.Text(35, r.systemName);
        io.U8(100, r.eyepieceCount);
        for (size_t i = 0; i < kMaxEyepieceSlots; ++i)
            NestedFields<EyepieceSlotLayout>(io, 101 + EyepieceSlotLayout::kSize * i, r.eyepieces[i]);
        io.F64(4301, r.limitingMagnitude);
        io.F64(4309, r.highestPower);
        io.F64(4317, r.dawesLimit);
        io.U8(4325, r.currentEyepiece);
        io.F64(4326, r.magnification);
        io.F64(4334, r.trueField);
        io.U8(4342, r.systemSpare);
    }
};
static_assert(LayoutIsPacked<OpticalSystemLayout, OpticalSystem>());

struct InstrumentRecord {
    uint16_t id = 0;           // given by the store, never reused
    uint8_t systemCount = 0;   // 2 with a finder, else 1
    uint8_t reserved3 = 0;
    uint8_t instrumentKind = 0;  // 0 telescope, 1 binoculars, 2 naked eye
    uint8_t finderFlag = 0;
    float finderCircles[6] = {};  // radians
    uint8_t defaultEyepiece = 0;  // 0 and 255 both mean none chosen
    OpticalSystem mainSystem;
    OpticalSystem finderSystem;
    uint8_t mounting = 0;  // 0 "Alt/Azimuth", 1 "Equatorial"
    char name[32] = {};
};

// Where the name stands in the record: a search by name reads only this.
inline constexpr long kInstrumentNameOffset = 8718;

struct InstrumentRecordLayout {
    static constexpr size_t kSize = 8750;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U16(0, r.id);
        io.U8(2, r.systemCount);
        io.U8(3, r.reserved3);
        io.U8(4, r.instrumentKind);
        io.U8(5, r.finderFlag);
        for (size_t i = 0; i < 6; ++i) io.F32(6 + 4 * i, r.finderCircles[i]);
        io.U8(30, r.defaultEyepiece);
        NestedFields<OpticalSystemLayout>(io, 31, r.mainSystem);
        NestedFields<OpticalSystemLayout>(io, 4374, r.finderSystem);
        io.U8(8717, r.mounting);
        io.Text(kInstrumentNameOffset, r.name);
    }
};
static_assert(LayoutIsPacked<InstrumentRecordLayout, InstrumentRecord>());

struct EyepieceRecord {
    char name[33] = {};
    float focalLength = 0;    // millimetres
    float apparentField = 0;  // degrees
    uint16_t id = 0;          // pool id, never reused
};

struct EyepieceRecordLayout {
    static constexpr size_t kSize = 43;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.Text(0, r.name);
        io.F32(33, r.focalLength);
        io.F32(37, r.apparentField);
        io.U16(41, r.id);
    }
};
static_assert(LayoutIsPacked<EyepieceRecordLayout, EyepieceRecord>());
