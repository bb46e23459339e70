#include "cli/body_verb.h"

#include <cstdio>

#include "astro/bodies.h"
#include "cli/exit_status.h"
#include "cli/observer_options.h"

const char kBodySynopsis[] =
    "ferry2-cli body ID [--site LONDEG,LATDEG[,HEIGHT]] [--at YYYY-MM-DDTHH:MM[:SS]] [--dynamical]\n";

const char kBodyDetails[] =
    "  body ID        the place of body ID (0 Sun, 1 Mercury ... 8 Neptune,\n"
    "                 9 Pluto, 10 Moon, 11 the Earth's shadow) as one JSON\n"
    "                 object: every field of the body's state by its name,\n"
    "                 angles in radians (heliocentric ecliptic of date, Pluto\n"
    "                 J2000; meanRa, meanDec geocentric of date; apparentRa,\n"
    "                 apparentDec topocentric), distances in au, for the Moon\n"
    "                 and the shadow in kilometres; the shadow's diameters are\n"
    "                 its umbra and penumbra. Then the site and instant used.\n"
    "                 Exit 1 when the planet tables of the data folders\n"
    "                 (line 7 of vesperal.ini) are not there.\n";

namespace {

int Usage(const char* why) { return VerbUsage("body", why); }

// Whether the tables that this body's place needs were loaded at start-up.
bool TablesFor(int id) {
    if (!PlanetSeriesLoaded()) return false;
    if (id == kMoon || id == kEarthShadow) return MoonTableLoaded();
    if (id == kPluto) return PlutoTableLoaded();
    return true;
}

void PrintState(const BodyState& b, const ObserverOptions& observer, const Instant& instant) {
    std::printf("{\"bodyId\": %d, \"name\": \"%s\", ", b.bodyId, b.name ? b.name : "");
    const auto real = [](const char* name, double v) { std::printf("\"%s\": %.17g, ", name, v); };
    real("helioLongitude", b.helioLongitude);
    real("helioLatitude", b.helioLatitude);
    real("helioRadius", b.helioRadius);
    real("geoLongitude", b.geoLongitude);
    real("geoLatitude", b.geoLatitude);
    real("geoDistance", b.geoDistance);
    real("topoDistance", b.topoDistance);
    real("meanRa", b.meanRa);
    real("meanDec", b.meanDec);
    real("apparentRa", b.apparentRa);
    real("apparentDec", b.apparentDec);
    real("magnitude", b.magnitude);
    real("equatorialDiameter", b.equatorialDiameter);
    real("polarDiameter", b.polarDiameter);
    std::printf("\"satelliteCount\": %d, %s}\n", b.satelliteCount, ObserverJson(observer, instant).c_str());
}

}  // namespace

int RunBody(const std::vector<std::string>& w) {
    ObserverOptions observer;
    std::vector<std::string> args;
    std::string why;
    if (!SplitObserverOptions(w, &observer, &args, &why)) return Usage(why.c_str());
    double id = -1;
    if (args.size() != 1 || !ParseReal(args[0], &id) || id < 0 || id >= kBodyCount || id != static_cast<int>(id))
        return Usage("body takes one ID, 0 to 11");
    const int body = static_cast<int>(id);
    if (!TablesFor(body)) {
        std::fprintf(stderr, "ferry2-cli body: the planet tables are not in the solar-system folder\n");
        return kExitFailed;
    }
    Site site;
    Instant instant;
    MakeSiteAndInstant(&observer, &site, &instant);
    double earth[3];
    EarthHeliocentric(&instant, earth);
    BodyState state;
    state.bodyId = static_cast<int16_t>(body);
    BodyPlace(&instant, earth, &state);
    if (body != kEarth) BodyApparent(&site, &instant, &state);
    PrintState(state, observer, instant);
    return kExitDone;
}
