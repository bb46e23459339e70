#include "shell/folder_check.h"

#include <cstdio>
#include <cstring>

#include "base/file_io.h"
#include "base/file_utils.h"
#include "base/le_bytes.h"
#include "base/store_damage.h"
#include "legacy/legacy_instruments.h"
#include "legacy/legacy_lists.h"
#include "stores/eyepiece_pool.h"
#include "stores/instrument_store.h"
#include "stores/location_store.h"
#include "stores/log_check.h"
#include "stores/observer_store.h"

namespace {

// How one file of counted records is laid out.
struct RecordFileShape {
    long headerSize;
    size_t countAt;    // where the count stands in the header
    bool signedCount;  // i16, else u16
    size_t recordSize;
    size_t nameAt;     // the record's fixed name field, which must hold a NUL
    size_t nameSize;   // 0: no name to check
};

constexpr RecordFileShape kLocationShape{2, 0, true, kLocationRecordSize, 99, 33};
constexpr RecordFileShape kObserverShape{2, 0, true, ObserverRecordLayout::kSize, 0, 64};
constexpr RecordFileShape kInstrumentShape{4, 2, false, InstrumentRecordLayout::kSize, 8718, 32};
constexpr RecordFileShape kPoolShape{4, 2, false, EyepieceRecordLayout::kSize, 0, 33};
// A version 1.x instrument's name may fill its 32 bytes: the import cuts it.
constexpr RecordFileShape kLegacyInstrumentShape{4, 2, false, LegacyInstrumentLayout::kSize, 0, 0};
constexpr RecordFileShape kListIndexShape{2, 0, true, kLegacyListRowSize, 0, 33};
// The objects of a list are counted by their row of obs.idx.
constexpr RecordFileShape kListShape{kLegacyListHeaderSize, 0, false, kLegacyListObjectSize, 0, 0};

void Report(std::vector<std::string>& problems, const std::string& path, const std::string& text) {
    problems.push_back(path + ": " + text);
}

std::string RecordText(long index, const char* what) {
    return "record " + std::to_string(index + 1) + " " + what;
}

// Opens a file to look at; null, with a line when it is there but no
// regular file, and silently when it is missing.
FilePtr OpenToCheck(const std::string& path, std::vector<std::string>& problems) {
    if (IsOddFile(path.c_str())) {
        Report(problems, path, "is not a regular file");
        return nullptr;
    }
    return OpenRegularFile(path.c_str(), "rb");
}

int ReadCountField(FILE* f, const RecordFileShape& shape, long* countOut) {
    uint8_t head[4];
    if (std::fseek(f, 0, SEEK_SET) != 0 || FileRead(head, shape.countAt + 2, f) != shape.countAt + 2)
        return 0;
    *countOut = shape.signedCount ? le::GetI16(head + shape.countAt) : le::GetU16(head + shape.countAt);
    return 1;
}

// Checks `count` records behind the header; the number of whole counted
// records found, -1 when the count cannot stand.
long CheckRecords(FILE* f, const std::string& path, const RecordFileShape& shape, long count,
                  std::vector<std::string>& problems) {
    const StoreDamage damage =
        CheckRecordCount(StreamSize(f), shape.headerSize, shape.recordSize, count);
    if (damage != StoreDamage::kNone) {
        Report(problems, path, std::string("damaged (") + StoreDamageText(damage) + ")");
        return -1;
    }
    if (shape.nameSize == 0) return count;
    std::vector<char> name(shape.nameSize);
    for (long i = 0; i < count; ++i) {
        const long at = shape.headerSize + static_cast<long>(shape.recordSize) * i + shape.nameAt;
        if (std::fseek(f, at, SEEK_SET) != 0 || FileRead(name.data(), name.size(), f) != name.size()) {
            Report(problems, path, RecordText(i, "cannot be read"));
            return -1;
        }
        if (!std::memchr(name.data(), '\0', name.size()))
            Report(problems, path, RecordText(i, "has an unterminated name"));
    }
    return count;
}

// The whole check of one file that carries its own count; the count, or -1
// when the file is missing or does not stand.
long CheckRecordFile(const std::string& path, const RecordFileShape& shape,
                     std::vector<std::string>& problems) {
    FilePtr f = OpenToCheck(path, problems);
    if (!f) return -1;
    long count = 0;
    if (!ReadCountField(f.get(), shape, &count)) {
        Report(problems, path, "too short for its header");
        return -1;
    }
    return CheckRecords(f.get(), path, shape, count, problems);
}

// obs.idx, then the object file of every row in use.
void CheckLists(const std::string& legacyRoot, std::vector<std::string>& problems) {
    const std::string indexPath = legacyRoot + "/obs.idx";
    const long rows = CheckRecordFile(indexPath, kListIndexShape, problems);
    FilePtr index = rows > 0 ? OpenRegularFile(indexPath.c_str(), "rb") : nullptr;
    for (long r = 0; index && r < rows; ++r) {
        uint8_t row[kLegacyListRowSize];
        if (std::fseek(index.get(), kListIndexShape.headerSize + static_cast<long>(sizeof row) * r,
                       SEEK_SET) != 0 ||
            FileRead(row, sizeof row, index.get()) != sizeof row)
            return;
        const uint16_t objects = le::GetU16(row + 33);
        if (objects == kLegacyFreeListRow) continue;
        char name[32];
        std::snprintf(name, sizeof name, "/obs.%03ld", r);
        const std::string listPath = legacyRoot + name;
        FilePtr list = OpenToCheck(listPath, problems);
        if (list) CheckRecords(list.get(), listPath, kListShape, objects, problems);
    }
}

}  // namespace

bool CheckFolders(const std::string& legacyRoot, std::vector<std::string>& problems) {
    const size_t before = problems.size();
    CheckRecordFile(kLocationStorePath, kLocationShape, problems);
    CheckRecordFile(kObserverStorePath, kObserverShape, problems);
    CheckRecordFile(kInstrumentStorePath, kInstrumentShape, problems);
    CheckRecordFile(kEyepiecePoolPath, kPoolShape, problems);
    LogCheck(problems);
    CheckRecordFile(legacyRoot + "/loc.bin", kLocationShape, problems);
    CheckRecordFile(legacyRoot + "/instr.bin", kLegacyInstrumentShape, problems);
    CheckLists(legacyRoot, problems);
    return problems.size() == before;
}
