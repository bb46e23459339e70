// The cross tables that tie the Messier, NGC and IC numbers and the common
// deep-sky names to the class files: `m`, `ngc`, `ic`, `cnames` and
// `cn_cross`. A row holds a 3-bit cross class, which names the class file,
// and a record number in it; class 0 with record 0 means nothing there, so
// the open cluster of record 0 cannot be named by these tables.
#pragma once

#include <cstdint>
#include <cstdio>

#include "base/file_utils.h"
#include "base/record_layout.h"

// The cross class of the tables and the object class it stands for:
// 0 open cluster (10), 1 globular (11), 2 diffuse nebula (9), 3 planetary
// (8), 4 galaxy (6), 5 quasar (7), 6 galaxy group (16), 7 dark nebula (17).
// -1 for a code outside 0 to 7.
int crossClassToObjectClass(int crossClass);

// The reverse, for the Messier, NGC and IC browsers only: the first five
// rows are known, every other class (groups, quasars, dark nebulae
// included) answers -1.
int objectClassToCrossClass(int objectClass);

// One answer of a cross table.
struct CrossHit {
    int crossClass = 0;
    long record = 0;
};

// `m`: 3-byte rows at (Messier - 1) x 3. A class byte above 254 means none.
struct MessierCrossRow {
    uint8_t crossClass = 255;
    uint16_t record = 0;
};

struct MessierCrossLayout {
    static constexpr size_t kSize = 3;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U8(0, r.crossClass);
        io.U16(1, r.record);
    }
};
static_assert(LayoutIsPacked<MessierCrossLayout, MessierCrossRow>());

// `ngc`: 33-byte rows at (NGC - 1) x 33: the highest suffix in use, seven
// 3-bit classes from bit 0, seven records; slot s is suffix s.
inline constexpr int kNgcSlots = 7;

struct NgcCrossRow {
    uint8_t highestSuffix = 0;
    uint8_t crossClass[kNgcSlots] = {};
    uint16_t spare = 0;  // bits 21 to 31
    uint32_t record[kNgcSlots] = {};
};

struct NgcCrossLayout {
    static constexpr size_t kSize = 33;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U8(0, r.highestSuffix);
        for (unsigned i = 0; i < kNgcSlots; ++i) io.Bits32(1, 3 * i, 3, r.crossClass[i]);
        io.Bits32(1, 21, 11, r.spare);
        for (size_t i = 0; i < kNgcSlots; ++i) io.U32(5 + 4 * i, r.record[i]);
    }
};
static_assert(LayoutIsPacked<NgcCrossLayout, NgcCrossRow>());

// `ic`: 14-byte rows at (IC - 1) x 14: three 3-bit classes, three records.
inline constexpr int kIcSlots = 3;

struct IcCrossRow {
    uint8_t crossClass[kIcSlots] = {};
    uint8_t spare = 0;  // bits 9 to 15
    uint32_t record[kIcSlots] = {};
};

struct IcCrossLayout {
    static constexpr size_t kSize = 14;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        for (unsigned i = 0; i < kIcSlots; ++i) io.Bits16(0, 3 * i, 3, r.crossClass[i]);
        io.Bits16(0, 9, 7, r.spare);
        for (size_t i = 0; i < kIcSlots; ++i) io.U32(2 + 4 * i, r.record[i]);
    }
};
static_assert(LayoutIsPacked<IcCrossLayout, IcCrossRow>());

// `cnames`: 32-byte rows, 0 to 126, each a zero-terminated name.
inline constexpr int kCommonNameRows = 127;
inline constexpr size_t kCommonNameSize = 32;

// `cn_cross`: 5-byte rows in the order of `cnames`.
struct CommonNameCrossRow {
    uint8_t crossClass = 0;
    uint32_t record = 0;
};

struct CommonNameCrossLayout {
    static constexpr size_t kSize = 5;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U8(0, r.crossClass);
        io.U32(1, r.record);
    }
};
static_assert(LayoutIsPacked<CommonNameCrossLayout, CommonNameCrossRow>());

FilePtr openMessierCross();
FilePtr openNgcCross();
FilePtr openIcCross();
FilePtr openCommonNames();
FilePtr openCommonNameCross();

// Messier 1 and up; 1 and the hit, 0 when the row is empty or unread.
int lookupMessierCross(FILE* file, int messier, CrossHit* out);

// NGC number with a suffix code (0 none, 1 for A, ...): the number of hits,
// 0 to 2. A suffix above the row's highest, or a suffix on a row without
// any, finds nothing. A row whose highest suffix is 0 but whose second
// record is set holds two objects under the bare number: both are handed
// back.
int lookupNgcCross(FILE* file, int ngc, int suffix, CrossHit out[2]);

// IC number with a suffix code 0 to 2; 1 and the hit, or 0. Two numbers
// whose suffix the row cannot hold are answered by rule: IC 683 with
// suffix 5 and IC 5269 with suffix 3, both galaxies.
int lookupIcCross(FILE* file, int ic, int suffix, CrossHit* out);

// The name of `cnames` row 0 to 126; 1 on success.
int readCommonName(FILE* file, int row, char out[kCommonNameSize]);

// The first row whose name begins with the text, without case (the prefix
// rule with the typed text as the pattern); -1 when none does or the text
// is empty.
int findCommonName(FILE* file, const char* text);

// The object of `cn_cross` row 0 to 126; 1 and the hit, or 0.
int lookupCommonNameCross(FILE* file, int row, CrossHit* out);

// A walk over `ngc` or `ic` for one class, slot by slot and row by row.
struct CrossBrowser {
    FilePtr file;
    bool isNgc = true;
    int wanted = -1;        // the cross class looked for
    int suffixFilter = -1;  // the only slot shown, -1 for all
    long row = 0;           // the catalogue number of the buffered row
    int slot = kNgcSlots;   // the next slot of the buffer to look at
    NgcCrossRow ngcRow;
    IcCrossRow icRow;
};

// One row of a browse: NGC or IC number, suffix code (the slot) and the
// object it leads to.
struct CrossBrowseRow {
    long number = 0;
    int suffix = 0;
    CrossHit hit;
};

// Opens the table and starts before its first row; 0 when the file will
// not open or the class has no cross class for these browsers. A suffix
// filter of -1 lets every slot through.
int beginNgcBrowse(CrossBrowser* browser, int objectClass, int suffixFilter);
int beginIcBrowse(CrossBrowser* browser, int objectClass, int suffixFilter);

// The next slot whose class is the wanted one, whose record isn't 0 and
// whose slot passes the filter; 0 at the end of the table.
int nextCrossBrowse(CrossBrowser* browser, CrossBrowseRow* out);

// The Messier list of one class: numbers 1 to 110 in order (the browser
// stops at 110 whatever the file holds), those whose row names the class.
inline constexpr int kMessierBrowseLast = 110;

struct MessierBrowser {
    FilePtr file;
    int wanted = -1;  // the cross class looked for
    int number = 0;   // the last Messier number looked at
};

// Opens `m`; 0 when it won't open or the class has no cross class for
// these browsers.
int beginMessierBrowse(MessierBrowser* browser, int objectClass);
// The next Messier number of the class and its object; 0 at the end.
int nextMessierBrowse(MessierBrowser* browser, int* messier, CrossHit* out);

// The common names of one class: `cnames` rows 0 to 126 in order whose
// `cn_cross` row leads to the class and whose name the pattern accepts
// (the prefix rule; an empty or "*" pattern accepts every name). Every
// cross class is browsed here, groups and dark nebulae included.
struct CommonNameBrowser {
    FilePtr names;
    FilePtr cross;
    int objectClass = -1;
    char pattern[kCommonNameSize] = {};
    int row = -1;  // the last row looked at
};

int beginCommonNameBrowse(CommonNameBrowser* browser, int objectClass, const char* pattern);
// The next row, its name and its object; 0 at the end.
int nextCommonNameBrowse(CommonNameBrowser* browser, int* row, char name[kCommonNameSize], CrossHit* out);
