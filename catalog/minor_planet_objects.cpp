#include "catalog/minor_planet_objects.h"

#include "astro/orbit.h"
#include "astro/orbit_place.h"
#include "astro/planet_series.h"
#include "catalog/minor_planet_files.h"
#include "catalog/user_minor_planets.h"

int readMinorPlanetObject(ObjectRecord* r, uint32_t pid, const Instant* instant, double* distanceAu) {
    if (!r || !instant || !PlanetSeriesLoaded()) return 0;
    MpCursor cursor;
    if (!openMpCursor(&cursor)) return 0;
    MpPlace place;
    const int answer = orbitOfMinorPlanet(&cursor, instant, pid, &place);
    closeMpCursor(&cursor);
    if (answer != 1) return 0;
    setPointPlace(r, pid, place.ra, place.dec, place.magnitude);
    *distanceAu = place.geoDistance;
    return 1;
}

int userMpPlace(FILE* store, uint32_t pid, const Instant* instant, double* ra, double* dec,
                double* distanceAu, double* magnitude) {
    UserMpRecord row;
    if (!instant || !PlanetSeriesLoaded() || !userMpRowForInstant(store, pid, instant->tDyn, &row, nullptr))
        return 0;
    UserMpElements e;
    unpackUserMp(row, &e);
    OrbitRecord orbit;
    if (!OrbitInit(&orbit, e.perihelionEpoch, e.epoch, 0.0, e.semiMajorAxis, e.perihelionDistance,
                   e.eccentricity, e.argPerihelion, e.node, e.inclination, 0.0, e.h, e.g, 2))
        return 0;
    OrbitVectors(&orbit);
    *magnitude = 99.9;
    return OrbitGeocentric(instant, &orbit, ra, dec, distanceAu, nullptr, nullptr, magnitude, nullptr);
}

int readUserMinorPlanetObject(ObjectRecord* r, uint32_t pid, const Instant* instant,
                              double* distanceAu) {
    if (!r || !FileExists(kUserMpPath)) return 0;
    FilePtr store = openUserMp(nullptr);
    double ra = 0, dec = 0, distance = 0, magnitude = 99.9;
    if (!store || !userMpPlace(store.get(), pid, instant, &ra, &dec, &distance, &magnitude)) return 0;
    setPointPlace(r, pid, ra, dec, magnitude);
    *distanceAu = distance;
    return 1;
}
