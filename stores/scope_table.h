// The read-only table of commercial telescopes in the working folder,
// scopes.bin: u32 count, then 85-byte rows. The new-telescope dialog offers
// "Enter Manually" and then the table's models.
#pragma once

#include <cstdint>
#include <cstdio>

#include "base/file_utils.h"
#include "stores/instrument_records.h"
#include "base/record_layout.h"

inline constexpr const char* kScopeTablePath = "scopes.bin";
inline constexpr const char* kEnterManuallyText = "Enter Manually";
inline constexpr const char* kNewScopeName = "New Scope -- enter name";

struct ScopeRow {
    uint8_t opticsType = 0;
    uint8_t mounting = 0;
    double aperture = 0;     // millimetres
    double focalLength = 0;  // millimetres
    uint8_t imageFlipA = 0;
    uint8_t imageFlipB = 0;
    char model[65] = {};
};

struct ScopeRowLayout {
    static constexpr size_t kSize = 85;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U8(0, r.opticsType);
        io.U8(1, r.mounting);
        io.F64(2, r.aperture);
        io.F64(10, r.focalLength);
        io.U8(18, r.imageFlipA);
        io.U8(19, r.imageFlipB);
        io.Text(20, r.model);
    }
};
static_assert(LayoutIsPacked<ScopeRowLayout, ScopeRow>());

// Opens the table and reads its count; null when it cannot be read.
FilePtr ScopeTableOpen(int* countOut);

int ScopeTableRead(FILE* stream, int index, ScopeRow* rowOut);

// A new telescope for the dialog's choice: 0 is "Enter Manually", n is the
// table's row n - 1, whose model, mounting and main optics replace the
// defaults. 0 when the row cannot be read.
int NewTelescopeFromChoice(InstrumentRecord* record, int choice);
