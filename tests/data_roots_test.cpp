#include <set>
#include <string>
#include <vector>

#include "astro/planet_files.h"
#include "catalog/catalogue_roots.h"
#include "catalog/minor_planet_roots.h"
#include "shell/data_roots.h"
#include "base/platform.h"
#include "support.h"

namespace {

// What "exists" while a test runs, and every path that was asked about.
std::set<std::string> g_existing;
std::vector<std::string> g_asked;

bool FakeExists(const char* path) {
    g_asked.push_back(path);
    return g_existing.count(path) != 0;
}

int TimesAsked(const std::string& path) {
    int n = 0;
    for (const auto& p : g_asked) n += p == path;
    return n;
}

class DataRootsTest : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        g_existing.clear();
        g_asked.clear();
        previousOverride_ = platform::SetPathExistsOverride(FakeExists);
    }
    void TearDown() override {
        platform::SetPathExistsOverride(previousOverride_);
        ScratchTest::TearDown();
    }
    void Exist(std::initializer_list<const char*> paths) {
        for (const char* p : paths) g_existing.insert(p);
    }
    platform::PathExistsFn previousOverride_ = nullptr;
};

const char kEightLines[] =
    "C:\\\\Data\\\\small\\\n"
    "C:\\Data\\stars\\\n"
    "C:/Data/gsc\n"
    "m1\n"
    "m2/\n"
    "m3\\\\\n"
    "E:\\solar\\\n"
    "E:\\\\elements\n";

TEST_F(DataRootsTest, EightLinesResolveAndEachGroupIsNormalisedForItsUser) {
    WriteFileText("vesperal.ini", kEightLines);
    Exist({"C:\\\\Data\\\\small\\", "C:\\Data\\stars\\", "C:/Data/gsc", "m1", "m2/", "m3\\\\",
           "E:\\solar\\", "E:\\\\elements"});
    ASSERT_EQ(ResolveDataRoots("vesperal"), 1);

    // Catalogue and map roots: backslash runs collapse to one '/', '/' closes.
    EXPECT_TRUE(catalogueRootsReady());
    EXPECT_EQ(catalogueRoot(0), "C:/Data/small/");
    EXPECT_EQ(catalogueRoot(1), "C:/Data/stars/");
    EXPECT_EQ(catalogueRoot(2), "C:/Data/gsc/");
    EXPECT_EQ(mapRoot(0), "m1/");
    EXPECT_EQ(mapRoot(1), "m2/");
    EXPECT_EQ(mapRoot(2), "m3/");
    // Minor-planet roots: each backslash becomes '/', runs are kept.
    EXPECT_EQ(minorPlanetRoot(0), "E:/solar/");
    EXPECT_EQ(minorPlanetRoot(1), "E://elements/");
    // The planet engine gets line 7 exactly as the file has it.
    EXPECT_EQ(PlanetFilesFolder(), "E:\\solar\\");
}

TEST_F(DataRootsTest, EachLineMustBeThereBeLongEnoughAndNameAnExistingFolder) {
    EXPECT_EQ(ResolveDataRoots("vesperal"), 0);  // no ini at all
    Exist({"a", "b", "c", "d", "e", "f", "g", "h", "g/", "element"});
    const struct {
        const char* ini;
        int result;
    } cases[] = {
        {"a\nb\nc\nd\ne\nf\ng\nh\n", 1},             // one character and a line end pass
        {"a\nb\nc\nd\ne\n", 0},                        // a line missing
        {"a\nb\n\nd\ne\nf\ng\nh\n", 0},               // an empty line
        {"a\nb\nc\nd\ne\nf\ng\nx\n", 0},              // a folder missing
        {"a\r\nb\r\nc\r\nd\r\ne\r\nf\r\ng/\r\nh\r\n", 1},  // Windows line ends
        {"a\nb\nc\nd\ne\nf\ng\nelements", 1},         // no line end: "element" is tested
    };
    for (const auto& c : cases) {
        WriteFileText("vesperal.ini", c.ini);
        EXPECT_EQ(ResolveDataRoots("vesperal"), c.result) << c.ini;
    }
    EXPECT_EQ(TimesAsked("elements"), 0);
    EXPECT_EQ(minorPlanetRoot(1), "element/");
}

TEST_F(DataRootsTest, HashInFirstColumnBecomesTheMarkedDriveFoundByOneScan) {
    WriteFileText("vesperal.ini", "#:/cat\nx#y\nc\nd\ne\nf\n#:/solar/\nh\n");
    // Markers on C (never tried), F and G: F is the first from D upwards.
    Exist({"C:/vesperal2.id", "F:/vesperal2.id", "G:/vesperal2.id", "F:/cat", "x#y", "c", "d", "e",
           "f", "F:/solar/", "h"});
    ASSERT_EQ(ResolveDataRoots("vesperal"), 1);
    EXPECT_EQ(catalogueRoot(0), "F:/cat/");
    EXPECT_EQ(catalogueRoot(1), "x#y/");
    EXPECT_EQ(PlanetFilesFolder(), "F:/solar/");
    EXPECT_EQ(TimesAsked("D:/vesperal2.id"), 1);
    EXPECT_EQ(TimesAsked("F:/vesperal2.id"), 1);
    EXPECT_EQ(TimesAsked("G:/vesperal2.id"), 0);
    EXPECT_EQ(TimesAsked("C:/vesperal2.id"), 0);

    // Each resolution scans again.
    g_asked.clear();
    ASSERT_EQ(ResolveDataRoots("vesperal"), 1);
    EXPECT_EQ(TimesAsked("D:/vesperal2.id"), 1);
}

TEST_F(DataRootsTest, HashWithNoMarkedDriveFails) {
    WriteFileText("vesperal.ini", "a\nb\nc\nd\ne\nf\n#:/solar/\nh\n");
    Exist({"a", "b", "c", "d", "e", "f", "h", "C:/vesperal2.id"});
    EXPECT_EQ(ResolveDataRoots("vesperal"), 0);
    EXPECT_EQ(TimesAsked("Z:/vesperal2.id"), 1);
}

}  // namespace
