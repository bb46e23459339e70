#include "catalog/star_file.h"

#include <cmath>
#include <cstdio>
#include <numbers>

#include "catalog/catalogue_codes.h"
#include "catalog/catalogue_files.h"

namespace {

constexpr double kArcsecToRadians = std::numbers::pi / 648000.0;

// The record number of the record starting at a file position.
long NumberAt(long position) {
    if (position < kShortStarsStart) return position / LongStarLayout::kSize + 1;
    return kLastLongStar + 1 + (position - kShortStarsStart) / ShortStarLayout::kSize;
}

void DecodeMotion(uint32_t pmRaCode, uint32_t pmDecCode, StarData* out) {
    // The file holds the motion on the sky; right ascension's rate is that
    // divided by cos(dec).
    const double cosDec = std::cos(out->dec);
    const double onSky = properMotionFromCode(pmRaCode) * kArcsecToRadians;
    out->pmRa = cosDec != 0 ? onSky / cosDec : 0;
    out->pmDec = properMotionFromCode(pmDecCode) * kArcsecToRadians;
}

// What both forms hold: place, motion, magnitude and colour. The place
// always comes, since the motion needs the declination.
template <class Record>
void DecodeCommon(const Record& r, StarData* out, int readMask) {
    out->ra = scaledAngleToRadians(r.ra);
    out->dec = scaledAngleToRadians(r.dec);
    if (readMask & kReadProperMotion) DecodeMotion(r.pmRaCode, r.pmDecCode, out);
    if (readMask & kReadMagnitude) {
        out->magnitude = starMagnitudeFromCode(r.magnitudeCode);
        out->colour = thousandthsValue(r.colour);
    }
}

}  // namespace

long starRecordOffset(long number) {
    if (number < 1 || number > kLastStar) return -1;
    if (number <= kLastLongStar) return (number - 1) * static_cast<long>(LongStarLayout::kSize);
    return kShortStarsStart + (number - kLastLongStar - 1) * static_cast<long>(ShortStarLayout::kSize);
}

bool starIsShortForm(long number) { return number >= kLastLongStar; }

FilePtr openStars() { return openCatalogue(kCatStars); }

std::string tychoName(uint32_t region, uint32_t number, int component) {
    char buf[32];
    std::snprintf(buf, sizeof buf, "TYC %05u-%04u %1d", region, number, component);
    return buf;
}

void decodeLongStar(const LongStarRecord& r, StarData* out, int readMask) {
    out->isShort = false;
    DecodeCommon(r, out, readMask);
    if (readMask & kReadDescriptive) {
        out->spectral = spectralText(r.spectralCode);
        out->parallax = parallaxFromCode(r.parallaxCode);
        out->parallaxError = r.parallaxError * 0.00001;
        out->tenthsValue = r.tenthsValue * 0.1;
        out->qualityCode = r.qualityCode;
        out->textRow = r.textRow;
    }
    if (readMask & (kReadDesignations | kReadDisplayName)) {
        out->csnRow = r.csnRow;
        out->hr = r.hr;
        out->hd = r.hd;
        out->sao = r.sao;
        out->hip = r.hip;
        out->ppm = r.ppmLow + (r.ppmAdd700000 ? 700000 : 0) + (r.ppmAdd400000 ? 400000 : 0);
        out->gc = r.gc;
        out->bd = r.bd;
        out->cd = r.cd;
        out->cp = r.cp;
        out->nsv = r.nsv;
        out->vrefIndex = r.vrefIndex;
        out->flamsteed = r.flamsteed;
        out->designationConstellation = r.designationConstellation;
        out->bayerLetter = r.bayerLetter;
        out->bayerSuperscript = r.bayerSuperscript;
        out->gscRegion = r.gscRegion;
        out->gscNumber = r.gscNumber;
        out->tychoComponent = r.tychoComponent;
    }
    if (readMask & kReadComponents) out->ccdmRow = r.ccdmRow;
    // A long record's name is its common name from `csn`, which the caller
    // reads by csnRow; without one the name is empty.
    if (readMask & kReadDisplayName) out->name.clear();
}

void decodeShortStar(const ShortStarRecord& r, StarData* out, int readMask) {
    out->isShort = true;
    DecodeCommon(r, out, readMask);
    if (readMask & kReadDescriptive) out->qualityCode = static_cast<int>(r.qualityCode);
    if (readMask & (kReadDesignations | kReadDisplayName)) {
        out->gscRegion = r.gscRegion;
        out->gscNumber = r.gscNumber;
        out->tychoComponent = r.tychoComponent;
    }
    if (readMask & kReadDisplayName) out->name = tychoName(r.gscRegion, r.gscNumber, r.tychoComponent);
}

int readStar(FILE* file, long number, StarData* out, int readMask) {
    if (!file || !out) return 0;
    if (number == -1) {
        const long position = std::ftell(file);
        if (position < 0) return 0;
        number = NumberAt(position);
        if (number > kLastStar) return 0;
    } else {
        const long offset = starRecordOffset(number);
        if (offset < 0 || std::fseek(file, offset, SEEK_SET) != 0) return 0;
    }
    *out = StarData{};
    out->number = number;
    if (starIsShortForm(number)) {
        ShortStarRecord record;
        if (!ReadRecord<ShortStarLayout>(file, record)) return 0;
        decodeShortStar(record, out, readMask);
    } else {
        LongStarRecord record;
        if (!ReadRecord<LongStarLayout>(file, record)) return 0;
        decodeLongStar(record, out, readMask);
    }
    return 1;
}
