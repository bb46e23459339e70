#include "catalog/catalogue_roots.h"

#include <array>

namespace {
std::array<std::string, 3> g_catalogueRoots;
std::array<std::string, 3> g_mapRoots;
bool g_ready = false;
const std::string g_none;
}  // namespace

std::string normaliseCatalogueRoot(const char* path) {
    std::string out;
    for (const char* p = path; *p; ++p) {
        if (*p == '\\') {
            if (p == path || p[-1] != '\\') out += '/';
        } else {
            out += *p;
        }
    }
    if (out.empty() || out.back() != '/') out += '/';
    return out;
}

void setCatalogueRoots(const char* smallData, const char* starData, const char* gsc) {
    g_catalogueRoots = {normaliseCatalogueRoot(smallData), normaliseCatalogueRoot(starData),
                        normaliseCatalogueRoot(gsc)};
    g_ready = true;
}

void setMapRoots(const char* first, const char* second, const char* third) {
    g_mapRoots = {normaliseCatalogueRoot(first), normaliseCatalogueRoot(second),
                  normaliseCatalogueRoot(third)};
}

bool catalogueRootsReady() { return g_ready; }

const std::string& catalogueRoot(int index) {
    return index >= 0 && index < 3 ? g_catalogueRoots[index] : g_none;
}

const std::string& mapRoot(int index) {
    return index >= 0 && index < 3 ? g_mapRoots[index] : g_none;
}
