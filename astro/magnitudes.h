// Small conversions that go with the texts: rounding to significant
// digits, the colour index of a spectral class, surface brightness and
// distances from redshift or velocity.
#pragma once

// |x| to `digits` significant digits, rounding halves up, sign kept.
double RoundSignificant(double x, int digits);

// B-V of a spectral class such as "G2" or "K" (digit 0); the parse
// sentinel for a class outside OBAFGKM or a digit outside 0 to 9.
double ColorIndexOfClass(const char* text);

// Magnitude per square arc second of an ellipse with axes in arc minutes.
double SurfaceBrightness(double majorArcmin, double minorArcmin, double magnitude);

// Millions of light years from a redshift or a velocity in km/s; the
// redshift of a velocity.
double RedshiftDistance(double z);
double VelocityDistance(double v);
double VelocityRedshift(double v);
