// The rows of one open item file: reading, appending, ticks and the
// in-place compaction, and copies into another list. The caller holds the
// count while the file is open; ListCloseItems commits it.
#include <cstring>

#include "stores/list_store.h"

namespace {

long ItemOffset(int index) { return kListItemHead + kListItemSize * index; }

int ReadAt(FILE* items, int index, ObjectRecord* r) {
    if (index < 0 || std::fseek(items, ItemOffset(index), SEEK_SET) != 0) return 0;
    return ReadRecord<ObjectRecordLayout>(items, *r);
}

int WriteAt(FILE* items, int index, const ObjectRecord& r) {
    if (index < 0 || std::fseek(items, ItemOffset(index), SEEK_SET) != 0) return 0;
    return WriteRecord<ObjectRecordLayout>(items, r);
}

// Reads a row, lets `change` alter it, and writes it back in place.
template <class Change>
int ChangeItem(FILE* items, int index, Change change) {
    ObjectRecord r;
    if (!items || !ReadAt(items, index, &r)) return 0;
    change(r);
    if (!WriteAt(items, index, r)) return 0;
    return std::fflush(items) == 0 ? 1 : 0;
}

void SetBit(uint8_t& byte, uint8_t bit, bool state) {
    byte = static_cast<uint8_t>(state ? byte | bit : byte & ~bit);
}

// Appends the rows from `first` up to `end` that `pick` chooses to the list
// in `targetSlot` and commits them there; 1 when every chosen row went over.
template <class Pick>
int CopyRows(FILE* items, int first, int end, int targetSlot, Pick pick) {
    if (!items) return 0;
    int targetCount = 0;
    FilePtr target = ListOpenItems(targetSlot, &targetCount);
    if (!target || !ListSeekItem(target.get(), targetCount)) return 0;
    for (int i = first; i < end; ++i) {
        ObjectRecord r;
        if (!ReadAt(items, i, &r)) return 0;
        if (!pick(r)) continue;
        if (std::fseek(target.get(), ItemOffset(targetCount), SEEK_SET) != 0 ||
            !ListAppendItem(target.get(), &r, &targetCount))
            return 0;
    }
    return ListCloseItems(std::move(target), targetSlot, targetCount);
}

}  // namespace

int ListSeekItem(FILE* items, int index) {
    return items && index >= 0 && std::fseek(items, ItemOffset(index), SEEK_SET) == 0 ? 1 : 0;
}

int ListSeekFirst(FILE* items) { return ListSeekItem(items, 0); }

int ListAppendItem(FILE* items, ObjectRecord* record, int* itemCount) {
    if (!items || !record || !itemCount || *itemCount >= kListMaxItems) return 0;
    record->sizeUnit = static_cast<uint8_t>(record->sizeUnit & ~kListTicked);
    if (!WriteRecord<ObjectRecordLayout>(items, *record)) return 0;
    ++*itemCount;
    return 1;
}

int ListReadItem(FILE* items, int index, int count, ObjectRecord* out) {
    if (!items || !out || index >= count) return 0;
    return ReadAt(items, index, out);
}

int ListToggleTick(FILE* items, int index) {
    return ChangeItem(items, index, [](ObjectRecord& r) { r.sizeUnit ^= kListTicked; });
}

int ListSetTick(FILE* items, int index, bool state) {
    return ChangeItem(items, index, [&](ObjectRecord& r) { SetBit(r.sizeUnit, kListTicked, state); });
}

int ListSetAllTicks(FILE* items, int count, bool state) {
    for (int i = 0; i < count; ++i)
        if (!ListSetTick(items, i, state)) return 0;
    return 1;
}

int ListSetPassedTicks(FILE* items, int count, bool state) {
    for (int i = 0; i < count; ++i) {
        ObjectRecord r;
        if (!ReadAt(items, i, &r)) return 0;
        if (r.filterPassed == 0 || r.filterPassed == kListNotWalked) continue;
        SetBit(r.sizeUnit, kListTicked, state);
        if (!WriteAt(items, i, r)) return 0;
    }
    return std::fflush(items) == 0 ? 1 : 0;
}

bool ListIsTicked(const ObjectRecord& record) { return (record.sizeUnit & kListTicked) != 0; }

int ListSetLogged(FILE* items, int index, bool state) {
    return ChangeItem(items, index, [&](ObjectRecord& r) { SetBit(r.componentCode, kListLogged, state); });
}

int ListRemoveItem(FILE* items, int index, int* itemCount) {
    if (!items || !itemCount || index < 0 || index >= *itemCount) return 0;
    for (int from = index + 1; from < *itemCount; ++from) {
        ObjectRecord r;
        if (!ReadAt(items, from, &r) || !WriteAt(items, from - 1, r)) return 0;
    }
    if (std::fflush(items) != 0) return 0;
    --*itemCount;
    return 1;
}

int ListRemoveTicked(FILE* items, int* itemCount) {
    if (!items || !itemCount) return 0;
    // Rows keep their order: each unticked row moves down over the gap that
    // the ticked rows before it left.
    int write = 0;
    int removed = 0;
    for (int read = 0; read < *itemCount; ++read) {
        ObjectRecord r;
        if (!ReadAt(items, read, &r)) return 0;
        if (ListIsTicked(r)) {
            ++removed;
            continue;
        }
        if (removed > 0 && !WriteAt(items, write, r)) return 0;
        ++write;
    }
    if (std::fflush(items) != 0) return 0;
    *itemCount -= removed;
    return 1;
}

int ListCopyItem(FILE* items, int index, int* itemCount, int targetSlot) {
    if (!itemCount || index < 0 || index >= *itemCount) return 0;
    return CopyRows(items, index, index + 1, targetSlot, [](const ObjectRecord&) { return true; });
}

int ListMoveItem(FILE* items, int index, int* itemCount, int targetSlot) {
    return ListCopyItem(items, index, itemCount, targetSlot) && ListRemoveItem(items, index, itemCount) ? 1 : 0;
}

int ListCopyTicked(FILE* items, int* itemCount, int targetSlot) {
    if (!itemCount) return 0;
    return CopyRows(items, 0, *itemCount, targetSlot, [](const ObjectRecord& r) { return ListIsTicked(r); });
}

int ListMoveTicked(FILE* items, int* itemCount, int targetSlot) {
    return ListCopyTicked(items, itemCount, targetSlot) && ListRemoveTicked(items, itemCount) ? 1 : 0;
}
