// The planet engine's table files of the reference set, made from the
// published series in the solar source folder: PLANETS.NDX and PLANETS.BIN
// from the VSOP87 files (each series cut to its largest terms), moontab.bin
// from the Moon's longitude, distance and latitude terms, plutotab.bin from
// Pluto's terms and nutcon.bin from the nutation series.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct SolarFile {
    std::string name;
    std::vector<uint8_t> bytes;
};

// The five files in the order above. false with a message when a source
// cannot be read, a series has fewer terms than its cut keeps, or a table
// has another number of rows than its file holds or a value its field
// cannot.
bool MakeSolarImages(const std::string& source, std::vector<SolarFile>* out,
                     std::string* error);
