#include "catalog/catalogue_codes.h"

#include <cmath>
#include <cstdio>
#include <numbers>

namespace {
constexpr double kScale = 2147483647.0;
constexpr double kTurn = 2.0 * std::numbers::pi;

uint32_t RoundedCode(double x, uint32_t maxCode) {
    if (!(x > 0)) return 0;
    const double r = std::floor(x + 0.5);
    return r >= maxCode ? maxCode : static_cast<uint32_t>(r);
}
}  // namespace

double scaledAngleToRadians(int32_t v) { return v * kTurn / kScale; }

int32_t radiansToScaledAngle(double radians) {
    const double x = radians / kTurn * kScale;
    return static_cast<int32_t>(x >= 0 ? x + 0.5 : x - 0.5);
}

double properMotionFromCode(uint32_t code) { return code * 0.00001 - 7.5; }

uint32_t properMotionCode(double arcsecPerYear) {
    return RoundedCode((arcsecPerYear + 7.5) / 0.00001, (1u << 21) - 1);
}

double starMagnitudeFromCode(uint32_t code) {
    return code == kMagnitudeUnknownCode ? 99.9 : code * 0.01 - 1.6;
}

uint32_t starMagnitudeCode(double magnitude) {
    if (magnitude >= 90) return kMagnitudeUnknownCode;
    const uint32_t code = RoundedCode((magnitude + 1.6) / 0.01, kMagnitudeUnknownCode - 1);
    return code;
}

double thousandthsValue(int16_t v) { return v == 32767 ? 99.9 : v * 0.001; }

int16_t thousandthsCode(double value) {
    if (value >= 32.767 || value <= -32.768) return 32767;
    const double x = value * 1000.0;
    return static_cast<int16_t>(x >= 0 ? x + 0.5 : x - 0.5);
}

double parallaxFromCode(uint32_t code) { return (code * 0.01 - 920) * 0.001; }

uint32_t parallaxCode(double arcsec) {
    return RoundedCode((arcsec / 0.001 + 920) / 0.01, (1u << 18) - 1);
}

std::string spectralText(uint16_t code) {
    static const char kClasses[] = "OBAFGKMRNSCP";
    static const char* const kLuminosity[] = {"", "I", "II", "III", "IV", "V"};
    const int cls = code & 0xF;
    const int sub = (code >> 4) & 0x7F;
    const int lum = code >> 11;
    std::string out;
    if (cls == 0 || cls == 15) return out;
    char buf[32];
    std::snprintf(buf, sizeof buf, "%c", kClasses[cls - 1]);
    out = buf;
    // The subclass is kept in tenths, plus 1: 35 is 2.5, 10 is 0. Whole
    // values are told by the tenths themselves, so 30 prints "2", not "2.0".
    if (sub % 10 != 0) {
        std::snprintf(buf, sizeof buf, "%2.1lf ", (sub - 10) * 0.1);
        out += buf;
    } else if (sub > 0) {
        std::snprintf(buf, sizeof buf, "%d", sub / 10 - 1);
        out += buf;
    }
    if (lum >= 1 && lum <= 4) out += kLuminosity[lum];
    return out;
}
