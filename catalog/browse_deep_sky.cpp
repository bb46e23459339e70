// The deep-sky lists: common names, the Messier, NGC and IC cross tables
// of each class, and the classes' own number indexes.
#include "catalog/browse.h"

#include <cmath>
#include <cstdio>

#include "catalog/catalogue_files.h"
#include "catalog/cluster_files.h"
#include "catalog/dark_nebula_files.h"
#include "catalog/designation_kinds.h"
#include "catalog/designation_parse.h"
#include "catalog/designation_print.h"
#include "catalog/galaxy_files.h"
#include "catalog/index_runs.h"
#include "catalog/nebula_files.h"
#include "catalog/object_record.h"

namespace {

long typedNumber(const char* text, int* suffix) {
    long number = 0;
    *suffix = 0;
    return !browseStartsAtTop(text) && parseNumberSuffix(text, &number, suffix) ? number : 0;
}

// Common names: the `cnames` rows of the class that the pattern (the start
// text) accepts. The id is the `cn_cross` row + 1.
int beginCommonNames(BrowseState* state, int objectClass, const char* startText) {
    state->walk = BrowseWalk::CommonName;
    const char* pattern = browseStartsAtTop(startText) ? "" : startText;
    if (!beginCommonNameBrowse(&state->common, objectClass, pattern)) return 0;
    state->cap = kCommonNameRows;
    if (*pattern) {
        // The found row is the first the list gives: look ahead on a second walk.
        CommonNameBrowser ahead;
        int row = 0;
        char name[kCommonNameSize];
        CrossHit hit;
        if (beginCommonNameBrowse(&ahead, objectClass, pattern) && nextCommonNameBrowse(&ahead, &row, name, &hit))
            state->foundId = row + 1;
    }
    return 1;
}

// Messier: numbers 1 to 110 whose `m` row names the class; the id is the
// Messier number.
int beginMessier(BrowseState* state, int objectClass, const char* startText) {
    state->walk = BrowseWalk::Messier;
    if (!beginMessierBrowse(&state->messier, objectClass)) return 0;
    state->cap = kMessierBrowseLast;
    int suffix = 0;
    const long target = typedNumber(startText, &suffix);
    CrossHit hit;
    if (target > 0 && lookupMessierCross(state->messier.file.get(), static_cast<int>(target), &hit) &&
        crossClassToObjectClass(hit.crossClass) == objectClass)
        state->foundId = target;
    return 1;
}

// NGC and IC: the slots of the class in number order; the id is the NGC or
// IC number, and the text carries the suffix.
int beginNgcIc(BrowseState* state, int objectClass, bool ngc, const char* startText) {
    state->walk = ngc ? BrowseWalk::Ngc : BrowseWalk::Ic;
    if (!(ngc ? beginNgcBrowse : beginIcBrowse)(&state->cross, objectClass, -1)) return 0;
    state->cap = kNumberedRows;
    int suffix = 0;
    const long target = typedNumber(startText, &suffix);
    if (target <= 0) return 1;
    CrossHit hits[2];
    const int found = ngc ? lookupNgcCross(state->cross.file.get(), static_cast<int>(target), suffix, hits)
                          : lookupIcCross(state->cross.file.get(), static_cast<int>(target), suffix, hits);
    for (int i = 0; i < found; ++i)
        if (crossClassToObjectClass(hits[i].crossClass) == objectClass) state->foundId = target;
    return 1;
}

// PN G: the index's runs of longitude in order; the id is the `pln` record
// the designation leads to.
int beginPngList(BrowseState* state, const char* startText) {
    state->walk = BrowseWalk::Png;
    if (!beginPngBrowse(&state->png)) return 0;
    state->cap = kNumberedRows;
    if (!browseStartsAtTop(startText)) {
        FilePtr png = openPng();
        // The typed form is "PN G" and longitude and latitude: "PN G010.8-01.8".
        const char* at = startText;
        if ((at[0] == 'P' || at[0] == 'p') && (at[1] == 'N' || at[1] == 'n')) at += 2;
        while (*at == ' ') ++at;
        if (*at == 'G' || *at == 'g') ++at;
        double longitude = 0, latitude = 0;
        if (png && std::sscanf(at, "%lf%lf", &longitude, &latitude) == 2) {
            const long record = lookupPng(png.get(), static_cast<int>(std::lround(longitude * 10)),
                                          static_cast<int>(std::lround(latitude * 10)));
            if (record >= 0) state->foundId = record;
        }
    }
    return 1;
}

int nextPngRow(BrowseState* state, BrowseRow* out) {
    int longitude = 0, latitude = 0;
    long record = 0;
    if (!nextPngBrowse(&state->png, &longitude, &latitude, &record)) return 0;
    return giveBrowseRow(state, record, pngName(longitude, latitude), out);
}

// The 2-byte record slots from number 1, 65535 empty; record 0 is a record.
NumberedList slotList(FilePtr (*open)(), long (*lookup)(FILE*, long), std::string (*name)(long), long last) {
    NumberedList l{open, lookup, name, 1, last, 2};
    l.zeroFound = true;
    return l;
}

template <long (*Lookup)(FILE*, int)>
long byInt(FILE* f, long n) {
    return Lookup(f, static_cast<int>(n));
}
template <std::string (*Name)(int)>
std::string nameOf(long n) {
    return Name(static_cast<int>(n));
}

// Markarian and UGC by the bare number (suffix 0): how many galaxies it has.
long markarianPresent(FILE* f, long n) {
    long hits[kMaxGalaxyHits];
    return lookupMarkarian(f, static_cast<int>(n), 0, hits);
}
long ugcPresent(FILE* f, long n) {
    long hits[kMaxGalaxyHits];
    return lookupUgc(f, static_cast<int>(n), 0, hits);
}
constexpr long kLastMarkarian = 1600, kLastUgc = 13000;

long barnardPresent(FILE* f, long n) { return lookupBarnard(f, static_cast<int>(n), 0); }

// A group's record is there when it can be read: `gg` has a 4-byte head
// and records from 1.
long groupPresent(FILE* f, long n) {
    GroupData d;
    return readGroup(f, n, &d, 0);
}
long hicksonPresent(FILE* f, long n) {
    GroupData d;
    return readGroup(f, n + kLastAgcGroup, &d, 0);
}

// The numbered lists of the deep-sky classes; the id is the catalogue number
// (for Hickson too: its record is number + 4076).
NumberedList deepSkyList(int objectClass, int kind) {
    NumberedList none;
    switch (objectClass) {
    case kClassGalaxy:
        if (kind == 5) return {openArp, byInt<lookupArp>, nameOf<arpName>, 1, 338, 3};
        if (kind == 6)
            return {openMarkarian, markarianPresent, [](long n) { return markarianName(static_cast<int>(n), 0); }, 1,
                    kLastMarkarian, 0};
        if (kind == 7) return {openPgc, lookupPgc, pgcName, 1, 9999999, 3};
        if (kind == 9)
            return {openUgc, ugcPresent, [](long n) { return ugcName(static_cast<int>(n), 0); }, 1, kLastUgc, 0};
        break;
    case kClassPlanetary:
        if (kind == 5) return slotList(openAbellPn, byInt<lookupAbellPn>, nameOf<abellPlanetaryName>, 9999);
        if (kind == 12) return slotList(openAro, byInt<lookupAro>, nameOf<aroName>, 9999);
        break;
    case kClassDiffuseNebula:
        switch (kind) {
        case 5: return slotList(openSharpless, byInt<lookupSharpless>, nameOf<sharplessName>, 312);
        case 6: return slotList(openVdb, byInt<lookupVdb>, nameOf<vdbName>, 152);
        case 7: return slotList(openGum, byInt<lookupGum>, nameOf<gumName>, 80);
        case 8: return slotList(openRcw, byInt<lookupRcw>, nameOf<rcwName>, 158);
        case 9: return slotList(openLbn, byInt<lookupLbn>, nameOf<lbnName>, 1627);
        default: break;
        }
        break;
    case kClassGlobular:
        if (kind == 5) return {openPalomar, byInt<lookupPalomar>, nameOf<palomarName>, 1, 15, 1};
        if (kind == 6) return {openTerzan, byInt<lookupTerzan>, nameOf<terzanName>, 1, 15, 1};
        break;
    case kClassGalaxyGroup:
        if (kind == 2) return {openGroups, groupPresent, nameOf<agcName>, 1, kLastAgcGroup, 0};
        if (kind == 3) return {openGroups, hicksonPresent, nameOf<hicksonName>, 1, 100, 0};
        break;
    case kClassDarkNebula:
        if (kind == 2) {
            NumberedList l = slotList(openBarnard, barnardPresent, [](long n) { return barnardName(static_cast<int>(n), 0); }, 369);
            return l;
        }
        if (kind == 3) return slotList(openLdn, byInt<lookupLdn>, nameOf<ldnName>, 1802);
        break;
    default: break;
    }
    return none;
}

// Open-cluster families: numbers 1 to the run's count of the family in
// `oc_cross`; the id is the number in the family.
int beginFamily(BrowseState* state, int family, const char* startText) {
    state->walk = BrowseWalk::Family;
    state->file = openOcCross();
    RunHead run;
    if (!state->file || !readRunHead(state->file.get(), family, &run)) return 0;
    state->cap = kNumberedRows;
    state->last = run.count;
    state->number = 0;
    state->lastConstellation = family;  // the walk's family
    int suffix = 0;
    const long target = typedNumber(startText, &suffix);
    if (target > 0 && lookupOcCross(state->file.get(), family, static_cast<int>(target)) >= 0)
        state->foundId = target;
    return 1;
}

}  // namespace

int beginDeepSkyBrowse(BrowseState* state, int objectClass, int kind, const char* startText) {
    switch (kind) {
    case 1: return beginCommonNames(state, objectClass, startText);
    case 2:
        if (objectClass != kClassGalaxyGroup && objectClass != kClassDarkNebula && objectClass != kClassQuasar)
            return beginMessier(state, objectClass, startText);
        break;
    case 3:
    case 4:
        if (objectClass != kClassGalaxyGroup && objectClass != kClassDarkNebula && objectClass != kClassQuasar)
            return beginNgcIc(state, objectClass, kind == 3, startText);
        break;
    default: break;
    }
    if (objectClass == kClassPlanetary && kind == 10) return beginPngList(state, startText);
    if (objectClass == kClassOpenCluster && kind > 5) {
        const int family = familyOfKind(kind);
        if (family < 0) return 0;
        return beginFamily(state, family, startText);
    }
    const NumberedList list = deepSkyList(objectClass, kind);
    if (!list.open) return beginDeepSkyIndexBrowse(state, objectClass, kind, startText);
    int suffix = 0;
    return beginNumberedBrowse(state, list, typedNumber(startText, &suffix));
}

int nextDeepSkyRow(BrowseState* state, BrowseRow* out) {
    switch (state->walk) {
    case BrowseWalk::CommonName: {
        int row = 0;
        char name[kCommonNameSize];
        CrossHit hit;
        if (!nextCommonNameBrowse(&state->common, &row, name, &hit)) return 0;
        return giveBrowseRow(state, row + 1L, name, out);
    }
    case BrowseWalk::Messier: {
        int messier = 0;
        CrossHit hit;
        if (!nextMessierBrowse(&state->messier, &messier, &hit)) return 0;
        return giveBrowseRow(state, messier, messierName(messier), out);
    }
    case BrowseWalk::Ngc:
    case BrowseWalk::Ic: {
        CrossBrowseRow row;
        if (!nextCrossBrowse(&state->cross, &row)) return 0;
        const int n = static_cast<int>(row.number);
        return giveBrowseRow(state, row.number,
                             state->walk == BrowseWalk::Ngc ? ngcName(n, row.suffix) : icName(n, row.suffix), out);
    }
    case BrowseWalk::Png: return nextPngRow(state, out);
    case BrowseWalk::Family:
        while (state->number < state->last) {
            const int n = static_cast<int>(++state->number);
            if (lookupOcCross(state->file.get(), state->lastConstellation, n) >= 0)
                return giveBrowseRow(state, n, openClusterName(state->lastConstellation, n), out);
        }
        return 0;
    default: return 0;
    }
}
