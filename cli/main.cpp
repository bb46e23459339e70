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
#include "cli/lists_verb.h"
#include "cli/log_verb.h"
#include "cli/logs_page.h"
#include "cli/names_verb.h"
#include "cli/object_verb.h"
#include "cli/observer_options.h"
#include "cli/orbit_verb.h"
#include "cli/shown_text.h"
#include "cli/user_objects.h"
#include "cli/dry_run.h"
#include "legacy/import_instruments.h"
#include "legacy/import_lists.h"
#include "legacy/import_locations.h"
#include "legacy/legacy_file.h"
#include "legacy/legacy_lists.h"
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
    {"list", "ferry2-cli [--legacy DIR] list locations|instruments|lists|logs\n",
     "  list locations|instruments|lists\n"
     "                 prints the rows of the Locations, Instruments or Observing\n"
     "                 Lists page: a header line, then a line a row with the row\n"
     "                 number (from 1, in page order), the row's tick as the page\n"
     "                 sets it and the page's columns, separated by tabs. The\n"
     "                 lists page logs one line a row to ferry2.log, as the\n"
     "                 window does. In a name a tab is written\n"
     "                 as \\t, a carriage return as \\r, a line feed as \\n, a\n"
     "                 backslash as \\\\ and any other control byte as \\xNN.\n"
     "  list logs      walks the Vesperal 1.x logs as the Logs page does and\n"
     "                 prints the observer and instrument names the Vesperal 2\n"
     "                 stores don't know, after a header line, one line each:\n"
     "                 \"observer\" or \"instrument\", a tab, the name. Like the\n"
     "                 page, the walk adds to user/loc.bin every log location\n"
     "                 the store lacks, and shows the page's message at the end\n"
     "                 of a full walk.\n"},
    {"import",
     "ferry2-cli [--legacy DIR] import locations|instruments|lists|logs [--rows N[,N...]] [--dry-run]\n"
     "           [--observer OLD=NEW|OLD=+]... [--instrument OLD=NEW|OLD=+telescope|OLD=+binoculars]...\n",
     "  import locations\n"
     "                 copies the ticked locations to user/loc.bin.\n"
     "  import instruments\n"
     "                 adds the ticked instruments to user/instr.bin, which must\n"
     "                 exist, keeping the eyepieces that user/eyep.bin knows.\n"
     "  import lists   makes a Vesperal 2 observing list of each ticked list\n"
     "                 under user/lists, unless one of its name is there. The\n"
     "                 user's own stars, comets and minor planets of the lists go\n"
     "                 to user/stellar.bin, user/comet.bin and user/mp.bin (a\n"
     "                 star the catalogues know by its name becomes that\n"
     "                 catalogue star). When the Vesperal 1.x folder has no\n"
     "                 us_pid.bin it is made there: the only file ever written\n"
     "                 to that folder.\n"
     "                 The rows ticked are the page's own unless --rows names\n"
     "                 the only rows to tick.\n"
     "  import logs    settles each name 'list logs' prints as the page's buttons\n"
     "                 do: --observer OLD=NEW and --instrument OLD=NEW link it to\n"
     "                 the stored record named NEW (case aside); OLD=+ makes a\n"
     "                 default observer of the name, OLD=+telescope or\n"
     "                 OLD=+binoculars a default instrument (a 1-inch telescope,\n"
     "                 7 x 50 binoculars), and links it. Then imports every log\n"
     "                 entry into the log store under user/log, with a report\n"
     "                 block in ferry2.log for each entry not taken. Refused\n"
     "                 (exit 1) while a name is unsettled; the names are listed\n"
     "                 on standard error. A name to settle that the page doesn't\n"
     "                 list, or a NEW the store lacks, is a usage error (2).\n"
     "  --rows N,...   row numbers as 'list' prints them.\n"
     "  --dry-run      runs the job on a scratch copy of the Vesperal 2 files\n"
     "                 and of the Vesperal 1.x folder: prints the lines the job\n"
     "                 would add to ferry2.log, then its message, and throws\n"
     "                 the copy away. No file of either folder changes, not\n"
     "                 even ferry2.ini or ferry2.log.\n"
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
     "                 user/eyep.bin, and the log under user/log: each class's\n"
     "                 pid.bin, the objects' .pix row files, the entry files\n"
     "                 the rows name and the .idx files of the six index\n"
     "                 folders) and the files of the Vesperal 1.x folder that\n"
     "                 the import pages read, and prints one line per problem,\n"
     "                 naming the file: a count beyond the end of the file or\n"
     "                 out of range, a name without its terminating NUL, a\n"
     "                 folder or device in place of a file; in the log, keys or\n"
     "                 index rows out of order, a listed object without its\n"
     "                 .pix, a row of another object or class, a row whose\n"
     "                 entry file is missing, an index row naming an object\n"
     "                 without rows, rows of an object pid.bin does not list.\n"
     "                 Prints ok when there is none. Writes nothing, not even\n"
     "                 ferry2.ini; exits 1 when it found a problem.\n"},
    {"catalog", kCatalogSynopsis, kCatalogDetails},
    {"object", kObjectSynopsis, kObjectDetails, true},
    {"body", kBodySynopsis, kBodyDetails, true},
    {"orbit", kOrbitSynopsis, kOrbitDetails},
    {"add-objects", kUserObjectsSynopsis, kUserObjectsDetails},
    {"resolve", kNamesSynopsis, kNamesDetails, true},
    {"show-list", kListsSynopsis, kListsDetails},
    {"log", kLogSynopsis, kLogDetails},
};

const char kAbout[] =
    "Moves observing locations, instruments and observing lists from a Vesperal\n"
    "1.x folder into the Vesperal 2 data folder. Run it in the Vesperal 2 data\n"
    "folder: it resolves the data folders from vesperal.ini there, as the window\n"
    "program does.\n";

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
    "could not be added, a catalogue lookup found nothing, an orbit could\n"
    "not be placed, a list verb found no list or could not write or read\n"
    "its exchange file, or a log verb found no stored name or entry, could\n"
    "not add or delete an entry or could not write or read its exchange\n"
    "file; 2 for a usage error or when start-up fails (data\n"
    "folders not found, Vesperal 1.x folder not accepted).\n";

// The four verbs of the user's own objects share one help entry.
bool IsUserObjectsVerb(const std::string& verb) {
    return verb == "add-objects" || verb == "user-objects" || verb == "delete-object" || verb == "compact";
}

const Verb* FindVerb(const std::string& name) {
    for (const Verb& v : kVerbs)
        if (name == v.name || (IsUserObjectsVerb(name) && std::string(v.name) == "add-objects") ||
            (IsNamesVerb(name) && std::string(v.name) == "resolve") ||
            (IsListsVerb(name) && std::string(v.name) == "show-list"))
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
    bool dryRun = false;
    std::vector<size_t> rows;  // from 0
    std::vector<std::string> catalogWords;  // after "catalog" or "object", taken as they are
    std::vector<LogSettlement> settlements;  // import logs: --observer and --instrument
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
           IsUserObjectsVerb(verb) || IsNamesVerb(verb) || IsListsVerb(verb) || verb == "log";
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
        } else if (a == "--dry-run") {
            o.dryRun = true;
        } else if (a == "--rows") {
            if (++i >= argc || !ParseRows(argv[i], o.rows)) return false;
            o.haveRows = true;
        } else if (a == "--observer" || a == "--instrument") {
            LogSettlement s;
            std::string why;
            if (++i >= argc || !ParseLogSettlement(argv[i], a == "--observer", &s, &why)) {
                if (!why.empty()) std::fprintf(stderr, "ferry2-cli: %s\n", why.c_str());
                return false;
            }
            o.settlements.push_back(s);
        } else if (!a.empty() && a[0] == '-') {
            return false;
        } else {
            words.push_back(a);
        }
    }
    if (!words.empty()) o.verb = words[0];
    if (o.help) return o.verb.empty() || FindVerb(o.verb);
    if (o.verb == "check") return words.size() == 1 && !o.haveRows && !o.dryRun;
    if (TakesWordsAsTheyAre(o.verb)) return !o.catalogWords.empty() && !o.haveRows && !o.haveLegacy && !o.dryRun;
    if (words.size() != 2) return false;
    o.subject = words[1];
    if (o.verb != "list" && o.verb != "import") return false;
    if (o.subject != "locations" && o.subject != "instruments" && o.subject != "lists" && o.subject != "logs")
        return false;
    // The Logs page has no ticks; only its import settles names.
    if (o.subject == "logs" && o.haveRows) return false;
    if (!o.settlements.empty() && !(o.verb == "import" && o.subject == "logs")) return false;
    return o.verb == "import" || (!o.haveRows && !o.dryRun);
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

// The page of a subject word.
int PageOf(const std::string& subject) {
    if (subject == "instruments") return kInstrumentsPage;
    if (subject == "lists") return kListsPage;
    return kLocationsPage;
}

// The legacy file behind a page; empty when it opens and its count reads.
std::string UnreadableLegacyFile(int page, const std::string& legacyRoot) {
    switch (page) {
        case kInstrumentsPage:
            return OpenLegacyInstruments(legacyRoot, nullptr) ? "" : LegacyInstrumentsPath(legacyRoot);
        case kListsPage:
            return OpenLegacyListIndex(legacyRoot, nullptr) ? "" : LegacyFilePath(legacyRoot, "obs.idx");
        default:
            return OpenLegacyLocations(legacyRoot, nullptr) ? "" : LegacyLocationsPath(legacyRoot);
    }
}

int RunPageJob(int page, const JobHost& host) {
    switch (page) {
        case kInstrumentsPage: return ImportInstruments(host);
        case kListsPage: return ImportObservingLists(host);
        default: return ImportLocations(host);
    }
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

// Lists a page, or ticks it and runs its job, with the host's folder and log.
int RunPageVerb(const Options& o, JobHost& host) {
    if (o.subject == "logs") {
        if (o.verb == "list") return ListLogsPage(host);
        JobOutcome outcome;
        host.outcome = &outcome;
        int succeeded = 0;
        const int refused = ImportLogsPage(host, o.settlements, &succeeded);
        return refused != kExitDone ? refused : ReportOutcome(succeeded, outcome);
    }
    const int pageIndex = PageOf(o.subject);
    PageContent page;
    FillPage(pageIndex, host.legacyRoot, host.log, page);
    if (o.verb == "list") {
        PrintPage(page);
        const std::string unreadable = UnreadableLegacyFile(pageIndex, host.legacyRoot);
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
    const int succeeded = RunPageJob(pageIndex, host);
    return ReportOutcome(succeeded, outcome);
}

// The job on a scratch copy: what it logged, then its message, then the
// outcome as a real run would report it.
int RunDryRun(const Options& o, const std::string& legacyRoot) {
    if (!LegacyFolderProved(legacyRoot)) {
        PrintMessage(kLegacyFolderMissingText, kFerryMessageTitle);
        return kExitUsage;
    }
    DryRun run;
    if (!BeginDryRun(legacyRoot, &run)) {
        std::fprintf(stderr, "ferry2-cli: cannot make the scratch copy for the dry run\n");
        return kExitFailed;
    }
    std::vector<std::pair<std::string, std::string>> messages;
    int status = kExitDone;
    {
        JobHost host;
        host.legacyRoot = run.legacyRoot;
        host.showMessage = [&messages](const char* text, const char* title) { messages.emplace_back(text, title); };
        FilePtr log = OpenImportLog();
        host.log = log.get();
        status = RunPageVerb(o, host);
    }
    // Paths into the copy are shown as the folder the user named.
    char line[4096];
    if (FilePtr log = OpenFile(run.logPath.c_str(), "r"))
        while (ReadTextLine(line, sizeof line, log.get())) {
            std::string text = line;
            for (size_t at = 0; (at = text.find(run.legacyRoot, at)) != std::string::npos; at += legacyRoot.size())
                text.replace(at, run.legacyRoot.size(), legacyRoot);
            std::fputs(ShownText(text).c_str(), stdout);
        }
    for (const auto& m : messages) PrintMessage(m.first.c_str(), m.second.c_str());
    EndDryRun(&run);
    return status;
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
    if (IsListsVerb(o.verb)) return RunLists(o.verb, o.catalogWords);
    if (o.verb == "log") return RunLog(o.catalogWords);

    std::string folder = kDefaultLegacyFolder;
    if (o.haveLegacy)
        folder = o.legacy;
    else
        ReadFerryIni(folder);
    if (o.dryRun) return RunDryRun(o, folder.substr(0, 1023));

    JobHost host;
    host.showMessage = PrintMessage;
    if (!AcceptLegacyFolder(folder, host)) return kExitUsage;
    host.legacyRoot = folder.substr(0, 1023);

    FilePtr log = OpenImportLog();
    host.log = log.get();
    return RunPageVerb(o, host);
}
