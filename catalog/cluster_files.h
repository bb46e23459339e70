// The star cluster files: open clusters `oc` (records from 0, at
// number x 36) with the indexes `ocl` and `oc_cross`, and globular clusters
// `glob` (records from 1) with `palomar`, `terzan` and the name list
// `GDes`. Open clusters alone keep their place as f32 radians instead of
// scaled angles.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

#include "base/file_utils.h"
#include "base/record_layout.h"

inline constexpr int kClusterDesignations = 5;

struct OpenClusterRecord {
    uint8_t family[kClusterDesignations] = {};   // rows of the cluster family table
    uint16_t number[kClusterDesignations] = {};  // numbers within those families
    uint8_t commonNameRow = 255;
    float ra = 0;  // radians
    float dec = 0;
    uint16_t ocl = 0;         // tenths
    uint8_t magnitude = 255;  // tenths, 255 unknown
    uint8_t value27 = 255;    // read as signed, 255 none
    int8_t value28 = -1;      // hundredths, the byte 255 none
    uint8_t value29 = 255;    // hundredths, 255 none
    uint16_t number30 = 0;    // 15 bits
    bool flag30 = false;
    uint16_t number32 = 0;
    uint16_t size = 0;  // tenths of an arc minute
};

struct OpenClusterLayout {
    static constexpr size_t kSize = 36;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        for (size_t i = 0; i < kClusterDesignations; ++i) io.U8(i, r.family[i]);
        for (size_t i = 0; i < kClusterDesignations; ++i) io.U16(5 + 2 * i, r.number[i]);
        io.U8(15, r.commonNameRow);
        io.F32(16, r.ra);
        io.F32(20, r.dec);
        io.U16(24, r.ocl);
        io.U8(26, r.magnitude);
        io.U8(27, r.value27);
        io.I8(28, r.value28);
        io.U8(29, r.value29);
        io.Bits16(30, 0, 15, r.number30);
        io.Bits16(30, 15, 1, r.flag30);
        io.U16(32, r.number32);
        io.U16(34, r.size);
    }
};
static_assert(LayoutIsPacked<OpenClusterLayout, OpenClusterRecord>());

struct OpenClusterData {
    long record = 0;
    double ra = 0;
    double dec = 0;
    double magnitude = 99.9;
    double sizeMajor = 0;  // radians
    double sizeMinor = 0;
    double sizeDefault = 0;
    int family[kClusterDesignations] = {};
    int number[kClusterDesignations] = {};
    int commonNameRow = -1;
    double ocl = 0;      // "OCL 123.4"
    int value27 = 255;   // 255 none, otherwise -128 to 127
    double value28 = 99.9;  // 99.9 none
    double value29 = 99.9;
    int number30 = 0;
    bool flag30 = false;
    int number32 = 0;
};

FilePtr openOpenClusters();

// Open cluster `number` (from 0); 1 on success.
int readOpenCluster(FILE* file, long number, OpenClusterData* out, int readMask);
void decodeOpenCluster(const OpenClusterRecord& record, OpenClusterData* out, int readMask);

FilePtr openOcl();
FilePtr openOcCross();

// The cluster of an OCL number such as 123.4 (whole part from 1, tenth 0
// to 8); -1 when none.
long lookupOcl(FILE* file, double ocl);

// The cluster of a family code 2 to 55 and a number from 1 up to the
// family's count; -1 when none.
long lookupOcCross(FILE* file, int family, int number);

struct GlobularRecord {
    uint16_t ngc = 0;
    uint16_t ic = 0;
    uint8_t messier = 0;
    uint8_t commonNameRow = 255;
    uint16_t palomar = 0;
    uint16_t terzan = 0;
    int32_t ra = 0;
    int32_t dec = 0;
    uint16_t size = 0;  // tenths of an arc minute
    uint16_t value20 = 0;  // tenths
    uint16_t value22 = 0;
    uint8_t magnitude = 0;  // tenths, 0 unknown
    char designation[18] = {};
};

struct GlobularLayout {
    static constexpr size_t kSize = 43;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U16(0, r.ngc);
        io.U16(2, r.ic);
        io.U8(4, r.messier);
        io.U8(5, r.commonNameRow);
        io.U16(6, r.palomar);
        io.U16(8, r.terzan);
        io.I32(10, r.ra);
        io.I32(14, r.dec);
        io.U16(18, r.size);
        io.U16(20, r.value20);
        io.U16(22, r.value22);
        io.U8(24, r.magnitude);
        io.Text(25, r.designation);
    }
};
static_assert(LayoutIsPacked<GlobularLayout, GlobularRecord>());

struct GlobularData {
    long record = 0;
    double ra = 0;
    double dec = 0;
    double magnitude = 99.9;
    double sizeMajor = 0;  // radians
    double sizeMinor = 0;
    double sizeDefault = 0;
    int ngc = 0;
    int ic = 0;
    int messier = 0;
    int commonNameRow = -1;
    int palomar = 0;
    int terzan = 0;
    double value20 = 0;
    int value22 = 0;
    std::string designation;
};

FilePtr openGlobulars();

// Globular cluster `number` (from 1); 1 on success.
int readGlobular(FILE* file, long number, GlobularData* out, int readMask);
void decodeGlobular(const GlobularRecord& record, GlobularData* out, int readMask);

FilePtr openPalomar();
FilePtr openTerzan();
FilePtr openGlobularDesignations();

// Palomar or Terzan 1 to 15: the globular record, 0 when none.
long lookupPalomar(FILE* file, int number);
long lookupTerzan(FILE* file, int number);

// `GDes`: 20 rows of a 19-byte name and a u8 record, searched in order
// with the prefix rule: the typed text a prefix of the row's name, without
// case. The record of the first row that matches; 0 when none, for an
// empty text, and for an empty row.
inline constexpr int kGlobularDesignationRows = 20;

struct GlobularDesignationRow {
    char name[19] = {};
    uint8_t record = 0;
};

struct GlobularDesignationLayout {
    static constexpr size_t kSize = 20;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.Text(0, r.name);
        io.U8(19, r.record);
    }
};
static_assert(LayoutIsPacked<GlobularDesignationLayout, GlobularDesignationRow>());

long lookupGlobularDesignation(FILE* file, const char* text);
