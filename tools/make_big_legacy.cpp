// Writes a large synthetic migration to time the import jobs on: a
// version 1.x folder of a long-time user and the Vesperal 2 data folder it
// moves into. The output is the same on every run.
//
//   make-big-legacy OUTDIR   ->  OUTDIR/legacy/, OUTDIR/vesperal2/
//
// The version 1.x folder: charts.bin, 1 000 locations in loc.bin, 50
// instruments in instr.bin (telescopes and binoculars with eyepieces), 100
// observing lists of 300 objects each in obs.idx and obs.%03d, and logs of
// 10 000 entries over 2 000 objects of the reference set (stars, galaxies,
// clusters and nebulae), one index row and chain per object.
//
// The Vesperal 2 folder is the sample's kind (vesperal.ini naming folders
// inside it, the seed eyepiece pool and telescope table) with user stores
// that already hold some of the locations and instruments. Every name the
// logs use is known once the location and instrument imports have run,
// except those that the log import is told on its command line:
//
//   observers    "J. Smith" linked to "Jo Smith", "Guest Observer" created,
//                the empty name ("(blank)") linked to "Ann Lee";
//                "Ann Lee (club)" and "Eli Novak, Sr." match stored names
//                by prefix
//   instruments  "My Old Scope" linked to "SCT 8in", "Club Dob 16in" made a
//                telescope, "Opera Glass 3x25" made binoculars
#include <cstdio>
#include <string>
#include <vector>

#include "astro/calendar.h"
#include "base/file_utils.h"
#include "stores/instrument_makers.h"
#include "tools/sample_writers.h"

namespace {

constexpr int kLocationCount = 1000;
constexpr int kListCount = 100;
constexpr int kListLength = 300;
constexpr int kLoggedObjects = 2000;
constexpr int kLogEntries = 10000;
// The locations the log entries were made at: the first ones of loc.bin.
constexpr int kLogSites = 40;

// Objects of the reference set that make-refdata writes, by class and a
// range of its PIDs: stars are numbered from 1 in the Bright Star
// Catalogue's order, deep-sky objects by their record in the class file.
struct PidRange {
    uint8_t objectClass;
    uint32_t first;
    uint32_t count;
};
const std::vector<PidRange> kReferenceRanges = {
    {5, 1, 9096},   // stars
    {6, 1, 10521},  // galaxies
    {10, 0, 663},   // open clusters
    {11, 1, 208},   // globular clusters
    {8, 0, 130},    // planetary nebulae
    {9, 0, 301},    // bright nebulae
};
// How many of the pool's objects each range gives, in the order above.
const std::vector<int> kPoolShares = {1500, 900, 300, 100, 100, 100};

// Spreads `count` picks evenly over a range, the same ones every run.
std::vector<SampleObject> ObjectPool() {
    std::vector<SampleObject> pool;
    for (size_t r = 0; r < kReferenceRanges.size(); ++r) {
        const PidRange& range = kReferenceRanges[r];
        const int share = kPoolShares[r];
        for (int i = 0; i < share; ++i) {
            const uint32_t offset = static_cast<uint32_t>((static_cast<uint64_t>(i) * range.count) / share);
            pool.push_back({range.objectClass, range.first + offset});
        }
    }
    return pool;
}

// Locations round the world: names of a field and a number, places on a
// spiral, time zones from the longitude, and summer time in half of them.
std::vector<SampleSite> BigSites() {
    const DstRule usRule{0, 0, 4, 2.0, 3, 0, 10, 2.0, 1.0, 2};
    const DstRule noRule{};
    static const char* const kKinds[] = {"Field", "Hill", "Farm", "Park", "Beach", "Ridge", "Lake", "Camp"};
    std::vector<SampleSite> sites;
    for (int i = 0; i < kLocationCount; ++i) {
        char name[33];
        std::snprintf(name, sizeof name, "%s %04d", kKinds[i % 8], i + 1);
        const double west = -179.5 + (i * 137.508) - 359.0 * static_cast<int>((i * 137.508) / 359.0);
        const double north = -55.0 + (i * 61.8034) - 120.0 * static_cast<int>((i * 61.8034) / 120.0);
        const double zone = -static_cast<int>(west / 15.0);
        sites.push_back({name, west, north, 10.0 + (i * 37) % 2500, 5.5 + (i % 15) * 0.1, zone,
                         static_cast<uint8_t>(i % 7), static_cast<uint8_t>(i % 2), i % 2 ? usRule : noRule});
    }
    return sites;
}

const std::vector<SampleEyepiece> kEyepieces = {
    {"Plossl 32mm", 32.0, 52.0},    {"Plossl 25mm", 25.0, 52.0},       {"plossl 10mm", 10.0, 52.0},
    {"Wide Field 20mm", 20.0, 68.0}, {"Ultra Wide 8mm ", 8.0, 82.0},   {"Zoom 8-24mm", 16.0, 50.0},
    {"Orthoscopic 6mm", 6.0, 45.0},  {"Kellner 25mm", 25.0, 40.0},     {"Nagler 13mm", 13.0, 82.0},
    {"Erfle 32mm", 32.0, 65.0},      {"Huygens 20mm", 20.0, 35.0},     {"Barlow Plossl 12mm", 12.0, 52.0},
};

struct ScopeModel {
    const char* kind;
    double aperture, focalLength;  // mm
};
const std::vector<ScopeModel> kScopeModels = {
    {"Refractor", 80.0, 600.0},   {"Refractor", 102.0, 714.0},  {"Refractor", 120.0, 1000.0},
    {"Newtonian", 130.0, 650.0},  {"Newtonian", 150.0, 750.0},  {"Dobsonian", 203.0, 1200.0},
    {"Dobsonian", 254.0, 1200.0}, {"Dobsonian", 305.0, 1500.0}, {"SCT", 203.2, 2032.0},
    {"Maksutov", 127.0, 1500.0},  {"Maksutov", 90.0, 1250.0},   {"Astrograph", 72.0, 430.0},
};
struct BinocularModel {
    double power, aperture;
};
const std::vector<BinocularModel> kBinocularModels = {{7, 35}, {7, 50}, {8, 42}, {10, 50}, {15, 70}, {20, 80}, {25, 100}};

constexpr int kTelescopes = 36;
constexpr int kBinoculars = 14;

std::vector<SampleInstrument> BigInstruments() {
    std::vector<SampleInstrument> instruments;
    for (int i = 0; i < kTelescopes; ++i) {
        const ScopeModel& m = kScopeModels[i % kScopeModels.size()];
        char name[32];
        std::snprintf(name, sizeof name, "%s %.0fmm No. %d", m.kind, m.aperture, i / 12 + 1);
        SampleSystem main{"Main", m.aperture, m.focalLength, 0.0, {}, 0};
        for (int e = 0; e < 3 + i % 5; ++e) main.eyepieces.push_back(kEyepieces[(i * 5 + e * 7) % kEyepieces.size()]);
        main.currentEyepiece = static_cast<uint8_t>(i % main.eyepieces.size());
        SampleInstrument instrument{name, 0, static_cast<uint8_t>(i % 3 ? 255 : 1), {main}};
        if (i % 4 == 0) instrument.systems.push_back({"Finder", 50.0, 200.0, 8.0, {}, 0});
        instruments.push_back(instrument);
    }
    for (int i = 0; i < kBinoculars; ++i) {
        const BinocularModel& m = kBinocularModels[i % kBinocularModels.size()];
        char name[32];
        std::snprintf(name, sizeof name, "Binoculars %.0fx%.0f No. %d", m.power, m.aperture, i / 7 + 1);
        instruments.push_back({name, static_cast<uint8_t>(i % 2 ? 1 : 3), 255,
                               {{"Binoculars", m.aperture, m.aperture * 4.0, m.power, {}, 0}}});
    }
    return instruments;
}

// The store begins with the naked eye, the SCT and two telescopes that
// the version 1.x folder also has, which its import skips.
std::vector<InstrumentRecord> BigStoreInstruments(const std::vector<SampleInstrument>& legacy) {
    std::vector<InstrumentRecord> records = BasicStoreInstruments();
    for (int i : {0, 5}) {
        InstrumentRecord r;
        NewTelescopeInit(&r, legacy[i].name.c_str());
        records.push_back(r);
    }
    return records;
}

const std::vector<std::pair<std::string, int>> kStoreObservers = {
    {"Ann Lee", 42},   {"Cy Tran", 23},    {"Bo Reyes", 55},  {"Dee Park", 31},  {"Eli Novak", 67},
    {"Fay Moreau", 38}, {"Gus Ortega", 49}, {"Hana Sato", 28}, {"Jo Smith", 60},
};
// The names the log entries give, with how often (out of 20) each comes.
struct LogName {
    const char* name;
    int weight;
};
const std::vector<LogName> kLogObservers = {
    {"Ann Lee", 3},   {"Cy Tran", 2},    {"Bo Reyes", 2},  {"Dee Park", 2},        {"Eli Novak", 1},
    {"Fay Moreau", 1}, {"Gus Ortega", 1}, {"Hana Sato", 1}, {"Ann Lee (club)", 2}, {"Eli Novak, Sr.", 1},
    {"J. Smith", 2},   {"Guest Observer", 1}, {"", 1},
};
const std::vector<const char*> kSettledInstruments = {"Naked Eye", "My Old Scope", "Club Dob 16in",
                                                      "Opera Glass 3x25"};

const char* PickObserver(int n) {
    int total = 0;
    for (const LogName& o : kLogObservers) total += o.weight;
    int k = n % total;
    for (const LogName& o : kLogObservers) {
        if (k < o.weight) return o.name;
        k -= o.weight;
    }
    return kLogObservers.front().name;
}

const char* const kConditions[] = {"", "Transparent, seeing 3/5", "Haze near the horizon", "Moonlit",
                                   "Cold, steady air", "Windy, scope shaking", "Dew on the optics", ""};
const char* const kNotes[] = {"",
                              "Easy in the finder.",
                              "Averted vision shows more.",
                              "Held steady at high power; the best view this year.",
                              "Compared with the chart: fainter than expected.",
                              "Seen with the club at the dark site.",
                              ""};

// Entries per object: 2 to 8, 10 000 in all over the 2 000 objects.
std::vector<int> EntryCounts() {
    std::vector<int> counts(kLoggedObjects);
    int total = 0;
    for (int i = 0; i < kLoggedObjects; ++i) total += counts[i] = 2 + (i * 3) % 7;
    for (int i = 0; total != kLogEntries; ++i) {
        int& c = counts[i % kLoggedObjects];
        if (total < kLogEntries && c < 8) ++c, ++total;
        if (total > kLogEntries && c > 2) --c, --total;
    }
    return counts;
}

SampleLogSlots BigLogs(const std::vector<SampleObject>& pool, const std::vector<SampleSite>& sites,
                       const std::vector<SampleInstrument>& instruments) {
    std::vector<Site> logSites;
    for (int i = 0; i < kLogSites; ++i) logSites.push_back(MakeSampleSite(sites[i]));
    const std::vector<int> counts = EntryCounts();
    const double first = JulianDay(1, 1, 1995, 0.0);
    const int days = static_cast<int>(JulianDay(12, 31, 2009, 0.0) - first);
    SampleLogSlots slots;
    int n = 0;
    for (int i = 0; i < kLoggedObjects; ++i) {
        // The logged objects are spread over the whole pool.
        const SampleObject& object = pool[(static_cast<size_t>(i) * 7) % pool.size()];
        SampleLogChain chain;
        for (int j = 0; j < counts[i]; ++j, ++n) {
            const double jd = first + (i * 263 + j * 811) % days + 0.05 + (n % 37) * 0.01;
            const int nameRoll = (i * 5 + j * 3) % 60;
            const char* instrument = nameRoll < 4 ? kSettledInstruments[nameRoll]
                                                  : instruments[(i + j * 11) % instruments.size()].name.c_str();
            chain.push_back({MakeLegacyLogHead(object, jd, logSites[(i + j) % kLogSites], PickObserver(i + j * 7),
                                               instrument, kConditions[(i + j) % 8]),
                             kNotes[(i * 3 + j) % 7], true});
        }
        slots[SampleLogSlotOf(object.objectClass)].push_back(std::move(chain));
    }
    return slots;
}

std::vector<SampleList> BigLists(const std::vector<SampleObject>& pool, std::vector<std::string>& names) {
    names.clear();
    for (int l = 0; l < kListCount; ++l) {
        char name[33];
        std::snprintf(name, sizeof name, "Observing Program %03d", l + 1);
        names.push_back(name);
    }
    std::vector<SampleList> lists;
    for (int l = 0; l < kListCount; ++l) {
        SampleList list{names[l].c_str(), {}, true};
        for (int k = 0; k < kListLength; ++k)
            list.objects.push_back(pool[(static_cast<size_t>(l) * 97 + static_cast<size_t>(k) * 13) % pool.size()]);
        lists.push_back(std::move(list));
    }
    return lists;
}

bool MakeLegacyFolder(const std::string& dir, const std::vector<SampleSite>& sites,
                      const std::vector<SampleInstrument>& instruments, const std::vector<SampleObject>& pool) {
    std::vector<std::string> listNames;
    return MakeFolder(dir.c_str()) && WriteEmptyCharts(dir) && WriteLocations(dir + "/loc.bin", sites) &&
           WriteLegacyInstruments(dir + "/instr.bin", instruments) &&
           WriteLegacyLists(dir, BigLists(pool, listNames)) && WriteLegacyLogs(dir, BigLogs(pool, sites, instruments));
}

bool MakeDataFolder(const std::string& dir, const std::vector<SampleSite>& sites,
                    const std::vector<SampleInstrument>& instruments) {
    // Every tenth of the first 200 locations is in the store already, at
    // the same place.
    std::vector<SampleSite> storeSites;
    for (int i = 0; i < 200; i += 10) storeSites.push_back(sites[i]);
    return MakeFolder(dir.c_str()) && MakeFolders(dir, "user") && WriteVesperalIni(dir) &&
           WriteLocations(dir + "/user/loc.bin", storeSites) && WriteSeedEyepiecePool(dir + "/eyep.bin") &&
           WriteSeedScopeTable(dir + "/scopes.bin") &&
           WriteInstrumentStore(dir + "/user/instr.bin", BigStoreInstruments(instruments)) &&
           WriteObserverStore(dir + "/user/observer.bin", kStoreObservers);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: make-big-legacy OUTDIR\n");
        return 2;
    }
    const std::string out = argv[1];
    const std::vector<SampleSite> sites = BigSites();
    const std::vector<SampleInstrument> instruments = BigInstruments();
    const std::vector<SampleObject> pool = ObjectPool();
    if (!MakeFolder(out.c_str()) || !MakeLegacyFolder(out + "/legacy", sites, instruments, pool) ||
        !MakeDataFolder(out + "/vesperal2", sites, instruments)) {
        std::fprintf(stderr, "make-big-legacy: cannot write the folders under %s\n", out.c_str());
        return 1;
    }
    std::printf("%s/legacy\n%s/vesperal2\n", out.c_str(), out.c_str());
    return 0;
}
