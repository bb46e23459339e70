#include "base/counted_file.h"

FilePtr CountedOpen(const char* path, size_t recordSize, int* countOut, StoreDamage* damageOut) {
    if (damageOut) *damageOut = StoreDamage::kNone;
    if (IsOddFile(path)) return nullptr;
    int count = 0;
    FilePtr f = OpenFile(path, "r+b");
    if (f && ReadCount16(f.get(), &count)) {
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
