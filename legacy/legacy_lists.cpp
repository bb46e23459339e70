#include "legacy/legacy_lists.h"

#include <cstring>

#include "legacy/legacy_file.h"

namespace {

struct ListRow {
    char name[33];
    uint16_t objectCount;
};

int ReadListRow(FILE* stream, ListRow& row) {
    uint8_t b[kLegacyListRowSize];
    if (FileRead(b, sizeof b, stream) != sizeof b) return 0;
    std::memcpy(row.name, b, sizeof row.name);
    row.name[sizeof row.name - 1] = '\0';
    row.objectCount = le::GetU16(b + 33);
    return 1;
}

long RowOffset(int row) { return 2L + static_cast<long>(kLegacyListRowSize) * row; }

}  // namespace

FilePtr OpenLegacyListIndex(const std::string& legacyRoot, int* countOut) {
    return OpenLegacyCountedFile(legacyRoot, "obs.idx", countOut);
}

int RewindLegacyListIndex(FILE* stream) { return std::fseek(stream, 2L, SEEK_SET) == 0 ? 1 : 0; }

int NextLegacyList(FILE* stream, int limit, char (&nameOut)[33]) {
    for (;;) {
        const long place = std::ftell(stream);
        if (place < 0) return -1;
        const int row = static_cast<int>((place - 2) / static_cast<long>(kLegacyListRowSize));
        if (row >= limit) return 0;
        ListRow r;
        if (!ReadListRow(stream, r)) return -1;
        if (r.objectCount != kLegacyFreeListRow) {
            std::memcpy(nameOut, r.name, sizeof nameOut);
            return row + 1;
        }
    }
}

FilePtr OpenLegacyList(const std::string& legacyRoot, int index, int* countOut) {
    int listCount = 0;
    FilePtr idx = OpenLegacyListIndex(legacyRoot, &listCount);
    if (!idx || index < 0 || index >= listCount) return nullptr;
    ListRow r;
    if (std::fseek(idx.get(), RowOffset(index), SEEK_SET) != 0 || !ReadListRow(idx.get(), r))
        return nullptr;
    char name[32];
    std::snprintf(name, sizeof name, "/obs.%03d", index);
    const std::string path = legacyRoot + name;
    FilePtr list = OpenRegularFile(path.c_str(), "rb");
    if (!list || std::fseek(list.get(), kLegacyListHeaderSize, SEEK_SET) != 0) return nullptr;
    if (countOut) *countOut = r.objectCount;
    return list;
}
