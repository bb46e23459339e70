#include "cli/object_words.h"

#include <cmath>
#include <numbers>

#include "cli/observer_options.h"

bool ParseObjectWords(const std::vector<std::string>& args, ObjectRecord* record, std::string* why) {
    constexpr double kDeg = std::numbers::pi / 180.0;
    if (args.size() == 3 && args[0] == "fixed") {
        double ra = 0, dec = 0;
        if (!ParseReal(args[1], &ra) || !ParseReal(args[2], &dec) || ra < 0 || ra >= 360 || std::fabs(dec) > 90) {
            *why = "fixed takes RADEG (0 to 360) DECDEG (-90 to 90)";
            return false;
        }
        makeFixedPosition(record, ra * kDeg, dec * kDeg, 0, 0);
        return true;
    }
    if (args.size() == 2) {
        double c = 0, pid = 0;
        if (!ParseReal(args[0], &c) || !ParseReal(args[1], &pid) || c < 1 || c > 20 || c != std::floor(c) ||
            pid < 0 || pid > 4294967295.0 || pid != std::floor(pid)) {
            *why = "say CLASS (1 to 20) and PID";
            return false;
        }
        *record = identityRecord(static_cast<int>(c), static_cast<uint32_t>(pid));
        return true;
    }
    *why = "say CLASS PID, or fixed RADEG DECDEG";
    return false;
}
