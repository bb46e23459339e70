#include "legacy/legacy_instruments.h"

std::string LegacyInstrumentsPath(const std::string& legacyRoot) {
    return legacyRoot + "/instr.bin";
}

FilePtr OpenLegacyInstruments(const std::string& legacyRoot, int* countOut) {
    FilePtr f = OpenRegularFile(LegacyInstrumentsPath(legacyRoot).c_str(), "rb");
    if (!f) return nullptr;
    uint8_t head[4];
    if (FileRead(head, sizeof head, f.get()) != sizeof head) return nullptr;
    if (countOut) *countOut = le::GetU16(head + 2);
    return f;
}

int ReadLegacyInstrument(FILE* stream, LegacyInstrument* recordOut, int index) {
    if (!stream || !recordOut || index < 0) return 0;
    const long offset = 4L + static_cast<long>(LegacyInstrumentLayout::kSize) * index;
    if (std::fseek(stream, offset, SEEK_SET) != 0) return 0;
    return ReadRecord<LegacyInstrumentLayout>(stream, *recordOut);
}
