#include "cli/object_verb.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>

#include "astro/instant.h"
#include "astro/site.h"
#include "catalog/constellation_names.h"
#include "catalog/object_fill.h"
#include "catalog/object_record.h"
#include "cli/exit_status.h"
#include "cli/object_json.h"
#include "cli/object_words.h"
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

int Usage(const char* why) { return VerbUsage("object", why); }

}  // namespace

int RunObject(const std::vector<std::string>& w) {
    ObserverOptions observer;
    std::vector<std::string> args;
    std::string why;
    if (!SplitObserverOptions(w, &observer, &args, &why)) return Usage(why.c_str());
    ObjectRecord record;
    if (!ParseObjectWords(args, &record, &why)) return Usage(why.c_str());
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
