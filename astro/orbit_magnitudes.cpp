#include "astro/orbit_magnitudes.h"

#include <cmath>

#include "astro/numeric.h"

namespace {

// 120 degrees, the largest phase the H, G law is used at.
constexpr double kLargestPhase = 2.094395102393195;

}  // namespace

double TriangleAngle(double a, double b, double c) {
    const double cosine = (a * a + c * c - b * b) / (2.0 * a * c);
    if (cosine < -1.0) return kPi;
    return SafeAcos(cosine);
}

double CometMagnitude(double r, double delta, double g, double k) {
    return g + 5.0 * std::log10(delta) + 2.5 * k * std::log10(r);
}

double MinorPlanetMagnitude(double r, double delta, double beta, double h, double g) {
    beta = Wrap(beta, kTwoPi);
    if (beta > kLargestPhase) beta = kLargestPhase;
    const double tanHalf = std::tan(beta / 2.0);
    const double phi1 = std::exp(-3.33 * std::pow(tanHalf, 0.63));
    const double phi2 = std::exp(-1.87 * std::pow(tanHalf, 1.22));
    return h + 5.0 * std::log10(r * delta) - 2.5 * std::log10((1.0 - g) * phi1 + g * phi2);
}
