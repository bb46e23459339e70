// The orbit files of the double stars: `lp_index` (9 bytes a row, the
// `lp_index` number of a ccdm component), `lp_ref` (39-byte element
// records) and `lp_sup` (239-byte ephemeris rows); and the walk that places
// a component on the sky through its chain of primaries.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>

#include "astro/binary_orbit.h"
#include "astro/instant.h"
#include "base/file_utils.h"
#include "base/record_layout.h"
#include "catalog/multiple_stars.h"

// lp_index, at (row - 1) x 9: offsets are bytes into lp_ref and lp_sup.
struct LpIndexRow {
    uint8_t count = 0;
    uint32_t refOffset = 0;
    uint32_t supOffset = 0;
};

struct LpIndexLayout {
    static constexpr size_t kSize = 9;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U8(0, r.count);
        io.U32(1, r.refOffset);
        io.U32(5, r.supOffset);
    }
};
static_assert(LayoutIsPacked<LpIndexLayout, LpIndexRow>());

// lp_ref: the elements in file order. The first angle is the inclination,
// the second the node; angles in degrees, times in years, the semi-axis in
// arc seconds.
struct LpRefRecord {
    float period = 0;
    float firstAngle = 0;  // inclination
    float semiMajorAxis = 0;
    float eccentricity = 0;
    float argPeriastron = 0;
    float secondAngle = 0;  // node
    float periastronTime = 0;
    float further28 = 0;
    float further32 = 0;
    uint16_t equinox = 0;  // of the elements; 0 or 2000 need no precession
    uint8_t code38 = 0;
};

struct LpRefLayout {
    static constexpr size_t kSize = 39;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.F32(0, r.period);
        io.F32(4, r.firstAngle);
        io.F32(8, r.semiMajorAxis);
        io.F32(12, r.eccentricity);
        io.F32(16, r.argPeriastron);
        io.F32(20, r.secondAngle);
        io.F32(24, r.periastronTime);
        io.F32(28, r.further28);
        io.F32(32, r.further32);
        io.U16(36, r.equinox);
        io.U8(38, r.code38);
    }
};
static_assert(LayoutIsPacked<LpRefLayout, LpRefRecord>());

// lp_sup: a place and two further reals, then bytes the program does not
// read.
struct LpSupRecord {
    double ra = 0;  // radians
    double dec = 0;
    double further16 = 0;
    double further24 = 0;
    uint8_t spare32[207] = {};
};

struct LpSupLayout {
    static constexpr size_t kSize = 239;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.F64(0, r.ra);
        io.F64(8, r.dec);
        io.F64(16, r.further16);
        io.F64(24, r.further24);
        io.Raw(32, r.spare32);
    }
};
static_assert(LayoutIsPacked<LpSupLayout, LpSupRecord>());

// The equinox of the lp_sup places, in Julian centuries from J2000.0 (that
// is 1950.0); a read precesses them to J2000.0.
inline constexpr double kLpSupEquinox = -0.5;

// The orbit files, owned together. The handle opens when lp_index and
// lp_ref do; lp_sup may be missing (null), as only its rows need it.
struct LpFiles {
    FilePtr index;
    FilePtr ref;
    FilePtr sup;
};
using LpHandle = std::unique_ptr<LpFiles>;

LpHandle openDoubleStarOrbits();
void closeDoubleStarOrbits(LpHandle& handle);

// Row `row` (from 1) of lp_index; 1 on success.
int readLpIndex(FILE* file, long row, LpIndexRow* out);
// Record `n` (from 0) of the run at `offset`; 1 on success. lp_sup rows come
// back precessed from kLpSupEquinox to J2000.0.
int readLpRef(FILE* file, uint32_t offset, int n, LpRefRecord* out);
int readLpSup(FILE* file, uint32_t offset, int n, LpSupRecord* out);

// The elements of an lp_ref record as an apparent orbit.
BinaryOrbit orbitFromElements(const LpRefRecord& record);

// The orbit of `lp_index` row `row` (its first lp_ref record) and the
// equinox of its elements; 1 on success, 0 for row 0, an empty row or a
// short read.
int readComponentOrbit(LpFiles* files, long row, BinaryOrbit* orbit, int* equinox);

// A position angle (degrees) of the equinox `equinoxYear`, at a place given
// for J2000.0 (radians), turned into the angle of J2000.0 by precessing the
// two ends of a short leg along it.
double positionAngleToJ2000(double ra, double dec, double positionAngle, double equinoxYear);

// The point `separation` radians from (ra, dec) along `positionAngle`
// radians; in place.
void offsetPlace(double* ra, double* dec, double separation, double positionAngle);

// Where a component stands from the one it is measured from at `year`:
// from its orbit when it has an lp_index row that reads (its angle brought
// to J2000.0 at the base place), otherwise as catalogued. Position angle in
// degrees, separation in arc seconds. 1 when both are known; 0 when the
// catalogued angle is 361 (the separation is still set).
int componentOffsetAt(LpFiles* files, const CcdmComponent& component, double baseRa,
                      double baseDec, double year, double* positionAngle, double* separation);

// The J2000.0 place of `components[which]`: a component measured from 'A'
// is offset from the primary's place, any other first locates the
// component it is measured from, by letter, and is offset from there. 1 on
// success; 0 when a link of the chain is missing, loops, or has no
// position angle. `files` may be null: then every offset is as catalogued.
int locateComponent(LpFiles* files, const CcdmComponent* components, int count, int which,
                    double primaryRa, double primaryDec, double year, double* ra, double* dec);
int locateComponent(LpFiles* files, const CcdmComponent* components, int count, int which,
                    double primaryRa, double primaryDec, const Instant& instant, double* ra,
                    double* dec);

// The magnitude of the component named by a reference letter; 99.9 when
// no component has that letter.
double referenceMagnitude(const CcdmComponent* components, int count, uint8_t letter);
