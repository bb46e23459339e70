// Version 1.x files that begin with an i16 count.
#pragma once

#include <string>

#include "base/file_utils.h"
#include "base/record_layout.h"

inline std::string LegacyFilePath(const std::string& legacyRoot, const char* name) {
    return legacyRoot + "/" + name;
}

// Opens <legacyRoot>/<name> read-only and reads its count; null when either
// fails. Only a regular file opens: a folder, a device or a pipe in its
// place counts as a file that cannot be opened. The stream is left on the
// first byte behind the count.
inline FilePtr OpenLegacyCountedFile(const std::string& legacyRoot, const char* name, int* countOut) {
    FilePtr f = OpenRegularFile(LegacyFilePath(legacyRoot, name).c_str(), "rb");
    int count = 0;
    if (!f || !ReadCount16(f.get(), &count)) return nullptr;
    if (countOut) *countOut = count;
    return f;
}
