// The log's six secondary indexes and their commentary files.
#include "stores/log_index.h"

#include <algorithm>
#include <cctype>
#include <cstring>

#include "astro/calendar.h"
#include "base/file_io.h"
#include "base/le_bytes.h"
#include "base/platform.h"
#include "base/store_damage.h"
#include "base/string_helpers.h"
#include "catalog/constellation_files.h"
#include "catalog/constellation_names.h"
#include "stores/file_name_escape.h"
#include "stores/log_records.h"

namespace {

// How each member turns its key into a file name.
struct MemberForm {
    IndexMember member;
    const char* folder;
    bool escapeIndex;    // the name is escaped in the .idx name
    bool escapeComment;  // and in the .bin name
    bool dropEmpty;      // an index without rows is deleted
};

constexpr MemberForm kMemberForms[] = {
    {kIndexClass, "class", false, false, false},
    {kIndexNight, "night", false, false, true},
    {kIndexObserver, "observer", false, false, true},
    {kIndexInstrument, "instrument", true, true, true},
    {kIndexLoc, "loc", true, false, true},
    {kIndexCons, "cons", false, false, true},
};

const MemberForm* FormOf(IndexMember member) {
    for (const MemberForm& form : kMemberForms)
        if (form.member == member) return &form;
    return nullptr;
}

std::string MemberFolder(const MemberForm& form) { return Format("%s/%s", kLogFolder, form.folder); }

// A name that would take a path out of its folder: a separator, "." or
// "..", or a drive prefix.
bool LeavesFolder(const std::string& name) {
    if (name.find_first_of("/\\") != std::string::npos) return true;
    if (name == "." || name == "..") return true;
    return name.size() >= 2 && name[1] == ':' && std::isalpha(static_cast<unsigned char>(name[0]));
}

bool EndsWithIdx(const std::string& name) {
    if (name.size() < 4) return false;
    return StringCompareNoCase(name.c_str() + name.size() - 4, ".idx") == 0;
}

// The part of a file name before its first ".idx", whatever its case.
std::string StripIdx(const std::string& name) {
    for (size_t at = 0; at + 4 <= name.size(); ++at)
        if (StringCompareNoCase(name.substr(at, 4).c_str(), ".idx") == 0) return name.substr(0, at);
    return name;
}

long RowOffset(long row) { return kIndexHead + static_cast<long>(IndexRowLayout::kSize) * row; }

int ReadRowAt(FILE* file, long row, IndexRow* out) {
    if (!file || row < 0 || std::fseek(file, RowOffset(row), SEEK_SET) != 0) return 0;
    return ReadRecord<IndexRowLayout>(file, *out);
}

int WriteRowAt(FILE* file, long row, const IndexRow& r) {
    if (std::fseek(file, RowOffset(row), SEEK_SET) != 0) return 0;
    return WriteRecord<IndexRowLayout>(file, r);
}

int ReadCountAt0(FILE* file, uint32_t* count) {
    if (std::fseek(file, 0, SEEK_SET) != 0) return 0;
    return ReadU32(file, count);
}

int WriteCountAt0(FILE* file, uint32_t count) {
    if (std::fseek(file, 0, SEEK_SET) != 0 || !WriteU32(file, count)) return 0;
    return std::fflush(file) == 0 ? 1 : 0;
}

// Rows sort by slot, then key, both as signed 32-bit values.
int SignedOrder(int32_t a, int32_t b) { return a < b ? -1 : (a > b ? 1 : 0); }

// The row against the key pair: -1 the row sorts above, 1 below, 0 equal,
// -2 when the row can't be read.
int RowOrder(int classSlot, uint32_t logKey, const IndexRow& r) {
    const int order = SignedOrder(static_cast<int32_t>(classSlot), static_cast<int32_t>(r.classSlot));
    return order != 0 ? order : SignedOrder(static_cast<int32_t>(logKey), static_cast<int32_t>(r.logKey));
}

int CompareRow(int classSlot, uint32_t logKey, FILE* file, long row) {
    IndexRow r;
    if (!ReadRowAt(file, row, &r)) return -2;
    return RowOrder(classSlot, logKey, r);
}

// The binary search of an index over `count` rows, `orderAt` giving the key
// pair against a row as CompareRow does: the row, -1 for none, -2 when a
// row can't be read.
template <class OrderAt>
long SearchRows(uint32_t count, OrderAt orderAt) {
    long low = 0;
    long high = static_cast<long>(count) - 1;
    while (low <= high) {
        const long middle = low + (high - low) / 2;
        const int order = orderAt(middle);
        if (order == -2) return -2;
        if (order == 0) return middle;
        if (order < 0)
            high = middle - 1;
        else
            low = middle + 1;
    }
    return -1;
}

// Whether the row sorts before the key pair.
bool RowBefore(const IndexRow& r, int classSlot, uint32_t logKey) {
    const int order = SignedOrder(static_cast<int32_t>(r.classSlot), classSlot);
    if (order != 0) return order < 0;
    return static_cast<int32_t>(r.logKey) < static_cast<int32_t>(logKey);
}

// The row position of an object; false for a mask without a slot.
bool ObjectPosition(const ObjectRecord& object, int* slot, uint32_t* key) {
    *slot = ClassSlotOf(object.classMask);
    *key = logKey(object);
    return *slot >= 0;
}

bool MakeMemberFolder(const MemberForm& form) {
    return MakeFolder("user") && MakeFolder(kLogFolder) && MakeFolder(MemberFolder(form).c_str());
}

int CloseStream(FilePtr f) { return std::fclose(f.release()) == 0 ? 1 : 0; }

// The text of a commentary after its length; `length` of 0 or less is an
// empty text. Any bytes that can be read count, since a stored text may be
// shorter than its length says.
int ReadCommentText(FILE* file, int32_t length, std::string* text) {
    text->clear();
    if (length <= 0) return 1;
    // The bytes there are, never more than the length: a damaged length is
    // no size to allocate.
    const int64_t size = StreamSize(file);
    if (size < 0) return 0;
    const int64_t available = std::min<int64_t>(length, size - 4);
    if (available <= 0) return 0;
    std::string bytes(static_cast<size_t>(available), '\0');
    const size_t got = FileRead(bytes.data(), bytes.size(), file);
    if (got == 0) return 0;
    bytes.resize(got);
    bytes.resize(std::strlen(bytes.c_str()));
    *text = std::move(bytes);
    return 1;
}

// One step of a walk: the next .idx name turned into an item.
int WalkItem(IndexMember member, const std::string& fileName, IndexItem* item, bool longNames) {
    *item = IndexItem{};
    switch (member) {
        case kIndexClass: {
            int slot = 0;
            if (std::sscanf(fileName.c_str(), "%d", &slot) != 1) return -1;
            const char* name = ClassNameAt(slot);
            if (!name) return -1;
            item->number = slot;
            item->text = name;
            return 1;
        }
        case kIndexNight: {
            int y = 0, m = 0, d = 0;
            if (std::sscanf(fileName.c_str(), "%04d%02d%02d", &y, &m, &d) != 3) return -1;
            const char* month = MonthAbbreviation(m);
            if (!month) return -1;
            item->year = y;
            item->month = m;
            item->day = d;
            item->text = Format("%4d %3.3s %2d", y, month, d);
            return 1;
        }
        case kIndexObserver:
            item->text = StripIdx(fileName);
            return 1;
        case kIndexInstrument:
        case kIndexLoc:
            item->text = UnescapeFileName(StripIdx(fileName));
            return 1;
        case kIndexCons: {
            int code = 0;
            if (std::sscanf(fileName.c_str(), "%d", &code) != 1) return -1;
            if (code < 0 || code >= kConstellationZones) return -1;
            item->number = code;
            if (longNames) {
                FilePtr names = openConstellationNames();
                ConstellationLabel label;
                if (!names || !readConstellationName(names.get(), code, &label) || label.name.empty())
                    return -1;
                item->text = label.name;
            } else {
                item->text = constellationZoneAbbreviation(code);
                if (item->text.empty()) return -1;
            }
            return 1;
        }
    }
    return -1;
}

// The row count of a class index; 0 when it can't be read.
uint32_t ClassRowCount(const std::string& fileName) {
    const std::string path = Format("%s/class/%s", kLogFolder, fileName.c_str());
    FilePtr f = OpenRegularFile(path.c_str(), "rb");
    uint32_t count = 0;
    if (!f || !ReadU32(f.get(), &count)) return 0;
    return count;
}

}  // namespace

IndexKey IndexClassKey(int slot) {
    IndexKey k;
    k.member = kIndexClass;
    k.number = slot;
    return k;
}

IndexKey IndexNightKey(int year, int month, int day) {
    IndexKey k;
    k.member = kIndexNight;
    k.year = year;
    k.month = month;
    k.day = day;
    return k;
}

namespace {
IndexKey NameKey(IndexMember member, const char* name) {
    IndexKey k;
    k.member = member;
    k.name = name ? name : "";
    return k;
}
}  // namespace

IndexKey IndexObserverKey(const char* name) { return NameKey(kIndexObserver, name); }
IndexKey IndexInstrumentKey(const char* name) { return NameKey(kIndexInstrument, name); }
IndexKey IndexLocKey(const char* name) { return NameKey(kIndexLoc, name); }

IndexKey IndexConsKey(int code) {
    IndexKey k;
    k.member = kIndexCons;
    k.number = code;
    return k;
}

std::string IndexPath(const IndexKey& key, bool commentary) {
    const MemberForm* form = FormOf(key.member);
    if (!form) return {};
    const char* extension = commentary ? "bin" : "idx";
    const std::string folder = MemberFolder(*form);
    switch (key.member) {
        case kIndexClass:
            if (key.number < 0 || key.number >= kLogClassSlots) return {};
            return Format("%s/%02d.%s", folder.c_str(), key.number, extension);
        case kIndexNight:
            return Format("%s/%04d%02d%02d.%s", folder.c_str(), key.year, key.month, key.day, extension);
        case kIndexCons:
            // Codes run 0 to 88; 255 stands for a place no zone was found
            // for, and gets no file the enumerator would reject.
            if (key.number < 0 || key.number >= kConstellationZones) return {};
            return Format("%s/%02d.%s", folder.c_str(), key.number, extension);
        case kIndexObserver:
        case kIndexInstrument:
        case kIndexLoc: {
            if (key.name.empty()) return {};
            const bool escape = commentary ? form->escapeComment : form->escapeIndex;
            const std::string name = escape ? EscapeFileName(key.name) : key.name;
            if (LeavesFolder(name)) return {};
            return Format("%s/%s.%s", folder.c_str(), name.c_str(), extension);
        }
    }
    return {};
}

FilePtr IndexOpen(const IndexKey& key, uint32_t* rowCountOut) {
    const std::string path = IndexPath(key, false);
    if (path.empty()) return nullptr;
    FilePtr f = OpenRegularFile(path.c_str(), "r+b");
    if (!f) {
        if (FileExists(path.c_str())) return nullptr;  // there, but not a file to open
        if (!MakeMemberFolder(*FormOf(key.member))) return nullptr;
        FilePtr made = OpenFile(path.c_str(), "wb");
        if (!made) return nullptr;
        const int written = WriteU32(made.get(), 0);
        if (!CloseStream(std::move(made)) || !written) {
            platform::RemoveFile(path.c_str());
            return nullptr;
        }
        f = OpenRegularFile(path.c_str(), "r+b");
        if (!f) return nullptr;
    }
    uint32_t count = 0;
    if (!ReadCountAt0(f.get(), &count)) return nullptr;
    // A count the file can't hold is damage: the file is refused.
    if (CheckStreamCount(f.get(), kIndexHead, IndexRowLayout::kSize, static_cast<long>(count)) !=
        StoreDamage::kNone)
        return nullptr;
    if (rowCountOut) *rowCountOut = count;
    return f;
}

FilePtr IndexOpenClass(int slot, uint32_t* rowCountOut) { return IndexOpen(IndexClassKey(slot), rowCountOut); }
FilePtr IndexOpenNight(int year, int month, int day, uint32_t* rowCountOut) {
    return IndexOpen(IndexNightKey(year, month, day), rowCountOut);
}
FilePtr IndexOpenObserver(const char* name, uint32_t* rowCountOut) {
    return IndexOpen(IndexObserverKey(name), rowCountOut);
}
FilePtr IndexOpenInstrument(const char* name, uint32_t* rowCountOut) {
    return IndexOpen(IndexInstrumentKey(name), rowCountOut);
}
FilePtr IndexOpenLoc(const char* name, uint32_t* rowCountOut) { return IndexOpen(IndexLocKey(name), rowCountOut); }
FilePtr IndexOpenCons(int code, uint32_t* rowCountOut) { return IndexOpen(IndexConsKey(code), rowCountOut); }

void IndexDropIfEmpty(const IndexKey& key) {
    const MemberForm* form = FormOf(key.member);
    if (!form || !form->dropEmpty) return;
    const std::string path = IndexPath(key, false);
    if (path.empty()) return;
    uint32_t count = 0;
    {
        FilePtr f = OpenRegularFile(path.c_str(), "r+b");
        if (!f || !ReadU32(f.get(), &count)) return;
    }
    if (static_cast<int32_t>(count) < 1) platform::RemoveFile(path.c_str());
}

int IndexCompare(int classSlot, uint32_t logKey, FILE* file, long row) {
    const int order = CompareRow(classSlot, logKey, file, row);
    return order == -2 ? 0 : order;
}

long IndexFind(FILE* file, int classSlot, uint32_t logKey, uint32_t* rowCountOut) {
    uint32_t count = 0;
    if (!file || !ReadCountAt0(file, &count)) return -2;
    if (rowCountOut) *rowCountOut = count;
    // A row that can't be read is a failure, never a match: a put would
    // otherwise write over another object's row.
    return SearchRows(count, [&](long row) { return CompareRow(classSlot, logKey, file, row); });
}

int IndexPut(FILE* file, const ObjectRecord& object, uint32_t entryNumber) {
    int slot = 0;
    uint32_t key = 0;
    if (!file || !ObjectPosition(object, &slot, &key)) return 0;
    uint32_t count = 0;
    if (!ReadCountAt0(file, &count)) return 0;
    // The rows are read in one piece and searched in memory; every row is
    // read before anything is written, so a short file leaves them as they
    // were.
    if (CheckStreamCount(file, kIndexHead, IndexRowLayout::kSize, static_cast<long>(count)) !=
        StoreDamage::kNone)
        return 0;
    const size_t rowBytes = IndexRowLayout::kSize * static_cast<size_t>(count);
    std::vector<uint8_t> old(rowBytes);
    if (std::fseek(file, kIndexHead, SEEK_SET) != 0) return 0;
    if (rowBytes > 0 && FileRead(old.data(), rowBytes, file) != rowBytes) return 0;
    std::vector<IndexRow> rows(count);
    for (size_t i = 0; i < count; ++i) DecodeRecord<IndexRowLayout>(old.data() + i * IndexRowLayout::kSize, rows[i]);

    const IndexRow fresh{key, static_cast<uint32_t>(slot), entryNumber};
    // An object the index holds gets its row written over: the binary
    // search of IndexFind, over the rows in memory.
    const long found =
        SearchRows(count, [&](long row) { return RowOrder(slot, key, rows[static_cast<size_t>(row)]); });
    if (found >= 0) return WriteRowAt(file, found, fresh) && std::fflush(file) == 0 ? 1 : 0;

    // Otherwise the row goes in front of the first row not sorting before
    // it, and the rows from there on move down by one.
    size_t at = 0;
    while (at < count && RowBefore(rows[at], slot, key)) ++at;
    rows.insert(rows.begin() + static_cast<long>(at), fresh);
    std::vector<uint8_t> tail((rows.size() - at) * IndexRowLayout::kSize);
    for (size_t i = at; i < rows.size(); ++i)
        EncodeRecord<IndexRowLayout>(rows[i], tail.data() + (i - at) * IndexRowLayout::kSize);
    if (std::fseek(file, RowOffset(static_cast<long>(at)), SEEK_SET) != 0) return 0;
    if (FileWrite(tail.data(), tail.size(), file) != tail.size() || std::fflush(file) != 0) return 0;
    return WriteCountAt0(file, count + 1);
}

int IndexRemove(FILE* file, const ObjectRecord& object) {
    int slot = 0;
    uint32_t key = 0;
    if (!file || !ObjectPosition(object, &slot, &key)) return 0;
    uint32_t count = 0;
    const long found = IndexFind(file, slot, key, &count);
    if (found < 0) return 0;
    for (long row = found + 1; row < static_cast<long>(count); ++row) {
        IndexRow r;
        if (!ReadRowAt(file, row, &r) || !WriteRowAt(file, row - 1, r)) return 0;
    }
    if (std::fflush(file) != 0) return 0;
    return WriteCountAt0(file, count - 1);
}

int IndexReadRow(FILE* file, long row, IndexRow* rowOut) {
    IndexRow r;
    if (!rowOut || !ReadRowAt(file, row, &r)) return 0;
    const LogKeyParts parts = LogKeySplit(r.logKey);
    r.logKey = parts.id;
    *rowOut = r;
    return parts.user ? 2 : 1;
}

int IndexFirst(IndexEnum* walk, IndexMember member, IndexItem* item, bool longNames) {
    if (!walk || !item) return 0;
    *walk = IndexEnum{};
    walk->member = member;
    const MemberForm* form = FormOf(member);
    if (!form) return 0;
    std::vector<platform::FolderEntry> entries;
    if (!platform::ListFolder(MemberFolder(*form).c_str(), entries)) return 0;
    for (const platform::FolderEntry& e : entries)
        if (!e.isFolder && EndsWithIdx(e.name)) walk->names.push_back(e.name);
    std::sort(walk->names.begin(), walk->names.end());
    return IndexNext(walk, item, longNames);
}

int IndexNext(IndexEnum* walk, IndexItem* item, bool longNames) {
    if (!walk || !item) return 0;
    while (walk->next < walk->names.size()) {
        const std::string& name = walk->names[walk->next++];
        const int result = WalkItem(walk->member, name, item, longNames);
        // A class without rows is passed over.
        if (result == 1 && walk->member == kIndexClass && ClassRowCount(name) == 0) continue;
        return result;
    }
    return 0;
}

FilePtr CommentOpen(const IndexKey& key) {
    const std::string path = IndexPath(key, true);
    if (path.empty() || !MakeMemberFolder(*FormOf(key.member))) return nullptr;
    FilePtr f = OpenRegularFile(path.c_str(), "r+b");
    if (f) return f;
    if (FileExists(path.c_str())) return nullptr;
    f = OpenFile(path.c_str(), "w+b");
    if (!f) return nullptr;
    if (!WriteU32(f.get(), 0) || std::fflush(f.get()) != 0) {
        f.reset();
        platform::RemoveFile(path.c_str());
        return nullptr;
    }
    std::rewind(f.get());
    return f;
}

int CommentRead(FILE* file, std::string* textOut) {
    if (!file || !textOut) return 0;
    textOut->clear();
    uint32_t length = 0;
    if (!ReadCountAt0(file, &length)) return 0;
    return ReadCommentText(file, static_cast<int32_t>(length), textOut);
}

int CommentWrite(FILE* file, const char* text, long length) {
    if (!file) return 0;
    if (length < 0) length = 0;
    // The text fills `length` bytes; a shorter one is padded with NULs.
    std::vector<char> bytes(static_cast<size_t>(length), '\0');
    const char* source = text ? text : "";
    std::memcpy(bytes.data(), source, std::min(bytes.size(), std::strlen(source) + 1));
    if (!WriteCountAt0(file, static_cast<uint32_t>(length))) return 0;
    if (!bytes.empty() && FileWrite(bytes.data(), bytes.size(), file) != bytes.size()) return 0;
    return std::fflush(file) == 0 ? 1 : 0;
}

int CommentAppend(FILE* file, const char* text, size_t size) {
    if (!file || !text) return 0;
    uint32_t stored = 0;
    if (!ReadCountAt0(file, &stored)) return 0;
    const int32_t length = static_cast<int32_t>(stored);
    std::string merged;
    if (length > 0) {
        std::string old;
        if (!ReadCommentText(file, length, &old)) return 0;
        const char* rest = text;
        while (*rest == ' ') ++rest;
        if (*rest && !old.empty() && std::strstr(old.c_str(), rest)) return 2;
        merged = old;
        if (!old.empty()) merged += ' ';
    }
    merged += text;
    // The merged length goes first, and then only `size` bytes of the merged
    // text: existing files hold texts written so, a length that may promise
    // more than is stored.
    const size_t room = std::max<size_t>(static_cast<size_t>(std::max<int32_t>(length, 0)) + size + 2,
                                         merged.size() + 1);
    std::vector<char> buffer(std::max(room, size), '\0');
    std::memcpy(buffer.data(), merged.c_str(), merged.size() + 1);
    if (!WriteCountAt0(file, static_cast<uint32_t>(merged.size() + 1))) return 0;
    if (size > 0 && FileWrite(buffer.data(), size, file) != size) return 0;
    return std::fflush(file) == 0 ? 1 : 0;
}
