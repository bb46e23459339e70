// One description per on-disk record, from which reading, writing and the
// size check all derive. A layout is a struct with the image size and a
// static template `Fields(io, record)` that names every field once with its
// offset:
//
//   struct FooLayout {
//       static constexpr size_t kSize = 17;
//       template <class Io, class R> static constexpr void Fields(Io& io, R& r) {
//           io.F64(0, r.value);
//           io.U8(8, r.flag);
//           io.Text(9, r.code);        // char[1]; Raw takes uint8_t[N] blocks
//           io.U24(10, r.star);        // three-byte number, uint32_t
//           io.Bits32(13, 0, 21, r.pmCode);   // one u32 word at 13:
//           io.Bits32(13, 21, 11, r.magCode); //   bits 0-20, then 21-31
//       }
//   };
//
// A bit field is `BitsN(offset, shift, width, field)` for a little-endian
// word of N bits (8, 16, 24 or 32) at `offset`; the field is any plain
// integer type (uint8_t ... int32_t, bool for a flag) wide enough for
// `width` unsigned bits, and reads as the zero-extended bits. The lines of
// one word follow each other from bit 0 upwards and together name every bit
// of it; a bit that has no meaning is named by a spare field all the same.
// Writing a bit field reads the word, replaces the field's bits and keeps
// the others, so the word comes out as all its fields set it; a value wider
// than the field is cut to its low `width` bits.
//
// LayoutReader fills the record from bytes, LayoutWriter writes the record
// into bytes, and LayoutCheck proves at compile time that the fields cover
// the image exactly, in order, with no gap and no overlap, down to the bits
// of every word.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>

#include "base/file_io.h"
#include "base/le_bytes.h"

// The little-endian word under a run of bit fields.
namespace layout_word {

inline uint32_t Get(const uint8_t* p, size_t bytes) {
    switch (bytes) {
        case 1: return le::GetU8(p);
        case 2: return le::GetU16(p);
        case 3: return le::GetU24(p);
        default: return le::GetU32(p);
    }
}

inline void Put(uint8_t* p, size_t bytes, uint32_t w) {
    switch (bytes) {
        case 1: le::PutU8(p, static_cast<uint8_t>(w)); break;
        case 2: le::PutU16(p, static_cast<uint16_t>(w)); break;
        case 3: le::PutU24(p, w); break;
        default: le::PutU32(p, w); break;
    }
}

constexpr uint32_t Mask(unsigned width) { return width >= 32 ? 0xFFFFFFFFu : (1u << width) - 1; }

}  // namespace layout_word

struct LayoutReader {
    const uint8_t* bytes;
    void U8(size_t off, uint8_t& v) const { v = le::GetU8(bytes + off); }
    void I8(size_t off, int8_t& v) const { v = static_cast<int8_t>(le::GetU8(bytes + off)); }
    void I16(size_t off, int16_t& v) const { v = le::GetI16(bytes + off); }
    void U16(size_t off, uint16_t& v) const { v = le::GetU16(bytes + off); }
    void U24(size_t off, uint32_t& v) const { v = le::GetU24(bytes + off); }
    void I32(size_t off, int32_t& v) const { v = le::GetI32(bytes + off); }
    void U32(size_t off, uint32_t& v) const { v = le::GetU32(bytes + off); }
    void F32(size_t off, float& v) const { v = le::GetF32(bytes + off); }
    void F64(size_t off, double& v) const { v = le::GetF64(bytes + off); }
    template <size_t N>
    void Text(size_t off, char (&s)[N]) const { std::memcpy(s, bytes + off, N); }
    template <size_t N>
    void Raw(size_t off, uint8_t (&b)[N]) const { std::memcpy(b, bytes + off, N); }
    template <class T>
    void Bits8(size_t off, unsigned shift, unsigned width, T& v) const {
        Bits(off, 1, shift, width, v);
    }
    template <class T>
    void Bits16(size_t off, unsigned shift, unsigned width, T& v) const {
        Bits(off, 2, shift, width, v);
    }
    template <class T>
    void Bits24(size_t off, unsigned shift, unsigned width, T& v) const {
        Bits(off, 3, shift, width, v);
    }
    template <class T>
    void Bits32(size_t off, unsigned shift, unsigned width, T& v) const {
        Bits(off, 4, shift, width, v);
    }
    template <class T>
    void Bits(size_t off, size_t size, unsigned shift, unsigned width, T& v) const {
        const uint32_t word = layout_word::Get(bytes + off, size);
        v = static_cast<T>((word >> shift) & layout_word::Mask(width));
    }
};

struct LayoutWriter {
    uint8_t* bytes;
    void U8(size_t off, uint8_t v) const { le::PutU8(bytes + off, v); }
    void I8(size_t off, int8_t v) const { le::PutU8(bytes + off, static_cast<uint8_t>(v)); }
    void I16(size_t off, int16_t v) const { le::PutI16(bytes + off, v); }
    void U16(size_t off, uint16_t v) const { le::PutU16(bytes + off, v); }
    void U24(size_t off, uint32_t v) const { le::PutU24(bytes + off, v); }  // low 24 bits
    void I32(size_t off, int32_t v) const { le::PutI32(bytes + off, v); }
    void U32(size_t off, uint32_t v) const { le::PutU32(bytes + off, v); }
    void F32(size_t off, float v) const { le::PutF32(bytes + off, v); }
    void F64(size_t off, double v) const { le::PutF64(bytes + off, v); }
    template <size_t N>
    void Text(size_t off, const char (&s)[N]) const { std::memcpy(bytes + off, s, N); }
    template <size_t N>
    void Raw(size_t off, const uint8_t (&b)[N]) const { std::memcpy(bytes + off, b, N); }
    template <class T>
    void Bits8(size_t off, unsigned shift, unsigned width, T v) const {
        Bits(off, 1, shift, width, v);
    }
    template <class T>
    void Bits16(size_t off, unsigned shift, unsigned width, T v) const {
        Bits(off, 2, shift, width, v);
    }
    template <class T>
    void Bits24(size_t off, unsigned shift, unsigned width, T v) const {
        Bits(off, 3, shift, width, v);
    }
    template <class T>
    void Bits32(size_t off, unsigned shift, unsigned width, T v) const {
        Bits(off, 4, shift, width, v);
    }
    // Read, modify, write: the word's other bits stay as they are, and the
    // value is cut to the field's width.
    template <class T>
    void Bits(size_t off, size_t size, unsigned shift, unsigned width, T v) const {
        const uint32_t mask = layout_word::Mask(width) << shift;
        const uint32_t word = layout_word::Get(bytes + off, size);
        const uint32_t bits = (static_cast<uint32_t>(v) << shift) & mask;
        layout_word::Put(bytes + off, size, (word & ~mask) | bits);
    }
};

// Walks the fields in order. A bit field that starts a word claims the
// word's bytes like any other field and must begin at bit 0; the next ones
// of that word must each start where the last one ended, and the word has to
// be full before anything else may follow.
struct LayoutCheck {
    size_t next = 0;
    bool ok = true;
    size_t wordOff = 0;
    unsigned wordBits = 0;  // bits of the word being filled, 0 when none
    unsigned nextBit = 0;
    constexpr void Field(size_t off, size_t width) {
        if (off != next || wordBits != 0) ok = false;
        next = off + width;
    }
    template <class T>
    constexpr void Bits(size_t off, size_t size, unsigned shift, unsigned width, const T&) {
        const unsigned bits = static_cast<unsigned>(8 * size);
        if (wordBits != 0 && off == wordOff && bits == wordBits) {
            if (shift != nextBit) ok = false;
        } else {
            Field(off, size);
            wordOff = off;
            wordBits = bits;
            if (shift != 0) ok = false;
        }
        if (width == 0 || shift + width > bits) ok = false;
        if (width > static_cast<unsigned>(std::numeric_limits<T>::digits)) ok = false;
        nextBit = shift + width;
        if (nextBit >= bits) wordBits = 0;
    }
    constexpr bool Covers(size_t size) const { return ok && wordBits == 0 && next == size; }
    template <class T>
    constexpr void U8(size_t off, const T&) { Field(off, 1); }
    template <class T>
    constexpr void I8(size_t off, const T&) { Field(off, 1); }
    template <class T>
    constexpr void I16(size_t off, const T&) { Field(off, 2); }
    template <class T>
    constexpr void U16(size_t off, const T&) { Field(off, 2); }
    template <class T>
    constexpr void U24(size_t off, const T&) { Field(off, 3); }
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
    template <class T>
    constexpr void Bits8(size_t off, unsigned shift, unsigned width, const T& v) {
        Bits(off, 1, shift, width, v);
    }
    template <class T>
    constexpr void Bits16(size_t off, unsigned shift, unsigned width, const T& v) {
        Bits(off, 2, shift, width, v);
    }
    template <class T>
    constexpr void Bits24(size_t off, unsigned shift, unsigned width, const T& v) {
        Bits(off, 3, shift, width, v);
    }
    template <class T>
    constexpr void Bits32(size_t off, unsigned shift, unsigned width, const T& v) {
        Bits(off, 4, shift, width, v);
    }
};

template <class Layout, class R>
constexpr bool LayoutIsPacked() {
    R record{};
    LayoutCheck check;
    Layout::Fields(check, record);
    return check.Covers(Layout::kSize);
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

// Single little-endian words at the stream's position; 1 on success.
inline int ReadU16(FILE* stream, uint16_t* value) {
    uint8_t b[2];
    if (FileRead(b, sizeof b, stream) != sizeof b) return 0;
    *value = le::GetU16(b);
    return 1;
}

inline int ReadU32(FILE* stream, uint32_t* value) {
    uint8_t b[4];
    if (FileRead(b, sizeof b, stream) != sizeof b) return 0;
    *value = le::GetU32(b);
    return 1;
}

inline int WriteU16(FILE* stream, uint16_t value) {
    uint8_t b[2];
    le::PutU16(b, value);
    return FileWrite(b, sizeof b, stream) == sizeof b ? 1 : 0;
}

inline int WriteU32(FILE* stream, uint32_t value) {
    uint8_t b[4];
    le::PutU32(b, value);
    return FileWrite(b, sizeof b, stream) == sizeof b ? 1 : 0;
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
    constexpr void I8(size_t off, T& v) { io.I8(base + off, v); }
    template <class T>
    constexpr void I16(size_t off, T& v) { io.I16(base + off, v); }
    template <class T>
    constexpr void U16(size_t off, T& v) { io.U16(base + off, v); }
    template <class T>
    constexpr void U24(size_t off, T& v) { io.U24(base + off, v); }
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
    template <class T>
    constexpr void Bits8(size_t off, unsigned shift, unsigned width, T& v) {
        io.Bits8(base + off, shift, width, v);
    }
    template <class T>
    constexpr void Bits16(size_t off, unsigned shift, unsigned width, T& v) {
        io.Bits16(base + off, shift, width, v);
    }
    template <class T>
    constexpr void Bits24(size_t off, unsigned shift, unsigned width, T& v) {
        io.Bits24(base + off, shift, width, v);
    }
    template <class T>
    constexpr void Bits32(size_t off, unsigned shift, unsigned width, T& v) {
        io.Bits32(base + off, shift, width, v);
    }
};

template <class Layout, class Io, class R>
constexpr void NestedFields(Io& io, size_t base, R& record) {
    ShiftedIo<Io> shifted{io, base};
    Layout::Fields(shifted, record);
}
