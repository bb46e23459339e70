#include "shell/data_roots.h"

#include <cstdio>
#include <cstring>
#include <string>

#include "astro/planet_files.h"
#include "catalog/catalogue_roots.h"
#include "catalog/minor_planet_roots.h"
#include "base/file_utils.h"
#include "base/platform.h"

char ScanForDataDrive() {
    for (char letter = 'D'; letter <= 'Z'; ++letter) {
        char marker[32];
        std::snprintf(marker, sizeof marker, "%c:/vesperal2.id", letter);
        if (platform::PathExists(marker)) return letter;
    }
    return 0;
}

namespace {

// The drive is looked for once per resolution, at the first '#' line.
struct DriveLookup {
    bool scanned = false;
    char letter = 0;
    char Get() {
        if (!scanned) {
            letter = ScanForDataDrive();
            scanned = true;
        }
        return letter;
    }
};

// Reads one line into a 64-byte slot and makes a folder of it: the drive
// letter placed, the last character cut (normally the line end), and the
// folder proved to exist.
bool ReadRootLine(FILE* ini, DriveLookup& drive, char (&slot)[64]) {
    if (!ReadTextLine(slot, sizeof slot, ini)) return false;
    if (slot[0] == '#') {
        const char letter = drive.Get();
        if (letter == 0) return false;
        slot[0] = letter;
    }
    const size_t len = std::strlen(slot);
    if (len < 2) return false;
    slot[len - 1] = '\0';
    return platform::PathExists(slot);
}

}  // namespace

int ResolveDataRoots(const char* baseName) {
    const std::string iniName = std::string(baseName) + ".ini";
    FilePtr ini = OpenFile(iniName.c_str(), "r");
    if (!ini) return 0;

    DriveLookup drive;
    char lines[8][64] = {};
    for (int i = 0; i < 8; ++i) {
        if (!ReadRootLine(ini.get(), drive, lines[i])) return 0;
        if (i == 2) setCatalogueRoots(lines[0], lines[1], lines[2]);
        if (i == 5) setMapRoots(lines[3], lines[4], lines[5]);
    }
    setMinorPlanetRoots(lines[6], lines[7]);
    // The planet engine takes line 7 as it stands; its own result does not
    // stop the program.
    PlanetFilesOpen(lines[6]);
    return 1;
}
