#include "catalog/planetary_files.h"

#include <cstring>

#include "astro/magnitudes.h"
#include "astro/numeric.h"
#include "base/le_bytes.h"
#include "catalog/catalogue_codes.h"
#include "catalog/catalogue_files.h"
#include "catalog/index_runs.h"
#include "catalog/sorted_names.h"

namespace {

// Henize a-b: the first b of each a, and the slot where that a starts.
constexpr int kHenizeFirst[3] = {1, 1, 519};
constexpr int kHenizeSlot[3] = {0, 8, 476};
constexpr int kHenizeLast[3] = {8, 468, 0x7FFF};  // b beyond these lands in the next a

// Entry `i` of a PN G run.
int ReadPngEntry(FILE* file, const RunHead& run, long i, PngEntry* out) {
    uint8_t image[PngEntryLayout::kSize];
    if (!readAt(file, static_cast<long>(run.offset) + i * static_cast<long>(PngEntryLayout::kSize), image,
                sizeof image))
        return 0;
    DecodeRecord<PngEntryLayout>(image, *out);
    return 1;
}

// The u16 record slot at `offset`; -1 when unread or 65535.
long ReadSlot(FILE* file, long offset) {
    uint8_t b[2];
    if (!readAt(file, offset, b, sizeof b)) return -1;
    const uint16_t value = le::GetU16(b);
    return value == 65535 ? -1 : value;
}

// Slot ((a - first) x width + b - 1) of a two-number index.
long ReadPairSlot(FILE* file, int a, int firstA, int b, int width) {
    if (a < firstA || b < 1 || b > width) return -1;
    return ReadSlot(file, ((a - firstA) * static_cast<long>(width) + b - 1) * 2);
}

}  // namespace

FilePtr openPlanetaries() { return openCatalogue(kCatPln); }

void decodePlanetary(const PlanetaryRecord& r, PlanetaryData* out, int readMask) {
    const double magnitude = r.magnitude == 255 ? 99.9 : r.magnitude * 0.1;
    out->diameterTenths = r.diameter == 65535 ? -1 : r.diameter;
    const double arcmin = out->diameterTenths > 0 ? out->diameterTenths / 600.0 : 0.0;
    if (readMask & kReadPosition) {
        out->ra = scaledAngleToRadians(r.ra);
        out->dec = scaledAngleToRadians(r.dec);
        out->pngLongitude = r.pngLongitude;
        out->pngLatitude = r.pngLatitude;
    }
    if (readMask & kReadMagnitude) {
        out->magnitude = magnitude;
        out->centralStarMagnitude = r.centralStarMagnitude == 255 ? 99.9 : r.centralStarMagnitude * 0.1;
        out->magnitude2 = arcmin > 0 && magnitude < 90 ? SurfaceBrightness(arcmin, arcmin, magnitude) : 99.9;
    }
    if (readMask & kReadSize) {
        out->sizeMajor = arcmin * (kPi / 10800.0);
        out->sizeMinor = 0;
        out->sizeDefault = out->sizeMajor;
    }
    if (readMask & kReadDesignations) {
        out->designation = std::string(r.designation, strnlen(r.designation, sizeof r.designation));
        out->pkLongitude = r.pkLongitude;
        out->pkSign = r.pkPlus ? '+' : '-';
        out->pkLatitude = r.pkLatitude;
        out->ngc = r.ngc;
        out->ic = r.ic;
        out->messier = r.messier;
        out->commonNameRow = r.commonNameRowPlus1 - 1;
        for (int i = 0; i < 2; ++i) {
            out->minkowski[i] = r.minkowski[i];
            out->haroHenize[i] = r.haroHenize[i];
            out->pair48[i] = r.pair48[i];
            out->numbers51[i] = r.numbers51[i];
        }
        for (int i = 0; i < 3; ++i) out->fields44[i] = r.fields44[i];
        out->number55 = r.number55;
    }
    if (readMask & kReadDescriptive) {
        out->code12 = r.code12;
        out->code50 = r.code50;
        out->value57 = r.value57;
        out->value61 = r.value61;
        out->value64 = r.value64;
        out->flags66 = r.flags66;
        out->flag15 = r.flag15;
        for (int i = 0; i < 2; ++i) {
            out->class68[i] = r.class68[i];
            out->code68[i] = r.code68[i];
        }
    }
    out->flag14 = r.flag14;
}

int readPlanetary(FILE* file, long number, PlanetaryData* out, int readMask) {
    uint8_t image[PlanetaryLayout::kSize];
    if (number < 0 || !readAt(file, number * static_cast<long>(PlanetaryLayout::kSize), image, sizeof image))
        return 0;
    PlanetaryRecord record;
    DecodeRecord<PlanetaryLayout>(image, record);
    out->record = number;
    decodePlanetary(record, out, readMask);
    return 1;
}

FilePtr openAbellPn() { return openCatalogue(kCatAbellPn); }
FilePtr openAro() { return openCatalogue(kCatAro); }
FilePtr openPlanetaryEso() { return openCatalogue(kCatEso); }
FilePtr openMinkowski() { return openCatalogue(kCatMinkowski); }
FilePtr openHaro() { return openCatalogue(kCatHaro); }
FilePtr openKohoutek() { return openCatalogue(kCatKohoutek); }
FilePtr openHenize() { return openCatalogue(kCatHenize); }
FilePtr openPk() { return openCatalogue(kCatPk); }
FilePtr openPng() { return openCatalogue(kCatPng); }
FilePtr openPnDesignations() { return openCatalogue(kCatPnDes); }

long lookupAbellPn(FILE* file, int number) { return number < 1 ? -1 : ReadSlot(file, (number - 1) * 2L); }
long lookupAro(FILE* file, int number) { return number < 1 ? -1 : ReadSlot(file, (number - 1) * 2L); }
long lookupPlanetaryEso(FILE* file, int a, int b) { return ReadPairSlot(file, a, 11, b, 82); }
long lookupMinkowski(FILE* file, int a, int b) { return ReadPairSlot(file, a, 1, b, 93); }
long lookupHaro(FILE* file, int a, int b) { return ReadPairSlot(file, a, 1, b, 76); }
long lookupKohoutek(FILE* file, int a, int b) { return ReadPairSlot(file, a, 1, b, 95); }

long lookupHenize(FILE* file, int a, int b) {
    if (a < 1 || a > 3 || b < kHenizeFirst[a - 1] || b > kHenizeLast[a - 1]) return -1;
    uint8_t bytes[2];
    const long slot = b - kHenizeFirst[a - 1] + kHenizeSlot[a - 1];
    if (!readAt(file, slot * 2, bytes, sizeof bytes)) return -1;
    const int value = le::GetI16(bytes);
    return value <= 0 ? -1 : value - 1;
}

long lookupPk(FILE* file, int longitude, int latitudeTenths) {
    RunHead run;
    const long entry = latitudeTenths + 741L;
    if (longitude < 0 || longitude > 359 || !readRunHead(file, longitude, &run)) return -1;
    if (entry < 0 || entry >= run.count) return -1;
    return ReadSlot(file, static_cast<long>(run.offset) + entry * 2);
}

long lookupPng(FILE* file, int longitudeTenths, int latitudeTenths) {
    RunHead run;
    if (longitudeTenths < 0 || longitudeTenths > 3609 || !readRunHead(file, longitudeTenths / 10, &run))
        return -1;
    for (long i = 0; i < run.count; ++i) {
        PngEntry entry;
        if (!ReadPngEntry(file, run, i, &entry)) return -1;
        if (entry.longitudeTenth == longitudeTenths % 10 && entry.latitude == latitudeTenths)
            return entry.record == 65535 ? -1 : entry.record;
    }
    return -1;
}

int beginPngBrowse(PngBrowser* browser) {
    browser->file = openPng();
    browser->run = -1;
    browser->entry = 0;
    browser->head = RunHead{};
    return browser->file ? 1 : 0;
}

int nextPngBrowse(PngBrowser* browser, int* longitudeTenths, int* latitudeTenths, long* record) {
    if (!browser->file) return 0;
    for (;;) {
        if (browser->run >= 0 && browser->entry < browser->head.count) {
            PngEntry entry;
            if (!ReadPngEntry(browser->file.get(), browser->head, browser->entry++, &entry)) return 0;
            if (entry.record == 65535) continue;
            *longitudeTenths = browser->run * 10 + entry.longitudeTenth;
            *latitudeTenths = entry.latitude;
            *record = entry.record;
            return 1;
        }
        if (browser->run + 1 >= kPngBrowseRuns) return 0;
        if (!readRunHead(browser->file.get(), ++browser->run, &browser->head)) return 0;
        browser->entry = 0;
    }
}

long lookupPnDesignation(FILE* file, const char* text) {
    return findSortedName(file, kPnDesignationRows, kPnDesignationSize, text);
}
