#include "catalog/greek_letters.h"

#include <cctype>
#include <cstring>

namespace {
constexpr const char kNames[kGreekLetters][8] = {
    "Alpha", "Beta", "Gamma", "Delta",   "Epsilon", "Zeta", "Eta",     "Theta",
    "Iota",  "Kappa", "Lambda", "Mu",    "Nu",      "Xi",   "Omicron", "Pi",
    "Rho",   "Sigma", "Tau",   "Upsilon", "Phi",    "Chi",  "Psi",     "Omega"};
}  // namespace

const char* greekLetterName(int row) {
    return row >= 0 && row < kGreekLetters ? kNames[row] : "";
}

int greekLetterRow(const char* text) {
    if (!text) return -1;
    const size_t n = std::strlen(text);
    if (n < 2) return -1;
    for (int row = 0; row < kGreekLetters; ++row) {
        const char* name = kNames[row];
        if (n > std::strlen(name)) continue;
        if (std::tolower(static_cast<unsigned char>(text[0])) !=
            std::tolower(static_cast<unsigned char>(name[0])))
            continue;
        if (std::strncmp(text + 1, name + 1, n - 1) == 0) return row;
    }
    return -1;
}
