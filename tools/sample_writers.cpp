#include "tools/sample_writers.h"

#include <cstdio>
#include <cstring>

#include "base/file_utils.h"
#include "base/id_file.h"
#include "base/record_layout.h"
#include "legacy/legacy_instruments.h"
#include "legacy/legacy_lists.h"
#include "stores/instrument_makers.h"
#include "stores/instrument_store.h"
#include "stores/location_store.h"
#include "stores/observer_store.h"
#include "stores/scope_table.h"

namespace {

// The seed pool of a Vesperal 2 folder: one eyepiece (id 4) was deleted
// and its id is not given again.
const std::vector<SampleEyepiece> kPoolEyepieces = {
    {"Plossl 32mm", 32.0, 52.0},     {"Plossl 25mm", 25.0, 52.0},
    {"Plossl 10mm", 10.0, 52.0},     {"Wide Field 20mm", 20.0, 68.0},
    {"Ultra Wide 13mm", 13.0, 82.0}, {"Ultra Wide 8mm", 8.0, 82.0},
    {"Orthoscopic 6mm", 6.0, 45.0},  {"Kellner 25mm", 25.0, 40.0},
    {"Erfle 32mm", 32.0, 65.0},
};
constexpr uint16_t kDeletedEyepieceId = 4;

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

const char* const kIniFolders[8] = {"data/small/", "data/stars/", "data/gsc/", "maps/1/",
                                    "maps/2/",     "maps/3/",     "solar/",    "solar/elements/"};

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
        slot.apparentField = e.fieldDegrees * kSampleDegree;
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
        sys.trueField = e.fieldDegrees * kSampleDegree / sys.magnification;
    }
    return sys;
}

template <size_t N>
void CopyText(char (&field)[N], const char* text) {
    std::strncpy(field, text ? text : "", N - 1);
    field[N - 1] = '\0';
}

}  // namespace

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
        path += '/';
        path.append(relative, start, slash - start);
        if (!MakeFolder(path.c_str())) return false;
        start = slash + 1;
    }
    return true;
}

bool WriteEmptyCharts(const std::string& legacyDir) {
    return WriteBytes(legacyDir + "/charts.bin", std::string("\0\0", 2), "wb");
}

Site MakeSampleSite(const SampleSite& s) {
    Site site;
    std::string name = s.name;  // SiteInit may cut it in place
    SiteInit(&site, s.westDegrees * kSampleDegree, s.northDegrees * kSampleDegree, s.metres, s.nakedEyeLimit,
             s.zoneHours, name.data());
    SiteSetDst(&site, s.dst);
    return site;
}

bool WriteLocations(const std::string& path, const std::vector<SampleSite>& sites) {
    FilePtr f = OpenFile(path.c_str(), "wb");
    if (!f || !WriteCount16(f.get(), static_cast<int>(sites.size()))) return false;
    for (const SampleSite& s : sites) {
        const LocationTail tail{s.zoneIndex, s.elevationInFeet, 0};
        if (!LocationRecordWrite(f.get(), MakeSampleSite(s), tail)) return false;
    }
    return std::fclose(f.release()) == 0;
}

bool WriteLegacyInstruments(const std::string& path, const std::vector<SampleInstrument>& instruments) {
    FilePtr f = OpenFile(path.c_str(), "wb");
    if (!f) return false;
    uint8_t head[4];
    le::PutU16(head, static_cast<uint16_t>(instruments.size() + 1));
    le::PutU16(head + 2, static_cast<uint16_t>(instruments.size()));
    if (std::fwrite(head, 1, 4, f.get()) != 4) return false;
    uint16_t id = 1;
    for (const SampleInstrument& s : instruments) {
        LegacyInstrument r;
        r.id = id++;
        r.systemCount = static_cast<uint8_t>(s.systems.size());
        r.kind = s.kind;
        r.defaultEyepiece = s.defaultEyepiece;
        if (s.systems.size() > 1) {
            r.finderFlag = 1;
            for (int i = 0; i < 3; ++i) r.finderCircles[i] = kFinderCircles[i];
        }
        for (size_t i = 0; i < s.systems.size() && i < 2; ++i) r.systems[i] = MakeLegacySystem(s.systems[i]);
        std::strncpy(r.name, s.name.c_str(), sizeof r.name - 1);
        if (!WriteRecord<LegacyInstrumentLayout>(f.get(), r)) return false;
    }
    return std::fclose(f.release()) == 0;
}

bool WriteLegacyLists(const std::string& dir, const std::vector<SampleList>& lists) {
    std::string index(2, '\0');
    le::PutI16(reinterpret_cast<uint8_t*>(index.data()), static_cast<int16_t>(lists.size()));
    for (size_t i = 0; i < lists.size(); ++i) {
        const SampleList& list = lists[i];
        LegacyListRow row;
        if (list.name) std::strncpy(row.name, list.name, 32);
        row.objectCount = list.name ? static_cast<uint16_t>(list.objects.size()) : kLegacyFreeListRow;
        AppendImage<LegacyListRowLayout>(index, row);
        if (!list.written) continue;
        std::string objects(kLegacyListHeaderSize, '\0');
        for (const SampleObject& o : list.objects) {
            LegacyListObject object;
            object.sizeUnit = 2;  // the byte the row's flags come from: computed values to be redone
            object.pid = o.pid;
            object.objectClass = o.objectClass;
            AppendImage<LegacyListObjectLayout>(objects, object);
        }
        if (!WriteBytes(LegacyListPath(dir, static_cast<int>(i)), objects, "wb")) return false;
    }
    return WriteBytes(LegacyListIndexPath(dir), index, "wb");
}

LegacyLogEntry MakeLegacyLogHead(const SampleObject& object, double jd, const Site& site, const char* observer,
                                 const char* instrument, const char* conditions) {
    LegacyLogEntry head;
    head.jd = jd;
    head.site = site;
    head.sizeUnit = 2;
    head.magnitude = 99.9f;  // not known to the entry
    head.pid = object.pid;
    head.objectClass = object.objectClass;
    CopyText(head.observer, observer);
    CopyText(head.instrument, instrument);
    CopyText(head.conditions, conditions);
    return head;
}

int SampleLogSlotOf(int objectClass) {
    switch (objectClass) {
    case 1: return 0;             // constellations
    case 2: return 1;             // Sun, Moon and planets
    case 3: case 13: return 2;    // comets
    case 4: case 14: return 3;    // minor planets
    case 5: case 12: return 4;    // stars
    case 6: case 16: return 5;    // galaxies
    case 7: return 6;             // quasars
    case 8: return 7;             // planetary nebulae
    case 9: case 17: return 8;    // diffuse and dark nebulae
    case 10: return 9;            // open clusters
    case 11: return 10;           // globular clusters
    default: return 11;
    }
}

bool WriteLegacyLogs(const std::string& legacyDir, const SampleLogSlots& slots) {
    if (!MakeFolders(legacyDir, "log")) return false;
    for (int slot = 0; slot < kLegacyLogSlots; ++slot) {
        const char folder[] = {'c', static_cast<char>('A' + slot), '\0'};
        if (!MakeFolders(legacyDir + "/log", folder)) return false;
        std::string index;
        LegacyLogIndexHead head;
        head.num = static_cast<uint32_t>(slots[slot].size());
        for (const SampleLogChain& chain : slots[slot]) head.count += static_cast<uint32_t>(chain.size());
        AppendImage<LegacyLogIndexHeadLayout>(index, head);
        int32_t number = 1;
        for (const SampleLogChain& chain : slots[slot]) {
            LegacyLogIndexRow row;
            row.firstEntry = chain.empty() ? -1 : number;
            AppendImage<LegacyLogIndexRowLayout>(index, row);
            for (size_t i = 0; i < chain.size(); ++i, ++number) {
                if (!chain[i].written) continue;
                LegacyLogEntry entry = chain[i].head;
                entry.nextEntry = i + 1 < chain.size() ? number + 1 : -1;
                const std::string& note = chain[i].note;
                entry.noteLength = note.empty() ? 0 : static_cast<uint16_t>(note.size() + 1);
                std::string bytes;
                AppendImage<LegacyLogEntryLayout>(bytes, entry);
                if (!note.empty()) bytes.append(note.c_str(), note.size() + 1);
                if (!WriteBytes(LegacyLogEntryPath(legacyDir, slot, number), bytes, "wb")) return false;
            }
        }
        if (!WriteBytes(LegacyLogIndexPath(legacyDir, slot), index, "wb")) return false;
    }
    return true;
}

bool WriteVesperalIni(const std::string& dataDir) {
    std::string ini;
    for (const char* folder : kIniFolders) {
        if (!MakeFolders(dataDir, folder)) return false;
        ini += folder;
        ini += "\r\n";  // the installer writes Windows line ends
    }
    return WriteBytes(dataDir + "/vesperal.ini", ini, "wb");
}

bool WriteSeedEyepiecePool(const std::string& path) {
    FilePtr f = OpenFile(path.c_str(), "wb");
    const int count = static_cast<int>(kPoolEyepieces.size());
    if (!f || !WriteIdHeader(f.get(), IdHeader{count + 1, count})) return false;
    uint16_t id = 1;
    for (const SampleEyepiece& e : kPoolEyepieces) {
        if (id == kDeletedEyepieceId) ++id;
        EyepieceRecord r;
        std::strncpy(r.name, e.name, sizeof r.name - 1);
        r.focalLength = static_cast<float>(e.focalLength);
        r.apparentField = static_cast<float>(e.fieldDegrees);
        r.id = id++;
        if (!WriteRecord<EyepieceRecordLayout>(f.get(), r)) return false;
    }
    return std::fclose(f.release()) == 0;
}

bool WriteSeedScopeTable(const std::string& path) {
    FilePtr f = OpenFile(path.c_str(), "wb");
    uint8_t head[4];
    le::PutU32(head, static_cast<uint32_t>(kScopeModels.size()));
    if (!f || std::fwrite(head, 1, 4, f.get()) != 4) return false;
    for (const ScopeRow& row : kScopeModels)
        if (!WriteRecord<ScopeRowLayout>(f.get(), row)) return false;
    return std::fclose(f.release()) == 0;
}

bool WriteInstrumentStore(const std::string& path, std::vector<InstrumentRecord> records) {
    FilePtr f = OpenFile(path.c_str(), "w+b");
    if (!f || !WriteIdHeader(f.get(), IdHeader{0, 0})) return false;
    for (InstrumentRecord& r : records)
        if (!InstrumentAdd(f.get(), &r)) return false;
    return std::fclose(f.release()) == 0;
}

std::vector<InstrumentRecord> BasicStoreInstruments() {
    InstrumentRecord eye;
    NakedEyeInit(&eye);
    InstrumentRecord sct;
    NewTelescopeInit(&sct, "SCT 8in");
    OpticalSystemInit(&sct.mainSystem, "Main Scope", 3, 8.0, 80.0, 0.0, 1, 0, 0.25);
    OpticalSystemCompute(&sct.mainSystem);
    OpticalSystemCompute(&sct.finderSystem);
    return {eye, sct};
}

bool WriteObserverStore(const std::string& path, const std::vector<std::pair<std::string, int>>& observers) {
    FilePtr f = OpenFile(path.c_str(), "w+b");
    if (!f || !WriteU16(f.get(), 0)) return false;
    for (const auto& [name, age] : observers) {
        ObserverRecord r;
        ObserverInit(&r, name.c_str(), age, 0.0, 0.5);
        if (!ObserverAdd(f.get(), r)) return false;
    }
    return std::fclose(f.release()) == 0;
}
