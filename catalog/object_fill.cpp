#include "catalog/object_fill.h"

#include <algorithm>
#include <numbers>
#include <vector>

#include "astro/bodies.h"
#include "astro/orbit_place.h"
#include "astro/planet_series.h"
#include "astro/precession.h"
#include "catalog/catalogue_codes.h"
#include "catalog/catalogue_files.h"
#include "catalog/comet_orbit.h"
#include "catalog/cluster_files.h"
#include "catalog/constellation_files.h"
#include "catalog/dark_nebula_files.h"
#include "catalog/galaxy_files.h"
#include "catalog/minor_planet_objects.h"
#include "catalog/nebula_files.h"
#include "catalog/planetary_files.h"
#include "catalog/quasar_files.h"
#include "catalog/double_star_orbits.h"
#include "catalog/gsc.h"
#include "catalog/multiple_stars.h"
#include "catalog/object_place.h"
#include "catalog/star_file.h"
#include "catalog/user_deep_sky.h"
#include "catalog/user_stars.h"

namespace {

constexpr double kArcsecToRadians = std::numbers::pi / 648000.0;

int ReadGscObject(ObjectRecord* r, uint32_t pid, const Instant* instant) {
    const int region = static_cast<int>((pid >> 14) & 0x3FFF);
    const long number = static_cast<long>(pid & 0x3FFF);
    GscCursor cursor;
    GscStar star;
    const int answer = readGscStar(&cursor, region, number, &star);
    if (answer == kGscStarReference) return readStarObject(r, static_cast<uint32_t>(star.starNumber), instant);
    if (answer != kGscPlainStar) return 0;
    r->pid = pid;
    r->raJ2000 = star.ra;
    r->decJ2000 = star.dec;
    r->magnitude = static_cast<float>(star.magnitude);
    r->pmRa = r->pmDec = 0;
    r->sizeDefault = 0;
    r->classMask = classMaskOf(kClassStar);
    return 1;
}

// The current separation of each component, in arc seconds; the largest,
// or the named component's alone.
double ComponentSeparation(const std::vector<CcdmComponent>& components, int named,
                           double baseRa, double baseDec, double year, bool* hasOrbit) {
    LpHandle orbits = openDoubleStarOrbits();
    double widest = 0;
    for (size_t i = 0; i < components.size(); ++i) {
        if (components[i].lpIndexRow != 0) *hasOrbit = true;
        if (named >= 0 && static_cast<int>(i) != named) continue;
        double angle = 0, separation = 0;
        componentOffsetAt(orbits.get(), components[i], baseRa, baseDec, year, &angle, &separation);
        widest = std::max(widest, separation);
    }
    if (orbits) closeDoubleStarOrbits(orbits);
    return widest;
}

// What every deep-sky data record shares: the J2000 place, the magnitude and
// the sizes.
template <class Data>
void TakeCommon(ObjectRecord* r, uint32_t pid, const Data& d) {
    r->pid = pid;
    r->raJ2000 = d.ra;
    r->decJ2000 = d.dec;
    r->pmRa = r->pmDec = 0;
    r->magnitude = static_cast<float>(d.magnitude);
    if constexpr (requires { d.magnitude2; }) r->magnitude2 = static_cast<float>(d.magnitude2);
    if constexpr (requires { d.sizeMajor; }) {
        r->sizeMajor = static_cast<float>(d.sizeMajor);
        r->sizeMinor = static_cast<float>(d.sizeMinor);
        r->sizeDefault = static_cast<float>(d.sizeDefault);
    } else {
        r->sizeMajor = r->sizeMinor = r->sizeDefault = 0;
    }
}

// Opens the class's main file and reads record `pid` through `read`.
template <class Data, class Open, class Read>
int ReadDeepSky(ObjectRecord* r, uint32_t pid, Open open, Read read) {
    FilePtr file = open();
    Data data;
    if (!file || !read(file.get(), static_cast<long>(pid), &data, kReadAll)) return 0;
    TakeCommon(r, pid, data);
    return 1;
}

int ReadConstellation(ObjectRecord* r, uint32_t pid) {
    FilePtr file = openConstellationBounds();
    ConstellationData data;
    if (pid > 88 || !file || !readConstellationBox(file.get(), static_cast<int>(pid), &data)) return 0;
    TakeCommon(r, pid, data);
    return 1;
}

// A comet of class 3 or 13 on its orbit at the instant: the J2000 place with
// light time, the magnitude by its law, and the distance from the Earth in
// au for the parallax of the common tail. PID 0 is a valid reference comet.
// No law for the coma's diameter is known to this program, nor what the
// record's small coefficient stands for: the coefficient is read, kept and
// handed out by the orbit lookup, but no size is made from it, so a comet's
// sizes stay 0 rather than show a made-up diameter.
int ReadComet(ObjectRecord* r, const Site* site, const Instant* instant, double* distanceAu) {
    OrbitRecord orbit;
    if (!PlanetSeriesLoaded() || !orbitOfComet(site, instant, r->objectClass, r->pid, &orbit))
        return 0;
    double ra = 0, dec = 0, delta = 0, magnitude = 0;
    if (!OrbitGeocentric(instant, &orbit, &ra, &dec, &delta, nullptr, nullptr, &magnitude, nullptr))
        return 0;
    setPointPlace(r, r->pid, ra, dec, magnitude);
    *distanceAu = delta;
    return 1;
}

// A major body of the solar system, PID 0 to 11 the body id: its mean place
// of date taken back to J2000, and its distance in au for the parallax of
// the common tail. The Earth has no place seen from itself and keeps 0.
int ReadMajorBody(ObjectRecord* r, uint32_t pid, const Instant* instant, double* distanceAu) {
    if (pid >= static_cast<uint32_t>(kBodyCount) || !PlanetSeriesLoaded()) return 0;
    if (pid == kMoon || pid == kEarthShadow) {
        if (!MoonTableLoaded()) return 0;
    }
    if (pid == kPluto && !PlutoTableLoaded()) return 0;
    Instant at = *instant;  // BodyPlace lends Pluto the J2000 obliquity for the call
    double earth[3];
    EarthHeliocentric(&at, earth);
    BodyState body;
    body.bodyId = static_cast<int16_t>(pid);
    if (!BodyPlace(&at, earth, &body)) return 0;
    double ra = body.meanRa, dec = body.meanDec;
    PrecessionContext back;
    PrecessionPrepare(&back, instant->tDyn, 0.0, kFk5, kFk5);
    PrecessionApply(&back, &ra, &dec, 0.0, 0.0, 0);
    r->pid = pid;
    r->raJ2000 = pid == kEarth ? 0.0 : ra;
    r->decJ2000 = pid == kEarth ? 0.0 : dec;
    r->pmRa = r->pmDec = 0;
    // The magnitudes and discs come with the physical data of the bodies;
    // the shadow's cone is known here.
    r->magnitude = r->magnitude2 = 99.9f;
    r->sizeMajor = static_cast<float>(body.equatorialDiameter);
    r->sizeMinor = static_cast<float>(body.polarDiameter);
    r->sizeDefault = r->sizeMajor;
    const bool inKilometres = pid == kMoon || pid == kEarthShadow;
    *distanceAu = inKilometres ? body.geoDistance / 149597870.0 : body.geoDistance;
    return 1;
}

}  // namespace

int readStarObject(ObjectRecord* r, uint32_t pid, const Instant* instant) {
    if (!r) return 0;
    if (pid & kGscPidFlag) return ReadGscObject(r, pid, instant);
    FilePtr file = openStars();
    StarData star;
    if (!file || !readStar(file.get(), static_cast<long>(pid), &star, kReadAll)) return 0;
    r->pid = pid;
    r->raJ2000 = star.ra;
    r->decJ2000 = star.dec;
    r->pmRa = static_cast<float>(star.pmRa);
    r->pmDec = static_cast<float>(star.pmDec);
    r->magnitude = static_cast<float>(star.magnitude);
    r->magnitude2 = 99.9f;
    r->sizeMajor = r->sizeMinor = r->sizeDefault = 0;

    bool hasCcdm = false, hasOrbit = false;
    if (star.ccdmRow != 0) {
        CcdmHandle ccdm = openCcdm();
        CcdmIndexRow system;
        std::vector<CcdmComponent> components;
        if (ccdm && readCcdmSystem(ccdm.get(), static_cast<long>(star.ccdmRow), &system, &components)) {
            hasCcdm = true;
            int named = getComponent(r);
            if (named >= static_cast<int>(components.size())) named = -1;
            const double year = instant ? instant->decimalYear : 2000.0;
            const double separation =
                ComponentSeparation(components, named, star.ra, star.dec, year, &hasOrbit);
            r->sizeDefault = static_cast<float>(separation * kArcsecToRadians);
        }
        if (ccdm) closeCcdm(ccdm);
    }
    const bool isVariable = star.vrefIndex != 0 || star.nsv != 0;
    r->classMask = classMaskOf(kClassStar, hasCcdm, hasOrbit, isVariable);
    return 1;
}

int refillByIdentity(ObjectRecord* r, double riseSetStart, double riseSetEnd, const Site* site,
                     const Instant* instant) {
    (void)riseSetStart;
    (void)riseSetEnd;
    if (!r) return 0;
    const int objectClass = r->objectClass;
    r->classMask = classMaskOf(objectClass);
    const bool needsSite = objectClass == kClassMajorBody || objectClass == kClassComet ||
                           objectClass == kClassMinorPlanet || objectClass == kClassStar ||
                           objectClass == kClassSupplementalStar ||
                           objectClass == kClassUserComet || objectClass == kClassUserMinorPlanet;
    if (needsSite && (!site || !instant)) return 0;
    int count = 0;
    double distanceAu = 0.0;
    switch (objectClass) {
        case kClassMajorBody:
            count = ReadMajorBody(r, r->pid, instant, &distanceAu);
            break;
        case kClassStar:
            count = readStarObject(r, r->pid, instant);
            break;
        case kClassFixedPosition:
            r->raJ2000 = scaledAngleToRadians(r->fixedRa);
            r->decJ2000 = scaledAngleToRadians(r->fixedDec);
            r->pid = 0;
            r->sizeMajor = r->sizeMinor = r->sizeDefault = 0;
            r->magnitude = r->magnitude2 = 99.9f;
            count = 1;
            break;
        case kClassConstellation:
            count = ReadConstellation(r, r->pid);
            break;
        case kClassGalaxy:
            count = ReadDeepSky<GalaxyData>(r, r->pid, openGalaxies, readGalaxy);
            break;
        case kClassGalaxyGroup:
            count = ReadDeepSky<GroupData>(r, r->pid, openGroups, readGroup);
            break;
        case kClassQuasar:
            count = ReadDeepSky<QuasarData>(r, r->pid, openQuasars, readQuasar);
            break;
        case kClassPlanetary:
            count = ReadDeepSky<PlanetaryData>(r, r->pid, openPlanetaries, readPlanetary);
            break;
        case kClassDiffuseNebula:
            count = ReadDeepSky<NebulaData>(r, r->pid, openNebulae, readNebula);
            break;
        case kClassOpenCluster:
            count = ReadDeepSky<OpenClusterData>(r, r->pid, openOpenClusters, readOpenCluster);
            break;
        case kClassGlobular:
            count = ReadDeepSky<GlobularData>(r, r->pid, openGlobulars, readGlobular);
            break;
        case kClassDarkNebula:
            count = ReadDeepSky<DarkNebulaData>(r, r->pid, [] { return openDn(0); }, readDarkNebula);
            break;
        case kClassSupplementalStar:
            count = readStellarObject(r, r->pid);
            break;
        case kClassSupplementalDeepSky:
            count = readUdsObject(r, r->pid);
            break;
        case kClassComet:
        case kClassUserComet:
            count = ReadComet(r, site, instant, &distanceAu);
            break;
        case kClassMinorPlanet:
            count = readMinorPlanetObject(r, r->pid, instant, &distanceAu);
            break;
        case kClassUserMinorPlanet:
            count = readUserMinorPlanetObject(r, r->pid, instant, &distanceAu);
            break;
        default:
            return 0;
    }
    if (count == 0) return 0;
    const int zone = constellationOfPlace(r->raJ2000, r->decJ2000);
    r->constellation = static_cast<uint8_t>(zone < 0 ? 255 : zone);
    if (site && instant)
        applyObjectPlace(r, site, instant, distanceAu);
    else
        computeGridKeys(r);
    return count;
}
