// The writers that make-sample and make-big-legacy share: version 1.x files
// (locations, instruments, observing lists, observation logs) and the files
// of a Vesperal 2 data folder (vesperal.ini, the seed eyepiece pool and
// telescope table, the user's location, instrument and observer stores),
// all through the project's own layouts and store writers.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "astro/site.h"
#include "base/record_layout.h"
#include "legacy/legacy_logs.h"
#include "stores/instrument_records.h"

inline constexpr double kSampleDegree = 0.017453292519943295;

// Whole files and folders.
bool WriteBytes(const std::string& path, const std::string& bytes, const char* mode);
// Appends a record's image to a file being put together.
template <class Layout, class R>
void AppendImage(std::string& bytes, const R& record) {
    const auto image = RecordImage<Layout>(record);
    bytes.append(reinterpret_cast<const char*>(image.data()), image.size());
}
// Makes each folder of `relative` (slash-separated) under `base`.
bool MakeFolders(const std::string& base, const std::string& relative);
// charts.bin with an empty chart list, which proves a version 1.x folder.
bool WriteEmptyCharts(const std::string& legacyDir);

struct SampleSite {
    std::string name;
    double westDegrees;   // negative east of Greenwich
    double northDegrees;  // negative south
    double metres;
    double nakedEyeLimit;
    double zoneHours;
    uint8_t zoneIndex;
    uint8_t elevationInFeet;
    DstRule dst;
};

// The site as Site and the location records hold it.
Site MakeSampleSite(const SampleSite& s);
// A location file: u16 count, then Site image and tail per site. Serves the
// version 1.x loc.bin and the store's user/loc.bin alike.
bool WriteLocations(const std::string& path, const std::vector<SampleSite>& sites);

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
    std::string name;
    uint8_t kind;  // 0 telescope, nonzero binoculars (3 as some old files have it)
    uint8_t defaultEyepiece;  // 255: none chosen
    std::vector<SampleSystem> systems;  // main, then the finder if any
};

// The version 1.x instr.bin: u16 next id, u16 count, then the records with
// ids from 1.
bool WriteLegacyInstruments(const std::string& path, const std::vector<SampleInstrument>& instruments);

// One object of a version 1.x list or log: its class and its PID.
struct SampleObject {
    uint8_t objectClass;
    uint32_t pid;
};

// An observing list of the index. A null name marks a free index row;
// `written` false leaves the object file out, so the list cannot be opened.
struct SampleList {
    const char* name;
    std::vector<SampleObject> objects;
    bool written;
};

// obs.idx and one obs.%03d per written list, in `dir`.
bool WriteLegacyLists(const std::string& dir, const std::vector<SampleList>& lists);

// One entry of a version 1.x log chain: its head (whose nextEntry the
// writer sets) and its note. `written` false leaves the entry's file out,
// as when version 1.x lost it.
struct SampleLogEntry {
    LegacyLogEntry head;
    std::string note;
    bool written = true;
};
using SampleLogChain = std::vector<SampleLogEntry>;
// The index rows of each of the twelve class slots; each row one chain.
using SampleLogSlots = std::array<std::vector<SampleLogChain>, kLegacyLogSlots>;

// The head of an entry: the object, moment and place, and the texts cut to
// their fields. The note goes beside it.
LegacyLogEntry MakeLegacyLogHead(const SampleObject& object, double jd, const Site& site, const char* observer,
                                 const char* instrument, const char* conditions);

// The version 1.x class slot an object's entries are filed under: one slot
// for each of the twelve families of classes (constellations, solar system
// bodies, comets, minor planets, stars, galaxies, quasars, planetary
// nebulae, diffuse nebulae, open clusters, globular clusters, the rest).
int SampleLogSlotOf(int objectClass);

// log/class.0 to log/class.11 and the entry files under log/cA to log/cL:
// in each slot the entries are numbered from 1 in row order, each chained
// to the next of its row and the last ending it with -1. A note is written
// with its terminator; an empty one has length 0.
bool WriteLegacyLogs(const std::string& legacyDir, const SampleLogSlots& slots);

// The Vesperal 2 folder's vesperal.ini, whose eight lines name folders
// inside it (made here), as the sample has it.
bool WriteVesperalIni(const std::string& dataDir);
// The seed eyepiece pool eyep.bin (its nextId past the count, as after a
// deletion) and the table of generic telescope models scopes.bin.
bool WriteSeedEyepiecePool(const std::string& path);
bool WriteSeedScopeTable(const std::string& path);
// user/instr.bin holding the records in order (their ids given by the store).
bool WriteInstrumentStore(const std::string& path, std::vector<InstrumentRecord> records);
// The naked eye and an 8-inch SCT, which both sample stores begin with.
std::vector<InstrumentRecord> BasicStoreInstruments();
// user/observer.bin of the observers, by name and age.
bool WriteObserverStore(const std::string& path, const std::vector<std::pair<std::string, int>>& observers);
