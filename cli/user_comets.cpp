// The user's comets from the command line: `add-objects comets FILE` reads
// lines of the Minor Planet Center's comet element list (CometEls.txt),
// `user-objects comets` lists the store, `delete-object 13 PID` and
// `compact comets` change it.
#include <cstdio>
#include <string>

#include "astro/calendar.h"
#include "base/control_escape.h"
#include "base/file_utils.h"
#include "base/windows_text.h"
#include "catalog/comet_elements_text.h"
#include "catalog/comet_names.h"
#include "catalog/user_comets.h"
#include "cli/progress_bar.h"
#include "cli/user_objects.h"

namespace {

constexpr int kExitDone = 0;
constexpr int kExitFailed = 1;
constexpr long kBatchLines = 64;

int Failed(const std::string& why) {
    std::fprintf(stderr, "ferry2-cli: %s\n", why.c_str());
    return kExitFailed;
}

// Names in the store are Windows text; the terminal of a POSIX system
// reads UTF-8. Control characters are escaped so that a row stays a line.
std::string Printable(const std::string& text) {
#ifdef _WIN32
    return EscapeControlChars(text);
#else
    return EscapeControlChars(WindowsTextToUtf8(text));
#endif
}

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
    if (!text) return Failed("cannot read " + file);
    FilePtr store = openUserComets(nullptr);
    if (!store) return Failed(std::string("cannot open the store ") + kUserCometPath);
    ProgressBar bar;
    ProgressBegin(&bar, "Adding comets", static_cast<long>(FileSize(file.c_str())));
    AddCounts counts;
    while (AddBatch(text.get(), store.get(), &counts)) ProgressUpdate(&bar, std::ftell(text.get()));
    ProgressEnd(&bar);
    std::printf("%ld added, %ld replaced, %ld unchanged, %ld bad\n", counts.added, counts.replaced,
                counts.unchanged, counts.bad);
    if (counts.failed > 0)
        return Failed(std::to_string(counts.failed) + " comets could not be written to " +
                      kUserCometPath);
    return kExitDone;
}

int ListUserComets() {
    FilePtr store = openUserComets(nullptr);
    CometWalk walk;
    if (!store || !beginCometWalk(&walk, store.get()))
        return Failed(std::string("cannot open the store ") + kUserCometPath);
    CometRecord r;
    while (nextCometRow(&walk, &r) >= 0) {
        const CometElements e = unpackComet(r);
        std::printf("%u\t%s\t%.5f\t%.6f\t%.6f\t%.4f\t%.4f\t%.4f\n", r.pid,
                    Printable(cometShortName(r)).c_str(), CenturiesToJd(e.perihelionEpoch),
                    e.perihelionDistance, e.eccentricity, e.argPerihelion, e.node, e.inclination);
    }
    return walk.row == walk.count ? kExitDone : Failed(std::string("cannot read ") + kUserCometPath);
}

int CompactUserComets() {
    int count = 0;
    if (!openUserComets(&count)) return Failed(std::string("cannot open the store ") + kUserCometPath);
    // No row is marked: a delete takes its rows out at once, and the
    // compaction brings the last PID down to the highest one kept. The
    // attachment stores are not built yet, so the cascade does nothing.
    if (!compactUserComets({}, DeleteCascade())) return Failed(std::string("cannot compact ") + kUserCometPath);
    FilePtr store = openUserComets(nullptr);
    UserCometHead head;
    if (!store || !readUserCometHead(store.get(), &head)) return Failed(std::string("cannot read ") + kUserCometPath);
    std::printf("%u rows kept, last PID %u\n", head.count, head.lastPid);
    return kExitDone;
}

int DeleteUserComet(unsigned long pid) {
    FilePtr store = openUserComets(nullptr);
    if (!store) return Failed(std::string("cannot open the store ") + kUserCometPath);
    CometRecord r;
    if (pid > 65535 || findUserComet(store.get(), static_cast<uint32_t>(pid), nullptr, nullptr, 0, &r) < 0 ||
        r.pid != pid) {
        std::fprintf(stderr, "ferry2-cli: no comet %lu in %s\n", pid, kUserCometPath);
        return kExitFailed;
    }
    // The notes, links and images of a comet go with it once the attachment
    // stores exist; until then the cascade has nothing to do.
    const DeleteCascade cascade = [](int, uint32_t, uint32_t) {};
    if (!deleteUserCometByPid(store.get(), static_cast<uint32_t>(pid), cascade))
        return Failed(std::string("cannot delete from ") + kUserCometPath);
    std::printf("deleted comet %lu\n", pid);
    return kExitDone;
}
