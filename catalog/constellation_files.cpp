#include "catalog/constellation_files.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>
#include <vector>

#include "astro/numeric.h"
#include "astro/precession.h"
#include "astro/spherical.h"
#include "base/prefix_match.h"
#include "base/store_damage.h"
#include "catalog/catalogue_codes.h"
#include "catalog/catalogue_files.h"
#include "catalog/index_runs.h"

namespace {

// The epoch of the constellation boundaries, B1875.0, in Julian centuries
// from J2000.0.
constexpr double kBoundaryEpoch = -1.2499794661190966;

template <class Layout, class R>
int ReadAt(FILE* file, long offset, R* out) {
    uint8_t image[Layout::kSize];
    if (!readAt(file, offset, image, sizeof image)) return 0;
    DecodeRecord<Layout>(image, *out);
    return 1;
}

// The great-circle distance between the two RA bounds at one declination.
double WidthAt(double raSpan, double dec) { return Separation(0.0, dec, raSpan, dec); }

}  // namespace

FilePtr openConstellationNames() { return openCatalogue(kCatConnames); }
FilePtr openConstellationBounds() { return openCatalogue(kCatConbound); }
FilePtr openConstellationRectangles() { return openCatalogue(kCatConrect); }

int readConstellationName(FILE* file, int zone, ConstellationLabel* out) {
    ConstellationNameRecord record;
    if (zone < 0 || zone >= kConstellationZoneLimit) return 0;
    if (!ReadAt<ConstellationNameLayout>(file, zone * static_cast<long>(ConstellationNameLayout::kSize), &record))
        return 0;
    out->zone = zone;
    out->name = std::string(record.name, strnlen(record.name, sizeof record.name));
    out->ra = scaledAngleToRadians(record.ra);
    out->dec = scaledAngleToRadians(record.dec);
    return 1;
}

int findConstellationName(FILE* file, const char* text) {
    if (!text || !*text) return -1;
    ConstellationLabel label;
    for (int zone = 0; zone < kConstellationZoneLimit; ++zone) {
        if (!readConstellationName(file, zone, &label)) return -1;
        if (PrefixMatch(text, label.name.c_str())) return zone;
    }
    return -1;
}

int readConstellationBox(FILE* file, int zone, ConstellationData* out) {
    ConstellationBoxRecord box;
    if (zone < 0 || zone >= kConstellationZoneLimit) return 0;
    if (!ReadAt<ConstellationBoxLayout>(file, zone * static_cast<long>(ConstellationBoxLayout::kSize), &box))
        return 0;
    out->zone = zone;
    out->raLow = scaledAngleToRadians(box.raLow);
    out->raHigh = scaledAngleToRadians(box.raHigh);
    out->decLow = scaledAngleToRadians(box.decLow);
    out->decHigh = scaledAngleToRadians(box.decHigh);
    // The box runs eastward from its low RA; across 0h the high bound is
    // the smaller number.
    const double span = Wrap(out->raHigh - out->raLow, kTwoPi);
    out->ra = Wrap(out->raLow + span / 2, kTwoPi);
    out->dec = (out->decLow + out->decHigh) / 2;
    out->magnitude = 0;
    out->magnitude2 = 99.9;
    out->sizeMajor = std::max({WidthAt(span, out->decHigh), WidthAt(span, out->dec), WidthAt(span, out->decLow)});
    out->sizeMinor = Separation(out->raLow, out->decLow, out->raLow + span, out->decHigh);
    out->sizeDefault = std::max(out->sizeMajor, out->sizeMinor);
    return 1;
}

bool constellationRectangleHolds(double raFirst, double raSecond, double decFirst, double decSecond, double ra,
                                 double dec) {
    if (std::fabs(raFirst - raSecond) >= kPi) {
        raFirst += kTwoPi;
        if (ra < kPi) ra += kTwoPi;
        std::swap(raFirst, raSecond);
    }
    return raFirst <= ra && ra <= raSecond && decFirst <= dec && dec <= decSecond;
}

int constellationOfB1875Place(FILE* conrect, double ra, double dec) {
    if (!conrect) return -1;
    // The file is small (the heads of 89 zones and their rectangles): one
    // read of all of it, then the walk in memory, costs far less than a seek
    // and read for each head and rectangle.
    const int64_t size = StreamSize(conrect);
    if (size <= 0) return -1;
    std::vector<uint8_t> bytes(static_cast<size_t>(size));
    if (!readAt(conrect, 0, bytes.data(), bytes.size())) return -1;
    const auto holds = [&](size_t at, size_t width) { return at + width <= bytes.size(); };
    for (int zone = 0; zone < kConstellationZones; ++zone) {
        const size_t headAt = static_cast<size_t>(zone) * ShortRunLayout::kSize;
        if (!holds(headAt, ShortRunLayout::kSize)) return -1;
        ShortRunHead run;
        DecodeRecord<ShortRunLayout>(bytes.data() + headAt, run);
        for (long i = 0; i < run.count; ++i) {
            const size_t at =
                static_cast<size_t>(run.offset) + static_cast<size_t>(i) * ConstellationRectangleLayout::kSize;
            if (!holds(at, ConstellationRectangleLayout::kSize)) return -1;
            ConstellationRectangleRecord r;
            DecodeRecord<ConstellationRectangleLayout>(bytes.data() + at, r);
            if (constellationRectangleHolds(scaledAngleToRadians(r.raFirst), scaledAngleToRadians(r.raSecond),
                                            scaledAngleToRadians(r.decFirst), scaledAngleToRadians(r.decSecond),
                                            ra, dec))
                return zone;
        }
    }
    return -1;
}

void precessToBoundaryEpoch(double* ra, double* dec) {
    PrecessionContext context;
    PrecessionPrepare(&context, 0.0, kBoundaryEpoch, kFk5, kFk5);
    PrecessionApply(&context, ra, dec, 0.0, 0.0, 0);
}

int constellationOfPlace(double ra, double dec) {
    precessToBoundaryEpoch(&ra, &dec);
    FilePtr conrect = openConstellationRectangles();
    return constellationOfB1875Place(conrect.get(), ra, dec);
}
