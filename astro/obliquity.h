// The mean obliquity of the ecliptic of the date, after Laskar.
#pragma once

// `tDyn` in Julian centuries of dynamical time from J2000.0; radians.
double MeanObliquity(double tDyn);

// The mean obliquity of J2000.0, for bodies given in the J2000 frame.
inline constexpr double kJ2000Obliquity = 0.40909280420293637;
