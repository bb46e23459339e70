// The deep-sky lists read by run or by row: MCG and ESO galaxies, the
// quasar discoverer names and Q numbers, the planetary pair numbers, PK and
// the discovery names, the nebulae's, globulars' and globules' own name
// lists, OCL numbers, DC clouds; and the constellation list of class 1.
//
// The readers of these kinds take the designation's text only (or, for OCL,
// a whole number that can't carry the tenth), so a row's id is its place in
// the index it comes from, from 1, the same from one list to the next; the
// row's text finds the object again.
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>
#include <utility>

#include "base/prefix_match.h"
#include "catalog/browse.h"
#include "catalog/catalogue_files.h"
#include "catalog/cluster_files.h"
#include "catalog/constellation_files.h"
#include "catalog/constellation_names.h"
#include "catalog/dark_nebula_files.h"
#include "catalog/designation_parse.h"
#include "catalog/designation_print.h"
#include "catalog/galaxy_files.h"
#include "catalog/index_runs.h"
#include "catalog/nebula_files.h"
#include "catalog/object_record.h"
#include "catalog/planetary_files.h"
#include "catalog/quasar_files.h"
#include "catalog/sorted_names.h"

namespace {

// Places of a run inside a run-walk id: run x 1024 + place + 1. MCG and ESO
// numbers are 8 bits, three parts each; a Q cell holds at most 255 entries.
constexpr long kRunPlaces = 1024;

long fileBytes(FILE* file) {
    if (!file || std::fseek(file, 0, SEEK_END) != 0) return 0;
    return std::ftell(file);
}

// The text from its first digit or sign on, past a catalogue word.
const char* numberPart(const char* text) {
    while (*text && !(*text >= '0' && *text <= '9') && *text != '-' && *text != '+') ++text;
    return text;
}

// A flat list of `state->last` rows.
long flatRowsIn(BrowseState* state, long group) { return group > 0 ? -1 : state->last; }

int beginFlat(BrowseState* state, int (*rowAt)(BrowseState*, long, long, BrowseRow*), long rows) {
    state->last = rows;
    const long place = state->foundId > 0 ? (state->foundId - 1) / kNumberedRows * kNumberedRows : 0;
    return beginGroupedBrowse(state, {flatRowsIn, rowAt, 0}, 0, place);
}

// ---- MCG: the run of each (zone + 7, field), numbers 1 to its count, parts
// 0 to 2 (none, A, B).

constexpr int kMcgZones = 32, kMcgFields = 61;

long mcgRowsIn(BrowseState* state, long run) {
    ShortRunHead head;
    if (run >= kMcgZones * kMcgFields || !readShortRunHead(state->file.get(), run, &head)) return -1;
    return (head.count + 1L) * 3;
}

int mcgAt(BrowseState* state, long run, long place, BrowseRow* out) {
    const int zone = static_cast<int>(run / kMcgFields) - 7, field = static_cast<int>(run % kMcgFields);
    const int number = static_cast<int>(place / 3), part = static_cast<int>(place % 3);
    long records[kMaxGalaxyHits];
    if (number < 1 || lookupMcg(state->file.get(), zone, field, number, part, records) <= 0) return 0;
    out->id = run * kRunPlaces + place + 1;
    out->text = mcgName(zone, field, number, part);
    return 1;
}

int beginMcgBrowse(BrowseState* state, const char* startText) {
    state->file = openMcg();
    if (!state->file) return 0;
    long run = 0;
    int zone = 0, field = 0, number = 0, part = 0;
    if (!browseStartsAtTop(startText) && parseMcg(startText, &zone, &field, &number, &part) >= 3 && zone + 7 >= 0 &&
        zone + 7 < kMcgZones && field >= 0 && field < kMcgFields) {
        run = (zone + 7L) * kMcgFields + field;  // the list starts at the run of the number typed
        long records[kMaxGalaxyHits];
        if (part <= 2 && lookupMcg(state->file.get(), zone, field, number, part, records) > 0)
            state->foundId = run * kRunPlaces + number * 3L + part + 1;
    }
    return beginGroupedBrowse(state, {mcgRowsIn, mcgAt, kMcgZones * kMcgFields - 1}, run, 0);
}

// ---- ESO: the run of each field from 1, numbers 1 to its count, parts 0
// to 2. The heads end where the first run begins.

long esoRowsIn(BrowseState* state, long field) {
    RunHead head;
    if ((field - 1) * static_cast<long>(RunLayout::kSize) >= state->last ||
        !readRunHead(state->file.get(), field - 1, &head))
        return -1;
    if (head.count > 0 && static_cast<long>(head.offset) < state->last) state->last = static_cast<long>(head.offset);
    return head.count * 3L;
}

int esoAt(BrowseState* state, long field, long place, BrowseRow* out) {
    const int number = static_cast<int>(place / 3) + 1, part = static_cast<int>(place % 3);
    long records[kMaxGalaxyHits];
    if (lookupEso(state->file.get(), static_cast<int>(field), number, part, records) <= 0) return 0;
    out->id = field * kRunPlaces + place + 1;
    out->text = esoName(static_cast<int>(field), number, part);
    return 1;
}

int beginEsoBrowse(BrowseState* state, const char* startText) {
    state->file = openEsob();
    if (!state->file) return 0;
    state->last = fileBytes(state->file.get());
    long first = 1;
    long field = 0, number = 0;
    int part = 0;
    if (!browseStartsAtTop(startText) && parseEso(startText, &field, &number, &part) && field >= 1) {
        first = field;
        long records[kMaxGalaxyHits];
        if (part <= 2 && number >= 1 &&
            lookupEso(state->file.get(), static_cast<int>(field), static_cast<int>(number), part, records) > 0)
            state->foundId = field * kRunPlaces + (number - 1) * 3 + part + 1;
    }
    // The walk passes each head on its way, so a later start learns where the heads end by reading them first.
    for (long f = 1; f < first && esoRowsIn(state, f) >= 0; ++f) {
    }
    return beginGroupedBrowse(state, {esoRowsIn, esoAt, 0x0FFF}, first, 0);
}

// ---- Quasars: `qso_des` rows in their sorted order, and the `q` cells in
// RA order with their entries.

int qsoAt(BrowseState* state, long, long place, BrowseRow* out) {
    uint8_t image[QsoDesignationLayout::kSize];
    if (!readAt(state->file.get(), place * static_cast<long>(sizeof image), image, sizeof image)) return -1;
    QsoDesignationRow row;
    DecodeRecord<QsoDesignationLayout>(image, row);
    const size_t length = strnlen(row.name, sizeof row.name);
    if (length == 0) return 0;
    out->id = place + 1;
    out->text.assign(row.name, length);
    return 1;
}

int beginQsoBrowse(BrowseState* state, const char* startText) {
    state->file = openQsoDesignations();
    if (!state->file) return 0;
    long rows = fileBytes(state->file.get()) / static_cast<long>(QsoDesignationLayout::kSize);
    if (rows > kQsoDesignationRows) rows = kQsoDesignationRows;
    const long record = browseStartsAtTop(startText) ? 0 : lookupQsoDesignation(state->file.get(), startText);
    // The row found is the one that leads to the quasar the lookup found.
    for (long row = 0; record > 0 && row < rows; ++row) {
        uint8_t image[QsoDesignationLayout::kSize];
        if (!readAt(state->file.get(), row * static_cast<long>(sizeof image), image, sizeof image)) break;
        QsoDesignationRow entry;
        DecodeRecord<QsoDesignationLayout>(image, entry);
        if (entry.record == record) {
            state->foundId = row + 1;
            break;
        }
    }
    return beginFlat(state, qsoAt, rows);
}

constexpr long kQCells = 24 * 60;

long qRowsIn(BrowseState* state, long cell) {
    ShortRunHead head;
    if (cell >= kQCells || !readShortRunHead(state->file.get(), cell, &head)) return -1;
    state->runOffset = head.offset;
    return head.count;
}

bool readQEntry(FILE* file, long runOffset, long place, QEntry* out) {
    uint8_t image[QEntryLayout::kSize];
    if (!readAt(file, runOffset + place * static_cast<long>(sizeof image), image, sizeof image)) return false;
    DecodeRecord<QEntryLayout>(image, *out);
    return true;
}

int qAt(BrowseState* state, long cell, long place, BrowseRow* out) {
    QEntry entry;
    if (!readQEntry(state->file.get(), state->runOffset, place, &entry)) return -1;
    if (entry.record == 0) return 0;
    const int raPart = static_cast<int>(cell / 60 * 100 + cell % 60);
    out->id = cell * kRunPlaces + place + 1;
    out->text = quasarQName(raPart, entry.decPart, static_cast<char>(entry.suffix));
    return 1;
}

int beginQBrowse(BrowseState* state, const char* startText) {
    state->file = openQ();
    if (!state->file) return 0;
    long first = 0;
    int raPart = 0, decPart = 0;
    char suffix = ' ';
    if (!browseStartsAtTop(startText) && parseQuasarQ(startText, &raPart, &decPart, &suffix) >= 2 &&
        qCell(raPart) >= 0) {
        first = qCell(raPart);
        const long record = lookupQ(state->file.get(), raPart, decPart, qWantedSuffix(suffix, false));
        const long count = record > 0 ? qRowsIn(state, first) : 0;
        for (long place = 0; place < count; ++place) {
            QEntry entry;
            if (!readQEntry(state->file.get(), state->runOffset, place, &entry)) break;
            if (entry.record == record && entry.decPart == decPart) {
                state->foundId = first * kRunPlaces + place + 1;
                break;
            }
        }
    }
    return beginGroupedBrowse(state, {qRowsIn, qAt, kQCells - 1}, first, 0);
}

// ---- Planetary pair numbers "M 1-2": the slots of the index in order; a
// slot stands for (a, b) as the index places it.

enum PlanetaryKind { kMinkowski = 6, kHenize = 7, kHaro = 8, kKohoutek = 9, kPk = 11, kPlanetaryEso = 13, kPnDes = 14 };

// Henize: a 1 to 3, the slots of each from {0, 8, 476}, b from {1, 1, 519}.
constexpr long kHenizeSlot[3] = {0, 8, 476};
constexpr int kHenizeFirstB[3] = {1, 1, 519};

// The pair of a slot, and back; false outside the index.
bool pairOfSlot(int kind, long slot, int* a, int* b) {
    switch (kind) {
    case kMinkowski: *a = static_cast<int>(slot / 93) + 1, *b = static_cast<int>(slot % 93) + 1; return true;
    case kHaro: *a = static_cast<int>(slot / 76) + 1, *b = static_cast<int>(slot % 76) + 1; return true;
    case kKohoutek: *a = static_cast<int>(slot / 95) + 1, *b = static_cast<int>(slot % 95) + 1; return true;
    case kPlanetaryEso: *a = static_cast<int>(slot / 82) + 11, *b = static_cast<int>(slot % 82) + 1; return true;
    case kHenize: {
        const int row = slot < kHenizeSlot[1] ? 0 : slot < kHenizeSlot[2] ? 1 : 2;
        *a = row + 1;
        *b = static_cast<int>(slot - kHenizeSlot[row]) + kHenizeFirstB[row];
        return true;
    }
    default: return false;
    }
}

long slotOfPair(int kind, int a, int b) {
    switch (kind) {
    case kMinkowski: return (a - 1) * 93L + b - 1;
    case kHaro: return (a - 1) * 76L + b - 1;
    case kKohoutek: return (a - 1) * 95L + b - 1;
    case kPlanetaryEso: return (a - 11) * 82L + b - 1;
    case kHenize: return a >= 1 && a <= 3 ? b - kHenizeFirstB[a - 1] + kHenizeSlot[a - 1] : -1;
    default: return -1;
    }
}

long pairLookup(int kind, FILE* file, int a, int b) {
    switch (kind) {
    case kMinkowski: return lookupMinkowski(file, a, b);
    case kHaro: return lookupHaro(file, a, b);
    case kKohoutek: return lookupKohoutek(file, a, b);
    case kPlanetaryEso: return lookupPlanetaryEso(file, a, b);
    case kHenize: return lookupHenize(file, a, b);
    default: return -1;
    }
}

std::string pairName(int kind, int a, int b) {
    switch (kind) {
    case kMinkowski: return minkowskiName(a, b);
    case kHaro: return haroName(a, b);
    case kKohoutek: return kohoutekName(a, b);
    case kPlanetaryEso: return esoPlanetaryName(a, b);
    default: return henizeName(a, b);
    }
}

int pairAt(BrowseState* state, long, long slot, BrowseRow* out) {
    int a = 0, b = 0;
    if (!pairOfSlot(state->kind, slot, &a, &b) || pairLookup(state->kind, state->file.get(), a, b) < 0) return 0;
    out->id = slot + 1;
    out->text = pairName(state->kind, a, b);
    return 1;
}

int beginPairBrowse(BrowseState* state, int kind, const char* startText) {
    state->file = kind == kMinkowski ? openMinkowski()
                  : kind == kHenize  ? openHenize()
                  : kind == kHaro    ? openHaro()
                  : kind == kKohoutek ? openKohoutek()
                                      : openPlanetaryEso();
    if (!state->file) return 0;
    int a = 0, b = 0;
    if (!browseStartsAtTop(startText) && std::sscanf(numberPart(startText), "%d-%d", &a, &b) == 2 &&
        pairLookup(kind, state->file.get(), a, b) >= 0)
        state->foundId = slotOfPair(kind, a, b) + 1;
    return beginFlat(state, pairAt, fileBytes(state->file.get()) / 2);
}

// ---- PK: the longitudes 0 to 359, each run's latitudes from -74.1 up.

constexpr long kPkLatitudeBase = 741;

long pkRowsIn(BrowseState* state, long longitude) {
    RunHead head;
    if (longitude > 359 || !readRunHead(state->file.get(), longitude, &head)) return -1;
    return head.count;
}

long pkId(long longitude, long latitudeTenths) { return longitude * 2048 + latitudeTenths + kPkLatitudeBase + 1; }

int pkAt(BrowseState* state, long longitude, long place, BrowseRow* out) {
    const int latitude = static_cast<int>(place - kPkLatitudeBase);
    if (lookupPk(state->file.get(), static_cast<int>(longitude), latitude) < 0) return 0;
    out->id = pkId(longitude, latitude);
    out->text = pkName(static_cast<int>(longitude), latitude < 0 ? '-' : '+', latitude < 0 ? -latitude : latitude);
    return 1;
}

int beginPkBrowse(BrowseState* state, const char* startText) {
    state->file = openPk();
    if (!state->file) return 0;
    long longitude = 0;
    int latitude = 0;
    long first = 0;
    if (!browseStartsAtTop(startText) && parsePk(startText, &longitude, &latitude) && longitude >= 0 &&
        longitude <= 359) {
        first = longitude;
        if (lookupPk(state->file.get(), static_cast<int>(longitude), latitude) >= 0)
            state->foundId = pkId(longitude, latitude);
    }
    return beginGroupedBrowse(state, {pkRowsIn, pkAt, 359}, first, 0);
}

// ---- Name lists of fixed rows: `pn_des`, `nebother` (a name each), `GDes`
// and `gbc` (a name and a record). Row order is the file's.

std::string rowText(FILE* file, long row, size_t size, size_t nameBytes, bool* read) {
    char buffer[kMaxSortedNameSize + 1] = {};
    *read = size <= kMaxSortedNameSize && readAt(file, row * static_cast<long>(size), buffer, size);
    return *read ? std::string(buffer, strnlen(buffer, nameBytes)) : std::string();
}

int nameRowAt(BrowseState* state, long, long place, BrowseRow* out) {
    size_t size = kPnDesignationSize, nameBytes = kPnDesignationSize;
    if (state->objectClass == kClassDiffuseNebula) size = nameBytes = kNebulaOtherSize;
    if (state->objectClass == kClassGlobular) size = GlobularDesignationLayout::kSize, nameBytes = 19;
    if (state->objectClass == kClassDarkNebula) size = GlobuleNameLayout::kSize, nameBytes = 14;
    bool read = false;
    std::string text = rowText(state->file.get(), place, size, nameBytes, &read);
    if (!read) return -1;
    if (text.empty()) return 0;
    out->id = place + 1;
    out->text = std::move(text);
    return 1;
}

// The first row whose name `accept` takes; -1 none.
template <class Accept>
long findRow(FILE* file, long rows, size_t size, size_t nameBytes, Accept accept) {
    for (long row = 0; row < rows; ++row) {
        bool read = false;
        const std::string name = rowText(file, row, size, nameBytes, &read);
        if (!read) break;
        if (!name.empty() && accept(row, name)) return row;
    }
    return -1;
}

int beginNameRows(BrowseState* state, int objectClass, const char* startText) {
    const bool typed = !browseStartsAtTop(startText);
    long rows = 0, row = -1;
    switch (objectClass) {
    case kClassPlanetary:
        state->file = openPnDesignations();
        if (!state->file) return 0;
        rows = kPnDesignationRows;
        if (typed) row = lookupPnDesignation(state->file.get(), startText);  // its row is the name's
        break;
    case kClassDiffuseNebula:
        state->file = openNebulaOther();
        if (!state->file) return 0;
        rows = kNebulaOtherRows;
        if (typed) row = lookupNebulaOther(state->file.get(), startText);
        break;
    case kClassGlobular:
        // The reader takes the first row the text begins: so does the list.
        state->file = openGlobularDesignations();
        if (!state->file) return 0;
        rows = kGlobularDesignationRows;
        if (typed)
            row = findRow(state->file.get(), rows, GlobularDesignationLayout::kSize, 19,
                          [&](long, const std::string& name) { return PrefixMatch(startText, name.c_str()); });
        break;
    default: {  // globules: the row that leads to the record the search finds
        state->file = openGbc();
        if (!state->file) return 0;
        rows = fileBytes(state->file.get()) / static_cast<long>(GlobuleNameLayout::kSize);
        const long record = typed ? lookupGlobule(state->file.get(), startText) : -1;
        if (record >= 0)
            row = findRow(state->file.get(), rows, GlobuleNameLayout::kSize, 14, [&](long r, const std::string&) {
                uint8_t image[GlobuleNameLayout::kSize];
                GlobuleNameRow entry;
                if (!readAt(state->file.get(), r * static_cast<long>(sizeof image), image, sizeof image)) return false;
                DecodeRecord<GlobuleNameLayout>(image, entry);
                return entry.record == record;
            });
        break;
    }
    }
    if (row >= 0) state->foundId = row + 1;
    return beginFlat(state, nameRowAt, rows);
}

// ---- OCL: slot ((whole - 1) x 9 + tenth) for OCL whole.tenth.

constexpr int kOclTenthsPerWhole = 9;

double oclOfSlot(long slot) { return static_cast<double>(slot / kOclTenthsPerWhole + 1) + (slot % kOclTenthsPerWhole) * 0.1; }

int oclAt(BrowseState* state, long, long slot, BrowseRow* out) {
    const double ocl = oclOfSlot(slot);
    if (lookupOcl(state->file.get(), ocl) < 0) return 0;
    out->id = slot + 1;
    out->text = oclName(ocl);
    return 1;
}

int beginOclBrowse(BrowseState* state, const char* startText) {
    state->file = openOcl();
    if (!state->file) return 0;
    double ocl = 0;
    if (!browseStartsAtTop(startText)) {
        // As the reader reads it: "%lf", past three characters unless a digit leads.
        const char* s = startText[0] >= '0' && startText[0] <= '9' ? startText
                        : std::strlen(startText) >= 3               ? startText + 3
                                                                    : "";
        if (std::sscanf(s, "%lf", &ocl) == 1 && lookupOcl(state->file.get(), ocl) >= 0) {
            const long tenths = std::lround(ocl * 10.0);
            state->foundId = (tenths / 10 - 1) * kOclTenthsPerWhole + tenths % 10 + 1;
        }
    }
    return beginFlat(state, oclAt, fileBytes(state->file.get()) / 2);
}

// ---- DC: the 1101 rows in their (longitude, latitude, suffix) order.

bool readDcRow(FILE* file, long row, DcEntry* out) {
    uint8_t image[DcEntryLayout::kSize];
    if (!readAt(file, row * static_cast<long>(sizeof image), image, sizeof image)) return false;
    DecodeRecord<DcEntryLayout>(image, *out);
    return true;
}

int dcAt(BrowseState* state, long, long row, BrowseRow* out) {
    DcEntry entry;
    if (!readDcRow(state->file.get(), row, &entry)) return -1;
    if (entry.recordPlus1 == 0) return 0;
    out->id = row + 1;
    out->text = dcName(entry.longitude, entry.latitude, entry.suffix);
    return 1;
}

int beginDcBrowse(BrowseState* state, const char* startText) {
    state->file = openDc();
    if (!state->file) return 0;
    long rows = fileBytes(state->file.get()) / static_cast<long>(DcEntryLayout::kSize);
    if (rows > kDcRows) rows = kDcRows;
    double longitude = 0, latitude = 0;
    char letter = 0;
    const int read = browseStartsAtTop(startText) ? 0
                                                  : std::sscanf(numberPart(startText), "%lf%lf%c", &longitude,
                                                                &latitude, &letter);
    if (read >= 2) {
        const int upper = letter >= 'a' && letter <= 'z' ? letter - 32 : letter;
        const int suffix = read == 3 && upper >= 'A' && upper <= 'Z' ? upper - 64 : 0;
        const long record = lookupDc(state->file.get(), longitude, latitude, suffix);
        for (long row = 0; record >= 0 && row < rows; ++row) {
            DcEntry entry;
            if (!readDcRow(state->file.get(), row, &entry)) break;
            if (entry.recordPlus1 == record + 1) {
                state->foundId = row + 1;
                break;
            }
        }
    }
    return beginFlat(state, dcAt, rows);
}

// ---- Constellations: zones 0 to 88 by name; Serpens' second zone (76) is
// not a row of its own. The id is the zone number, which the class reader
// takes.

constexpr int kSecondSerpensZone = 76;

long zonesIn(BrowseState*, long group) { return group > 0 ? -1 : kConstellationZones; }

int zoneAt(BrowseState* state, long, long zone, BrowseRow* out) {
    ConstellationLabel label;
    if (zone == kSecondSerpensZone) return 0;
    if (!readConstellationName(state->file.get(), static_cast<int>(zone), &label)) return -1;
    out->id = zone;
    out->text = label.name;
    return 1;
}

}  // namespace

int beginConstellationList(BrowseState* state, const char* startText) {
    state->file = openConstellationNames();
    if (!state->file) return 0;
    if (!browseStartsAtTop(startText)) {
        int zone = findConstellationName(state->file.get(), startText);
        if (zone < 0) {
            const int row = constellationRowOf(startText);
            if (row >= 0) zone = row > 75 ? row + 1 : row;
        }
        if (zone == kSecondSerpensZone) zone = kSecondSerpensZone - 1;
        state->foundId = zone;
    }
    beginGroupedBrowse(state, {zonesIn, zoneAt, 0}, 0, 0);
    state->cap = kConstellationZones;
    return 1;
}

int beginDeepSkyIndexBrowse(BrowseState* state, int objectClass, int kind, const char* startText) {
    switch (objectClass) {
    case kClassGalaxy:
        if (kind == 8) return beginMcgBrowse(state, startText);
        if (kind == 10) return beginEsoBrowse(state, startText);
        break;
    case kClassQuasar:
        if (kind == 2) return beginQsoBrowse(state, startText);
        if (kind == 3) return beginQBrowse(state, startText);
        break;
    case kClassPlanetary:
        if ((kind >= kMinkowski && kind <= kKohoutek) || kind == kPlanetaryEso)
            return beginPairBrowse(state, kind, startText);
        if (kind == kPk) return beginPkBrowse(state, startText);
        if (kind == kPnDes) return beginNameRows(state, objectClass, startText);
        break;
    case kClassDiffuseNebula:
        if (kind == 10) return beginNameRows(state, objectClass, startText);
        break;
    case kClassOpenCluster:
        if (kind == 5) return beginOclBrowse(state, startText);
        break;
    case kClassGlobular:
        if (kind == 7) return beginNameRows(state, objectClass, startText);
        break;
    case kClassDarkNebula:
        if (kind == 4) return beginDcBrowse(state, startText);
        if (kind == 5) return beginNameRows(state, objectClass, startText);
        break;
    default: break;
    }
    return 0;
}
