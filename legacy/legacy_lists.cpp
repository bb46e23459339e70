#include "legacy/legacy_lists.h"

#include <cstring>

#include "legacy/legacy_file.h"

namespace {

constexpr const char* kIndexName = "obs.idx";

long RowOffset(int row) { return 2L + static_cast<long>(kLegacyListRowSize) * row; }

}  // namespace

std::string LegacyListIndexPath(const std::string& legacyRoot) {
    return LegacyFilePath(legacyRoot, kIndexName);
}

std::string LegacyListPath(const std::string& legacyRoot, int index) {
    char name[32];
    std::snprintf(name, sizeof name, "obs.%03d", index);
    return LegacyFilePath(legacyRoot, name);
}

FilePtr OpenLegacyListIndex(const std::string& legacyRoot, int* countOut) {
    return OpenLegacyCountedFile(legacyRoot, kIndexName, countOut);
}

int RewindLegacyListIndex(FILE* stream) { return std::fseek(stream, 2L, SEEK_SET) == 0 ? 1 : 0; }

int ReadLegacyListRow(FILE* stream, LegacyListRow* row) {
    if (!ReadRecord<LegacyListRowLayout>(stream, *row)) return 0;
    row->name[sizeof row->name - 1] = '\0';
    return 1;
}

int NextLegacyList(FILE* stream, int limit, char (&nameOut)[33]) {
    for (;;) {
        const long place = std::ftell(stream);
        if (place < 0) return -1;
        const int row = static_cast<int>((place - 2) / static_cast<long>(kLegacyListRowSize));
        if (row >= limit) return 0;
        LegacyListRow r;
        if (!ReadLegacyListRow(stream, &r)) return -1;
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
    LegacyListRow r;
    if (std::fseek(idx.get(), RowOffset(index), SEEK_SET) != 0 || !ReadLegacyListRow(idx.get(), &r))
        return nullptr;
    FilePtr list = OpenRegularFile(LegacyListPath(legacyRoot, index).c_str(), "rb");
    if (!list || std::fseek(list.get(), kLegacyListHeaderSize, SEEK_SET) != 0) return nullptr;
    if (countOut) *countOut = r.objectCount;
    return list;
}
