// What every import job counts and the message it ends with.
#pragma once

#include "shell/job_host.h"

struct ImportCounters {
    int imported = 0;
    int counted = 0;
    int skipped = 0;
};

// "Imported %d of %d, %d skipped", with the error preface when the job did
// not succeed, under the program's message title.
void ShowImportResult(const JobHost& host, int succeeded, const ImportCounters& c);
