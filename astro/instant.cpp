#include "astro/instant.h"

#include <cmath>

#include "astro/calendar.h"
#include "astro/delta_t.h"
#include "astro/numeric.h"
#include "astro/nutation.h"
#include "astro/obliquity.h"

namespace {

// A moment held a hair below a whole second shows that second: one
// 3,600,000th of a day, about 0.024 s.
constexpr double kDayBias = 2.777777777777778e-07;

// The day of the month on which a summer-time change falls: the first
// (`week` 0) or last such weekday of the month, by the site's local clock.
int ChangeDay(Site* site, int month, int year, int weekday, int week) {
    Instant probe;
    if (week == 0) {
        InstantSet(&probe, site, month, 1, year, 0.0, kSiteClock);
        int d = weekday - WeekdayIndex(probe.jd);
        if (d < 0) d += 7;
        return d + 1;
    }
    const int last = DaysInMonth(month, year);
    InstantSet(&probe, site, month, last, year, 0.0, kSiteClock);
    int d = weekday - WeekdayIndex(probe.jd);
    if (d > 0) d -= 7;
    return d + last;
}

double ChangeJd(Site* site, int month, int year, int weekday, int week, double hour) {
    Instant change;
    InstantSet(&change, site, month, ChangeDay(site, month, year, weekday, week), year, hour,
               kSiteClock);
    return change.jd;
}

// The shift under the site's rule, with the site's mode already cleared.
double RuleShift(Site* site, const Instant* instant, int mode) {
    const double hours =
        mode == kUniversalTime ? instant->utHours : instant->localHours - site->zoneHours;
    const double tested = JulianDay(instant->month, instant->day, instant->year, hours);
    const double start = ChangeJd(site, site->dstStartMonth, instant->year, site->dstStartWeekday,
                                  site->dstStartWeek, site->dstStartHour);
    if (tested < start) return 0.0;
    const double end = ChangeJd(site, site->dstEndMonth, instant->year, site->dstEndWeekday,
                                site->dstEndWeek, site->dstEndHour);
    if (tested > end) return 0.0;
    return site->dstShiftHours;
}

// Calendar fields from a biased Julian day number j (local, + 0.5).
void SplitDay(double j, Instant* instant) {
    const double z = std::floor(j);
    double a = z;
    if (z >= 2299161.0) {
        const double alpha = std::floor((z - 1867216.25) / 36524.25);
        a = z + 1.0 + alpha - std::floor(alpha / 4.0);
    }
    const double b = a + 1524.0;
    const double c = std::floor((b - 122.1) / 365.25);
    const double d = std::floor(365.25 * c);
    const double e = std::floor((b - d) / 30.6001);
    instant->day = static_cast<int16_t>(b - d - std::floor(30.6001 * e));
    instant->month = static_cast<int16_t>(e < 13.5 ? e - 1.0 : e - 13.0);
    instant->year = static_cast<int16_t>(instant->month > 2.5 ? c - 4716.0 : c - 4715.0);
    instant->localHours = 24.0 * FracPart(j);
}

}  // namespace

double DstShift(Site* site, const Instant* instant, int mode) {
    if (!site || !instant) return 0.0;
    if (site->dstMode == 0 || site->dstShiftHours == 0.0f) return 0.0;
    if (site->dstMode == 1) return site->dstShiftHours;
    const uint8_t saved = site->dstMode;
    site->dstMode = 0;
    const double shift = RuleShift(site, instant, mode);
    site->dstMode = saved;
    return shift;
}

int InstantSet(Instant* instant, Site* site, int month, int day, int year, double hours, int mode) {
    if (!instant) return 0;
    instant->month = static_cast<int16_t>(month);
    instant->day = static_cast<int16_t>(day);
    instant->year = static_cast<int16_t>(year);
    if (mode != kSiteClock) {
        instant->utHours = hours;
        instant->localHours = hours;
        if (site) instant->localHours = hours + DstShift(site, instant, kUniversalTime) + site->zoneHours;
    } else {
        instant->localHours = hours;
        instant->utHours = hours;
        if (site) instant->utHours = hours - (DstShift(site, instant, mode) + site->zoneHours);
    }
    instant->jd = JulianDay(month, day, year, instant->utHours);
    instant->decimalYear = DecimalYear(month, day, year, instant->utHours);
    return 1;
}

void InstantFromJd(Site* site, Instant* instant) {
    if (!instant) return;
    double shift = 0.0;
    if (site && site->dstMode == 1) shift = site->dstShiftHours;
    for (int round = 0; round < 2; ++round) {
        double j = instant->jd + 0.5 + kDayBias;
        if (site) j += (site->zoneHours + shift) / 24.0;
        SplitDay(j, instant);
        if (!site) {
            instant->utHours = instant->localHours;
            break;
        }
        instant->utHours = instant->localHours - (site->zoneHours + shift);
        if (shift != 0.0 || site->dstMode != 2) break;
        // The rule decides from the standard-time date; a shift that holds
        // may move the clock across midnight, so the split is done again.
        shift = DstShift(site, instant, kUniversalTime);
        instant->localHours += shift;
        if (shift == 0.0) break;
    }
    instant->decimalYear =
        DecimalYear(instant->month, instant->day, instant->year, instant->utHours);
}

void InstantScales(Instant* instant, double deltaTSeconds) {
    if (!instant) return;
    instant->t = JdToCenturies(instant->jd);
    const double seconds = deltaTSeconds != 0.0
                               ? deltaTSeconds
                               : DeltaTSeconds(instant->decimalYear, instant->jd, instant->t);
    instant->deltaTDays = seconds / 86400.0;
    instant->tDyn = instant->t + instant->deltaTDays / kDaysPerCentury;
    instant->meanObliquity = MeanObliquity(instant->tDyn);
    NutationCompute(instant);
}

void InstantSidereal(const Site* site, Instant* instant) {
    if (!site || !instant) return;
    const double t = instant->t;
    const double g = 280.46061837 + ((-t / 38710000.0 + 0.000387933) * t + 13185000.77005374) * t;
    instant->gmst = Wrap(g * kRadiansPerDegree, kTwoPi);
    instant->lmst = Wrap(instant->gmst - site->longitude, kTwoPi);
    instant->last =
        Wrap(instant->lmst + std::cos(instant->meanObliquity) * instant->nutLongitude, kTwoPi);
}

void InstantMidnight(Site* site, const Instant* instant, Instant* result) {
    if (!site || !instant || !result) return;
    const int day = instant->day + (instant->localHours >= 12.0 ? 1 : 0);
    InstantSet(result, site, instant->month, day, instant->year, 0.0, kSiteClock);
    InstantFromJd(site, result);
    InstantScales(result, 0.0);
    InstantSidereal(site, result);
}
