#include <gtest/gtest.h>

#include <string>

#include "catalog/designation_print.h"
#include "catalog/star_file.h"

TEST(DesignationPrint, BayerAndFlamsteedReadTheTwentyFourBitGroup) {
    // Groups written out by hand: Flamsteed in bits 0-7, constellation row
    // 8-14, Greek row + 1 15-19, superscript 20-23.
    struct Case {
        uint32_t group;
        const char* bayer;
        const char* flamsteed;
    } cases[] = {
        {0x008000, "Alpha And", ""},        // letter 1, And
        {0x209200, "Alpha 2 Cen", ""},      // letter 1, Cen (18), superscript 2
        {0x031E3D, "Zeta Cyg", "61 Cyg"},   // letter 6, Cyg (30), Flamsteed 61
        {0x001E00, "", ""},                 // constellation alone
        {0x006400, "", ""},                 // bits 8-23 = 100: no letter
        {0x00577F, "", "127 Vul"},          // Vul (87), bits 8-23 = 87
    };
    for (const Case& c : cases) {
        EXPECT_EQ(bayerName(c.group), c.bayer) << std::hex << c.group;
        EXPECT_EQ(flamsteedName(c.group), c.flamsteed) << std::hex << c.group;
    }
    EXPECT_EQ(designationGroup(0, 18, 1, 2), 0x209200u);
    EXPECT_EQ(designationGroup(61, 30, 6, 0), 0x031E3Du);
}

TEST(DesignationPrint, EveryFormPrintsItsText) {
    struct Case {
        std::string got;
        const char* want;
    } cases[] = {
        {tychoName(1234, 567, 1), "TYC 01234-0567 1"}, {gscName(1234, 567), "GSC 01234-0567"},
        {hrName(7001), "HR 7001"}, {hdName(172167), "HD 172167"}, {saoName(67174), "SAO 67174"},
        {ppmName(81558), "PPM 81558"}, {hipName(91262), "HIP 91262"}, {gcName(25466), "GC 25466"},
        {nsvName(12345), "NSV 12345"}, {struveName(2382), "Struve 2382"},
        {struveComponentName(2382), "STF 2382"}, {adsName(11635), "ADS 11635"},
        {ccdmName(57, '+', 4549), "CCDM 0057+4549"}, {ccdmName(23598, '-', 12), "CCDM 23598-0012"},
        {messierName(31), "M 31"}, {ngcName(224, 0), "NGC 224"}, {ngcName(224, 1), "NGC 224A"},
        {ngcName(224, 27), "NGC 224"}, {icName(2944, 2), "IC 2944B"}, {markarianName(421, 0), "Markarian 421"},
        {arpName(244), "Arp 244"}, {ugcName(12158, 0), "Uppsala 12158"}, {ugcName(5, 3), "Uppsala 5C"},
        {esoName(123, 45, 1), "ESO 123 45A"}, {mcgName(-1, 2, 3, 0), "MCG -1-2-3"},
        {mcgName(5, 10, 12, 2), "MCG 5-10-12B"}, {pgcName(2557), "PGC 2557"}, {agcName(1656), "AGC 1656"},
        {hicksonName(92), "Hickson 92"}, {quasarQName(42, -2656, ' '), "Q0042-2656"},
        {quasarQName(1226, 203, 'A'), "Q1226+0203A"}, {quasarQName(1226, 203, '\0'), "Q1226+0203"},
        {pkName(64, '+', 51), "PK 064+05.1"}, {pkName(120, '-', 12), "PK 120-01.2"},
        {pngName(647, 50), "PN G064.7+5.0"}, {pngName(2, -5), "PN G000.2-0.5"},
        {abellPlanetaryName(39), "Abell 39"}, {minkowskiName(1, 2), "M 1-2"}, {henizeName(2, 111), "He 2-111"},
        {haroName(1, 36), "H 1-36"}, {kohoutekName(3, 46), "K 3-46"}, {aroName(12), "ARO 12"},
        {esoPlanetaryName(40, 11), "ESO 40-11"}, {sharplessName(155), "Sh 2-155"}, {vdbName(142), "vdB 142"},
        {gumName(12), "Gum 12"}, {rcwName(86), "RCW 86"}, {lbnName(437), "LBN 437"},
        {barnardName(33, '\0'), "B 33"}, {barnardName(5, ' '), "B 5"}, {barnardName(83, 'A'), "B 83A"},
        {barnardLongName(33), "Barnard 33"}, {ldnName(1622), "LDN 1622"},
        {dcName(2910, -5, 0), "DC 291.0-00.5"}, {dcName(3, 25, 1), "DC 000.3+02.5A"},
        {openClusterName(2, 12), "Berkeley 12"}, {openClusterName(33, 1), "van den Bergh-Hagen 1"},
        {openClusterName(54, 45), "M 45"}, {openClusterName(56, 1), ""}, {oclName(123.4), "OCL 123.4"},
        {oclLongName(12.3), "OCL   12.3"}, {palomarName(5), "Palomar 5"}, {terzanName(7), "Terzan 7"},
    };
    for (const Case& c : cases) EXPECT_EQ(c.got, c.want);
}
