#include "catalog/star_designation.h"

#include <cstdint>

#include "catalog/designation_parse.h"
#include "catalog/gsc.h"
#include "catalog/multiple_stars.h"
#include "catalog/object_record.h"
#include "catalog/star_indexes.h"
#include "catalog/star_texts.h"
#include "catalog/tycho_index.h"
#include "catalog/variable_names.h"
#include "catalog/variable_stars.h"

namespace {

enum StarKind {
    kCommonName = 1,
    kBayer,
    kFlamsteed,
    kVariable,
    kHr,
    kHd,
    kSao,
    kPpm,
    kHip,
    kBd,
    kCd,
    kCp,
    kGc,
    kStruve,
    kAds,
    kCcdm,
    kNsv,
    kTycho,
    kGsc,
};

void AddStars(DesignationHits* hits, const long* stars, int count) {
    for (int i = 0; i < count; ++i)
        if (stars[i] > 0) addDesignationHit(hits, static_cast<uint32_t>(stars[i]));
}

// The catalogue number: the direct number, or the text's number.
bool NumberOf(long number, const char* text, long* out, int* suffix) {
    *suffix = 0;
    if (number != 0) {
        *out = number;
        return true;
    }
    return parseNumberSuffix(text, out, suffix) == 1;
}

// A one-number index: open, look up, one star or none.
template <class Open, class Lookup>
void OneStar(long number, const char* text, Open open, Lookup lookup, DesignationHits* hits) {
    long n = 0;
    int suffix = 0;
    if (!NumberOf(number, text, &n, &suffix)) return;
    FilePtr file = open();
    if (!file) return;
    const long star = lookup(file.get(), n);
    AddStars(hits, &star, 1);
}

void CommonName(long number, const char* text, DesignationHits* hits) {
    FilePtr file = openCsnAlpha();
    if (!file) return;
    if (number != 0) {
        CsnAlphaRecord row;
        if (readCsnAlpha(file.get(), number, &row)) addDesignationHit(hits, row.star);
        return;
    }
    long row = 0;
    uint32_t star = 0;
    if (findCsnAlpha(file.get(), text, &row, &star) && star != 0) addDesignationHit(hits, star);
}

void Bayer(const char* text, DesignationHits* hits) {
    int letterRow = -1, superscript = 0, constellationRow = -1;
    if (!parseBayer(text, &letterRow, &superscript, &constellationRow)) return;
    hits->nameConstellation = static_cast<uint32_t>(constellationRow + 1);
    FilePtr file = openBayer();
    long stars[2] = {};
    // The index read tries superscript 1 again when a bare letter finds nothing.
    if (file) AddStars(hits, stars, lookupBayer(file.get(), constellationRow, letterRow + 1, superscript, stars) > 0 ? 2 : 0);
}

void Flamsteed(const char* text, DesignationHits* hits) {
    int number = 0, constellationRow = -1;
    if (!parseFlamsteed(text, &number, &constellationRow)) return;
    hits->nameConstellation = static_cast<uint32_t>(constellationRow + 1);
    FilePtr file = openFlamstd();
    long stars[2] = {};
    if (file) AddStars(hits, stars, lookupFlamsteed(file.get(), constellationRow, number, stars) > 0 ? 2 : 0);
}

// A variable name may denote several name numbers; each record found gives
// its two star numbers.
void Variable(const char* text, DesignationHits* hits) {
    VariableDesignation name;
    if (!parseVariable(text, &name) || name.count < 1) return;
    hits->nameConstellation = static_cast<uint32_t>(name.constellation);
    VariableFilesPtr files = openVariables();
    if (!files) return;
    for (int i = 0; i < name.count && i < kMaxVariableNumbers; ++i) {
        VariableData data;
        if (readVariable(files.get(), name.constellation, name.numbers[i], &data) != 1) continue;
        const long stars[2] = {data.star1, data.star2};
        AddStars(hits, stars, 2);
    }
    closeVariables(files);
}

void Hd(long number, const char* text, DesignationHits* hits) {
    long n = 0;
    int suffix = 0;
    if (!NumberOf(number, text, &n, &suffix)) return;
    FilePtr file = openHd();
    long stars[2] = {};
    if (file) AddStars(hits, stars, lookupHd(file.get(), n, stars) > 0 ? 2 : 0);
}

// BD, CD, CP: one DM number can stand for up to four stars.
void Durchmusterung(int kind, const char* text, DesignationHits* hits) {
    int zone = 0;
    char sign = '+', suffix = ' ';
    long number = 0;
    if (!parseDm(text, &zone, &sign, &number, &suffix)) return;
    long stars[4] = {};
    int found = 0;
    if (kind == kBd) {
        FilePtr file = openBd();
        if (file) found = lookupBd(file.get(), sign, zone, number, suffix, stars);
    } else if (kind == kCd) {
        FilePtr file = openCd();
        if (file) found = lookupCd(file.get(), sign, zone, number, stars) > 0 ? 3 : 0;
    } else {
        FilePtr file = openCp();
        if (file) found = lookupCp(file.get(), sign, zone, number, stars) > 0 ? 4 : 0;
    }
    if (found > 0) AddStars(hits, stars, found);
}

// The star of a ccdm_i row.
void CcdmRowStar(FILE* index, long row, DesignationHits* hits) {
    CcdmIndexRow system;
    if (row > 0 && readCcdmIndex(index, row, &system) && system.star != 0)
        addDesignationHit(hits, system.star);
}

void Struve(long number, const char* text, DesignationHits* hits) {
    long n = 0;
    int suffix = 0;
    if (!NumberOf(number, text, &n, &suffix)) return;
    FilePtr struve = openStruve();
    FilePtr index = openCcdmIndex();
    if (struve && index) CcdmRowStar(index.get(), lookupStruve(struve.get(), n), hits);
}

void Ads(long number, const char* text, DesignationHits* hits) {
    long n = 0;
    int suffix = 0;
    if (!NumberOf(number, text, &n, &suffix)) return;
    FilePtr ads = openAdsCcdm();
    FilePtr index = openCcdmIndex();
    if (!ads || !index) return;
    long rows[2] = {};
    if (lookupAdsCcdm(ads.get(), n, rows) <= 0) return;
    for (const long row : rows) CcdmRowStar(index.get(), row, hits);
}

void Ccdm(const char* text, DesignationHits* hits) {
    int raPart = 0, decPart = 0;
    char sign = '+';
    if (!parseCcdm(text, &raPart, &decPart, &sign)) return;
    FilePtr index = openCcdmIndex();
    if (!index) return;
    const long row = findCcdm(index.get(), static_cast<uint16_t>(raPart), static_cast<uint16_t>(decPart), sign != '-');
    CcdmRowStar(index.get(), row, hits);
}

void Nsv(long number, const char* text, DesignationHits* hits) {
    long n = 0;
    int suffix = 0;
    if (!NumberOf(number, text, &n, &suffix)) return;
    FilePtr file = openNsvref();
    NsvData data;
    if (!file || !readNsv(file.get(), n, suffix == 0 ? ' ' : static_cast<char>(suffix + 64), &data)) return;
    const long stars[2] = {data.star1, data.star2};
    AddStars(hits, stars, 2);
}

void Tycho(const char* text, DesignationHits* hits) {
    int region = 0, number = 0, component = 0;
    if (!parseTycho(text, &region, &number, &component)) return;
    // "TYC 3105-2070-1", the form most catalogues print, reads its component
    // with the dash as a sign.
    if (component < 0) component = -component;
    FilePtr file = openTycho();
    if (!file) return;
    const long star = lookupTycho(file.get(), region, number, component);
    AddStars(hits, &star, 1);
}

// A GSC slot is either a reference to a star of `stars`, whose number is
// the PID, or a star of the GSC alone, named by bit 31 with its region and
// number.
void Gsc(const char* text, DesignationHits* hits) {
    int region = 0, number = 0, component = 0;
    if (!parseTycho(text, &region, &number, &component)) return;
    if (region < 1 || region > kGscLastRegion || number < 1 || number > 0x3FFF) return;
    GscCursor cursor;
    GscStar star;
    const int answer = readGscStar(&cursor, region, number, &star);
    closeGscCursor(&cursor);
    if (answer == kGscStarReference && star.starNumber > 0)
        addDesignationHit(hits, static_cast<uint32_t>(star.starNumber) & ~kGscPidFlag);
    else if (answer == kGscPlainStar)
        addDesignationHit(hits, static_cast<uint32_t>(number) | (static_cast<uint32_t>(region) << 14) | kGscPidFlag);
}

}  // namespace

int findStarDesignation(int kind, long number, const char* text, DesignationHits* hits) {
    if (!hits) return 0;
    if (!text) text = "";
    switch (kind) {
        case kCommonName: CommonName(number, text, hits); break;
        case kBayer: Bayer(text, hits); break;
        case kFlamsteed: Flamsteed(text, hits); break;
        case kVariable: Variable(text, hits); break;
        case kHr: OneStar(number, text, openHrbs, lookupHrbs, hits); break;
        case kHd: Hd(number, text, hits); break;
        case kSao: OneStar(number, text, openSao, lookupSao, hits); break;
        case kPpm: OneStar(number, text, openPpm, lookupPpm, hits); break;
        case kHip: OneStar(number, text, openHc, lookupHc, hits); break;
        case kBd:
        case kCd:
        case kCp: Durchmusterung(kind, text, hits); break;
        case kGc: OneStar(number, text, openGc, lookupGc, hits); break;
        case kStruve: Struve(number, text, hits); break;
        case kAds: Ads(number, text, hits); break;
        case kCcdm: Ccdm(text, hits); break;
        case kNsv: Nsv(number, text, hits); break;
        case kTycho: Tycho(text, hits); break;
        case kGsc: Gsc(text, hits); break;
        default: return 0;
    }
    return hits->count;
}
