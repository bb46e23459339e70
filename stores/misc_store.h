// The misc store: named free-text pages kept beside the observation log
// under user/log/misc, and their exchange file.
//
// user/log/misc/index.bin    u32 nextNumber, u32 count, then count 53-byte
//                            rows (name, page number), ascending by
//                            NameCompare of the names
// user/log/misc/NNNNNNNN.bin one page: the 58-byte MiscHeader, then the
//                            text and its NUL (textLength + 1 bytes)
//
// Page numbers are handed out from nextNumber and never reused. The store
// keeps no open state: each operation opens and closes its files. The index
// and the pages are written whole beside the old file and then swapped in,
// so that a failed write leaves what was there before.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "base/record_layout.h"
#include "stores/exchange_header.h"

inline constexpr const char* kMiscFolder = "user/log/misc";
inline constexpr const char* kMiscIndexPath = "user/log/misc/index.bin";

// A name keeps 48 characters and its NUL.
inline constexpr size_t kMiscNameSize = 49;

// The head of a page file and of each record of a misc exchange file.
struct MiscHeader {
    uint16_t magic = kExchangeMagic;
    uint8_t major = kExchangeMajor;
    uint8_t minor = kExchangeMinor;
    uint8_t letter = kExchangeLetter;
    char name[kMiscNameSize] = {};
    uint32_t textLength = 0;  // strlen of the text that follows; its NUL follows too
};

struct MiscHeaderLayout {
    static constexpr size_t kSize = 58;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U16(0, r.magic);
        io.U8(2, r.major);
        io.U8(3, r.minor);
        io.U8(4, r.letter);
        io.Text(5, r.name);
        io.U32(54, r.textLength);
    }
};
static_assert(LayoutIsPacked<MiscHeaderLayout, MiscHeader>());

struct MiscIndexHead {
    uint32_t nextNumber = 0;  // the number the next page gets; never lowered
    uint32_t count = 0;       // rows that follow; rows past it are stale
};

struct MiscIndexHeadLayout {
    static constexpr size_t kSize = 8;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U32(0, r.nextNumber);
        io.U32(4, r.count);
    }
};
static_assert(LayoutIsPacked<MiscIndexHeadLayout, MiscIndexHead>());

struct MiscIndexRow {
    char name[kMiscNameSize] = {};
    uint32_t number = 0;
};

struct MiscIndexRowLayout {
    static constexpr size_t kSize = 53;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.Text(0, r.name);
        io.U32(49, r.number);
    }
};
static_assert(LayoutIsPacked<MiscIndexRowLayout, MiscIndexRow>());

// "user/log/misc/NNNNNNNN.bin", eight digits of the number.
std::string MiscPagePath(uint32_t number);

// The number of the page of that name (compared by NameCompare, the name
// cut to 48 characters as the store keeps it), or -1 when there is none or
// the index can't be read. A binary search that reads only the rows it
// looks at.
long MiscFind(const char* name);

// Adds a page under nextNumber: the page file first, then the index with
// the row merged in front of the first greater name. 1 when added, 2 when
// the name exists already (nothing changes), 0 for an empty name or a
// failure, which leaves the store as it was. A name is cut to 48 characters.
int MiscAdd(const char* name, const char* text);

// Takes the page's row out of the index and deletes its file; nextNumber
// stays. 0 when the number isn't in the index or the index can't be
// written.
int MiscRemove(long number);

// Puts `header.name` and `text` in the place of page `number`. When the
// name still resolves to the number the page is rewritten under its number
// (and the index row takes the new spelling of the name); otherwise the
// page is added under the new name and the old one removed, so it gets a
// new number. The new page is made before the old one goes: should the
// removal fail, both stay, and the new number is still the answer. The
// page's number afterwards, or -1 on a failure, for a number that isn't a
// page, or for a name another page has.
long MiscReplace(long number, const MiscHeader& header, const char* text);

// Reads page `number`: its header (the name NUL-terminated) and its text.
// 0 when the file can't be opened or read, or is too short for its length.
int MiscReadPage(long number, MiscHeader* headerOut, std::string* textOut);

// One page as a caller lists it.
struct MiscPage {
    std::string name;
    uint32_t number = 0;
    std::string text;
    bool textRead = false;  // false when the page file couldn't be read
};

// Every page in index order. A page whose file can't be read is listed
// with an empty text and textRead false. 0 when the index can't be read; a
// store with no index holds no pages.
int MiscReadAll(std::vector<MiscPage>* pagesOut);

// Writes every page to the exchange file at `path` (kind 8): the header and
// the description, then per page its MiscHeader and text, then the closing
// record of an empty name, textLength 0 and the single NUL; the header's
// recordCount is the number of pages. The count, or -1 with no file left
// behind.
long MiscExport(const char* path, const char* title, const char* description);

// Reads a misc exchange file into the store. Records of an empty name are
// skipped; a page whose name the store has already is left as it stands.
// `progress` (may be null) is called with 10 at each tenth of the header's
// recordCount. The number of pages added, or -1 for a file that can't be
// opened, isn't a misc exchange file of major 2 or above, is cut short, or
// when the store can't be written; pages added before a failure stay.
long MiscImport(const char* path, ExchangeHeader* headerOut, std::string* descriptionOut,
                ExchangeProgress progress, void* context);
