#include "catalog/tycho_index.h"

#include <cmath>

#include "catalog/catalogue_files.h"

FilePtr openTycho() { return openCatalogue(kCatTycho); }

namespace {
// Compares an entry with the key: number first, then component.
int Compare(const TychoRunEntry& e, int number, int component) {
    const int n = e.numberLess1 + 1;
    const int c = e.componentLess1 + 1;
    if (n != number) return n < number ? -1 : 1;
    if (c != component) return c < component ? -1 : 1;
    return 0;
}
}  // namespace

long lookupTycho(FILE* file, int region, int number, int component) {
    if (!file || region < 1 || region > kTychoRegions) return 0;
    uint8_t head[TychoRegionLayout::kSize];
    if (!readAt(file, (region - 1) * static_cast<long>(TychoRegionLayout::kSize), head, sizeof head))
        return 0;
    TychoRegionEntry run;
    DecodeRecord<TychoRegionLayout>(head, run);
    if (run.count == 0) return 0;
    // A binary search with a real-valued step: it starts at half the count
    // (plus one), halves every round, and moves by the rounded step; it gives
    // up once the halved step is 0.5 or less.
    double step = (run.count + 1) * 0.5;
    long position = std::lround(step) - 1;
    for (;;) {
        uint8_t image[TychoRunLayout::kSize];
        if (position < 0 || position >= static_cast<long>(run.count)) return 0;
        if (!readAt(file, static_cast<long>(run.offset) + position * 5L, image, sizeof image)) return 0;
        TychoRunEntry entry;
        DecodeRecord<TychoRunLayout>(image, entry);
        const int order = Compare(entry, number, component);
        if (order == 0) return static_cast<long>(entry.star);
        step *= 0.5;
        if (step <= 0.5) return 0;
        position += order < 0 ? std::lround(step) : -std::lround(step);
    }
}
