#include "stores/scope_table.h"

#include <cstring>

#include "stores/instrument_makers.h"

namespace {
constexpr long kHeaderSize = 4;
}  // namespace

FilePtr ScopeTableOpen(int* countOut) {
    FilePtr f = OpenFile(kScopeTablePath, "rb");
    uint8_t b[kHeaderSize];
    if (!f || std::fread(b, 1, sizeof b, f.get()) != sizeof b) return nullptr;
    const uint32_t count = le::GetU32(b);
    if (countOut) *countOut = count > 0x7FFFFFFF ? 0 : static_cast<int>(count);
    return f;
}

int ScopeTableRead(FILE* stream, int index, ScopeRow* rowOut) {
    if (!stream || !rowOut || index < 0) return 0;
    const long offset = kHeaderSize + static_cast<long>(ScopeRowLayout::kSize) * index;
    if (std::fseek(stream, offset, SEEK_SET) != 0) return 0;
    return ReadRecord<ScopeRowLayout>(stream, *rowOut);
}

int NewTelescopeFromChoice(InstrumentRecord* record, int choice) {
    NewTelescopeInit(record, kNewScopeName);
    if (choice <= 0) return 1;
    FilePtr table = ScopeTableOpen(nullptr);
    ScopeRow row;
    if (!table || !ScopeTableRead(table.get(), choice - 1, &row)) return 0;

    // The model name is cut to the record's 31 characters.
    std::memset(record->name, 0, sizeof record->name);
    for (size_t i = 0; i + 1 < sizeof record->name && row.model[i] != '\0'; ++i)
        record->name[i] = row.model[i];
    record->mounting = row.mounting;
    // The table's millimetres go through the program's inch factor and back
    // through 25.4; the small difference that leaves is part of the record.
    OpticalSystemInit(&record->mainSystem, "Main Scope", row.opticsType,
                      row.aperture * kInchesPerMillimetre, row.focalLength * kInchesPerMillimetre,
                      0.0, row.imageFlipA, row.imageFlipB, 0.5);
    return 1;
}
