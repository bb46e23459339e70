#include "stores/instrument_store.h"

#include <cstring>
#include <vector>

#include "base/id_file.h"

namespace {

long RecordOffset(int index) { return IdRecordOffset<InstrumentRecordLayout>(index); }

int ReadAt(FILE* stream, int index, InstrumentRecord& r) {
    return IdReadAt<InstrumentRecordLayout>(stream, index, r);
}

int WriteAt(FILE* stream, int index, const InstrumentRecord& r) {
    return IdWriteAt<InstrumentRecordLayout>(stream, index, r);
}

}  // namespace

int InstrumentStoreCreate() {
    FilePtr f = OpenFile(kInstrumentStorePath, "wb");
    if (!f || !WriteIdHeader(f.get(), IdHeader{})) return 0;
    return std::fclose(f.release()) == 0 ? 1 : 0;
}

FilePtr InstrumentStoreOpen(int* countOut, StoreDamage* damageOut) {
    IdHeader h;
    FilePtr f = IdOpen<InstrumentRecordLayout>(kInstrumentStorePath, h, damageOut);
    if (f && countOut) *countOut = h.count;
    return f;
}

int InstrumentCount(FILE* stream, int* countOut) {
    IdHeader h;
    if (!stream || !countOut || !ReadIdHeader(stream, h)) return 0;
    *countOut = h.count;
    return 1;
}

int InstrumentRead(FILE* stream, int index, InstrumentRecord* recordOut) {
    return recordOut ? ReadAt(stream, index, *recordOut) : 0;
}

int InstrumentWrite(FILE* stream, const InstrumentRecord& record, int index) {
    IdHeader h;
    if (!ReadIdHeader(stream, h) || index >= h.count) return 0;
    if (!WriteAt(stream, index, record)) return 0;
    return std::fflush(stream) == 0 ? 1 : 0;
}

int InstrumentAdd(FILE* stream, InstrumentRecord* record) {
    IdHeader h;
    if (!record || !ReadIdHeader(stream, h)) return 0;
    if (!IdHeaderHasRoom(h)) return 0;
    if (IdCheckCount<InstrumentRecordLayout>(stream, h) != StoreDamage::kNone) return 0;
    ++h.nextId;
    ++h.count;
    if (!WriteIdHeader(stream, h)) return 0;
    record->id = static_cast<uint16_t>(h.nextId);
    if (!WriteAt(stream, h.count - 1, *record)) return 0;
    return std::fflush(stream) == 0 ? 1 : 0;
}

int InstrumentDelete(FILE* stream, int index) {
    IdHeader h;
    if (!ReadIdHeader(stream, h) || index < 0 || index >= h.count) return 0;
    const size_t tail = static_cast<size_t>(h.count - index - 1) * InstrumentRecordLayout::kSize;
    if (tail > 0) {
        std::vector<uint8_t> block(tail);
        if (std::fseek(stream, RecordOffset(index + 1), SEEK_SET) != 0) return 0;
        if (FileRead(block.data(), tail, stream) != tail) return 0;
        if (std::fseek(stream, RecordOffset(index), SEEK_SET) != 0) return 0;
        if (FileWrite(block.data(), tail, stream) != tail) return 0;
    }
    --h.count;
    if (!WriteIdHeader(stream, h)) return 0;
    return std::fflush(stream) == 0 ? 1 : 0;
}

int InstrumentFindById(FILE* stream, InstrumentRecord* recordOut, int id) {
    IdHeader h;
    if (!recordOut || !ReadIdHeader(stream, h)) return 0;
    for (int i = 0; i < h.count; ++i) {
        InstrumentRecord r;
        if (!ReadRecord<InstrumentRecordLayout>(stream, r)) return 0;
        if (r.id == id) {
            *recordOut = r;
            return 1;
        }
    }
    return 0;
}

int InstrumentFindByName(FILE* stream, InstrumentRecord* recordInOut, int count, int* indexOut) {
    char given[sizeof recordInOut->name + 1] = {};
    std::memcpy(given, recordInOut->name, sizeof recordInOut->name);
    for (int i = 0; i < count; ++i) {
        // Only the name is read until it matches: a store of many records is
        // searched without reading all of each.
        char name[sizeof recordInOut->name];
        if (std::fseek(stream, RecordOffset(i) + kInstrumentNameOffset, SEEK_SET) != 0 ||
            FileRead(name, sizeof name, stream) != sizeof name)
            continue;  // unreadable records are passed over
        if (std::strncmp(name, given, sizeof name) != 0) continue;
        InstrumentRecord r;
        if (!ReadAt(stream, i, r)) continue;
        *recordInOut = r;
        if (indexOut) *indexOut = i;
        return 1;
    }
    return 0;
}

int InstrumentFindByNameMemo(FILE* stream, InstrumentRecord* recordInOut, int count, int* indexOut,
                             InstrumentNameMemo* memo) {
    const std::string name(recordInOut->name, strnlen(recordInOut->name, sizeof recordInOut->name));
    if (const auto known = memo->found.find(name); known != memo->found.end()) {
        *recordInOut = known->second.first;
        if (indexOut) *indexOut = known->second.second;
        return 1;
    }
    int index = 0;
    if (!InstrumentFindByName(stream, recordInOut, count, &index)) return 0;
    memo->found.emplace(name, std::make_pair(*recordInOut, index));
    if (indexOut) *indexOut = index;
    return 1;
}

int InstrumentMove(FILE* stream, int index, int count, int direction, int* indexOut) {
    if (count < 2 || (direction != -1 && direction != 1)) return 0;
    InstrumentRecord moving;
    if (!ReadAt(stream, index, moving)) return 0;
    for (int other = index + direction; other >= 0 && other < count; other += direction) {
        InstrumentRecord r;
        if (!ReadAt(stream, other, r)) return 0;
        if (r.instrumentKind != moving.instrumentKind) continue;
        if (!WriteAt(stream, other, moving) || !WriteAt(stream, index, r)) return 0;
        if (indexOut) *indexOut = other;
        return std::fflush(stream) == 0 ? 1 : 0;
    }
    return 0;
}

int InstrumentBackup() { return IdCopyFile<InstrumentRecordLayout, InstrumentRecord>(kInstrumentStorePath, kInstrumentBackupPath); }

int InstrumentRestore() { return IdCopyFile<InstrumentRecordLayout, InstrumentRecord>(kInstrumentBackupPath, kInstrumentStorePath); }
