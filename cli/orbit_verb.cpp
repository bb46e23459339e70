#include "cli/orbit_verb.h"

#include <cmath>
#include <cstdio>
#include <string>

#include "astro/calendar.h"
#include "astro/instant.h"
#include "astro/orbit.h"
#include "astro/orbit_place.h"
#include "astro/planet_files.h"
#include "astro/planet_series.h"
#include "astro/site.h"
#include "cli/exit_status.h"
#include "cli/observer_options.h"

const char kOrbitSynopsis[] =
    "ferry2-cli orbit --q AU|--a AU --e E --peri DEG --node DEG --incl DEG\n"
    "                  --perihelion-time YYYY-MM-DDTHH:MM[:SS] | --mean-anomaly DEG --epoch "
    "YYYY-MM-DDTHH:MM[:SS]\n"
    "                  [--h H --g G | --comet-g G --comet-k K] [--at YYYY-MM-DDTHH:MM[:SS]] "
    "[--dynamical]\n";

const char kOrbitDetails[] =
    "  orbit          places a comet or minor planet on its two-body orbit\n"
    "                 (no perturbations) and prints one JSON object: ra and\n"
    "                 dec (J2000.0, radians, light time applied, without\n"
    "                 nutation, aberration or parallax), geoDistance and\n"
    "                 helioDistance (au), phaseAngle and elongation\n"
    "                 (radians), magnitude (null without a magnitude law),\n"
    "                 then the instant used as for the other verbs: as given,\n"
    "                 its jd (UT) and its timeScale, \"UT\" or \"dynamical\".\n"
    "                 The Sun comes from the planet tables (PLANETS.NDX and\n"
    "                 PLANETS.BIN in the solar-system folder, line 7 of\n"
    "                 vesperal.ini). Exit 1 when they are not loaded, or when\n"
    "                 the elements do not make an orbit.\n"
    "  --q AU, --a AU perihelion distance, semi-major axis; one of them or\n"
    "                 both. With only --q, an ellipse's axis is q/(1 - e).\n"
    "  --e E          eccentricity: below 1 an ellipse, 1 a parabola, above\n"
    "                 1 a hyperbola.\n"
    "  --peri, --node, --incl DEG\n"
    "                 argument of perihelion, longitude of the ascending node\n"
    "                 and inclination, ecliptic and equinox of J2000.0.\n"
    "  --perihelion-time YYYY-MM-DDTHH:MM[:SS]\n"
    "                 time of perihelion, dynamical time.\n"
    "  --mean-anomaly DEG --epoch YYYY-MM-DDTHH:MM[:SS]\n"
    "                 an ellipse's mean anomaly at the epoch (dynamical\n"
    "                 time), in place of the perihelion time: the mean\n"
    "                 motion follows from the axis.\n"
    "  --h H --g G    the minor-planet magnitude law: absolute magnitude and\n"
    "                 slope (phases above 120 degrees count as 120).\n"
    "  --comet-g G --comet-k K\n"
    "                 the comet law: G + 5 log delta + 2.5 K log r.\n"
    "  --at YYYY-MM-DDTHH:MM[:SS]\n"
    "                 the instant, UT (default: now).\n"
    "  --dynamical    --at is dynamical time (TT) instead of UT, as worked\n"
    "                 examples give it.\n";

namespace {

int Usage(const char* why) { return VerbUsage("orbit", why); }

int Failed(const char* why) { return VerbFailed("orbit", why); }

// A real option: present or not, and its value.
struct Real {
    bool given = false;
    double value = 0;
};

// A moment option: present or not, and the moment.
struct Moment {
    bool given = false;
    int year = 0, month = 0, day = 0;
    double hours = 0;
};

struct OrbitOptions {
    Real q, a, e, peri, node, incl, meanAnomaly, h, g, cometG, cometK;
    Moment perihelionTime, epoch;
    ObserverOptions observer;  // --at and --dynamical
};

struct RealOption {
    const char* name;
    Real OrbitOptions::*field;
};

constexpr RealOption kRealOptions[] = {
    {"--q", &OrbitOptions::q},       {"--a", &OrbitOptions::a},
    {"--e", &OrbitOptions::e},       {"--peri", &OrbitOptions::peri},
    {"--node", &OrbitOptions::node}, {"--incl", &OrbitOptions::incl},
    {"--mean-anomaly", &OrbitOptions::meanAnomaly},
    {"--h", &OrbitOptions::h},       {"--g", &OrbitOptions::g},
    {"--comet-g", &OrbitOptions::cometG}, {"--comet-k", &OrbitOptions::cometK},
};

struct MomentOption {
    const char* name;
    Moment OrbitOptions::*field;
};

constexpr MomentOption kMomentOptions[] = {
    {"--perihelion-time", &OrbitOptions::perihelionTime},
    {"--epoch", &OrbitOptions::epoch},
};

// The words as options; an empty answer, or the usage complaint.
std::string ParseOptions(const std::vector<std::string>& w, OrbitOptions& o) {
    for (size_t i = 0; i < w.size(); ++i) {
        if (w[i] == "--site") return "--site does not apply: the place is geocentric";
        std::string why;
        const int taken = TakeObserverOption(w, &i, &o.observer, &why);
        if (taken < 0) return why;
        if (taken > 0) continue;
        bool known = false;
        for (const RealOption& r : kRealOptions) {
            if (w[i] != r.name) continue;
            Real& field = o.*r.field;
            if (field.given || ++i >= w.size() || !ParseReal(w[i], &field.value))
                return std::string(r.name) + " takes one number";
            field.given = known = true;
            break;
        }
        for (const MomentOption& m : kMomentOptions) {
            if (known || w[i] != m.name) continue;
            Moment& field = o.*m.field;
            if (field.given || ++i >= w.size() ||
                !ParseMoment(w[i], &field.year, &field.month, &field.day, &field.hours))
                return std::string(m.name) + " takes one YYYY-MM-DDTHH:MM[:SS]";
            field.given = known = true;
            break;
        }
        if (!known) return "unknown argument " + w[i];
    }
    if (!o.e.given || !o.peri.given || !o.node.given || !o.incl.given)
        return "--e, --peri, --node and --incl are needed";
    if (!o.q.given && !o.a.given) return "--q or --a is needed";
    if (o.e.value < 0) return "--e cannot be negative";
    if (o.q.given && o.q.value <= 0) return "--q must be above 0";
    if (o.a.given && o.a.value == 0) return "--a cannot be 0";
    if (o.meanAnomaly.given != o.epoch.given) return "--mean-anomaly and --epoch go together";
    if (!o.perihelionTime.given && !o.epoch.given)
        return "--perihelion-time, or --mean-anomaly with --epoch, is needed";
    if (o.h.given != o.g.given) return "--h and --g go together";
    if (o.cometG.given != o.cometK.given) return "--comet-g and --comet-k go together";
    if (o.h.given && o.cometG.given) return "give one magnitude law";
    return "";
}

// Julian centuries of dynamical time from J2000.0, as the elements count.
double Centuries(const Moment& m) {
    return JdToCenturies(JulianDay(m.month, m.day, m.year, m.hours));
}

void PrintNumber(const char* name, double v) {
    if (std::isfinite(v))
        std::printf("\"%s\": %.17g, ", name, v);
    else
        std::printf("\"%s\": null, ", name);
}

}  // namespace

int RunOrbit(const std::vector<std::string>& words) {
    OrbitOptions o;
    const std::string complaint = ParseOptions(words, o);
    if (!complaint.empty()) return Usage(complaint.c_str());

    const bool hasLaw = o.h.given || o.cometG.given;
    const bool comet = o.cometG.given;
    OrbitRecord orbit;
    if (!OrbitInit(&orbit, o.perihelionTime.given ? Centuries(o.perihelionTime) : 0.0,
                   o.epoch.given ? Centuries(o.epoch) : 0.0, o.meanAnomaly.value,
                   o.a.value, o.q.value, o.e.value, o.peri.value, o.node.value, o.incl.value,
                   0.0, comet ? o.cometG.value : o.h.value, comet ? o.cometK.value : o.g.value,
                   comet ? kCometMagnitudeLaw : 0))
        return Failed("the elements do not determine an orbit");
    OrbitVectors(&orbit);

    if (!PlanetSeriesLoaded()) {
        std::fprintf(stderr,
                     "ferry2-cli orbit: the Sun needs the planet tables PLANETS.NDX and "
                     "PLANETS.BIN, which are not loaded from %s\n",
                     PlanetFilesFolder().c_str());
        return kExitFailed;
    }
    Site site;
    Instant instant;
    MakeSiteAndInstant(&o.observer, &site, &instant);
    double ra = 0, dec = 0, geoDistance = 0, helioDistance = 0, phase = 0, magnitude = 0,
           elongation = 0;
    OrbitGeocentric(&instant, &orbit, &ra, &dec, &geoDistance, &helioDistance, &phase, &magnitude,
                    &elongation);
    std::printf("{");
    PrintNumber("ra", ra);
    PrintNumber("dec", dec);
    PrintNumber("geoDistance", geoDistance);
    PrintNumber("helioDistance", helioDistance);
    PrintNumber("phaseAngle", phase);
    PrintNumber("elongation", elongation);
    if (hasLaw)
        PrintNumber("magnitude", magnitude);
    else
        std::printf("\"magnitude\": null, ");
    std::printf("%s}\n", InstantJson(o.observer, instant).c_str());
    return kExitDone;
}
