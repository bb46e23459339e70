#include "legacy/legacy_locations.h"

#include "stores/location_store.h"

FilePtr OpenLegacyLocations(const std::string& legacyRoot, int* countOut) {
    const std::string path = legacyRoot + "/loc.bin";
    FilePtr f = OpenFile(path.c_str(), "rb");
    if (!f) return nullptr;
    int count = 0;
    if (!ReadCount16(f.get(), &count)) return nullptr;
    if (countOut) *countOut = count;
    return f;
}

int ReadLegacyLocationName(FILE* stream, char (&nameOut)[33]) {
    return LocationReadNext(stream, nameOut);
}
