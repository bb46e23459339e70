#include "stores/exchange_header.h"

#include <cstring>

#include "base/file_io.h"
#include "base/le_bytes.h"
#include "base/platform.h"
#include "base/store_damage.h"

ExchangeHeader ExchangeMakeHeader(int kind, const char* title, const uint8_t* stamp) {
    ExchangeHeader h;
    h.kind = static_cast<uint8_t>(kind);
    if (title) std::strncpy(h.title, title, kExchangeTitleChars);
    if (stamp)
        std::memcpy(h.stamp, stamp, sizeof h.stamp);
    else
        ExchangeStampNow(h.stamp);
    return h;
}

void ExchangeStampNow(uint8_t* stamp) {
    const uint64_t now = platform::SystemFileTime();
    le::PutU32(stamp, static_cast<uint32_t>(now));
    le::PutU32(stamp + 4, static_cast<uint32_t>(now >> 32));
}

int ExchangeWriteHeader(FILE* file, const ExchangeHeader& header, const char* description) {
    if (!file) return 0;
    const char* text = description ? description : "";
    const size_t length = std::strlen(text);
    ExchangeHeader h = header;
    h.descriptionLength = static_cast<uint32_t>(length);
    if (!WriteRecord<ExchangeHeaderLayout>(file, h)) return 0;
    return FileWrite(text, length + 1, file) == length + 1 ? 1 : 0;
}

int ExchangeReadHeader(FILE* file, ExchangeHeader* header, std::string* description) {
    description->clear();
    if (!file || !ReadRecord<ExchangeHeaderLayout>(file, *header)) return 0;
    if (header->magic != kExchangeMagic || header->major < kExchangeMajor) return 0;
    // A length the file cannot hold is damage, not a text to allocate for.
    const int64_t size = StreamSize(file);
    const long at = std::ftell(file);
    if (size < 0 || at < 0 || static_cast<int64_t>(header->descriptionLength) + 1 > size - at) return 0;
    std::string text(static_cast<size_t>(header->descriptionLength) + 1, '\0');
    if (FileRead(text.data(), text.size(), file) != text.size()) return 0;
    text.resize(std::strlen(text.c_str()));
    *description = std::move(text);
    return 1;
}

int ExchangeSetRecordCount(FILE* file, uint32_t count) {
    if (!file || std::fseek(file, kExchangeRecordCountOffset, SEEK_SET) != 0) return 0;
    if (!WriteU32(file, count)) return 0;
    return std::fflush(file) == 0 && std::fseek(file, 0, SEEK_END) == 0 ? 1 : 0;
}

FilePtr ExchangeBeginFile(const char* path, int kind, const char* title, const char* description,
                          ExchangeHeader* headerOut) {
    if (!path) return nullptr;
    FilePtr file = OpenFile(path, "w+b");
    if (!file) return nullptr;
    const ExchangeHeader header = ExchangeMakeHeader(kind, title, nullptr);
    if (!ExchangeWriteHeader(file.get(), header, description) || std::fflush(file.get()) != 0) {
        file.reset();  // Windows removes no file that is still open
        std::remove(path);
        return nullptr;
    }
    if (headerOut) *headerOut = header;
    return file;
}
