// The user's star store from the command line: user/stellar.bin.
#include <cstdio>

#include "astro/numeric.h"
#include "catalog/catalogue_codes.h"
#include "catalog/user_stars.h"
#include "cli/supplemental_commands.h"
#include "cli/user_objects.h"

namespace {

// PID, name, RA and Dec (J2000, degrees) and magnitude, tab-separated.
int PrintRow(FILE* f, long row) {
    StellarRecord r;
    if (!readStellarRow(f, &r, row)) return 0;
    std::printf("%u\t%s\t%.6f\t%.6f\t%.2f\n", r.pid, SupplementalNameShown(r.name).c_str(),
                scaledAngleToRadians(r.ra) / kRadiansPerDegree, scaledAngleToRadians(r.dec) / kRadiansPerDegree,
                r.magnitude * 0.01);
    return 1;
}

const SupplementalCommands kStars = {
    kStellarPath,
    "star",
    "Adding stars",
    beginStellarImport,
    nextStellarImportBatch,
    endStellarImport,
    openStellar,
    openStellarForReading,
    PrintRow,
    [](FILE* f, uint32_t pid) {
        StellarRecord r;
        return findStellarByPid(f, pid, &r, nullptr) == 1;
    },
    deleteStellarByPid,
    compactStellar,
    stellarLastPid,
};

}  // namespace

int AddUserStars(const std::string& file, const AddObjectsOptions&) { return RunSupplementalAdd(kStars, file); }

int ListUserStars() { return RunSupplementalList(kStars); }

int CompactUserStars() { return RunSupplementalCompact(kStars); }

int DeleteUserStar(unsigned long pid) { return RunSupplementalDelete(kStars, pid); }
