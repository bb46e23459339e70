#include "cli/supplemental_commands.h"

#include <cstdio>

#include "base/control_escape.h"
#include "base/windows_text.h"
#include "cli/progress_bar.h"

namespace {

constexpr int kExitDone = 0;
constexpr int kExitFailed = 1;
constexpr int kImportSteps = 100;

// The command line has no attachment stores yet, so a deleted object has no
// notes, links or images to take along: its cascade does nothing.
const DeleteCascade kNoAttachments = [](int, uint32_t, uint32_t) {};

int CannotOpen(const SupplementalCommands& store) {
    std::fprintf(stderr, "ferry2-cli: cannot open the store %s\n", store.path);
    return kExitFailed;
}

}  // namespace

int RunSupplementalList(const SupplementalCommands& store) {
    if (!FileExists(store.path)) return kExitDone;
    long count = 0;
    FilePtr f = store.openForReading(&count);
    if (!f) return CannotOpen(store);
    for (long row = 0; row < count; ++row) {
        if (!store.printRow(f.get(), row)) {
            std::fprintf(stderr, "ferry2-cli: cannot read row %ld of %s\n", row, store.path);
            return kExitFailed;
        }
    }
    return kExitDone;
}

int RunSupplementalAdd(const SupplementalCommands& store, const std::string& file) {
    MakeFolder("user");
    SupplementalImport state;
    const int begun = store.beginImport(&state, file.c_str(), kImportSteps);
    if (begun < 0) {
        std::fprintf(stderr, "ferry2-cli: cannot read %s\n", file.c_str());
        return kExitFailed;
    }
    if (begun == 0) return CannotOpen(store);
    ProgressBar bar;
    ProgressBegin(&bar, store.label, kImportSteps);
    long added = 0, replaced = 0, bad = 0, batches = 0;
    while (store.nextImportBatch(&state, &added, &replaced, &bad))
        ProgressUpdate(&bar, std::min<long>(++batches, kImportSteps));
    ProgressEnd(&bar);
    const long failures = state.writeFailures;
    store.endImport(&state);
    std::printf("added %ld, replaced %ld, bad %ld\n", added, replaced, bad);
    if (failures == 0) return kExitDone;
    std::fprintf(stderr, "ferry2-cli: %ld of the bad lines could not be written to %s\n", failures, store.path);
    return kExitFailed;
}

int RunSupplementalDelete(const SupplementalCommands& store, unsigned long pid) {
    const uint32_t id = static_cast<uint32_t>(pid);
    FilePtr f = FileExists(store.path) ? store.open(nullptr) : nullptr;
    if (FileExists(store.path) && !f) return CannotOpen(store);
    if (!f || !store.holds(f.get(), id)) {
        std::fprintf(stderr, "ferry2-cli: no %s %lu in %s\n", store.noun, pid, store.path);
        return kExitFailed;
    }
    if (store.deleteByPid(f.get(), id, kNoAttachments)) return kExitDone;
    std::fprintf(stderr, "ferry2-cli: could not delete %s %lu from %s\n", store.noun, pid, store.path);
    return kExitFailed;
}

int RunSupplementalCompact(const SupplementalCommands& store) {
    if (!FileExists(store.path)) {
        std::printf("kept 0\n");
        return kExitDone;
    }
    long count = 0;
    FilePtr f = store.open(&count);
    if (!f) return CannotOpen(store);
    // Deletes have already moved the later records down: nothing is marked,
    // and the compaction leaves the records and lowers the last PID to the
    // highest that is kept.
    if (!store.compact(f, std::vector<uint8_t>(), kNoAttachments)) {
        std::fprintf(stderr, "ferry2-cli: could not compact %s\n", store.path);
        return kExitFailed;
    }
    std::printf("kept %ld\n", count);
    return kExitDone;
}

std::string SupplementalNameShown(const char (&name)[33]) {
    char text[34];
    supplementalNameText(name, text);
    const std::string escaped = EscapeControlChars(text);
#ifdef _WIN32
    return escaped;
#else
    return WindowsTextToUtf8(escaped);
#endif
}
