#include "legacy/legacy_locations.h"

#include "legacy/legacy_file.h"
#include "stores/location_store.h"

namespace {
constexpr const char* kFileName = "loc.bin";
}  // namespace

std::string LegacyLocationsPath(const std::string& legacyRoot) {
    return LegacyFilePath(legacyRoot, kFileName);
}

FilePtr OpenLegacyLocations(const std::string& legacyRoot, int* countOut) {
    return OpenLegacyCountedFile(legacyRoot, kFileName, countOut);
}

int ReadLegacyLocationName(FILE* stream, char (&nameOut)[33]) {
    return LocationReadNext(stream, nameOut);
}
