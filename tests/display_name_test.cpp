// The names objects are shown by: the primary name in each class's order of
// catalogues, the form that goes with it, the alternatives by kind, and the
// second name chosen by the caller's preferences. Expected names are the
// objects' published designations.
#include <gtest/gtest.h>

#include <algorithm>

#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "base/record_layout.h"
#include "catalog/alternative_name.h"
#include "catalog/catalogue_files.h"
#include "catalog/catalogue_roots.h"
#include "catalog/cluster_files.h"
#include "catalog/comet_files.h"
#include "catalog/cross_tables.h"
#include "catalog/dark_nebula_files.h"
#include "catalog/display_name.h"
#include "catalog/galaxy_files.h"
#include "catalog/minor_planet_roots.h"
#include "catalog/star_indexes.h"
#include "support.h"
#include "user_object_stores.h"

namespace {

const std::string kSet = FERRY2_REFDATA_DIR;
const std::string kSolar = FERRY2_SOLAR_DIR;

std::string Primary(int objectClass, uint32_t pid, DesignationForm* form = nullptr) {
    std::string name = "unset";
    EXPECT_EQ(displayName(identityRecord(objectClass, pid), &name, nullptr, nullptr, form), 1)
        << "class " << objectClass << " PID " << pid;
    return name;
}

struct FormWanted {
    int isFreeText;
    const char* prefix;
    int fieldCount;
    int fields[3];
};

void ExpectForm(const DesignationForm& f, const FormWanted& w, const std::string& what) {
    EXPECT_EQ(f.isFreeText, w.isFreeText) << what;
    EXPECT_STREQ(f.prefix, w.prefix) << what;
    EXPECT_EQ(f.fieldCount, w.fieldCount) << what;
    for (int i = 0; i < w.fieldCount; ++i) EXPECT_EQ(f.fields[i], w.fields[i]) << what << " field " << i;
}

// One kind of one object: the answer of alternativeName and the name.
struct KindWanted {
    int kind;
    int answer;
    const char* name;
};

void ExpectKinds(int objectClass, uint32_t pid, const std::vector<KindWanted>& kinds) {
    const ObjectRecord r = identityRecord(objectClass, pid);
    for (const KindWanted& k : kinds) {
        std::string name = "unset";
        EXPECT_EQ(alternativeName(k.kind, r, pid, &name, nullptr), k.answer)
            << "class " << objectClass << " kind " << k.kind;
        EXPECT_EQ(name, k.answer == 1 ? k.name : "") << "class " << objectClass << " kind " << k.kind;
    }
}

// ---- The generated reference set ------------------------------------------

class ReferenceNamesTest : public ::testing::Test {
protected:
    void SetUp() override {
        setCatalogueRoots((kSet + "small/").c_str(), (kSet + "stars/").c_str(), (kSet + "gsc/").c_str());
        setMinorPlanetRoots(kSolar.c_str(), (kSolar + "elements").c_str());
    }
    void TearDown() override { setMinorPlanetRoots("", ""); }

    static uint32_t StarOfHr(long hr) {
        FilePtr f = openHrbs();
        return f ? static_cast<uint32_t>(lookupHrbs(f.get(), hr)) : 0;
    }
    static uint32_t MessierRecord(int m, int wantedCross) {
        FilePtr f = openMessierCross();
        CrossHit hit;
        if (!f || !lookupMessierCross(f.get(), m, &hit) || hit.crossClass != wantedCross) return 0;
        return static_cast<uint32_t>(hit.record);
    }
};

TEST_F(ReferenceNamesTest, StarsAreNamedInTheOrderOfTheirCatalogues) {
    struct Case {
        long hr;
        const char* primary;
        FormWanted form;
    };
    const Case cases[] = {
        {7001, "Vega", {1, "", 0, {}}},         // proper name first
        {2491, "Sirius", {1, "", 0, {}}},
        {424, "Polaris", {1, "", 0, {}}},
        {8085, "61 Cyg", {1, "", 0, {}}},       // no Bayer letter: Flamsteed before the variable name
        {1, "HR 1", {0, "HR", 1, {1}}},        // no name of its own: the first catalogue number
    };
    for (const Case& c : cases) {
        const uint32_t star = StarOfHr(c.hr);
        ASSERT_NE(star, 0u) << c.hr;
        DesignationForm form;
        EXPECT_EQ(Primary(kClassStar, star, &form), c.primary);
        ExpectForm(form, c.form, c.primary);
    }
}

TEST_F(ReferenceNamesTest, EveryStarKindAnswersByWhatTheStarHas) {
    ExpectKinds(kClassStar, StarOfHr(7001),
                {{0, -1, ""},
                 {1, 1, "Vega"},
                 {2, 1, "Alpha Lyr"},
                 {3, 1, "3 Lyr"},
                 {4, 0, ""},  // the set's variable files hold lettered and V names only
                 {5, 1, "HR 7001"},
                 {6, 1, "HD 172167"},
                 {7, 1, "SAO 67174"},
                 {8, 0, ""},
                 {9, 1, "HIP 91262"},
                 {10, 0, ""},
                 {11, 0, ""},
                 {12, 0, ""},
                 {13, 0, ""},
                 {14, 0, ""},
                 {15, 0, ""},
                 {16, 0, ""},
                 {17, 0, ""},
                 {18, 0, ""},
                 {19, 0, ""},
                 {20, -1, ""}});
    ExpectKinds(kClassStar, StarOfHr(8085), {{2, 0, ""}, {3, 1, "61 Cyg"}, {4, 1, "V1803 Cyg"}});
    // A GSC star (bit 31) has its GSC name only.
    const uint32_t gsc = kGscPidFlag | (4650u << 14) | 1234u;
    ExpectKinds(kClassStar, gsc, {{1, 0, ""}, {18, 0, ""}, {19, 1, "GSC 04650-1234"}, {20, -1, ""}});
    DesignationForm form;
    EXPECT_EQ(Primary(kClassStar, gsc, &form), "GSC 04650-1234");
    ExpectForm(form, {0, "GSC", 2, {4650, 1234}}, "GSC");
}

TEST_F(ReferenceNamesTest, SecondNameWalksFromThePreferredKind) {
    struct Case {
        long hr;
        int firstKind;
        uint8_t flags;
        const char* secondary;
    };
    const Case cases[] = {
        {7001, 5, 1, "HR 7001"},
        {7001, 2, 0, "Alpha Lyr"},
        {7001, 1, 1, "Alpha Lyr"},  // the proper name again: on to Bayer
        {7001, 1, 0, ""},           // ... but only with the go-on flag
        {1, 2, 1, "HD 3"},          // no Bayer, Flamsteed or variable; HR 1 is the primary
        {1, 2, 0, ""},
        {1, 0, 1, ""},              // no first kind: no second name
    };
    for (const Case& c : cases) {
        NamePreferences preferences;
        preferences.firstKind[kClassStar - 1] = static_cast<uint16_t>(c.firstKind);
        preferences.flags[kClassStar - 1] = c.flags;
        std::string primary, secondary = "unset";
        EXPECT_EQ(displayName(identityRecord(kClassStar, StarOfHr(c.hr)), &primary, &preferences, &secondary, nullptr), 1);
        EXPECT_EQ(secondary, c.secondary) << c.hr << " from kind " << c.firstKind;
    }
    // Without preferences there is no second name.
    std::string secondary = "unset";
    displayName(identityRecord(kClassStar, StarOfHr(7001)), nullptr, nullptr, &secondary, nullptr);
    EXPECT_EQ(secondary, "");
}

TEST_F(ReferenceNamesTest, DeepSkyObjectsOfTheSet) {
    const uint32_t m31 = MessierRecord(31, 4);
    ASSERT_NE(m31, 0u);
    DesignationForm form;
    EXPECT_EQ(Primary(kClassGalaxy, m31, &form), "Andromeda Galaxy");
    ExpectForm(form, {1, "", 0, {}}, "M 31");
    ExpectKinds(kClassGalaxy, m31,
                {{2, 1, "M 31"},
                 {3, 1, "NGC 224"},
                 {4, 0, ""},
                 {5, 0, ""},
                 {6, 0, ""},
                 {7, 1, "PGC 2557"},
                 {8, 1, "MCG 7-2-16"},
                 {9, 1, "Uppsala 454"},
                 {10, 0, ""},
                 {11, -1, ""}});
    std::string name;
    alternativeName(7, identityRecord(kClassGalaxy, m31), m31, &name, &form);
    ExpectForm(form, {0, "PGC", 1, {static_cast<int>(m31)}}, "PGC of M 31");
    alternativeName(3, identityRecord(kClassGalaxy, m31), m31, &name, &form);
    ExpectForm(form, {0, "NGC", 2, {224, 0}}, "NGC of M 31");

    // NGC 7331 has neither Messier number nor common name.
    FilePtr ngc = openNgcCross();
    CrossHit hits[2];
    ASSERT_EQ(lookupNgcCross(ngc.get(), 7331, 0, hits), 1);
    EXPECT_EQ(Primary(kClassGalaxy, static_cast<uint32_t>(hits[0].record), &form), "NGC 7331");
    ExpectForm(form, {0, "NGC", 2, {7331, 0}}, "NGC 7331");

    const uint32_t m57 = MessierRecord(57, 3);
    EXPECT_EQ(Primary(kClassPlanetary, m57), "Ring Nebula");
    ExpectKinds(kClassPlanetary, m57, {{2, 1, "M 57"}, {3, 1, "NGC 6720"}, {10, 1, "PN G063.1+13.9"}, {15, -1, ""}});

    const uint32_t m80 = MessierRecord(80, 1);
    EXPECT_EQ(Primary(kClassGlobular, m80, &form), "M 80");
    ExpectForm(form, {0, "M", 1, {80}}, "M 80");
    ExpectKinds(kClassGlobular, m80, {{3, 1, "NGC 6093"}, {5, 0, ""}, {8, -1, ""}});
}

TEST_F(ReferenceNamesTest, DarkNebulaByBarnardNumber) {
    FilePtr dn = openDn(0);
    ASSERT_TRUE(dn);
    DarkNebulaData d;
    long horsehead = -1;
    for (long n = 0; horsehead < 0 && readDarkNebula(dn.get(), n, &d, kReadAll); ++n)
        if (d.barnard == 33) horsehead = n;
    ASSERT_GE(horsehead, 0);
    DesignationForm form;
    EXPECT_EQ(Primary(kClassDarkNebula, static_cast<uint32_t>(horsehead), &form), "B 33");
    ExpectForm(form, {0, "B", 2, {33, 0}}, "B 33");
    ExpectKinds(kClassDarkNebula, static_cast<uint32_t>(horsehead),
                {{2, 1, "Barnard 33"}, {3, 0, ""}, {4, 0, ""}, {5, 0, ""}, {6, -1, ""}});
}

TEST_F(ReferenceNamesTest, SolarSystemObjects) {
    DesignationForm form;
    EXPECT_EQ(Primary(kClassMajorBody, 5, &form), "Jupiter");
    ExpectForm(form, {1, "", 0, {}}, "Jupiter");
    EXPECT_EQ(Primary(kClassMajorBody, 10), "Moon");
    std::string name = "unset";
    EXPECT_EQ(displayName(identityRecord(kClassMajorBody, 12), &name, nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(name, "");

    EXPECT_EQ(Primary(kClassMinorPlanet, 1, &form), "(1) Ceres");
    ExpectForm(form, {0, "", 1, {1}}, "Ceres");
    ExpectKinds(kClassMinorPlanet, 4, {{1, 1, "Vesta"}, {2, 1, "(4) Vesta"}, {3, -1, ""}});

    const long halley = findCometByNumber(1);
    ASSERT_GE(halley, 0);
    const std::string halleyName = Primary(kClassComet, static_cast<uint32_t>(halley), &form);
    EXPECT_EQ(halleyName.rfind("1P/", 0), 0u) << halleyName;
    EXPECT_NE(halleyName.find("(Halley)"), std::string::npos) << halleyName;
    ExpectForm(form, {0, "", 1, {1}}, "Halley");

    const long haleBopp = findCometByIau("1995 O1");
    ASSERT_GE(haleBopp, 0);
    EXPECT_EQ(Primary(kClassComet, static_cast<uint32_t>(haleBopp), &form), "C/1995 O1 (Hale-Bopp)");
    ExpectForm(form, {1, "", 0, {}}, "Hale-Bopp");
    ExpectKinds(kClassComet, static_cast<uint32_t>(haleBopp),
                {{1, 1, "Hale-Bopp"}, {2, 1, "C/1995 O1"}, {3, 0, ""}, {4, -1, ""}});
}

TEST_F(ReferenceNamesTest, UnknownObjectsHaveNoName) {
    const ObjectRecord unknown[] = {identityRecord(kClassStar, 99999999), identityRecord(kClassGalaxy, 9999999),
                                    identityRecord(kClassImagePosition, 1), identityRecord(19, 1), identityRecord(kClassNone, 0)};
    for (const ObjectRecord& r : unknown) {
        std::string name = "unset";
        EXPECT_EQ(displayName(r, &name, nullptr, nullptr, nullptr), 0) << int(r.objectClass);
        EXPECT_EQ(name, "");
    }
    // Every output may be null.
    EXPECT_EQ(displayName(identityRecord(kClassMajorBody, 0), nullptr, nullptr, nullptr, nullptr), 1);
    // Classes named by one text have no kinds.
    EXPECT_EQ(alternativeName(1, identityRecord(kClassMajorBody, 0), 0, nullptr, nullptr), -1);
    EXPECT_EQ(alternativeName(1, identityRecord(kClassConstellation, 0), 0, nullptr, nullptr), -1);
}

// ---- The user's own objects and the constellations --------------------------

class UserNamesTest : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        setCatalogueRoots((kSet + "small/").c_str(), (kSet + "stars/").c_str(), (kSet + "gsc/").c_str());
        MakeDirs("user");
    }
};

TEST_F(UserNamesTest, TheStoresNamesWithTheirForms) {
    ASSERT_NO_FATAL_FAILURE(WriteOneObjectPerUserStore());
    {
        // A numbered comet and an unnumbered minor planet beside them.
        FilePtr c = openUserComets(nullptr);
        CometElements e = NeowiseElements();
        e.eccentricity = 0.848;
        e.perihelionDistance = 0.336;
        CometRecord comet;
        ASSERT_EQ(packComet(&comet, 2, 'P', "", "Encke", e, "test"), 1);
        ASSERT_EQ(addOrReplaceUserComet(c.get(), comet), 1);
        uint32_t count = 0;
        FilePtr m = openUserMp(&count);
        UserMpRecord mp;
        ASSERT_EQ(packUserMp(&mp, 0, "2003 AB", "test", 0.0, 0.0, 10.0, 2.5, 0.0, 0.1, 1, 2, 3, 0.0, 15, 0.15), 1);
        ASSERT_EQ(addOrReplaceUserMp(m.get(), mp, &count), 1);
    }
    const struct {
        int objectClass;
        uint32_t pid;
        const char* primary;
        int fieldCount;  // 0: free text
        int field;
        const char* secondary;  // from kind 1 on, going on
    } cases[] = {
        {kClassSupplementalStar, 1, "My Star", 0, 0, ""},
        {kClassSupplementalDeepSky, 1, "My Nebula", 0, 0, ""},
        {kClassUserComet, 1, "NEOWISE", 0, 0, "C/2020 F3"},
        {kClassUserComet, 2, "Encke", 1, 2, "2P/Encke"},
        {kClassUserMinorPlanet, 1, "(433) Eros", 1, 433, "Eros"},
        {kClassUserMinorPlanet, 2, "2003 AB", 0, 0, ""},
        {kClassConstellation, 59, "Orion", 0, 0, ""},
    };
    NamePreferences preferences;
    for (int row = 0; row < kNamePreferenceClasses; ++row) {
        preferences.firstKind[row] = 1;
        preferences.flags[row] = kNamePreferenceGoOn;
    }
    for (const auto& c : cases) {
        SCOPED_TRACE(c.primary);
        std::string primary, secondary;
        DesignationForm form;
        ASSERT_EQ(displayName(identityRecord(c.objectClass, c.pid), &primary, &preferences, &secondary, &form), 1);
        EXPECT_EQ(primary, c.primary);
        EXPECT_EQ(form.isFreeText, c.fieldCount == 0 ? 1 : 0);
        EXPECT_EQ(form.fieldCount, c.fieldCount);
        EXPECT_EQ(form.fields[0], c.field);
        EXPECT_STREQ(form.prefix, "");
        EXPECT_EQ(secondary, c.secondary);
    }
    std::string primary = "stale";
    EXPECT_EQ(displayName(identityRecord(kClassUserMinorPlanet, 9), &primary, nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(primary, "");
}

// ---- Crafted catalogues for what the set doesn't hold ---------------------

class CraftedNamesTest : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        setCatalogueRoots("cat/", "cat/", "cat/");
        MakeDirs("cat");
    }
    static void Write(int id, const Bytes& bytes) { WriteFileBytes(catalogueFilePath(id), bytes); }
};

TEST_F(CraftedNamesTest, OpenClusterByItsFamilies) {
    // Melotte 111, the Coma star cluster, is also Collinder 256.
    OpenClusterRecord coma;
    coma.family[0] = 24;  // Melotte
    coma.number[0] = 111;
    coma.family[1] = 5;   // Collinder
    coma.number[1] = 256;
    const auto image = RecordImage<OpenClusterLayout>(coma);
    Bytes hand(36, 0);
    hand[0] = 24;
    hand[1] = 5;
    hand[5] = 111;
    hand[7] = 0x00;  // 256 little-endian: 00 01
    hand[8] = 0x01;
    hand[15] = 255;  // no common name
    hand[27] = 255;
    hand[28] = 255;
    hand[29] = 255;
    hand[26] = 255;
    ASSERT_EQ(Bytes(image.begin(), image.end()), hand);
    Bytes file(2 * hand.size(), 0);  // record 0, then the cluster as record 1
    std::copy(hand.begin(), hand.end(), file.begin() + static_cast<long>(hand.size()));
    Write(kCatOc, file);

    DesignationForm form;
    EXPECT_EQ(Primary(kClassOpenCluster, 1, &form), "Melotte 111");
    ExpectForm(form, {0, "Melotte", 1, {111}}, "Melotte 111");
    ExpectKinds(kClassOpenCluster, 1,
                {{1, 0, ""}, {2, 0, ""}, {5, 0, ""}, {6, 0, ""}, {9, 1, "Collinder 256"}, {28, 1, "Melotte 111"},
                 {53, 0, ""}, {54, -1, ""}, {0, -1, ""}});
}

TEST_F(CraftedNamesTest, GroupsGalaxiesAndGlobularsByTheirOwnCatalogues) {
    // gg: AGC 1 as record 1, Hickson 92 (Stephan's Quintet) as record 4168.
    Bytes gg(4 + 4168 * 22, 0);
    GroupRecord agc;
    agc.agc = 1;
    GroupRecord hcg;
    hcg.hickson = 92;
    const auto agcImage = RecordImage<GroupLayout>(agc);
    const auto hcgImage = RecordImage<GroupLayout>(hcg);
    std::memcpy(gg.data() + 4, agcImage.data(), agcImage.size());
    std::memcpy(gg.data() + 4 + 4167 * 22, hcgImage.data(), hcgImage.size());
    Write(kCatGg, gg);

    DesignationForm form;
    EXPECT_EQ(Primary(kClassGalaxyGroup, 1, &form), "AGC 1");
    ExpectForm(form, {0, "AGC", 1, {1}}, "AGC 1");
    EXPECT_EQ(Primary(kClassGalaxyGroup, 4168, &form), "Hickson 92");
    ExpectForm(form, {0, "Hickson", 1, {92}}, "Hickson 92");
    ExpectKinds(kClassGalaxyGroup, 4168, {{1, 0, ""}, {2, 0, ""}, {3, 1, "Hickson 92"}, {4, -1, ""}});

    // A galaxy known by its PGC number alone; the form carries the PID.
    GalaxyRecord galaxy;
    galaxy.pgc = 143;
    const auto galaxyImage = RecordImage<GalaxyLayout>(galaxy);
    Bytes gal(2 * galaxyImage.size(), 0);  // records 1 and 2 alike
    std::copy(galaxyImage.begin(), galaxyImage.end(), gal.begin());
    std::copy(galaxyImage.begin(), galaxyImage.end(), gal.begin() + static_cast<long>(galaxyImage.size()));
    Write(kCatGal, gal);
    EXPECT_EQ(Primary(kClassGalaxy, 2, &form), "PGC 143");
    ExpectForm(form, {0, "PGC", 1, {2}}, "PGC 143");

    GlobularRecord palomar;
    palomar.palomar = 5;
    const auto globImage = RecordImage<GlobularLayout>(palomar);
    Write(kCatGlob, Bytes(globImage.begin(), globImage.end()));
    EXPECT_EQ(Primary(kClassGlobular, 1, &form), "Palomar 5");
    ExpectForm(form, {0, "Palomar", 1, {5}}, "Palomar 5");
}

}  // namespace
