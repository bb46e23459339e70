// Little-endian pieces for the hand-made images of the user's object
// stores, written independently of the stores' own layouts.
#pragma once

#include <cstring>
#include <string>

#include "support.h"

inline void PutBytes(Bytes& b, std::initializer_list<uint8_t> bytes) { b.insert(b.end(), bytes); }
inline void PutU16(Bytes& b, uint16_t v) { PutBytes(b, {uint8_t(v), uint8_t(v >> 8)}); }
inline void PutU32(Bytes& b, uint32_t v) {
    PutBytes(b, {uint8_t(v), uint8_t(v >> 8), uint8_t(v >> 16), uint8_t(v >> 24)});
}
// A 33-byte name field: the name, then zeros.
inline void PutName(Bytes& b, const std::string& name) {
    Bytes field(33, 0);
    std::memcpy(field.data(), name.data(), name.size());
    b.insert(b.end(), field.begin(), field.end());
}
// An alphabetical index: the entry count, then each name and row.
inline Bytes AlphaBytes(std::initializer_list<std::pair<const char*, uint32_t>> entries) {
    Bytes b;
    PutU32(b, static_cast<uint32_t>(entries.size()));
    for (const auto& [name, row] : entries) {
        PutName(b, name);
        PutU32(b, row);
    }
    return b;
}
// A PID index: the highest PID, then the row of each PID from 1.
inline Bytes PidIndexBytes(std::initializer_list<uint32_t> words) {
    Bytes b;
    for (uint32_t w : words) PutU32(b, w);
    return b;
}
