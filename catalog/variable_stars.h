// The variable-star files: `vindex` (one 8-byte row a constellation),
// `vref` (59-byte records, the constellation's run of names) and `nsvref`
// (26-byte records by NSV number). A variable's name is a constellation
// (row + 1) and a name number, as the designation codecs number names.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>

#include "base/file_utils.h"
#include "base/record_layout.h"

// vindex, at (constellation - 1) x 8.
struct VariableIndexRow {
    uint32_t offset = 0;      // of the constellation's run in vref
    uint16_t firstIndex = 0;  // first index number of the V-number list
    uint16_t count = 0;
};

struct VariableIndexLayout {
    static constexpr size_t kSize = 8;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U32(0, r.offset);
        io.U16(4, r.firstIndex);
        io.U16(6, r.count);
    }
};
static_assert(LayoutIsPacked<VariableIndexLayout, VariableIndexRow>());

// One 3-byte type entry: class, subtype, flag, then four 4-bit subtype
// digits ending at 15.
struct VariableTypeEntry {
    uint8_t typeClass = 0;  // 3 bits
    uint8_t subtype = 0;    // 4 bits
    uint8_t flag = 0;
    uint8_t digits[4] = {15, 15, 15, 15};
};

template <class Io, class E>
constexpr void VariableTypeFields(Io& io, size_t off, E& e) {
    io.Bits24(off, 0, 3, e.typeClass);
    io.Bits24(off, 3, 4, e.subtype);
    io.Bits24(off, 7, 1, e.flag);
    io.Bits24(off, 8, 4, e.digits[0]);
    io.Bits24(off, 12, 4, e.digits[1]);
    io.Bits24(off, 16, 4, e.digits[2]);
    io.Bits24(off, 20, 4, e.digits[3]);
}

// vref: the second name of the pair (at 14) carries the minimum magnitude,
// the first (at 18) the maximum.
struct VariableRecord {
    int32_t ra = 0;
    int32_t dec = 0;
    uint32_t pmRaCode = 0;  // 21 bits
    uint8_t pmRaSpare = 0;
    uint32_t pmDecCode = 0;
    uint8_t pmDecSpare = 0;
    uint8_t constellation2 = 0;  // row + 1, 7 bits
    uint8_t add9000Second = 0;
    uint32_t number2 = 0;         // 12 bits
    uint32_t minMagnitudeCode = 4095;  // 12 bits, 4095 unknown
    uint8_t constellation1 = 0;
    uint8_t add9000First = 0;
    uint32_t number1 = 0;
    uint32_t maxMagnitudeCode = 4095;
    uint32_t epochWhole = 0xFFFFFF;  // 24 bits, 0xFFFFFF unknown
    uint8_t epochCode = 0xFF;
    float epochFraction = 0;
    float period = 0;  // days
    uint8_t code34 = 0;  // 4 bits
    uint8_t greekSuperscript = 0;
    uint8_t flags0to5 = 0;
    uint8_t twoBitCode = 0;
    uint8_t code8to10 = 0;
    uint8_t flag11 = 0;
    uint8_t flag12 = 0;
    uint8_t spare13to19 = 0;
    uint32_t yearCode = 4095;  // year - 1053, 4095 none
    uint32_t star1 = 0;        // 24 bits
    uint8_t value1 = 0;
    uint32_t star2 = 0;
    uint8_t value2 = 0;
    VariableTypeEntry types[2];
    uint8_t filler[6] = {};
};

struct VariableRecordLayout {
    static constexpr size_t kSize = 59;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.I32(0, r.ra);
        io.I32(4, r.dec);
        io.Bits24(8, 0, 21, r.pmRaCode);
        io.Bits24(8, 21, 3, r.pmRaSpare);
        io.Bits24(11, 0, 21, r.pmDecCode);
        io.Bits24(11, 21, 3, r.pmDecSpare);
        io.Bits32(14, 0, 7, r.constellation2);
        io.Bits32(14, 7, 1, r.add9000Second);
        io.Bits32(14, 8, 12, r.number2);
        io.Bits32(14, 20, 12, r.minMagnitudeCode);
        io.Bits32(18, 0, 7, r.constellation1);
        io.Bits32(18, 7, 1, r.add9000First);
        io.Bits32(18, 8, 12, r.number1);
        io.Bits32(18, 20, 12, r.maxMagnitudeCode);
        io.Bits32(22, 0, 24, r.epochWhole);
        io.Bits32(22, 24, 8, r.epochCode);
        io.F32(26, r.epochFraction);
        io.F32(30, r.period);
        io.Bits8(34, 0, 4, r.code34);
        io.Bits8(34, 4, 4, r.greekSuperscript);
        io.Bits32(35, 0, 6, r.flags0to5);
        io.Bits32(35, 6, 2, r.twoBitCode);
        io.Bits32(35, 8, 3, r.code8to10);
        io.Bits32(35, 11, 1, r.flag11);
        io.Bits32(35, 12, 1, r.flag12);
        io.Bits32(35, 13, 7, r.spare13to19);
        io.Bits32(35, 20, 12, r.yearCode);
        io.Bits32(39, 0, 24, r.star1);
        io.Bits32(39, 24, 8, r.value1);
        io.Bits32(43, 0, 24, r.star2);
        io.Bits32(43, 24, 8, r.value2);
        VariableTypeFields(io, 47, r.types[0]);
        VariableTypeFields(io, 50, r.types[1]);
        io.Raw(53, r.filler);
    }
};
static_assert(LayoutIsPacked<VariableRecordLayout, VariableRecord>());

// nsvref, at (NSV number - 1) x 26.
struct NsvRecord {
    int32_t ra = 0;
    int32_t dec = 0;
    uint32_t magnitudeCode1 = 0xFFF;  // 12 bits each, 0xFFF unknown
    uint32_t magnitudeCode2 = 0xFFF;
    uint8_t topCode = 0;
    uint32_t star1 = 0;
    uint32_t star2 = 0;
    uint8_t byte18 = 0;
    uint8_t code19 = 0;   // bits 0, 1
    uint8_t flags19 = 0;  // bits 2 to 6
    uint8_t spare19 = 0;  // bit 7
    VariableTypeEntry types[2];
};

struct NsvRecordLayout {
    static constexpr size_t kSize = 26;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.I32(0, r.ra);
        io.I32(4, r.dec);
        io.Bits32(8, 0, 12, r.magnitudeCode1);
        io.Bits32(8, 12, 12, r.magnitudeCode2);
        io.Bits32(8, 24, 8, r.topCode);
        io.U24(12, r.star1);
        io.U24(15, r.star2);
        io.U8(18, r.byte18);
        io.Bits8(19, 0, 2, r.code19);
        io.Bits8(19, 2, 5, r.flags19);
        io.Bits8(19, 7, 1, r.spare19);
        VariableTypeFields(io, 20, r.types[0]);
        VariableTypeFields(io, 23, r.types[1]);
    }
};
static_assert(LayoutIsPacked<NsvRecordLayout, NsvRecord>());

// Across vref, rows 1 to 28485 exist.
inline constexpr long kLastVrefRow = 28485;
// Every NSV number with a suffix letter reads this one row.
inline constexpr long kNsvSuffixRow = 14812;

// A name's constellation is 7 bits: vindex can't have rows past this one.
inline constexpr int kVariableConstellationLimit = 127;
// Name numbers from here on are searched in the constellation's run; below
// it they stand at their own place in the run.
inline constexpr long kVariableSearchedNames = 9000;
// A reader call takes at most this many names.
inline constexpr int kMaxVariableNames = 8;

// A variable's name: constellation (row + 1) and name number, 9000 and up
// for the names past the letter and V-number ranges.
struct VariableName {
    int constellation = 0;
    long number = 0;
};

// One vref record as the readers hand it on: values, not codes.
struct VariableData {
    long row = 0;  // vref row, from 1
    VariableName name;   // the first name of the pair
    VariableName name2;  // the second, 0 and 0 when none
    double ra = 0;  // radians, J2000
    double dec = 0;
    double pmRa = 0;  // radians a year, cos(dec) divided out
    double pmDec = 0;
    double maxMagnitude = 99.9;  // brightest; 99.9 unknown
    double minMagnitude = 99.9;
    double epoch = 0;   // Julian day of the epoch, 0 when unknown
    double period = 0;  // days
    long star1 = 0;     // star numbers in `stars`, 0 none
    long star2 = 0;
    VariableRecord record;  // every field as its code
};

// One nsvref record: place, the two magnitudes, the star numbers.
struct NsvData {
    long row = 0;
    double ra = 0;
    double dec = 0;
    double magnitude1 = 99.9;
    double magnitude2 = 99.9;  // an amplitude in the file is added to magnitude1
    long star1 = 0;
    long star2 = 0;
    NsvRecord record;
};

// The 12-bit magnitude code of both files: code x 0.01 - 1.6; 4095 is
// unknown and reads as 99.9.
double variableMagnitudeFromCode(uint32_t code);

// The name packed into a vref name word: constellation, and the 12-bit
// number with 9000 added when its flag is set.
VariableName variableFirstName(const VariableRecord& record);
VariableName variableSecondName(const VariableRecord& record);

void decodeVariable(const VariableRecord& record, VariableData* out);
void decodeNsv(const NsvRecord& record, NsvData* out);

FilePtr openVindex();
FilePtr openVref();
FilePtr openNsvref();

// vindex and vref opened together, owned by one handle.
struct VariableFiles {
    FilePtr index;
    FilePtr records;
};
using VariableFilesPtr = std::unique_ptr<VariableFiles>;

// Both files or nothing.
VariableFilesPtr openVariables();
// Closes both files and frees the handle; null is allowed.
void closeVariables(VariableFilesPtr& files);

// The vindex row of a constellation (from 1); 1 on success.
int readVariableIndex(FILE* vindex, int constellation, VariableIndexRow* out);

// The vref record of row 1 to 28485, without any name check: the variable
// index number that a `stars` record carries is such a row. 1 on success.
int readVariableRow(FILE* vref, long row, VariableData* out);

// Reads the variables named by `names` in order, up to 8 of them, into
// out[0], out[1], ... A name below 9000 is read at its place in the
// constellation's run, one from 9000 on is searched through the run; either
// way the record's first name must be the wanted one. The first name that
// can't be read, or whose record carries another name, ends the call.
// Answers how many were read; out[answer] is then reset to fresh values and
// the entries after it are not touched.
int readVariables(VariableFiles* files, const VariableName* names, int count, VariableData* out);

// One name: 1 when read, 0 otherwise.
int readVariable(VariableFiles* files, int constellation, long number, VariableData* out);

// The nsvref row of an NSV number, rows counted from 0 at (row x 26):
// number - 1, and for any number with a suffix letter row 14812, the one
// row that stands for all suffixed entries. -1 for a number below 1.
long nsvRow(long nsv, char suffix);

// NSV `nsv` with its suffix letter (' ' or 0 for none). 1 on success.
int readNsv(FILE* nsvref, long nsv, char suffix, NsvData* out);
