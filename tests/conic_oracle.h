// Reference places on the conics for the orbit tests, found by the classical
// route of each kind of conic and by plain bisection on the equation of
// time itself: no Newton step, no series in (1 - e)/(1 + e), no Gaussian
// vectors.
#pragma once

#include <cmath>

namespace oracle {

inline constexpr double kGauss = 0.01720209895;  // k, radians a day
inline constexpr double kPi = 3.14159265358979323846;
inline constexpr double kDeg = kPi / 180.0;

// The x in [lo, hi] where the increasing f reaches `target`.
template <class F>
double Bisect(F f, double lo, double hi, double target) {
    for (int i = 0; i < 200; ++i) {
        const double mid = (lo + hi) / 2;
        (f(mid) < target ? lo : hi) = mid;
    }
    return (lo + hi) / 2;
}

// x - sin x (sign -1) and sinh x - x (sign 1), by their power series near
// 0, where the differences would lose their digits.
inline double CubicAndUp(double x, int sign) {
    if (std::fabs(x) > 1) return sign < 0 ? x - std::sin(x) : std::sinh(x) - x;
    double term = x * x * x / 6, sum = 0;
    for (int k = 1; k < 30; ++k) {
        sum += term;
        term *= sign * x * x / ((2 * k + 2) * (2 * k + 3));
    }
    return sum;
}
inline double XMinusSin(double x) { return CubicAndUp(x, -1); }
inline double SinhMinusX(double x) { return CubicAndUp(x, 1); }

struct Conic {
    double v;  // true anomaly, radians
    double r;  // radius, au
};

// The body `days` after perihelion on the conic of perihelion distance q
// and eccentricity e.
inline Conic ConicAt(double days, double q, double e) {
    if (e < 1) {  // E - e sin E = M
        const double a = q / (1 - e);
        const double m = std::remainder(kGauss * days / (a * std::sqrt(a)), 2 * kPi);
        const double E = Bisect([e](double x) { return (1 - e) * x + e * XMinusSin(x); }, -kPi,
                                kPi, m);
        const double v = 2 * std::atan2(std::sqrt(1 + e) * std::sin(E / 2),
                                        std::sqrt(1 - e) * std::cos(E / 2));
        const double s = std::sin(E / 2);
        return {v, a * ((1 - e) + 2 * e * s * s)};
    }
    if (e == 1) {  // tan(v/2) + tan(v/2)^3/3 = W/3, by Cardano's formula
        const double w = 3 * kGauss * days / std::sqrt(2 * q * q * q);
        const double u = std::cbrt(std::fabs(w) / 2 + std::sqrt(w * w / 4 + 1));
        const double s = std::copysign(u - 1 / u, w);
        return {2 * std::atan(s), q * (1 + s * s)};
    }
    // e sinh H - H = M
    const double a = q / (e - 1);
    const double m = kGauss * days / (a * std::sqrt(a));
    const double h = Bisect([e](double x) { return (e - 1) * x + e * SinhMinusX(x); }, -30, 30, m);
    const double v = 2 * std::atan(std::sqrt((e + 1) / (e - 1)) * std::tanh(h / 2));
    const double s = std::sinh(h / 2);
    return {v, a * ((e - 1) + 2 * e * s * s)};
}

// Heliocentric equatorial J2000.0 rectangular place from the true anomaly
// and radius: the classical formulae in the ecliptic, then the turn about x
// by the J2000.0 obliquity 23 deg 26' 21.448".
inline void Place(const Conic& c, double peri, double node, double incl, double out[3]) {
    const double u = peri + c.v;
    const double x = c.r * (std::cos(u) * std::cos(node) - std::sin(u) * std::sin(node) * std::cos(incl));
    const double y = c.r * (std::cos(u) * std::sin(node) + std::sin(u) * std::cos(node) * std::cos(incl));
    const double z = c.r * std::sin(u) * std::sin(incl);
    const double eps = (23.0 + 26.0 / 60 + 21.448 / 3600) * kDeg;
    out[0] = x;
    out[1] = y * std::cos(eps) - z * std::sin(eps);
    out[2] = y * std::sin(eps) + z * std::cos(eps);
}

}  // namespace oracle
