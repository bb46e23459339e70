// `ferry2-cli list logs` and `import logs`: the Logs page without its
// window. The scan lists the log's observer and instrument names that the
// Vesperal 2 stores don't know (adding the log's locations the store
// lacks, as the page does); the import settles each name as the page's
// Create and Link buttons would, then runs the log import.
#pragma once

#include <string>
#include <vector>

#include "legacy/job_host.h"

// One name settled on the command line: OLD=NEW links OLD to the stored
// record named NEW; OLD=+ makes a default observer; OLD=+telescope and
// OLD=+binoculars make a default instrument of that kind.
struct LogSettlement {
    bool observer = true;
    std::string oldName;
    std::string newName;  // the stored record, when linking
    enum Kind { kLink, kCreate, kTelescope, kBinoculars } kind = kLink;
};

// Parses the value of --observer or --instrument; false with the reason.
bool ParseLogSettlement(const std::string& text, bool observer, LogSettlement* out, std::string* why);

// `list logs`; the exit status.
int ListLogsPage(const JobHost& host);
// `import logs`: the exit status of a refusal (a name not on the page, a
// record not in the store, a name left unsettled), or 0 when the job ran,
// with its result in `succeeded`.
int ImportLogsPage(const JobHost& host, const std::vector<LogSettlement>& settlements, int* succeeded);
