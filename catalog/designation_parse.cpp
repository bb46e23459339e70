#include "catalog/designation_parse.h"

#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

#include "base/string_helpers.h"
#include "catalog/constellation_names.h"
#include "catalog/greek_letters.h"

namespace {

constexpr int kLastCcdmRa = 23598;
constexpr int kLastCcdmDec = 8915;

std::vector<std::string> Tokens(const char* text) {
    std::vector<std::string> tokens;
    std::istringstream in(text ? text : "");
    for (std::string t; in >> t;) tokens.push_back(t);
    return tokens;
}

bool IsDigit(char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; }

// The text behind the first blank, or the whole text without one.
const char* AfterFirstBlank(const char* text) {
    const char* blank = std::strchr(text, ' ');
    return blank ? blank + 1 : text;
}

}  // namespace

int parseNumberSuffix(const char* text, long* number, int* suffix) {
    if (!text || !*text || text[0] == '*') return 0;
    std::string copy(text);
    *suffix = 0;
    const char last = copy.back();
    if (last >= 'A' && last <= 'Z') {
        *suffix = last - 64;
        copy.pop_back();
    }
    const char* start = copy.c_str();
    if (!IsDigit(*start)) start = AfterFirstBlank(start);
    return std::sscanf(start, "%ld", number) == 1;
}

int parseBayer(const char* text, int* letterRow, int* superscript, int* constellationRow) {
    const std::vector<std::string> t = Tokens(text);
    *letterRow = -1;
    *superscript = 0;
    *constellationRow = -1;
    if (t.size() < 2) return 0;
    *letterRow = greekLetterRow(t[0].c_str());
    *constellationRow = constellationRowOf(t[1].c_str());
    if (*constellationRow < 0) {
        int value = 0;
        if (std::sscanf(t[1].c_str(), "%d", &value) == 1) {
            *superscript = value;
            *constellationRow = t.size() > 2 ? constellationRowOf(t[2].c_str()) : -1;
        }
    }
    return *letterRow >= 0 && *constellationRow >= 0;
}

int parseFlamsteed(const char* text, int* number, int* constellationRow) {
    const std::vector<std::string> t = Tokens(text);
    *number = -1;
    *constellationRow = -1;
    if (t.size() < 2 || std::sscanf(t[0].c_str(), "%d", number) != 1) return 0;
    *constellationRow = constellationRowOf(t[1].c_str());
    return *number >= 0 && *constellationRow >= 0;
}

int parseCcdm(const char* text, int* raPart, int* decPart, char* sign) {
    if (!text) return 0;
    const char* start = text;
    if (const char* blank = std::strchr(text, ' ')) {
        const int next = std::toupper(static_cast<unsigned char>(blank[1]));
        if (next < 'A' || next > 'Z') start = blank + 1;
    }
    int ra = 0, dec = 0;
    const int n = std::sscanf(start, "%d%d", &ra, &dec);
    if (n < 1) return 0;
    if (n == 2) {
        *sign = dec < 0 ? '-' : '+';
        dec = std::abs(dec);
    } else {
        dec = 1;
        *sign = '+';
    }
    if (ra < 0 || ra > kLastCcdmRa || dec < 1 || dec > kLastCcdmDec) return 0;
    *raPart = ra;
    *decPart = dec;
    return 1;
}

int parseDm(const char* text, int* zone, char* sign, long* number, char* suffix) {
    const std::vector<std::string> t = Tokens(text);
    size_t i = 0;
    // The catalogue word ("BD") stands before the signed zone.
    if (!t.empty() && !IsDigit(t[0][0]) && t[0][0] != '+' && t[0][0] != '-') i = 1;
    if (i + 1 >= t.size()) return 0;
    const std::string& zoneToken = t[i];
    *sign = zoneToken.find('-') != std::string::npos ? '-' : '+';
    int z = 0;
    if (std::sscanf(zoneToken.c_str(), "%d", &z) != 1) return 0;
    *zone = std::abs(z);
    // The suffix is printed lower-case ("BD +12 00345a") and typed so.
    std::string numberToken = t[i + 1];
    for (char& c : numberToken) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    int code = 0;
    if (!parseNumberSuffix(numberToken.c_str(), number, &code)) return 0;
    *suffix = code == 0 ? ' ' : static_cast<char>(code + 64);
    return 1;
}

int parseMcg(const char* text, int* zone, int* field, int* number, int* part) {
    if (!text) return 0;
    const char* start = text;
    if (!IsDigit(*start) && *start != '-') start = AfterFirstBlank(start);
    char letter = 0;
    int n = std::sscanf(start, "%d-%d-%d%c", zone, field, number, &letter);
    if (n < 3) {
        const int spaced = std::sscanf(start, "%d %d %d%c", zone, field, number, &letter);
        if (spaced > n) n = spaced;
    }
    const int upper = std::toupper(static_cast<unsigned char>(letter));
    *part = n == 4 && upper >= 'A' && upper <= 'Z' ? upper - 64 : 0;
    return n < 0 ? 0 : n;
}

int parseEso(const char* text, long* field, long* number, int* suffix) {
    const std::vector<std::string> t = Tokens(text);
    for (size_t i = 0; i < t.size(); ++i) {
        if (!IsDigit(t[i][0])) continue;
        if (std::sscanf(t[i].c_str(), "%ld", field) != 1 || i + 1 >= t.size()) return 0;
        return parseNumberSuffix(t[i + 1].c_str(), number, suffix);
    }
    return 0;
}

int parsePk(const char* text, long* longitude, int* latitudeTenths) {
    if (!text) return 0;
    std::string copy(text);
    if (!IsDigit(copy[0])) copy.erase(0, copy.size() < 3 ? copy.size() : 3);
    NormaliseBlanks(copy.data());
    char sign = 0;
    double latitude = 0;
    const int n = std::sscanf(copy.c_str(), "%ld%c%lf", longitude, &sign, &latitude);
    if (n < 1) return 0;
    *latitudeTenths = kPkNoLatitude;
    if (n == 3) {
        const int tenths = static_cast<int>(std::lround(latitude * 10.0));
        *latitudeTenths = sign == '-' ? -tenths : tenths;
    }
    return 1;
}

int parseTycho(const char* text, int* region, int* number, int* component) {
    if (!text) return 0;
    const char* start = text;
    if (!IsDigit(*start)) start = std::strlen(text) >= 4 ? text + 4 : text + std::strlen(text);
    const int n = std::sscanf(start, "%d-%d %d", region, number, component);
    if (n < 1) return 0;
    if (n < 2) *number = 1;
    if (n < 3) *component = 1;
    return 1;
}

int parseQuasarQ(const char* text, int* raPart, int* decPart, char* suffix) {
    if (!text) return 0;
    const char* start = text;
    if (*start == 'Q' || *start == 'q') ++start;
    if (*start == ' ') ++start;
    *decPart = 0;
    *suffix = ' ';
    if (std::strpbrk(start, "+-")) {
        const int n = std::sscanf(start, "%d%d%c", raPart, decPart, suffix);
        return n < 0 ? 0 : n;
    }
    return std::sscanf(start, "%d", raPart) == 1;
}
