// Start-up resolution of the read-only reference folders from the ini file
// of bare lines that the planner's installer writes.
#pragma once

// Reads <baseName>.ini from the working folder: three catalogue roots, three
// map roots, two solar-system roots, one folder a line. A '#' in the first
// column stands for the drive that carries the data marker. Every folder
// must exist. Returns 1 when all eight lines were read and accepted.
int ResolveDataRoots(const char* baseName);

// First drive letter from D to Z whose "%c:/vesperal2.id" exists, or 0.
char ScanForDataDrive();

// The message start-up shows when the roots cannot be resolved.
inline constexpr const char* kDataRootsMissingText =
    "Vesperal cannot find the database files.\r\nInsert the Vesperal 2 CDROM and try again.";
inline constexpr const char* kDataRootsMissingTitle = "Vesperal 2 Error";
