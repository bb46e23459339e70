#include "legacy/import_instruments.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstring>

#include "astro/numeric.h"
#include "legacy/import_result.h"
#include "legacy/legacy_instruments.h"
#include "stores/eyepiece_pool.h"
#include "stores/instrument_store.h"

namespace {

// Two eyepieces whose apparent fields (degrees) and focal lengths (mm) are
// closer than this are the same optics under another name.
constexpr double kSameFieldDegrees = 0.1;
constexpr double kSameFocalLength = 0.1;

enum class PoolMatch { kFound, kNotFound, kPoolError };

// Looks the slot up in the pool by name, then by optics; the slot's name
// loses its trailing blanks on the way.
PoolMatch FindInPool(const JobHost& host, EyepieceSlot& slot, int* poolIdOut) {
    StoreDamage damage = StoreDamage::kNone;
    FilePtr pool = EyepiecePoolOpen(&damage);
    if (!pool) {
        if (damage != StoreDamage::kNone)
            LogStoreDamage(host, "Instrument", kEyepiecePoolPath, damage);
        else
            LogPrintf(host.log, "Instrument: error opening eyepiece pool\n");
        return PoolMatch::kPoolError;
    }
    int nextId = 0;
    int count = 0;
    if (!EyepiecePoolReadHeader(pool.get(), &nextId, &count)) {
        LogPrintf(host.log, "Instrument: error reading eyepiece pool\n");
        return PoolMatch::kPoolError;
    }
    char slotName[sizeof slot.name + 1] = {};
    NormalizeEyepieceName(slotName, slot.name, sizeof slot.name);
    const double slotFieldDegrees = slot.apparentField / kRadiansPerDegree;

    for (int i = 0; i < count; ++i) {
        EyepieceRecord r;
        if (!EyepiecePoolReadNext(pool.get(), &r)) {
            LogPrintf(host.log, "Instrument: error reading eyepiece pool\n");
            return PoolMatch::kPoolError;
        }
        char poolName[sizeof r.name + 1] = {};
        NormalizeEyepieceName(poolName, r.name, sizeof r.name);
        const bool sameName = std::strcmp(poolName, slotName) == 0;
        const bool sameOptics = std::fabs(r.apparentField - slotFieldDegrees) < kSameFieldDegrees &&
                                std::fabs(r.focalLength - slot.focalLength) < kSameFocalLength;
        if (sameName || sameOptics) {
            *poolIdOut = r.id;
            return PoolMatch::kFound;
        }
    }
    return PoolMatch::kNotFound;
}

// The version 2 system from a legacy one, without its eyepieces. Every
// legacy system comes in as a refractor in perfect condition; the derived
// values are kept as they were, not computed again.
void WidenSystem(const LegacySystem& in, OpticalSystem& out) {
    out.opticsType = 1;
    out.aperture = in.aperture;
    out.focalLength = in.focalLength;
    out.focalRatio = in.focalRatio;
    out.imageFlipA = in.imageFlipA;
    out.imageFlipB = in.imageFlipB;
    out.condition = 0.0;
    std::memcpy(out.systemName, in.systemName, sizeof in.systemName);
    out.limitingMagnitude = in.limitingMagnitude;
    out.highestPower = in.highestPower;
    out.dawesLimit = in.dawesLimit;
    out.currentEyepiece = in.currentEyepiece;
    out.magnification = in.magnification;
    out.trueField = in.trueField;
    out.systemSpare = in.systemSpare;
}

// Keeps the slots the pool knows, in their order, each with the pool's id.
// The current and default eyepiece indices are not moved after a drop.
// False when the pool failed and the job must stop.
bool KeepKnownEyepieces(const JobHost& host, LegacySystem& in, OpticalSystem& out) {
    const int slots = std::min<int>(in.eyepieceCount, kLegacyMaxEyepieces);
    int kept = 0;
    for (int j = 0; j < slots; ++j) {
        EyepieceSlot& slot = in.eyepieces[j];
        int poolId = 0;
        const PoolMatch match = FindInPool(host, slot, &poolId);
        if (match == PoolMatch::kPoolError) return false;
        if (match == PoolMatch::kNotFound) {
            LogPrintf(host.log, "Instrument: Warning, %.32s eyepiece not found in pool (skipped)\n",
                      slot.name);
            continue;
        }
        out.eyepieces[kept] = slot;
        out.eyepieces[kept].poolId = static_cast<uint16_t>(poolId);
        ++kept;
    }
    out.eyepieceCount = static_cast<uint8_t>(kept);
    return true;
}

// Builds the version 2 record into a cleared `out`. False when the pool
// failed.
bool WidenInstrument(const JobHost& host, LegacyInstrument& in, InstrumentRecord& out) {
    out = InstrumentRecord{};
    out.systemCount = in.systemCount;
    out.reserved3 = in.spare;
    out.instrumentKind = in.kind != 0 ? 1 : 0;
    out.finderFlag = in.finderFlag;
    std::copy(std::begin(in.finderCircles), std::end(in.finderCircles), out.finderCircles);
    // 255 is how version 1.x said "none chosen"; 254 and the rest stand.
    out.defaultEyepiece = in.defaultEyepiece == 255 ? 0 : in.defaultEyepiece;
    out.mounting = 0;
    std::memcpy(out.name, in.name, sizeof in.name);

    OpticalSystem* const systems[2] = {&out.mainSystem, &out.finderSystem};
    const int systemCount = std::min<int>(in.systemCount, 2);
    for (int s = 0; s < systemCount; ++s) {
        WidenSystem(in.systems[s], *systems[s]);
        if (!KeepKnownEyepieces(host, in.systems[s], *systems[s])) return false;
    }
    return true;
}

bool AlreadyStored(FILE* store, const InstrumentRecord& record) {
    int count = 0;
    if (!InstrumentCount(store, &count)) return false;
    InstrumentRecord probe = record;
    int index = 0;
    return InstrumentFindByName(store, &probe, count, &index) != 0;
}

// 1 when every ticked record was dealt with, 0 when the pool failed.
int CopyTickedInstruments(const JobHost& host, FILE* legacy, int count, FILE* store,
                          const TickArray& ticks, ImportCounters& c) {
    for (int i = 0; i < count; ++i) {
        LegacyInstrument in;
        if (!ReadLegacyInstrument(legacy, &in, i)) continue;
        if (!IsTicked(ticks, static_cast<size_t>(i))) continue;

        InstrumentRecord out;
        std::memcpy(out.name, in.name, sizeof in.name);
        if (AlreadyStored(store, out)) {
            LogPrintf(host.log, "Instrument: Warning %.32s already exists (not added)\n", in.name);
            ++c.skipped;
            ++c.counted;
            continue;
        }
        if (!WidenInstrument(host, in, out)) return 0;
        if (!InstrumentAdd(store, &out)) {
            // A failed add is skipped but not counted, and the job goes on.
            LogPrintf(host.log, "Instrument: error adding new instrument -> %.32s\n", in.name);
            ++c.skipped;
            NoteFailedAdd(host);
            continue;
        }
        ++c.imported;
        ++c.counted;
    }
    return 1;
}

}  // namespace

void NormalizeEyepieceName(char* lowerOut, char* name, size_t nameSize) {
    const void* end = std::memchr(name, '\0', nameSize);
    size_t length = end ? static_cast<size_t>(static_cast<const char*>(end) - name) : nameSize;
    while (length > 0 && name[length - 1] == ' ') name[--length] = '\0';
    for (size_t i = 0; i < length; ++i)
        lowerOut[i] = static_cast<char>(std::tolower(static_cast<unsigned char>(name[i])));
}

int ImportInstruments(const JobHost& host) {
    int count = 0;
    FilePtr legacy = OpenLegacyInstruments(host.legacyRoot, &count);
    if (!legacy) {
        NoteUnreadableFile(host, LegacyInstrumentsPath(host.legacyRoot));
        return 0;
    }

    // The store is not made here: a version 2 folder without one gets the
    // error message.
    int storeCount = 0;
    StoreDamage damage = StoreDamage::kNone;
    FilePtr store = InstrumentStoreOpen(&storeCount, &damage);
    LogStoreDamage(host, "Instrument", kInstrumentStorePath, damage);
    if (!store && damage == StoreDamage::kNone) NoteUnopenedStore(host, kInstrumentStorePath);
    return RunTickedImport(host, legacy.get(), count, store.get(), "Instrument: Internal error\n",
                           CopyTickedInstruments);
}
