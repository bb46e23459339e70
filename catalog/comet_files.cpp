#include "catalog/comet_files.h"

#include <cmath>
#include <cstring>

#include "astro/orbit.h"
#include "base/prefix_match.h"
#include "catalog/catalogue_files.h"
#include "catalog/comet_names.h"
#include "catalog/minor_planet_roots.h"

namespace {

template <size_t N>
void CopyField(char (&field)[N], const char* text) {
    std::memset(field, 0, N);
    if (text) std::strncpy(field, text, N - 1);
}

// The record's designation as an ended string, even when the field is full.
template <size_t N>
std::string Ended(const char (&text)[N]) {
    return std::string(text, strnlen(text, N));
}

int ReadRow(FILE* file, long row, CometRecord* r) {
    uint8_t image[CometLayout::kSize];
    if (!file || row < 0 || !readAt(file, row * static_cast<long>(CometLayout::kSize), image, sizeof image))
        return 0;
    DecodeRecord<CometLayout>(image, *r);
    return 1;
}

int ReadNameRow(FILE* file, long row, CometRecord* r) {
    uint8_t image[CometNameLayout::kSize];
    if (!file || row < 0 || row >= kCometNameRowCap ||
        !readAt(file, row * static_cast<long>(CometNameLayout::kSize), image, sizeof image))
        return 0;
    *r = CometRecord{};
    DecodeRecord<CometNameLayout>(image, *r);
    return 1;
}

// The first `comets` row for which `matches` holds; -1 for none.
template <class Match>
long FindInComets(Match matches) {
    FilePtr file = openComets();
    CometRecord r;
    for (long row = 0; file && ReadRow(file.get(), row, &r); ++row)
        if (matches(r)) return row;
    return -1;
}

}  // namespace

std::string cometFilePath(const char* shortName) {
    const std::string& root = minorPlanetRoot(0);
    if (root.empty()) return "";
    return root + shortName + ".bin";
}

FilePtr openComets() {
    const std::string path = cometFilePath("comets");
    return path.empty() ? FilePtr() : openCatalogueFile(path);
}

FilePtr openCometNames() {
    const std::string path = cometFilePath("cnames");
    return path.empty() ? FilePtr() : openCatalogueFile(path);
}

int readComet(FILE* file, long row, std::string* iauOut, std::string* nameOut,
              CometRecord* recordOut) {
    CometRecord r;
    if (!ReadRow(file, row, &r)) return 0;
    if (iauOut) *iauOut = cometIauName(r);
    if (nameOut) *nameOut = cometFullName(r);
    if (recordOut) *recordOut = r;
    return 1;
}

int readCometNumber(FILE* file, long row, int* numberOut, std::string* nameOut) {
    CometRecord r;
    if (!ReadRow(file, row, &r)) return 0;
    if (numberOut) *numberOut = r.number;
    if (nameOut) *nameOut = cometFullName(r);
    return 1;
}

int readCometNameRow(FILE* file, long row, std::string* text, std::string* fullName,
                     long* pidOut) {
    CometRecord r;
    if (!ReadNameRow(file, row, &r)) return 0;
    if (text) *text = cometSearchText(r);
    if (fullName) *fullName = cometFullName(r);
    if (pidOut) *pidOut = r.pid;
    return 1;
}

long findCometByName(const char* text) {
    if (!text) return -1;
    FilePtr file = openCometNames();
    CometRecord r;
    for (long row = 0; file && ReadNameRow(file.get(), row, &r); ++row)
        if (PrefixMatch(text, cometSearchText(r).c_str())) return r.pid;
    return -1;
}

long findCometByIau(const char* text) {
    if (!text || !*text) return -1;
    return FindInComets([text](const CometRecord& r) {
        const std::string iau = Ended(r.iau);
        return !iau.empty() && PrefixMatch(text, iau.c_str());
    });
}

long findCometByNumber(int number) {
    if (number <= 0) return -1;
    return FindInComets([number](const CometRecord& r) { return r.number == number; });
}

int16_t cometCoefficientCode(double value) {
    const double scaled = value * 1e6;
    if (!(scaled < 32767.0)) return 32767;  // also a value that is not a number
    if (scaled <= -32768.0) return -32768;
    return static_cast<int16_t>(scaled < 0 ? scaled - 0.5 : scaled + 0.5);
}

int packComet(CometRecord* record, int number, char letter, const char* iau, const char* name,
              const CometElements& e, const char* source) {
    if (!record) return 0;
    const bool hasIau = iau && *iau;
    const bool hasName = name && *name;
    if (number == 0 && !hasIau && (letter == ' ' || letter == '\0' || !hasName)) return 0;
    if (number < 0 || number > 65535) return 0;
    OrbitRecord orbit;
    if (!OrbitInit(&orbit, e.perihelionEpoch, e.epoch, 0.0, e.semiMajorAxis, e.perihelionDistance,
                   e.eccentricity, e.argPerihelion, e.node, e.inclination, 0.0, e.brightnessG,
                   e.brightnessK, kCometMagnitudeLaw))
        return 0;
    CometRecord r;
    r.number = static_cast<uint16_t>(number);
    r.letter = static_cast<uint8_t>(letter == '\0' ? ' ' : letter);
    CopyField(r.name, name);
    CopyField(r.iau, iau);
    r.pid = 0;
    r.perihelionEpoch = e.perihelionEpoch;
    r.epoch = e.epoch;
    const double q = orbit.perihelionDistance != 0
                         ? orbit.perihelionDistance
                         : (1.0 - orbit.eccentricity) * orbit.semiMajorAxis;
    r.perihelionDistance = static_cast<float>(q);
    r.eccentricity = static_cast<float>(orbit.eccentricity);
    r.argPerihelion = static_cast<float>(orbit.argPerihelion);
    r.node = static_cast<float>(orbit.node);
    r.inclination = static_cast<float>(orbit.inclination);
    r.brightnessG = static_cast<float>(e.brightnessG);
    r.brightnessK = static_cast<float>(e.brightnessK);
    r.coefficient = cometCoefficientCode(e.coefficient);
    CopyField(r.source, source);
    *record = r;
    return 1;
}

CometElements unpackComet(const CometRecord& r) {
    constexpr double kDegrees = 180.0 / 3.14159265358979323846;
    CometElements e;
    e.perihelionEpoch = r.perihelionEpoch;
    e.epoch = r.epoch;
    e.perihelionDistance = r.perihelionDistance;
    e.eccentricity = r.eccentricity;
    e.semiMajorAxis = r.eccentricity < 1.0f ? r.perihelionDistance / (1.0 - r.eccentricity) : 0.0;
    e.argPerihelion = r.argPerihelion * kDegrees;
    e.node = r.node * kDegrees;
    e.inclination = r.inclination * kDegrees;
    e.brightnessG = r.brightnessG;
    e.brightnessK = r.brightnessK;
    e.coefficient = r.coefficient * 1e-6;
    return e;
}
