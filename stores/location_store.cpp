#include "stores/location_store.h"

#include <cmath>
#include <cstring>

#include "base/counted_file.h"

namespace {

// A stored place agrees with a given one within 15 seconds of time in
// longitude and one second of arc in latitude.
constexpr double kLongitudeTolerance = 7.27e-5;
constexpr double kLatitudeTolerance = 4.85e-6;

}  // namespace

int LocationRecordRead(FILE* stream, Site& site, LocationTail& tail) {
    LocationRecord r;
    if (!ReadRecord<LocationRecordLayout>(stream, r)) return 0;
    site = r.site;
    tail = r.tail;
    return 1;
}

int LocationRecordWrite(FILE* stream, const Site& site, const LocationTail& tail) {
    return WriteRecord<LocationRecordLayout>(stream, LocationRecord{site, tail});
}

FilePtr LocationStoreOpen(int* countOut, StoreDamage* damageOut) {
    return CountedOpen(kLocationStorePath, kLocationRecordSize, countOut, damageOut);
}

int LocationReadNext(FILE* stream, char (&nameOut)[33]) {
    Site site;
    LocationTail tail;
    if (!LocationRecordRead(stream, site, tail)) return 0;
    std::memcpy(nameOut, site.name, sizeof nameOut);
    nameOut[32] = '\0';
    return 1;
}

int LocationAdd(FILE* stream, const Site& site, const LocationTail& tail) {
    return CountedAdd<LocationRecordLayout>(stream, LocationRecord{site, tail});
}

int LocationRead(FILE* stream, int index, Site* siteOut, LocationTail* tailOut) {
    LocationRecord r;
    if (!siteOut || !tailOut || !CountedRead<LocationRecordLayout>(stream, index, r)) return 0;
    *siteOut = r.site;
    *tailOut = r.tail;
    return 1;
}

int LocationUpdate(FILE* stream, int index, const Site& site, const LocationTail& tail,
                   const DstRule& dstRule) {
    LocationRecord rebuilt{Site{}, tail};
    char name[sizeof site.name];
    std::memcpy(name, site.name, sizeof name);
    name[sizeof name - 1] = '\0';
    SiteInit(&rebuilt.site, site.longitude, site.latitude, site.height, site.nakedEyeLimit,
             site.zoneHours, name);
    SiteSetDst(&rebuilt.site, dstRule);
    return CountedWrite<LocationRecordLayout>(stream, index, rebuilt);
}

int LocationDelete(FILE* stream, int index) {
    return CountedDelete<LocationRecordLayout, LocationRecord>(stream, index);
}

int LocationFind(FILE* stream, Site* siteInOut, LocationTail* tailOut, int* indexOut) {
    *indexOut = 0;
    *tailOut = LocationTail{};
    if (siteInOut->name[0] == '\0') return 0;
    int count = 0;
    if (!CountedReadCount(stream, &count)) return 0;
    while (*indexOut < count) {
        Site stored;
        LocationTail storedTail;
        if (!LocationRecordRead(stream, stored, storedTail)) break;
        if (std::strncmp(stored.name, siteInOut->name, sizeof stored.name) != 0) {
            ++*indexOut;
            continue;
        }
        if (std::fabs(stored.longitude - siteInOut->longitude) > kLongitudeTolerance ||
            std::fabs(stored.latitude - siteInOut->latitude) > kLatitudeTolerance)
            return 2;
        *tailOut = storedTail;
        *siteInOut = stored;
        return 1;
    }
    return 0;
}

int LocationBackup() {
    return CountedCopyFile<LocationRecordLayout, LocationRecord>(kLocationStorePath, kLocationBackupPath);
}

int LocationRestore() {
    return CountedCopyFile<LocationRecordLayout, LocationRecord>(kLocationBackupPath, kLocationStorePath);
}

Site LocationDefaultSite() {
    constexpr double kDegree = 0.017453292519943295;
    char name[] = "Texas Star Party";
    Site site;
    SiteInit(&site, 104.0 * kDegree, 30.6 * kDegree, 5000.0 * kMetresPerFoot, 7.1, -7.0, name);
    return site;
}
