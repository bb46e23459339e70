#include "catalog/browse.h"

#include <utility>

#include "astro/bodies.h"
#include "base/prefix_match.h"
#include "catalog/object_record.h"

bool browseStartsAtTop(const char* startText) {
    return !startText || !*startText || (startText[0] == '*' && startText[1] == 0);
}

int giveBrowseRow(BrowseState* state, long id, std::string text, BrowseRow* out) {
    if (id == state->foundId && state->foundRow < 0) state->foundRow = state->total;
    ++state->total;
    out->id = id;
    out->text = std::move(text);
    return 1;
}

namespace {

// The solar-system list: the Sun to Pluto and the Moon, the body id as id.
int beginSolarSystemBrowse(BrowseState* state, const char* startText) {
    state->walk = BrowseWalk::SolarSystem;
    state->cap = kSolarSystemRows;
    state->number = -1;
    if (!browseStartsAtTop(startText))
        for (int body = 0; body < kSolarSystemRows; ++body)
            if (PrefixMatch(startText, BodyName(body))) {
                state->foundId = body;
                break;
            }
    return 1;
}

int nextSolarSystemRow(BrowseState* state, BrowseRow* out) {
    if (state->number + 1 >= kSolarSystemRows) return 0;
    ++state->number;
    return giveBrowseRow(state, state->number, BodyName(static_cast<int>(state->number)), out);
}

void resetState(BrowseState* state, int objectClass, int kind) {
    *state = BrowseState{};
    state->objectClass = objectClass;
    state->kind = kind;
}

}  // namespace

int beginBrowse(BrowseState* state, int objectClass, int kind, const char* startText) {
    if (!state) return 0;
    resetState(state, objectClass, kind);
    switch (objectClass) {
    case kClassConstellation: return beginConstellationList(state, startText);
    case kClassMajorBody: return beginSolarSystemBrowse(state, startText);
    case kClassStar: return beginStarBrowse(state, kind, startText);
    case kClassComet:
    case kClassMinorPlanet: return beginOrbitBrowse(state, objectClass, kind, startText);
    case kClassSupplementalStar:
    case kClassUserComet:
    case kClassUserMinorPlanet:
    case kClassSupplementalDeepSky: return beginUserBrowse(state, objectClass, startText);
    default: break;
    }
    return IsDeepSkyClass(objectClass) ? beginDeepSkyBrowse(state, objectClass, kind, startText) : 0;
}

int nextBrowseRow(BrowseState* state, BrowseRow* out) {
    if (!state || !out || state->total >= state->cap) return 0;
    switch (state->walk) {
    case BrowseWalk::None: return 0;
    case BrowseWalk::SolarSystem: return nextSolarSystemRow(state, out);
    case BrowseWalk::Numbered: return nextNumberedRow(state, out);
    case BrowseWalk::CommonStar:
    case BrowseWalk::Bayer:
    case BrowseWalk::Flamsteed:
    case BrowseWalk::Ccdm: return nextStarRow(state, out);
    case BrowseWalk::CommonName:
    case BrowseWalk::Messier:
    case BrowseWalk::Ngc:
    case BrowseWalk::Ic:
    case BrowseWalk::Png:
    case BrowseWalk::Family: return nextDeepSkyRow(state, out);
    case BrowseWalk::CometName:
    case BrowseWalk::CometIau:
    case BrowseWalk::CometNumber:
    case BrowseWalk::MinorPlanetName:
    case BrowseWalk::MinorPlanetNumber: return nextOrbitRow(state, out);
    case BrowseWalk::UserRows: return nextUserRow(state, out);
    case BrowseWalk::Grouped: return nextGroupedRow(state, out);
    }
    return 0;
}

// The numbered walk: numbers from the block that holds the target (or the
// first) up, each shown when its lookup finds something.
int beginNumberedBrowse(BrowseState* state, const NumberedList& list, long target) {
    state->walk = BrowseWalk::Numbered;
    state->list = list;
    state->file = list.open();
    if (!state->file) return 0;
    state->cap = kNumberedRows;
    state->last = list.last;
    if (list.slotBytes > 0 && std::fseek(state->file.get(), 0, SEEK_END) == 0) {
        long bySize = std::ftell(state->file.get()) / list.slotBytes;
        if (list.gapFrom > 0 && bySize >= list.gapFrom) bySize += list.gapTo - list.gapFrom + 1;
        if (bySize < state->last) state->last = bySize;
    }
    long start = list.first;
    if (target >= list.first && target <= state->last && !(target >= list.gapFrom && target <= list.gapTo)) {
        start = list.first + (target - list.first) / kNumberedRows * kNumberedRows;
        const long answer = list.lookup(state->file.get(), target);
        if (answer > 0 || (list.zeroFound && answer == 0)) state->foundId = target;
    }
    state->number = start - 1;
    return 1;
}

int nextNumberedRow(BrowseState* state, BrowseRow* out) {
    const NumberedList& list = state->list;
    while (state->number < state->last) {
        long n = ++state->number;
        if (list.gapFrom > 0 && n == list.gapFrom) n = state->number = list.gapTo + 1;
        if (n > state->last) break;
        const long answer = list.lookup(state->file.get(), n);
        if (answer > 0 || (list.zeroFound && answer == 0)) return giveBrowseRow(state, n, list.name(n), out);
    }
    return 0;
}

int beginGroupedBrowse(BrowseState* state, const GroupedList& list, long group, long place) {
    state->walk = BrowseWalk::Grouped;
    state->grouped = list;
    state->cap = kNumberedRows;
    state->group = group;
    state->groupRows = -1;
    state->number = place - 1;
    return 1;
}

int nextGroupedRow(BrowseState* state, BrowseRow* out) {
    const GroupedList& list = state->grouped;
    while (state->group <= list.lastGroup) {
        if (state->groupRows < 0) {
            state->groupRows = list.rowsIn(state, state->group);
            if (state->groupRows < 0) return 0;
        }
        while (++state->number < state->groupRows) {
            BrowseRow row;
            const int answer = list.rowAt(state, state->group, state->number, &row);
            if (answer > 0) return giveBrowseRow(state, row.id, std::move(row.text), out);
            if (answer < 0) break;
        }
        ++state->group;
        state->groupRows = -1;
        state->number = -1;
    }
    return 0;
}
