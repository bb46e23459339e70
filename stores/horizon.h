// Custom horizon profiles, user/horizons/<key>.bin, one per location that
// has one; the key is the location's name after EscapeFileName. A file holds
// a 61-row table (row 60 repeats row 0, so a walk round the horizon closes
// without a wrap) and room for a second table of the same form.
#pragma once

#include <array>
#include <string>

#include "base/file_utils.h"
#include "astro/site.h"

struct HorizonRow {
    double azimuth = 0;           // radians
    double altitude = 0;          // radians
    double declinationLimit = 0;  // radians
};

struct HorizonRowLayout {
    static constexpr size_t kSize = 24;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.F64(0, r.azimuth);
        io.F64(8, r.altitude);
        io.F64(16, r.declinationLimit);
    }
};
static_assert(LayoutIsPacked<HorizonRowLayout, HorizonRow>());

inline constexpr int kHorizonRows = 61;
inline constexpr long kHorizonTableBytes = kHorizonRows * HorizonRowLayout::kSize;  // 1464
using HorizonTable = std::array<HorizonRow, kHorizonRows>;

inline constexpr const char* kHorizonFolder = "user/horizons";

std::string HorizonPath(const char* name);

// Opens an existing horizon for update; null when it does not exist or the
// folder cannot be made.
FilePtr HorizonOpen(const char* name);
bool HorizonExists(const char* name);
// 1 when the file existed and was removed.
int HorizonDelete(const char* name);
// Writes the default table for the site (10 degrees all round) and computes
// its declination limits.
int HorizonCreate(const Site& site);
// `which` 0 is the first table, any other value the second.
int HorizonReadTable(FILE* stream, HorizonTable& tableOut, int which);
int HorizonWriteTable(FILE* stream, const HorizonTable& table, int which);
int HorizonComputeLimits(FILE* stream, const Site& site);
int HorizonLoad(const Site& site, HorizonTable& tableOut);
