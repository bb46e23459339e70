#include "tools/refdata_sources.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <map>

#include "base/file_utils.h"
#include "base/string_helpers.h"
#include "catalog/constellation_names.h"
#include "catalog/greek_letters.h"

namespace {

// Splits one CSV line; a field may be double-quoted when it holds a comma.
std::vector<std::string> SplitCsv(const std::string& line) {
    std::vector<std::string> fields(1);
    bool quoted = false;
    for (const char c : line) {
        if (c == '"')
            quoted = !quoted;
        else if (c == ',' && !quoted)
            fields.emplace_back();
        else
            fields.back() += c;
    }
    return fields;
}

bool ReadCsv(const std::string& path, std::vector<CsvRow>* rows, std::string* error) {
    FilePtr in = OpenFile(path.c_str(), "rb");
    if (!in) {
        *error = "cannot read " + path;
        return false;
    }
    std::vector<std::string> header;
    char buffer[4096];
    long lineNumber = 0;
    while (ReadTextLine(buffer, sizeof buffer, in.get())) {
        ++lineNumber;
        std::string line = buffer;
        if (!line.empty() && line.back() == '\n') line.pop_back();
        if (line.empty() || line[0] == '#') continue;
        std::vector<std::string> fields = SplitCsv(line);
        if (header.empty()) {
            header = fields;
            continue;
        }
        if (fields.size() != header.size()) {
            *error = path + " line " + std::to_string(lineNumber) + ": " +
                     std::to_string(fields.size()) + " fields, the header has " +
                     std::to_string(header.size());
            return false;
        }
        CsvRow row;
        for (size_t i = 0; i < header.size(); ++i) row[header[i]] = fields[i];
        row["#line"] = std::to_string(lineNumber);
        rows->push_back(std::move(row));
    }
    if (header.empty()) {
        *error = path + ": no header line";
        return false;
    }
    return true;
}

// Field readers: an empty field gives the fallback; anything that is not a
// whole number or a real gives false.
bool Whole(const std::string& text, long fallback, long* value) {
    if (text.empty()) {
        *value = fallback;
        return true;
    }
    errno = 0;
    char* end = nullptr;
    *value = std::strtol(text.c_str(), &end, 10);
    return *end == '\0' && errno == 0;
}

bool Real(const std::string& text, double fallback, double* value) {
    if (text.empty()) {
        *value = fallback;
        return true;
    }
    char* end = nullptr;
    *value = std::strtod(text.c_str(), &end);
    return *end == '\0';
}

int GreekRowOf(const std::string& name) {
    for (int row = 0; row < kGreekLetters; ++row)
        if (StringCompareNoCase(name.c_str(), greekLetterName(row)) == 0) return row;
    return -1;
}

bool ReadBrightStar(CsvRow& row, BrightStar* star) {
    long flamsteed = 0, superscript = 0;
    if (!Whole(row["hr"], 0, &star->hr) || star->hr < 1 || !Whole(row["hd"], 0, &star->hd) ||
        !Whole(row["sao"], 0, &star->sao) || !Whole(row["flamsteed"], 0, &flamsteed) ||
        !Whole(row["bayer_sup"], 0, &superscript) || !Real(row["ra_deg"], -1, &star->raDegrees) ||
        !Real(row["dec_deg"], -99, &star->decDegrees) || !Real(row["pm_ra"], 0, &star->pmRa) ||
        !Real(row["pm_dec"], 0, &star->pmDec) || !Real(row["vmag"], 99.9, &star->magnitude) ||
        !Real(row["b_v"], 99.9, &star->colour))
        return false;
    if (star->raDegrees < 0 || star->raDegrees >= 360 || star->decDegrees < -90 ||
        star->decDegrees > 90)
        return false;
    star->flamsteed = static_cast<int>(flamsteed);
    star->bayerSuperscript = static_cast<int>(superscript);
    const std::string& con = row["con"];
    star->constellationRow = con.empty() ? -1 : constellationRowOf(con.c_str());
    if (!con.empty() && star->constellationRow < 0) return false;
    if (!row["bayer"].empty()) {
        const int greek = GreekRowOf(row["bayer"]);
        if (greek < 0 || star->constellationRow < 0) return false;
        star->bayerLetter = greek + 1;
    }
    if (flamsteed > 0 && star->constellationRow < 0) return false;
    star->spectral = row["sptype"];
    star->variable = row["var_id"];
    return true;
}

bool ReadStarName(CsvRow& row, StarName* star) {
    star->name = row["name"];
    star->nameUtf8 = row["name_utf8"];
    star->designation = row["designation"];
    star->id = row["id"];
    star->constellation = row["con"];
    star->component = row["component"];
    star->approved = row["approved"];
    return !star->name.empty() && Whole(row["hr"], 0, &star->hr) &&
           Whole(row["hd"], 0, &star->hd) && Whole(row["hip"], 0, &star->hip);
}

template <class T, class ReadOne>
bool ReadRows(const std::string& path, std::vector<T>* out, std::string* error, ReadOne readOne) {
    std::vector<CsvRow> rows;
    if (!ReadCsv(path, &rows, error)) return false;
    for (CsvRow& row : rows) {
        T value;
        if (!readOne(row, &value)) {
            *error = path + " line " + row["#line"] + ": a field cannot be read";
            return false;
        }
        out->push_back(std::move(value));
    }
    return true;
}

// The luminosity row of a Roman numeral at `p` (I, II, III, IV, V; a
// letter after it such as the "a" of "Ia" does not matter); 0 for none.
int LuminosityAt(const char* p) {
    static const char* const kNumerals[] = {"III", "II", "IV", "I", "V"};
    static const int kRows[] = {3, 2, 4, 1, 5};
    for (int i = 0; i < 5; ++i)
        if (std::strncmp(p, kNumerals[i], std::strlen(kNumerals[i])) == 0) return kRows[i];
    return 0;
}

int PrefixLuminosity(const std::string& prefix) {
    if (prefix == "g") return 3;
    if (prefix == "sg") return 4;
    if (prefix == "d") return 5;
    if (prefix == "c") return 1;
    return 0;  // "sd" and anything unknown
}

// Name numbers of the two-letter names: the pairs run in rows, each first
// letter followed by the second letters from itself to Z.
int PairNumber(const char* letters, char first, char second, int base) {
    const char* a = first ? std::strchr(letters, first) : nullptr;
    const char* b = second ? std::strchr(letters, second) : nullptr;
    if (!a || !b || b < a) return 0;
    const int count = static_cast<int>(std::strlen(letters));
    int number = base;
    for (int i = 0; i < a - letters; ++i) number += count - i;
    return number + static_cast<int>(b - a);
}

bool IsLate(char c) { return c >= 'R' && c <= 'Z'; }

int VariableNumber(const std::string& name) {
    static const char kLate[] = "RSTUVWXYZ";
    static const char kEarly[] = "ABCDEFGHIKLMNOPQRSTUVWXYZ";  // no J
    if (name.size() == 1 && IsLate(name[0])) return name[0] - 'Q';
    if (name.size() == 2 && IsLate(name[0])) return PairNumber(kLate, name[0], name[1], 10);
    if (name.size() == 2 && name[0] >= 'A' && name[0] <= 'Q' && name[0] != 'J')
        return PairNumber(kEarly, name[0], name[1], 55);
    if (name.size() > 1 && name[0] == 'V' &&
        name.find_first_not_of("0123456789", 1) == std::string::npos) {
        const long n = std::strtol(name.c_str() + 1, nullptr, 10);
        if (n >= 335 && n <= 8999) return static_cast<int>(n);
    }
    return 0;
}

}  // namespace

bool ReadCatalogueCsv(const std::string& path, std::vector<CsvRow>* rows, std::string* error) {
    return ReadCsv(path, rows, error);
}

bool CsvWhole(const std::string& text, long fallback, long* value) {
    return Whole(text, fallback, value);
}

bool CsvReal(const std::string& text, double fallback, double* value) {
    return Real(text, fallback, value);
}

bool ReadBrightStars(const std::string& path, std::vector<BrightStar>* out, std::string* error) {
    return ReadRows(path, out, error, ReadBrightStar);
}

bool ReadStarNames(const std::string& path, std::vector<StarName>* out, std::string* error) {
    return ReadRows(path, out, error, ReadStarName);
}

uint16_t SpectralCodeOf(const std::string& type) {
    static const char kClasses[] = "OBAFGKMRNSCP";
    const char* p = type.c_str();
    std::string prefix;
    while (*p >= 'a' && *p <= 'z') prefix += *p++;
    if (*p == ':') ++p;  // "g:G9", an uncertain giant
    const char* cls = *p ? std::strchr(kClasses, *p) : nullptr;
    // A second capital straight after the class letter is another scheme
    // ("WN", "WC"), apart from a luminosity numeral ("KIII").
    if (!cls || (p[1] >= 'A' && p[1] <= 'Z' && p[1] != 'I' && p[1] != 'V')) return 0;
    const int classIndex = static_cast<int>(cls - kClasses) + 1;
    ++p;
    int subclass = 0;
    if (*p >= '0' && *p <= '9') {
        int tenths = (*p++ - '0') * 10;
        if (*p == '.' && p[1] >= '0' && p[1] <= '9') {
            tenths += p[1] - '0';
            p += 2;
        }
        subclass = tenths + 10;
    }
    // Skip a range or a refinement of the subclass ("0-1", "2+", "3.5/2").
    while (*p && std::strchr("+-/:.0123456789", *p)) ++p;
    int luminosity = LuminosityAt(p);
    if (luminosity == 0) luminosity = PrefixLuminosity(prefix);
    return static_cast<uint16_t>(classIndex | (subclass << 4) | (luminosity << 11));
}

bool VariableNameNumber(const std::string& text, int* constellationRow, int* number) {
    const size_t blank = text.find(' ');
    if (blank == std::string::npos || text.find(' ', blank + 1) != std::string::npos) return false;
    const int row = constellationRowOf(text.substr(blank + 1).c_str());
    const int n = VariableNumber(text.substr(0, blank));
    if (row < 0 || n == 0) return false;
    *constellationRow = row;
    *number = n;
    return true;
}
