// Version 1.x log folders for the tests of the Logs page, written through
// the readers' own layouts: twelve class files of chains, and one file per
// entry.
#pragma once

#include <cstring>
#include <string>
#include <vector>

#include "base/record_layout.h"
#include "legacy/legacy_logs.h"
#include "support.h"

// One entry: where it was made and by whom with what. The place keeps only
// its name and coordinates.
struct LogFixtureEntry {
    const char* observer;
    const char* instrument;
    const char* place = "Home";
    double longitude = 1.0;
    double latitude = 0.5;
};

inline LegacyLogEntry LegacyLogEntryOf(const LogFixtureEntry& e, int32_t next) {
    LegacyLogEntry entry;
    entry.nextEntry = next;
    entry.jd = 2450000.5;
    entry.site.longitude = e.longitude;
    entry.site.latitude = e.latitude;
    std::strncpy(entry.site.name, e.place, sizeof entry.site.name - 1);
    std::strncpy(entry.observer, e.observer, sizeof entry.observer - 1);
    std::strncpy(entry.instrument, e.instrument, sizeof entry.instrument - 1);
    return entry;
}

inline void WriteLegacyLogEntryFile(const std::string& root, int slot, long number,
                                    const LegacyLogEntry& entry) {
    const auto image = RecordImage<LegacyLogEntryLayout>(entry);
    MakeDirs(root + "/log/c" + static_cast<char>('A' + slot));
    WriteFileBytes(LegacyLogEntryPath(root, slot, number), Bytes(image.begin(), image.end()));
}

inline void WriteLegacyLogIndexFile(const std::string& root, int slot, const std::vector<int32_t>& firstEntries) {
    LegacyLogIndexHead head;
    head.count = head.num = static_cast<uint32_t>(firstEntries.size());
    const auto headImage = RecordImage<LegacyLogIndexHeadLayout>(head);
    Bytes b(headImage.begin(), headImage.end());
    for (int32_t first : firstEntries) {
        LegacyLogIndexRow row;
        row.firstEntry = first;
        const auto rowImage = RecordImage<LegacyLogIndexRowLayout>(row);
        b.insert(b.end(), rowImage.begin(), rowImage.end());
    }
    WriteFileBytes(LegacyLogIndexPath(root, slot), b);
}

// A log folder whose slot `slot` holds the chains given, each a run of
// entries numbered on from 1 across the slot; every other slot is empty.
inline void WriteLegacyLogFolder(const std::string& root, int slot,
                                 const std::vector<std::vector<LogFixtureEntry>>& chains) {
    MakeDirs(root + "/log");
    for (int s = 0; s < kLegacyLogSlots; ++s)
        if (s != slot) WriteLegacyLogIndexFile(root, s, {});
    std::vector<int32_t> firsts;
    int32_t number = 1;
    for (const std::vector<LogFixtureEntry>& chain : chains) {
        firsts.push_back(number);
        for (size_t i = 0; i < chain.size(); ++i, ++number) {
            const int32_t next = i + 1 < chain.size() ? number + 1 : -1;
            WriteLegacyLogEntryFile(root, slot, number, LegacyLogEntryOf(chain[i], next));
        }
    }
    WriteLegacyLogIndexFile(root, slot, firsts);
}
