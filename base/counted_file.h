// Files of fixed-size records behind an i16 count, the pattern of the
// location and observer stores: records are added at the end behind the
// count, deleted by moving the later ones down (the file is never cut, so
// stale bytes stay behind the last record), and copied count first for a
// backup. Every operation answers 1 or 0 and reports nothing.
#pragma once

#include <cstdio>

#include "base/file_utils.h"
#include "base/record_layout.h"
#include "base/store_damage.h"

inline constexpr long kCountedHeaderSize = 2;
inline constexpr int kCountedMaxRecords = 32767;

template <class Layout>
long CountedOffset(int index) {
    return kCountedHeaderSize + static_cast<long>(Layout::kSize) * index;
}

inline int CountedReadCount(FILE* stream, int* count) {
    if (std::fseek(stream, 0, SEEK_SET) != 0) return 0;
    return ReadCount16(stream, count);
}

inline int CountedWriteCount(FILE* stream, int count) {
    if (std::fseek(stream, 0, SEEK_SET) != 0) return 0;
    return WriteCount16(stream, count);
}

// Opens the file for update; a missing file (or one without a whole count)
// becomes an empty one. Null when it can be neither opened nor made, when
// the path is no regular file, or when the store is damaged; then
// `damageOut`, when given, tells why (kNone for the other failures).
FilePtr CountedOpen(const char* path, size_t recordSize, int* countOut,
                    StoreDamage* damageOut = nullptr);

// Writes the record first and the count last, so a failure leaves the list
// as it was. A store whose count runs past its end is not added to.
template <class Layout, class R>
int CountedAdd(FILE* stream, const R& record) {
    int count = 0;
    if (!CountedReadCount(stream, &count)) return 0;
    if (count < 0 || count >= kCountedMaxRecords) return 0;
    if (CheckStreamCount(stream, kCountedHeaderSize, Layout::kSize, count) != StoreDamage::kNone)
        return 0;
    if (std::fseek(stream, CountedOffset<Layout>(count), SEEK_SET) != 0) return 0;
    if (!WriteRecord<Layout>(stream, record)) return 0;
    if (!CountedWriteCount(stream, count + 1)) return 0;
    return std::fflush(stream) == 0 ? 1 : 0;
}

template <class Layout, class R>
int CountedRead(FILE* stream, int index, R& record) {
    int count = 0;
    if (!CountedReadCount(stream, &count) || index < 0 || index >= count) return 0;
    if (std::fseek(stream, CountedOffset<Layout>(index), SEEK_SET) != 0) return 0;
    return ReadRecord<Layout>(stream, record);
}

template <class Layout, class R>
int CountedWrite(FILE* stream, int index, const R& record) {
    int count = 0;
    if (!CountedReadCount(stream, &count) || index < 0 || index >= count) return 0;
    if (std::fseek(stream, CountedOffset<Layout>(index), SEEK_SET) != 0) return 0;
    if (!WriteRecord<Layout>(stream, record)) return 0;
    return std::fflush(stream) == 0 ? 1 : 0;
}

// Moves each later record one place down, one at a time, then lowers the
// count: a failure half-way leaves one record doubled under the old count.
template <class Layout, class R>
int CountedDelete(FILE* stream, int index) {
    int count = 0;
    if (!CountedReadCount(stream, &count) || index < 0 || index >= count) return 0;
    for (int i = index + 1; i < count; ++i) {
        R record;
        if (std::fseek(stream, CountedOffset<Layout>(i), SEEK_SET) != 0) return 0;
        if (!ReadRecord<Layout>(stream, record)) return 0;
        if (std::fseek(stream, CountedOffset<Layout>(i - 1), SEEK_SET) != 0) return 0;
        if (!WriteRecord<Layout>(stream, record)) return 0;
    }
    if (!CountedWriteCount(stream, count - 1)) return 0;
    return std::fflush(stream) == 0 ? 1 : 0;
}

// Copies the count, then each counted record; 1 only when all of them moved.
template <class Layout, class R>
int CountedCopyFile(const char* from, const char* to) {
    FilePtr in = OpenFile(from, "rb");
    if (!in) return 0;
    FilePtr out = OpenFile(to, "wb");
    if (!out) return 0;
    int count = 0;
    if (!ReadCount16(in.get(), &count) || !WriteCount16(out.get(), count)) return 0;
    for (int i = 0; i < count; ++i) {
        R record;
        if (!ReadRecord<Layout>(in.get(), record)) return 0;
        if (!WriteRecord<Layout>(out.get(), record)) return 0;
    }
    return std::fclose(out.release()) == 0 ? 1 : 0;
}
