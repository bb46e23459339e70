#include "catalog/star_texts.h"

#include <cstring>
#include <vector>

#include "base/prefix_match.h"
#include "catalog/catalogue_files.h"

FilePtr openCsn() { return openCatalogue(kCatCsn); }
FilePtr openCsnAlpha() { return openCatalogue(kCatCsnAlp); }
FilePtr openNotes() { return openCatalogue(kCatNotes); }
FilePtr openOrbitNotes() { return openCatalogue(kCatLpNotes); }
FilePtr openVariableNames() { return openCatalogue(kCatVnames); }

namespace {
template <class Layout, class R>
int ReadRow(FILE* file, long row, R* out) {
    if (!file || !out || row < 1) return 0;
    uint8_t image[Layout::kSize];
    if (!readAt(file, (row - 1) * static_cast<long>(Layout::kSize), image, Layout::kSize)) return 0;
    DecodeRecord<Layout>(image, *out);
    return 1;
}
}  // namespace

int readCsn(FILE* file, long row, CsnRecord* out) {
    if (!ReadRow<CsnLayout>(file, row, out)) return 0;
    out->name[sizeof out->name - 1] = '\0';
    out->description[sizeof out->description - 1] = '\0';
    return 1;
}

int readCsnAlpha(FILE* file, long row, CsnAlphaRecord* out) {
    if (!ReadRow<CsnAlphaLayout>(file, row, out)) return 0;
    out->name[sizeof out->name - 1] = '\0';
    return 1;
}

int findCsnAlpha(FILE* file, const char* text, long* row, uint32_t* star) {
    if (!file || !text || !*text) return 0;
    std::string wanted = text;
    // "Name B": the last blank and one letter name a component, not the star.
    const size_t n = wanted.size();
    if (n >= 2 && wanted[n - 2] == ' ' && wanted[n - 1] != ' ') wanted.resize(n - 2);
    CsnAlphaRecord record;
    for (long r = 1; readCsnAlpha(file, r, &record); ++r) {
        if (PrefixMatch(wanted.c_str(), record.name)) {
            if (row) *row = r;
            if (star) *star = record.star;
            return 1;
        }
    }
    return 0;
}

int readIndexedText(FILE* file, long row, std::string* text) {
    if (!file || !text || row < 1) return 0;
    uint8_t image[TextIndexLayout::kSize];
    if (!readAt(file, (row - 1) * static_cast<long>(TextIndexLayout::kSize), image, sizeof image))
        return 0;
    TextIndexRow index;
    DecodeRecord<TextIndexLayout>(image, index);
    text->clear();
    if (index.length == 0) return 1;
    std::vector<char> buffer(index.length);
    if (!readAt(file, static_cast<long>(index.offset), buffer.data(), index.length))
        return 0;
    text->assign(buffer.data(), strnlen(buffer.data(), buffer.size()));
    return 1;
}

int readOrbitNote(FILE* file, long row, std::string* text) {
    return row < kOrbitNoteRows ? readIndexedText(file, row, text) : 0;
}
