#include "catalog/double_star_orbits.h"

#include <cmath>

#include "astro/numeric.h"
#include "astro/precession.h"
#include "astro/spherical.h"
#include "catalog/catalogue_files.h"

namespace {

// The length of the leg whose ends are precessed to carry a position angle
// to another equinox. Precession is a rotation, which keeps the bearing of
// a great circle, so any length gives the same angle; a fixed one keeps a
// zero separation well defined.
constexpr double kBearingLeg = 1e-3;

double CenturiesOfYear(double year) { return (year - 2000.0) / 100.0; }

void Precess(double fromEpoch, double toEpoch, double* ra, double* dec) {
    PrecessionContext context;
    PrecessionPrepare(&context, fromEpoch, toEpoch, kFk5, kFk5);
    PrecessionApply(&context, ra, dec, 0.0, 0.0, 0);
}

// The component whose own letter is `letter`, or -1.
int FindLetter(const CcdmComponent* components, int count, uint8_t letter) {
    for (int i = 0; i < count; ++i)
        if (components[i].letter == letter) return i;
    return -1;
}

int Locate(LpFiles* files, const CcdmComponent* components, int count, int which,
           double primaryRa, double primaryDec, double year, int depth, double* ra,
           double* dec) {
    // A chain can be no longer than the list; a longer one loops.
    if (which < 0 || which >= count || depth > count) return 0;
    const CcdmComponent& c = components[which];
    double baseRa = primaryRa, baseDec = primaryDec;
    if (c.reference != 'A') {
        const int base = FindLetter(components, count, c.reference);
        if (base < 0 || base == which) return 0;
        if (!Locate(files, components, count, base, primaryRa, primaryDec, year, depth + 1,
                    &baseRa, &baseDec))
            return 0;
    }
    double positionAngle = 0, separation = 0;
    if (!componentOffsetAt(files, c, baseRa, baseDec, year, &positionAngle, &separation))
        return 0;
    offsetPlace(&baseRa, &baseDec, separation * kRadiansPerArcsecond,
                positionAngle * kRadiansPerDegree);
    *ra = baseRa;
    *dec = baseDec;
    return 1;
}

}  // namespace

LpHandle openDoubleStarOrbits() {
    auto files = std::make_unique<LpFiles>();
    files->index = openCatalogue(kCatLpIndex);
    files->ref = openCatalogue(kCatLpRef);
    files->sup = openCatalogue(kCatLpSup);
    if (!files->index || !files->ref) return nullptr;
    return files;
}

void closeDoubleStarOrbits(LpHandle& handle) { handle.reset(); }

int readLpIndex(FILE* file, long row, LpIndexRow* out) {
    if (!out || row < 1) return 0;
    uint8_t image[LpIndexLayout::kSize];
    if (!readAt(file, (row - 1) * static_cast<long>(LpIndexLayout::kSize), image, sizeof image))
        return 0;
    DecodeRecord<LpIndexLayout>(image, *out);
    return 1;
}

int readLpRef(FILE* file, uint32_t offset, int n, LpRefRecord* out) {
    if (!out || n < 0) return 0;
    uint8_t image[LpRefLayout::kSize];
    if (!readAt(file, static_cast<long>(offset) + n * static_cast<long>(LpRefLayout::kSize), image,
                sizeof image))
        return 0;
    DecodeRecord<LpRefLayout>(image, *out);
    return 1;
}

int readLpSup(FILE* file, uint32_t offset, int n, LpSupRecord* out) {
    if (!out || n < 0) return 0;
    uint8_t image[LpSupLayout::kSize];
    if (!readAt(file, static_cast<long>(offset) + n * static_cast<long>(LpSupLayout::kSize), image,
                sizeof image))
        return 0;
    DecodeRecord<LpSupLayout>(image, *out);
    Precess(kLpSupEquinox, 0.0, &out->ra, &out->dec);
    return 1;
}

BinaryOrbit orbitFromElements(const LpRefRecord& r) {
    BinaryOrbit orbit;
    orbit.period = r.period;
    orbit.periastronTime = r.periastronTime;
    orbit.eccentricity = r.eccentricity;
    orbit.semiMajorAxis = r.semiMajorAxis;
    orbit.inclination = r.firstAngle;
    orbit.node = r.secondAngle;
    orbit.argPeriastron = r.argPeriastron;
    return orbit;
}

int readComponentOrbit(LpFiles* files, long row, BinaryOrbit* orbit, int* equinox) {
    if (!files || !orbit || row < 1) return 0;
    LpIndexRow index;
    if (!readLpIndex(files->index.get(), row, &index) || index.count == 0) return 0;
    LpRefRecord elements;
    if (!readLpRef(files->ref.get(), index.refOffset, 0, &elements)) return 0;
    *orbit = orbitFromElements(elements);
    if (equinox) *equinox = elements.equinox;
    return 1;
}

double positionAngleToJ2000(double ra, double dec, double positionAngle, double equinoxYear) {
    const double epoch = CenturiesOfYear(equinoxYear);
    double startRa = ra, startDec = dec;
    Precess(0.0, epoch, &startRa, &startDec);
    double endRa = startRa, endDec = startDec;
    offsetPlace(&endRa, &endDec, kBearingLeg, positionAngle * kRadiansPerDegree);
    Precess(epoch, 0.0, &startRa, &startDec);
    Precess(epoch, 0.0, &endRa, &endDec);
    return PositionAngle(startRa, startDec, endRa, endDec) / kRadiansPerDegree;
}

void offsetPlace(double* ra, double* dec, double separation, double positionAngle) {
    const double sd = std::sin(*dec), cd = std::cos(*dec);
    const double sr = std::sin(separation), cr = std::cos(separation);
    const double newDec = SafeAsin(sd * cr + cd * sr * std::cos(positionAngle));
    const double dRa = std::atan2(std::sin(positionAngle) * sr * cd, cr - sd * std::sin(newDec));
    *ra = Wrap(*ra + dRa, kTwoPi);
    *dec = newDec;
}

int componentOffsetAt(LpFiles* files, const CcdmComponent& component, double baseRa,
                      double baseDec, double year, double* positionAngle, double* separation) {
    if (component.lpIndexRow != 0) {
        BinaryOrbit orbit;
        int equinox = 0;
        double angle = 0, rho = 0;
        if (readComponentOrbit(files, component.lpIndexRow, &orbit, &equinox) &&
            BinaryPosition(&orbit, year, &angle, &rho)) {
            if (equinox != 0 && equinox != 2000)
                angle = positionAngleToJ2000(baseRa, baseDec, angle, equinox);
            *positionAngle = angle;
            *separation = rho;
            return 1;
        }
    }
    *separation = componentSeparation(component);
    *positionAngle = componentPositionAngle(component);
    return componentHasPositionAngle(component) ? 1 : 0;
}

int locateComponent(LpFiles* files, const CcdmComponent* components, int count, int which,
                    double primaryRa, double primaryDec, double year, double* ra, double* dec) {
    if (!components || !ra || !dec) return 0;
    return Locate(files, components, count, which, primaryRa, primaryDec, year, 0, ra, dec);
}

int locateComponent(LpFiles* files, const CcdmComponent* components, int count, int which,
                    double primaryRa, double primaryDec, const Instant& instant, double* ra,
                    double* dec) {
    return locateComponent(files, components, count, which, primaryRa, primaryDec,
                           instant.decimalYear, ra, dec);
}

double referenceMagnitude(const CcdmComponent* components, int count, uint8_t letter) {
    const int i = components ? FindLetter(components, count, letter) : -1;
    return i < 0 ? 99.9 : hundredthsMagnitude(components[i].magnitude);
}
