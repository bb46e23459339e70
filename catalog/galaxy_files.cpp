#include "catalog/galaxy_files.h"

#include <bit>

#include "astro/magnitudes.h"
#include "astro/numeric.h"
#include "base/le_bytes.h"
#include "base/string_table.h"
#include "catalog/catalogue_codes.h"
#include "catalog/catalogue_files.h"
#include "catalog/index_runs.h"

namespace {

constexpr int kHubbleTypeStrings = 8280;
constexpr int kHubbleTypeRows = 15;  // "E" to "?"
constexpr const char* kHubbleStages[8] = {"", "a", "b", "c", "d", "a-b", "b-c", "cd"};

constexpr double kRadiansPerArcminute = kPi / 10800.0;
// The default sizes of galaxies and groups without a diameter: 1 arc
// minute and 1 degree, as the single-precision values the records keep.
constexpr double kOneArcminute = std::bit_cast<float>(0x3998825Bu);
constexpr double kOneDegree = std::bit_cast<float>(0x3C8EFA35u);

double Tenths(uint8_t code) { return code == 255 ? 99.9 : code * 0.1; }

// A diameter in 62nds of an arc minute; 65535 is none and reads 0.
double GalaxyArcminutes(uint16_t code) { return code == 65535 ? 0.0 : code / 62.0; }

// Appends a record to a lookup's answer while there is room.
void Add(long out[kMaxGalaxyHits], int* count, long record) {
    if (*count < kMaxGalaxyHits) out[(*count)++] = record;
}

// ---- Fixed rows of the indexes --------------------------------------------

// Markarian numbers that stand for more galaxies than their slot holds:
// after the slot is found, these join it.
struct MarkarianJoin {
    int number;
    long records[3];
};
constexpr MarkarianJoin kMarkarianJoins[] = {
    {116, {27183}}, {171, {35326}}, {628, {24862}},  {983, {82333}},  {988, {5089}},
    {1000, {83836}}, {1034, {9074}}, {1213, {23082}}, {1325, {40697}}, {1374, {50655}},
    {934, {97, 101, 108}},
};

// UGC numbers (with their suffix code) that add galaxies to the slots found.
struct UgcJoin {
    int number;
    int suffix;
    long records[3];
};
constexpr UgcJoin kUgcJoins[] = {
    {10638, 0, {59212, 59226, 59227}},
};

// MCG parts above 2 do not fit the index: these are known by rule.
struct McgFixed {
    int zone, field, number, part;
    long record;
};
constexpr McgFixed kMcgFixed[] = {
    {9, 16, 47, 3, 28115},  {12, 11, 28, 3, 35573}, {12, 11, 28, 4, 35574},
    {12, 11, 28, 5, 35576}, {-4, 14, 22, 3, 17746}, {3, 39, 6, 3, 54009},
};

// ESO parts above 2, known by rule.
struct EsoFixed {
    int field, number, part;
    long record;
};
constexpr EsoFixed kEsoFixed[] = {
    {284, 8, 3, 63986},
    {186, 69, 9, 65069},
    {286, 83, 3, 66440},
};

// ESO designations with a second galaxy that the slot's high bits don't
// carry: it joins when those bits are 0.
constexpr EsoFixed kEsoSecond[] = {
    {113, 16, 1, 4031},  {152, 19, 0, 6148},  {544, 2, 0, 7408},   {115, 6, 0, 8989},
    {417, 17, 0, 11664}, {417, 18, 0, 11691}, {200, 44, 0, 13240}, {118, 27, 0, 15182},
    {202, 30, 0, 15371}, {214, 7, 0, 30811},  {509, 15, 0, 47164}, {383, 3, 0, 47290},
    {383, 33, 0, 47918}, {510, 9, 0, 49421},  {399, 9, 0, 63887},  {233, 35, 0, 64179},
    {105, 30, 0, 64306}, {144, 5, 0, 65370},  {235, 28, 0, 65851}, {74, 28, 0, 66525},
    {47, 28, 0, 66594},  {342, 53, 0, 66843}, {405, 24, 0, 68990}, {147, 3, 2, 69303},
    {408, 12, 0, 71934}, {537, 9, 0, 72356},  {77, 31, 0, 72371},  {292, 23, 0, 72377},
};

// ESO designations with a third or later galaxy, joining after the slot's
// own; a part of -1 stands for any part.
struct EsoJoin {
    int field, number, part;
    long records[3];
};
constexpr EsoJoin kEsoJoins[] = {
    {539, 13, -1, {1570}},  {116, 6, -1, {11507}},  {187, 25, -1, {65593, 65597, 65610}},
    {107, 31, -1, {66931}}, {147, 9, -1, {69742, 69747}}, {110, 4, -1, {70652}},
    {303, 3, 0, {14682}},   {303, 9, 0, {14835}},
};

void AddAll(const long (&records)[3], long out[kMaxGalaxyHits], int* count) {
    for (const long r : records)
        if (r != 0) Add(out, count, r);
}

// A three-byte record number at `offset`: 0 when unread, empty or 0.
long ReadRecord3(FILE* file, long offset) {
    uint32_t value = 0;
    if (!readNumber3(file, offset, &value) || value == kEmptySlot) return 0;
    return static_cast<long>(value);
}

}  // namespace

std::string hubbleText(int type, int stage) {
    std::string text = type >= 1 && type <= kHubbleTypeRows ? StringText(kHubbleTypeStrings + type - 1) : "";
    if (stage >= 1 && stage < 8) text = text + " " + kHubbleStages[stage];
    return text;
}

double galaxySurfaceBrightness(uint8_t code, double majorArcmin, double minorArcmin, double magnitude) {
    if (code != 255) return (code + 170) * 0.1;
    if (majorArcmin == 0) majorArcmin = minorArcmin;
    if (minorArcmin == 0) minorArcmin = majorArcmin;
    if (majorArcmin == 0 || magnitude >= 90) return 99.9;
    return SurfaceBrightness(majorArcmin, minorArcmin, magnitude);
}

FilePtr openGalaxies() { return openCatalogue(kCatGal); }

void decodeGalaxy(const GalaxyRecord& r, GalaxyData* out, int readMask) {
    const double major = GalaxyArcminutes(r.major);
    const double minor = GalaxyArcminutes(r.minor);
    if (readMask & kReadPosition) {
        out->ra = scaledAngleToRadians(r.ra);
        out->dec = scaledAngleToRadians(r.dec);
    }
    if (readMask & kReadMagnitude) {
        out->magnitude = Tenths(r.magnitude);
        out->magnitude2 = galaxySurfaceBrightness(r.surfaceBrightness, major, minor, Tenths(r.magnitude));
    }
    if (readMask & kReadSize) {
        out->sizeMajor = major * kRadiansPerArcminute;
        out->sizeMinor = minor * kRadiansPerArcminute;
        out->sizeDefault = out->sizeMajor > 0 ? out->sizeMajor : kOneArcminute;
    }
    if (readMask & kReadDesignations) {
        out->pgc = r.pgc;
        out->mcgZone = r.mcgZonePlus7 - 7;
        out->mcgField = r.mcgField;
        out->mcgNumber = r.mcgNumber;
        out->mcgPart = r.mcgPart;
        out->arp = r.arp;
        out->esoField = r.esoField;
        out->esoNumber = r.esoNumber;
        out->esoSuffix = r.esoSuffix;
        out->ngc = r.ngc;
        out->ngcSuffix = r.ngcSuffix;
        out->ic = r.ic;
        out->icSuffix = r.icSuffix;
        out->markarian = r.markarian;
        out->markarianSuffix = r.markarianSuffix;
        out->messier = r.messier;
        out->ugc = r.ugc;
        out->ugcSuffix = r.ugcSuffix;
        out->commonNameRow = r.commonNameRow == 255 ? -1 : r.commonNameRow;
    }
    if (readMask & kReadDescriptive) {
        out->hubble = hubbleText(r.hubbleType, r.hubbleStage);
        for (int i = 0; i < 6; ++i) out->classCode[i] = r.classCode[i];
        out->interaction = r.interaction;
        out->flagA = r.flagA;
        out->flagB = r.flagB;
        out->radialVelocity = r.radialVelocity;
        out->value41 = r.value41;
        out->value43 = r.value43;
        out->colour45 = r.colour45 == 255 ? 99.9 : r.colour45 * 0.01 - 1.02;
        out->colour46 = r.colour46 == 255 ? 99.9 : r.colour46 * 0.01 - 0.71;
        out->value47 = r.value47 * 0.01;
    }
}

int readGalaxy(FILE* file, long number, GalaxyData* out, int readMask) {
    uint8_t image[GalaxyLayout::kSize];
    if (number < 1 || !readAt(file, (number - 1) * static_cast<long>(GalaxyLayout::kSize), image, sizeof image))
        return 0;
    GalaxyRecord record;
    DecodeRecord<GalaxyLayout>(image, record);
    out->record = number;
    decodeGalaxy(record, out, readMask);
    return 1;
}

FilePtr openPgc() { return openCatalogue(kCatPgc); }
FilePtr openArp() { return openCatalogue(kCatArp); }
FilePtr openMarkarian() { return openCatalogue(kCatMkn); }
FilePtr openUgc() { return openCatalogue(kCatUgc); }
FilePtr openMcg() { return openCatalogue(kCatMcg); }
FilePtr openEsob() { return openCatalogue(kCatEsob); }

long lookupPgc(FILE* file, long pgc) { return pgc < 1 ? 0 : ReadRecord3(file, (pgc - 1) * 3); }

long lookupArp(FILE* file, int arp) { return arp < 1 ? 0 : ReadRecord3(file, (arp - 1) * 3L); }

int lookupMarkarian(FILE* file, int number, int suffix, long out[kMaxGalaxyHits]) {
    if (number < 1 || suffix < 0 || suffix > 1) return 0;
    const long record = ReadRecord3(file, ((number - 1) * 2L + suffix) * 3);
    if (record == 0) return 0;
    int count = 0;
    Add(out, &count, record);
    for (const MarkarianJoin& join : kMarkarianJoins)
        if (join.number == number) AddAll(join.records, out, &count);
    return count;
}

int lookupUgc(FILE* file, int number, int suffix, long out[kMaxGalaxyHits]) {
    constexpr int kSlots = 9;
    uint8_t slots[kSlots * 3];
    if (number < 1 || !readAt(file, (number - 1) * 27L, slots, sizeof slots)) return 0;
    int count = 0;
    for (int i = 0; i < kSlots; ++i) {
        const uint32_t slot = le::GetU24(slots + 3 * i);
        const long record = slot & 0xFFFFF;
        if (slot == kEmptySlot || record == 0 || static_cast<int>(slot >> 20) != suffix) continue;
        Add(out, &count, record);
    }
    if (count == 0) return 0;
    for (const UgcJoin& join : kUgcJoins)
        if (join.number == number && join.suffix == suffix) AddAll(join.records, out, &count);
    return count;
}

int lookupMcg(FILE* file, int zone, int field, int number, int part, long out[kMaxGalaxyHits]) {
    if (part > 2) {
        for (const McgFixed& fixed : kMcgFixed) {
            if (fixed.zone == zone && fixed.field == field && fixed.number == number && fixed.part == part) {
                out[0] = fixed.record;
                return 1;
            }
        }
        return 0;
    }
    if (zone + 7 < 0 || zone + 7 > 31 || field < 0 || field >= 61 || part < 0) return 0;
    ShortRunHead run;
    if (!readShortRunHead(file, (zone + 7) * 61L + field, &run)) return 0;
    // The run holds the numbers 1 to its count, three part slots each.
    if (number < 1 || number > run.count) return 0;
    uint32_t value = 0;
    if (!readNumber3(file, static_cast<long>(run.offset) + (number * 3L + part) * 3, &value) ||
        value == kEmptySlot)
        return 0;
    out[0] = static_cast<long>(value) + 1;  // the slot keeps the record less one
    return 1;
}

int lookupEso(FILE* file, int field, int number, int part, long out[kMaxGalaxyHits]) {
    if (part > 2) {
        for (const EsoFixed& fixed : kEsoFixed) {
            if (fixed.field == field && fixed.number == number && fixed.part == part) {
                out[0] = fixed.record;
                return 1;
            }
        }
        return 0;
    }
    if (field < 1 || part < 0) return 0;
    RunHead run;
    if (!readRunHead(file, field - 1L, &run)) return 0;
    if (number < 1 || number > run.count) return 0;
    uint8_t slot[4];
    if (!readAt(file, static_cast<long>(run.offset) + ((number - 1) * 3L + part) * 4, slot, sizeof slot)) return 0;
    const uint32_t value = le::GetU32(slot);
    const long first = value & 0xFFFFF;
    const long further = value >> 20;
    if (value == 0xFFFFFFFFu || first == 0) return 0;
    int count = 0;
    Add(out, &count, first);
    if (further != 0) {
        Add(out, &count, first + further);
    } else {
        for (const EsoFixed& second : kEsoSecond)
            if (second.field == field && second.number == number && second.part == part)
                Add(out, &count, second.record);
    }
    for (const EsoJoin& join : kEsoJoins)
        if (join.field == field && join.number == number && (join.part < 0 || join.part == part))
            AddAll(join.records, out, &count);
    return count;
}

// ---- Galaxy groups ---------------------------------------------------------

FilePtr openGroups() { return openCatalogue(kCatGg); }

void decodeGroup(const GroupRecord& r, GroupData* out, int readMask) {
    if (readMask & kReadPosition) {
        out->ra = scaledAngleToRadians(r.ra);
        out->dec = scaledAngleToRadians(r.dec);
    }
    if (readMask & kReadMagnitude) {
        out->magnitude = Tenths(r.magnitude);
        out->magnitudeA = Tenths(r.magnitudeA);
        out->magnitudeB = Tenths(r.magnitudeB);
    }
    if (readMask & kReadSize) {
        out->sizeMajor = r.diameter * 0.1 * kRadiansPerArcminute;
        out->sizeMinor = 0;
        out->sizeDefault = out->sizeMajor > 0 ? out->sizeMajor : kOneDegree;
    }
    if (readMask & kReadDesignations) {
        out->agc = r.agc;
        out->hickson = r.hickson;
        out->commonNameRow = r.commonNameRow == 255 ? -1 : r.commonNameRow;
    }
    if (readMask & kReadDescriptive) {
        out->members = r.members;
        out->redshift = r.redshift * 0.0001;
        out->code20 = r.code20;
        out->code21 = r.code21;
    }
}

int readGroup(FILE* file, long number, GroupData* out, int readMask) {
    uint8_t image[GroupLayout::kSize];
    if (number < 1 ||
        !readAt(file, (number - 1) * static_cast<long>(GroupLayout::kSize) + kGroupFileHead, image, sizeof image))
        return 0;
    GroupRecord record;
    DecodeRecord<GroupLayout>(image, record);
    out->record = number;
    decodeGroup(record, out, readMask);
    return 1;
}

long groupPidOfAgc(int agc) { return agc >= 1 && agc <= kLastAgcGroup ? agc : 0; }

long groupPidOfHickson(int hickson) { return hickson >= 1 && hickson <= 100 ? hickson + kLastAgcGroup : 0; }
