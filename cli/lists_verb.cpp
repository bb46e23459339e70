#include "cli/lists_verb.h"

#include <cstdio>

#include "catalog/display_name.h"
#include "cli/exit_status.h"
#include "cli/shown_text.h"
#include "stores/list_store.h"

const char kListsSynopsis[] =
    "ferry2-cli show-list NAME\n"
    "       ferry2-cli export-list NAME FILE\n"
    "       ferry2-cli import-list FILE\n";

const char kListsDetails[] =
    "  show-list NAME prints the rows of the Vesperal 2 observing list of that\n"
    "                 name (case counts): a header line, then a line a row with\n"
    "                 the row number from 1, the tick (1 or 0), the class code,\n"
    "                 the PID and the object's display name, separated by tabs.\n"
    "                 An object the catalogues don't know shows an empty name.\n"
    "                 Exit 1 when there is no such list.\n";

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

}  // namespace

bool IsListsVerb(const std::string& verb) {
    return verb == "show-list" || verb == "export-list" || verb == "import-list";
}

int RunLists(const std::string& verb, const std::vector<std::string>& words) {
    if (verb == "show-list") return RunShowList(words);
    return VerbUsage(verb.c_str(), "not yet");
}
