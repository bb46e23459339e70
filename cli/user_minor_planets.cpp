// The user's minor-planet store (user/mp.bin) from the command line.
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "catalog/minor_planet_import.h"
#include "catalog/user_minor_planets.h"
#include "cli/exit_status.h"
#include "cli/progress_bar.h"
#include "cli/shown_text.h"
#include "cli/user_objects.h"

namespace {

constexpr long kBatches = 100;

// A fixed-width text field of a record, up to its first zero byte.
std::string Printable(const char* text, size_t size) { return ShownField(std::string(text, strnlen(text, size))); }

}  // namespace

int AddUserMinorPlanets(const std::string& file, const AddObjectsOptions& options) {
    MpImportState state;
    const MpTextFormat format = options.format == "mp" ? MpTextFormat::kMp : MpTextFormat::kBowell;
    if (!beginMpImport(&state, file.c_str(), format, options.numberedOnly, kBatches))
        return VerbFailed("add-objects", ("cannot open " + file + " or " + kUserMpPath).c_str());
    ProgressBar bar;
    const bool counted = state.totalLines != kMpLinesUnknown;
    ProgressBegin(&bar, "Adding minor planets", counted ? state.totalLines : 1);
    int answer;
    while ((answer = nextMpImportBatch(&state)) == 1)
        if (counted) ProgressUpdate(&bar, state.totalLines - state.remainingLines);
    ProgressEnd(&bar);
    endMpImport(&state);
    PrintAddCounts(state.added, state.replaced, state.unchanged, state.bad);
    if (answer < 0) return VerbFailed("add-objects", "writing user/mp.bin failed; the objects above stand");
    return kExitDone;
}

int ListUserMinorPlanets() {
    if (!FileExists(kUserMpPath)) return kExitDone;  // no store: nothing to list
    FilePtr store = openUserMp(nullptr);
    std::vector<UserMpRecord> rows;
    if (!store || !readUserMpAll(store.get(), &rows, nullptr)) return VerbFailed("user-objects", "cannot read user/mp.bin");
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
    if (!FileExists(kUserMpPath)) {
        PrintCompacted(0, 0);
        return kExitDone;
    }
    if (!compactUserMp({}, NoAttachments())) return VerbFailed("compact", "cannot rewrite user/mp.bin");
    uint32_t count = 0, lastPid = 0;
    FilePtr store = openUserMp(nullptr);
    if (!store || !readUserMpHead(store.get(), &count, &lastPid))
        return VerbFailed("compact", "cannot read user/mp.bin");
    PrintCompacted(count, lastPid);
    return kExitDone;
}

int DeleteUserMinorPlanet(unsigned long pid) {
    const std::string missing = "no minor planet " + std::to_string(pid) + " in " + kUserMpPath;
    if (!FileExists(kUserMpPath)) return VerbFailed("delete-object", missing.c_str());
    FilePtr store = openUserMp(nullptr);
    if (!store) return VerbFailed("delete-object", "cannot open the store user/mp.bin");
    if (!deleteUserMpByPid(store.get(), static_cast<uint32_t>(pid), NoAttachments()))
        return VerbFailed("delete-object", missing.c_str());
    return kExitDone;
}
