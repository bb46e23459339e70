#include "catalog/photometric_standards.h"

#include "catalog/catalogue_codes.h"
#include "catalog/catalogue_files.h"

namespace {

template <class Layout>
int ReadStandard(FILE* file, long row, PhotometricStandard* out) {
    if (row < 1) return 0;
    uint8_t image[Layout::kSize];
    if (!readAt(file, (row - 1) * static_cast<long>(Layout::kSize), image, sizeof image)) return 0;
    PhotometricRecord record;
    DecodeRecord<Layout>(image, record);
    *out = PhotometricStandard{};
    out->row = row;
    out->ra = scaledAngleToRadians(record.ra);
    out->dec = scaledAngleToRadians(record.dec);
    out->valueCount = Layout::kValues;
    for (int i = 0; i < Layout::kValues; ++i) out->values[i] = photometricValue(record.values[i]);
    return 1;
}

}  // namespace

double photometricValue(int16_t code) {
    // Compared in thousandths, so that -30 itself stays a value.
    return code < -30000 ? 99.9 : code * 0.001;
}

FilePtr openLandolt() { return openCatalogue(kCatLandolt); }
FilePtr openDdo() { return openCatalogue(kCatDdo); }
FilePtr openGeneva() { return openCatalogue(kCatGeneva); }
FilePtr openUbvri() { return openCatalogue(kCatUbvri); }
FilePtr openUvby() { return openCatalogue(kCatUvby); }

int readLandolt(FILE* file, long row, PhotometricStandard* out) {
    return ReadStandard<LandoltLayout>(file, row, out);
}
int readDdo(FILE* file, long row, PhotometricStandard* out) {
    return ReadStandard<DdoLayout>(file, row, out);
}
int readGeneva(FILE* file, long row, PhotometricStandard* out) {
    return ReadStandard<GenevaLayout>(file, row, out);
}
int readUbvri(FILE* file, long row, PhotometricStandard* out) {
    return ReadStandard<UbvriLayout>(file, row, out);
}
int readUvby(FILE* file, long row, PhotometricStandard* out) {
    return ReadStandard<UvbyLayout>(file, row, out);
}
