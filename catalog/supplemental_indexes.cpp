#include "catalog/supplemental_indexes.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <vector>

#include "base/file_io.h"
#include "base/le_bytes.h"
#include "base/prefix_match.h"

namespace {

// A slot's offset must fit the long of fseek, which has 32 bits on Windows;
// the stores give out PIDs from 1 upwards and never come near this.
constexpr uint32_t kHighestIndexedPid = 0x1FFFFFFF;

int WriteU32At(FILE* f, long offset, uint32_t value) {
    uint8_t b[4];
    le::PutU32(b, value);
    if (std::fseek(f, offset, SEEK_SET) != 0) return 0;
    return FileWrite(b, sizeof b, f) == sizeof b ? 1 : 0;
}

int ReadU32At(FILE* f, long offset, uint32_t* value) {
    uint8_t b[4];
    if (std::fseek(f, offset, SEEK_SET) != 0 || FileRead(b, sizeof b, f) != sizeof b) return 0;
    *value = le::GetU32(b);
    return 1;
}

long SlotOffset(uint32_t pid) { return static_cast<long>(pid) * 4; }

// Closes and removes a half-made index; answers null for the caller.
FilePtr Discard(FilePtr f, const char* path) {
    f.reset();
    std::remove(path);
    return nullptr;
}

int AlphaCompare(const AlphaEntry& a, const AlphaEntry& b) {
    char x[34], y[34];
    supplementalNameText(a.name, x);
    supplementalNameText(b.name, y);
    return std::strcmp(x, y);
}

FilePtr BuildAlpha(const SupplementalFiles& files, FILE* data, long* countOut) {
    FilePtr f = OpenFile(files.alphaPath, "w+b");
    if (!f) return nullptr;
    long count = 0;
    if (!files.readCount(data, &count)) return Discard(std::move(f), files.alphaPath);
    std::vector<AlphaEntry> entries;
    entries.reserve(static_cast<size_t>(count));
    for (long row = 0; row < count; ++row) {
        SupplementalKey key;
        if (!files.readKey(data, row, &key)) return Discard(std::move(f), files.alphaPath);
        if (key.name[0] == '\0') continue;
        AlphaEntry e;
        for (size_t i = 0; i < sizeof e.name; ++i)
            e.name[i] = static_cast<char>(std::toupper(static_cast<unsigned char>(key.name[i])));
        e.row = static_cast<uint32_t>(row);
        entries.push_back(e);
    }
    std::sort(entries.begin(), entries.end(),
              [](const AlphaEntry& a, const AlphaEntry& b) { return AlphaCompare(a, b) < 0; });
    if (!WriteU32At(f.get(), 0, static_cast<uint32_t>(entries.size())))
        return Discard(std::move(f), files.alphaPath);
    for (const AlphaEntry& e : entries)
        if (!WriteRecord<AlphaEntryLayout>(f.get(), e)) return Discard(std::move(f), files.alphaPath);
    if (std::fflush(f.get()) != 0) return Discard(std::move(f), files.alphaPath);
    *countOut = static_cast<long>(entries.size());
    return f;
}

FilePtr BuildPidIndex(const SupplementalFiles& files, FILE* data, uint32_t* highestOut) {
    FilePtr f = OpenFile(files.pidPath, "w+b");
    if (!f) return nullptr;
    long count = 0;
    if (!WriteU32At(f.get(), 0, 0) || !files.readCount(data, &count))
        return Discard(std::move(f), files.pidPath);
    // Records are in the order of their PIDs; a PID like the one before is
    // a repeat and keeps its first row. PID 0 can't exist: its slot is the
    // header.
    uint32_t previous = 0, highest = 0;
    for (long row = 0; row < count; ++row) {
        SupplementalKey key;
        if (!files.readKey(data, row, &key)) return Discard(std::move(f), files.pidPath);
        const uint32_t pid = key.pid;
        if (pid != previous && pid > 0 && pid <= kHighestIndexedPid) {
            if (!WriteU32At(f.get(), SlotOffset(pid), static_cast<uint32_t>(row)))
                return Discard(std::move(f), files.pidPath);
            highest = std::max(highest, pid);
        }
        previous = pid;
    }
    if (!WriteU32At(f.get(), 0, highest) || std::fflush(f.get()) != 0)
        return Discard(std::move(f), files.pidPath);
    *highestOut = highest;
    return f;
}

}  // namespace

void supplementalNameText(const char (&name)[33], char (&out)[34]) {
    std::memcpy(out, name, sizeof name);
    out[33] = '\0';
}

FilePtr openAlpha(const SupplementalFiles& files, FILE* data, long* countOut) {
    FilePtr f = OpenRegularFile(files.alphaPath, "r+b");
    uint32_t count = 0;
    if (f && ReadU32At(f.get(), 0, &count)) {
        *countOut = static_cast<long>(count);
        return f;
    }
    f.reset();
    return BuildAlpha(files, data, countOut);
}

int searchAlpha(FILE* alpha, long count, const char* text, AlphaEntry* entryOut) {
    char wanted[256];
    size_t n = 0;
    for (; text[n] != '\0' && n + 1 < sizeof wanted; ++n)
        wanted[n] = static_cast<char>(std::toupper(static_cast<unsigned char>(text[n])));
    wanted[n] = '\0';
    long low = 0, high = count - 1;
    while (low <= high) {
        const long mid = low + (high - low) / 2;
        uint8_t image[AlphaEntryLayout::kSize];
        if (std::fseek(alpha, kAlphaHeaderSize + mid * static_cast<long>(AlphaEntryLayout::kSize), SEEK_SET) != 0 ||
            FileRead(image, sizeof image, alpha) != sizeof image)
            return -1;
        AlphaEntry e;
        DecodeRecord<AlphaEntryLayout>(image, e);
        char name[34];
        supplementalNameText(e.name, name);
        if (PrefixMatch(wanted, name)) {
            *entryOut = e;
            return 1;
        }
        if (std::strcmp(wanted, name) < 0)
            high = mid - 1;
        else
            low = mid + 1;
    }
    return 0;
}

FilePtr openPidIndex(const SupplementalFiles& files, FILE* data, uint32_t* highestOut) {
    FilePtr f = OpenRegularFile(files.pidPath, "r+b");
    if (f && ReadU32At(f.get(), 0, highestOut)) return f;
    f.reset();
    return BuildPidIndex(files, data, highestOut);
}

int readPidSlot(FILE* index, uint32_t highest, uint32_t pid, uint32_t* rowOut) {
    if (pid < 1 || pid > highest || pid > kHighestIndexedPid) return 0;
    // A slot past the end of a file whose last PIDs were dropped is a gap.
    if (!ReadU32At(index, SlotOffset(pid), rowOut)) {
        if (std::ferror(index)) return -1;
        *rowOut = 0;
    }
    return 1;
}

int recordPid(const SupplementalFiles& files, FILE* data, uint32_t pid, long row) {
    if (pid < 1) return 1;
    FilePtr f = OpenRegularFile(files.pidPath, "r+b");
    uint32_t highest = 0;
    if (!f || !ReadU32At(f.get(), 0, &highest)) {
        f.reset();
        if (!files.rebuildOnRecord) {
            std::remove(files.pidPath);
            return 0;
        }
        return BuildPidIndex(files, data, &highest) ? 1 : 0;
    }
    if (pid > kHighestIndexedPid) return 1;
    if (!WriteU32At(f.get(), SlotOffset(pid), static_cast<uint32_t>(row)) ||
        (pid > highest && !WriteU32At(f.get(), 0, pid)) || std::fflush(f.get()) != 0) {
        Discard(std::move(f), files.pidPath);
        return 0;
    }
    return 1;
}

void dropAlpha(const SupplementalFiles& files) { std::remove(files.alphaPath); }
void dropPidIndex(const SupplementalFiles& files) { std::remove(files.pidPath); }

void dropSupplementalIndexes(const SupplementalFiles& files) {
    dropAlpha(files);
    dropPidIndex(files);
}
