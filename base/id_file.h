// Files of fixed-size records behind a u16 nextId (the last id given) and a
// u16 count: the instrument store and the eyepiece pool. Ids are handed out
// from nextId and never given twice, since deletes leave it alone.
#pragma once

#include <cstdio>

#include "base/file_utils.h"
#include "base/le_bytes.h"
#include "base/file_io.h"
#include "base/record_layout.h"
#include "base/store_damage.h"

inline constexpr long kIdHeaderSize = 4;

struct IdHeader {
    int nextId = 0;
    int count = 0;
};

inline int ReadIdHeader(FILE* stream, IdHeader& h) {
    uint8_t b[kIdHeaderSize];
    if (std::fseek(stream, 0, SEEK_SET) != 0 || FileRead(b, sizeof b, stream) != sizeof b)
        return 0;
    h.nextId = le::GetU16(b);
    h.count = le::GetU16(b + 2);
    return 1;
}

inline int WriteIdHeader(FILE* stream, const IdHeader& h) {
    uint8_t b[kIdHeaderSize];
    le::PutU16(b, static_cast<uint16_t>(h.nextId));
    le::PutU16(b + 2, static_cast<uint16_t>(h.count));
    if (std::fseek(stream, 0, SEEK_SET) != 0) return 0;
    return FileWrite(b, sizeof b, stream) == sizeof b ? 1 : 0;
}

// Whether another id and another record still fit the u16 fields.
inline bool IdHeaderHasRoom(const IdHeader& h) { return h.nextId < 0xFFFF && h.count < 0xFFFF; }

// Whether the records the header counts all lie inside the file.
template <class Layout>
StoreDamage IdCheckCount(FILE* stream, const IdHeader& h) {
    return CheckStreamCount(stream, kIdHeaderSize, Layout::kSize, h.count);
}

// Opens an existing file for update and reads its header. Null when the
// file is missing, no regular file or without a whole header, and when it
// is damaged; then `damageOut`, when given, tells why.
template <class Layout>
FilePtr IdOpen(const char* path, IdHeader& h, StoreDamage* damageOut) {
    if (damageOut) *damageOut = StoreDamage::kNone;
    FilePtr f = OpenRegularFile(path, "r+b");
    if (!f || !ReadIdHeader(f.get(), h)) return nullptr;
    const StoreDamage damage = IdCheckCount<Layout>(f.get(), h);
    if (damage == StoreDamage::kNone) return f;
    if (damageOut) *damageOut = damage;
    return nullptr;
}

template <class Layout>
long IdRecordOffset(int index) {
    return kIdHeaderSize + static_cast<long>(Layout::kSize) * index;
}

template <class Layout, class R>
int IdReadAt(FILE* stream, int index, R& r) {
    if (index < 0 || std::fseek(stream, IdRecordOffset<Layout>(index), SEEK_SET) != 0) return 0;
    return ReadRecord<Layout>(stream, r);
}

template <class Layout, class R>
int IdWriteAt(FILE* stream, int index, const R& r) {
    if (index < 0 || std::fseek(stream, IdRecordOffset<Layout>(index), SEEK_SET) != 0) return 0;
    return WriteRecord<Layout>(stream, r);
}

// Copies the header, then the records it counts one by one; for backups.
template <class Layout, class R>
int IdCopyFile(const char* from, const char* to) {
    FilePtr in = OpenFile(from, "rb");
    if (!in) return 0;
    FilePtr out = OpenFile(to, "wb");
    IdHeader h;
    if (!out || !ReadIdHeader(in.get(), h) || !WriteIdHeader(out.get(), h)) return 0;
    for (int i = 0; i < h.count; ++i) {
        R r;
        if (!ReadRecord<Layout>(in.get(), r) || !WriteRecord<Layout>(out.get(), r)) return 0;
    }
    return std::fclose(out.release()) == 0 ? 1 : 0;
}
