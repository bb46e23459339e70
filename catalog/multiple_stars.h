// The multiple-star files: `ccdm_i` (one 31-byte row per system, sorted by
// CCDM number), `ccdm` (37-byte component rows, each system's run found
// from its `ccdm_i` row), and the two indexes that lead into `ccdm_i` from
// other double-star numbers: `struve` and `ads_ccdm`.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <vector>

#include "base/file_utils.h"
#include "base/record_layout.h"

inline constexpr long kLastCcdmRow = 37368;
inline constexpr long kLastStruve = 5012;
inline constexpr long kLastAds = 17180;
inline constexpr uint16_t kStruveNone = 65535;
inline constexpr int16_t kHundredthsUnknown = 32767;

// ccdm_i, at (row - 1) x 31.
struct CcdmIndexRow {
    uint32_t componentOffset = 0;  // byte offset of the system's components in ccdm, 24 bits
    uint8_t componentsPlusOne = 0;
    uint32_t star = 0;  // stars record, 3 bytes
    uint16_t catalogueNumber7 = 0;
    uint16_t catalogueNumber9 = 0;
    int32_t ra = 0;
    int32_t dec = 0;
    uint32_t pmRaCode = 0;  // 21 bits
    uint8_t pmRaSpare = 0;
    uint32_t pmDecCode = 0;
    uint8_t pmDecSpare = 0;
    uint16_t ccdmRa = 0;   // CCDM number, RA part (hhmmm)
    uint16_t ccdmDec = 0;  // Dec part (ddmm), 15 bits
    uint8_t ccdmNorth = 0;  // 1 '+', 0 '-'
    int16_t magnitude = kHundredthsUnknown;  // combined, hundredths
};

struct CcdmIndexLayout {
    static constexpr size_t kSize = 31;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.Bits32(0, 0, 24, r.componentOffset);
        io.Bits32(0, 24, 8, r.componentsPlusOne);
        io.U24(4, r.star);
        io.U16(7, r.catalogueNumber7);
        io.U16(9, r.catalogueNumber9);
        io.I32(11, r.ra);
        io.I32(15, r.dec);
        io.Bits24(19, 0, 21, r.pmRaCode);
        io.Bits24(19, 21, 3, r.pmRaSpare);
        io.Bits24(22, 0, 21, r.pmDecCode);
        io.Bits24(22, 21, 3, r.pmDecSpare);
        io.U16(25, r.ccdmRa);
        io.Bits16(27, 0, 15, r.ccdmDec);
        io.Bits16(27, 15, 1, r.ccdmNorth);
        io.I16(29, r.magnitude);
    }
};
static_assert(LayoutIsPacked<CcdmIndexLayout, CcdmIndexRow>());

// One ccdm component. Bytes 26-27, 30 and 33-36 carry nothing the program
// reads.
struct CcdmComponent {
    char discoverer[7] = {};  // "STF" rows give the Struve number
    uint16_t ads = 0;
    uint32_t star = 0;   // stars record; with gscFlag, GSC number and region
    uint8_t gscFlag = 0;  // bit 31
    uint16_t further13 = 0;
    uint16_t further15 = 0;
    uint16_t positionAngleCode = 0;  // code / 65535 x 361 degrees; 361 none
    uint8_t reference = 0;  // letter of the component it is measured from; 'A' the primary
    uint8_t letter = 0;
    uint32_t separationCode = 0;  // thousandths of an arc second, 3 bytes
    int16_t magnitude = kHundredthsUnknown;  // hundredths
    uint8_t spare26[2] = {};
    uint16_t further28 = 0;
    uint8_t spare30 = 0;
    uint16_t lpIndexRow = 0;  // 0 no orbit
    uint8_t spare33[4] = {};
};

struct CcdmComponentLayout {
    static constexpr size_t kSize = 37;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.Text(0, r.discoverer);
        io.U16(7, r.ads);
        io.Bits32(9, 0, 31, r.star);
        io.Bits32(9, 31, 1, r.gscFlag);
        io.U16(13, r.further13);
        io.U16(15, r.further15);
        io.U16(17, r.positionAngleCode);
        io.U8(19, r.reference);
        io.U8(20, r.letter);
        io.U24(21, r.separationCode);
        io.I16(24, r.magnitude);
        io.Raw(26, r.spare26);
        io.U16(28, r.further28);
        io.U8(30, r.spare30);
        io.U16(31, r.lpIndexRow);
        io.Raw(33, r.spare33);
    }
};
static_assert(LayoutIsPacked<CcdmComponentLayout, CcdmComponent>());

// ads_ccdm, at (ADS - 1) x 8: two u32 ccdm_i rows.
struct AdsCcdmRow {
    uint32_t rows[2] = {};
};

struct AdsCcdmLayout {
    static constexpr size_t kSize = 8;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U32(0, r.rows[0]);
        io.U32(4, r.rows[1]);
    }
};
static_assert(LayoutIsPacked<AdsCcdmLayout, AdsCcdmRow>());

inline constexpr int kStruveSlot = 2;

// Decoded values of the codes above.
double hundredthsMagnitude(int16_t code);      // 32767: 99.9
int componentCount(const CcdmIndexRow& row);   // high byte - 1, never below 0
double componentPositionAngle(const CcdmComponent& c);  // degrees; 361 none
double componentSeparation(const CcdmComponent& c);     // arc seconds
bool componentHasPositionAngle(const CcdmComponent& c);
uint32_t componentGscNumber(const CcdmComponent& c);  // bits 0 to 13
uint32_t componentGscRegion(const CcdmComponent& c);  // bits 14 up
// The Struve number of a component whose discoverer text reads "STF %d";
// 0 for any other.
int struveNumberOf(const CcdmComponent& c);

FilePtr openStruve();
FilePtr openAdsCcdm();
FilePtr openCcdmIndex();
FilePtr openCcdmComponents();

// The ccdm_i row of Struve 1 to 5012; 0 when the slot is 65535, the number
// out of range, or the read short.
long lookupStruve(FILE* file, long struve);

// The two ccdm_i rows of ADS 1 to 17180: how many are not 0, both written
// to `out` (zeros where none).
int lookupAdsCcdm(FILE* file, long ads, long out[2]);

// ccdm_i row 1 to 37368; 1 on success.
int readCcdmIndex(FILE* file, long row, CcdmIndexRow* out);

// The ccdm_i row of a CCDM number (RA part, Dec part, north for '+'), by a
// binary search with a halving real step from row 18684: 0 when the search
// leaves the file or a read fails, -1 when 50 steps did not find it.
long findCcdm(FILE* file, uint16_t raPart, uint16_t decPart, bool north);

// The system's components: the run at the row's offset in ccdm, as many as
// the row counts. 1 on success (the list may be empty), 0 on a short read.
int readCcdmComponents(FILE* file, const CcdmIndexRow& row, std::vector<CcdmComponent>* out);

// Both files of the multiple-star side, owned together: the handle opens
// when both files do, and closing it closes both.
struct CcdmFiles {
    FilePtr index;       // ccdm_i
    FilePtr components;  // ccdm
};
using CcdmHandle = std::unique_ptr<CcdmFiles>;

CcdmHandle openCcdm();
void closeCcdm(CcdmHandle& handle);

// The system in ccdm_i row `row` and its components; 1 on success.
int readCcdmSystem(CcdmFiles* files, long row, CcdmIndexRow* system,
                   std::vector<CcdmComponent>* components);
