#include "tools/refdata_constellations.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <map>
#include <numbers>
#include <tuple>

#include "astro/precession.h"
#include "base/record_layout.h"
#include "catalog/catalogue_codes.h"
#include "catalog/constellation_files.h"
#include "catalog/constellation_names.h"
#include "catalog/index_runs.h"
#include "tools/refdata_sources.h"

namespace {

constexpr double kHour = std::numbers::pi / 12.0;
constexpr double kDegree = std::numbers::pi / 180.0;
// B1875.0 in Julian centuries from J2000.0, the epoch of the boundaries.
constexpr double kBoundaryEpoch = -1.2499794661190966;
// The abbreviation row of Serpens: its zone 75 is Caput, 76 Cauda, and the
// zones after it are one above their rows.
constexpr int kSerpensRow = 75;

// One row of the boundary table: RA in hours, Dec in degrees.
struct BoundaryRow {
    double raLow = 0;
    double raHigh = 0;
    double decLow = 0;
    int zone = 0;
};

// A piece of a zone: RA from `raLow` to `raHigh` hours, Dec between the
// two bounds.
struct Piece {
    int zone = 0;
    double raLow = 0;
    double raHigh = 0;
    double decLow = 0;
    double decHigh = 0;
};

int ZoneOf(int row, double raLow, double raHigh) {
    if (row < kSerpensRow) return row;
    if (row > kSerpensRow) return row + 1;
    // Caput lies within 15.08 to 16.27 hours, Cauda within 17.17 to 18.87
    // (the table's bounds are 15.0833, 16.2667, 17.1667, 18.8667).
    if (raLow >= 15.0 && raHigh <= 16.3) return kSerpensRow;
    if (raLow >= 17.1 && raHigh <= 18.9) return kSerpensRow + 1;
    return -1;
}

bool ReadBoundaries(const std::string& path, std::vector<BoundaryRow>* out, std::string* error) {
    std::vector<CsvRow> rows;
    if (!ReadCatalogueCsv(path, &rows, error)) return false;
    for (CsvRow& row : rows) {
        BoundaryRow b;
        const int abbreviationRow = constellationRowOf(row["con"].c_str());
        if (!CsvReal(row["ra_low_h"], -1, &b.raLow) || !CsvReal(row["ra_high_h"], -1, &b.raHigh) ||
            !CsvReal(row["dec_low_deg"], -99, &b.decLow) || abbreviationRow < 0 || b.raLow < 0 ||
            b.raHigh > 24 || b.raLow >= b.raHigh ||
            (b.zone = ZoneOf(abbreviationRow, b.raLow, b.raHigh)) < 0) {
            *error = path + " line " + row["#line"] + ": a field cannot be read";
            return false;
        }
        out->push_back(b);
    }
    return true;
}

// Turns the first-match table into pieces with both Dec bounds: the RA
// circle is cut at every row boundary, and within each cut the rows that
// cover it, in table order, each take the band from their own low Dec up
// to the low Dec of the row before (the first up to the pole).
std::vector<Piece> PiecesOf(const std::vector<BoundaryRow>& rows) {
    std::vector<double> cuts;
    for (const BoundaryRow& r : rows) {
        cuts.push_back(r.raLow);
        cuts.push_back(r.raHigh);
    }
    std::sort(cuts.begin(), cuts.end());
    cuts.erase(std::unique(cuts.begin(), cuts.end()), cuts.end());
    std::vector<Piece> pieces;
    // Pieces of a zone and band that meet in RA grow into one.
    std::map<std::tuple<int, double, double>, size_t> open;
    for (size_t c = 0; c + 1 < cuts.size(); ++c) {
        const double a = cuts[c], b = cuts[c + 1];
        double top = 90;
        for (const BoundaryRow& r : rows) {
            if (r.raLow > a || r.raHigh < b || r.decLow >= top) continue;
            const auto key = std::make_tuple(r.zone, r.decLow, top);
            const auto it = open.find(key);
            if (it != open.end() && pieces[it->second].raHigh == a) {
                pieces[it->second].raHigh = b;
            } else {
                open[key] = pieces.size();
                pieces.push_back({r.zone, a, b, r.decLow, top});
            }
            top = r.decLow;
            if (top <= -90) break;
        }
    }
    return pieces;
}

template <class Layout, class R>
void Append(std::vector<uint8_t>& image, const R& record) {
    const auto bytes = RecordImage<Layout>(record);
    image.insert(image.end(), bytes.begin(), bytes.end());
}

int32_t Hours(double hours) { return radiansToScaledAngle(hours * kHour); }
int32_t Degrees(double degrees) { return radiansToScaledAngle(degrees * kDegree); }

// The rectangles of each zone in zone order after a head of 89 runs. A
// piece 12 hours wide or more is cut into pieces below 8 hours, since the
// reader takes bounds 12 hours apart as a rectangle across 0h.
bool RectangleImage(const std::vector<Piece>& pieces, ConstellationImages* out,
                    std::string* error) {
    std::vector<std::vector<ConstellationRectangleRecord>> zones(kConstellationZones);
    for (const Piece& p : pieces) {
        const int parts =
            p.raHigh - p.raLow >= 12 ? static_cast<int>(std::ceil((p.raHigh - p.raLow) / 8)) : 1;
        const double step = (p.raHigh - p.raLow) / parts;
        for (int i = 0; i < parts; ++i) {
            ConstellationRectangleRecord r;
            r.raFirst = Hours(p.raLow + i * step);
            r.raSecond = Hours(i + 1 == parts ? p.raHigh : p.raLow + (i + 1) * step);
            r.decFirst = Degrees(p.decLow);
            r.decSecond = Degrees(p.decHigh);
            zones[p.zone].push_back(r);
        }
    }
    std::vector<uint8_t> body;
    uint32_t offset = kConstellationZones * ShortRunLayout::kSize;
    for (int zone = 0; zone < kConstellationZones; ++zone) {
        if (zones[zone].size() > 255) {
            *error = "constellation zone " + std::to_string(zone) + " needs " +
                     std::to_string(zones[zone].size()) + " rectangles";
            return false;
        }
        ShortRunHead head;
        head.offset = offset;
        head.count = static_cast<uint8_t>(zones[zone].size());
        Append<ShortRunLayout>(out->conrect, head);
        for (const ConstellationRectangleRecord& r : zones[zone]) {
            Append<ConstellationRectangleLayout>(body, r);
            offset += ConstellationRectangleLayout::kSize;
            ++out->rectangles;
        }
    }
    out->conrect.insert(out->conrect.end(), body.begin(), body.end());
    return true;
}

// The J2000 box of a zone: the edges of its pieces, sampled and precessed
// from B1875.0; the RA span is the circle less the widest gap between the
// sampled RAs, the whole circle for a zone round a pole.
ConstellationBoxRecord BoxOf(const std::vector<Piece>& pieces, int zone) {
    PrecessionContext context;
    PrecessionPrepare(&context, kBoundaryEpoch, 0.0, kFk5, kFk5);
    std::vector<double> ras;
    double decLow = 90, decHigh = -90;
    bool northPole = false, southPole = false;
    for (const Piece& p : pieces) {
        if (p.zone != zone) continue;
        northPole = northPole || p.decHigh >= 90;
        southPole = southPole || p.decLow <= -90;
        const int raSteps = std::max(1, static_cast<int>(std::ceil((p.raHigh - p.raLow) * 4)));
        const int decSteps = std::max(1, static_cast<int>(std::ceil(p.decHigh - p.decLow)));
        for (int i = 0; i <= raSteps; ++i)
            for (int j = 0; j <= decSteps; ++j) {
                if (i != 0 && i != raSteps && j != 0 && j != decSteps) continue;
                double ra = (p.raLow + (p.raHigh - p.raLow) * i / raSteps) * kHour;
                double dec = (p.decLow + (p.decHigh - p.decLow) * j / decSteps) * kDegree;
                PrecessionApply(&context, &ra, &dec, 0.0, 0.0, 0);
                ra = std::fmod(ra + 2 * std::numbers::pi, 2 * std::numbers::pi);
                ras.push_back(ra);
                decLow = std::min(decLow, dec / kDegree);
                decHigh = std::max(decHigh, dec / kDegree);
            }
    }
    // The pole zones reach a degree or more from the pole, so they hold the
    // J2000 pole as well.
    if (northPole) decHigh = 90;
    if (southPole) decLow = -90;
    ConstellationBoxRecord box;
    box.decLow = Degrees(decLow);
    box.decHigh = Degrees(decHigh);
    std::sort(ras.begin(), ras.end());
    double gap = ras.front() + 2 * std::numbers::pi - ras.back();
    double low = ras.front(), high = ras.back();
    for (size_t i = 1; i < ras.size(); ++i)
        if (ras[i] - ras[i - 1] > gap) {
            gap = ras[i] - ras[i - 1];
            low = ras[i];
            high = ras[i - 1];
        }
    if (northPole || southPole) {
        low = 0;
        high = 2 * std::numbers::pi;
    }
    box.raLow = radiansToScaledAngle(low);
    box.raHigh = radiansToScaledAngle(high);
    return box;
}

// Serpens Cauda's label point, from the note of the Serpens row.
bool CaudaLabel(const std::string& note, double* ra, double* dec) {
    const size_t at = note.find("Cauda");
    if (at == std::string::npos) return false;
    const size_t label = note.find("label point RA ", at);
    return label != std::string::npos &&
           std::sscanf(note.c_str() + label, "label point RA %lf Dec %lf", ra, dec) == 2;
}

bool NameImage(const std::string& path, ConstellationImages* out, std::string* error) {
    std::vector<CsvRow> rows;
    if (!ReadCatalogueCsv(path, &rows, error)) return false;
    std::vector<ConstellationNameRecord> names(kConstellationZones);
    std::vector<bool> seen(kConstellationZones, false);
    for (CsvRow& row : rows) {
        const int abbreviationRow = constellationRowOf(row["abbr"].c_str());
        double ra = 0, dec = 0;
        if (abbreviationRow < 0 || !CsvReal(row["label_ra_deg"], -1, &ra) ||
            !CsvReal(row["label_dec_deg"], -99, &dec) || row["name"].empty() ||
            row["name"].size() >= sizeof(ConstellationNameRecord::name)) {
            *error = path + " line " + row["#line"] + ": a field cannot be read";
            return false;
        }
        struct Part {
            int zone;
            std::string name;
            double ra, dec;
        };
        std::vector<Part> parts;
        if (abbreviationRow == kSerpensRow) {
            double caudaRa = 0, caudaDec = 0;
            if (!CaudaLabel(row["note"], &caudaRa, &caudaDec)) {
                *error = path + " line " + row["#line"] + ": no label point for Serpens Cauda";
                return false;
            }
            parts.push_back({kSerpensRow, row["name"] + " Caput", ra, dec});
            parts.push_back({kSerpensRow + 1, row["name"] + " Cauda", caudaRa, caudaDec});
        } else {
            parts.push_back({ZoneOf(abbreviationRow, 0, 0), row["name"], ra, dec});
        }
        for (const Part& p : parts) {
            ConstellationNameRecord& r = names[p.zone];
            std::memset(r.name, 0, sizeof r.name);
            std::memcpy(r.name, p.name.data(), std::min(p.name.size(), sizeof r.name - 1));
            r.ra = Degrees(p.ra);
            r.dec = Degrees(p.dec);
            seen[p.zone] = true;
        }
    }
    for (int zone = 0; zone < kConstellationZones; ++zone) {
        if (!seen[zone]) {
            *error = path + ": no row for constellation zone " + std::to_string(zone);
            return false;
        }
        Append<ConstellationNameLayout>(out->connames, names[zone]);
    }
    return true;
}

}  // namespace

bool MakeConstellationImages(const std::string& source, ConstellationImages* out,
                             std::string* error) {
    std::vector<BoundaryRow> rows;
    if (!ReadBoundaries(source + "/constellation-boundaries-b1875.csv", &rows, error) ||
        !NameImage(source + "/constellations.csv", out, error))
        return false;
    const std::vector<Piece> pieces = PiecesOf(rows);
    if (!RectangleImage(pieces, out, error)) return false;
    for (int zone = 0; zone < kConstellationZones; ++zone)
        Append<ConstellationBoxLayout>(out->conbound, BoxOf(pieces, zone));
    return true;
}
