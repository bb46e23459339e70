#include "cli/supplemental_commands.h"

#include <cstdio>

#include "cli/exit_status.h"
#include "cli/progress_bar.h"
#include "cli/shown_text.h"
#include "cli/user_objects.h"

namespace {

constexpr int kImportSteps = 100;

int CannotOpen(const char* verb, const SupplementalCommands& store) {
    return VerbFailed(verb, (std::string("cannot open the store ") + store.path).c_str());
}

}  // namespace

int RunSupplementalList(const SupplementalCommands& store) {
    if (!FileExists(store.path)) return kExitDone;
    long count = 0;
    FilePtr f = store.openForReading(&count);
    if (!f) return CannotOpen("user-objects", store);
    for (long row = 0; row < count; ++row) {
        if (!store.printRow(f.get(), row)) {
            const std::string why = "cannot read row " + std::to_string(row) + " of " + store.path;
            return VerbFailed("user-objects", why.c_str());
        }
    }
    return kExitDone;
}

int RunSupplementalAdd(const SupplementalCommands& store, const std::string& file) {
    MakeFolder("user");
    SupplementalImport state;
    const int begun = store.beginImport(&state, file.c_str(), kImportSteps);
    if (begun < 0) return VerbFailed("add-objects", ("cannot read " + file).c_str());
    if (begun == 0) return CannotOpen("add-objects", store);
    ProgressBar bar;
    ProgressBegin(&bar, store.label, kImportSteps);
    long added = 0, replaced = 0, bad = 0, batches = 0;
    while (store.nextImportBatch(&state, &added, &replaced, &bad))
        ProgressUpdate(&bar, std::min<long>(++batches, kImportSteps));
    ProgressEnd(&bar);
    const long failures = state.writeFailures;
    store.endImport(&state);
    PrintAddCounts(added, replaced, 0, bad);
    if (failures == 0) return kExitDone;
    const std::string why =
        std::to_string(failures) + " of the bad lines could not be written to " + store.path;
    return VerbFailed("add-objects", why.c_str());
}

int RunSupplementalDelete(const SupplementalCommands& store, unsigned long pid) {
    const uint32_t id = static_cast<uint32_t>(pid);
    FilePtr f = FileExists(store.path) ? store.open(nullptr) : nullptr;
    if (FileExists(store.path) && !f) return CannotOpen("delete-object", store);
    const std::string object = std::string(store.noun) + " " + std::to_string(pid);
    if (!f || !store.holds(f.get(), id))
        return VerbFailed("delete-object", ("no " + object + " in " + store.path).c_str());
    if (store.deleteByPid(f.get(), id, NoAttachments())) return kExitDone;
    return VerbFailed("delete-object", ("could not delete " + object + " from " + store.path).c_str());
}

int RunSupplementalCompact(const SupplementalCommands& store) {
    if (!FileExists(store.path)) {
        PrintCompacted(0, 0);
        return kExitDone;
    }
    long count = 0;
    FilePtr f = store.open(&count);
    if (!f) return CannotOpen("compact", store);
    // Deletes have already moved the later records down: nothing is marked,
    // and the compaction leaves the records and lowers the last PID to the
    // highest that is kept.
    if (!store.compact(f, std::vector<uint8_t>(), NoAttachments()))
        return VerbFailed("compact", (std::string("could not compact ") + store.path).c_str());
    f = store.openForReading(nullptr);
    const long lastPid = f ? store.lastPid(f.get()) : -1;
    if (lastPid < 0) return VerbFailed("compact", (std::string("cannot read ") + store.path).c_str());
    PrintCompacted(count, static_cast<unsigned long>(lastPid));
    return kExitDone;
}

std::string SupplementalNameShown(const char (&name)[33]) {
    char text[34];
    supplementalNameText(name, text);
    return ShownField(text);
}
