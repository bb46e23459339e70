// Text from the data files as this system's terminals take it. The files
// hold Windows text; a POSIX terminal reads UTF-8, while the Windows console
// is left with the bytes the window shows.
#pragma once

#include <string>
#include <string_view>

// The text converted for the terminal, nothing else changed (JSON strings
// are escaped by their writer).
std::string ShownText(std::string_view text);

// A field of a tab-separated row: control characters escaped first, so that
// it never breaks its line or its columns, then converted.
std::string ShownField(std::string_view text);

// A JSON string of text already shown as above: quotes, backslashes and
// control characters escaped.
std::string JsonText(std::string_view text);
