// Where the minor-planet reference files lie: the first root holds the
// mp_data files, the second the elements/ folder. Each backslash becomes
// '/' (runs are kept), and a '/' closes the path.
#pragma once

#include <string>

void setMinorPlanetRoots(const char* first, const char* second);
const std::string& minorPlanetRoot(int index);
