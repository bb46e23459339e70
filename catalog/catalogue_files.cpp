#include "catalog/catalogue_files.h"

#include <cstdio>

#include "base/file_io.h"
#include "base/le_bytes.h"
#include "base/string_table.h"
#include "catalog/catalogue_roots.h"

namespace {

constexpr int kNameStringBase = 8000;

// The root of each file by id; -1 where no reader opens the file.
constexpr int8_t kRootOf[kCatalogueCount] = {
    1, 1, 1, 1, 1, 1, 1, 1, 1, 1,  //  0 stars ...  9 bayer
    1, 1, 1, 1, 1, 1, 1, 1, 1, 1,  // 10 hrbs  ... 19 lp_sup
    1, 1, 1, 1, 1, 1, 1, 1, 1, 1,  // 20 lp_notes ... 29 gal
    1, 1, 1, 1, 1, 1, 0, 1, 0, 1,  // 30 mcg ... 36 pln, 38 oc, 39 ocl
    1, 0, 1, 1, 0, 0, 0, 0, 1, 1,  // 40 oc_cross, 41 glob, 44 neb, 45-47, 48 vnames
    1, 1, 1, 1, 1, 0, -1, 1, 1, 0, // 50 ppm ... 55 conrect, 56 varexpl, 59 gg
    1, 1, 1, 1, 1, 1, 1, 1, 1, 1,  // 60 abell_pn ... 69 pgc
    0, 1, 1, 1, 1, 1, 1, 1, 1, 1,  // 70 dn ... 79 sh
    1, 1, 1, 1, 1,                 // 80 gum ... 84 nebother
};

}  // namespace

std::string catalogueFileName(int id) {
    if (id < 0 || id >= kCatalogueCount) return "";
    return StringText(kNameStringBase + id);
}

int catalogueRootOf(int id) { return id < 0 || id >= kCatalogueCount ? -1 : kRootOf[id]; }

std::string catalogueFilePath(int id) {
    const int root = catalogueRootOf(id);
    return (root < 0 ? std::string() : catalogueRoot(root)) + catalogueFileName(id) + ".bin";
}

std::string gscBandPath(const char* band) {
    return catalogueRoot(2) + "gsc/" + band + ".bin";
}

std::string gscRegionPath(const char* band, int number) {
    char file[16];
    std::snprintf(file, sizeof file, "%04d.bin", number);
    return catalogueRoot(2) + "gsc/" + band + "/" + file;
}

FilePtr openCatalogueFile(const std::string& path) {
    if (!catalogueRootsReady()) return nullptr;
    return OpenRegularFile(path.c_str(), "rb");
}

FilePtr openCatalogue(int id) {
    if (catalogueRootOf(id) < 0) return nullptr;
    return openCatalogueFile(catalogueFilePath(id));
}

int readAt(FILE* file, long offset, void* buffer, size_t size) {
    if (!file || offset < 0) return 0;
    if (std::fseek(file, offset, SEEK_SET) != 0) return 0;
    return FileRead(buffer, size, file) == size ? 1 : 0;
}

int readNumber3(FILE* file, long offset, uint32_t* value) {
    uint8_t b[3];
    if (!readAt(file, offset, b, 3)) return 0;
    *value = le::GetU24(b);
    return 1;
}
