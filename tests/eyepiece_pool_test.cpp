#include "stores/eyepiece_pool.h"
#include "support.h"

namespace {

const Bytes kSeed = PoolBytes(5, {{"Plossl 32mm", 32.0f, 52.0f, 1},
                                  {"Plossl 10mm", 10.0f, 52.0f, 3},
                                  {"Wide 20mm", 20.0f, 68.0f, 5}});

class EyepiecePoolTest : public ScratchTest {};

TEST_F(EyepiecePoolTest, FirstUseCopiesTheSeedIntoUser) {
    WriteFileBytes("eyep.bin", kSeed);
    char name[33];
    double focal = 0, field = 0;
    EXPECT_EQ(EyepieceRead(1, name, &focal, &field), 3);
    EXPECT_STREQ(name, "Plossl 10mm");
    EXPECT_EQ(focal, 10.0);
    EXPECT_EQ(field, 52.0);  // degrees, as the pool keeps them
    EXPECT_EQ(ReadFileBytes("user/eyep.bin"), kSeed);
    EXPECT_EQ(EyepieceRead(3, name, &focal, &field), 0);  // past the count

    // The user's pool is not seeded again once it exists.
    WriteFileBytes("eyep.bin", PoolBytes(1, {{"Other", 1.0f, 1.0f, 1}}));
    EXPECT_EQ(EyepieceFindById(5, name, &focal, &field), 5);
    EXPECT_STREQ(name, "Wide 20mm");
    EXPECT_EQ(EyepieceFindById(2, name, &focal, &field), 0);
}

TEST_F(EyepiecePoolTest, AddAndDeleteNeverGiveAnIdTwice) {
    WriteFileBytes("eyep.bin", kSeed);
    EXPECT_EQ(EyepieceAdd("Ortho 6mm", 6.0, 45.0), 6);
    EXPECT_EQ(ReadFileBytes("user/eyep.bin"),
              PoolBytes(6, {{"Plossl 32mm", 32.0f, 52.0f, 1},
                            {"Plossl 10mm", 10.0f, 52.0f, 3},
                            {"Wide 20mm", 20.0f, 68.0f, 5},
                            {"Ortho 6mm", 6.0f, 45.0f, 6}}));

    // Deleting the last one keeps nextId: the next add gets 7, not 6. The
    // file keeps its length; only the count goes down.
    ASSERT_EQ(EyepieceDelete(0), 1);
    Bytes b = ReadFileBytes("user/eyep.bin");
    EXPECT_EQ(b.size(), 4u + 4 * 43);
    b.resize(4 + 3 * 43);
    EXPECT_EQ(b, PoolBytes(6, {{"Plossl 10mm", 10.0f, 52.0f, 3},
                               {"Wide 20mm", 20.0f, 68.0f, 5},
                               {"Ortho 6mm", 6.0f, 45.0f, 6}}));
    ASSERT_EQ(EyepieceDelete(2), 1);
    EXPECT_EQ(EyepieceAdd("Ortho 5mm", 5.0, 45.0), 7);
    EXPECT_EQ(EyepieceDelete(3), 0);
}

TEST_F(EyepiecePoolTest, WriteKeepsTheIdAndANullNameKeepsTheName) {
    WriteFileBytes("eyep.bin", kSeed);
    ASSERT_EQ(EyepieceWrite(2, nullptr, 19.0, 70.0), 1);
    ASSERT_EQ(EyepieceWrite(0, "Plossl 32", 32.0, 50.0), 1);
    EXPECT_EQ(ReadFileBytes("user/eyep.bin"),
              PoolBytes(5, {{"Plossl 32", 32.0f, 50.0f, 1},
                            {"Plossl 10mm", 10.0f, 52.0f, 3},
                            {"Wide 20mm", 19.0f, 70.0f, 5}}));
    EXPECT_EQ(EyepieceWrite(3, "Past", 1.0, 1.0), 0);
}

TEST_F(EyepiecePoolTest, NameFillsItsBufferAndFindStopsAtTheCount) {
    const std::string name32(32, 'n');
    Bytes pool = PoolBytes(5, {{"Plossl 32mm", 32.0f, 52.0f, 1}, {"Stale", 9.0f, 50.0f, 5}});
    pool[2] = 1;  // the second record lies past the count
    WriteFileBytes("eyep.bin", pool);
    char name[33];
    EXPECT_EQ(EyepieceFindById(5, name, nullptr, nullptr), 0);
    ASSERT_EQ(EyepieceAdd((name32 + "cut").c_str(), 8.0, 60.0), 6);
    EXPECT_EQ(ReadFileBytes("user/eyep.bin"),
              PoolBytes(6, {{"Plossl 32mm", 32.0f, 52.0f, 1}, {name32.c_str(), 8.0f, 60.0f, 6}}));
    ASSERT_EQ(EyepieceRead(1, name, nullptr, nullptr), 6);
    EXPECT_EQ(std::string(name), name32);
}

TEST_F(EyepiecePoolTest, BackupGoesToTheWorkingFolder) {
    WriteFileBytes("eyep.bin", kSeed);
    ASSERT_TRUE(EyepiecePoolOpen());
    ASSERT_EQ(EyepieceBackup(), 1);
    EXPECT_EQ(ReadFileBytes("eyep.bak"), kSeed);
}

}  // namespace
