#include <gtest/gtest.h>

#include <string>

#include "catalog/designation_kinds.h"

TEST(DesignationKinds, EachClassListsItsKindsFromItsStringBase) {
    struct Case {
        int objectClass;
        int count;
        const char* first;
        const char* last;
    } cases[] = {
        {3, 3, "Common Name", "Periodic Number"},   {4, 2, "Minor Planet Name", "Minor Planet Number"},
        {5, 19, "Common Name", "GSC"},              {6, 10, "Common Name", "ESO"},
        {7, 3, "Common Name", "Hewitt-Burbidge QSO"}, {8, 14, "Common Name", "Discovery Designation"},
        {9, 10, "Common Name", "Other Designation"}, {10, 53, "Common Name", "Raab"},
        {11, 7, "Common Name", "Discovery Designation"}, {16, 3, "Common Name", "Hickson Compact Group (HCG)"},
        {17, 5, "Common Name", "Globule Designation"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(designationKindList(c.objectClass).count, c.count) << c.objectClass;
        EXPECT_STREQ(designationKindTitle(c.objectClass, 1), c.first) << c.objectClass;
        EXPECT_STREQ(designationKindTitle(c.objectClass, c.count), c.last) << c.objectClass;
        EXPECT_STREQ(designationKindTitle(c.objectClass, 0), "");
        EXPECT_STREQ(designationKindTitle(c.objectClass, c.count + 1), "");
    }
    EXPECT_STREQ(designationKindTitle(5, 10), "BD");
    EXPECT_STREQ(designationKindTitle(8, 7), "Henize");
    EXPECT_STREQ(designationKindTitle(8, 8), "Haro");
    for (int objectClass : {1, 2, 12, 13, 14, 15, 18, 20}) EXPECT_EQ(designationKindList(objectClass).count, 0);
}

TEST(DesignationKinds, EachClusterFamilyKindIsTitledByItsFamilyWord) {
    // The kind titles come from the string table and the family words from
    // their own table: both lists must agree row for row.
    for (int kind = 6; kind <= kOpenClusterKinds; ++kind) {
        const int family = familyOfKind(kind);
        EXPECT_STREQ(designationKindTitle(10, kind), clusterFamilyName(family)) << kind;
        EXPECT_EQ(kindOfFamily(family), kind);
    }
    EXPECT_EQ(familyOfKind(2), 54);
    EXPECT_EQ(familyOfKind(3), 0);
    EXPECT_EQ(familyOfKind(4), 1);
    for (int kind : {0, 1, 5, 54}) EXPECT_EQ(familyOfKind(kind), -1) << kind;
    EXPECT_EQ(familyOfKind(6), 2);
    EXPECT_EQ(familyOfKind(30), 28);
    EXPECT_EQ(familyOfKind(53), 55);
    for (int family : {26, 27, 32, 43, 53, 56, -1}) EXPECT_EQ(kindOfFamily(family), 0) << family;
    EXPECT_EQ(kindOfFamily(54), 2);
    EXPECT_STREQ(clusterFamilyName(35), "Dolidze-Dzimselejsvili");
    EXPECT_STREQ(clusterFamilyName(56), "");
}

TEST(DesignationKinds, FamilyWordSearchTakesTheFirstRowTheWordBegins) {
    struct Case {
        const char* word;
        int family;
    } cases[] = {
        {"Berkeley", 2},  {"berk", 2},        {"COLLINDER", 5},     {"Trapezium", 26},
        {"Raab", 55},     {"C2306", 53},      {"Dolidze", 4},       {"van den Bergh", 33},
        {"Ha", 13},       {"Pleiades", -1},   {"Hyades", -1},       {"Sigma Ori", -1},
        {"NGC", -1},      {"IC", -1},         {"Berkeley 12", -1},  {"", -1},
    };
    for (const Case& c : cases) EXPECT_EQ(findClusterFamily(c.word), c.family) << c.word;
    EXPECT_EQ(findClusterFamily(nullptr), -1);
}
