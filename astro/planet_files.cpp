#include "astro/planet_files.h"

#include "astro/bodies.h"
#include "astro/nutation.h"
#include "astro/planet_series.h"
#include "astro/satellite_table.h"

namespace {
std::string g_folder;
bool g_loaded = false;
}  // namespace

int PlanetFilesOpen(const char* folder) {
    if (g_loaded) return 1;
    PlanetFilesClose();
    g_folder = folder ? folder : "";
    const char* f = g_folder.c_str();
    if (!PlanetSeriesLoad(f) || !NutationLoad(f) || !MoonTableLoad(f) || !PlutoTableLoad(f) ||
        !SatelliteTableLoad(f))
        return 0;
    g_loaded = true;
    return 1;
}

void PlanetFilesClose() {
    PlanetSeriesFree();
    NutationFree();
    MoonTableFree();
    PlutoTableFree();
    SatelliteTableFree();
    g_loaded = false;
}

const std::string& PlanetFilesFolder() { return g_folder; }
