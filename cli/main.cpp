// ferry2-cli: the import jobs from the command line, for scripting and tests.
// Run in the Vesperal 2 data folder, like the window program.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "cli/body_verb.h"
#include "cli/catalog_verb.h"
#include "cli/exit_status.h"
#include "cli/names_verb.h"
#include "cli/object_verb.h"
#include "cli/observer_options.h"
#include "cli/orbit_verb.h"
#include "cli/shown_text.h"
#include "cli/user_objects.h"
#include "legacy/import_instruments.h"
#include "legacy/import_locations.h"
#include "legacy/legacy_instruments.h"
#include "legacy/legacy_locations.h"
#include "shell/data_roots.h"
#include "shell/folder_check.h"
#include "shell/import_log.h"
#include "shell/legacy_folder.h"
#include "shell/page_content.h"

namespace {

// The verbs, each with its synopsis and what it does; `--help` after a verb
// prints that verb's part, `--help` alone all of them.
struct Verb {
    const char* name;
    const char* synopsis;
    const char* details;
    bool observer = false;  // takes --site, --at and --dynamical
};

constexpr Verb kVerbs[] = {
    {"list", "ferry2-cli [--legacy DIR] list locations|instruments\n",
     "  list locations|instruments\n"
     "                 prints the rows of the Locations or Instruments page: a\n"
     "                 header line, then a line a row with the row number (from\n"
     "                 1, in file order), the row's default tick and the page's\n"
     "                 columns, separated by tabs. In a name a tab is written\n"
     "                 as \\t, a carriage return as \\r, a line feed as \\n, a\n"
     "                 backslash as \\\\ and any other control byte as \\xNN.\n"},
    {"import", "ferry2-cli [--legacy DIR] import locations|instruments [--rows N[,N...]]\n",
     "  import locations\n"
     "                 copies the ticked locations to user/loc.bin.\n"
     "  import instruments\n"
     "                 adds the ticked instruments to user/instr.bin, which must\n"
     "                 exist, keeping the eyepieces that user/eyep.bin knows.\n"
     "                 All rows are ticked unless --rows names the only rows to\n"
     "                 tick.\n"
     "  --rows N,...   row numbers as 'list' prints them.\n"
     "\n"
     "The job's details go to ferry2.log. Its final message is printed: its\n"
     "title on one line, then its text. What the message does not say goes to\n"
     "standard error, one line each:\n"
     "  ferry2-cli: cannot read the Vesperal 1.x file PATH\n"
     "                 missing, or too short for its header: the job stopped\n"
     "                 without a message;\n"
     "  ferry2-cli: cannot open the store PATH\n"
     "                 the store could not be opened (the message is the error\n"
     "                 form with zeros);\n"
     "  ferry2-cli: N ticked row(s) could not be added (see ferry2.log)\n"
     "                 rows whose add failed; rows already in the store are\n"
     "                 not counted.\n"},
    {"check", "ferry2-cli [--legacy DIR] check\n",
     "  check          reads the stores of the Vesperal 2 data folder\n"
     "                 (user/loc.bin, user/observer.bin, user/instr.bin,\n"
     "                 user/eyep.bin) and the files of the Vesperal 1.x folder\n"
     "                 that the import pages read, and prints one line per\n"
     "                 problem, naming the file: a count beyond the end of the\n"
     "                 file or out of range, a name without its terminating\n"
     "                 NUL, a folder or device in place of a file. Prints ok\n"
     "                 when there is none. Writes nothing, not even ferry2.ini;\n"
     "                 exits 1 when it found a problem.\n"},
    {"catalog", kCatalogSynopsis, kCatalogDetails},
    {"object", kObjectSynopsis, kObjectDetails, true},
    {"body", kBodySynopsis, kBodyDetails, true},
    {"orbit", kOrbitSynopsis, kOrbitDetails},
    {"add-objects", kUserObjectsSynopsis, kUserObjectsDetails},
    {"resolve", kNamesSynopsis, kNamesDetails, true},
};

const char kAbout[] =
    "Moves observing locations and instruments from a Vesperal 1.x folder into\n"
    "the Vesperal 2 data folder. Run it in the Vesperal 2 data folder: it\n"
    "resolves the data folders from vesperal.ini there, as the window program\n"
    "does.\n";

const char kCommonOptions[] =
    "  --legacy DIR   the Vesperal 1.x folder; without it, the folder last\n"
    "                 accepted (ferry2.ini). The folder must hold charts.bin;\n"
    "                 once accepted it is written to ferry2.ini.\n"
    "  --help         this text; after a verb, that verb's alone.\n";

const char kOutputAndStatus[] =
    "Names from the data files are Windows text (code page 1252); they are\n"
    "printed as UTF-8 (on Windows, as the files hold them).\n"
    "\n"
    "Exit status: 0 when the rows were listed, or the job succeeded and every\n"
    "ticked row was added or was already there; 1 when the Vesperal 1.x file\n"
    "could not be read, the job ended with its error form, a ticked row\n"
    "could not be added, a catalogue lookup found nothing, or an orbit could\n"
    "not be placed; 2 for a usage error or when start-up fails (data\n"
    "folders not found, Vesperal 1.x folder not accepted).\n";

// The four verbs of the user's own objects share one help entry.
bool IsUserObjectsVerb(const std::string& verb) {
    return verb == "add-objects" || verb == "user-objects" || verb == "delete-object" || verb == "compact";
}

const Verb* FindVerb(const std::string& name) {
    for (const Verb& v : kVerbs)
        if (name == v.name || (IsUserObjectsVerb(name) && std::string(v.name) == "add-objects") ||
            (IsNamesVerb(name) && std::string(v.name) == "resolve"))
            return &v;
    return nullptr;
}

// The whole help, or one verb's when `verb` is given.
void PrintUsage(FILE* out, const Verb* verb) {
    for (const Verb& v : kVerbs) {
        if (verb && verb != &v) continue;
        std::fprintf(out, "%s%s", &v == kVerbs || verb ? "Usage: " : "       ", v.synopsis);
    }
    if (!verb) std::fputs("       ferry2-cli [VERB] --help\n", out);
    std::fprintf(out, "\n%s\n%s\n", kAbout, kCommonOptions);
    bool observer = false;
    for (const Verb& v : kVerbs)
        if (!verb || verb == &v) {
            std::fputs(v.details, out);
            observer = observer || v.observer;
        }
    if (observer) std::fputs(kObserverOptionsHelp, out);
    std::fprintf(out, "\n%s", kOutputAndStatus);
}


struct Options {
    bool help = false;
    bool haveLegacy = false;
    std::string legacy;
    std::string verb;
    std::string subject;
    bool haveRows = false;
    std::vector<size_t> rows;  // from 0
    std::vector<std::string> catalogWords;  // after "catalog" or "object", taken as they are
};

bool ParseRows(const char* text, std::vector<size_t>& rows) {
    const char* p = text;
    while (*p) {
        char* end = nullptr;
        const long n = std::strtol(p, &end, 10);
        if (end == p || n < 1) return false;
        rows.push_back(static_cast<size_t>(n - 1));
        p = end;
        if (*p == ',') {
            ++p;
            if (!*p) return false;
        } else if (*p) {
            return false;
        }
    }
    return !rows.empty();
}

// The verbs that parse their own words and options.
bool TakesWordsAsTheyAre(const std::string& verb) {
    return verb == "catalog" || verb == "object" || verb == "body" || verb == "orbit" ||
           IsUserObjectsVerb(verb) || IsNamesVerb(verb);
}

bool ParseArgs(int argc, char** argv, Options& o) {
    std::vector<std::string> words;
    for (int i = 1; i < argc; ++i) {
        const std::string a = argv[i];
        // After "catalog" every word is a key: "-05" is a zone, not an option.
        if (!words.empty() && TakesWordsAsTheyAre(words[0]) && a != "--help" && a != "-h") {
            o.catalogWords.push_back(a);
            continue;
        }
        if (a == "--help" || a == "-h") {
            o.help = true;
        } else if (a == "--legacy") {
            if (++i >= argc) return false;
            o.haveLegacy = true;
            o.legacy = argv[i];
        } else if (a == "--rows") {
            if (++i >= argc || !ParseRows(argv[i], o.rows)) return false;
            o.haveRows = true;
        } else if (!a.empty() && a[0] == '-') {
            return false;
        } else {
            words.push_back(a);
        }
    }
    if (!words.empty()) o.verb = words[0];
    if (o.help) return o.verb.empty() || FindVerb(o.verb);
    if (o.verb == "check") return words.size() == 1 && !o.haveRows;
    if (TakesWordsAsTheyAre(o.verb)) return !o.catalogWords.empty() && !o.haveRows && !o.haveLegacy;
    if (words.size() != 2) return false;
    o.subject = words[1];
    if (o.verb != "list" && o.verb != "import") return false;
    if (o.subject != "locations" && o.subject != "instruments") return false;
    return !(o.haveRows && o.verb != "import");
}

// Message boxes become two lines on standard output: the title, then the text.
void PrintMessage(const char* text, const char* title) {
    std::string plain;
    for (const char* p = text; *p; ++p)
        if (!(p[0] == '\r' && p[1] == '\n')) plain += *p;
    std::printf("%s\n%s\n", ShownText(title).c_str(), ShownText(plain).c_str());
    std::fflush(stdout);
}

// One row of the page as a line: the row's fields escaped, then tabs between
// them. The page's last columns are fixed words, so the name is everything
// up to the tabs that part them, tabs of its own included.
std::string RowLine(const std::string& text, size_t columnCount) {
    std::vector<size_t> cuts;
    for (size_t pos = text.size(); cuts.size() + 1 < columnCount;) {
        const size_t tab = pos == 0 ? std::string::npos : text.rfind('\t', pos - 1);
        if (tab == std::string::npos) break;
        cuts.insert(cuts.begin(), tab);
        pos = tab;
    }
    std::string line;
    size_t from = 0;
    for (const size_t cut : cuts) {
        line += ShownField(std::string_view(text).substr(from, cut - from)) + '\t';
        from = cut + 1;
    }
    return line + ShownField(std::string_view(text).substr(from));
}

void PrintPage(const PageContent& page) {
    std::printf("Row\tTick\t%s\n", page.columns.c_str());
    const size_t columnCount = 1 + std::count(page.columns.begin(), page.columns.end(), '\t');
    for (size_t i = 0; i < page.rows.size(); ++i) {
        const intptr_t index = page.rows[i].itemData;
        const int tick = page.hasTicks && index >= 0 && static_cast<size_t>(index) < page.ticks.size()
                             ? page.ticks[index]
                             : 0;
        std::printf("%zu\t%d\t%s\n", i + 1, tick, RowLine(page.rows[i].text, columnCount).c_str());
    }
}

// The legacy file behind a page; empty when it opens and its count reads.
std::string UnreadableLegacyFile(bool instruments, const std::string& legacyRoot) {
    if (instruments)
        return OpenLegacyInstruments(legacyRoot, nullptr) ? "" : LegacyInstrumentsPath(legacyRoot);
    return OpenLegacyLocations(legacyRoot, nullptr) ? "" : LegacyLocationsPath(legacyRoot);
}

void ReportUnreadable(const std::string& path) {
    std::fprintf(stderr, "ferry2-cli: cannot read the Vesperal 1.x file %s\n", path.c_str());
}

// What the job's message leaves out, on standard error; the exit status.
int ReportOutcome(int succeeded, const JobOutcome& outcome) {
    if (!outcome.unreadableFile.empty()) {
        ReportUnreadable(outcome.unreadableFile);
        return kExitFailed;
    }
    if (!outcome.unopenedStore.empty())
        std::fprintf(stderr, "ferry2-cli: cannot open the store %s\n", outcome.unopenedStore.c_str());
    if (outcome.failedAdds > 0)
        std::fprintf(stderr, "ferry2-cli: %d ticked %s could not be added (see ferry2.log)\n",
                     outcome.failedAdds, outcome.failedAdds == 1 ? "row" : "rows");
    return succeeded == 1 && outcome.failedAdds == 0 ? kExitDone : kExitFailed;
}

// The folder check: the version 1.x folder as for the jobs, but taken as it
// is, since the check writes nothing (not even ferry2.ini).
int RunCheck(const Options& o) {
    std::string folder = kDefaultLegacyFolder;
    if (o.haveLegacy)
        folder = o.legacy;
    else
        ReadFerryIni(folder);
    std::vector<std::string> problems;
    if (CheckFolders(folder, problems)) {
        std::puts("ok");
        return kExitDone;
    }
    for (const std::string& line : problems) std::puts(line.c_str());
    return kExitFailed;
}

}  // namespace

int main(int argc, char** argv) {
    Options o;
    if (!ParseArgs(argc, argv, o)) {
        PrintUsage(stderr, nullptr);
        return kExitUsage;
    }
    if (o.help) {
        PrintUsage(stdout, o.verb.empty() ? nullptr : FindVerb(o.verb));
        return kExitDone;
    }
    if (o.verb == "check") return RunCheck(o);

    if (!ResolveDataRoots("vesperal")) {
        PrintMessage(kDataRootsMissingText, kDataRootsMissingTitle);
        return kExitUsage;
    }
    if (o.verb == "catalog") return RunCatalog(o.catalogWords);
    if (o.verb == "object") return RunObject(o.catalogWords);
    if (o.verb == "body") return RunBody(o.catalogWords);
    if (o.verb == "orbit") return RunOrbit(o.catalogWords);
    if (IsUserObjectsVerb(o.verb)) return RunUserObjects(o.verb, o.catalogWords);
    if (IsNamesVerb(o.verb)) return RunNames(o.verb, o.catalogWords);

    JobHost host;
    host.showMessage = PrintMessage;
    std::string folder = kDefaultLegacyFolder;
    if (o.haveLegacy)
        folder = o.legacy;
    else
        ReadFerryIni(folder);
    if (!AcceptLegacyFolder(folder, host)) return kExitUsage;
    host.legacyRoot = folder.substr(0, 1023);

    FilePtr log = OpenImportLog();
    host.log = log.get();

    const bool instruments = o.subject == "instruments";
    PageContent page;
    FillPage(instruments ? kInstrumentsPage : kLocationsPage, host.legacyRoot, host.log, page);
    if (o.verb == "list") {
        PrintPage(page);
        const std::string unreadable = UnreadableLegacyFile(instruments, host.legacyRoot);
        if (unreadable.empty()) return kExitDone;
        ReportUnreadable(unreadable);
        return kExitFailed;
    }
    if (o.haveRows && !PageTickOnlyRows(page, o.rows)) {
        std::fprintf(stderr, "ferry2-cli: --rows names a row that is not on the page (%zu rows)\n",
                     page.rows.size());
        return kExitUsage;
    }
    host.ticks = [&page] { return page.Ticks(); };
    JobOutcome outcome;
    host.outcome = &outcome;
    const int succeeded = instruments ? ImportInstruments(host) : ImportLocations(host);
    return ReportOutcome(succeeded, outcome);
}
