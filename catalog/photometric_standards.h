// The photometric standard files `landolt`, `ddo`, `geneva`, `ubvri` and
// `uvby`. Each record is a J2000 place and then i16 values in thousandths;
// as many values as the record size holds, and an odd byte left at the end
// is spare. The files carry no identity for the object layer: a caller
// reads them by row (from 1) only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "base/file_utils.h"
#include "base/record_layout.h"

inline constexpr int kMaxPhotometricValues = 27;

// One record of any of the five files, every field as its code.
struct PhotometricRecord {
    int32_t ra = 0;
    int32_t dec = 0;
    int16_t values[kMaxPhotometricValues] = {};
    uint8_t spare = 0;
};

// The layout of a file with records of `Size` bytes.
template <size_t Size>
struct PhotometricLayout {
    static constexpr size_t kSize = Size;
    static constexpr int kValues = static_cast<int>((Size - 8) / 2);
    static_assert(kValues <= kMaxPhotometricValues);
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.I32(0, r.ra);
        io.I32(4, r.dec);
        for (int i = 0; i < kValues; ++i) io.I16(8 + 2 * static_cast<size_t>(i), r.values[i]);
        if constexpr ((Size - 8) % 2 != 0) io.U8(Size - 1, r.spare);
    }
};

using LandoltLayout = PhotometricLayout<62>;  // 27 values
using DdoLayout = PhotometricLayout<27>;      // 9 values, 1 spare byte
using GenevaLayout = PhotometricLayout<40>;   // 16 values
using UbvriLayout = PhotometricLayout<23>;    // 7 values, 1 spare byte
using UvbyLayout = PhotometricLayout<23>;     // 7 values, 1 spare byte
static_assert(LayoutIsPacked<LandoltLayout, PhotometricRecord>());
static_assert(LayoutIsPacked<DdoLayout, PhotometricRecord>());
static_assert(LayoutIsPacked<GenevaLayout, PhotometricRecord>());
static_assert(LayoutIsPacked<UbvriLayout, PhotometricRecord>());

// One standard star as the readers hand it on.
struct PhotometricStandard {
    long row = 0;
    double ra = 0;  // radians, J2000
    double dec = 0;
    int valueCount = 0;
    double values[kMaxPhotometricValues] = {};  // 99.9 where the file has none
};

// A value in thousandths; anything below -30 stands for none and reads as
// 99.9.
double photometricValue(int16_t code);

FilePtr openLandolt();
FilePtr openDdo();
FilePtr openGeneva();
FilePtr openUbvri();
FilePtr openUvby();

// Record `row` (from 1) of the file; 1 on success, 0 for a row below 1 or a
// short read.
int readLandolt(FILE* file, long row, PhotometricStandard* out);
int readDdo(FILE* file, long row, PhotometricStandard* out);
int readGeneva(FILE* file, long row, PhotometricStandard* out);
int readUbvri(FILE* file, long row, PhotometricStandard* out);
int readUvby(FILE* file, long row, PhotometricStandard* out);
