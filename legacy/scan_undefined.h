// The scan behind the Logs page: one walk over every version 1.x log entry
// that collects the observer and instrument names the Vesperal 2 stores
// don't know, so that the user can settle each before the log import runs.
// On the way it adds to the location store every log location it lacks.
#pragma once

#include <string>
#include <vector>

#include "legacy/job_host.h"

inline constexpr const char* kLogImportTitle = "Vesperal 2 Log Import";

// Shown at the end of every full walk, whatever it found.
inline constexpr const char* kDefineNamesMessage =
    "Before you can import log entries you must first define all of the\r\n"
    "instruments and observers that are not present in Vesperal 2.\r\n"
    "Select each of the undefined entries and either create a new entry\r\n"
    "or link it to an existing one.  Once all of the entries are cleared\r\n"
    "you may proceed to import your logs.";

// The two lists of the page, in the order the walk met the names.
struct UndefinedNames {
    std::vector<std::string> observers;
    std::vector<std::string> instruments;
};

// Walks the twelve class slots of the legacy folder as the log import does
// and appends the unknown names to `names`. An unreadable legacy file or an
// observer or instrument store that does not open ends the walk silently;
// a location store that can't be opened or added to ends it with a log
// line. Only a full walk shows kDefineNamesMessage. 1 when the walk
// finished.
int ScanUndefined(const JobHost& host, UndefinedNames* names);
