// The reference catalogue files: one read-only file per catalogue, index or
// text list, named by the string table (string 8000 + id) and found under
// one of the catalogue roots. Every file is little-endian and byte-packed,
// and none of them is ever written by the program.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

#include "base/file_utils.h"

enum CatalogueId : int {
    kCatStars = 0,
    kCatCsn = 1,
    kCatNotes = 2,
    kCatHip = 3,
    kCatSao = 4,
    kCatBd = 5,
    kCatCd = 6,
    kCatCp = 7,
    kCatFlamstd = 8,
    kCatBayer = 9,
    kCatHrbs = 10,
    kCatGc = 11,
    kCatHd = 12,
    kCatCcdm = 13,
    kCatCcdmI = 14,
    kCatAdsCcdm = 15,
    kCatHc = 16,
    kCatLpIndex = 17,
    kCatLpRef = 18,
    kCatLpSup = 19,
    kCatLpNotes = 20,
    kCatVindex = 21,
    kCatVref = 22,
    kCatNsvref = 23,
    kCatLandolt = 24,
    kCatNgc = 25,
    kCatM = 26,
    kCatIc = 27,
    kCatCnCross = 28,
    kCatGal = 29,
    kCatMcg = 30,
    kCatEsob = 31,
    kCatMkn = 32,
    kCatArp = 33,
    kCatUgc = 34,
    kCatQso = 35,
    kCatPln = 36,
    kCatPk = 37,
    kCatOc = 38,
    kCatOcl = 39,
    kCatOcCross = 40,
    kCatGlob = 41,
    kCatPalomar = 42,
    kCatTerzan = 43,
    kCatNeb = 44,
    kCatConnames = 45,
    kCatConbound = 46,
    kCatCsnAlp = 47,
    kCatVnames = 48,
    kCatDdo = 49,
    kCatPpm = 50,
    kCatGeneva = 51,
    kCatUbvri = 52,
    kCatUvby = 53,
    kCatCnames = 54,
    kCatConrect = 55,
    kCatTycho = 57,
    kCatDmb = 58,
    kCatGg = 59,
    kCatAbellPn = 60,
    kCatAro = 61,
    kCatEso = 62,
    kCatMinkowski = 63,
    kCatHaro = 64,
    kCatKohoutek = 65,
    kCatHenize = 66,
    kCatPng = 67,
    kCatPnDes = 68,
    kCatPgc = 69,
    kCatDn = 70,
    kCatLdn = 71,
    kCatBarnard = 72,
    kCatDc = 73,
    kCatGbc = 74,
    kCatQsoDes = 75,
    kCatQ = 76,
    kCatStruve = 77,
    kCatGDes = 78,
    kCatSh = 79,
    kCatGum = 80,
    kCatRcw = 81,
    kCatLbn = 82,
    kCatVdb = 83,
    kCatNebother = 84,
    kCatalogueCount = 85,
};

// What a record decoder fills: a caller asks only for what it uses.
enum ReadMaskBit : int {
    kReadPosition = 1 << 0,
    kReadMagnitude = 1 << 1,
    kReadSize = 1 << 2,
    kReadDesignations = 1 << 3,
    kReadDescriptive = 1 << 4,
    kReadProperMotion = 1 << 5,
    kReadComponents = 1 << 6,
    kReadDisplayName = 1 << 7,
    kReadAll = -1,
};

// The file's name without folder or extension ("stars"); "" for an id
// outside the table.
std::string catalogueFileName(int id);

// The root the file lives under: 0 the small-data root, 1 the star-data
// root; -1 for a file no reader opens.
int catalogueRootOf(int id);

// "%s%s.bin" of root and name.
std::string catalogueFilePath(int id);

// The GSC band table "%sgsc/%s.bin" and a region file "%sgsc/%s/%04d.bin"
// under the GSC root.
std::string gscBandPath(const char* band);
std::string gscRegionPath(const char* band, int number);

// Opens a catalogue file for reading ("rb"); nothing before the roots are
// set, or when the file is missing or not a plain file.
FilePtr openCatalogue(int id);
FilePtr openCatalogueFile(const std::string& path);

// Reads `size` bytes at `offset`; 1 when all of them came.
int readAt(FILE* file, long offset, void* buffer, size_t size);

// A three-byte little-endian number at `offset`: 1 and the value when the
// read succeeded. The value may be 0 (nothing) or 0xFFFFFF (an empty slot).
inline constexpr uint32_t kEmptySlot = 0xFFFFFF;
int readNumber3(FILE* file, long offset, uint32_t* value);
