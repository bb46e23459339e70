#include "catalog/variable_names.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <vector>

#include "catalog/constellation_names.h"
#include "catalog/greek_letters.h"

namespace {

constexpr long kFirstLateName = 10;      // RR
constexpr long kFirstEarlyName = 55;     // AA
constexpr long kFirstVNumber = 335;
constexpr long kLastVNumber = 8999;
constexpr long kFirstGreek = 9001;       // Alpha
constexpr long kFirstSpecial = 9100;
constexpr long kFirstOneLetter = 9200;
constexpr long kLastName = 9299;
constexpr long kOneLetterShift = 9136;   // 'A' + 9136 = 9201
constexpr int kOneLetterByte = 80;       // 9201 + 80 is 'A' in the low byte

// R to Z: 9 letters; A to Z without J: 25 letters.
constexpr char kLateLetters[] = "RSTUVWXYZ";
constexpr char kEarlyLetters[] = "ABCDEFGHIKLMNOPQRSTUVWXYZ";
constexpr int kEarlyFirstLetters = 16;  // A to Q

// The names outside the letter scheme, in the order they are tried.
struct SpecialName {
    const char* letters;
    int constellation;  // 0: any
    int count;
    long numbers[kMaxVariableNumbers];
};

constexpr SpecialName kSpecialNames[] = {
    {"I", 9, 1, {9109}},          {"RHO", 61, 1, {9017}},       {"ZZ", 17, 2, {54, 9112}},
    {"ZZ", 63, 2, {54, 9102}},    {"ZZ", 76, 2, {54, 9104}},    {"CE", 18, 2, {106, 9106}},
    {"EQ", 62, 2, {160, 9160}},   {"KU", 79, 2, {254, 9101}}};
// Another row pairs "ZZ" with 54, 9107, 9121 when the caller's first output
// slot already held 40: it depends on what the caller left there, never on
// the name, so it is left out.

// The texts of the special names that have their own; every other number
// of the range prints as "ZZ".
const char* SpecialText(long number) {
    switch (number) {
    case 9109: return "I";
    case 9106: return "CE";
    case 9160: return "EP";
    case 9101: return "KU";
    default: return "ZZ";
    }
}

// The pair of letters of a triangular number counted from 0 over an
// alphabet of `n` letters, first letters limited to `firsts`.
bool TriangularLetters(long offset, const char* alphabet, int n, int firsts, char* first, char* second) {
    for (int i = 0; i < firsts; ++i) {
        const int row = n - i;
        if (offset < row) {
            *first = alphabet[i];
            *second = alphabet[i + offset];
            return true;
        }
        offset -= row;
    }
    return false;
}

// The reverse: the offset of a pair, -1 when the pair isn't in the scheme.
long TriangularOffset(char first, char second, const char* alphabet, int n, int firsts) {
    const char* a = std::strchr(alphabet, first);
    const char* b = std::strchr(alphabet, second);
    if (!first || !second || !a || !b) return -1;
    const int i = static_cast<int>(a - alphabet);
    const int j = static_cast<int>(b - alphabet);
    if (i >= firsts || j < i) return -1;
    long offset = 0;
    for (int k = 0; k < i; ++k) offset += n - k;
    return offset + (j - i);
}

std::string Upper(const char* text) {
    std::string s(text);
    for (char& c : s) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return s;
}

bool AllDigits(const char* text) {
    if (!*text) return false;
    for (; *text; ++text)
        if (!std::isdigit(static_cast<unsigned char>(*text))) return false;
    return true;
}

int One(long number, long out[]) {
    out[0] = number;
    return 1;
}

}  // namespace

std::string variableName(int constellation, long number, int superscript) {
    if (constellation < 1 || constellation > kConstellationRows) return "";
    const char* con = constellationAbbreviation(constellation - 1);
    char buf[48];
    char first = 0, second = 0;
    if (number >= 1 && number < kFirstLateName) {
        std::snprintf(buf, sizeof buf, "%c %s", static_cast<char>(number + 'Q'), con);
    } else if (number >= kFirstLateName && number < kFirstEarlyName) {
        TriangularLetters(number - kFirstLateName, kLateLetters, 9, 9, &first, &second);
        std::snprintf(buf, sizeof buf, "%c%c %s", first, second, con);
    } else if (number >= kFirstEarlyName && number < kFirstVNumber) {
        TriangularLetters(number - kFirstEarlyName, kEarlyLetters, 25, kEarlyFirstLetters, &first, &second);
        std::snprintf(buf, sizeof buf, "%c%c %s", first, second, con);
    } else if (number >= kFirstVNumber && number <= kLastVNumber) {
        std::snprintf(buf, sizeof buf, "V%ld %s", number, con);
    } else if (number >= kFirstGreek - 1 && number < kFirstSpecial) {
        const char* letter = greekLetterName(static_cast<int>(number - kFirstGreek));
        if (!*letter) return "";
        if (superscript)
            std::snprintf(buf, sizeof buf, "%s%d %s", letter, superscript, con);
        else
            std::snprintf(buf, sizeof buf, "%s %s", letter, con);
    } else if (number >= kFirstSpecial && number < kFirstOneLetter) {
        std::snprintf(buf, sizeof buf, "%s %s", SpecialText(number), con);
    } else if (number >= kFirstOneLetter && number <= kLastName) {
        std::snprintf(buf, sizeof buf, "%c %s", static_cast<char>(static_cast<unsigned char>(number + kOneLetterByte)),
                      con);
    } else {
        return "";
    }
    return buf;
}

int variableNumbersOf(const char* letters, int constellation, long out[kMaxVariableNumbers]) {
    if (!letters || !*letters) return 0;
    if ((letters[0] == 'V' || letters[0] == 'v') && AllDigits(letters + 1)) {
        const long v = std::strtol(letters + 1, nullptr, 10);
        return v >= kFirstVNumber && v <= kLastVNumber ? One(v, out) : 0;
    }
    const int greek = greekLetterRow(letters);
    if (greek >= 0) return One(kFirstGreek + greek, out);
    const std::string word = Upper(letters);
    for (const SpecialName& s : kSpecialNames) {
        if (word != s.letters || s.constellation != constellation) continue;
        for (int i = 0; i < s.count; ++i) out[i] = s.numbers[i];
        return s.count;
    }
    if (word.size() == 1) {
        const char c = word[0];
        if (c >= 'R' && c <= 'Z') return One(c - 'Q', out);
        if (c >= 'A' && c < 'R') return One(c + kOneLetterShift, out);
        return 0;
    }
    if (word.size() != 2) return 0;
    long offset = TriangularOffset(word[0], word[1], kLateLetters, 9, 9);
    if (offset >= 0) return One(kFirstLateName + offset, out);
    offset = TriangularOffset(word[0], word[1], kEarlyLetters, 25, kEarlyFirstLetters);
    if (offset >= 0) return One(kFirstEarlyName + offset, out);
    return 0;
}

int parseVariable(const char* text, VariableDesignation* out) {
    *out = VariableDesignation();
    if (!text) return 0;
    std::istringstream in(text);
    std::vector<std::string> tokens;
    for (std::string t; in >> t;) tokens.push_back(t);
    if (tokens.size() < 2 || tokens.size() > 3) return 0;
    const int row = constellationRowOf(tokens.back().c_str());
    if (row < 0) return 0;
    std::string word = tokens[0];
    std::string digits;
    if (tokens.size() == 3) {
        digits = tokens[1];
        if (!AllDigits(digits.c_str())) return 0;
    } else {
        // A superscript may be joined to a Greek word: "Alpha2".
        const size_t end = word.find_last_not_of("0123456789");
        if (end != std::string::npos && end + 1 < word.size() && greekLetterRow(word.substr(0, end + 1).c_str()) >= 0) {
            digits = word.substr(end + 1);
            word.resize(end + 1);
        }
    }
    if (!digits.empty() && greekLetterRow(word.c_str()) < 0) return 0;
    out->constellation = row + 1;
    out->superscript = digits.empty() ? 0 : std::atoi(digits.c_str());
    out->count = variableNumbersOf(word.c_str(), out->constellation, out->numbers);
    return out->count > 0;
}
