#include "catalog/object_place.h"

#include <numbers>

#include "astro/apparent_place.h"
#include "astro/frames.h"
#include "astro/horizontal.h"
#include "astro/numeric.h"
#include "astro/parallax.h"
#include "astro/precession.h"

namespace {
constexpr double kTurn = 2.0 * std::numbers::pi;
// B1950.0 in Julian centuries from J2000.0: the galactic frame is defined on
// the FK4 equator of that epoch.
constexpr double kB1950 = -0.50000210;
}  // namespace

void applyChartPlace(ObjectRecord* r, const Instant* instant) {
    if (!r || !instant) return;
    double ra = r->raJ2000, dec = r->decJ2000;
    PrecessionContext forward, back;
    PrecessionPrepare(&forward, 0.0, instant->tDyn, kFk5, kFk5);
    PrecessionApply(&forward, &ra, &dec, r->pmRa, r->pmDec, 0);
    PrecessionPrepare(&back, instant->tDyn, 0.0, kFk5, kFk5);
    PrecessionApply(&back, &ra, &dec, 0.0, 0.0, 0);
    r->raChart = ra;
    r->decChart = dec;
}

void applyObjectPlace(ObjectRecord* r, const Site* site, const Instant* instant,
                      double distanceAu) {
    if (!r || !site || !instant) return;
    double ra = r->raJ2000, dec = r->decJ2000;
    PrecessionContext toDate;
    PrecessionPrepare(&toDate, 0.0, instant->tDyn, kFk5, kFk5);
    PrecessionApply(&toDate, &ra, &dec, r->pmRa, r->pmDec, 0);
    MeanToApparent(instant, &ra, &dec, 0);
    if (distanceAu > 0) ApplyParallax(site, instant, distanceAu, &ra, &dec);
    r->raApparent = ra;
    r->decApparent = dec;

    // The engine's horizon step answers the azimuth as a full turn minus the
    // angle from the south through west, i.e. from the south through east;
    // the record keeps it from the north through east, as observers read it.
    double azimuth = ra, altitude = dec;
    ApparentToHorizontal(site, instant, &azimuth, &altitude, nullptr, 1);
    r->azimuth = Wrap(std::numbers::pi - azimuth, kTurn);
    r->altitude = altitude;
    r->hourAngle = HourAngle(instant, ra, 2);
    r->airmass = altitude < 0 ? 0 : AirMass(altitude);

    EquatorialToEcliptic(instant, r->raJ2000, r->decJ2000, &r->frameLongitude, &r->frameLatitude,
                         1);
    double raB = r->raJ2000, decB = r->decJ2000;
    PrecessionContext toB1950;
    PrecessionPrepare(&toB1950, 0.0, kB1950, kFk5, kFk4);
    PrecessionApply(&toB1950, &raB, &decB, 0.0, 0.0, 0);
    EquatorialToGalactic(raB, decB, &r->fixedFrameLongitude, &r->fixedFrameLatitude);

    applyChartPlace(r, instant);
}

void computeGridKeys(ObjectRecord* r) {
    if (!r) return;
    r->gridKey1 = 0;
    r->gridKey2 = r->gridKey3 = r->gridKey4 = 0;
}
