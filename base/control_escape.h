// Text for a line-oriented table: control characters written as escapes so
// that a field never breaks its line or its columns.
#pragma once

#include <string>
#include <string_view>

// Tab as \t, carriage return as \r, line feed as \n, the backslash itself
// as \\, every other byte below 0x20 and DEL (0x7F) as \xNN with two upper
// case hex digits. Bytes from 0x80 up are left as they are.
std::string EscapeControlChars(std::string_view text);
