// The star lists (class 5).
#include <cstring>

#include "base/prefix_match.h"
#include "catalog/browse.h"
#include "catalog/catalogue_files.h"
#include "catalog/constellation_names.h"
#include "catalog/designation_parse.h"
#include "catalog/designation_print.h"
#include "catalog/greek_letters.h"
#include "catalog/multiple_stars.h"
#include "catalog/star_indexes.h"
#include "catalog/star_texts.h"
#include "catalog/variable_stars.h"

namespace {

enum StarKind {
    kCommon = 1, kBayer, kFlamsteed, kVariable, kHr, kHd, kSao, kPpm, kHip, kBd, kCd, kCp, kGc,
    kStruve, kAds, kCcdm, kNsv, kTycho, kGsc
};

constexpr int kBayerLetters = 24, kBayerSuperscripts = 9, kFlamsteedNumbers = 139;
constexpr long kPpmNorthLast = 378910, kPpmSouthFirst = 700001;
constexpr long kHrLast = 9110, kHdLast = 359083, kGcLast = 33342, kHipLast = 120416;
constexpr long kNsvLast = 14811;
constexpr uint32_t kEmptySlot = 0xFFFFFF;

// A 3-byte star slot that holds a star.
bool starSlotFilled(FILE* file, long offset) {
    uint32_t v = 0;
    return offset >= 0 && readNumber3(file, offset, &v) && v != 0 && v != kEmptySlot;
}

long hdPresent(FILE* f, long n) {
    long two[2];
    return lookupHd(f, n, two);
}
long adsPresent(FILE* f, long n) {
    long two[2];
    return lookupAdsCcdm(f, n, two);
}
// An NSV row is there when any of its bytes is set.
long nsvPresent(FILE* f, long n) {
    uint8_t image[NsvRecordLayout::kSize];
    if (!readAt(f, (n - 1) * static_cast<long>(sizeof image), image, sizeof image)) return 0;
    for (uint8_t b : image)
        if (b) return 1;
    return 0;
}

// The plain numbered lists: the id is the catalogue number.
NumberedList starList(int kind) {
    NumberedList l;
    switch (kind) {
    case kHr:
        l = {openHrbs, lookupHrbs, [](long n) { return hrName(n); }, 1, kHrLast, kHrbsSlot};
        break;
    case kHd: l = {openHd, hdPresent, hdName, 1, kHdLast, kHdSlot}; break;
    case kSao: l = {openSao, lookupSao, saoName, 1, kSaoBound - 1, kSaoSlot}; break;
    case kPpm:
        l = {openPpm, lookupPpm, ppmName, 1, 999999, kPpmSlot};
        l.gapFrom = kPpmNorthLast + 1;
        l.gapTo = kPpmSouthFirst - 1;
        break;
    case kHip: l = {openHc, lookupHc, hipName, 1, kHipLast, kHcSlot}; break;
    case kGc: l = {openGc, lookupGc, gcName, 1, kGcLast, kGcSlot}; break;
    case kStruve:
        l = {openStruve, lookupStruve, [](long n) { return struveName(static_cast<int>(n)); }, 1, kLastStruve,
             kStruveSlot};
        break;
    case kAds:
        l = {openAdsCcdm, adsPresent, [](long n) { return adsName(static_cast<int>(n)); }, 1, kLastAds,
             static_cast<long>(AdsCcdmLayout::kSize)};
        break;
    case kNsv:
        l = {openNsvref, nsvPresent, nsvName, 1, kNsvLast, static_cast<long>(NsvRecordLayout::kSize)};
        break;
    default: break;
    }
    return l;
}

// The target number of a typed designation, or 0.
long typedNumber(const char* text) {
    long number = 0;
    int suffix = 0;
    return parseNumberSuffix(text, &number, &suffix) ? number : 0;
}

// Common names: `csn_alp` rows from 1 in alphabetical order; the id is the
// row. The start text is the pattern; the found row is the first it takes.
int beginCommonStarBrowse(BrowseState* state, const char* startText) {
    state->walk = BrowseWalk::CommonStar;
    state->file = openCsnAlpha();
    if (!state->file) return 0;
    state->cap = kCommonStarRows;
    if (!browseStartsAtTop(startText)) {
        state->pattern = startText;
        long row = 0;
        uint32_t star = 0;
        if (findCsnAlpha(state->file.get(), startText, &row, &star)) state->foundId = row;
    }
    return 1;
}

int nextCommonStarRow(BrowseState* state, BrowseRow* out) {
    CsnAlphaRecord r;
    while (readCsnAlpha(state->file.get(), ++state->number, &r)) {
        const std::string name(r.name, strnlen(r.name, sizeof r.name));
        if (state->pattern.empty() || PrefixMatch(state->pattern.c_str(), name.c_str()))
            return giveBrowseRow(state, state->number, name, out);
    }
    return 0;
}

// Bayer: the `bayer` slots of each constellation row, letter 1 to 24,
// superscript 0 to 8, those that hold a star. The id is the slot number + 1,
// ((constellation x 24 + letter) x 9 + superscript) + 1, which names
// constellation, letter and superscript at once.
long bayerId(int constellation, int letter, int superscript) {
    return bayerOffset(constellation, letter, superscript) / kBayerSlot + 1;
}

// Flamsteed: numbers 1 to 139 of each constellation row; the id is the
// slot number + 1, constellation x 139 + number.
long flamsteedId(int constellation, int number) { return flamstdOffset(constellation, number) / kFlamstdSlot + 1; }

int beginLettered(BrowseState* state, int kind, int constellation, const char* startText) {
    state->walk = kind == kBayer ? BrowseWalk::Bayer : BrowseWalk::Flamsteed;
    state->file = kind == kBayer ? openBayer() : openFlamstd();
    if (!state->file) return 0;
    state->cap = kBayerFlamsteedRows;
    int letterRow = -1, superscript = 0, row = -1, number = 0;
    if (!browseStartsAtTop(startText)) {
        if (kind == kBayer && parseBayer(startText, &letterRow, &superscript, &row)) {
            // As the lookup does: no star under superscript 0 tries 1.
            if (superscript == 0 && !starSlotFilled(state->file.get(), bayerOffset(row, letterRow + 1, 0)))
                superscript = 1;
            if (starSlotFilled(state->file.get(), bayerOffset(row, letterRow + 1, superscript)))
                state->foundId = bayerId(row, letterRow + 1, superscript);
        } else if (kind == kFlamsteed && parseFlamsteed(startText, &number, &row)) {
            if (starSlotFilled(state->file.get(), flamstdOffset(row, number)))
                state->foundId = flamsteedId(row, number);
        } else {
            row = constellationRowOf(startText);
        }
        if (constellation < 0) constellation = row;
    }
    state->constellation = constellation < 0 ? 0 : constellation;
    state->lastConstellation = constellation < 0 ? kConstellationRows - 1 : constellation;
    state->letter = 1;
    state->superscript = -1;  // Flamsteed keeps its number here
    return 1;
}

int nextBayerRow(BrowseState* state, BrowseRow* out) {
    while (state->constellation <= state->lastConstellation) {
        if (++state->superscript >= kBayerSuperscripts) {
            state->superscript = 0;
            if (++state->letter > kBayerLetters) {
                state->letter = 1;
                ++state->constellation;
                continue;
            }
        }
        const int c = state->constellation, l = state->letter, s = state->superscript;
        if (starSlotFilled(state->file.get(), bayerOffset(c, l, s)))
            return giveBrowseRow(state, bayerId(c, l, s), bayerName(designationGroup(0, c, l, s)), out);
    }
    return 0;
}

int nextFlamsteedRow(BrowseState* state, BrowseRow* out) {
    while (state->constellation <= state->lastConstellation) {
        if (++state->superscript >= kFlamsteedNumbers) {
            state->superscript = -1;
            ++state->constellation;
            continue;
        }
        const int c = state->constellation, n = state->superscript + 1;
        if (starSlotFilled(state->file.get(), flamstdOffset(c, n)))
            return giveBrowseRow(state, flamsteedId(c, n), flamsteedName(designationGroup(n, c, 0, 0)), out);
    }
    return 0;
}

// CCDM: the `ccdm_i` rows 1 to 37368 in their (CCDM number) order; the id
// is the row. A list starts at the 14000-row block of the row named.
int beginCcdmBrowse(BrowseState* state, const char* startText) {
    state->walk = BrowseWalk::Ccdm;
    state->file = openCcdmIndex();
    if (!state->file) return 0;
    state->cap = kNumberedRows;
    state->last = kLastCcdmRow;
    int raPart = 0, decPart = 0;
    char sign = '+';
    if (!browseStartsAtTop(startText) && parseCcdm(startText, &raPart, &decPart, &sign)) {
        const long row = findCcdm(state->file.get(), static_cast<uint16_t>(raPart), static_cast<uint16_t>(decPart),
                                  sign == '+');
        if (row > 0) {
            state->foundId = row;
            state->number = (row - 1) / kNumberedRows * kNumberedRows;
        }
    }
    return 1;
}

int nextCcdmRow(BrowseState* state, BrowseRow* out) {
    CcdmIndexRow r;
    if (state->number >= state->last || !readCcdmIndex(state->file.get(), state->number + 1, &r)) return 0;
    ++state->number;
    return giveBrowseRow(state, state->number, ccdmName(r.ccdmRa, r.ccdmNorth ? '+' : '-', r.ccdmDec), out);
}

}  // namespace

int beginConstellationBrowse(BrowseState* state, int kind, int zone, const char* startText) {
    if (!state || (kind != kBayer && kind != kFlamsteed) || zone < 1 || zone > kConstellationRows + 1) return 0;
    *state = BrowseState{};
    state->objectClass = 5;
    state->kind = kind;
    // Zones count from 1, Serpens twice (76 and 77): one row for both.
    const int row = zone > 76 ? zone - 2 : zone - 1;
    return beginLettered(state, kind, row, startText);
}

int beginStarBrowse(BrowseState* state, int kind, const char* startText) {
    switch (kind) {
    case kCommon: return beginCommonStarBrowse(state, startText);
    case kBayer:
    case kFlamsteed: return beginLettered(state, kind, -1, startText);
    case kCcdm: return beginCcdmBrowse(state, startText);
    case kVariable:
    case kBd:
    case kCd:
    case kCp:
    case kTycho:
    case kGsc: return beginStarIndexBrowse(state, kind, startText);
    default: break;
    }
    const NumberedList list = starList(kind);
    if (!list.open) return 0;
    return beginNumberedBrowse(state, list, browseStartsAtTop(startText) ? 0 : typedNumber(startText));
}

int nextStarRow(BrowseState* state, BrowseRow* out) {
    switch (state->walk) {
    case BrowseWalk::CommonStar: return nextCommonStarRow(state, out);
    case BrowseWalk::Bayer: return nextBayerRow(state, out);
    case BrowseWalk::Flamsteed: return nextFlamsteedRow(state, out);
    case BrowseWalk::Ccdm: return nextCcdmRow(state, out);
    default: return 0;
    }
}
