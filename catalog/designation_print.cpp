#include "catalog/designation_print.h"

#include <cstdio>

#include "base/string_helpers.h"
#include "catalog/constellation_names.h"
#include "catalog/designation_kinds.h"
#include "catalog/greek_letters.h"

namespace {

constexpr uint32_t kNoLetterBound = 128;  // bits 8 to 23 below this: no Greek letter
constexpr int kLastSuffixCode = 26;

// The letter of a suffix code, "" for none.
std::string SuffixLetter(int code) {
    if (code < 1 || code > kLastSuffixCode) return "";
    return std::string(1, static_cast<char>(code + 64));
}

std::string SuffixCharacter(char c) { return c == '\0' || c == ' ' ? "" : std::string(1, c); }

}  // namespace

uint32_t designationGroup(int flamsteed, int constellationRow, int greekLetter, int superscript) {
    return (static_cast<uint32_t>(flamsteed) & 0xFF) | (static_cast<uint32_t>(constellationRow) & 0x7F) << 8 |
           (static_cast<uint32_t>(greekLetter) & 0x1F) << 15 | (static_cast<uint32_t>(superscript) & 0xF) << 20;
}

std::string bayerName(uint32_t group) {
    if (((group >> 8) & 0xFFFF) < kNoLetterBound) return "";
    const char* letter = greekLetterName(static_cast<int>((group >> 15) & 0x1F) - 1);
    const char* con = constellationAbbreviation(static_cast<int>((group >> 8) & 0x7F));
    if (!*letter) return "";
    const int superscript = static_cast<int>((group >> 20) & 0xF);
    if (superscript) return Format("%s %d %s", letter, superscript, con);
    return Format("%s %s", letter, con);
}

std::string flamsteedName(uint32_t group) {
    const int number = static_cast<int>(group & 0xFF);
    if (number == 0) return "";
    return Format("%d %s", number, constellationAbbreviation(static_cast<int>((group >> 8) & 0x7F)));
}

std::string gscName(int region, int number) { return Format("GSC %05d-%04d", region, number); }
std::string hrName(long hr) { return Format("HR %ld", hr); }
std::string hdName(long hd) { return Format("HD %ld", hd); }
std::string saoName(long sao) { return Format("SAO %ld", sao); }
std::string ppmName(long ppm) { return Format("PPM %ld", ppm); }
std::string hipName(long hip) { return Format("HIP %ld", hip); }
std::string gcName(long gc) { return Format("GC %ld", gc); }
std::string nsvName(long nsv) { return Format("NSV %ld", nsv); }
std::string struveName(int number) { return Format("Struve %d", number); }
std::string struveComponentName(int number) { return Format("STF %d", number); }
std::string adsName(int number) { return Format("ADS %d", number); }

std::string ccdmName(int raPart, char sign, int decPart) {
    return Format("CCDM %04d%c%04d", raPart, sign, decPart);
}

std::string messierName(int number) { return Format("M %d", number); }

std::string ngcName(int number, int suffix) {
    return Format("NGC %d%s", number, SuffixLetter(suffix).c_str());
}

std::string icName(int number, int suffix) { return Format("IC %d%s", number, SuffixLetter(suffix).c_str()); }

std::string markarianName(int number, int suffix) {
    return Format("Markarian %d%s", number, SuffixLetter(suffix).c_str());
}

std::string arpName(int number) { return Format("Arp %d", number); }

std::string ugcName(int number, int suffix) {
    return Format("Uppsala %d%s", number, SuffixLetter(suffix).c_str());
}

std::string esoName(int field, int number, int suffix) {
    return Format("ESO %d %d%s", field, number, SuffixLetter(suffix).c_str());
}

std::string mcgName(int zone, int field, int number, int part) {
    return Format("MCG %d-%d-%d%s", zone, field, number, SuffixLetter(part).c_str());
}

std::string pgcName(long number) { return Format("PGC %ld", number); }
std::string agcName(int number) { return Format("AGC %d", number); }
std::string hicksonName(int number) { return Format("Hickson %d", number); }

std::string quasarQName(int raPart, int decPart, char suffix) {
    return Format("Q%04d%+05d%s", raPart, decPart, SuffixCharacter(suffix).c_str());
}

std::string pkName(int longitude, char sign, int latitudeTenths) {
    return Format("PK %03d%c%04.1lf", longitude, sign, latitudeTenths * 0.1);
}

std::string pngName(int longitudeTenths, int latitudeTenths) {
    return Format("PN G%05.1lf%+04.1lf", longitudeTenths * 0.1, latitudeTenths * 0.1);
}

std::string abellPlanetaryName(int number) { return Format("Abell %d", number); }
std::string minkowskiName(int a, int b) { return Format("M %d-%d", a, b); }
std::string henizeName(int a, int b) { return Format("He %d-%d", a, b); }
std::string haroName(int a, int b) { return Format("H %d-%d", a, b); }
std::string kohoutekName(int a, int b) { return Format("K %d-%d", a, b); }
std::string aroName(int number) { return Format("ARO %d", number); }
std::string esoPlanetaryName(int a, int b) { return Format("ESO %d-%d", a, b); }

std::string sharplessName(int number) { return Format("Sh 2-%d", number); }
std::string vdbName(int number) { return Format("vdB %d", number); }
std::string gumName(int number) { return Format("Gum %d", number); }
std::string rcwName(int number) { return Format("RCW %d", number); }
std::string lbnName(int number) { return Format("LBN %d", number); }

std::string barnardName(int number, char suffix) {
    return Format("B %d%s", number, SuffixCharacter(suffix).c_str());
}

std::string barnardLongName(int number) { return Format("Barnard %d", number); }
std::string ldnName(int number) { return Format("LDN %d", number); }

std::string dcName(int longitudeTenths, int latitudeTenths, int suffix) {
    return Format("DC %05.1lf%+05.1lf%s", longitudeTenths * 0.1, latitudeTenths * 0.1, SuffixLetter(suffix).c_str());
}

std::string openClusterName(int family, int number) {
    if (family < 0 || family >= kClusterFamilies) return "";
    return Format("%s %d", ClusterFamilyTable[family], number);
}

std::string oclName(double ocl) { return Format("OCL %.1lf", ocl); }
std::string oclLongName(double ocl) { return Format("OCL %6.1lf", ocl); }
std::string palomarName(int number) { return Format("Palomar %d", number); }
std::string terzanName(int number) { return Format("Terzan %d", number); }
