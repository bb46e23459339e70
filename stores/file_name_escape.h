// Names of the user's own choosing serve as file names once the characters
// that a file system refuses are swapped for harmless ones. The mapping is
// not one to one ('~' and '"' meet in the same key).
#pragma once

#include <string>

std::string EscapeFileName(const std::string& name);

// The inverse; stops at the first '.', which starts the extension, since a
// dot inside a name was escaped.
std::string UnescapeFileName(const std::string& name);
