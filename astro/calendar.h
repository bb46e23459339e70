// The calendar: Julian days with the change of 1582, leap years, days of
// the year and month, decimal years, centuries from J2000.0 and weekdays.
// Years are astronomical: year 0 exists, and negative years are allowed.
#pragma once

// Julian day of a date and UT hours. Before the Gregorian change the Julian
// calendar holds; the change is tested month by month in the autumn of
// 1582, so 1 to 14 November and December count as Julian.
double JulianDay(int month, int day, int year, double hours);

// Before 1582 every fourth year; 1582 itself is not; after it the Gregorian
// rule.
bool IsLeapYear(int year);

int DayOfYear(int month, int day, int year);

// Days between the new years; 1582 has 355.
int DaysInYear(int year);

int DaysInMonth(int month, int year);

// Year plus the elapsed fraction of it; minus the fraction for a negative
// year.
double DecimalYear(int month, int day, int year, double hours);

double DecimalYearToJd(double decimalYear);
double DecimalYearToCenturies(double decimalYear);
double CenturiesToJd(double t);
double JdToCenturies(double jd);

// 0 Sunday to 6 Saturday, for the Julian day of a civil midnight (x.5, or
// within half a day after it): after Greenwich noon it is one day on.
int WeekdayIndex(double jd);
const char* WeekdayName(double jd);

// "January" to "December" and "Jan" to "Dec" for 1 to 12; null outside.
const char* MonthName(int month);
const char* MonthAbbreviation(int month);
