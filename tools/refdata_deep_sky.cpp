#include "tools/refdata_deep_sky.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <numbers>

#include "base/le_bytes.h"
#include "base/record_layout.h"
#include "catalog/catalogue_codes.h"
#include "catalog/catalogue_files.h"
#include "catalog/cluster_files.h"
#include "catalog/cross_tables.h"
#include "catalog/dark_nebula_files.h"
#include "catalog/galaxy_files.h"
#include "catalog/index_runs.h"
#include "catalog/nebula_files.h"
#include "catalog/planetary_files.h"
#include "tools/refdata_sources.h"

namespace {

using Image = std::vector<uint8_t>;

constexpr double kDegree = std::numbers::pi / 180.0;
constexpr int kMessierRows = 110;
constexpr int kNgcRows = 7840;
constexpr int kIcRows = 5386;
constexpr int kUgcRows = 13000;
constexpr int kUgcSlots = 9;
// The highest suffix letter a galaxy record's three bits hold (G).
constexpr int kLastSuffixCode = 7;
// PGC numbers of the LEDA extension run to millions; the index holds those
// below this, which keeps it to a few megabytes.
constexpr long kPgcLimit = 1000000;

// The cross classes of the tables.
enum CrossClass {
    kOpen = 0,
    kGlobular = 1,
    kDiffuse = 2,
    kPlanetary = 3,
    kGalaxy = 4,
    kGroup = 6,
    kDark = 7
};

struct DeepSkyObject {
    std::string name;  // as OpenNGC writes it
    int crossClass = -1;
    long record = 0;
    double ra = 0, dec = 0;       // degrees
    double major = 0, minor = 0;  // arc minutes, 0 none
    double magnitude = 99.9;      // V, else B
    int messier = 0;
    int ngc[2] = {}, ngcSuffix = 0;
    int ic[2] = {}, icSuffix = 0;
    std::vector<std::string> commonNames;
    std::string identifiers;
    std::string duplicateOf;  // of a row that repeats another object
    int commonNameRow = -1;
};

int ClassCode(const std::string& name) {
    if (name == "galaxy") return kGalaxy;
    if (name == "galaxy_group") return kGroup;
    if (name == "open_cluster") return kOpen;
    if (name == "globular_cluster") return kGlobular;
    if (name == "planetary_nebula") return kPlanetary;
    if (name == "bright_nebula") return kDiffuse;
    if (name == "dark_nebula") return kDark;
    return -1;
}

// "NGC5194A" -> 5194 and suffix 1; "NGC0056 NED01" -> 56, suffix 0.
bool NumberOfName(const std::string& name, const char* prefix, int* number, int* suffix) {
    const size_t n = std::strlen(prefix);
    if (name.compare(0, n, prefix) != 0 || name.size() <= n ||
        !std::isdigit(static_cast<unsigned char>(name[n])))
        return false;
    char* end = nullptr;
    *number = static_cast<int>(std::strtol(name.c_str() + n, &end, 10));
    *suffix = (*end >= 'A' && *end <= 'Z') ? *end - 'A' + 1 : 0;
    return *number > 0;
}

// The number after "KEY " in the identifiers ("PGC 000778", "UGC 05040A");
// 0 none.
long Identifier(const std::string& identifiers, const std::string& key, int* suffix = nullptr) {
    size_t at = 0;
    while ((at = identifiers.find(key + " ", at)) != std::string::npos) {
        if (at == 0 || identifiers[at - 1] == ',') {
            const char* p = identifiers.c_str() + at + key.size() + 1;
            if (std::isdigit(static_cast<unsigned char>(*p))) {
                char* end = nullptr;
                const long n = std::strtol(p, &end, 10);
                if (suffix) *suffix = (*end >= 'A' && *end <= 'Z') ? *end - 'A' + 1 : 0;
                return n;
            }
        }
        at += key.size();
    }
    return 0;
}

// The MCG designation "MCG +07-02-016" into its record fields; false when
// the identifiers have none that the fields can hold.
bool PutMcg(const std::string& identifiers, GalaxyRecord* r) {
    const size_t at = identifiers.find("MCG ");
    int zone = 0, field = 0, number = 0;
    if (at == std::string::npos ||
        std::sscanf(identifiers.c_str() + at, "MCG %d-%d-%d", &zone, &field, &number) != 3 ||
        zone < -7 || zone > 24 || field < 0 || field > 63 || number < 0 || number > 255)
        return false;
    r->mcgZonePlus7 = static_cast<uint8_t>(zone + 7);
    r->mcgField = static_cast<uint8_t>(field);
    r->mcgNumber = static_cast<uint8_t>(number);
    return true;
}

// "ESO 473-010A" into field, number and suffix letter.
bool PutEso(const std::string& identifiers, GalaxyRecord* r) {
    const size_t at = identifiers.find("ESO ");
    int field = 0, number = 0, length = 0;
    if (at == std::string::npos ||
        std::sscanf(identifiers.c_str() + at, "ESO %d-%d%n", &field, &number, &length) != 2 ||
        field < 1 || field > 4095 || number < 0 || number > 255)
        return false;
    const char letter = identifiers[at + length];
    r->esoField = static_cast<uint16_t>(field);
    r->esoNumber = static_cast<uint8_t>(number);
    r->esoSuffix = letter >= 'A' && letter <= 'O' ? static_cast<uint8_t>(letter - 'A' + 1) : 0;
    return true;
}

// The MCG index: a 5-byte head per (zone + 7, field), then the run of a
// head's numbers 0 to its count, three part slots each, holding the record
// less one; 0xFFFFFF is an empty slot.
Image McgIndex(const std::vector<std::pair<GalaxyRecord, long>>& galaxies) {
    constexpr int kZones = 32, kFields = 61;
    std::map<int, std::map<int, long>> runs;  // head row -> number -> record
    for (const auto& [g, record] : galaxies)
        if (g.mcgField < kFields && g.mcgZonePlus7 < kZones && g.mcgNumber > 0 && g.mcgPart == 0)
            runs[g.mcgZonePlus7 * kFields + g.mcgField].emplace(g.mcgNumber, record);
    Image image(kZones * kFields * ShortRunLayout::kSize, 0);
    for (const auto& [row, numbers] : runs) {
        ShortRunHead head;
        head.offset = static_cast<uint32_t>(image.size());
        head.count = static_cast<uint8_t>(numbers.rbegin()->first);
        EncodeRecord<ShortRunLayout>(head, image.data() + row * ShortRunLayout::kSize);
        const size_t at = image.size();
        image.resize(at + (head.count + 1) * 3 * 3, 0xFF);
        for (const auto& [number, record] : numbers)
            le::PutU24(image.data() + at + number * 3 * 3, static_cast<uint32_t>(record - 1));
    }
    return image;
}

// The ESO index: a 6-byte head per field from 1, then the run of numbers 1
// to its count, three part slots of 4 bytes each: the first record in the
// low 20 bits, and a second one, as its distance from the first, above.
Image EsoIndex(const std::vector<std::pair<GalaxyRecord, long>>& galaxies) {
    std::map<int, std::map<int, std::vector<long>>> runs;  // field -> number * 3 + part -> records
    for (const auto& [g, record] : galaxies)
        if (g.esoField > 0 && g.esoNumber > 0 && g.esoSuffix <= 2)
            runs[g.esoField][g.esoNumber * 3 + g.esoSuffix].push_back(record);
    if (runs.empty()) return {};
    Image image(runs.rbegin()->first * RunLayout::kSize, 0);
    for (const auto& [field, slots] : runs) {
        RunHead head;
        head.offset = static_cast<uint32_t>(image.size());
        head.count = static_cast<uint16_t>(slots.rbegin()->first / 3);
        EncodeRecord<RunLayout>(head, image.data() + (field - 1) * RunLayout::kSize);
        const size_t at = image.size();
        image.resize(at + head.count * 3 * 4, 0xFF);
        for (const auto& [slot, records] : slots) {
            uint32_t value = static_cast<uint32_t>(records[0]);
            if (records.size() > 1 && records[1] > records[0] && records[1] - records[0] < 4096)
                value |= static_cast<uint32_t>(records[1] - records[0]) << 20;
            le::PutU32(image.data() + at + ((slot / 3 - 1) * 3 + slot % 3) * 4, value);
        }
    }
    return image;
}

std::vector<std::string> SplitNames(const std::string& text) {
    std::vector<std::string> names;
    size_t start = 0;
    while (start < text.size()) {
        size_t end = text.find(',', start);
        if (end == std::string::npos) end = text.size();
        if (end > start) names.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return names;
}

bool ReadObject(CsvRow& row, DeepSkyObject* o) {
    o->name = row["name"];
    o->crossClass = ClassCode(row["class"]);
    double v = 99.9, b = 99.9;
    long messier = 0;
    if (!CsvReal(row["ra_deg"], -1, &o->ra) || !CsvReal(row["dec_deg"], -99, &o->dec) ||
        !CsvReal(row["maj_arcmin"], 0, &o->major) || !CsvReal(row["min_arcmin"], 0, &o->minor) ||
        !CsvReal(row["v_mag"], 99.9, &v) || !CsvReal(row["b_mag"], 99.9, &b) ||
        !CsvWhole(row["messier"], 0, &messier))
        return false;
    if (o->crossClass >= 0 && (o->ra < 0 || o->dec < -90)) return false;
    o->magnitude = v < 90 ? v : b;
    o->messier = static_cast<int>(messier);
    // A component of a group that the catalogue lists under the group's
    // number ("NGC2957 NED01", "IC0715NW", "IC0732N") is not that number:
    // the group is, and a compass letter is no suffix the record can hold.
    const bool component = o->name.find(" NED") != std::string::npos;
    int number = 0, suffix = 0;
    if (!component && NumberOfName(o->name, "NGC", &number, &suffix) && suffix <= kLastSuffixCode) {
        o->ngc[0] = number;
        o->ngcSuffix = suffix;
    }
    if (!component && NumberOfName(o->name, "IC", &number, &suffix) && suffix <= kLastSuffixCode) {
        o->ic[0] = number;
        o->icSuffix = suffix;
    }
    // The other catalogue's number of an object listed in both. A lettered
    // one ("4565A") is left to its own row, which names this object: put
    // under the bare number it would take another object's place.
    int other = 0;
    if (NumberOfName(row["ngc"], "", &other, &suffix) && suffix == 0) (o->ngc[0] ? o->ngc[1] : o->ngc[0]) = other;
    if (NumberOfName(row["ic"], "", &other, &suffix) && suffix == 0) (o->ic[0] ? o->ic[1] : o->ic[0]) = other;
    o->commonNames = SplitNames(row["common_names"]);
    o->identifiers = row["identifiers"];
    if (row["type"] == "Dup") o->duplicateOf = row["dup_of"];
    return true;
}

template <class Layout, class R>
void Append(Image& image, const R& record) {
    const auto bytes = RecordImage<Layout>(record);
    image.insert(image.end(), bytes.begin(), bytes.end());
}

int32_t Angle(double degrees) { return radiansToScaledAngle(degrees * kDegree); }

uint8_t Tenths(double magnitude, uint8_t none) {
    if (magnitude >= 90) return none;
    return static_cast<uint8_t>(std::clamp(std::lround(magnitude * 10), 0L, 254L));
}

uint16_t Scaled16(double value, double factor, uint16_t none) {
    if (value <= 0) return none;
    return static_cast<uint16_t>(std::min(std::lround(value * factor), 65534L));
}

template <size_t N>
void CopyText(char (&field)[N], const std::string& text) {
    std::memset(field, 0, N);
    std::memcpy(field, text.data(), std::min(text.size(), N - 1));
}

// "NGC 1976", "IC 434", "NGC 5194A"; other names as OpenNGC writes them.
std::string Designation(const DeepSkyObject& o) {
    int number = 0, suffix = 0;
    for (const char* prefix : {"NGC", "IC"})
        if (NumberOfName(o.name, prefix, &number, &suffix) &&
            o.name.find(' ') == std::string::npos) {
            std::string text = std::string(prefix) + " " + std::to_string(number);
            if (suffix) text += static_cast<char>('A' + suffix - 1);
            return text;
        }
    return o.name;
}

uint8_t NameRow(const DeepSkyObject& o) {
    return o.commonNameRow < 0 ? 255 : static_cast<uint8_t>(o.commonNameRow);
}

// ---- Class files --------------------------------------------------------------

// The PN G designation "PN G064.7+05.0" in tenths of a degree; false when
// the identifiers hold none.
bool PngIdentifier(const std::string& identifiers, int* longitude, int* latitude) {
    for (size_t at = 0; (at = identifiers.find("PN G", at)) != std::string::npos; at += 4) {
        double l = 0, b = 0;
        if ((at == 0 || identifiers[at - 1] == ',') &&
            std::sscanf(identifiers.c_str() + at + 4, "%lf%lf", &l, &b) == 2 && l >= 0 && l < 360.05) {
            *longitude = static_cast<int>(std::lround(l * 10));
            *latitude = static_cast<int>(std::lround(b * 10));
            return true;
        }
    }
    return false;
}

// The `PNG` index: a run head of 6 bytes for each whole longitude 0 to
// 360, then each run's 5-byte entries (tenth, latitude, record) in order
// of tenth and latitude.
Image PngIndex(const std::vector<const DeepSkyObject*>& planetaries) {
    constexpr int kRuns = 361;
    std::map<int, std::map<std::pair<int, int>, long>> runs;  // degree -> (tenth, latitude) -> record
    for (const DeepSkyObject* o : planetaries) {
        int l = 0, b = 0;
        if (PngIdentifier(o->identifiers, &l, &b)) runs[l / 10].emplace(std::make_pair(l % 10, b), o->record);
    }
    Image image(kRuns * RunLayout::kSize, 0);
    for (const auto& [degree, entries] : runs) {
        RunHead head;
        head.offset = static_cast<uint32_t>(image.size());
        head.count = static_cast<uint16_t>(entries.size());
        EncodeRecord<RunLayout>(head, image.data() + degree * RunLayout::kSize);
        for (const auto& [key, record] : entries) {
            PngEntry entry;
            entry.longitudeTenth = static_cast<uint8_t>(key.first);
            entry.latitude = static_cast<int16_t>(key.second);
            entry.record = static_cast<uint16_t>(record);
            Append<PngEntryLayout>(image, entry);
        }
    }
    return image;
}

// The `LBN` index: a u16 record for each number 1 to 1627, 65535 none.
Image LbnIndex(const std::vector<const DeepSkyObject*>& nebulae) {
    constexpr long kLast = 1627;
    Image image(kLast * 2, 0xFF);
    for (const DeepSkyObject* o : nebulae) {
        const long n = Identifier(o->identifiers, "LBN");
        if (n >= 1 && n <= kLast && le::GetU16(image.data() + (n - 1) * 2) == 65535)
            le::PutU16(image.data() + (n - 1) * 2, static_cast<uint16_t>(o->record));
    }
    return image;
}

Image GalaxyFile(const std::vector<const DeepSkyObject*>& objects) {
    Image image;
    for (const DeepSkyObject* o : objects) {
        GalaxyRecord r;
        r.pgc = static_cast<uint32_t>(Identifier(o->identifiers, "PGC"));
        int ugcSuffix = 0;
        r.ugc = static_cast<uint16_t>(Identifier(o->identifiers, "UGC", &ugcSuffix));
        r.ugcSuffix = static_cast<uint8_t>(ugcSuffix);
        PutMcg(o->identifiers, &r);
        PutEso(o->identifiers, &r);
        r.ngc = static_cast<uint16_t>(o->ngc[0]);
        r.ngcSuffix = static_cast<uint8_t>(std::min(o->ngcSuffix, 7));
        r.ic = static_cast<uint16_t>(o->ic[0]);
        r.icSuffix = static_cast<uint8_t>(std::min(o->icSuffix, 7));
        r.messier = static_cast<uint8_t>(o->messier);
        r.commonNameRow = NameRow(*o);
        r.ra = Angle(o->ra);
        r.dec = Angle(o->dec);
        r.magnitude = Tenths(o->magnitude, 255);
        r.major = Scaled16(o->major, 62, 65535);
        r.minor = Scaled16(o->minor, 62, 65535);
        Append<GalaxyLayout>(image, r);
    }
    return image;
}

Image GroupFile(const std::vector<const DeepSkyObject*>& objects) {
    Image image(kGroupFileHead, 0);
    le::PutU16(image.data(), static_cast<uint16_t>(objects.size()));
    for (const DeepSkyObject* o : objects) {
        GroupRecord r;
        r.ra = Angle(o->ra);
        r.dec = Angle(o->dec);
        r.commonNameRow = NameRow(*o);
        r.magnitude = Tenths(o->magnitude, 255);
        r.diameter = Scaled16(o->major, 10, 0);
        Append<GroupLayout>(image, r);
    }
    return image;
}

Image OpenClusterFile(const std::vector<const DeepSkyObject*>& objects) {
    Image image;
    for (const DeepSkyObject* o : objects) {
        OpenClusterRecord r;
        r.commonNameRow = NameRow(*o);
        r.ra = static_cast<float>(o->ra * kDegree);
        r.dec = static_cast<float>(o->dec * kDegree);
        r.magnitude = Tenths(o->magnitude, 255);
        r.size = Scaled16(o->major, 10, 0);
        Append<OpenClusterLayout>(image, r);
    }
    return image;
}

Image GlobularFile(const std::vector<const DeepSkyObject*>& objects) {
    Image image;
    for (const DeepSkyObject* o : objects) {
        GlobularRecord r;
        r.ngc = static_cast<uint16_t>(o->ngc[0]);
        r.ic = static_cast<uint16_t>(o->ic[0]);
        r.messier = static_cast<uint8_t>(o->messier);
        r.commonNameRow = NameRow(*o);
        r.ra = Angle(o->ra);
        r.dec = Angle(o->dec);
        r.size = Scaled16(o->major, 10, 0);
        r.magnitude = o->magnitude < 90 ? std::max<uint8_t>(Tenths(o->magnitude, 0), 1) : 0;
        CopyText(r.designation, Designation(*o));
        Append<GlobularLayout>(image, r);
    }
    return image;
}

Image PlanetaryFile(const std::vector<const DeepSkyObject*>& objects) {
    Image image;
    for (const DeepSkyObject* o : objects) {
        PlanetaryRecord r;
        r.ra = Angle(o->ra);
        r.dec = Angle(o->dec);
        CopyText(r.designation, Designation(*o));
        r.ngc = static_cast<uint16_t>(o->ngc[0]);
        r.ic = static_cast<uint16_t>(o->ic[0]);
        r.messier = static_cast<uint8_t>(o->messier);
        r.commonNameRowPlus1 = static_cast<uint8_t>(o->commonNameRow + 1);
        r.magnitude = Tenths(o->magnitude, 255);
        r.diameter = Scaled16(o->major, 600, 65535);  // tenths of an arc second
        int l = 0, b = 0;
        if (PngIdentifier(o->identifiers, &l, &b)) {
            r.pngLongitude = static_cast<int16_t>(l);
            r.pngLatitude = static_cast<int16_t>(b);
        }
        Append<PlanetaryLayout>(image, r);
    }
    return image;
}

Image NebulaFile(const std::vector<const DeepSkyObject*>& objects) {
    Image image;
    for (const DeepSkyObject* o : objects) {
        NebulaRecord r;
        r.ra = Angle(o->ra);
        r.dec = Angle(o->dec);
        r.commonNameRow = NameRow(*o);
        r.messier = static_cast<uint8_t>(o->messier);
        for (int i = 0; i < 2; ++i) {
            r.ngc[i] = static_cast<uint16_t>(o->ngc[i]);
            r.ic[i] = static_cast<uint16_t>(o->ic[i]);
        }
        r.lbn = static_cast<uint16_t>(Identifier(o->identifiers, "LBN"));
        r.magnitude = Tenths(o->magnitude, 255);
        r.size = Scaled16(o->major, 10, 0);
        CopyText(r.designation, Designation(*o));
        Append<NebulaLayout>(image, r);
    }
    return image;
}

Image DarkNebulaFile(const std::vector<const DeepSkyObject*>& objects) {
    Image image;
    for (const DeepSkyObject* o : objects) {
        DarkNebulaRecord r;
        r.ra = Angle(o->ra);
        r.dec = Angle(o->dec);
        r.size = Scaled16(o->major, 100.0 / 60, 0);  // hundredths of a degree
        r.commonNameRow = NameRow(*o);
        int number = 0, suffix = 0;
        if (NumberOfName(o->name, "B", &number, &suffix)) {
            r.barnard = static_cast<uint16_t>(number);
            r.barnardSuffix = suffix ? static_cast<uint8_t>('A' + suffix - 1) : 0;
        }
        Append<DarkNebulaLayout>(image, r);
    }
    return image;
}

// ---- Cross tables ---------------------------------------------------------------

struct Tables {
    std::vector<MessierCrossRow> messier = std::vector<MessierCrossRow>(kMessierRows);
    std::vector<NgcCrossRow> ngc = std::vector<NgcCrossRow>(kNgcRows);
    std::vector<IcCrossRow> ic = std::vector<IcCrossRow>(kIcRows);
    std::vector<std::vector<const DeepSkyObject*>> ngcSlots =
        std::vector<std::vector<const DeepSkyObject*>>(kNgcRows * kNgcSlots);
};

// Puts an object into an NGC or IC slot: the first object of a slot keeps
// it; an NGC number may hold a second object without suffix in slot 1 when
// no suffix is in use.
void PutNgc(Tables& t, int number, int suffix, const DeepSkyObject* o, DeepSkyImages* out) {
    if (number < 1 || number > kNgcRows) return;
    if (suffix >= kNgcSlots) {
        out->notes.push_back("ngc: " + o->name + " left out, its suffix has no slot");
        return;
    }
    t.ngcSlots[(number - 1) * kNgcSlots + suffix].push_back(o);
}

void PutIc(Tables& t, int number, int suffix, const DeepSkyObject* o, DeepSkyImages* out) {
    if (number < 1 || number > kIcRows) return;
    IcCrossRow& row = t.ic[number - 1];
    if (suffix >= kIcSlots) {
        out->notes.push_back("ic: " + o->name + " left out, its suffix has no slot");
        return;
    }
    if (row.crossClass[suffix] != 0 || row.record[suffix] != 0) return;
    row.crossClass[suffix] = static_cast<uint8_t>(o->crossClass);
    row.record[suffix] = static_cast<uint32_t>(o->record);
}

void FillNgcRows(Tables& t) {
    for (int n = 0; n < kNgcRows; ++n) {
        NgcCrossRow& row = t.ngc[n];
        for (int s = 0; s < kNgcSlots; ++s) {
            const auto& slot = t.ngcSlots[n * kNgcSlots + s];
            if (slot.empty()) continue;
            row.highestSuffix = static_cast<uint8_t>(s);
            row.crossClass[s] = static_cast<uint8_t>(slot[0]->crossClass);
            row.record[s] = static_cast<uint32_t>(slot[0]->record);
        }
        const auto& bare = t.ngcSlots[n * kNgcSlots];
        if (row.highestSuffix == 0 && bare.size() > 1) {
            row.crossClass[1] = static_cast<uint8_t>(bare[1]->crossClass);
            row.record[1] = static_cast<uint32_t>(bare[1]->record);
        }
    }
}

template <class Layout, class R>
Image TableImage(const std::vector<R>& rows) {
    Image image;
    for (const R& r : rows) Append<Layout>(image, r);
    return image;
}

// The common names: those of the Messier objects first, in Messier order,
// then those of the other objects in the rows' order, one name an object,
// until the table is full.
void ChooseCommonNames(std::vector<DeepSkyObject>& objects) {
    std::vector<DeepSkyObject*> order;
    for (DeepSkyObject& o : objects)
        if (o.crossClass >= 0 && !o.commonNames.empty() && o.messier > 0) order.push_back(&o);
    std::stable_sort(
        order.begin(), order.end(),
        [](const DeepSkyObject* a, const DeepSkyObject* b) { return a->messier < b->messier; });
    for (DeepSkyObject& o : objects)
        if (o.crossClass >= 0 && !o.commonNames.empty() && o.messier == 0) order.push_back(&o);
    int row = 0;
    for (DeepSkyObject* o : order) {
        if (row == kCommonNameRows) break;
        if (o->crossClass == kOpen && o->record == 0) continue;  // no table can name it
        o->commonNameRow = row++;
    }
}

}  // namespace

bool MakeDeepSkyImages(const std::string& source, DeepSkyImages* out, std::string* error) {
    const std::string path = source + "/deep-sky.csv";
    std::vector<CsvRow> rows;
    if (!ReadCatalogueCsv(path, &rows, error)) return false;
    std::vector<DeepSkyObject> objects(rows.size());
    for (size_t i = 0; i < rows.size(); ++i)
        if (!ReadObject(rows[i], &objects[i])) {
            *error = path + " line " + rows[i]["#line"] + ": a field cannot be read";
            return false;
        }

    // Records in the rows' order within each class. The open cluster of
    // record 0 cannot be named by the cross tables, so it is the first one
    // that has no Messier, NGC or IC number.
    std::map<int, std::vector<DeepSkyObject*>> byClass;
    for (DeepSkyObject& o : objects)
        if (o.crossClass >= 0) byClass[o.crossClass].push_back(&o);
    auto& open = byClass[kOpen];
    const auto unnamed = std::find_if(open.begin(), open.end(), [](const DeepSkyObject* o) {
        return o->messier == 0 && o->ngc[0] == 0 && o->ic[0] == 0;
    });
    if (unnamed != open.end()) std::rotate(open.begin(), unnamed, unnamed + 1);
    for (auto& [cls, list] : byClass) {
        const long first = (cls == kGalaxy || cls == kGlobular || cls == kGroup) ? 1 : 0;
        for (size_t i = 0; i < list.size(); ++i) list[i]->record = first + static_cast<long>(i);
    }
    ChooseCommonNames(objects);

    Tables t;
    Image cnames(kCommonNameRows * kCommonNameSize, 0);
    Image cnCross(kCommonNameRows * CommonNameCrossLayout::kSize, 0);
    Image pgc, ugc(kUgcRows * kUgcSlots * 3, 0);
    std::vector<std::pair<GalaxyRecord, long>> designated;  // MCG and ESO numbers of each galaxy
    long pgcBeyond = 0;
    for (const DeepSkyObject& o : objects) {
        if (o.crossClass < 0) continue;
        if (o.messier >= 1 && o.messier <= kMessierRows &&
            t.messier[o.messier - 1].crossClass == 255) {
            t.messier[o.messier - 1].crossClass = static_cast<uint8_t>(o.crossClass);
            t.messier[o.messier - 1].record = static_cast<uint16_t>(o.record);
        }
        PutNgc(t, o.ngc[0], o.ngcSuffix, &o, out);
        PutIc(t, o.ic[0], o.icSuffix, &o, out);
        if (o.commonNameRow >= 0) {
            std::memcpy(cnames.data() + o.commonNameRow * kCommonNameSize, o.commonNames[0].data(),
                        std::min(o.commonNames[0].size(), kCommonNameSize - 1));
            CommonNameCrossRow r;
            r.crossClass = static_cast<uint8_t>(o.crossClass);
            r.record = static_cast<uint32_t>(o.record);
            EncodeRecord<CommonNameCrossLayout>(
                r, cnCross.data() + o.commonNameRow * CommonNameCrossLayout::kSize);
        }
        if (o.crossClass != kGalaxy) continue;
        GalaxyRecord numbers;
        const bool mcg = PutMcg(o.identifiers, &numbers);
        if (PutEso(o.identifiers, &numbers) || mcg) designated.emplace_back(numbers, o.record);
        const long p = Identifier(o.identifiers, "PGC");
        if (p >= kPgcLimit)
            ++pgcBeyond;
        else if (p > 0) {
            if (pgc.size() < static_cast<size_t>(p) * 3) pgc.resize(static_cast<size_t>(p) * 3, 0);
            if (le::GetU24(pgc.data() + (p - 1) * 3) == 0)
                le::PutU24(pgc.data() + (p - 1) * 3, static_cast<uint32_t>(o.record));
        }
        int suffix = 0;
        const long u = Identifier(o.identifiers, "UGC", &suffix);
        if (u > 0 && u <= kUgcRows && suffix < 16) {
            uint8_t* slots = ugc.data() + (u - 1) * kUgcSlots * 3;
            int i = 0;
            while (i < kUgcSlots && le::GetU24(slots + 3 * i) != 0) ++i;
            if (i < kUgcSlots)
                le::PutU24(slots + 3 * i, static_cast<uint32_t>(o.record | (suffix << 20)));
        }
    }
    // Numbers an object has from the other catalogue go in behind every
    // object's own, so that an object always holds its own number's slot.
    for (const DeepSkyObject& o : objects) {
        if (o.crossClass < 0) continue;
        PutNgc(t, o.ngc[1], 0, &o, out);
        PutIc(t, o.ic[1], 0, &o, out);
    }
    FillNgcRows(t);
    if (pgcBeyond > 0)
        out->notes.push_back("pgc: " + std::to_string(pgcBeyond) +
                             " galaxies with a PGC number from " + std::to_string(kPgcLimit) +
                             " on are not in the index (their records hold the number)");
    // A Messier number that only repeats another Messier object (M102 as
    // a second sighting of M101) leads to that object.
    for (const DeepSkyObject& o : objects) {
        int other = 0;
        if (o.messier < 1 || o.messier > kMessierRows || o.duplicateOf.size() < 3 ||
            o.duplicateOf.compare(0, 2, "M ") != 0 ||
            (other = std::atoi(o.duplicateOf.c_str() + 2)) < 1 || other > kMessierRows ||
            t.messier[o.messier - 1].crossClass != 255)
            continue;
        t.messier[o.messier - 1] = t.messier[other - 1];
    }

    auto list = [&](int cls) {
        return std::vector<const DeepSkyObject*>(byClass[cls].begin(), byClass[cls].end());
    };
    out->files = {
        {kCatGal, GalaxyFile(list(kGalaxy))},
        {kCatGg, GroupFile(list(kGroup))},
        {kCatOc, OpenClusterFile(list(kOpen))},
        {kCatGlob, GlobularFile(list(kGlobular))},
        {kCatPln, PlanetaryFile(list(kPlanetary))},
        {kCatNeb, NebulaFile(list(kDiffuse))},
        {kCatDn, DarkNebulaFile(list(kDark))},
        {kCatM, TableImage<MessierCrossLayout>(t.messier)},
        {kCatNgc, TableImage<NgcCrossLayout>(t.ngc)},
        {kCatIc, TableImage<IcCrossLayout>(t.ic)},
        {kCatCnames, cnames},
        {kCatCnCross, cnCross},
        {kCatPgc, pgc},
        {kCatUgc, ugc},
        {kCatMcg, McgIndex(designated)},
        {kCatEsob, EsoIndex(designated)},
        {kCatPng, PngIndex(list(kPlanetary))},
        {kCatLbn, LbnIndex(list(kDiffuse))},
    };
    const char* names[] = {"galaxies",          "galaxy groups",     "open clusters",
                           "globular clusters", "planetary nebulae", "bright nebulae",
                           "dark nebulae"};
    const int classes[] = {kGalaxy, kGroup, kOpen, kGlobular, kPlanetary, kDiffuse, kDark};
    for (int i = 0; i < 7; ++i)
        out->counts.push_back(std::to_string(byClass[classes[i]].size()) + " " + names[i]);
    return true;
}
