// The apparent orbit of a visual double star: where the companion stands
// from its primary, as position angle and separation, at a given year.
#pragma once

// The apparent orbit, elements in the order the catalogues give them. The
// angles are degrees, times are years, the semi-axis is arc seconds. The two
// derived fields are filled by BinaryPosition on first use, when meanMotion
// is still 0.
struct BinaryOrbit {
    double period = 0;          // P, years
    double periastronTime = 0;  // T, year
    double eccentricity = 0;    // e
    double semiMajorAxis = 0;   // a, arc seconds
    double inclination = 0;     // i, degrees
    double node = 0;            // position angle of the node, degrees
    double argPeriastron = 0;   // omega, degrees
    double meanMotion = 0;      // radians a year
    double anomalyFactor = 0;   // root of (1 + e)/(1 - e)
};

// The companion at `year`: position angle in degrees (0 to 360, through
// east) and separation in arc seconds. 1, or 0 on a null orbit, a zero
// period, an eccentricity outside 0 to 1, or when the projected angle
// leaves a zero denominator.
int BinaryPosition(BinaryOrbit* orbit, double year, double* positionAngle, double* separation);
