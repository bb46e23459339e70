#include "catalog/index_runs.h"

#include "catalog/catalogue_files.h"

namespace {

template <class Layout, class R>
int ReadHead(FILE* file, long row, R* out) {
    uint8_t image[Layout::kSize];
    if (row < 0 || !readAt(file, row * static_cast<long>(Layout::kSize), image, sizeof image)) return 0;
    DecodeRecord<Layout>(image, *out);
    return 1;
}

}  // namespace

int readShortRunHead(FILE* file, long row, ShortRunHead* out) {
    return ReadHead<ShortRunLayout>(file, row, out);
}

int readRunHead(FILE* file, long row, RunHead* out) { return ReadHead<RunLayout>(file, row, out); }
