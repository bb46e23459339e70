// The reference comets of the set, `comets.bin` and `cnames.bin`, made from
// the Minor Planet Center's comet element lines (orbits/cometels-excerpt.txt
// of the source). They go to the first minor-planet root, which the
// sample's vesperal.ini names as the solar-system folder.
#pragma once

#include <string>
#include <vector>

#include "tools/refdata_solar.h"

// Appends the two files to `out`, and says how many comets they hold. The
// `comets` records are sorted as the user store sorts: numbered comets by
// number (and type letter), then the others by designation; one record a
// comet, so a comet's PID is its row. `cnames` has one row per comet in
// the order of its search text, without case, each naming its `comets`
// row. false with a message when the source cannot be read, a line does not
// read, or there are more comets than the name list holds.
bool MakeCometImages(const std::string& source, std::vector<SolarFile>* out, long* countOut,
                     std::string* error);
