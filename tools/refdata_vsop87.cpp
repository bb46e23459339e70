#include "tools/refdata_vsop87.h"

#include <algorithm>
#include <cstring>

#include "astro/fixed_fields.h"
#include "astro/text_parse.h"
#include "base/file_utils.h"

namespace {

// Columns are counted from 1, as the format's description counts them.
long WholeAt(const char* line, int column, int width) {
    return FixedInt(line + column - 1, width);
}

bool RealAt(const char* line, int column, int width, double* value) {
    *value = FixedReal(line + column - 1, width);
    return *value != kParseFailed;
}

bool IsHeader(const char* line) { return std::strncmp(line + 1, "VSOP87", 6) == 0; }

// The series a header opens and how many term lines follow it.
struct Header {
    int version = 0;
    int coordinate = 0;  // from 1, as written
    int power = 0;
    long terms = 0;
};

bool ReadHeader(const char* line, Header* h) {
    if (std::strlen(line) < 67) return false;
    h->version = static_cast<int>(WholeAt(line, 18, 1));
    h->coordinate = static_cast<int>(WholeAt(line, 42, 1));
    h->power = static_cast<int>(WholeAt(line, 60, 1));
    h->terms = WholeAt(line, 61, 7);
    return h->version >= 0 && h->version <= 5 && h->coordinate >= 1 &&
           h->coordinate <= kSeriesCoordinates && h->power >= 0 && h->power < kSeriesPowers &&
           h->terms >= 0 && h->terms != kParseFailedInt;
}

// A term line of the series `h` opened: its codes must be the header's.
bool ReadTerm(const char* line, const Header& h, PlanetTerm* term) {
    if (std::strlen(line) < 131) return false;
    if (WholeAt(line, 2, 1) != h.version || WholeAt(line, 4, 1) != h.coordinate ||
        WholeAt(line, 5, 1) != h.power)
        return false;
    return RealAt(line, 80, 18, &term->a) && RealAt(line, 98, 14, &term->b) &&
           RealAt(line, 112, 20, &term->c);
}

std::string Trimmed(const char* text) {
    std::string s = text;
    while (!s.empty() && s.back() == ' ') s.pop_back();
    return s;
}

}  // namespace

bool ReadVsop87(const std::string& path, Vsop87File* out, std::string* error) {
    FilePtr in = OpenFile(path.c_str(), "rb");
    if (!in) {
        *error = "cannot read " + path;
        return false;
    }
    *out = Vsop87File{};
    char line[256];
    long lineNumber = 0;
    Header h;
    std::vector<PlanetTerm>* series = nullptr;
    const auto fail = [&](const char* what) {
        *error = path + " line " + std::to_string(lineNumber) + ": " + what;
        return false;
    };
    const auto complete = [&] { return !series || static_cast<long>(series->size()) == h.terms; };
    while (ReadTextLine(line, sizeof line, in.get())) {
        ++lineNumber;
        line[std::strcspn(line, "\n")] = '\0';
        if (line[0] == '\0') continue;
        if (IsHeader(line)) {
            if (!complete()) return fail("the series before has fewer terms than its header says");
            if (!ReadHeader(line, &h)) return fail("not a header of an L, B or R series");
            const std::string body = Trimmed(FixedText(line + 22, 7));
            if (out->version < 0) {
                out->version = h.version;
                out->body = body;
            } else if (h.version != out->version || body != out->body) {
                return fail("a header of another version or body");
            }
            series = &out->series[h.coordinate - 1][h.power];
            if (!series->empty()) return fail("a second header of the same series");
            continue;
        }
        PlanetTerm term;
        if (!series || static_cast<long>(series->size()) == h.terms || !ReadTerm(line, h, &term))
            return fail("not a term of the series its header opened");
        series->push_back(term);
    }
    if (!complete()) return fail("the last series has fewer terms than its header says");
    if (out->version < 0) return fail("no series");
    return true;
}

bool LargestTerms(const std::vector<PlanetTerm>& terms, size_t count,
                  std::vector<PlanetTerm>* out) {
    if (terms.size() < count) return false;
    *out = terms;
    std::stable_sort(out->begin(), out->end(),
                     [](const PlanetTerm& x, const PlanetTerm& y) { return x.a > y.a; });
    out->resize(count);
    return true;
}
