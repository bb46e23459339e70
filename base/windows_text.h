// The names in the data files are single-byte Windows text (code page
// 1252). Front ends that write UTF-8 convert them on the way out.
#pragma once

#include <string>
#include <string_view>

// The UTF-8 form of Windows-1252 bytes. ASCII stays as it is; 0x80 to 0x9F
// take their Windows-1252 characters (0x80 the euro sign, 0x99 the trade
// mark sign, ...); 0xA0 to 0xFF are the Latin-1 characters of the same
// code. The five bytes that code page 1252 leaves undefined (0x81, 0x8D,
// 0x8F, 0x90, 0x9D) become U+FFFD, the replacement character: their
// Latin-1 code points are C1 control characters that a terminal may act on.
std::string WindowsTextToUtf8(std::string_view bytes);

// The Windows-1252 bytes of UTF-8 text: each character the code page holds
// becomes its byte, any other character (and any malformed sequence) a '?'.
std::string Utf8ToWindowsText(std::string_view utf8);
