#include "catalog/comet_elements_text.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string>

#include "astro/calendar.h"

namespace {

constexpr double kBad = 2147483647.0;
constexpr long kBadInt = 0x7fffffff;

std::string Trimmed(const std::string& s) {
    const size_t a = s.find_first_not_of(' ');
    if (a == std::string::npos) return "";
    return s.substr(a, s.find_last_not_of(' ') - a + 1);
}

// Columns `first` to `last`, counted from 1, of a line padded with blanks.
std::string Columns(const std::string& line, size_t first, size_t last) {
    return line.substr(first - 1, last - first + 1);
}

// A field that reads whole as a number, or the parse sentinel: a stray
// character makes the line bad rather than a number cut short.
double Real(const std::string& line, size_t first, size_t last) {
    const std::string field = Trimmed(Columns(line, first, last));
    if (field.empty()) return kBad;
    char* end = nullptr;
    const double v = std::strtod(field.c_str(), &end);
    return *end == '\0' && std::isfinite(v) ? v : kBad;
}

long Whole(const std::string& line, size_t first, size_t last) {
    const std::string field = Trimmed(Columns(line, first, last));
    if (field.empty() || field.find_first_not_of("0123456789") != std::string::npos) return kBadInt;
    return std::strtol(field.c_str(), nullptr, 10);
}

// Julian centuries from J2000.0 of a calendar date with a day fraction;
// false for a date that doesn't read.
bool Centuries(long year, long month, double day, double* t) {
    if (year == kBadInt || month < 1 || month > 12 || day == kBad || day < 1 || day >= 33) return false;
    const int whole = static_cast<int>(day);
    *t = JdToCenturies(JulianDay(static_cast<int>(month), whole, static_cast<int>(year),
                                 (day - whole) * 24.0));
    return true;
}

// "1P/Halley": name after the '/'; "C/1995 O1 (Hale-Bopp)": designation up
// to the bracket and the name inside it.
void SplitDesignation(const std::string& text, bool numbered, std::string* iau, std::string* name) {
    const size_t slash = text.find('/');
    const std::string rest = slash == std::string::npos ? text : text.substr(slash + 1);
    if (numbered) {
        *iau = "";
        *name = Trimmed(rest);
        return;
    }
    const size_t open = rest.find(" (");
    *iau = Trimmed(rest.substr(0, open));
    *name = "";
    if (open != std::string::npos) {
        const size_t close = rest.find(')', open);
        *name = Trimmed(rest.substr(open + 2, close == std::string::npos ? std::string::npos
                                                                         : close - open - 2));
    }
}

}  // namespace

int parseCometElementsLine(const char* text, CometRecord* out) {
    if (!text || !out) return 0;
    std::string line(text);
    while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) line.pop_back();
    if (Trimmed(line).empty() || line[0] == '#') return -1;
    if (line.size() < 100) return 0;
    line.resize(std::max<size_t>(line.size(), 200), ' ');

    const long number = Whole(line, 1, 4);
    const char letter = line[4];
    CometElements e;
    double day = Real(line, 23, 29);
    if (!Centuries(Whole(line, 15, 18), Whole(line, 20, 21), day, &e.perihelionEpoch)) return 0;
    e.perihelionDistance = Real(line, 31, 39);
    e.eccentricity = Real(line, 42, 49);
    e.argPerihelion = Real(line, 52, 59);
    e.node = Real(line, 62, 69);
    e.inclination = Real(line, 72, 79);
    for (double v : {e.perihelionDistance, e.eccentricity, e.argPerihelion, e.node, e.inclination})
        if (v == kBad) return 0;
    if (e.perihelionDistance <= 0 || e.eccentricity < 0) return 0;
    const long epoch = Whole(line, 82, 89);
    if (epoch == kBadInt)
        e.epoch = e.perihelionEpoch;
    else if (!Centuries(epoch / 10000, epoch / 100 % 100, static_cast<double>(epoch % 100), &e.epoch))
        return 0;
    const double g = Real(line, 92, 95), k = Real(line, 97, 100);
    e.brightnessG = g == kBad ? 0 : g;
    e.brightnessK = k == kBad ? 0 : k;

    std::string iau, name;
    const bool numbered = number != kBadInt && number > 0;
    SplitDesignation(Trimmed(Columns(line, 103, 158)), numbered, &iau, &name);
    const std::string source = Trimmed(line.substr(159));
    return packComet(out, numbered ? static_cast<int>(number) : 0, letter, iau.c_str(),
                     name.c_str(), e, source.c_str());
}
