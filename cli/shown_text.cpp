#include "cli/shown_text.h"

#include "base/control_escape.h"
#include "base/windows_text.h"

#include <cstdio>

std::string ShownText(std::string_view text) {
#ifdef _WIN32
    return std::string(text);
#else
    return WindowsTextToUtf8(text);
#endif
}

std::string ShownField(std::string_view text) { return ShownText(EscapeControlChars(text)); }

std::string JsonText(std::string_view text) {
    std::string out = "\"";
    for (const unsigned char c : text) {
        if (c == '"' || c == '\\') {
            out += '\\';
            out += static_cast<char>(c);
        } else if (c < 0x20) {
            char buf[8];
            std::snprintf(buf, sizeof buf, "\\u%04x", c);
            out += buf;
        } else {
            out += static_cast<char>(c);
        }
    }
    return out + "\"";
}
