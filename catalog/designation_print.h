// The printed forms of the catalogue designations, from the numbers the
// records hold. Suffix codes are letter codes: 1 prints 'A', 26 'Z', and 0
// (or anything outside 1 to 26) prints nothing. The Durchmusterung forms
// are with the DM packing (catalog/dm_numbers.h), the variable names with
// their numbering (catalog/variable_names.h), and the Tycho form is
// `tychoName` of catalog/star_file.h.
#pragma once

#include <cstdint>
#include <string>

// The Bayer and Flamsteed group of a `stars` record, 24 bits: bits 0 to 7
// the Flamsteed number, 8 to 14 the constellation row, 15 to 19 the Greek
// letter row + 1 (0 none), 20 to 23 the superscript (0 none).
uint32_t designationGroup(int flamsteed, int constellationRow, int greekLetter, int superscript);

// "%s %s" (letter, constellation) or "%s %d %s" with a superscript; "" when
// bits 8 to 23 are below 128, that is when there is no letter.
std::string bayerName(uint32_t group);
// "%d %s"; "" when the Flamsteed number is 0.
std::string flamsteedName(uint32_t group);

std::string gscName(int region, int number);  // "GSC %05d-%04d"
std::string hrName(long hr);                  // "HR %d"
std::string hdName(long hd);                  // "HD %ld"
std::string saoName(long sao);                // "SAO %ld"
std::string ppmName(long ppm);                // "PPM %ld"
std::string hipName(long hip);                // "HIP %ld"
std::string gcName(long gc);                  // "GC %d"
std::string nsvName(long nsv);                // "NSV %d"
std::string struveName(int number);           // "Struve %d"
std::string struveComponentName(int number);  // "STF %d", in the component list of `ccdm`
std::string adsName(int number);              // "ADS %d"
// "CCDM %04d%c%04d": RA part, sign, Dec part.
std::string ccdmName(int raPart, char sign, int decPart);

std::string messierName(int number);                 // "M %d"
std::string ngcName(int number, int suffix);         // "NGC %d%c"
std::string icName(int number, int suffix);          // "IC %d%c"
std::string markarianName(int number, int suffix);   // "Markarian %d%c"
std::string arpName(int number);                     // "Arp %d"
std::string ugcName(int number, int suffix);         // "Uppsala %d%c"
std::string esoName(int field, int number, int suffix);  // "ESO %d %d%c"
std::string mcgName(int zone, int field, int number, int part);  // "MCG %d-%d-%d%c"
std::string pgcName(long number);                    // "PGC %ld"
std::string agcName(int number);                     // "AGC %d"
std::string hicksonName(int number);                 // "Hickson %d"
// "Q%04d%+05d%c": RA part, Dec part and the suffix character, which prints
// as nothing when it is NUL or a blank.
std::string quasarQName(int raPart, int decPart, char suffix);

// "PK %03d%c%04.1lf": whole longitude, sign, latitude from tenths.
std::string pkName(int longitude, char sign, int latitudeTenths);
// "PN G%05.1lf%+04.1lf" of longitude and latitude in tenths.
std::string pngName(int longitudeTenths, int latitudeTenths);
std::string abellPlanetaryName(int number);  // "Abell %d"
std::string minkowskiName(int a, int b);     // "M %d-%d"
std::string henizeName(int a, int b);        // "He %d-%d"
std::string haroName(int a, int b);          // "H %d-%d"
std::string kohoutekName(int a, int b);      // "K %d-%d"
std::string aroName(int number);             // "ARO %d"
std::string esoPlanetaryName(int a, int b);  // "ESO %d-%d"

std::string sharplessName(int number);  // "Sh 2-%d"
std::string vdbName(int number);        // "vdB %d"
std::string gumName(int number);        // "Gum %d"
std::string rcwName(int number);        // "RCW %d"
std::string lbnName(int number);        // "LBN %d"

// "B %d%c": the suffix is a letter, and NUL or a blank prints nothing.
std::string barnardName(int number, char suffix);
// "Barnard %d", the form of the alternatives list.
std::string barnardLongName(int number);
std::string ldnName(int number);  // "LDN %d"
// "DC %05.1lf%+05.1lf%c" of longitude and latitude in tenths and a suffix
// code.
std::string dcName(int longitudeTenths, int latitudeTenths, int suffix);

// "%s %d" of the family word (row of `ClusterFamilyTable`) and number; ""
// for a family code outside 0 to 55.
std::string openClusterName(int family, int number);
std::string oclName(double ocl);        // "OCL %.1lf", as browsers show it
std::string oclLongName(double ocl);    // "OCL %6.1lf", as the alternatives list shows it
std::string palomarName(int number);    // "Palomar %d"
std::string terzanName(int number);     // "Terzan %d"
