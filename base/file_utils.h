// File utilities shared by the start-up code and every store.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

struct FileCloser {
    void operator()(FILE* f) const {
        if (f) std::fclose(f);
    }
};
// Owns one open stream; the stream closes when the owner goes.
using FilePtr = std::unique_ptr<FILE, FileCloser>;

inline FilePtr OpenFile(const char* path, const char* mode) {
    return FilePtr(std::fopen(path, mode));
}

// Opens only a regular file: a folder, a device or a pipe gives null, as a
// missing file does.
FilePtr OpenRegularFile(const char* path, const char* mode);

// True when the path exists but is no regular file.
bool IsOddFile(const char* path);

// True when the path can be accessed; existence only.
bool FileExists(const char* path);

// Size from the file system; 0 when the file cannot be opened, so a missing
// file and an empty one read alike.
uint64_t FileSize(const char* path);

// 2 when the source is empty or missing (nothing done, no target made),
// 0 on any failure, 1 when copied. A failed copy leaves no target behind.
int CopyFileTo(const char* source, const char* target);

// Puts `source` in the place of `target` under the target's name. The old
// target is moved aside first and comes back when the move fails, so that
// one of the two is always there under the target's name; 1 when moved.
int ReplaceFileWith(const char* target, const char* source);

// Writes the bytes to `path` + ".new" and then puts that file in the place
// of `path`, so that a failed write leaves the old file as it was and no
// half file behind. 1 or 0.
int ReplaceFileContents(const std::string& path, const std::vector<uint8_t>& bytes);

// 1 when the folder exists already or could be made, else 0.
int MakeFolder(const char* path);

// Copies every entry of the source folder to the same name in the target.
// Stops with 0 at the first copy that fails; an empty entry (result 2)
// counts as success. 1 at the end.
int CopyFolderFiles(const char* source, const char* target);

// Removes a folder with everything in it. 0 at the first failure, otherwise
// the result of removing the folder itself.
int DeleteFolderTree(const char* path);

// fgets for text files written on either system: a CR before the line end
// is dropped, as Windows text mode does. Returns null at the end or on error.
char* ReadTextLine(char* buf, int size, FILE* stream);
