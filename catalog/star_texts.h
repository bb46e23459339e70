// The text files of the star side: `csn` (a 453-byte name and description
// record per row), `csn_alp` (the common names in alphabetical order, a
// star number each) and the pattern of a 6-byte index row followed by text
// that `notes`, `lp_notes` and `vnames` share.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

#include "base/file_utils.h"
#include "base/record_layout.h"

// csn, read by row (n - 1): the name, then the description, each text
// zero-terminated in its field.
struct CsnRecord {
    char name[32] = {};
    char description[421] = {};
};

struct CsnLayout {
    static constexpr size_t kSize = 453;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.Text(0, r.name);
        io.Text(32, r.description);
    }
};
static_assert(LayoutIsPacked<CsnLayout, CsnRecord>());

// csn_alp: a row's number is its place in the alphabetical list, from 1.
struct CsnAlphaRecord {
    uint32_t star = 0;
    char name[32] = {};
};

struct CsnAlphaLayout {
    static constexpr size_t kSize = 36;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U32(0, r.star);
        io.Text(4, r.name);
    }
};
static_assert(LayoutIsPacked<CsnAlphaLayout, CsnAlphaRecord>());

// An index row of the text files: where the text starts and how long it is.
struct TextIndexRow {
    uint32_t offset = 0;
    uint16_t length = 0;
};

struct TextIndexLayout {
    static constexpr size_t kSize = 6;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U32(0, r.offset);
        io.U16(4, r.length);
    }
};
static_assert(LayoutIsPacked<TextIndexLayout, TextIndexRow>());

FilePtr openCsn();
FilePtr openCsnAlpha();

// csn row `row` (from 1); 1 on success.
int readCsn(FILE* file, long row, CsnRecord* out);

// csn_alp row `row` (from 1); 1 on success.
int readCsnAlpha(FILE* file, long row, CsnAlphaRecord* out);

// The first csn_alp row whose name the text matches (the prefix rule, after
// a trailing component letter " X" is cut): its row and star number. 0 when
// none does.
int findCsnAlpha(FILE* file, const char* text, long* row, uint32_t* star);

// The text of index row `row` (from 1) of a 6-byte-index text file; the
// index rows are followed by the texts, whose offsets count from the start
// of the file. 1 on success.
int readIndexedText(FILE* file, long row, std::string* text);

// notes, lp_notes (rows below 260) and vnames.
FilePtr openNotes();
FilePtr openOrbitNotes();
FilePtr openVariableNames();
inline constexpr long kOrbitNoteRows = 260;

// An orbit note: rows 1 to 259 of lp_notes; 1 on success.
int readOrbitNote(FILE* file, long row, std::string* text);
