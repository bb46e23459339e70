#include "stores/comment_exchange.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <vector>

#include "base/file_io.h"
#include "base/platform.h"
#include "base/store_damage.h"
#include "base/string_helpers.h"
#include "stores/log_store.h"

namespace {

constexpr IndexMember kMembersInBitOrder[] = {kIndexClass, kIndexNight,      kIndexObserver,
                                              kIndexLoc,   kIndexInstrument, kIndexCons};

// The key of a walk's item, as the index file was named.
IndexKey KeyOfItem(IndexMember member, const IndexItem& item) {
    switch (member) {
        case kIndexClass: return IndexClassKey(item.number);
        case kIndexNight: return IndexNightKey(item.year, item.month, item.day);
        case kIndexObserver: return IndexObserverKey(item.text.c_str());
        case kIndexInstrument: return IndexInstrumentKey(item.text.c_str());
        case kIndexLoc: return IndexLocKey(item.text.c_str());
        case kIndexCons: return IndexConsKey(item.number);
    }
    return IndexKey{};
}

// The key as a record writes it.
std::string KeyText(const IndexKey& key) {
    switch (key.member) {
        case kIndexClass:
        case kIndexCons: return Format("%d", key.number);
        case kIndexNight: return Format("%04d %02d %02d", key.year, key.month, key.day);
        default: return key.name;
    }
}

// The commentary of a key, read without making a file for it.
std::string ExistingComment(const IndexKey& key) {
    const std::string path = IndexPath(key, true);
    std::string text;
    if (path.empty()) return text;
    FilePtr f = OpenRegularFile(path.c_str(), "rb");
    if (!f || !CommentRead(f.get(), &text)) text.clear();
    return text;
}

// A record and the `length` + 1 bytes after it.
int WriteCommentRecord(FILE* file, uint16_t kind, const std::string& keyText, const std::string& text) {
    CommentRecord record;
    record.kind = kind;
    record.length = kind == 0 ? 0 : static_cast<uint32_t>(text.size() + 1);
    std::strncpy(record.keyText, keyText.c_str(), sizeof record.keyText - 1);
    if (!WriteRecord<CommentRecordLayout>(file, record)) return 0;
    std::vector<char> bytes(static_cast<size_t>(record.length) + 1, '\0');
    std::memcpy(bytes.data(), text.data(), std::min(text.size(), bytes.size() - 1));
    return FileWrite(bytes.data(), bytes.size(), file) == bytes.size() ? 1 : 0;
}

// The records of one member; -1 when one can't be written.
int ExportMember(FILE* file, IndexMember member) {
    int count = 0;
    IndexEnum walk;
    IndexItem item;
    for (int r = IndexFirst(&walk, member, &item, false); r != 0; r = IndexNext(&walk, &item, false)) {
        if (r != 1) continue;
        const IndexKey key = KeyOfItem(member, item);
        const std::string text = ExistingComment(key);
        if (text.empty()) continue;
        if (!WriteCommentRecord(file, member, KeyText(key), text)) return -1;
        ++count;
    }
    return count;
}

int CloseStream(FilePtr f) { return std::fclose(f.release()) == 0 ? 1 : 0; }

// The key a record names; false when its text doesn't parse.
bool KeyOfRecord(const CommentRecord& record, IndexKey* key) {
    char text[sizeof record.keyText + 1] = {};
    std::memcpy(text, record.keyText, sizeof record.keyText);
    int a = 0, b = 0, c = 0;
    switch (record.kind) {
        case kIndexClass:
            if (std::sscanf(text, "%d", &a) != 1) return false;
            *key = IndexClassKey(a);
            return true;
        case kIndexNight:
            if (std::sscanf(text, "%d %d %d", &a, &b, &c) != 3) return false;
            *key = IndexNightKey(a, b, c);
            return true;
        case kIndexObserver: *key = IndexObserverKey(text); return true;
        case kIndexInstrument: *key = IndexInstrumentKey(text); return true;
        case kIndexLoc: *key = IndexLocKey(text); return true;
        case kIndexCons:
            if (std::sscanf(text, "%d", &a) != 1) return false;
            *key = IndexConsKey(a);
            return true;
        default: return false;
    }
}

}  // namespace

int CommentExport(uint16_t mask, const char* path, const char* title, const char* description) {
    ExchangeHeader header;
    FilePtr file = ExchangeBeginFile(path, kExchangeLogCommentary, title, description, &header);
    if (!file) return -1;
    int count = 0;
    for (IndexMember member : kMembersInBitOrder) {
        if (count < 0 || (mask & member) == 0) continue;
        const int written = ExportMember(file.get(), member);
        count = written < 0 ? -1 : count + written;
    }
    if (count >= 0 && (!WriteCommentRecord(file.get(), 0, "", "") ||
                       !ExchangeSetRecordCount(file.get(), static_cast<uint32_t>(count))))
        count = -1;
    if (!CloseStream(std::move(file))) count = -1;
    if (count < 0) {
        platform::RemoveFile(path);
        return -1;
    }
    // The file is whole even when the registry can't take its row.
    LogRegistryPut(header.title, header.stamp);
    return count;
}

int CommentImportRecord(const CommentRecord& record, const char* text) {
    IndexKey key;
    if (!text || !*text || !KeyOfRecord(record, &key)) return 0;
    FilePtr f = CommentOpen(key);
    if (!f) return 0;
    return CommentAppend(f.get(), text, std::strlen(text) + 1);
}

int CommentImport(const char* path, ExchangeHeader* headerOut, std::string* descriptionOut,
                  ExchangeProgress progress, void* context) {
    if (descriptionOut) descriptionOut->clear();
    if (!path) return -1;
    FilePtr file = OpenRegularFile(path, "rb");
    if (!file) return -1;
    ExchangeHeader header;
    std::string description;
    if (!ExchangeReadHeader(file.get(), &header, &description) || header.kind != kExchangeLogCommentary)
        return -1;
    const uint32_t pace = std::max<uint32_t>(1, header.recordCount / 10);
    const int64_t size = StreamSize(file.get());
    int added = 0;
    for (uint32_t read = 1;; ++read) {
        CommentRecord record;
        if (!ReadRecord<CommentRecordLayout>(file.get(), record)) return -1;
        if (record.kind == 0) break;
        // A length the file can't hold is damage, not a text to allocate.
        const long at = std::ftell(file.get());
        if (size >= 0 && (at < 0 || static_cast<int64_t>(record.length) + 1 > size - at)) return -1;
        std::string text(static_cast<size_t>(record.length) + 1, '\0');
        if (FileRead(text.data(), text.size(), file.get()) != text.size()) return -1;
        text.resize(std::strlen(text.c_str()));
        if (CommentImportRecord(record, text.c_str()) == 1) ++added;
        if (progress && read % pace == 0) progress(10, context);
    }
    LogRegistryPut(header.title, header.stamp);
    if (headerOut) *headerOut = header;
    if (descriptionOut) *descriptionOut = std::move(description);
    return added;
}
