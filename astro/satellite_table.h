// The Uranian satellites' periodic series (usats.bin, 2024 bytes, in the
// folder of the planet tables), read whole into a table of the engine. The
// satellite routines that use it come with the satellites themselves.
#pragma once

#include <cstddef>
#include <cstdint>

inline constexpr const char* kSatelliteTableFileName = "usats.bin";
inline constexpr size_t kSatelliteTableSize = 2024;

// 1 when the block was read whole, 0 otherwise (nothing is kept then).
int SatelliteTableLoad(const char* folder);
void SatelliteTableFree();
// The block as read; null when not loaded.
const uint8_t* SatelliteTable();
