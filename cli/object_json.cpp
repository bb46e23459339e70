#include "cli/object_json.h"

#include "base/string_helpers.h"
#include "catalog/constellation_names.h"

std::string ObjectRecordJson(const ObjectRecord& r) {
    std::string out;
    const auto real = [&out](const char* name, double v) { out += Format("\"%s\": %.17g, ", name, v); };
    const auto whole = [&out](const char* name, long long v) { out += Format("\"%s\": %lld, ", name, v); };
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
    out += Format("\"plannerTimes\": [%.9g, %.9g, %.9g, %.9g, %.9g], ", r.plannerTimes[0], r.plannerTimes[1],
                  r.plannerTimes[2], r.plannerTimes[3], r.plannerTimes[4]);
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
    out += Format("\"constellationAbbr\": \"%s\"",
                  r.constellation == 255 ? "" : constellationZoneAbbreviation(r.constellation));
    return out;
}
