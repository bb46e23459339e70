#include "catalog/cross_tables.h"

#include <cstring>

#include "base/prefix_match.h"
#include "catalog/catalogue_files.h"

namespace {

// Object class of each cross class.
constexpr int kObjectClassOf[8] = {10, 11, 9, 8, 6, 7, 16, 17};
// Only the first five rows go back: these are the classes the Messier, NGC
// and IC browsers list.
constexpr int kBrowsedCrossClasses = 5;

// IC numbers whose suffix is beyond the row's three slots, kept by rule.
struct FixedIcRow {
    int ic;
    int suffix;
    int crossClass;
    long record;
};
constexpr FixedIcRow kFixedIcRows[] = {
    {683, 5, 4, 34807},   // IC 683E, a galaxy
    {5269, 3, 4, 70253},  // IC 5269C, a galaxy
};

// Class 0 with record 0 is an empty slot.
bool IsEmpty(int crossClass, uint32_t record) { return crossClass == 0 && record == 0; }

template <class Layout, class R>
int ReadRow(FILE* file, long row, R* out) {
    uint8_t image[Layout::kSize];
    if (!readAt(file, row * static_cast<long>(Layout::kSize), image, sizeof image)) return 0;
    DecodeRecord<Layout>(image, *out);
    return 1;
}

}  // namespace

int crossClassToObjectClass(int crossClass) {
    return crossClass < 0 || crossClass > 7 ? -1 : kObjectClassOf[crossClass];
}

int objectClassToCrossClass(int objectClass) {
    for (int i = 0; i < kBrowsedCrossClasses; ++i)
        if (kObjectClassOf[i] == objectClass) return i;
    return -1;
}

FilePtr openMessierCross() { return openCatalogue(kCatM); }
FilePtr openNgcCross() { return openCatalogue(kCatNgc); }
FilePtr openIcCross() { return openCatalogue(kCatIc); }
FilePtr openCommonNames() { return openCatalogue(kCatCnames); }
FilePtr openCommonNameCross() { return openCatalogue(kCatCnCross); }

int lookupMessierCross(FILE* file, int messier, CrossHit* out) {
    MessierCrossRow row;
    if (messier < 1 || !ReadRow<MessierCrossLayout>(file, messier - 1, &row)) return 0;
    if (row.crossClass > 254 || IsEmpty(row.crossClass, row.record)) return 0;
    *out = {row.crossClass, row.record};
    return 1;
}

int lookupNgcCross(FILE* file, int ngc, int suffix, CrossHit out[2]) {
    NgcCrossRow row;
    if (ngc < 1 || suffix < 0 || suffix >= kNgcSlots) return 0;
    if (!ReadRow<NgcCrossLayout>(file, ngc - 1, &row)) return 0;
    if (suffix > row.highestSuffix || (suffix != 0 && row.highestSuffix == 0)) return 0;
    if (IsEmpty(row.crossClass[suffix], row.record[suffix])) return 0;
    out[0] = {row.crossClass[suffix], static_cast<long>(row.record[suffix])};
    // No suffix in use but a second record: two objects share the number.
    if (row.highestSuffix == 0 && row.record[1] != 0) {
        out[1] = {row.crossClass[1], static_cast<long>(row.record[1])};
        return 2;
    }
    return 1;
}

int lookupIcCross(FILE* file, int ic, int suffix, CrossHit* out) {
    for (const FixedIcRow& fixed : kFixedIcRows) {
        if (fixed.ic == ic && fixed.suffix == suffix) {
            *out = {fixed.crossClass, fixed.record};
            return 1;
        }
    }
    IcCrossRow row;
    if (ic < 1 || suffix < 0 || suffix >= kIcSlots) return 0;
    if (!ReadRow<IcCrossLayout>(file, ic - 1, &row)) return 0;
    if (IsEmpty(row.crossClass[suffix], row.record[suffix])) return 0;
    *out = {row.crossClass[suffix], static_cast<long>(row.record[suffix])};
    return 1;
}

int readCommonName(FILE* file, int row, char out[kCommonNameSize]) {
    if (row < 0 || row >= kCommonNameRows) return 0;
    if (!readAt(file, row * static_cast<long>(kCommonNameSize), out, kCommonNameSize)) return 0;
    out[kCommonNameSize - 1] = '\0';
    return 1;
}

int findCommonName(FILE* file, const char* text) {
    char name[kCommonNameSize];
    if (!text || !*text) return -1;
    for (int row = 0; row < kCommonNameRows; ++row) {
        if (!readCommonName(file, row, name)) return -1;
        if (PrefixMatch(text, name)) return row;
    }
    return -1;
}

int lookupCommonNameCross(FILE* file, int row, CrossHit* out) {
    CommonNameCrossRow cross;
    if (row < 0 || row >= kCommonNameRows) return 0;
    if (!ReadRow<CommonNameCrossLayout>(file, row, &cross)) return 0;
    if (IsEmpty(cross.crossClass, cross.record)) return 0;
    *out = {cross.crossClass, static_cast<long>(cross.record)};
    return 1;
}

namespace {

int BeginBrowse(CrossBrowser* browser, bool isNgc, int objectClass, int suffixFilter) {
    const int wanted = objectClassToCrossClass(objectClass);
    if (wanted < 0) return 0;
    browser->file = isNgc ? openNgcCross() : openIcCross();
    if (!browser->file) return 0;
    browser->isNgc = isNgc;
    browser->wanted = wanted;
    browser->suffixFilter = suffixFilter;
    browser->row = 0;
    browser->slot = isNgc ? kNgcSlots : kIcSlots;  // nothing buffered yet
    return 1;
}

}  // namespace

int beginNgcBrowse(CrossBrowser* browser, int objectClass, int suffixFilter) {
    return BeginBrowse(browser, true, objectClass, suffixFilter);
}

int beginIcBrowse(CrossBrowser* browser, int objectClass, int suffixFilter) {
    return BeginBrowse(browser, false, objectClass, suffixFilter);
}

int nextCrossBrowse(CrossBrowser* browser, CrossBrowseRow* out) {
    if (!browser->file) return 0;
    const int slots = browser->isNgc ? kNgcSlots : kIcSlots;
    for (;;) {
        if (browser->slot >= slots) {
            const int read = browser->isNgc
                                 ? ReadRow<NgcCrossLayout>(browser->file.get(), browser->row, &browser->ngcRow)
                                 : ReadRow<IcCrossLayout>(browser->file.get(), browser->row, &browser->icRow);
            if (!read) return 0;
            ++browser->row;
            browser->slot = 0;
        }
        const int slot = browser->slot++;
        const int crossClass = browser->isNgc ? browser->ngcRow.crossClass[slot] : browser->icRow.crossClass[slot];
        const uint32_t record = browser->isNgc ? browser->ngcRow.record[slot] : browser->icRow.record[slot];
        if (crossClass != browser->wanted || record == 0) continue;
        if (browser->suffixFilter >= 0 && slot != browser->suffixFilter) continue;
        out->number = browser->row;
        out->suffix = slot;
        out->hit = {crossClass, static_cast<long>(record)};
        return 1;
    }
}

int beginMessierBrowse(MessierBrowser* browser, int objectClass) {
    browser->wanted = objectClassToCrossClass(objectClass);
    if (browser->wanted < 0) return 0;
    browser->file = openMessierCross();
    browser->number = 0;
    return browser->file ? 1 : 0;
}

int nextMessierBrowse(MessierBrowser* browser, int* messier, CrossHit* out) {
    if (!browser->file) return 0;
    while (browser->number < kMessierBrowseLast) {
        CrossHit hit;
        if (!lookupMessierCross(browser->file.get(), ++browser->number, &hit)) continue;
        if (hit.crossClass != browser->wanted) continue;
        *messier = browser->number;
        *out = hit;
        return 1;
    }
    return 0;
}

int beginCommonNameBrowse(CommonNameBrowser* browser, int objectClass, const char* pattern) {
    browser->objectClass = objectClass;
    browser->row = -1;
    browser->pattern[0] = '\0';
    if (pattern && std::strcmp(pattern, "*") != 0) {
        std::strncpy(browser->pattern, pattern, kCommonNameSize - 1);
        browser->pattern[kCommonNameSize - 1] = '\0';
    }
    browser->names = openCommonNames();
    browser->cross = openCommonNameCross();
    return browser->names && browser->cross ? 1 : 0;
}

int nextCommonNameBrowse(CommonNameBrowser* browser, int* row, char name[kCommonNameSize], CrossHit* out) {
    if (!browser->names || !browser->cross) return 0;
    while (browser->row + 1 < kCommonNameRows) {
        const int at = ++browser->row;
        CrossHit hit;
        if (!lookupCommonNameCross(browser->cross.get(), at, &hit)) continue;
        if (crossClassToObjectClass(hit.crossClass) != browser->objectClass) continue;
        if (!readCommonName(browser->names.get(), at, name)) return 0;
        if (browser->pattern[0] && !PrefixMatch(browser->pattern, name)) continue;
        *row = at;
        *out = hit;
        return 1;
    }
    return 0;
}
