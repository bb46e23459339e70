#include <gtest/gtest.h>

#include <string>

#include "base/debug_channel.h"
#include "catalog/dm_numbers.h"

namespace {

std::string gDebugText;
void Collect(const char* text) { gDebugText += text; }

// Captures the debug channel for one test.
struct DebugCapture {
    DebugCapture() {
        gDebugText.clear();
        SetDebugSink(Collect);
    }
    ~DebugCapture() { SetDebugSink(nullptr); }
};

}  // namespace

TEST(DmNumbers, PackAndUnpackByTheBitFields) {
    struct Case {
        char sign;
        int zone;
        long number;
        char suffix;
        uint32_t packed;  // number | zone code << 15 | suffix code << 23
        char unpackedSuffix;
    } cases[] = {
        {'+', 12, 345, 'a', 0x00A68159, 'a'},    // code 77, suffix 1
        {'+', 12, 345, 'A', 0x00A68159, 'a'},
        {'-', 5, 1, ' ', 0x002F8001, ' '},       // code 95
        {'+', 0, 32767, 'B', 0x012CFFFF, 'b'},   // code 89
        {'-', 89, 0, ' ', 0x00598000, ' '},      // code 179
        {'+', 89, 7, 'p', 0x08000007, 'p'},      // code 0, suffix 16
    };
    DebugCapture capture;
    for (const Case& c : cases) {
        EXPECT_EQ(packDm(c.sign, c.zone, c.number, c.suffix), c.packed) << c.sign << c.zone << ' ' << c.number;
        const DmNumber dm = unpackDm(c.packed);
        EXPECT_EQ(dm.sign, c.sign);
        EXPECT_EQ(dm.zone, c.zone);
        EXPECT_EQ(dm.number, c.number);
        EXPECT_EQ(dm.suffix, c.unpackedSuffix);
    }
    EXPECT_EQ(gDebugText, "");
    // A blank sign is zone code 180, and every code from there reads back
    // as a blank sign and zone 0.
    EXPECT_EQ(packDm(' ', 33, 2, ' '), 0x005A0002u);
    for (uint32_t code : {180u, 255u}) {
        const DmNumber dm = unpackDm(code << 15);
        EXPECT_EQ(dm.sign, ' ');
        EXPECT_EQ(dm.zone, 0);
    }
}

TEST(DmNumbers, OverflowsAreToldOnTheDebugChannelAndStillPacked) {
    struct Case {
        char sign;
        int zone;
        long number;
        char suffix;
        const char* told;
    } cases[] = {
        {'+', 12, 32768, ' ', "DM overflow: DM 32768\n"},
        {'+', 12, -1, ' ', "DM overflow: DM -1\n"},
        {'+', 90, 345, ' ', "DM Zone overflow -1 345\n"},
        {'-', 166, 5, ' ', "DM Zone overflow 256 5\n"},
        {'-', 165, 5, ' ', ""},  // code 255, the last that fits
        {'+', 1, 5, '\x7f', ""},  // suffix code 63
        {'+', 1, 5, '\x80', "DMs cat overflow: \x80 -> 64\n"},
    };
    for (const Case& c : cases) {
        DebugCapture capture;
        packDm(c.sign, c.zone, c.number, c.suffix);
        EXPECT_EQ(gDebugText, c.told) << c.zone << ' ' << c.number;
    }
    DebugCapture capture;
    // The number is cut to its 15 bits: the zone beside it stays intact.
    EXPECT_EQ(packDm('+', 12, 32768 + 345, ' '), 0x00268159u);
}

TEST(DmNumbers, PrintsWithABlankOrUpperCaseASuffixLeftOut) {
    struct Case {
        DmCatalogue catalogue;
        char sign;
        int zone;
        long number;
        char suffix;
        const char* text;
    } cases[] = {
        {kDmBd, '+', 12, 345, 'a', "BD +12 00345a"},  {kDmBd, '+', 12, 345, 'A', "BD +12 00345"},
        {kDmCd, '-', 5, 12, ' ', "CD -05 00012"},     {kDmCp, '-', 60, 1234, 'B', "CP -60 01234B"},
        {kDmBd, ' ', 0, 1, '\0', "BD  00 00001"},
    };
    for (const Case& c : cases) EXPECT_EQ(dmName(c.catalogue, c.sign, c.zone, c.number, c.suffix), c.text);
    // Packing loses the case: an 'A' comes back as 'a' and then prints.
    EXPECT_EQ(dmName(kDmBd, unpackDm(packDm('+', 12, 345, 'A'))), "BD +12 00345a");
}
