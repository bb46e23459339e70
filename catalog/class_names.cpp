#include "catalog/class_names.h"

#include <cstring>

namespace {
struct NameRow {
    const char* table;
    const char* text;
};

constexpr NameRow kRows[] = {
#include "data/name_tables.inc"
};

const char* Row(const char* table, int row, int rows) {
    if (row < 0 || row >= rows) return "";
    int n = 0;
    for (const NameRow& r : kRows)
        if (std::strcmp(r.table, table) == 0 && n++ == row) return r.text;
    return "";
}
}  // namespace

const char* folderWord(int row) { return Row("folder", row, kFolderWordRows); }
const char* bodyName(int row) { return Row("body", row, kBodyNameRows); }
const char* browserGroupName(int row) { return Row("browser", row, kBrowserGroupRows); }
