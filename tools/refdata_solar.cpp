#include "tools/refdata_solar.h"

#include <cstdlib>

#include "astro/nutation.h"
#include "astro/planet_tables.h"
#include "base/le_bytes.h"
#include "base/record_layout.h"
#include "tools/refdata_sources.h"
#include "tools/refdata_vsop87.h"

namespace {

using Image = std::vector<uint8_t>;

// Each record of PLANETS.NDX: the VSOP87 file it comes from, the version
// and body its headers must name, and how many of the largest terms each
// series keeps (coordinate L, B, R; powers of time 0 to 5). These are the
// abridged series of Meeus's Astronomical Algorithms, Appendix III; record
// 0, the Earth on the ecliptic of J2000, takes his replacement series for
// L1 to L4 and B1 to B4 and the date Earth's counts for the rest.
struct PlanetSource {
    const char* file;
    int version;
    const char* body;
    int count[kSeriesCoordinates][kSeriesPowers];
};

constexpr PlanetSource kPlanetSources[kPlanetRecords] = {
    {"VSOP87B.ear", 2, "EARTH", {{64, 34, 20, 7, 2, 1}, {5, 7, 4, 3, 2, 0}, {40, 10, 6, 2, 1, 0}}},
    {"VSOP87D.mer", 4, "MERCURY", {{38, 16, 10, 8, 6, 1}, {14, 11, 9, 7, 2, 0}, {13, 8, 7, 5, 0, 0}}},
    {"VSOP87D.ven", 4, "VENUS", {{24, 12, 8, 3, 3, 1}, {9, 4, 4, 4, 1, 0}, {12, 3, 3, 1, 1, 0}}},
    {"VSOP87D.ear", 4, "EARTH", {{64, 34, 20, 7, 3, 1}, {5, 2, 0, 0, 0, 0}, {40, 10, 6, 2, 1, 0}}},
    {"VSOP87D.mar", 4, "MARS", {{69, 46, 33, 12, 8, 2}, {16, 9, 7, 4, 3, 0}, {45, 27, 11, 6, 4, 0}}},
    {"VSOP87D.jup", 4, "JUPITER",
     {{64, 61, 57, 39, 19, 5}, {26, 22, 14, 9, 6, 1}, {46, 43, 36, 28, 15, 7}}},
    {"VSOP87D.sat", 4, "SATURN",
     {{90, 79, 63, 48, 27, 12}, {34, 32, 29, 21, 12, 2}, {44, 38, 32, 28, 23, 18}}},
    {"VSOP87D.ura", 4, "URANUS", {{91, 57, 35, 18, 4, 0}, {28, 20, 11, 4, 1, 0}, {59, 35, 18, 10, 2, 0}}},
    {"VSOP87D.nep", 4, "NEPTUNE", {{38, 18, 7, 4, 1, 0}, {17, 13, 6, 4, 1, 0}, {32, 15, 5, 1, 0, 0}}},
};

template <class Layout, class R>
void Append(Image& image, const R& record) {
    const auto bytes = RecordImage<Layout>(record);
    image.insert(image.end(), bytes.begin(), bytes.end());
}

bool MakePlanetImages(const std::string& source, Image* index, Image* terms,
                      std::string* error) {
    long written = 0;
    for (const PlanetSource& planet : kPlanetSources) {
        const std::string path = source + "/" + planet.file;
        Vsop87File file;
        if (!ReadVsop87(path, &file, error)) return false;
        if (file.version != planet.version || file.body != planet.body) {
            *error = path + ": not the series of " + planet.body + " in the expected version";
            return false;
        }
        PlanetIndexRecord record;
        record.firstTerm = static_cast<int16_t>(written);
        for (int c = 0; c < kSeriesCoordinates; ++c)
            for (int p = 0; p < kSeriesPowers; ++p) {
                std::vector<PlanetTerm> kept;
                if (!LargestTerms(file.series[c][p], planet.count[c][p], &kept)) {
                    *error = path + ": series " + "LBR"[c] + std::to_string(p) + " has " +
                             std::to_string(file.series[c][p].size()) + " terms, fewer than " +
                             std::to_string(planet.count[c][p]);
                    return false;
                }
                record.count[c][p] = static_cast<int16_t>(kept.size());
                for (const PlanetTerm& t : kept) Append<PlanetTermLayout>(*terms, t);
                written += static_cast<long>(kept.size());
            }
        Append<PlanetIndexLayout>(*index, record);
    }
    // The first-term index of the last record must fit its i16 too.
    if (written > 32767) {
        *error = "the planet series hold more terms than PLANETS.NDX can index";
        return false;
    }
    return true;
}

// The named columns of a row as whole numbers; none may be empty.
template <size_t N>
bool WholeColumns(const CsvRow& row, const char* const (&names)[N], long (&values)[N]) {
    for (size_t i = 0; i < N; ++i) {
        const auto field = row.find(names[i]);
        if (field == row.end() || field->second.empty() || !CsvWhole(field->second, 0, &values[i]))
            return false;
    }
    return true;
}

// No multiplier passes the largest multiple its routine tabulates.
template <size_t N>
bool MultipliersFit(const long* values, const int (&largest)[N]) {
    for (size_t i = 0; i < N; ++i)
        if (std::labs(values[i]) > largest[i]) return false;
    return true;
}

std::string RowError(const std::string& path, const CsvRow& row, const char* what) {
    const auto line = row.find("#line");
    return path + " line " + (line == row.end() ? std::string("?") : line->second) + ": " + what;
}

bool ReadRows(const std::string& path, size_t expected, std::vector<CsvRow>* rows,
              std::string* error) {
    if (!ReadCatalogueCsv(path, rows, error)) return false;
    if (rows->size() != expected) {
        *error = path + ": " + std::to_string(rows->size()) + " rows, expected " +
                 std::to_string(expected);
        return false;
    }
    return true;
}

// Each table row's multipliers of D, M, M', F and its coefficients.
bool MakeMoonImage(const std::string& source, Image* image, std::string* error) {
    const std::string lrPath = source + "/moon-lr.csv", bPath = source + "/moon-b.csv";
    std::vector<CsvRow> lr, b;
    if (!ReadRows(lrPath, kMoonRows, &lr, error) || !ReadRows(bPath, kMoonRows, &b, error))
        return false;
    for (const CsvRow& row : lr) {
        static constexpr const char* kNames[] = {"D", "M", "Mp", "F", "sigma_l", "sigma_r"};
        long v[6];
        if (!WholeColumns(row, kNames, v) || !MultipliersFit(v, kMoonMaxMultiple)) {
            *error = RowError(lrPath, row, "not a row of six whole numbers in range");
            return false;
        }
        MoonLongitudeRow r;
        for (int i = 0; i < 4; ++i) r.multiplier[i] = static_cast<int32_t>(v[i]);
        r.longitudeSine = static_cast<int32_t>(v[4]);
        r.distanceCosine = static_cast<int32_t>(v[5]);
        Append<MoonLongitudeLayout>(*image, r);
    }
    for (const CsvRow& row : b) {
        static constexpr const char* kNames[] = {"D", "M", "Mp", "F", "sigma_b"};
        long v[5];
        if (!WholeColumns(row, kNames, v) || !MultipliersFit(v, kMoonMaxMultiple)) {
            *error = RowError(bPath, row, "not a row of five whole numbers in range");
            return false;
        }
        MoonLatitudeRow r;
        for (int i = 0; i < 4; ++i) r.multiplier[i] = static_cast<int32_t>(v[i]);
        r.latitudeSine = static_cast<int32_t>(v[4]);
        Append<MoonLatitudeLayout>(*image, r);
    }
    return true;
}

// The multipliers of J, S, P of every row, then the amplitudes of every
// row, as the table's units give them.
bool MakePlutoImage(const std::string& source, Image* image, std::string* error) {
    const std::string path = source + "/pluto-meeus37.csv";
    std::vector<CsvRow> rows;
    if (!ReadRows(path, kPlutoRows, &rows, error)) return false;
    Image amplitudes;
    for (const CsvRow& row : rows) {
        static constexpr const char* kNames[] = {"i", "j", "k", "lon_A", "lon_B",
                                                 "lat_A", "lat_B", "rad_A", "rad_B"};
        long v[9];
        if (!WholeColumns(row, kNames, v) || !MultipliersFit(v, kPlutoMaxMultiple)) {
            *error = RowError(path, row, "not a row of nine whole numbers in range");
            return false;
        }
        PlutoMultiplierRow m;
        for (int i = 0; i < 3; ++i) m.multiplier[i] = static_cast<int16_t>(v[i]);
        Append<PlutoMultiplierLayout>(*image, m);
        PlutoAmplitudeRow a;
        for (int i = 0; i < 6; ++i) a.amplitude[i] = static_cast<double>(v[3 + i]);
        Append<PlutoAmplitudeLayout>(amplitudes, a);
    }
    image->insert(image->end(), amplitudes.begin(), amplitudes.end());
    return true;
}

// The series' first row, -171996 sin Omega, is coded in the nutation
// routine and left out; the other rows become nine i16 each.
bool MakeNutationImage(const std::string& source, Image* image, std::string* error) {
    const std::string path = source + "/nutation-iau1980.csv";
    std::vector<CsvRow> rows;
    if (!ReadRows(path, kNutationRows + 1, &rows, error)) return false;
    static constexpr const char* kNames[kNutationColumns] = {"l",   "lp",   "F",   "D",   "Om",
                                                             "psi", "psiT", "eps", "epsT"};
    static constexpr long kLeading[kNutationColumns] = {0, 0, 0, 0, 1, -171996, -1742, 92025, 89};
    for (size_t r = 0; r < rows.size(); ++r) {
        long v[kNutationColumns];
        bool fits = WholeColumns(rows[r], kNames, v) && MultipliersFit(v, kNutationMaxMultiple);
        for (int i = 0; i < kNutationColumns && fits; ++i)
            fits = r == 0 ? v[i] == kLeading[i] : v[i] >= -32768 && v[i] <= 32767;
        if (!fits) {
            *error = RowError(path, rows[r], r == 0 ? "not the leading term -171996 sin Omega"
                                                    : "not a row of nine i16 in range");
            return false;
        }
        if (r == 0) continue;
        for (long value : v) {
            uint8_t b[2];
            le::PutI16(b, static_cast<int16_t>(value));
            image->insert(image->end(), b, b + 2);
        }
    }
    return true;
}

}  // namespace

bool MakeSolarImages(const std::string& source, std::vector<SolarFile>* out,
                     std::string* error) {
    out->assign({{kPlanetIndexFileName, {}},
                 {kPlanetTermFileName, {}},
                 {kMoonTableFileName, {}},
                 {kPlutoTableFileName, {}},
                 {kNutationFileName, {}}});
    return MakePlanetImages(source, &(*out)[0].bytes, &(*out)[1].bytes, error) &&
           MakeMoonImage(source, &(*out)[2].bytes, error) &&
           MakePlutoImage(source, &(*out)[3].bytes, error) &&
           MakeNutationImage(source, &(*out)[4].bytes, error);
}
