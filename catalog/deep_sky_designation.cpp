#include "catalog/deep_sky_designation.h"

#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "catalog/cluster_files.h"
#include "catalog/cross_tables.h"
#include "catalog/dark_nebula_files.h"
#include "catalog/designation_kinds.h"
#include "catalog/designation_parse.h"
#include "catalog/galaxy_files.h"
#include "catalog/nebula_files.h"
#include "catalog/object_record.h"
#include "catalog/planetary_files.h"
#include "catalog/quasar_files.h"

namespace {

bool IsDigit(char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; }

// The first record number of a class file: galaxies, quasars, globulars and
// groups count from 1, the others from 0, so a lookup's "none" is 0 for the
// first and -1 for the second.
long FirstRecord(int objectClass) {
    switch (objectClass) {
        case kClassGalaxy:
        case kClassQuasar:
        case kClassGlobular:
        case kClassGalaxyGroup: return 1;
        default: return 0;
    }
}

void AddRecord(DesignationHits* hits, int objectClass, long record) {
    if (record >= FirstRecord(objectClass)) addDesignationHit(hits, static_cast<uint32_t>(record));
}

// The catalogue number: the direct number, or the text's number and suffix.
bool NumberOf(long number, const char* text, long* out, int* suffix) {
    *suffix = 0;
    if (number != 0) {
        *out = number;
        return true;
    }
    return parseNumberSuffix(text, out, suffix) == 1;
}

// The text from its first digit or sign on: past a catalogue word such as
// "PN G", "DC" or "Sh".
const char* NumberPart(const char* text) {
    const char* s = text;
    while (*s && !IsDigit(*s) && *s != '-' && *s != '+') ++s;
    return s;
}

// "M 1-2", "He 2-123", "1-2": the two numbers of a pair designation.
bool ParsePair(const char* text, int* a, int* b) {
    return std::sscanf(NumberPart(text), "%d-%d", a, b) == 2;
}

// A suffix letter's code, 1 for A; 0 for anything else.
int SuffixCode(char c) {
    const int upper = std::toupper(static_cast<unsigned char>(c));
    return upper >= 'A' && upper <= 'Z' ? upper - 64 : 0;
}

// ---- Common names and the Messier, NGC and IC cross tables ----------------

void CommonName(int objectClass, long number, const char* text, DesignationHits* hits) {
    FilePtr cross = openCommonNameCross();
    if (!cross) return;
    long row = -1;
    if (number != 0) {
        row = number - 1;
    } else {
        FilePtr names = openCommonNames();
        if (!names) return;
        row = findCommonName(names.get(), text);
    }
    CrossHit hit;
    if (row < 0 || row >= kCommonNameRows || !lookupCommonNameCross(cross.get(), static_cast<int>(row), &hit))
        return;
    if (crossClassToObjectClass(hit.crossClass) == objectClass) AddRecord(hits, objectClass, hit.record);
}

void CrossTable(int objectClass, int kind, long number, const char* text, DesignationHits* hits) {
    long n = 0;
    int suffix = 0;
    if (!NumberOf(number, text, &n, &suffix) || n < 1) return;
    CrossHit found[2];
    int count = 0;
    if (kind == 2) {
        FilePtr file = openMessierCross();
        if (file) count = lookupMessierCross(file.get(), static_cast<int>(n), &found[0]);
    } else if (kind == 3) {
        FilePtr file = openNgcCross();
        if (file) count = lookupNgcCross(file.get(), static_cast<int>(n), suffix, found);
    } else {
        FilePtr file = openIcCross();
        if (file) count = lookupIcCross(file.get(), static_cast<int>(n), suffix, &found[0]);
    }
    for (int i = 0; i < count && i < 2; ++i)
        if (crossClassToObjectClass(found[i].crossClass) == objectClass)
            AddRecord(hits, objectClass, found[i].record);
}

bool HasCrossKinds(int objectClass) {
    return objectClass == kClassGalaxy || objectClass == kClassPlanetary ||
           objectClass == kClassDiffuseNebula || objectClass == kClassOpenCluster ||
           objectClass == kClassGlobular;
}

// ---- Helpers for the index files ---------------------------------------------

// One number, one record: open, look up.
template <class Open, class Lookup>
void OneNumber(int objectClass, long number, const char* text, Open open, Lookup lookup,
               DesignationHits* hits) {
    long n = 0;
    int suffix = 0;
    if (!NumberOf(number, text, &n, &suffix)) return;
    FilePtr file = open();
    if (file) AddRecord(hits, objectClass, lookup(file.get(), static_cast<int>(n)));
}

template <class Open, class Lookup>
void OnePair(int objectClass, const char* text, Open open, Lookup lookup, DesignationHits* hits) {
    int a = 0, b = 0;
    if (!ParsePair(text, &a, &b)) return;
    FilePtr file = open();
    if (file) AddRecord(hits, objectClass, lookup(file.get(), a, b));
}

template <class Open, class Lookup>
void OneName(int objectClass, const char* text, Open open, Lookup lookup, DesignationHits* hits) {
    if (!*text) return;
    FilePtr file = open();
    if (file) AddRecord(hits, objectClass, lookup(file.get(), text));
}

void AddRecords(DesignationHits* hits, int objectClass, const long* records, int count) {
    for (int i = 0; i < count && i < kMaxGalaxyHits; ++i) AddRecord(hits, objectClass, records[i]);
}

// ---- Galaxies: one designation may name several ------------------------------

void Galaxy(int kind, long number, const char* text, DesignationHits* hits) {
    long records[kMaxGalaxyHits] = {};
    long n = 0;
    int suffix = 0;
    switch (kind) {
        case 5:
            OneNumber(kClassGalaxy, number, text, openArp, lookupArp, hits);
            break;
        case 6:
            if (NumberOf(number, text, &n, &suffix))
                if (FilePtr file = openMarkarian())
                    AddRecords(hits, kClassGalaxy, records,
                               lookupMarkarian(file.get(), static_cast<int>(n), suffix, records));
            break;
        case 7:
            if (NumberOf(number, text, &n, &suffix))
                if (FilePtr file = openPgc()) AddRecord(hits, kClassGalaxy, lookupPgc(file.get(), n));
            break;
        case 8: {
            int zone = 0, field = 0, mcgNumber = 0, part = 0;
            if (parseMcg(text, &zone, &field, &mcgNumber, &part) >= 3)
                if (FilePtr file = openMcg())
                    AddRecords(hits, kClassGalaxy, records,
                               lookupMcg(file.get(), zone, field, mcgNumber, part, records));
            break;
        }
        case 9:
            if (NumberOf(number, text, &n, &suffix))
                if (FilePtr file = openUgc())
                    AddRecords(hits, kClassGalaxy, records,
                               lookupUgc(file.get(), static_cast<int>(n), suffix, records));
            break;
        case 10: {
            long field = 0, esoNumber = 0;
            if (parseEso(text, &field, &esoNumber, &suffix))
                if (FilePtr file = openEsob())
                    AddRecords(hits, kClassGalaxy, records,
                               lookupEso(file.get(), static_cast<int>(field), static_cast<int>(esoNumber), suffix,
                                         records));
            break;
        }
        default: break;
    }
}

void Quasar(int kind, const char* text, DesignationHits* hits) {
    if (kind == 2) {
        OneName(kClassQuasar, text, openQsoDesignations, lookupQsoDesignation, hits);
    } else if (kind == 3) {
        int raPart = 0, decPart = 0;
        char suffix = ' ';
        // A Q number needs both its parts; a lone number names no quasar.
        if (parseQuasarQ(text, &raPart, &decPart, &suffix) < 2) return;
        if (FilePtr file = openQ())
            AddRecord(hits, kClassQuasar, lookupQ(file.get(), raPart, decPart, qWantedSuffix(suffix, false)));
    }
}

void Planetary(int kind, long number, const char* text, DesignationHits* hits) {
    const int c = kClassPlanetary;
    switch (kind) {
        case 5: OneNumber(c, number, text, openAbellPn, lookupAbellPn, hits); break;
        case 6: OnePair(c, text, openMinkowski, lookupMinkowski, hits); break;
        case 7: OnePair(c, text, openHenize, lookupHenize, hits); break;
        case 8: OnePair(c, text, openHaro, lookupHaro, hits); break;
        case 9: OnePair(c, text, openKohoutek, lookupKohoutek, hits); break;
        case 10: {
            double longitude = 0, latitude = 0;
            if (std::sscanf(NumberPart(text), "%lf%lf", &longitude, &latitude) != 2) return;
            if (FilePtr file = openPng())
                AddRecord(hits, c,
                          lookupPng(file.get(), static_cast<int>(std::lround(longitude * 10.0)),
                                    static_cast<int>(std::lround(latitude * 10.0))));
            break;
        }
        case 11: {
            long longitude = 0;
            int latitudeTenths = kPkNoLatitude;
            if (!parsePk(text, &longitude, &latitudeTenths)) return;
            if (FilePtr file = openPk())
                AddRecord(hits, c, lookupPk(file.get(), static_cast<int>(longitude), latitudeTenths));
            break;
        }
        case 12: OneNumber(c, number, text, openAro, lookupAro, hits); break;
        case 13: OnePair(c, text, openPlanetaryEso, lookupPlanetaryEso, hits); break;
        // The row of `pn_des` is the planetary's record.
        case 14: OneName(c, text, openPnDesignations, lookupPnDesignation, hits); break;
        default: break;
    }
}

// "Sh 2-123", "2-123" or "123": the number after the catalogue's "2-".
bool SharplessNumber(long number, const char* text, long* out) {
    if (number != 0) {
        *out = number;
        return true;
    }
    const char* s = NumberPart(text);
    if (s[0] == '2' && s[1] == '-') s += 2;
    return std::sscanf(s, "%ld", out) == 1;
}

void Nebula(int kind, long number, const char* text, DesignationHits* hits) {
    const int c = kClassDiffuseNebula;
    switch (kind) {
        case 5: {
            long n = 0;
            if (!SharplessNumber(number, text, &n)) return;
            if (FilePtr file = openSharpless()) AddRecord(hits, c, lookupSharpless(file.get(), static_cast<int>(n)));
            break;
        }
        case 6: OneNumber(c, number, text, openVdb, lookupVdb, hits); break;
        case 7: OneNumber(c, number, text, openGum, lookupGum, hits); break;
        case 8: OneNumber(c, number, text, openRcw, lookupRcw, hits); break;
        case 9: OneNumber(c, number, text, openLbn, lookupLbn, hits); break;
        // The row of `nebother` is the nebula's record.
        case 10: OneName(c, text, openNebulaOther, lookupNebulaOther, hits); break;
        default: break;
    }
}

// OCL numbers carry a tenth ("OCL 123.4"); the family kinds a plain number.
void OpenCluster(int kind, long number, const char* text, DesignationHits* hits) {
    const int c = kClassOpenCluster;
    if (kind == 5) {
        double ocl = static_cast<double>(number);
        if (number == 0) {
            const char* s = IsDigit(text[0]) ? text : (std::strlen(text) >= 3 ? text + 3 : "");
            if (std::sscanf(s, "%lf", &ocl) != 1) return;
        }
        if (FilePtr file = openOcl()) AddRecord(hits, c, lookupOcl(file.get(), ocl));
        return;
    }
    const int family = familyOfKind(kind);
    if (kind < 6 || family < 0) return;
    long n = 0;
    int suffix = 0;
    if (!NumberOf(number, text, &n, &suffix)) return;
    if (FilePtr file = openOcCross()) AddRecord(hits, c, lookupOcCross(file.get(), family, static_cast<int>(n)));
}

void Globular(int kind, long number, const char* text, DesignationHits* hits) {
    const int c = kClassGlobular;
    switch (kind) {
        case 5: OneNumber(c, number, text, openPalomar, lookupPalomar, hits); break;
        case 6: OneNumber(c, number, text, openTerzan, lookupTerzan, hits); break;
        case 7: OneName(c, text, openGlobularDesignations, lookupGlobularDesignation, hits); break;
        default: break;
    }
}

// Groups have no index file: AGC n is record n, Hickson n record n + 4076.
void Group(int kind, long number, const char* text, DesignationHits* hits) {
    long n = 0;
    int suffix = 0;
    if ((kind != 2 && kind != 3) || !NumberOf(number, text, &n, &suffix)) return;
    const long pid = kind == 2 ? groupPidOfAgc(static_cast<int>(n)) : groupPidOfHickson(static_cast<int>(n));
    AddRecord(hits, kClassGalaxyGroup, pid);
}

void DarkNebula(int kind, long number, const char* text, DesignationHits* hits) {
    const int c = kClassDarkNebula;
    switch (kind) {
        case 2: {
            long n = 0;
            int suffix = 0;
            if (!NumberOf(number, text, &n, &suffix)) return;
            if (FilePtr file = openBarnard()) AddRecord(hits, c, lookupBarnard(file.get(), static_cast<int>(n), suffix));
            break;
        }
        case 3: OneNumber(c, number, text, openLdn, lookupLdn, hits); break;
        case 4: {
            double longitude = 0, latitude = 0;
            char letter = 0;
            const int read = std::sscanf(NumberPart(text), "%lf%lf%c", &longitude, &latitude, &letter);
            if (read < 2) return;
            if (FilePtr file = openDc())
                AddRecord(hits, c, lookupDc(file.get(), longitude, latitude, read == 3 ? SuffixCode(letter) : 0));
            break;
        }
        case 5: OneName(c, text, [] { return openGbc(); }, lookupGlobule, hits); break;
        default: break;
    }
}

}  // namespace

int findDeepSkyDesignation(int objectClass, int kind, long number, const char* text, DesignationHits* hits) {
    if (!hits) return 0;
    if (!text) text = "";
    if (kind == 1) {
        CommonName(objectClass, number, text, hits);
        return hits->count;
    }
    if (kind >= 2 && kind <= 4 && HasCrossKinds(objectClass)) {
        CrossTable(objectClass, kind, number, text, hits);
        return hits->count;
    }
    switch (objectClass) {
        case kClassGalaxy: Galaxy(kind, number, text, hits); break;
        case kClassQuasar: Quasar(kind, text, hits); break;
        case kClassPlanetary: Planetary(kind, number, text, hits); break;
        case kClassDiffuseNebula: Nebula(kind, number, text, hits); break;
        case kClassOpenCluster: OpenCluster(kind, number, text, hits); break;
        case kClassGlobular: Globular(kind, number, text, hits); break;
        case kClassGalaxyGroup: Group(kind, number, text, hits); break;
        case kClassDarkNebula: DarkNebula(kind, number, text, hits); break;
        default: return 0;
    }
    return hits->count;
}
