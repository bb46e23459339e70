#include "astro/angle_text.h"

#include <cmath>
#include <cstdio>
#include <cstring>

#include "astro/numeric.h"

namespace {

bool gClockTwelveHour = false;
bool gLongitudeFromOpposite = false;

constexpr int kTextSize = 32;

// A value a hair below a whole unit of the last place shows that place: one
// 3,600,000th of a unit, a thousandth of an arc second of a degree.
constexpr double kTextBias = 2.777777777777778e-07;

// Rounds by adding 0.5 to a positive value or taking it from a non-positive
// one, then truncating.
int RoundHalfAway(double x) { return static_cast<int>(x > 0.0 ? x + 0.5 : x - 0.5); }

struct Split {
    bool negative;
    int whole;
    int minutes;
    double seconds;  // three-field forms only
};

Split Front(double value, double* fraction) {
    const double v = value + kTextBias;
    const double magnitude = std::fabs(v);
    Split s{v < 0.0, static_cast<int>(std::floor(magnitude)), 0, 0.0};
    *fraction = magnitude - std::floor(magnitude);
    return s;
}

// Whole part and minutes; `limit` 0 for no top wrap.
Split TwoFields(double value, int limit) {
    double f;
    Split s = Front(value, &f);
    s.minutes = RoundHalfAway(60.0 * f);
    if (s.minutes == 60) {
        s.minutes = 0;
        ++s.whole;
    }
    if (limit > 0 && s.whole >= limit) s.whole -= limit;
    return s;
}

// Whole part, minutes and seconds; the seconds carry at `carry`.
Split ThreeFields(double value, double carry, int limit) {
    double f;
    Split s = Front(value, &f);
    const double g = 60.0 * f;
    s.minutes = static_cast<int>(std::floor(g));
    s.seconds = 60.0 * (g - s.minutes);
    if (s.seconds >= carry) {
        s.seconds = 0.0;
        ++s.minutes;
    }
    if (s.minutes == 60) {
        s.minutes = 0;
        ++s.whole;
    }
    if (limit > 0 && s.whole >= limit) s.whole -= limit;
    return s;
}

// The clock's hour in 0 to 24, and the letter of the twelve-hour form.
char ClockHour(Split& s) {
    if (s.whole >= 24) s.whole -= 24;
    if (s.whole < 0) s.whole += 24;
    if (!gClockTwelveHour) return '\0';
    if (s.whole < 12) return 'a';
    s.whole -= 12;
    return 'p';
}

}  // namespace

void SetClockTwelveHour(bool on) { gClockTwelveHour = on; }
bool ClockTwelveHour() { return gClockTwelveHour; }
void SetLongitudeFromOpposite(bool on) { gLongitudeFromOpposite = on; }
bool LongitudeFromOpposite() { return gLongitudeFromOpposite; }

char* DegMinText(char* buffer, double degrees) {
    const Split s = TwoFields(degrees, 360);
    std::snprintf(buffer, kTextSize, s.negative ? "-%02d\xb0%2.2d'" : "+%02d\xb0%2.2d'", s.whole,
                  s.minutes);
    return buffer;
}

char* LonDegMinText(char* buffer, double degrees) {
    const Split s = TwoFields(degrees, 360);
    std::snprintf(buffer, kTextSize, s.negative ? "-%03d\xb0%2.2d'" : "+%03d\xb0%2.2d'", s.whole,
                  s.minutes);
    return buffer;
}

char* DegMinSecText(char* buffer, double degrees) {
    const Split s = ThreeFields(degrees, 59.5, 360);
    std::snprintf(buffer, kTextSize, s.negative ? "-%02d\xb0%2.2d'%2.2d\"" : "+%02d\xb0%2.2d'%2.2d\"",
                  s.whole, s.minutes, RoundHalfAway(s.seconds));
    return buffer;
}

char* DegMinSecTenthsText(char* buffer, double degrees) {
    const Split s = ThreeFields(degrees, 59.95, 360);
    std::snprintf(buffer, kTextSize,
                  s.negative ? "-%02d\xb0%2.2d'%04.1lf\"" : "+%02d\xb0%2.2d'%04.1lf\"", s.whole,
                  s.minutes, s.seconds);
    return buffer;
}

char* HourMinText(char* buffer, double hours) {
    const Split s = TwoFields(hours, 24);
    std::snprintf(buffer, kTextSize, s.negative ? "-%2.2dh%2.2dm" : " %2.2dh%2.2dm", s.whole,
                  s.minutes);
    return buffer;
}

char* HourMinSecText(char* buffer, double hours) {
    const Split s = ThreeFields(hours, 59.5, 0);
    std::snprintf(buffer, kTextSize, s.negative ? "-%2.2dh%2.2dm%2.2ds" : " %2.2dh%2.2dm%2.2ds",
                  s.whole, s.minutes, RoundHalfAway(s.seconds));
    return buffer;
}

// The negative form shows two decimals in five columns, the positive one
// one decimal in four; the carry is at 59.95 for both.
char* HourMinSecTenthsText(char* buffer, double hours) {
    const Split s = ThreeFields(hours, 59.95, 0);
    std::snprintf(buffer, kTextSize, s.negative ? "-%2.2dh%2.2dm%05.2lfs" : " %2.2dh%2.2dm%04.1lfs",
                  s.whole, s.minutes, s.seconds);
    return buffer;
}

char* ClockText(char* buffer, double hours) {
    Split s = TwoFields(hours, 24);
    const char letter = ClockHour(s);
    if (letter)
        std::snprintf(buffer, kTextSize, "%2.2d:%2.2d%c", s.whole, s.minutes, letter);
    else
        std::snprintf(buffer, kTextSize, "%2.2d:%2.2d", s.whole, s.minutes);
    return buffer;
}

char* ClockSecondsText(char* buffer, double hours) {
    Split s = ThreeFields(hours, 59.5, 24);
    const char letter = ClockHour(s);
    const int seconds = RoundHalfAway(s.seconds);
    if (letter)
        std::snprintf(buffer, kTextSize, "%2.2d:%2.2d:%2.2d%c", s.whole, s.minutes, seconds, letter);
    else
        std::snprintf(buffer, kTextSize, "%2.2d:%2.2d:%2.2d", s.whole, s.minutes, seconds);
    return buffer;
}

char* LongitudeText(char* buffer, double degrees) {
    if (gLongitudeFromOpposite) degrees = Wrap(degrees + 180.0, 360.0);
    return LonDegMinText(buffer, degrees);
}

namespace {

constexpr double kMinuteOfArc = 0.0002908882086657216;  // 60 arc seconds, radians
constexpr double kOneDegree = kRadiansPerDegree;

// DegMinSecText without its degrees: what follows the degree sign.
char* MinutesAndSeconds(char* buffer, double radians) {
    char full[kTextSize];
    DegMinSecText(full, radians / kRadiansPerDegree);
    const char* sign = std::strchr(full, kDegreeSign);
    std::snprintf(buffer, kTextSize, "%s", sign ? sign + 1 : full);
    return buffer;
}

}  // namespace

char* SmallAngleText(char* buffer, double radians) {
    if (radians < kMinuteOfArc) {
        std::snprintf(buffer, kTextSize, "%02.0lf\"", radians / kRadiansPerArcsecond);
        return buffer;
    }
    if (radians < kOneDegree) return MinutesAndSeconds(buffer, radians);
    if (radians < 10.0 * kOneDegree) return DegMinText(buffer, radians / kRadiansPerDegree);
    std::snprintf(buffer, kTextSize, "%02.0lf\xb0", radians / kRadiansPerDegree);
    return buffer;
}

char* SmallAngleTenthsText(char* buffer, double radians) {
    if (radians < kMinuteOfArc) {
        std::snprintf(buffer, kTextSize, "%02.1lf\"", radians / kRadiansPerArcsecond);
        return buffer;
    }
    if (radians < kOneDegree) return MinutesAndSeconds(buffer, radians);
    return DegMinSecText(buffer, radians / kRadiansPerDegree);
}
