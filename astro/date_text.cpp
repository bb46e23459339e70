#include "astro/date_text.h"

#include <cstdio>

#include "astro/angle_text.h"
#include "astro/calendar.h"
#include "base/platform.h"

namespace {

constexpr int kDateTextSize = 64;
constexpr int kDateSize = 24;  // "%4d %s %2d" of any i16 year

void LocalDate(Site* site, double jd, Instant* instant) {
    instant->jd = jd;
    InstantFromJd(site, instant);
}

// The clock as hours of the local date, set and then normalised.
void FromClock(Site* site, Instant* instant, double hours) {
    const platform::LocalClock c = platform::LocalTime();
    InstantSet(instant, site, c.month, c.day, c.year, hours, kSiteClock);
    InstantFromJd(site, instant);
}

double ClockHours() {
    const platform::LocalClock c = platform::LocalTime();
    return c.hour + c.minute / 60.0 + c.second / 3600.0;
}

}  // namespace

char* DateText(char* buffer, Site* site, double jd, int eveningDate) {
    Instant i;
    LocalDate(site, jd, &i);
    if (eveningDate && i.localHours < 12.0) LocalDate(site, jd - 0.5, &i);
    const char* month = MonthAbbreviation(i.month);
    std::snprintf(buffer, kDateSize, "%4d %s %2d", i.year, month ? month : "???", i.day);
    return buffer;
}

char* DateTimeText(char* buffer, Site* site, double jd, int eveningDate) {
    Instant i;
    LocalDate(site, jd, &i);
    char clock[32];
    ClockText(clock, i.localHours);
    char date[kDateSize];
    DateText(date, site, jd, eveningDate);
    std::snprintf(buffer, kDateTextSize, "%s %s", date, clock);
    return buffer;
}

const char* StampText() {
    static char stamp[32];
    const platform::LocalClock c = platform::LocalTime();
    const char* month = MonthAbbreviation(c.month);
    std::snprintf(stamp, sizeof stamp, "%04d %3s %02d %02d%02d", c.year, month ? month : "???",
                  c.day, c.hour, c.minute);
    return stamp;
}

void InstantNow(Site* site, Instant* instant) { FromClock(site, instant, ClockHours()); }

void InstantNowEvening(Site* site, Instant* instant) {
    FromClock(site, instant, ClockHours() - 12.0);
}

void InstantToday(Site* site, Instant* instant) { FromClock(site, instant, 0.0); }
