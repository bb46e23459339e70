// Angles, hours and clock times as text, with exact carry rules. Every
// formatter writes into the caller's buffer (32 bytes are enough) and
// returns it; values are in degrees or hours, never radians. The degree
// sign is the one byte 0xB0.
#pragma once

inline constexpr char kDegreeSign = '\xb0';

// Module settings, both false at start.
void SetClockTwelveHour(bool on);
bool ClockTwelveHour();
void SetLongitudeFromOpposite(bool on);
bool LongitudeFromOpposite();

char* DegMinText(char* buffer, double degrees);            // "+12°34'"
char* LonDegMinText(char* buffer, double degrees);         // "+012°34'"
char* DegMinSecText(char* buffer, double degrees);         // "+12°34'56""
char* DegMinSecTenthsText(char* buffer, double degrees);   // "+12°34'56.7""
char* HourMinText(char* buffer, double hours);             // " 12h34m"
char* HourMinSecText(char* buffer, double hours);          // " 12h34m56s", no wrap at 24
char* HourMinSecTenthsText(char* buffer, double hours);    // " 12h34m56.7s"; negative: two decimals
char* ClockText(char* buffer, double hours);               // "12:34", or "00:34p"
char* ClockSecondsText(char* buffer, double hours);        // "12:34:56"

// LonDegMinText, from the opposite side when that setting is on.
char* LongitudeText(char* buffer, double degrees);

// Angles that may be small, given in radians: seconds, then minutes and
// seconds, then degrees.
char* SmallAngleText(char* buffer, double radians);
char* SmallAngleTenthsText(char* buffer, double radians);
