// The user's deep-sky store from the command line: user/uds.bin.
#include <cstdio>

#include "astro/numeric.h"
#include "catalog/catalogue_codes.h"
#include "catalog/user_deep_sky.h"
#include "cli/supplemental_commands.h"
#include "cli/user_objects.h"

namespace {

// PID, name, RA and Dec (J2000, degrees), magnitude, then the class code,
// the major and minor diameter (arc minutes) and the position angle
// (degrees), tab-separated.
int PrintRow(FILE* f, long row) {
    UdsRecord r;
    if (!readUdsRow(f, &r, row)) return 0;
    std::printf("%u\t%s\t%.6f\t%.6f\t%.2f\t%d\t%.2f\t%.2f\t%.1f\n", r.pid, SupplementalNameShown(r.name).c_str(),
                scaledAngleToRadians(r.ra) / kRadiansPerDegree, scaledAngleToRadians(r.dec) / kRadiansPerDegree,
                r.magnitude * 0.01, r.objectClass, r.major * 0.01, r.minor * 0.01, r.positionAngle * 0.1);
    return 1;
}

const SupplementalCommands kDeepSky = {
    kUdsPath,
    "deep-sky object",
    "Adding deep-sky objects",
    beginUdsImport,
    nextUdsImportBatch,
    endUdsImport,
    openUds,
    openUdsForReading,
    PrintRow,
    [](FILE* f, uint32_t pid) {
        UdsRecord r;
        return findUdsByPid(f, pid, &r, nullptr) == 1;
    },
    deleteUdsByPid,
    compactUds,
    udsLastPid,
};

}  // namespace

int AddUserDeepSky(const std::string& file, const AddObjectsOptions&) { return RunSupplementalAdd(kDeepSky, file); }

int ListUserDeepSky() { return RunSupplementalList(kDeepSky); }

int CompactUserDeepSky() { return RunSupplementalCompact(kDeepSky); }

int DeleteUserDeepSky(unsigned long pid) { return RunSupplementalDelete(kDeepSky, pid); }
