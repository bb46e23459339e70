#include "stores/location_store.h"

#include <cmath>
#include <cstring>

namespace {

// A stored place agrees with a given one within 15 seconds of time in
// longitude and one second of arc in latitude.
constexpr double kLongitudeTolerance = 7.27e-5;
constexpr double kLatitudeTolerance = 4.85e-6;

long RecordOffset(int index) { return 2L + static_cast<long>(kLocationRecordSize) * index; }

int ReadCountAtHead(FILE* stream, int* count) {
    if (std::fseek(stream, 0, SEEK_SET) != 0) return 0;
    return ReadCount16(stream, count);
}

int WriteCountAtHead(FILE* stream, int count) {
    if (std::fseek(stream, 0, SEEK_SET) != 0) return 0;
    return WriteCount16(stream, count);
}

}  // namespace

int LocationRecordRead(FILE* stream, Site& site, LocationTail& tail) {
    if (!ReadRecord<SiteLayout>(stream, site)) return 0;
    return ReadRecord<LocationTailLayout>(stream, tail);
}

int LocationRecordWrite(FILE* stream, const Site& site, const LocationTail& tail) {
    if (!WriteRecord<SiteLayout>(stream, site)) return 0;
    return WriteRecord<LocationTailLayout>(stream, tail);
}

FilePtr LocationStoreOpen(int* countOut) {
    int count = 0;
    FilePtr f = OpenFile(kLocationStorePath, "r+b");
    if (f && ReadCount16(f.get(), &count)) {
        if (countOut) *countOut = count;
        return f;
    }
    // Missing or without a count: start an empty store.
    if (!f) f = OpenFile(kLocationStorePath, "w+b");
    if (!f || !WriteCountAtHead(f.get(), 0) || std::fflush(f.get()) != 0) return nullptr;
    if (countOut) *countOut = 0;
    return f;
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
    int count = 0;
    if (!ReadCountAtHead(stream, &count)) return 0;
    if (count < 0 || count >= 32767) return 0;
    if (std::fseek(stream, RecordOffset(count), SEEK_SET) != 0) return 0;
    if (!LocationRecordWrite(stream, site, tail)) return 0;
    if (!WriteCountAtHead(stream, count + 1)) return 0;
    return std::fflush(stream) == 0 ? 1 : 0;
}

int LocationRead(FILE* stream, int index, Site* siteOut, LocationTail* tailOut) {
    int count = 0;
    if (!siteOut || !tailOut || !ReadCountAtHead(stream, &count)) return 0;
    if (index < 0 || index >= count) return 0;
    if (std::fseek(stream, RecordOffset(index), SEEK_SET) != 0) return 0;
    return LocationRecordRead(stream, *siteOut, *tailOut);
}

int LocationUpdate(FILE* stream, int index, const Site& site, const LocationTail& tail,
                   const DstRule& dstRule) {
    int count = 0;
    if (!ReadCountAtHead(stream, &count) || index < 0 || index >= count) return 0;
    Site rebuilt;
    char name[sizeof site.name];
    std::memcpy(name, site.name, sizeof name);
    name[sizeof name - 1] = '\0';
    SiteInit(&rebuilt, site.longitude, site.latitude, site.height, site.nakedEyeLimit,
             site.zoneHours, name);
    SiteSetDst(&rebuilt, dstRule);
    if (std::fseek(stream, RecordOffset(index), SEEK_SET) != 0) return 0;
    if (!LocationRecordWrite(stream, rebuilt, tail)) return 0;
    return std::fflush(stream) == 0 ? 1 : 0;
}

int LocationDelete(FILE* stream, int index) {
    int count = 0;
    if (!ReadCountAtHead(stream, &count) || index < 0 || index >= count) return 0;
    for (int i = index + 1; i < count; ++i) {
        Site site;
        LocationTail tail;
        if (std::fseek(stream, RecordOffset(i), SEEK_SET) != 0) return 0;
        if (!LocationRecordRead(stream, site, tail)) return 0;
        if (std::fseek(stream, RecordOffset(i - 1), SEEK_SET) != 0) return 0;
        if (!LocationRecordWrite(stream, site, tail)) return 0;
    }
    if (!WriteCountAtHead(stream, count - 1)) return 0;
    return std::fflush(stream) == 0 ? 1 : 0;
}

int LocationFind(FILE* stream, Site* siteInOut, LocationTail* tailOut, int* indexOut) {
    *indexOut = 0;
    *tailOut = LocationTail{};
    if (siteInOut->name[0] == '\0') return 0;
    int count = 0;
    if (!ReadCountAtHead(stream, &count)) return 0;
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

namespace {

// Copies the count and then each record of one location file into another.
int CopyLocationFile(const char* from, const char* to) {
    FilePtr in = OpenFile(from, "rb");
    if (!in) return 0;
    FilePtr out = OpenFile(to, "wb");
    if (!out) return 0;
    int count = 0;
    if (!ReadCount16(in.get(), &count) || !WriteCount16(out.get(), count)) return 0;
    for (int i = 0; i < count; ++i) {
        Site site;
        LocationTail tail;
        if (!LocationRecordRead(in.get(), site, tail)) return 0;
        if (!LocationRecordWrite(out.get(), site, tail)) return 0;
    }
    return std::fclose(out.release()) == 0 ? 1 : 0;
}

}  // namespace

int LocationBackup() { return CopyLocationFile(kLocationStorePath, kLocationBackupPath); }

int LocationRestore() { return CopyLocationFile(kLocationBackupPath, kLocationStorePath); }

Site LocationDefaultSite() {
    constexpr double kDegree = 0.017453292519943295;
    char name[] = "Texas Star Party";
    Site site;
    SiteInit(&site, 104.0 * kDegree, 30.6 * kDegree, 5000.0 * kMetresPerFoot, 7.1, -7.0, name);
    return site;
}
