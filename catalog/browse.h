// The browsers: one scrolling list of designations for each class and
// kind, row by row in catalogue order. `beginBrowse` opens what the list
// walks and notes, for a start text, the row the list should select;
// `nextBrowseRow` hands out one row at a time until the list's cap.
//
// A row's `id` is the number the class reader takes for the kind (the
// catalogue number itself, or a row of the list's file as that file counts
// its rows); each browser says which. Texts are the designations' printed
// forms.
#pragma once

#include <string>

#include "base/file_utils.h"
#include "catalog/cross_tables.h"
#include "catalog/gsc.h"
#include "catalog/minor_planet_files.h"
#include "catalog/planetary_files.h"

// The caps: how many rows a list gives at most.
inline constexpr long kSolarSystemRows = 11;
inline constexpr long kCometNameRows = 1017;
inline constexpr long kCometNumberRows = 152;
inline constexpr long kMinorPlanetRows = 10000;
inline constexpr long kCommonStarRows = 332;
inline constexpr long kBayerFlamsteedRows = 14000;
inline constexpr long kNumberedRows = 14000;
inline constexpr long kUserPageRows = 1000;

// Which walk a state runs; set by the begin functions.
enum class BrowseWalk {
    None,
    SolarSystem,
    CommonStar,
    Bayer,
    Flamsteed,
    Numbered,
    Ccdm,
    CommonName,
    Messier,
    Ngc,
    Ic,
    Png,
    Family,
    CometName,
    CometIau,
    CometNumber,
    MinorPlanetName,
    MinorPlanetNumber,
    UserRows,
    Grouped,
};

struct BrowseState;
struct BrowseRow;

// A list read in groups of rows (the zones of a Durchmusterung, the regions
// of the GSC, the runs of an index; a flat list is one group). `rowsIn`
// tells how many row places group g has (0 none, -1: no group g, the list
// ends); `rowAt` gives the row at place r of group g: 1 a row, 0 an empty
// place, -1 the group ends before this place.
struct GroupedList {
    long (*rowsIn)(BrowseState* state, long group) = nullptr;
    int (*rowAt)(BrowseState* state, long group, long place, BrowseRow* out) = nullptr;
    long lastGroup = 0;
};

// One list of catalogue numbers walked through a lookup: a number is
// shown when the lookup finds something for it.
struct NumberedList {
    FilePtr (*open)() = nullptr;
    long (*lookup)(FILE* file, long number) = nullptr;  // > 0 (or >= 0, see zeroFound) when present
    std::string (*name)(long number) = nullptr;
    long first = 1;
    long last = 0;          // the highest number the index holds
    long slotBytes = 0;     // bytes a number takes at (number - 1) x slotBytes; 0: no size bound
    bool zeroFound = false; // a lookup answer of 0 is a record (deep-sky slots), not "none"
    // Numbers gapFrom to gapTo have no slots: the walk jumps them, and the
    // slots after the gap stand for the numbers above it.
    long gapFrom = 0;
    long gapTo = 0;
};

struct BrowseState {
    BrowseWalk walk = BrowseWalk::None;
    int objectClass = 0;
    int kind = 0;
    FilePtr file;
    long cap = 0;        // rows given at most
    long total = 0;      // rows given so far
    long number = 0;     // the walk's position: last number, row or slot looked at
    long last = 0;       // the walk's end, inclusive
    long foundId = -1;   // id of the row the start text names; -1 none
    long foundRow = -1;  // that row's place in the list (from 0) once given
    std::string pattern; // name lists: only rows the prefix rule accepts
    // Bayer and Flamsteed: the constellation row walked (-1 all) and the
    // place in it.
    int constellation = -1;
    int lastConstellation = -1;
    int letter = 0;
    int superscript = 0;
    NumberedList list;
    long lastPid = -1;  // user comets: the PID of the last row given
    CrossBrowser cross;
    MessierBrowser messier;
    CommonNameBrowser common;
    PngBrowser png;
    MpAlphaRun alpha;
    // The grouped walk: its list, the group walked and its size (-1 unread).
    GroupedList grouped;
    long group = 0;
    long groupRows = -1;
    long runOffset = 0;  // where the group's run starts in its file
    FilePtr second;  // a list's second file (the zone sizes of `dmb`)
    GscCursor gsc;
};

struct BrowseRow {
    long id = 0;
    std::string text;
};

// 1 started; 0 for a class and kind that has no browser or a file that
// can't be opened. A start text of "*" or empty starts at the first row;
// otherwise it names the row to select (`foundId`), and for the name
// lists it is also the pattern the rows must begin with. A numbered list
// longer than its cap starts at the cap-sized block that holds the number
// named.
int beginBrowse(BrowseState* state, int objectClass, int kind, const char* startText);

// 1 a row given; 0 at the end (or the browser's cap).
int nextBrowseRow(BrowseState* state, BrowseRow* out);

// The Bayer (kind 2) or Flamsteed (kind 3) list of one constellation, by
// its zone number 1 to 89: the two Serpens zones, 76 and 77, are one row.
// The start text names the row to select.
int beginConstellationBrowse(BrowseState* state, int kind, int zone, const char* startText);

// A page of a user list (classes 12, 13, 14, 18): rows page x 1000 + 1 to
// page x 1000 + 1000 of the store.
int beginUserBrowsePage(BrowseState* state, int objectClass, long page);

// The parts of the browsers by class family, in their own files.
int beginStarBrowse(BrowseState* state, int kind, const char* startText);
int nextStarRow(BrowseState* state, BrowseRow* out);
int beginDeepSkyBrowse(BrowseState* state, int objectClass, int kind, const char* startText);
int nextDeepSkyRow(BrowseState* state, BrowseRow* out);
int beginOrbitBrowse(BrowseState* state, int objectClass, int kind, const char* startText);
int nextOrbitRow(BrowseState* state, BrowseRow* out);
int beginUserBrowse(BrowseState* state, int objectClass, const char* startText);
int nextUserRow(BrowseState* state, BrowseRow* out);

// Shared by the parts: a start text that asks for no row; the numbered walk.
bool browseStartsAtTop(const char* startText);
int beginNumberedBrowse(BrowseState* state, const NumberedList& list, long target);
int nextNumberedRow(BrowseState* state, BrowseRow* out);
// The grouped walk from place `place` of group `group`, with the cap of the
// numbered lists.
int beginGroupedBrowse(BrowseState* state, const GroupedList& list, long group, long place);
int nextGroupedRow(BrowseState* state, BrowseRow* out);
// The star lists read by zone or region, and the deep-sky lists read by run
// or row, in their own files.
int beginStarIndexBrowse(BrowseState* state, int kind, const char* startText);
int beginDeepSkyIndexBrowse(BrowseState* state, int objectClass, int kind, const char* startText);
int beginConstellationList(BrowseState* state, const char* startText);
// Gives a row: counts it and notes its place when it is the found one.
int giveBrowseRow(BrowseState* state, long id, std::string text, BrowseRow* out);
