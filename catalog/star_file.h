// The main star file `stars`: records numbered from 1, 77-byte long records
// first (1 to 1121815), then 22-byte short ones (1121816 to 2591873) from
// byte 86379755. The reader picks the form by `number >= 1121815`, so
// record 1121815 is sought at its long place and read as a short record:
// that quirk of the boundary is part of the format and is kept.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

#include "base/file_utils.h"
#include "base/record_layout.h"

inline constexpr long kLastLongStar = 1121815;
inline constexpr long kLastStar = 2591873;
inline constexpr long kShortStarsStart = 86379755;  // 1121815 x 77

// The long record as it lies in the file, every field as its code.
struct LongStarRecord {
    int32_t ra = 0;
    int32_t dec = 0;
    uint32_t pmRaCode = 0;  // 21 bits
    uint32_t csnRow = 0;    // 11 bits, 0 none
    uint32_t pmDecCode = 0;
    uint32_t textRow = 0;  // a further text row, 11 bits
    uint16_t spectralCode = 0;
    uint32_t parallaxCode = 0;  // 18 bits
    uint32_t hr = 0;            // 14 bits
    int16_t parallaxError = 0;  // 0.01 milliarcsecond
    int16_t tenthsValue = 0;
    int16_t colour = 32767;  // thousandths, 32767 unknown
    uint32_t hip = 0;        // 17 bits
    uint32_t vrefIndex = 0;  // 15 bits, 0 none
    uint32_t ppmLow = 0;     // 20 bits
    uint8_t ppmAdd700000 = 0;
    uint8_t ppmAdd400000 = 0;
    uint8_t ppmSpare = 0;  // bits 22, 23
    uint8_t qualityCode = 0;
    uint32_t hd = 0;  // 19 bits
    uint32_t hdFurther = 0;
    uint32_t sao = 0;  // 18 bits
    uint32_t nsv = 0;  // 14 bits
    uint32_t bd = 0;   // packed Durchmusterung numbers
    uint32_t cd = 0;
    uint32_t cp = 0;
    uint16_t gc = 0;
    uint32_t magnitudeCode = 0x7FF;  // 11 bits, all ones unknown
    uint32_t ccdmRow = 0;            // 17 bits, 0 none
    uint8_t furtherCode = 0;         // 4 bits
    uint32_t gscNumber = 0;          // 14 bits
    uint32_t gscRegion = 0;          // 14 bits
    uint8_t tychoComponent = 0;      // 4 bits
    uint8_t flamsteed = 0;           // the Flamsteed and Bayer group, 24 bits
    uint8_t designationConstellation = 0;  // constellation row, 7 bits
    uint8_t bayerLetter = 0;               // Greek letter row + 1, 0 none, 5 bits
    uint8_t bayerSuperscript = 0;          // 4 bits
    uint16_t further69 = 0;
    uint16_t further71 = 0;
    uint16_t further73 = 0;
    uint8_t smallCode0 = 0;  // bits 0, 1
    uint8_t smallCode1 = 0;  // bits 2 to 4
    uint8_t smallCode2 = 0;  // bits 5 to 7
    uint8_t charCode = 0;
};

struct LongStarLayout {
    static constexpr size_t kSize = 77;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.I32(0, r.ra);
        io.I32(4, r.dec);
        io.Bits32(8, 0, 21, r.pmRaCode);
        io.Bits32(8, 21, 11, r.csnRow);
        io.Bits32(12, 0, 21, r.pmDecCode);
        io.Bits32(12, 21, 11, r.textRow);
        io.U16(16, r.spectralCode);
        io.Bits32(18, 0, 18, r.parallaxCode);
        io.Bits32(18, 18, 14, r.hr);
        io.I16(22, r.parallaxError);
        io.I16(24, r.tenthsValue);
        io.I16(26, r.colour);
        io.Bits32(28, 0, 17, r.hip);
        io.Bits32(28, 17, 15, r.vrefIndex);
        io.Bits32(32, 0, 20, r.ppmLow);
        io.Bits32(32, 20, 1, r.ppmAdd700000);
        io.Bits32(32, 21, 1, r.ppmAdd400000);
        io.Bits32(32, 22, 2, r.ppmSpare);
        io.Bits32(32, 24, 8, r.qualityCode);
        io.Bits32(36, 0, 19, r.hd);
        io.Bits32(36, 19, 13, r.hdFurther);
        io.Bits32(40, 0, 18, r.sao);
        io.Bits32(40, 18, 14, r.nsv);
        io.U32(44, r.bd);
        io.U32(48, r.cd);
        io.U32(52, r.cp);
        io.U16(56, r.gc);
        io.Bits32(58, 0, 11, r.magnitudeCode);
        io.Bits32(58, 11, 17, r.ccdmRow);
        io.Bits32(58, 28, 4, r.furtherCode);
        io.Bits32(62, 0, 14, r.gscNumber);
        io.Bits32(62, 14, 14, r.gscRegion);
        io.Bits32(62, 28, 4, r.tychoComponent);
        io.Bits24(66, 0, 8, r.flamsteed);
        io.Bits24(66, 8, 7, r.designationConstellation);
        io.Bits24(66, 15, 5, r.bayerLetter);
        io.Bits24(66, 20, 4, r.bayerSuperscript);
        io.U16(69, r.further69);
        io.U16(71, r.further71);
        io.U16(73, r.further73);
        io.Bits8(75, 0, 2, r.smallCode0);
        io.Bits8(75, 2, 3, r.smallCode1);
        io.Bits8(75, 5, 3, r.smallCode2);
        io.U8(76, r.charCode);
    }
};
static_assert(LayoutIsPacked<LongStarLayout, LongStarRecord>());

// The short record: place, motion, magnitude, colour and the GSC/Tycho word.
struct ShortStarRecord {
    int32_t ra = 0;
    int32_t dec = 0;
    uint32_t pmRaCode = 0;
    uint32_t magnitudeCode = 0x7FF;
    uint32_t pmDecCode = 0;
    uint32_t qualityCode = 0;
    int16_t colour = 32767;
    uint32_t gscNumber = 0;
    uint32_t gscRegion = 0;
    uint8_t tychoComponent = 0;
};

struct ShortStarLayout {
    static constexpr size_t kSize = 22;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.I32(0, r.ra);
        io.I32(4, r.dec);
        io.Bits32(8, 0, 21, r.pmRaCode);
        io.Bits32(8, 21, 11, r.magnitudeCode);
        io.Bits32(12, 0, 21, r.pmDecCode);
        io.Bits32(12, 21, 11, r.qualityCode);
        io.I16(16, r.colour);
        io.Bits32(18, 0, 14, r.gscNumber);
        io.Bits32(18, 14, 14, r.gscRegion);
        io.Bits32(18, 28, 4, r.tychoComponent);
    }
};
static_assert(LayoutIsPacked<ShortStarLayout, ShortStarRecord>());

// One star as the readers hand it on: values, not codes. Fields a read mask
// left out keep these initial values.
struct StarData {
    long number = 0;
    bool isShort = false;
    double ra = 0;        // radians, J2000
    double dec = 0;
    double pmRa = 0;      // radians a year, cos(dec) divided out
    double pmDec = 0;     // radians a year
    double magnitude = 99.9;
    double colour = 99.9;
    double parallax = 0;  // arc seconds
    double parallaxError = 0;  // arc seconds
    double tenthsValue = 0;
    std::string spectral;
    uint32_t csnRow = 0;
    uint32_t textRow = 0;
    uint32_t hr = 0;
    uint32_t hd = 0;
    uint32_t sao = 0;
    uint32_t hip = 0;
    uint32_t ppm = 0;
    uint32_t gc = 0;
    uint32_t bd = 0;  // packed as the designation codecs pack DM numbers
    uint32_t cd = 0;
    uint32_t cp = 0;
    uint32_t nsv = 0;
    uint32_t vrefIndex = 0;
    uint32_t ccdmRow = 0;
    uint32_t gscRegion = 0;
    uint32_t gscNumber = 0;
    int tychoComponent = 0;
    int flamsteed = 0;
    int bayerLetter = 0;  // Greek letter row + 1, 0 none
    int bayerSuperscript = 0;
    int designationConstellation = 0;  // constellation row
    int qualityCode = 0;
    std::string name;  // the short form's Tycho name; the long form's comes from `csn`
};

// The file offset of record `number`; -1 outside 1 to 2591873.
long starRecordOffset(long number);

// True when record `number` is decoded as a short record (number >= 1121815).
bool starIsShortForm(long number);

FilePtr openStars();

// Reads star `number` (-1: the record at the stream's position, its number
// and form told from that position) into `out`, filling what `readMask`
// asks for. 1 on success, 0 for a number out of range or a short read.
int readStar(FILE* file, long number, StarData* out, int readMask);

// The decoding steps of readStar, for the tools and the tests.
void decodeLongStar(const LongStarRecord& record, StarData* out, int readMask);
void decodeShortStar(const ShortStarRecord& record, StarData* out, int readMask);

// "TYC %05d-%04d %1d" of region, number and component.
std::string tychoName(uint32_t region, uint32_t number, int component);
