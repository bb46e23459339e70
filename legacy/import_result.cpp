#include "legacy/import_result.h"

#include <cstdio>

void ShowImportResult(const JobHost& host, int succeeded, const ImportCounters& c) {
    char text[256];
    if (succeeded)
        std::snprintf(text, sizeof text, "Imported %d of %d, %d skipped", c.imported, c.counted,
                      c.skipped);
    else
        std::snprintf(text, sizeof text,
                      "An error occurred during import. See the ferry2.log file for details.\r\n"
                      "Imported %d of %d, %d skipped",
                      c.imported, c.counted, c.skipped);
    ShowJobMessage(host, text, kFerryMessageTitle);
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
