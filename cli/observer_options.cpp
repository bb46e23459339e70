#include "cli/observer_options.h"

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <numbers>

const char kObserverOptionsHelp[] =
    "  --site LONDEG,LATDEG[,HEIGHT]\n"
    "                 the observer: longitude in degrees east of Greenwich,\n"
    "                 latitude in degrees north, height in metres (default\n"
    "                 0,51.4779,0, Greenwich).\n"
    "  --at YYYY-MM-DDTHH:MM[:SS]\n"
    "                 the instant, UT (default: now).\n"
    "  --dynamical    --at is dynamical time (TT) instead of UT, as worked\n"
    "                 examples give it.\n";

namespace {

constexpr double kDeg = std::numbers::pi / 180.0;

bool ParseAt(const std::string& text, ObserverOptions* o) {
    if (!ParseMoment(text, &o->year, &o->month, &o->day, &o->hours)) return false;
    o->haveWhen = true;
    return true;
}

bool ParseSite(const std::string& value, ObserverOptions* o) {
    const std::string text = value + ",";
    double v[3] = {0, 0, 0};
    int n = 0;
    for (size_t from = 0, comma; (comma = text.find(',', from)) != std::string::npos; from = comma + 1) {
        if (n == 3 || !ParseReal(text.substr(from, comma - from), &v[n])) return false;
        ++n;
    }
    if (n < 2 || std::fabs(v[0]) > 180 || std::fabs(v[1]) > 90) return false;
    o->longitude = v[0];
    o->latitude = v[1];
    o->height = v[2];
    return true;
}

void SetNow(ObserverOptions* o) {
    const std::time_t t = std::time(nullptr);
    std::tm utc{};
#ifdef _WIN32
    gmtime_s(&utc, &t);
#else
    gmtime_r(&t, &utc);
#endif
    o->year = utc.tm_year + 1900;
    o->month = utc.tm_mon + 1;
    o->day = utc.tm_mday;
    o->hours = utc.tm_hour + utc.tm_min / 60.0 + utc.tm_sec / 3600.0;
}

}  // namespace

bool ParseMoment(const std::string& text, int* year, int* month, int* day, double* hours) {
    int y, mo, d, h, mi;
    double s = 0;
    char tail = 0;
    const int n = std::sscanf(text.c_str(), "%d-%d-%dT%d:%d:%lf%c", &y, &mo, &d, &h, &mi, &s, &tail);
    if (n != 5 && n != 6) return false;
    if (mo < 1 || mo > 12 || d < 1 || d > 31 || h < 0 || h > 23 || mi < 0 || mi > 59 || s < 0 || s >= 60)
        return false;
    *year = y;
    *month = mo;
    *day = d;
    *hours = h + mi / 60.0 + s / 3600.0;
    return true;
}

bool ParseReal(const std::string& text, double* value) {
    if (text.empty()) return false;
    errno = 0;
    char* end = nullptr;
    const double v = std::strtod(text.c_str(), &end);
    if (*end || errno || !std::isfinite(v)) return false;
    *value = v;
    return true;
}

int TakeObserverOption(const std::vector<std::string>& w, size_t* i, ObserverOptions* o, std::string* why) {
    const std::string& option = w[*i];
    if (option == "--dynamical") {
        o->dynamical = true;
        return 1;
    }
    if (option != "--site" && option != "--at") return 0;
    const bool site = option == "--site";
    if (++*i >= w.size() || !(site ? ParseSite(w[*i], o) : ParseAt(w[*i], o))) {
        *why = site ? "--site takes LONDEG,LATDEG[,HEIGHT]" : "--at takes YYYY-MM-DDTHH:MM[:SS]";
        return -1;
    }
    return 1;
}

bool SplitObserverOptions(const std::vector<std::string>& w, ObserverOptions* options,
                          std::vector<std::string>* rest, std::string* why) {
    for (size_t i = 0; i < w.size(); ++i) {
        const int taken = TakeObserverOption(w, &i, options, why);
        if (taken < 0) return false;
        if (taken == 0) rest->push_back(w[i]);
    }
    return true;
}

void MakeSiteAndInstant(ObserverOptions* o, Site* site, Instant* instant) {
    if (!o->haveWhen) SetNow(o);
    char name[] = "ferry2-cli";
    // The engine counts longitude positive west.
    SiteInit(site, -o->longitude * kDeg, o->latitude * kDeg, o->height, 6.0, 0.0, name);
    InstantSet(instant, site, o->month, o->day, o->year, o->hours, kUniversalTime);
    InstantScales(instant, 0.0);
    if (o->dynamical) {
        // The given clock is dynamical time: UT is earlier by delta T, which
        // is then kept as it was found for the given moment.
        const double deltaTSeconds = instant->deltaTDays * 86400.0;
        InstantSet(instant, site, o->month, o->day, o->year, o->hours - deltaTSeconds / 3600.0, kUniversalTime);
        InstantScales(instant, deltaTSeconds);
    }
    InstantSidereal(site, instant);
}

std::string InstantJson(const ObserverOptions& o, const Instant& instant) {
    const double seconds = std::round(o.hours * 3600.0);
    const int hh = static_cast<int>(seconds / 3600), mm = static_cast<int>(seconds / 60) % 60,
              ss = static_cast<int>(seconds) % 60;
    char text[200];
    std::snprintf(text, sizeof text,
                  "\"instant\": {\"%s\": \"%04d-%02d-%02dT%02d:%02d:%02d\", \"jd\": %.10f, "
                  "\"timeScale\": \"%s\"}",
                  o.dynamical ? "td" : "ut", o.year, o.month, o.day, hh, mm, ss, instant.jd,
                  o.dynamical ? "dynamical" : "UT");
    return text;
}

std::string ObserverJson(const ObserverOptions& o, const Instant& instant) {
    char text[160];
    std::snprintf(text, sizeof text,
                  "\"site\": {\"longitude\": %.10g, \"latitude\": %.10g, \"height\": %.10g}, ",
                  o.longitude, o.latitude, o.height);
    return text + InstantJson(o, instant);
}
