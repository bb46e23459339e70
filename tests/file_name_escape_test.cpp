#include "stores/file_name_escape.h"
#include "support.h"

namespace {

TEST(FileNameEscape, StandInsBothWays) {
    const struct {
        const char* name;
        const char* escaped;
    } cases[] = {
        {"\"*;:,+?\\/|<>.", "~`!@#$%^&()[]"},
        {"Mt. Wilson, CA", "Mt] Wilson# CA"},
        {"plain name 123", "plain name 123"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(EscapeFileName(c.name), c.escaped);
        EXPECT_EQ(UnescapeFileName(c.escaped), c.name);
        EXPECT_EQ(UnescapeFileName(c.escaped + std::string(".bin")), c.name);  // stops at the extension
    }
    // Not one to one: a name that already holds a stand-in meets the name
    // it stands for.
    EXPECT_EQ(EscapeFileName("x&y"), "x&y");
    EXPECT_EQ(UnescapeFileName(EscapeFileName("50% off")), "50? off");
}

}  // namespace
