#include "astro/magnitudes.h"

#include <cmath>
#include <cstdio>
#include <cstring>

#include "astro/numeric.h"
#include "astro/text_parse.h"

namespace {

constexpr char kClasses[] = "OBAFGKM";

// B-V by class (rows, in the order above) and digit.
constexpr double kColorIndex[7][10] = {
    {-0.32, -0.32, -0.32, -0.32, -0.32, -0.32, -0.32, -0.32, -0.31, -0.31},
    {-0.30, -0.26, -0.24, -0.20, -0.18, -0.16, -0.14, -0.12, -0.09, -0.06},
    {0.00, 0.03, 0.06, 0.09, 0.12, 0.15, 0.18, 0.21, 0.24, 0.27},
    {0.29, 0.32, 0.35, 0.38, 0.42, 0.45, 0.48, 0.51, 0.54, 0.56},
    {0.58, 0.60, 0.62, 0.64, 0.66, 0.69, 0.72, 0.75, 0.78, 0.81},
    {0.85, 0.91, 0.97, 1.03, 1.09, 1.16, 1.21, 1.26, 1.31, 1.36},
    {1.42, 1.46, 1.50, 1.54, 1.58, 1.61, 1.66, 1.70, 1.74, 1.79},
};

}  // namespace

double RoundSignificant(double x, int digits) {
    if (x == 0.0) return 0.0;
    const double magnitude = std::fabs(x);
    const double p = std::pow(10.0, std::floor(std::log10(magnitude)) - digits + 1);
    const double rounded = p * std::trunc(magnitude / p + 0.5);
    return x < 0.0 ? -rounded : rounded;
}

double ColorIndexOfClass(const char* text) {
    char letter = '\0';
    int digit = 0;
    if (!text || std::sscanf(text, "%c%d", &letter, &digit) < 1) return kParseFailed;
    const char* row = letter ? std::strchr(kClasses, letter) : nullptr;
    if (!row || digit < 0 || digit > 9) return kParseFailed;
    return kColorIndex[row - kClasses][digit];
}

double SurfaceBrightness(double majorArcmin, double minorArcmin, double magnitude) {
    return magnitude + 2.5 * std::log10(900.0 * kPi * majorArcmin * minorArcmin);
}

double RedshiftDistance(double z) {
    const double w = (1.0 + z) * (1.0 + z);
    return 15000.0 * (w - 1.0) / (w + 1.0);
}

double VelocityDistance(double v) { return 0.05 * v; }

double VelocityRedshift(double v) { return v / 300000.0; }
