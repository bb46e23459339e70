// The deep-sky files of the reference set, made from the OpenNGC rows:
// one class file per object class (galaxies, galaxy groups, open and
// globular clusters, planetary, bright and dark nebulae), records in the
// rows' order, and the tables that lead to them: Messier, NGC and IC
// numbers, the common names, and the PGC and UGC numbers of galaxies.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

struct DeepSkyImages {
    // The files by catalogue id.
    std::vector<std::pair<int, std::vector<uint8_t>>> files;
    // One line for each class: how many records.
    std::vector<std::string> counts;
    // Designations the tables could not hold.
    std::vector<std::string> notes;
};

// Reads deep-sky.csv from the source folder; false with a message when a
// row cannot be read.
bool MakeDeepSkyImages(const std::string& source, DeepSkyImages* out, std::string* error);
