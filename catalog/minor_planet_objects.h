// The class readers of the minor planets: a reference minor planet (class
// 4, PID its number) from the element files, and a user minor planet (class
// 14) from user/mp.bin, each placed on its orbit at the instant.
#pragma once

#include <cstdint>
#include <cstdio>

#include "astro/instant.h"
#include "catalog/object_record.h"

// Fill PID, the J2000.0 place (light time applied), the magnitude by the
// H, G law, sizes 0, and the distance from the Earth in au for the
// parallax of the common tail. 1; 0 when the object or its files are
// missing, the planet tables (which give the Sun) aren't loaded, or the
// elements make no usable orbit.
int readMinorPlanetObject(ObjectRecord* record, uint32_t pid, const Instant* instant, double* distanceAu);
int readUserMinorPlanetObject(ObjectRecord* record, uint32_t pid, const Instant* instant,
                              double* distanceAu);

// The place of the user minor planet `pid` of the open store at the instant,
// from its row of the nearest epoch: J2000.0 RA and Dec in radians (light
// time applied), the distance from the Earth in au and the H, G magnitude.
// 0 as for the reader above.
int userMpPlace(FILE* store, uint32_t pid, const Instant* instant, double* ra, double* dec,
                double* distanceAu, double* magnitude);
