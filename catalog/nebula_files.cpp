#include "catalog/nebula_files.h"

#include <cstring>

#include "astro/numeric.h"
#include "base/le_bytes.h"
#include "catalog/catalogue_codes.h"
#include "catalog/catalogue_files.h"
#include "catalog/sorted_names.h"

namespace {

// Slot (number - 1) x 2 of an index of numbers 1 to last; -1 when out of
// range, unread or 65535.
long ReadNumberSlot(FILE* file, int number, int last) {
    uint8_t b[2];
    if (number < 1 || number > last || !readAt(file, (number - 1) * 2L, b, sizeof b)) return -1;
    const uint16_t value = le::GetU16(b);
    return value == 65535 ? -1 : value;
}

}  // namespace

FilePtr openNebulae() { return openCatalogue(kCatNeb); }

void decodeNebula(const NebulaRecord& r, NebulaData* out, int readMask) {
    if (readMask & kReadPosition) {
        out->ra = scaledAngleToRadians(r.ra);
        out->dec = scaledAngleToRadians(r.dec);
    }
    if (readMask & kReadMagnitude) out->magnitude = r.magnitude == 255 ? 99.9 : r.magnitude * 0.1;
    if (readMask & kReadSize) {
        out->sizeMajor = r.size * 0.1 * (kPi / 10800.0);
        out->sizeMinor = 0;
        out->sizeDefault = out->sizeMajor;
    }
    if (readMask & kReadDesignations) {
        out->commonNameRow = r.commonNameRow == 255 ? -1 : r.commonNameRow;
        out->messier = r.messier;
        for (int i = 0; i < 2; ++i) {
            out->ngc[i] = r.ngc[i];
            out->ic[i] = r.ic[i];
        }
        out->vdb = r.vdb;
        out->gum = r.gum;
        out->rcw = r.rcw;
        out->sharpless = r.sharpless;
        out->lbn = r.lbn;
        out->designation = std::string(r.designation, strnlen(r.designation, sizeof r.designation));
    }
    if (readMask & kReadDescriptive) {
        out->type = r.type;
        out->flag = r.flag;
    }
}

int readNebula(FILE* file, long number, NebulaData* out, int readMask) {
    uint8_t image[NebulaLayout::kSize];
    if (number < 0 || !readAt(file, number * static_cast<long>(NebulaLayout::kSize), image, sizeof image))
        return 0;
    NebulaRecord record;
    DecodeRecord<NebulaLayout>(image, record);
    out->record = number;
    decodeNebula(record, out, readMask);
    return 1;
}

FilePtr openSharpless() { return openCatalogue(kCatSh); }
FilePtr openVdb() { return openCatalogue(kCatVdb); }
FilePtr openGum() { return openCatalogue(kCatGum); }
FilePtr openRcw() { return openCatalogue(kCatRcw); }
FilePtr openLbn() { return openCatalogue(kCatLbn); }
FilePtr openNebulaOther() { return openCatalogue(kCatNebother); }

long lookupSharpless(FILE* file, int number) { return ReadNumberSlot(file, number, 312); }
long lookupVdb(FILE* file, int number) { return ReadNumberSlot(file, number, 152); }
long lookupGum(FILE* file, int number) { return ReadNumberSlot(file, number, 80); }
long lookupRcw(FILE* file, int number) { return ReadNumberSlot(file, number, 158); }
long lookupLbn(FILE* file, int number) { return ReadNumberSlot(file, number, 1627); }

long lookupNebulaOther(FILE* file, const char* text) {
    return findSortedName(file, kNebulaOtherRows, kNebulaOtherSize, text);
}
