#include "catalog/comet_orbit.h"

#include <cmath>
#include <vector>

#include "catalog/object_record.h"
#include "catalog/user_comets.h"

namespace {

constexpr double kDegrees = 180.0 / 3.14159265358979323846;

// The records of one comet: the reference comet from its row while its
// periodic number holds (the type letter isn't looked at, so 1P is followed
// into a 1D next to it), the user's comet by its PID.
int ReferenceRecords(uint32_t pid, std::vector<CometRecord>* out) {
    FilePtr file = openComets();
    CometRecord first;
    if (!file || !readComet(file.get(), static_cast<long>(pid), nullptr, nullptr, &first)) return 0;
    out->push_back(first);
    CometRecord next;
    for (long row = static_cast<long>(pid) + 1;
         first.number != 0 && readComet(file.get(), row, nullptr, nullptr, &next) &&
         next.number == first.number;
         ++row)
        out->push_back(next);
    return 1;
}

int UserRecords(uint32_t pid, std::vector<CometRecord>* out) {
    FilePtr file = OpenFile(kUserCometPath, "rb");
    CometWalk walk;
    if (pid == 0 || !file || !beginCometWalk(&walk, file.get())) return 0;
    CometRecord r;
    long row = nextCometByPid(&walk, pid, &r);
    if (row < 0) return 0;
    for (; row >= 0 && r.pid == pid; row = nextCometRow(&walk, &r)) out->push_back(r);
    return 1;
}

}  // namespace

int nearestCometEpoch(const CometRecord* records, int count, double t) {
    int best = 0;
    for (int i = 1; i < count; ++i)
        if (std::fabs(records[i].epoch - t) < std::fabs(records[best].epoch - t)) best = i;
    return best;
}

int cometOrbit(const CometRecord& r, OrbitRecord* orbit) {
    double g = r.brightnessG, k = r.brightnessK;
    if (g == 0 && k == 0) {
        g = kDefaultCometG;
        k = kDefaultCometK;
    }
    if (!OrbitInit(orbit, r.perihelionEpoch, 0.0, 0.0, 0.0, r.perihelionDistance, r.eccentricity,
                   r.argPerihelion * kDegrees, r.node * kDegrees, r.inclination * kDegrees, 0.0, g, k,
                   kCometMagnitudeLaw))
        return 0;
    OrbitVectors(orbit);
    return 1;
}

int orbitOfComet(const Site* site, const Instant* instant, int objectClass, uint32_t pid,
                 OrbitRecord* orbitOut, CometRecord* recordOut, double* coefficientOut) {
    (void)site;
    if (!instant) return 0;
    std::vector<CometRecord> records;
    const int read = objectClass == kClassComet       ? ReferenceRecords(pid, &records)
                     : objectClass == kClassUserComet ? UserRecords(pid, &records)
                                                      : 0;
    if (!read || records.empty()) return 0;
    const CometRecord& chosen =
        records[nearestCometEpoch(records.data(), static_cast<int>(records.size()), instant->tDyn)];
    OrbitRecord orbit;
    if (!cometOrbit(chosen, &orbit)) return 0;
    if (orbitOut) *orbitOut = orbit;
    if (recordOut) *recordOut = chosen;
    if (coefficientOut) *coefficientOut = chosen.coefficient * 1e-6;
    return 1;
}
