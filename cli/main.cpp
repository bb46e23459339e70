// ferry2-cli: the import jobs from the command line, for scripting and tests.
// Run in the Vesperal 2 data folder, like the window program.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "legacy/import_instruments.h"
#include "legacy/import_locations.h"
#include "shell/data_roots.h"
#include "shell/folder_check.h"
#include "shell/import_log.h"
#include "shell/legacy_folder.h"
#include "shell/page_content.h"

namespace {

constexpr int kExitDone = 0;
constexpr int kExitJobFailed = 1;
constexpr int kExitUsage = 2;

const char kUsage[] =
    "Usage: ferry2-cli [--legacy DIR] list locations|instruments\n"
    "       ferry2-cli [--legacy DIR] import locations|instruments [--rows N[,N...]]\n"
    "       ferry2-cli [--legacy DIR] check\n"
    "       ferry2-cli --help\n"
    "\n"
    "Moves observing locations and instruments from a Vesperal 1.x folder into\n"
    "the Vesperal 2 data folder. Run it in the Vesperal 2 data folder: it resolves the data\n"
    "folders from vesperal.ini there, as the window program does.\n"
    "\n"
    "  --legacy DIR   the Vesperal 1.x folder; without it, the folder last\n"
    "                 accepted (ferry2.ini). The folder must hold charts.bin;\n"
    "                 once accepted it is written to ferry2.ini.\n"
    "  list locations|instruments\n"
    "                 prints the rows of the Locations or Instruments page,\n"
    "                 numbered from 1 in file order: row number, default tick,\n"
    "                 the page's columns.\n"
    "  import locations\n"
    "                 copies the ticked locations to user/loc.bin.\n"
    "  import instruments\n"
    "                 adds the ticked instruments to user/instr.bin, which must\n"
    "                 exist, keeping the eyepieces that user/eyep.bin knows.\n"
    "                 All rows are ticked unless --rows names the only rows to\n"
    "                 tick.\n"
    "  --rows N,...   row numbers as 'list' prints them.\n"
    "\n"
    "Details go to ferry2.log. The job's final message is printed: its title\n"
    "on one line, then its text.\n"
    "\n"
    "Exit status: 0 when the job succeeded, 1 when it reported an error,\n"
    "2 for a usage error or when start-up fails (data folders not found,\n"
    "Vesperal 1.x folder not accepted).\n";

const char kCheckUsage[] =
    "Usage: ferry2-cli [--legacy DIR] check\n"
    "\n"
    "Reads the stores of the Vesperal 2 data folder (user/loc.bin,\n"
    "user/observer.bin, user/instr.bin, user/eyep.bin) and the files of the\n"
    "Vesperal 1.x folder that the import pages read, and prints one line per\n"
    "problem, naming the file: a count beyond the end of the file or out of\n"
    "range, a name without its terminating NUL, a folder or device in place of\n"
    "a file. Prints ok when there is none. Writes nothing.\n"
    "\n"
    "Exit status: 0 when all is well, 1 when a problem was found, 2 for a\n"
    "usage error.\n";

struct Options {
    bool help = false;
    bool haveLegacy = false;
    std::string legacy;
    std::string verb;
    std::string subject;
    bool haveRows = false;
    std::vector<size_t> rows;  // from 0
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

bool ParseArgs(int argc, char** argv, Options& o) {
    std::vector<std::string> words;
    for (int i = 1; i < argc; ++i) {
        const std::string a = argv[i];
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
    if (!words.empty() && words[0] == "check") {
        o.verb = words[0];
        return words.size() == 1 && !o.haveRows;
    }
    if (o.help) return true;
    if (words.size() != 2) return false;
    o.verb = words[0];
    o.subject = words[1];
    if (o.verb != "list" && o.verb != "import") return false;
    if (o.subject != "locations" && o.subject != "instruments") return false;
    return !(o.haveRows && o.verb != "import");
}

// Message boxes become two lines on standard output: the title, then the text.
void PrintMessage(const char* text, const char* title) {
    std::string shown;
    for (const char* p = text; *p; ++p)
        if (!(p[0] == '\r' && p[1] == '\n')) shown += *p;
    std::printf("%s\n%s\n", title, shown.c_str());
    std::fflush(stdout);
}

void PrintPage(const PageContent& page) {
    std::printf("Row\tTick\t%s\n", page.columns.c_str());
    for (size_t i = 0; i < page.rows.size(); ++i) {
        const intptr_t index = page.rows[i].itemData;
        const int tick = page.hasTicks && index >= 0 && static_cast<size_t>(index) < page.ticks.size()
                             ? page.ticks[index]
                             : 0;
        std::printf("%zu\t%d\t%s\n", i + 1, tick, page.rows[i].text.c_str());
    }
}

// The folder check: the version 1.x folder as for the jobs, but taken as it
// is, since the check writes nothing (not even ferry2.ini).
int RunCheck(const Options& o) {
    if (o.help) {
        std::fputs(kCheckUsage, stdout);
        return kExitDone;
    }
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
    return kExitJobFailed;
}

}  // namespace

int main(int argc, char** argv) {
    Options o;
    if (!ParseArgs(argc, argv, o)) {
        std::fputs(kUsage, stderr);
        return kExitUsage;
    }
    if (o.verb == "check") return RunCheck(o);
    if (o.help) {
        std::fputs(kUsage, stdout);
        return kExitDone;
    }

    if (!ResolveDataRoots("vesperal")) {
        PrintMessage(kDataRootsMissingText, kDataRootsMissingTitle);
        return kExitUsage;
    }

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
        return kExitDone;
    }
    if (o.haveRows && !PageTickOnlyRows(page, o.rows)) {
        std::fprintf(stderr, "ferry2-cli: --rows names a row that is not on the page (%zu rows)\n",
                     page.rows.size());
        return kExitUsage;
    }
    host.ticks = [&page] { return page.Ticks(); };
    const int succeeded = instruments ? ImportInstruments(host) : ImportLocations(host);
    return succeeded == 1 ? kExitDone : kExitJobFailed;
}
