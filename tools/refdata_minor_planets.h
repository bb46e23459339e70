// The reference minor planets of the reference set, made from the Minor
// Planet Center's elements in the source's orbits/minor-planets.csv:
// mp_data, mp_names, mp_alpha and limits for the first minor-planet root,
// and one element file for every 40 days of a range of years for the
// second. The orbits are two-body: every element file holds the same
// elements, completed once (perihelion time from the mean anomaly at the
// epoch); only the file's number changes.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tools/refdata_solar.h"

struct MinorPlanetImages {
    std::vector<SolarFile> small;     // mp_data.bin, mp_names.bin, mp_alpha.bin, limits.bin
    std::vector<uint8_t> elements;    // the image of every element file
    long lowestFile = 0, highestFile = 0;
    size_t count = 0;                 // minor planets, numbered 1 to count
};

// The years run from 1 January of `fromYear` to 1 January of `toYear`.
// false with a message when the list can't be read, its numbers don't run
// 1, 2, 3, ..., or an orbit can't be completed.
bool MakeMinorPlanetImages(const std::string& csvPath, int fromYear, int toYear,
                           MinorPlanetImages* out, std::string* error);
