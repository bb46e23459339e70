#include "astro/delta_t.h"

#include <cmath>

#include "astro/numeric.h"

namespace {

// Seconds, every second year from 1620; the 0 at the end is the last
// entry's neighbour.
constexpr unsigned char kTwoYearTable[91] = {
    124, 115, 106, 98, 91, 85, 79, 74, 70, 65, 62, 58, 55, 53, 50, 48, 46, 44, 42, 40, 37, 35, 33,
    31,  28,  26,  24, 22, 20, 18, 16, 14, 13, 12, 11, 10, 9,  9,  9,  9,  9,  9,  9,  9,  10, 10,
    10,  10,  10,  11, 11, 11, 11, 11, 11, 11, 11, 12, 12, 12, 12, 12, 13, 13, 13, 13, 14, 14, 14,
    15,  15,  15,  15, 16, 16, 16, 16, 16, 17, 17, 17, 17, 17, 17, 17, 17, 16, 16, 15, 14, 0};

struct ObservedRow {
    float year;
    float seconds;
};

// Monthly from 1972.00 to 1998.92, quarterly from 1999.00 to 2002.00.
constexpr ObservedRow kObserved[] = {
#include "astro/delta_t_observed.inc"
};
static_assert(sizeof kObserved / sizeof kObserved[0] == 337);

// In days, over theta = (jd - 2415020) / 36525, lowest power first.
constexpr double k1800Polynomial[] = {-0.000009, 0.003844,  0.083563,  0.865736,
                                      4.867575,  15.845535, 31.332267, 38.291999,
                                      28.316289, 11.636204, 2.043794};
constexpr double k1900Polynomial[] = {-0.00002, 0.000297,  0.025184, -0.181133,
                                      0.55304,  -0.861938, 0.677066, -0.212591};

double Parabola(double jd) {
    const double x = jd - 2382148.0;
    return x * x / 41048480.0 - 15.0;
}

double FromTwoYearTable(double year) {
    const double x = (year - 1620.0) / 2.0;
    const int i = static_cast<int>(x);
    const double f = x - i;
    return kTwoYearTable[i] + f * (kTwoYearTable[i + 1] - kTwoYearTable[i]);
}

// The monthly row for a year up to 1999: the fifth step is at .41 while the
// row itself stands at .42.
int MonthlyRow(double year) {
    static constexpr double kSteps[11] = {0.08, 0.16, 0.25, 0.33, 0.41, 0.5,
                                          0.58, 0.67, 0.75, 0.83, 0.92};
    const double g = FracPart(year);
    int row = 12 * (static_cast<int>(std::floor(year)) - 1972);
    int k = 0;
    while (k < 11 && g >= kSteps[k]) ++k;
    return row + k;
}

int QuarterlyRow(double year) {
    const double g = FracPart(year);
    const int q = g < 0.25 ? 0 : g < 0.5 ? 1 : g < 0.75 ? 2 : 3;
    return 324 + 4 * (static_cast<int>(std::floor(year)) - 1999) + q;
}

double FromObservedTable(double year) {
    if (year >= 2002.0) return 66.2 + 0.98 * (year - 2002.0);
    const int row = year <= 1999.0 ? MonthlyRow(year) : QuarterlyRow(year);
    const ObservedRow& a = kObserved[row];
    const ObservedRow& b = kObserved[row + 1];
    return a.seconds + (year - a.year) * (b.seconds - a.seconds) / (b.year - a.year);
}

}  // namespace

double DeltaTSeconds(double year, double jd, double t) {
    if (year < 948.0) return 2715.6 + 573.36 * t + 46.5 * t * t;
    if (year < 1601.0) return 50.6 + 67.5 * t + 22.5 * t * t;
    if (year < 1620.0) return Parabola(jd);
    if (year <= 1798.0) return FromTwoYearTable(year);
    if (year <= 1799.0) return Parabola(jd);
    const double theta = (jd - 2415020.0) / 36525.0;
    if (year < 1900.0) return 86400.0 * Polynomial(k1800Polynomial, 10, theta);
    if (year < 1972.0) return 86400.0 * Polynomial(k1900Polynomial, 7, theta);
    if (year <= 2012.0) return FromObservedTable(year);
    if (year <= 2050.0) return Parabola(jd) - 41.6;
    return 132.0;
}
