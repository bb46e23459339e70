#include "astro/calendar.h"

#include <cmath>

#include "astro/numeric.h"

namespace {

constexpr int kMonthDays[13] = {0, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

const char* const kMonthNames[13] = {nullptr,   "January", "February", "March",     "April",
                                     "May",     "June",    "July",     "August",    "September",
                                     "October", "November", "December"};
const char* const kMonthAbbreviations[13] = {nullptr, "Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                             "Jul",   "Aug", "Sep", "Oct", "Nov", "Dec"};
const char* const kWeekdayNames[7] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                      "Thursday", "Friday", "Saturday"};

}  // namespace

double JulianDay(int month, int day, int year, double hours) {
    int y = year;
    int m = month;
    if (month < 3) {
        y = year - 1;
        m = month + 12;
    }
    int b = 0;
    if (y > 1582 || (y == 1582 && m > 9 && day > 14)) {
        const int a = y / 100;
        b = 2 - a + static_cast<int>(std::floor(a / 4.0));
    }
    return std::floor(365.25 * (y + 4716)) + std::floor(30.6001 * (m + 1)) + day + b - 1525 +
           hours / 24.0 + 0.5;
}

bool IsLeapYear(int year) {
    if (year < 1582) return year % 4 == 0;
    if (year == 1582) return false;
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

int DayOfYear(int month, int day, int year) {
    const int k = IsLeapYear(year) ? 1 : 2;
    return 275 * month / 9 - k * ((month + 9) / 12) + day - 30;
}

int DaysInYear(int year) {
    return static_cast<int>(JulianDay(1, 1, year + 1, 0.0) - JulianDay(1, 1, year, 0.0));
}

int DaysInMonth(int month, int year) {
    if (month == 2 && IsLeapYear(year)) return 29;
    return month >= 1 && month <= 12 ? kMonthDays[month] : 0;
}

double DecimalYear(int month, int day, int year, double hours) {
    const double f = (DayOfYear(month, day, year) - 1 + hours / 24.0) / DaysInYear(year);
    return year < 0 ? year - f : year + f;
}

double DecimalYearToJd(double decimalYear) {
    const int i = static_cast<int>(decimalYear);
    return JulianDay(1, 1, i, 0.0) + (decimalYear - i) * DaysInYear(i);
}

double DecimalYearToCenturies(double decimalYear) {
    return JdToCenturies(DecimalYearToJd(decimalYear));
}

double CenturiesToJd(double t) { return t * kDaysPerCentury + kJ2000; }

double JdToCenturies(double jd) { return (jd - kJ2000) / kDaysPerCentury; }

int WeekdayIndex(double jd) {
    const double x = 7.0 * FracPart((std::floor(jd) + 2.0) / 7.0);
    return static_cast<int>(x > 0.0 ? x + 0.5 : x - 0.5);
}

const char* WeekdayName(double jd) {
    const int i = WeekdayIndex(jd);
    return i >= 0 && i < 7 ? kWeekdayNames[i] : nullptr;
}

const char* MonthName(int month) {
    return month >= 1 && month <= 12 ? kMonthNames[month] : nullptr;
}

const char* MonthAbbreviation(int month) {
    return month >= 1 && month <= 12 ? kMonthAbbreviations[month] : nullptr;
}
