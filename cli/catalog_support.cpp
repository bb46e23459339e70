#include "cli/catalog_support.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include "catalog/catalogue_files.h"

int CatalogUsage(const char* why) {
    std::fprintf(stderr, "ferry2-cli catalog: %s\n", why);
    return kCatalogUsage;
}

int CatalogMissing(int id) {
    std::fprintf(stderr, "ferry2-cli catalog: %s cannot be opened\n", catalogueFilePath(id).c_str());
    return kCatalogNone;
}

bool ParseWhole(const std::string& text, long* value) {
    if (text.empty()) return false;
    errno = 0;
    char* end = nullptr;
    const long v = std::strtol(text.c_str(), &end, 10);
    if (*end || errno) return false;
    *value = v;
    return true;
}

int PrintNumbers(const long* numbers, int count, bool zeroBased) {
    int printed = 0;
    for (int i = 0; i < count; ++i) {
        if (zeroBased ? numbers[i] < 0 : numbers[i] <= 0) continue;
        std::printf("%ld\n", numbers[i]);
        ++printed;
    }
    return printed > 0 ? kCatalogFound : kCatalogNone;
}
