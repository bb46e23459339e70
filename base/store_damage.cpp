#include "base/store_damage.h"

const char* StoreDamageText(StoreDamage damage) {
    switch (damage) {
        case StoreDamage::kCountOutOfRange: return "its count is out of range";
        case StoreDamage::kCountBeyondFile:
            return "its count promises more records than the file holds";
        case StoreDamage::kNone: break;
    }
    return "";
}

int64_t StreamSize(FILE* stream) {
    const long place = std::ftell(stream);
    if (place < 0 || std::fseek(stream, 0, SEEK_END) != 0) return -1;
    const long end = std::ftell(stream);
    if (std::fseek(stream, place, SEEK_SET) != 0) return -1;
    return end;
}

StoreDamage CheckRecordCount(int64_t fileSize, long headerSize, size_t recordSize, long count) {
    if (count < 0) return StoreDamage::kCountOutOfRange;
    const int64_t needed = headerSize + static_cast<int64_t>(recordSize) * count;
    return needed > fileSize ? StoreDamage::kCountBeyondFile : StoreDamage::kNone;
}

StoreDamage CheckStreamCount(FILE* stream, long headerSize, size_t recordSize, long count) {
    if (count < 0) return StoreDamage::kCountOutOfRange;
    const int64_t size = StreamSize(stream);
    if (size < 0) return StoreDamage::kNone;
    return CheckRecordCount(size, headerSize, recordSize, count);
}
