#include "base/file_utils.h"

#include <cstring>
#include <string>
#include <vector>

#include "base/file_io.h"
#include "base/platform.h"

FilePtr OpenRegularFile(const char* path, const char* mode) {
    if (!platform::IsRegularFile(path)) return nullptr;
    return OpenFile(path, mode);
}

bool IsOddFile(const char* path) {
    return platform::PathExists(path) && !platform::IsRegularFile(path);
}

bool FileExists(const char* path) { return platform::PathExists(path); }

uint64_t FileSize(const char* path) {
    uint64_t size = 0;
    if (!platform::SharedReadFileSize(path, &size)) return 0;
    return size;
}

namespace {

int CopyOpenFile(FILE* in, FILE* out, uint64_t size) {
    const size_t block = size < 4096 ? static_cast<size_t>(size) : 4096;
    std::vector<char> buffer(block + 1);
    uint64_t left = size;
    while (left > 0) {
        const size_t n = left < block ? static_cast<size_t>(left) : block;
        if (FileRead(buffer.data(), n, in) != n) return 0;
        if (FileWrite(buffer.data(), n, out) != n) return 0;
        left -= n;
    }
    return 1;
}

}  // namespace

int CopyFileTo(const char* source, const char* target) {
    const uint64_t size = FileSize(source);
    if (size == 0) return 2;
    FilePtr in = OpenFile(source, "rb");
    if (!in) return 0;
    FilePtr out = OpenFile(target, "wb");
    if (!out) return 0;
    // A part copy (a full disk) must not stand for the file: remove it.
    const int copied = CopyOpenFile(in.get(), out.get(), size);
    const int closed = std::fclose(out.release()) == 0;
    if (copied && closed) return 1;
    platform::RemoveFile(target);
    return 0;
}

int ReplaceFileWith(const char* target, const char* source) {
    const std::string aside = std::string(target) + ".old";
    std::remove(aside.c_str());
    const bool hadTarget = platform::PathExists(target);
    if (hadTarget && std::rename(target, aside.c_str()) != 0) return 0;
    if (std::rename(source, target) != 0) {
        if (hadTarget) std::rename(aside.c_str(), target);
        return 0;
    }
    std::remove(aside.c_str());
    return 1;
}

int ReplaceFileContents(const std::string& path, const std::vector<uint8_t>& bytes) {
    const std::string fresh = path + ".new";
    {
        FilePtr f = OpenFile(fresh.c_str(), "wb");
        const bool written = f && FileWrite(bytes.data(), bytes.size(), f.get()) == bytes.size();
        if (!written || std::fclose(f.release()) != 0) {
            f.reset();  // Windows removes no file that is still open
            platform::RemoveFile(fresh.c_str());
            return 0;
        }
    }
    if (ReplaceFileWith(path.c_str(), fresh.c_str())) return 1;
    platform::RemoveFile(fresh.c_str());
    return 0;
}

int MakeFolder(const char* path) {
    if (platform::PathExists(path)) return 1;
    return platform::CreateFolder(path) ? 1 : 0;
}

static bool IsDotEntry(const std::string& name) { return name == "." || name == ".."; }

int CopyFolderFiles(const char* source, const char* target) {
    std::vector<platform::FolderEntry> entries;
    if (!platform::ListFolder(source, entries)) return 1;
    for (const auto& e : entries) {
        if (IsDotEntry(e.name)) continue;
        const std::string from = std::string(source) + "/" + e.name;
        const std::string to = std::string(target) + "/" + e.name;
        // A folder has no readable size and so gives 2, which passes.
        if (CopyFileTo(from.c_str(), to.c_str()) == 0) return 0;
    }
    return 1;
}

int DeleteFolderTree(const char* path) {
    std::vector<platform::FolderEntry> entries;
    if (platform::ListFolder(path, entries)) {
        for (const auto& e : entries) {
            if (IsDotEntry(e.name)) continue;
            const std::string child = std::string(path) + "/" + e.name;
            if (e.isFolder) {
                if (!DeleteFolderTree(child.c_str())) return 0;
            } else if (!platform::RemoveFile(child.c_str())) {
                return 0;
            }
        }
    }
    return platform::RemoveFolder(path) ? 1 : 0;
}

char* ReadTextLine(char* buf, int size, FILE* stream) {
    if (!std::fgets(buf, size, stream)) return nullptr;
    size_t len = std::strlen(buf);
    if (len >= 2 && buf[len - 2] == '\r' && buf[len - 1] == '\n') {
        buf[len - 2] = '\n';
        buf[len - 1] = '\0';
    }
    return buf;
}
