#include "base/counted_file.h"

FilePtr CountedOpen(const char* path, size_t recordSize, int* countOut, StoreDamage* damageOut) {
    if (damageOut) *damageOut = StoreDamage::kNone;
    if (IsOddFile(path)) return nullptr;
    FilePtr f = OpenFile(path, "r+b");
    // Only a file too short for a count starts over empty; a count that
    // cannot be read from a longer one is a read error, not an empty store.
    if (f && StreamSize(f.get()) >= kCountedHeaderSize) {
        int count = 0;
        if (!ReadCount16(f.get(), &count)) return nullptr;
        const StoreDamage damage = CheckStreamCount(f.get(), kCountedHeaderSize, recordSize, count);
        if (damage != StoreDamage::kNone) {
            if (damageOut) *damageOut = damage;
            return nullptr;
        }
        if (countOut) *countOut = count;
        return f;
    }
    if (!f) f = OpenFile(path, "w+b");
    if (!f || !CountedWriteCount(f.get(), 0) || std::fflush(f.get()) != 0) return nullptr;
    if (countOut) *countOut = 0;
    return f;
}
