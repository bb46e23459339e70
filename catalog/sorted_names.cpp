#include "catalog/sorted_names.h"

#include <cstring>

#include "catalog/catalogue_files.h"

long findSortedName(FILE* file, long rows, size_t size, const char* text) {
    if (!file || !text) return -1;
    char name[kMaxSortedNameSize + 1];
    if (size > kMaxSortedNameSize) return -1;
    long low = 0, high = rows - 1;
    while (low <= high) {
        const long middle = (low + high) / 2;
        if (!readAt(file, middle * static_cast<long>(size), name, size)) return -1;
        name[size] = '\0';
        const int order = std::strcmp(name, text);
        if (order == 0) return middle;
        if (order < 0)
            low = middle + 1;
        else
            high = middle - 1;
    }
    return -1;
}
