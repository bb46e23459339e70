#include "base/string_helpers.h"

#include <cctype>
#include <cstdarg>
#include <cstdio>
#include <cstring>

std::string Format(const char* format, ...) {
    va_list args;
    va_start(args, format);
    va_list again;
    va_copy(again, args);
    const int length = std::vsnprintf(nullptr, 0, format, args);
    va_end(args);
    std::string out(length > 0 ? static_cast<size_t>(length) : 0, '\0');
    if (length > 0) std::vsnprintf(out.data(), out.size() + 1, format, again);
    va_end(again);
    return out;
}

int StringCompareNoCase(const char* a, const char* b) {
    for (;; ++a, ++b) {
        const int ca = std::tolower(static_cast<unsigned char>(*a));
        const int cb = std::tolower(static_cast<unsigned char>(*b));
        if (ca != cb || ca == 0) return ca - cb;
    }
}

char* TrimRight(char* text) {
    size_t n = std::strlen(text);
    while (n > 0 && text[n - 1] == ' ') text[--n] = '\0';
    return text;
}

char* TrimLeft(char* text) {
    size_t skip = 0;
    while (text[skip] == ' ') ++skip;
    if (skip) std::memmove(text, text + skip, std::strlen(text + skip) + 1);
    return text;
}

void TrimRightString(std::string& text) {
    const size_t end = text.find_last_not_of(' ');
    text.erase(end == std::string::npos ? 0 : end + 1);
}

void TrimLeftString(std::string& text) { text.erase(0, text.find_first_not_of(' ')); }

char* NormaliseBlanks(char* text) {
    TrimLeft(TrimRight(text));
    char* out = text;
    for (const char* in = text; *in; ++in)
        if (*in != ' ' || in[1] != ' ') *out++ = *in;
    *out = '\0';
    return text;
}

void RemoveBlanks(const char* source, char* target) {
    for (; *source; ++source)
        if (*source != ' ') *target++ = *source;
    *target = '\0';
}

void BaseName(const char* path, char* target) {
    const char* base = path;
    for (const char* p = path; *p; ++p)
        if (*p == '\\' || *p == '/') base = p + 1;
    std::memmove(target, base, std::strlen(base) + 1);
}
