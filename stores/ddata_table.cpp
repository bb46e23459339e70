#include "stores/ddata_table.h"

#include "base/file_utils.h"

int LoadDdataTable(std::array<uint8_t, kDdataTableSize>& table) {
    FilePtr f = OpenFile("bin/ddata.bin", "rb");
    if (!f) return 0;
    return std::fread(table.data(), 1, table.size(), f.get()) == table.size() ? 1 : 0;
}
