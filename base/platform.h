// The operating-system services the core needs, with one POSIX and one Win32
// body. Nothing else in the core talks to the operating system directly.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace platform {

// True when the path names an existing file or folder (GetFileAttributesA).
bool PathExists(const char* path);

// Tests decide what exists by installing a replacement; null restores the
// real test. Returns the replacement that was in force.
using PathExistsFn = bool (*)(const char* path);
PathExistsFn SetPathExistsOverride(PathExistsFn fn);

// Size of a regular file opened with shared read; false when it cannot be
// opened that way (missing, a folder, no access).
bool SharedReadFileSize(const char* path, uint64_t* sizeOut);

// Size of the file under an open stream, bytes the stream still holds for
// writing included; false when the system can't tell.
bool StreamFileSize(FILE* stream, uint64_t* sizeOut);

// True when the path names a regular file: not a folder, a device or a
// pipe, which would read without end or block.
bool IsRegularFile(const char* path);

bool CreateFolder(const char* path);
bool RemoveFolder(const char* path);
bool RemoveFile(const char* path);

struct FolderEntry {
    std::string name;
    bool isFolder = false;
};
// Every entry of the folder, "." and ".." included where the system lists
// them; false when the folder cannot be read.
bool ListFolder(const char* folder, std::vector<FolderEntry>& entries);

// Full path of the running program, as the system gives it.
std::string ModuleFileName();

// The local clock (GetLocalTime).
struct LocalClock {
    int year = 0;
    int month = 0;  // 1 to 12
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
};
LocalClock LocalTime();

// Tests fix the clock by installing a replacement; null restores the real
// clock. Returns the replacement that was in force.
using LocalTimeFn = LocalClock (*)();
LocalTimeFn SetLocalTimeOverride(LocalTimeFn fn);

// The moment as exchange files stamp it: a Windows file-time value (100 ns
// units since 1601-01-01), taken from the system clock (UTC) and then passed
// through the local-to-UTC file-time conversion, as the stamps of existing
// exchange files were made (GetSystemTimeAsFileTime, LocalFileTimeToFileTime).
uint64_t SystemFileTime();

// Tests fix the stamp by installing a replacement; null restores the real
// clock. Returns the replacement that was in force.
using SystemFileTimeFn = uint64_t (*)();
SystemFileTimeFn SetSystemFileTimeOverride(SystemFileTimeFn fn);

}  // namespace platform
