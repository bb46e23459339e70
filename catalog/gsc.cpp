#include "catalog/gsc.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "astro/numeric.h"
#include "base/le_bytes.h"
#include "catalog/catalogue_files.h"

namespace {

struct Band {
    const char* name;
    int first;
    int last;
};

constexpr Band kBands[kGscBandCount] = {
    {"N0000", 1, 593},       {"N0730", 594, 1177},    {"N1500", 1178, 1728},
    {"N2230", 1729, 2258},   {"N3000", 2259, 2780},   {"N3730", 2781, 3245},
    {"N4500", 3246, 3651},   {"N5230", 3652, 4013},   {"N6000", 4014, 4293},
    {"N6730", 4294, 4491},   {"N7500", 4492, 4614},   {"N8230", 4615, 4662},
    {"S0000", 4663, 5259},   {"S0730", 5260, 5837},   {"S1500", 5838, 6411},
    {"S2230", 6412, 6988},   {"S3000", 6989, 7522},   {"S3730", 7523, 8021},
    {"S4500", 8022, 8463},   {"S5230", 8464, 8839},   {"S6000", 8840, 9133},
    {"S6730", 9134, 9345},   {"S7500", 9346, 9489},   {"S8230", 9490, 9537},
};

// Half the span of the largest box of each size class, in radians: the
// slot codes reach from the box's centre out to these.
constexpr double kRaSteps[2] = {0.08744099552491591, 0.26197392072434883};
constexpr double kDecSteps[3] = {0.01658062789394613, 0.022689280275926284,
                                 0.032812189937493394};
constexpr double kRaCentreCode = 262143.0;
constexpr double kDecCentreCode = 65535.0;
constexpr double kMagnitudeStep = 0.08941176470588236;
constexpr long kSlotSize = static_cast<long>(GscSlotLayout::kSize);
constexpr long kBoxSize = static_cast<long>(GscBoxLayout::kSize);

bool ValidBand(int band) { return band >= 0 && band < kGscBandCount; }

int LoadBand(GscCursor* cursor, int band) {
    if (cursor->band == band) return 1;
    cursor->band = -1;
    FilePtr file = openCatalogueFile(gscBandPath(kBands[band].name));
    if (!file) return 0;
    cursor->bandTable.resize(kGscBandTableBytes);
    const size_t bytes = static_cast<size_t>(kBands[band].last - kBands[band].first + 1) * kBoxSize;
    if (!readAt(file.get(), 0, cursor->bandTable.data(), bytes)) return 0;
    cursor->band = band;
    return 1;
}

// The box of a region of the loaded band.
GscBox BoxOf(const GscCursor& cursor, int region) {
    GscBox box;
    const size_t at = static_cast<size_t>(region - kBands[cursor.band].first) * kBoxSize;
    DecodeRecord<GscBoxLayout>(cursor.bandTable.data() + at, box);
    return box;
}

int OpenRegion(GscCursor* cursor, int region) {
    if (cursor->region == region && cursor->regionFile) return 1;
    cursor->region = -1;
    cursor->regionFile = openCatalogueFile(
        gscRegionPath(kBands[cursor->band].name, gscRegionFileNumber(region)));
    if (!cursor->regionFile) return 0;
    cursor->region = region;
    return 1;
}

bool AddRegion(GscRegionSet* set, int region) {
    const uint16_t r = static_cast<uint16_t>(region);
    if (std::find(set->regions, set->regions + set->count, r) != set->regions + set->count) {
        return true;
    }
    if (set->count >= kGscRegionSetCapacity) return false;
    set->regions[set->count++] = r;
    return true;
}

}  // namespace

const char* gscBandName(int band) { return ValidBand(band) ? kBands[band].name : ""; }
int gscBandFirstRegion(int band) { return ValidBand(band) ? kBands[band].first : 0; }
int gscBandLastRegion(int band) { return ValidBand(band) ? kBands[band].last : 0; }

int gscBandOfRegion(int region) {
    for (int b = 0; b < kGscBandCount; ++b) {
        if (region >= kBands[b].first && region <= kBands[b].last) return b;
    }
    return -1;
}

int gscRegionFileNumber(int region) {
    const int band = gscBandOfRegion(region);
    return band < 0 ? 0 : region - kBands[band].first + 1;
}

int gscBandOfDeclination(double degrees) {
    const int band = degrees >= 0 ? static_cast<int>(degrees * 2 / 15)
                                  : static_cast<int>(std::fabs(degrees) * 2 / 15) + 12;
    return std::min(band, kGscBandCount - 1);
}

int decodeGscSlot(const uint8_t* bytes, const GscBox& box, GscStar* out) {
    if (le::GetU24(bytes) == 0 && le::GetU24(bytes + 3) == 0) return kGscNoStar;
    GscSlot slot;
    DecodeRecord<GscSlotLayout>(bytes, slot);
    if (slot.isReference) {
        GscReferenceSlot reference;
        DecodeRecord<GscReferenceLayout>(bytes, reference);
        out->starNumber = static_cast<long>(reference.star);
        return kGscStarReference;
    }
    const double dra = static_cast<double>(box.raHigh) - box.raLow;
    const double decLow = std::min(box.decLow, box.decHigh);
    const double ddec = std::fabs(static_cast<double>(box.decHigh) - box.decLow);
    const double raCentre = (box.raLow + dra / 2) * kPi / 12;
    const double decCentre = (decLow + ddec / 2) * kPi / 180;
    const double raStep = kRaSteps[dra < 0.67 ? 0 : 1];
    const double decStep = kDecSteps[ddec < 1.9 ? 0 : ddec <= 2.6 ? 1 : 2];

    double ra = raCentre + (slot.raCode - kRaCentreCode) / kRaCentreCode * raStep;
    ra = std::fmod(ra, kTwoPi);
    if (ra < 0) ra += kTwoPi;
    const uint32_t decCode = (slot.decHigh << 8) | slot.decLow;
    out->ra = ra;
    out->dec = decCentre + (decCode - kDecCentreCode) / kDecCentreCode * decStep;
    out->magnitude = slot.magnitudeCode * kMagnitudeStep - 1.6;
    out->starClass = slot.starClass;
    return kGscPlainStar;
}

bool gscBoxContains(const GscBox& box, double hours, double degrees) {
    double ra1 = std::min(box.raLow, box.raHigh);
    double ra2 = std::max(box.raLow, box.raHigh);
    const double dec1 = std::min(box.decLow, box.decHigh);
    const double dec2 = std::max(box.decLow, box.decHigh);
    if (ra2 - ra1 >= 12) {
        ra1 += 24;
        if (hours < 12) hours += 24;
        std::swap(ra1, ra2);
    }
    return ra1 <= hours && hours <= ra2 && dec1 <= degrees && degrees <= dec2;
}

int gscCursorBox(GscCursor* cursor, int region, GscBox* out) {
    const int band = gscBandOfRegion(region);
    if (band < 0 || !LoadBand(cursor, band)) return 0;
    *out = BoxOf(*cursor, region);
    return 1;
}

int readGscStar(GscCursor* cursor, int region, long number, GscStar* out) {
    GscBox box;
    if (number < 1 || !gscCursorBox(cursor, region, &box)) return 0;
    if (!OpenRegion(cursor, region)) return 0;
    uint8_t slot[GscSlotLayout::kSize];
    if (!readAt(cursor->regionFile.get(), (number - 1) * kSlotSize, slot, sizeof slot)) return 0;
    *out = GscStar{};
    return decodeGscSlot(slot, box, out);
}

void closeGscCursor(GscCursor* cursor) {
    cursor->regionFile.reset();
    cursor->band = -1;
    cursor->region = -1;
}

int buildGscRegionSet(GscRegionSet* set, const GscSkyPoint* points, int pointCount) {
    set->count = 0;
    for (int i = 0; i < pointCount; ++i) {
        double hours = std::fmod(points[i].ra * 12 / kPi, 24.0);
        if (hours < 0) hours += 24;
        const double degrees = points[i].dec * 180 / kPi;
        const int band = gscBandOfDeclination(degrees);
        if (!LoadBand(&set->files, band)) continue;
        for (int region = kBands[band].first; region <= kBands[band].last; ++region) {
            if (!gscBoxContains(BoxOf(set->files, region), hours, degrees)) continue;
            if (!AddRegion(set, region)) return set->count;
        }
    }
    return set->count;
}
