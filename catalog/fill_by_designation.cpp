#include "catalog/fill_by_designation.h"

#include <cctype>
#include <cstdio>

#include "astro/bodies.h"
#include "base/file_utils.h"
#include "base/prefix_match.h"
#include "catalog/comet_files.h"
#include "catalog/constellation_files.h"
#include "catalog/constellation_names.h"
#include "catalog/deep_sky_designation.h"
#include "catalog/designation_hits.h"
#include "catalog/minor_planet_files.h"
#include "catalog/object_fill.h"
#include "catalog/object_place.h"
#include "catalog/star_designation.h"
#include "catalog/user_comets.h"
#include "catalog/user_deep_sky.h"
#include "catalog/user_minor_planets.h"
#include "catalog/user_stars.h"

namespace {

constexpr int kLastClass = 18;
constexpr int kLastZone = 88;
constexpr int kSerpensCaudaZone = 75;  // zones above it take the row below

// A leading number of a text such as "1", "(1) Ceres" or "MPN 1": 1 and the
// number, 0 when there is none.
bool LeadingNumber(const char* text, long* out) {
    const char* s = text;
    while (*s == ' ' || *s == '(') ++s;
    if (!std::isdigit(static_cast<unsigned char>(*s))) return false;
    return std::sscanf(s, "%ld", out) == 1 && *out > 0;
}

// Class 1: a zone by number, else by its name (the prefix rule) or its
// abbreviation.
void Constellation(long number, const char* text, DesignationHits* hits) {
    if (number > 0) {
        if (number <= kLastZone) addDesignationHit(hits, static_cast<uint32_t>(number));
        return;
    }
    if (!*text) return;
    int zone = -1;
    if (FilePtr names = openConstellationNames()) zone = findConstellationName(names.get(), text);
    if (zone < 0) {
        const int row = constellationRowOf(text);
        if (row >= 0) zone = row > kSerpensCaudaZone ? row + 1 : row;
    }
    if (zone >= 0 && zone <= kLastZone) addDesignationHit(hits, static_cast<uint32_t>(zone));
}

// Class 2: a body by number, else the first body name the text begins.
void MajorBody(long number, const char* text, DesignationHits* hits) {
    if (number > 0) {
        if (number < kBodyCount) addDesignationHit(hits, static_cast<uint32_t>(number));
        return;
    }
    if (!*text || *text == '*') return;
    for (int body = 0; body < kBodyCount; ++body) {
        if (PrefixMatch(text, BodyName(body))) {
            addDesignationHit(hits, static_cast<uint32_t>(body));
            return;
        }
    }
}

// Class 3: kind 1 name, 2 IAU designation, 3 periodic number.
void ReferenceComet(int kind, long number, const char* text, DesignationHits* hits) {
    long row = -1;
    if (kind == 1 && *text) {
        row = findCometByName(text);
    } else if (kind == 2 && *text) {
        row = findCometByIau(text);
    } else if (kind == 3) {
        long periodic = number;
        if (periodic != 0 || LeadingNumber(text, &periodic)) row = findCometByNumber(static_cast<int>(periodic));
    }
    if (row >= 0) addDesignationHit(hits, static_cast<uint32_t>(row));
}

// Class 4: kind 1 name, kind 2 number (a name in the text is tried too).
void ReferenceMinorPlanet(int kind, long number, const char* text, DesignationHits* hits) {
    uint32_t found = 0;
    long typed = number;
    if (kind == 2 && (typed != 0 || LeadingNumber(text, &typed)) && typed > 0) {
        FilePtr data = openMpData();
        MpData row;
        if (data && readMpData(data.get(), static_cast<uint32_t>(typed), &row)) found = static_cast<uint32_t>(typed);
    }
    if (found == 0 && (kind == 1 || kind == 2) && *text) found = findMpByName(text);
    if (found != 0) addDesignationHit(hits, found);
}

// Class 13: the user's comets, by name (kind 1), IAU designation (2) or
// periodic number (3). A missing store is not made here.
void UserComet(int kind, long number, const char* text, DesignationHits* hits) {
    if (!FileExists(kUserCometPath)) return;
    FilePtr file = openUserComets(nullptr);
    if (!file) return;
    long periodic = number;
    if (kind == 3 && periodic == 0 && !LeadingNumber(text, &periodic)) return;
    const char* name = kind == 1 && *text ? text : nullptr;
    const char* iau = kind == 2 && *text ? text : nullptr;
    const int wantedNumber = kind == 3 ? static_cast<int>(periodic) : 0;
    if (!name && !iau && wantedNumber == 0) return;
    CometRecord comet;
    if (findUserComet(file.get(), 0, name, iau, wantedNumber, &comet) >= 0)
        addDesignationHit(hits, comet.pid);
}

// Class 14: the user's minor planets, by name (kind 1) or number (kind 2,
// a name in the text tried too).
void UserMinorPlanet(int kind, long number, const char* text, DesignationHits* hits) {
    if (!FileExists(kUserMpPath)) return;
    FilePtr file = openUserMp(nullptr);
    if (!file) return;
    UserMpRecord found;
    uint32_t row = 0;
    long typed = number;
    int hit = 0;
    if (kind == 2 && (typed != 0 || LeadingNumber(text, &typed)) && typed > 0)
        hit = findUserMpByNumber(file.get(), static_cast<uint32_t>(typed), &found, &row);
    if (!hit && (kind == 1 || kind == 2) && *text) hit = findUserMpByName(file.get(), text, &found, &row);
    if (hit) addDesignationHit(hits, found.pid);
}

// Classes 12 and 18: the text through the store's alphabetical index.
template <class Open, class Find, class Record>
void SupplementalByName(const char* text, Open open, Find find, Record record, DesignationHits* hits) {
    if (!*text) return;
    FilePtr file = open(nullptr);
    if (file && find(file.get(), text, &record) > 0) addDesignationHit(hits, record.pid);
}

// The class reader: the PIDs the designation names.
void FindPids(int objectClass, int kind, long number, const char* text, DesignationHits* hits) {
    switch (objectClass) {
        case kClassConstellation: Constellation(number, text, hits); break;
        case kClassMajorBody: MajorBody(number, text, hits); break;
        case kClassComet: ReferenceComet(kind, number, text, hits); break;
        case kClassMinorPlanet: ReferenceMinorPlanet(kind, number, text, hits); break;
        case kClassStar: findStarDesignation(kind, number, text, hits); break;
        case kClassSupplementalStar:
            SupplementalByName(text, openStellarForReading, findStellarByName, StellarRecord{}, hits);
            break;
        case kClassUserComet: UserComet(kind, number, text, hits); break;
        case kClassUserMinorPlanet: UserMinorPlanet(kind, number, text, hits); break;
        case kClassSupplementalDeepSky:
            SupplementalByName(text, openUdsForReading, findUdsByName, UdsRecord{}, hits);
            break;
        default: findDeepSkyDesignation(objectClass, kind, number, text, hits); break;
    }
}

// Reads one object by its PID into a record that already carries its class
// and component. With a site and instant the full refill runs; without,
// the readers that need no instant fill the place, and the objects placed
// by an orbit keep their identity with no place.
int ReadByPid(ObjectRecord* r, double spanStart, double spanEnd, const Site* site, const Instant* instant) {
    if (site && instant) return refillByIdentity(r, spanStart, spanEnd, site, instant);
    int count = 0;
    switch (r->objectClass) {
        case kClassStar: count = readStarObject(r, r->pid, nullptr); break;
        case kClassSupplementalStar: count = readStellarObject(r, r->pid); break;
        case kClassMajorBody:
        case kClassComet:
        case kClassMinorPlanet:
        case kClassUserComet:
        case kClassUserMinorPlanet: return 1;
        default: return refillByIdentity(r, spanStart, spanEnd, nullptr, nullptr);
    }
    if (count == 0) return 0;
    const int zone = constellationOfPlace(r->raJ2000, r->decJ2000);
    r->constellation = static_cast<uint8_t>(zone < 0 ? 255 : zone);
    computeGridKeys(r);
    return count;
}

}  // namespace

int fillByDesignation(int objectClass, int kind, int componentLetter, long number, const char* text,
                      const Site* site, const Instant* instant, const RiseSetSpan* span,
                      ObjectRecord records[kMaxDesignationRecords]) {
    if (!records) return 0;
    for (int i = 0; i < kMaxDesignationRecords; ++i) initObjectRecord(&records[i]);
    if (objectClass < 1 || objectClass > kLastClass) return 0;
    if (!text) text = "";

    ObjectRecord first;
    initObjectRecord(&first);
    first.objectClass = static_cast<uint8_t>(objectClass);
    first.designationKind = static_cast<uint8_t>(kind);
    const bool namedInConstellation = objectClass == kClassStar && kind >= 2 && kind <= 4;
    if (namedInConstellation) first.nameConstellation = static_cast<uint32_t>(number);
    if (objectClass == kClassStar && componentLetter >= 'A' && componentLetter <= 'z')
        setComponent(&first, std::toupper(componentLetter) - 66);
    first.classMask = classMaskOf(objectClass);

    // For the kinds named in a constellation the number isn't a catalogue
    // number: the text alone is read.
    DesignationHits hits;
    FindPids(objectClass, kind, namedInConstellation ? 0 : number, text, &hits);
    if (namedInConstellation && hits.nameConstellation != 0) first.nameConstellation = hits.nameConstellation;

    const double spanStart = span ? span->start : 0.0;
    const double spanEnd = span ? span->end : 0.0;
    int filled = 0;
    for (int i = 0; i < hits.count && filled < kMaxDesignationRecords; ++i) {
        ObjectRecord r = first;
        r.pid = hits.pids[i];
        if (!ReadByPid(&r, spanStart, spanEnd, site, instant)) continue;
        // Every record of the answer carries the class, kind and name
        // constellation of the first.
        r.objectClass = first.objectClass;
        r.designationKind = first.designationKind;
        r.nameConstellation = first.nameConstellation;
        records[filled++] = r;
    }
    return filled;
}
