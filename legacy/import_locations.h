// Copies the ticked version 1.x locations, unchanged, to the end of
// user/loc.bin, refusing names the store already holds.
#pragma once

#include "legacy/job_host.h"

// Returns 1 when every record up to the count was read, else 0.
int ImportLocations(const JobHost& host);
