// The constellation files of the reference set, made from the boundary
// table at B1875.0 (Roman's rectangles, read first match first) and the
// list of the 88 constellations: `connames` (name and label point of each
// of the 89 zones), `conbound` (each zone's J2000 bounding box) and
// `conrect` (each zone as rectangles with both Dec bounds, so that a place
// may be tested zone by zone).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct ConstellationImages {
    std::vector<uint8_t> connames;
    std::vector<uint8_t> conbound;
    std::vector<uint8_t> conrect;
    long rectangles = 0;
};

// Reads constellation-boundaries-b1875.csv and constellations.csv from the
// source folder; false with a message when a row cannot be read or a zone
// would need more rectangles than its index row can count.
bool MakeConstellationImages(const std::string& source, ConstellationImages* out,
                             std::string* error);
