#include "stores/log_check.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <set>

#include "base/file_io.h"
#include "base/file_utils.h"
#include "base/platform.h"
#include "base/record_layout.h"
#include "base/store_damage.h"
#include "stores/log_index.h"
#include "stores/log_records.h"

namespace {

using Problems = std::vector<std::string>;

// What the look at one .pix found: its row count, or one of these.
constexpr long kRowsMissing = -1;
constexpr long kRowsDamaged = -2;  // there, but reported already

void Report(Problems& problems, const std::string& path, const std::string& text) {
    problems.push_back(path + ": " + text);
}

std::string RowText(long index) { return "row " + std::to_string(index + 1); }

// "object 42" or "user object 42", from a log key.
std::string ObjectText(uint32_t key) {
    const LogKeyParts parts = LogKeySplit(key);
    return std::string(parts.user ? "user object " : "object ") + std::to_string(parts.id);
}

std::string SlotText(int slot) {
    const char* name = ClassNameAt(slot);
    return name ? name : "no class";
}

// Opens a file to look at: null, with a line when it is there but no
// regular file, and silently when it is missing.
FilePtr OpenToLook(const std::string& path, Problems& problems) {
    if (IsOddFile(path.c_str())) {
        Report(problems, path, "is not a regular file");
        return nullptr;
    }
    return OpenRegularFile(path.c_str(), "rb");
}

// Whether `count` records of `recordSize` bytes fit behind the head; a line
// when they don't. A count above the signed range is out of range, as it
// would be for the store's own long.
bool CountFits(FILE* f, const std::string& path, long headSize, size_t recordSize, uint32_t count,
               Problems& problems) {
    const StoreDamage damage =
        count > 0x7fffffffu ? StoreDamage::kCountOutOfRange
                            : CheckRecordCount(StreamSize(f), headSize, recordSize, static_cast<long>(count));
    if (damage == StoreDamage::kNone) return true;
    Report(problems, path, std::string("damaged (") + StoreDamageText(damage) + ")");
    return false;
}

// The .pix files of one class folder, by their names as the store makes
// them; other files are left alone.
std::vector<uint32_t> RowFileKeys(int slot) {
    std::vector<uint32_t> keys;
    std::vector<platform::FolderEntry> entries;
    const std::string folder = LogClassFolderPath(slot);
    if (!platform::ListFolder(folder.c_str(), entries)) return keys;
    for (const platform::FolderEntry& e : entries) {
        const size_t dot = e.name.rfind(".pix");
        if (dot == std::string::npos || dot + 4 != e.name.size() || dot == 0) continue;
        const bool user = e.name[dot - 1] == 's';
        const std::string digits = e.name.substr(0, user ? dot - 1 : dot);
        if (digits.empty() || digits.find_first_not_of("0123456789") != std::string::npos) continue;
        const uint32_t id = static_cast<uint32_t>(std::strtoul(digits.c_str(), nullptr, 10));
        if (LogRowsPath(slot, id, user) != folder + "/" + e.name) continue;
        keys.push_back(user ? (id | kLogUserKeyBit) : id);
    }
    std::sort(keys.begin(), keys.end());
    return keys;
}

// What a class's pid.bin holds, as the checks of its row files need it.
struct ClassLook {
    bool haveHead = false;
    bool haveKeys = true;  // false when pid.bin is there but can't be read whole
    LogPidHead head;
    std::vector<uint32_t> keys;  // as pid.bin lists them
};

// pid.bin: its head, and keys in ascending order. A missing file is an
// empty table.
ClassLook CheckPidFile(int slot, Problems& problems) {
    ClassLook look;
    const std::string path = LogPidPath(slot);
    FilePtr f = OpenToLook(path, problems);
    if (!f) {
        look.haveKeys = !IsOddFile(path.c_str());
        return look;
    }
    look.haveKeys = false;
    if (!ReadRecord<LogPidHeadLayout>(f.get(), look.head)) {
        Report(problems, path, "too short for its header");
        return look;
    }
    look.haveHead = true;
    if (!CountFits(f.get(), path, LogPidHeadLayout::kSize, 4, look.head.objectCount, problems))
        return look;
    look.haveKeys = true;
    for (uint32_t i = 0; i < look.head.objectCount; ++i) {
        uint32_t key = 0;
        if (!ReadU32(f.get(), &key)) {
            Report(problems, path, "key " + std::to_string(i + 1) + " cannot be read");
            look.haveKeys = false;
            break;
        }
        if (i > 0 && key <= look.keys.back())
            Report(problems, path,
                   "key " + std::to_string(i + 1) + " (" + ObjectText(key) + ") does not follow key " +
                       std::to_string(i) + " (" + ObjectText(look.keys.back()) +
                       ") in ascending order");
        look.keys.push_back(key);
    }
    return look;
}

// The entry file a row names: missing, no regular file, or too short.
void CheckEntryFile(int slot, const std::string& path, long row, uint32_t entryNumber,
                    Problems& problems) {
    const std::string entryPath = LogEntryPath(slot, entryNumber);
    const std::string named = RowText(row) + " names entry " + std::to_string(entryNumber);
    if (IsOddFile(entryPath.c_str())) {
        Report(problems, path, named + ", whose file is not a regular file");
        return;
    }
    FilePtr entry = OpenRegularFile(entryPath.c_str(), "rb");
    if (!entry) {
        Report(problems, path, named + ", whose file is missing");
        return;
    }
    const int64_t size = StreamSize(entry.get());
    if (size >= 0 && size < static_cast<int64_t>(LogEntryLayout::kSize))
        Report(problems, path, named + ", whose file is too short for an entry");
}

// One row of an object's .pix against the file it stands in.
void CheckRow(int slot, uint32_t key, const ClassLook& look, const std::string& path, long index,
              const ObjectLogRow& row, Problems& problems) {
    const uint32_t rowKey = row.id | (IsUserClass(row.objectClass) ? kLogUserKeyBit : 0);
    if (rowKey != key)
        Report(problems, path,
               RowText(index) + " names " + ObjectText(rowKey) + ", not the file's " + ObjectText(key));
    const int rowSlot = ClassSlotOf(row.classMask);
    if (rowSlot != slot)
        Report(problems, path,
               RowText(index) + " has the class mask " + std::to_string(row.classMask) + " (" +
                   SlotText(rowSlot) + "), not one of " + SlotText(slot));
    if (look.haveHead && row.entryNumber >= look.head.nextEntry)
        Report(problems, path,
               RowText(index) + " names entry " + std::to_string(row.entryNumber) +
                   ", which the class has not handed out (its next number is " +
                   std::to_string(look.head.nextEntry) + ")");
    CheckEntryFile(slot, path, index, row.entryNumber, problems);
}

// Whether pid.bin names the object of a .pix; unknown when pid.bin could
// not be read whole, and then nothing is said about it.
enum class Listing { kListed, kUnlisted, kUnknown };

// An object's .pix. The row count, or kRowsMissing / kRowsDamaged.
long CheckRowsFile(int slot, uint32_t key, Listing listing, const ClassLook& look,
                   Problems& problems) {
    const bool listed = listing == Listing::kListed;
    const LogKeyParts parts = LogKeySplit(key);
    const std::string path = LogRowsPath(slot, parts.id, parts.user);
    if (IsOddFile(path.c_str())) {
        Report(problems, path, "is not a regular file");
        return kRowsDamaged;
    }
    FilePtr f = OpenRegularFile(path.c_str(), "rb");
    if (!f) {
        if (listed) Report(problems, path, "is missing, though pid.bin lists its object");
        return kRowsMissing;
    }
    uint32_t rowCount = 0;
    if (!ReadU32(f.get(), &rowCount)) {
        Report(problems, path, "too short for its header");
        return kRowsDamaged;
    }
    if (!CountFits(f.get(), path, kLogRowsHead, ObjectLogRowLayout::kSize, rowCount, problems))
        return kRowsDamaged;
    if (rowCount == 0) {
        if (listed) Report(problems, path, "holds no rows, though pid.bin lists its object");
        return 0;
    }
    if (listing == Listing::kUnlisted)
        Report(problems, path,
               "holds " + std::to_string(rowCount) + " row(s) of an object that pid.bin does not list");
    ObjectLogRow row;
    for (uint32_t i = 0; i < rowCount; ++i) {
        if (!ReadRecord<ObjectLogRowLayout>(f.get(), row)) {
            Report(problems, path, RowText(i) + " cannot be read");
            return kRowsDamaged;
        }
        CheckRow(slot, key, look, path, i, row, problems);
    }
    return rowCount;
}

// The row counts of every .pix looked at, by path, for the index check.
using RowCounts = std::map<std::string, long>;

void CheckClass(int slot, RowCounts& counts, Problems& problems) {
    const ClassLook look = CheckPidFile(slot, problems);
    std::set<uint32_t> listed;
    for (uint32_t key : look.keys) {
        if (!listed.insert(key).second) continue;
        const LogKeyParts parts = LogKeySplit(key);
        counts[LogRowsPath(slot, parts.id, parts.user)] = CheckRowsFile(slot, key, Listing::kListed, look, problems);
    }
    for (uint32_t key : RowFileKeys(slot)) {
        if (listed.count(key)) continue;
        const LogKeyParts parts = LogKeySplit(key);
        counts[LogRowsPath(slot, parts.id, parts.user)] =
            CheckRowsFile(slot, key, look.haveKeys ? Listing::kUnlisted : Listing::kUnknown, look, problems);
    }
}

// Rows sort by class slot, then key, both as signed 32-bit values.
int CompareRows(const IndexRow& a, const IndexRow& b) {
    const int32_t slotA = static_cast<int32_t>(a.classSlot), slotB = static_cast<int32_t>(b.classSlot);
    if (slotA != slotB) return slotA < slotB ? -1 : 1;
    const int32_t keyA = static_cast<int32_t>(a.logKey), keyB = static_cast<int32_t>(b.logKey);
    if (keyA != keyB) return keyA < keyB ? -1 : 1;
    return 0;
}

// The object an index row names must have rows.
void CheckIndexObject(const std::string& path, long index, const IndexRow& row,
                      const RowCounts& counts, Problems& problems) {
    if (row.classSlot >= static_cast<uint32_t>(kLogClassFolders)) {
        Report(problems, path,
               RowText(index) + " names the class slot " +
                   std::to_string(static_cast<int32_t>(row.classSlot)) + ", which has no folder");
        return;
    }
    const int slot = static_cast<int>(row.classSlot);
    const LogKeyParts parts = LogKeySplit(row.logKey);
    const auto found = counts.find(LogRowsPath(slot, parts.id, parts.user));
    const long rowCount = found == counts.end() ? kRowsMissing : found->second;
    if (rowCount == kRowsMissing || rowCount == 0)
        Report(problems, path,
               RowText(index) + " names " + ObjectText(row.logKey) + " of " + SlotText(slot) +
                   ", which has no rows");
}

void CheckIndexFile(const std::string& path, const RowCounts& counts, Problems& problems) {
    FilePtr f = OpenToLook(path, problems);
    if (!f) return;
    uint32_t rowCount = 0;
    if (!ReadU32(f.get(), &rowCount)) {
        Report(problems, path, "too short for its header");
        return;
    }
    if (!CountFits(f.get(), path, kIndexHead, IndexRowLayout::kSize, rowCount, problems)) return;
    IndexRow previous, row;
    for (uint32_t i = 0; i < rowCount; ++i) {
        if (!ReadRecord<IndexRowLayout>(f.get(), row)) {
            Report(problems, path, RowText(i) + " cannot be read");
            return;
        }
        if (i > 0) {
            const int order = CompareRows(previous, row);
            if (order == 0)
                Report(problems, path, RowText(i) + " names the same object as " + RowText(i - 1));
            else if (order > 0)
                Report(problems, path, RowText(i) + " is out of order: it sorts before " + RowText(i - 1));
        }
        CheckIndexObject(path, i, row, counts, problems);
        previous = row;
    }
}

void CheckIndexFolder(int index, const RowCounts& counts, Problems& problems) {
    const std::string folder = LogIndexFolderPath(index);
    std::vector<platform::FolderEntry> entries;
    if (!platform::ListFolder(folder.c_str(), entries)) return;
    std::vector<std::string> names;
    for (const platform::FolderEntry& e : entries)
        if (e.name.size() > 4 && e.name.compare(e.name.size() - 4, 4, ".idx") == 0)
            names.push_back(e.name);
    std::sort(names.begin(), names.end());
    for (const std::string& name : names) CheckIndexFile(folder + "/" + name, counts, problems);
}

}  // namespace

bool LogCheck(std::vector<std::string>& problems) {
    const size_t before = problems.size();
    RowCounts counts;
    for (int slot = 0; slot < kLogClassFolders; ++slot) CheckClass(slot, counts, problems);
    for (int index = 0; index < kLogIndexFolderCount; ++index) CheckIndexFolder(index, counts, problems);
    return problems.size() == before;
}
