// The Durchmusterung numbers (BD, CD, CP) of a star, packed into one u32
// each in the `stars` records: bits 0 to 14 the running number, bits 15 to
// 22 the zone code, bits 23 and up the suffix code.
#pragma once

#include <cstdint>
#include <string>

// The three catalogues, as they print.
enum DmCatalogue : int { kDmBd = 0, kDmCd = 1, kDmCp = 2 };

// The zone code of a sign and zone in degrees: '+' 89 - d, '-' d + 90, any
// other sign (a blank) 180.
int dmZoneCode(char sign, int zone);

// Back from a code: below 90 '+' and 89 - code; 180 and above ' ' and 0;
// otherwise '-' and code - 90.
void dmZoneOfCode(int code, char* sign, int* zone);

// The suffix code of a letter: 0 for a blank (or NUL), otherwise the
// upper-cased letter - 64, so 'a' and 'A' give 1.
int dmSuffixCode(char suffix);

// Back from a code: 0 a blank, otherwise code + 96, a lower-case letter.
char dmSuffixOfCode(int code);

// One DM number unpacked.
struct DmNumber {
    char sign = ' ';
    int zone = 0;  // degrees
    long number = 0;
    char suffix = ' ';
};

// Packs a DM number. A running number outside 0 to 32767, a zone code
// outside 0 to 255 or a suffix code above 63 is told on the debug channel
// ("DM overflow: DM %d\n", "DM Zone overflow %d %d\n" with zone code and
// number, "DMs cat overflow: %c -> %d\n"); the value is packed all the same,
// each field cut to its width so that it can't spill into the next.
uint32_t packDm(char sign, int zone, long number, char suffix);

DmNumber unpackDm(uint32_t packed);

// "BD %c%2.2d %5.5d%c", "CD ..." or "CP ..." of sign, zone, number and
// suffix. A blank suffix and an upper-case 'A' print as nothing; any other
// letter prints, the lower-case 'a' that unpacking gives included.
std::string dmName(DmCatalogue catalogue, char sign, int zone, long number, char suffix);
std::string dmName(DmCatalogue catalogue, const DmNumber& dm);
