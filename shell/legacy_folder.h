// The version 1.x folder: remembered in ferry2.ini, proved by charts.bin.
#pragma once

#include <string>

#include "legacy/job_host.h"

inline constexpr const char* kDefaultLegacyFolder = "C:\\Program Files\\Halcyonware\\Vesperal";
inline constexpr const char* kLegacyFolderMissingText =
    "Vesperal 1.x files not found. Check your path and try again.";

// First line of ferry2.ini as it stands (at most 1023 characters); false
// when the file cannot be read, and the caller keeps its default.
bool ReadFerryIni(std::string& folderOut);

// Writes the folder with no line end; a failure is not reported.
void WriteFerryIni(const std::string& folder);

// Whether <folder>/charts.bin is there, the proof of a version 1.x folder.
bool LegacyFolderProved(const std::string& folder);

// The OK step of the path dialog: proves the folder by <folder>/charts.bin.
// A folder that fails gets the path message through the host; a folder that
// passes is written to ferry2.ini before anything else. Nonzero when accepted.
int AcceptLegacyFolder(const std::string& folder, const JobHost& host);
