// Delta T, dynamical time minus Universal Time, in seconds, by ranges of the
// decimal year: long-term parabolas and polynomials, a two-year table for
// 1620 to 1798, the observed table for 1972 to 2002, a line to 2012, the
// parabola again to 2050, then a constant. The ranges do not join up at
// 1601, 1620, 1799, 1900 and 2012, and the jumps are kept.
#pragma once

// `decimalYear`, `jd` (UT) and `t` (centuries from J2000.0) of one moment.
double DeltaTSeconds(double decimalYear, double jd, double t);
