#include "catalog/supplemental_store.h"

#include "astro/spherical.h"
#include "catalog/constellation_files.h"

namespace {

bool InAnyList(double ra, double dec, const std::vector<std::vector<SupplementalRectangle>>& lists) {
    precessToBoundaryEpoch(&ra, &dec);
    for (const auto& list : lists) {
        const size_t n = std::min(list.size(), kScanRectanglesPerList);
        for (size_t i = 0; i < n; ++i) {
            const SupplementalRectangle& r = list[i];
            if (constellationRectangleHolds(r.raFirst, r.raSecond, r.decFirst, r.decSecond, ra, dec)) return true;
        }
    }
    return false;
}

// A limit below 90 skips a record without a magnitude (90 and above) and
// one on the wrong side of it.
bool OutsideMagnitude(double magnitude, double limit, bool isLower) {
    if (limit >= 90.0) return false;
    if (magnitude > 90.0) return true;
    return isLower ? magnitude < limit : magnitude > limit;
}

}  // namespace

void supplementalPlaceOut(const char (&name)[33], const SupplementalPlace& place, std::string* nameOut,
                          double* raOut, double* decOut, double* magOut) {
    char text[34];
    supplementalNameText(name, text);
    if (nameOut) *nameOut = text;
    if (raOut) *raOut = place.ra;
    if (decOut) *decOut = place.dec;
    if (magOut) *magOut = place.magnitude;
}

bool supplementalScanPasses(const SupplementalPlace& place, const SupplementalScanLimits& limits) {
    if (OutsideMagnitude(place.magnitude, limits.magnitudeLow, true)) return false;
    if (OutsideMagnitude(place.magnitude, limits.magnitudeHigh, false)) return false;
    if ((limits.flags & kScanConstellations) && !InAnyList(place.ra, place.dec, limits.constellations))
        return false;
    if ((limits.flags & kScanDistance) &&
        Separation(place.ra, place.dec, limits.centreRa, limits.centreDec) > limits.distance)
        return false;
    return true;
}
