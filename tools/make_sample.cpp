// Writes a small sample to try the program on: a version 1.x folder with
// observing locations, instruments and observing lists, and a Vesperal 2 data folder whose user store already
// holds two of them. The output is the same on every run.
//
//   make-sample OUTDIR   ->  OUTDIR/legacy/, OUTDIR/vesperal2/
#include <cstdio>
#include <string>
#include <vector>

#include <cstring>

#include "legacy/legacy_instruments.h"
#include "legacy/legacy_lists.h"
#include "shell/file_utils.h"
#include "stores/location_store.h"

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

struct SampleInstrument {
    const char* name;
    uint8_t kind;  // 0 telescope, nonzero binoculars (3 as some old files have it)
    double aperture, focalLength;
    const char* systemName;
};

const std::vector<SampleInstrument> kLegacyInstruments = {
    {"Dobsonian 10in", 0, 254.0, 1200.0, "Main"},
    {"Refractor 80mm ED", 0, 80.0, 600.0, "Main"},
    {"Binoculars 10x50", 1, 50.0, 200.0, "Binoculars"},
    {"Giant Binoculars 25x100", 3, 100.0, 400.0, "Binoculars"},
    {"SCT 8in", 0, 203.2, 2032.0, "Main"},
};

// An observing list of the index: its name, object count and the class of
// its objects. A null name marks a free index row; `written` false leaves
// the object file out, so the list cannot be opened.
struct SampleList {
    const char* name;
    uint16_t objects;
    uint8_t objectClass;
    bool written;
};

const std::vector<SampleList> kLegacyLists = {
    {"Messier Marathon", 12, 10, true},
    {nullptr, 0, 0, false},
    {"Summer Globulars", 5, 11, true},
    {"Autumn Galaxies", 8, 6, true},
    {"Messier Marathon", 3, 9, true},
    {"Lost List", 4, 6, false},
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
        r.systemCount = 1;
        r.kind = s.kind;
        r.defaultEyepiece = 255;
        uint8_t* sys = r.systems[0];
        le::PutF64(sys + 0, s.aperture);
        le::PutF64(sys + 8, s.focalLength);
        le::PutF64(sys + 16, s.focalLength / s.aperture);
        std::strncpy(reinterpret_cast<char*>(sys + 26), s.systemName, 31);
        std::strncpy(r.name, s.name, sizeof r.name - 1);
        if (!WriteRecord<LegacyInstrumentLayout>(f.get(), r)) return false;
    }
    return std::fclose(f.release()) == 0;
}

bool WriteLists(const std::string& dir) {
    std::string index(2, '\0');
    le::PutI16(reinterpret_cast<uint8_t*>(index.data()), static_cast<int16_t>(kLegacyLists.size()));
    for (size_t i = 0; i < kLegacyLists.size(); ++i) {
        const SampleList& list = kLegacyLists[i];
        uint8_t row[kLegacyListRowSize] = {};
        if (list.name) std::strncpy(reinterpret_cast<char*>(row), list.name, 32);
        le::PutU16(row + 33, list.name ? list.objects : kLegacyFreeListRow);
        index.append(reinterpret_cast<const char*>(row), sizeof row);
        if (!list.written) continue;
        std::string objects(kLegacyListHeaderSize, '\0');
        for (uint16_t n = 0; n < list.objects; ++n) {
            uint8_t object[kLegacyListObjectSize] = {};
            le::PutU32(object + 26, 1u + n * 7u);  // the catalogue record number
            object[30] = list.objectClass;
            objects.append(reinterpret_cast<const char*>(object), sizeof object);
        }
        char name[32];
        std::snprintf(name, sizeof name, "/obs.%03d", static_cast<int>(i));
        FilePtr f = OpenFile((dir + name).c_str(), "wb");
        if (!f || std::fwrite(objects.data(), 1, objects.size(), f.get()) != objects.size()) return false;
    }
    FilePtr f = OpenFile((dir + "/obs.idx").c_str(), "wb");
    return f && std::fwrite(index.data(), 1, index.size(), f.get()) == index.size();
}

bool WriteBytes(const std::string& path, const std::string& bytes, const char* mode) {
    FilePtr f = OpenFile(path.c_str(), mode);
    if (!f) return false;
    if (std::fwrite(bytes.data(), 1, bytes.size(), f.get()) != bytes.size()) return false;
    return std::fclose(f.release()) == 0;
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
           WriteInstruments(dir + "/instr.bin") && WriteLists(dir);
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
           WriteLocations(dir + "/user/loc.bin", kStoreSites);
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
