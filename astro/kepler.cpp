#include "astro/kepler.h"

#include <cmath>

#include "astro/numeric.h"

namespace {

// Newton's method on Kepler's and Barker's equations stops once a step is
// this small.
constexpr double kNewtonTolerance = 1e-06;

// 3 k / root 2: Barker's equation as s^3 + 3 s = W with W this times days
// over q^(3/2).
constexpr double kBarkerFactor = 0.03649116245;

// The near-parabolic series: its rounds, terms and tolerances.
constexpr int kSeriesRounds = 49;
constexpr int kSeriesTerms = 49;
constexpr double kSeriesTermTolerance = 1e-08;
constexpr double kSeriesStepTolerance = 1e-05;

// A start close to the root for orbits near the parabola, where E = M would
// send the first Newton steps far away.
double NearParabolicStart(double m, double e) {
    const double alpha = (1.0 - e) / (4.0 * e + 0.5);
    const double beta = m / (8.0 * e + 1.0);
    const double w = std::sqrt(alpha * alpha + beta * beta);
    const double z = beta < 0 ? -std::cbrt(-beta + w) : std::cbrt(beta + w);
    const double s = z - alpha / 2.0;
    const double s1 = s * (1.0 - 0.078 * std::pow(s, 4) / (1.0 + e));
    return m + e * s1 * (3.0 - 4.0 * s1 * s1);
}

// tan(v/2) on the parabola: the root of s^3 + 3 s = W.
double BarkerTangent(double dt, double q) {
    const double w = kBarkerFactor * kDaysPerCentury * dt / (q * std::sqrt(q));
    double s = w / 3.0;
    double d;
    do {
        d = (w - (s * s + 3.0) * s) / (3.0 * s * s + 3.0);
        s += d;
    } while (std::fabs(d) > kNewtonTolerance);
    return s;
}

}  // namespace

double KeplerSolve(double meanAnomaly, double e) {
    const double m = WrapPi(meanAnomaly);
    double E = (e > 0.97 && std::fabs(m) < 0.6) ? NearParabolicStart(m, e) : m;
    double d;
    do {
        d = (m + e * std::sin(E) - E) / (1.0 - e * std::cos(E));
        E += d;
    } while (std::fabs(d) > kNewtonTolerance);
    return E;
}

double TrueFromEccentric(double eccentricAnomaly, double anomalyFactor) {
    return 2.0 * std::atan(anomalyFactor * std::tan(eccentricAnomaly / 2.0));
}

double ParabolaSolve(double dt, double q) {
    return 2.0 * std::atan(BarkerTangent(dt, q));
}

// The equation solved is s + sum over l of h_l (-1)^(l+1) g^(l-1)
// s^(2l+1)/(2l+1) = Q, with h_l = l - (l + 1) g: for g = 0 it is Barker's.
// Each round sums the series at the last s (into s) and its derivative
// (into f), and takes one Newton step.
double NearParabolaSolve(double dt, double q, double e) {
    const double days = kDaysPerCentury * dt;
    double s = BarkerTangent(dt, q);
    const double g = (1.0 - e) / (1.0 + e);
    const double bigQ = kGaussK * std::sqrt((1.0 + e) / q) / (2.0 * q) * days;
    for (int round = 0; round < kSeriesRounds; ++round) {
        const double s0 = s;
        double f = 0;
        double y = -s0 * s0;
        s = bigQ;
        for (int l = 1; l <= kSeriesTerms; ++l) {
            const double h = l - (l + 1) * g;
            s += h * y * s0 / (2 * l + 1);
            f += h * y;
            y = -y * g * s0 * s0;
            if (std::fabs(y) <= kSeriesTermTolerance) break;
        }
        const double d = (s - s0) / (f - 1.0);
        s = s0 - d;
        if (std::fabs(d) <= kSeriesStepTolerance) break;
    }
    return 2.0 * std::atan(s);
}
