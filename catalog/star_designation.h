// The star reader of the fill by designation: from a star kind (1 common
// name ... 19 GSC) and a typed designation or a direct number to the PIDs
// of the stars it names.
#pragma once

#include "catalog/designation_hits.h"

// `number` is a direct number (the `csn_alp` row for kind 1, the catalogue
// number for the one-number kinds), or 0 when `text` must be parsed. The
// multi-part kinds (Bayer, Flamsteed, variable, DM, CCDM, Tycho, GSC) read
// the text alone. Answers the count of PIDs found; 0 for an unknown kind,
// a text that doesn't parse, or a file that can't be read.
int findStarDesignation(int kind, long number, const char* text, DesignationHits* hits);
