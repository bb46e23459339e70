#include <windows.h>
#include <io.h>

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
    // The runtime's flush is a no-op for a stream that is reading.
    if (std::fflush(stream) != 0) return false;
    const intptr_t handle = _get_osfhandle(_fileno(stream));
    LARGE_INTEGER size;
    if (handle == -1 || !GetFileSizeEx(reinterpret_cast<HANDLE>(handle), &size)) return false;
    *sizeOut = static_cast<uint64_t>(size.QuadPart);
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
