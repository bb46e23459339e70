#include "shell/import_log.h"

#include <cstdarg>

#include "shell/job_host.h"

FilePtr OpenImportLog() { return OpenFile("ferry2.log", "a"); }

void LogPrintf(FILE* log, const char* format, ...) {
    if (!log) return;
    va_list args;
    va_start(args, format);
    std::vfprintf(log, format, args);
    va_end(args);
}
