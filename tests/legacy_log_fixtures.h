// Version 1.x observation logs for the tests, written through the readers'
// own layouts into the folder "legacy/log".
#pragma once

#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "legacy/legacy_logs.h"
#include "legacy_list_fixtures.h"

// A site on the Greenwich meridian at 51.5 degrees north whose clock runs
// `zoneHours` from UT, without summer time.
inline Site LogSite(const char* name, double zoneHours = 0.0, double latitudeDegrees = 51.5) {
    Site site;
    char text[33] = {};
    std::strncpy(text, name, 32);
    SiteInit(&site, 0.0, latitudeDegrees * 3.14159265358979323846 / 180.0, 0.0, 6.0, zoneHours, text);
    return site;
}

inline LegacyLogEntry LegacyEntry(uint8_t objectClass, uint32_t pid, double jd, const char* observer,
                                  const char* instrument, const Site& site, const char* conditions = "") {
    LegacyLogEntry e;
    e.jd = jd;
    e.site = site;
    e.objectClass = objectClass;
    e.pid = pid;
    e.sizeUnit = 2;
    std::memset(e.unused175, 0x5C, sizeof e.unused175);  // bytes nobody may carry over
    std::strncpy(e.observer, observer, sizeof e.observer - 1);
    std::strncpy(e.instrument, instrument, sizeof e.instrument - 1);
    std::strncpy(e.conditions, conditions, sizeof e.conditions - 1);
    return e;
}

// legacy/log/c<A + slot>/<number>.bin: the head, chained to `next`, then the
// note with its terminator (nothing for an empty note).
inline void WriteLegacyLogEntry(int slot, long number, LegacyLogEntry e, long next, const std::string& note = "") {
    e.nextEntry = static_cast<int32_t>(next);
    e.noteLength = static_cast<uint16_t>(note.empty() ? 0 : note.size() + 1);
    Bytes b;
    AppendImage<LegacyLogEntryLayout>(b, e);
    if (!note.empty()) b.insert(b.end(), note.c_str(), note.c_str() + note.size() + 1);
    const std::string path = LegacyLogEntryPath("legacy", slot, number);
    MakeDirs(std::filesystem::path(path).parent_path().string());
    WriteFileBytes(path, b);
}

// legacy/log/class.<slot> with one row per chain, each given by its first
// entry number; `count` as the file says it.
inline void WriteLegacyLogIndex(int slot, const std::vector<int32_t>& firstEntries, uint32_t count = 0) {
    Bytes b;
    AppendImage<LegacyLogIndexHeadLayout>(b, LegacyLogIndexHead{count, static_cast<uint32_t>(firstEntries.size())});
    for (int32_t first : firstEntries) AppendImage<LegacyLogIndexRowLayout>(b, LegacyLogIndexRow{0x77, first});
    MakeDirs("legacy/log");
    WriteFileBytes(LegacyLogIndexPath("legacy", slot), b);
}

// All twelve index files, without rows.
inline void WriteEmptyLegacyLogIndexes() {
    for (int slot = 0; slot < kLegacyLogSlots; ++slot) WriteLegacyLogIndex(slot, {});
}

// One entry of a chain: who observed with what, and where.
struct LogChainEntry {
    const char* observer;
    const char* instrument;
    const char* place = "Home";
    double latitudeDegrees = 51.5;
};

// Slot `slot` holds one row per chain given, its entries numbered on from 1
// across the slot; every other slot is empty.
inline void WriteLegacyLogChains(int slot, const std::vector<std::vector<LogChainEntry>>& chains) {
    WriteEmptyLegacyLogIndexes();
    std::vector<int32_t> firsts;
    int32_t number = 1;
    for (const std::vector<LogChainEntry>& chain : chains) {
        firsts.push_back(number);
        for (size_t i = 0; i < chain.size(); ++i, ++number) {
            const LogChainEntry& c = chain[i];
            const LegacyLogEntry e = LegacyEntry(5, 6990, 2450000.5, c.observer, c.instrument,
                                                 LogSite(c.place, 0.0, c.latitudeDegrees));
            WriteLegacyLogEntry(slot, number, e, i + 1 < chain.size() ? number + 1 : -1);
        }
    }
    WriteLegacyLogIndex(slot, firsts);
}
