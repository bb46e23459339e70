// The two-body orbit of a comet or minor planet: its elements completed
// from whatever the stores know, and the body's heliocentric place at any
// time. No perturbations are applied.
#pragma once

#include <cstdint>

// Completed elements, referred to the mean ecliptic and equinox of J2000.0.
// Built by OrbitInit, finished by OrbitVectors.
struct OrbitRecord {
    double perihelionEpoch = 0;     // Julian centuries from J2000.0 (dynamical time)
    double semiMajorAxis = 0;       // au
    double perihelionDistance = 0;  // au
    double meanMotion = 0;          // radians a day; ellipses only
    double eccentricity = 0;
    double argPerihelion = 0;  // radians
    double node = 0;           // radians
    double inclination = 0;    // radians
    double brightnessH = 0;    // absolute magnitude H, or the comet's g
    double brightnessG = 0;    // slope G, or the comet's k
    int16_t magnitudeLaw = 0;  // 1 the comet law, anything else H, G
    // The Gaussian angles and their amplitudes: equatorial coordinate k is
    // r size_k sin(angle_k + w + v).
    double angleA = 0, angleB = 0, angleC = 0;
    double sizeA = 0, sizeB = 0, sizeC = 0;
    double anomalyFactor = 0;  // root of (1 + e)/(1 - e), for e below 1
};

// The magnitude law of the comets; any other value takes H and G.
inline constexpr int kCometMagnitudeLaw = 1;

// Completes the elements. Elements not known are passed as 0.0. Epochs are
// Julian centuries from J2000.0, angles degrees (`meanAnomaly` at `epoch`),
// distances au, `meanMotion` degrees a day. Without a perihelion epoch it is
// found from the mean anomaly at `epoch`, the mean motion coming from the
// axis when it is not given. 1 on success; 0 when `orbit` is null or the
// elements do not determine the orbit: neither axis nor perihelion
// distance, no perihelion epoch and nothing to find it from (so a
// perihelion exactly at J2000.0 cannot be expressed), an ellipse without a
// mean motion, a negative eccentricity, or a conic without a positive
// perihelion distance.
int OrbitInit(OrbitRecord* orbit, double perihelionEpoch, double epoch, double meanAnomaly,
              double semiMajorAxis, double perihelionDistance, double eccentricity,
              double argPerihelion, double node, double inclination, double meanMotion,
              double brightnessH, double brightnessG, int magnitudeLaw);

// Fills the Gaussian angles and amplitudes (and the anomaly factor of an
// ellipse) for the equator of J2000.0. Nothing on null.
void OrbitVectors(OrbitRecord* orbit);

// The heliocentric place at `t` (Julian centuries of dynamical time from
// J2000.0), rectangular equatorial J2000.0, au. The ellipse goes by Kepler's
// equation, e exactly 1 by Barker's, above 1 by the near-parabolic series.
// Nothing on null.
void OrbitHeliocentric(double t, const OrbitRecord* orbit, double vector[3]);
