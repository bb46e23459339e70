// One moment, held at once as a civil date and clock, a Julian day, and the
// slowly varying quantities of that moment. It is filled in three stages,
// and each engine routine needs some of them:
//   1 calendar: month to jd       (InstantSet, InstantFromJd)
//   2 scales:   t to nutObliquity (InstantScales)
//   3 sidereal: gmst, lmst, last  (InstantSidereal, needs a Site and stage 2)
#pragma once

#include <cstdint>

#include "astro/site.h"

struct Instant {
    int16_t month = 0;  // 1 to 12
    int16_t day = 0;    // 1 to 31
    int16_t year = 0;   // astronomical
    double localHours = 0;  // the site's clock: UT + zone + summer-time shift
    double utHours = 0;     // may lie outside 0 to 24
    double decimalYear = 0;
    double jd = 0;  // Julian day, UT
    double gmst = 0;  // radians, 0 to 2 pi
    double lmst = 0;
    double last = 0;  // local apparent sidereal time
    double t = 0;           // Julian centuries of UT from J2000.0
    double deltaTDays = 0;  // dynamical time minus UT
    double tDyn = 0;        // Julian centuries of dynamical time
    double meanObliquity = 0;
    double nutLongitude = 0;
    double nutObliquity = 0;
};

// Modes of the hours given to InstantSet.
inline constexpr int kUniversalTime = 1;
inline constexpr int kSiteClock = 2;

// Stage 1 from a date and hours, UT (mode 1) or the site's clock (mode 2).
// `site` may be null: the hours are then both UT and clock. 0 when
// `instant` is null.
int InstantSet(Instant* instant, Site* site, int month, int day, int year, double hours, int mode);

// Stage 1 from `instant->jd`; the date is the site's local date.
void InstantFromJd(Site* site, Instant* instant);

// Stage 2. A delta T of exactly 0.0 seconds asks for the computed value.
void InstantScales(Instant* instant, double deltaTSeconds);

// Stage 3; nothing happens when either is null.
void InstantSidereal(const Site* site, Instant* instant);

// All three stages of `result` for the midnight that belongs to the night of
// `instant`: the one that begins its day before noon, the next one after.
void InstantMidnight(Site* site, const Instant* instant, Instant* result);

// The summer-time shift in hours at `instant` (mode as for InstantSet).
// The site's mode is set to 0 for the length of the call, so the routine
// may use InstantSet on the same site; it is restored on every way out.
double DstShift(Site* site, const Instant* instant, int mode);
