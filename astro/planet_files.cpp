#include "astro/planet_files.h"

#include "astro/nutation.h"

namespace {
std::string g_folder;
}

// The nutation table is the first of the engine's tables to be read; the
// planet, Moon and Pluto tables follow with the planet theory itself.
int PlanetFilesOpen(const char* folder) {
    g_folder = folder;
    NutationLoad(folder);
    return 0;
}

void PlanetFilesClose() {
    NutationFree();
    g_folder.clear();
}

const std::string& PlanetFilesFolder() { return g_folder; }
