#include "astro/frames.h"

#include <cmath>

#include "astro/numeric.h"

namespace {

// Closer than this to a pole of the frame the longitude is set, not
// computed.
constexpr double kPoleCosine = 0.0004;

double ObliquityOf(const Instant* instant, int which) {
    return which == 2 ? instant->meanObliquity + instant->nutObliquity : instant->meanObliquity;
}

// The rotation about the x axis by `eps` shared by both directions.
void RotateFrame(double lon, double lat, double eps, double* outLon, double* outLat) {
    if (std::fabs(std::cos(lat)) > kPoleCosine)
        *outLon = SafeAtan2(std::sin(lon) * std::cos(eps) - std::tan(lat) * std::sin(eps),
                            std::cos(lon));
    else
        *outLon = lat > 0.0 ? 3.0 * kPi / 2.0 : kPi / 2.0;
    *outLon = Wrap(*outLon, kTwoPi);
    *outLat = SafeAsin(std::sin(lat) * std::cos(eps) + std::cos(lat) * std::sin(eps) * std::sin(lon));
}

// The north galactic pole of B1950.0 and the node, radians.
constexpr double kSinPole = 0.4601997847;  // sin 27.4 degrees
constexpr double kCosPole = 0.8878153851;

}  // namespace

void EclipticToEquatorial(const Instant* instant, double longitude, double latitude, double* ra,
                          double* dec, int which) {
    RotateFrame(longitude, latitude, ObliquityOf(instant, which), ra, dec);
}

void EquatorialToEcliptic(const Instant* instant, double ra, double dec, double* longitude,
                          double* latitude, int which) {
    RotateFrame(ra, dec, -ObliquityOf(instant, which), longitude, latitude);
}

void EquatorialToGalactic(double ra, double dec, double* l, double* b) {
    const double x = 3.355395487 - ra;
    const double y = std::cos(dec) == 0.0
                         ? 0.0
                         : SafeAtan2(std::sin(x), std::cos(x) * kSinPole - std::tan(dec) * kCosPole);
    *l = Wrap(5.288347634 - y, kTwoPi);
    *b = SafeAsin(std::sin(dec) * kSinPole + std::cos(dec) * kCosPole * std::cos(x));
}

void GalacticToEquatorial(double l, double b, double* ra, double* dec) {
    const double x = l - 2.14675498;
    const double y = std::cos(b) == 0.0
                         ? 0.0
                         : SafeAtan2(std::sin(x), std::cos(x) * kSinPole - std::tan(b) * kCosPole);
    // Brought up from below 0, but not down from above 2 pi.
    *ra = y + 0.213802833;
    if (*ra < 0.0) *ra += kTwoPi;
    *dec = SafeAsin(std::sin(b) * kSinPole + std::cos(b) * kCosPole * std::cos(x));
}
