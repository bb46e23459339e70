// The lists of the reference comets (class 3) and minor planets (class 4).
#include <cctype>
#include <cstdio>
#include <cstdlib>

#include "base/prefix_match.h"
#include "catalog/browse.h"
#include "catalog/comet_files.h"
#include "catalog/comet_names.h"
#include "catalog/minor_planet_files.h"
#include "catalog/object_record.h"

namespace {

enum { kCometName = 1, kCometIau, kCometNumber };
enum { kMpName = 1, kMpNumber };

// The rows of one comet follow one another; a row whose PID is the last
// row's is the same comet again.
bool newComet(BrowseState* state, const CometRecord& r) {
    if (static_cast<long>(r.pid) == state->lastPid) return false;
    state->lastPid = r.pid;
    return true;
}

// Names: the `cnames` rows from 0, those whose search text the pattern (the
// start text) accepts; the id is the comet's PID (its first `comets` row).
int beginCometNames(BrowseState* state, const char* startText) {
    state->walk = BrowseWalk::CometName;
    state->file = openCometNames();
    if (!state->file) return 0;
    state->cap = kCometNameRows;
    state->number = -1;
    if (!browseStartsAtTop(startText)) {
        state->pattern = startText;
        state->foundId = findCometByName(startText);
    }
    return 1;
}

int nextCometNameRow(BrowseState* state, BrowseRow* out) {
    std::string text, full;
    long pid = 0;
    while (state->number + 1 < kCometNameRowCap &&
           readCometNameRow(state->file.get(), state->number + 1, &text, &full, &pid)) {
        ++state->number;
        if (state->pattern.empty() || PrefixMatch(state->pattern.c_str(), text.c_str()))
            return giveBrowseRow(state, pid, full, out);
    }
    return 0;
}

// IAU designations and periodic numbers: the `comets` rows from 0, each
// comet once. The IAU list's id is the PID; the number list's id is the
// periodic number.
int beginCometRows(BrowseState* state, int kind, const char* startText) {
    state->walk = kind == kCometIau ? BrowseWalk::CometIau : BrowseWalk::CometNumber;
    state->file = openComets();
    if (!state->file) return 0;
    state->cap = kind == kCometIau ? kCometNameRows : kCometNumberRows;
    state->number = -1;
    if (browseStartsAtTop(startText)) return 1;
    if (kind == kCometIau) {
        state->foundId = findCometByIau(startText);
    } else {
        const long number = std::atol(startText);
        if (number > 0 && findCometByNumber(static_cast<int>(number)) >= 0) state->foundId = number;
    }
    return 1;
}

int nextCometRow(BrowseState* state, BrowseRow* out) {
    std::string iau, full;
    CometRecord r;
    while (readComet(state->file.get(), state->number + 1, &iau, &full, &r)) {
        ++state->number;
        if (state->walk == BrowseWalk::CometIau) {
            if (r.iau[0] && newComet(state, r)) return giveBrowseRow(state, r.pid, iau, out);
        } else if (r.number != 0 && newComet(state, r)) {
            return giveBrowseRow(state, r.number, cometShortName(r), out);  // "2P/Encke"
        }
    }
    return 0;
}

// Minor-planet names: the `mp_alpha` rows in their order, of the pattern's
// first letter when it has one; the id is the minor planet's number.
int beginMpNames(BrowseState* state, const char* startText) {
    state->walk = BrowseWalk::MinorPlanetName;
    state->cap = kMinorPlanetRows;
    char first = ' ';
    if (!browseStartsAtTop(startText)) {
        state->pattern = startText;
        if (startText[0] != '*') first = startText[0];
        const uint32_t number = findMpByName(startText);
        if (number) state->foundId = number;
    }
    return openMpAlpha(first, &state->alpha);
}

int nextMpNameRow(BrowseState* state, BrowseRow* out) {
    std::string name;
    uint32_t number = 0;
    while (nextMpAlpha(&state->alpha, &name, &number))
        if (state->pattern.empty() || PrefixMatch(state->pattern.c_str(), name.c_str()))
            return giveBrowseRow(state, number, name, out);
    return 0;
}

// Minor-planet numbers: "(%d) %s" from number 1, or from the 10000-block
// of the number typed; the id is the number. The list ends at the first
// number the names file doesn't hold.
int beginMpNumbers(BrowseState* state, const char* startText) {
    state->walk = BrowseWalk::MinorPlanetNumber;
    state->file = openMpNames();
    if (!state->file) return 0;
    state->cap = kMinorPlanetRows;
    if (browseStartsAtTop(startText)) return 1;
    const char* digits = startText;
    while (*digits && !std::isdigit(static_cast<unsigned char>(*digits))) ++digits;
    const long target = std::atol(digits);
    std::string name;
    if (target > 0 && readMpName(state->file.get(), static_cast<uint32_t>(target), &name)) {
        state->foundId = target;
        state->number = (target - 1) / kMinorPlanetRows * kMinorPlanetRows;
    }
    return 1;
}

int nextMpNumberRow(BrowseState* state, BrowseRow* out) {
    std::string name;
    if (!readMpName(state->file.get(), static_cast<uint32_t>(state->number + 1), &name)) return 0;
    ++state->number;
    char text[64];
    std::snprintf(text, sizeof text, "(%ld) %s", state->number, name.c_str());
    return giveBrowseRow(state, state->number, text, out);
}

}  // namespace

int beginOrbitBrowse(BrowseState* state, int objectClass, int kind, const char* startText) {
    if (objectClass == kClassComet) {
        if (kind == kCometName) return beginCometNames(state, startText);
        if (kind == kCometIau || kind == kCometNumber) return beginCometRows(state, kind, startText);
        return 0;
    }
    if (kind == kMpName) return beginMpNames(state, startText);
    if (kind == kMpNumber) return beginMpNumbers(state, startText);
    return 0;
}

int nextOrbitRow(BrowseState* state, BrowseRow* out) {
    switch (state->walk) {
    case BrowseWalk::CometName: return nextCometNameRow(state, out);
    case BrowseWalk::CometIau:
    case BrowseWalk::CometNumber: return nextCometRow(state, out);
    case BrowseWalk::MinorPlanetName: return nextMpNameRow(state, out);
    case BrowseWalk::MinorPlanetNumber: return nextMpNumberRow(state, out);
    default: return 0;
    }
}
