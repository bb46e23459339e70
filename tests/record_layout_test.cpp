#include <gtest/gtest.h>

#include <array>

#include "base/record_layout.h"

namespace {

struct Odd {  // a three-byte number at an odd offset
    uint8_t tag = 0; uint32_t star = 0; uint16_t after = 0; bool operator==(const Odd&) const = default;
};
struct OddLayout {
    static constexpr size_t kSize = 6;
    template <class Io, class R> static constexpr void Fields(Io& io, R& r) {
        io.U8(0, r.tag);
        io.U24(1, r.star);
        io.U16(4, r.after);
    }
};

struct PmMag {  // a 21-bit code with an 11-bit one on top
    uint32_t pm = 0; uint16_t mag = 0; bool operator==(const PmMag&) const = default;
};
struct PmMagLayout {
    static constexpr size_t kSize = 4;
    template <class Io, class R> static constexpr void Fields(Io& io, R& r) {
        io.Bits32(0, 0, 21, r.pm);
        io.Bits32(0, 21, 11, r.mag);
    }
};

struct Group {  // a byte, then a 24-bit group split four ways
    uint8_t lead = 0, number = 0, row = 0, letter = 0, digit = 0;
    bool operator==(const Group&) const = default;
};
struct GroupLayout {
    static constexpr size_t kSize = 4;
    template <class Io, class R> static constexpr void Fields(Io& io, R& r) {
        io.U8(0, r.lead);
        io.Bits24(1, 0, 8, r.number);
        io.Bits24(1, 8, 7, r.row);
        io.Bits24(1, 15, 5, r.letter);
        io.Bits24(1, 20, 4, r.digit);
    }
};

struct Small {  // three codes in a byte; a number and a flag in a u16
    uint8_t a = 0, b = 0, c = 0; int32_t number = 0; bool plus = false;
    bool operator==(const Small&) const = default;
};
struct SmallLayout {
    static constexpr size_t kSize = 3;
    template <class Io, class R> static constexpr void Fields(Io& io, R& r) {
        io.Bits8(0, 0, 2, r.a);
        io.Bits8(0, 2, 3, r.b);
        io.Bits8(0, 5, 3, r.c);
        io.Bits16(1, 0, 15, r.number);
        io.Bits16(1, 15, 1, r.plus);
    }
};

struct Signed {  // a signed byte between two plain ones
    uint8_t a = 0; int8_t s = 0; uint8_t b = 0; bool operator==(const Signed&) const = default;
};
struct SignedLayout {
    static constexpr size_t kSize = 3;
    template <class Io, class R> static constexpr void Fields(Io& io, R& r) {
        io.U8(0, r.a);
        io.I8(1, r.s);
        io.U8(2, r.b);
    }
};

struct Outer {  // both kinds one layer down
    uint8_t head = 0; PmMag inner; Odd odd; bool operator==(const Outer&) const = default;
};
struct OuterLayout {
    static constexpr size_t kSize = 11;
    template <class Io, class R> static constexpr void Fields(Io& io, R& r) {
        io.U8(0, r.head);
        NestedFields<PmMagLayout>(io, 1, r.inner);
        NestedFields<OddLayout>(io, 5, r.odd);
    }
};

// Each case leaves bits or bytes unnamed, names some twice or overruns.
struct Pair { uint32_t a = 0, b = 0; uint16_t narrow = 0; uint8_t byte = 0; };
template <int kCase> struct BadLayout {
    static constexpr size_t kSize = 4;
    template <class Io, class R> static constexpr void Fields(Io& io, R& r) {
        if constexpr (kCase == 0) io.Bits32(0, 0, 21, r.a), io.Bits32(0, 22, 10, r.b);
        if constexpr (kCase == 1) io.Bits32(0, 0, 21, r.a), io.Bits32(0, 20, 12, r.b);
        if constexpr (kCase == 2) io.Bits32(0, 1, 31, r.a);
        if constexpr (kCase == 3) io.Bits32(0, 0, 21, r.a);
        if constexpr (kCase == 4) io.Bits16(0, 0, 8, r.a), io.U16(2, r.narrow);
        if constexpr (kCase == 5) io.Bits32(0, 0, 21, r.a), io.Bits32(0, 21, 12, r.b);
        if constexpr (kCase == 6) io.Bits32(0, 0, 17, r.narrow), io.Bits32(0, 17, 15, r.b);
        if constexpr (kCase == 7) io.U8(0, r.byte), io.U16(2, r.narrow);
        if constexpr (kCase == 8) io.U8(0, r.byte), io.Bits32(0, 0, 32, r.a);
    }
};
static_assert(!LayoutIsPacked<BadLayout<0>, Pair>());  // bit 21 unnamed
static_assert(!LayoutIsPacked<BadLayout<1>, Pair>());  // bit 20 twice
static_assert(!LayoutIsPacked<BadLayout<2>, Pair>());  // bit 0 unnamed
static_assert(!LayoutIsPacked<BadLayout<3>, Pair>());  // top of the last word unnamed
static_assert(!LayoutIsPacked<BadLayout<4>, Pair>());  // word left half-named
static_assert(!LayoutIsPacked<BadLayout<5>, Pair>());  // past bit 31
static_assert(!LayoutIsPacked<BadLayout<6>, Pair>());  // 17 bits into a u16
static_assert(!LayoutIsPacked<BadLayout<7>, Pair>());  // byte 1 unnamed
static_assert(!LayoutIsPacked<BadLayout<8>, Pair>());  // byte 0 twice

// Encodes into zeros and into ones (so a bit field that fails to clear its
// bits shows), and decodes the same bytes back.
template <class Layout, class R>
void ExpectImage(const R& r, const std::array<uint8_t, Layout::kSize>& bytes) {
    static_assert(LayoutIsPacked<Layout, R>());
    EXPECT_EQ(RecordImage<Layout>(r), bytes);
    std::array<uint8_t, Layout::kSize> ones;
    ones.fill(0xFF);
    EncodeRecord<Layout>(r, ones.data());
    EXPECT_EQ(ones, bytes);
    R back;
    DecodeRecord<Layout>(bytes.data(), back);
    EXPECT_TRUE(back == r) << testing::PrintToString(bytes);
}

TEST(RecordLayout, WritesAndReadsHandWrittenImages) {
    ExpectImage<OddLayout>(Odd{7, 0x0A1B2C, 0x0102}, {0x07, 0x2C, 0x1B, 0x0A, 0x02, 0x01});
    ExpectImage<OddLayout>(Odd{0, 0xFFFFFF, 0}, {0x00, 0xFF, 0xFF, 0xFF, 0x00, 0x00});
    ExpectImage<PmMagLayout>(PmMag{750000, 0x7FF}, {0xB0, 0x71, 0xEB, 0xFF});
    ExpectImage<PmMagLayout>(PmMag{0x1FFFFF, 0}, {0xFF, 0xFF, 0x1F, 0x00});
    ExpectImage<PmMagLayout>(PmMag{0, 1}, {0x00, 0x00, 0x20, 0x00});
    ExpectImage<GroupLayout>(Group{0x55, 58, 62, 2, 3}, {0x55, 0x3A, 0x3E, 0x31});
    ExpectImage<GroupLayout>(Group{0, 1, 127, 31, 15}, {0x00, 0x01, 0xFF, 0xFF});
    ExpectImage<SmallLayout>(Small{2, 5, 6, 0x1234, true}, {0xD6, 0x34, 0x92});
    ExpectImage<SmallLayout>(Small{3, 0, 0, 0x7FFF, false}, {0x03, 0xFF, 0x7F});
    ExpectImage<SignedLayout>(Signed{1, -2, 3}, {0x01, 0xFE, 0x03});
    ExpectImage<OuterLayout>(Outer{9, {750000, 0x7FF}, {7, 0x0A1B2C, 0x0102}},
                             {0x09, 0xB0, 0x71, 0xEB, 0xFF, 0x07, 0x2C, 0x1B, 0x0A, 0x02, 0x01});
    // Values too wide for their field are cut to it when written.
    EXPECT_EQ(RecordImage<OddLayout>(Odd{0, 0x12345678, 0}), (std::array<uint8_t, 6>{0, 0x78, 0x56, 0x34, 0, 0}));
    EXPECT_EQ(RecordImage<PmMagLayout>(PmMag{0x3FFFFF, 0}), (std::array<uint8_t, 4>{0xFF, 0xFF, 0x1F, 0x00}));
    EXPECT_EQ(RecordImage<SmallLayout>(Small{7, 0, 0, -1, false}), (std::array<uint8_t, 3>{0x03, 0xFF, 0x7F}));
}

}  // namespace
