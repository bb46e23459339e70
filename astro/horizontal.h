// Hour angle, altitude and azimuth, refraction and the horizontal frame.
// Azimuths of EquatorialToHorizontal run from the south through west; those
// of ApparentToHorizontal from the south through east.
#pragma once

#include "astro/instant.h"

// Returned for a bad selector or a null site.
inline constexpr double kNoAngle = -99999999.0;

// `which` 2 from the apparent sidereal time, 1 from the mean one. In -pi
// to pi; the wrapped form in 0 to 2 pi.
double HourAngle(const Instant* instant, double ra, int which);
double HourAngleWrapped(const Instant* instant, double ra, int which);

double AltitudeOf(const Site* site, double hourAngle, double declination);
double AzimuthOf(const Site* site, double hourAngle, double declination);

// 1 when the altitude is at or above the site's horizon dip, 0 below
// (without `keepBelow` the azimuth is then not computed), -1 for no site.
int EquatorialToHorizontal(const Site* site, double hourAngle, double dec, double* azimuth,
                           double* altitude, int keepBelow);
void HorizontalToEquatorial(const Site* site, double azimuth, double altitude, double* hourAngle,
                            double* dec);

// Refraction in radians for a true or an apparent altitude.
double RefractionForTrue(double altitude);
double RefractionForApparent(double altitude);

double AirMass(double altitude);

// Apparent place to refracted altitude and azimuth, in place; the
// magnitude, when given and below 90, gains the extinction. 0 when, without
// `keepBelow`, the object is below the horizon dip.
int ApparentToHorizontal(const Site* site, const Instant* instant, double* raThenAzimuth,
                         double* decThenAltitude, double* magnitude, int keepBelow);
int HorizontalToApparent(const Site* site, const Instant* instant, double* azimuthThenRa,
                         double* altitudeThenDec, double* magnitude);
