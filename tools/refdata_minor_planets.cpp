#include "tools/refdata_minor_planets.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <map>

#include "astro/calendar.h"
#include "astro/orbit.h"
#include "base/record_layout.h"
#include "catalog/minor_planet_files.h"
#include "tools/refdata_sources.h"

namespace {

using Image = std::vector<uint8_t>;

template <class Layout, class R>
void Append(Image& image, const R& record) {
    const auto bytes = RecordImage<Layout>(record);
    image.insert(image.end(), bytes.begin(), bytes.end());
}

struct Planet {
    long number = 0;
    std::string name;
    MpElements elements;
    MpData data;
};

std::string Upper(std::string s) {
    for (char& c : s) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return s;
}

bool ReadPlanet(const CsvRow& row, Planet* p, std::string* error) {
    double jd = 0, m = 0, peri = 0, node = 0, incl = 0, e = 0, a = 0, h = 0, g = 0;
    const auto field = [&row](const char* key) {
        const auto at = row.find(key);
        return at == row.end() ? std::string() : at->second;
    };
    if (!CsvWhole(field("number"), 0, &p->number) || !CsvReal(field("epoch_jd_tt"), 0, &jd) ||
        !CsvReal(field("M_deg"), 0, &m) || !CsvReal(field("peri_deg"), 0, &peri) ||
        !CsvReal(field("node_deg"), 0, &node) || !CsvReal(field("incl_deg"), 0, &incl) ||
        !CsvReal(field("e"), 0, &e) || !CsvReal(field("a_au"), 0, &a) || !CsvReal(field("H"), 0, &h) ||
        !CsvReal(field("G"), 0, &g)) {
        *error = "minor-planets.csv line " + field("#line") + ": a field does not read";
        return false;
    }
    p->name = field("name");
    const double epoch = JdToCenturies(jd);
    OrbitRecord orbit;
    if (a <= 0 || e >= 1 || !OrbitInit(&orbit, 0.0, epoch, m, a, 0.0, e, peri, node, incl, 0.0, h, g, 2)) {
        *error = "minor-planets.csv line " + field("#line") + ": the elements make no ellipse";
        return false;
    }
    p->elements.perihelionEpoch = orbit.perihelionEpoch;
    p->elements.semiMajorAxis = a;
    p->elements.eccentricity = e;
    p->elements.inclination = static_cast<float>(incl);
    p->elements.argPerihelion = static_cast<float>(peri);
    p->elements.node = static_cast<float>(node);
    p->data.number = static_cast<uint32_t>(p->number);
    p->data.sourceEpoch = epoch;
    p->data.h = static_cast<float>(h);
    p->data.g = static_cast<float>(g);
    return true;
}

// Rows sorted by the upper-cased name, a head row for each first letter.
bool AlphaImage(const std::vector<Planet>& planets, Image* out, std::string* error) {
    std::vector<MpAlphaRow> rows;
    for (const Planet& p : planets) {
        MpAlphaRow r;
        std::strncpy(r.name, p.name.c_str(), sizeof r.name - 1);
        r.number = static_cast<uint16_t>(p.number);
        rows.push_back(r);
    }
    std::stable_sort(rows.begin(), rows.end(), [](const MpAlphaRow& a, const MpAlphaRow& b) {
        return Upper(a.name) < Upper(b.name);
    });
    std::vector<MpAlphaHead> heads;
    for (size_t i = 0; i < rows.size(); ++i) {
        const uint8_t letter = static_cast<uint8_t>(std::toupper(static_cast<unsigned char>(rows[i].name[0])));
        if (heads.empty() || heads.back().letter != letter) {
            MpAlphaHead h;
            h.letter = letter;
            h.offset = static_cast<uint32_t>(kMpAlphaRowsStart + i * MpAlphaRowLayout::kSize);
            heads.push_back(h);
        }
        ++heads.back().count;
    }
    if (heads.size() > static_cast<size_t>(kMpAlphaHeadRows)) {
        *error = "mp_alpha: more first letters than head rows";
        return false;
    }
    heads.resize(kMpAlphaHeadRows);
    for (const MpAlphaHead& h : heads) Append<MpAlphaHeadLayout>(*out, h);
    for (const MpAlphaRow& r : rows) Append<MpAlphaRowLayout>(*out, r);
    return true;
}

}  // namespace

bool MakeMinorPlanetImages(const std::string& csvPath, int fromYear, int toYear,
                           MinorPlanetImages* out, std::string* error) {
    std::vector<CsvRow> rows;
    if (!ReadCatalogueCsv(csvPath, &rows, error)) return false;
    std::vector<Planet> planets;
    for (const CsvRow& row : rows) {
        Planet p;
        if (!ReadPlanet(row, &p, error)) return false;
        if (p.number != static_cast<long>(planets.size()) + 1) {
            *error = "minor-planets.csv: number " + std::to_string(p.number) + " is out of order";
            return false;
        }
        planets.push_back(p);
    }
    Image data, names, alpha, limits, elements;
    for (const Planet& p : planets) {
        Append<MpDataLayout>(data, p.data);
        char name[kMpNameSize] = {};
        std::strncpy(name, p.name.c_str(), kMpNameSize - 1);
        names.insert(names.end(), name, name + kMpNameSize);
        Append<MpElementsLayout>(elements, p.elements);
    }
    if (!AlphaImage(planets, &alpha, error)) return false;
    MpLimits l;
    l.lowest = static_cast<uint32_t>(elementFileNumber(JdToCenturies(JulianDay(1, 1, fromYear, 0.0))));
    l.highest = static_cast<uint32_t>(elementFileNumber(JdToCenturies(JulianDay(1, 1, toYear, 0.0))));
    Append<MpLimitsLayout>(limits, l);
    out->small = {{"mp_data.bin", data}, {"mp_names.bin", names}, {"mp_alpha.bin", alpha}, {"limits.bin", limits}};
    out->elements = elements;
    out->lowestFile = l.lowest;
    out->highestFile = l.highest;
    out->count = planets.size();
    return true;
}
