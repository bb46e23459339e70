#include "legacy/import_result.h"

#include <cstdio>
#include <string>

void ShowJobCounts(const JobHost& host, int succeeded, const char* counts) {
    const std::string text =
        succeeded ? std::string(counts)
                  : std::string("An error occurred during import. See the ferry2.log file for details.\r\n") + counts;
    ShowJobMessage(host, text.c_str(), kFerryMessageTitle);
}

void ShowImportResult(const JobHost& host, int succeeded, const ImportCounters& c) {
    char counts[128];
    std::snprintf(counts, sizeof counts, "Imported %d of %d, %d skipped", c.imported, c.counted, c.skipped);
    ShowJobCounts(host, succeeded, counts);
}

void LogStoreDamage(const JobHost& host, const char* subject, const char* path,
                    StoreDamage damage) {
    if (damage == StoreDamage::kNone) return;
    LogPrintf(host.log, "%s: %s is damaged (%s)\n", subject, path, StoreDamageText(damage));
}

int RunTickedImport(const JobHost& host, FILE* legacy, int count, FILE* store,
                    const char* internalErrorLine, CopyTickedRecords copy) {
    ImportCounters c;
    int succeeded = 0;
    if (store) {
        const TickArray ticks = JobTicks(host);
        if (!ticks.data)
            LogPrintf(host.log, "%s", internalErrorLine);
        else
            succeeded = copy(host, legacy, count, store, ticks, c);
    }
    ShowImportResult(host, succeeded, c);
    return succeeded;
}
