// The log store's folders, pid.bin tables, row files, entry making and the
// registry of imported exchange files.
#include "stores/log_store.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>

#include "base/le_bytes.h"
#include "base/platform.h"
#include "base/store_damage.h"
#include "base/string_helpers.h"

namespace {

int CloseStream(FilePtr f) { return std::fclose(f.release()) == 0 ? 1 : 0; }

int WritePidTable(int slot, const LogPidTable& table) {
    LogPidHead head = table.head;
    head.objectCount = static_cast<uint32_t>(table.keys.size());
    std::vector<uint8_t> bytes(LogPidHeadLayout::kSize + 4 * table.keys.size());
    EncodeRecord<LogPidHeadLayout>(head, bytes.data());
    for (size_t i = 0; i < table.keys.size(); ++i)
        le::PutU32(bytes.data() + LogPidHeadLayout::kSize + 4 * i, table.keys[i]);
    return ReplaceFileContents(LogPidPath(slot), bytes);
}

// The row of a registry image as a C string reads it: the name runs on into
// the stamp when it has no NUL of its own.
std::string RegistryRowName(const uint8_t* image) {
    size_t n = 0;
    while (n < LogRegistryRowLayout::kSize && image[n] != 0) ++n;
    return std::string(image, image + n);
}

// The row index of the name, -1 when it isn't there, -2 when the registry
// exists but can't be read.
long RegistryFindRow(const char* name, uint8_t* stampOut) {
    if (!name || !FileExists(kLogRegistryPath)) return -1;
    FilePtr f = OpenRegularFile(kLogRegistryPath, "rb");
    uint32_t count = 0;
    if (!f || !ReadU32(f.get(), &count)) return -2;
    for (uint32_t i = 0; i < count; ++i) {
        std::array<uint8_t, LogRegistryRowLayout::kSize> image;
        if (FileRead(image.data(), image.size(), f.get()) != image.size()) return -2;
        if (NameCompare(RegistryRowName(image.data()).c_str(), name) != 0) continue;
        if (stampOut) {
            LogRegistryRow row;
            DecodeRecord<LogRegistryRowLayout>(image.data(), row);
            std::memcpy(stampOut, row.stamp, sizeof row.stamp);
        }
        return static_cast<long>(i);
    }
    return -1;
}

size_t RegistryRowOffset(uint32_t index) { return 4 + LogRegistryRowLayout::kSize * index; }

int MakeEmptyRegistry() {
    if (!MakeFolder("user") || !MakeFolder(kLogFolder)) return 0;
    return ReplaceFileContents(kLogRegistryPath, std::vector<uint8_t>(4, 0));
}

}  // namespace

int LogCreateClass(int slot) {
    const std::string folder = LogClassFolderPath(slot);
    if (folder.empty()) return 0;
    if (!MakeFolder("user") || !MakeFolder(kLogFolder)) return 0;
    for (int i = 0; i < kLogIndexFolderCount; ++i)
        if (!MakeFolder(LogIndexFolderPath(i).c_str())) return 0;
    if (!MakeFolder(folder.c_str())) return 0;
    const std::string pid = LogPidPath(slot);
    if (FileExists(pid.c_str())) return 1;
    return ReplaceFileContents(pid, std::vector<uint8_t>(LogPidHeadLayout::kSize, 0));
}

int LogEnsureFolders() {
    int ok = 1;
    for (int slot = 0; slot < kLogClassFolders; ++slot) {
        if (OpenRegularFile(LogPidPath(slot).c_str(), "rb")) continue;
        if (!LogCreateClass(slot)) ok = 0;
    }
    return ok;
}

int LogPidRead(int slot, LogPidTable* tableOut) {
    const std::string path = LogPidPath(slot);
    if (path.empty() || !tableOut) return 0;
    if (!FileExists(path.c_str())) LogEnsureFolders();
    FilePtr f = OpenRegularFile(path.c_str(), "rb");
    LogPidTable table;
    if (!f || !ReadRecord<LogPidHeadLayout>(f.get(), table.head)) return 0;
    // A count the file can't hold is damage, not a size to allocate.
    const uint64_t need = LogPidHeadLayout::kSize + 4ull * table.head.objectCount;
    if (FileSize(path.c_str()) < need) return 0;
    std::vector<uint8_t> bytes(4ull * table.head.objectCount);
    if (!bytes.empty() && FileRead(bytes.data(), bytes.size(), f.get()) != bytes.size()) return 0;
    table.keys.resize(table.head.objectCount);
    for (size_t i = 0; i < table.keys.size(); ++i) table.keys[i] = le::GetU32(bytes.data() + 4 * i);
    *tableOut = std::move(table);
    return 1;
}

long LogPidNextEntry(int slot) {
    // Most entries are of objects logged before: only nextEntry changes, and
    // it is written in place rather than through a new file, which would
    // cost a new file for every such entry. A write that fails puts the old
    // number back.
    const std::string path = LogPidPath(slot);
    if (path.empty()) return -1;
    if (!FileExists(path.c_str())) LogEnsureFolders();
    FilePtr f = OpenRegularFile(path.c_str(), "r+b");
    LogPidHead head;
    if (!f || !ReadRecord<LogPidHeadLayout>(f.get(), head)) return -1;
    // The size of the open stream: Windows lets no one else open a file
    // that is open for writing here.
    const int64_t size = StreamSize(f.get());
    if (size < 0 || static_cast<uint64_t>(size) < LogPidHeadLayout::kSize + 4ull * head.objectCount) return -1;
    const uint32_t number = head.nextEntry;
    if (std::fseek(f.get(), 0, SEEK_SET) != 0) return -1;
    if (!WriteU32(f.get(), number + 1) || std::fflush(f.get()) != 0) {
        if (std::fseek(f.get(), 0, SEEK_SET) == 0) WriteU32(f.get(), number);
        return -1;
    }
    if (std::fclose(f.release()) != 0) return -1;
    return static_cast<long>(number);
}

long LogPidInsertKey(int slot, uint32_t key) {
    LogPidTable table;
    if (!LogPidRead(slot, &table)) return -1;
    table.keys.insert(std::lower_bound(table.keys.begin(), table.keys.end(), key), key);
    const uint32_t number = table.head.nextEntry++;
    if (!WritePidTable(slot, table)) return -1;
    return static_cast<long>(number);
}

int LogPidRemoveKey(int slot, uint32_t key) {
    LogPidTable table;
    if (!LogPidRead(slot, &table)) return 0;
    const auto at = std::find(table.keys.begin(), table.keys.end(), key);
    if (at == table.keys.end()) return 0;
    table.keys.erase(at);
    return WritePidTable(slot, table);
}

FilePtr LogOpenRows(uint32_t classMask, uint32_t id, bool userFlag, uint32_t* rowCountOut) {
    const std::string path = LogRowsPath(ClassSlotOf(classMask), id, userFlag);
    if (path.empty()) return nullptr;
    if (!FileExists(path.c_str())) {
        // The folders are made only when the class folder isn't there yet:
        // looking at every class's table for each new object would cost
        // a dozen opens each time.
        if (!FileExists(LogClassFolderPath(ClassSlotOf(classMask)).c_str())) LogEnsureFolders();
        FilePtr made = OpenFile(path.c_str(), "wb");
        if (!made) return nullptr;
        if (!WriteU32(made.get(), 0) || !CloseStream(std::move(made))) {
            made.reset();
            platform::RemoveFile(path.c_str());
            return nullptr;
        }
    }
    if (IsOddFile(path.c_str())) return nullptr;
    FilePtr rows = OpenFile(path.c_str(), "r+b");
    uint32_t count = 0;
    if (!rows || !ReadU32(rows.get(), &count)) return nullptr;
    if (rowCountOut) *rowCountOut = count;
    return rows;
}

long LogReadRow(FILE* rows, ObjectLogRow* rowOut) {
    ObjectLogRow row;
    if (!rows || !ReadRecord<ObjectLogRowLayout>(rows, row)) return -1;
    if (rowOut) *rowOut = row;
    return static_cast<long>(row.entryNumber);
}

int LogFillEntry(LogEntry* entry, const Site& site, const LocationTail& tail, const Instant& instant,
                 const ObserverRecord& observer, const InstrumentRecord& instrument,
                 const ObjectRecord& object, const char* remark) {
    if (!entry) return 0;
    entry->major = kLogEntryMajor;
    entry->minor = kLogEntryMinor;
    entry->letter = kLogEntryLetter;
    entry->jd = instant.jd;
    entry->site = site;
    entry->locationTail = tail;
    entry->observer = observer;
    entry->instrument = instrument;
    entry->objectClass = object.objectClass;
    entry->classMask = object.classMask;
    entry->id = object.pid;
    std::memset(entry->remark, 0, sizeof entry->remark);
    // strncpy's rule: at most 128 bytes, and no NUL when the remark fills them.
    if (remark) std::memcpy(entry->remark, remark, std::min(std::strlen(remark), sizeof entry->remark));
    return 1;
}

int LogMarkUserKeys(int objectClass, uint8_t* marks, size_t size) {
    if (!IsUserClass(objectClass)) return 0;
    // A user class may spread over several slots: the user's deep-sky
    // objects carry every deep-sky bit.
    const uint32_t classBits = classMaskOf(objectClass);
    int ok = 1;
    for (int slot = 0; slot < kLogClassFolders; ++slot) {
        if ((ClassMaskOfSlot(slot) & classBits) == 0) continue;
        LogPidTable table;
        if (!LogPidRead(slot, &table)) {
            ok = 0;
            continue;
        }
        for (uint32_t key : table.keys) {
            const LogKeyParts parts = LogKeySplit(key);
            if (parts.user && marks && parts.id < size) marks[parts.id] = 1;
        }
    }
    return ok;
}

int LogPresenceLoad(LogPresence* table) {
    if (!table) return 0;
    for (int slot = 0; slot < kLogClassFolders; ++slot) {
        LogPidTable pid;
        if (!LogPidRead(slot, &pid)) {
            LogPresenceFree(table);
            return 0;
        }
        table->keys[slot] = std::move(pid.keys);
    }
    return 1;
}

int LogPresenceLoadSlot(LogPresence* table, int slot) {
    if (!table || slot < 0 || slot >= kLogClassFolders) return 0;
    LogPresenceFree(table);
    LogPidTable pid;
    if (!LogPidRead(slot, &pid)) return 0;
    table->keys[slot] = std::move(pid.keys);
    return 1;
}

int LogPresenceFree(LogPresence* table) {
    if (!table) return 0;
    for (auto& keys : table->keys) std::vector<uint32_t>().swap(keys);
    return 1;
}

int LogObjectLogged(const LogPresence& table, const ObjectRecord& object) {
    const int slot = ClassSlotOf(object.classMask);
    if (slot < 0 || slot >= kLogClassFolders) return 0;
    const auto& keys = table.keys[slot];
    return std::binary_search(keys.begin(), keys.end(), logKey(object)) ? 1 : 0;
}

long LogRegistryFind(const char* name, uint8_t* stampOut) {
    const long row = RegistryFindRow(name, stampOut);
    return row < 0 ? -1 : row;
}

int LogRegistryPut(const char* name, const uint8_t* stamp) {
    if (!name || !stamp) return 0;
    const long found = RegistryFindRow(name, nullptr);
    if (found == -2) return 0;
    if (!FileExists(kLogRegistryPath) && !MakeEmptyRegistry()) return 0;
    // The registry is small: it is changed in memory and written whole, so
    // that a failed write leaves the old one.
    std::vector<uint8_t> bytes(FileSize(kLogRegistryPath));
    {
        FilePtr f = OpenRegularFile(kLogRegistryPath, "rb");
        if (!f || bytes.size() < 4 || FileRead(bytes.data(), bytes.size(), f.get()) != bytes.size())
            return 0;
    }
    uint32_t index = static_cast<uint32_t>(found);
    const uint32_t count = le::GetU32(bytes.data());
    if (found < 0) {
        index = count;
        le::PutU32(bytes.data(), count + 1);
    }
    const size_t at = RegistryRowOffset(index);
    if (bytes.size() < at + LogRegistryRowLayout::kSize) bytes.resize(at + LogRegistryRowLayout::kSize);
    LogRegistryRow row;
    DecodeRecord<LogRegistryRowLayout>(bytes.data() + at, row);
    if (found < 0) {
        // The name fills its 38 bytes; the stamp then covers whatever of a
        // longer name would have run past them.
        std::memset(row.name, 0, sizeof row.name);
        std::memcpy(row.name, name, std::min(std::strlen(name), sizeof row.name));
    }
    std::memcpy(row.stamp, stamp, sizeof row.stamp);
    EncodeRecord<LogRegistryRowLayout>(row, bytes.data() + at);
    return ReplaceFileContents(kLogRegistryPath, bytes);
}
