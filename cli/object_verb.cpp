#include "cli/object_verb.h"

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <numbers>
#include <string>

#include "astro/instant.h"
#include "astro/site.h"
#include "catalog/constellation_names.h"
#include "catalog/object_fill.h"
#include "catalog/object_record.h"
#include "cli/exit_status.h"
#include "cli/object_json.h"
#include "cli/observer_options.h"

const char kObjectSynopsis[] =
    "ferry2-cli object CLASS PID | fixed RADEG DECDEG [--site LONDEG,LATDEG[,HEIGHT]] "
    "[--at YYYY-MM-DDTHH:MM[:SS]] [--dynamical]\n";

const char kObjectDetails[] =
    "  object CLASS PID\n"
    "                 reads object PID of class CLASS (5 a star, 15 a fixed\n"
    "                 position, ...) and prints its filled object record as\n"
    "                 one JSON object: every field by its name, angles in\n"
    "                 radians as stored, then constellationAbbr, and the site\n"
    "                 and instant used. Exit 1 when the object is not found.\n"
    "  object fixed RADEG DECDEG\n"
    "                 the same for a fixed position (J2000, degrees).\n";

namespace {

constexpr double kDeg = std::numbers::pi / 180.0;

int Usage(const char* why) { return VerbUsage("object", why); }

}  // namespace

int RunObject(const std::vector<std::string>& w) {
    ObserverOptions observer;
    std::vector<std::string> args;
    std::string why;
    if (!SplitObserverOptions(w, &observer, &args, &why)) return Usage(why.c_str());
    ObjectRecord record;
    if (args.size() == 3 && args[0] == "fixed") {
        double ra = 0, dec = 0;
        if (!ParseReal(args[1], &ra) || !ParseReal(args[2], &dec) || ra < 0 || ra >= 360 ||
            std::fabs(dec) > 90)
            return Usage("fixed takes RADEG (0 to 360) DECDEG (-90 to 90)");
        makeFixedPosition(&record, ra * kDeg, dec * kDeg, 0, 0);
    } else if (args.size() == 2) {
        double c = 0, pid = 0;
        if (!ParseReal(args[0], &c) || !ParseReal(args[1], &pid) || c < 1 || c > 20 ||
            c != std::floor(c) || pid < 0 || pid > 4294967295.0 || pid != std::floor(pid))
            return Usage("object takes CLASS (1 to 20) and PID");
        initObjectRecord(&record);
        record.objectClass = static_cast<uint8_t>(c);
        record.pid = static_cast<uint32_t>(pid);
    } else {
        return Usage("say CLASS PID, or fixed RADEG DECDEG");
    }
    Site site;
    Instant instant;
    MakeSiteAndInstant(&observer, &site, &instant);
    if (refillByIdentity(&record, 0, 0, &site, &instant) == 0) {
        std::fprintf(stderr, "ferry2-cli object: no object %u of class %d\n", record.pid,
                     record.objectClass);
        return kExitFailed;
    }
    std::printf("{%s, %s}\n", ObjectRecordJson(record).c_str(), ObserverJson(observer, instant).c_str());
    return kExitDone;
}
