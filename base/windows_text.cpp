#include "base/windows_text.h"

#include <cstdint>

namespace {

// Bytes 0x80 to 0x9F of code page 1252; U+FFFD stands for the five bytes
// the code page leaves undefined.
constexpr char32_t kRow80[32] = {
    0x20AC, 0xFFFD, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  // 80
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD,  // 88
    0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  // 90
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0xFFFD, 0x017E, 0x0178,  // 98
};

char32_t CodePoint(uint8_t byte) {
    return byte >= 0x80 && byte < 0xA0 ? kRow80[byte - 0x80] : byte;
}

// Every code point of code page 1252 lies below U+10000.
void AppendUtf8(std::string& out, char32_t c) {
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

}  // namespace

std::string WindowsTextToUtf8(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size());
    for (const char b : bytes) AppendUtf8(out, CodePoint(static_cast<uint8_t>(b)));
    return out;
}

namespace {

// The byte of a code point in code page 1252, or '?' when it has none.
char WindowsByte(char32_t c) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<char>(c);
    for (int i = 0; i < 32; ++i)
        if (kRow80[i] == c && c != 0xFFFD) return static_cast<char>(0x80 + i);
    return '?';
}

// Decodes one UTF-8 sequence at `p`; the number of bytes taken, with
// U+FFFD for a malformed one (one byte taken).
size_t DecodeUtf8(std::string_view s, size_t p, char32_t* c) {
    const auto b0 = static_cast<uint8_t>(s[p]);
    size_t n = b0 < 0x80 ? 1 : (b0 >> 5) == 6 ? 2 : (b0 >> 4) == 14 ? 3 : (b0 >> 3) == 30 ? 4 : 0;
    if (n == 0 || p + n > s.size()) {
        *c = 0xFFFD;
        return 1;
    }
    char32_t v = n == 1 ? b0 : b0 & (0x7F >> n);
    for (size_t i = 1; i < n; ++i) {
        const auto b = static_cast<uint8_t>(s[p + i]);
        if ((b >> 6) != 2) {
            *c = 0xFFFD;
            return 1;
        }
        v = (v << 6) | (b & 0x3F);
    }
    *c = v;
    return n;
}

}  // namespace

std::string Utf8ToWindowsText(std::string_view utf8) {
    std::string out;
    for (size_t p = 0; p < utf8.size();) {
        char32_t c = 0;
        p += DecodeUtf8(utf8, p, &c);
        out += WindowsByte(c);
    }
    return out;
}
