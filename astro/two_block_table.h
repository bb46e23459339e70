// The engine's fixed-size tables of two blocks (the Moon's and Pluto's
// series): `rows` rows of one layout, then `rows` rows of another, read
// whole from one file.
#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "base/file_utils.h"
#include "base/record_layout.h"

// Reads `folder` + `name`, which must hold both blocks; false (and nothing
// kept) when it won't open or is short.
template <class FirstLayout, class First, class SecondLayout, class Second>
bool ReadTwoBlockTable(const char* folder, const char* name, int rows, std::unique_ptr<First[]>* first,
                       std::unique_ptr<Second[]>* second) {
    FilePtr f = OpenFile((std::string(folder ? folder : "") + name).c_str(), "rb");
    if (!f) return false;
    const size_t firstSize = rows * FirstLayout::kSize;
    std::vector<uint8_t> image(firstSize + rows * SecondLayout::kSize);
    if (std::fread(image.data(), 1, image.size(), f.get()) != image.size()) return false;
    auto a = std::make_unique<First[]>(rows);
    auto b = std::make_unique<Second[]>(rows);
    for (int i = 0; i < rows; ++i) {
        DecodeRecord<FirstLayout>(image.data() + i * FirstLayout::kSize, a[i]);
        DecodeRecord<SecondLayout>(image.data() + firstSize + i * SecondLayout::kSize, b[i]);
    }
    *first = std::move(a);
    *second = std::move(b);
    return true;
}
