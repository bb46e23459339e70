#include "catalog/user_deep_sky.h"

#include <algorithm>
#include <cstring>

#include "astro/numeric.h"

namespace {

constexpr double kRadiansPerArcmin = kRadiansPerDegree / 60.0;
// A size limit skips objects whose size is unknown (below this, radians).
constexpr double kSmallestSize = 0.0001;

// The class words of the import lines, tested in this order.
struct ClassWord {
    const char* word;
    int objectClass;
};
constexpr ClassWord kClassWords[] = {
    {"G ", kClassGalaxy},       {"GG ", kClassGalaxyGroup},   {"Q ", kClassQuasar},
    {"PN ", kClassPlanetary},   {"NE ", kClassDiffuseNebula}, {"DN ", kClassDarkNebula},
    {"OC ", kClassOpenCluster}, {"GC ", kClassGlobular},
};

int LineClass(const char* line) {
    for (const ClassWord& w : kClassWords)
        if (std::strncmp(line, w.word, std::strlen(w.word)) == 0) return w.objectClass;
    return 0;
}

bool OutsideSize(double size, double limit) {
    return limit != kScanNoLimit && (size < kSmallestSize || size > limit);
}

double Radians(int16_t hundredthsOfArcmin) { return hundredthsOfArcmin * 0.01 * kRadiansPerArcmin; }

// Unlike the star store, a PID recorded while the PID index is missing
// fails and leaves the index to the next open.
const SupplementalFiles kUdsFiles = {
    kUdsPath,        kUdsAlphaPath, kUdsPidPath, kUdsCompactPath, false,
    supplemental::ReadCount<UdsShape>, supplemental::ReadKey<UdsShape>,
};

}  // namespace

const SupplementalFiles& UdsShape::Files() { return kUdsFiles; }

SupplementalPlace UdsShape::Place(const UdsRecord& r) {
    return {scaledAngleToRadians(r.ra), scaledAngleToRadians(r.dec), r.magnitude * 0.01};
}

bool UdsShape::ScanPasses(const UdsRecord& r, const SupplementalScanLimits& limits) {
    if (limits.classMask != 0xFFFFFFFFu && (udsClassMask(r.objectClass) & limits.classMask) == 0) return false;
    return !OutsideSize(Radians(r.major), limits.majorLimit) && !OutsideSize(Radians(r.minor), limits.minorLimit);
}

uint32_t udsClassMask(int objectClass) { return IsDeepSkyClass(objectClass) ? classMaskOf(objectClass) : 0; }

int makeUdsRecord(UdsRecord* out, int objectClass, const std::string& name, double ra, double dec,
                  double magnitude, double majorArcmin, double minorArcmin, double positionAngleDegrees) {
    UdsRecord r;
    if (!scaledToI16(magnitude, 100.0, &r.magnitude) || !scaledToI16(majorArcmin, 100.0, &r.major) ||
        !scaledToI16(minorArcmin, 100.0, &r.minor) || !scaledToI16(positionAngleDegrees, 10.0, &r.positionAngle))
        return 0;
    r.ra = radiansToScaledAngle(ra);
    r.dec = radiansToScaledAngle(dec);
    r.objectClass = static_cast<uint8_t>(objectClass);
    setSupplementalName(r.name, name);
    *out = r;
    return 1;
}

int parseUdsLine(const char* line, UdsRecord* out) {
    const int objectClass = LineClass(line);
    if (objectClass == 0) return -1;
    const std::string name = supplementalLineName(line, 3);
    const auto fields = supplementalLineFields(line, kSupplementalFieldColumn);
    if (name.empty() || fields.size() < 4) return 0;
    double ra = 0, dec = 0;
    if (!supplementalPlace(fields[0], fields[1], fields[2], &ra, &dec)) return 0;
    // The magnitude, then what of the sizes and position angle is there.
    std::string rest;
    for (size_t i = 3; i < fields.size(); ++i) rest += fields[i] + " ";
    double values[4] = {0, 0, 0, 0};
    if (std::sscanf(rest.c_str(), "%lf %lf %lf %lf", &values[0], &values[1], &values[2], &values[3]) < 1)
        return 0;
    return makeUdsRecord(out, objectClass, name, ra, dec, values[0], values[1], values[2], values[3]);
}

int udsPlace(FILE* file, uint32_t pid, int* classOut, std::string* nameOut, double* raOut, double* decOut,
             double* magOut, double* majorOut, double* minorOut, double* paOut) {
    UdsRecord r;
    if (!findUdsByPid(file, pid, &r, nullptr)) return 0;
    supplementalPlaceOut(r.name, UdsShape::Place(r), nameOut, raOut, decOut, magOut);
    if (classOut) *classOut = r.objectClass;
    if (majorOut) *majorOut = Radians(r.major);
    if (minorOut) *minorOut = Radians(r.minor);
    if (paOut) *paOut = r.positionAngle * 0.1 * kRadiansPerDegree;
    return 1;
}

void dropUdsIndexes() { dropSupplementalIndexes(kUdsFiles); }

int readUdsObject(ObjectRecord* record, uint32_t pid) {
    UdsRecord r;
    if (!record || !supplemental::ReadByPid<UdsShape>(pid, &r)) return 0;
    const SupplementalPlace place = UdsShape::Place(r);
    setPointPlace(record, r.pid, place.ra, place.dec, place.magnitude);
    record->sizeMajor = static_cast<float>(Radians(r.major));
    record->sizeMinor = static_cast<float>(Radians(r.minor));
    record->sizeDefault = std::max(record->sizeMajor, record->sizeMinor);
    // The record's own class narrows the mask of every deep-sky class.
    if (const uint32_t mask = udsClassMask(r.objectClass)) record->classMask = mask;
    return 1;
}
