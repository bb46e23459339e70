#include "stores/object_block.h"

#include <cstring>
#include <vector>

#include "base/file_io.h"
#include "base/file_utils.h"
#include "base/le_bytes.h"
#include "base/record_layout.h"
#include "catalog/comet_files.h"
#include "catalog/object_record.h"
#include "catalog/user_comets.h"
#include "catalog/user_deep_sky.h"
#include "catalog/user_minor_planets.h"
#include "catalog/user_stars.h"

namespace {

// The record of `pid` in a star or deep-sky store, or a zero record when the
// store or the object isn't there. 0 when a store that is there can't be read.
template <class Record, class Open, class ReadRow>
int FindSupplemental(const char* path, Open open, ReadRow readRow, uint32_t pid, Record* out) {
    *out = Record{};
    if (!FileExists(path)) return 1;
    long count = 0;
    FilePtr store = open(&count);
    if (!store) return 0;
    for (long row = 0; row < count; ++row) {
        Record r;
        if (!readRow(store.get(), &r, row)) return 0;
        if (r.pid == pid) {
            *out = r;
            return 1;
        }
    }
    return 1;
}

int WriteComets(FILE* out, uint32_t pid) {
    std::vector<CometRecord> rows;
    if (FileExists(kUserCometPath)) {
        FilePtr store = OpenRegularFile(kUserCometPath, "rb");
        CometWalk walk;
        if (!store || !beginCometWalk(&walk, store.get())) return 0;
        CometRecord r;
        while (nextCometRow(&walk, &r) >= 0)
            if (r.pid == pid) rows.push_back(r);
        if (walk.row != walk.count) return 0;
    }
    if (!WriteU16(out, static_cast<uint16_t>(rows.size()))) return 0;
    for (const CometRecord& r : rows)
        if (!WriteRecord<CometLayout>(out, r)) return 0;
    return 1;
}

int WriteMinorPlanets(FILE* out, uint32_t pid) {
    std::vector<UserMpRecord> rows;
    if (FileExists(kUserMpPath)) {
        FilePtr store = OpenRegularFile(kUserMpPath, "rb");
        std::vector<UserMpRecord> all;
        if (!store || !readUserMpAll(store.get(), &all, nullptr)) return 0;
        for (const UserMpRecord& r : all)
            if (r.pid == pid) rows.push_back(r);
    }
    if (!WriteU32(out, static_cast<uint32_t>(rows.size()))) return 0;
    for (const UserMpRecord& r : rows)
        if (!WriteRecord<UserMpLayout>(out, r)) return 0;
    return 1;
}

// A zero record stands for an object that was gone when the file was made.
template <class Record>
bool IsEmptyRecord(const Record& r) {
    return r.pid == 0 && r.name[0] == '\0';
}

// Adds the star or deep-sky object by the store's add rule, which gives the
// PID. The alphabetical index has not learnt the name: it goes, and the
// next search by name builds it again.
template <class Record, class Layout, class Open, class Add, class Drop>
int ReadSupplemental(FILE* in, uint32_t* pid, Open open, Add add, Drop drop) {
    Record r;
    if (!ReadRecord<Layout>(in, r)) return 0;
    if (IsEmptyRecord(r)) return 1;
    FilePtr store = open(nullptr);
    if (!store || add(store.get(), &r) == 0) return 0;
    store.reset();
    drop();
    *pid = r.pid;
    return 1;
}

// Each row goes through the add rule; all rows of one comet come out under
// one PID. A row already there with the same elements changes nothing and
// still names the comet.
int ReadComets(FILE* in, uint32_t* pid) {
    uint16_t count = 0;
    if (!ReadU16(in, &count)) return 0;
    if (count == 0) return 1;
    FilePtr store = openUserComets(nullptr);
    if (!store) return 0;
    for (uint16_t i = 0; i < count; ++i) {
        CometRecord r;
        if (!ReadRecord<CometLayout>(in, r)) return 0;
        bool writeFailed = false;
        uint16_t stored = 0;
        if (addOrReplaceUserComet(store.get(), r, &writeFailed, &stored) == 0 || writeFailed) return 0;
        *pid = stored;
    }
    return 1;
}

// Rows of another epoch become an object of their own under the store's add
// rule; the list names the object of the first row, which is the newest
// elements, since the store keeps an object's rows newest first.
int ReadMinorPlanets(FILE* in, uint32_t* pid, ObjectBlockImport* import) {
    uint32_t count = 0;
    if (!ReadU32(in, &count)) return 0;
    if (count == 0) return 1;
    if (count > kUserMpMaxRows) return 0;
    uint32_t stored = 0;
    FilePtr store = openUserMp(&stored);
    if (!store) return 0;
    for (uint32_t i = 0; i < count; ++i) {
        UserMpRecord r;
        if (!ReadRecord<UserMpLayout>(in, r)) return 0;
        uint32_t rowPid = 0;
        const int added = addOrReplaceUserMp(store.get(), r, &stored, &rowPid);
        if (added == 0) return 0;
        if (added == 1 && import) import->minorPlanetsAdded = true;
        if (i == 0) *pid = rowPid;
    }
    return 1;
}

}  // namespace

int ObjectBlockWrite(FILE* out, int objectClass, uint32_t pid) {
    if (!out) return 0;
    switch (objectClass) {
        case kClassSupplementalStar: {
            StellarRecord r;
            if (!FindSupplemental(kStellarPath, openStellarForReading, readStellarRow, pid, &r)) return 0;
            return WriteRecord<StellarRecordLayout>(out, r);
        }
        case kClassSupplementalDeepSky: {
            UdsRecord r;
            if (!FindSupplemental(kUdsPath, openUdsForReading, readUdsRow, pid, &r)) return 0;
            return WriteRecord<UdsRecordLayout>(out, r);
        }
        case kClassUserComet:
            return WriteComets(out, pid);
        case kClassUserMinorPlanet:
            return WriteMinorPlanets(out, pid);
        default:
            return 1;
    }
}

int ObjectBlockRead(FILE* in, int objectClass, uint32_t* pid, ObjectBlockImport* import) {
    if (!in || !pid) return 0;
    switch (objectClass) {
        case kClassSupplementalStar:
            return ReadSupplemental<StellarRecord, StellarRecordLayout>(in, pid, openStellar, addOrReplaceStellar,
                                                                        dropStellarIndexes);
        case kClassSupplementalDeepSky:
            return ReadSupplemental<UdsRecord, UdsRecordLayout>(in, pid, openUds, addOrReplaceUds, dropUdsIndexes);
        case kClassUserComet:
            return ReadComets(in, pid);
        case kClassUserMinorPlanet:
            return ReadMinorPlanets(in, pid, import);
        default:
            return 1;
    }
}

int ObjectBlockSkip(FILE* in, int objectClass) {
    if (!in) return 0;
    long bytes = 0;
    switch (objectClass) {
        case kClassSupplementalStar: bytes = StellarRecordLayout::kSize; break;
        case kClassSupplementalDeepSky: bytes = UdsRecordLayout::kSize; break;
        case kClassUserComet: {
            uint16_t count = 0;
            if (!ReadU16(in, &count)) return 0;
            bytes = static_cast<long>(count) * static_cast<long>(CometLayout::kSize);
            break;
        }
        case kClassUserMinorPlanet: {
            uint32_t count = 0;
            if (!ReadU32(in, &count) || count > kUserMpMaxRows) return 0;
            bytes = static_cast<long>(count) * static_cast<long>(UserMpLayout::kSize);
            break;
        }
        default: return 1;
    }
    // A seek past the end succeeds; the read of what follows then fails.
    std::vector<uint8_t> skipped(static_cast<size_t>(bytes));
    return skipped.empty() || FileRead(skipped.data(), skipped.size(), in) == skipped.size() ? 1 : 0;
}

int ObjectBlockFinish(ObjectBlockImport* import) {
    if (!import || !import->minorPlanetsAdded) return 1;
    import->minorPlanetsAdded = false;
    uint32_t count = 0;
    FilePtr store = openUserMp(&count);
    return store && sortUserMp(&store, &count) ? 1 : 0;
}
