#include "astro/numeric.h"

#include <cmath>

double Wrap(double x, double m) {
    if (x > m) x = m * FracPart(x / m);
    if (x < 0.0) return m - Wrap(std::fabs(x), m);
    return x;
}

double WrapPi(double x) {
    const double w = Wrap(x, kTwoPi);
    return w > kPi ? w - kTwoPi : w;
}

double AngleDiff(double a, double b) {
    double d = std::fmod(a - b, kTwoPi);
    if (d > kPi) d -= kTwoPi;
    if (d < -kPi) d += kTwoPi;
    return d;
}

double SafeAtan2(double y, double x) {
    if (x != 0.0) return std::atan2(y, x);
    if (y == 0.0) return 0.0;
    return y > 0.0 ? kPi / 2.0 : 3.0 * kPi / 2.0;
}

double SafeAsin(double x) {
    if (x >= 1.0) return kPi / 2.0;
    if (x <= -1.0) return -kPi / 2.0;
    return std::asin(x);
}

double SafeAcos(double x) {
    if (x >= 1.0) return 0.0;
    if (x <= -1.0) return kPi;
    return std::acos(x);
}

double FracPart(double x) {
    double whole;
    return std::modf(x, &whole);
}

double IntPart(double x) {
    double whole;
    std::modf(x, &whole);
    return whole;
}

double Polynomial(const double* coefficients, int degree, double x) {
    double sum = coefficients[degree];
    for (int i = degree - 1; i >= 0; --i) sum = sum * x + coefficients[i];
    return sum;
}

void SinCosMultiples(double angle, int n, double* sines, double* cosines) {
    if (n < 1) return;
    const double s = std::sin(angle);
    const double c = std::cos(angle);
    sines[1] = s;
    cosines[1] = c;
    for (int k = 2; k <= n; ++k) {
        sines[k] = sines[k - 1] * c + cosines[k - 1] * s;
        cosines[k] = cosines[k - 1] * c - sines[k - 1] * s;
    }
}

void SphericalToRect(double longitude, double latitude, double radius, double* vector) {
    const double cosLat = std::cos(latitude);
    vector[0] = radius * cosLat * std::cos(longitude);
    vector[1] = radius * cosLat * std::sin(longitude);
    vector[2] = radius * std::sin(latitude);
}

void RectToSpherical(const double* vector, double* longitude, double* latitude, double* radius) {
    const double r = std::sqrt(vector[0] * vector[0] + vector[1] * vector[1] + vector[2] * vector[2]);
    *radius = r;
    *longitude = Wrap(SafeAtan2(vector[1], vector[0]), kTwoPi);
    *latitude = r > 0.0 ? SafeAsin(vector[2] / r) : 0.0;
}

double Interp3(double y1, double y2, double y3, double n) {
    const double a = y2 - y1;
    const double b = y3 - y2;
    return y2 + (n / 2.0) * (a + b + n * (b - a));
}
