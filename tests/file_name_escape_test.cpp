#include "stores/file_name_escape.h"
#include "support.h"

namespace {

TEST(FileNameEscape, EachRefusedCharacterHasItsStandIn) {
    EXPECT_EQ(EscapeFileName("\"*;:,+?\\/|<>."), "~`!@#$%^&()[]");
    EXPECT_EQ(EscapeFileName("Mt. Wilson, CA"), "Mt] Wilson# CA");
    EXPECT_EQ(EscapeFileName("plain name 123"), "plain name 123");
}

TEST(FileNameEscape, UnescapeInvertsAndStopsAtTheExtension) {
    EXPECT_EQ(UnescapeFileName("~`!@#$%^&()[]"), "\"*;:,+?\\/|<>.");
    EXPECT_EQ(UnescapeFileName("Mt] Wilson# CA.bin"), "Mt. Wilson, CA");
    EXPECT_EQ(UnescapeFileName(EscapeFileName("a.b/c") + ".bin"), "a.b/c");
}

TEST(FileNameEscape, MappingIsNotOneToOne) {
    // A name that already holds a stand-in meets the name it stands for.
    EXPECT_EQ(EscapeFileName("a~b"), EscapeFileName("a\"b"));
    EXPECT_EQ(EscapeFileName("x&y"), EscapeFileName("x/y"));
    EXPECT_EQ(UnescapeFileName("a~b"), "a\"b");
    EXPECT_EQ(UnescapeFileName(EscapeFileName("50% off")), "50? off");
}

}  // namespace
