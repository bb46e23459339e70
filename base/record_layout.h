// One description per on-disk record, from which reading, writing and the
// size check all derive. A layout is a struct with the image size and a
// static template `Fields(io, record)` that names every field once with its
// offset:
//
//   struct FooLayout {
//       static constexpr size_t kSize = 10;
//       template <class Io, class R> static constexpr void Fields(Io& io, R& r) {
//           io.F64(0, r.value);
//           io.U8(8, r.flag);
//           io.Text(9, r.code);     // char[1]; Raw takes uint8_t[N] blocks
//       }
//   };
//
// LayoutReader fills the record from bytes, LayoutWriter writes the record
// into bytes, and LayoutCheck proves at compile time that the fields cover
// the image exactly, in order, with no gap and no overlap.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>

#include "base/file_io.h"
#include "base/le_bytes.h"

struct LayoutReader {
    const uint8_t* bytes;
    void U8(size_t off, uint8_t& v) const { v = le::GetU8(bytes + off); }
    void I16(size_t off, int16_t& v) const { v = le::GetI16(bytes + off); }
    void U16(size_t off, uint16_t& v) const { v = le::GetU16(bytes + off); }
    void I32(size_t off, int32_t& v) const { v = le::GetI32(bytes + off); }
    void U32(size_t off, uint32_t& v) const { v = le::GetU32(bytes + off); }
    void F32(size_t off, float& v) const { v = le::GetF32(bytes + off); }
    void F64(size_t off, double& v) const { v = le::GetF64(bytes + off); }
    template <size_t N>
    void Text(size_t off, char (&s)[N]) const { std::memcpy(s, bytes + off, N); }
    template <size_t N>
    void Raw(size_t off, uint8_t (&b)[N]) const { std::memcpy(b, bytes + off, N); }
};

struct LayoutWriter {
    uint8_t* bytes;
    void U8(size_t off, uint8_t v) const { le::PutU8(bytes + off, v); }
    void I16(size_t off, int16_t v) const { le::PutI16(bytes + off, v); }
    void U16(size_t off, uint16_t v) const { le::PutU16(bytes + off, v); }
    void I32(size_t off, int32_t v) const { le::PutI32(bytes + off, v); }
    void U32(size_t off, uint32_t v) const { le::PutU32(bytes + off, v); }
    void F32(size_t off, float v) const { le::PutF32(bytes + off, v); }
    void F64(size_t off, double v) const { le::PutF64(bytes + off, v); }
    template <size_t N>
    void Text(size_t off, const char (&s)[N]) const { std::memcpy(bytes + off, s, N); }
    template <size_t N>
    void Raw(size_t off, const uint8_t (&b)[N]) const { std::memcpy(bytes + off, b, N); }
};

struct LayoutCheck {
    size_t next = 0;
    bool ok = true;
    constexpr void Field(size_t off, size_t width) {
        if (off != next) ok = false;
        next = off + width;
    }
    template <class T>
    constexpr void U8(size_t off, const T&) { Field(off, 1); }
    template <class T>
    constexpr void I16(size_t off, const T&) { Field(off, 2); }
    template <class T>
    constexpr void U16(size_t off, const T&) { Field(off, 2); }
    template <class T>
    constexpr void I32(size_t off, const T&) { Field(off, 4); }
    template <class T>
    constexpr void U32(size_t off, const T&) { Field(off, 4); }
    template <class T>
    constexpr void F32(size_t off, const T&) { Field(off, 4); }
    template <class T>
    constexpr void F64(size_t off, const T&) { Field(off, 8); }
    template <size_t N>
    constexpr void Text(size_t off, const char (&)[N]) { Field(off, N); }
    template <size_t N>
    constexpr void Raw(size_t off, const uint8_t (&)[N]) { Field(off, N); }
};

template <class Layout, class R>
constexpr bool LayoutIsPacked() {
    R record{};
    LayoutCheck check;
    Layout::Fields(check, record);
    return check.ok && check.next == Layout::kSize;
}

template <class Layout, class R>
void DecodeRecord(const uint8_t* bytes, R& record) {
    LayoutReader io{bytes};
    Layout::Fields(io, record);
}

template <class Layout, class R>
void EncodeRecord(const R& record, uint8_t* bytes) {
    LayoutWriter io{bytes};
    Layout::Fields(io, record);
}

template <class Layout, class R>
std::array<uint8_t, Layout::kSize> RecordImage(const R& record) {
    std::array<uint8_t, Layout::kSize> image{};
    EncodeRecord<Layout>(record, image.data());
    return image;
}

// Reads or writes one whole image at the stream's position; 1 on success.
template <class Layout, class R>
int ReadRecord(FILE* stream, R& record) {
    std::array<uint8_t, Layout::kSize> image;
    if (FileRead(image.data(), image.size(), stream) != image.size()) return 0;
    DecodeRecord<Layout>(image.data(), record);
    return 1;
}

template <class Layout, class R>
int WriteRecord(FILE* stream, const R& record) {
    const auto image = RecordImage<Layout>(record);
    return FileWrite(image.data(), image.size(), stream) == image.size() ? 1 : 0;
}

// The i16 record count that heads most of the user files.
inline int ReadCount16(FILE* stream, int* countOut) {
    uint8_t b[2];
    if (FileRead(b, 2, stream) != 2) return 0;
    *countOut = le::GetI16(b);
    return 1;
}

inline int WriteCount16(FILE* stream, int count) {
    uint8_t b[2];
    le::PutI16(b, static_cast<int16_t>(count));
    return FileWrite(b, 2, stream) == 2 ? 1 : 0;
}

// Lays one record inside another: every field of the inner layout lands
// `base` bytes further on.
template <class Io>
struct ShiftedIo {
    Io& io;
    size_t base;
    template <class T>
    constexpr void U8(size_t off, T& v) { io.U8(base + off, v); }
    template <class T>
    constexpr void I16(size_t off, T& v) { io.I16(base + off, v); }
    template <class T>
    constexpr void U16(size_t off, T& v) { io.U16(base + off, v); }
    template <class T>
    constexpr void I32(size_t off, T& v) { io.I32(base + off, v); }
    template <class T>
    constexpr void U32(size_t off, T& v) { io.U32(base + off, v); }
    template <class T>
    constexpr void F32(size_t off, T& v) { io.F32(base + off, v); }
    template <class T>
    constexpr void F64(size_t off, T& v) { io.F64(base + off, v); }
    template <class T>
    constexpr void Text(size_t off, T& v) { io.Text(base + off, v); }
    template <class T>
    constexpr void Raw(size_t off, T& v) { io.Raw(base + off, v); }
};

template <class Layout, class Io, class R>
constexpr void NestedFields(Io& io, size_t base, R& record) {
    ShiftedIo<Io> shifted{io, base};
    Layout::Fields(shifted, record);
}
