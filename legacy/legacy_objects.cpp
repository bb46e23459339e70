#include "legacy/legacy_objects.h"

#include <climits>
#include <cstdio>
#include <cstring>

#include "base/le_bytes.h"
#include "legacy/legacy_file.h"

namespace {

constexpr const char* kCometFile = "comet.bin";
constexpr const char* kMinorPlanetFile = "mp.bin";
constexpr const char* kStellarFile = "stellar.bin";
constexpr const char* kPidMapFile = "us_pid.bin";

// Seeks to a place given as a wider number; 0 when it doesn't fit a long.
int SeekTo(FILE* stream, long long place) {
    if (place < 0 || place > LONG_MAX) return 0;
    return std::fseek(stream, static_cast<long>(place), SEEK_SET) == 0 ? 1 : 0;
}

// Opens a legacy object file whose head begins with a u16 count.
FilePtr OpenWithCount16(const std::string& legacyRoot, const char* name, int* countOut) {
    FilePtr f = OpenRegularFile(LegacyFilePath(legacyRoot, name).c_str(), "rb");
    uint16_t count = 0;
    if (!f || !ReadU16(f.get(), &count)) return nullptr;
    if (countOut) *countOut = count;
    return f;
}

// The number of rows from the first one up to the stream's place: the row
// number behind the row just read. -1 when the place can't be told.
template <class Layout>
long RowsBehind(FILE* stream, long head) {
    const long place = std::ftell(stream);
    if (place < 0) return -1;
    return (place - head) / static_cast<long>(Layout::kSize);
}

// The run reader over any file of rows that carry a PID. A buffer whose PID
// is 0 has just been rewound: the call searches for the run. Otherwise it
// takes one step along the run.
template <class Layout, class Row>
int NextRunRow(FILE* stream, Row* row, long* indexOut, uint32_t pid, long count, long head) {
    long index = 0;
    if (indexOut) *indexOut = 0;
    if (!stream || !row) return 0;
    if (row->pid == 0) {
        while (row->pid != pid && index < count) {
            if (!ReadRecord<Layout>(stream, *row)) return 0;
            index = RowsBehind<Layout>(stream, head);
            if (index < 0) return 0;
        }
        if (indexOut) *indexOut = index - 1;
        return row->pid == pid ? 1 : 0;
    }
    if (!ReadRecord<Layout>(stream, *row)) return 0;
    index = RowsBehind<Layout>(stream, head);
    if (indexOut) *indexOut = index;
    if (index < 0 || index > count) return 0;
    if (indexOut) *indexOut = index - 1;
    return row->pid == pid ? 1 : 0;
}

// Steps 3 to 5 of the rebuild: the map of the first row of every run of
// equal PIDs, and its highest PID at the head. 1, or 0 on any failure.
int WritePidMap(FILE* map, FILE* stellar) {
    uint16_t count = 0;
    if (std::fseek(stellar, 0, SEEK_SET) != 0 || !ReadU16(stellar, &count)) return 0;
    if (!WriteU32(map, 0) || std::fseek(stellar, kLegacyStellarHead, SEEK_SET) != 0) return 0;
    uint32_t maxPid = 0;
    uint32_t lastPid = 0;
    for (uint32_t row = 0; row < count; ++row) {
        StellarRecord r;
        if (!ReadRecord<StellarRecordLayout>(stellar, r)) return 0;
        if (r.pid == lastPid) continue;
        if (!SeekTo(map, 4LL * r.pid) || !WriteU32(map, row)) return 0;
        lastPid = r.pid;
        if (r.pid > maxPid) maxPid = r.pid;
    }
    if (std::fseek(map, 0, SEEK_SET) != 0 || !WriteU32(map, maxPid)) return 0;
    return std::fflush(map) == 0 ? 1 : 0;
}

FilePtr DropPidMap(FilePtr map, const std::string& path) {
    map.reset();
    std::remove(path.c_str());
    return nullptr;
}

}  // namespace

CometRecord WidenLegacyComet(const LegacyCometRow& row) {
    CometRecord out;
    out.number = row.number;
    out.letter = row.letter;
    std::memcpy(out.name, row.name, sizeof row.name);
    std::memcpy(out.iau, row.iau, sizeof row.iau);
    out.iau[sizeof row.iau] = '\0';
    out.pid = row.pid;
    out.perihelionEpoch = row.perihelionEpoch;
    out.epoch = row.epoch;
    out.perihelionDistance = row.perihelionDistance;
    out.eccentricity = row.eccentricity;
    out.argPerihelion = row.argPerihelion;
    out.node = row.node;
    out.inclination = row.inclination;
    out.brightnessG = row.brightnessG;
    out.brightnessK = row.brightnessK;
    out.coefficient = row.coefficient;
    std::memcpy(out.source, row.source, sizeof row.source);
    return out;
}

FilePtr OpenLegacyComets(const std::string& legacyRoot, int* countOut) {
    return OpenWithCount16(legacyRoot, kCometFile, countOut);
}

int RewindLegacyComets(FILE* stream, LegacyCometRow* rowBuffer) {
    if (rowBuffer) rowBuffer->pid = 0;
    return stream && std::fseek(stream, kLegacyCometHead, SEEK_SET) == 0 ? 1 : 0;
}

int NextLegacyCometRow(FILE* stream, LegacyCometRow* row, long* indexOut, uint32_t pid, long count) {
    return NextRunRow<LegacyCometLayout>(stream, row, indexOut, pid, count, kLegacyCometHead);
}

FilePtr OpenLegacyMinorPlanets(const std::string& legacyRoot, uint32_t* countOut) {
    FilePtr f = OpenRegularFile(LegacyFilePath(legacyRoot, kMinorPlanetFile).c_str(), "rb");
    uint32_t count = 0;
    if (!f || !ReadU32(f.get(), &count)) return nullptr;
    if (countOut) *countOut = count;
    return f;
}

int RewindLegacyMinorPlanets(FILE* stream, UserMpRecord* rowBuffer) {
    if (rowBuffer) rowBuffer->pid = 0;
    return stream && std::fseek(stream, kLegacyMinorPlanetHead, SEEK_SET) == 0 ? 1 : 0;
}

int NextLegacyMinorPlanetRow(FILE* stream, UserMpRecord* row, long* indexOut, uint32_t pid,
                             long count) {
    return NextRunRow<UserMpLayout>(stream, row, indexOut, pid, count, kLegacyMinorPlanetHead);
}

FilePtr OpenLegacyStellar(const std::string& legacyRoot, int* countOut) {
    FilePtr f = OpenWithCount16(legacyRoot, kStellarFile, countOut);
    if (!f || std::fseek(f.get(), kLegacyStellarHead, SEEK_SET) != 0) return nullptr;
    return f;
}

std::string LegacyPidMapPath(const std::string& legacyRoot) {
    return LegacyFilePath(legacyRoot, kPidMapFile);
}

FilePtr OpenLegacyPidMap(const std::string& legacyRoot, FILE* stellarStream, uint32_t* maxPidOut) {
    const std::string path = LegacyPidMapPath(legacyRoot);
    FilePtr map = OpenRegularFile(path.c_str(), "rb");
    if (!map) {
        // Nothing is made without the stars to make it from, and nothing that
        // stands in the map's place and is no file is ever replaced.
        if (!stellarStream || IsOddFile(path.c_str())) return nullptr;
        map = OpenFile(path.c_str(), "w+b");
        if (!map) return nullptr;
        if (!WritePidMap(map.get(), stellarStream)) return DropPidMap(std::move(map), path);
    }
    uint32_t maxPid = 0;
    if (std::fseek(map.get(), 0, SEEK_SET) != 0 || !ReadU32(map.get(), &maxPid))
        return DropPidMap(std::move(map), path);
    if (maxPidOut) *maxPidOut = maxPid;
    return map;
}

int FindLegacyStar(const std::string& legacyRoot, FILE* stellarStream, uint32_t pid,
                   StellarRecord* rowOut, long* rowNumberOut) {
    uint32_t maxPid = 0;
    FilePtr map = OpenLegacyPidMap(legacyRoot, stellarStream, &maxPid);
    if (!map || pid > maxPid) return 0;
    uint32_t rowNumber = 0;
    if (!SeekTo(map.get(), 4LL * pid) || !ReadU32(map.get(), &rowNumber)) return 0;
    StellarRecord row;
    const long long place = static_cast<long long>(StellarRecordLayout::kSize) * rowNumber + kLegacyStellarHead;
    if (!SeekTo(stellarStream, place) || !ReadRecord<StellarRecordLayout>(stellarStream, row)) return 0;
    if (rowOut) *rowOut = row;
    if (rowNumberOut) *rowNumberOut = static_cast<long>(rowNumber) + 1;
    return static_cast<int>(static_cast<int32_t>(row.pid));
}
