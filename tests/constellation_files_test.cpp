// The constellation files and the constellation of a place, from images
// written by hand.
#include <cmath>

#include "catalog/constellation_files.h"
#include "catalogue_bytes.h"

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kHour = kPi / 12;
constexpr double kDegree = kPi / 180;

using ConstellationFileTest = CatalogueFileTest;

TEST_F(ConstellationFileTest, NamesAndLabelPoints) {
    Bytes names;
    PutText(names, 0, "Andromeda", 20);
    Put(names, 20, {0x00, 0x00, 0x00, 0x01, 0x00, 0x00, 0x00, 0x10});  // pi/64, pi/4
    PutText(names, 28, "Antlia", 20);
    Put(names, 48, {0x00, 0x00, 0x00, 0x58, 0x00, 0x00, 0x00, 0xF4});  // 11 pi/8, -3 pi/16
    WriteFileBytes("connames.bin", names);
    FilePtr f = openConstellationNames();
    ASSERT_TRUE(f);
    ConstellationLabel label;
    ASSERT_EQ(readConstellationName(f.get(), 1, &label), 1);
    EXPECT_EQ(label.zone, 1);
    EXPECT_EQ(label.name, "Antlia");
    EXPECT_NEAR(label.ra, 11 * kPi / 8, 1e-8);
    EXPECT_NEAR(label.dec, -3 * kPi / 16, 1e-8);
    EXPECT_EQ(readConstellationName(f.get(), 2, &label), 0);
    EXPECT_EQ(readConstellationName(f.get(), 90, &label), 0);
    EXPECT_EQ(findConstellationName(f.get(), "antl"), 1);
    EXPECT_EQ(findConstellationName(f.get(), "Andromeda"), 0);
    EXPECT_EQ(findConstellationName(f.get(), "An"), 0);  // the first that matches
    EXPECT_EQ(findConstellationName(f.get(), "Aquila"), -1);
    EXPECT_EQ(findConstellationName(f.get(), ""), -1);
}

TEST_F(ConstellationFileTest, BoxAcrossZeroHoursGivesPlaceAndSizes) {
    Bytes bounds(44, 0);
    // Zone 2: Dec 0 to 20 degrees, RA 22h to 2h.
    Put(bounds, 44, {0x01, 0x02, 0x03, 0x04,
                     0x00, 0x00, 0x00, 0x00, 0xC7, 0x71, 0x1C, 0x07,   // 0, 119304647
                     0x55, 0x55, 0x55, 0x75, 0xAB, 0xAA, 0xAA, 0x0A,   // 1968526677, 178956971
                     0x05, 0x06});
    WriteFileBytes("conbound.bin", bounds);
    FilePtr f = openConstellationBounds();
    ConstellationData c;
    ASSERT_EQ(readConstellationBox(f.get(), 2, &c), 1);
    EXPECT_EQ(c.zone, 2);
    EXPECT_NEAR(c.raLow, 22 * kHour, 1e-8);
    EXPECT_NEAR(c.raHigh, 2 * kHour, 1e-8);
    EXPECT_NEAR(c.decHigh, 20 * kDegree, 1e-8);
    // The middle of 22h to 2h is 0h, not 12h.
    EXPECT_NEAR(std::remainder(c.ra, 2 * kPi), 0.0, 1e-8);
    EXPECT_NEAR(c.dec, 10 * kDegree, 1e-8);
    EXPECT_EQ(c.magnitude, 0);
    EXPECT_EQ(c.magnitude2, 99.9);
    // Widest at the lower edge, the equator: 60 degrees. The diagonal from
    // (22h, 0) to (2h, 20): acos(cos 20 x cos 60).
    EXPECT_NEAR(c.sizeMajor, 60 * kDegree, 1e-8);
    EXPECT_NEAR(c.sizeMinor, 1.0816796604057795, 1e-8);
    EXPECT_EQ(c.sizeDefault, c.sizeMinor);
    EXPECT_EQ(readConstellationBox(f.get(), 3, &c), 0);
}

TEST(ConstellationRectangle, InclusiveBoundsAndTheZeroHourCrossing) {
    const struct {
        double raFirst, raSecond, decFirst, decSecond, ra, dec;
        bool holds;
    } rows[] = {
        {1, 3, 10, 50, 2, 30, true},
        {1, 3, 10, 50, 1, 10, true},  // corners are inside
        {1, 3, 10, 50, 3, 50, true},
        {1, 3, 10, 50, 0.99, 30, false},
        {1, 3, 10, 50, 2, 50.01, false},
        {2, 22, -10, 10, 23, 0, true},  // 12 hours or more apart: 22h to 2h across 0h
        {2, 22, -10, 10, 1, 0, true},
        {2, 22, -10, 10, 2, 0, true},
        {2, 22, -10, 10, 22, 0, true},
        {2, 22, -10, 10, 12, 0, false},
        {2, 22, -10, 10, 3, 0, false},
        {2, 13, -10, 10, 12.5, 0, true},  // 11 hours apart: a plain rectangle
        {2, 13, -10, 10, 1, 0, false},
    };
    for (const auto& r : rows)
        EXPECT_EQ(constellationRectangleHolds(r.raFirst * kHour, r.raSecond * kHour, r.decFirst * kDegree,
                                              r.decSecond * kDegree, r.ra * kHour, r.dec * kDegree),
                  r.holds)
            << r.raFirst << "-" << r.raSecond << " " << r.ra << " " << r.dec;
}

// A `conrect` image: 89 five-byte heads, then each zone's rectangles
// (hours and degrees) in order.
struct Rect {
    int zone;
    double ra1, ra2, dec1, dec2;
};
Bytes ConrectImage(std::initializer_list<Rect> rects) {
    Bytes image(89 * 5, 0);
    for (int zone = 0; zone < 89; ++zone) {
        PutLe(image, zone * 5, image.size(), 4);
        int count = 0;
        for (const Rect& r : rects) {
            if (r.zone != zone) continue;
            const size_t at = image.size();
            const double values[] = {r.ra1 / 24, r.ra2 / 24, r.dec1 / 360, r.dec2 / 360};
            for (int i = 0; i < 4; ++i)
                PutLe(image, at + 4 * i, static_cast<uint32_t>(static_cast<int32_t>(std::lround(values[i] * 2147483647.0))), 4);
            ++count;
        }
        image[zone * 5 + 4] = static_cast<uint8_t>(count);
    }
    return image;
}

TEST_F(ConstellationFileTest, ZonesInOrderFirstHitWins) {
    Bytes image(89 * 5, 0);
    Put(image, 0, {0xBD, 0x01, 0x00, 0x00, 0x01});  // zone 0: one rectangle at 445
    Put(image, 445, {0x55, 0x55, 0x55, 0x05, 0x00, 0x00, 0x00, 0x10,   // 1h to 3h
                     0xE4, 0x38, 0x8E, 0x03, 0x72, 0x1C, 0xC7, 0x11}); // 10 to 50 degrees
    WriteFileBytes("conrect.bin", image);
    FilePtr f = openConstellationRectangles();
    EXPECT_EQ(constellationOfB1875Place(f.get(), 2 * kHour, 30 * kDegree), 0);
    EXPECT_EQ(constellationOfB1875Place(f.get(), 5 * kHour, 30 * kDegree), -1);

    WriteFileBytes("conrect.bin", ConrectImage({{3, 10, 12, 0, 5}, {3, 4, 6, 0, 5}, {7, 4, 6, 0, 5}, {88, 20, 21, -5, 0}}));
    f = openConstellationRectangles();
    EXPECT_EQ(constellationOfB1875Place(f.get(), 5 * kHour, 1 * kDegree), 3);  // the second rectangle of 3
    EXPECT_EQ(constellationOfB1875Place(f.get(), 20.5 * kHour, -1 * kDegree), 88);
    EXPECT_EQ(constellationOfB1875Place(f.get(), 20.5 * kHour, 1 * kDegree), -1);
}

TEST_F(ConstellationFileTest, PlacesArePrecessedToTheBoundaryEpoch) {
    // From J2000 to B1875 the equinox point moves back by m = 3.075 s and
    // n = 20.04" a year over 125 years: (0h, 0) lies near 23h53.6m, -0.70.
    WriteFileBytes("conrect.bin", ConrectImage({{4, 0, 0.05, -0.1, 0.1}, {5, 23.87, 23.92, -0.75, -0.65}}));
    EXPECT_EQ(constellationOfPlace(0.0, 0.0), 5);
    EXPECT_EQ(constellationOfPlace(12 * kHour, 0.0), -1);
}

}  // namespace
