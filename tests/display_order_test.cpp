// The order in which an object's designations are tried for its display
// name. Each class gets one crafted object that carries every designation
// the class knows; the designations are then taken away one at a time from
// the top, the catalogue rewritten each time, and the name must fall to the
// next designation in the order. Expected names are written out by hand.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "base/record_layout.h"
#include "catalog/catalogue_files.h"
#include "catalog/catalogue_roots.h"
#include "catalog/cluster_files.h"
#include "catalog/cross_tables.h"
#include "catalog/dark_nebula_files.h"
#include "catalog/display_name.h"
#include "catalog/dm_numbers.h"
#include "catalog/galaxy_files.h"
#include "catalog/multiple_stars.h"
#include "catalog/nebula_files.h"
#include "catalog/planetary_files.h"
#include "catalog/quasar_files.h"
#include "catalog/star_file.h"
#include "catalog/star_texts.h"
#include "catalog/variable_stars.h"
#include "support.h"

namespace {

struct FormWanted {
    int isFreeText;
    const char* prefix;
    int fieldCount;
    int fields[3];
};

constexpr FormWanted kFreeText = {1, "", 0, {}};

// One line of a walk: the name the object must have now, its form, and
// what to take away before the next line (null on the last).
template <class World>
struct Step {
    const char* primary;
    FormWanted form;
    void (*takeAway)(World&);
};

template <class Layout, class R>
Bytes Image(const R& record) {
    const auto image = RecordImage<Layout>(record);
    return Bytes(image.begin(), image.end());
}

// `bytes` after `leading` zero bytes: a record that is not the file's first.
Bytes After(size_t leading, const Bytes& bytes) {
    Bytes file(leading, 0);
    file.insert(file.end(), bytes.begin(), bytes.end());
    return file;
}

void Write(int id, const Bytes& bytes) { WriteFileBytes(catalogueFilePath(id), bytes); }

// `cnames`: 32-byte zero-terminated rows from 0.
void WriteCommonNames(const std::vector<std::string>& names) {
    Bytes file(names.size() * kCommonNameSize, 0);
    for (size_t row = 0; row < names.size(); ++row)
        std::memcpy(file.data() + row * kCommonNameSize, names[row].data(), names[row].size());
    Write(kCatCnames, file);
}

// Rewrites the files from `world`, names the object, takes the next
// designation away, and so on down the table.
template <class World>
void WalkOrder(World world, void (*write)(const World&), int objectClass, uint32_t pid,
               const std::vector<Step<World>>& steps) {
    for (size_t i = 0; i < steps.size(); ++i) {
        const Step<World>& step = steps[i];
        write(world);
        std::string name = "unset";
        DesignationForm form;
        ASSERT_EQ(displayName(identityRecord(objectClass, pid), &name, nullptr, nullptr, &form), 1)
            << "step " << i << " (" << step.primary << ")";
        EXPECT_EQ(name, step.primary) << "step " << i;
        EXPECT_EQ(form.isFreeText, step.form.isFreeText) << step.primary;
        EXPECT_STREQ(form.prefix, step.form.prefix) << step.primary;
        EXPECT_EQ(form.fieldCount, step.form.fieldCount) << step.primary;
        for (int f = 0; f < step.form.fieldCount; ++f)
            EXPECT_EQ(form.fields[f], step.form.fields[f]) << step.primary << " field " << f;
        if (step.takeAway) step.takeAway(world);
    }
}

class DisplayOrderTest : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        setCatalogueRoots("cat/", "cat/", "cat/");
        MakeDirs("cat");
    }
};

// ---- Stars ------------------------------------------------------------------

constexpr int kLyr = 51;  // constellation row of Lyra

// A star and its side files: the common name in `csn`, a variable row in
// `vref` and a multiple-star system in `ccdm_i` and `ccdm`.
struct StarWorld {
    LongStarRecord star;
    VariableRecord variable;
    CcdmIndexRow system;
    CcdmComponent components[2];
};

StarWorld FullStar() {
    StarWorld w;
    LongStarRecord& s = w.star;
    s.csnRow = 1;
    s.designationConstellation = kLyr;
    s.bayerLetter = 1;  // Alpha
    s.flamsteed = 3;
    s.vrefIndex = 1;
    s.hr = 7001;
    s.hd = 172167;
    s.sao = 67174;
    s.ppmLow = 81558;
    s.hip = 91262;
    s.bd = packDm('+', 38, 3238, ' ');
    s.cd = packDm('-', 23, 4567, ' ');
    s.cp = packDm('-', 52, 914, ' ');
    s.gc = 25466;
    s.ccdmRow = 1;
    s.nsv = 11128;
    s.gscRegion = 3105;
    s.gscNumber = 2070;
    s.tychoComponent = 1;

    w.variable.constellation1 = kLyr + 1;  // the variable files count constellations from 1
    w.variable.number1 = 533;              // a V-number: "V533"

    w.system.componentOffset = 0;
    w.system.componentsPlusOne = 3;
    w.system.star = 1;
    w.system.ccdmRa = 18443;
    w.system.ccdmDec = 3940;
    w.system.ccdmNorth = 1;
    std::memcpy(w.components[0].discoverer, "STF2382", 7);  // fills the field, no NUL
    w.components[0].ads = 11635;
    w.components[0].letter = 'A';
    std::memcpy(w.components[1].discoverer, "STF2382", 7);
    w.components[1].letter = 'B';
    return w;
}

void WriteStar(const StarWorld& w) {
    Write(kCatStars, Image<LongStarLayout>(w.star));
    CsnRecord vega;
    std::strcpy(vega.name, "Vega");
    Write(kCatCsn, Image<CsnLayout>(vega));
    Write(kCatVref, Image<VariableRecordLayout>(w.variable));
    Write(kCatCcdmI, Image<CcdmIndexLayout>(w.system));
    Bytes components = Image<CcdmComponentLayout>(w.components[0]);
    const Bytes second = Image<CcdmComponentLayout>(w.components[1]);
    components.insert(components.end(), second.begin(), second.end());
    Write(kCatCcdm, components);
}

TEST_F(DisplayOrderTest, StarNamesFallThroughTheCataloguesInOrder) {
    using S = StarWorld;
    const std::vector<Step<S>> steps = {
        {"Vega", kFreeText, [](S& w) { w.star.csnRow = 0; }},
        {"Alpha Lyr", kFreeText, [](S& w) { w.star.bayerLetter = 0; }},
        {"3 Lyr", kFreeText, [](S& w) { w.star.flamsteed = 0; }},
        {"V533 Lyr", kFreeText, [](S& w) { w.star.vrefIndex = 0; }},
        {"HR 7001", {0, "HR", 1, {7001}}, [](S& w) { w.star.hr = 0; }},
        {"HD 172167", {0, "HD", 1, {172167}}, [](S& w) { w.star.hd = 0; }},
        {"SAO 67174", {0, "SAO", 1, {67174}}, [](S& w) { w.star.sao = 0; }},
        {"PPM 81558", {0, "PPM", 1, {81558}}, [](S& w) { w.star.ppmLow = 0; }},
        {"HIP 91262", {0, "HIP", 1, {91262}}, [](S& w) { w.star.hip = 0; }},
        {"BD +38 03238", {0, "BD", 3, {38, 3238, 0}}, [](S& w) { w.star.bd = 0; }},
        {"CD -23 04567", {0, "CD", 3, {-23, 4567, 0}}, [](S& w) { w.star.cd = 0; }},
        {"CP -52 00914", {0, "CP", 3, {-52, 914, 0}}, [](S& w) { w.star.cp = 0; }},
        {"GC 25466", {0, "GC", 1, {25466}}, [](S& w) { w.star.gc = 0; }},
        // The system's Struve number; once no component reads "STF", its ADS
        // number; without that, the CCDM number itself.
        {"Struve 2382", {0, "Struve", 1, {2382}},
         [](S& w) {
             std::memcpy(w.components[0].discoverer, "BU   12", 7);
             std::memcpy(w.components[1].discoverer, "BU   12", 7);
         }},
        {"ADS 11635", {0, "ADS", 1, {11635}}, [](S& w) { w.components[0].ads = 0; }},
        {"CCDM 18443+3940", {0, "CCDM", 2, {18443, 3940}}, [](S& w) { w.star.ccdmRow = 0; }},
        {"NSV 11128", {0, "NSV", 1, {11128}}, [](S& w) { w.star.nsv = 0; }},
        {"TYC 03105-2070 1", {0, "TYC", 3, {3105, 2070, 1}}, [](S& w) { w.star.tychoComponent = 0; }},
        {"GSC 03105-2070", {0, "GSC", 2, {3105, 2070}},
         [](S& w) {
             w.star.gscRegion = 0;
             w.star.gscNumber = 0;
         }},
        {"", kFreeText, nullptr},  // a star with none of them has an empty name
    };
    WalkOrder<S>(FullStar(), WriteStar, kClassStar, 1, steps);
}

TEST_F(DisplayOrderTest, SouthernCcdmNumberCarriesItsSignInTheForm) {
    StarWorld w = FullStar();
    LongStarRecord bare;  // nothing but the multiple-star row
    bare.ccdmRow = 1;
    w.star = bare;
    w.system.ccdmRa = 14396;
    w.system.ccdmDec = 6050;
    w.system.ccdmNorth = 0;
    std::memcpy(w.components[0].discoverer, "RHD   1", 7);
    std::memcpy(w.components[1].discoverer, "RHD   1", 7);
    w.components[0].ads = 0;
    const std::vector<Step<StarWorld>> steps = {
        {"CCDM 14396-6050", {0, "CCDM", 2, {14396, -6050}}, nullptr},
    };
    WalkOrder<StarWorld>(w, WriteStar, kClassStar, 1, steps);
}

TEST_F(DisplayOrderTest, StarRecordBytesAsWrittenByHand) {
    // The designations at their places in the 77-byte record, packed by hand.
    Bytes hand(77, 0);
    PokeU32(hand, 8, 1u << 21);                          // csn row 1 above the 21-bit motion
    PokeU32(hand, 18, 7001u << 18);                      // HR above the 18-bit parallax
    PokeU32(hand, 28, 91262u | 1u << 17);                // HIP, vref row 1
    PokeU32(hand, 32, 81558u);                           // PPM
    PokeU32(hand, 36, 172167u);                          // HD
    PokeU32(hand, 40, 67174u | 11128u << 18);            // SAO, NSV
    PokeU32(hand, 44, (51u << 15) | 3238u);              // BD +38: zone code 89 - 38
    PokeU32(hand, 48, (113u << 15) | 4567u);             // CD -23: zone code 23 + 90
    PokeU32(hand, 52, (142u << 15) | 914u);              // CP -52: zone code 52 + 90
    PokeU16(hand, 56, 25466);                            // GC
    PokeU32(hand, 58, 0x7FFu | 1u << 11);                // magnitude unknown, ccdm row 1
    PokeU32(hand, 62, 2070u | 3105u << 14 | 1u << 28);   // GSC number, region, Tycho component
    hand[66] = 3;                                        // Flamsteed 3
    hand[67] = static_cast<uint8_t>(kLyr | 0x80);        // Lyra's row; bit 15 of the group: Alpha
    hand[68] = 0;                                        // no superscript
    PokeI16(hand, 26, 32767);                            // colour unknown
    EXPECT_EQ(Image<LongStarLayout>(FullStar().star), hand);
}

// ---- Galaxies ---------------------------------------------------------------

struct GalaxyWorld {
    GalaxyRecord galaxy;
};

GalaxyWorld FullGalaxy() {
    GalaxyWorld w;
    GalaxyRecord& g = w.galaxy;
    g.commonNameRow = 3;
    g.messier = 31;
    g.ngc = 224;
    g.ic = 1;
    g.icSuffix = 2;
    g.arp = 1;
    g.markarian = 1;
    g.markarianSuffix = 1;
    g.pgc = 2557;
    g.mcgZonePlus7 = 14;  // zone +7
    g.mcgField = 2;
    g.mcgNumber = 16;
    g.ugc = 454;
    g.esoField = 352;
    g.esoNumber = 10;
    g.esoSuffix = 1;
    return w;
}

void WriteGalaxy(const GalaxyWorld& w) {
    WriteCommonNames({"", "", "", "Andromeda Galaxy"});
    Write(kCatGal, Image<GalaxyLayout>(w.galaxy));
}

TEST_F(DisplayOrderTest, GalaxyNamesFallThroughTheCataloguesInOrder) {
    using G = GalaxyWorld;
    const std::vector<Step<G>> steps = {
        {"Andromeda Galaxy", kFreeText, [](G& w) { w.galaxy.commonNameRow = 255; }},
        {"M 31", {0, "M", 1, {31}}, [](G& w) { w.galaxy.messier = 0; }},
        {"NGC 224", {0, "NGC", 2, {224, 0}}, [](G& w) { w.galaxy.ngc = 0; }},
        {"IC 1B", {0, "IC", 2, {1, 'B'}}, [](G& w) { w.galaxy.ic = 0; }},
        {"Arp 1", {0, "Arp", 1, {1}}, [](G& w) { w.galaxy.arp = 0; }},
        {"Markarian 1A", {0, "Markarian", 2, {1, 'A'}}, [](G& w) { w.galaxy.markarian = 0; }},
        // The PGC form's field is the galaxy's PID, record 1 here.
        {"PGC 2557", {0, "PGC", 1, {1}}, [](G& w) { w.galaxy.pgc = 0; }},
        {"MCG 7-2-16", {0, "MCG", 2, {16, 0}},
         [](G& w) {
             w.galaxy.mcgField = 0;
             w.galaxy.mcgNumber = 0;
         }},
        {"Uppsala 454", {0, "Uppsala", 2, {454, 0}}, [](G& w) { w.galaxy.ugc = 0; }},
        {"ESO 352 10A", {0, "ESO", 2, {10, 'A'}}, [](G& w) { w.galaxy.esoField = 0; }},
        {"", kFreeText, nullptr},
    };
    WalkOrder<G>(FullGalaxy(), WriteGalaxy, kClassGalaxy, 1, steps);
}

TEST_F(DisplayOrderTest, GalaxyRecordBytesAsWrittenByHand) {
    const Bytes hand = {
        0xFD, 0x09, 0x00, 0x00,  // PGC 2557
        0x80, 0x10, 0x5C, 0x00,  // MCG part 0, number 16 << 3, field 2 << 11, zone 14 << 17; Arp 1 << 22
        0x01, 0x16,              // ESO suffix 1, field 352 << 4
        0x0A,                    // ESO number 10
        0xE0, 0x00,              // NGC 224, no suffix
        0x01, 0x40,              // IC 1, suffix 2 << 13
        0x05, 0x00,              // Markarian suffix 1, number 1 << 2
        0x1F,                    // M 31
        0xC6, 0x01,              // UGC 454
        0x00,                    // UGC suffix
        0x03,                    // common name row
        0, 0, 0, 0, 0, 0, 0, 0,  // place
        0, 0, 0, 0, 0,           // Hubble type and stage, class codes, interaction
        0xFF, 0xFF,              // magnitude and surface brightness unknown
        0xFF, 0xFF, 0xFF, 0xFF,  // radial velocity -1
        0xFF, 0xFF, 0xFF, 0xFF,  // values at 41 and 43 unknown
        0xFF, 0xFF,              // colours unknown
        0x00, 0x00,              // value at 47
        0xFF, 0xFF, 0xFF, 0xFF,  // no diameters
    };
    ASSERT_EQ(hand.size(), GalaxyLayout::kSize);
    EXPECT_EQ(Image<GalaxyLayout>(FullGalaxy().galaxy), hand);
}

// ---- Diffuse nebulae -------------------------------------------------------

struct NebulaWorld {
    NebulaRecord nebula;
};

NebulaWorld FullNebula() {
    NebulaWorld w;
    NebulaRecord& d = w.nebula;
    d.commonNameRow = 1;
    d.messier = 42;
    d.ngc[0] = 1976;
    d.ic[0] = 405;
    d.sharpless = 281;
    d.vdb = 52;
    d.gum = 1;
    d.rcw = 2;
    d.lbn = 974;
    std::strcpy(d.designation, "Ced 55a");
    return w;
}

void WriteNebula(const NebulaWorld& w) {
    WriteCommonNames({"", "Orion Nebula"});
    // Nebula records count from 0: the object is record 1.
    Write(kCatNeb, After(NebulaLayout::kSize, Image<NebulaLayout>(w.nebula)));
}

TEST_F(DisplayOrderTest, DiffuseNebulaNamesFallThroughTheCataloguesInOrder) {
    using N = NebulaWorld;
    const std::vector<Step<N>> steps = {
        {"Orion Nebula", kFreeText, [](N& w) { w.nebula.commonNameRow = 255; }},
        {"M 42", {0, "M", 1, {42}}, [](N& w) { w.nebula.messier = 0; }},
        {"NGC 1976", {0, "NGC", 2, {1976, 0}}, [](N& w) { w.nebula.ngc[0] = 0; }},
        {"IC 405", {0, "IC", 2, {405, 0}}, [](N& w) { w.nebula.ic[0] = 0; }},
        {"Sh 2-281", {0, "Sh 2-", 1, {281}}, [](N& w) { w.nebula.sharpless = 0; }},
        {"vdB 52", {0, "vdB", 1, {52}}, [](N& w) { w.nebula.vdb = 0; }},
        {"Gum 1", {0, "Gum", 1, {1}}, [](N& w) { w.nebula.gum = 0; }},
        {"RCW 2", {0, "RCW", 1, {2}}, [](N& w) { w.nebula.rcw = 0; }},
        {"LBN 974", {0, "LBN", 1, {974}}, [](N& w) { w.nebula.lbn = 0; }},
        {"Ced 55a", kFreeText, [](N& w) { w.nebula.designation[0] = 0; }},
        {"", kFreeText, nullptr},
    };
    WalkOrder<N>(FullNebula(), WriteNebula, kClassDiffuseNebula, 1, steps);
}

// ---- Globular clusters ------------------------------------------------------

struct GlobularWorld {
    GlobularRecord globular;
};

GlobularWorld FullGlobular() {
    GlobularWorld w;
    GlobularRecord& g = w.globular;
    g.commonNameRow = 2;
    g.messier = 13;
    g.ngc = 6205;
    g.ic = 4499;
    g.palomar = 5;
    g.terzan = 7;
    std::strcpy(g.designation, "Djorg 1");
    return w;
}

void WriteGlobular(const GlobularWorld& w) {
    WriteCommonNames({"", "", "Hercules Cluster"});
    Write(kCatGlob, Image<GlobularLayout>(w.globular));
}

TEST_F(DisplayOrderTest, GlobularNamesFallThroughTheCataloguesInOrder) {
    using G = GlobularWorld;
    const std::vector<Step<G>> steps = {
        {"Hercules Cluster", kFreeText, [](G& w) { w.globular.commonNameRow = 255; }},
        {"M 13", {0, "M", 1, {13}}, [](G& w) { w.globular.messier = 0; }},
        {"NGC 6205", {0, "NGC", 2, {6205, 0}}, [](G& w) { w.globular.ngc = 0; }},
        {"IC 4499", {0, "IC", 2, {4499, 0}}, [](G& w) { w.globular.ic = 0; }},
        {"Palomar 5", {0, "Palomar", 1, {5}}, [](G& w) { w.globular.palomar = 0; }},
        {"Terzan 7", {0, "Terzan", 1, {7}}, [](G& w) { w.globular.terzan = 0; }},
        {"Djorg 1", kFreeText, [](G& w) { w.globular.designation[0] = 0; }},
        {"", kFreeText, nullptr},
    };
    WalkOrder<G>(FullGlobular(), WriteGlobular, kClassGlobular, 1, steps);
}

// ---- Dark nebulae -----------------------------------------------------------

struct DarkWorld {
    DarkNebulaRecord dark;
};

DarkWorld FullDark() {
    DarkWorld w;
    DarkNebulaRecord& d = w.dark;
    d.opacity = 4;
    d.commonNameRow = 0;
    d.barnard = 33;
    d.ldn = 1630;
    d.dcLongitude = 2069;  // 206.9 degrees
    d.dcLatitude = -165;   // -16.5
    d.dcSuffix = 1;
    return w;
}

void WriteDark(const DarkWorld& w) {
    WriteCommonNames({"Horsehead Nebula"});
    // Dark nebula records count from 0: the object is record 1.
    Write(kCatDn, After(DarkNebulaLayout::kSize, Image<DarkNebulaLayout>(w.dark)));
}

TEST_F(DisplayOrderTest, DarkNebulaNamesFallThroughTheCataloguesInOrder) {
    using D = DarkWorld;
    const std::vector<Step<D>> steps = {
        {"Horsehead Nebula", kFreeText, [](D& w) { w.dark.commonNameRow = 255; }},
        {"B 33", {0, "B", 2, {33, 0}}, [](D& w) { w.dark.barnard = 0; }},
        {"LDN 1630", {0, "LDN", 1, {1630}}, [](D& w) { w.dark.ldn = 0; }},
        {"DC 206.9-16.5A", {0, "DC", 3, {2069, -165, 'A'}},
         [](D& w) {
             w.dark.dcLongitude = 0;
             w.dark.dcLatitude = 0;
         }},
        {"", kFreeText, nullptr},
    };
    WalkOrder<D>(FullDark(), WriteDark, kClassDarkNebula, 1, steps);
}

// A globule shares the file but carries its designation text alone, which
// is then its name.
TEST_F(DisplayOrderTest, GlobuleIsNamedByItsText) {
    GlobuleRecord globule;
    globule.type = 12;
    std::strcpy(globule.designation, "CB 34");
    Write(kCatDn, After(DarkNebulaLayout::kSize, Image<GlobuleLayout>(globule)));
    std::string name;
    DesignationForm form;
    ASSERT_EQ(displayName(identityRecord(kClassDarkNebula, 1), &name, nullptr, nullptr, &form), 1);
    EXPECT_EQ(name, "CB 34");
    EXPECT_EQ(form.isFreeText, 1);
}

// ---- Quasars ----------------------------------------------------------------

struct QuasarWorld {
    QuasarRecord quasar;
};

QuasarWorld FullQuasar() {
    QuasarWorld w;
    QuasarRecord& q = w.quasar;
    q.commonNameRow = 1;
    std::strcpy(q.discoverer, "PG 1226+023");
    q.qRaPart = 1226;
    q.qDecPart = 23;
    q.qSuffix = 'A';
    return w;
}

void WriteQuasar(const QuasarWorld& w) {
    WriteCommonNames({"", "Brightest Quasar"});
    Write(kCatQso, Image<QuasarLayout>(w.quasar));
}

TEST_F(DisplayOrderTest, QuasarNamesFallThroughTheCataloguesInOrder) {
    using Q = QuasarWorld;
    const std::vector<Step<Q>> steps = {
        {"Brightest Quasar", kFreeText, [](Q& w) { w.quasar.commonNameRow = 255; }},
        // A discoverer text of fewer than 3 characters counts as none.
        {"PG 1226+023", kFreeText, [](Q& w) { std::strcpy(w.quasar.discoverer, "PG"); }},
        {"Q1226+0023A", {0, "Q", 3, {1226, 23, 'A'}},
         [](Q& w) {
             w.quasar.qRaPart = 0;
             w.quasar.qDecPart = 0;
         }},
        {"", kFreeText, nullptr},
    };
    WalkOrder<Q>(FullQuasar(), WriteQuasar, kClassQuasar, 1, steps);
}

// ---- Galaxy groups ----------------------------------------------------------

constexpr uint32_t kHickson92 = 4076 + 92;  // a Hickson group's PID

struct GroupWorld {
    GroupRecord group;
};

GroupWorld FullGroup() {
    GroupWorld w;
    w.group.commonNameRow = 4;
    w.group.agc = 2500;
    w.group.hickson = 92;
    return w;
}

void WriteGroup(const GroupWorld& w) {
    WriteCommonNames({"", "", "", "", "Stephan's Quintet"});
    // A 4-byte head, then records from 1.
    Write(kCatGg, After(kGroupFileHead + (kHickson92 - 1) * GroupLayout::kSize, Image<GroupLayout>(w.group)));
}

TEST_F(DisplayOrderTest, GroupNamesFallThroughTheCataloguesInOrder) {
    using G = GroupWorld;
    const std::vector<Step<G>> steps = {
        {"Stephan's Quintet", kFreeText, [](G& w) { w.group.commonNameRow = 255; }},
        {"AGC 2500", {0, "AGC", 1, {2500}}, [](G& w) { w.group.agc = 0; }},
        {"Hickson 92", {0, "Hickson", 1, {92}}, [](G& w) { w.group.hickson = 0; }},
        {"", kFreeText, nullptr},
    };
    WalkOrder<G>(FullGroup(), WriteGroup, kClassGalaxyGroup, kHickson92, steps);
}

// ---- Planetary nebulae and open clusters ------------------------------------

struct PlanetaryWorld {
    PlanetaryRecord planetary;
};

void WritePlanetary(const PlanetaryWorld& w) {
    WriteCommonNames({"", "", "Ring Nebula"});
    Write(kCatPln, After(PlanetaryLayout::kSize, Image<PlanetaryLayout>(w.planetary)));
}

TEST_F(DisplayOrderTest, PlanetaryIsNamedByItsCommonNameElseItsOwnText) {
    PlanetaryWorld full;
    full.planetary.commonNameRowPlus1 = 3;  // row 2
    full.planetary.messier = 57;            // neither Messier nor NGC is tried
    full.planetary.ngc = 6720;
    std::strcpy(full.planetary.designation, "PN Lyr 1");
    using P = PlanetaryWorld;
    const std::vector<Step<P>> steps = {
        {"Ring Nebula", kFreeText, [](P& w) { w.planetary.commonNameRowPlus1 = 0; }},
        {"PN Lyr 1", kFreeText, [](P& w) { w.planetary.designation[0] = 0; }},
        {"", kFreeText, nullptr},
    };
    WalkOrder<P>(full, WritePlanetary, kClassPlanetary, 1, steps);
}

struct ClusterWorld {
    OpenClusterRecord cluster;
};

void WriteCluster(const ClusterWorld& w) {
    WriteCommonNames({"Pleiades"});
    Write(kCatOc, After(OpenClusterLayout::kSize, Image<OpenClusterLayout>(w.cluster)));
}

TEST_F(DisplayOrderTest, OpenClusterIsNamedByItsCommonNameElseItsFirstFamily) {
    ClusterWorld full;
    full.cluster.commonNameRow = 0;
    full.cluster.family[0] = 24;  // Melotte
    full.cluster.number[0] = 22;
    full.cluster.family[1] = 5;   // Collinder
    full.cluster.number[1] = 42;
    using C = ClusterWorld;
    const std::vector<Step<C>> steps = {
        {"Pleiades", kFreeText, [](C& w) { w.cluster.commonNameRow = 255; }},
        {"Melotte 22", {0, "Melotte", 1, {22}}, [](C& w) { w.cluster.family[0] = 0; }},
        // Family 0 is NGC, which prints in its own form.
        {"NGC 22", {0, "NGC", 2, {22, 0}}, [](C& w) { w.cluster.number[0] = 0; }},
        {"", kFreeText, nullptr},
    };
    WalkOrder<C>(full, WriteCluster, kClassOpenCluster, 1, steps);
}

}  // namespace
