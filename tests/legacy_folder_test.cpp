#include <string>
#include <vector>

#include "base/file_utils.h"
#include "shell/help_path.h"
#include "shell/legacy_folder.h"
#include "support.h"

namespace {

struct Shown {
    std::string text, title;
};

class LegacyFolderTest : public ScratchTest {
protected:
    JobHost Host() {
        JobHost host;
        host.showMessage = [this](const char* text, const char* title) {
            shown_.push_back({text, title});
        };
        return host;
    }
    std::vector<Shown> shown_;
};

TEST_F(LegacyFolderTest, FolderWithoutChartsIsRefusedWithThePathMessage) {
    MakeDirs("old");
    EXPECT_EQ(AcceptLegacyFolder("old", Host()), 0);
    ASSERT_EQ(shown_.size(), 1u);
    EXPECT_EQ(shown_[0].text, "Vesperal 1.x files not found. Check your path and try again.");
    EXPECT_EQ(shown_[0].title, "Ferry 2 Message");
}

TEST_F(LegacyFolderTest, ChartsAloneProveTheFolderWhichIsRememberedWithoutLineEnd) {
    MakeDirs("old");
    WriteFileBytes("old/charts.bin", {0, 0});
    EXPECT_NE(AcceptLegacyFolder("old/", Host()), 0);  // doubled separator resolves
    EXPECT_TRUE(shown_.empty());
    EXPECT_EQ(ReadFileBytes("ferry2.ini"), (Bytes{'o', 'l', 'd', '/'}));
    std::string folder = "default";
    ASSERT_TRUE(ReadFerryIni(folder));
    EXPECT_EQ(folder, "old/");
}

TEST_F(LegacyFolderTest, FerryIniGivesItsFirstLineAsItStands) {
    std::string folder = "default";
    EXPECT_FALSE(ReadFerryIni(folder));
    EXPECT_EQ(folder, "default");
    WriteFileText("ferry2.ini", "C:\\V1\r\nsecond\n");
    ASSERT_TRUE(ReadFerryIni(folder));
    EXPECT_EQ(folder, "C:\\V1\n");
    WriteFileText("ferry2.ini", "");
    folder = "default";
    EXPECT_FALSE(ReadFerryIni(folder));
    EXPECT_EQ(folder, "default");
}

TEST(HelpPath, NameFollowsTheLastBackslashOrColonWhileThereIsRoom) {
    // The module path is held in 128 characters, and the kept folder plus 13
    // must stay below 128, else the name is "?".
    const std::string folder114 = "C:\\" + std::string(110, 'a') + "\\";
    const std::string folder115 = "C:\\" + std::string(111, 'a') + "\\";
    const struct {
        std::string module;
        const char* help;
        std::string path;
    } cases[] = {
        {"C:\\Program Files\\Ferry 2\\ferry2.exe", "ferry2.hlp", "C:\\Program Files\\Ferry 2\\ferry2.hlp"},
        {"C:ferry2.exe", "vesperal2.hlp", "C:vesperal2.hlp"},
        {"ferry2.exe", "ferry2.hlp", "ferry2.hlp"},
        {folder114 + "x.exe", "ferry2.hlp", folder114 + "ferry2.hlp"},
        {folder115 + "x.exe", "ferry2.hlp", folder115 + "?"},
        {"C:\\" + std::string(130, 'b') + "\\x.exe", "ferry2.hlp", "C:\\ferry2.hlp"},  // cut first
    };
    for (const auto& c : cases) EXPECT_EQ(ComposeHelpPath(c.module, c.help), c.path) << c.module;
}

}  // namespace
