#include "legacy/legacy_logs.h"

#include <cstdio>
#include <cstring>
#include <vector>

#include "base/file_io.h"
#include "legacy/legacy_file.h"

std::string LegacyLogIndexPath(const std::string& legacyRoot, int slot) {
    char name[32];
    std::snprintf(name, sizeof name, "log/class.%d", slot);
    return LegacyFilePath(legacyRoot, name);
}

std::string LegacyLogEntryPath(const std::string& legacyRoot, int slot, long number) {
    char name[48];
    std::snprintf(name, sizeof name, "log/c%c/%08ld.bin", static_cast<char>('A' + slot), number);
    return LegacyFilePath(legacyRoot, name);
}

FilePtr OpenLegacyLogIndex(const std::string& legacyRoot, int slot) {
    return OpenRegularFile(LegacyLogIndexPath(legacyRoot, slot).c_str(), "rb");
}

int ReadLegacyLogCount(FILE* index, uint32_t* count) { return index && ReadU32(index, count); }

int ReadLegacyLogNum(FILE* index, uint32_t* num) { return index && ReadU32(index, num); }

int SeekLegacyLogRows(FILE* index) {
    return index && std::fseek(index, static_cast<long>(LegacyLogIndexHeadLayout::kSize), SEEK_SET) == 0;
}

int ReadLegacyLogRow(FILE* index, LegacyLogIndexRow* row) {
    return index && row && ReadRecord<LegacyLogIndexRowLayout>(index, *row);
}

long ReadLegacyLogEntry(const std::string& legacyRoot, int slot, long number, LegacyLogEntry* entryOut,
                        std::string* noteOut) {
    FilePtr f = OpenRegularFile(LegacyLogEntryPath(legacyRoot, slot, number).c_str(), "rb");
    LegacyLogEntry entry;
    if (!f || !ReadRecord<LegacyLogEntryLayout>(f.get(), entry)) return 0;
    entry.site.name[sizeof entry.site.name - 1] = '\0';
    entry.observer[sizeof entry.observer - 1] = '\0';
    entry.instrument[sizeof entry.instrument - 1] = '\0';
    entry.conditions[sizeof entry.conditions - 1] = '\0';
    std::string note;
    if (entry.noteLength > 0) {
        // What the note's bytes hold up to its terminator; a short file gives
        // what there is.
        std::vector<char> bytes(entry.noteLength + 1u, '\0');
        const size_t got = FileRead(bytes.data(), entry.noteLength, f.get());
        note.assign(bytes.data(), strnlen(bytes.data(), got));
    }
    if (entryOut) *entryOut = entry;
    if (noteOut) *noteOut = std::move(note);
    return entry.nextEntry;
}

void CleanObserverName(char* name) {
    if (!name) return;
    char* out = name;
    for (const char* in = name; *in; ++in)
        if (*in != '\t' && *in != '\n' && *in != '\r') *out++ = *in;
    *out = '\0';
}
