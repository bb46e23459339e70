#include "astro/text_parse.h"

#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "astro/calendar.h"
#include "astro/numeric.h"
#include "base/prefix_match.h"
#include "base/string_helpers.h"

namespace {

// Characters that separate sexagesimal fields: h m s, the degree sign,
// apostrophe, double quote and blank.
bool IsFieldMark(char c) {
    return c == 'h' || c == 'm' || c == 's' || c == '\xb0' || c == '\'' || c == '"' || c == ' ';
}

bool IsNumberChar(char c) {
    return std::isdigit(static_cast<unsigned char>(c)) || c == '.' || c == ':' || c == '-' || c == '+';
}

bool ScanReal(const std::string& piece, double* out) { return std::sscanf(piece.c_str(), "%lf", out) == 1; }

std::vector<std::string> Tokens(const char* text) {
    std::vector<std::string> tokens;
    std::string current;
    for (const char* p = text; *p; ++p) {
        if (*p == ' ') {
            if (!current.empty()) tokens.push_back(current);
            current.clear();
        } else {
            current += *p;
        }
    }
    if (!current.empty()) tokens.push_back(current);
    return tokens;
}

// Whether one of the given keywords is a prefix of `token`, ignoring case.
int KeywordOf(const std::string& token, const char* const* keywords, int count) {
    for (int i = 0; i < count; ++i)
        if (PrefixMatch(keywords[i], token.c_str())) return i;
    return -1;
}

// The month whose full name begins with the token, ignoring case; 0 for none.
int MonthOfToken(const std::string& token) {
    for (int m = 1; m <= 12; ++m)
        if (PrefixMatch(token.c_str(), MonthName(m))) return m;
    return 0;
}

}  // namespace

double ParseSexagesimal(const char* text) {
    std::string s = text ? text : "";
    TrimRightString(s);
    TrimLeftString(s);
    if (s == "-" || s == "+") return kParseFailed;
    if (s.empty()) return 0.0;
    const bool afternoon = s.back() == 'p' || s.back() == 'P';
    const bool negative = s[0] == '-';

    for (char& c : s) {
        if (IsFieldMark(c))
            c = ':';
        else if (!IsNumberChar(c))
            break;  // the number scanner stops here
    }
    // Up to three fields; each piece ahead of a ':' must scan.
    double fields[3] = {0.0, 0.0, 0.0};
    int n = 0;
    size_t start = 0;
    for (size_t colon = s.find(':'); colon != std::string::npos; colon = s.find(':', start)) {
        double v;
        if (!ScanReal(s.substr(start, colon - start), &v)) return kParseFailed;
        if (n < 3) fields[n] = v;
        ++n;
        start = colon + 1;
    }
    const std::string rest = s.substr(start);
    if (!rest.empty()) {
        double v;
        if (!ScanReal(rest, &v)) return kParseFailed;
        if (n < 3) fields[n] = v;
    }
    double sum = std::fabs(fields[0]) + std::fabs(fields[1]) / 60.0 + std::fabs(fields[2]) / 3600.0;
    if (afternoon) {
        sum += 12.0;
        if (sum > 24.0) sum -= 12.0;
    }
    return negative ? -sum : sum;
}

int ParseDateTime(char* text, Site* site, Instant* instant) {
    if (!text || !instant) return 0;
    const std::vector<std::string> tokens = Tokens(text);
    if (!tokens.empty() && PrefixMatch("JD", tokens[0].c_str())) {
        if (tokens.size() < 2) return -1;
        instant->jd = ParseSexagesimal(tokens[1].c_str());
        InstantFromJd(site, instant);
        return 1;
    }
    static const char* const kWords[] = {"AD", "BC", "AM", "PM", "UT"};
    double values[4] = {0.0, 0.0, 0.0, 0.0};
    int count = 0;
    bool beforeChrist = false;
    double addOn = 0.0;
    int mode = kSiteClock;
    for (const std::string& token : tokens) {
        double value;
        if (const int month = MonthOfToken(token)) {
            value = month;
        } else if (const int word = KeywordOf(token, kWords, 5); word >= 0) {
            if (word == 1) beforeChrist = true;
            if (word == 3) addOn = 12.0;
            if (word == 4) mode = kUniversalTime;
            continue;
        } else {
            value = ParseSexagesimal(token.c_str());
            if (value == kParseFailed) return 0;
        }
        if (count == 4) return 0;
        values[count++] = value;
    }
    if (count == 0) return 0;
    double year = values[0];
    if (beforeChrist) year = -(year + 1.0);
    if (count == 1) {
        const int y = static_cast<int>(year);
        instant->jd = JulianDay(1, 1, y, 0.0) + (year - y) * DaysInYear(y);
        InstantFromJd(site, instant);
        return 1;
    }
    const double month = values[1];
    if (month < 1.0 || month > 12.0) return 0;
    double day = values[2];
    double time = values[3] + addOn;
    if (time == 0.0) {
        time = 24.0 * FracPart(day);
        day = IntPart(day);
    }
    InstantSet(instant, site, static_cast<int>(month), static_cast<int>(day), static_cast<int>(year),
               time, mode);
    return 1;
}

double ParseClock(const char* text, const Site* site) {
    if (!text) return 0.0;
    static const char* const kWords[] = {"AM", "PM", "UT"};
    const std::vector<std::string> tokens = Tokens(text);
    double time = 0.0;
    bool haveTime = false;
    double addOn = 0.0;
    bool universal = false;
    for (size_t i = 0; i < tokens.size() && i < 3; ++i) {
        const int word = KeywordOf(tokens[i], kWords, 3);
        if (word == 1) addOn = 12.0;
        if (word == 2) universal = true;
        if (word >= 0) continue;
        if (haveTime && time != 0.0) return kParseFailed;
        time = ParseSexagesimal(tokens[i].c_str());
        if (time == kParseFailed) return kParseFailed;
        haveTime = true;
    }
    if (time < 12.0) time += addOn;
    if (site && universal) return time + site->zoneHours;
    return time;
}
