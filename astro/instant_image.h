// The 118-byte image of an Instant that the rows of the log store keep: the
// three i16 of the date first, then the reals, byte-packed with no gap.
//
//   0 month  2 day  4 year                       i16
//   6 localHours  14 utHours  22 decimalYear  30 jd        f64
//  38 gmst  46 lmst  54 last                               f64
//  62 t  70 deltaTDays  78 tDyn                            f64
//  86 meanObliquity  94 nutLongitude  102 nutObliquity     f64
// 110 eight bytes that the engine's Instant does not hold
//
// The image is one f64 longer than the fields the engine keeps. Those last
// eight bytes are carried through as read, so a row read and written again
// keeps them, and a new image writes them as zero.
#pragma once

#include <cstddef>
#include <cstdint>

#include "astro/instant.h"
#include "base/record_layout.h"

// An Instant with the image's eight bytes that have no field of their own.
// It is an Instant to every engine routine.
struct InstantImage : Instant {
    uint8_t imageSpare[8] = {};
};

// An image of `instant` with the spare bytes zero.
inline InstantImage MakeInstantImage(const Instant& instant) {
    InstantImage image;
    static_cast<Instant&>(image) = instant;
    return image;
}

struct InstantLayout {
    static constexpr size_t kSize = 118;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.I16(0, r.month);
        io.I16(2, r.day);
        io.I16(4, r.year);
        io.F64(6, r.localHours);
        io.F64(14, r.utHours);
        io.F64(22, r.decimalYear);
        io.F64(30, r.jd);
        io.F64(38, r.gmst);
        io.F64(46, r.lmst);
        io.F64(54, r.last);
        io.F64(62, r.t);
        io.F64(70, r.deltaTDays);
        io.F64(78, r.tDyn);
        io.F64(86, r.meanObliquity);
        io.F64(94, r.nutLongitude);
        io.F64(102, r.nutObliquity);
        io.Raw(110, r.imageSpare);
    }
};
static_assert(LayoutIsPacked<InstantLayout, InstantImage>());
