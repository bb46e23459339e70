// The orbit of a comet for an instant: of its records (one per set of
// elements), the one whose epoch lies nearest, made into an OrbitRecord.
#pragma once

#include <cstdint>

#include "astro/instant.h"
#include "astro/orbit.h"
#include "astro/site.h"
#include "catalog/comet_files.h"

// The brightness law a comet shines by when its record gives neither value.
inline constexpr double kDefaultCometG = 7.5;
inline constexpr double kDefaultCometK = 4.0;

// Of `count` records of one comet, the one whose epoch is strictly nearer to
// `t` (Julian centuries) than every earlier one: ties keep the earlier.
int nearestCometEpoch(const CometRecord* records, int count, double t);

// The completed orbit (OrbitInit and OrbitVectors, the comet law) of a
// record's elements; g = 7.5, k = 4 when both brightness values are 0.
int cometOrbit(const CometRecord& record, OrbitRecord* orbit);

// Comet `pid` of class 3 (a `comets` row, from 0) or 13 (the user store) at
// the instant's dynamical time. The reference comet reads on from its row
// while the periodic number (and type letter) stay the same; the user's over
// the rows of its PID. 1 with the orbit, the record chosen and its small
// coefficient (times 1e-6), any of which may be null; 0 when the comet isn't
// there, a read fails or its elements make no orbit (no position). The site
// takes no part: the orbit is heliocentric.
int orbitOfComet(const Site* site, const Instant* instant, int objectClass, uint32_t pid,
                 OrbitRecord* orbitOut, CometRecord* recordOut = nullptr,
                 double* coefficientOut = nullptr);
