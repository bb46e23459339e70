// What every import job counts, the common frame of a job that copies ticked
// records into a store, and the message it ends with.
#pragma once

#include <cstdio>

#include "base/store_damage.h"
#include "legacy/job_host.h"

struct ImportCounters {
    int imported = 0;
    int counted = 0;
    int skipped = 0;
};

// A job's closing message: its counts, after the error preface when the
// job did not succeed, under the program's message title.
void ShowJobCounts(const JobHost& host, int succeeded, const char* counts);

// "Imported %d of %d, %d skipped", shown as above.
void ShowImportResult(const JobHost& host, int succeeded, const ImportCounters& c);

// When a store did not open for damage, logs one line that names it:
// "<subject>: <path> is damaged (<reason>)\n". Nothing for other failures.
void LogStoreDamage(const JobHost& host, const char* subject, const char* path,
                    StoreDamage damage);

// Copies the ticked records of an open legacy file into an open store; 1
// when the job ran to the end.
using CopyTickedRecords = int (*)(const JobHost& host, FILE* legacy, int count, FILE* store,
                                  const TickArray& ticks, ImportCounters& c);

// With the legacy file open: a store that did not open, or a page without a
// tick array (logged as `internalErrorLine`), ends with the error form and
// zeros; otherwise `copy` runs. Shows the result and returns `succeeded`.
int RunTickedImport(const JobHost& host, FILE* legacy, int count, FILE* store,
                    const char* internalErrorLine, CopyTickedRecords copy);
