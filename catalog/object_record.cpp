#include "catalog/object_record.h"

#include "catalog/catalogue_codes.h"

void initObjectRecord(ObjectRecord* record) {
    if (record) *record = ObjectRecord{};
}

bool IsUserClass(int c) {
    return c == kClassSupplementalStar || c == kClassUserComet || c == kClassUserMinorPlanet ||
           c == kClassSupplementalDeepSky;
}

ObjectRecord identityRecord(int objectClass, uint32_t pid) {
    ObjectRecord r;
    initObjectRecord(&r);
    r.objectClass = static_cast<uint8_t>(objectClass);
    r.pid = pid;
    return r;
}

bool IsDeepSkyClass(int c) {
    return (c >= kClassGalaxy && c <= kClassGlobular) || c == kClassGalaxyGroup || c == kClassDarkNebula;
}

uint32_t classMaskOf(int objectClass, bool isMultiple, bool hasOrbit, bool isVariable) {
    switch (objectClass) {
        case kClassConstellation: return 1;
        case kClassMajorBody: return 2;
        case kClassComet:
        case kClassUserComet: return 4;
        case kClassMinorPlanet:
        case kClassUserMinorPlanet: return 8;
        case kClassSupplementalStar: return 16;
        case kClassGalaxy: return 256;
        case kClassQuasar: return 512;
        case kClassPlanetary: return 1024;
        case kClassDiffuseNebula: return 2048;
        case kClassOpenCluster: return 4096;
        case kClassGlobular: return 8192;
        // The fixed-position maker writes 16384; this function has always
        // answered 32768, so a fixed position read again carries 32768.
        case kClassFixedPosition: return 32768;
        case kClassGalaxyGroup: return 0x10000;
        case kClassDarkNebula: return 0x20000;
        case kClassSupplementalDeepSky: return 0x33f00;  // every deep-sky bit
        case kClassStar: {
            uint32_t mask = 0;
            if (isMultiple) mask = 32;
            if (hasOrbit) mask = 64;  // replaces the multiple bit
            if (isVariable) mask |= 128;
            return mask == 0 ? 16 : mask;
        }
        default: return 0;
    }
}

void setComponent(ObjectRecord* record, int index) {
    if (!record) return;
    record->componentCode =
        static_cast<uint8_t>((record->componentCode & 0x80) | ((index + 1) & 0x7F));
}

int getComponent(const ObjectRecord* record) {
    return record ? (record->componentCode & 0x7F) - 1 : -1;
}

void setPointPlace(ObjectRecord* record, uint32_t pid, double ra, double dec, double magnitude) {
    record->pid = pid;
    record->raJ2000 = ra;
    record->decJ2000 = dec;
    record->pmRa = record->pmDec = 0;
    record->magnitude = static_cast<float>(magnitude);
    record->magnitude2 = 99.9f;
    record->sizeMajor = record->sizeMinor = record->sizeDefault = 0;
}

void makeFixedPosition(ObjectRecord* record, double ra, double dec, double pmRa, double pmDec) {
    if (!record) return;
    initObjectRecord(record);
    record->fixedRa = radiansToScaledAngle(ra);
    record->fixedDec = radiansToScaledAngle(dec);
    record->raApparent = ra;
    record->decApparent = dec;
    record->pmRa = static_cast<float>(pmRa);
    record->pmDec = static_cast<float>(pmDec);
    record->magnitude = 99.9f;
    record->sizeDefault = 0;
    record->objectClass = kClassFixedPosition;
    record->classMask = kFixedPositionMadeMask;
}
