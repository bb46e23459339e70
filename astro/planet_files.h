// The planet engine's table files, all in one folder (line 7 of
// vesperal.ini); the file names are appended to the folder string as it
// stands, so it must end in a separator.
#pragma once

#include <string>

// Loads in order: PLANETS.NDX with PLANETS.BIN, nutcon.bin, moontab.bin,
// plutotab.bin, usats.bin, stopping at the first that fails with 0; what
// was read before stays loaded until PlanetFilesClose. 1 when all is
// loaded; once it is, a further call changes nothing and answers 1.
int PlanetFilesOpen(const char* folder);
// Frees every table and clears the loaded flag.
void PlanetFilesClose();
// The folder of the last open that was not a no-op.
const std::string& PlanetFilesFolder();
