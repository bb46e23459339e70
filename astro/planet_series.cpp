#include "astro/planet_series.h"

#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "astro/numeric.h"
#include "astro/planet_tables.h"
#include "astro/spherical.h"
#include "astro/two_block_table.h"
#include "base/file_utils.h"
#include "base/record_layout.h"

namespace {

// One record of the planet series: its counts and its own block of terms.
struct PlanetSeries {
    int16_t count[kSeriesCoordinates][kSeriesPowers] = {};
    std::vector<PlanetTerm> terms;
};

// Each record's block as read; a failed open keeps the records read before
// it (PlanetFilesClose frees them), and only a whole read counts as loaded.
std::unique_ptr<PlanetSeries[]> gPlanets;
bool gPlanetsComplete = false;
std::unique_ptr<PlutoMultiplierRow[]> gPlutoMultipliers;
std::unique_ptr<PlutoAmplitudeRow[]> gPlutoAmplitudes;

constexpr double kArcSecond = kRadiansPerDegree / 3600.0;

std::string PathIn(const char* folder, const char* name) { return std::string(folder ? folder : "") + name; }

bool ReadExactly(FILE* f, uint8_t* bytes, size_t size) { return std::fread(bytes, 1, size, f) == size; }

// The terms of one record: one seek to its first term, one read of the sum
// of its counts.
// A record whose terms are not all there is left empty.
bool ReadTerms(FILE* f, const PlanetIndexRecord& index, PlanetSeries* out) {
    long total = 0;
    for (const auto& coordinate : index.count)
        for (const int16_t n : coordinate) {
            if (n < 0) return false;
            total += n;
        }
    std::vector<uint8_t> bytes(static_cast<size_t>(total) * PlanetTermLayout::kSize);
    if (index.firstTerm < 0 || std::fseek(f, index.firstTerm * static_cast<long>(PlanetTermLayout::kSize), SEEK_SET) != 0)
        return false;
    if (!ReadExactly(f, bytes.data(), bytes.size())) return false;
    out->terms.resize(static_cast<size_t>(total));
    for (long i = 0; i < total; ++i) DecodeRecord<PlanetTermLayout>(bytes.data() + i * PlanetTermLayout::kSize, out->terms[i]);
    for (int c = 0; c < kSeriesCoordinates; ++c)
        for (int p = 0; p < kSeriesPowers; ++p) out->count[c][p] = index.count[c][p];
    return true;
}

// The coordinates of one record: each power's sum of A cos(B + C tau),
// times tau to that power.
void SumSeries(const PlanetSeries& series, double tau, double result[3]) {
    size_t next = 0;
    for (int c = 0; c < kSeriesCoordinates; ++c) {
        double value = 0.0, power = 1.0;
        for (int p = 0; p < kSeriesPowers; ++p) {
            double sum = 0.0;
            for (int i = 0; i < series.count[c][p]; ++i, ++next) {
                const PlanetTerm& t = series.terms[next];
                sum += t.a * std::cos(t.b + t.c * tau);
            }
            value += sum * power;
            power *= tau;
        }
        result[c] = value;
    }
}

// From the dynamical ecliptic of VSOP87 to the FK5 frame.
void ToFk5(double t, double result[3]) {
    const double l1 = result[0] - (1.397 * t + 0.00031 * t * t) * kRadiansPerDegree;
    const double c = std::cos(l1), s = std::sin(l1);
    const double cosB = std::cos(result[1]);
    if (cosB != 0.0) result[0] += (-0.09033 + 0.03916 * (c + s) * std::tan(result[1])) * kArcSecond;
    result[1] += 0.03916 * (c - s) * kArcSecond;
}

void PlanetHelio(int record, double t, double result[3]) {
    result[0] = result[1] = result[2] = 0.0;
    if (!gPlanets || record < 0 || record >= kPlanetRecords) return;
    SumSeries(gPlanets[record], t / 10.0, result);
    result[0] = Wrap(result[0], kTwoPi);
    ToFk5(t, result);
}

// Pluto on the J2000 ecliptic from its 43 periodic terms.
void PlutoHelio(double t, double result[3]) {
    result[0] = result[1] = result[2] = 0.0;
    if (!gPlutoMultipliers) return;
    const double angles[3] = {(34.35 + 3034.9057 * t) * kRadiansPerDegree,
                              (50.08 + 1222.1138 * t) * kRadiansPerDegree,
                              (238.96 + 144.96 * t) * kRadiansPerDegree};
    double sines[3][kPlutoMaxMultiple[2] + 1], cosines[3][kPlutoMaxMultiple[2] + 1];
    for (int a = 0; a < 3; ++a) {
        sines[a][0] = 0.0;
        cosines[a][0] = 1.0;
        SinCosMultiples(angles[a], kPlutoMaxMultiple[a], sines[a], cosines[a]);
    }
    double sum[3] = {};
    for (int row = 0; row < kPlutoRows; ++row) {
        double s = 0.0, c = 1.0;
        for (int a = 0; a < 3; ++a) {
            const int k = gPlutoMultipliers[row].multiplier[a];
            if (k == 0 || std::abs(k) > kPlutoMaxMultiple[a]) continue;
            const double sk = k < 0 ? -sines[a][-k] : sines[a][k];
            const double ck = cosines[a][std::abs(k)];
            const double s2 = s * ck + c * sk;
            c = c * ck - s * sk;
            s = s2;
        }
        const double* amp = gPlutoAmplitudes[row].amplitude;
        for (int k = 0; k < 3; ++k) sum[k] += amp[2 * k] * s + amp[2 * k + 1] * c;
    }
    result[0] = Wrap((238.956785 + 144.96 * t + 0.000001 * sum[0]) * kRadiansPerDegree, kTwoPi);
    result[1] = (-3.908202 + 0.000001 * sum[1]) * kRadiansPerDegree;
    result[2] = 40.7247248 + 0.0000001 * sum[2];
}

}  // namespace

int PlanetSeriesLoad(const char* folder) {
    PlanetSeriesFree();
    FilePtr ndx = OpenFile(PathIn(folder, kPlanetIndexFileName).c_str(), "rb");
    FilePtr bin = OpenFile(PathIn(folder, kPlanetTermFileName).c_str(), "rb");
    if (!ndx || !bin) return 0;
    uint8_t image[kPlanetRecords * PlanetIndexLayout::kSize];
    if (!ReadExactly(ndx.get(), image, sizeof image)) return 0;
    gPlanets = std::make_unique<PlanetSeries[]>(kPlanetRecords);
    for (int r = 0; r < kPlanetRecords; ++r) {
        PlanetIndexRecord index;
        DecodeRecord<PlanetIndexLayout>(image + r * PlanetIndexLayout::kSize, index);
        if (!ReadTerms(bin.get(), index, &gPlanets[r])) return 0;
    }
    gPlanetsComplete = true;
    return 1;
}

int PlutoTableLoad(const char* folder) {
    PlutoTableFree();
    return ReadTwoBlockTable<PlutoMultiplierLayout, PlutoMultiplierRow, PlutoAmplitudeLayout, PlutoAmplitudeRow>(
               folder, kPlutoTableFileName, kPlutoRows, &gPlutoMultipliers, &gPlutoAmplitudes)
               ? 1
               : 0;
}

void PlanetSeriesFree() {
    gPlanets.reset();
    gPlanetsComplete = false;
}

bool PlanetSeriesLoaded() { return gPlanetsComplete; }

bool PlutoTableLoaded() { return gPlutoMultipliers != nullptr; }

void PlutoTableFree() {
    gPlutoMultipliers.reset();
    gPlutoAmplitudes.reset();
}

void HelioSpherical(int bodyId, double tDyn, double result[3]) {
    if (bodyId == kPluto)
        PlutoHelio(tDyn, result);
    else
        PlanetHelio(bodyId, tDyn, result);
}

void EarthHeliocentric(const Instant* instant, double result[3]) {
    HelioSpherical(kEarth, instant ? instant->tDyn : 0.0, result);
}

void SunGeocentric(const double earth[3], double result[3]) {
    const double zero[3] = {0.0, 0.0, 0.0};
    VectorDifference(zero, earth, result);
}

void SunRectangular(double tDyn, int earthFrame, double obliquity, double vector[3]) {
    double earth[3];
    HelioSpherical(earthFrame ? kEarth : 0, tDyn, earth);
    const double l = earth[0] + kPi, b = -earth[1], r = earth[2];
    const double x = r * std::cos(b) * std::cos(l), y = r * std::cos(b) * std::sin(l), z = r * std::sin(b);
    if (earthFrame) {
        const double c = std::cos(obliquity), s = std::sin(obliquity);
        vector[0] = x;
        vector[1] = y * c - z * s;
        vector[2] = y * s + z * c;
        return;
    }
    vector[0] = x + 4.4036e-07 * y - 1.90919e-07 * z;
    vector[1] = -4.79966e-07 * x + 0.917482137087 * y - 0.397776982902 * z;
    vector[2] = 0.397776982902 * y + 0.917482137087 * z;
}
