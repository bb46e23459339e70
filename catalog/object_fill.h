// Reading an object again by its identity: class and PID.
#pragma once

#include "astro/instant.h"
#include "astro/site.h"
#include "catalog/object_record.h"

// Re-reads the object that `record` names by `objectClass` and `pid`, and
// recomputes what the instant needs. Answers the number of records filled
// (1), or 0 for a null record, an unknown class, a class that needs a site
// and instant when none is given, or a file that can't be read. The rise
// and set window is for the visibility step, which isn't part of the
// refill yet: `rise`, `transit` and `set` stay as they were.
int refillByIdentity(ObjectRecord* record, double riseSetStart, double riseSetEnd,
                     const Site* site, const Instant* instant);

// The star reader: the `stars` record of `pid`, or a GSC star when bit 31
// is set, with the star's components and orbits for its size and class
// mask. 1 on success.
int readStarObject(ObjectRecord* record, uint32_t pid, const Instant* instant);
