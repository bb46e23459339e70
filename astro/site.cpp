#include "astro/site.h"

#include <cmath>
#include <cstring>

namespace {
constexpr double kFlattening = 0.00335281;
constexpr double kEquatorialRadiusMetres = 6378140.0;
constexpr double kDipPerRootMetre = -0.00061668;
constexpr size_t kNameMax = 32;
}  // namespace

int SiteInit(Site* site, double longitude, double latitude, double height, double nakedEyeLimit,
             double zoneHours, char* name) {
    if (!site) return 0;
    *site = Site{};
    site->longitude = longitude;
    site->latitude = latitude;
    site->height = height;
    site->nakedEyeLimit = nakedEyeLimit;
    site->zoneHours = zoneHours;

    site->sinLatitude = std::sin(latitude);
    site->cosLatitude = std::cos(latitude);
    const double h = height / kEquatorialRadiusMetres;
    const double u =
        site->cosLatitude == 0.0 ? 0.0 : std::atan((1.0 - kFlattening) * std::tan(latitude));
    site->rhoSinPhi = (1.0 - kFlattening) * std::sin(u) + h * site->sinLatitude;
    site->rhoCosPhi = std::cos(u) + h * site->cosLatitude;
    // A site below sea level sees no dip.
    site->horizonDip = kDipPerRootMetre * std::sqrt(height > 0.0 ? height : 0.0);

    site->dstStartHour = 2.0f;
    site->dstEndHour = 2.0f;
    site->dstShiftHours = 1.0f;
    site->dstStartWeekday = 0;
    site->dstEndWeekday = 0;
    site->dstStartWeek = 0;
    site->dstEndWeek = 3;
    site->dstStartMonth = 4;
    site->dstEndMonth = 10;
    site->dstMode = 0;

    if (name) {
        if (std::strlen(name) > kNameMax) name[kNameMax] = '\0';
        std::strcpy(site->name, name);
    }
    return 1;
}

int SiteSetDst(Site* site, int startWeek, int startWeekday, int startMonth, double startHour,
               int endWeek, int endWeekday, int endMonth, double endHour, double shiftHours,
               int mode) {
    if (!site || mode < 0 || mode > 2) return 0;
    if (mode == 2) {
        if (startWeek < 0 || startWeek > 1) return 0;
        if (startWeekday < 0 || startWeekday > 6 || endWeekday < 0 || endWeekday > 6) return 0;
        if (startMonth < 1 || startMonth > 12 || endMonth < 1 || endMonth > 12) return 0;
        if (endWeek < 0 || endWeek > 3) return 0;
    }
    site->dstStartWeek = static_cast<uint8_t>(startWeek);
    site->dstStartWeekday = static_cast<uint8_t>(startWeekday);
    site->dstStartMonth = static_cast<uint8_t>(startMonth);
    site->dstStartHour = static_cast<float>(startHour);
    site->dstEndWeek = static_cast<uint8_t>(endWeek);
    site->dstEndWeekday = static_cast<uint8_t>(endWeekday);
    site->dstEndMonth = static_cast<uint8_t>(endMonth);
    site->dstEndHour = static_cast<float>(endHour);
    site->dstShiftHours = static_cast<float>(shiftHours);
    site->dstMode = static_cast<uint8_t>(mode);
    return 1;
}

int SiteSetDst(Site* site, const DstRule& r) {
    return SiteSetDst(site, r.startWeek, r.startWeekday, r.startMonth, r.startHour, r.endWeek,
                      r.endWeekday, r.endMonth, r.endHour, r.shiftHours, r.mode);
}
