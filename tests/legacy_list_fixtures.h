// Version 1.x observing lists and object files for the tests, written
// through the readers' own layouts into the folder "legacy".
#pragma once

#include <cstring>
#include <string>
#include <vector>

#include "base/le_bytes.h"
#include "base/record_layout.h"
#include "legacy/legacy_lists.h"
#include "legacy/legacy_objects.h"
#include "support.h"

template <class Layout, class R>
void AppendImage(Bytes& b, const R& record) {
    const auto image = RecordImage<Layout>(record);
    b.insert(b.end(), image.begin(), image.end());
}

// A head of `size` bytes whose first `countBytes` hold the count; the rest
// is filled with a pattern nobody may read.
inline Bytes HeadBytes(size_t size, size_t countBytes, uint32_t count) {
    Bytes b(size, 0xA5);
    for (size_t i = 0; i < countBytes; ++i) b[i] = static_cast<uint8_t>(count >> (8 * i));
    return b;
}

inline LegacyListObject ListObject(uint8_t objectClass, uint32_t pid, uint8_t sizeUnit = 2) {
    LegacyListObject o;
    std::memset(o.lead, 0x11, sizeof o.lead);  // bytes the job must not carry over
    std::memset(o.tail, 0x22, sizeof o.tail);
    o.objectClass = objectClass;
    o.pid = pid;
    o.sizeUnit = sizeUnit;
    return o;
}

// One index row: a list with its objects, or a free row (no file).
struct LegacyList {
    std::string name;
    std::vector<LegacyListObject> objects;
    bool free = false;
    int countOverride = -1;  // the index's object count, when it isn't the number of rows
};

inline LegacyList FreeRow() { return LegacyList{"", {}, true}; }

inline Bytes LegacyListFile(const std::vector<LegacyListObject>& objects) {
    Bytes b(kLegacyListHeaderSize, 0x5A);
    for (const LegacyListObject& o : objects) AppendImage<LegacyListObjectLayout>(b, o);
    return b;
}

// legacy/obs.idx and legacy/obs.NNN for every list row.
inline void WriteLegacyLists(const std::vector<LegacyList>& lists) {
    Bytes index = HeadBytes(2, 2, static_cast<uint32_t>(lists.size()));
    for (size_t i = 0; i < lists.size(); ++i) {
        const LegacyList& l = lists[i];
        LegacyListRow row;
        std::strncpy(row.name, l.name.c_str(), sizeof row.name - 1);
        row.objectCount = l.free ? kLegacyFreeListRow
                                 : static_cast<uint16_t>(l.countOverride >= 0 ? l.countOverride : l.objects.size());
        AppendImage<LegacyListRowLayout>(index, row);
        if (!l.free) WriteFileBytes(LegacyListPath("legacy", static_cast<int>(i)), LegacyListFile(l.objects));
    }
    WriteFileBytes("legacy/obs.idx", index);
}

inline LegacyCometRow LegacyComet(uint16_t pid, const char* name, double epoch, uint16_t number = 0) {
    LegacyCometRow r;
    r.pid = pid;
    r.number = number;
    r.letter = number ? 'P' : 'C';
    std::strncpy(r.name, name, sizeof r.name - 1);
    std::memcpy(r.iau, "2020 F3", 7);
    r.perihelionEpoch = r.epoch = epoch;
    r.perihelionDistance = 0.2946f;
    r.eccentricity = 0.99918f;
    r.coefficient = 2000;
    return r;
}

inline UserMpRecord LegacyMinorPlanet(uint32_t pid, const char* name, uint32_t number, double epoch) {
    UserMpRecord r;
    std::strncpy(r.name, name, sizeof r.name - 1);
    r.number = number;
    r.pid = pid;
    r.epoch = r.perihelionEpoch = epoch;
    r.perihelionDistance = 1.13;
    r.semiMajorAxis = 1.458;
    r.eccentricity = 0.223;
    return r;
}

inline StellarRecord LegacyStar(uint32_t pid, const char* name) {
    StellarRecord r;
    r.pid = pid;
    std::strncpy(r.name, name, sizeof r.name - 1);
    r.magnitude = 750;
    return r;
}

inline void WriteLegacyComets(const std::vector<LegacyCometRow>& rows) {
    Bytes b = HeadBytes(kLegacyCometHead, 2, static_cast<uint32_t>(rows.size()));
    for (const LegacyCometRow& r : rows) AppendImage<LegacyCometLayout>(b, r);
    WriteFileBytes("legacy/comet.bin", b);
}

inline void WriteLegacyMinorPlanets(const std::vector<UserMpRecord>& rows) {
    Bytes b = HeadBytes(kLegacyMinorPlanetHead, 4, static_cast<uint32_t>(rows.size()));
    for (const UserMpRecord& r : rows) AppendImage<UserMpLayout>(b, r);
    WriteFileBytes("legacy/mp.bin", b);
}

inline void WriteLegacyStars(const std::vector<StellarRecord>& rows) {
    Bytes b = HeadBytes(kLegacyStellarHead, 2, static_cast<uint32_t>(rows.size()));
    for (const StellarRecord& r : rows) AppendImage<StellarRecordLayout>(b, r);
    WriteFileBytes("legacy/stellar.bin", b);
}
