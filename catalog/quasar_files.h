// The quasar file `qso` (records from 1, read at (number - 1) x 40), the
// sorted list of discoverer designations `qso_des`, and the cell index `q`
// of the Q numbers.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

#include "base/file_utils.h"
#include "base/record_layout.h"

struct QuasarRecord {
    int32_t ra = 0;
    int32_t dec = 0;
    int16_t qRaPart = 0;
    int16_t qDecPart = 0;
    uint8_t qSuffix = 0;
    char discoverer[17] = {};  // shorter than 3 characters: none
    uint8_t commonNameRow = 255;
    uint8_t flags = 0;  // 5 bits, see quasarFlagText
    uint8_t spare31 = 0;
    uint8_t magnitude = 255;  // tenths, 255 unknown
    int16_t value33 = 32767;  // hundredths, 32767 unknown
    int16_t value35 = 32767;
    uint16_t redshift = 65535;  // thousandths, 65535 unknown
    uint8_t flags39 = 0;        // 4 bits
    uint8_t spare39 = 0;
};

struct QuasarLayout {
    static constexpr size_t kSize = 40;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.I32(0, r.ra);
        io.I32(4, r.dec);
        io.I16(8, r.qRaPart);
        io.I16(10, r.qDecPart);
        io.U8(12, r.qSuffix);
        io.Text(13, r.discoverer);
        io.U8(30, r.commonNameRow);
        io.Bits8(31, 0, 5, r.flags);
        io.Bits8(31, 5, 3, r.spare31);
        io.U8(32, r.magnitude);
        io.I16(33, r.value33);
        io.I16(35, r.value35);
        io.U16(37, r.redshift);
        io.Bits8(39, 0, 4, r.flags39);
        io.Bits8(39, 4, 4, r.spare39);
    }
};
static_assert(LayoutIsPacked<QuasarLayout, QuasarRecord>());

// One quasar as the readers hand it on. Quasars have no size.
struct QuasarData {
    long record = 0;
    double ra = 0;
    double dec = 0;
    double magnitude = 99.9;
    int qRaPart = 0;
    int qDecPart = 0;
    char qSuffix = 0;
    std::string discoverer;  // "" none
    int commonNameRow = -1;
    int flags = 0;
    std::string flagText;  // "Radio, X-ray" and the like
    double value33 = 99.9;
    double value35 = 99.9;
    double redshift = -1;  // -1 unknown
    int flags39 = 0;
};

// The names of the set flag bits 0 to 4 in order, joined with ", ".
std::string quasarFlagText(int flags);

FilePtr openQuasars();

// Quasar `number` (its `PID`, from 1); 1 on success.
int readQuasar(FILE* file, long number, QuasarData* out, int readMask);
void decodeQuasar(const QuasarRecord& record, QuasarData* out, int readMask);

// `qso_des`: 4334 sorted rows of an 18-character name and a u16 record.
inline constexpr long kQsoDesignationRows = 4334;

struct QsoDesignationRow {
    char name[18] = {};
    uint16_t record = 0;
};

struct QsoDesignationLayout {
    static constexpr size_t kSize = 20;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.Text(0, r.name);
        io.U16(18, r.record);
    }
};
static_assert(LayoutIsPacked<QsoDesignationLayout, QsoDesignationRow>());

// The form a discoverer designation is compared under: "IRAS L..." and
// "IRAS F..." become "IRAS ...", "1WGA J..." becomes "1WGA ...", "MC 1 ..."
// and its kin lose the blank after "MC", and a "3C " name is cut at the
// first blank after the prefix.
std::string normaliseDiscoverer(const char* text);

FilePtr openQsoDesignations();

// The quasar of a discoverer designation; 0 when not found.
long lookupQsoDesignation(FILE* file, const char* text);

// `q`: 5-byte cell heads, cell = (RA part / 100) x 60 + RA part % 100; a
// cell's run holds 5-byte entries.
struct QEntry {
    int16_t decPart = 0;
    uint8_t suffix = 0;
    uint16_t record = 0;
};

struct QEntryLayout {
    static constexpr size_t kSize = 5;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.I16(0, r.decPart);
        io.U8(2, r.suffix);
        io.U16(3, r.record);
    }
};
static_assert(LayoutIsPacked<QEntryLayout, QEntry>());

FilePtr openQ();

// The cell of an RA part (hours and minutes, 0 to 2359); -1 outside it.
long qCell(int raPart);

// The suffix as the lookup wants it: a digit 4 in a text that holds the
// parser's marker is read as 'a'.
char qWantedSuffix(char suffix, bool textHasMarker);

// The quasar of a Q number: the first entry of the cell with the Dec part
// and the suffix, a wanted blank (or NUL) taking an 'A'; 0 when none.
long lookupQ(FILE* file, int raPart, int decPart, char suffix);
