// The version 1.x log folders that make-sample and make-big-legacy write,
// compared with images made by hand at the documented offsets, and walked
// back through the readers the import uses.
#include <cstring>
#include <string>

#include "support.h"
#include "tools/sample_writers.h"

namespace {

Bytes IndexBytes(uint32_t count, const std::vector<int32_t>& firstEntries) {
    Bytes b(8 + 8 * firstEntries.size(), 0);
    PokeU32(b, 0, count);
    PokeU32(b, 4, static_cast<uint32_t>(firstEntries.size()));
    for (size_t r = 0; r < firstEntries.size(); ++r) PokeU32(b, 12 + 8 * r, static_cast<uint32_t>(firstEntries[r]));
    return b;
}

SampleLogEntry Entry(uint32_t pid, const char* observer, const char* note, bool written = true) {
    Site site;
    std::strcpy(site.name, "Home");
    return {MakeLegacyLogHead({6, pid}, 2451545.25, site, observer, "SCT 8in", "Clear"), note, written};
}

class SampleLogsTest : public ScratchTest {};

TEST_F(SampleLogsTest, IndexAndEntryFilesMatchHandWrittenImages) {
    SampleLogSlots slots;
    slots[5] = {{Entry(4270, "Ann Lee", "Hi"), Entry(4270, "Cy Tran", "")},
                {Entry(4590, "Ann Lee", "a"), Entry(4590, "Ann Lee", "b", false), Entry(4590, "Ann Lee", "c")}};
    ASSERT_TRUE(WriteLegacyLogs(".", slots));

    EXPECT_EQ(ReadFileBytes("log/class.5"), IndexBytes(5, {1, 3}));
    for (int slot : {0, 4, 11}) EXPECT_EQ(ReadFileBytes("log/class." + std::to_string(slot)), IndexBytes(0, {}));

    Bytes first(443, 0);
    PokeU32(first, 0, 2);
    PokeF64(first, 4, 2451545.25);
    std::memcpy(&first[12 + 99], "Home", 4);
    PokeU32(first, 166, 0x42c7cccd);  // 99.9f: no magnitude
    first[160] = 2;
    PokeU32(first, 170, 4270);
    first[174] = 6;
    std::memcpy(&first[227], "Ann Lee", 7);
    std::memcpy(&first[292], "SCT 8in", 7);
    std::memcpy(&first[357], "Clear", 5);
    PokeU16(first, 438, 3);
    std::memcpy(&first[440], "Hi", 3);
    const Bytes written = ReadFileBytes("log/cF/00000001.bin");
    ASSERT_EQ(written.size(), first.size());
    // The place's derived fields are the Site's own business; the rest is
    // compared byte for byte.
    EXPECT_EQ(Slice(written, 0, 12), Slice(first, 0, 12));
    EXPECT_EQ(Slice(written, 111, 33), Slice(first, 111, 33));
    EXPECT_EQ(Slice(written, 144, 299), Slice(first, 144, 299));

    const Bytes second = ReadFileBytes("log/cF/00000002.bin");
    EXPECT_EQ(second.size(), 440u);  // an empty note has length 0
    EXPECT_EQ(PeekU32(second, 0), 0xffffffffu);
    EXPECT_EQ(PeekI16(second, 438), 0);
}

TEST_F(SampleLogsTest, ChainWithMissingMiddleFileStopsThere) {
    SampleLogSlots slots;
    slots[2] = {{Entry(1, "Ann Lee", "a"), Entry(1, "Ann Lee", "lost", false), Entry(1, "Ann Lee", "c")}};
    ASSERT_TRUE(WriteLegacyLogs(".", slots));
    LegacyLogEntry entry;
    std::string note;
    EXPECT_EQ(ReadLegacyLogEntry(".", 2, 1, &entry, &note), 2);
    EXPECT_EQ(note, "a");
    EXPECT_EQ(ReadLegacyLogEntry(".", 2, 2, &entry, &note), 0);
    EXPECT_EQ(ReadLegacyLogEntry(".", 2, 3, &entry, &note), -1);
    EXPECT_EQ(note, "c");
}

TEST(SampleLogSlot, EachFamilyOfClassesHasItsSlot) {
    const std::vector<std::pair<int, int>> cases = {{1, 0},  {2, 1},  {3, 2},  {13, 2}, {4, 3},  {14, 3},
                                                    {5, 4},  {12, 4}, {6, 5},  {16, 5}, {7, 6},  {8, 7},
                                                    {9, 8},  {17, 8}, {10, 9}, {11, 10}, {15, 11}, {18, 11}};
    for (const auto& [objectClass, slot] : cases) EXPECT_EQ(SampleLogSlotOf(objectClass), slot) << objectClass;
}

}  // namespace
