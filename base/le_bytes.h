// Little-endian reading and writing of the fixed-width fields that every
// on-disk record of the program uses. All file images go through these.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

namespace le {

inline uint8_t GetU8(const uint8_t* p) { return p[0]; }
inline void PutU8(uint8_t* p, uint8_t v) { p[0] = v; }

inline uint16_t GetU16(const uint8_t* p) {
    return static_cast<uint16_t>(p[0] | (p[1] << 8));
}
inline void PutU16(uint8_t* p, uint16_t v) {
    p[0] = static_cast<uint8_t>(v);
    p[1] = static_cast<uint8_t>(v >> 8);
}
inline int16_t GetI16(const uint8_t* p) { return static_cast<int16_t>(GetU16(p)); }
inline void PutI16(uint8_t* p, int16_t v) { PutU16(p, static_cast<uint16_t>(v)); }

inline uint32_t GetU32(const uint8_t* p) {
    return static_cast<uint32_t>(p[0]) | (static_cast<uint32_t>(p[1]) << 8) |
           (static_cast<uint32_t>(p[2]) << 16) | (static_cast<uint32_t>(p[3]) << 24);
}
inline void PutU32(uint8_t* p, uint32_t v) {
    for (int i = 0; i < 4; ++i) p[i] = static_cast<uint8_t>(v >> (8 * i));
}
// Three-byte numbers, as the catalogue indexes keep star and object numbers.
// Writing keeps the low 24 bits of the value.
inline uint32_t GetU24(const uint8_t* p) {
    return static_cast<uint32_t>(p[0]) | (static_cast<uint32_t>(p[1]) << 8) |
           (static_cast<uint32_t>(p[2]) << 16);
}
inline void PutU24(uint8_t* p, uint32_t v) {
    for (int i = 0; i < 3; ++i) p[i] = static_cast<uint8_t>(v >> (8 * i));
}

inline int32_t GetI32(const uint8_t* p) { return static_cast<int32_t>(GetU32(p)); }
inline void PutI32(uint8_t* p, int32_t v) { PutU32(p, static_cast<uint32_t>(v)); }

inline uint64_t GetU64(const uint8_t* p) {
    return static_cast<uint64_t>(GetU32(p)) | (static_cast<uint64_t>(GetU32(p + 4)) << 32);
}
inline void PutU64(uint8_t* p, uint64_t v) {
    PutU32(p, static_cast<uint32_t>(v));
    PutU32(p + 4, static_cast<uint32_t>(v >> 32));
}

// Reals move as their bit patterns, so any value (NaN payloads included)
// comes back out exactly as it went in.
inline float GetF32(const uint8_t* p) { return std::bit_cast<float>(GetU32(p)); }
inline void PutF32(uint8_t* p, float v) { PutU32(p, std::bit_cast<uint32_t>(v)); }
inline double GetF64(const uint8_t* p) { return std::bit_cast<double>(GetU64(p)); }
inline void PutF64(uint8_t* p, double v) { PutU64(p, std::bit_cast<uint64_t>(v)); }

}  // namespace le
