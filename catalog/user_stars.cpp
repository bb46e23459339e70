#include "catalog/user_stars.h"

#include <cstring>

#include "astro/text_parse.h"

namespace {

struct StellarShape {
    using Header = StellarHeader;
    using HeaderLayout = StellarHeaderLayout;
    using Record = StellarRecord;
    using Layout = StellarRecordLayout;
    static constexpr int kObjectClass = kClassSupplementalStar;
    static const SupplementalFiles& Files();
    static uint32_t CascadeMask(const Record&) { return classMaskOf(kClassSupplementalStar); }
    static SupplementalPlace Place(const Record& r) {
        return {scaledAngleToRadians(r.ra), scaledAngleToRadians(r.dec), r.magnitude * 0.01};
    }
    static int ParseLine(const char* line, Record* out) { return parseStellarLine(line, out); }
    static bool ScanPasses(const Record&, const SupplementalScanLimits&) { return true; }
};

const SupplementalFiles kStellarFiles = {
    kStellarPath,     kStellarAlphaPath, kStellarPidPath, kStellarCompactPath, true,
    supplemental::ReadCount<StellarShape>, supplemental::ReadKey<StellarShape>,
};

const SupplementalFiles& StellarShape::Files() { return kStellarFiles; }

using S = StellarShape;

}  // namespace

int makeStellarRecord(StellarRecord* out, const std::string& name, double ra, double dec, double magnitude) {
    StellarRecord r;
    if (!scaledToI16(magnitude, 100.0, &r.magnitude)) return 0;
    r.ra = radiansToScaledAngle(ra);
    r.dec = radiansToScaledAngle(dec);
    setSupplementalName(r.name, name);
    *out = r;
    return 1;
}

FilePtr openStellar(long* outCount) { return supplemental::Open<S>(outCount); }
FilePtr openStellarForReading(long* outCount) { return supplemental::OpenForReading<S>(outCount); }

int readStellarRow(FILE* file, StellarRecord* record, long row) {
    return supplemental::ReadRow<S>(file, record, row);
}

int rewriteStellarRow(FILE* file, const StellarRecord& record, long row) {
    return supplemental::RewriteRow<S>(file, record, row);
}

int appendStellar(FILE* file, StellarRecord* record) { return supplemental::Append<S>(file, record); }

int addOrReplaceStellar(FILE* file, StellarRecord* record) {
    return supplemental::AddOrReplace<S>(file, record);
}

long findStellarByName(FILE* file, const char* text, StellarRecord* recordOut) {
    return supplemental::FindByName<S>(file, text, recordOut);
}

int findStellarByPid(FILE* file, uint32_t pid, StellarRecord* recordOut, long* rowOut) {
    return supplemental::FindByPid<S>(file, pid, recordOut, rowOut);
}

int stellarPlace(FILE* file, uint32_t pid, std::string* nameOut, double* raOut, double* decOut,
                 double* magOut) {
    StellarRecord r;
    if (!findStellarByPid(file, pid, &r, nullptr)) return 0;
    char name[34];
    supplementalNameText(r.name, name);
    const SupplementalPlace place = S::Place(r);
    if (nameOut) *nameOut = name;
    if (raOut) *raOut = place.ra;
    if (decOut) *decOut = place.dec;
    if (magOut) *magOut = place.magnitude;
    return 1;
}

int deleteStellarRow(FILE* file, long row, const DeleteCascade& cascade) {
    return supplemental::DeleteRow<S>(file, row, cascade);
}

int deleteStellarByPid(FILE* file, uint32_t pid, const DeleteCascade& cascade) {
    return supplemental::DeleteByPid<S>(file, pid, cascade);
}

int compactStellar(FilePtr& file, const std::vector<uint8_t>& deleteMarks, const DeleteCascade& cascade) {
    return supplemental::Compact<S>(file, deleteMarks, cascade);
}

int beginStellarImport(SupplementalImport* state, const char* textPath, int steps) {
    return supplemental::BeginImport<S>(state, textPath, steps);
}

int nextStellarImportBatch(SupplementalImport* state, long* added, long* replaced, long* bad) {
    return supplemental::NextImportBatch<S>(state, added, replaced, bad);
}

void endStellarImport(SupplementalImport* state) { supplemental::EndImport<S>(state); }

int parseStellarLine(const char* line, StellarRecord* out) {
    if (std::strncmp(line, "S ", 2) != 0) return -1;
    const std::string name = supplementalLineName(line, 2);
    const auto fields = supplementalLineFields(line, kSupplementalFieldColumn);
    if (name.empty() || fields.size() < 4) return 0;
    double ra = 0, dec = 0;
    if (!supplementalPlace(fields[0], fields[1], fields[2], &ra, &dec)) return 0;
    const double magnitude = ParseSexagesimal(fields[3].c_str());
    if (magnitude == kParseFailed) return 0;
    return makeStellarRecord(out, name, ra, dec, magnitude);
}

int beginStellarScan(SupplementalScan* scan, const SupplementalScanLimits& limits) {
    return supplemental::BeginScan<S>(scan, limits);
}

int64_t nextStellarScan(SupplementalScan* scan) { return supplemental::NextScan<S>(scan); }

void endStellarScan(SupplementalScan* scan) { supplemental::EndScan(scan); }

void dropStellarIndexes() { dropSupplementalIndexes(kStellarFiles); }

int readStellarObject(ObjectRecord* record, uint32_t pid) {
    StellarRecord r;
    if (!record || !supplemental::ReadByPid<S>(pid, &r)) return 0;
    supplementalFillObject(record, r.pid, S::Place(r));
    record->sizeMajor = record->sizeMinor = record->sizeDefault = 0;
    record->classMask = classMaskOf(kClassSupplementalStar);
    return 1;
}
