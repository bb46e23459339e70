#include "catalog/minor_planet_roots.h"

#include <array>

namespace {
std::array<std::string, 2> g_roots;
const std::string g_none;

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
