#include "catalog/star_indexes.h"

#include <cctype>

#include "base/le_bytes.h"
#include "catalog/catalogue_files.h"

namespace {

constexpr int kFlamsteedPerConstellation = 139;
constexpr int kBayerLetters = 24;
constexpr int kBayerSuperscripts = 9;
constexpr long kBdZoneSize = 6877;
constexpr long kCdZoneSize = 19834;
constexpr long kCpZoneSize = 29075;
constexpr long kPpmDirectLast = 378910;
constexpr long kPpmSouthFirst = 700000;
constexpr long kPpmSouthShift = 321090;

// The BD slot's suffix codes, by the top three bits of the slot.
constexpr char kBdSuffixes[] = " ABCDNPS";

long ByNumber(long number, int slot) { return number >= 1 ? (number - 1) * slot : -1; }

long ReadOne(FILE* file, long offset) {
    uint32_t v = 0;
    if (offset < 0 || !readNumber3(file, offset, &v) || v == kEmptySlot) return 0;
    return static_cast<long>(v);
}

// Reads `n` plain 3-byte star numbers; how many are not 0 (empty slots
// count as nothing).
int ReadPlain(FILE* file, long offset, int n, long* out) {
    int found = 0;
    for (int i = 0; i < n; ++i) out[i] = 0;
    if (offset < 0) return 0;
    for (int i = 0; i < n; ++i) {
        uint32_t v = 0;
        if (!readNumber3(file, offset + 3L * i, &v)) break;
        if (v == 0 || v == kEmptySlot) continue;
        out[found++] = static_cast<long>(v);
    }
    return found;
}

}  // namespace

long hrbsOffset(long hr) { return ByNumber(hr, kHrbsSlot); }
long hdOffset(long hd) { return ByNumber(hd, kHdSlot); }
long saoOffset(long sao) { return sao < kSaoBound ? ByNumber(sao, kSaoSlot) : -1; }
long hcOffset(long hip) { return ByNumber(hip, kHcSlot); }
long gcOffset(long gc) { return ByNumber(gc, kGcSlot); }

long ppmOffset(long ppm) {
    // The southern PPM numbers start at 700001 and their rows follow the
    // northern ones directly. 700000 itself passes the range test and is
    // read at its own row number, far from any southern star's: kept so, as
    // existing lookups have always answered.
    if (ppm > kPpmDirectLast && ppm < kPpmSouthFirst) return -1;
    if (ppm > kPpmSouthFirst) ppm -= kPpmSouthShift;
    return ByNumber(ppm, kPpmSlot);
}

long flamstdOffset(int constellationRow, int number) {
    if (constellationRow < 0 || number < 1) return -1;
    return (static_cast<long>(constellationRow) * kFlamsteedPerConstellation + number - 1) *
           kFlamstdSlot;
}

long bayerOffset(int constellationRow, int letter, int superscript) {
    if (constellationRow < 0 || letter < 0 || superscript < 0) return -1;
    return ((static_cast<long>(constellationRow) * kBayerLetters + letter) * kBayerSuperscripts +
            superscript) *
           kBayerSlot;
}

long bdOffset(int zoneCode, long number) {
    if (zoneCode < 0 || number < 1) return -1;
    return (zoneCode * kBdZoneSize + number - 1) * kBdSlot;
}

long cdOffset(int zoneCode, long number) {
    if (zoneCode < 112 || zoneCode > 179 || number < 1) return -1;
    return ((zoneCode - 112) * kCdZoneSize + number - 1) * kCdSlot;
}

long cpOffset(int zoneCode, long number) {
    if (zoneCode < 108 || zoneCode > 180 || number < 1) return -1;
    return ((zoneCode - 108) * kCpZoneSize + number - 1) * kCpSlot;
}

long dmbOffset(int zoneCode) { return zoneCode >= 0 ? static_cast<long>(zoneCode) * kDmbSlot : -1; }

FilePtr openHrbs() { return openCatalogue(kCatHrbs); }
FilePtr openHd() { return openCatalogue(kCatHd); }
FilePtr openSao() { return openCatalogue(kCatSao); }
FilePtr openPpm() { return openCatalogue(kCatPpm); }
FilePtr openHc() { return openCatalogue(kCatHc); }
FilePtr openGc() { return openCatalogue(kCatGc); }
FilePtr openFlamstd() { return openCatalogue(kCatFlamstd); }
FilePtr openBayer() { return openCatalogue(kCatBayer); }
FilePtr openBd() { return openCatalogue(kCatBd); }
FilePtr openCd() { return openCatalogue(kCatCd); }
FilePtr openCp() { return openCatalogue(kCatCp); }
FilePtr openDmb() { return openCatalogue(kCatDmb); }
FilePtr openHip() { return openCatalogue(kCatHip); }

long lookupHrbs(FILE* file, long hr) { return ReadOne(file, hrbsOffset(hr)); }
long lookupSao(FILE* file, long sao) { return ReadOne(file, saoOffset(sao)); }
long lookupPpm(FILE* file, long ppm) { return ReadOne(file, ppmOffset(ppm)); }
long lookupHc(FILE* file, long hip) { return ReadOne(file, hcOffset(hip)); }
long lookupGc(FILE* file, long gc) { return ReadOne(file, gcOffset(gc)); }

int lookupHd(FILE* file, long hd, long out[2]) { return ReadPlain(file, hdOffset(hd), 2, out); }

int lookupFlamsteed(FILE* file, int constellationRow, int number, long out[2]) {
    return ReadPlain(file, flamstdOffset(constellationRow, number), 2, out);
}

int lookupBayer(FILE* file, int constellationRow, int letter, int superscript, long out[2]) {
    const int found = ReadPlain(file, bayerOffset(constellationRow, letter, superscript), 2, out);
    // A star named without a superscript is found under superscript 1.
    if (found == 0 && superscript == 0)
        return ReadPlain(file, bayerOffset(constellationRow, letter, 1), 2, out);
    return found;
}

char bdSlotSuffix(uint32_t slot) { return kBdSuffixes[(slot >> 21) & 7]; }

int lookupBd(FILE* file, char sign, int zone, long number, char suffix, long out[4]) {
    for (int i = 0; i < 4; ++i) out[i] = 0;
    const long offset = bdOffset(dmZoneCode(sign, zone), number);
    if (offset < 0) return -1;
    const char wanted = static_cast<char>(std::toupper(static_cast<unsigned char>(suffix)));
    int filled = 0;
    int found = 0;
    for (int i = 0; i < 4; ++i) {
        uint32_t v = 0;
        // All ones ends the list; a zero slot (a part of the file never
        // written) holds nothing either.
        if (!readNumber3(file, offset + 3L * i, &v) || v == kEmptySlot || v == 0) break;
        ++filled;
        const char letter = bdSlotSuffix(v);
        if (letter == wanted || (letter == ' ' && wanted == 'A'))
            out[found++] = static_cast<long>(v & 0x1FFFFF);
    }
    if (found > 0) return found;
    return filled < 2 ? -1 : 0;
}

int lookupCd(FILE* file, char sign, int zone, long number, long out[3]) {
    return ReadPlain(file, cdOffset(dmZoneCode(sign, zone), number), 3, out);
}

int lookupCp(FILE* file, char sign, int zone, long number, long out[4]) {
    return ReadPlain(file, cpOffset(dmZoneCode(sign, zone), number), 4, out);
}

int readDmb(FILE* file, int zoneCode, uint16_t out[3]) {
    uint8_t b[6];
    if (!readAt(file, dmbOffset(zoneCode), b, sizeof b)) return 0;
    for (int i = 0; i < 3; ++i) out[i] = le::GetU16(b + 2 * i);
    return 1;
}
