// The deep-sky lookups of `ferry2-cli catalog find`.
#pragma once

#include <string>
#include <vector>

// True when `index` names a deep-sky index; `status` is then the exit
// status of the lookup, whose answers have been printed.
bool FindDeepSky(const std::vector<std::string>& words, int* status);
