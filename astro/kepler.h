// The anomaly of a body on its conic at a given time: Kepler's equation for
// the ellipse, Barker's equation for the parabola, and the series of the
// orbits close to the parabola, hyperbolas included.
#pragma once

// The Gaussian gravitational constant, radians a day for one astronomical
// unit.
inline constexpr double kGaussK = 0.01720209895;

// The eccentric anomaly for mean anomaly M (radians) and eccentricity e
// below 1. M is first brought to -pi to pi; Newton's method then runs until
// the step is at most 1e-06, from a near-parabolic start when e is above
// 0.97 and |M| below 0.6. There is no round limit.
double KeplerSolve(double meanAnomaly, double e);

// The true anomaly: 2 atan(k tan(E/2)), k the anomaly factor.
double TrueFromEccentric(double eccentricAnomaly, double anomalyFactor);

// The true anomaly on a parabola of perihelion distance q (au), `dt` Julian
// centuries after perihelion (negative before), by Newton's method on
// Barker's equation until the step is at most 1e-06.
double ParabolaSolve(double dt, double q);

// The true anomaly on a conic of eccentricity e near 1, above or below,
// from the parabola's answer by Newton's method on the series in
// (1 - e)/(1 + e): at most 49 rounds of 49 terms, ending once a step is at
// most 1e-05. After 49 rounds it answers what it has.
double NearParabolaSolve(double dt, double q, double e);
