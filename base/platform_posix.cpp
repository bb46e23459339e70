#include <dirent.h>
#include <stdio_ext.h>
#include <sys/stat.h>
#include <unistd.h>

#include <climits>
#include <ctime>

#include "base/platform.h"

namespace platform {

bool PathExistsOnDisk(const char* path) {
    struct stat st;
    return ::stat(path, &st) == 0;
}

bool SharedReadFileSize(const char* path, uint64_t* sizeOut) {
    struct stat st;
    if (::stat(path, &st) != 0 || !S_ISREG(st.st_mode)) return false;
    if (::access(path, R_OK) != 0) return false;
    *sizeOut = static_cast<uint64_t>(st.st_size);
    return true;
}

bool StreamFileSize(FILE* stream, uint64_t* sizeOut) {
    // Only pending output needs the flush; flushing a stream that is
    // reading would throw its buffer away for nothing.
    if (__fpending(stream) > 0 && std::fflush(stream) != 0) return false;
    struct stat st;
    if (::fstat(::fileno(stream), &st) != 0) return false;
    *sizeOut = static_cast<uint64_t>(st.st_size);
    return true;
}

bool IsRegularFile(const char* path) {
    struct stat st;
    return ::stat(path, &st) == 0 && S_ISREG(st.st_mode);
}

bool CreateFolder(const char* path) { return ::mkdir(path, 0777) == 0; }
bool RemoveFolder(const char* path) { return ::rmdir(path) == 0; }
bool RemoveFile(const char* path) { return ::unlink(path) == 0; }

bool ListFolder(const char* folder, std::vector<FolderEntry>& entries) {
    DIR* dir = ::opendir(folder);
    if (!dir) return false;
    while (const dirent* e = ::readdir(dir)) {
        FolderEntry entry;
        entry.name = e->d_name;
        std::string full = std::string(folder) + "/" + e->d_name;
        struct stat st;
        entry.isFolder = ::lstat(full.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
        entries.push_back(entry);
    }
    ::closedir(dir);
    return true;
}

std::string ModuleFileName() {
    char buf[PATH_MAX];
    ssize_t n = ::readlink("/proc/self/exe", buf, sizeof buf - 1);
    if (n <= 0) return std::string();
    return std::string(buf, static_cast<size_t>(n));
}

LocalClock SystemLocalTime() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return LocalClock{local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
                      local.tm_hour,        local.tm_min,     local.tm_sec};
}

// The system clock in file-time units, then shifted as the Windows
// local-to-UTC conversion does: by the zone's present offset from UTC.
uint64_t SystemClockFileTime() {
    constexpr int64_t kUnitsPerSecond = 10000000;
    constexpr int64_t k1601To1970 = 11644473600LL * kUnitsPerSecond;
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    std::tm local{};
    localtime_r(&now.tv_sec, &local);
    const int64_t utc = static_cast<int64_t>(now.tv_sec) * kUnitsPerSecond + now.tv_nsec / 100 + k1601To1970;
    return static_cast<uint64_t>(utc - static_cast<int64_t>(local.tm_gmtoff) * kUnitsPerSecond);
}

}  // namespace platform
