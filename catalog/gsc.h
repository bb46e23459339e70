// The GSC files under the GSC root: 24 declination bands of 7.5 degrees,
// each owning a run of the 9537 regions. A band has its table
// "gsc/<band>.bin" (16 bytes a region: the region's box) and a folder
// "gsc/<band>/" with one file a region, "%04d.bin" of the region's place in
// the band counted from 1: the band's first region is 0001.bin. A region
// file holds 6-byte slots, one a star, at (star number - 1) x 6.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <vector>

#include "base/file_utils.h"
#include "base/record_layout.h"

inline constexpr int kGscBandCount = 24;
inline constexpr int kGscLastRegion = 9537;
inline constexpr size_t kGscBandTableBytes = 24000;
inline constexpr int kGscRegionSetCapacity = 1000;

// "N0000" ... "S8230"; "" outside 0 to 23.
const char* gscBandName(int band);
int gscBandFirstRegion(int band);  // 0 outside 0 to 23
int gscBandLastRegion(int band);
// The band of a region number; -1 outside 1 to 9537.
int gscBandOfRegion(int region);
// The region's file number in its band folder, from 1; 0 outside 1 to 9537.
int gscRegionFileNumber(int region);
// The band a declination in degrees falls in: degrees x 2/15, south of the
// equator the absolute value's band + 12, never above 23.
int gscBandOfDeclination(double degrees);

// A region's box in the band table, in the file's order: RA in hours, Dec
// in degrees.
struct GscBox {
    float raHigh = 0;
    float raLow = 0;
    float decHigh = 0;
    float decLow = 0;
};

struct GscBoxLayout {
    static constexpr size_t kSize = 16;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.F32(0, r.raHigh);
        io.F32(4, r.raLow);
        io.F32(8, r.decHigh);
        io.F32(12, r.decLow);
    }
};
static_assert(LayoutIsPacked<GscBoxLayout, GscBox>());

// A slot of a plain GSC star: a u32 word and a u16 word. The place is
// coded relative to the region's box: a 19-bit RA code around 262143 and a
// 17-bit Dec code around 65535, whose top 9 bits lie in the first word and
// low 8 bits in the second.
struct GscSlot {
    uint32_t decHigh = 0;       // Dec code bits 8 to 16
    uint8_t starClass = 0;      // 3 bits
    uint32_t raCode = 0;        // 19 bits
    uint8_t isReference = 0;    // clear in a plain slot
    uint8_t magnitudeCode = 0;  // x 0.08941176470588236 - 1.6
    uint8_t decLow = 0;         // Dec code bits 0 to 7
};

struct GscSlotLayout {
    static constexpr size_t kSize = 6;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.Bits32(0, 0, 9, r.decHigh);
        io.Bits32(0, 9, 3, r.starClass);
        io.Bits32(0, 12, 19, r.raCode);
        io.Bits32(0, 31, 1, r.isReference);
        io.Bits16(4, 0, 8, r.magnitudeCode);
        io.Bits16(4, 8, 8, r.decLow);
    }
};
static_assert(LayoutIsPacked<GscSlotLayout, GscSlot>());

// A slot that stands for a star of `stars`: the top bit of the first word
// set, the star number in its low 31 bits.
struct GscReferenceSlot {
    uint32_t star = 0;
    uint8_t isReference = 1;
    uint16_t spare = 0;
};

struct GscReferenceLayout {
    static constexpr size_t kSize = 6;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.Bits32(0, 0, 31, r.star);
        io.Bits32(0, 31, 1, r.isReference);
        io.U16(4, r.spare);
    }
};
static_assert(LayoutIsPacked<GscReferenceLayout, GscReferenceSlot>());

// What a slot read answers.
inline constexpr int kGscNoStar = -1;       // six zero bytes
inline constexpr int kGscPlainStar = 1;     // place, magnitude and class filled
inline constexpr int kGscStarReference = 2; // starNumber filled

struct GscStar {
    double ra = 0;  // radians, 0 to a full turn
    double dec = 0;
    double magnitude = 99.9;
    int starClass = 0;
    long starNumber = 0;  // the `stars` record of a reference slot
};

// Decodes one 6-byte slot against its region's box: kGscNoStar,
// kGscPlainStar or kGscStarReference.
int decodeGscSlot(const uint8_t* bytes, const GscBox& box, GscStar* out);

// Whether a box holds a point (RA in hours, 0 to below 24; Dec in degrees).
// The bounds are taken in order; a box whose RA bounds lie 12 hours or more
// apart crosses 0h and is tested across it. All bounds are inclusive.
bool gscBoxContains(const GscBox& box, double hours, double degrees);

// Walks GSC stars region by region. The band's table is read only when the
// band changes and a region file is opened only when the region changes,
// because whole-sky scans visit them in order.
struct GscCursor {
    FilePtr regionFile;
    std::vector<uint8_t> bandTable;  // kGscBandTableBytes once a band is loaded
    int band = -1;
    int region = -1;
};

// The box of a region, loading its band's table when needed; 1 on success.
int gscCursorBox(GscCursor* cursor, int region, GscBox* out);

// Star `number` (from 1) of a region: kGscNoStar, kGscPlainStar,
// kGscStarReference, or 0 when a file is missing or a read falls short.
int readGscStar(GscCursor* cursor, int region, long number, GscStar* out);

// Closes the region file and forgets the band and region.
void closeGscCursor(GscCursor* cursor);

// A place on the sky in radians.
struct GscSkyPoint {
    double ra = 0;
    double dec = 0;
};

// The regions that hold a set of sky points, each region once.
struct GscRegionSet {
    uint16_t regions[kGscRegionSetCapacity] = {};
    int count = 0;
    GscCursor files;  // the band tables while building, the regions after
};

// Empties the set and adds every region whose box holds one of the points,
// searching the band of each point's declination; a region already in the
// set is skipped, and a full set takes no more. Answers the count.
int buildGscRegionSet(GscRegionSet* set, const GscSkyPoint* points, int pointCount);
