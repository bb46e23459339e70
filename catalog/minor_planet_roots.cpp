#include "catalog/minor_planet_roots.h"

#include <array>

namespace {
std::array<std::string, 2> g_roots;
const std::string g_none;

// Backslashes become '/', and a root that doesn't end in '/' gets one. A
// root of any length is kept whole: cut short, it would name another
// folder.
std::string Normalise(const char* path) {
    std::string out(path);
    for (char& c : out)
        if (c == '\\') c = '/';
    if (out.empty() || out.back() != '/') out += '/';
    return out;
}
}  // namespace

void setMinorPlanetRoots(const char* first, const char* second) {
    g_roots = {Normalise(first), Normalise(second)};
}

const std::string& minorPlanetRoot(int index) {
    return index >= 0 && index < 2 ? g_roots[index] : g_none;
}
