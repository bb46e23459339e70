// Where an object stands for an observer: the step every class reader ends
// with once the J2000 place and the motion are in the record.
#pragma once

#include "astro/instant.h"
#include "astro/site.h"
#include "catalog/object_record.h"

// The apparent place at the instant (proper motion and precession from
// J2000 to the date, nutation and aberration, and for a near body with a
// distance in astronomical units the parallax), the refracted altitude and
// the azimuth from the north through east, the hour angle, the air mass (0 below the horizon),
// the ecliptic frame of the date and the galactic frame of the J2000 place,
// and last the chart place. `instant` needs its three stages.
void applyObjectPlace(ObjectRecord* record, const Site* site, const Instant* instant,
                      double distanceAu);

// The J2000 place with the proper motion carried to the instant.
void applyChartPlace(ObjectRecord* record, const Instant* instant);

// The star-atlas page keys. No atlas page layout is held yet, so the keys
// stay 0.
void computeGridKeys(ObjectRecord* record);
