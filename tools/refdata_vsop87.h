// A reader of the VSOP87 planetary theory in its original fixed-width files
// (one file per version and body, each series a header line and then one
// line per term), and the truncation that keeps a series' largest terms.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "astro/planet_tables.h"

// One file read whole. A series is a coordinate (0 to 2: L, B, R in the
// spherical versions B and D) and a power of time (0 to 5); its terms are
// A, B, C in the file's order, A in radians or au per millennium to the
// power, C in radians per Julian millennium. A series the file lacks is
// empty.
struct Vsop87File {
    int version = -1;  // 0 VSOP87, 1 A, 2 B, 3 C, 4 D, 5 E
    std::string body;  // as the header names it: "VENUS", "EARTH", ...
    std::vector<PlanetTerm> series[kSeriesCoordinates][kSeriesPowers];
};

// false with a message naming the line when the file cannot be read, a
// line does not read, a term's codes differ from its header's, a series
// has another number of terms than its header says, or the file holds a
// coordinate beyond the third (the orbital elements of the main version).
bool ReadVsop87(const std::string& path, Vsop87File* out, std::string* error);

// The `count` terms of largest amplitude A, largest first; terms of equal
// amplitude keep the file's order. false when the series has fewer.
bool LargestTerms(const std::vector<PlanetTerm>& terms, size_t count,
                  std::vector<PlanetTerm>* out);
