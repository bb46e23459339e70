// Turns each ticked version 1.x observing list into a new list of the
// list store. Catalogue objects keep their PID; the user's own stars, comets
// and minor planets are copied into the version 2 stores first (a star the
// reference catalogues know by its name becomes that catalogue object), and
// the list row takes the PID they get there.
#pragma once

#include <cstdio>

#include "catalog/object_record.h"
#include "legacy/job_host.h"

// Writes the record at the stream's place and counts it, leaving every
// field, `sizeUnit` included, as it is. Refused (0) when the stream or the
// record is missing or the list already holds the most items a list takes.
int AppendListObject(FILE* stream, const ObjectRecord* record, int* countInOut);

// The tick array has one byte per row of obs.idx, free rows included. 1 when
// every row of the index was gone through, else 0; either way one message
// "Imported %d of %d, %d lists skipped, %d objects skipped" is shown.
int ImportObservingLists(const JobHost& host);
