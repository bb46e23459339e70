#include "legacy/legacy_locations.h"

#include "legacy/legacy_file.h"
#include "stores/location_store.h"

FilePtr OpenLegacyLocations(const std::string& legacyRoot, int* countOut) {
    return OpenLegacyCountedFile(legacyRoot, "loc.bin", countOut);
}

int ReadLegacyLocationName(FILE* stream, char (&nameOut)[33]) {
    return LocationReadNext(stream, nameOut);
}
