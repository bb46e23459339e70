// The lists of the user's own objects: supplemental stars (12), comets
// (13), minor planets (14) and supplemental deep-sky objects (18), by pages
// of 1000 rows in the store's order. A row's id is the object's PID. The
// stores are opened for reading only: a list never makes a store.
#include <cstdio>
#include <cstring>

#include "base/file_utils.h"
#include "base/prefix_match.h"
#include "catalog/browse.h"
#include "catalog/comet_names.h"
#include "catalog/object_record.h"
#include "catalog/user_comets.h"
#include "catalog/user_deep_sky.h"
#include "catalog/user_minor_planets.h"
#include "catalog/user_stars.h"

namespace {

// Row `row` (from 0) of the store: its PID and display text; 0 past the
// count or on a failed read.
int readUserRow(BrowseState* state, long row, long* pid, std::string* text) {
    FILE* f = state->file.get();
    if (row < 0 || row >= state->last) return 0;
    switch (state->objectClass) {
    case kClassSupplementalStar: {
        StellarRecord r;
        if (!readStellarRow(f, &r, row)) return 0;
        *pid = r.pid;
        *text = std::string(r.name, strnlen(r.name, sizeof r.name));
        return 1;
    }
    case kClassSupplementalDeepSky: {
        UdsRecord r;
        if (!readUdsRow(f, &r, row)) return 0;
        *pid = r.pid;
        *text = std::string(r.name, strnlen(r.name, sizeof r.name));
        return 1;
    }
    case kClassUserComet: {
        CometRecord r;
        if (!readUserCometRow(f, row, &r)) return 0;
        *pid = r.pid;
        *text = cometFullName(r);
        return 1;
    }
    case kClassUserMinorPlanet: {
        UserMpRecord r;
        if (!readUserMpRow(f, static_cast<uint32_t>(row), &r)) return 0;
        *pid = r.pid;
        const std::string name(r.name, strnlen(r.name, sizeof r.name));
        if (r.number) {
            char numbered[64];
            std::snprintf(numbered, sizeof numbered, "(%u) %s", r.number, name.c_str());
            *text = numbered;
        } else {
            *text = name;
        }
        return 1;
    }
    default: return 0;
    }
}

// Opens the store for reading and notes its count in `last`.
int openUserStore(BrowseState* state) {
    long count = 0;
    switch (state->objectClass) {
    case kClassSupplementalStar: state->file = openStellarForReading(&count); break;
    case kClassSupplementalDeepSky: state->file = openUdsForReading(&count); break;
    case kClassUserComet: {
        state->file = OpenRegularFile(kUserCometPath, "rb");
        UserCometHead head;
        if (state->file && readUserCometHead(state->file.get(), &head)) count = head.count;
        else state->file.reset();
        break;
    }
    case kClassUserMinorPlanet: {
        state->file = OpenRegularFile(kUserMpPath, "rb");
        uint32_t n = 0, lastPid = 0;
        if (state->file && readUserMpHead(state->file.get(), &n, &lastPid)) count = n;
        else state->file.reset();
        break;
    }
    default: return 0;
    }
    state->last = count;
    state->walk = BrowseWalk::UserRows;
    state->cap = kUserPageRows;
    return state->file ? 1 : 0;
}

void startPage(BrowseState* state, long page) {
    state->number = page * kUserPageRows;  // the next row, from 0: page x 1000 + 1 counted from 1
    if (state->last > state->number + kUserPageRows) state->last = state->number + kUserPageRows;
    state->lastPid = -1;
}

}  // namespace

int beginUserBrowsePage(BrowseState* state, int objectClass, long page) {
    if (!state || page < 0) return 0;
    *state = BrowseState{};
    state->objectClass = objectClass;
    if (!openUserStore(state)) return 0;
    startPage(state, page);
    return 1;
}

// The start text names an object: the list opens at the page of its first
// row whose name the text begins.
int beginUserBrowse(BrowseState* state, int objectClass, const char* startText) {
    if (!openUserStore(state)) return 0;
    long page = 0;
    if (!browseStartsAtTop(startText)) {
        long pid = 0;
        std::string text;
        for (long row = 0; readUserRow(state, row, &pid, &text); ++row)
            if (PrefixMatch(startText, text.c_str())) {
                state->foundId = pid;
                page = row / kUserPageRows;
                break;
            }
    }
    (void)objectClass;
    startPage(state, page);
    return 1;
}

int nextUserRow(BrowseState* state, BrowseRow* out) {
    long pid = 0;
    std::string text;
    // The rows of one object (a comet's or minor planet's several epochs)
    // stand together; it is shown once.
    while (readUserRow(state, state->number, &pid, &text)) {
        ++state->number;
        if (pid == state->lastPid) continue;
        state->lastPid = pid;
        return giveBrowseRow(state, pid, text, out);
    }
    return 0;
}
