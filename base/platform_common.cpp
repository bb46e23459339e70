#include "base/platform.h"

namespace platform {

namespace {
PathExistsFn g_pathExistsOverride = nullptr;
LocalTimeFn g_localTimeOverride = nullptr;
}  // namespace

bool PathExistsOnDisk(const char* path);  // the system bodies
LocalClock SystemLocalTime();

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

}  // namespace platform
