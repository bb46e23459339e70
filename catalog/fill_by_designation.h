// From a class, a designation kind and a typed designation (or a direct
// number) to the objects it names, each in a full ObjectRecord: the entry
// that the name resolver and the list and log jobs use when they know the
// class and kind of a name in advance.
#pragma once

#include "astro/instant.h"
#include "astro/site.h"
#include "catalog/object_record.h"

inline constexpr int kMaxDesignationRecords = 3;

// The rise/set window the caller wants (not used until the visibility step
// comes; rise, transit, set stay -1).
struct RiseSetSpan {
    double start = 0;
    double end = 0;
};

// Initialises the three records and fills as many as the designation names
// (several galaxies under one MCG number, two stars under one HD number, a
// DM number's stars ...), each read by its PID through the class's reader
// and given the class, kind and name constellation of the first, its
// constellation, and with a site and instant its place for the observer.
// `number` is a direct number, or 0 when `text` must be parsed; for stars
// of kinds 2 to 4 it is the name constellation until the lookup gives it.
// `componentLetter` ('A' to 'z') names a star's component, stored as the
// upper-cased letter minus 66 ('B' is 0). Answers the number of records
// filled (0..3), 0 for not found / class above 18.
int fillByDesignation(int objectClass, int kind, int componentLetter, long number, const char* text,
                      const Site* site, const Instant* instant, const RiseSetSpan* span,
                      ObjectRecord records[kMaxDesignationRecords]);
