// The index of the observing lists, their creation, deletion and renaming,
// and their descriptions. The item files are in list_items.cpp.
#include "stores/list_store.h"

#include <cstring>

#include "base/le_bytes.h"
#include "base/platform.h"
#include "base/string_helpers.h"

namespace {

long RowOffset(int slot) { return kListIndexHead + static_cast<long>(ListIndexRowLayout::kSize) * slot; }

void CopyName(char (&field)[kListNameSize], const char* name, size_t keep) {
    std::memset(field, 0, sizeof field);
    if (name) std::strncpy(field, name, keep);
}

int ReadRowAt(FILE* index, int slot, ListIndexRow* row) {
    if (std::fseek(index, RowOffset(slot), SEEK_SET) != 0) return 0;
    return ReadRecord<ListIndexRowLayout>(index, *row);
}

int WriteRowAt(FILE* index, int slot, const ListIndexRow& row) {
    if (std::fseek(index, RowOffset(slot), SEEK_SET) != 0) return 0;
    return WriteRecord<ListIndexRowLayout>(index, row);
}

// Writes the slot count. A write that fails part-way would leave a count
// that hides lists or promises rows that aren't there, so the old count is
// written back before the failure is reported.
int WriteSlotCount(FILE* index, int slotCount, int oldCount) {
    if (std::fseek(index, 0, SEEK_SET) == 0 && WriteCount16(index, slotCount)) return 1;
    if (std::fseek(index, 0, SEEK_SET) == 0) WriteCount16(index, oldCount);
    return 0;
}

int CloseIndex(FilePtr index) { return std::fclose(index.release()) == 0 ? 1 : 0; }

void CopyNameOut(const ListIndexRow& row, char* nameOut) {
    if (!nameOut) return;
    std::memcpy(nameOut, row.name, kListNameSize);
    nameOut[kListNameSize - 1] = '\0';
}

// Rewrites one row of a slot below the count through `change`.
template <class Change>
int ChangeRow(int slot, Change change) {
    int slotCount = 0;
    FilePtr index = ListIndexOpen(&slotCount);
    if (!index || slot < 0 || slot >= slotCount) return 0;
    ListIndexRow row;
    if (!ReadRowAt(index.get(), slot, &row)) return 0;
    change(row);
    if (!WriteRowAt(index.get(), slot, row)) return 0;
    return CloseIndex(std::move(index));
}

int WriteEmptyItemFile(int slot) {
    FilePtr items = OpenFile(ListItemPath(slot).c_str(), "wb");
    if (!items || !WriteRecord<ListItemHeaderLayout>(items.get(), ListItemHeader{})) return 0;
    return std::fclose(items.release()) == 0 ? 1 : 0;
}

}  // namespace

std::string ListIndexPath() { return Format("%s/obs.idx", kListFolder); }
std::string ListItemPath(int slot) { return Format("%s/obs.%03d", kListFolder, slot); }
std::string ListDescriptionPath(int slot) { return Format("%s/desc.%03d", kListFolder, slot); }

int ListStoreInit(bool keepFiles) {
    if (!MakeFolder("user") || !MakeFolder(kListFolder)) return 0;
    if (!keepFiles) {
        int slotCount = 0;
        FilePtr old = OpenRegularFile(ListIndexPath().c_str(), "rb");
        if (old && ReadCount16(old.get(), &slotCount)) {
            ListIndexRow row;
            for (int slot = 0; slot < slotCount && ReadRecord<ListIndexRowLayout>(old.get(), row); ++slot)
                if (row.itemCount >= 0) platform::RemoveFile(ListItemPath(slot).c_str());
        }
    }
    FilePtr index = OpenFile(ListIndexPath().c_str(), "wb");
    if (!index || !WriteCount16(index.get(), 0)) return 0;
    return CloseIndex(std::move(index));
}

FilePtr ListIndexOpen(int* slotCountOut) {
    const std::string path = ListIndexPath();
    if (!FileExists(path.c_str()) && !ListStoreInit(true)) return nullptr;
    if (IsOddFile(path.c_str())) return nullptr;
    FilePtr index = OpenFile(path.c_str(), "r+b");
    int slotCount = 0;
    if (!index || !ReadCount16(index.get(), &slotCount) || slotCount < 0) return nullptr;
    if (slotCountOut) *slotCountOut = slotCount;
    return index;
}

int ListIndexRewind(FILE* index) { return std::fseek(index, kListIndexHead, SEEK_SET) == 0 ? 1 : 0; }

int ListNextLive(FILE* index, int slotCount, char* nameOut) {
    for (;;) {
        const long place = std::ftell(index);
        if (place < kListIndexHead) return -1;
        const int slot = static_cast<int>((place - kListIndexHead) / static_cast<long>(ListIndexRowLayout::kSize));
        if (slot >= slotCount) return 0;
        ListIndexRow row;
        if (!ReadRecord<ListIndexRowLayout>(index, row)) return -1;
        if (row.itemCount == kListFreeSlot) continue;
        CopyNameOut(row, nameOut);
        return slot + 1;
    }
}

int ListGetBySlot(FILE* index, int slot, char* nameOut) {
    if (slot < 0 || std::fseek(index, RowOffset(slot), SEEK_SET) != 0) return 0;
    ListIndexRow row;
    if (!ReadRecord<ListIndexRowLayout>(index, row)) return -1;
    CopyNameOut(row, nameOut);
    return row.itemCount;
}

int ListFindByName(const char* name, uint8_t* stampOut) {
    int slotCount = 0;
    FilePtr index = ListIndexOpen(&slotCount);
    if (!index || !name) return -1;
    for (int slot = 0; slot < slotCount; ++slot) {
        ListIndexRow row;
        if (!ReadRecord<ListIndexRowLayout>(index.get(), row)) return -1;
        if (std::strncmp(row.name, name, kListNameSize) != 0) continue;
        if (stampOut) std::memcpy(stampOut, row.stamp, sizeof row.stamp);
        return slot;
    }
    return -1;
}

int ListCreate(const char* name, const uint8_t* stamp) {
    int slotCount = 0;
    FilePtr index = ListIndexOpen(&slotCount);
    if (!index) return -1;
    // The lowest free slot, or a new one behind the last.
    int slot = 0;
    for (; slot < slotCount; ++slot) {
        ListIndexRow row;
        if (!ReadRecord<ListIndexRowLayout>(index.get(), row)) return -1;
        if (row.itemCount == kListFreeSlot) break;
    }
    const int newCount = slot == slotCount ? slotCount + 1 : slotCount;
    if (newCount > 32767) return -1;

    ListIndexRow row;
    CopyName(row.name, name, kListNameAtCreation);
    if (stamp) std::memcpy(row.stamp, stamp, sizeof row.stamp);
    if (!WriteRowAt(index.get(), slot, row)) return -1;
    if (newCount != slotCount && !WriteSlotCount(index.get(), newCount, slotCount)) return -1;
    if (!CloseIndex(std::move(index))) return -1;
    // The row stands even when its item file can't be made; the answer 2
    // says so, and callers that can't tell it from slot 2 go on.
    if (!WriteEmptyItemFile(slot)) return 2;
    return slot;
}

int ListDelete(int slot) {
    int slotCount = 0;
    FilePtr index = ListIndexOpen(&slotCount);
    if (!index || slot < 0 || slot >= slotCount) return 0;
    ListIndexRow freed;
    freed.itemCount = kListFreeSlot;
    if (!WriteRowAt(index.get(), slot, freed)) return 0;
    // Only the last slot gives its row back; free rows before it stay.
    if (slot == slotCount - 1 && !WriteSlotCount(index.get(), slotCount - 1, slotCount)) return 0;
    if (!CloseIndex(std::move(index))) return 0;
    // The description stays: it is written over when the slot is used again.
    const std::string items = ListItemPath(slot);
    if (FileExists(items.c_str()) && !platform::RemoveFile(items.c_str())) return 0;
    return 1;
}

int ListSetStamp(int slot, const uint8_t* stamp) {
    if (!stamp) return 0;
    return ChangeRow(slot, [&](ListIndexRow& row) { std::memcpy(row.stamp, stamp, sizeof row.stamp); });
}

int ListRename(int slot, const char* name) {
    return ChangeRow(slot, [&](ListIndexRow& row) { CopyName(row.name, name, kListNameAtRename); });
}

FilePtr ListOpenItems(int slot, int* itemCountOut) {
    int slotCount = 0;
    FilePtr index = ListIndexOpen(&slotCount);
    if (!index || slot < 0 || slot >= slotCount) return nullptr;
    const int itemCount = ListGetBySlot(index.get(), slot, nullptr);
    index.reset();
    if (itemCount < 0) return nullptr;
    const std::string path = ListItemPath(slot);
    if (IsOddFile(path.c_str())) return nullptr;
    FilePtr items = OpenFile(path.c_str(), "r+b");
    if (!items || !ListSeekFirst(items.get())) return nullptr;
    if (itemCountOut) *itemCountOut = itemCount;
    return items;
}

int ListCloseItems(FilePtr items, int slot, int itemCount) {
    // Rows that didn't reach the disk are not committed by a count.
    if (!items || std::fclose(items.release()) != 0) return 0;
    if (itemCount < 0 || itemCount > kListMaxItems) return 0;
    return ChangeRow(slot, [&](ListIndexRow& row) { row.itemCount = static_cast<int16_t>(itemCount); });
}

int ListReadDescription(int slot, std::string* textOut) {
    if (textOut) textOut->clear();
    const std::string path = ListDescriptionPath(slot);
    FilePtr f = OpenRegularFile(path.c_str(), "rb");
    if (!f || !textOut) return 0;
    uint32_t length = 0;
    if (!ReadU32(f.get(), &length)) return 0;
    // A length past the end of the file is damage, not a text to allocate.
    if (static_cast<uint64_t>(length) + 5 > FileSize(path.c_str())) return 0;
    std::string text(length, '\0');
    if (length > 0 && FileRead(text.data(), length, f.get()) != length) return 0;
    *textOut = text.c_str();
    return 1;
}

int ListWriteDescription(int slot, const char* text) {
    if (!MakeFolder("user") || !MakeFolder(kListFolder)) return 0;
    const std::string body = text ? text : "";
    // The new text goes to a file of its own first, so that a failed write
    // leaves the old description as it was.
    std::vector<uint8_t> bytes(4 + body.size() + 1, 0);
    le::PutU32(bytes.data(), static_cast<uint32_t>(body.size()));
    std::memcpy(bytes.data() + 4, body.c_str(), body.size());
    return ReplaceFileContents(ListDescriptionPath(slot), bytes);
}

int ListMarkClassMembers(int objectClass, uint8_t* marks, size_t size) {
    int slotCount = 0;
    FilePtr index = ListIndexOpen(&slotCount);
    if (!index) return 0;
    int listSlot = 0;
    while ((listSlot = ListNextLive(index.get(), slotCount, nullptr)) > 0) {
        const long next = std::ftell(index.get());
        int count = 0;
        FilePtr items = ListOpenItems(listSlot - 1, &count);
        for (int i = 0; items && i < count; ++i) {
            ObjectRecord r;
            if (!ListReadItem(items.get(), i, count, &r)) break;
            if (r.objectClass == objectClass && marks && r.pid < size) marks[r.pid] = 1;
        }
        // ListOpenItems opened the index again; this walk goes on from its own place.
        if (next < 0 || std::fseek(index.get(), next, SEEK_SET) != 0) return 0;
    }
    return listSlot == 0 ? 1 : 0;
}

int ListFilterClass(int index) {
    static constexpr int kClasses[] = {1, 2, 3, 4, 5, 6, 16, 7, 8, 9, 17, 10, 11, 12, 13, 14, 18, 15};
    if (index < 0 || index >= static_cast<int>(std::size(kClasses))) return index;
    return kClasses[index];
}
