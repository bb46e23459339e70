#include "astro/limiting_magnitude.h"

#include <cmath>

namespace {

// At or past this zenith angle (a hair under pi/2) the air mass has no
// meaning, and the object is given zenith conditions.
constexpr double kHorizonZenithAngle = 1.570650882690564;

constexpr double kNoObserverPupil = 6.0;
constexpr double kNoObserverExperience = 0.85;

constexpr double kC1 = 1.58e-10;
constexpr double kC2 = 0.0126;
constexpr double kExtinction = 1.2 * 0.25;  // k

struct OpticsLoss {
    double obstruction;  // diameter of the central obstruction, mm
    double transmission;
};

// False for a kind the model does not know.
bool LossOfKind(int kind, double aperture, OpticsLoss& loss) {
    switch (kind) {
        case 1: loss = {0.0, std::pow(0.99, 4)}; return true;              // refractor
        case 2: loss = {0.15 * aperture, 0.7 * 0.7}; return true;          // reflector
        case 3: loss = {0.35 * aperture, 0.693 * 0.693}; return true;      // catadioptric
        case 10: loss = {0.0, std::pow(0.99, 6)}; return true;             // binoculars
        default: return false;
    }
}

struct SkyTerms {
    double brightness;  // nanolamberts
    double factor;      // Fs
};

SkyTerms SkyOf(double nakedEyeLimit, double zenithAngle) {
    SkyTerms sky;
    const double k = kExtinction;
    if (7.0 - k > nakedEyeLimit) {
        const double t = std::pow(10.0, (8.68 - k - nakedEyeLimit) * 0.2) - 1.0;
        sky = {39.7 * t * t, 1.0};
    } else {
        sky = {54.0, std::pow(10.0, 0.4 * (7.0 - k - nakedEyeLimit))};
    }
    sky.brightness *= 1.0 + 0.5 * zenithAngle * zenithAngle;
    return sky;
}

}  // namespace

double LimitingMagnitude(const OpticsTerms& optics, const EyeTerms* eye, double nakedEyeLimit,
                         double colorIndex, double zenithAngle, double seeing) {
    double pupil = kNoObserverPupil;
    double experience = kNoObserverExperience;
    if (eye) {
        pupil = eye->pupilDiameter;
        experience = eye->experience;
    }
    double z = zenithAngle;
    if (z >= kHorizonZenithAngle || z < 0.0) z = 0.0;

    const double aperture = optics.aperture;
    OpticsLoss loss;
    if (!LossOfKind(optics.opticsType, aperture, loss)) return nakedEyeLimit;

    const double k = kExtinction;
    const double airMass = 1.0 / std::cos(z);
    const double m = optics.magnification;

    const double fo = 1.0 - (loss.obstruction / aperture) * (loss.obstruction / aperture);
    const double ft = 1.0 / (loss.transmission * fo * std::pow(0.99, 4) - 0.08 * optics.condition);
    const double exitPupil = aperture / m;
    const double fb = std::sqrt(2.0);
    const double fe = std::pow(10.0, 0.4 * k * airMass);
    const double fp = pupil < exitPupil ? (pupil / exitPupil) * (pupil / exitPupil) : 1.0;
    const double fa = (pupil / aperture) * (pupil / aperture);
    const double fm = m * m;
    const double th = 2.0 * seeing * m;
    const double fr = th > 900.0 ? std::sqrt(th / 900.0) : 1.0;
    const double fc = std::pow(10.0, 0.4 * (colorIndex / 2.0 - 1.0));

    const SkyTerms sky = SkyOf(nakedEyeLimit, z);
    const double bo = sky.brightness / (fb * ft * fp * fa * fm * fc);
    const double root = 1.0 + std::sqrt(kC2 * bo);
    const double threshold = kC1 * root * root;
    const double is = threshold * fb * fe * ft * fp * fa * fr * fc * sky.factor;
    return -16.57 - 2.5 * std::log10(is) + 1.28 * experience - 0.8;
}

namespace {
const char* const kExperienceNames[kExperienceNameCount] = {
    "Novice", "Some experience", "Intermediate", "Very experienced", "Expert"};
}  // namespace

const char* ExperienceName(int index) {
    return index >= 0 && index < kExperienceNameCount ? kExperienceNames[index] : nullptr;
}

int ExperienceIndex(double experience) { return static_cast<int>(std::lround(4.0 * experience)); }

const char* ConditionName(double condition) {
    if (condition < 0.25) return "very clean";
    if (condition < 0.5) return "clean";
    if (condition < 0.75) return "a little dirty";
    if (condition < 1.0) return "dirty";
    return "filthy";
}
