// The version 1.x location file, <legacyRoot>/loc.bin: an i16 count, then
// 135-byte records that are byte for byte the records of user/loc.bin.
#pragma once

#include <string>

#include "base/file_utils.h"

// <legacyRoot>/loc.bin
std::string LegacyLocationsPath(const std::string& legacyRoot);

// The stream on the first record, or null when the file cannot be opened or
// its count cannot be read.
FilePtr OpenLegacyLocations(const std::string& legacyRoot, int* countOut);

// Reads one whole record and gives its name; 0 at the end or on a short read.
int ReadLegacyLocationName(FILE* stream, char (&nameOut)[33]);
