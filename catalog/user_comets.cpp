#include "catalog/user_comets.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <set>

#include "base/file_io.h"
#include "base/prefix_match.h"
#include "catalog/object_record.h"

namespace {

constexpr double kSameEpoch = 3e-10;  // Julian centuries, about 1 ms
constexpr uint32_t kCometClassMask = 4;
constexpr long kMostRows = 65535;

long RowOffset(long row) { return static_cast<long>(kUserCometHeadSize) + row * static_cast<long>(CometLayout::kSize); }

int WriteHead(FILE* f, const UserCometHead& head) {
    return std::fseek(f, 0, SEEK_SET) == 0 && WriteRecord<UserCometHeadLayout>(f, head);
}

int WriteRow(FILE* f, long row, const CometRecord& r) {
    return std::fseek(f, RowOffset(row), SEEK_SET) == 0 && WriteRecord<CometLayout>(f, r);
}

// The head and all counted rows; the rows are few.
int ReadStore(FILE* f, UserCometHead* head, std::vector<CometRecord>* rows) {
    if (!readUserCometHead(f, head)) return 0;
    rows->assign(head->count, CometRecord{});
    if (head->count == 0) return 1;
    if (std::fseek(f, RowOffset(0), SEEK_SET) != 0) return 0;
    for (CometRecord& r : *rows)
        if (!ReadRecord<CometLayout>(f, r)) return 0;
    return 1;
}

// After a failed write: the rows from `from` and the head as they stood.
// Best effort: the disk that failed once may fail again.
void PutBack(FILE* f, const UserCometHead& head, const std::vector<CometRecord>& rows, size_t from) {
    for (size_t i = from; i < rows.size(); ++i) WriteRow(f, static_cast<long>(i), rows[i]);
    WriteHead(f, head);
    std::fflush(f);
}

// Writes `after` over `before` from row `from` on and then the new head;
// the new count comes first when the store grows, last when it shrinks, so
// that a write cut short leaves every old row counted. Rows of a growing
// store are written from the end down. 1, or 0 after putting back.
int Rewrite(FILE* f, const UserCometHead& oldHead, const std::vector<CometRecord>& before,
            const UserCometHead& newHead, const std::vector<CometRecord>& after, size_t from) {
    const bool grows = after.size() > before.size();
    bool ok = true;
    if (grows) {
        ok = WriteHead(f, newHead);
        for (size_t i = after.size(); ok && i-- > from;) ok = WriteRow(f, static_cast<long>(i), after[i]);
    } else {
        for (size_t i = from; ok && i < after.size(); ++i) ok = WriteRow(f, static_cast<long>(i), after[i]);
        ok = ok && WriteHead(f, newHead);
    }
    ok = ok && std::fflush(f) == 0;
    if (!ok) PutBack(f, oldHead, before, from);
    return ok ? 1 : 0;
}

template <size_t N>
std::string Ended(const char (&text)[N]) {
    return std::string(text, strnlen(text, N));
}

bool SameComet(const CometRecord& row, const CometRecord& added) {
    if (row.letter != added.letter || row.number != added.number) return false;
    if (added.number != 0) return true;
    return PrefixMatch(Ended(added.name).c_str(), Ended(row.name).c_str()) &&
           PrefixMatch(Ended(added.iau).c_str(), Ended(row.iau).c_str());
}

// The sorted order: numbered comets by number, then the unnumbered ones by
// designation with a plain compare.
bool SortsBefore(const CometRecord& a, const CometRecord& b) {
    if ((a.number != 0) != (b.number != 0)) return a.number != 0;
    if (a.number != 0) return a.number < b.number;
    return std::strcmp(Ended(a.iau).c_str(), Ended(b.iau).c_str()) < 0;
}

bool SameElements(const CometRecord& a, const CometRecord& b) {
    return a.perihelionEpoch == b.perihelionEpoch && a.eccentricity == b.eccentricity &&
           a.perihelionDistance == b.perihelionDistance && a.argPerihelion == b.argPerihelion &&
           a.node == b.node && a.inclination == b.inclination && a.brightnessG == b.brightnessG &&
           a.brightnessK == b.brightnessK;
}

// Deletes the marked rows of an open store, the cascade first for each PID
// that keeps no row.
int DeleteMarked(FILE* f, const std::vector<bool>& marked, const DeleteCascade& cascade) {
    UserCometHead head;
    std::vector<CometRecord> rows;
    if (!f || !ReadStore(f, &head, &rows)) return 0;
    std::vector<CometRecord> kept;
    std::set<uint32_t> keptPids, gonePids;
    size_t first = rows.size();
    for (size_t i = 0; i < rows.size(); ++i) {
        if (i < marked.size() && marked[i]) {
            gonePids.insert(rows[i].pid);
            first = std::min(first, i);
        } else {
            kept.push_back(rows[i]);
            keptPids.insert(rows[i].pid);
        }
    }
    if (first == rows.size()) return 0;
    for (uint32_t pid : gonePids)
        if (!keptPids.count(pid)) RunDeleteCascade(cascade, kClassUserComet, kCometClassMask, pid);
    UserCometHead newHead = head;
    newHead.count = static_cast<uint16_t>(kept.size());
    return Rewrite(f, head, rows, newHead, kept, first);
}

}  // namespace

FilePtr openUserComets(int* outCount) {
    FilePtr f = OpenFile(kUserCometPath, "r+b");
    if (!f && !FileExists(kUserCometPath)) {
        MakeFolder("user");
        FilePtr made = OpenFile(kUserCometPath, "wb");
        if (!made || !WriteHead(made.get(), UserCometHead{}) || std::fflush(made.get()) != 0) {
            made.reset();
            std::remove(kUserCometPath);
            return FilePtr();
        }
        made.reset();
        f = OpenFile(kUserCometPath, "r+b");
    }
    if (!f) return f;
    UserCometHead head;
    if (outCount) *outCount = readUserCometHead(f.get(), &head) ? head.count : 0;
    return f;
}

int readUserCometHead(FILE* file, UserCometHead* head) {
    return file && head && std::fseek(file, 0, SEEK_SET) == 0 &&
           ReadRecord<UserCometHeadLayout>(file, *head);
}

int readUserCometRow(FILE* file, long row, CometRecord* record) {
    UserCometHead head;
    if (!record || row < 0 || !readUserCometHead(file, &head) || row >= head.count) return 0;
    return std::fseek(file, RowOffset(row), SEEK_SET) == 0 && ReadRecord<CometLayout>(file, *record);
}

int addOrReplaceUserComet(FILE* file, const CometRecord& record, bool* writeFailed, uint16_t* pidOut) {
    if (writeFailed) *writeFailed = false;
    UserCometHead head;
    std::vector<CometRecord> rows;
    if (!file || !ReadStore(file, &head, &rows)) return 0;
    CometRecord added = record;
    const auto match = std::find_if(rows.begin(), rows.end(),
                                    [&](const CometRecord& r) { return SameComet(r, added); });
    UserCometHead newHead = head;
    newHead.count = static_cast<uint16_t>(head.count + 1);
    size_t at = 0;
    if (match == rows.end()) {
        if (rows.size() >= kMostRows || head.lastPid >= kMostRows) return 0;
        added.pid = static_cast<uint16_t>(head.lastPid + 1);
        newHead.lastPid = added.pid;
        while (at < rows.size() && !SortsBefore(added, rows[at])) ++at;
    } else {
        added.pid = match->pid;
        at = static_cast<size_t>(
            std::find_if(rows.begin(), rows.end(), [&](const CometRecord& r) { return r.pid == added.pid; }) -
            rows.begin());
        if (pidOut) *pidOut = added.pid;
        long last = -1;
        for (; at < rows.size() && rows[at].pid == added.pid && !(added.epoch < rows[at].epoch); ++at)
            last = static_cast<long>(at);
        if (last >= 0 && std::fabs(rows[last].epoch - added.epoch) <= kSameEpoch) {
            const CometRecord& old = rows[last];
            const bool sameCoefficient =
                added.coefficient == kDefaultCometCoefficient || added.coefficient == old.coefficient;
            if (SameElements(old, added) && sameCoefficient) return -1;
            if (added.coefficient == kDefaultCometCoefficient) added.coefficient = old.coefficient;
            std::vector<CometRecord> after = rows;
            after[last] = added;
            if (Rewrite(file, head, rows, head, after, static_cast<size_t>(last))) return 2;
            if (writeFailed) *writeFailed = true;
            return -1;
        }
        if (rows.size() >= kMostRows) return 0;
    }
    std::vector<CometRecord> after = rows;
    after.insert(after.begin() + static_cast<long>(at), added);
    if (Rewrite(file, head, rows, newHead, after, at)) {
        if (pidOut) *pidOut = added.pid;
        return 1;
    }
    if (writeFailed) *writeFailed = true;
    return 0;
}

int deleteUserCometRow(FILE* file, long row, const DeleteCascade& cascade) {
    if (row < 0) return 0;
    std::vector<bool> marked(static_cast<size_t>(row) + 1, false);
    marked[row] = true;
    return DeleteMarked(file, marked, cascade);
}

int deleteUserCometByPid(FILE* file, uint32_t pid, const DeleteCascade& cascade) {
    UserCometHead head;
    std::vector<CometRecord> rows;
    if (pid == 0 || !file || !ReadStore(file, &head, &rows)) return 0;
    std::vector<bool> marked(rows.size(), false);
    for (size_t i = 0; i < rows.size(); ++i) marked[i] = rows[i].pid == pid;
    return DeleteMarked(file, marked, cascade);
}

int compactUserComets(const std::vector<uint8_t>& deleteMarks, const DeleteCascade& cascade) {
    UserCometHead head;
    std::vector<CometRecord> rows;
    {
        FilePtr store = OpenFile(kUserCometPath, "rb");
        if (!store || !ReadStore(store.get(), &head, &rows)) return 0;
    }
    UserCometHead newHead;
    std::set<uint32_t> keptPids, gonePids;
    bool ok = true;
    {
        FilePtr temp = OpenFile(kCometCompactPath, "wb");
        ok = temp && WriteHead(temp.get(), newHead);
        for (size_t i = 0; ok && i < rows.size(); ++i) {
            if (i < deleteMarks.size() && deleteMarks[i]) {
                gonePids.insert(rows[i].pid);
                continue;
            }
            ok = WriteRecord<CometLayout>(temp.get(), rows[i]);
            keptPids.insert(rows[i].pid);
            newHead.count++;
            newHead.lastPid = std::max(newHead.lastPid, rows[i].pid);
        }
        ok = ok && WriteHead(temp.get(), newHead) && std::fflush(temp.get()) == 0;
    }
    if (!ok) {
        std::remove(kCometCompactPath);
        return 0;
    }
    for (uint32_t pid : gonePids)
        if (!keptPids.count(pid)) RunDeleteCascade(cascade, kClassUserComet, kCometClassMask, pid);
    std::remove(kUserCometPath);
    const bool renamed = std::rename(kCometCompactPath, kUserCometPath) == 0;
    std::remove(kCometCompactPath);
    return renamed ? 1 : 0;
}

int beginCometWalk(CometWalk* walk, FILE* file) {
    UserCometHead head;
    if (!walk || !readUserCometHead(file, &head)) return 0;
    *walk = CometWalk{file, 0, head.count};
    return 1;
}

long nextCometRow(CometWalk* walk, CometRecord* record) {
    if (!walk || !record || walk->row >= walk->count) return -1;
    if (std::fseek(walk->file, RowOffset(walk->row), SEEK_SET) != 0 ||
        !ReadRecord<CometLayout>(walk->file, *record))
        return -1;
    return walk->row++;
}

long nextCometByPid(CometWalk* walk, uint32_t pid, CometRecord* record) {
    for (long row; (row = nextCometRow(walk, record)) >= 0;)
        if (record->pid == pid) return row;
    return -1;
}

long findUserComet(FILE* file, uint32_t pid, const char* name, const char* iau, int number,
                   CometRecord* out) {
    CometWalk walk;
    if (!beginCometWalk(&walk, file)) return -1;
    CometRecord r;
    bool tested = false;
    uint32_t lastTested = 0;
    for (long row; (row = nextCometRow(&walk, &r)) >= 0;) {
        if (tested && r.pid == lastTested) continue;
        tested = true;
        lastTested = r.pid;
        const std::string rowName = Ended(r.name), rowIau = Ended(r.iau);
        const bool found = (pid != 0 && r.pid == pid) ||
                           (name && *name && !rowName.empty() && PrefixMatch(name, rowName.c_str())) ||
                           (iau && *iau && !rowIau.empty() && PrefixMatch(rowIau.c_str(), iau)) ||
                           (number != 0 && r.number == number);
        if (found) {
            if (out) *out = r;
            return row;
        }
    }
    return -1;
}
