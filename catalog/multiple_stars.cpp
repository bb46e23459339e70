#include "catalog/multiple_stars.h"

#include <cmath>
#include <cstdio>
#include <cstring>

#include "base/le_bytes.h"
#include "catalog/catalogue_files.h"

namespace {

// The search of ccdm_i starts in the middle of the file and gives up after
// this many reads.
constexpr long kCcdmSearchStart = 18684;
constexpr int kCcdmSearchSteps = 50;

// The Dec part with its sign as one ordered number; -0000 sorts below
// +0000 so that the two stay distinct keys.
long SignedDec(uint16_t decPart, bool north) {
    return north ? static_cast<long>(decPart) : -static_cast<long>(decPart) - 1;
}

int CompareCcdm(const CcdmIndexRow& row, uint16_t raPart, uint16_t decPart, bool north) {
    if (row.ccdmRa != raPart) return row.ccdmRa < raPart ? -1 : 1;
    const long have = SignedDec(row.ccdmDec, row.ccdmNorth != 0);
    const long want = SignedDec(decPart, north);
    if (have != want) return have < want ? -1 : 1;
    return 0;
}

}  // namespace

double hundredthsMagnitude(int16_t code) { return code == kHundredthsUnknown ? 99.9 : code * 0.01; }

int componentCount(const CcdmIndexRow& row) {
    return row.componentsPlusOne > 0 ? row.componentsPlusOne - 1 : 0;
}

double componentPositionAngle(const CcdmComponent& c) {
    return c.positionAngleCode / 65535.0 * 361.0;
}

bool componentHasPositionAngle(const CcdmComponent& c) {
    return componentPositionAngle(c) < 361.0;
}

double componentSeparation(const CcdmComponent& c) { return c.separationCode * 0.001; }

uint32_t componentGscNumber(const CcdmComponent& c) { return c.star & 0x3FFF; }
uint32_t componentGscRegion(const CcdmComponent& c) { return c.star >> 14; }

int struveNumberOf(const CcdmComponent& c) {
    char text[sizeof c.discoverer + 1];
    std::memcpy(text, c.discoverer, sizeof c.discoverer);
    text[sizeof c.discoverer] = '\0';
    int number = 0;
    return std::sscanf(text, "STF %d", &number) == 1 ? number : 0;
}

FilePtr openStruve() { return openCatalogue(kCatStruve); }
FilePtr openAdsCcdm() { return openCatalogue(kCatAdsCcdm); }
FilePtr openCcdmIndex() { return openCatalogue(kCatCcdmI); }
FilePtr openCcdmComponents() { return openCatalogue(kCatCcdm); }

long lookupStruve(FILE* file, long struve) {
    if (struve < 1 || struve > kLastStruve) return 0;
    uint8_t b[kStruveSlot];
    if (!readAt(file, (struve - 1) * kStruveSlot, b, sizeof b)) return 0;
    const uint16_t row = le::GetU16(b);
    return row == kStruveNone ? 0 : row;
}

int lookupAdsCcdm(FILE* file, long ads, long out[2]) {
    out[0] = out[1] = 0;
    if (ads < 1 || ads > kLastAds) return 0;
    uint8_t image[AdsCcdmLayout::kSize];
    if (!readAt(file, (ads - 1) * static_cast<long>(AdsCcdmLayout::kSize), image, sizeof image))
        return 0;
    AdsCcdmRow row;
    DecodeRecord<AdsCcdmLayout>(image, row);
    int found = 0;
    for (int i = 0; i < 2; ++i) {
        out[i] = static_cast<long>(row.rows[i]);
        if (row.rows[i] != 0) ++found;
    }
    return found;
}

int readCcdmIndex(FILE* file, long row, CcdmIndexRow* out) {
    if (!out || row < 1 || row > kLastCcdmRow) return 0;
    uint8_t image[CcdmIndexLayout::kSize];
    if (!readAt(file, (row - 1) * static_cast<long>(CcdmIndexLayout::kSize), image, sizeof image))
        return 0;
    DecodeRecord<CcdmIndexLayout>(image, *out);
    return 1;
}

long findCcdm(FILE* file, uint16_t raPart, uint16_t decPart, bool north) {
    // A binary search with a real-valued step: the step halves every round
    // and the position moves by its rounded value, so that near the end it
    // keeps reading the same row until the rounds run out.
    double step = kCcdmSearchStart;
    long position = kCcdmSearchStart;
    for (int round = 0; round < kCcdmSearchSteps; ++round) {
        if (position < 0 || position > kLastCcdmRow) return 0;
        uint8_t image[CcdmIndexLayout::kSize];
        if (!readAt(file, (position - 1) * static_cast<long>(CcdmIndexLayout::kSize), image,
                    sizeof image))
            return 0;
        CcdmIndexRow row;
        DecodeRecord<CcdmIndexLayout>(image, row);
        const int order = CompareCcdm(row, raPart, decPart, north);
        if (order == 0) return position;
        step *= 0.5;
        position += order < 0 ? std::lround(step) : -std::lround(step);
    }
    return -1;
}

int readCcdmComponents(FILE* file, const CcdmIndexRow& row, std::vector<CcdmComponent>* out) {
    if (!out) return 0;
    out->clear();
    const int count = componentCount(row);
    if (count == 0) return 1;
    std::vector<uint8_t> images(count * CcdmComponentLayout::kSize);
    if (!readAt(file, static_cast<long>(row.componentOffset), images.data(), images.size()))
        return 0;
    out->resize(count);
    for (int i = 0; i < count; ++i) {
        const uint8_t* image = images.data() + i * CcdmComponentLayout::kSize;
        DecodeRecord<CcdmComponentLayout>(image, (*out)[i]);
    }
    return 1;
}

CcdmHandle openCcdm() {
    auto files = std::make_unique<CcdmFiles>();
    files->index = openCcdmIndex();
    files->components = openCcdmComponents();
    if (!files->index || !files->components) return nullptr;
    return files;
}

void closeCcdm(CcdmHandle& handle) { handle.reset(); }

int readCcdmSystem(CcdmFiles* files, long row, CcdmIndexRow* system,
                   std::vector<CcdmComponent>* components) {
    if (!files || !system) return 0;
    if (!readCcdmIndex(files->index.get(), row, system)) return 0;
    return readCcdmComponents(files->components.get(), *system, components);
}
