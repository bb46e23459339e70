#include "catalog/minor_planet_import.h"

#include <cmath>
#include <cstring>
#include <string>

#include "astro/calendar.h"
#include "astro/fixed_fields.h"
#include "astro/text_parse.h"

namespace {

constexpr int kLineLimit = 300;

// The field at `offset`, `width` wide: empty when the line ends before it.
std::string Field(const std::string& line, size_t offset, size_t width) {
    return offset < line.size() ? line.substr(offset, width) : std::string();
}
double Real(const std::string& line, size_t offset, size_t width) {
    const std::string f = Field(line, offset, width);
    return FixedReal(f.c_str(), static_cast<int>(f.size()));
}
long Whole(const std::string& line, size_t offset, size_t width) {
    const std::string f = Field(line, offset, width);
    return FixedInt(f.c_str(), static_cast<int>(f.size()));
}
std::string Trimmed(std::string s) {
    const size_t first = s.find_first_not_of(' ');
    if (first == std::string::npos) return "";
    return s.substr(first, s.find_last_not_of(' ') - first + 1);
}
bool Bad(double v) { return v == kParseFailed; }

// The elements' epoch from a calendar date, 0 h, as centuries from J2000.0.
double EpochOf(long year, long month, double day) {
    const double whole = std::floor(day);
    return JdToCenturies(JulianDay(static_cast<int>(month), static_cast<int>(whole),
                                   static_cast<int>(year), (day - whole) * 24.0));
}

std::string Line(const char* text) {
    std::string line(text, strnlen(text, kLineLimit));
    while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) line.pop_back();
    return line;
}

}  // namespace

int parseBowellLine(const char* text, bool numberedOnly, UserMpRecord* out) {
    const std::string line = Line(text);
    long number = Whole(line, 0, 5);
    if (number == kParseFailedInt || number < 0) number = 0;
    if (numberedOnly && number == 0) return -1;
    const std::string name = Trimmed(Field(line, 6, 18));
    double h = Real(line, 41, 5), g = Real(line, 48, 4);
    if (Bad(h)) h = 0;
    if (Bad(g)) g = 0;
    (void)Whole(line, 71, 2);  // the planet-crossing code: not kept
    const long year = Whole(line, 105, 4), month = Whole(line, 109, 2);
    const double day = Real(line, 111, 2);
    const double m = Real(line, 114, 10), peri = Real(line, 125, 10), node = Real(line, 136, 10);
    const double incl = Real(line, 147, 10), e = Real(line, 157, 10), a = Real(line, 168, 12);
    if (year == kParseFailedInt || year < 0 || year > 10000 || month == kParseFailedInt ||
        month < 0 || month > 12 || Bad(day) || Bad(m) || Bad(a))
        return 0;
    if (Bad(peri) || Bad(node) || Bad(incl) || std::fabs(peri) >= 360 || std::fabs(node) >= 360 ||
        std::fabs(incl) >= 360 || Bad(e) || e >= 2)
        return 0;
    return packUserMp(out, static_cast<uint32_t>(number), name.c_str(), "Bowell", 0.0,
                      EpochOf(year, month, day), m, a, (1 - e) * a, e, peri, node, incl, 0.0, h, g);
}

int parseMpLine(const char* text, bool numberedOnly, UserMpRecord* out) {
    const std::string whole = Line(text);
    if (whole.compare(0, 3, "MP ") != 0) return -1;
    const std::string line = whole.substr(3);
    long number = 0;
    std::string name;
    if (!line.empty() && line[0] == '(') {
        const size_t close = line.find(')');
        if (close == std::string::npos || close < 2 || close > 6) return 0;
        const std::string digits = line.substr(1, close - 1);
        if (digits.find_first_not_of("0123456789") != std::string::npos) return 0;
        number = std::stol(digits);
        name = Trimmed(Field(line, close + 2, 32));
    } else {
        if (numberedOnly) return -1;
        name = Trimmed(Field(line, 0, 32));
    }
    const long year = Whole(line, 41, 4), month = Whole(line, 46, 2);
    const double day = Real(line, 49, 4);
    const double m = Real(line, 54, 7), a = Real(line, 62, 10), e = Real(line, 73, 8);
    const double peri = Real(line, 82, 7), node = Real(line, 90, 7), incl = Real(line, 98, 7);
    const double h = Real(line, 106, 5), g = Real(line, 112, 6);
    const std::string source = Trimmed(Field(line, 119, 10));
    if (year == kParseFailedInt || month == kParseFailedInt || month < 1 || month > 12 || Bad(day) ||
        Bad(m) || Bad(a) || Bad(e) || Bad(peri) || Bad(node) || Bad(incl) || Bad(h) || Bad(g))
        return 0;
    return packUserMp(out, static_cast<uint32_t>(number), name.c_str(), source.c_str(), 0.0,
                      EpochOf(year, month, day), m, a, (1 - e) * a, e, peri, node, incl, 0.0, h, g);
}

int beginMpImport(MpImportState* state, const char* path, MpTextFormat format, bool numberedOnly,
                  long steps) {
    *state = MpImportState{};
    state->format = format;
    state->numberedOnly = numberedOnly;
    state->text = OpenRegularFile(path, "r");
    if (!state->text) return 0;
    state->store = openUserMp(&state->count);
    if (!state->store) {
        state->text.reset();
        return 0;
    }
    char first[kLineLimit + 2];
    const long size = static_cast<long>(FileSize(path));
    long firstLength = 0;
    if (ReadTextLine(first, sizeof first, state->text.get())) firstLength = static_cast<long>(std::strlen(first));
    std::rewind(state->text.get());
    if (firstLength > 0 && size > 0) {
        state->totalLines = std::max(1L, size / (firstLength + 1));
        state->remainingLines = state->totalLines;
    } else {
        state->totalLines = state->remainingLines = kMpLinesUnknown;
    }
    const long lines = state->totalLines > 0 ? state->totalLines : 1000;
    state->linesPerBatch = std::max(1L, lines / std::max(1L, steps));
    return 1;
}

int nextMpImportBatch(MpImportState* state) {
    char buf[kLineLimit + 2];
    for (long n = 0; n < state->linesPerBatch; ++n) {
        if (!ReadTextLine(buf, sizeof buf, state->text.get())) {
            return sortUserMp(&state->store, &state->count) ? 0 : -1;
        }
        // A longer line is cut at the limit: its rest is not a line of its own.
        if (std::strchr(buf, '\n') == nullptr && !std::feof(state->text.get())) {
            int c;
            while ((c = std::fgetc(state->text.get())) != EOF && c != '\n') {
            }
        }
        ++state->linesRead;
        if (state->remainingLines != kMpLinesUnknown && state->remainingLines > 0) --state->remainingLines;
        UserMpRecord r;
        const int parsed = state->format == MpTextFormat::kBowell
                               ? parseBowellLine(buf, state->numberedOnly, &r)
                               : parseMpLine(buf, state->numberedOnly, &r);
        if (parsed < 0) continue;
        if (parsed == 0) {
            ++state->bad;
            continue;
        }
        switch (addOrReplaceUserMp(state->store.get(), r, &state->count)) {
            case 1: ++state->added; break;
            case 2: ++state->replaced; break;
            case 3: ++state->unchanged; break;
            default: return -1;  // a write failed: the import stops here
        }
    }
    return 1;
}

void endMpImport(MpImportState* state) {
    state->text.reset();
    state->store.reset();
    dropUserMpIndexes();
}
