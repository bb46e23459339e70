// Precession between two equinoxes, in the FK5 system (Julian centuries)
// or the FK4 system (tropical centuries from B1900.0), with proper motion.
// A context is prepared once for a pair of epochs and applied to many
// positions.
#pragma once

#include <cstdint>

inline constexpr int kFk5 = 1;
inline constexpr int kFk4 = 2;

struct PrecessionContext {
    double fromEpoch = 0;  // Julian centuries from J2000.0
    double toEpoch = 0;
    double interval = 0;  // Julian centuries for FK5, tropical for FK4
    int16_t targetSystem = kFk5;
    int16_t sourceSystem = kFk5;
    double zeta = 0;  // radians
    double z = 0;
    double sinTheta = 0;
    double cosTheta = 1;
};

// Source system 2 takes the FK4 formulas, anything else the FK5 ones. 0 on
// a null context.
int PrecessionPrepare(PrecessionContext* context, double fromEpoch, double toEpoch,
                      int sourceSystem, int targetSystem);

// Keeps the rotation angles and sets only a new interval and target.
int PrecessionRetarget(PrecessionContext* context, double fromEpoch, double toEpoch,
                       int sourceSystem, int targetSystem);

// In place. Rates in radians per year (0.0 for none); `motionAfter` 0
// moves the star at the start epoch before the rotation, otherwise after.
// Between FK4 and FK5 the E-terms and the equinox correction are applied.
int PrecessionApply(const PrecessionContext* context, double* ra, double* dec, double raRate,
                    double decRate, int motionAfter);

// The E-terms of aberration that FK4 positions hold: direction 2 adds
// them, 1 takes them off.
void Fk4ETerms(int direction, double* ra, double* dec);
