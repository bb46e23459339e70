// How bright a comet or minor planet looks, and the two angles of the
// triangle Sun, body and Earth that go with it: the phase angle at the body
// and the elongation at the Earth.
#pragma once

// The angle between sides a and c of a triangle whose third side is b:
// the arccosine of (a^2 + c^2 - b^2)/(2 a c), held at 0 and pi when the
// sides cannot close.
double TriangleAngle(double a, double b, double c);

// The comet law: g + 5 log10(delta) + 2.5 k log10(r), distances in au.
double CometMagnitude(double r, double delta, double g, double k);

// The H, G law of the minor planets for distances r and delta (au) and
// phase angle beta (radians). Phases above 120 degrees, where the law no
// longer holds, are taken as 120 degrees.
double MinorPlanetMagnitude(double r, double delta, double beta, double h, double g);
