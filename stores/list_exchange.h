// An observing list packed into one exchange file, and unpacked again into
// the user's lists, on this or another machine.
//
// The file: the exchange header of kind 1 and the description, then the
// 52-byte body head (the list's name, its item count and the include
// flags), then per item the class byte and the u32 id, the object block of
// the user's own objects (stores/object_block.h), and, for each include
// flag, that store's records of the object in the order log entries, notes,
// links, images.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

#include "astro/site.h"
#include "base/file_utils.h"
#include "base/record_layout.h"
#include "stores/exchange_header.h"
#include "stores/list_store.h"
#include "stores/object_block.h"

// What an exchange file may carry of each object besides the object itself.
inline constexpr uint16_t kListIncludeNotes = 1;
inline constexpr uint16_t kListIncludeLinks = 2;
inline constexpr uint16_t kListIncludeLogEntries = 4;
inline constexpr uint16_t kListIncludeImages = 8;
// The records of the attachment stores, which this program has not got yet.
inline constexpr uint16_t kListIncludeAttachments = kListIncludeNotes | kListIncludeLinks | kListIncludeImages;
inline constexpr uint16_t kListIncludeAll =
    kListIncludeNotes | kListIncludeLinks | kListIncludeLogEntries | kListIncludeImages;

struct ListBodyHead {
    char name[kListNameSize] = {};
    int16_t itemCount = 0;
    uint16_t includeFlags = 0;
};

struct ListBodyHeadLayout {
    static constexpr size_t kSize = 52;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.Text(0, r.name);
        io.I16(48, r.itemCount);
        io.U16(50, r.includeFlags);
    }
};
static_assert(LayoutIsPacked<ListBodyHeadLayout, ListBodyHead>());

// Makes the file at `path` ("w+b") and writes the header of kind 1, stamped
// with the present moment, with the title (cut to 64 characters) and the
// description. Null when the file can't be made or written; a file begun
// and not written whole is removed.
FilePtr ListExportBegin(const char* path, const char* title, const char* description);

// Writes the body of the list in `slot` behind the header, then its item
// count into the header. `progress` (may be null) is called with 10 at each
// tenth of the items. 1, or 0 for a slot that isn't a live list, a read or
// write that fails, or include flags other than log entries: the notes,
// links and images travel with the stores that keep them, which this
// program does not have yet, so an export asked for them is refused before
// anything is written. With log entries, each item is followed by the run
// of its entries as a log exchange file has it.
int ListExportWrite(FILE* file, int slot, uint16_t includeFlags, ExchangeProgress progress, void* context);

// An import under way: the file, the list it goes into, and the batches.
struct ListImport {
    FilePtr file;
    FilePtr items;
    int slot = -1;
    int itemCount = 0;       // the list's count as the rows go in
    int countBefore = 0;     // what the list held before
    bool createdList = false;
    uint8_t stampBefore[8] = {};
    std::string descriptionBefore;
    bool hadDescription = false;
    ListBodyHead body;
    int done = 0;            // items of the file read so far
    int batch = 1;
    ObjectBlockImport objects;
};

// Opens the file ("rb") and reads its header and description (magic, major
// from 2 and kind 1 required) and the body head; finds the list of the
// body's name, or makes it, and gives it the header's stamp; opens its
// items behind the ones it holds; writes the file's description in place
// of the list's. A batch is `stepPercent` per cent of the file's items (at
// least one). 1, or 0 with the description empty; a file that isn't a list
// exchange file, or whose include flags ask for records of stores this
// program has not got yet, fails before any store is touched.
int ListImportBegin(ListImport* state, const char* path, int stepPercent, ExchangeHeader* headerOut,
                    std::string* descriptionOut);

// Imports one batch of items: each object's block may make a user's object
// again under a new PID, and the item is appended to the list with its
// computed fields to be redone, so the list's next refresh places it (the
// site is not needed for that); the log entries that follow an item go into
// the log, and stay there even when the import is discarded. 1 when items
// remain, 0 when all are in, -1 on a failure.
int ListImportStep(ListImport* state, const Site* site);

// Closes the file and commits the list's count. With `discard` the import
// is undone in the list: a list the import made is deleted; a list that was
// there keeps its own items, stamp and description. Objects made in the
// user's stores stay. 1, or 0 when the list could not be committed or put back.
int ListImportEnd(ListImport* state, bool discard);
