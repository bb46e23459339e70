#include "stores/horizon.h"

#include <cmath>

#include "stores/file_name_escape.h"

namespace {
constexpr double kRowStep = 0.10471975511965977;        // 6 degrees
constexpr double kDefaultAltitude = 0.17453292519943295;  // 10 degrees
constexpr double kPi = 3.141592653589793;

long TableOffset(int which) { return which == 0 ? 0L : kHorizonTableBytes; }
}  // namespace

std::string HorizonPath(const char* name) {
    return std::string(kHorizonFolder) + "/" + EscapeFileName(name) + ".bin";
}

FilePtr HorizonOpen(const char* name) {
    if (!MakeFolder(kHorizonFolder)) return nullptr;
    const std::string path = HorizonPath(name);
    if (!FileExists(path.c_str())) return nullptr;
    return OpenFile(path.c_str(), "r+b");
}

bool HorizonExists(const char* name) { return FileExists(HorizonPath(name).c_str()); }

int HorizonDelete(const char* name) {
    const std::string path = HorizonPath(name);
    if (!FileExists(path.c_str())) return 0;
    return std::remove(path.c_str()) == 0 ? 1 : 0;
}

int HorizonReadTable(FILE* stream, HorizonTable& tableOut, int which) {
    if (std::fseek(stream, TableOffset(which), SEEK_SET) != 0) return 0;
    for (HorizonRow& row : tableOut)
        if (!ReadRecord<HorizonRowLayout>(stream, row)) return 0;
    return 1;
}

int HorizonWriteTable(FILE* stream, const HorizonTable& table, int which) {
    if (std::fseek(stream, TableOffset(which), SEEK_SET) != 0) return 0;
    for (const HorizonRow& row : table)
        if (!WriteRecord<HorizonRowLayout>(stream, row)) return 0;
    return std::fflush(stream) == 0 ? 1 : 0;
}

int HorizonComputeLimits(FILE* stream, const Site& site) {
    HorizonTable table;
    if (!HorizonReadTable(stream, table, 0)) return 0;
    for (HorizonRow& row : table) {
        // The dip is negative: the obstruction counts from the apparent
        // horizon of a raised site.
        const double a = row.altitude + site.horizonDip;
        const double azimuthFromNorth = row.azimuth + kPi;
        row.declinationLimit = std::asin(site.sinLatitude * std::sin(a) -
                                         site.cosLatitude * std::cos(a) * std::cos(azimuthFromNorth));
    }
    return HorizonWriteTable(stream, table, 0);
}

int HorizonCreate(const Site& site) {
    if (!MakeFolder(kHorizonFolder)) return 0;
    const std::string path = HorizonPath(site.name);
    {
        FilePtr f = OpenFile(path.c_str(), "wb");
        if (!f) return 0;
        HorizonTable table;
        for (int i = 0; i < kHorizonRows - 1; ++i)
            table[i] = HorizonRow{i * kRowStep, kDefaultAltitude, kPi};
        table[kHorizonRows - 1] = table[0];
        for (const HorizonRow& row : table)
            if (!WriteRecord<HorizonRowLayout>(f.get(), row)) return 0;
        if (std::fclose(f.release()) != 0) return 0;
    }
    FilePtr f = OpenFile(path.c_str(), "r+b");
    if (!f) return 0;
    HorizonComputeLimits(f.get(), site);
    return 1;
}

int HorizonLoad(const Site& site, HorizonTable& tableOut) {
    FilePtr f = HorizonOpen(site.name);
    if (!f) return 0;
    return HorizonReadTable(f.get(), tableOut, 0);
}
