// What the user's star store and deep-sky store share: a data file of a
// header (record count, last PID issued) and fixed-size records in the
// order of their addition, with the two derived indexes beside it. Each
// store describes itself by a shape:
//
//   struct FooShape {
//       using Header = ...;  using HeaderLayout = ...;  // count at 0, u32 last PID behind it
//       using Record = ...;  using Layout = ...;        // u32 `pid` at 0, char `name`[33]
//       static constexpr int kObjectClass = ...;
//       static const SupplementalFiles& Files();
//       static uint32_t CascadeMask(const Record&);      // the mask handed to the cascade
//       static SupplementalPlace Place(const Record&);   // J2000 radians, magnitude
//       static int ParseLine(const char* line, Record*); // 1 an object, 0 bad, -1 not one of ours
//       static bool ScanPasses(const Record&, const SupplementalScanLimits&);  // the kind's own limits
//   };
//
// and its file instantiates these templates under the names its callers
// know. Every operation answers 1 for success and 0 for failure unless told
// otherwise, and reports nothing.
#pragma once

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "base/file_utils.h"
#include "base/record_layout.h"
#include "base/store_damage.h"
#include "catalog/catalogue_codes.h"
#include "catalog/delete_cascade.h"
#include "catalog/object_record.h"
#include "catalog/supplemental_indexes.h"
#include "catalog/supplemental_text.h"

// A record's place and brightness in engine units.
struct SupplementalPlace {
    double ra = 0;  // J2000, radians
    double dec = 0;
    double magnitude = 99.9;
};

// A rectangle of a constellation's B1875.0 boundary, radians, bounds in the
// order of the boundary files.
struct SupplementalRectangle {
    double raFirst = 0;
    double raSecond = 0;
    double decFirst = 0;
    double decSecond = 0;
};

inline constexpr uint32_t kScanDistance = 1u << 2;
inline constexpr uint32_t kScanConstellations = 1u << 6;
inline constexpr size_t kScanRectanglesPerList = 25;
inline constexpr double kScanNoLimit = 2147483647.0;
inline constexpr int kScanProgress = -10;

// The limits of a filtered pass. Magnitude limits of 90 and above are none.
struct SupplementalScanLimits {
    double magnitudeLow = 99.0;   // a record fainter than 90 or brighter than this is skipped
    double magnitudeHigh = 99.0;  // a record fainter than 90 or than this is skipped
    uint32_t flags = 0;
    // With kScanConstellations: the record lies in a rectangle of one list.
    std::vector<std::vector<SupplementalRectangle>> constellations;
    // With kScanDistance: the record lies within `distance` of the centre.
    double centreRa = 0;
    double centreDec = 0;
    double distance = 0;
    // Deep-sky objects only: the class mask, and the largest major and minor
    // diameter in radians (kScanNoLimit for none).
    uint32_t classMask = 0xFFFFFFFFu;
    double majorLimit = kScanNoLimit;
    double minorLimit = kScanNoLimit;
    const int* cancel = nullptr;  // a nonzero value ends the pass
};

// A text import under way: the text and the store, and the size of a batch.
struct SupplementalImport {
    FilePtr text;
    FilePtr data;
    long estimatedLines = 0;
    long batchLines = 1;
    long writeFailures = 0;  // good lines that could not be stored; counted as bad as well
};

// A filtered pass under way.
struct SupplementalScan {
    FilePtr data;
    SupplementalScanLimits limits;
    long row = 0;
    long count = 0;
    long step = 1;
    long sinceReport = 0;
};


// The name and place of a record as the place lookups hand them out; any
// pointer may be null.
void supplementalPlaceOut(const char (&name)[33], const SupplementalPlace& place, std::string* nameOut,
                          double* raOut, double* decOut, double* magOut);

// Whether a place passes the limits that both stores share.
bool supplementalScanPasses(const SupplementalPlace& place, const SupplementalScanLimits& limits);

namespace supplemental {

template <class S>
long RecordOffset(long row) {
    return static_cast<long>(S::HeaderLayout::kSize) + row * static_cast<long>(S::Layout::kSize);
}

template <class S>
int ReadHeader(FILE* f, typename S::Header* h) {
    if (std::fseek(f, 0, SEEK_SET) != 0) return 0;
    return ReadRecord<typename S::HeaderLayout>(f, *h);
}

// The last PID issued, from the head; -1 when the head can't be read.
template <class S>
long LastPid(FILE* f) {
    typename S::Header h;
    return ReadHeader<S>(f, &h) ? static_cast<long>(h.lastPid) : -1;
}

// The last PID goes first and the count last, so that a write that fails
// half-way never leaves a count that takes in a record whose PID the header
// doesn't know.
template <class S>
int WriteHeader(FILE* f, const typename S::Header& h) {
    using HL = typename S::HeaderLayout;
    const auto image = RecordImage<HL>(h);
    constexpr size_t kCountBytes = HL::kSize - 4;
    if (std::fseek(f, static_cast<long>(kCountBytes), SEEK_SET) != 0 ||
        FileWrite(image.data() + kCountBytes, 4, f) != 4)
        return 0;
    if (std::fseek(f, 0, SEEK_SET) != 0 || FileWrite(image.data(), kCountBytes, f) != kCountBytes) return 0;
    return 1;
}

template <class S>
int ReadCount(FILE* f, long* count) {
    typename S::Header h;
    if (!ReadHeader<S>(f, &h)) return 0;
    *count = static_cast<long>(h.count);
    return 1;
}

// A row as it stands in the file, counted or not.
template <class S>
int ReadRowImage(FILE* f, long row, typename S::Record* r) {
    if (row < 0 || std::fseek(f, RecordOffset<S>(row), SEEK_SET) != 0) return 0;
    return ReadRecord<typename S::Layout>(f, *r);
}

template <class S>
int WriteRowImage(FILE* f, long row, const typename S::Record& r) {
    if (row < 0 || std::fseek(f, RecordOffset<S>(row), SEEK_SET) != 0) return 0;
    return WriteRecord<typename S::Layout>(f, r);
}

template <class S>
int ReadKey(FILE* f, long row, SupplementalKey* key) {
    typename S::Record r;
    if (!ReadRowImage<S>(f, row, &r)) return 0;
    key->pid = r.pid;
    std::memcpy(key->name, r.name, sizeof key->name);
    return 1;
}

// The opened store at its first record with its count; null when the count
// can't be read or promises more records than the file holds.
template <class S>
FilePtr AtFirstRecord(FilePtr f, long* countOut) {
    long count = 0;
    if (!ReadCount<S>(f.get(), &count)) return nullptr;
    if (CheckStreamCount(f.get(), static_cast<long>(S::HeaderLayout::kSize), S::Layout::kSize, count) !=
        StoreDamage::kNone)
        return nullptr;
    if (std::fseek(f.get(), RecordOffset<S>(0), SEEK_SET) != 0) return nullptr;
    if (countOut) *countOut = count;
    return f;
}

// Opens the data file for reading only; null when it is missing, too short
// for its header, or its count promises more records than it holds.
template <class S>
FilePtr OpenForReading(long* countOut) {
    FilePtr f = OpenRegularFile(S::Files().dataPath, "rb");
    return f ? AtFirstRecord<S>(std::move(f), countOut) : nullptr;
}

// Opens the store for update. A store that isn't there yet (or is shorter
// than its header) is made empty, with a last PID of 0, and any index left
// from an earlier store is removed. Null when it can be neither opened nor
// made, or when its count runs past its end: such a store is not added to.
template <class S>
FilePtr Open(long* countOut) {
    const SupplementalFiles& files = S::Files();
    if (IsOddFile(files.dataPath)) return nullptr;
    FilePtr f = OpenFile(files.dataPath, "r+b");
    // A store that is there but won't open (no access, held by another
    // program) is never made anew over the old one.
    if (!f && FileExists(files.dataPath)) return nullptr;
    if (!f || StreamSize(f.get()) < static_cast<int64_t>(S::HeaderLayout::kSize)) {
        f.reset();
        f = OpenFile(files.dataPath, "wb");
        if (!f || !WriteHeader<S>(f.get(), typename S::Header{}) || std::fclose(f.release()) != 0) return nullptr;
        dropSupplementalIndexes(files);
        f = OpenFile(files.dataPath, "r+b");
        if (!f) return nullptr;
    }
    return AtFirstRecord<S>(std::move(f), countOut);
}

template <class S>
int ReadRow(FILE* f, typename S::Record* r, long row) {
    long count = 0;
    if (!ReadCount<S>(f, &count) || row < 0 || row >= count) return 0;
    return ReadRowImage<S>(f, row, r);
}

template <class S>
int RewriteRow(FILE* f, const typename S::Record& r, long row) {
    long count = 0;
    if (!ReadCount<S>(f, &count) || row < 0 || row >= count) return 0;
    if (!WriteRowImage<S>(f, row, r)) return 0;
    return std::fflush(f) == 0 ? 1 : 0;
}

// The record takes the next PID and goes behind the last one; the header
// follows. The count has as many bits as the file's field: a store full to
// the top of it wraps round to 0.
template <class S>
int Append(FILE* f, typename S::Record* r) {
    typename S::Header h;
    if (!ReadHeader<S>(f, &h)) return 0;
    r->pid = h.lastPid + 1;
    if (!WriteRowImage<S>(f, static_cast<long>(h.count), *r)) return 0;
    h.count = static_cast<decltype(h.count)>(h.count + 1);
    h.lastPid = r->pid;
    if (!WriteHeader<S>(f, h)) return 0;
    return std::fflush(f) == 0 ? 1 : 0;
}

// The add rule: a record of the same name, compared exactly, is written
// over and keeps its PID (2); otherwise the record is appended (1). 0 on a
// failure. The PID index learns the row. The alphabetical index is left as
// it is: a new name is missing from it until an import's end, a compaction
// or a fresh store drops it and the next search builds it again.
template <class S>
int AddOrReplace(FILE* f, typename S::Record* r) {
    long count = 0;
    if (!ReadCount<S>(f, &count)) return 0;
    if (std::fseek(f, RecordOffset<S>(0), SEEK_SET) != 0) return 0;
    for (long row = 0; row < count; ++row) {
        typename S::Record stored;
        if (!ReadRecord<typename S::Layout>(f, stored)) return 0;
        if (std::strncmp(stored.name, r->name, sizeof stored.name) != 0) continue;
        r->pid = stored.pid;
        if (!RewriteRow<S>(f, *r, row)) return 0;
        recordPid(S::Files(), f, r->pid, row);
        return 2;
    }
    if (!Append<S>(f, r)) return 0;
    recordPid(S::Files(), f, r->pid, count);
    return 1;
}

inline bool SameUpperName(const char (&name)[33], const char (&upper)[33]) {
    for (size_t i = 0; i < sizeof name; ++i) {
        const char c = static_cast<char>(std::toupper(static_cast<unsigned char>(name[i])));
        if (c != upper[i]) return false;
        if (c == '\0') return true;
    }
    return true;
}

// The row + 1 of a record whose name begins with the text, without case;
// 0 when none does, -1 for an empty text or a read failure. A missing index
// is built first. An index that leads to a record of another name is stale
// (rows moved by a delete since it was made): the name is not found.
template <class S>
long FindByName(FILE* f, const char* text, typename S::Record* out) {
    if (!text || !*text) return -1;
    long count = 0;
    FilePtr alpha = openAlpha(S::Files(), f, &count);
    if (!alpha) return -1;
    AlphaEntry entry;
    const int found = searchAlpha(alpha.get(), count, text, &entry);
    alpha.reset();
    if (found != 1) return found;
    long stored = 0;
    typename S::Record r;
    if (!ReadCount<S>(f, &stored)) return -1;
    if (static_cast<long>(entry.row) >= stored) return 0;
    if (!ReadRowImage<S>(f, static_cast<long>(entry.row), &r)) return -1;
    if (!SameUpperName(r.name, entry.name)) return 0;
    *out = r;
    return static_cast<long>(entry.row) + 1;
}

// 1 with the record and its row + 1 when the store holds `pid`. A missing
// index is built first. A slot that leads to a record of another PID, or
// past the records, is stale (a delete moved the rows): not found.
template <class S>
int FindByPid(FILE* f, uint32_t pid, typename S::Record* out, long* rowOut) {
    if (pid < 1) return 0;
    uint32_t highest = 0, row = 0;
    FilePtr index = openPidIndex(S::Files(), f, &highest);
    if (!index) return 0;
    const int slot = readPidSlot(index.get(), highest, pid, &row);
    index.reset();
    typename S::Record r;
    if (slot != 1 || !ReadRow<S>(f, &r, static_cast<long>(row)) || r.pid != pid) return 0;
    *out = r;
    if (rowOut) *rowOut = static_cast<long>(row) + 1;
    return 1;
}

// Opens the store for reading and finds `pid` in it, for the object fill.
template <class S>
int ReadByPid(uint32_t pid, typename S::Record* out) {
    FilePtr file = OpenForReading<S>(nullptr);
    return file && FindByPid<S>(file.get(), pid, out, nullptr) ? 1 : 0;
}

// The object's attachments go by the cascade first; then each later record
// moves down one row and the count drops. The last PID stays, and so do the
// index files.
template <class S>
int DeleteRow(FILE* f, long row, const DeleteCascade& cascade) {
    typename S::Header h;
    typename S::Record r;
    if (!ReadHeader<S>(f, &h) || row < 0 || row >= static_cast<long>(h.count)) return 0;
    if (!ReadRowImage<S>(f, row, &r)) return 0;
    RunDeleteCascade(cascade, S::kObjectClass, S::CascadeMask(r), r.pid);
    for (long i = row + 1; i < static_cast<long>(h.count); ++i) {
        if (!ReadRowImage<S>(f, i, &r) || !WriteRowImage<S>(f, i - 1, r)) return 0;
    }
    h.count = static_cast<decltype(h.count)>(h.count - 1);
    if (!WriteHeader<S>(f, h)) return 0;
    return std::fflush(f) == 0 ? 1 : 0;
}

// Runs the cascade here and again in the delete of the row it finds.
template <class S>
int DeleteByPid(FILE* f, uint32_t pid, const DeleteCascade& cascade) {
    typename S::Record r;
    long rowPlusOne = 0;
    if (!FindByPid<S>(f, pid, &r, &rowPlusOne)) return 0;
    RunDeleteCascade(cascade, S::kObjectClass, S::CascadeMask(r), r.pid);
    return DeleteRow<S>(f, rowPlusOne - 1, cascade);
}

// Rewrites the store without the rows marked in `deleteMarks` (a byte per
// row, nonzero to delete), through the compaction file in the current
// folder. The new header counts the kept records and takes the highest PID
// among them as the last one issued, so a PID above them all can be given
// out again: the marked objects' attachments go by the cascade, once the
// new file is whole and before it takes the old one's place. `file` is the
// open store; it is closed for the exchange and comes back open on the new
// store, or on the old one when the exchange failed. Both indexes are
// dropped.
template <class S>
int Compact(FilePtr& file, const std::vector<uint8_t>& deleteMarks, const DeleteCascade& cascade) {
    const SupplementalFiles& files = S::Files();
    typename S::Header h;
    if (!file || !ReadHeader<S>(file.get(), &h)) return 0;
    FilePtr out = OpenFile(files.compactPath, "wb");
    if (!out) return 0;
    const auto fail = [&] {
        out.reset();
        std::remove(files.compactPath);
        return 0;
    };
    typename S::Header kept{};
    if (!WriteHeader<S>(out.get(), kept)) return fail();
    std::vector<typename S::Record> gone;
    for (long row = 0; row < static_cast<long>(h.count); ++row) {
        typename S::Record r;
        if (!ReadRowImage<S>(file.get(), row, &r)) return fail();
        if (static_cast<size_t>(row) < deleteMarks.size() && deleteMarks[static_cast<size_t>(row)] != 0) {
            gone.push_back(r);
            continue;
        }
        if (!WriteRowImage<S>(out.get(), static_cast<long>(kept.count), r)) return fail();
        kept.count = static_cast<decltype(kept.count)>(kept.count + 1);
        kept.lastPid = std::max(kept.lastPid, r.pid);
    }
    if (!WriteHeader<S>(out.get(), kept) || std::fclose(out.release()) != 0) return fail();
    for (const auto& r : gone) RunDeleteCascade(cascade, S::kObjectClass, S::CascadeMask(r), r.pid);
    file.reset();
    const int replaced = ReplaceFileWith(files.dataPath, files.compactPath);
    std::remove(files.compactPath);
    dropSupplementalIndexes(files);
    file = Open<S>(nullptr);
    return replaced && file ? 1 : 0;
}

// Opens the text and the store, and sizes the batches: the number of lines
// is guessed from the file's length and the first line's (+2 for its line
// end), and a batch is that over `steps`, at least one line. 1 when both
// opened, -1 when the text can't be read, 0 when the store can't be opened.
template <class S>
int BeginImport(SupplementalImport* state, const char* textPath, int steps) {
    state->text = OpenRegularFile(textPath, "rb");
    if (!state->text) return -1;
    state->data = Open<S>(nullptr);
    if (!state->data) {
        state->text.reset();
        return 0;
    }
    char line[kSupplementalLineLength + 1];
    long firstLength = 0;
    if (ReadTextLine(line, sizeof line, state->text.get())) {
        firstLength = static_cast<long>(std::strcspn(line, "\n"));
    }
    std::rewind(state->text.get());
    state->estimatedLines = std::max<long>(1, static_cast<long>(FileSize(textPath) / static_cast<uint64_t>(firstLength + 2)));
    state->batchLines = std::max<long>(1, state->estimatedLines / std::max(1, steps));
    state->writeFailures = 0;
    return 1;
}

// Reads one batch of lines, adding each object by the add rule and counting
// it as added, replaced or bad (a line of the store's kind that doesn't
// read, or whose object couldn't be stored); lines of other kinds are
// passed over uncounted. 1 at the end of a batch, 0 at the end of the text.
template <class S>
int NextImportBatch(SupplementalImport* state, long* added, long* replaced, long* bad) {
    char line[kSupplementalLineLength + 1];
    for (long n = 0; n < state->batchLines; ++n) {
        if (!ReadTextLine(line, sizeof line, state->text.get())) return 0;
        typename S::Record r;
        const int parsed = S::ParseLine(line, &r);
        if (parsed < 0) continue;
        const int answer = parsed == 0 ? 0 : AddOrReplace<S>(state->data.get(), &r);
        if (answer == 1) {
            ++*added;
        } else if (answer == 2) {
            ++*replaced;
        } else {
            ++*bad;
            if (parsed != 0) ++state->writeFailures;
        }
    }
    return 1;
}

// Closes both files and drops the indexes, which the import has outrun.
template <class S>
void EndImport(SupplementalImport* state) {
    state->text.reset();
    state->data.reset();
    dropSupplementalIndexes(S::Files());
}

template <class S>
int BeginScan(SupplementalScan* scan, const SupplementalScanLimits& limits) {
    scan->data = OpenForReading<S>(&scan->count);
    if (!scan->data) return 0;
    scan->limits = limits;
    scan->row = 0;
    scan->sinceReport = 0;
    scan->step = std::max<long>(1, scan->count / 20);
    return 1;
}

// The PID of the next record that passes, kScanProgress after each
// twentieth of the records (at least every row) so that a meter can move,
// or 0 at the end, on a read failure, or when the cancel flag is set.
template <class S>
int64_t NextScan(SupplementalScan* scan) {
    while (scan->row < scan->count) {
        if (scan->limits.cancel && *scan->limits.cancel) return 0;
        if (scan->sinceReport >= scan->step) {
            scan->sinceReport = 0;
            return kScanProgress;
        }
        typename S::Record r;
        if (!ReadRowImage<S>(scan->data.get(), scan->row, &r)) return 0;
        ++scan->row;
        ++scan->sinceReport;
        if (supplementalScanPasses(S::Place(r), scan->limits) && S::ScanPasses(r, scan->limits))
            return static_cast<int64_t>(r.pid);
    }
    return 0;
}

inline void EndScan(SupplementalScan* scan) { scan->data.reset(); }

}  // namespace supplemental
