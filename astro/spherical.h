// Rotations, angular distance, position angle and sums of vectors.
#pragma once

void RotateAboutX(const double* vector, double cosA, double sinA, double* result);
void RotateAboutZ(const double* vector, double cosA, double sinA, double* result);

// Angular distance by the haversine form.
double Separation(double lon1, double lat1, double lon2, double lat2);

// Bearing of the second point from the first, 0 to 2 pi, through east.
double PositionAngle(double ra1, double dec1, double ra2, double dec2);

// a - b of two spherical triples (longitude, latitude, radius), as a triple.
void VectorDifference(const double* a, const double* b, double* result);
// a + b of two rectangular vectors, as a spherical triple.
void VectorSum(const double* a, const double* b, double* result);
