// What the user types: sexagesimal values in any of several spellings,
// calendar dates with era and clock words, Julian days, clock times.
#pragma once

#include "astro/instant.h"

// A failed parse of a real gives this, of an integer kParseFailedInt. It is
// an ordinary value: every caller compares against it.
inline constexpr double kParseFailed = 2147483647.0;
inline constexpr long kParseFailedInt = 0x7fffffff;

// "12h34m56s", "12:34:56", "12 34 56" and 12°34'56" all read alike; a
// trailing P adds 12 hours to a clock time. An empty text is 0.0.
double ParseSexagesimal(const char* text);

// "1999 Aug 11.5", "2000 Jan 1 20:30 UT", "44 BC", "1999.5", "JD 2451545".
// Fills stage 1 of `instant`. 1 done, 0 bad text, -1 "JD" without a
// number. The text is cut up on the way.
int ParseDateTime(char* text, Site* site, Instant* instant);

// A clock time with optional AM/PM/UT words; the standard clock time of the
// site for UT. 0.0 for null text, kParseFailed for a bad one.
double ParseClock(const char* text, const Site* site);
