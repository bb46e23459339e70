#include "stores/instrument_makers.h"

#include <cstring>

#include "astro/limiting_magnitude.h"
#include "astro/numeric.h"

namespace {

constexpr double kMillimetresPerInch = 25.4;

template <size_t N>
void SetText(char (&field)[N], const char* text) {
    std::memset(field, 0, N);
    std::strncpy(field, text ? text : "", N - 1);
}

// Power limit and total field of binoculars without a known field: the
// field widens with the power up to 20x.
struct BinocularFieldRow {
    double belowPower;
    double fieldDegrees;
};
constexpr BinocularFieldRow kBinocularFields[] = {
    {7.6, 50.0}, {9.0, 56.0}, {11.0, 59.0}, {20.0, 51.0}};
constexpr double kWideBinocularField = 68.0;

}  // namespace

void OpticalSystemInit(OpticalSystem* system, const char* name, int opticsType,
                       double apertureInches, double focalLengthInches, double focalRatio,
                       int flipA, int flipB, double condition) {
    SetText(system->systemName, name);
    system->opticsType = static_cast<uint8_t>(opticsType);
    system->aperture = apertureInches * kMillimetresPerInch;
    if (focalLengthInches != 0.0) {
        system->focalLength = focalLengthInches * kMillimetresPerInch;
        system->focalRatio = focalLengthInches / apertureInches;
    } else if (focalRatio != 0.0) {
        system->focalLength = system->aperture * focalRatio;
        system->focalRatio = focalRatio;
    }
    system->imageFlipA = static_cast<uint8_t>(flipA);
    system->imageFlipB = static_cast<uint8_t>(flipB);
    system->condition = condition;
}

double BinocularDefaultField(double magnification) {
    double field = kWideBinocularField;
    for (const BinocularFieldRow& row : kBinocularFields) {
        if (magnification < row.belowPower) {
            field = row.fieldDegrees;
            break;
        }
    }
    return field * kRadiansPerDegree / magnification;
}

int BinocularsInit(OpticalSystem* system, const char* name, double magnification,
                   double apertureMillimetres, double fieldDegrees) {
    if (magnification == 0.0 || apertureMillimetres == 0.0) return 0;
    SetText(system->systemName, name);
    system->aperture = apertureMillimetres;
    system->magnification = magnification;
    system->focalRatio = 1.0;
    system->opticsType = 10;
    system->condition = 1.0;
    system->eyepieceCount = 0;
    system->imageFlipA = 1;
    system->imageFlipB = 1;
    system->trueField = fieldDegrees != 0.0 ? fieldDegrees * kRadiansPerDegree
                                            : BinocularDefaultField(magnification);
    return 1;
}

void NakedEyeInit(InstrumentRecord* record) {
    *record = InstrumentRecord{};
    SetText(record->name, "Naked Eye");
    record->systemCount = 1;
    record->instrumentKind = 2;
    OpticalSystem& eye = record->mainSystem;
    OpticalSystemInit(&eye, "Naked Eye", 0, 0.25, 1.0, 0.0, 1, 1, 0.0);
    eye.magnification = 1.0;
    eye.eyepieceCount = 0;
    eye.trueField = kPi;
}

void NewTelescopeInit(InstrumentRecord* record, const char* name) {
    *record = InstrumentRecord{};
    SetText(record->name, name);
    record->systemCount = 2;
    record->instrumentKind = 0;
    record->reserved3 = 0;
    record->mounting = 1;
    record->defaultEyepiece = 0;
    record->finderFlag = 0;
    for (int i = 0; i < 3; ++i) record->finderCircles[i] = kFinderCircles[i];

    OpticalSystemInit(&record->mainSystem, "Main Scope", 2, 1.0, 0.0, 1.0, 1, 1, 0.5);
    record->mainSystem.eyepieceCount = 0;

    OpticalSystem& finder = record->finderSystem;
    OpticalSystemInit(&finder, "Finder", 1, 1.18, 6.0, 0.0, 1, 1, 1.0);
    finder.magnification = 6.0;
    finder.eyepieceCount = 0;
}

void NewBinocularsInit(InstrumentRecord* record, const char* name) {
    *record = InstrumentRecord{};
    SetText(record->name, name);
    record->systemCount = 1;
    record->instrumentKind = 1;
    BinocularsInit(&record->mainSystem, "Binoculars", 7.0, 50.0, 0.0);
}

int EyepieceSlotSet(OpticalSystem* system, int poolId, int index, const char* name,
                    double focalLength, double apparentFieldDegrees, double barlowFactor,
                    int mirrorDiagonal) {
    if (index < 0 || index >= kMaxEyepieceSlots) return 0;
    EyepieceSlot& slot = system->eyepieces[index];
    slot.poolId = static_cast<uint16_t>(poolId);
    SetText(slot.name, name);
    slot.focalLength = focalLength;
    if (apparentFieldDegrees == 0.0) apparentFieldDegrees = kDefaultApparentFieldDegrees;
    slot.apparentField = apparentFieldDegrees * kRadiansPerDegree;
    slot.barlowFactor = barlowFactor != 0.0 ? barlowFactor : 1.0;
    slot.mirrorDiagonal = static_cast<uint8_t>(mirrorDiagonal);
    return 1;
}

double LimitingMagnitude(const OpticalSystem& optics, const ObserverRecord* observer,
                         double nakedEyeLimit, double colorIndex, double zenithAngle,
                         double seeing) {
    const OpticsTerms terms{optics.opticsType, optics.aperture, optics.magnification,
                            optics.condition};
    if (!observer)
        return LimitingMagnitude(terms, nullptr, nakedEyeLimit, colorIndex, zenithAngle, seeing);
    const EyeTerms eye{observer->pupilDiameter != 0.0 ? observer->pupilDiameter
                                                      : ComputePupilDiameter(observer->age),
                       observer->experience};
    return LimitingMagnitude(terms, &eye, nakedEyeLimit, colorIndex, zenithAngle, seeing);
}

int OpticalSystemCompute(OpticalSystem* system) {
    if (system->aperture == 0.0) return 0;
    if (system->focalRatio == 0.0 && system->focalLength == 0.0) return 0;
    if (system->focalLength == 0.0)
        system->focalLength = system->aperture * system->focalRatio;
    else if (system->focalRatio == 0.0)
        system->focalRatio = system->focalLength / system->aperture;

    const double inches = system->aperture * kInchesPerMillimetre;
    system->highestPower = inches * 55.0;
    system->dawesLimit = 4.56 / inches;

    // The limit is quoted at a moderate power, 25 per inch of aperture.
    const double magnification = system->magnification;
    system->magnification = inches * 25.0;
    system->limitingMagnitude = LimitingMagnitude(*system, nullptr, 7.0, 0.0, 0.0, 1.0);
    system->magnification = magnification;
    return 1;
}

int EyepieceApply(OpticalSystem* system, int index) {
    if (index < 0 || index >= kMaxEyepieceSlots) return 0;
    EyepieceSlot& slot = system->eyepieces[index];
    if (slot.focalLength == 0.0) return 0;
    double focalLength = system->focalLength;
    if (focalLength == 0.0) {
        if (system->focalRatio == 0.0 || system->aperture == 0.0) return 0;
        focalLength = system->aperture * system->focalRatio;
    }
    // A barlow factor of 0 means none, as in a new slot.
    const double barlow = slot.barlowFactor != 0.0 ? slot.barlowFactor : 1.0;
    system->magnification = focalLength / slot.focalLength * barlow;
    if (slot.apparentField == 0.0) slot.apparentField = kDefaultApparentField;
    system->trueField = slot.apparentField / system->magnification;
    system->currentEyepiece = static_cast<uint8_t>(index);
    return 1;
}

int EyepieceApparentField(OpticalSystem* system, int index) {
    if (index < 0 || index >= kMaxEyepieceSlots) return 0;
    if (system->trueField == 0.0 || system->magnification == 0.0) {
        if (!EyepieceApply(system, index)) return 0;
    }
    system->eyepieces[index].apparentField = system->trueField * system->magnification;
    return 1;
}
