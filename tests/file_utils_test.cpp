#include "base/file_utils.h"
#include "base/store_damage.h"
#include "support.h"

namespace {

Bytes Pattern(size_t n) {
    Bytes b(n);
    for (size_t i = 0; i < n; ++i) b[i] = static_cast<uint8_t>(i * 7 + 3);
    return b;
}

using FileUtilsTest = ScratchTest;

TEST_F(FileUtilsTest, SizeIsZeroForMissingEmptyAndFolder) {
    EXPECT_EQ(FileSize("missing"), 0u);
    WriteFileBytes("empty", {});
    EXPECT_EQ(FileSize("empty"), 0u);
    MakeDirs("folder");
    EXPECT_EQ(FileSize("folder"), 0u);
    WriteFileBytes("five", Pattern(5000));
    EXPECT_EQ(FileSize("five"), 5000u);
    EXPECT_TRUE(FileExists("five"));
    EXPECT_TRUE(FileExists("folder"));
    EXPECT_FALSE(FileExists("missing"));
}

TEST_F(FileUtilsTest, CopyGivesTwoForNothingToCopyAndZeroForNoTarget) {
    WriteFileBytes("empty", {});
    EXPECT_EQ(CopyFileTo("empty", "target"), 2);
    EXPECT_FALSE(FileExists("target"));
    EXPECT_EQ(CopyFileTo("missing", "target"), 2);
    EXPECT_FALSE(FileExists("target"));
    WriteFileBytes("source", Pattern(10));
    EXPECT_EQ(CopyFileTo("source", "no/such/folder/target"), 0);
}

TEST_F(FileUtilsTest, CopyMovesEveryBlockAndTheRemainder) {
    for (size_t n : {1u, 4096u, 4097u, 10000u}) {
        const Bytes data = Pattern(n);
        WriteFileBytes("source", data);
        ASSERT_EQ(CopyFileTo("source", "target"), 1) << n;
        EXPECT_EQ(ReadFileBytes("target"), data) << n;
    }
}

TEST_F(FileUtilsTest, MakeFolderAcceptsExistingAndRefusesMissingParent) {
    EXPECT_EQ(MakeFolder("made"), 1);
    EXPECT_TRUE(FileExists("made"));
    EXPECT_EQ(MakeFolder("made"), 1);
    EXPECT_EQ(MakeFolder("none/inner"), 0);
}

TEST_F(FileUtilsTest, CopyFolderFilesCopiesFilesAndPassesEmptyOnesAndFolders) {
    MakeDirs("src/sub");
    WriteFileBytes("src/a.bin", Pattern(100));
    WriteFileBytes("src/b.bin", Pattern(5000));
    WriteFileBytes("src/empty.bin", {});
    WriteFileBytes("src/sub/deep.bin", Pattern(3));
    MakeDirs("dst");
    EXPECT_EQ(CopyFolderFiles("src", "dst"), 1);
    EXPECT_EQ(ReadFileBytes("dst/a.bin"), Pattern(100));
    EXPECT_EQ(ReadFileBytes("dst/b.bin"), Pattern(5000));
    EXPECT_FALSE(FileExists("dst/empty.bin"));
    EXPECT_FALSE(FileExists("dst/sub"));

    // A target folder that does not exist fails at the first real file.
    EXPECT_EQ(CopyFolderFiles("src", "nowhere"), 0);
}

TEST_F(FileUtilsTest, DeleteFolderTreeRemovesEverythingBelow) {
    MakeDirs("tree/a/b");
    for (const char* f : {"tree/top.bin", "tree/a/mid.bin", "tree/a/b/low.bin"}) WriteFileBytes(f, Pattern(4));
    EXPECT_EQ(DeleteFolderTree("tree"), 1);
    EXPECT_FALSE(FileExists("tree"));
    EXPECT_EQ(DeleteFolderTree("tree"), 0);
}

TEST_F(FileUtilsTest, TextLinesLoseTheCarriageReturnBeforeTheLineEnd) {
    WriteFileText("lines.txt", "one\r\ntwo\nthree");
    FilePtr f = OpenFile("lines.txt", "r");
    char buf[64];
    for (const char* line : {"one\n", "two\n", "three"}) {
        ASSERT_NE(ReadTextLine(buf, sizeof buf, f.get()), nullptr);
        EXPECT_STREQ(buf, line);
    }
    EXPECT_EQ(ReadTextLine(buf, sizeof buf, f.get()), nullptr);
}

}  // namespace

TEST_F(FileUtilsTest, StreamSizeCountsBytesNotYetFlushedAndKeepsThePlace) {
    FilePtr f = OpenFile("grow.bin", "w+b");
    ASSERT_TRUE(f);
    EXPECT_EQ(StreamSize(f.get()), 0);
    ASSERT_EQ(std::fwrite("abcdefgh", 1, 8, f.get()), 8u);  // still in the stream's buffer
    EXPECT_EQ(StreamSize(f.get()), 8);
    ASSERT_EQ(std::fseek(f.get(), 3, SEEK_SET), 0);
    char c = 0;
    ASSERT_EQ(std::fread(&c, 1, 1, f.get()), 1u);  // reading now, with a buffer
    EXPECT_EQ(StreamSize(f.get()), 8);
    ASSERT_EQ(std::fread(&c, 1, 1, f.get()), 1u);  // the place is kept
    EXPECT_EQ(c, 'e');
}
