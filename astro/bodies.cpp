#include "astro/bodies.h"

#include <cmath>
#include <cstring>

#include "astro/apparent_place.h"
#include "astro/frames.h"
#include "astro/numeric.h"
#include "astro/parallax.h"
#include "astro/precession.h"
#include "astro/spherical.h"

namespace {

struct NameRow {
    const char* table;
    const char* text;
};

constexpr NameRow kNameRows[] = {
#include "data/name_tables.inc"
};

// Centuries of light time per astronomical unit.
constexpr double kLightTimePerAu = 1.581250732375086e-07;
// The J2000 obliquity that Pluto's place, referred to J2000, is turned with.
constexpr double kJ2000Obliquity = 0.40909280420293637;
constexpr double kKmPerAu = 149597870.0;
constexpr double kSolarSemiDiameter = 0.004652417528;
constexpr double kEarthRadiusKm = 6378.14;

void StoreGeocentric(const double geo[3], BodyState* body) {
    body->geoLongitude = geo[0];
    body->geoLatitude = geo[1];
    body->geoDistance = geo[2];
}

void StoreHeliocentric(const double helio[3], BodyState* body) {
    body->helioLongitude = helio[0];
    body->helioLatitude = helio[1];
    body->helioRadius = helio[2];
}

// Pluto's place is on the J2000 ecliptic: turned to the J2000 equator with
// that epoch's obliquity, then precessed to the date.
void PlutoMeanPlace(Instant* instant, BodyState* body) {
    const double obliquity = instant->meanObliquity;
    instant->meanObliquity = kJ2000Obliquity;
    EclipticToEquatorial(instant, body->geoLongitude, body->geoLatitude, &body->meanRa, &body->meanDec, 1);
    PrecessionContext context;
    PrecessionPrepare(&context, 0.0, instant->tDyn, kFk5, kFk5);
    PrecessionApply(&context, &body->meanRa, &body->meanDec, 0.0, 0.0, 0);
    instant->meanObliquity = obliquity;
}

}  // namespace

const char* BodyName(int index) {
    if (index < 0 || index >= kBodyCount) return nullptr;
    int n = 0;
    for (const NameRow& r : kNameRows)
        if (std::strcmp(r.table, "body") == 0 && n++ == index) return r.text;
    return nullptr;
}

void EarthShadow(double sunDistance, double moonDistanceAu, double sunSemiDiameter, double* umbra,
                 double* penumbra) {
    constexpr double kEarthRadiusAu = 4.263521265e-05;
    const double a = 0.99834 * SafeAsin(kEarthRadiusAu / moonDistanceAu);
    const double b = SafeAsin(kEarthRadiusAu / sunDistance);
    *umbra = 1.02 * (a + b - sunSemiDiameter);
    *penumbra = 1.02 * (a + b + sunSemiDiameter);
}

int BodyPlace(Instant* instant, const double earth[3], BodyState* body) {
    if (!instant || !earth || !body) return 0;
    const int id = body->bodyId;
    body->name = BodyName(id);
    body->satelliteCount = 0;
    if (id == kMoon) return MoonPlace(instant, body);

    double helio[3] = {0.0, 0.0, 0.0};
    if (id != kSun && id != kEarthShadow) HelioSpherical(id, instant->tDyn, helio);
    StoreHeliocentric(helio, body);
    if (id == kEarth) return 1;

    double earthNow[3] = {earth[0], earth[1], earth[2]};
    if (id == kPluto) HelioSpherical(0, instant->tDyn, earthNow);
    double geo[3];
    VectorDifference(helio, earthNow, geo);
    if (id >= kMercury && id <= kPluto) {
        HelioSpherical(id, instant->tDyn - geo[2] * kLightTimePerAu, helio);
        StoreHeliocentric(helio, body);
        VectorDifference(helio, earthNow, geo);
    }
    StoreGeocentric(geo, body);

    if (id == kEarthShadow) {
        // The point opposite the Sun, at the Moon's distance.
        const double sunDistance = geo[2];
        BodyState moon;
        moon.bodyId = kMoon;
        MoonPlace(instant, &moon);
        body->geoLongitude = geo[0] + kPi;
        body->geoLatitude = -geo[1];
        body->geoDistance = body->topoDistance = moon.geoDistance;
        double umbra = 0.0, penumbra = 0.0;
        EarthShadow(sunDistance, moon.geoDistance / kKmPerAu, kSolarSemiDiameter, &umbra, &penumbra);
        body->equatorialDiameter = 2.0 * umbra;
        body->polarDiameter = 2.0 * penumbra;
    }

    if (id == kPluto)
        PlutoMeanPlace(instant, body);
    else
        EclipticToEquatorial(instant, body->geoLongitude, body->geoLatitude, &body->meanRa, &body->meanDec, 1);
    body->meanRa = Wrap(body->meanRa, kTwoPi);
    return 1;
}

void BodyApparent(const Site* site, const Instant* instant, BodyState* body) {
    if (!site || !instant || !body) return;
    double ra = 0.0, dec = 0.0;
    if (body->bodyId == kPluto) {
        double longitude = 0.0, latitude = 0.0;
        EquatorialToEcliptic(instant, body->meanRa, body->meanDec, &longitude, &latitude, 1);
        EclipticToEquatorial(instant, longitude + instant->nutLongitude, latitude, &ra, &dec, 2);
    } else {
        EclipticToEquatorial(instant, body->geoLongitude + instant->nutLongitude, body->geoLatitude, &ra, &dec,
                             2);
    }
    if (body->bodyId == kMoon || body->bodyId == kEarthShadow) {
        ParallaxRigorous(site, instant, kEarthRadiusKm / body->geoDistance, &ra, &dec, &body->topoDistance);
        ra = Wrap(ra, kTwoPi);
        if (dec > kPi) dec -= kTwoPi;
    } else {
        AberrationApply(instant, &ra, &dec, 1, 1);
        ApplyParallax(site, instant, body->geoDistance, &ra, &dec);
        ra = Wrap(ra, kTwoPi);
    }
    body->apparentRa = ra;
    body->apparentDec = dec;
}
