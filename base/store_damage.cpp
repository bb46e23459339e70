#include "base/store_damage.h"

#include "base/platform.h"

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
    // Asked of the system rather than by seeking to the end and back,
    // which would cost the stream its read buffer.
    uint64_t size = 0;
    if (!platform::StreamFileSize(stream, &size)) return -1;
    return static_cast<int64_t>(size);
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
