// Where the reference catalogue files and the map files lie. Each root is
// kept with forward slashes, runs of backslashes collapsed to one, and a
// closing '/'.
#pragma once

#include <string>

void setCatalogueRoots(const char* smallData, const char* starData, const char* gsc);
void setMapRoots(const char* first, const char* second, const char* third);

// The catalogue family answers nothing until the catalogue roots are set.
bool catalogueRootsReady();
const std::string& catalogueRoot(int index);  // 0 small data, 1 stars, 2 GSC
const std::string& mapRoot(int index);

// Backslash runs become one '/', and a '/' closes the path.
std::string normaliseCatalogueRoot(const char* path);
