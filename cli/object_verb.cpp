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

const char kObjectSynopsis[] =
    "ferry2-cli object CLASS PID | fixed RADEG DECDEG [--site LONDEG,LATDEG[,HEIGHT]] "
    "[--at YYYY-MM-DDTHH:MM[:SS]]\n";

const char kObjectDetails[] =
    "  object CLASS PID\n"
    "                 reads object PID of class CLASS (5 a star, 15 a fixed\n"
    "                 position, ...) and prints its filled object record as\n"
    "                 one JSON object: every field by its name, angles in\n"
    "                 radians as stored, then constellationAbbr, and the site\n"
    "                 and instant used. Exit 1 when the object is not found.\n"
    "  object fixed RADEG DECDEG\n"
    "                 the same for a fixed position (J2000, degrees).\n"
    "  --site LONDEG,LATDEG[,HEIGHT]\n"
    "                 the observer: longitude in degrees east of Greenwich,\n"
    "                 latitude in degrees north, height in metres (default\n"
    "                 0,51.4779,0, Greenwich).\n"
    "  --at YYYY-MM-DDTHH:MM[:SS]\n"
    "                 the instant, UT (default: now).\n";

namespace {

constexpr int kExitDone = 0;
constexpr int kExitNone = 1;
constexpr int kExitUsage = 2;
constexpr double kDeg = std::numbers::pi / 180.0;

int Usage(const char* why) {
    std::fprintf(stderr, "ferry2-cli object: %s\n", why);
    return kExitUsage;
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

struct When {
    int year = 0, month = 0, day = 0;
    double hours = 0;
};

bool ParseAt(const std::string& text, When* when) {
    int y, mo, d, h, mi;
    double s = 0;
    char tail = 0;
    const int n = std::sscanf(text.c_str(), "%d-%d-%dT%d:%d:%lf%c", &y, &mo, &d, &h, &mi, &s, &tail);
    if (n != 5 && n != 6) return false;
    if (mo < 1 || mo > 12 || d < 1 || d > 31 || h < 0 || h > 23 || mi < 0 || mi > 59 || s < 0 ||
        s >= 60)
        return false;
    *when = {y, mo, d, h + mi / 60.0 + s / 3600.0};
    return true;
}

When Now() {
    const std::time_t t = std::time(nullptr);
    std::tm utc{};
#ifdef _WIN32
    gmtime_s(&utc, &t);
#else
    gmtime_r(&t, &utc);
#endif
    return {utc.tm_year + 1900, utc.tm_mon + 1, utc.tm_mday,
            utc.tm_hour + utc.tm_min / 60.0 + utc.tm_sec / 3600.0};
}

void PrintRecord(const ObjectRecord& r, double lonDeg, double latDeg, double height,
                 const When& when, const Instant& instant) {
    std::printf("{");
    const auto real = [](const char* name, double v) { std::printf("\"%s\": %.17g, ", name, v); };
    const auto whole = [](const char* name, long long v) { std::printf("\"%s\": %lld, ", name, v); };
    real("raApparent", r.raApparent);
    real("decApparent", r.decApparent);
    real("raJ2000", r.raJ2000);
    real("decJ2000", r.decJ2000);
    real("raChart", r.raChart);
    real("decChart", r.decChart);
    real("frameLongitude", r.frameLongitude);
    real("frameLatitude", r.frameLatitude);
    real("fixedFrameLongitude", r.fixedFrameLongitude);
    real("fixedFrameLatitude", r.fixedFrameLatitude);
    real("altitude", r.altitude);
    real("azimuth", r.azimuth);
    real("hourAngle", r.hourAngle);
    real("airmass", r.airmass);
    real("pmRa", r.pmRa);
    real("pmDec", r.pmDec);
    whole("sizeUnit", r.sizeUnit);
    real("sizeMajor", r.sizeMajor);
    real("sizeMinor", r.sizeMinor);
    real("sizeDefault", r.sizeDefault);
    real("magnitude", r.magnitude);
    real("magnitude2", r.magnitude2);
    whole("PID", r.pid);
    whole("objectClass", r.objectClass);
    whole("designationKind", r.designationKind);
    whole("nameConstellation", r.nameConstellation);
    real("rise", r.rise);
    real("transit", r.transit);
    real("set", r.set);
    real("riseObstructed", r.riseObstructed);
    real("setObstructed", r.setObstructed);
    whole("fixedRa", r.fixedRa);
    whole("fixedDec", r.fixedDec);
    std::printf("\"plannerTimes\": [%.9g, %.9g, %.9g, %.9g, %.9g], ", r.plannerTimes[0],
                r.plannerTimes[1], r.plannerTimes[2], r.plannerTimes[3], r.plannerTimes[4]);
    whole("plannerState", r.plannerState);
    whole("classMask", r.classMask);
    whole("constellation", r.constellation);
    whole("filterPassed", r.filterPassed);
    whole("componentCode", r.componentCode);
    whole("gridKey0", r.gridKey0);
    whole("gridKey1", r.gridKey1);
    whole("gridKey2", r.gridKey2);
    whole("gridKey3", r.gridKey3);
    whole("gridKey4", r.gridKey4);
    std::printf("\"constellationAbbr\": \"%s\", ",
                r.constellation == 255 ? "" : constellationZoneAbbreviation(r.constellation));
    std::printf("\"site\": {\"longitude\": %.10g, \"latitude\": %.10g, \"height\": %.10g}, ",
                lonDeg, latDeg, height);
    const double seconds = std::round(when.hours * 3600.0);
    const int hh = static_cast<int>(seconds / 3600), mm = static_cast<int>(seconds / 60) % 60,
              ss = static_cast<int>(seconds) % 60;
    std::printf("\"instant\": {\"ut\": \"%04d-%02d-%02dT%02d:%02d:%02d\", \"jd\": %.10f}}\n",
                when.year, when.month, when.day, hh, mm, ss, instant.jd);
}

}  // namespace

int RunObject(const std::vector<std::string>& w) {
    double lon = 0, lat = 51.4779, height = 0;
    bool haveWhen = false;
    When when;
    std::vector<std::string> args;
    for (size_t i = 0; i < w.size(); ++i) {
        if (w[i] == "--site") {
            if (++i >= w.size()) return Usage("--site takes LONDEG,LATDEG[,HEIGHT]");
            std::string text = w[i] + ",";
            double v[3] = {0, 0, 0};
            int n = 0;
            for (size_t from = 0, comma; (comma = text.find(',', from)) != std::string::npos;
                 from = comma + 1) {
                if (n == 3 || !ParseReal(text.substr(from, comma - from), &v[n]))
                    return Usage("--site takes LONDEG,LATDEG[,HEIGHT]");
                ++n;
            }
            if (n < 2 || std::fabs(v[0]) > 180 || std::fabs(v[1]) > 90)
                return Usage("--site takes LONDEG,LATDEG[,HEIGHT]");
            lon = v[0];
            lat = v[1];
            height = v[2];
        } else if (w[i] == "--at") {
            if (++i >= w.size() || !ParseAt(w[i], &when))
                return Usage("--at takes YYYY-MM-DDTHH:MM[:SS], UT");
            haveWhen = true;
        } else {
            args.push_back(w[i]);
        }
    }
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
    if (!haveWhen) when = Now();

    char name[] = "ferry2-cli";
    Site site;
    // The engine counts longitude positive west.
    SiteInit(&site, -lon * kDeg, lat * kDeg, height, 6.0, 0.0, name);
    Instant instant;
    InstantSet(&instant, &site, when.month, when.day, when.year, when.hours, kUniversalTime);
    InstantScales(&instant, 0.0);
    InstantSidereal(&site, &instant);
    if (refillByIdentity(&record, 0, 0, &site, &instant) == 0) {
        std::fprintf(stderr, "ferry2-cli object: no object %u of class %d\n", record.pid,
                     record.objectClass);
        return kExitNone;
    }
    PrintRecord(record, lon, lat, height, when, instant);
    return kExitDone;
}
