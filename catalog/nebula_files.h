// The diffuse nebula file `neb` (records from 0, at number x 44), its
// number indexes `sh`, `vdB`, `gum`, `RCW`, `LBN` and the sorted list of
// other designations `nebother`. Nebula record 0 is a real object, so the
// lookups answer -1 for none.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

#include "base/file_utils.h"
#include "base/record_layout.h"

struct NebulaRecord {
    int32_t ra = 0;
    int32_t dec = 0;
    uint8_t type = 0;  // 7 bits
    bool flag = false;
    uint8_t commonNameRow = 255;
    uint8_t messier = 0;
    uint16_t ngc[2] = {};
    uint16_t ic[2] = {};
    uint8_t vdb = 0;
    uint8_t gum = 0;
    uint8_t rcw = 0;
    uint16_t sharpless = 0;
    uint16_t lbn = 0;
    uint8_t magnitude = 255;  // tenths, 255 unknown
    uint16_t size = 0;        // tenths of an arc minute
    char designation[15] = {};
};

struct NebulaLayout {
    static constexpr size_t kSize = 44;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.I32(0, r.ra);
        io.I32(4, r.dec);
        io.Bits8(8, 0, 7, r.type);
        io.Bits8(8, 7, 1, r.flag);
        io.U8(9, r.commonNameRow);
        io.U8(10, r.messier);
        io.U16(11, r.ngc[0]);
        io.U16(13, r.ngc[1]);
        io.U16(15, r.ic[0]);
        io.U16(17, r.ic[1]);
        io.U8(19, r.vdb);
        io.U8(20, r.gum);
        io.U8(21, r.rcw);
        io.U16(22, r.sharpless);
        io.U16(24, r.lbn);
        io.U8(26, r.magnitude);
        io.U16(27, r.size);
        io.Text(29, r.designation);
    }
};
static_assert(LayoutIsPacked<NebulaLayout, NebulaRecord>());

struct NebulaData {
    long record = 0;
    double ra = 0;
    double dec = 0;
    double magnitude = 99.9;
    double sizeMajor = 0;  // radians
    double sizeMinor = 0;
    double sizeDefault = 0;
    int type = 0;
    bool flag = false;
    int commonNameRow = -1;
    int messier = 0;
    int ngc[2] = {};
    int ic[2] = {};
    int vdb = 0;
    int gum = 0;
    int rcw = 0;
    int sharpless = 0;
    int lbn = 0;
    std::string designation;
};

FilePtr openNebulae();

// Nebula `number` (from 0); 1 on success.
int readNebula(FILE* file, long number, NebulaData* out, int readMask);
void decodeNebula(const NebulaRecord& record, NebulaData* out, int readMask);

FilePtr openSharpless();
FilePtr openVdb();
FilePtr openGum();
FilePtr openRcw();
FilePtr openLbn();
FilePtr openNebulaOther();

// The nebula of a number: u16 slots at (n - 1) x 2, 65535 empty; -1 when
// none or out of range (Sh 2 1 to 312, vdB 1 to 152, Gum 1 to 80, RCW 1 to
// 158, LBN 1 to 1627).
long lookupSharpless(FILE* file, int number);
long lookupVdb(FILE* file, int number);
long lookupGum(FILE* file, int number);
long lookupRcw(FILE* file, int number);
long lookupLbn(FILE* file, int number);

// `nebother`: 205 sorted names of 17 bytes; the row found is the name
// index, -1 when the text isn't there.
inline constexpr long kNebulaOtherRows = 205;
inline constexpr size_t kNebulaOtherSize = 17;
long lookupNebulaOther(FILE* file, const char* text);
