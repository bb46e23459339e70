// New instruments made for a name the user wants to keep: the makers'
// defaults under that name, added to user/instr.bin at once so that the
// user can find the record and change it.
#pragma once

#include "stores/instrument_records.h"

// A telescope of NewTelescopeInit (main system 1.0 inch, equatorial mount)
// or 7 x 50 binoculars of NewBinocularsInit, added with InstrumentAdd. The
// record as added, with its new id, is copied to `recordOut`. 0 when the
// store does not open (it is never made here) or the add fails.
int CreateDefaultTelescope(InstrumentRecord* recordOut, const char* name);
int CreateDefaultBinoculars(InstrumentRecord* recordOut, const char* name);
