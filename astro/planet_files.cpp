#include "astro/planet_files.h"

namespace {
std::string g_folder;
}

int PlanetFilesOpen(const char* folder) {
    g_folder = folder;
    return 0;
}

void PlanetFilesClose() { g_folder.clear(); }

const std::string& PlanetFilesFolder() { return g_folder; }
