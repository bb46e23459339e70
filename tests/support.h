// Scratch folders and hand-made file images for the tests.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "base/file_io.h"

using Bytes = std::vector<uint8_t>;

// Each test runs in a fresh empty folder that becomes the working folder,
// as the program runs in the Vesperal 2 data folder.
class ScratchTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;
    std::filesystem::path root_;
    std::filesystem::path previous_;
};

void WriteFileBytes(const std::string& path, const Bytes& bytes);
void WriteFileText(const std::string& path, const std::string& text);
Bytes ReadFileBytes(const std::string& path);
std::string ReadFileText(const std::string& path);  // text mode, as the program writes logs
void MakeDirs(const std::string& path);

// Little-endian pokes at fixed offsets, written independently of the code
// under test.
void PokeF64(Bytes& b, size_t off, double v);
void PokeF32(Bytes& b, size_t off, float v);
void PokeI16(Bytes& b, size_t off, int16_t v);
void PokeU16(Bytes& b, size_t off, uint16_t v);
void PokeU32(Bytes& b, size_t off, uint32_t v);
uint32_t PeekU32(const Bytes& b, size_t off);
double PeekF64(const Bytes& b, size_t off);
int16_t PeekI16(const Bytes& b, size_t off);

// A 135-byte location record (132-byte place, 3-byte tail) with the given
// primary fields; derived fields are left 0 unless set by the caller.
Bytes LocationBytes(const std::string& name, double longitude, double latitude,
                    uint8_t tailByte0 = 0, uint8_t tailByte1 = 0);

// An i16 count and the records, as the legacy file and the store keep them.
Bytes LocationFileBytes(const std::vector<Bytes>& records, int16_t count);
Bytes LocationFileBytes(const std::vector<Bytes>& records);

// An eyepiece pool image: u16 nextId, u16 count, 43-byte records of
// name[33], f32 focal length, f32 apparent field in degrees, u16 id.
struct PoolRow {
    const char* name;
    float focalLength;
    float fieldDegrees;
    uint16_t id;
};
Bytes PoolBytes(uint16_t nextId, const std::vector<PoolRow>& rows);

// The bytes [at, at + size) of an image.
Bytes Slice(const Bytes& b, size_t at, size_t size);

// Version 1.x instrument images written by hand at the documented offsets:
// 1705-byte records, two 821-byte systems from 31 and 852, each with its
// eyepiece count at 58 and 60-byte slots from 59.
Bytes LegacyInstrumentBytes(const char* name, uint8_t systemCount, uint8_t kind = 0);
void AddLegacySlot(Bytes& r, int system, const char* name, double focal, double fieldDegrees);
// u16 nextId, u16 count (the records' number unless given), the records.
Bytes LegacyInstrumentFile(const std::vector<Bytes>& records, int count = -1);

// A version 2 instrument store holding 8750-byte records with the given
// names only.
Bytes InstrumentStoreBytes(const std::vector<const char*>& names, uint16_t nextId = 0);

// Arms a read or write fault for the life of the object.
struct ScopedFault {
    ScopedFault(FileOp op, int nth, FileFault fault) { FileFaultArm(op, nth, fault); }
    ~ScopedFault() { FileFaultDisarm(); }
    ScopedFault(const ScopedFault&) = delete;
    ScopedFault& operator=(const ScopedFault&) = delete;
};
