// The number indexes of `stars`: each file is read at a place computed from
// the catalogue number, and holds three-byte star numbers (0 nothing,
// 0xFFFFFF an empty slot). The offset functions are shared by the readers
// and by the tools that write the files.
#pragma once

#include <cstdint>
#include <cstdio>

#include "base/file_utils.h"
#include "catalog/dm_numbers.h"  // dmZoneCode, which the DM offsets take

// Slot sizes.
inline constexpr int kHrbsSlot = 3, kHdSlot = 6, kSaoSlot = 3, kPpmSlot = 3, kHcSlot = 3,
                     kGcSlot = 3, kFlamstdSlot = 6, kBayerSlot = 6, kBdSlot = 12, kCdSlot = 9,
                     kCpSlot = 12, kDmbSlot = 6;

inline constexpr long kSaoBound = 258998;  // SAO numbers below this only

// Offsets; -1 when the key is out of the index's range.
long hrbsOffset(long hr);
long hdOffset(long hd);
long saoOffset(long sao);
long ppmOffset(long ppm);  // 1..378910 direct; above 700000 less 321090; 378911..699999 fail
long hcOffset(long hip);
long gcOffset(long gc);
long flamstdOffset(int constellationRow, int number);
long bayerOffset(int constellationRow, int letter, int superscript);  // letter: Greek row + 1
long bdOffset(int zoneCode, long number);
long cdOffset(int zoneCode, long number);  // zone code 112 to 179
long cpOffset(int zoneCode, long number);  // zone code 108 to 180
long dmbOffset(int zoneCode);

FilePtr openHrbs();
FilePtr openHd();
FilePtr openSao();
FilePtr openPpm();
FilePtr openHc();
FilePtr openGc();
FilePtr openFlamstd();
FilePtr openBayer();
FilePtr openBd();
FilePtr openCd();
FilePtr openCp();
FilePtr openDmb();
// The HIP file: opened for whoever reads it; no reader of its records yet.
FilePtr openHip();

// One-star indexes: the star number, 0 when not found.
long lookupHrbs(FILE* file, long hr);
long lookupSao(FILE* file, long sao);
long lookupPpm(FILE* file, long ppm);
long lookupHc(FILE* file, long hip);
long lookupGc(FILE* file, long gc);

// Two-star indexes: how many of the two numbers are not 0, the numbers in
// `out`.
int lookupHd(FILE* file, long hd, long out[2]);
int lookupFlamsteed(FILE* file, int constellationRow, int number, long out[2]);
// Superscript 0 that finds nothing is tried again with superscript 1.
int lookupBayer(FILE* file, int constellationRow, int letter, int superscript, long out[2]);

// BD: four 3-byte slots, 0xFFFFFF ends the list; each slot's top 3 bits are
// a suffix code into " ABCDNPS", the low 21 bits the star number. A slot
// matches when its letter equals the wanted one (upper-cased), or when the
// slot's letter is blank and the wanted one is 'A'. With no match the answer
// is -1 when fewer than two slots were filled, else 0: both mean no star.
// Sign '+' or '-', zone in degrees, suffix ' ' for none.
int lookupBd(FILE* file, char sign, int zone, long number, char suffix, long out[4]);
// The suffix letter of a BD slot value: its top 3 bits into " ABCDNPS".
char bdSlotSuffix(uint32_t slot);
// CD and CP: three or four plain numbers; how many are not 0.
int lookupCd(FILE* file, char sign, int zone, long number, long out[3]);
int lookupCp(FILE* file, char sign, int zone, long number, long out[4]);

// The largest running number of a zone in BD, CD and CP; 1 on success.
int readDmb(FILE* file, int zoneCode, uint16_t out[3]);
