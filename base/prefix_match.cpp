#include "base/prefix_match.h"

#include <cctype>
#include <cstring>

bool PrefixMatch(const char* prefix, const char* text) {
    if (prefix[0] == '*') return true;
    const size_t n = std::strlen(prefix);
    if (std::strlen(text) < n) return false;
    for (size_t i = 0; i < n; ++i)
        if (std::tolower(static_cast<unsigned char>(prefix[i])) !=
            std::tolower(static_cast<unsigned char>(text[i])))
            return false;
    return true;
}
