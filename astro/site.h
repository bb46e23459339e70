// An observer's place on Earth prepared for computation. Its 132-byte image
// is what the location store writes, what the version 1.x location file
// holds and what log entries carry.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/record_layout.h"

struct Site {
    double longitude = 0;      // radians, positive west of Greenwich
    double latitude = 0;       // radians, positive north, geodetic
    double height = 0;         // metres above sea level
    double sinLatitude = 0;    // derived
    double cosLatitude = 0;    // derived
    double horizonDip = 0;     // derived: radians, negative or zero
    double nakedEyeLimit = 0;  // naked-eye magnitude limit
    double rhoSinPhi = 0;      // derived, Earth equatorial radii
    double rhoCosPhi = 0;      // derived, Earth equatorial radii
    double zoneHours = 0;      // standard time zone, hours east of Greenwich
    float dstStartHour = 0;    // in standard time
    float dstEndHour = 0;
    float dstShiftHours = 0;
    uint8_t dstStartWeekday = 0;  // 0 Sunday ... 6 Saturday
    uint8_t dstEndWeekday = 0;
    uint8_t dstStartWeek = 0;  // 0 first such weekday of the month, else last
    uint8_t dstEndWeek = 0;
    uint8_t dstStartMonth = 0;  // 1 to 12
    uint8_t dstEndMonth = 0;
    uint8_t dstMode = 0;  // 0 none, 1 always, 2 by the rule
    char name[33] = {};   // NUL-terminated, at most 32 characters
};

struct SiteLayout {
    static constexpr size_t kSize = 132;
    template <class Io, class S>
    static constexpr void Fields(Io& io, S& s) {
        io.F64(0, s.longitude);
        io.F64(8, s.latitude);
        io.F64(16, s.height);
        io.F64(24, s.sinLatitude);
        io.F64(32, s.cosLatitude);
        io.F64(40, s.horizonDip);
        io.F64(48, s.nakedEyeLimit);
        io.F64(56, s.rhoSinPhi);
        io.F64(64, s.rhoCosPhi);
        io.F64(72, s.zoneHours);
        io.F32(80, s.dstStartHour);
        io.F32(84, s.dstEndHour);
        io.F32(88, s.dstShiftHours);
        io.U8(92, s.dstStartWeekday);
        io.U8(93, s.dstEndWeekday);
        io.U8(94, s.dstStartWeek);
        io.U8(95, s.dstEndWeek);
        io.U8(96, s.dstStartMonth);
        io.U8(97, s.dstEndMonth);
        io.U8(98, s.dstMode);
        io.Text(99, s.name);
    }
};
static_assert(LayoutIsPacked<SiteLayout, Site>());

// Sets every field of the site, the derived ones and the default summer-time
// rule included. A name longer than 32 characters is cut in the caller's
// own string. 0 when `site` is null.
int SiteInit(Site* site, double longitude, double latitude, double height, double nakedEyeLimit,
             double zoneHours, char* name);

// A summer-time rule as the location dialogs give it.
struct DstRule {
    int startWeek = 0;
    int startWeekday = 0;
    int startMonth = 4;
    double startHour = 2.0;
    int endWeek = 3;
    int endWeekday = 0;
    int endMonth = 10;
    double endHour = 2.0;
    double shiftHours = 1.0;
    int mode = 0;
};

// Sets the summer-time rule; 0 with nothing changed when the site is null or
// the mode is not 0 to 2, and, for the rule mode 2 only, when a week, weekday
// or month is out of range. The hours are not checked.
int SiteSetDst(Site* site, int startWeek, int startWeekday, int startMonth, double startHour,
               int endWeek, int endWeekday, int endMonth, double endHour, double shiftHours,
               int mode);
int SiteSetDst(Site* site, const DstRule& rule);

// Feet to metres as the dialogs convert them (1 / 3.281).
inline constexpr double kMetresPerFoot = 1.0 / 3.281;
