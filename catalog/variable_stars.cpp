#include "catalog/variable_stars.h"

#include <cctype>
#include <cmath>

#include "astro/numeric.h"
#include "catalog/catalogue_codes.h"
#include "catalog/catalogue_files.h"

namespace {

constexpr uint32_t kUnknownMagnitudeCode = 0xFFF;
constexpr uint32_t kUnknownEpoch = 0xFFFFFF;
constexpr long kVrefSize = static_cast<long>(VariableRecordLayout::kSize);
constexpr long kNsvSize = static_cast<long>(NsvRecordLayout::kSize);

VariableName PackedName(uint8_t constellation, uint8_t add9000, uint32_t number) {
    return {constellation, static_cast<long>(number) + (add9000 ? kVariableSearchedNames : 0)};
}

bool SameName(const VariableName& a, const VariableName& b) {
    return a.constellation == b.constellation && a.number == b.number;
}

// The first vref row of a constellation's run.
long RunStartRow(const VariableIndexRow& index) { return index.offset / kVrefSize + 1; }

// The row holding `name` and its record; 0 when it isn't there.
long FindNamedRow(VariableFiles* files, const VariableName& name, VariableData* out) {
    VariableIndexRow index;
    if (!readVariableIndex(files->index.get(), name.constellation, &index)) return 0;
    if (name.number < 1) return 0;
    const long start = RunStartRow(index);
    if (name.number < kVariableSearchedNames) {
        const long row = start + name.number - 1;
        if (!readVariableRow(files->records.get(), row, out)) return 0;
        return SameName(out->name, name) ? row : 0;
    }
    for (long row = start; row < start + index.count; ++row) {
        if (!readVariableRow(files->records.get(), row, out)) return 0;
        if (SameName(out->name, name)) return row;
    }
    return 0;
}

}  // namespace

double variableMagnitudeFromCode(uint32_t code) {
    return code == kUnknownMagnitudeCode ? 99.9 : code * 0.01 - 1.6;
}

VariableName variableFirstName(const VariableRecord& r) {
    return PackedName(r.constellation1, r.add9000First, r.number1);
}

VariableName variableSecondName(const VariableRecord& r) {
    return PackedName(r.constellation2, r.add9000Second, r.number2);
}

void decodeVariable(const VariableRecord& r, VariableData* out) {
    out->record = r;
    out->name = variableFirstName(r);
    out->name2 = variableSecondName(r);
    out->ra = scaledAngleToRadians(r.ra);
    out->dec = scaledAngleToRadians(r.dec);
    // The file holds the motion on the sky; right ascension's rate is that
    // divided by cos(dec).
    const double cosDec = std::cos(out->dec);
    const double onSky = properMotionFromCode(r.pmRaCode) * kRadiansPerArcsecond;
    out->pmRa = cosDec != 0 ? onSky / cosDec : 0;
    out->pmDec = properMotionFromCode(r.pmDecCode) * kRadiansPerArcsecond;
    out->maxMagnitude = variableMagnitudeFromCode(r.maxMagnitudeCode);
    out->minMagnitude = variableMagnitudeFromCode(r.minMagnitudeCode);
    out->epoch = r.epochWhole == kUnknownEpoch ? 0 : r.epochWhole + static_cast<double>(r.epochFraction);
    out->period = r.period;
    out->star1 = static_cast<long>(r.star1);
    out->star2 = static_cast<long>(r.star2);
}

void decodeNsv(const NsvRecord& r, NsvData* out) {
    out->record = r;
    out->ra = scaledAngleToRadians(r.ra);
    out->dec = scaledAngleToRadians(r.dec);
    out->magnitude1 = variableMagnitudeFromCode(r.magnitudeCode1);
    out->magnitude2 = variableMagnitudeFromCode(r.magnitudeCode2);
    // A second value below the first can't be a fainter limit: it is the
    // amplitude.
    if (out->magnitude1 < 90 && out->magnitude2 < 90 && out->magnitude2 < out->magnitude1) {
        out->magnitude2 += out->magnitude1;
    }
    out->star1 = static_cast<long>(r.star1);
    out->star2 = static_cast<long>(r.star2);
}

FilePtr openVindex() { return openCatalogue(kCatVindex); }
FilePtr openVref() { return openCatalogue(kCatVref); }
FilePtr openNsvref() { return openCatalogue(kCatNsvref); }

VariableFilesPtr openVariables() {
    auto files = std::make_unique<VariableFiles>();
    files->index = openVindex();
    if (!files->index) return nullptr;
    files->records = openVref();
    if (!files->records) return nullptr;
    return files;
}

void closeVariables(VariableFilesPtr& files) { files.reset(); }

int readVariableIndex(FILE* vindex, int constellation, VariableIndexRow* out) {
    if (constellation < 1 || constellation > kVariableConstellationLimit) return 0;
    uint8_t image[VariableIndexLayout::kSize];
    const long offset = (constellation - 1) * static_cast<long>(sizeof image);
    if (!readAt(vindex, offset, image, sizeof image)) return 0;
    DecodeRecord<VariableIndexLayout>(image, *out);
    return 1;
}

int readVariableRow(FILE* vref, long row, VariableData* out) {
    if (row < 1 || row > kLastVrefRow) return 0;
    uint8_t image[VariableRecordLayout::kSize];
    if (!readAt(vref, (row - 1) * kVrefSize, image, sizeof image)) return 0;
    VariableRecord record;
    DecodeRecord<VariableRecordLayout>(image, record);
    decodeVariable(record, out);
    out->row = row;
    return 1;
}

int readVariables(VariableFiles* files, const VariableName* names, int count, VariableData* out) {
    if (!files || !files->index || !files->records) return 0;
    if (count > kMaxVariableNames) count = kMaxVariableNames;
    int read = 0;
    while (read < count && FindNamedRow(files, names[read], &out[read]) != 0) ++read;
    if (read < count) out[read] = VariableData{};
    return read;
}

int readVariable(VariableFiles* files, int constellation, long number, VariableData* out) {
    const VariableName name{constellation, number};
    return readVariables(files, &name, 1, out);
}

long nsvRow(long nsv, char suffix) {
    if (nsv < 1) return -1;
    if (std::isalpha(static_cast<unsigned char>(suffix))) return kNsvSuffixRow;
    return nsv - 1;
}

int readNsv(FILE* nsvref, long nsv, char suffix, NsvData* out) {
    const long row = nsvRow(nsv, suffix);
    if (row < 0) return 0;
    uint8_t image[NsvRecordLayout::kSize];
    if (!readAt(nsvref, row * kNsvSize, image, sizeof image)) return 0;
    NsvRecord record;
    DecodeRecord<NsvRecordLayout>(image, record);
    decodeNsv(record, out);
    out->row = row;
    return 1;
}
