// Writes a small reference catalogue set in the program's own file formats
// from the public catalogues kept in data/reference: every star of the
// Bright Star Catalogue as a long `stars` record, numbered from 1 in the
// catalogue's (HR) order, with the HR, HD, SAO, HIP, Flamsteed and Bayer
// indexes, the IAU proper names (`csn`, `csn_alp`) and the variables that
// have a lettered or V-number name (`vindex`, `vref`, `vnames`); the OpenNGC
// deep-sky objects in their class files with the Messier, NGC, IC, PGC, UGC,
// MCG, ESO and common-name tables; the constellation files; and the planet
// engine's tables (PLANETS.NDX, PLANETS.BIN, moontab.bin, plutotab.bin,
// nutcon.bin) from the published series in the source's solar/ folder;
// and the reference minor planets (mp_data, mp_names, mp_alpha, limits, and
// the element files under elements/elements/) from the Minor Planet
// Center's elements in the source's orbits/ folder, in the solar folder too,
// which the sample's vesperal.ini names as both minor-planet roots (lines 7
// and 8: solar/ and solar/elements/).
//
//   make-refdata OUTDIR [--source DIR] [--solar DIR]
//
// OUTDIR/small/ receives the files of the small-data root, OUTDIR/stars/
// those of the star root, and OUTDIR/gsc/ is made empty; the engine's
// tables go to the solar folder, OUTDIR/solar/ unless --solar names
// another. Catalogues the sources cannot fill (PPM, BD, CD, CP, GC, Tycho,
// GSC, CCDM, ...) are not written: a missing file means "not found" to the
// readers.
#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <map>
#include <numbers>
#include <string>
#include <vector>

#include "base/file_io.h"
#include "base/file_utils.h"
#include "base/le_bytes.h"
#include "base/record_layout.h"
#include "base/windows_text.h"
#include "catalog/catalogue_codes.h"
#include "catalog/catalogue_files.h"
#include "catalog/constellation_names.h"
#include "catalog/greek_letters.h"
#include "catalog/star_file.h"
#include "catalog/star_indexes.h"
#include "catalog/star_texts.h"
#include "catalog/variable_stars.h"
#include "tools/refdata_comets.h"
#include "tools/refdata_constellations.h"
#include "tools/refdata_deep_sky.h"
#include "tools/refdata_minor_planets.h"
#include "tools/refdata_solar.h"
#include "tools/refdata_sources.h"

#ifndef FERRY2_REFDATA_SOURCE
#define FERRY2_REFDATA_SOURCE "data/reference"
#endif

namespace {

constexpr double kDegree = std::numbers::pi / 180.0;
// The name number where the V-numbers begin.
constexpr int kFirstVNumber = 335;
// The element files cover 1 January of the first year to that of the last.
constexpr int kMinorPlanetFirstYear = 2000;
constexpr int kMinorPlanetLastYear = 2050;

using Image = std::vector<uint8_t>;

// A proper name tied to a star; its `csn` row is its place in the list.
struct NamedStar {
    long star = 0;
    const StarName* name = nullptr;
    std::string text;  // the name as written: Windows-1252
};

// A variable with a name number; its `vref` row follows from the
// constellation's run and the number.
struct Variable {
    long star = 0;
    int constellationRow = 0;
    int number = 0;
    long vrefRow = 0;
};

struct ReferenceSet {
    std::vector<BrightStar> catalogue;  // star n at n - 1
    std::vector<StarName> names;
    std::vector<NamedStar> named;     // csn order: by star number
    std::vector<Variable> variables;  // by constellation row, then number
    std::vector<VariableIndexRow> vindex = std::vector<VariableIndexRow>(kConstellationRows);
    long vrefRows = 0;
    std::vector<std::string> notes;  // index slots that could not take a star
    ConstellationImages constellations;
    DeepSkyImages deepSky;
    std::vector<SolarFile> solar;
    long comets = 0;
    MinorPlanetImages minorPlanets;
};

// ---- Building --------------------------------------------------------------

// The Windows-1252 form of a name when the code page holds every character
// of it, else the ASCII spelling.
std::string SingleByteName(const StarName& name) {
    const std::string text = Utf8ToWindowsText(name.nameUtf8);
    const bool lost = std::count(text.begin(), text.end(), '?') >
                      std::count(name.nameUtf8.begin(), name.nameUtf8.end(), '?');
    return lost || text.empty() ? name.name : text;
}

bool TieNames(ReferenceSet& set, std::string* error) {
    std::map<long, long> starOfHr;
    for (size_t i = 0; i < set.catalogue.size(); ++i)
        starOfHr[set.catalogue[i].hr] = static_cast<long>(i) + 1;
    std::map<long, const StarName*> nameOfStar;
    for (const StarName& name : set.names) {
        if (name.hr == 0) continue;
        const auto found = starOfHr.find(name.hr);
        if (found == starOfHr.end()) {
            *error = name.name + ": HR " + std::to_string(name.hr) + " is not in the catalogue";
            return false;
        }
        if (!nameOfStar.emplace(found->second, &name).second) {
            *error = name.name + ": HR " + std::to_string(name.hr) + " has a name already";
            return false;
        }
    }
    for (const auto& [star, name] : nameOfStar)
        set.named.push_back({star, name, SingleByteName(*name)});
    return true;
}

// Each constellation's run in `vref` holds one row for every name number
// from 1 to its largest, so that the row of name n is the run's start plus
// n - 1; rows of numbers no catalogue star carries stay zero. The runs
// follow each other in constellation order; constellations without a
// variable have no run.
void NumberVariables(ReferenceSet& set) {
    for (size_t i = 0; i < set.catalogue.size(); ++i) {
        Variable v;
        v.star = static_cast<long>(i) + 1;
        if (VariableNameNumber(set.catalogue[i].variable, &v.constellationRow, &v.number))
            set.variables.push_back(v);
    }
    std::stable_sort(set.variables.begin(), set.variables.end(),
                     [](const Variable& a, const Variable& b) {
                         return a.constellationRow != b.constellationRow
                                    ? a.constellationRow < b.constellationRow
                                    : a.number < b.number;
                     });
    // One row a name: a second star of the same name keeps none.
    const auto same = [](const Variable& a, const Variable& b) {
        return a.constellationRow == b.constellationRow && a.number == b.number;
    };
    for (size_t i = 1; i < set.variables.size();) {
        if (!same(set.variables[i - 1], set.variables[i])) {
            ++i;
            continue;
        }
        const BrightStar& s = set.catalogue[set.variables[i].star - 1];
        set.notes.push_back("vref: " + s.variable + " (HR " + std::to_string(s.hr) +
                            ") left out, the name has a star already");
        set.variables.erase(set.variables.begin() + static_cast<long>(i));
    }
    std::vector<int> largest(kConstellationRows, 0);
    for (const Variable& v : set.variables)
        largest[v.constellationRow] = std::max(largest[v.constellationRow], v.number);
    std::vector<long> firstRow(kConstellationRows, 0);
    long rows = 0;
    for (int c = 0; c < kConstellationRows; ++c) {
        if (largest[c] == 0) continue;
        firstRow[c] = rows + 1;
        VariableIndexRow& index = set.vindex[c];
        index.offset = static_cast<uint32_t>(rows * VariableRecordLayout::kSize);
        index.count = static_cast<uint16_t>(largest[c]);
        index.firstIndex = largest[c] >= kFirstVNumber ? kFirstVNumber : 0;
        rows += largest[c];
    }
    set.vrefRows = rows;
    for (Variable& v : set.variables) v.vrefRow = firstRow[v.constellationRow] + v.number - 1;
}

LongStarRecord StarRecord(const BrightStar& s) {
    LongStarRecord r;
    r.ra = radiansToScaledAngle(s.raDegrees * kDegree);
    r.dec = radiansToScaledAngle(s.decDegrees * kDegree);
    // The catalogue's RA motion is on the sky, as the record keeps it.
    r.pmRaCode = properMotionCode(s.pmRa);
    r.pmDecCode = properMotionCode(s.pmDec);
    r.spectralCode = SpectralCodeOf(s.spectral);
    r.parallaxCode = parallaxCode(0);  // no parallax in the sources: reads as 0
    r.hr = static_cast<uint32_t>(s.hr);
    r.colour = thousandthsCode(s.colour);
    r.hd = static_cast<uint32_t>(s.hd);
    r.sao = static_cast<uint32_t>(s.sao);
    r.magnitudeCode = starMagnitudeCode(s.magnitude);
    r.flamsteed = static_cast<uint8_t>(s.flamsteed);
    r.designationConstellation =
        static_cast<uint8_t>(s.constellationRow < 0 ? 0 : s.constellationRow);
    r.bayerLetter = static_cast<uint8_t>(s.bayerLetter);
    r.bayerSuperscript = static_cast<uint8_t>(s.bayerSuperscript);
    return r;
}

std::vector<LongStarRecord> StarRecords(const ReferenceSet& set) {
    std::vector<LongStarRecord> records;
    for (const BrightStar& s : set.catalogue) records.push_back(StarRecord(s));
    for (size_t row = 0; row < set.named.size(); ++row) {
        LongStarRecord& r = records[set.named[row].star - 1];
        r.csnRow = static_cast<uint32_t>(row + 1);
        r.hip = static_cast<uint32_t>(set.named[row].name->hip);
    }
    for (const Variable& v : set.variables)
        records[v.star - 1].vrefIndex = static_cast<uint32_t>(v.vrefRow);
    return records;
}

// ---- File images -----------------------------------------------------------

template <class Layout, class R>
void Append(Image& image, const R& record) {
    const auto bytes = RecordImage<Layout>(record);
    image.insert(image.end(), bytes.begin(), bytes.end());
}

// Puts a star number into the first empty one of `slots` 3-byte slots at
// `offset`; false when all are taken.
bool PutStar(Image& image, long offset, int slots, long star) {
    const size_t end = static_cast<size_t>(offset) + 3u * slots;
    if (image.size() < end) image.resize(end, 0);
    for (int i = 0; i < slots; ++i) {
        uint8_t* slot = image.data() + offset + 3 * i;
        if (le::GetU24(slot) == 0) {
            le::PutU24(slot, static_cast<uint32_t>(star));
            return true;
        }
    }
    return false;
}

// One number index: the key of each star (0 none), where the key's slots
// lie, and how many there are.
template <class KeyOf, class OffsetOf>
Image NumberIndex(ReferenceSet& set, const char* file, int slotBytes, KeyOf keyOf,
                  OffsetOf offsetOf) {
    Image image;
    for (size_t i = 0; i < set.catalogue.size(); ++i) {
        const BrightStar& s = set.catalogue[i];
        const std::string key = keyOf(s);
        if (key.empty()) continue;
        const long offset = offsetOf(s);
        const long star = static_cast<long>(i) + 1;
        if (offset < 0 || !PutStar(image, offset, slotBytes / 3, star))
            set.notes.push_back(
                std::string(file) + ": " + key + " (star " + std::to_string(star) + ", HR " +
                std::to_string(s.hr) + ") left out, " +
                (offset < 0 ? "out of the index's range" : "its slots hold earlier stars"));
    }
    return image;
}

std::string Designation(const BrightStar& s, bool bayer) {
    if (bayer ? s.bayerLetter == 0 : s.flamsteed == 0) return "";
    char buf[48];
    if (bayer)
        std::snprintf(buf, sizeof buf, "%s%.0d %s", greekLetterName(s.bayerLetter - 1),
                      s.bayerSuperscript, constellationAbbreviation(s.constellationRow));
    else
        std::snprintf(buf, sizeof buf, "%d %s", s.flamsteed,
                      constellationAbbreviation(s.constellationRow));
    return buf;
}

std::string Keyed(const char* what, long n) { return n > 0 ? what + std::to_string(n) : ""; }

Image HipIndex(ReferenceSet& set) {
    Image image;
    for (const NamedStar& n : set.named)
        if (n.name->hip > 0 && !PutStar(image, hcOffset(n.name->hip), 1, n.star))
            set.notes.push_back("hc: HIP " + std::to_string(n.name->hip) + " left out");
    return image;
}

template <size_t N>
void CopyText(char (&field)[N], const std::string& text) {
    std::memset(field, 0, N);
    std::memcpy(field, text.data(), std::min(text.size(), N - 1));
}

std::string NameDescription(const StarName& n) {
    std::string text = "IAU proper name, approved by the WGSN " + n.approved +
                       ". WGSN designation " + n.designation;
    if (!n.id.empty()) text += ", " + n.id + " " + n.constellation;
    if (!n.component.empty()) text += ", component " + n.component;
    return text + ".";
}

Image CsnFile(const ReferenceSet& set) {
    Image image;
    for (const NamedStar& n : set.named) {
        CsnRecord r;
        CopyText(r.name, n.text);
        CopyText(r.description, NameDescription(*n.name));
        Append<CsnLayout>(image, r);
    }
    return image;
}

std::string Folded(const std::string& ascii) {
    std::string out = ascii;
    for (char& c : out) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return out;
}

// Alphabetical by the ASCII spelling without case, so that a name with an
// accented letter sorts with its plain letter.
Image CsnAlphaFile(const ReferenceSet& set) {
    std::vector<const NamedStar*> order;
    for (const NamedStar& n : set.named) order.push_back(&n);
    std::stable_sort(order.begin(), order.end(), [](const NamedStar* a, const NamedStar* b) {
        return Folded(a->name->name) < Folded(b->name->name);
    });
    Image image;
    for (const NamedStar* n : order) {
        CsnAlphaRecord r;
        r.star = static_cast<uint32_t>(n->star);
        CopyText(r.name, n->text);
        Append<CsnAlphaLayout>(image, r);
    }
    return image;
}

Image VindexFile(const ReferenceSet& set) {
    Image image;
    for (const VariableIndexRow& row : set.vindex) Append<VariableIndexLayout>(image, row);
    return image;
}

Image VrefFile(const ReferenceSet& set) {
    Image image(static_cast<size_t>(set.vrefRows) * VariableRecordLayout::kSize, 0);
    for (const Variable& v : set.variables) {
        const BrightStar& s = set.catalogue[v.star - 1];
        VariableRecord r;
        r.ra = radiansToScaledAngle(s.raDegrees * kDegree);
        r.dec = radiansToScaledAngle(s.decDegrees * kDegree);
        r.pmRaCode = properMotionCode(s.pmRa);
        r.pmDecCode = properMotionCode(s.pmDec);
        r.constellation1 = static_cast<uint8_t>(v.constellationRow + 1);
        r.number1 = static_cast<uint32_t>(v.number);
        r.star1 = static_cast<uint32_t>(v.star);
        EncodeRecord<VariableRecordLayout>(
            r, image.data() + (v.vrefRow - 1) * VariableRecordLayout::kSize);
    }
    return image;
}

// One index row per vref row, so that a star's vref index is also the row
// of its name here; rows without a variable have no text.
Image VnamesFile(const ReferenceSet& set) {
    std::vector<std::string> texts(static_cast<size_t>(set.vrefRows));
    for (const Variable& v : set.variables)
        texts[v.vrefRow - 1] = set.catalogue[v.star - 1].variable;
    Image image;
    uint32_t offset = static_cast<uint32_t>(texts.size() * TextIndexLayout::kSize);
    for (const std::string& t : texts) {
        TextIndexRow row;
        row.offset = offset;
        row.length = static_cast<uint16_t>(t.size());
        Append<TextIndexLayout>(image, row);
        offset += row.length;
    }
    for (const std::string& t : texts) image.insert(image.end(), t.begin(), t.end());
    return image;
}

// ---- Output ------------------------------------------------------------------

bool MakeFolders(const std::string& path) {
    for (size_t at = path.find('/', 1); at != std::string::npos; at = path.find('/', at + 1))
        MakeFolder(path.substr(0, at).c_str());
    return MakeFolder(path.c_str()) == 1;
}

bool WriteImage(const std::string& path, const Image& image) {
    FilePtr f = OpenFile(path.c_str(), "wb");
    if (!f) return false;
    const bool ok = image.empty() || FileWrite(image.data(), image.size(), f.get()) == image.size();
    return std::fclose(f.release()) == 0 && ok;
}

std::string CataloguePath(const std::string& out, int id) {
    return out + (catalogueRootOf(id) == 0 ? "/small/" : "/stars/") + catalogueFileName(id) +
           ".bin";
}

std::string ReadmeText(const ReferenceSet& set) {
    std::string t =
        "Reference catalogue set made by make-refdata\n"
        "=============================================\n\n"
        "A small real catalogue set in Vesperal 2's file formats, for trying the program\n"
        "and for its tests. It is not Vesperal 2's own catalogue set: the star record\n"
        "numbers are this tool's own (star n is the n-th star of the Bright Star\n"
        "Catalogue in HR order, counting only stars that have a position) and differ\n"
        "from those of a user's real catalogue set, so nothing that stores star numbers\n"
        "should be carried from one set to the other.\n\n"
        "stars/ (star-data root)\n"
        "  stars.bin    " +
        std::to_string(set.catalogue.size()) +
        " long star records: J2000 place, proper motion, V, B-V,\n"
        "               spectral type, HR, HD, SAO, Flamsteed and Bayer designation;\n"
        "               HIP and the name row for named stars, the vref row for variables\n"
        "  hrbs.bin     HR to star          hd.bin      HD to stars (two slots)\n"
        "  sao.bin      SAO to star         hc.bin      HIP to star (named stars only)\n"
        "  flamstd.bin  Flamsteed to stars  bayer.bin   Bayer letter to stars (two slots)\n"
        "  csn.bin      " +
        std::to_string(set.named.size()) +
        " proper names with a description, in star order\n"
        "  vindex.bin, vref.bin, vnames.bin\n"
        "               " +
        std::to_string(set.variables.size()) +
        " variables with a lettered or V-number name; each\n"
        "               constellation's vref run has a row for every name number from 1\n"
        "               to its largest (unused rows are zero), and vnames row n names\n"
        "               vref row n\n"
        "  gal.bin      galaxies, records from 1, with pgc.bin (PGC to galaxy, PGC numbers\n"
        "               below 1000000), ugc.bin (UGC to galaxies), mcg.bin and esob.bin\n"
        "               (MCG and ESO numbers to galaxies)\n"
        "  PNG.bin      PN G designations to planetary nebulae\n"
        "  LBN.bin      LBN numbers to bright nebulae\n"
        "  m.bin, ngc.bin, ic.bin\n"
        "               Messier, NGC and IC numbers to the class files\n"
        "  cnames.bin, cn_cross.bin\n"
        "               127 common names (those of Messier objects first, in Messier\n"
        "               order, then in the catalogue's order; an object's first name)\n"
        "small/ (small-data root)\n"
        "  csn_alp.bin  the proper names in alphabetical order\n"
        "  gg.bin, oc.bin, glob.bin, pln.bin, neb.bin, dn.bin\n"
        "               galaxy groups, pairs and triplets; open clusters; globular\n"
        "               clusters; planetary nebulae; bright nebulae (emission,\n"
        "               reflection, H II regions, supernova remnants, clusters with\n"
        "               nebulosity); dark nebulae. Records in the catalogue's order,\n"
        "               except that the first open cluster is one without a Messier,\n"
        "               NGC or IC number (record 0 of that file cannot be named by\n"
        "               the cross tables)\n"
        "  connames.bin, conbound.bin, conrect.bin\n"
        "               the 89 constellation zones (Serpens Caput and Cauda apart):\n"
        "               names and label points, J2000 boxes, and the B1875.0\n"
        "               boundaries as rectangles\n"
        "gsc/           empty\n"
        "solar/         the solar-system folder (or the one given with --solar)\n"
        "  PLANETS.NDX, PLANETS.BIN\n"
        "               the VSOP87 series of the planets, each series cut to its\n"
        "               largest terms (the abridged series of Meeus, Astronomical\n"
        "               Algorithms, Appendix III): record 0 the Earth on the ecliptic\n"
        "               of J2000 (VSOP87B), records 1 to 8 Mercury to Neptune on the\n"
        "               ecliptic and equinox of date (VSOP87D)\n"
        "  moontab.bin  the Moon's 60 terms of longitude and distance and 60 of\n"
        "               latitude (abridged ELP-2000/82)\n"
        "  plutotab.bin Pluto's 43 periodic terms (J2000)\n"
        "  nutcon.bin   62 terms of the IAU 1980 nutation (the largest one is coded\n"
        "               in the program)\n"
        "  comets.bin, cnames.bin\n"
        "               " + std::to_string(set.comets) + " reference comets (class 3, PID = record from 0) and\n"
        "               their name list, from the Minor Planet Center's CometEls.txt;\n"
        "               one set of osculating elements a comet, used as a two-body\n"
        "               orbit at every date: there are no epoch files for comets, so\n"
        "               the elements stay the same whatever the date asked for\n"
        "  mp_data.bin, mp_names.bin, mp_alpha.bin, limits.bin\n"
        "               " + std::to_string(set.minorPlanets.count) +
        " reference minor planets, (1) Ceres on, numbered as the\n"
        "               Minor Planet Center numbers them: H and G, names, names in\n"
        "               alphabetical order, the range of element files\n"
        "  elements/elements/NNNNN.bin\n"
        "               element files " + std::to_string(set.minorPlanets.lowestFile) + " to " +
        std::to_string(set.minorPlanets.highestFile) + ", one for every 40 days of " +
        std::to_string(kMinorPlanetFirstYear) + " to " + std::to_string(kMinorPlanetLastYear) + ".\n"
        "               The orbits are two-body (no perturbations), so every file holds\n"
        "               the same elements: the MPC's osculating elements of 2025 Nov 21.0\n"
        "               TT with the perihelion time from their mean anomaly. Far from\n"
        "               that epoch the places drift from the true ones (a degree or so\n"
        "               in ten years for a main-belt object).\n\n"
        "Deep-sky counts: " +
        [&] {
            std::string counts;
            for (const std::string& c : set.deepSky.counts)
                counts += (counts.empty() ? "" : ", ") + c;
            return counts;
        }() +
        ".\n"
        "Sizes are the major axis in arc minutes, magnitudes V where the catalogue has\n"
        "one, else B. Objects OpenNGC lists as stars, asterisms, duplicates or\n"
        "nonexistent have no class file.\n\n"
        "Names are written in Windows-1252 (the ASCII spelling where the code page\n"
        "lacks a letter). Files the sources cannot fill (PPM, BD, CD, CP, GC, Tycho,\n"
        "GSC, CCDM, orbits, notes, photometric standards, quasars, and the deep-sky\n"
        "indexes other than PGC, UGC, MCG and ESO) are left out: the program finds nothing in\n"
        "them.\n\n"
        "Sources\n"
        "  Yale Bright Star Catalogue, 5th Revised Ed. (Hoffleit & Warren 1991), CDS\n"
        "  V/50. Licence: none stated by the catalogue; NASA/ADC catalogue distributed\n"
        "  freely by CDS; cite Hoffleit & Warren 1991.\n"
        "  IAU Catalog of Star Names (IAU-CSN), IAU Division C WGSN, \"last updated\n"
        "  2022-04-04\". Licence: Creative Commons Attribution; credit the IAU WGSN.\n"
        "  OpenNGC by Mattia Verga and contributors (github.com/mattiaverga/OpenNGC,\n"
        "  NGC.csv and addendum.csv of 2023-10-05). Licence: CC-BY-SA-4.0 (Creative\n"
        "  Commons Attribution-ShareAlike 4.0 International). The deep-sky files of\n"
        "  this set (gal, gg, oc, glob, pln, neb, dn, m, ngc, ic, cnames, cn_cross,\n"
        "  pgc, ugc, mcg, esob, PNG, LBN) are an adaptation of OpenNGC and are shared under the same\n"
        "  licence, https://creativecommons.org/licenses/by-sa/4.0/.\n"
        "  Constellation boundaries: N. G. Roman, \"Identification of a Constellation\n"
        "  from a Position\", PASP 99, 695 (1987); CDS catalogue VI/42 (the IAU\n"
        "  boundaries of Delporte 1930 at B1875.0). Free use with acknowledgement of\n"
        "  Roman 1987 and CDS VI/42. Constellation names: the IAU's list; label\n"
        "  points computed from the boundaries.\n"
        "  VSOP87 by P. Bretagnon and G. Francou (A&A 202, 309, 1988), Bureau des\n"
        "  Longitudes / IMCCE, CDS catalogue VI/81 (VSOP87B.ear, VSOP87D.*). No licence\n"
        "  stated; distributed freely for scientific use; cite Bretagnon & Francou 1988.\n"
        "  The Moon's and Pluto's terms: J. Meeus, Astronomical Algorithms, 2nd ed.\n"
        "  (1998), Tables 47.A and 47.B (the abridged ELP-2000/82 of M. Chapront-Touze\n"
        "  and J. Chapront) and 37.A. Published coefficients; cite the book.\n"
        "  Nutation: the IAU 1980 theory (Seidelmann 1982), its 63 terms of at least\n"
        "  0.0003\". Published coefficients.\n"
        "  Comet elements: IAU Minor Planet Center, CometEls.txt (epoch 2026 May 31.0\n"
        "  TT); each record keeps the MPC's reference for its orbit. Attribution to\n"
        "  the Minor Planet Center as its terms ask; updated copies:\n"
        "  https://www.minorplanetcenter.net/iau/MPCORB/CometEls.txt\n"
        "  Minor planets: orbital elements from the IAU Minor Planet Center (MPC),\n"
        "  Smithsonian Astrophysical Observatory, MPCORB.DAT (epoch 2025 Nov 21.0 TT;\n"
        "  the lines of (1) to (30), with the reference and orbit computer of each,\n"
        "  are in the source's orbits/mpcorb-excerpt.dat). Updated copies:\n"
        "  https://www.minorplanetcenter.net/iau/MPCORB/MPCORB.DAT. Terms: programs may\n"
        "  include the data with proper attribution to the Minor Planet Center.\n";
    if (!set.deepSky.notes.empty()) {
        t += "\nDeep-sky notes:\n";
        for (const std::string& note : set.deepSky.notes) t += "  " + note + "\n";
    }
    if (!set.notes.empty()) {
        t += "\nIndex notes (where two stars already fill a key's slots, a lookup finds those):\n";
        for (const std::string& note : set.notes) t += "  " + note + "\n";
    }
    return t;
}

bool WriteSet(const std::string& out, const std::string& solar, ReferenceSet& set) {
    const std::vector<LongStarRecord> records = StarRecords(set);
    Image stars;
    for (const LongStarRecord& r : records) Append<LongStarLayout>(stars, r);
    std::vector<std::pair<int, Image>> files = {
        {kCatStars, stars},
        {kCatHrbs,
         NumberIndex(
             set, "hrbs", kHrbsSlot, [](const BrightStar& s) { return Keyed("HR ", s.hr); },
             [](const BrightStar& s) { return hrbsOffset(s.hr); })},
        {kCatHd, NumberIndex(
                     set, "hd", kHdSlot, [](const BrightStar& s) { return Keyed("HD ", s.hd); },
                     [](const BrightStar& s) { return hdOffset(s.hd); })},
        {kCatSao,
         NumberIndex(
             set, "sao", kSaoSlot, [](const BrightStar& s) { return Keyed("SAO ", s.sao); },
             [](const BrightStar& s) { return saoOffset(s.sao); })},
        {kCatFlamstd,
         NumberIndex(
             set, "flamstd", kFlamstdSlot,
             [](const BrightStar& s) { return Designation(s, false); },
             [](const BrightStar& s) { return flamstdOffset(s.constellationRow, s.flamsteed); })},
        {kCatBayer,
         NumberIndex(
             set, "bayer", kBayerSlot, [](const BrightStar& s) { return Designation(s, true); },
             [](const BrightStar& s) {
                 // Nine superscripts a letter: a ninth one has no slot of its
                 // own (it would land on the next letter's), so it is left out.
                 return s.bayerSuperscript > 8
                            ? -1
                            : bayerOffset(s.constellationRow, s.bayerLetter, s.bayerSuperscript);
             })},
        {kCatHc, HipIndex(set)},
        {kCatCsn, CsnFile(set)},
        {kCatCsnAlp, CsnAlphaFile(set)},
        {kCatVindex, VindexFile(set)},
        {kCatVref, VrefFile(set)},
        {kCatVnames, VnamesFile(set)},
        {kCatConnames, set.constellations.connames},
        {kCatConbound, set.constellations.conbound},
        {kCatConrect, set.constellations.conrect},
    };
    files.insert(files.end(), set.deepSky.files.begin(), set.deepSky.files.end());
    for (const auto& [id, image] : files) {
        const std::string path = CataloguePath(out, id);
        if (!WriteImage(path, image)) {
            std::fprintf(stderr, "make-refdata: cannot write %s\n", path.c_str());
            return false;
        }
    }
    std::vector<SolarFile> solarFiles = set.solar;
    solarFiles.insert(solarFiles.end(), set.minorPlanets.small.begin(), set.minorPlanets.small.end());
    for (long n = set.minorPlanets.lowestFile; n <= set.minorPlanets.highestFile; ++n)
        solarFiles.push_back({"elements/elements/" + std::to_string(n) + ".bin", set.minorPlanets.elements});
    for (const SolarFile& file : solarFiles) {
        const std::string path = solar + "/" + file.name;
        if (!WriteImage(path, file.bytes)) {
            std::fprintf(stderr, "make-refdata: cannot write %s\n", path.c_str());
            return false;
        }
    }
    if (!WriteImage(out + "/README.txt", [&] {
            const std::string text = ReadmeText(set);
            return Image(text.begin(), text.end());
        }())) {
        std::fprintf(stderr, "make-refdata: cannot write %s/README.txt\n", out.c_str());
        return false;
    }
    return true;
}

constexpr const char* kUsage = "usage: make-refdata OUTDIR [--source DIR] [--solar DIR]\n";

int Usage() {
    std::fputs(kUsage, stderr);
    return 2;
}

int Help() {
    std::fputs(kUsage, stdout);
    std::fputs(
        "\n"
        "Writes a small reference set in the program's file formats from the public\n"
        "catalogues and series in the source folder (--source; by default\n"
        FERRY2_REFDATA_SOURCE "):\n"
        "  OUTDIR/stars/   stars.bin with its HR, HD, SAO, HIP, Flamsteed and Bayer\n"
        "                  indexes, csn.bin, vindex.bin, vref.bin, vnames.bin; gal.bin\n"
        "                  with the PGC, UGC, MCG, ESO, PN G, LBN, Messier, NGC, IC and\n"
        "                  common-name tables\n"
        "  OUTDIR/small/   csn_alp.bin, the other deep-sky class files, connames.bin,\n"
        "                  conbound.bin, conrect.bin\n"
        "  OUTDIR/gsc/     empty\n"
        "  OUTDIR/README.txt  what the set holds, its sources and their licences\n"
        "  solar folder    PLANETS.NDX, PLANETS.BIN, moontab.bin, plutotab.bin and\n"
        "                  nutcon.bin, from the series in the source's solar/ folder;\n"
        "                  and comets.bin and cnames.bin, the reference comets, from\n"
        "                  the MPC element lines in the source's orbits/ folder\n"
        "                  (two-body elements, the same whatever the date);\n"
        "                  OUTDIR/solar/ unless --solar names another; there too\n"
        "                  the reference minor planets from the source's orbits/\n"
        "                  minor-planets.csv (Minor Planet Center): mp_data.bin,\n"
        "                  mp_names.bin, mp_alpha.bin, limits.bin, and under\n"
        "                  elements/elements/ one element file for every 40 days of\n"
        "                  2000 to 2050. The orbits are two-body, so the elements do\n"
        "                  not change from one element file to the next: every file\n"
        "                  holds the same, and only its number tells the epoch\n",
        stdout);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    std::string out;
    std::string source = FERRY2_REFDATA_SOURCE;
    std::string solar;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--help") == 0)
            return Help();
        else if (std::strcmp(argv[i], "--source") == 0 && i + 1 < argc)
            source = argv[++i];
        else if (std::strcmp(argv[i], "--solar") == 0 && i + 1 < argc)
            solar = argv[++i];
        else if (argv[i][0] != '-' && out.empty())
            out = argv[i];
        else
            return Usage();
    }
    if (out.empty()) return Usage();
    while (out.size() > 1 && out.back() == '/') out.pop_back();
    if (solar.empty()) solar = out + "/solar";
    while (solar.size() > 1 && solar.back() == '/') solar.pop_back();

    ReferenceSet set;
    std::string error;
    if (!ReadBrightStars(source + "/bright-stars.csv", &set.catalogue, &error) ||
        !ReadStarNames(source + "/star-names.csv", &set.names, &error) || !TieNames(set, &error) ||
        !MakeConstellationImages(source, &set.constellations, &error) ||
        !MakeDeepSkyImages(source, &set.deepSky, &error) ||
        !MakeSolarImages(source + "/solar", &set.solar, &error) ||
        !MakeCometImages(source + "/orbits", &set.solar, &set.comets, &error) ||
        !MakeMinorPlanetImages(source + "/orbits/minor-planets.csv", kMinorPlanetFirstYear,
                               kMinorPlanetLastYear, &set.minorPlanets, &error)) {
        std::fprintf(stderr, "make-refdata: %s\n", error.c_str());
        return 1;
    }
    for (size_t i = 1; i < set.catalogue.size(); ++i)
        if (set.catalogue[i].hr <= set.catalogue[i - 1].hr) {
            std::fprintf(stderr, "make-refdata: HR %ld is out of order\n", set.catalogue[i].hr);
            return 1;
        }
    NumberVariables(set);
    // The star record holds the name row in 11 bits; vref has rows up to a
    // fixed last one.
    if (set.named.size() > 2047 || set.vrefRows > kLastVrefRow) {
        std::fprintf(stderr, "make-refdata: too many names or variable rows\n");
        return 1;
    }

    if (!MakeFolders(out + "/small") || !MakeFolders(out + "/stars") ||
        !MakeFolders(out + "/gsc") || !MakeFolders(solar) || !MakeFolders(solar + "/elements/elements")) {
        std::fprintf(stderr, "make-refdata: cannot make the folders under %s and %s\n",
                     out.c_str(), solar.c_str());
        return 1;
    }
    if (!WriteSet(out, solar, set)) return 1;
    std::printf("%lu stars, %lu names, %lu variables (%ld vref rows), %lu index notes -> %s;"
                " solar tables -> %s\n",
                static_cast<unsigned long>(set.catalogue.size()),
                static_cast<unsigned long>(set.named.size()),
                static_cast<unsigned long>(set.variables.size()), set.vrefRows,
                static_cast<unsigned long>(set.notes.size()), out.c_str(), solar.c_str());
    return 0;
}
