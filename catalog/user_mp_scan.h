// A filtered pass over the user's minor planets: each object once, placed
// on its orbit at an instant, with the magnitude, constellation and distance
// limits of the other user stores' passes.
#pragma once

#include <cstdint>
#include <unordered_set>

#include "astro/instant.h"
#include "base/file_utils.h"
#include "catalog/supplemental_store.h"

struct UserMpScan {
    FilePtr data;
    SupplementalScanLimits limits;
    Instant instant;
    uint32_t count = 0;
    uint32_t row = 0;
    long step = 1;
    long sinceReport = 0;
    std::unordered_set<uint32_t> tested;  // PIDs already placed
};

// Opens user/mp.bin for the pass. 0 when it can't be opened.
int beginUserMpScan(UserMpScan* scan, const SupplementalScanLimits& limits, const Instant& instant);

// The PID of the next object whose place and magnitude at the instant pass
// the limits; kScanProgress after each twentieth of the rows (at least every
// row) so that a meter can move; 0 at the end, on a read failure, or when
// the cancel flag is set. An object that can't be placed (no planet tables,
// elements that make no orbit) doesn't pass.
int64_t nextUserMpScan(UserMpScan* scan);

void endUserMpScan(UserMpScan* scan);
