// The faintest star an observer can see through an optical system, after
// Schaefer's model of the eye's threshold against sky brightness, and the
// names the dialogs give to the observer's experience and to the optics'
// cleanness.
#pragma once

// What the model needs of an optical system: its kind (1 refractor,
// 2 reflector, 3 catadioptric, 10 binoculars), aperture in millimetres, the
// power in use and the optics' dirt (0 clean to 1 filthy).
struct OpticsTerms {
    int opticsType = 0;
    double aperture = 0;
    double magnification = 0;
    double condition = 0;
};

// What the model needs of the eye: the dark-adapted pupil in millimetres and
// the observer's experience, 0 to 1.
struct EyeTerms {
    double pupilDiameter = 0;
    double experience = 0;
};

// `eye` may be null: a 6 mm pupil and an experience of 0.85 are taken.
// `zenithAngle` in radians; `seeing` is the star's blur in arc seconds. A
// system of a kind the model does not know (the eye, 0) gets the naked-eye
// limit as it stands.
double LimitingMagnitude(const OpticsTerms& optics, const EyeTerms* eye, double nakedEyeLimit,
                         double colorIndex, double zenithAngle, double seeing);

inline constexpr int kExperienceNameCount = 5;

// "Novice" to "Expert" for indices 0 to 4 (experience = index * 0.25); null
// outside.
const char* ExperienceName(int index);

// The experience's index in the names above: round(4 * experience).
int ExperienceIndex(double experience);

// "very clean" to "filthy" by the optics' condition value.
const char* ConditionName(double condition);
