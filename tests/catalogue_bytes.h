// File images of the catalogue tests: bytes placed by hand at the offsets
// the formats give, little-endian, written independently of the readers.
#pragma once

#include <cstdint>
#include <cstring>
#include <initializer_list>

#include "catalog/catalogue_files.h"
#include "catalog/catalogue_roots.h"
#include "support.h"

// Writes `bytes` at `at`, growing the image with zeros as needed.
inline void Put(Bytes& image, size_t at, std::initializer_list<uint8_t> bytes) {
    if (image.size() < at + bytes.size()) image.resize(at + bytes.size(), 0);
    for (const uint8_t b : bytes) image[at++] = b;
}

// A little-endian number of `width` bytes at `at`.
inline void PutLe(Bytes& image, size_t at, uint64_t value, int width) {
    if (image.size() < at + width) image.resize(at + width, 0);
    for (int i = 0; i < width; ++i) image[at + i] = static_cast<uint8_t>(value >> (8 * i));
}

// A text and its NUL padding up to `size` bytes.
inline void PutText(Bytes& image, size_t at, const char* text, size_t size) {
    if (image.size() < at + size) image.resize(at + size, 0);
    std::memset(&image[at], 0, size);
    std::memcpy(&image[at], text, std::strlen(text));
}

// Scratch folder with every catalogue root set to it.
class CatalogueFileTest : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        setCatalogueRoots(".", ".", ".");
    }
};
