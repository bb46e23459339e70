#include "astro/spherical.h"

#include <cmath>

#include "astro/numeric.h"

void RotateAboutX(const double* v, double cosA, double sinA, double* result) {
    const double y = cosA * v[1] - sinA * v[2];
    const double z = sinA * v[1] + cosA * v[2];
    result[0] = v[0];
    result[1] = y;
    result[2] = z;
}

void RotateAboutZ(const double* v, double cosA, double sinA, double* result) {
    const double x = cosA * v[0] - sinA * v[1];
    const double y = sinA * v[0] + cosA * v[1];
    result[0] = x;
    result[1] = y;
    result[2] = v[2];
}

double Separation(double lon1, double lat1, double lon2, double lat2) {
    const double h = (1.0 - std::cos(lat2 - lat1)) / 2.0 +
                     std::cos(lat1) * std::cos(lat2) * (1.0 - std::cos(lon2 - lon1)) / 2.0;
    return 2.0 * SafeAsin(std::sqrt(h));
}

double PositionAngle(double ra1, double dec1, double ra2, double dec2) {
    const double dRa = ra2 - ra1;
    const double east = std::sin(dRa) * std::cos(dec2);
    const double north = std::cos(dec1) * std::sin(dec2) - std::sin(dec1) * std::cos(dec2) * std::cos(dRa);
    return Wrap(SafeAtan2(east, north), kTwoPi);
}

void VectorDifference(const double* a, const double* b, double* result) {
    double ra[3], rb[3];
    SphericalToRect(a[0], a[1], a[2], ra);
    SphericalToRect(b[0], b[1], b[2], rb);
    const double d[3] = {ra[0] - rb[0], ra[1] - rb[1], ra[2] - rb[2]};
    RectToSpherical(d, &result[0], &result[1], &result[2]);
}

void VectorSum(const double* a, const double* b, double* result) {
    const double s[3] = {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
    RectToSpherical(s, &result[0], &result[1], &result[2]);
}
