// Help files live beside the program.
#pragma once

#include <string>

// The module path as a 128-character buffer holds it, cut after its last
// backslash or colon, with the help file name appended; "?" stands in for
// the name when the folder leaves no room for an eight-dot-three name.
std::string ComposeHelpPath(const std::string& moduleFileName, const char* helpFileName);
