#include "catalog/tycho_index.h"

#include <climits>

#include "catalog/catalogue_files.h"
#include "catalog/float_step_search.h"

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
    // The halving real-valued step from half the count (plus one), with no
    // limit of reads but the step's own.
    uint32_t star = 0;
    const long found = floatStepSearch(
        static_cast<long>(run.count), (run.count + 1) * 0.5, INT_MAX, [&](long position) {
            uint8_t image[TychoRunLayout::kSize];
            if (!readAt(file, static_cast<long>(run.offset) + position * 5L, image, sizeof image))
                return kStepReadFailed;
            TychoRunEntry entry;
            DecodeRecord<TychoRunLayout>(image, entry);
            star = entry.star;
            return Compare(entry, number, component);
        });
    return found < 0 ? 0 : static_cast<long>(star);
}
