#include "astro/parallax.h"

#include <cmath>

#include "astro/numeric.h"

namespace {
// The Earth's equatorial radius seen from 1 au, radians (8.794").
constexpr double kSolarParallax = 4.263451511677259e-05;
constexpr double kNearDistance = 0.05;  // au
}  // namespace

void ApplyParallax(const Site* site, const Instant* instant, double distanceAu, double* ra,
                   double* dec) {
    if (!site || !instant) return;
    const double h = instant->last - *ra;
    if (distanceAu > kNearDistance) {
        const double p = kSolarParallax / distanceAu;
        const double d = *dec;
        *ra -= p * site->rhoCosPhi * std::sin(h) / std::cos(d);
        *dec -= p * (site->rhoSinPhi * std::cos(d) - site->rhoCosPhi * std::cos(h) * std::sin(d));
        return;
    }
    const double sinP = std::sin(kSolarParallax / distanceAu);
    const double q = site->rhoCosPhi * sinP * std::sin(h);
    const double w = std::cos(*dec) - site->rhoCosPhi * sinP * std::cos(h);
    const double dRa = std::atan(-q / w);
    *ra += dRa;
    *dec = std::atan((std::sin(*dec) - site->rhoSinPhi * sinP) * std::cos(dRa) / w);
}

void ParallaxRigorous(const Site* site, const Instant* instant, double sinParallax, double* ra,
                      double* dec, double* distanceRatio) {
    if (!site || !instant) return;
    const double h = instant->last - *ra;
    const double a = std::cos(*dec) * std::sin(h);
    const double b = std::cos(*dec) * std::cos(h) - site->rhoCosPhi * sinParallax;
    const double c = std::sin(*dec) - site->rhoSinPhi * sinParallax;
    const double r = std::sqrt(a * a + b * b + c * c);
    *distanceRatio *= r;
    *ra = Wrap(instant->last - SafeAtan2(a, b), kTwoPi);
    *dec = SafeAsin(c / r);
}
