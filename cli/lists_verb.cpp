#include "cli/lists_verb.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "catalog/display_name.h"
#include "base/platform.h"
#include "cli/exit_status.h"
#include "cli/progress_bar.h"
#include "cli/shown_text.h"
#include "stores/list_exchange.h"
#include "stores/list_store.h"

const char kListsSynopsis[] =
    "ferry2-cli show-list NAME\n"
    "       ferry2-cli export-list NAME FILE [--with-log]\n"
    "       ferry2-cli import-list FILE\n";

const char kListsDetails[] =
    "  show-list NAME prints the rows of the Vesperal 2 observing list of that\n"
    "                 name (case counts): a header line, then a line a row with\n"
    "                 the row number from 1, the tick (1 or 0), the class code,\n"
    "                 the PID and the object's display name, separated by tabs.\n"
    "                 An object the catalogues don't know shows an empty name.\n"
    "                 Exit 1 when there is no such list.\n"
    "  export-list NAME FILE [--with-log]\n"
    "                 writes the list to an exchange file: the list's name as\n"
    "                 title, its description, its rows, and the records of the\n"
    "                 user's own stars, deep-sky objects, comets and minor\n"
    "                 planets it names, so that another Vesperal 2 folder can\n"
    "                 make them again. With --with-log each row is followed by\n"
    "                 the object's log entries. Prints the number of rows\n"
    "                 written.\n"
    "  import-list FILE\n"
    "                 adds the rows of an exchange file to the list of its name,\n"
    "                 made when there is none, takes the file's description,\n"
    "                 and makes the user's own objects it carries in this\n"
    "                 folder's stores (where they may get new PIDs). Prints the\n"
    "                 list's name and the rows added. Log entries the file\n"
    "                 carries go into the log. A file that is no list exchange\n"
    "                 file, or asks for notes, links or images, is refused\n"
    "                 before anything is written (exit 1).\n";

namespace {

int RunShowList(const std::vector<std::string>& words) {
    if (words.size() != 1) return VerbUsage("show-list", "give the list's name");
    const int slot = ListFindByName(words[0].c_str(), nullptr);
    int count = 0;
    FilePtr items = slot >= 0 ? ListOpenItems(slot, &count) : nullptr;
    if (!items) return VerbFailed("show-list", "no observing list of that name");
    std::puts("Row\tTick\tClass\tPID\tName");
    for (int i = 0; i < count; ++i) {
        ObjectRecord r;
        if (!ListReadItem(items.get(), i, count, &r)) return VerbFailed("show-list", "the list's item file is short");
        std::string name;
        displayName(r, &name, nullptr, nullptr, nullptr);
        std::printf("%d\t%d\t%d\t%u\t%s\n", i + 1, ListIsTicked(r) ? 1 : 0, r.objectClass, r.pid,
                    ShownField(name).c_str());
    }
    return kExitDone;
}

int RunExportList(const std::vector<std::string>& words) {
    std::vector<std::string> args = words;
    uint16_t include = 0;
    const auto withLog = std::find(args.begin(), args.end(), "--with-log");
    if (withLog != args.end()) {
        include = kListIncludeLogEntries;
        args.erase(withLog);
    }
    if (args.size() != 2) return VerbUsage("export-list", "give the list's name and the file to write");
    const int slot = ListFindByName(args[0].c_str(), nullptr);
    int count = 0;
    if (slot < 0 || !ListOpenItems(slot, &count)) return VerbFailed("export-list", "no observing list of that name");
    std::string description;
    ListReadDescription(slot, &description);
    FilePtr file = ListExportBegin(args[1].c_str(), args[0].c_str(), description.c_str());
    if (!file) return VerbFailed("export-list", "cannot write the file");
    PercentProgress progress;
    ProgressBegin(&progress.bar, "Exporting", count);
    const int written = ListExportWrite(file.get(), slot, include, PercentProgressStep, &progress);
    ProgressEnd(&progress.bar);
    if (!written || std::fclose(file.release()) != 0) {
        platform::RemoveFile(args[1].c_str());
        return VerbFailed("export-list", "the list could not be written whole; no file is left");
    }
    std::printf("%d rows written\n", count);
    return kExitDone;
}

int RunImportList(const std::vector<std::string>& words) {
    if (words.size() != 1) return VerbUsage("import-list", "give the exchange file");
    ListImport state;
    ExchangeHeader header;
    std::string description;
    if (!ListImportBegin(&state, words[0].c_str(), 10, &header, &description))
        return VerbFailed("import-list", "not a list exchange file this program can take, or the list can't be written");
    ProgressBar bar;
    ProgressBegin(&bar, "Importing", state.body.itemCount);
    int step = 0;
    while ((step = ListImportStep(&state, nullptr)) == 1) ProgressUpdate(&bar, state.done);
    ProgressEnd(&bar);
    const int added = state.itemCount - state.countBefore;
    if (step < 0) {
        ListImportEnd(&state, true);
        return VerbFailed("import-list", "the file could not be read whole; the list is as it was");
    }
    if (!ListImportEnd(&state, false)) return VerbFailed("import-list", "the list could not be committed");
    const std::string name(state.body.name, strnlen(state.body.name, sizeof state.body.name));
    std::printf("%s\t%d rows added\n", ShownField(name).c_str(), added);
    return kExitDone;
}

}  // namespace

bool IsListsVerb(const std::string& verb) {
    return verb == "show-list" || verb == "export-list" || verb == "import-list";
}

int RunLists(const std::string& verb, const std::vector<std::string>& words) {
    if (verb == "show-list") return RunShowList(words);
    if (verb == "export-list") return RunExportList(words);
    return RunImportList(words);
}
