#include "stores/log_exchange.h"

#include <cstring>
#include <vector>

#include "base/file_io.h"
#include "base/string_helpers.h"
#include "stores/log_index.h"
#include "stores/log_store.h"
#include "stores/object_block.h"

namespace {

int WriteRecordOf(FILE* file, const LogEntry& entry, const std::string& note) {
    const uint32_t length = static_cast<uint32_t>(note.size() + 1);
    if (!WriteU32(file, length)) return 0;
    LogEntry copy = entry;
    copy.noteLength = length;
    if (!WriteRecord<LogEntryLayout>(file, copy)) return 0;
    if (FileWrite(note.c_str(), length, file) != length) return 0;
    return ObjectBlockWrite(file, entry.objectClass, entry.id);
}

// The row file of an object, as the class index and the object name it.
struct RowFile {
    uint32_t classMask = 0;
    uint32_t id = 0;
    bool user = false;
};

RowFile RowFileOf(const ObjectRecord& object) {
    return RowFile{object.classMask, object.pid, IsUserClass(object.objectClass)};
}

bool Passes(const LogExportFilter* filter, const LogEntry& entry, const ObjectLogRow& row) {
    if (!filter) return true;
    if (!filter->observer.empty() && NameCompare(filter->observer.c_str(), entry.observer.name) != 0) return false;
    if (!filter->location.empty() && NameCompare(filter->location.c_str(), entry.site.name) != 0) return false;
    if (!filter->instrument.empty() && NameCompare(filter->instrument.c_str(), entry.instrument.name) != 0)
        return false;
    if (filter->nightYear > -10000) {
        const LogNight night = LogNightOf(entry.jd, entry.site);
        if (night.year != filter->nightYear || night.month != filter->nightMonth || night.day != filter->nightDay)
            return false;
    }
    return filter->constellation < 0 || row.constellation == filter->constellation;
}

// Writes a record for each row of the object (or the one of `entryNumber`)
// whose entry passes. An object that was never logged has no rows, and
// gets no file.
int ExportRows(FILE* file, const RowFile& of, long entryNumber, const double* since,
               const LogExportFilter* filter, uint32_t* count) {
    const std::string path = LogRowsPath(ClassSlotOf(of.classMask), of.id, of.user);
    if (path.empty()) return 0;
    if (!FileExists(path.c_str())) return 1;
    std::vector<ObjectLogRow> rows;
    {
        uint32_t rowCount = 0;
        FilePtr f = LogOpenRows(of.classMask, of.id, of.user, &rowCount);
        if (!f) return 0;
        for (uint32_t i = 0; i < rowCount; ++i) {
            ObjectLogRow row;
            if (LogReadRow(f.get(), &row) < 0) return 0;
            if (entryNumber < 0 || row.entryNumber == static_cast<uint32_t>(entryNumber)) rows.push_back(row);
        }
    }
    for (const ObjectLogRow& row : rows) {
        LogEntry entry;
        std::string note;
        // A row whose entry file is gone ends the export as a failure.
        if (!LogReadEntry(of.classMask, row.entryNumber, &entry, &note)) return 0;
        if (since && !(entry.jd > *since)) continue;
        if (!Passes(filter, entry, row)) continue;
        if (!WriteRecordOf(file, entry, note)) return 0;
        if (count) ++*count;
    }
    return 1;
}

// Writes the records of every object of the class index of `slot`. A class
// without an index file has no entries, and the export makes none.
int ExportClass(FILE* file, int slot, const LogExportFilter* filter, uint32_t* count) {
    const std::string path = IndexPath(IndexClassKey(slot), false);
    if (!FileExists(path.c_str())) return 1;
    uint32_t rows = 0;
    FilePtr index = IndexOpenClass(slot, &rows);
    if (!index) return 0;
    for (uint32_t i = 0; i < rows; ++i) {
        IndexRow row;
        const int kind = IndexReadRow(index.get(), static_cast<long>(i), &row);
        if (kind == 0) return 0;
        const RowFile of{ClassMaskOfSlot(slot), row.logKey, kind == 2};
        if (!ExportRows(file, of, -1, nullptr, filter, count)) return 0;
    }
    return 1;
}

}  // namespace

FilePtr LogExportBegin(const char* path, const char* title, const char* description) {
    return ExchangeBeginFile(path, kExchangeLog, title, description);
}

int LogExportEnd(FILE* file, uint32_t count) {
    if (!file || !WriteU32(file, 0)) return 0;
    if (!ExchangeSetRecordCount(file, count)) return 0;
    ExchangeHeader header;
    std::string description;
    if (std::fseek(file, 0, SEEK_SET) != 0 || !ExchangeReadHeader(file, &header, &description)) return 0;
    if (std::fseek(file, 0, SEEK_END) != 0) return 0;
    header.title[kExchangeTitleChars] = '\0';
    return LogRegistryPut(header.title, header.stamp);
}

int LogExportObject(FILE* file, const Site& site, const Instant& instant, const ObjectRecord& object,
                    long entryNumber, const double* since, uint32_t* count) {
    if (!file) return 0;
    if (!ExportRows(file, RowFileOf(object), entryNumber, since, nullptr, count)) return 0;
    if (IsUserClass(object.objectClass)) return 1;
    // The same body may also be logged as an object of the user's stores.
    ObjectRecord resolved = object;
    LogPresence table;
    if (!LogPresenceLoadSlot(&table, ClassSlotOf(object.classMask))) return 0;
    const int logged = LogResolveObject(table, site, instant, &resolved);
    LogPresenceFree(&table);
    if (logged != 1 || resolved.objectClass == object.objectClass) return 1;
    return ExportRows(file, RowFileOf(resolved), entryNumber, since, nullptr, count);
}

int LogExportObjectRun(FILE* file, const ObjectRecord& object) {
    return file && ExportRows(file, RowFileOf(object), -1, nullptr, nullptr, nullptr) && WriteU32(file, 0);
}

long LogExportAll(const char* path, const char* title, const char* description, const LogExportFilter* filter,
                  ExchangeProgress progress, void* context) {
    if (!LogEnsureFolders()) return -1;
    FilePtr file = LogExportBegin(path, title, description);
    if (!file) return -1;
    const auto fail = [&] {
        file.reset();
        std::remove(path);
        return -1L;
    };
    uint32_t count = 0;
    for (int slot = 0; slot < kLogClassFolders; ++slot) {
        if (!ExportClass(file.get(), slot, filter, &count)) return fail();
        if (progress && (slot + 1) * 10 / kLogClassFolders != slot * 10 / kLogClassFolders) progress(10, context);
    }
    if (!LogExportEnd(file.get(), count) || std::fclose(file.release()) != 0) {
        std::remove(path);
        return -1;
    }
    return static_cast<long>(count);
}

long LogImportRun(FILE* file, uint32_t recordCount, ExchangeProgress progress, void* context) {
    if (!file) return -1;
    const uint32_t pace = recordCount / 10 > 0 ? recordCount / 10 : 1;
    ObjectBlockImport objects;
    long added = 0;
    uint32_t read = 0;
    for (;;) {
        uint32_t length = 0;
        if (!ReadU32(file, &length)) return -1;
        if (length == 0) break;
        LogEntry entry;
        if (!ReadRecord<LogEntryLayout>(file, entry)) return -1;
        std::string bytes(length, '\0');
        if (FileRead(bytes.data(), length, file) != length) return -1;
        const std::string note(bytes.c_str());
        uint32_t pid = entry.id;
        if (!ObjectBlockRead(file, entry.objectClass, &pid, &objects)) return -1;
        entry.id = pid;
        if (LogAddEntry(&entry, note.empty() ? nullptr : note.c_str()) < 0) return -1;
        ++added;
        if (progress && ++read % pace == 0) progress(10, context);
    }
    if (!ObjectBlockFinish(&objects)) return -1;
    return added;
}

long LogImportFile(const char* path, ExchangeHeader* headerOut, std::string* descriptionOut,
                   ExchangeProgress progress, void* context) {
    if (descriptionOut) descriptionOut->clear();
    FilePtr file = path ? OpenRegularFile(path, "rb") : nullptr;
    ExchangeHeader header;
    std::string description;
    if (!file || !ExchangeReadHeader(file.get(), &header, &description) || header.kind != kExchangeLog) return -1;
    const long added = LogImportRun(file.get(), header.recordCount, progress, context);
    if (added < 0) return -1;
    header.title[kExchangeTitleChars] = '\0';
    LogRegistryPut(header.title, header.stamp);
    if (headerOut) *headerOut = header;
    if (descriptionOut) *descriptionOut = std::move(description);
    return added;
}
