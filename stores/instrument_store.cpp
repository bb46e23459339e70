#include "stores/instrument_store.h"

#include <cstring>
#include <vector>

namespace {

constexpr long kHeaderSize = 4;

long RecordOffset(int index) {
    return kHeaderSize + static_cast<long>(InstrumentRecordLayout::kSize) * index;
}

struct Header {
    int nextId = 0;
    int count = 0;
};

int ReadHeader(FILE* stream, Header& h) {
    uint8_t b[kHeaderSize];
    if (std::fseek(stream, 0, SEEK_SET) != 0 || std::fread(b, 1, sizeof b, stream) != sizeof b)
        return 0;
    h.nextId = le::GetU16(b);
    h.count = le::GetU16(b + 2);
    return 1;
}

int WriteHeader(FILE* stream, const Header& h) {
    uint8_t b[kHeaderSize];
    le::PutU16(b, static_cast<uint16_t>(h.nextId));
    le::PutU16(b + 2, static_cast<uint16_t>(h.count));
    if (std::fseek(stream, 0, SEEK_SET) != 0) return 0;
    return std::fwrite(b, 1, sizeof b, stream) == sizeof b ? 1 : 0;
}

int ReadAt(FILE* stream, int index, InstrumentRecord& r) {
    if (index < 0 || std::fseek(stream, RecordOffset(index), SEEK_SET) != 0) return 0;
    return ReadRecord<InstrumentRecordLayout>(stream, r);
}

int WriteAt(FILE* stream, int index, const InstrumentRecord& r) {
    if (index < 0 || std::fseek(stream, RecordOffset(index), SEEK_SET) != 0) return 0;
    return WriteRecord<InstrumentRecordLayout>(stream, r);
}

}  // namespace

int InstrumentStoreCreate() {
    FilePtr f = OpenFile(kInstrumentStorePath, "wb");
    if (!f || !WriteHeader(f.get(), Header{})) return 0;
    return std::fclose(f.release()) == 0 ? 1 : 0;
}

FilePtr InstrumentStoreOpen(int* countOut) {
    FilePtr f = OpenFile(kInstrumentStorePath, "r+b");
    Header h;
    if (!f || !ReadHeader(f.get(), h)) return nullptr;
    if (countOut) *countOut = h.count;
    return f;
}

int InstrumentRead(FILE* stream, int index, InstrumentRecord* recordOut) {
    return recordOut ? ReadAt(stream, index, *recordOut) : 0;
}

int InstrumentWrite(FILE* stream, const InstrumentRecord& record, int index) {
    Header h;
    if (!ReadHeader(stream, h) || index >= h.count) return 0;
    if (!WriteAt(stream, index, record)) return 0;
    return std::fflush(stream) == 0 ? 1 : 0;
}

int InstrumentAdd(FILE* stream, InstrumentRecord* record) {
    Header h;
    if (!record || !ReadHeader(stream, h)) return 0;
    if (h.nextId >= 0xFFFF || h.count >= 0xFFFF) return 0;
    ++h.nextId;
    ++h.count;
    if (!WriteHeader(stream, h)) return 0;
    record->id = static_cast<uint16_t>(h.nextId);
    if (!WriteAt(stream, h.count - 1, *record)) return 0;
    return std::fflush(stream) == 0 ? 1 : 0;
}

int InstrumentDelete(FILE* stream, int index) {
    Header h;
    if (!ReadHeader(stream, h) || index < 0 || index >= h.count) return 0;
    const size_t tail = static_cast<size_t>(h.count - index - 1) * InstrumentRecordLayout::kSize;
    if (tail > 0) {
        std::vector<uint8_t> block(tail);
        if (std::fseek(stream, RecordOffset(index + 1), SEEK_SET) != 0) return 0;
        if (std::fread(block.data(), 1, tail, stream) != tail) return 0;
        if (std::fseek(stream, RecordOffset(index), SEEK_SET) != 0) return 0;
        if (std::fwrite(block.data(), 1, tail, stream) != tail) return 0;
    }
    --h.count;
    if (!WriteHeader(stream, h)) return 0;
    return std::fflush(stream) == 0 ? 1 : 0;
}

int InstrumentFindById(FILE* stream, InstrumentRecord* recordOut, int id) {
    Header h;
    if (!recordOut || !ReadHeader(stream, h)) return 0;
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
        InstrumentRecord r;
        if (!ReadAt(stream, i, r)) continue;  // unreadable records are passed over
        if (std::strncmp(r.name, given, sizeof r.name) == 0) {
            *recordInOut = r;
            if (indexOut) *indexOut = i;
            return 1;
        }
    }
    return 0;
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

namespace {

int CopyInstrumentFile(const char* from, const char* to) {
    FilePtr in = OpenFile(from, "rb");
    if (!in) return 0;
    FilePtr out = OpenFile(to, "wb");
    Header h;
    if (!out || !ReadHeader(in.get(), h) || !WriteHeader(out.get(), h)) return 0;
    for (int i = 0; i < h.count; ++i) {
        InstrumentRecord r;
        if (!ReadRecord<InstrumentRecordLayout>(in.get(), r)) return 0;
        if (!WriteRecord<InstrumentRecordLayout>(out.get(), r)) return 0;
    }
    return std::fclose(out.release()) == 0 ? 1 : 0;
}

}  // namespace

int InstrumentBackup() { return CopyInstrumentFile(kInstrumentStorePath, kInstrumentBackupPath); }

int InstrumentRestore() { return CopyInstrumentFile(kInstrumentBackupPath, kInstrumentStorePath); }
