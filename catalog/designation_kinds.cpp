#include "catalog/designation_kinds.h"

#include "base/prefix_match.h"
#include "base/string_table.h"
#include "catalog/object_record.h"

const char ClusterFamilyTable[kClusterFamilies][kClusterFamilyWidth] = {
    "NGC",        "IC",         "Berkeley",     "Czernik",
    "Dolidze",    "Collinder",  "Upgren",       "Tombaugh",
    "Ruprecht",   "King",       "Stock",        "Trumpler",
    "Markarian",  "Haffner",    "Hogg",         "Sher",
    "Feinstein",  "Harvard",    "Lynga",        "Westerlund",
    "Basel",      "Blanco",     "Barkhatova",   "Biurakan",
    "Melotte",    "Pismis",     "Trapezium",    "Pleiades",
    "Graff",      "Iskudarian", "Stephenson",   "Roslund",
    "Hyades",     "van den Bergh-Hagen",        "Bochum",
    "Dolidze-Dzimselejsvili",   "Antalova",     "Moffat",
    "Havlen-Moffat",            "Frolov",       "van den Bergh",
    "Mayer",      "Latysev",    "Sigma Ori",    "Graham",
    "Aveni-Hunter",             "Loden",        "Grasdalen",
    "Waterloo",   "Auner",      "Schuster",     "Danks",
    "Muzzio",     "C2306+606",  "M",            "Raab"};

namespace {

struct ClassKinds {
    uint8_t objectClass;
    uint8_t count;
    uint16_t stringBase;
};

constexpr ClassKinds kClassKinds[] = {
    {kClassComet, 3, 8417},       {kClassMinorPlanet, 2, 8432},  {kClassStar, 19, 8300},
    {kClassGalaxy, 10, 8400},     {kClassQuasar, 3, 8544},       {kClassPlanetary, 14, 8333},
    {kClassDiffuseNebula, 10, 8851}, {kClassOpenCluster, 53, 8347}, {kClassGlobular, 7, 8410},
    {kClassGalaxyGroup, 3, 8330}, {kClassDarkNebula, 5, 8547}};

// Family code of each open-cluster kind, kind 1 first. Kinds 1 to 5 hold 0
// here; their families are given by rule in familyOfKind.
constexpr uint8_t kFamilyOfKind[kOpenClusterKinds] = {
    0,  0,  0,  0,  0,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14,
    15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25, 28, 29, 30, 31, 33, 34, 35,
    36, 37, 38, 39, 40, 41, 42, 44, 45, 46, 47, 48, 49, 50, 51, 52, 55};

constexpr int kMessierFamily = 54;
constexpr int kFirstFamilyKind = 6;

bool IsFamilyWordRow(int row) { return row != 27 && row != 32 && row != 43 && row != kMessierFamily; }

}  // namespace

DesignationKindList designationKindList(int objectClass) {
    for (const ClassKinds& k : kClassKinds)
        if (k.objectClass == objectClass) return {k.count, k.stringBase};
    return {};
}

const char* designationKindTitle(int objectClass, int kind) {
    const DesignationKindList list = designationKindList(objectClass);
    if (kind < 1 || kind > list.count) return "";
    return StringText(list.stringBase + kind - 1);
}

const char* clusterFamilyName(int family) {
    return family >= 0 && family < kClusterFamilies ? ClusterFamilyTable[family] : "";
}

int familyOfKind(int kind) {
    switch (kind) {
    case 2: return kMessierFamily;
    case 3: return 0;
    case 4: return 1;
    default: break;
    }
    if (kind < kFirstFamilyKind || kind > kOpenClusterKinds) return -1;
    return kFamilyOfKind[kind - 1];
}

int kindOfFamily(int family) {
    if (family < 0 || family >= kClusterFamilies) return 0;
    for (int kind = 2; kind <= kOpenClusterKinds; ++kind)
        if (familyOfKind(kind) == family) return kind;
    return 0;
}

int findClusterFamily(const char* word) {
    if (!word || !*word) return -1;
    for (int row = 2; row < kClusterFamilies; ++row)
        if (IsFamilyWordRow(row) && PrefixMatch(word, ClusterFamilyTable[row])) return row;
    return -1;
}
