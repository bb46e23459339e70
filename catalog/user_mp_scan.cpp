#include "catalog/user_mp_scan.h"

#include <algorithm>

#include "catalog/minor_planet_objects.h"
#include "catalog/user_minor_planets.h"

int beginUserMpScan(UserMpScan* scan, const SupplementalScanLimits& limits, const Instant& instant) {
    *scan = UserMpScan{};
    if (!FileExists(kUserMpPath)) return 0;
    scan->data = openUserMp(&scan->count);
    if (!scan->data) return 0;
    scan->limits = limits;
    scan->instant = instant;
    scan->step = std::max<long>(1, static_cast<long>(scan->count) / 20);
    return 1;
}

int64_t nextUserMpScan(UserMpScan* scan) {
    while (scan->row < scan->count) {
        if (scan->limits.cancel && *scan->limits.cancel) return 0;
        if (scan->sinceReport >= scan->step) {
            scan->sinceReport = 0;
            return kScanProgress;
        }
        UserMpRecord r;
        if (!readUserMpRow(scan->data.get(), scan->row, &r)) return 0;
        ++scan->row;
        ++scan->sinceReport;
        // An object of several epochs has several rows: it is placed once,
        // by the row of the epoch nearest the instant.
        if (!scan->tested.insert(r.pid).second) continue;
        SupplementalPlace place;
        double distance = 0;
        if (!userMpPlace(scan->data.get(), r.pid, &scan->instant, &place.ra, &place.dec, &distance,
                         &place.magnitude))
            continue;
        if (supplementalScanPasses(place, scan->limits)) return static_cast<int64_t>(r.pid);
    }
    return 0;
}

void endUserMpScan(UserMpScan* scan) {
    scan->data.reset();
    scan->tested.clear();
}
