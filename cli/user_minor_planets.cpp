// The user's minor-planet store (user/mp.bin) from the command line.
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "base/control_escape.h"
#include "base/windows_text.h"
#include "catalog/minor_planet_import.h"
#include "catalog/user_minor_planets.h"
#include "cli/progress_bar.h"
#include "cli/user_objects.h"

namespace {

constexpr int kExitDone = 0;
constexpr int kExitFailed = 1;
constexpr long kBatches = 100;

int Failed(const char* what) {
    std::fprintf(stderr, "ferry2-cli: %s\n", what);
    return kExitFailed;
}

// The notes, links and images of a deleted object belong to the attachment
// stores, which the command line doesn't reach yet: nothing to remove.
const DeleteCascade kNoAttachments = [](int, uint32_t, uint32_t) {};

// The stored Windows-1252 text as UTF-8 with its control characters escaped.
std::string Printable(const char* text, size_t size) {
    return EscapeControlChars(WindowsTextToUtf8(std::string(text, strnlen(text, size))));
}

}  // namespace

int AddUserMinorPlanets(const std::string& file, const AddObjectsOptions& options) {
    MpImportState state;
    const MpTextFormat format = options.format == "mp" ? MpTextFormat::kMp : MpTextFormat::kBowell;
    if (!beginMpImport(&state, file.c_str(), format, options.numberedOnly, kBatches)) {
        std::fprintf(stderr, "ferry2-cli add-objects: cannot open %s or %s\n", file.c_str(), kUserMpPath);
        return kExitFailed;
    }
    ProgressBar bar;
    const bool counted = state.totalLines != kMpLinesUnknown;
    ProgressBegin(&bar, "Adding minor planets", counted ? state.totalLines : 1);
    int answer;
    while ((answer = nextMpImportBatch(&state)) == 1)
        if (counted) ProgressUpdate(&bar, state.totalLines - state.remainingLines);
    ProgressEnd(&bar);
    endMpImport(&state);
    std::printf("%ld added, %ld replaced, %ld unchanged, %ld bad\n", state.added, state.replaced,
                state.unchanged, state.bad);
    if (answer < 0) return Failed("add-objects: writing user/mp.bin failed; the objects above stand");
    return kExitDone;
}

int ListUserMinorPlanets() {
    if (!FileExists(kUserMpPath)) return kExitDone;  // no store: nothing to list
    FilePtr store = openUserMp(nullptr);
    std::vector<UserMpRecord> rows;
    if (!store || !readUserMpAll(store.get(), &rows, nullptr)) return Failed("cannot read user/mp.bin");
    for (const UserMpRecord& r : rows) {
        UserMpElements e;
        unpackUserMp(r, &e);
        std::printf("%u\t%s\t%u\t%.10f\t%.10f\t%.10f\t%.10f\t%.10f\t%.7f\t%.7f\t%.7f\t%.2f\t%.2f\t%s\n",
                    r.pid, Printable(r.name, sizeof r.name).c_str(), r.number, r.epoch * 36525.0 + 2451545.0,
                    r.perihelionEpoch * 36525.0 + 2451545.0, e.perihelionDistance, e.semiMajorAxis,
                    e.eccentricity, e.argPerihelion, e.node, e.inclination, e.h, e.g,
                    Printable(r.source, sizeof r.source).c_str());
    }
    return kExitDone;
}

int CompactUserMinorPlanets() {
    // A compaction with no marks: the store is written anew, with the last
    // PID brought down to the highest one kept.
    if (!FileExists(kUserMpPath)) return kExitDone;
    if (!compactUserMp({}, kNoAttachments)) return Failed("compact: cannot rewrite user/mp.bin");
    uint32_t count = 0;
    FilePtr store = openUserMp(&count);
    std::printf("%u rows\n", count);
    return kExitDone;
}

int DeleteUserMinorPlanet(unsigned long pid) {
    if (!FileExists(kUserMpPath)) return Failed("delete-object: no minor planet with that PID");
    FilePtr store = openUserMp(nullptr);
    if (!store || !deleteUserMpByPid(store.get(), static_cast<uint32_t>(pid), kNoAttachments))
        return Failed("delete-object: no minor planet with that PID");
    return kExitDone;
}
