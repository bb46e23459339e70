// The small numeric helpers that all engine code shares: wrapping of
// angles, trigonometry that is safe at its edges, polynomials, multiples of
// an angle, vectors and three-point interpolation.
#pragma once

#include <numbers>

inline constexpr double kPi = std::numbers::pi;
inline constexpr double kTwoPi = 2.0 * std::numbers::pi;
inline constexpr double kRadiansPerDegree = std::numbers::pi / 180.0;
inline constexpr double kRadiansPerArcsecond = std::numbers::pi / 648000.0;
inline constexpr double kJ2000 = 2451545.0;
inline constexpr double kDaysPerCentury = 36525.0;

// x reduced to 0 to m: m itself stays m, and 0 stays 0.
double Wrap(double x, double m);

// x reduced to -pi to pi.
double WrapPi(double x);

// a - b the shorter way round: positive when a is ahead, at most pi.
double AngleDiff(double a, double b);

// atan2, except that x exactly 0 gives 0, pi/2 or 3 pi/2 (never -pi/2).
double SafeAtan2(double y, double x);
// asin and acos held at their ends for arguments past +-1.
double SafeAsin(double x);
double SafeAcos(double x);

// The two parts of the standard split of a real; the fraction keeps x's sign.
double FracPart(double x);
double IntPart(double x);

// Horner's rule over degree + 1 coefficients, lowest power first.
double Polynomial(const double* coefficients, int degree, double x);

// Entries 1 to n of `sines` and `cosines` get sin(k a), cos(k a), by the
// angle-addition recurrence from entry 1. Entry 0 is left alone.
void SinCosMultiples(double angle, int n, double* sines, double* cosines);

// Records of three reals: (longitude, latitude, radius) and (x, y, z).
void SphericalToRect(double longitude, double latitude, double radius, double* vector);
// The longitude comes back in 0 to 2 pi.
void RectToSpherical(const double* vector, double* longitude, double* latitude, double* radius);

// Interpolation on three equally spaced values, n from -1 to 1 around y2.
double Interp3(double y1, double y2, double y3, double n);
