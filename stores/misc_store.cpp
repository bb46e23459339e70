// The misc pages under user/log/misc: the index, the page files and the
// exchange file of kind 8.
#include "stores/misc_store.h"

#include <algorithm>
#include <cstring>

#include "base/file_io.h"
#include "base/file_utils.h"
#include "base/platform.h"
#include "base/store_damage.h"
#include "base/string_helpers.h"
#include "stores/log_records.h"

namespace {

int CloseStream(FilePtr f) { return std::fclose(f.release()) == 0 ? 1 : 0; }

// A name as the store keeps it: its first 48 characters.
std::string StoredName(const char* name) {
    if (!name) return std::string();
    return std::string(name, std::min(std::strlen(name), kMiscNameSize - 1));
}

// The name of a header, whose field may lack its NUL.
std::string StoredName(const MiscHeader& header) {
    const void* nul = std::memchr(header.name, '\0', sizeof header.name);
    const size_t length = nul ? static_cast<size_t>(static_cast<const char*>(nul) - header.name)
                              : sizeof header.name;
    return std::string(header.name, std::min(length, kMiscNameSize - 1));
}

// Bytes of the file left behind the stream's position; -1 when unknown.
int64_t BytesLeft(FILE* f) {
    const int64_t size = StreamSize(f);
    const long at = std::ftell(f);
    return size < 0 || at < 0 ? -1 : size - at;
}

struct MiscIndex {
    MiscIndexHead head;
    std::vector<MiscIndexRow> rows;  // head.count of them
};

// Reads index.bin whole. A store without an index is empty; an index too
// short for its count, or one that can't be read, gives 0.
int ReadIndex(MiscIndex* out) {
    *out = MiscIndex{};
    if (!platform::PathExists(kMiscIndexPath)) return 1;
    FilePtr f = OpenRegularFile(kMiscIndexPath, "rb");
    if (!f || !ReadRecord<MiscIndexHeadLayout>(f.get(), out->head)) return 0;
    const uint64_t need = uint64_t{MiscIndexRowLayout::kSize} * out->head.count;
    const int64_t left = BytesLeft(f.get());
    if (left < 0 || need > static_cast<uint64_t>(left)) return 0;
    std::vector<uint8_t> bytes(need);
    if (need != 0 && FileRead(bytes.data(), bytes.size(), f.get()) != bytes.size()) return 0;
    out->rows.resize(out->head.count);
    for (size_t i = 0; i < out->rows.size(); ++i) {
        DecodeRecord<MiscIndexRowLayout>(bytes.data() + i * MiscIndexRowLayout::kSize, out->rows[i]);
        out->rows[i].name[kMiscNameSize - 1] = '\0';
    }
    return 1;
}

int WriteIndex(const MiscIndex& index) {
    MiscIndexHead head = index.head;
    head.count = static_cast<uint32_t>(index.rows.size());
    std::vector<uint8_t> bytes(MiscIndexHeadLayout::kSize + MiscIndexRowLayout::kSize * index.rows.size());
    EncodeRecord<MiscIndexHeadLayout>(head, bytes.data());
    for (size_t i = 0; i < index.rows.size(); ++i)
        EncodeRecord<MiscIndexRowLayout>(
            index.rows[i], bytes.data() + MiscIndexHeadLayout::kSize + i * MiscIndexRowLayout::kSize);
    return ReplaceFileContents(kMiscIndexPath, bytes);
}

MiscHeader PageHeader(const std::string& name, const char* text) {
    MiscHeader h;
    std::memcpy(h.name, name.data(), std::min(name.size(), kMiscNameSize - 1));
    h.textLength = static_cast<uint32_t>(std::strlen(text ? text : ""));
    return h;
}

// The header and the text with its NUL, as a page file and an exchange
// record hold them.
std::vector<uint8_t> PageBytes(const std::string& name, const char* text) {
    const MiscHeader h = PageHeader(name, text);
    std::vector<uint8_t> bytes(MiscHeaderLayout::kSize + h.textLength + 1, 0);
    EncodeRecord<MiscHeaderLayout>(h, bytes.data());
    if (h.textLength) std::memcpy(bytes.data() + MiscHeaderLayout::kSize, text, h.textLength);
    return bytes;
}

int WritePage(uint32_t number, const std::string& name, const char* text) {
    return ReplaceFileContents(MiscPagePath(number), PageBytes(name, text));
}

// A header and its text from the stream's position; the name comes back
// NUL-terminated. 0 on a short read, a wrong magic, or a length the file
// can't hold.
int ReadPageRecord(FILE* f, MiscHeader* header, std::string* text) {
    if (!ReadRecord<MiscHeaderLayout>(f, *header) || header->magic != kExchangeMagic) return 0;
    header->name[kMiscNameSize - 1] = '\0';
    const int64_t left = BytesLeft(f);
    if (left < 0 || uint64_t{header->textLength} + 1 > static_cast<uint64_t>(left)) return 0;
    std::string bytes(static_cast<size_t>(header->textLength) + 1, '\0');
    if (FileRead(bytes.data(), bytes.size(), f) != bytes.size()) return 0;
    bytes.resize(std::strlen(bytes.c_str()));
    *text = std::move(bytes);
    return 1;
}

int MakeMiscFolders() {
    return MakeFolder("user") && MakeFolder(kLogFolder) && MakeFolder(kMiscFolder) ? 1 : 0;
}

long FindRow(const MiscIndex& index, const std::string& name) {
    for (size_t i = 0; i < index.rows.size(); ++i)
        if (NameCompare(index.rows[i].name, name.c_str()) == 0) return static_cast<long>(i);
    return -1;
}

long FindNumber(const MiscIndex& index, uint32_t number) {
    for (size_t i = 0; i < index.rows.size(); ++i)
        if (index.rows[i].number == number) return static_cast<long>(i);
    return -1;
}

// The add behind MiscAdd, with the page's number given back.
int AddPage(const std::string& name, const char* text, uint32_t* numberOut) {
    if (name.empty()) return 0;
    MiscIndex index;
    if (!ReadIndex(&index)) return 0;
    if (FindRow(index, name) >= 0) return 2;
    if (!MakeMiscFolders()) return 0;
    const uint32_t number = index.head.nextNumber;
    if (!WritePage(number, name, text)) return 0;
    MiscIndexRow row;
    std::memcpy(row.name, name.data(), std::min(name.size(), kMiscNameSize - 1));
    row.number = number;
    const auto at = std::find_if(index.rows.begin(), index.rows.end(), [&](const MiscIndexRow& r) {
        return NameCompare(r.name, row.name) > 0;
    });
    index.rows.insert(at, row);
    ++index.head.nextNumber;
    if (!WriteIndex(index)) {
        // The index doesn't know the page: it goes, and its number is free.
        platform::RemoveFile(MiscPagePath(number).c_str());
        return 0;
    }
    *numberOut = number;
    return 1;
}

}  // namespace

std::string MiscPagePath(uint32_t number) { return Format("%s/%08u.bin", kMiscFolder, number); }

long MiscFind(const char* name) {
    const std::string key = StoredName(name);
    if (key.empty()) return -1;
    FilePtr f = OpenRegularFile(kMiscIndexPath, "rb");
    MiscIndexHead head;
    if (!f || !ReadRecord<MiscIndexHeadLayout>(f.get(), head)) return -1;
    const int64_t left = BytesLeft(f.get());
    if (left < 0 || uint64_t{MiscIndexRowLayout::kSize} * head.count > static_cast<uint64_t>(left)) return -1;
    int64_t low = 0;
    int64_t high = static_cast<int64_t>(head.count) - 1;
    while (low <= high) {
        const int64_t mid = low + (high - low) / 2;
        MiscIndexRow row;  // one row at a time, read where the search looks
        if (std::fseek(f.get(), static_cast<long>(MiscIndexHeadLayout::kSize + MiscIndexRowLayout::kSize * mid),
                       SEEK_SET) != 0 ||
            !ReadRecord<MiscIndexRowLayout>(f.get(), row))
            return -1;
        row.name[kMiscNameSize - 1] = '\0';
        const int order = NameCompare(key.c_str(), row.name);
        if (order == 0) return static_cast<long>(row.number);
        if (order < 0)
            high = mid - 1;
        else
            low = mid + 1;
    }
    return -1;
}

int MiscAdd(const char* name, const char* text) {
    uint32_t number = 0;
    return AddPage(StoredName(name), text, &number);
}

int MiscRemove(long number) {
    if (number < 0) return 0;
    MiscIndex index;
    if (!ReadIndex(&index)) return 0;
    const long row = FindNumber(index, static_cast<uint32_t>(number));
    if (row < 0) return 0;
    index.rows.erase(index.rows.begin() + row);
    if (!WriteIndex(index)) return 0;
    const std::string page = MiscPagePath(static_cast<uint32_t>(number));
    return platform::RemoveFile(page.c_str()) || !platform::PathExists(page.c_str()) ? 1 : 0;
}

long MiscReplace(long number, const MiscHeader& header, const char* text) {
    const std::string name = StoredName(header);
    if (number < 0 || name.empty()) return -1;
    MiscIndex index;
    if (!ReadIndex(&index)) return -1;
    const long row = FindNumber(index, static_cast<uint32_t>(number));
    if (row < 0) return -1;
    const long named = FindRow(index, name);
    if (named == row) {
        if (!WritePage(static_cast<uint32_t>(number), name, text)) return -1;
        MiscIndexRow& r = index.rows[static_cast<size_t>(row)];
        if (name == r.name) return number;
        // Same name by NameCompare, so the row keeps its place.
        std::memset(r.name, 0, sizeof r.name);
        std::memcpy(r.name, name.data(), name.size());
        return WriteIndex(index) ? number : -1;
    }
    if (named >= 0) return -1;  // the name is another page's
    // The new page is made before the old one goes, so that a failure
    // leaves at least one of them.
    uint32_t added = 0;
    if (AddPage(name, text, &added) != 1) return -1;
    MiscRemove(number);
    return static_cast<long>(added);
}

int MiscReadPage(long number, MiscHeader* headerOut, std::string* textOut) {
    if (number < 0 || !headerOut || !textOut) return 0;
    FilePtr f = OpenRegularFile(MiscPagePath(static_cast<uint32_t>(number)).c_str(), "rb");
    MiscHeader header;
    std::string text;
    if (!f || !ReadPageRecord(f.get(), &header, &text)) return 0;
    *headerOut = header;
    *textOut = std::move(text);
    return 1;
}

int MiscReadAll(std::vector<MiscPage>* pagesOut) {
    if (!pagesOut) return 0;
    pagesOut->clear();
    MiscIndex index;
    if (!ReadIndex(&index)) return 0;
    for (const MiscIndexRow& row : index.rows) {
        MiscPage page;
        page.name = row.name;
        page.number = row.number;
        MiscHeader header;
        page.textRead = MiscReadPage(row.number, &header, &page.text) == 1;
        pagesOut->push_back(std::move(page));
    }
    return 1;
}

long MiscExport(const char* path, const char* title, const char* description) {
    if (!path) return -1;
    MiscIndex index;
    if (!ReadIndex(&index)) return -1;
    FilePtr file = ExchangeBeginFile(path, kExchangeMisc, title, description);
    if (!file) return -1;
    const auto fail = [&] {
        file.reset();
        platform::RemoveFile(path);
        return -1L;
    };
    for (const MiscIndexRow& row : index.rows) {
        MiscHeader page;
        std::string text;
        if (!MiscReadPage(row.number, &page, &text)) return fail();
        const std::vector<uint8_t> bytes = PageBytes(row.name, text.c_str());
        if (FileWrite(bytes.data(), bytes.size(), file.get()) != bytes.size()) return fail();
    }
    const std::vector<uint8_t> end = PageBytes(std::string(), "");
    if (FileWrite(end.data(), end.size(), file.get()) != end.size()) return fail();
    if (!ExchangeSetRecordCount(file.get(), static_cast<uint32_t>(index.rows.size()))) return fail();
    if (!CloseStream(std::move(file))) return fail();
    return static_cast<long>(index.rows.size());
}

long MiscImport(const char* path, ExchangeHeader* headerOut, std::string* descriptionOut,
                ExchangeProgress progress, void* context) {
    if (descriptionOut) descriptionOut->clear();
    if (!path) return -1;
    FilePtr file = OpenRegularFile(path, "rb");
    ExchangeHeader header;
    std::string description;
    if (!file || !ExchangeReadHeader(file.get(), &header, &description) || header.kind != kExchangeMisc)
        return -1;
    const uint32_t pace = std::max<uint32_t>(1, header.recordCount / 10);
    uint32_t records = 0;
    long added = 0;
    for (;;) {
        MiscHeader page;
        std::string text;
        if (!ReadPageRecord(file.get(), &page, &text)) return -1;
        if (page.textLength == 0 && page.name[0] == '\0') break;
        ++records;
        if (progress && records % pace == 0) progress(10, context);
        if (page.name[0] == '\0') continue;
        const int result = MiscAdd(page.name, text.c_str());
        if (result == 0) return -1;
        if (result == 1) ++added;
    }
    if (headerOut) *headerOut = header;
    if (descriptionOut) *descriptionOut = std::move(description);
    return added;
}
