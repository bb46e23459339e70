#include "shell/platform.h"

namespace platform {

namespace {
PathExistsFn g_pathExistsOverride = nullptr;
}

bool PathExistsOnDisk(const char* path);  // the system body

bool PathExists(const char* path) {
    if (g_pathExistsOverride) return g_pathExistsOverride(path);
    return PathExistsOnDisk(path);
}

PathExistsFn SetPathExistsOverride(PathExistsFn fn) {
    PathExistsFn previous = g_pathExistsOverride;
    g_pathExistsOverride = fn;
    return previous;
}

}  // namespace platform
