// Writes a small sample to try the program on: a version 1.x folder with
// observing locations, instruments and observing lists, and a Vesperal 2
// data folder whose user stores already hold some of them, with the seed
// eyepiece pool and telescope table. The output is the same on every run.
//
//   make-sample OUTDIR   ->  OUTDIR/legacy/, OUTDIR/vesperal2/
#include <cstdio>
#include <string>
#include <vector>

#include <cstring>

#include "catalog/comet_elements_text.h"
#include "catalog/user_minor_planets.h"
#include "catalog/user_stars.h"
#include "legacy/legacy_instruments.h"
#include "legacy/legacy_lists.h"
#include "legacy/legacy_objects.h"
#include "base/file_utils.h"
#include "base/id_file.h"
#include "stores/instrument_makers.h"
#include "stores/instrument_store.h"
#include "stores/observer_store.h"
#include "stores/location_store.h"
#include "stores/scope_table.h"

namespace {

constexpr double kDegree = 0.017453292519943295;

struct SampleSite {
    const char* name;
    double westDegrees;   // negative east of Greenwich
    double northDegrees;  // negative south
    double metres;
    double nakedEyeLimit;
    double zoneHours;
    uint8_t zoneIndex;
    uint8_t elevationInFeet;
    DstRule dst;
};

// The old US rule (first Sunday of April to last Sunday of October), which is
// also the record's default, and the European one.
const DstRule kNoSummerTime{};
const DstRule kUsRule{0, 0, 4, 2.0, 3, 0, 10, 2.0, 1.0, 2};
const DstRule kEuRule{1, 0, 3, 1.0, 3, 0, 10, 1.0, 1.0, 2};
const DstRule kAustralianRule{0, 0, 10, 2.0, 0, 0, 4, 2.0, 1.0, 2};

// The version 1.x list: two "Backyard" at different places, one location
// without a name, a "Home" that the Vesperal 2 store has elsewhere, and a Kitt
// Peak that it has at the same place.
const std::vector<SampleSite> kLegacySites = {
    {"Mount Wilson Observatory", 118.0592, 34.2247, 1742.0, 6.0, -8.0, 4, 0, kUsRule},
    {"Kitt Peak National Observatory", 111.5967, 31.9583, 2096.0, 6.8, -7.0, 3, 0, kNoSummerTime},
    {"Cherry Springs State Park", 77.8236, 41.6631, 701.0, 6.7, -5.0, 1, 1, kUsRule},
    {"Backyard", 0.1276, 51.5072, 11.0, 4.5, 0.0, 0, 0, kEuRule},
    {"Roque de los Muchachos", 17.8920, 28.7606, 2396.0, 7.0, 0.0, 0, 0, kEuRule},
    {"", -10.0, 50.0, 300.0, 6.5, 1.0, 0, 0, kEuRule},
    {"Backyard", -151.2093, -33.8688, 58.0, 4.0, 10.0, 0, 0, kAustralianRule},
    {"Siding Spring Observatory", -149.0661, -31.2733, 1165.0, 7.2, 10.0, 0, 0, kAustralianRule},
    {"Home", 104.9903, 39.7392, 1609.0, 5.5, -7.0, 3, 1, kUsRule},
};

const std::vector<SampleSite> kStoreSites = {
    {"Home", 111.6513, 35.1983, 2106.0, 6.5, -7.0, 3, 1, kNoSummerTime},
    {"Kitt Peak National Observatory", 111.5967, 31.9583, 2096.0, 6.8, -7.0, 3, 0, kNoSummerTime},
};

// An eyepiece as a version 1.x instrument holds it: name, focal length in
// mm, apparent field in degrees.
struct SampleEyepiece {
    const char* name;
    double focalLength;
    double fieldDegrees;
};

struct SampleSystem {
    const char* name;
    double aperture, focalLength, magnification;
    std::vector<SampleEyepiece> eyepieces;
    uint8_t currentEyepiece;
};

struct SampleInstrument {
    const char* name;
    uint8_t kind;  // 0 telescope, nonzero binoculars (3 as some old files have it)
    uint8_t defaultEyepiece;  // 255: none chosen
    std::vector<SampleSystem> systems;  // main, then the finder if any
};

// Eyepieces that the pool knows by name in another case or with trailing
// blanks, one it knows by its optics under another name, and some it does
// not know at all.
const std::vector<SampleInstrument> kLegacyInstruments = {
    {"Dobsonian 10in", 0, 1,
     {{"Main", 254.0, 1200.0, 48.0,
       {{"Plossl 25mm", 25.0, 52.0},
        {"PLOSSL 10MM   ", 10.0, 52.0},
        {"Widefield 20mm", 20.0, 68.0},
        {"Old Huygens 12mm", 12.0, 35.0}},
       3},
      {"Finder", 50.0, 200.0, 8.0, {}, 0}}},
    {"Refractor 80mm ED", 0, 255,
     {{"Main", 80.0, 600.0, 18.75, {{"plossl 32mm", 32.0, 52.0}, {"Ultra Wide 8mm ", 8.0, 82.0}}, 0}}},
    {"Binoculars 10x50", 1, 255, {{"Binoculars", 50.0, 200.0, 10.0, {}, 0}}},
    {"Giant Binoculars 25x100", 3, 255, {{"Binoculars", 100.0, 400.0, 25.0, {}, 0}}},
    {"SCT 8in", 0, 254, {{"Main", 203.2, 2032.0, 81.28, {{"Plossl 25mm", 25.0, 52.0}}, 0}}},
    {"Travel Scope 70mm", 0, 255, {{"Main", 70.0, 400.0, 0.0, {}, 0}}},
};

// The seed pool of the Vesperal 2 folder: nextId is past the count, as one
// eyepiece (id 4) was deleted and its id is not given again.
const std::vector<SampleEyepiece> kPoolEyepieces = {
    {"Plossl 32mm", 32.0, 52.0},     {"Plossl 25mm", 25.0, 52.0},
    {"Plossl 10mm", 10.0, 52.0},     {"Wide Field 20mm", 20.0, 68.0},
    {"Ultra Wide 13mm", 13.0, 82.0}, {"Ultra Wide 8mm", 8.0, 82.0},
    {"Orthoscopic 6mm", 6.0, 45.0},  {"Kellner 25mm", 25.0, 40.0},
    {"Erfle 32mm", 32.0, 65.0},
};

// Generic telescope models for the new-telescope dialog.
const std::vector<ScopeRow> kScopeModels = {
    {1, 1, 80.0, 600.0, 1, 0, "Refractor 80mm f/7.5"},
    {1, 1, 102.0, 714.0, 1, 0, "Refractor 102mm f/7"},
    {2, 0, 203.2, 1219.2, 0, 1, "Dobsonian 8in f/6"},
    {2, 0, 304.8, 1524.0, 0, 1, "Dobsonian 12in f/5"},
    {2, 1, 130.0, 650.0, 0, 1, "Newtonian 130mm f/5 EQ"},
    {3, 1, 203.2, 2032.0, 1, 0, "Schmidt-Cassegrain 8in f/10"},
    {3, 1, 127.0, 1500.0, 1, 0, "Maksutov 127mm f/11.8"},
};

// One object of a version 1.x list: its class and the PID the list holds.
// Catalogue PIDs are record numbers of the reference set that make-refdata
// writes; the user classes (12 stars, 13 comets, 14 minor planets) hold the
// PIDs of the version 1.x stellar.bin, comet.bin and mp.bin below.
struct SampleObject {
    uint8_t objectClass;
    uint32_t pid;
};

constexpr SampleObject kM31{6, 4270}, kM33{6, 4590}, kM51{6, 8347}, kM81{6, 6293}, kNgc7331{6, 10023};
constexpr SampleObject kM13{11, 135}, kM92{11, 150}, kM5{11, 125}, kM4{11, 131}, kM22{11, 185};
constexpr SampleObject kM42{9, 170}, kM8{9, 270}, kM57{8, 93}, kM27{8, 111}, kM45{10, 657}, kM44{10, 416};
constexpr SampleObject kVegaStar{5, 6990}, kAlbireo{5, 7405};
// The version 1.x user objects: stars 1 "Vega" and 2 "HD 8890", which the
// catalogues know by name, 3 and 4, which they don't; comet 2 (Hale-Bopp,
// two sets of elements) and minor planet 1 (Eros), which two lists name.
constexpr SampleObject kUserVega{12, 1}, kUserPolaris{12, 2}, kGardenStar{12, 3}, kDoubleStar{12, 4};
constexpr SampleObject kHaleBopp{13, 2}, kEncke{13, 1}, kEros{14, 1};
// Rows the importer drops without a word: class 0 and a fixed position.
constexpr SampleObject kNoClass{0, 5}, kFixed{15, 77};

// An observing list of the index. A null name marks a free index row;
// `written` false leaves the object file out, so the list cannot be opened.
struct SampleList {
    const char* name;
    std::vector<SampleObject> objects;
    bool written;
};

const std::vector<SampleList> kLegacyLists = {
    {"Messier Marathon", {kM31, kM33, kM45, kM42, kM44, kM81, kM51, kM13, kM92, kM57, kM27, kM8}, true},
    {nullptr, {}, false},
    {"Summer Night", {kVegaStar, kAlbireo, kM13, kM57, kM27, kM22, kUserVega, kGardenStar, kHaleBopp, kEros}, true},
    {"Autumn Galaxies", {kM31, kM33, kNgc7331, kUserPolaris, kDoubleStar, kHaleBopp, kEros, kEncke, kNoClass, kFixed},
     true},
    {"Messier Marathon", {kM4, kM5}, true},
    {"Lost List", {kM31, kM33, kM51, kM81}, false},
    {"Empty", {}, true},
};

// The version 1.x user objects' files: stars by name and J2000 place
// (degrees), comets from lines of the Minor Planet Center's list of comet
// elements (data/reference/orbits/cometels-excerpt.txt; Hale-Bopp a second
// time at another epoch), minor planets by their elements.
struct SampleStar {
    uint32_t pid;
    const char* name;
    double raDegrees, decDegrees, magnitude;
};
const std::vector<SampleStar> kLegacyStars = {
    {1, "Vega", 279.2347, 38.7837, 0.03},
    {2, "HD 8890", 37.9529, 89.2641, 1.98},
    {3, "Garden Star", 280.1, 37.2, 9.4},
    {4, "Backyard Double", 18.5, 42.1, 8.7},
};

struct SampleComet {
    uint16_t pid;
    const char* line;
};
const std::vector<SampleComet> kLegacyComets = {
    {1, "0002P         2027 02 10.2290  0.338672  0.847296  187.2837  334.0196   11.3480  20260531  11.5  6.0  "
        "2P/Encke                                                 MPC191592"},
    {2, "    CJ95O010  1997 03 29.0299  0.922046  0.994905  130.6979  281.7618   89.7572  20260531  -2.0  4.0  "
        "C/1995 O1 (Hale-Bopp)                                    MPC194091"},
    {2, "    CJ95O010  1997 03 29.0299  0.922046  0.994905  130.6979  281.7618   89.7572  19970401  -2.0  4.0  "
        "C/1995 O1 (Hale-Bopp)                                    MPC194091"},
};

const char* const kIniFolders[8] = {"data/small/", "data/stars/", "data/gsc/", "maps/1/",
                                    "maps/2/",     "maps/3/",     "solar/",    "solar/elements/"};

bool WriteLocations(const std::string& path, const std::vector<SampleSite>& sites) {
    FilePtr f = OpenFile(path.c_str(), "wb");
    if (!f || !WriteCount16(f.get(), static_cast<int>(sites.size()))) return false;
    for (const SampleSite& s : sites) {
        Site site;
        std::string name = s.name;
        SiteInit(&site, s.westDegrees * kDegree, s.northDegrees * kDegree, s.metres,
                 s.nakedEyeLimit, s.zoneHours, name.data());
        SiteSetDst(&site, s.dst);
        const LocationTail tail{s.zoneIndex, s.elevationInFeet, 0};
        if (!LocationRecordWrite(f.get(), site, tail)) return false;
    }
    return std::fclose(f.release()) == 0;
}

LegacySystem MakeLegacySystem(const SampleSystem& s) {
    LegacySystem sys;
    sys.aperture = s.aperture;
    sys.focalLength = s.focalLength;
    sys.focalRatio = s.focalLength / s.aperture;
    sys.imageFlipA = 1;
    sys.imageFlipB = 1;
    std::strncpy(sys.systemName, s.name, sizeof sys.systemName - 1);
    sys.eyepieceCount = static_cast<uint8_t>(s.eyepieces.size());
    for (size_t j = 0; j < s.eyepieces.size() && j < kLegacyMaxEyepieces; ++j) {
        const SampleEyepiece& e = s.eyepieces[j];
        EyepieceSlot& slot = sys.eyepieces[j];
        slot.focalLength = e.focalLength;
        slot.apparentField = e.fieldDegrees * kDegree;
        slot.barlowFactor = 1.0;
        std::strncpy(slot.name, e.name, sizeof slot.name - 1);
    }
    // Version 1.x kept the derived values it had computed; work them out
    // the same way here.
    OpticalSystem derived;
    derived.opticsType = 1;
    derived.aperture = s.aperture;
    derived.focalLength = s.focalLength;
    OpticalSystemCompute(&derived);
    sys.limitingMagnitude = derived.limitingMagnitude;
    sys.highestPower = derived.highestPower;
    sys.dawesLimit = derived.dawesLimit;
    sys.currentEyepiece = s.currentEyepiece;
    sys.magnification = s.magnification;
    if (!s.eyepieces.empty() && s.currentEyepiece < s.eyepieces.size()) {
        const SampleEyepiece& e = s.eyepieces[s.currentEyepiece];
        sys.magnification = s.focalLength / e.focalLength;
        sys.trueField = e.fieldDegrees * kDegree / sys.magnification;
    }
    return sys;
}

bool WriteInstruments(const std::string& path) {
    FilePtr f = OpenFile(path.c_str(), "wb");
    if (!f) return false;
    uint8_t head[4];
    le::PutU16(head, static_cast<uint16_t>(kLegacyInstruments.size() + 1));
    le::PutU16(head + 2, static_cast<uint16_t>(kLegacyInstruments.size()));
    if (std::fwrite(head, 1, 4, f.get()) != 4) return false;
    uint16_t id = 1;
    for (const SampleInstrument& s : kLegacyInstruments) {
        LegacyInstrument r;
        r.id = id++;
        r.systemCount = static_cast<uint8_t>(s.systems.size());
        r.kind = s.kind;
        r.defaultEyepiece = s.defaultEyepiece;
        if (s.systems.size() > 1) {
            r.finderFlag = 1;
            for (int i = 0; i < 3; ++i) r.finderCircles[i] = kFinderCircles[i];
        }
        for (size_t i = 0; i < s.systems.size() && i < 2; ++i)
            r.systems[i] = MakeLegacySystem(s.systems[i]);
        std::strncpy(r.name, s.name, sizeof r.name - 1);
        if (!WriteRecord<LegacyInstrumentLayout>(f.get(), r)) return false;
    }
    return std::fclose(f.release()) == 0;
}

bool WriteEyepiecePool(const std::string& path) {
    FilePtr f = OpenFile(path.c_str(), "wb");
    const int count = static_cast<int>(kPoolEyepieces.size());
    if (!f || !WriteIdHeader(f.get(), IdHeader{count + 1, count})) return false;
    uint16_t id = 1;
    for (const SampleEyepiece& e : kPoolEyepieces) {
        if (id == 4) ++id;  // the deleted one
        EyepieceRecord r;
        std::strncpy(r.name, e.name, sizeof r.name - 1);
        r.focalLength = static_cast<float>(e.focalLength);
        r.apparentField = static_cast<float>(e.fieldDegrees);
        r.id = id++;
        if (!WriteRecord<EyepieceRecordLayout>(f.get(), r)) return false;
    }
    return std::fclose(f.release()) == 0;
}

bool WriteScopeTable(const std::string& path) {
    FilePtr f = OpenFile(path.c_str(), "wb");
    uint8_t head[4];
    le::PutU32(head, static_cast<uint32_t>(kScopeModels.size()));
    if (!f || std::fwrite(head, 1, 4, f.get()) != 4) return false;
    for (const ScopeRow& row : kScopeModels)
        if (!WriteRecord<ScopeRowLayout>(f.get(), row)) return false;
    return std::fclose(f.release()) == 0;
}

// The user's instruments: the naked eye and an 8-inch SCT, which the
// version 1.x folder also has.
bool WriteInstrumentStore(const std::string& path) {
    InstrumentRecord eye;
    NakedEyeInit(&eye);
    InstrumentRecord sct;
    NewTelescopeInit(&sct, "SCT 8in");
    OpticalSystemInit(&sct.mainSystem, "Main Scope", 3, 8.0, 80.0, 0.0, 1, 0, 0.25);
    OpticalSystemCompute(&sct.mainSystem);
    OpticalSystemCompute(&sct.finderSystem);

    FilePtr f = OpenFile(path.c_str(), "w+b");
    if (!f || !WriteIdHeader(f.get(), IdHeader{0, 0})) return false;
    for (InstrumentRecord* r : {&eye, &sct})
        if (!InstrumentAdd(f.get(), r)) return false;
    return std::fclose(f.release()) == 0;
}

// The observers the log's entries name.
bool WriteObserverStore(const std::string& path) {
    FilePtr f = OpenFile(path.c_str(), "w+b");
    if (!f || !WriteU16(f.get(), 0)) return false;
    for (const auto& [name, age] : {std::pair{"Ann Lee", 42}, std::pair{"Cy Tran", 23}}) {
        ObserverRecord r;
        ObserverInit(&r, name, age, 0.0, 0.5);
        if (!ObserverAdd(f.get(), r)) return false;
    }
    return std::fclose(f.release()) == 0;
}

bool WriteBytes(const std::string& path, const std::string& bytes, const char* mode) {
    FilePtr f = OpenFile(path.c_str(), mode);
    if (!f) return false;
    if (std::fwrite(bytes.data(), 1, bytes.size(), f.get()) != bytes.size()) return false;
    return std::fclose(f.release()) == 0;
}

template <class Layout, class R>
void AppendImage(std::string& bytes, const R& record) {
    const auto image = RecordImage<Layout>(record);
    bytes.append(reinterpret_cast<const char*>(image.data()), image.size());
}

bool WriteLists(const std::string& dir) {
    std::string index(2, '\0');
    le::PutI16(reinterpret_cast<uint8_t*>(index.data()), static_cast<int16_t>(kLegacyLists.size()));
    for (size_t i = 0; i < kLegacyLists.size(); ++i) {
        const SampleList& list = kLegacyLists[i];
        uint8_t row[kLegacyListRowSize] = {};
        if (list.name) std::strncpy(reinterpret_cast<char*>(row), list.name, 32);
        le::PutU16(row + 33, list.name ? static_cast<uint16_t>(list.objects.size()) : kLegacyFreeListRow);
        index.append(reinterpret_cast<const char*>(row), sizeof row);
        if (!list.written) continue;
        std::string objects(kLegacyListHeaderSize, '\0');
        for (const SampleObject& o : list.objects) {
            uint8_t object[kLegacyListObjectSize] = {};
            object[16] = 2;  // the row's flags: computed values to be redone
            le::PutU32(object + 26, o.pid);
            object[30] = o.objectClass;
            objects.append(reinterpret_cast<const char*>(object), sizeof object);
        }
        char name[32];
        std::snprintf(name, sizeof name, "/obs.%03d", static_cast<int>(i));
        if (!WriteBytes(dir + name, objects, "wb")) return false;
    }
    return WriteBytes(dir + "/obs.idx", index, "wb");
}

// stellar.bin: u16 count, four bytes not read, 47-byte star rows. No
// us_pid.bin: the importer makes it.
bool WriteLegacyStars(const std::string& dir) {
    std::string bytes(6, '\0');
    le::PutU16(reinterpret_cast<uint8_t*>(bytes.data()), static_cast<uint16_t>(kLegacyStars.size()));
    for (const SampleStar& s : kLegacyStars) {
        StellarRecord r;
        if (!makeStellarRecord(&r, s.name, s.raDegrees * kDegree, s.decDegrees * kDegree, s.magnitude)) return false;
        r.pid = s.pid;
        AppendImage<StellarRecordLayout>(bytes, r);
    }
    return WriteBytes(dir + "/stellar.bin", bytes, "wb");
}

// comet.bin: u16 count, two bytes not read, 101-byte rows, the rows of one
// comet together.
bool WriteLegacyComets(const std::string& dir) {
    std::string bytes(4, '\0');
    le::PutU16(reinterpret_cast<uint8_t*>(bytes.data()), static_cast<uint16_t>(kLegacyComets.size()));
    for (const SampleComet& c : kLegacyComets) {
        CometRecord r;
        if (parseCometElementsLine(c.line, &r) != 1) return false;
        LegacyCometRow row;
        row.number = r.number;
        row.letter = r.letter;
        std::memcpy(row.name, r.name, sizeof row.name);
        std::memcpy(row.iau, r.iau, sizeof row.iau);
        row.pid = c.pid;
        row.perihelionEpoch = r.perihelionEpoch;
        row.epoch = r.epoch;
        row.perihelionDistance = r.perihelionDistance;
        row.eccentricity = r.eccentricity;
        row.argPerihelion = r.argPerihelion;
        row.node = r.node;
        row.inclination = r.inclination;
        row.brightnessG = r.brightnessG;
        row.brightnessK = r.brightnessK;
        row.coefficient = r.coefficient;
        std::strncpy(row.source, "MPC", sizeof row.source - 1);
        AppendImage<LegacyCometLayout>(bytes, row);
    }
    return WriteBytes(dir + "/comet.bin", bytes, "wb");
}

// mp.bin: u32 count, four bytes not read, 116-byte rows with the legacy PID.
bool WriteLegacyMinorPlanets(const std::string& dir) {
    UserMpRecord eros, vesta;
    if (!packUserMp(&eros, 433, "Eros", "MPC", 0.0, 0.0, 10.0, 1.458, 0.0, 0.223, 178.8, 304.3, 10.8, 0.0, 10.4, 0.46) ||
        !packUserMp(&vesta, 4, "Vesta", "MPC", 0.0, 0.0, 20.9, 2.362, 0.0, 0.089, 151.2, 103.8, 7.14, 0.0, 3.2, 0.32))
        return false;
    eros.pid = 1;
    vesta.pid = 2;
    std::string bytes(8, '\0');
    le::PutU32(reinterpret_cast<uint8_t*>(bytes.data()), 2);
    AppendImage<UserMpLayout>(bytes, eros);
    AppendImage<UserMpLayout>(bytes, vesta);
    return WriteBytes(dir + "/mp.bin", bytes, "wb");
}

bool MakeFolders(const std::string& base, const std::string& relative) {
    std::string path = base;
    size_t start = 0;
    while (start < relative.size()) {
        size_t slash = relative.find('/', start);
        if (slash == std::string::npos) slash = relative.size();
        path += "/" + relative.substr(start, slash - start);
        if (!MakeFolder(path.c_str())) return false;
        start = slash + 1;
    }
    return true;
}

bool MakeLegacyFolder(const std::string& dir) {
    if (!MakeFolder(dir.c_str())) return false;
    // charts.bin proves the folder; an empty chart list is enough.
    return WriteBytes(dir + "/charts.bin", std::string("\0\0", 2), "wb") &&
           WriteLocations(dir + "/loc.bin", kLegacySites) &&
           WriteInstruments(dir + "/instr.bin") && WriteLists(dir) && WriteLegacyStars(dir) &&
           WriteLegacyComets(dir) && WriteLegacyMinorPlanets(dir);
}

bool MakeDataFolder(const std::string& dir) {
    if (!MakeFolder(dir.c_str()) || !MakeFolders(dir, "user")) return false;
    std::string ini;
    for (const char* folder : kIniFolders) {
        if (!MakeFolders(dir, folder)) return false;
        ini += folder;
        ini += "\r\n";  // the installer writes Windows line ends
    }
    return WriteBytes(dir + "/vesperal.ini", ini, "wb") &&
           WriteLocations(dir + "/user/loc.bin", kStoreSites) &&
           WriteEyepiecePool(dir + "/eyep.bin") && WriteScopeTable(dir + "/scopes.bin") &&
           WriteInstrumentStore(dir + "/user/instr.bin") && WriteObserverStore(dir + "/user/observer.bin");
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: make-sample OUTDIR\n");
        return 2;
    }
    const std::string out = argv[1];
    if (!MakeFolder(out.c_str()) || !MakeLegacyFolder(out + "/legacy") ||
        !MakeDataFolder(out + "/vesperal2")) {
        std::fprintf(stderr, "make-sample: cannot write the sample under %s\n", out.c_str());
        return 1;
    }
    std::printf("%s/legacy\n%s/vesperal2\n", out.c_str(), out.c_str());
    return 0;
}
