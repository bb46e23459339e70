// One object of the sky, as every catalogue reader fills it and every list,
// log and dialog reads it. An object is known for ever by its class and its
// persistent number (PID); the record carries what a catalogue knows of it
// and where it stands for an observer at an instant. Its 224-byte image is
// kept in the user's list files.
#pragma once

#include <cstdint>

#include "base/record_layout.h"

// The class codes. They are stored in user files and never change; 19 is
// not used, and 20 is only met when an existing object is read again.
enum ObjectClass : uint8_t {
    kClassNone = 0,
    kClassConstellation = 1,
    kClassMajorBody = 2,
    kClassComet = 3,
    kClassMinorPlanet = 4,
    kClassStar = 5,
    kClassGalaxy = 6,
    kClassQuasar = 7,
    kClassPlanetary = 8,
    kClassDiffuseNebula = 9,
    kClassOpenCluster = 10,
    kClassGlobular = 11,
    kClassSupplementalStar = 12,
    kClassUserComet = 13,
    kClassUserMinorPlanet = 14,
    kClassFixedPosition = 15,
    kClassGalaxyGroup = 16,
    kClassDarkNebula = 17,
    kClassSupplementalDeepSky = 18,
    kClassImagePosition = 20,
};

// A GSC star's PID: bit 31 set, GSC number in bits 0 to 13, region above.
inline constexpr uint32_t kGscPidFlag = 0x80000000u;

inline constexpr uint32_t kFixedPositionMadeMask = 16384;

struct ObjectRecord {
    double raApparent = 0;
    double decApparent = 0;
    double raJ2000 = -1;
    double decJ2000 = -1;
    double raChart = -1;
    double decChart = -1;
    double frameLongitude = -1;
    double frameLatitude = -1;
    double fixedFrameLongitude = -1;
    double fixedFrameLatitude = -1;
    double altitude = -1;
    double azimuth = -1;  // from the north through east
    double hourAngle = 0;
    double airmass = 0;
    float pmRa = 0;  // radians a year, cos(dec) divided out
    float pmDec = 0;
    uint8_t sizeUnit = 2;
    float sizeMajor = 0;  // radians
    float sizeMinor = 0;
    float sizeDefault = 0;  // left as it was by initialisation in the original; 0 here
    float magnitude = 99.9f;
    float magnitude2 = 99.9f;
    uint32_t pid = 0;
    uint8_t objectClass = 0;
    uint8_t designationKind = 0;
    uint32_t nameConstellation = 0;
    float rise = -1;
    float transit = -1;
    float set = -1;
    float riseObstructed = -1;
    float setObstructed = -1;
    int32_t fixedRa = 0;
    int32_t fixedDec = 0;
    float plannerTimes[5] = {-1, -1, -1, -1, -1};
    uint16_t plannerState = 0;
    uint32_t classMask = 0;
    uint8_t constellation = 255;
    uint8_t filterPassed = 0;
    uint8_t componentCode = 0;
    uint16_t gridKey0 = 0;
    uint16_t gridKey1 = 0;
    uint32_t gridKey2 = 0;
    uint32_t gridKey3 = 0;
    uint32_t gridKey4 = 0;
};

struct ObjectRecordLayout {
    static constexpr size_t kSize = 224;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.F64(0, r.raApparent);
        io.F64(8, r.decApparent);
        io.F64(16, r.raJ2000);
        io.F64(24, r.decJ2000);
        io.F64(32, r.raChart);
        io.F64(40, r.decChart);
        io.F64(48, r.frameLongitude);
        io.F64(56, r.frameLatitude);
        io.F64(64, r.fixedFrameLongitude);
        io.F64(72, r.fixedFrameLatitude);
        io.F64(80, r.altitude);
        io.F64(88, r.azimuth);
        io.F64(96, r.hourAngle);
        io.F64(104, r.airmass);
        io.F32(112, r.pmRa);
        io.F32(116, r.pmDec);
        io.U8(120, r.sizeUnit);
        io.F32(121, r.sizeMajor);
        io.F32(125, r.sizeMinor);
        io.F32(129, r.sizeDefault);
        io.F32(133, r.magnitude);
        io.F32(137, r.magnitude2);
        io.U32(141, r.pid);
        io.U8(145, r.objectClass);
        io.U8(146, r.designationKind);
        io.U32(147, r.nameConstellation);
        io.F32(151, r.rise);
        io.F32(155, r.transit);
        io.F32(159, r.set);
        io.F32(163, r.riseObstructed);
        io.F32(167, r.setObstructed);
        io.I32(171, r.fixedRa);
        io.I32(175, r.fixedDec);
        io.F32(179, r.plannerTimes[0]);
        io.F32(183, r.plannerTimes[1]);
        io.F32(187, r.plannerTimes[2]);
        io.F32(191, r.plannerTimes[3]);
        io.F32(195, r.plannerTimes[4]);
        io.U16(199, r.plannerState);
        io.U32(201, r.classMask);
        io.U8(205, r.constellation);
        io.U8(206, r.filterPassed);
        io.U8(207, r.componentCode);
        io.U16(208, r.gridKey0);
        io.U16(210, r.gridKey1);
        io.U32(212, r.gridKey2);
        io.U32(216, r.gridKey3);
        io.U32(220, r.gridKey4);
    }
};
static_assert(LayoutIsPacked<ObjectRecordLayout, ObjectRecord>());

// Writes the initial values; a null record is ignored.
void initObjectRecord(ObjectRecord* record);

// An initialised record that names an object by its identity, class and
// PID, for the readers to fill.
ObjectRecord identityRecord(int objectClass, uint32_t pid);

// True for the classes whose objects live in the user's stores.
bool IsUserClass(int objectClass);

// True for the eight deep-sky classes of the reference catalogues (6 to
// 11, 16, 17).
bool IsDeepSkyClass(int objectClass);

// The display-class mask of a class; for stars the three flags decide: the
// orbit flag replaces the multiple-star bit, the variable flag is added,
// and a star with none of them is a single star (16).
uint32_t classMaskOf(int objectClass, bool isMultiple = false, bool hasOrbit = false,
                     bool isVariable = false);

// The component: index + 1 in the low 7 bits, bit 7 kept; reading answers
// -1 for none.
void setComponent(ObjectRecord* record, int index);
int getComponent(const ObjectRecord* record);

// A J2000.0 place in radians with no proper motion, one magnitude and no
// size: how an object placed on its orbit, or one of the user's own stars
// and deep-sky objects, is filled.
void setPointPlace(ObjectRecord* record, uint32_t pid, double ra, double dec, double magnitude);

// A fixed position (class 15) at a place in radians, with its motion.
void makeFixedPosition(ObjectRecord* record, double ra, double dec, double pmRa, double pmDec);
