#include "support.h"

#include <cstdio>
#include <cstring>
#include <fstream>
#include <numbers>
#include <random>

namespace fs = std::filesystem;

void ScratchTest::SetUp() {
    std::error_code ec;
    previous_ = fs::current_path(ec);
    static std::mt19937_64 rng(std::random_device{}());
    root_ = fs::temp_directory_path(ec) / ("ferry2-test-" + std::to_string(rng()));
    fs::create_directories(root_, ec);
    ASSERT_FALSE(ec) << ec.message();
    fs::current_path(root_, ec);
    ASSERT_FALSE(ec) << ec.message();
}

void ScratchTest::TearDown() {
    std::error_code ec;
    fs::current_path(previous_, ec);
    fs::remove_all(root_, ec);
}

void WriteFileBytes(const std::string& path, const Bytes& bytes) {
    std::ofstream f(path, std::ios::binary | std::ios::trunc);
    f.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

void WriteFileText(const std::string& path, const std::string& text) {
    std::ofstream f(path, std::ios::binary | std::ios::trunc);
    f << text;
}

Bytes ReadFileBytes(const std::string& path) {
    std::ifstream f(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(f), std::istreambuf_iterator<char>());
}

std::string ReadFileText(const std::string& path) {
    std::ifstream f(path);
    return std::string(std::istreambuf_iterator<char>(f), std::istreambuf_iterator<char>());
}

void MakeDirs(const std::string& path) {
    std::error_code ec;
    fs::create_directories(path, ec);
}

void PokeF64(Bytes& b, size_t off, double v) { std::memcpy(&b[off], &v, 8); }
void PokeF32(Bytes& b, size_t off, float v) { std::memcpy(&b[off], &v, 4); }
void PokeI16(Bytes& b, size_t off, int16_t v) { std::memcpy(&b[off], &v, 2); }
void PokeU16(Bytes& b, size_t off, uint16_t v) {
    b[off] = static_cast<uint8_t>(v);
    b[off + 1] = static_cast<uint8_t>(v >> 8);
}
void PokeU32(Bytes& b, size_t off, uint32_t v) {
    for (int i = 0; i < 4; ++i) b[off + i] = static_cast<uint8_t>(v >> (8 * i));
}
uint32_t PeekU32(const Bytes& b, size_t off) {
    return b[off] | b[off + 1] << 8 | b[off + 2] << 16 | static_cast<uint32_t>(b[off + 3]) << 24;
}
double PeekF64(const Bytes& b, size_t off) {
    double v;
    std::memcpy(&v, &b[off], 8);
    return v;
}
int16_t PeekI16(const Bytes& b, size_t off) {
    int16_t v;
    std::memcpy(&v, &b[off], 2);
    return v;
}

Bytes LocationBytes(const std::string& name, double longitude, double latitude, uint8_t tailByte0,
                    uint8_t tailByte1) {
    Bytes b(135, 0);
    PokeF64(b, 0, longitude);
    PokeF64(b, 8, latitude);
    std::memcpy(&b[99], name.data(), std::min<size_t>(name.size(), 32));
    b[132] = tailByte0;
    b[133] = tailByte1;
    return b;
}

Bytes LocationFileBytes(const std::vector<Bytes>& records, int16_t count) {
    Bytes out(2, 0);
    PokeI16(out, 0, count);
    for (const Bytes& r : records) out.insert(out.end(), r.begin(), r.end());
    return out;
}

Bytes LocationFileBytes(const std::vector<Bytes>& records) {
    return LocationFileBytes(records, static_cast<int16_t>(records.size()));
}

Bytes PoolBytes(uint16_t nextId, const std::vector<PoolRow>& rows) {
    Bytes b = {static_cast<uint8_t>(nextId), static_cast<uint8_t>(nextId >> 8),
               static_cast<uint8_t>(rows.size()), static_cast<uint8_t>(rows.size() >> 8)};
    for (const PoolRow& row : rows) {
        const size_t at = b.size();
        b.resize(at + 43, 0);
        std::memcpy(&b[at], row.name, std::strlen(row.name));
        PokeF32(b, at + 33, row.focalLength);
        PokeF32(b, at + 37, row.fieldDegrees);
        b[at + 41] = static_cast<uint8_t>(row.id);
        b[at + 42] = static_cast<uint8_t>(row.id >> 8);
    }
    return b;
}

Bytes Slice(const Bytes& b, size_t at, size_t size) {
    return Bytes(b.begin() + at, b.begin() + at + size);
}

Bytes LegacyInstrumentBytes(const char* name, uint8_t systemCount, uint8_t kind) {
    Bytes r(1705, 0);
    r[0] = 0x4D;  // an old id, which is not kept
    r[2] = systemCount;
    r[4] = kind;
    std::memcpy(&r[1673], name, std::strlen(name));
    return r;
}

void AddLegacySlot(Bytes& r, int system, const char* name, double focal, double fieldDegrees) {
    const size_t sys = system == 0 ? 31 : 852;
    const int j = r[sys + 58]++;
    const size_t at = sys + 59 + 60 * j;
    PokeF64(r, at, focal);
    PokeF64(r, at + 8, fieldDegrees * std::numbers::pi / 180.0);
    PokeF64(r, at + 16, 1.0);
    std::memcpy(&r[at + 28], name, std::strlen(name));
}

Bytes LegacyInstrumentFile(const std::vector<Bytes>& records, int count) {
    const size_t n = count < 0 ? records.size() : static_cast<size_t>(count);
    Bytes b = {0x63, 0, static_cast<uint8_t>(n), static_cast<uint8_t>(n >> 8)};
    for (const Bytes& r : records) b.insert(b.end(), r.begin(), r.end());
    return b;
}

Bytes InstrumentStoreBytes(const std::vector<const char*>& names, uint16_t nextId) {
    Bytes b = {static_cast<uint8_t>(nextId), static_cast<uint8_t>(nextId >> 8),
               static_cast<uint8_t>(names.size()), 0};
    for (const char* name : names) {
        Bytes r(8750, 0);
        std::memcpy(&r[8718], name, std::strlen(name));
        b.insert(b.end(), r.begin(), r.end());
    }
    return b;
}
