#include "base/control_escape.h"

#include <cstdint>

std::string EscapeControlChars(std::string_view text) {
    static constexpr char kHex[] = "0123456789ABCDEF";
    std::string out;
    out.reserve(text.size());
    for (const char ch : text) {
        const auto b = static_cast<uint8_t>(ch);
        switch (b) {
            case '\t': out += "\\t"; break;
            case '\r': out += "\\r"; break;
            case '\n': out += "\\n"; break;
            case '\\': out += "\\\\"; break;
            default:
                if (b < 0x20 || b == 0x7F) {
                    out += "\\x";
                    out += kHex[b >> 4];
                    out += kHex[b & 0xF];
                } else {
                    out += ch;
                }
        }
    }
    return out;
}
