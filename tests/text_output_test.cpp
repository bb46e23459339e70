#include <string>

#include "base/control_escape.h"
#include "base/windows_text.h"
#include "support.h"

namespace {

struct TextCase {
    std::string in;
    std::string out;
};

TEST(WindowsText, EachByteBecomesItsUtf8Form) {
    const TextCase cases[] = {
        {"", ""},
        {"Mount Wilson 1904", "Mount Wilson 1904"},
        {"d'Ossau \xE9", "d'Ossau \xC3\xA9"},                // e acute
        {"45\xB0N", "45\xC2\xB0N"},                          // degree sign
        {"\xA0\xFF", "\xC2\xA0\xC3\xBF"},                    // no-break space, y diaeresis
        {"\x80", "\xE2\x82\xAC"},                            // euro sign
        {"\x83\x8A", "\xC6\x92\xC5\xA0"},                    // f hook, S caron
        {"\x93Home\x94", "\xE2\x80\x9CHome\xE2\x80\x9D"},    // curly quotes
        {"\x99\x9F", "\xE2\x84\xA2\xC5\xB8"},                // trade mark, Y diaeresis
        {"\x81\x8D\x8F\x90\x9D",                             // undefined in code page 1252
         "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"},
    };
    for (const TextCase& c : cases) EXPECT_EQ(WindowsTextToUtf8(c.in), c.out) << c.in;
}

TEST(ControlEscape, ControlBytesAndTheBackslashBecomeEscapes) {
    const TextCase cases[] = {
        {"Backyard", "Backyard"},
        {"a\tb", "a\\tb"},
        {"x\r\ny", "x\\r\\ny"},
        {"C:\\sky", "C:\\\\sky"},
        {"\\t", "\\\\t"},
        {"\x01\x1B\x1F\x7F", "\\x01\\x1B\\x1F\\x7F"},
        {"\xE9\xB0 ~", "\xE9\xB0 ~"},  // bytes from 0x80 and printable ASCII stand
    };
    for (const TextCase& c : cases) EXPECT_EQ(EscapeControlChars(c.in), c.out) << c.in;
}

}  // namespace
