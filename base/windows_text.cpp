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
