#include "astro/satellite_table.h"

#include <memory>
#include <string>

#include "base/file_utils.h"

namespace {
std::unique_ptr<uint8_t[]> gTable;
}

int SatelliteTableLoad(const char* folder) {
    SatelliteTableFree();
    FilePtr f = OpenFile((std::string(folder ? folder : "") + kSatelliteTableFileName).c_str(), "rb");
    if (!f) return 0;
    auto table = std::make_unique<uint8_t[]>(kSatelliteTableSize);
    if (std::fread(table.get(), 1, kSatelliteTableSize, f.get()) != kSatelliteTableSize) return 0;
    gTable = std::move(table);
    return 1;
}

void SatelliteTableFree() { gTable.reset(); }

const uint8_t* SatelliteTable() { return gTable.get(); }
