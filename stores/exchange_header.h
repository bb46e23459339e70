// The head of every exchange file the stores write and read: an observing
// list, a log, its commentary and the misc pages each travel as one file
// that begins with this 103-byte header and the description text (its
// length in the header, then the text and its NUL). What follows depends
// on the kind.
//
// A writer puts magic, major 2, minor 0 and the letter 'f'; a reader takes
// any major from 2 up, so that a later program's files still read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

#include "base/file_utils.h"
#include "base/record_layout.h"

inline constexpr uint16_t kExchangeMagic = 55555;
inline constexpr uint8_t kExchangeMajor = 2;
inline constexpr uint8_t kExchangeMinor = 0;
inline constexpr uint8_t kExchangeLetter = 'f';

// The kinds of exchange file.
inline constexpr uint8_t kExchangeList = 1;
inline constexpr uint8_t kExchangeLog = 6;
inline constexpr uint8_t kExchangeLogCommentary = 7;
inline constexpr uint8_t kExchangeMisc = 8;

// The title keeps 64 characters and a NUL.
inline constexpr size_t kExchangeTitleChars = 64;

struct ExchangeHeader {
    uint16_t magic = kExchangeMagic;
    uint8_t major = kExchangeMajor;
    uint8_t minor = kExchangeMinor;
    uint8_t letter = kExchangeLetter;
    uint8_t kind = 0;
    char title[kExchangeTitleChars + 1] = {};
    uint32_t arg0 = 0;
    uint32_t recordCount = 0;  // written last; the pace of an import's progress
    uint32_t arg2 = 0;
    uint32_t arg3 = 0;
    uint32_t arg4 = 0;
    uint8_t stamp[8] = {};  // file time of the export
    uint32_t descriptionLength = 0;  // strlen of the text that follows
};

struct ExchangeHeaderLayout {
    static constexpr size_t kSize = 103;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U16(0, r.magic);
        io.U8(2, r.major);
        io.U8(3, r.minor);
        io.U8(4, r.letter);
        io.U8(5, r.kind);
        io.Text(6, r.title);
        io.U32(71, r.arg0);
        io.U32(75, r.recordCount);
        io.U32(79, r.arg2);
        io.U32(83, r.arg3);
        io.U32(87, r.arg4);
        io.Raw(91, r.stamp);
        io.U32(99, r.descriptionLength);
    }
};
static_assert(LayoutIsPacked<ExchangeHeaderLayout, ExchangeHeader>());

inline constexpr long kExchangeRecordCountOffset = 75;

// An exporter's progress: called with 10 at each tenth of its records.
using ExchangeProgress = void (*)(int step, void* context);

// A header of `kind` stamped with `stamp` (8 bytes, or null for the present
// moment), its title cut to 64 characters; the count stays 0 until the end.
ExchangeHeader ExchangeMakeHeader(int kind, const char* title, const uint8_t* stamp);

// The present moment as the stamps hold it (platform::SystemFileTime).
void ExchangeStampNow(uint8_t* stamp /* 8 bytes */);

// Writes the header and the description with its NUL (a null description
// is an empty one) at the stream's position. 1 or 0.
int ExchangeWriteHeader(FILE* file, const ExchangeHeader& header, const char* description);

// Makes the exchange file `path` ("w+b") and writes the header of `kind`,
// stamped now, and the description. Null when the file can't be made or
// written; a file begun is then removed. `headerOut` (may be null) gets the
// header written.
FilePtr ExchangeBeginFile(const char* path, int kind, const char* title, const char* description,
                          ExchangeHeader* headerOut = nullptr);

// Reads the header and the description from the stream's position. 0, with
// the description empty, on a short read, a wrong magic, a major below 2 or
// a description longer than the rest of the file; the kind is the caller's
// to check.
int ExchangeReadHeader(FILE* file, ExchangeHeader* header, std::string* description);

// Writes the record count into the header at the head of the file and
// leaves the stream at its end. 1 or 0.
int ExchangeSetRecordCount(FILE* file, uint32_t count);
