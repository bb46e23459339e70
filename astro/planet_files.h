// The planet engine's table files. For now the engine only keeps the folder
// it was started with; its file names are appended to that string as it
// stands, so the folder must end in a separator.
#pragma once

#include <string>

// 1 when all tables are loaded. Until the tables exist this keeps the
// folder, reads the nutation table from it (nutcon.bin) and answers 0,
// which start-up ignores.
int PlanetFilesOpen(const char* folder);
void PlanetFilesClose();
const std::string& PlanetFilesFolder();
