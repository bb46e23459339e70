#include "base/platform.h"

namespace platform {

namespace {
PathExistsFn g_pathExistsOverride = nullptr;
LocalTimeFn g_localTimeOverride = nullptr;
SystemFileTimeFn g_fileTimeOverride = nullptr;
}  // namespace

bool PathExistsOnDisk(const char* path);  // the system bodies
LocalClock SystemLocalTime();
uint64_t SystemClockFileTime();

bool PathExists(const char* path) {
    if (g_pathExistsOverride) return g_pathExistsOverride(path);
    return PathExistsOnDisk(path);
}

PathExistsFn SetPathExistsOverride(PathExistsFn fn) {
    PathExistsFn previous = g_pathExistsOverride;
    g_pathExistsOverride = fn;
    return previous;
}

LocalClock LocalTime() { return g_localTimeOverride ? g_localTimeOverride() : SystemLocalTime(); }

LocalTimeFn SetLocalTimeOverride(LocalTimeFn fn) {
    LocalTimeFn previous = g_localTimeOverride;
    g_localTimeOverride = fn;
    return previous;
}

uint64_t SystemFileTime() { return g_fileTimeOverride ? g_fileTimeOverride() : SystemClockFileTime(); }

SystemFileTimeFn SetSystemFileTimeOverride(SystemFileTimeFn fn) {
    SystemFileTimeFn previous = g_fileTimeOverride;
    g_fileTimeOverride = fn;
    return previous;
}

}  // namespace platform
