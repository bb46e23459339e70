#include "catalog/legacy_name.h"

#include <cctype>
#include <cstring>
#include <initializer_list>
#include <utility>

#include "base/prefix_match.h"
#include "catalog/constellation_names.h"
#include "catalog/cross_tables.h"
#include "catalog/designation_kinds.h"
#include "catalog/designation_parse.h"
#include "catalog/greek_letters.h"
#include "catalog/object_fill.h"

namespace {

// How a row of the prefix table is tested, beyond its word.
enum class Test : uint8_t {
    kPrefix,         // the word begins the text
    kNoDash,         // ... and the text holds no '-'
    kDash,           // ... and the text holds a '-'
    kNoDashNoSc,     // ... and neither '-' nor "SC"
    kDashNoSc,       // ... and a '-' but no "SC"
    kBracketToken,   // the first token starts with '('
    kQuasarQ,        // 'Q' or 'q' and a digit
    kAnyPeriodic,    // "P/" anywhere in the text
};

// What the row hands on to the fill.
enum class Text : uint8_t {
    kRest,         // the rest after the first blank
    kWhole,        // the whole text
    kAfterWord,    // the rest after the word itself
};

struct PrefixRow {
    const char* word;
    LegacyRouteKind route;
    uint8_t objectClass;
    uint8_t kind;
    Test test;
    Text text;
};

constexpr LegacyRouteKind kFill = LegacyRouteKind::kFill;

// The table in its order: the first row that fits decides.
constexpr PrefixRow kPrefixTable[] = {
    {"HR ", kFill, 5, 5, Test::kPrefix, Text::kRest},
    {"HD ", kFill, 5, 6, Test::kPrefix, Text::kRest},
    {"SAO ", kFill, 5, 7, Test::kPrefix, Text::kRest},
    {"PPM ", kFill, 5, 8, Test::kPrefix, Text::kRest},
    {"GC ", kFill, 5, 13, Test::kPrefix, Text::kRest},
    {"BD ", kFill, 5, 10, Test::kPrefix, Text::kWhole},
    {"CD ", kFill, 5, 11, Test::kPrefix, Text::kWhole},
    {"CP ", kFill, 5, 12, Test::kPrefix, Text::kWhole},
    {"GSC ", kFill, 5, 19, Test::kPrefix, Text::kRest},
    {"NSV ", kFill, 5, 17, Test::kPrefix, Text::kRest},
    {"Struve ", kFill, 5, 14, Test::kPrefix, Text::kRest},
    {"STF ", kFill, 5, 14, Test::kPrefix, Text::kRest},
    {"E ", kFill, 5, 14, Test::kPrefix, Text::kRest},
    {"ADS ", kFill, 5, 15, Test::kPrefix, Text::kRest},
    {"HIP ", kFill, 5, 9, Test::kPrefix, Text::kRest},
    {"CCDM ", kFill, 5, 16, Test::kPrefix, Text::kRest},
    {"TYC ", kFill, 5, 18, Test::kPrefix, Text::kRest},
    {"NGC ", LegacyRouteKind::kNgc, 0, 3, Test::kNoDash, Text::kRest},
    {"N ", LegacyRouteKind::kNgc, 0, 3, Test::kPrefix, Text::kRest},
    {"IC ", LegacyRouteKind::kIc, 0, 4, Test::kPrefix, Text::kRest},
    {"PGC ", kFill, 6, 7, Test::kPrefix, Text::kRest},
    {"MCG ", kFill, 6, 8, Test::kPrefix, Text::kRest},
    {"ESO ", kFill, 6, 10, Test::kNoDashNoSc, Text::kRest},
    {"UGC ", kFill, 6, 9, Test::kPrefix, Text::kRest},
    {"Uppsala ", kFill, 6, 9, Test::kPrefix, Text::kRest},
    {"MKN ", kFill, 6, 6, Test::kPrefix, Text::kRest},
    {"Markarian ", kFill, 6, 6, Test::kPrefix, Text::kRest},
    {"Arp ", kFill, 6, 5, Test::kPrefix, Text::kRest},
    {"PK ", kFill, 8, 11, Test::kPrefix, Text::kRest},
    {"PN G", kFill, 8, 10, Test::kPrefix, Text::kAfterWord},
    {"A ", kFill, 8, 5, Test::kPrefix, Text::kRest},
    {"Abell ", kFill, 8, 5, Test::kPrefix, Text::kRest},
    {"M ", kFill, 8, 6, Test::kDash, Text::kRest},
    {"Minkowski ", kFill, 8, 6, Test::kPrefix, Text::kRest},
    {"He ", kFill, 8, 7, Test::kPrefix, Text::kRest},
    {"Henize ", kFill, 8, 7, Test::kPrefix, Text::kRest},
    {"H ", kFill, 8, 8, Test::kPrefix, Text::kRest},
    {"Haro ", kFill, 8, 8, Test::kPrefix, Text::kRest},
    {"K ", kFill, 8, 9, Test::kPrefix, Text::kRest},
    {"Kohoutek ", kFill, 8, 9, Test::kPrefix, Text::kRest},
    {"ARO ", kFill, 8, 12, Test::kPrefix, Text::kRest},
    {"ESO ", kFill, 8, 13, Test::kDashNoSc, Text::kRest},
    {"OCL ", kFill, 10, 5, Test::kPrefix, Text::kRest},
    {"Terzan ", kFill, 11, 6, Test::kPrefix, Text::kRest},
    {"Palomar ", kFill, 11, 5, Test::kPrefix, Text::kRest},
    {"Pal ", kFill, 11, 5, Test::kPrefix, Text::kRest},
    {"Messier ", LegacyRouteKind::kMessier, 0, 2, Test::kPrefix, Text::kRest},
    {"M ", LegacyRouteKind::kMessier, 0, 2, Test::kPrefix, Text::kRest},
    {"MPN ", LegacyRouteKind::kMinorPlanet, 14, 2, Test::kPrefix, Text::kRest},
    {"(", LegacyRouteKind::kMinorPlanet, 14, 2, Test::kBracketToken, Text::kRest},
    {"AGC ", kFill, 16, 2, Test::kPrefix, Text::kRest},
    {"HCG ", kFill, 16, 3, Test::kPrefix, Text::kRest},
    {"Hickson ", kFill, 16, 3, Test::kPrefix, Text::kRest},
    {"Q", kFill, 7, 3, Test::kQuasarQ, Text::kWhole},
    {"B ", kFill, 17, 2, Test::kNoDash, Text::kRest},
    {"Barnard ", kFill, 17, 2, Test::kPrefix, Text::kRest},
    // The rest after the word, not after the blank: "Sh 2-155" is 155.
    {"Sh 2-", kFill, 9, 5, Test::kPrefix, Text::kAfterWord},
    {"vdB ", kFill, 9, 6, Test::kPrefix, Text::kRest},
    {"Gum", kFill, 9, 7, Test::kPrefix, Text::kRest},
    {"RCW", kFill, 9, 8, Test::kPrefix, Text::kRest},
    {"LBN", kFill, 9, 9, Test::kPrefix, Text::kRest},
    {"LDN ", kFill, 17, 3, Test::kPrefix, Text::kRest},
    {"DC ", kFill, 17, 4, Test::kPrefix, Text::kRest},
    {"C/", LegacyRouteKind::kComet, 13, 2, Test::kPrefix, Text::kAfterWord},
    {"P/", LegacyRouteKind::kPeriodicComet, 13, 3, Test::kAnyPeriodic, Text::kWhole},
};

bool Fits(const PrefixRow& row, const char* text, const LegacyNameTokens& tokens) {
    const bool dash = std::strchr(text, '-') != nullptr;
    const bool sc = std::strstr(text, "SC") != nullptr;
    switch (row.test) {
    case Test::kBracketToken: return !tokens.tokens.empty() && tokens.tokens[0][0] == '(';
    case Test::kQuasarQ:
        return (text[0] == 'Q' || text[0] == 'q') && std::isdigit(static_cast<unsigned char>(text[1]));
    case Test::kAnyPeriodic: return std::strstr(text, "P/") != nullptr;
    default: break;
    }
    if (!PrefixMatch(row.word, text)) return false;
    switch (row.test) {
    case Test::kNoDash: return !dash;
    case Test::kDash: return dash;
    case Test::kNoDashNoSc: return !dash && !sc;
    case Test::kDashNoSc: return dash && !sc;
    default: return true;
    }
}

// The text after the first blank; a word without a blank ("Gum12") gives
// what follows the word.
std::string RestAfterBlank(const char* text, size_t wordLength) {
    const char* blank = std::strchr(text, ' ');
    return blank ? std::string(blank + 1) : std::string(text + std::min(wordLength, std::strlen(text)));
}

// "C/1995 O1 (Hale-Bopp)": the designation without the name, the text after
// "C/" up to its second blank.
std::string CometDesignation(const char* afterSlash) {
    std::string s(afterSlash);
    const size_t first = s.find(' ');
    if (first == std::string::npos) return s;
    const size_t second = s.find(' ', first + 1);
    return second == std::string::npos ? s : s.substr(0, second);
}

// The minor planet's text: "MPN Ceres" gives "Ceres"; "(1) Ceres" has its
// bracket cut and its number put in the place of the second token, so it
// gives "1". Without a second token (a lone "(433)", or "MPN 1" whose
// one-character number went off as a component letter) it is the number
// in brackets, or the rest after the first blank.
std::string MinorPlanetText(const char* text, const LegacyNameTokens& tokens) {
    if (tokens.tokens.empty()) return {};
    std::string first = tokens.tokens[0];
    const bool bracket = first[0] == '(';
    if (bracket) {
        first.erase(0, 1);
        if (const size_t close = first.find(')'); close != std::string::npos) first.erase(close);
    }
    if (tokens.tokens.size() >= 2) return bracket ? first : tokens.tokens[1];
    if (bracket) return first;
    const char* blank = std::strchr(text, ' ');
    return blank ? std::string(blank + 1) : std::string();
}

}  // namespace

LegacyNameTokens tokeniseLegacyName(const char* text) {
    LegacyNameTokens out;
    if (!text) return out;
    for (const char* p = text; *p && out.tokens.size() < kLegacyNameTokens;) {
        while (*p == ' ') ++p;
        const char* end = p;
        while (*end && *end != ' ') ++end;
        if (end > p) out.tokens.emplace_back(p, end);
        p = end;
    }
    if (out.tokens.size() >= 2 && out.tokens.back().size() == 1) {
        out.componentLetter = static_cast<unsigned char>(out.tokens.back()[0]);
        out.tokens.pop_back();
    }
    if (out.tokens.size() >= 2 && out.tokens.back().size() == 3)
        out.constellationRow = constellationRowOf(out.tokens.back().c_str());
    return out;
}

LegacyRoute legacyPrefixRoute(const char* text, const LegacyNameTokens& tokens) {
    LegacyRoute out;
    if (!text || !*text) return out;
    for (const PrefixRow& row : kPrefixTable) {
        if (!Fits(row, text, tokens)) continue;
        out.route = row.route;
        out.objectClass = row.objectClass;
        out.kind = row.kind;
        const size_t wordLength = std::strlen(row.word);
        switch (row.route) {
        case LegacyRouteKind::kMinorPlanet: out.text = MinorPlanetText(text, tokens); break;
        case LegacyRouteKind::kComet: out.text = CometDesignation(text + wordLength); break;
        case LegacyRouteKind::kPeriodicComet:
            out.text.assign(text, static_cast<size_t>(std::strstr(text, "P/") - text));
            break;
        default:
            out.text = row.text == Text::kWhole       ? std::string(text)
                       : row.text == Text::kAfterWord ? std::string(text + wordLength)
                                                      : RestAfterBlank(text, wordLength);
        }
        return out;
    }
    return out;
}

namespace {

struct Resolver {
    const char* text;
    const LegacyNameTokens& tokens;
    const Site* site;
    const Instant* instant;
    const RiseSetSpan* span;
    ObjectRecord* records;

    int Fill(int objectClass, int kind, const char* what, long number = 0) const {
        return fillByDesignation(objectClass, kind, tokens.componentLetter, number, what, site, instant, span,
                                 records);
    }
    int Fill(int objectClass, int kind) const { return Fill(objectClass, kind, text); }

    // The first of the trials that finds anything; 0 when none does.
    int FirstOf(const char* what, std::initializer_list<std::pair<int, int>> trials) const {
        for (const auto& [objectClass, kind] : trials)
            if (const int n = Fill(objectClass, kind, what); n != 0) return n;
        return 0;
    }

    // The NGC, IC and Messier routes: the cross table gives the class.
    int ThroughCrossTable(const LegacyRoute& route) const {
        long number = 0;
        int suffix = 0;
        if (!parseNumberSuffix(route.text.c_str(), &number, &suffix)) return 0;
        CrossHit hits[2];
        int found = 0;
        if (route.route == LegacyRouteKind::kNgc) {
            FilePtr table = openNgcCross();
            if (!table) return -1;
            found = lookupNgcCross(table.get(), static_cast<int>(number), suffix, hits);
        } else if (route.route == LegacyRouteKind::kIc) {
            FilePtr table = openIcCross();
            if (!table) return 0;
            found = lookupIcCross(table.get(), static_cast<int>(number), suffix, hits);
        } else {
            FilePtr table = openMessierCross();
            if (!table) return 0;
            found = lookupMessierCross(table.get(), static_cast<int>(number), hits);
        }
        const int objectClass = found > 0 ? crossClassToObjectClass(hits[0].crossClass) : -1;
        if (objectClass < 0) return 0;
        return Fill(objectClass, route.kind, route.text.c_str());
    }

    int ThroughRoute(const LegacyRoute& route) const {
        const char* what = route.text.c_str();
        switch (route.route) {
        case LegacyRouteKind::kFill: return Fill(route.objectClass, route.kind, what);
        case LegacyRouteKind::kNgc:
        case LegacyRouteKind::kIc:
        case LegacyRouteKind::kMessier: return ThroughCrossTable(route);
        case LegacyRouteKind::kMinorPlanet:
            return FirstOf(what, {{kClassUserMinorPlanet, 2}, {kClassMinorPlanet, 2}});
        case LegacyRouteKind::kComet: return FirstOf(what, {{kClassUserComet, 2}, {kClassComet, 2}});
        case LegacyRouteKind::kPeriodicComet: return FirstOf(what, {{kClassUserComet, 3}, {kClassComet, 3}});
        case LegacyRouteKind::kNone: break;
        }
        return 0;
    }

    // A first token of more than two letters that begins a cluster family's
    // word: the family's open clusters, by the number in the rest.
    int ClusterFamily() const {
        if (tokens.tokens.empty() || tokens.tokens[0].size() <= 2) return 0;
        const int family = findClusterFamily(tokens.tokens[0].c_str());
        const int kind = family >= 0 ? kindOfFamily(family) : 0;
        if (kind == 0) return 0;
        const char* blank = std::strchr(text, ' ');
        return Fill(kClassOpenCluster, kind, blank ? blank + 1 : "");
    }

    int CommonName() const {
        FilePtr names = openCommonNames();
        FilePtr cross = openCommonNameCross();
        if (!names || !cross) return 0;
        const int row = findCommonName(names.get(), text);
        CrossHit hit;
        if (row < 0 || !lookupCommonNameCross(cross.get(), row, &hit)) return 0;
        const int objectClass = crossClassToObjectClass(hit.crossClass);
        return objectClass < 0 ? 0 : Fill(objectClass, 1, text, row + 1);
    }

    // One token that is a constellation's abbreviation: the constellation
    // by its zone, the rows from Sex on one zone up (Serpens has two).
    int Constellation() const {
        if (tokens.tokens.size() != 1) return 0;
        const int row = constellationRowOf(text);
        if (row < 0) return 0;
        records[0] = identityRecord(kClassConstellation, static_cast<uint32_t>(row > 75 ? row + 1 : row));
        return refillByIdentity(&records[0], span ? span->start : 0, span ? span->end : 0, site, instant);
    }

    int PlainText() const {
        if (const int n = ClusterFamily()) return n;
        if (const int n = FirstOf(text, {{kClassMajorBody, 1}, {kClassConstellation, 1}})) return n;
        if (const int n = CommonName()) return n;
        if (const int n = FirstOf(text, {{kClassStar, 1}, {kClassPlanetary, 14}, {kClassDarkNebula, 5},
                                         {kClassGlobular, 7}, {kClassDiffuseNebula, 10}}))
            return n;
        if (const int n = FirstOf(text, {{kClassUserComet, 1}, {kClassSupplementalStar, 1},
                                         {kClassSupplementalDeepSky, 1}, {kClassUserComet, 2}, {kClassComet, 1},
                                         {kClassComet, 2}, {kClassUserMinorPlanet, 1}, {kClassMinorPlanet, 1}}))
            return n;
        if (const size_t length = std::strlen(text); length > 0 && text[length - 1] == 'P') {
            const std::string number(text, length - 1);
            if (const int n = FirstOf(number.c_str(), {{kClassUserComet, 3}, {kClassComet, 3}})) return n;
        }
        if (tokens.constellationRow >= 0) {
            if (greekLetterRow(tokens.tokens[0].c_str()) >= 0)
                if (const int n = Fill(kClassStar, 2)) return n;
            if (std::isdigit(static_cast<unsigned char>(text[0])))
                if (const int n = Fill(kClassStar, 3)) return n;
            return Fill(kClassStar, 4);
        }
        if (const int n = Constellation()) return n;
        return Fill(kClassQuasar, 2);
    }
};

}  // namespace

int resolveLegacyName(const char* text, const Site* site, const Instant* instant, const RiseSetSpan* span,
                      ObjectRecord records[kMaxDesignationRecords]) {
    if (!text || !*text || !records) return 0;
    const LegacyNameTokens tokens = tokeniseLegacyName(text);
    const Resolver resolver{text, tokens, site, instant, span, records};
    const LegacyRoute route = legacyPrefixRoute(text, tokens);
    if (route.route != LegacyRouteKind::kNone) return resolver.ThroughRoute(route);
    return resolver.PlainText();
}
