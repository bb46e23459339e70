// Dates and moments as text, and the moment of the local clock.
#pragma once

#include "astro/instant.h"

// "%4d %s %2d": year, three-letter month, day of the site's local date. With
// `eveningDate` and a local clock before noon, the date of 12 hours
// earlier: an observer's night carries the date on which it began.
char* DateText(char* buffer, Site* site, double jd, int eveningDate);

// DateText and then the clock text of `jd` itself; the buffer holds 64.
char* DateTimeText(char* buffer, Site* site, double jd, int eveningDate);

// The local clock as "%04d %3s %02d %02d%02d", in one shared buffer.
const char* StampText();

// Stage 1 from the local clock; the evening form 12 hours earlier; today
// at 0.0 hours.
void InstantNow(Site* site, Instant* instant);
void InstantNowEvening(Site* site, Instant* instant);
void InstantToday(Site* site, Instant* instant);
