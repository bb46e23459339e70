#include "astro/horizontal.h"

#include <cmath>

#include "astro/numeric.h"

namespace {

// Within this of a celestial pole the declination is moved toward the
// equator, so that its tangent stays finite.
constexpr double kPoleStep = 0.0004;

// 34 arc minutes: the refraction below the horizon.
constexpr double kHorizonRefraction = 0.009890199094634533;

// Magnitudes of 90 and above stand for none.
constexpr double kNoMagnitude = 90.0;

double Extinction(double altitude) { return altitude > 0.0 ? 0.1 / std::sin(altitude) : 20.0; }

}  // namespace

double HourAngle(const Instant* instant, double ra, int which) {
    if (which == 2) return WrapPi(instant->last - ra);
    if (which == 1) return WrapPi(instant->lmst - ra);
    return kNoAngle;
}

double HourAngleWrapped(const Instant* instant, double ra, int which) {
    const double h = HourAngle(instant, ra, which);
    return h == kNoAngle ? h : Wrap(h, kTwoPi);
}

double AltitudeOf(const Site* site, double hourAngle, double declination) {
    if (!site) return kNoAngle;
    return SafeAsin(site->sinLatitude * std::sin(declination) +
                    site->cosLatitude * std::cos(declination) * std::cos(hourAngle));
}

double AzimuthOf(const Site* site, double hourAngle, double declination) {
    if (!site) return kNoAngle;
    if (std::cos(declination) == 0.0) return 0.0;
    return Wrap(SafeAtan2(std::sin(hourAngle), std::cos(hourAngle) * site->sinLatitude -
                                                   std::tan(declination) * site->cosLatitude),
                kTwoPi);
}

int EquatorialToHorizontal(const Site* site, double hourAngle, double dec, double* azimuth,
                           double* altitude, int keepBelow) {
    if (!site) return -1;
    *altitude = SafeAsin(site->sinLatitude * std::sin(dec) +
                         site->cosLatitude * std::cos(dec) * std::cos(hourAngle));
    const bool above = *altitude >= site->horizonDip;
    if (!keepBelow && !above) return 0;
    if (dec > kPi / 2.0 - kPoleStep) dec -= kPoleStep;
    if (dec < -kPi / 2.0 + kPoleStep) dec += kPoleStep;
    *azimuth = Wrap(SafeAtan2(std::sin(hourAngle), std::cos(hourAngle) * site->sinLatitude -
                                                       std::tan(dec) * site->cosLatitude),
                    kTwoPi);
    return above ? 1 : 0;
}

void HorizontalToEquatorial(const Site* site, double azimuth, double altitude, double* hourAngle,
                            double* dec) {
    if (!site) return;
    const double h = SafeAtan2(std::sin(azimuth), std::cos(azimuth) * site->sinLatitude +
                                                      std::tan(altitude) * site->cosLatitude);
    *hourAngle = WrapPi(h);
    *dec = SafeAsin(site->sinLatitude * std::sin(altitude) -
                    site->cosLatitude * std::cos(altitude) * std::cos(azimuth));
}

double RefractionForTrue(double altitude) {
    const double h = altitude / kRadiansPerDegree;
    if (h < -5.0) return 0.0;
    const double minutes = 1.02 / std::tan((h + 10.3 / (h + 5.11)) * kRadiansPerDegree) + 0.00192792;
    return minutes / 60.0 * kRadiansPerDegree;
}

double RefractionForApparent(double altitude) {
    const double h = altitude / kRadiansPerDegree;
    // The limit, in radians, is compared with h in degrees: the formula runs
    // down to a hundredth of a degree below the horizon.
    if (h <= -kHorizonRefraction) return kHorizonRefraction;
    const double minutes = 1.0 / std::tan((h + 7.31 / (h + 4.4)) * kRadiansPerDegree) + 0.0013515;
    return minutes / 60.0 * kRadiansPerDegree;
}

double AirMass(double altitude) {
    const double s = 1.0 / std::sin(altitude);
    return s * (1.0 - 0.0012 * (s * s - 1.0));
}

int ApparentToHorizontal(const Site* site, const Instant* instant, double* raThenAzimuth,
                         double* decThenAltitude, double* magnitude, int keepBelow) {
    if (!site || !instant) return 0;
    const double h = HourAngle(instant, *raThenAzimuth, 2);
    EquatorialToHorizontal(site, h, *decThenAltitude, raThenAzimuth, decThenAltitude, 1);
    *raThenAzimuth = kTwoPi - *raThenAzimuth;
    *decThenAltitude += RefractionForTrue(*decThenAltitude);
    if (*decThenAltitude > kPi / 2.0) *decThenAltitude = kPi / 2.0;
    if (magnitude && *magnitude < kNoMagnitude) *magnitude += Extinction(*decThenAltitude);
    if (!keepBelow && *decThenAltitude < site->horizonDip) return 0;
    return 1;
}

int HorizontalToApparent(const Site* site, const Instant* instant, double* azimuthThenRa,
                         double* altitudeThenDec, double* magnitude) {
    if (!site || !instant) return 1;
    if (magnitude && *magnitude < kNoMagnitude) *magnitude -= Extinction(*altitudeThenDec);
    *altitudeThenDec -= RefractionForApparent(*altitudeThenDec);
    const double azimuth = kTwoPi - *azimuthThenRa;
    double h, dec;
    HorizontalToEquatorial(site, azimuth, *altitudeThenDec, &h, &dec);
    *azimuthThenRa = Wrap(instant->last - Wrap(h, kTwoPi), kTwoPi);
    *altitudeThenDec = dec;
    return 1;
}
