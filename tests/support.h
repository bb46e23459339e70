// Scratch folders and hand-made file images for the tests.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

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

// Version 1.x instrument images: 1705-byte records (old id at 0, system
// count at 2, kind at 4, name at 1673), a file of u16 nextId, u16 count and
// the records; and a version 2 store of 8750-byte records holding names only.
Bytes LegacyInstrumentBytes(const char* name, uint8_t systemCount, uint8_t kind = 0);
Bytes LegacyInstrumentFileBytes(const std::vector<Bytes>& records, int count = -1);
Bytes InstrumentStoreBytes(const std::vector<const char*>& names, uint16_t nextId = 0);
// Appends an eyepiece slot to system 0 or 1 of a legacy image: 60-byte
// slots from 59 of the 821-byte systems at 31 and 852, the count at 58.
void AddLegacySlot(Bytes& record, int system, const char* name, double focal, double fieldDegrees);
