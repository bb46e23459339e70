// Writes a small sample to try the program on: a version 1.x folder with
// observing locations, instruments, observing lists and observation logs,
// and a Vesperal 2 data folder whose user stores already hold some of them,
// with the seed eyepiece pool and telescope table. The output is the same on every run.
//
//   make-sample OUTDIR   ->  OUTDIR/legacy/, OUTDIR/vesperal2/
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "astro/calendar.h"
#include "base/file_utils.h"
#include "catalog/comet_elements_text.h"
#include "catalog/user_minor_planets.h"
#include "catalog/user_stars.h"
#include "legacy/legacy_objects.h"
#include "tools/sample_writers.h"

namespace {

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

// stellar.bin: u16 count, four bytes not read, 47-byte star rows. No
// us_pid.bin: the importer makes it.
bool WriteLegacyStars(const std::string& dir) {
    std::string bytes(6, '\0');
    le::PutU16(reinterpret_cast<uint8_t*>(bytes.data()), static_cast<uint16_t>(kLegacyStars.size()));
    for (const SampleStar& s : kLegacyStars) {
        StellarRecord r;
        if (!makeStellarRecord(&r, s.name, s.raDegrees * kSampleDegree, s.decDegrees * kSampleDegree, s.magnitude)) return false;
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

// The version 1.x observation logs. Places: the store holds Kitt Peak at
// the same place, "Home" at another, and neither knows the meadow.
const SampleSite kMeadow{"Dark Sky Meadow", 105.5, 40.3, 2450.0, 6.9, -7.0, 3, 0, kUsRule};

const Site& LegacySite(const char* name) {
    static std::vector<Site> sites;
    if (sites.empty())
        for (const SampleSite& s : kLegacySites) sites.push_back(MakeSampleSite(s));
    for (const Site& site : sites)
        if (std::strcmp(site.name, name) == 0) return site;
    return sites.front();
}

SampleLogEntry LogEntryOf(const SampleObject& object, double jd, const Site& site, const char* observer,
                          const char* instrument, const char* conditions, const char* note) {
    return {MakeLegacyLogHead(object, jd, site, observer, instrument, conditions), note, true};
}

// Observers the store knows ("Ann Lee", "Cy Tran"), knows by prefix ("Ann
// Lee (club)"), and doesn't ("Kim Osei", "Dee Park", written once with a
// tab inside, and an empty name); instruments the store knows ("SCT 8in",
// "Naked Eye"), knows after the instrument import ("Dobsonian 10in",
// "Refractor 80mm ED", "Binoculars 10x50"), and doesn't ("Opera Glass
// 3x25"). One entry has no date; one chain lost its middle file.
SampleLogSlots SampleLogs() {
    const Site& home = LegacySite("Home");
    const Site& kittPeak = LegacySite("Kitt Peak National Observatory");
    const Site& springs = LegacySite("Cherry Springs State Park");
    const Site meadow = MakeSampleSite(kMeadow);
    SampleLogSlots slots;
    slots[SampleLogSlotOf(kM31.objectClass)] = {
        {LogEntryOf(kM31, JulianDay(11, 22, 2000, 3.25), home, "Ann Lee", "SCT 8in", "Transparent, seeing 3/5",
                    "Dust lane seen with averted vision."),
         LogEntryOf(kM31, JulianDay(10, 5, 2002, 6.5), kittPeak, "Ann Lee (club)", "Naked Eye", "", "")},
        {LogEntryOf(kM33, JulianDay(9, 14, 2001, 4.0), springs, "Cy Tran", "Dobsonian 10in", "Dark, no Moon",
                    "Spiral arms hinted."),
         {MakeLegacyLogHead(kM33, JulianDay(9, 15, 2001, 4.0), springs, "Cy Tran", "Dobsonian 10in", ""),
          "This file is missing.", false},
         LogEntryOf(kM33, JulianDay(9, 16, 2001, 4.0), springs, "Cy Tran", "Dobsonian 10in", "",
                    "Behind the missing file: never reached.")},
    };
    slots[SampleLogSlotOf(kM13.objectClass)] = {
        {LogEntryOf(kM13, JulianDay(7, 20, 2004, 5.0), meadow, "Cy Tran", "Dobsonian 10in", "Humid, some haze",
                    "Resolved to the core at 250x.")},
    };
    slots[SampleLogSlotOf(kVegaStar.objectClass)] = {
        {LogEntryOf(kVegaStar, 0.0, home, "", "Naked Eye", "", "Entered without a date.")},
        {LogEntryOf(kGardenStar, JulianDay(8, 2, 2003, 4.5), home, "Dee Park", "Opera Glass 3x25", "",
                    "Faint, orange.")},
    };
    slots[SampleLogSlotOf(kM42.objectClass)] = {
        {LogEntryOf(kM42, JulianDay(1, 12, 2005, 4.0), home, "Dee \tPark", "SCT 8in", "Cold, steady air",
                    "Trapezium: four stars.")},
    };
    slots[SampleLogSlotOf(kM57.objectClass)] = {
        {LogEntryOf(kM57, JulianDay(6, 30, 2003, 6.0), kittPeak, "Ann Lee", "SCT 8in", "", "")},
    };
    slots[SampleLogSlotOf(kM45.objectClass)] = {
        {LogEntryOf(kM45, JulianDay(11, 1, 2006, 5.0), home, "Kim Osei", "Binoculars 10x50", "Moonlit",
                    "Whole cluster in one field.")},
    };
    slots[SampleLogSlotOf(kHaleBopp.objectClass)] = {
        {LogEntryOf(kHaleBopp, JulianDay(3, 23, 1997, 3.0), home, "Cy Tran", "Naked Eye",
                    "Low in the north-west after dusk", "Two tails; the blue one long and straight.")},
    };
    slots[SampleLogSlotOf(kEros.objectClass)] = {
        {LogEntryOf(kEros, JulianDay(1, 31, 2001, 8.0), home, "Ann Lee", "Refractor 80mm ED", "",
                    "Moved against the field stars in an hour.")},
    };
    return slots;
}

bool MakeLegacyFolder(const std::string& dir) {
    return MakeFolder(dir.c_str()) && WriteEmptyCharts(dir) && WriteLocations(dir + "/loc.bin", kLegacySites) &&
           WriteLegacyInstruments(dir + "/instr.bin", kLegacyInstruments) && WriteLegacyLists(dir, kLegacyLists) &&
           WriteLegacyStars(dir) && WriteLegacyComets(dir) && WriteLegacyMinorPlanets(dir) &&
           WriteLegacyLogs(dir, SampleLogs());
}

// The store's instruments: the naked eye and an 8-inch SCT, which the
// version 1.x folder also has; its observers: those the log's entries name.
bool MakeDataFolder(const std::string& dir) {
    return MakeFolder(dir.c_str()) && MakeFolders(dir, "user") && WriteVesperalIni(dir) &&
           WriteLocations(dir + "/user/loc.bin", kStoreSites) && WriteSeedEyepiecePool(dir + "/eyep.bin") &&
           WriteSeedScopeTable(dir + "/scopes.bin") &&
           WriteInstrumentStore(dir + "/user/instr.bin", BasicStoreInstruments()) &&
           WriteObserverStore(dir + "/user/observer.bin", {{"Ann Lee", 42}, {"Cy Tran", 23}});
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
