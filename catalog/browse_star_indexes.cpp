// The star lists read by record, zone or region (class 5): variables in
// `vref` order, BD, CD and CP zone by zone through `dmb`, Tycho-2 and the
// GSC region by region. The reader of these kinds takes the designation's
// text only, so a row's id is the row's place in its index, stable from
// one list to the next; the row's text finds the star again.
#include <cstdio>
#include <utility>

#include "catalog/browse.h"
#include "catalog/catalogue_files.h"
#include "catalog/designation_parse.h"
#include "catalog/designation_print.h"
#include "catalog/dm_numbers.h"
#include "catalog/gsc.h"
#include "catalog/star_file.h"
#include "catalog/star_indexes.h"
#include "catalog/tycho_index.h"
#include "catalog/variable_names.h"
#include "catalog/variable_stars.h"

namespace {

enum StarKind { kVariable = 4, kBd = 10, kCd = 11, kCp = 12, kTycho = 18, kGsc = 19 };

constexpr long kVrefSize = static_cast<long>(VariableRecordLayout::kSize);
constexpr int kLastZoneCode = 180;
constexpr int kBdSlots = 4;

// The list's start place in a flat list: the cap-sized block that holds it.
long blockStart(long place) { return place / kNumberedRows * kNumberedRows; }

long fileBytes(FILE* file) {
    if (!file || std::fseek(file, 0, SEEK_END) != 0) return 0;
    return std::ftell(file);
}

// ---- Variables: `vref` rows 1 up, each under its first name; the id is the row.

long vrefRowsIn(BrowseState* state, long group) {
    if (group > 0) return -1;
    const long rows = fileBytes(state->file.get()) / kVrefSize;
    return rows < kLastVrefRow ? rows : kLastVrefRow;
}

int variableAt(BrowseState* state, long, long place, BrowseRow* out) {
    VariableData data;
    if (!readVariableRow(state->file.get(), place + 1, &data)) return -1;
    std::string text = variableName(data.name.constellation, data.name.number, data.record.greekSuperscript);
    if (text.empty()) return 0;
    out->id = place + 1;
    out->text = std::move(text);
    return 1;
}

int beginVariableBrowse(BrowseState* state, const char* startText) {
    state->file = openVref();
    if (!state->file) return 0;
    long place = 0;
    VariableDesignation name;
    if (!browseStartsAtTop(startText) && parseVariable(startText, &name) && name.count > 0) {
        VariableFilesPtr files = openVariables();
        VariableData data;
        if (files && readVariable(files.get(), name.constellation, name.numbers[0], &data) == 1) {
            state->foundId = data.row;
            place = blockStart(data.row - 1);
        }
    }
    return beginGroupedBrowse(state, {vrefRowsIn, variableAt, 0}, 0, place);
}

// ---- BD, CD, CP: zone codes 0 to 180, running numbers 1 to the zone's
// largest in `dmb`. A BD number has up to four slots, each with a suffix
// letter: one row for each letter, at the first slot that carries it; the
// id is the slot's place in the file x 4 + the slot + 1. A CD or CP number
// is one row whatever its stars; the id is its slot's place + 1.

DmCatalogue dmCatalogueOf(int kind) { return kind == kBd ? kDmBd : kind == kCd ? kDmCd : kDmCp; }

long dmOffset(int kind, int zoneCode, long number) {
    return kind == kBd ? bdOffset(zoneCode, number) : kind == kCd ? cdOffset(zoneCode, number) : cpOffset(zoneCode, number);
}

long dmSlotBytes(int kind) { return kind == kBd ? kBdSlot : kind == kCd ? kCdSlot : kCpSlot; }

long dmRowsIn(BrowseState* state, long zoneCode) {
    uint16_t largest[3] = {};
    if (zoneCode > kLastZoneCode || !readDmb(state->second.get(), static_cast<int>(zoneCode), largest)) return -1;
    // A zone the catalogue's index doesn't reach, or one without a sign, has no rows.
    char sign = ' ';
    int zone = 0;
    dmZoneOfCode(static_cast<int>(zoneCode), &sign, &zone);
    if (sign == ' ' || dmOffset(state->kind, static_cast<int>(zoneCode), 1) < 0) return 0;
    const long numbers = largest[dmCatalogueOf(state->kind)];
    return state->kind == kBd ? numbers * kBdSlots : numbers;
}

// The BD slots of a number: their suffix letters, how many are filled.
int bdSlotLetters(FILE* file, long offset, char letters[kBdSlots]) {
    int filled = 0;
    for (; filled < kBdSlots; ++filled) {
        uint32_t v = 0;
        if (!readNumber3(file, offset + 3L * filled, &v) || v == 0 || v == 0xFFFFFF) break;
        letters[filled] = bdSlotSuffix(v);
    }
    return filled;
}

// The printed suffix: none for a blank, else the lower-case letter, which
// the BD reader takes back as the upper-case slot letter.
char printedSuffix(char letter) { return letter == ' ' ? ' ' : static_cast<char>(letter - 'A' + 'a'); }

int dmAt(BrowseState* state, long zoneCode, long place, BrowseRow* out) {
    const int kind = state->kind;
    const long number = kind == kBd ? place / kBdSlots + 1 : place + 1;
    const long offset = dmOffset(kind, static_cast<int>(zoneCode), number);
    char sign = ' ';
    int zone = 0;
    dmZoneOfCode(static_cast<int>(zoneCode), &sign, &zone);
    char suffix = ' ';
    if (kind == kBd) {
        const int slot = static_cast<int>(place % kBdSlots);
        char letters[kBdSlots];
        if (slot >= bdSlotLetters(state->file.get(), offset, letters)) return 0;
        for (int i = 0; i < slot; ++i)
            if (letters[i] == letters[slot]) return 0;
        suffix = printedSuffix(letters[slot]);
        out->id = offset / kBdSlot * kBdSlots + slot + 1;
    } else {
        long stars[4] = {};
        const int found = kind == kCd ? lookupCd(state->file.get(), sign, zone, number, stars)
                                      : lookupCp(state->file.get(), sign, zone, number, stars);
        if (found <= 0) return 0;
        out->id = offset / dmSlotBytes(kind) + 1;
    }
    out->text = dmName(dmCatalogueOf(kind), sign, zone, number, suffix);
    return 1;
}

// The id of the row a typed DM number names; -1 when the index has no star for it.
long dmFoundId(BrowseState* state, int zoneCode, long number, char wanted) {
    const long offset = dmOffset(state->kind, zoneCode, number);
    if (offset < 0) return -1;
    if (state->kind != kBd) {
        char sign = ' ';
        int zone = 0;
        dmZoneOfCode(zoneCode, &sign, &zone);
        long stars[4] = {};
        const int found = state->kind == kCd ? lookupCd(state->file.get(), sign, zone, number, stars)
                                             : lookupCp(state->file.get(), sign, zone, number, stars);
        return found > 0 ? offset / dmSlotBytes(state->kind) + 1 : -1;
    }
    // As the BD reader matches: the letter itself, or a blank slot for 'A'.
    if (wanted >= 'a' && wanted <= 'z') wanted = static_cast<char>(wanted - 'a' + 'A');
    char letters[kBdSlots];
    const int filled = bdSlotLetters(state->file.get(), offset, letters);
    for (int i = 0; i < filled; ++i)
        if (letters[i] == wanted || (letters[i] == ' ' && wanted == 'A')) {
            int first = i;  // the row stands at the letter's first slot
            for (int j = 0; j < i; ++j)
                if (letters[j] == letters[i]) {
                    first = j;
                    break;
                }
            return offset / kBdSlot * kBdSlots + first + 1;
        }
    return -1;
}

int beginDmBrowse(BrowseState* state, int kind, const char* startText) {
    state->file = kind == kBd ? openBd() : kind == kCd ? openCd() : openCp();
    state->second = openDmb();
    if (!state->file || !state->second) return 0;
    long zoneCode = 0, place = 0;
    int zone = 0;
    char sign = '+', suffix = ' ';
    long number = 0;
    if (!browseStartsAtTop(startText) && parseDm(startText, &zone, &sign, &number, &suffix)) {
        const int code = dmZoneCode(sign, zone);
        // The list starts at the zone of the number typed, at its cap-sized block.
        if (code >= 0 && code <= kLastZoneCode && number >= 1) {
            zoneCode = code;
            place = blockStart(number - 1) * (kind == kBd ? kBdSlots : 1);
            state->foundId = dmFoundId(state, code, number, suffix);
        }
    }
    return beginGroupedBrowse(state, {dmRowsIn, dmAt, kLastZoneCode}, zoneCode, place);
}

// ---- Tycho-2: regions 1 to 9537, each run's entries in order. The id is
// the Tycho field of the star record: number | region << 14 | component << 28.

long tychoId(long region, long number, long component) { return number | region << 14 | component << 28; }

bool readTychoRun(FILE* file, long region, TychoRegionEntry* run) {
    uint8_t head[TychoRegionLayout::kSize];
    if (!readAt(file, (region - 1) * static_cast<long>(sizeof head), head, sizeof head)) return false;
    DecodeRecord<TychoRegionLayout>(head, *run);
    return true;
}

long tychoRowsIn(BrowseState* state, long region) {
    TychoRegionEntry run;
    if (region > kTychoRegions || !readTychoRun(state->file.get(), region, &run)) return -1;
    state->runOffset = run.offset;
    return static_cast<long>(run.count);
}

int tychoAt(BrowseState* state, long region, long place, BrowseRow* out) {
    uint8_t image[TychoRunLayout::kSize];
    if (!readAt(state->file.get(), state->runOffset + place * static_cast<long>(sizeof image), image, sizeof image))
        return -1;
    TychoRunEntry entry;
    DecodeRecord<TychoRunLayout>(image, entry);
    if (entry.star == 0) return 0;
    const long number = entry.numberLess1 + 1L, component = entry.componentLess1 + 1L;
    out->id = tychoId(region, number, component);
    out->text = tychoName(static_cast<uint32_t>(region), static_cast<uint32_t>(number), static_cast<int>(component));
    return 1;
}

int beginTychoBrowse(BrowseState* state, const char* startText) {
    state->file = openTycho();
    if (!state->file) return 0;
    long region = 1;
    int typedRegion = 0, number = 0, component = 0;
    if (!browseStartsAtTop(startText) && parseTycho(startText, &typedRegion, &number, &component) &&
        typedRegion >= 1 && typedRegion <= kTychoRegions) {
        region = typedRegion;  // the list starts at the region of the star typed
        if (lookupTycho(state->file.get(), typedRegion, number, component) > 0)
            state->foundId = tychoId(typedRegion, number, component);
    }
    return beginGroupedBrowse(state, {tychoRowsIn, tychoAt, kTychoRegions}, region, 0);
}

// ---- GSC: regions 1 to 9537, stars 1 up to the end of the region's file;
// the id is number | region << 14, the PID of a plain GSC star without its
// bit 31. A region whose file is missing has no rows.

constexpr long kGscNumbers = 0x3FFF;

long gscRowsIn(BrowseState*, long region) { return region > kGscLastRegion ? -1 : kGscNumbers; }

int gscAt(BrowseState* state, long region, long place, BrowseRow* out) {
    GscStar star;
    const int answer = readGscStar(&state->gsc, static_cast<int>(region), place + 1, &star);
    if (answer == 0) return -1;
    if (answer == kGscNoStar) return 0;
    out->id = (place + 1) | region << 14;
    out->text = gscName(static_cast<int>(region), static_cast<int>(place + 1));
    return 1;
}

int beginGscBrowse(BrowseState* state, const char* startText) {
    long region = 1;
    int typedRegion = 0, number = 0, component = 0;
    if (!browseStartsAtTop(startText) && parseTycho(startText, &typedRegion, &number, &component) &&
        typedRegion >= 1 && typedRegion <= kGscLastRegion) {
        region = typedRegion;
        GscStar star;
        const int answer = number >= 1 ? readGscStar(&state->gsc, typedRegion, number, &star) : 0;
        if (answer == kGscPlainStar || answer == kGscStarReference)
            state->foundId = number | static_cast<long>(typedRegion) << 14;
    }
    return beginGroupedBrowse(state, {gscRowsIn, gscAt, kGscLastRegion}, region, 0);
}

}  // namespace

int beginStarIndexBrowse(BrowseState* state, int kind, const char* startText) {
    switch (kind) {
    case kVariable: return beginVariableBrowse(state, startText);
    case kBd:
    case kCd:
    case kCp: return beginDmBrowse(state, kind, startText);
    case kTycho: return beginTychoBrowse(state, startText);
    case kGsc: return beginGscBrowse(state, startText);
    default: return 0;
    }
}
