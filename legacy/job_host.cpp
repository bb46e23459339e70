#include "legacy/job_host.h"

#include <cstdarg>

void LogPrintf(FILE* log, const char* format, ...) {
    if (!log) return;
    va_list args;
    va_start(args, format);
    std::vfprintf(log, format, args);
    va_end(args);
}
