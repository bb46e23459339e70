// Nutation in longitude and obliquity by the 1980 IAU theory, 63 terms: the
// largest is coded here, the other 62 come from the table file nutcon.bin,
// 62 rows of nine little-endian i16:
//   0-4  multipliers of M' (Moon's mean anomaly), M (Sun's), F, D, Omega
//   5, 6 longitude sine coefficient (0.0001") and its rate (0.00001"/century)
//   7, 8 obliquity cosine coefficient (0.0001") and its rate
#pragma once

#include <cstddef>

#include "astro/instant.h"

inline constexpr const char* kNutationFileName = "nutcon.bin";
inline constexpr int kNutationRows = 62;
inline constexpr int kNutationColumns = 9;
inline constexpr size_t kNutationFileSize = 2 * kNutationRows * kNutationColumns;  // 1116

// The largest multiple of each argument (M', M, F, D, Omega) that a row may
// ask for: the routine tabulates these once per call.
inline constexpr int kNutationMaxMultiple[5] = {3, 2, 4, 4, 2};

// Reads `folder` + "nutcon.bin"; the folder ends with its separator. 0 when
// the file cannot be read whole. A table loaded before is replaced.
int NutationLoad(const char* folder);
void NutationFree();
bool NutationLoaded();

// Fills `nutLongitude` and `nutObliquity` from `tDyn`; nothing without a
// table.
void NutationCompute(Instant* instant);
