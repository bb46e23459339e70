#include "stores/eyepiece_pool.h"

#include <cstring>

#include "base/id_file.h"

namespace {

int ReadAt(FILE* stream, int index, EyepieceRecord& r) {
    return IdReadAt<EyepieceRecordLayout>(stream, index, r);
}

int WriteAt(FILE* stream, int index, const EyepieceRecord& r) {
    return IdWriteAt<EyepieceRecordLayout>(stream, index, r);
}

void SetName(EyepieceRecord& r, const char* name) {
    std::memset(r.name, 0, sizeof r.name);
    std::strncpy(r.name, name, sizeof r.name - 1);
}

int GiveOut(const EyepieceRecord& r, char* nameOut, double* focalOut, double* fieldOut) {
    if (nameOut) {
        std::memcpy(nameOut, r.name, sizeof r.name);
        nameOut[sizeof r.name - 1] = '\0';
    }
    if (focalOut) *focalOut = r.focalLength;
    if (fieldOut) *fieldOut = r.apparentField;
    return r.id;
}

int Close(FilePtr& f) { return std::fclose(f.release()) == 0 ? 1 : 0; }

}  // namespace

FilePtr EyepiecePoolOpen(StoreDamage* damageOut) {
    if (damageOut) *damageOut = StoreDamage::kNone;
    MakeFolder("user");
    // The copy's result is not looked at: the open below decides.
    if (!FileExists(kEyepiecePoolPath)) CopyFileTo(kEyepieceSeedPath, kEyepiecePoolPath);
    FilePtr f = OpenRegularFile(kEyepiecePoolPath, "r+b");
    // A pool too short for a header opens; its header read fails later.
    if (!f || StreamSize(f.get()) < kIdHeaderSize) return f;
    IdHeader h;
    if (!ReadIdHeader(f.get(), h)) return nullptr;
    const StoreDamage damage = IdCheckCount<EyepieceRecordLayout>(f.get(), h);
    if (damage == StoreDamage::kNone) return f;
    if (damageOut) *damageOut = damage;
    return nullptr;
}

int EyepiecePoolReadHeader(FILE* stream, int* nextIdOut, int* countOut) {
    IdHeader h;
    if (!stream || !ReadIdHeader(stream, h)) return 0;
    if (nextIdOut) *nextIdOut = h.nextId;
    if (countOut) *countOut = h.count;
    return 1;
}

int EyepiecePoolReadNext(FILE* stream, EyepieceRecord* recordOut) {
    return stream && recordOut ? ReadRecord<EyepieceRecordLayout>(stream, *recordOut) : 0;
}

int EyepieceRead(int index, char* nameOut, double* focalOut, double* fieldOut) {
    FilePtr f = EyepiecePoolOpen();
    IdHeader h;
    EyepieceRecord r;
    if (!f || !ReadIdHeader(f.get(), h) || index >= h.count || !ReadAt(f.get(), index, r)) return 0;
    return GiveOut(r, nameOut, focalOut, fieldOut);
}

int EyepieceFindById(int id, char* nameOut, double* focalOut, double* fieldOut) {
    FilePtr f = EyepiecePoolOpen();
    IdHeader h;
    if (!f || !ReadIdHeader(f.get(), h)) return 0;
    for (int i = 0; i < h.count; ++i) {
        EyepieceRecord r;
        if (!ReadRecord<EyepieceRecordLayout>(f.get(), r)) return 0;
        if (r.id == id) return GiveOut(r, nameOut, focalOut, fieldOut);
    }
    return 0;
}

int EyepieceWrite(int index, const char* nameOrNull, double focal, double field) {
    FilePtr f = EyepiecePoolOpen();
    IdHeader h;
    EyepieceRecord r;
    if (!f || !ReadIdHeader(f.get(), h) || index >= h.count || !ReadAt(f.get(), index, r)) return 0;
    if (nameOrNull) SetName(r, nameOrNull);
    r.focalLength = static_cast<float>(focal);
    r.apparentField = static_cast<float>(field);
    if (!WriteAt(f.get(), index, r)) return 0;
    return Close(f);
}

int EyepieceAdd(const char* name, double focal, double field) {
    FilePtr f = EyepiecePoolOpen();
    IdHeader h;
    if (!f || !ReadIdHeader(f.get(), h) || !IdHeaderHasRoom(h)) return 0;
    EyepieceRecord r;
    SetName(r, name ? name : "");
    r.focalLength = static_cast<float>(focal);
    r.apparentField = static_cast<float>(field);
    r.id = static_cast<uint16_t>(++h.nextId);
    if (!WriteAt(f.get(), h.count, r)) return 0;
    ++h.count;
    if (!WriteIdHeader(f.get(), h) || !Close(f)) return 0;
    return r.id;
}

int EyepieceDelete(int index) {
    FilePtr f = EyepiecePoolOpen();
    IdHeader h;
    if (!f || !ReadIdHeader(f.get(), h) || index < 0 || index >= h.count) return 0;
    for (int i = index + 1; i < h.count; ++i) {
        EyepieceRecord r;
        if (!ReadAt(f.get(), i, r) || !WriteAt(f.get(), i - 1, r)) return 0;
    }
    uint8_t count[2];
    le::PutU16(count, static_cast<uint16_t>(h.count - 1));
    if (std::fseek(f.get(), 2, SEEK_SET) != 0 || FileWrite(count, 2, f.get()) != 2) return 0;
    return Close(f);
}

int EyepieceBackup() { return IdCopyFile<EyepieceRecordLayout, EyepieceRecord>(kEyepiecePoolPath, kEyepieceBackupPath); }

int EyepieceRestore() { return IdCopyFile<EyepieceRecordLayout, EyepieceRecord>(kEyepieceBackupPath, kEyepiecePoolPath); }
