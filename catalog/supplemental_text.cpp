#include "catalog/supplemental_text.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

#include "astro/numeric.h"
#include "astro/precession.h"
#include "astro/text_parse.h"

namespace {

// B1900.0 and the length of a tropical year, for the Julian day of a
// Besselian epoch.
constexpr double kB1900Jd = 2415020.31352;
constexpr double kTropicalYearDays = 365.242198781;

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

// The year of an equinox field; the letter says Besselian or Julian.
bool ParseEquinox(const std::string& field, bool* besselian, double* year) {
    std::string digits = field;
    *besselian = false;
    if (!digits.empty() && (digits[0] == 'B' || digits[0] == 'b')) {
        *besselian = true;
        digits.erase(0, 1);
    } else if (!digits.empty() && (digits[0] == 'J' || digits[0] == 'j')) {
        digits.erase(0, 1);
    }
    if (digits.empty()) return false;
    char* end = nullptr;
    *year = std::strtod(digits.c_str(), &end);
    return *end == '\0' && std::isfinite(*year) && *year > 0;
}

}  // namespace

std::string supplementalLineName(const char* line, size_t from) {
    const size_t length = std::strlen(line);
    if (from >= length) return "";
    std::string name(line + from, std::min<size_t>(32, length - from));
    while (!name.empty() && IsBlank(name.back())) name.pop_back();
    size_t start = 0;
    while (start < name.size() && IsBlank(name[start])) ++start;
    return name.substr(start);
}

std::vector<std::string> supplementalLineFields(const char* line, size_t from) {
    std::vector<std::string> fields;
    if (from >= std::strlen(line)) return fields;
    const char* p = line + from;
    while (*p) {
        while (*p && IsBlank(*p)) ++p;
        const char* start = p;
        while (*p && !IsBlank(*p)) ++p;
        if (p > start) fields.emplace_back(start, p);
    }
    return fields;
}

int supplementalPlace(const std::string& raText, const std::string& decText, const std::string& equinox,
                      double* raOut, double* decOut) {
    const double hours = ParseSexagesimal(raText.c_str());
    const double degrees = ParseSexagesimal(decText.c_str());
    bool besselian = false;
    double year = 0;
    if (hours == kParseFailed || degrees == kParseFailed || !ParseEquinox(equinox, &besselian, &year))
        return 0;
    // A place off the sphere would be stored as some other place (an hour
    // of 24 or more overflows the scaled RA): such a line is bad.
    if (hours < 0 || hours >= 24 || std::fabs(degrees) > 90) return 0;
    double ra = hours * kPi / 12.0;
    double dec = degrees * kRadiansPerDegree;
    if (besselian || year != 2000.0) {
        // The epoch of the equinox in Julian centuries from J2000.0.
        const double epoch = besselian ? (kB1900Jd + (year - 1900.0) * kTropicalYearDays - kJ2000) / kDaysPerCentury
                                       : (year - 2000.0) / 100.0;
        PrecessionContext context;
        PrecessionPrepare(&context, epoch, 0.0, besselian ? kFk4 : kFk5, kFk5);
        PrecessionApply(&context, &ra, &dec, 0.0, 0.0, 0);
        ra = Wrap(ra, kTwoPi);
    }
    *raOut = ra;
    *decOut = dec;
    return 1;
}

void setSupplementalName(char (&field)[33], const std::string& name) {
    std::memset(field, 0, sizeof field);
    std::memcpy(field, name.data(), std::min<size_t>(name.size(), sizeof field - 1));
}

int scaledToI16(double value, double factor, int16_t* out) {
    const double x = value * factor;
    if (!std::isfinite(x)) return 0;
    const double rounded = x >= 0 ? std::floor(x + 0.5) : std::ceil(x - 0.5);
    if (rounded < -32768.0 || rounded > 32767.0) return 0;
    *out = static_cast<int16_t>(rounded);
    return 1;
}
