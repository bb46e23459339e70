// What a name written by version 1.x points at. A supplemental star, a
// list row or a log report carries its object as text ("HD 172167",
// "Alp Lyr", "M 31", "E 123", "(1) Ceres"); the resolver decides which
// catalogue and designation kind the text belongs to and fills the records
// of the objects it names. A name that resolves nowhere stays the user's
// own object.
#pragma once

#include <string>
#include <vector>

#include "astro/instant.h"
#include "astro/site.h"
#include "catalog/fill_by_designation.h"
#include "catalog/object_record.h"

inline constexpr int kLegacyNameTokens = 6;

// The text cut by blanks into at most six tokens, with what the last ones
// say: a one-character last token (of two or more) is a component letter
// and drops off; then a three-character last token (of two or more) is
// looked up as a constellation abbreviation.
struct LegacyNameTokens {
    std::vector<std::string> tokens;
    int componentLetter = 0;   // 0 for none
    int constellationRow = -1;  // the abbreviation's row, -1 for none or not tried
};

LegacyNameTokens tokeniseLegacyName(const char* text);

// Where the prefix table sends a name.
enum class LegacyRouteKind {
    kNone,           // no prefix: the plain-text trials decide
    kFill,           // class and kind fixed by the prefix
    kNgc,            // the class comes from the NGC cross table, kind 3
    kIc,             // from the IC cross table, kind 4
    kMessier,        // from the Messier cross table, kind 2
    kMinorPlanet,    // the user's minor planets, then the reference ones, kind 2
    kComet,          // "C/": the user's comets, then the reference ones, kind 2
    kPeriodicComet,  // "P/": the same by periodic number, kind 3
};

struct LegacyRoute {
    LegacyRouteKind route = LegacyRouteKind::kNone;
    int objectClass = 0;
    int kind = 0;
    std::string text;  // what goes on to the fill
};

// The first row of the prefix table the text meets, compared without case
// and without a test for a word's end; the text handed on is the rest after
// the first blank unless the row says otherwise.
LegacyRoute legacyPrefixRoute(const char* text, const LegacyNameTokens& tokens);

// Resolves a version 1.x name: the number of records filled (up to three),
// 0 when the name is nothing the catalogues or the user's stores know, -1
// when the NGC cross table, which the NGC route must read, can't be opened.
// With a site and instant the records are placed for them.
int resolveLegacyName(const char* text, const Site* site, const Instant* instant, const RiseSetSpan* span,
                      ObjectRecord records[kMaxDesignationRecords]);
