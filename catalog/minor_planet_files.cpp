#include "catalog/minor_planet_files.h"

#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "astro/orbit_place.h"
#include "base/prefix_match.h"
#include "catalog/catalogue_files.h"
#include "catalog/minor_planet_roots.h"

namespace {

// `limits` as read, and the root it was read from.
struct LimitsCache {
    bool read = false;
    std::string root;
    MpLimits limits;
};
LimitsCache g_limits;

FilePtr OpenReference(const std::string& path) {
    if (minorPlanetRoot(0).empty()) return nullptr;
    return OpenRegularFile(path.c_str(), "rb");
}

template <class Layout, class R>
int ReadRecordAt(FILE* file, long offset, R* out) {
    uint8_t image[Layout::kSize];
    if (!readAt(file, offset, image, sizeof image)) return 0;
    DecodeRecord<Layout>(image, *out);
    return 1;
}

}  // namespace

std::string minorPlanetFilePath(const char* shortName) {
    return minorPlanetRoot(0) + shortName + ".bin";
}

std::string elementFilePath(long number) {
    return minorPlanetRoot(1) + "elements/" + std::to_string(number) + ".bin";
}

long elementFileNumber(double t) {
    const double jd = std::trunc(t * 36525.0 + 2451545.0);
    const double x = jd * 0.025;
    return static_cast<long>(x < 0 ? -std::floor(-x + 0.5) : std::floor(x + 0.5));
}

int readMpLimits(MpLimits* out) {
    if (!g_limits.read || g_limits.root != minorPlanetRoot(0)) {
        FilePtr f = OpenReference(minorPlanetFilePath("limits"));
        MpLimits limits;
        if (!f || !ReadRecordAt<MpLimitsLayout>(f.get(), 0, &limits)) return 0;
        g_limits = {true, minorPlanetRoot(0), limits};
    }
    *out = g_limits.limits;
    return 1;
}

FilePtr openElementFile(const Instant* instant, bool* outOfRange, long* fileNumber) {
    MpLimits limits;
    if (!instant || !readMpLimits(&limits)) return nullptr;
    long number = elementFileNumber(instant->tDyn);
    bool out = false;
    if (number < static_cast<long>(limits.lowest)) {
        number = static_cast<long>(limits.lowest);
        out = true;
    } else if (number > static_cast<long>(limits.highest)) {
        number = static_cast<long>(limits.highest);
        out = true;
    }
    if (outOfRange) *outOfRange = out;
    if (fileNumber) *fileNumber = number;
    return OpenReference(elementFilePath(number));
}

int readElements(FILE* file, uint32_t number, MpElements* out) {
    return number >= 1 &&
           ReadRecordAt<MpElementsLayout>(file, static_cast<long>(number - 1) * MpElementsLayout::kSize, out);
}

FilePtr openMpData() { return OpenReference(minorPlanetFilePath("mp_data")); }

int readMpData(FILE* file, uint32_t number, MpData* out) {
    return number >= 1 &&
           ReadRecordAt<MpDataLayout>(file, static_cast<long>(number - 1) * MpDataLayout::kSize, out);
}

FilePtr openMpNames() { return OpenReference(minorPlanetFilePath("mp_names")); }

int readMpName(FILE* file, uint32_t number, std::string* out) {
    char name[kMpNameSize + 1] = {};
    if (number < 1 || !readAt(file, static_cast<long>(number - 1) * static_cast<long>(kMpNameSize), name, kMpNameSize))
        return 0;
    *out = name;
    return 1;
}

int openMpAlpha(char firstLetter, MpAlphaRun* run) {
    run->file = OpenReference(minorPlanetFilePath("mp_alpha"));
    if (!run->file) return 0;
    const uint8_t letter = static_cast<uint8_t>(std::toupper(static_cast<unsigned char>(firstLetter)));
    if (letter == ' ' || letter == '*' || letter == 0) {
        // Every row, from the first to the end of the file.
        if (std::fseek(run->file.get(), 0, SEEK_END) != 0) return 0;
        const long size = std::ftell(run->file.get());
        run->next = kMpAlphaRowsStart;
        run->remaining = size > kMpAlphaRowsStart ? (size - kMpAlphaRowsStart) / static_cast<long>(MpAlphaRowLayout::kSize) : 0;
        return 1;
    }
    for (int i = 0; i < kMpAlphaHeadRows; ++i) {
        MpAlphaHead head;
        if (!ReadRecordAt<MpAlphaHeadLayout>(run->file.get(), i * static_cast<long>(MpAlphaHeadLayout::kSize), &head))
            return 0;
        if (head.letter != letter || head.letter == 0) continue;
        run->next = static_cast<long>(head.offset);
        run->remaining = head.count;
        return 1;
    }
    return 0;
}

int nextMpAlpha(MpAlphaRun* run, std::string* name, uint32_t* number) {
    if (!run->file || run->remaining <= 0) return 0;
    MpAlphaRow row;
    if (!ReadRecordAt<MpAlphaRowLayout>(run->file.get(), run->next, &row)) return 0;
    run->next += static_cast<long>(MpAlphaRowLayout::kSize);
    --run->remaining;
    *name = std::string(row.name, strnlen(row.name, sizeof row.name));
    *number = row.number;
    return 1;
}

namespace {

uint32_t FindInRun(const std::string& typed) {
    MpAlphaRun run;
    if (typed.empty() || !openMpAlpha(typed[0], &run)) return 0;
    std::string name;
    uint32_t number = 0;
    while (nextMpAlpha(&run, &name, &number))
        if (PrefixMatch(typed.c_str(), name.c_str())) return number;
    return 0;
}

}  // namespace

uint32_t findMpByName(const char* text) {
    if (!text) return 0;
    std::string typed(text);
    while (!typed.empty() && typed.front() == ' ') typed.erase(0, 1);
    while (!typed.empty() && typed.back() == ' ') typed.pop_back();
    if (const uint32_t whole = FindInRun(typed)) return whole;
    // "(1) Ceres", "1 Ceres": the number typed must be the name's.
    size_t at = 0;
    const bool bracket = !typed.empty() && typed[0] == '(';
    if (bracket) ++at;
    const size_t digits = at;
    while (at < typed.size() && std::isdigit(static_cast<unsigned char>(typed[at]))) ++at;
    if (at == digits || at - digits > 9) return 0;
    const unsigned long typedNumber = std::stoul(typed.substr(digits, at - digits));
    if (bracket) {
        if (at >= typed.size() || typed[at] != ')') return 0;
        ++at;
    }
    while (at < typed.size() && typed[at] == ' ') ++at;
    if (at >= typed.size()) return 0;
    const uint32_t found = FindInRun(typed.substr(at));
    return found != 0 && found == typedNumber ? found : 0;
}

int openMpCursor(MpCursor* cursor) {
    *cursor = MpCursor{};
    cursor->data = openMpData();
    return cursor->data ? 1 : 0;
}

void closeMpCursor(MpCursor* cursor) { *cursor = MpCursor{}; }

int orbitOfMinorPlanet(MpCursor* cursor, const Instant* instant, uint32_t number, MpPlace* place) {
    if (!cursor || !cursor->data || !instant || number < 1) return 0;
    MpLimits limits;
    if (!readMpLimits(&limits)) return 0;
    long fileNumber = elementFileNumber(instant->tDyn);
    fileNumber = std::max<long>(static_cast<long>(limits.lowest), std::min<long>(static_cast<long>(limits.highest), fileNumber));
    if (!cursor->elements || fileNumber != cursor->fileNumber) {
        cursor->elements = openElementFile(instant, &cursor->outOfRange, &cursor->fileNumber);
        cursor->haveOrbit = false;
        if (!cursor->elements) return 0;
    }
    if (!cursor->haveOrbit || cursor->number != number) {
        MpElements e;
        MpData data;
        cursor->haveOrbit = false;
        cursor->number = number;
        if (!readElements(cursor->elements.get(), number, &e) || !readMpData(cursor->data.get(), number, &data))
            return 0;
        if (!OrbitInit(&cursor->orbit, e.perihelionEpoch, 0.0, 0.0, e.semiMajorAxis, 0.0, e.eccentricity,
                       e.argPerihelion, e.node, e.inclination, 0.0, data.h, data.g, 2))
            return -1;
        OrbitVectors(&cursor->orbit);
        cursor->haveOrbit = true;
    }
    MpPlace p;
    if (!OrbitGeocentric(instant, &cursor->orbit, &p.ra, &p.dec, &p.geoDistance, &p.helioDistance,
                         &p.phaseAngle, &p.magnitude, &p.elongation))
        return 0;
    if (!std::isfinite(p.ra) || !std::isfinite(p.dec) || !std::isfinite(p.geoDistance)) return -1;
    *place = p;
    return 1;
}
