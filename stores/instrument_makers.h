// Makers of new instruments and optical systems, and the fields derived from
// a system's optics: power, field, resolution and limiting magnitude.
#pragma once

#include "astro/numeric.h"
#include "stores/instrument_records.h"
#include "stores/observer_store.h"

// The new telescope's finder overlay: 0.5, 2 and 4 degrees as radians.
inline constexpr float kFinderCircles[3] = {static_cast<float>(0.5 * kRadiansPerDegree),
                                            static_cast<float>(2.0 * kRadiansPerDegree),
                                            static_cast<float>(4.0 * kRadiansPerDegree)};

// An apparent field of 0 stands for 40 degrees.
inline constexpr double kDefaultApparentFieldDegrees = 40.0;
inline constexpr double kDefaultApparentField = 0.6981317007977318;  // radians

// The program's millimetre-to-inch factor (not exactly 1 / 25.4).
inline constexpr double kInchesPerMillimetre = 0.03937;

// Fills a system's optics from inches. With a focal length given the ratio
// follows from it; with only a ratio the focal length follows; with neither
// both stay as they are. Other fields are left alone.
void OpticalSystemInit(OpticalSystem* system, const char* name, int opticsType,
                       double apertureInches, double focalLengthInches, double focalRatio,
                       int flipA, int flipB, double condition);

// A binocular system; 0 when the power or the aperture is 0. A field of 0
// takes the default for the power.
int BinocularsInit(OpticalSystem* system, const char* name, double magnification,
                   double apertureMillimetres, double fieldDegrees);

void NakedEyeInit(InstrumentRecord* record);
void NewTelescopeInit(InstrumentRecord* record, const char* name);
void NewBinocularsInit(InstrumentRecord* record, const char* name);

// Sets slot `index` (0 to 69) from the pool's values; the field is given in
// degrees (0 for 40) and kept in radians, a barlow factor of 0 is kept as 1.
int EyepieceSlotSet(OpticalSystem* system, int poolId, int index, const char* name,
                    double focalLength, double apparentFieldDegrees, double barlowFactor,
                    int mirrorDiagonal);

// The true field, in radians, of binoculars of power `magnification` whose
// field is not known.
double BinocularDefaultField(double magnification);

// The limiting magnitude of a star seen through `optics` by `observer` (null
// for the model's average eye); an observer's pupil of 0 is computed from
// the age.
double LimitingMagnitude(const OpticalSystem& optics, const ObserverRecord* observer,
                         double nakedEyeLimit, double colorIndex, double zenithAngle,
                         double seeing);

// Fills the missing one of focal length and ratio, and the derived highest
// power, Dawes limit and limiting magnitude (the latter at a power of 25 per
// inch of aperture). 0 when the aperture or both focal values are missing.
int OpticalSystemCompute(OpticalSystem* system);

// Makes eyepiece `index` the current one: power and true field. An apparent
// field of 0 in the slot becomes 40 degrees.
int EyepieceApply(OpticalSystem* system, int index);

// The reverse: the slot's apparent field from the current power and true
// field, which are computed from the slot first when either is 0.
int EyepieceApparentField(OpticalSystem* system, int index);
