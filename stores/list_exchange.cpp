#include "stores/list_exchange.h"

#include <algorithm>
#include <cstring>

#include "base/file_io.h"
#include "base/le_bytes.h"
#include "catalog/object_record.h"
#include "stores/log_exchange.h"

namespace {

// The five bytes that name an object in every user file: class, then PID.
int WriteObjectKey(FILE* out, uint8_t objectClass, uint32_t pid) {
    uint8_t key[5];
    key[0] = objectClass;
    le::PutU32(key + 1, pid);
    return FileWrite(key, sizeof key, out) == sizeof key;
}

int ReadObjectKey(FILE* in, uint8_t* objectClass, uint32_t* pid) {
    uint8_t key[5];
    if (FileRead(key, sizeof key, in) != sizeof key) return 0;
    *objectClass = key[0];
    *pid = le::GetU32(key + 1);
    return 1;
}

// The name and count of a live list; 0 for a free slot or a failed read.
int ListNameAndCount(int slot, char* name, int* count) {
    int slotCount = 0;
    FilePtr index = ListIndexOpen(&slotCount);
    if (!index || slot < 0 || slot >= slotCount) return 0;
    const int n = ListGetBySlot(index.get(), slot, name);
    if (n < 0) return 0;
    *count = n;
    return 1;
}

}  // namespace

FilePtr ListExportBegin(const char* path, const char* title, const char* description) {
    return ExchangeBeginFile(path, kExchangeList, title, description);
}

int ListExportWrite(FILE* file, int slot, uint16_t includeFlags, ExchangeProgress progress, void* context) {
    // Notes, links and images come with the attachment stores; until they
    // exist nothing is written that asks for them.
    if (!file || (includeFlags & kListIncludeAttachments) != 0) return 0;
    ListBodyHead body;
    int count = 0;
    if (!ListNameAndCount(slot, body.name, &count)) return 0;
    int opened = 0;
    FilePtr items = ListOpenItems(slot, &opened);
    if (!items) return 0;
    body.itemCount = static_cast<int16_t>(count);
    body.includeFlags = includeFlags;
    if (!WriteRecord<ListBodyHeadLayout>(file, body)) return 0;
    for (int i = 0; i < count; ++i) {
        ObjectRecord r;
        if (!ListReadItem(items.get(), i, count, &r)) return 0;
        if (!WriteObjectKey(file, r.objectClass, r.pid)) return 0;
        if (!ObjectBlockWrite(file, r.objectClass, r.pid)) return 0;
        if ((includeFlags & kListIncludeLogEntries) != 0 && !LogExportObjectRun(file, r)) return 0;
        if (progress && (i + 1) * 10 / count != i * 10 / count) progress(10, context);
    }
    return ExchangeSetRecordCount(file, static_cast<uint32_t>(count));
}

int ListImportBegin(ListImport* state, const char* path, int stepPercent, ExchangeHeader* headerOut,
                    std::string* descriptionOut) {
    *state = ListImport{};
    descriptionOut->clear();
    state->file = OpenRegularFile(path, "rb");
    if (!state->file) return 0;
    ExchangeHeader header;
    std::string description;
    const auto fail = [&] {
        state->items.reset();
        state->file.reset();
        descriptionOut->clear();
        return 0;
    };
    if (!ExchangeReadHeader(state->file.get(), &header, &description) || header.kind != kExchangeList)
        return fail();
    if (!ReadRecord<ListBodyHeadLayout>(state->file.get(), state->body)) return fail();
    state->body.name[kListNameSize - 1] = '\0';
    // Records of the attachment stores come with those stores: a file that
    // carries them is refused whole rather than imported in part.
    if ((state->body.includeFlags & kListIncludeAttachments) != 0 || state->body.itemCount < 0) return fail();

    state->slot = ListFindByName(state->body.name, state->stampBefore);
    if (state->slot < 0) {
        // A new list's slot is found again by its name: the creation's answer
        // 2 can also mean that the item file could not be made.
        if (ListCreate(state->body.name, header.stamp) < 0) return fail();
        state->slot = ListFindByName(state->body.name, nullptr);
        if (state->slot < 0) return fail();
        state->createdList = true;
    } else {
        state->hadDescription = ListReadDescription(state->slot, &state->descriptionBefore) == 1;
        if (!ListSetStamp(state->slot, header.stamp)) return fail();
    }
    state->items = ListOpenItems(state->slot, &state->itemCount);
    state->countBefore = state->itemCount;
    if (!state->items || !ListSeekItem(state->items.get(), state->itemCount) ||
        !ListWriteDescription(state->slot, description.c_str())) {
        ListImportEnd(state, true);
        return fail();
    }
    state->batch = std::max(1, static_cast<int>(stepPercent * 0.01 * state->body.itemCount));
    *headerOut = header;
    *descriptionOut = std::move(description);
    return 1;
}

int ListImportStep(ListImport* state, const Site* site) {
    (void)site;
    if (!state->file || !state->items) return -1;
    for (int inBatch = 0; inBatch < state->batch; ++inBatch) {
        if (state->done >= state->body.itemCount) return 0;
        ObjectRecord r;
        uint8_t objectClass = 0;
        uint32_t pid = 0;
        if (!ReadObjectKey(state->file.get(), &objectClass, &pid)) return -1;
        r.objectClass = objectClass;
        r.classMask = classMaskOf(objectClass);
        if (!ObjectBlockRead(state->file.get(), objectClass, &pid, &state->objects)) return -1;
        r.pid = pid;
        if ((state->body.includeFlags & kListIncludeLogEntries) != 0 &&
            LogImportRun(state->file.get(), 0, nullptr, nullptr) < 0)
            return -1;
        if (!ListAppendItem(state->items.get(), &r, &state->itemCount)) return -1;
        ++state->done;
    }
    return state->done >= state->body.itemCount ? 0 : 1;
}

int ListImportEnd(ListImport* state, bool discard) {
    state->file.reset();
    int ok = ObjectBlockFinish(&state->objects);
    if (state->slot < 0) return 0;
    if (discard && state->createdList) {
        state->items.reset();
        ok = ListDelete(state->slot) && ok;
    } else if (discard) {
        // The rows written behind the old count are past it and read as stale.
        ok = (state->items ? ListCloseItems(std::move(state->items), state->slot, state->countBefore) : 1) && ok;
        ok = ListSetStamp(state->slot, state->stampBefore) && ok;
        if (state->hadDescription)
            ok = ListWriteDescription(state->slot, state->descriptionBefore.c_str()) && ok;
        else
            std::remove(ListDescriptionPath(state->slot).c_str());
    } else if (state->items) {
        // A list this import made and could not commit holds none of the
        // file's items: it goes rather than stay as an empty list.
        const int committed = ListCloseItems(std::move(state->items), state->slot, state->itemCount);
        if (!committed && state->createdList) ListDelete(state->slot);
        ok = committed && ok;
    }
    state->slot = -1;
    return ok ? 1 : 0;
}
