// The constellation files: `connames` (name and label point of each zone),
// `conbound` (each zone's bounding box) and `conrect` (each zone as a list
// of RA-Dec rectangles of the B1875.0 boundaries), and the constellation
// of a place. Serpens is two zones, so there are 89 zones, 0 to 88.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

#include "base/file_utils.h"
#include "base/record_layout.h"

inline constexpr int kConstellationZones = 89;
inline constexpr int kConstellationZoneLimit = 90;  // zone numbers of the files lie below this

struct ConstellationNameRecord {
    char name[20] = {};
    int32_t ra = 0;  // the label point
    int32_t dec = 0;
};

struct ConstellationNameLayout {
    static constexpr size_t kSize = 28;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.Text(0, r.name);
        io.I32(20, r.ra);
        io.I32(24, r.dec);
    }
};
static_assert(LayoutIsPacked<ConstellationNameLayout, ConstellationNameRecord>());

struct ConstellationBoxRecord {
    uint8_t head[4] = {};
    int32_t decLow = 0;
    int32_t decHigh = 0;
    int32_t raLow = 0;
    int32_t raHigh = 0;
    uint8_t tail[2] = {};
};

struct ConstellationBoxLayout {
    static constexpr size_t kSize = 22;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.Raw(0, r.head);
        io.I32(4, r.decLow);
        io.I32(8, r.decHigh);
        io.I32(12, r.raLow);
        io.I32(16, r.raHigh);
        io.Raw(20, r.tail);
    }
};
static_assert(LayoutIsPacked<ConstellationBoxLayout, ConstellationBoxRecord>());

struct ConstellationRectangleRecord {
    int32_t raFirst = 0;
    int32_t raSecond = 0;
    int32_t decFirst = 0;
    int32_t decSecond = 0;
};

struct ConstellationRectangleLayout {
    static constexpr size_t kSize = 16;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.I32(0, r.raFirst);
        io.I32(4, r.raSecond);
        io.I32(8, r.decFirst);
        io.I32(12, r.decSecond);
    }
};
static_assert(LayoutIsPacked<ConstellationRectangleLayout, ConstellationRectangleRecord>());

FilePtr openConstellationNames();
FilePtr openConstellationBounds();
FilePtr openConstellationRectangles();

// The name and label point (radians) of a zone; 1 on success.
struct ConstellationLabel {
    int zone = -1;
    std::string name;
    double ra = 0;
    double dec = 0;
};
int readConstellationName(FILE* file, int zone, ConstellationLabel* out);

// The first zone whose name begins with the text, without case; -1 when
// none does or the text is empty.
int findConstellationName(FILE* file, const char* text);

// A constellation as an object: the J2000 place is the middle of its box
// (the RA span taken eastward from the low bound, across 0h when it must);
// `sizeMajor` the largest great-circle width of the box at its upper,
// middle and lower declination, `sizeMinor` the box's diagonal,
// `sizeDefault` the larger; `magnitude` 0 and `magnitude2` 99.9.
struct ConstellationData {
    int zone = -1;
    double ra = 0;
    double dec = 0;
    double magnitude = 0;
    double magnitude2 = 99.9;
    double sizeMajor = 0;
    double sizeMinor = 0;
    double sizeDefault = 0;
    double raLow = 0;  // the box, radians
    double raHigh = 0;
    double decLow = 0;
    double decHigh = 0;
};

int readConstellationBox(FILE* file, int zone, ConstellationData* out);

// Whether a rectangle (radians, bounds in the file's order) holds a
// B1875.0 place. Bounds 12 hours or more apart make a rectangle across 0h:
// the first bound and an RA below 12 hours are taken a turn further, and
// the bounds change places. All four comparisons are inclusive.
bool constellationRectangleHolds(double raFirst, double raSecond, double decFirst, double decSecond,
                                 double ra, double dec);

// The zone of a B1875.0 place: zones 0 to 88 in order, each rectangle of
// a zone in its order, the first that holds the place wins; -1 when none.
int constellationOfB1875Place(FILE* conrect, double ra, double dec);

// A J2000 place (radians) precessed to B1875.0, the epoch of the
// boundaries, in place.
void precessToBoundaryEpoch(double* ra, double* dec);

// The zone of a J2000 place (radians), precessed to B1875.0 first; -1 when
// none holds it or `conrect` won't open.
int constellationOfPlace(double ra, double dec);
