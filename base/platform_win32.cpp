#include <windows.h>

#include "base/platform.h"

namespace platform {

bool PathExistsOnDisk(const char* path) {
    return GetFileAttributesA(path) != INVALID_FILE_ATTRIBUTES;
}

bool SharedReadFileSize(const char* path, uint64_t* sizeOut) {
    HANDLE h = CreateFileA(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                           FILE_ATTRIBUTE_NORMAL, nullptr);
    if (h == INVALID_HANDLE_VALUE) return false;
    DWORD high = 0;
    DWORD low = GetFileSize(h, &high);
    CloseHandle(h);
    if (low == INVALID_FILE_SIZE && GetLastError() != NO_ERROR) return false;
    *sizeOut = (static_cast<uint64_t>(high) << 32) | low;
    return true;
}

bool StreamFileSize(FILE* stream, uint64_t* sizeOut) {
    // The runtime's flush would throw away a reading stream's buffer and
    // lose its place, so the size is found by seeking to the end and back,
    // which writes out what the stream holds first.
    const long place = std::ftell(stream);
    if (place < 0 || std::fseek(stream, 0, SEEK_END) != 0) return false;
    const long end = std::ftell(stream);
    if (end < 0 || std::fseek(stream, place, SEEK_SET) != 0) return false;
    *sizeOut = static_cast<uint64_t>(end);
    return true;
}

bool IsRegularFile(const char* path) {
    const DWORD attributes = GetFileAttributesA(path);
    if (attributes == INVALID_FILE_ATTRIBUTES) return false;
    return (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE)) == 0;
}

bool CreateFolder(const char* path) { return CreateDirectoryA(path, nullptr) != 0; }
bool RemoveFolder(const char* path) { return RemoveDirectoryA(path) != 0; }
bool RemoveFile(const char* path) { return DeleteFileA(path) != 0; }

bool ListFolder(const char* folder, std::vector<FolderEntry>& entries) {
    std::string pattern = std::string(folder) + "/*";
    WIN32_FIND_DATAA data;
    HANDLE h = FindFirstFileA(pattern.c_str(), &data);
    if (h == INVALID_HANDLE_VALUE) return false;
    do {
        FolderEntry entry;
        entry.name = data.cFileName;
        entry.isFolder = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        entries.push_back(entry);
    } while (FindNextFileA(h, &data));
    FindClose(h);
    return true;
}

std::string ModuleFileName() {
    char buf[MAX_PATH + 1];
    DWORD n = GetModuleFileNameA(nullptr, buf, sizeof buf);
    return std::string(buf, n);
}

LocalClock SystemLocalTime() {
    SYSTEMTIME t;
    GetLocalTime(&t);
    return LocalClock{t.wYear, t.wMonth, t.wDay, t.wHour, t.wMinute, t.wSecond};
}

uint64_t SystemClockFileTime() {
    FILETIME system{}, converted{};
    GetSystemTimeAsFileTime(&system);
    if (!LocalFileTimeToFileTime(&system, &converted)) converted = system;
    return (static_cast<uint64_t>(converted.dwHighDateTime) << 32) | converted.dwLowDateTime;
}

}  // namespace platform
