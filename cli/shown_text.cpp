#include "cli/shown_text.h"

#include "base/control_escape.h"
#include "base/windows_text.h"

std::string ShownText(std::string_view text) {
#ifdef _WIN32
    return std::string(text);
#else
    return WindowsTextToUtf8(text);
#endif
}

std::string ShownField(std::string_view text) { return ShownText(EscapeControlChars(text)); }
