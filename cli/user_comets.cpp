// The user's comets from the command line: `add-objects comets FILE` reads
// lines of the Minor Planet Center's comet element list (CometEls.txt),
// `user-objects comets` lists the store, `delete-object 13 PID` and
// `compact comets` change it.
#include <cstdio>
#include <string>

#include "astro/calendar.h"
#include "base/file_utils.h"
#include "catalog/comet_elements_text.h"
#include "catalog/comet_names.h"
#include "catalog/user_comets.h"
#include "cli/exit_status.h"
#include "cli/progress_bar.h"
#include "cli/shown_text.h"
#include "cli/user_objects.h"

namespace {

constexpr long kBatchLines = 64;

int Failed(const char* verb, const std::string& why) { return VerbFailed(verb, why.c_str()); }

struct AddCounts {
    long added = 0, replaced = 0, unchanged = 0, bad = 0, failed = 0;
};

// One batch of lines; false at the end of the file.
bool AddBatch(FILE* text, FILE* store, AddCounts* counts) {
    char line[512];
    for (long n = 0; n < kBatchLines; ++n) {
        if (!std::fgets(line, sizeof line, text)) return false;
        CometRecord record;
        const int parsed = parseCometElementsLine(line, &record);
        if (parsed < 0) continue;
        if (parsed == 0) {
            ++counts->bad;
            continue;
        }
        bool writeFailed = false;
        switch (addOrReplaceUserComet(store, record, &writeFailed)) {
            case 1: ++counts->added; break;
            case 2: ++counts->replaced; break;
            case -1: writeFailed ? ++counts->failed : ++counts->unchanged; break;
            default: ++counts->failed; break;
        }
    }
    return true;
}

}  // namespace

int AddUserComets(const std::string& file, const AddObjectsOptions&) {
    FilePtr text = OpenRegularFile(file.c_str(), "rb");
    if (!text) return Failed("add-objects", "cannot read " + file);
    FilePtr store = openUserComets(nullptr);
    if (!store) return Failed("add-objects", std::string("cannot open the store ") + kUserCometPath);
    ProgressBar bar;
    ProgressBegin(&bar, "Adding comets", static_cast<long>(FileSize(file.c_str())));
    AddCounts counts;
    while (AddBatch(text.get(), store.get(), &counts)) ProgressUpdate(&bar, std::ftell(text.get()));
    ProgressEnd(&bar);
    PrintAddCounts(counts.added, counts.replaced, counts.unchanged, counts.bad);
    if (counts.failed > 0)
        return Failed("add-objects", std::to_string(counts.failed) + " comets could not be written to " +
                      kUserCometPath);
    return kExitDone;
}

int ListUserComets() {
    if (!FileExists(kUserCometPath)) return kExitDone;  // no store: nothing to list
    FilePtr store = openUserComets(nullptr);
    CometWalk walk;
    if (!store || !beginCometWalk(&walk, store.get()))
        return Failed("user-objects", std::string("cannot open the store ") + kUserCometPath);
    CometRecord r;
    while (nextCometRow(&walk, &r) >= 0) {
        const CometElements e = unpackComet(r);
        std::printf("%u\t%s\t%.5f\t%.6f\t%.6f\t%.4f\t%.4f\t%.4f\n", r.pid,
                    ShownField(cometShortName(r)).c_str(), CenturiesToJd(e.perihelionEpoch),
                    e.perihelionDistance, e.eccentricity, e.argPerihelion, e.node, e.inclination);
    }
    return walk.row == walk.count ? kExitDone : Failed("user-objects", std::string("cannot read ") + kUserCometPath);
}

int CompactUserComets() {
    if (!FileExists(kUserCometPath)) {
        PrintCompacted(0, 0);
        return kExitDone;
    }
    int count = 0;
    if (!openUserComets(&count)) return Failed("compact", std::string("cannot open the store ") + kUserCometPath);
    // No row is marked: a delete takes its rows out at once, and the
    // compaction brings the last PID down to the highest one kept.
    if (!compactUserComets({}, NoAttachments()))
        return Failed("compact", std::string("cannot compact ") + kUserCometPath);
    FilePtr store = openUserComets(nullptr);
    UserCometHead head;
    if (!store || !readUserCometHead(store.get(), &head))
        return Failed("compact", std::string("cannot read ") + kUserCometPath);
    PrintCompacted(head.count, head.lastPid);
    return kExitDone;
}

int DeleteUserComet(unsigned long pid) {
    if (!FileExists(kUserCometPath))
        return Failed("delete-object", "no comet " + std::to_string(pid) + " in " + kUserCometPath);
    FilePtr store = openUserComets(nullptr);
    if (!store) return Failed("delete-object", std::string("cannot open the store ") + kUserCometPath);
    CometRecord r;
    if (pid > 65535 || findUserComet(store.get(), static_cast<uint32_t>(pid), nullptr, nullptr, 0, &r) < 0 ||
        r.pid != pid)
        return Failed("delete-object", "no comet " + std::to_string(pid) + " in " + kUserCometPath);
    if (!deleteUserCometByPid(store.get(), static_cast<uint32_t>(pid), NoAttachments()))
        return Failed("delete-object", std::string("cannot delete from ") + kUserCometPath);
    return kExitDone;
}
