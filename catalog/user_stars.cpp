#include "catalog/user_stars.h"

#include <cstring>

#include "astro/text_parse.h"

namespace {

const SupplementalFiles kStellarFiles = {
    kStellarPath,     kStellarAlphaPath, kStellarPidPath, kStellarCompactPath, true,
    supplemental::ReadCount<StellarShape>, supplemental::ReadKey<StellarShape>,
};

}  // namespace

const SupplementalFiles& StellarShape::Files() { return kStellarFiles; }

SupplementalPlace StellarShape::Place(const StellarRecord& r) {
    return {scaledAngleToRadians(r.ra), scaledAngleToRadians(r.dec), r.magnitude * 0.01};
}

int makeStellarRecord(StellarRecord* out, const std::string& name, double ra, double dec, double magnitude) {
    StellarRecord r;
    if (!scaledToI16(magnitude, 100.0, &r.magnitude)) return 0;
    r.ra = radiansToScaledAngle(ra);
    r.dec = radiansToScaledAngle(dec);
    setSupplementalName(r.name, name);
    *out = r;
    return 1;
}

int parseStellarLine(const char* line, StellarRecord* out) {
    if (std::strncmp(line, "S ", 2) != 0) return -1;
    const std::string name = supplementalLineName(line, 2);
    const auto fields = supplementalLineFields(line, kSupplementalFieldColumn);
    if (name.empty() || fields.size() < 4) return 0;
    double ra = 0, dec = 0;
    if (!supplementalPlace(fields[0], fields[1], fields[2], &ra, &dec)) return 0;
    const double magnitude = ParseSexagesimal(fields[3].c_str());
    if (magnitude == kParseFailed) return 0;
    return makeStellarRecord(out, name, ra, dec, magnitude);
}

int stellarPlace(FILE* file, uint32_t pid, std::string* nameOut, double* raOut, double* decOut,
                 double* magOut) {
    StellarRecord r;
    if (!findStellarByPid(file, pid, &r, nullptr)) return 0;
    supplementalPlaceOut(r.name, StellarShape::Place(r), nameOut, raOut, decOut, magOut);
    return 1;
}

void dropStellarIndexes() { dropSupplementalIndexes(kStellarFiles); }

int readStellarObject(ObjectRecord* record, uint32_t pid) {
    StellarRecord r;
    if (!record || !supplemental::ReadByPid<StellarShape>(pid, &r)) return 0;
    const SupplementalPlace place = StellarShape::Place(r);
    setPointPlace(record, r.pid, place.ra, place.dec, place.magnitude);
    record->classMask = classMaskOf(kClassSupplementalStar);
    return 1;
}
