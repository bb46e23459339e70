#include "catalog/user_minor_planets.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <numbers>
#include <set>
#include <string>

#include "astro/orbit.h"
#include "astro/orbit_magnitudes.h"
#include "base/file_io.h"
#include "base/le_bytes.h"
#include "base/prefix_match.h"
#include "catalog/catalogue_codes.h"
#include "catalog/object_record.h"

namespace {

constexpr double kRadToDeg = 180.0 / std::numbers::pi;
constexpr long kNumberIndexHead = 8;

using Image = std::vector<uint8_t>;

template <size_t N>
void CopyCut(char (&field)[N], const char* text) {
    std::memset(field, 0, N);
    if (text) std::strncpy(field, text, N - 1);
}

// The name upper-cased byte by byte, as the name index keeps it.
std::string UpperName(const char* name, size_t size) {
    std::string out(name, strnlen(name, size));
    for (char& c : out) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return out;
}
std::string UpperName(const UserMpRecord& r) { return UpperName(r.name, sizeof r.name); }

long RowOffset(uint32_t row) { return kUserMpHeadSize + static_cast<long>(row) * UserMpLayout::kSize; }

int WriteU32At(FILE* file, long offset, uint32_t value) {
    uint8_t b[4];
    le::PutU32(b, value);
    return std::fseek(file, offset, SEEK_SET) == 0 && FileWrite(b, 4, file) == 4 ? 1 : 0;
}

int ReadU32At(FILE* file, long offset, uint32_t* value) {
    uint8_t b[4];
    if (std::fseek(file, offset, SEEK_SET) != 0 || FileRead(b, 4, file) != 4) return 0;
    *value = le::GetU32(b);
    return 1;
}

int WriteRowAt(FILE* file, uint32_t row, const UserMpRecord& r) {
    return std::fseek(file, RowOffset(row), SEEK_SET) == 0 && WriteRecord<UserMpLayout>(file, r);
}

// The last PID first, the count after: a failure between the two leaves a
// number skipped, never a row counted that isn't whole.
int WriteHead(FILE* file, uint32_t count, uint32_t lastPid) {
    return WriteU32At(file, 4, lastPid) && WriteU32At(file, 0, count) && std::fflush(file) == 0;
}

// Writes a whole derived file; on failure it is removed.
int WriteDerived(const char* path, const Image& image) {
    FilePtr f = OpenFile(path, "wb");
    bool ok = f && FileWrite(image.data(), image.size(), f.get()) == image.size();
    if (f) ok = std::fclose(f.release()) == 0 && ok;
    if (!ok) std::remove(path);
    return ok ? 1 : 0;
}

bool BeforeInSort(const UserMpRecord& a, const UserMpRecord& b) {
    if (a.number != 0 && b.number != 0) {
        if (a.number != b.number) return a.number < b.number;
        if (a.pid != b.pid) return a.pid > b.pid;
        if (a.epoch != b.epoch) return a.epoch > b.epoch;
    } else if ((a.number != 0) != (b.number != 0)) {
        return a.number != 0;
    }
    const int byName = UpperName(a).compare(UpperName(b));
    if (byName != 0) return byName < 0;
    // Rows of one unnamed-by-number object stay together, newest first.
    if (a.pid != b.pid) return a.pid > b.pid;
    return a.epoch > b.epoch;
}

// ---- Derived files ------------------------------------------------------------

Image NumberIndexImage(const std::vector<UserMpRecord>& rows) {
    Image image(kNumberIndexHead + 4u * kUserMpNumberSlots, 0);
    for (uint32_t i = 0; i < kUserMpNumberSlots; ++i)
        le::PutU32(image.data() + kNumberIndexHead + 4 * i, kUserMpEmptySlot);
    uint32_t numbered = 0, highest = 0;
    for (uint32_t row = 0; row < rows.size(); ++row) {
        const uint32_t n = rows[row].number;
        if (n == 0 || n > kUserMpNumberSlots) continue;
        uint8_t* slot = image.data() + kNumberIndexHead + 4 * (n - 1);
        if (le::GetU32(slot) != kUserMpEmptySlot) continue;
        le::PutU32(slot, row);
        ++numbered;
        highest = std::max(highest, n);
    }
    le::PutU32(image.data(), numbered);
    le::PutU32(image.data() + 4, highest);
    return image;
}

Image PidIndexImage(const std::vector<UserMpRecord>& rows) {
    uint32_t highest = 0;
    for (const UserMpRecord& r : rows) highest = std::max(highest, r.pid);
    Image image(4u * (static_cast<size_t>(highest) + 1), 0);
    le::PutU32(image.data(), highest);
    std::vector<bool> seen(static_cast<size_t>(highest) + 1, false);
    for (uint32_t row = 0; row < rows.size(); ++row) {
        const uint32_t pid = rows[row].pid;
        if (pid == 0 || seen[pid]) continue;
        seen[pid] = true;
        le::PutU32(image.data() + 4 * pid, row);
    }
    return image;
}

std::vector<AlphaEntry> AlphaEntries(const std::vector<UserMpRecord>& rows) {
    std::vector<AlphaEntry> entries;
    for (uint32_t row = 0; row < rows.size(); ++row) {
        if (rows[row].name[0] == '\0') continue;
        AlphaEntry e;
        CopyCut(e.name, UpperName(rows[row]).c_str());
        e.row = row;
        entries.push_back(e);
    }
    // By name, and the lowest row first among equal names, so that a lookup
    // lands on an object's first row.
    std::sort(entries.begin(), entries.end(), [](const auto& a, const auto& b) {
        const int c = std::strncmp(a.name, b.name, sizeof a.name);
        return c != 0 ? c < 0 : a.row < b.row;
    });
    return entries;
}

Image AlphaImage(const std::vector<AlphaEntry>& entries) {
    Image image(4, 0);
    le::PutU32(image.data(), static_cast<uint32_t>(entries.size()));
    for (const AlphaEntry& e : entries) {
        const auto bytes = RecordImage<AlphaEntryLayout>(e);
        image.insert(image.end(), bytes.begin(), bytes.end());
    }
    return image;
}

// ---- Lookups through the derived files ----------------------------------------

// The row the number index gives for `number`: 1 and the row, 0 when the
// slot is empty or can't be read.
int NumberSlot(uint32_t number, uint32_t* row) {
    if (number == 0 || number > kUserMpNumberSlots) return 0;
    FilePtr f = OpenFile(kUserMpNumberPath, "rb");
    uint32_t v = kUserMpEmptySlot;
    if (!f || !ReadU32At(f.get(), kNumberIndexHead + 4L * (number - 1), &v) || v == kUserMpEmptySlot)
        return 0;
    *row = v;
    return 1;
}

int PidSlot(uint32_t pid, uint32_t* row) {
    FilePtr f = OpenFile(kUserMpPidPath, "rb");
    uint32_t highest = 0;
    if (pid == 0 || !f || !ReadU32At(f.get(), 0, &highest) || pid > highest) return 0;
    return ReadU32At(f.get(), 4L * pid, row);
}

int ReadAlpha(FILE* f, uint32_t i, AlphaEntry* e) {
    return std::fseek(f, 4 + static_cast<long>(i) * AlphaEntryLayout::kSize, SEEK_SET) == 0 &&
           ReadRecord<AlphaEntryLayout>(f, *e);
}

// An entry whose name begins with the text, found by the same bisection as
// the user stars' names: 1 and its row, else 0.
int AlphaSlot(const char* name, uint32_t* row) {
    if (!name || name[0] == '\0') return 0;
    FilePtr f = OpenFile(kUserMpAlphaPath, "rb");
    uint32_t count = 0;
    AlphaEntry e;
    if (!f || !ReadU32At(f.get(), 0, &count) || searchAlpha(f.get(), static_cast<long>(count), name, &e) != 1)
        return 0;
    *row = e.row;
    return 1;
}

// Keeps the derived files in step with the row appended for a new object,
// where they exist: its number slot (if the number has none yet), its PID
// slot and its name entry.
void RecordAppendedRow(const UserMpRecord& r, uint32_t row) {
    if (FilePtr f = OpenFile(kUserMpNumberPath, "r+b");
        f && r.number >= 1 && r.number <= kUserMpNumberSlots) {
        uint32_t numbered = 0, highest = 0, slot = 0;
        const long at = kNumberIndexHead + 4L * (r.number - 1);
        bool ok = ReadU32At(f.get(), 0, &numbered) && ReadU32At(f.get(), 4, &highest) &&
                  ReadU32At(f.get(), at, &slot);
        if (ok && slot == kUserMpEmptySlot)
            ok = WriteU32At(f.get(), at, row) && WriteU32At(f.get(), 4, std::max(highest, r.number)) &&
                 WriteU32At(f.get(), 0, numbered + 1);
        ok = std::fclose(f.release()) == 0 && ok;
        if (!ok) std::remove(kUserMpNumberPath);
    }
    if (FilePtr f = OpenFile(kUserMpPidPath, "r+b")) {
        uint32_t highest = 0;
        bool ok = ReadU32At(f.get(), 0, &highest);
        for (uint32_t p = highest + 1; ok && p < r.pid; ++p) ok = WriteU32At(f.get(), 4L * p, 0);
        ok = ok && WriteU32At(f.get(), 4L * r.pid, row);
        if (ok && r.pid > highest) ok = WriteU32At(f.get(), 0, r.pid);
        ok = std::fclose(f.release()) == 0 && ok;
        if (!ok) std::remove(kUserMpPidPath);
    }
    if (r.name[0] == '\0') return;
    if (FilePtr f = OpenFile(kUserMpAlphaPath, "rb")) {
        uint32_t count = 0;
        bool ok = ReadU32At(f.get(), 0, &count);
        std::vector<AlphaEntry> entries(ok ? count : 0);
        for (uint32_t i = 0; ok && i < count; ++i) ok = ReadAlpha(f.get(), i, &entries[i]);
        f.reset();
        if (ok) {
            AlphaEntry e;
            CopyCut(e.name, UpperName(r).c_str());
            e.row = row;
            const auto at = std::upper_bound(entries.begin(), entries.end(), e, [](const auto& a, const auto& b) {
                const int c = std::strncmp(a.name, b.name, sizeof a.name);
                return c != 0 ? c < 0 : a.row < b.row;
            });
            entries.insert(at, e);
            WriteDerived(kUserMpAlphaPath, AlphaImage(entries));
        } else {
            std::remove(kUserMpAlphaPath);
        }
    }
}

// How a lookup treats a slot that leads to a row moved there by a delete
// since the derived files were made (a stale index).
enum class Stale { kNotFound, kRebuild };

// Whether the row's name begins with the text, case aside: what a name
// entry found by the bisection promises.
bool NameBegins(const UserMpRecord& r, const char* text) {
    char name[34];
    supplementalNameText(r.name, name);
    return PrefixMatch(text, name);
}

// The row a derived file leads to, when it still carries what it was looked
// up by: 1 and the row; -1 when the slot is empty or stale. With
// Stale::kRebuild the derived files are made again and the lookup runs once
// more, so that the add rule never takes a stale index's word that an
// object isn't there. 0 for a read failure or indexes that can't be made.
template <class Slot, class Fits>
int CheckedRow(FILE* file, Slot slot, Fits fits, Stale stale, UserMpRecord* out, uint32_t* rowOut) {
    for (int attempt = 0; attempt < 2; ++attempt) {
        if (!buildUserMpIndexes(file)) return 0;
        uint32_t row = 0, count = 0, lastPid = 0;
        if (!slot(&row)) return -1;
        if (!readUserMpHead(file, &count, &lastPid)) return 0;
        UserMpRecord r;
        if (row < count && !readUserMpRow(file, row, &r)) return 0;
        if (row < count && fits(r)) {
            if (out) *out = r;
            if (rowOut) *rowOut = row;
            return 1;
        }
        if (stale == Stale::kNotFound) return -1;
        dropUserMpIndexes();
        stale = Stale::kNotFound;
    }
    return -1;
}

// The row among the object's rows from `first` on whose epoch is within the
// tolerance of `epoch`: 1 and the row, else 0.
int SameEpochRow(FILE* file, uint32_t first, uint32_t count, uint32_t pid, double epoch,
                 UserMpRecord* out, uint32_t* rowOut) {
    for (uint32_t row = first; row < count; ++row) {
        UserMpRecord r;
        if (!readUserMpRow(file, row, &r) || r.pid != pid) return 0;
        if (std::fabs(r.epoch - epoch) < kUserMpEpochTolerance) {
            *out = r;
            *rowOut = row;
            return 1;
        }
    }
    return 0;
}

// Whether a row holds the same elements as the new record: the epoch to
// within the tolerance, q, a, e and the five f32 fields. The perihelion
// time isn't among them, so a line that changes only the mean anomaly
// leaves the row as it is.
bool SameElements(const UserMpRecord& a, const UserMpRecord& b) {
    return std::fabs(a.epoch - b.epoch) < kUserMpEpochTolerance &&
           a.perihelionDistance == b.perihelionDistance &&
           a.semiMajorAxis == b.semiMajorAxis && a.eccentricity == b.eccentricity &&
           a.inclination == b.inclination && a.argPerihelion == b.argPerihelion &&
           a.node == b.node && a.h == b.h && a.g == b.g;
}

// Writes rows and head to "mpt.bin" and puts it in the place of the store;
// the derived files go. 1, or 0 with the store untouched.
int ReplaceStore(const std::vector<UserMpRecord>& rows, uint32_t lastPid) {
    FilePtr f = OpenFile(kUserMpTempPath, "wb");
    bool ok = static_cast<bool>(f);
    if (ok) {
        uint8_t head[8];
        le::PutU32(head, static_cast<uint32_t>(rows.size()));
        le::PutU32(head + 4, lastPid);
        ok = FileWrite(head, 8, f.get()) == 8;
        for (size_t i = 0; ok && i < rows.size(); ++i) ok = WriteRecord<UserMpLayout>(f.get(), rows[i]);
        ok = std::fclose(f.release()) == 0 && ok;
    }
    if (!ok) {
        std::remove(kUserMpTempPath);
        return 0;
    }
    if (std::rename(kUserMpTempPath, kUserMpPath) != 0) {
        // Where rename won't replace a file, the old store goes first.
        std::remove(kUserMpPath);
        if (std::rename(kUserMpTempPath, kUserMpPath) != 0) return 0;
    }
    std::remove(kUserMpTempPath);
    dropUserMpIndexes();
    return 1;
}

}  // namespace

// ---- Records ----------------------------------------------------------------

int packUserMp(UserMpRecord* record, uint32_t number, const char* name, const char* source,
               double perihelionEpoch, double epoch, double meanAnomaly, double semiMajorAxis,
               double perihelionDistance, double eccentricity, double argPerihelion, double node,
               double inclination, double meanMotion, double h, double g) {
    if (!record) return 0;
    OrbitRecord orbit;
    if (!OrbitInit(&orbit, perihelionEpoch, epoch, meanAnomaly, semiMajorAxis, perihelionDistance,
                   eccentricity, argPerihelion, node, inclination, meanMotion, h, g, 2))
        return 0;
    if (number == 0 && (!name || name[0] == '\0')) return 0;
    UserMpRecord r;
    CopyCut(r.name, name);
    CopyCut(r.source, source);
    r.number = number;
    r.perihelionEpoch = orbit.perihelionEpoch;
    r.epoch = epoch;
    r.perihelionDistance = orbit.perihelionDistance > 0
                               ? orbit.perihelionDistance
                               : (1 - orbit.eccentricity) * orbit.semiMajorAxis;
    r.semiMajorAxis = orbit.semiMajorAxis;
    r.eccentricity = orbit.eccentricity;
    r.inclination = static_cast<float>(orbit.inclination);
    r.argPerihelion = static_cast<float>(orbit.argPerihelion);
    r.node = static_cast<float>(orbit.node);
    r.h = static_cast<float>(h);
    r.g = static_cast<float>(g);
    *record = r;
    return 1;
}

void unpackUserMp(const UserMpRecord& r, UserMpElements* out) {
    out->perihelionEpoch = r.perihelionEpoch;
    out->epoch = r.epoch;
    out->perihelionDistance = r.perihelionDistance;
    out->eccentricity = r.eccentricity;
    // Whatever the stored a holds: negative for a hyperbola, infinite for a
    // parabola.
    out->semiMajorAxis = r.perihelionDistance / (1 - r.eccentricity);
    out->inclination = r.inclination * kRadToDeg;
    out->argPerihelion = r.argPerihelion * kRadToDeg;
    out->node = r.node * kRadToDeg;
    out->h = r.h;
    out->g = r.g;
}

float userMpBrightest(double q, double h, double g) {
    const double delta = std::max(std::fabs(q - 1.0), 0.05);
    return static_cast<float>(MinorPlanetMagnitude(q, delta, 0.0, h, g));
}

// ---- The store ------------------------------------------------------------------

int readUserMpHead(FILE* file, uint32_t* count, uint32_t* lastPid) {
    return file && ReadU32At(file, 0, count) && ReadU32At(file, 4, lastPid);
}

int readUserMpRow(FILE* file, uint32_t row, UserMpRecord* out) {
    return file && std::fseek(file, RowOffset(row), SEEK_SET) == 0 &&
           ReadRecord<UserMpLayout>(file, *out);
}

int readUserMpAll(FILE* file, std::vector<UserMpRecord>* out, uint32_t* lastPid) {
    uint32_t count = 0, last = 0;
    if (!readUserMpHead(file, &count, &last) || count > kUserMpMaxRows) return 0;
    out->assign(count, UserMpRecord{});
    for (uint32_t row = 0; row < count; ++row)
        if (!readUserMpRow(file, row, &(*out)[row])) return 0;
    if (lastPid) *lastPid = last;
    return 1;
}

FilePtr openUserMp(uint32_t* outCount) {
    if (!FileExists(kUserMpPath)) {
        FilePtr made = OpenFile(kUserMpPath, "wb");
        if (!made) return nullptr;
        const uint8_t head[8] = {};
        const bool ok = FileWrite(head, 8, made.get()) == 8;
        if (std::fclose(made.release()) != 0 || !ok) {
            std::remove(kUserMpPath);
            return nullptr;
        }
        dropUserMpIndexes();
    }
    FilePtr f = OpenRegularFile(kUserMpPath, "r+b");
    uint32_t count = 0, lastPid = 0;
    if (!f || !readUserMpHead(f.get(), &count, &lastPid)) return nullptr;
    if (outCount) *outCount = count;
    std::fseek(f.get(), kUserMpHeadSize, SEEK_SET);
    return f;
}

void dropUserMpIndexes() {
    std::remove(kUserMpNumberPath);
    std::remove(kUserMpPidPath);
    std::remove(kUserMpAlphaPath);
}

int buildUserMpIndexes(FILE* file) {
    const bool number = !FileExists(kUserMpNumberPath), pid = !FileExists(kUserMpPidPath),
               alpha = !FileExists(kUserMpAlphaPath);
    if (!number && !pid && !alpha) return 1;
    std::vector<UserMpRecord> rows;
    if (!readUserMpAll(file, &rows, nullptr)) return 0;
    return (!number || WriteDerived(kUserMpNumberPath, NumberIndexImage(rows))) &&
           (!pid || WriteDerived(kUserMpPidPath, PidIndexImage(rows))) &&
           (!alpha || WriteDerived(kUserMpAlphaPath, AlphaImage(AlphaEntries(rows))));
}

int findUserMpByPid(FILE* file, uint32_t pid, UserMpRecord* out, uint32_t* rowOut) {
    const int found = CheckedRow(
        file, [pid](uint32_t* row) { return PidSlot(pid, row); },
        [pid](const UserMpRecord& r) { return r.pid == pid; }, Stale::kNotFound, out, rowOut);
    return found == 1 ? 1 : 0;
}

namespace {

// The row of the new record's epoch among the rows of the object a derived
// file leads to: 1 and the row, -1 for none, 0 for a read failure.
template <class Slot, class Fits>
int EpochRow(FILE* file, uint32_t count, double epoch, Slot slot, Fits fits, UserMpRecord* hit,
             uint32_t* hitRow) {
    UserMpRecord first;
    uint32_t firstRow = 0;
    const int found = CheckedRow(file, slot, fits, Stale::kRebuild, &first, &firstRow);
    if (found != 1) return found;
    return SameEpochRow(file, firstRow, count, first.pid, epoch, hit, hitRow) ? 1 : -1;
}

}  // namespace

int findUserMpByNumber(FILE* file, uint32_t number, UserMpRecord* out, uint32_t* rowOut) {
    const int found = CheckedRow(
        file, [number](uint32_t* row) { return NumberSlot(number, row); },
        [number](const UserMpRecord& r) { return r.number == number; }, Stale::kNotFound, out, rowOut);
    return found == 1 ? 1 : 0;
}

int findUserMpByName(FILE* file, const char* name, UserMpRecord* out, uint32_t* rowOut) {
    const int found = CheckedRow(
        file, [&](uint32_t* row) { return AlphaSlot(name, row); },
        [&](const UserMpRecord& r) { return NameBegins(r, name); }, Stale::kNotFound, out, rowOut);
    return found == 1 ? 1 : 0;
}

int addOrReplaceUserMp(FILE* file, const UserMpRecord& record, uint32_t* count, uint32_t* pidOut) {
    uint32_t stored = 0, lastPid = 0;
    if (!readUserMpHead(file, &stored, &lastPid)) return 0;
    UserMpRecord hit;
    uint32_t hitRow = 0;
    // The row of this epoch, by number first and by name otherwise.
    int found = EpochRow(
        file, stored, record.epoch, [&](uint32_t* row) { return NumberSlot(record.number, row); },
        [&](const UserMpRecord& r) { return r.number == record.number; }, &hit, &hitRow);
    if (found == -1) {
        found = EpochRow(
            file, stored, record.epoch, [&](uint32_t* row) { return AlphaSlot(record.name, row); },
            [&](const UserMpRecord& r) { return NameBegins(r, record.name); },
            &hit, &hitRow);
    }
    if (found == 0) return 0;

    UserMpRecord r = record;
    if (found == 1) {
        r.pid = hit.pid;
        if (SameElements(hit, r)) {
            if (pidOut) *pidOut = r.pid;
            return 3;
        }
        r.computed = r.perihelionDistance != hit.perihelionDistance
                         ? userMpBrightest(r.perihelionDistance, r.h, r.g)
                         : hit.computed;
        if (!WriteRowAt(file, hitRow, r) || std::fflush(file) != 0) return 0;
        if (pidOut) *pidOut = r.pid;
        return 2;
    }
    // No row of this epoch: elements at a new epoch make a new object, with
    // the next PID, even when an object of that number or name is there.
    if (stored >= kUserMpMaxRows) return 0;
    r.pid = lastPid + 1;
    r.computed = 0;
    if (r.pid == 0) return 0;  // the PIDs are used up
    if (!WriteRowAt(file, stored, r) || std::fflush(file) != 0) return 0;
    if (!WriteHead(file, stored + 1, r.pid)) return 0;
    RecordAppendedRow(r, stored);
    if (count) *count = stored + 1;
    if (pidOut) *pidOut = r.pid;
    return 1;
}

int sortUserMp(FilePtr* file, uint32_t* count) {
    std::vector<UserMpRecord> rows;
    uint32_t lastPid = 0;
    if (!file || !*file || !readUserMpAll(file->get(), &rows, &lastPid)) return 0;
    std::stable_sort(rows.begin(), rows.end(), BeforeInSort);
    file->reset();
    const int ok = ReplaceStore(rows, lastPid);
    *file = openUserMp(count);
    return ok && *file ? 1 : 0;
}

int userMpRowForInstant(FILE* file, uint32_t pid, double t, UserMpRecord* out, uint32_t* rowOut) {
    UserMpRecord best;
    uint32_t row = 0;
    if (!findUserMpByPid(file, pid, &best, &row)) return 0;
    uint32_t count = 0, lastPid = 0;
    if (!readUserMpHead(file, &count, &lastPid)) return 0;
    uint32_t bestRow = row;
    for (uint32_t next = row + 1; next < count; ++next) {
        UserMpRecord r;
        if (!readUserMpRow(file, next, &r) || r.pid != pid) break;
        if (std::fabs(r.epoch - t) < std::fabs(best.epoch - t)) {
            best = r;
            bestRow = next;
        }
    }
    *out = best;
    if (rowOut) *rowOut = bestRow;
    return 1;
}

namespace {

// Writes the rows from `from` on and the new count: the rows move down over
// the removed ones.
int WriteRowsFrom(FILE* file, const std::vector<UserMpRecord>& rows, uint32_t from, uint32_t lastPid) {
    for (uint32_t row = from; row < rows.size(); ++row)
        if (!WriteRowAt(file, row, rows[row])) return 0;
    return std::fflush(file) == 0 && WriteHead(file, static_cast<uint32_t>(rows.size()), lastPid);
}

}  // namespace

int deleteUserMpRow(FILE* file, uint32_t row, const DeleteCascade& cascade) {
    std::vector<UserMpRecord> rows;
    uint32_t lastPid = 0;
    if (!readUserMpAll(file, &rows, &lastPid) || row >= rows.size()) return 0;
    const uint32_t pid = rows[row].pid;
    const long rowsOfPid = std::count_if(rows.begin(), rows.end(), [pid](const auto& r) { return r.pid == pid; });
    if (rowsOfPid == 1) RunDeleteCascade(cascade, kClassUserMinorPlanet, classMaskOf(kClassUserMinorPlanet), pid);
    rows.erase(rows.begin() + row);
    return WriteRowsFrom(file, rows, row, lastPid);
}

int deleteUserMpByPid(FILE* file, uint32_t pid, const DeleteCascade& cascade) {
    std::vector<UserMpRecord> rows;
    uint32_t lastPid = 0;
    if (pid == 0 || !readUserMpAll(file, &rows, &lastPid)) return 0;
    const auto first = std::find_if(rows.begin(), rows.end(), [pid](const auto& r) { return r.pid == pid; });
    if (first == rows.end()) return 0;
    const uint32_t from = static_cast<uint32_t>(first - rows.begin());
    RunDeleteCascade(cascade, kClassUserMinorPlanet, classMaskOf(kClassUserMinorPlanet), pid);
    rows.erase(std::remove_if(rows.begin(), rows.end(), [pid](const auto& r) { return r.pid == pid; }),
               rows.end());
    return WriteRowsFrom(file, rows, from, lastPid);
}

int compactUserMp(const std::vector<uint8_t>& deleteMarks, const DeleteCascade& cascade) {
    std::vector<UserMpRecord> rows, kept;
    {
        FilePtr f = openUserMp(nullptr);
        if (!f || !readUserMpAll(f.get(), &rows, nullptr)) return 0;
    }
    std::set<uint32_t> removed, keptPids;
    uint32_t lastPid = 0;
    for (size_t row = 0; row < rows.size(); ++row) {
        if (row < deleteMarks.size() && deleteMarks[row] != 0) {
            removed.insert(rows[row].pid);
            continue;
        }
        kept.push_back(rows[row]);
        keptPids.insert(rows[row].pid);
        lastPid = std::max(lastPid, rows[row].pid);
    }
    if (!ReplaceStore(kept, lastPid)) return 0;
    // The attachments go once the records have gone, for each object that
    // has no row left: its PID may be given out again.
    for (uint32_t pid : removed)
        if (!keptPids.count(pid))
            RunDeleteCascade(cascade, kClassUserMinorPlanet, classMaskOf(kClassUserMinorPlanet), pid);
    return 1;
}
