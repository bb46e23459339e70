// bin/ddata.bin: the read-only table of 192 rows of 8 bytes behind the
// keyed property store, loaded once at start-up.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

inline constexpr size_t kDdataTableSize = 192 * 8;

// One read of the whole table; 1 when all of it was there.
int LoadDdataTable(std::array<uint8_t, kDdataTableSize>& table);
