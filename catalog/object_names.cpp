#include "catalog/object_names.h"

#include <cmath>
#include <cstdio>
#include <utility>
#include <vector>

#include "base/file_utils.h"
#include "base/string_table.h"
#include "catalog/catalogue_codes.h"
#include "catalog/catalogue_files.h"
#include "catalog/cluster_files.h"
#include "catalog/comet_files.h"
#include "catalog/comet_names.h"
#include "catalog/constellation_files.h"
#include "catalog/cross_tables.h"
#include "catalog/dark_nebula_files.h"
#include "catalog/designation_kinds.h"
#include "catalog/designation_print.h"
#include "catalog/dm_numbers.h"
#include "catalog/galaxy_files.h"
#include "catalog/minor_planet_files.h"
#include "catalog/multiple_stars.h"
#include "catalog/nebula_files.h"
#include "catalog/planetary_files.h"
#include "catalog/quasar_files.h"
#include "catalog/star_file.h"
#include "catalog/star_texts.h"
#include "catalog/user_comets.h"
#include "catalog/user_deep_sky.h"
#include "catalog/user_minor_planets.h"
#include "catalog/user_stars.h"
#include "catalog/variable_stars.h"
#include "catalog/variable_names.h"

namespace {

constexpr int kBodyNameBase = 8448;
constexpr int kLastBody = 11;


// ---- Reading the object ---------------------------------------------------

int LoadStar(ObjectNames* n) {
    if (n->pid & kGscPidFlag) {
        n->isGscStar = true;
        return 1;
    }
    FilePtr file = openStars();
    if (!file || !readStar(file.get(), static_cast<long>(n->pid), &n->star, kReadAll)) return 0;
    if (n->star.ccdmRow != 0) {
        CcdmHandle ccdm = openCcdm();
        n->hasCcdm = ccdm && readCcdmSystem(ccdm.get(), static_cast<long>(n->star.ccdmRow), &n->ccdm,
                                            &n->components);
        if (ccdm) closeCcdm(ccdm);
    }
    return 1;
}

template <class Data, class Open, class Read>
int LoadDeepSky(Data* data, uint32_t pid, Open open, Read read) {
    FilePtr file = open();
    return file && read(file.get(), static_cast<long>(pid), data, kReadAll) ? 1 : 0;
}

int LoadComet(ObjectNames* n) {
    if (n->objectClass == kClassComet) {
        FilePtr file = openComets();
        return file && readComet(file.get(), static_cast<long>(n->pid), nullptr, nullptr, &n->comet) ? 1 : 0;
    }
    // The user's store is only read here: a missing store names nothing.
    FilePtr file = OpenFile(kUserCometPath, "rb");
    CometWalk walk;
    if (n->pid == 0 || !file || !beginCometWalk(&walk, file.get())) return 0;
    return nextCometByPid(&walk, n->pid, &n->comet) >= 0 ? 1 : 0;
}

int LoadUserMinorPlanet(ObjectNames* n) {
    if (!FileExists(kUserMpPath)) return 0;
    FilePtr file = OpenFile(kUserMpPath, "rb");
    uint32_t count = 0, lastPid = 0;
    if (!file || !readUserMpHead(file.get(), &count, &lastPid)) return 0;
    UserMpRecord r;
    for (uint32_t row = 0; row < count; ++row) {
        if (!readUserMpRow(file.get(), row, &r)) return 0;
        if (r.pid == n->pid) {
            n->text = r.name;
            n->number = r.number;
            return 1;
        }
    }
    return 0;
}

}  // namespace

int loadObjectNames(ObjectNames* n) {
    const uint32_t pid = n->pid;
    switch (n->objectClass) {
        case kClassConstellation: {
            FilePtr file = openConstellationNames();
            ConstellationLabel label;
            if (!file || !readConstellationName(file.get(), static_cast<int>(pid), &label)) return 0;
            n->text = label.name;
            return 1;
        }
        case kClassMajorBody:
            if (pid > static_cast<uint32_t>(kLastBody)) return 0;
            n->text = StringText(kBodyNameBase + static_cast<int>(pid));
            return 1;
        case kClassComet:
        case kClassUserComet:
            return LoadComet(n);
        case kClassMinorPlanet: {
            FilePtr file = openMpNames();
            n->number = pid;
            return file && pid != 0 && readMpName(file.get(), pid, &n->text) ? 1 : 0;
        }
        case kClassStar:
            return LoadStar(n);
        case kClassGalaxy:
            return LoadDeepSky(&n->galaxy, pid, openGalaxies, readGalaxy);
        case kClassQuasar:
            return LoadDeepSky(&n->quasar, pid, openQuasars, readQuasar);
        case kClassPlanetary:
            return LoadDeepSky(&n->planetary, pid, openPlanetaries, readPlanetary);
        case kClassDiffuseNebula:
            return LoadDeepSky(&n->nebula, pid, openNebulae, readNebula);
        case kClassOpenCluster:
            return LoadDeepSky(&n->cluster, pid, openOpenClusters, readOpenCluster);
        case kClassGlobular:
            return LoadDeepSky(&n->globular, pid, openGlobulars, readGlobular);
        case kClassGalaxyGroup:
            return LoadDeepSky(&n->group, pid, openGroups, readGroup);
        case kClassDarkNebula:
            return LoadDeepSky(&n->dark, pid, [] { return openDn(0); }, readDarkNebula);
        case kClassSupplementalStar: {
            StellarRecord r;
            if (!supplemental::ReadByPid<StellarShape>(pid, &r)) return 0;
            n->text = r.name;
            return 1;
        }
        case kClassSupplementalDeepSky: {
            UdsRecord r;
            if (!supplemental::ReadByPid<UdsShape>(pid, &r)) return 0;
            n->text = r.name;
            return 1;
        }
        case kClassUserMinorPlanet:
            return LoadUserMinorPlanet(n);
        case kClassFixedPosition:
            return 1;  // named by its place
        default:
            return 0;  // images have no store yet; other codes are no class
    }
}

namespace {

// ---- Printing one kind ----------------------------------------------------

// What a kind of a class answers: the name made, none, or no such kind.
constexpr int kNamed = 1;
constexpr int kNoName = 0;
constexpr int kNoKind = -1;

int Free(const std::string& name, std::string* out, DesignationForm* form) {
    if (name.empty()) return kNoName;
    *out = name;
    setFreeTextForm(form);
    return kNamed;
}

int Numbered(const std::string& name, std::string* out, DesignationForm* form, const char* prefix,
             int count, int32_t a, int32_t b = 0, int32_t c = 0) {
    *out = name;
    setNumberedForm(form, prefix, count, a, b, c);
    return kNamed;
}

// A suffix code 1 to 26 as the letter's character code; anything else none.
int32_t SuffixChar(int code) { return code >= 1 && code <= 26 ? 64 + code : 0; }

// A letter or nothing (NUL or blank) as its character code.
int32_t LetterChar(char c) { return c == 0 || c == ' ' ? 0 : static_cast<unsigned char>(c); }

int CommonName(int row, std::string* out, DesignationForm* form) {
    if (row < 0) return kNoName;
    FilePtr file = openCommonNames();
    char name[kCommonNameSize] = {};
    if (!file || !readCommonName(file.get(), row, name)) return kNoName;
    return Free(name, out, form);
}

int Messier(int m, std::string* out, DesignationForm* form) {
    return m ? Numbered(messierName(m), out, form, "M", 1, m) : kNoName;
}
int Ngc(int ngc, int suffix, std::string* out, DesignationForm* form) {
    return ngc ? Numbered(ngcName(ngc, suffix), out, form, "NGC", 2, ngc, SuffixChar(suffix)) : kNoName;
}
int Ic(int ic, int suffix, std::string* out, DesignationForm* form) {
    return ic ? Numbered(icName(ic, suffix), out, form, "IC", 2, ic, SuffixChar(suffix)) : kNoName;
}

// The component of a multiple-star system that Struve discovered: the
// first whose discoverer text has the form "STF %d"; null when none has.
const CcdmComponent* StruveComponent(const ObjectNames& n) {
    for (const CcdmComponent& c : n.components)
        if (struveNumberOf(c) != 0) return &c;
    return nullptr;
}

int DmKind(uint32_t packed, DmCatalogue catalogue, const char* prefix, std::string* out,
           DesignationForm* form) {
    if (packed == 0) return kNoName;
    const DmNumber dm = unpackDm(packed);
    const int32_t zone = dm.sign == '-' ? -dm.zone : dm.zone;
    return Numbered(dmName(catalogue, dm), out, form, prefix, 3, zone, static_cast<int32_t>(dm.number),
                    LetterChar(dm.suffix));
}

int VariableKind(const StarData& s, std::string* out, DesignationForm* form) {
    if (s.vrefIndex == 0) return kNoName;
    FilePtr vref = openVref();
    VariableData v;
    if (!vref || !readVariableRow(vref.get(), static_cast<long>(s.vrefIndex), &v)) return kNoName;
    return Free(variableName(v.name.constellation, v.name.number, v.record.greekSuperscript), out, form);
}

int StarKind(const ObjectNames& n, int kind, std::string* out, DesignationForm* form) {
    if (kind < 1 || kind > 19) return kNoKind;
    if (n.isGscStar) {
        if (kind != 19) return kNoName;
        const int region = static_cast<int>((n.pid >> 14) & 0x3FFF);
        const int number = static_cast<int>(n.pid & 0x3FFF);
        return Numbered(gscName(region, number), out, form, "GSC", 2, region, number);
    }
    const StarData& s = n.star;
    const uint32_t group = designationGroup(s.flamsteed, s.designationConstellation, s.bayerLetter,
                                            s.bayerSuperscript);
    switch (kind) {
        case 1: {
            if (s.isShort || s.csnRow == 0) return kNoName;
            FilePtr csn = openCsn();
            CsnRecord r;
            if (!csn || !readCsn(csn.get(), static_cast<long>(s.csnRow), &r)) return kNoName;
            return Free(r.name, out, form);
        }
        case 2: return Free(bayerName(group), out, form);
        case 3: return Free(flamsteedName(group), out, form);
        case 4: return VariableKind(s, out, form);
        case 5: return s.hr ? Numbered(hrName(s.hr), out, form, "HR", 1, s.hr) : kNoName;
        case 6: return s.hd ? Numbered(hdName(s.hd), out, form, "HD", 1, s.hd) : kNoName;
        case 7: return s.sao ? Numbered(saoName(s.sao), out, form, "SAO", 1, s.sao) : kNoName;
        case 8: return s.ppm ? Numbered(ppmName(s.ppm), out, form, "PPM", 1, s.ppm) : kNoName;
        case 9: return s.hip ? Numbered(hipName(s.hip), out, form, "HIP", 1, s.hip) : kNoName;
        case 10: return DmKind(s.bd, kDmBd, "BD", out, form);
        case 11: return DmKind(s.cd, kDmCd, "CD", out, form);
        case 12: return DmKind(s.cp, kDmCp, "CP", out, form);
        case 13: return s.gc ? Numbered(gcName(s.gc), out, form, "GC", 1, s.gc) : kNoName;
        case 14: {
            const CcdmComponent* c = n.hasCcdm ? StruveComponent(n) : nullptr;
            if (!c) return kNoName;
            const int number = struveNumberOf(*c);
            return Numbered(struveName(number), out, form, "Struve", 1, number);
        }
        case 15: {
            // The Struve component's ADS number; without one, the first
            // component that has an ADS number.
            if (!n.hasCcdm) return kNoName;
            const CcdmComponent* c = StruveComponent(n);
            if (!c || c->ads == 0)
                for (const CcdmComponent& each : n.components)
                    if (each.ads != 0) {
                        c = &each;
                        break;
                    }
            if (!c || c->ads == 0) return kNoName;
            return Numbered(adsName(c->ads), out, form, "ADS", 1, c->ads);
        }
        case 16: {
            if (!n.hasCcdm) return kNoName;
            const char sign = n.ccdm.ccdmNorth ? '+' : '-';
            const int32_t dec = n.ccdm.ccdmNorth ? n.ccdm.ccdmDec : -static_cast<int32_t>(n.ccdm.ccdmDec);
            return Numbered(ccdmName(n.ccdm.ccdmRa, sign, n.ccdm.ccdmDec), out, form, "CCDM", 2,
                            n.ccdm.ccdmRa, dec);
        }
        case 17: return s.nsv ? Numbered(nsvName(s.nsv), out, form, "NSV", 1, s.nsv) : kNoName;
        case 18:
            if (s.tychoComponent == 0) return kNoName;
            return Numbered(tychoName(s.gscRegion, s.gscNumber, s.tychoComponent), out, form, "TYC", 3,
                            s.gscRegion, s.gscNumber, s.tychoComponent);
        case 19:
            if (s.gscRegion == 0 && s.gscNumber == 0) return kNoName;
            return Numbered(gscName(s.gscRegion, s.gscNumber), out, form, "GSC", 2, s.gscRegion,
                            s.gscNumber);
        default: return kNoKind;
    }
}

int GalaxyKind(const GalaxyData& g, uint32_t pid, int kind, std::string* out, DesignationForm* form) {
    switch (kind) {
        case 1: return CommonName(g.commonNameRow, out, form);
        case 2: return Messier(g.messier, out, form);
        case 3: return Ngc(g.ngc, g.ngcSuffix, out, form);
        case 4: return Ic(g.ic, g.icSuffix, out, form);
        case 5: return g.arp ? Numbered(arpName(g.arp), out, form, "Arp", 1, g.arp) : kNoName;
        case 6:
            return g.markarian ? Numbered(markarianName(g.markarian, g.markarianSuffix), out, form,
                                          "Markarian", 2, g.markarian, SuffixChar(g.markarianSuffix))
                               : kNoName;
        case 7:
            // The PGC form carries the galaxy's PID, which finds it directly.
            return g.pgc ? Numbered(pgcName(g.pgc), out, form, "PGC", 1, static_cast<int32_t>(pid)) : kNoName;
        case 8:
            if (g.mcgField == 0 && g.mcgNumber == 0) return kNoName;
            return Numbered(mcgName(g.mcgZone, g.mcgField, g.mcgNumber, g.mcgPart), out, form, "MCG", 2,
                            g.mcgNumber, SuffixChar(g.mcgPart));
        case 9:
            return g.ugc ? Numbered(ugcName(g.ugc, g.ugcSuffix), out, form, "Uppsala", 2, g.ugc,
                                    SuffixChar(g.ugcSuffix))
                         : kNoName;
        case 10:
            if (g.esoField == 0) return kNoName;
            return Numbered(esoName(g.esoField, g.esoNumber, g.esoSuffix), out, form, "ESO", 2, g.esoNumber,
                            SuffixChar(g.esoSuffix));
        default: return kNoKind;
    }
}

int QuasarKind(const QuasarData& q, int kind, std::string* out, DesignationForm* form) {
    switch (kind) {
        case 1: return CommonName(q.commonNameRow, out, form);
        case 2: return Free(q.discoverer, out, form);
        case 3:
            if (q.qRaPart == 0 && q.qDecPart == 0) return kNoName;
            return Numbered(quasarQName(q.qRaPart, q.qDecPart, q.qSuffix), out, form, "Q", 3, q.qRaPart,
                            q.qDecPart, LetterChar(q.qSuffix));
        default: return kNoKind;
    }
}

// The number that an index file of one-number slots holds `record` under:
// the first n from 1 whose lookup answers the record; 0 when none does.
template <class Lookup>
int NumberOfRecord(FilePtr file, long slots, long record, Lookup lookup) {
    if (!file) return 0;
    for (int number = 1; number <= slots; ++number)
        if (lookup(file.get(), number) == record) return number;
    return 0;
}

long FileSlots(FILE* file, long slotSize) {
    if (!file || std::fseek(file, 0, SEEK_END) != 0) return 0;
    const long size = std::ftell(file);
    return size > 0 ? size / slotSize : 0;
}

// The pair a, b of a two-number index (a from `firstA`, b 1 to `rowLength`)
// that holds `record`; 0 when none does.
template <class Lookup>
int PairOfRecord(FilePtr file, int firstA, int rowLength, long record, int* a, int* b, Lookup lookup) {
    if (!file) return 0;
    const long rows = FileSlots(file.get(), 2L * rowLength);
    for (int i = 0; i < rows; ++i)
        for (int j = 1; j <= rowLength; ++j)
            if (lookup(file.get(), firstA + i, j) == record) {
                *a = firstA + i;
                *b = j;
                return 1;
            }
    return 0;
}

// Henize numbers: three series, their b ranges as the index holds them.
int HenizeOfRecord(long record, int* a, int* b) {
    FilePtr file = openHenize();
    if (!file) return 0;
    constexpr int kFirst[3] = {1, 1, 519};
    const long slots = FileSlots(file.get(), 2);
    for (int series = 1; series <= 3; ++series)
        for (int number = kFirst[series - 1]; number < kFirst[series - 1] + slots; ++number) {
            const long found = lookupHenize(file.get(), series, number);
            if (found == record) {
                *a = series;
                *b = number;
                return 1;
            }
        }
    return 0;
}

int PlanetaryKind(const PlanetaryData& p, uint32_t pid, int kind, std::string* out, DesignationForm* form) {
    const long record = static_cast<long>(pid);
    int a = 0, b = 0;
    switch (kind) {
        case 1: return CommonName(p.commonNameRow, out, form);
        case 2: return Messier(p.messier, out, form);
        case 3: return Ngc(p.ngc, 0, out, form);
        case 4: return Ic(p.ic, 0, out, form);
        case 5: {
            FilePtr file = openAbellPn();
            const long slots = FileSlots(file.get(), 2);
            const int n = NumberOfRecord(std::move(file), slots, record, lookupAbellPn);
            return n ? Numbered(abellPlanetaryName(n), out, form, "Abell", 1, n) : kNoName;
        }
        case 6:
            if (p.minkowski[0] == 0 && p.minkowski[1] == 0) return kNoName;
            return Numbered(minkowskiName(p.minkowski[0], p.minkowski[1]), out, form, "Mink", 2,
                            p.minkowski[0], p.minkowski[1]);
        case 7:
            if (!HenizeOfRecord(record, &a, &b)) return kNoName;
            return Numbered(henizeName(a, b), out, form, "He", 2, a, b);
        case 8:
            if (!PairOfRecord(openHaro(), 1, 76, record, &a, &b, lookupHaro)) return kNoName;
            return Numbered(haroName(a, b), out, form, "H", 2, a, b);
        case 9:
            if (!PairOfRecord(openKohoutek(), 1, 95, record, &a, &b, lookupKohoutek)) return kNoName;
            return Numbered(kohoutekName(a, b), out, form, "K", 2, a, b);
        case 10:
            if (p.pngLongitude == 0 && p.pngLatitude == 0) return kNoName;
            return Numbered(pngName(p.pngLongitude, p.pngLatitude), out, form, "PN G", 2, p.pngLongitude,
                            p.pngLatitude);
        case 11:
            if (p.pkLongitude == 0 && p.pkLatitude == 0) return kNoName;
            return Numbered(pkName(p.pkLongitude, p.pkSign, p.pkLatitude), out, form, "PK", 2,
                            p.pkLongitude, p.pkSign == '-' ? -p.pkLatitude : p.pkLatitude);
        case 12: {
            FilePtr file = openAro();
            const long slots = FileSlots(file.get(), 2);
            const int n = NumberOfRecord(std::move(file), slots, record, lookupAro);
            return n ? Numbered(aroName(n), out, form, "ARO", 1, n) : kNoName;
        }
        case 13:
            if (!PairOfRecord(openPlanetaryEso(), 11, 82, record, &a, &b, lookupPlanetaryEso)) return kNoName;
            return Numbered(esoPlanetaryName(a, b), out, form, "ESO", 2, a, b);
        case 14: return Free(p.designation, out, form);
        default: return kNoKind;
    }
}

int NebulaKind(const NebulaData& d, int kind, std::string* out, DesignationForm* form) {
    switch (kind) {
        case 1: return CommonName(d.commonNameRow, out, form);
        case 2: return Messier(d.messier, out, form);
        case 3: return Ngc(d.ngc[0], 0, out, form);
        case 4: return Ic(d.ic[0], 0, out, form);
        case 5: return d.sharpless ? Numbered(sharplessName(d.sharpless), out, form, "Sh 2-", 1, d.sharpless) : kNoName;
        case 6: return d.vdb ? Numbered(vdbName(d.vdb), out, form, "vdB", 1, d.vdb) : kNoName;
        case 7: return d.gum ? Numbered(gumName(d.gum), out, form, "Gum", 1, d.gum) : kNoName;
        case 8: return d.rcw ? Numbered(rcwName(d.rcw), out, form, "RCW", 1, d.rcw) : kNoName;
        case 9: return d.lbn ? Numbered(lbnName(d.lbn), out, form, "LBN", 1, d.lbn) : kNoName;
        case 10: return Free(d.designation, out, form);
        default: return kNoKind;
    }
}

// A cluster's designation in family `family`, as its word and number: NGC
// and IC as their own forms, M as Messier, the others by the family word.
int FamilyName(int family, int number, std::string* out, DesignationForm* form) {
    if (number == 0) return kNoName;
    if (family == 0) return Ngc(number, 0, out, form);
    if (family == 1) return Ic(number, 0, out, form);
    const std::string name = openClusterName(family, number);
    if (name.empty()) return kNoName;
    return Numbered(name, out, form, clusterFamilyName(family), 1, number);
}

int ClusterKind(const OpenClusterData& c, int kind, std::string* out, DesignationForm* form) {
    if (kind < 1 || kind > kOpenClusterKinds) return kNoKind;
    if (kind == 1) return CommonName(c.commonNameRow, out, form);
    if (kind == 5) {
        if (c.ocl <= 0) return kNoName;
        const int tenths = static_cast<int>(std::lround(c.ocl * 10));
        return Numbered(oclLongName(c.ocl), out, form, "OCL", 2, tenths / 10, tenths % 10);
    }
    const int family = familyOfKind(kind);
    for (int i = 0; i < kClusterDesignations; ++i)
        if (c.family[i] == family && c.number[i] != 0) return FamilyName(family, c.number[i], out, form);
    return kNoName;
}

int GlobularKind(const GlobularData& g, int kind, std::string* out, DesignationForm* form) {
    switch (kind) {
        case 1: return CommonName(g.commonNameRow, out, form);
        case 2: return Messier(g.messier, out, form);
        case 3: return Ngc(g.ngc, 0, out, form);
        case 4: return Ic(g.ic, 0, out, form);
        case 5: return g.palomar ? Numbered(palomarName(g.palomar), out, form, "Palomar", 1, g.palomar) : kNoName;
        case 6: return g.terzan ? Numbered(terzanName(g.terzan), out, form, "Terzan", 1, g.terzan) : kNoName;
        case 7: return Free(g.designation, out, form);
        default: return kNoKind;
    }
}

int GroupKind(const GroupData& g, uint32_t pid, int kind, std::string* out, DesignationForm* form) {
    switch (kind) {
        case 1: return CommonName(g.commonNameRow, out, form);
        case 2: return g.agc ? Numbered(agcName(g.agc), out, form, "AGC", 1, g.agc) : kNoName;
        case 3: {
            if (!g.hickson) return kNoName;
            // A Hickson group's PID is its number + 4076.
            const int32_t number = pid > static_cast<uint32_t>(kLastAgcGroup)
                                       ? static_cast<int32_t>(pid) - kLastAgcGroup
                                       : g.hickson;
            return Numbered(hicksonName(g.hickson), out, form, "Hickson", 1, number);
        }
        default: return kNoKind;
    }
}

// `primary`: the Barnard name as the list shows it ("B 33"), else as the
// alternatives show it ("Barnard 33").
int DarkKind(const DarkNebulaData& d, int kind, bool primary, std::string* out, DesignationForm* form) {
    switch (kind) {
        case 1: return CommonName(d.commonNameRow, out, form);
        case 2:
            if (!d.barnard) return kNoName;
            if (primary)
                return Numbered(barnardName(d.barnard, d.barnardSuffix), out, form, "B", 2, d.barnard,
                                LetterChar(d.barnardSuffix));
            return Numbered(barnardLongName(d.barnard), out, form, "Barnard", 1, d.barnard);
        case 3: return d.ldn ? Numbered(ldnName(d.ldn), out, form, "LDN", 1, d.ldn) : kNoName;
        case 4:
            if (d.isGlobule || (d.dcLongitude == 0 && d.dcLatitude == 0)) return kNoName;
            return Numbered(dcName(d.dcLongitude, d.dcLatitude, d.dcSuffix), out, form, "DC", 3, d.dcLongitude,
                            d.dcLatitude, SuffixChar(d.dcSuffix));
        case 5: return d.isGlobule ? Free(d.designation, out, form) : kNoName;
        default: return kNoKind;
    }
}

int CometKind(const CometRecord& c, int kind, std::string* out, DesignationForm* form) {
    switch (kind) {
        case 1: return Free(c.name, out, form);
        case 2: return Free(cometIauName(c), out, form);
        case 3:
            if (c.number == 0) return kNoName;
            return Numbered(cometShortName(c), out, form, "", 1, c.number);
        default: return kNoKind;
    }
}

// "(%d) %s", or "(%d)" alone when the minor planet has no name.
std::string NumberedPlanetName(uint32_t number, const std::string& name) {
    char head[16];
    std::snprintf(head, sizeof head, "(%u)", number);
    return name.empty() ? std::string(head) : std::string(head) + " " + name;
}

int MinorPlanetKind(const ObjectNames& n, int kind, std::string* out, DesignationForm* form) {
    switch (kind) {
        case 1: return Free(n.text, out, form);
        case 2:
            if (n.number == 0) return kNoName;
            return Numbered(NumberedPlanetName(n.number, n.text), out, form, "", 1,
                            static_cast<int32_t>(n.number));
        default: return kNoKind;
    }
}

}  // namespace

int objectKindName(const ObjectNames& n, int kind, bool primary, std::string* out, DesignationForm* form) {
    switch (n.objectClass) {
        case kClassComet:
        case kClassUserComet: return CometKind(n.comet, kind, out, form);
        case kClassMinorPlanet:
        case kClassUserMinorPlanet: return MinorPlanetKind(n, kind, out, form);
        case kClassStar: return StarKind(n, kind, out, form);
        case kClassGalaxy: return GalaxyKind(n.galaxy, n.pid, kind, out, form);
        case kClassQuasar: return QuasarKind(n.quasar, kind, out, form);
        case kClassPlanetary: return PlanetaryKind(n.planetary, n.pid, kind, out, form);
        case kClassDiffuseNebula: return NebulaKind(n.nebula, kind, out, form);
        case kClassOpenCluster: return ClusterKind(n.cluster, kind, out, form);
        case kClassGlobular: return GlobularKind(n.globular, kind, out, form);
        case kClassGalaxyGroup: return GroupKind(n.group, n.pid, kind, out, form);
        case kClassDarkNebula: return DarkKind(n.dark, kind, primary, out, form);
        case kClassSupplementalStar:
        case kClassSupplementalDeepSky: return kind == 1 ? Free(n.text, out, form) : kNoKind;
        default: return kNoKind;  // constellations, bodies, fixed positions: one name, no kinds
    }
}

int objectKindCount(int objectClass) {
    switch (objectClass) {
        case kClassUserComet: return designationKindList(kClassComet).count;
        case kClassUserMinorPlanet: return designationKindList(kClassMinorPlanet).count;
        case kClassSupplementalStar:
        case kClassSupplementalDeepSky: return 1;
        default: return designationKindList(objectClass).count;
    }
}


