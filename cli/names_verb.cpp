#include "cli/names_verb.h"

#include <cmath>
#include <cstdio>

#include "base/string_helpers.h"
#include "catalog/browse.h"
#include "catalog/display_name.h"
#include "catalog/legacy_name.h"
#include "catalog/object_record.h"
#include "cli/exit_status.h"
#include "cli/object_json.h"
#include "cli/object_words.h"
#include "cli/observer_options.h"
#include "cli/shown_text.h"

const char kNamesSynopsis[] =
    "ferry2-cli resolve TEXT [--site LONDEG,LATDEG[,HEIGHT]] [--at YYYY-MM-DDTHH:MM[:SS]] [--dynamical]\n"
    "       ferry2-cli name CLASS PID | fixed RADEG DECDEG [--prefer CLASS=KIND ...]\n"
    "       ferry2-cli browse CLASS KIND [START] [--rows N] [--constellation ZONE] [--page P]\n";

const char kNamesDetails[] =
    "  resolve TEXT   resolves a name as Vesperal 1.x wrote it (\"HD 172167\",\n"
    "                 \"Alp Lyr\", \"M 31\", \"E 123\", \"(1) Ceres\"; the words may\n"
    "                 come unquoted) and prints one JSON object: answer (the\n"
    "                 number of objects found, 0 for none, -1 when the NGC\n"
    "                 cross table is missing), records (each with displayName,\n"
    "                 secondaryName, form and the object record's fields, angles\n"
    "                 in radians as stored), and the site and instant used.\n"
    "                 Exit 1 when nothing was found.\n"
    "  name CLASS PID prints the object's display name, a second name and the\n"
    "                 form that finds it again, as JSON. The second name is the\n"
    "                 first designation from kind 1 on that differs from the\n"
    "                 first; --prefer CLASS=KIND starts that class at KIND\n"
    "                 instead. Exit 1 for an unknown object.\n"
    "  browse CLASS KIND [START]\n"
    "                 prints the designation list of a class and kind, one row a\n"
    "                 line: a mark (* on the row START names), the row's id (the\n"
    "                 number the designation fill takes) and its text, tab-\n"
    "                 separated. START of * or none starts at the top; in name\n"
    "                 lists it is also the start the rows must have. --rows N\n"
    "                 stops after N rows; --constellation ZONE gives the Bayer\n"
    "                 (kind 2) or Flamsteed (kind 3) stars of one constellation\n"
    "                 zone (1 to 89); --page P gives rows P x 1000 + 1 on of a\n"
    "                 user store (classes 12, 13, 14, 18). Exit 1 when the class\n"
    "                 and kind have no list or its file is missing.\n";

namespace {

bool ParseCount(const std::string& text, long low, long high, long* out) {
    double v = 0;
    if (!ParseReal(text, &v) || v != std::floor(v) || v < low || v > high) return false;
    *out = static_cast<long>(v);
    return true;
}

// The second name starts at kind 1 of every class and goes on past kinds
// that give nothing new, unless the user says otherwise.
NamePreferences DefaultPreferences() {
    NamePreferences p;
    for (int row = 0; row < kNamePreferenceClasses; ++row) {
        p.firstKind[row] = 1;
        p.flags[row] = kNamePreferenceGoOn;
    }
    return p;
}

std::string FormJson(const DesignationForm& f) {
    return Format("{\"isFreeText\": %d, \"prefix\": %s, \"fieldCount\": %d, \"fields\": [%d, %d, %d]}",
                  f.isFreeText, JsonText(ShownText(f.prefix)).c_str(), f.fieldCount, f.fields[0], f.fields[1],
                  f.fields[2]);
}

// `"displayName": ..., "secondaryName": ..., "form": {...}` of a record;
// false for an object that has no name.
bool NamesJson(const ObjectRecord& record, const NamePreferences& preferences, std::string* out) {
    std::string primary, secondary;
    DesignationForm form;
    if (displayName(record, &primary, &preferences, &secondary, &form) != 1) return false;
    *out = Format("\"displayName\": %s, \"secondaryName\": %s, \"form\": %s", JsonText(ShownText(primary)).c_str(),
                  JsonText(ShownText(secondary)).c_str(), FormJson(form).c_str());
    return true;
}

int RunResolve(const std::vector<std::string>& words) {
    ObserverOptions observer;
    std::vector<std::string> args;
    std::string why;
    if (!SplitObserverOptions(words, &observer, &args, &why)) return VerbUsage("resolve", why.c_str());
    std::string text;
    for (const std::string& a : args) text += (text.empty() ? "" : " ") + a;
    if (text.empty()) return VerbUsage("resolve", "say the name to resolve");
    Site site;
    Instant instant;
    MakeSiteAndInstant(&observer, &site, &instant);
    ObjectRecord records[kMaxDesignationRecords];
    const int answer = resolveLegacyName(text.c_str(), &site, &instant, nullptr, records);
    const NamePreferences preferences = DefaultPreferences();
    std::printf("{\"answer\": %d, \"records\": [", answer);
    for (int i = 0; i < answer; ++i) {
        std::string names;
        if (!NamesJson(records[i], preferences, &names))
            names = "\"displayName\": \"\", \"secondaryName\": \"\", \"form\": " + FormJson(DesignationForm{});
        std::printf("%s{%s, %s}", i ? ", " : "", names.c_str(), ObjectRecordJson(records[i]).c_str());
    }
    std::printf("], %s}\n", ObserverJson(observer, instant).c_str());
    if (answer < 0) std::fprintf(stderr, "ferry2-cli resolve: the NGC cross table cannot be opened\n");
    if (answer == 0) std::fprintf(stderr, "ferry2-cli resolve: nothing is named %s\n", ShownText(text).c_str());
    return answer > 0 ? kExitDone : kExitFailed;
}

int RunName(const std::vector<std::string>& words) {
    NamePreferences preferences = DefaultPreferences();
    std::vector<std::string> args;
    for (size_t i = 0; i < words.size(); ++i) {
        if (words[i] != "--prefer") {
            args.push_back(words[i]);
            continue;
        }
        const std::string value = i + 1 < words.size() ? words[++i] : "";
        const size_t equals = value.find('=');
        long objectClass = 0, kind = 0;
        if (equals == std::string::npos || !ParseCount(value.substr(0, equals), 1, kNamePreferenceClasses, &objectClass) ||
            !ParseCount(value.substr(equals + 1), 0, 65535, &kind))
            return VerbUsage("name", "--prefer takes CLASS=KIND");
        preferences.firstKind[objectClass - 1] = static_cast<uint16_t>(kind);
    }
    ObjectRecord record;
    std::string why;
    if (!ParseObjectWords(args, &record, &why)) return VerbUsage("name", why.c_str());
    std::string names;
    if (!NamesJson(record, preferences, &names)) {
        std::fprintf(stderr, "ferry2-cli name: no object %u of class %d\n", record.pid, record.objectClass);
        return kExitFailed;
    }
    std::printf("{%s}\n", names.c_str());
    return kExitDone;
}

int RunBrowse(const std::vector<std::string>& words) {
    std::vector<std::string> args;
    long rows = -1, zone = -1, page = -1;
    for (size_t i = 0; i < words.size(); ++i) {
        const std::string& w = words[i];
        long* target = w == "--rows" ? &rows : w == "--constellation" ? &zone : w == "--page" ? &page : nullptr;
        if (!target) {
            args.push_back(w);
            continue;
        }
        const long high = w == "--constellation" ? 89 : 1000000000L;
        if (i + 1 >= words.size() || !ParseCount(words[++i], w == "--constellation" ? 1 : 0, high, target))
            return VerbUsage("browse", (w + " takes a whole number" + (w == "--constellation" ? " 1 to 89" : "")).c_str());
    }
    long objectClass = 0, kind = 0;
    if (args.size() < 2 || args.size() > 3 || !ParseCount(args[0], 1, 20, &objectClass) ||
        !ParseCount(args[1], 0, 65535, &kind))
        return VerbUsage("browse", "browse takes CLASS KIND [START]");
    const char* start = args.size() == 3 ? args[2].c_str() : "";
    BrowseState state;
    int begun = 0;
    if (page >= 0)
        begun = beginUserBrowsePage(&state, static_cast<int>(objectClass), page);
    else if (zone >= 0)
        begun = objectClass == kClassStar && beginConstellationBrowse(&state, static_cast<int>(kind),
                                                                     static_cast<int>(zone), start);
    else
        begun = beginBrowse(&state, static_cast<int>(objectClass), static_cast<int>(kind), start);
    if (!begun) {
        std::fprintf(stderr, "ferry2-cli browse: no list of class %ld kind %ld (or its file is missing)\n",
                     objectClass, kind);
        return kExitFailed;
    }
    BrowseRow row;
    for (long given = 0; (rows < 0 || given < rows) && nextBrowseRow(&state, &row); ++given)
        std::printf("%s\t%ld\t%s\n", row.id == state.foundId && state.foundId >= 0 ? "*" : "", row.id,
                    ShownField(row.text).c_str());
    return kExitDone;
}

}  // namespace

bool IsNamesVerb(const std::string& verb) { return verb == "resolve" || verb == "name" || verb == "browse"; }

int RunNames(const std::string& verb, const std::vector<std::string>& words) {
    if (verb == "resolve") return RunResolve(words);
    if (verb == "name") return RunName(words);
    return RunBrowse(words);
}
