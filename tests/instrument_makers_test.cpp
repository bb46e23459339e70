#include <cmath>
#include <cstring>
#include <numbers>
#include <tuple>

#include "astro/limiting_magnitude.h"
#include "stores/instrument_makers.h"
#include "stores/scope_table.h"
#include "support.h"

namespace {

constexpr double kDeg = std::numbers::pi / 180.0;

uint32_t WordAt(const Bytes& b, size_t off) {
    return b[off] | b[off + 1] << 8 | b[off + 2] << 16 | static_cast<uint32_t>(b[off + 3]) << 24;
}

Bytes Image(const InstrumentRecord& r) {
    const auto img = RecordImage<InstrumentRecordLayout>(r);
    return Bytes(img.begin(), img.end());
}

TEST(RecordMakers, NewTelescopeHasItsDefaultsAtTheirOffsets) {
    InstrumentRecord r;
    NewTelescopeInit(&r, "My Scope");
    const Bytes b = Image(r);
    EXPECT_EQ(Slice(b, 2, 4), (Bytes{2, 0, 0, 0}));  // main and finder, a telescope
    EXPECT_EQ(WordAt(b, 6), 0x3C0EFA35u);   // 0.5 degree
    EXPECT_EQ(WordAt(b, 10), 0x3D0EFA35u);  // 2 degrees
    EXPECT_EQ(WordAt(b, 14), 0x3D8EFA35u);  // 4 degrees
    EXPECT_EQ(Slice(b, 18, 13), Bytes(13, 0));
    EXPECT_EQ(b[8717], 1);  // equatorial
    EXPECT_STREQ(reinterpret_cast<const char*>(&b[8718]), "My Scope");

    const size_t main = 31;
    EXPECT_EQ(b[main], 2);  // reflector
    EXPECT_EQ(PeekF64(b, main + 1), 25.4);
    EXPECT_EQ(PeekF64(b, main + 9), 25.4);  // from the ratio 1.0
    EXPECT_EQ(PeekF64(b, main + 17), 1.0);
    EXPECT_EQ(Slice(b, main + 25, 2), (Bytes{1, 1}));
    EXPECT_EQ(PeekF64(b, main + 27), 0.5);
    EXPECT_STREQ(reinterpret_cast<const char*>(&b[main + 35]), "Main Scope");
    EXPECT_EQ(b[main + 100], 0);

    const size_t finder = 4374;
    EXPECT_EQ(b[finder], 1);  // refractor
    EXPECT_DOUBLE_EQ(PeekF64(b, finder + 1), 29.972);
    EXPECT_DOUBLE_EQ(PeekF64(b, finder + 9), 152.4);
    EXPECT_DOUBLE_EQ(PeekF64(b, finder + 17), 6.0 / 1.18);
    EXPECT_EQ(PeekF64(b, finder + 27), 1.0);
    EXPECT_EQ(PeekF64(b, finder + 4326), 6.0);
    EXPECT_STREQ(reinterpret_cast<const char*>(&b[finder + 35]), "Finder");
}

TEST(RecordMakers, NakedEyeAndBinoculars) {
    InstrumentRecord eye;
    NakedEyeInit(&eye);
    EXPECT_STREQ(eye.name, "Naked Eye");
    EXPECT_STREQ(eye.mainSystem.systemName, "Naked Eye");
    const OpticalSystem& e = eye.mainSystem;
    EXPECT_EQ(std::tuple(int(eye.systemCount), int(eye.instrumentKind), int(e.opticsType)), std::tuple(1, 2, 0));
    EXPECT_EQ(std::tuple(e.aperture, e.focalLength, e.focalRatio), std::tuple(6.35, 25.4, 4.0));
    EXPECT_EQ(std::tuple(e.magnification, e.trueField), std::tuple(1.0, std::numbers::pi));

    InstrumentRecord bino;
    NewBinocularsInit(&bino, "7x50");
    const OpticalSystem& s = bino.mainSystem;
    EXPECT_STREQ(s.systemName, "Binoculars");
    EXPECT_EQ(std::tuple(int(bino.systemCount), int(bino.instrumentKind), int(s.opticsType)), std::tuple(1, 1, 10));
    EXPECT_EQ(std::tuple(s.aperture, s.magnification, s.focalRatio, s.condition), std::tuple(50.0, 7.0, 1.0, 1.0));
    EXPECT_DOUBLE_EQ(s.trueField, 0.12466637514245212);  // the 50-degree row at 7x

    OpticalSystem given;
    EXPECT_EQ(BinocularsInit(&given, "B", 15.0, 70.0, 4.4), 1);
    EXPECT_DOUBLE_EQ(given.trueField, 4.4 * kDeg);
    EXPECT_EQ(BinocularsInit(&given, "B", 0.0, 70.0, 0.0), 0);
    EXPECT_EQ(BinocularsInit(&given, "B", 10.0, 0.0, 0.0), 0);
}

TEST(RecordMakers, BinocularFieldTableChangesRowAtEachBoundary) {
    struct Case {
        double power, fieldDegrees;
    } cases[] = {{7.0, 50}, {7.59, 50}, {7.6, 56}, {8.99, 56}, {9.0, 59},
                 {10.99, 59}, {11.0, 51}, {19.99, 51}, {20.0, 68}, {25.0, 68}};
    for (const Case& c : cases)
        EXPECT_DOUBLE_EQ(BinocularDefaultField(c.power), c.fieldDegrees * kDeg / c.power) << c.power;
}

TEST(RecordMakers, OpticalSystemInitTakesWhicheverFocalValueIsGiven) {
    OpticalSystem s;
    OpticalSystemInit(&s, "A", 1, 4.0, 36.0, 99.0, 1, 0, 0.25);  // the length wins over a ratio
    EXPECT_DOUBLE_EQ(s.aperture, 101.6);
    EXPECT_DOUBLE_EQ(s.focalLength, 914.4);
    EXPECT_DOUBLE_EQ(s.focalRatio, 9.0);
    EXPECT_EQ(s.imageFlipB, 0);
    OpticalSystemInit(&s, "B", 2, 6.0, 0.0, 5.0, 1, 1, 0.5);
    EXPECT_DOUBLE_EQ(s.focalLength, 762.0);
    EXPECT_EQ(s.focalRatio, 5.0);
    OpticalSystemInit(&s, "C", 2, 8.0, 0.0, 0.0, 1, 1, 0.5);  // neither: both stay
    EXPECT_DOUBLE_EQ(s.aperture, 203.2);
    EXPECT_DOUBLE_EQ(s.focalLength, 762.0);
    EXPECT_EQ(s.focalRatio, 5.0);
}

TEST(RecordMakers, SlotKeepsRadiansWhereThePoolKeepsDegrees) {
    OpticalSystem s;
    ASSERT_EQ(EyepieceSlotSet(&s, 0x0A0B, 69, "Plossl 25mm", 25.0, 52.0, 0.0, 1), 1);
    const Bytes b = [&] {
        const auto img = RecordImage<OpticalSystemLayout>(s);
        return Bytes(img.begin(), img.end());
    }();
    const size_t slot = 101 + 69 * 60;
    EXPECT_EQ(PeekF64(b, slot), 25.0);
    EXPECT_DOUBLE_EQ(PeekF64(b, slot + 8), 0.9075712110370514);  // 52 degrees
    EXPECT_EQ(PeekF64(b, slot + 16), 1.0);  // a barlow of 0 is none
    EXPECT_EQ(b[slot + 24], 1);
    EXPECT_EQ(b[slot + 26], 0x0B);
    EXPECT_EQ(b[slot + 27], 0x0A);
    EXPECT_STREQ(reinterpret_cast<const char*>(&b[slot + 28]), "Plossl 25mm");

    EXPECT_EQ(EyepieceSlotSet(&s, 1, 0, "Kellner", 12.0, 0.0, 2.0, 0), 1);
    EXPECT_EQ(s.eyepieces[0].apparentField, 0.6981317007977318);  // 0 is 40 degrees
    EXPECT_EQ(s.eyepieces[0].barlowFactor, 2.0);
    EXPECT_EQ(EyepieceSlotSet(&s, 1, 70, "Past the end", 12.0, 50.0, 1.0, 0), 0);
}

// An 8-inch f/10 catadioptric: 203.2 mm by the program's inch factor is
// 7.999984 inches.
TEST(DerivedOptics, ComputeFillsRatioPowerResolutionAndLimit) {
    OpticalSystem s;
    s.opticsType = 3;
    s.aperture = 203.2;
    s.focalLength = 2032.0;
    s.condition = 0.25;
    s.magnification = 81.28;
    ASSERT_EQ(OpticalSystemCompute(&s), 1);
    EXPECT_DOUBLE_EQ(s.focalRatio, 10.0);
    EXPECT_DOUBLE_EQ(s.highestPower, 439.99912);
    EXPECT_DOUBLE_EQ(s.dawesLimit, 0.57000114000228);
    EXPECT_NEAR(s.limitingMagnitude, 15.219754477489122, 1e-9);  // at 199.9996x, 7.0 sky
    EXPECT_EQ(s.magnification, 81.28);  // restored

    OpticalSystem r;
    r.opticsType = 1;
    r.aperture = 80.0;
    r.focalRatio = 7.5;
    ASSERT_EQ(OpticalSystemCompute(&r), 1);
    EXPECT_EQ(r.focalLength, 600.0);

    OpticalSystem none;
    none.aperture = 80.0;
    EXPECT_EQ(OpticalSystemCompute(&none), 0);
    none.aperture = 0.0;
    none.focalLength = 600.0;
    EXPECT_EQ(OpticalSystemCompute(&none), 0);
}

TEST(DerivedOptics, EyepieceApplyAndItsReverse) {
    OpticalSystem s;
    s.aperture = 203.2;
    s.focalLength = 2032.0;
    EyepieceSlotSet(&s, 3, 0, "Plossl 25mm", 25.0, 52.0, 2.0, 0);
    EyepieceSlotSet(&s, 4, 1, "Mystery 10mm", 10.0, 50.0, 1.0, 0);
    s.eyepieces[1].apparentField = 0.0;
    ASSERT_EQ(EyepieceApply(&s, 0), 1);
    EXPECT_DOUBLE_EQ(s.magnification, 162.56);
    EXPECT_DOUBLE_EQ(s.trueField, 0.005582992193879499);
    EXPECT_EQ(s.currentEyepiece, 0);

    ASSERT_EQ(EyepieceApply(&s, 1), 1);
    EXPECT_EQ(s.eyepieces[1].apparentField, 0.6981317007977318);
    EXPECT_DOUBLE_EQ(s.trueField, 0.6981317007977318 / 203.2);
    EXPECT_EQ(s.currentEyepiece, 1);

    // Ratio and aperture stand in for a missing focal length.
    OpticalSystem byRatio = s;
    byRatio.focalLength = 0.0;
    byRatio.focalRatio = 10.0;
    ASSERT_EQ(EyepieceApply(&byRatio, 1), 1);
    EXPECT_DOUBLE_EQ(byRatio.magnification, 203.2);
    byRatio.focalRatio = 0.0;
    EXPECT_EQ(EyepieceApply(&byRatio, 1), 0);
    s.eyepieces[2].focalLength = 0.0;
    EXPECT_EQ(EyepieceApply(&s, 2), 0);

    // The reverse: a true field of 0.25 degree at 100x is a 25-degree eye.
    s.trueField = 0.25 * kDeg;
    s.magnification = 100.0;
    ASSERT_EQ(EyepieceApparentField(&s, 0), 1);
    EXPECT_DOUBLE_EQ(s.eyepieces[0].apparentField, 25.0 * kDeg);
    s.trueField = 0.0;
    ASSERT_EQ(EyepieceApparentField(&s, 0), 1);  // computed from the slot first
    EXPECT_DOUBLE_EQ(s.magnification, 162.56);
    EXPECT_DOUBLE_EQ(s.eyepieces[0].apparentField, 25.0 * kDeg);
}

OpticalSystem Optics(uint8_t kind, double aperture, double magnification, double condition) {
    OpticalSystem s;
    s.opticsType = kind;
    s.aperture = aperture;
    s.magnification = magnification;
    s.condition = condition;
    return s;
}

TEST(LimitingMagnitudeModel, HandWorkedCasesOfEachBranch) {
    struct Case {
        OpticalSystem optics;
        double sky, colorIndex, zenithAngle, seeing, expected;
    } cases[] = {
        // An 80 mm refractor at 20x: exit pupil 4 mm, inside the 6 mm eye.
        {Optics(1, 80.0, 20.0, 0.0), 6.0, 0.0, 0.0, 1.0, 12.367793630228004},
        // At 8x the exit pupil is 10 mm: light is lost outside the eye.
        {Optics(1, 80.0, 8.0, 0.0), 6.0, 0.0, 0.0, 1.0, 11.297044462013158},
        // Skies at 6.7 and fainter take the fixed brightness; the limit then
        // follows the sky one for one.
        {Optics(2, 200.0, 100.0, 0.5), 7.0, 0.0, 0.0, 1.0, 15.055106784052693},
        {Optics(2, 200.0, 100.0, 0.5), 6.8, 0.0, 0.0, 1.0, 14.855106784052694},
        {Optics(3, 203.2, 200.0, 0.25), 6.0, 1.0, 1.0, 1.0, 14.020605938958656},
        {Optics(10, 50.0, 10.0, 1.0), 4.5, 0.0, 0.0, 1.0, 9.65190503581736},
        // 2 * 3" * 300x = 1800: the star is spread out.
        {Optics(2, 254.0, 300.0, 0.0), 6.0, 0.0, 0.0, 3.0, 15.100387000133566},
    };
    for (const Case& c : cases)
        EXPECT_NEAR(LimitingMagnitude(c.optics, nullptr, c.sky, c.colorIndex, c.zenithAngle, c.seeing),
                    c.expected, 1e-9)
            << int(c.optics.opticsType) << " " << c.optics.magnification << " " << c.sky;
}

TEST(LimitingMagnitudeModel, ObserverHorizonAndUnknownKinds) {
    OpticalSystem s = Optics(2, 254.0, 50.0, 0.0);
    ObserverRecord sixty;
    sixty.age = 60;
    sixty.pupilDiameter = 0.0;  // taken from the age
    sixty.experience = 0.25;
    EXPECT_NEAR(LimitingMagnitude(s, &sixty, 5.5, 0.0, 0.0, 1.0), 13.102054742523052, 1e-9);

    // On the horizon, or below it, an object is given zenith conditions.
    const double zenith = LimitingMagnitude(s, nullptr, 6.0, 0.0, 0.0, 1.0);
    EXPECT_EQ(LimitingMagnitude(s, nullptr, 6.0, 0.0, std::numbers::pi / 2, 1.0), zenith);
    EXPECT_EQ(LimitingMagnitude(s, nullptr, 6.0, 0.0, -0.1, 1.0), zenith);
    EXPECT_LT(LimitingMagnitude(s, nullptr, 6.0, 0.0, 1.5, 1.0), zenith);

    for (uint8_t kind : {0, 4, 11}) {
        s.opticsType = kind;
        EXPECT_EQ(LimitingMagnitude(s, nullptr, 5.25, 0.0, 0.0, 1.0), 5.25);
    }
}

TEST(LimitingMagnitudeModel, ExperienceAndConditionNames) {
    const char* expected[] = {"Novice", "Some experience", "Intermediate", "Very experienced",
                              "Expert"};
    for (int i = 0; i < 5; ++i) {
        EXPECT_STREQ(ExperienceName(i), expected[i]);
        EXPECT_EQ(ExperienceIndex(i * 0.25), i);
    }
    EXPECT_EQ(ExperienceName(5), nullptr);
    const std::pair<double, const char*> conditions[] = {
        {0.0, "very clean"}, {0.25, "clean"}, {0.74, "a little dirty"}, {0.75, "dirty"}, {1.0, "filthy"}};
    for (auto [c, name] : conditions) EXPECT_STREQ(ConditionName(c), name) << c;
}

class ScopeTableTest : public ScratchTest {};

TEST_F(ScopeTableTest, NewTelescopeFromARowKeepsTheInchRounding) {
    // Two 85-byte rows; the second: refractor, alt/azimuth, 80 by 600 mm, flips 1 and 0.
    Bytes t(4 + 2 * 85, 0);
    t[0] = 2;
    t[4 + 85] = 1;
    PokeF64(t, 4 + 85 + 2, 80.0);
    PokeF64(t, 4 + 85 + 10, 600.0);
    t[4 + 85 + 18] = 1;
    const char model[] = "Refractor 80mm f/7.5 on a very long mount name";
    std::memcpy(&t[4 + 85 + 20], model, sizeof model);
    WriteFileBytes("scopes.bin", t);

    InstrumentRecord r;
    ASSERT_EQ(NewTelescopeFromChoice(&r, 2), 1);
    EXPECT_STREQ(r.name, "Refractor 80mm f/7.5 on a very ");  // 31 characters
    EXPECT_EQ(std::tuple(int(r.mounting), int(r.mainSystem.opticsType)), std::tuple(0, 1));
    EXPECT_DOUBLE_EQ(r.mainSystem.aperture, 79.99984);
    EXPECT_DOUBLE_EQ(r.mainSystem.focalLength, 599.9988);
    EXPECT_DOUBLE_EQ(r.mainSystem.focalRatio, 7.5);
    EXPECT_EQ(std::tuple(int(r.mainSystem.imageFlipB), r.mainSystem.condition), std::tuple(0, 0.5));
    EXPECT_STREQ(r.finderSystem.systemName, "Finder");

    ASSERT_EQ(NewTelescopeFromChoice(&r, 0), 1);
    EXPECT_STREQ(r.name, "New Scope -- enter name");
    EXPECT_EQ(r.mounting, 1);
    EXPECT_EQ(NewTelescopeFromChoice(&r, 3), 0);  // past the table
}

}  // namespace
