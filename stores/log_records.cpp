// The class slots of the log and the paths of its files.
#include "stores/log_records.h"

#include "base/string_helpers.h"

namespace {

struct ClassSlot {
    const char* folder;
    uint32_t mask;  // the bits that select the slot
};

// Slot 4 takes every star bit; its own mask is 16.
constexpr ClassSlot kClassSlots[kLogClassSlots] = {
    {"constellations", 1},
    {"major solar system", 2},
    {"comets", 4},
    {"minor planets", 8},
    {"stars", 16 | 32 | 64 | 128},
    {"galaxies", 256},
    {"galaxy groups", 0x10000},
    {"quasars", 512},
    {"planetary nebulae", 1024},
    {"bright nebulae", 2048},
    {"dark nebulae", 0x20000},
    {"open clusters", 4096},
    {"globular clusters", 8192},
    {"constellation", 32768},
};
constexpr int kStarSlot = 4;

bool HasFolder(int slot) { return slot >= 0 && slot < kLogClassFolders; }

// The ids and entry numbers go through a 32-bit long, as the files were
// always named.
long AsLong(uint32_t value) { return static_cast<long>(static_cast<int32_t>(value)); }

}  // namespace

const char* const kLogIndexFolders[kLogIndexFolderCount] = {"class", "night", "loc",
                                                            "observer", "instrument", "cons"};

int ClassSlotOf(uint32_t classMask) {
    for (int slot = 0; slot < kLogClassSlots; ++slot)
        if (classMask & kClassSlots[slot].mask) return slot;
    return -1;
}

uint32_t ClassMaskOfSlot(int slot) {
    if (slot < 0 || slot >= kLogClassSlots) return 0;
    return slot == kStarSlot ? 16 : kClassSlots[slot].mask;
}

const char* ClassNameAt(int slot) {
    if (slot < 0 || slot >= kLogClassSlots) return nullptr;
    return kClassSlots[slot].folder;
}

const char* ClassNameNext() {
    static int cursor = 0;
    const char* name = kClassSlots[cursor].folder;
    cursor = (cursor + 1) % kLogClassFolders;
    return name;
}

uint32_t logKey(int objectClass, uint32_t id) {
    return IsUserClass(objectClass) ? (id | kLogUserKeyBit) : id;
}

uint32_t logKey(const ObjectRecord& record) { return logKey(record.objectClass, record.pid); }

LogKeyParts LogKeySplit(uint32_t key) {
    LogKeyParts parts;
    parts.id = key & ~kLogUserKeyBit;
    parts.user = (key & kLogUserKeyBit) != 0;
    return parts;
}

std::string LogClassFolderPath(int slot) {
    if (!HasFolder(slot)) return {};
    return Format("%s/%s", kLogFolder, kClassSlots[slot].folder);
}

std::string LogPidPath(int slot) {
    if (!HasFolder(slot)) return {};
    return Format("user/log/%s/pid.bin", kClassSlots[slot].folder);
}

std::string LogRowsPath(int slot, uint32_t id, bool userFlag) {
    if (!HasFolder(slot)) return {};
    return Format(userFlag ? "user/log/%s/%.9lds.pix" : "user/log/%s/%.9ld.pix",
                  kClassSlots[slot].folder, AsLong(id));
}

std::string LogEntryPath(int slot, uint32_t entryNumber) {
    if (!HasFolder(slot)) return {};
    return Format("user/log/%s/%.8ld.bin", kClassSlots[slot].folder, AsLong(entryNumber));
}

std::string LogIndexFolderPath(int index) {
    if (index < 0 || index >= kLogIndexFolderCount) return {};
    return Format("%s/%s", kLogFolder, kLogIndexFolders[index]);
}
