// The refresh of a list's computed columns: the header that keys them to an
// instant and a site, the rows placed again only when the key changed or
// the row asks, the rows written back only when they changed, the filter,
// the log-entry flag and a cancelled walk.
#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>
#include <vector>

#include "astro/instant.h"
#include "astro/site.h"
#include "catalog/user_stars.h"
#include "stores/list_refresh.h"
#include "stores/list_store.h"
#include "support.h"

namespace {

constexpr double kDegree = std::numbers::pi / 180.0;
constexpr size_t kRow = 224;

size_t RowAt(int index) { return 44 + kRow * static_cast<size_t>(index); }
constexpr size_t kAltitude = 80, kFlags = 120, kFilterPassed = 206, kComponent = 207;

class ListRefreshTest : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        MakeDirs("user");
        FilePtr stars = openStellar(nullptr);
        for (double magnitude : {3.0, 6.0, 9.0}) {
            StellarRecord star;
            ASSERT_EQ(makeStellarRecord(&star, "Star " + std::to_string(magnitude), 1.0, 0.3, magnitude), 1);
            ASSERT_EQ(addOrReplaceStellar(stars.get(), &star), 1);
        }
        // Rows: the three stars (the second ticked), the J2000 pole as a
        // fixed position, and a row that takes no part in the walk.
        slot_ = ListCreate("Tonight", nullptr);
        int count = 0;
        FilePtr items = ListOpenItems(slot_, &count);
        for (uint32_t pid = 1; pid <= 3; ++pid) {
            ObjectRecord r = identityRecord(kClassSupplementalStar, pid);
            ASSERT_EQ(ListAppendItem(items.get(), &r, &count), 1);
        }
        ObjectRecord pole;
        makeFixedPosition(&pole, 0.0, 89.9999 * kDegree, 0, 0);
        ASSERT_EQ(ListAppendItem(items.get(), &pole, &count), 1);
        ObjectRecord out = identityRecord(kClassSupplementalStar, 1);
        out.filterPassed = kListNotWalked;
        ASSERT_EQ(ListAppendItem(items.get(), &out, &count), 1);
        ASSERT_EQ(ListSetTick(items.get(), 1, true), 1);
        ASSERT_EQ(ListCloseItems(std::move(items), slot_, count), 1);

        site_ = MakeSite(50.0);
        instant_ = MakeInstant(site_, 22.0);
    }

    static Site MakeSite(double latitudeDegrees) {
        char name[] = "Here";
        Site site;
        SiteInit(&site, 10.0 * kDegree, latitudeDegrees * kDegree, 200.0, 6.0, 1.0, name);
        return site;
    }

    static Instant MakeInstant(Site& site, double hours) {
        Instant instant;
        InstantSet(&instant, &site, 3, 1, 2024, hours, kUniversalTime);
        InstantScales(&instant, 0.0);
        InstantSidereal(&site, &instant);
        return instant;
    }

    // The answers of a whole walk, up to its 0 or -1.
    std::vector<int> Walk(const ListFilter& filter = {}, ListHasLogEntries hasLog = nullptr,
                          const int* cancel = nullptr) {
        ListRefresh walk;
        EXPECT_EQ(ListRefreshBegin(&walk, slot_, site_, instant_, filter, cancel, hasLog, nullptr), 1);
        std::vector<int> answers;
        for (int a; (a = ListRefreshStep(&walk)) > 0;) answers.push_back(a);
        EXPECT_EQ(ListRefreshEnd(&walk), 1);
        return answers;
    }

    Bytes Items() const { return ReadFileBytes("user/lists/obs.000"); }

    int slot_ = -1;
    Site site_;
    Instant instant_;
};

TEST_F(ListRefreshTest, TheFirstWalkPlacesEveryRowAndKeysTheHeader) {
    const Bytes before = Items();
    EXPECT_EQ(Walk(), (std::vector<int>{1, 2, 3, 4}));
    const Bytes after = Items();

    Bytes header(44, 0);
    PokeF64(header, 2, instant_.tDyn);
    PokeF64(header, 10, 10.0 * kDegree);
    PokeF64(header, 18, 50.0 * kDegree);
    PokeF64(header, 26, 200.0);
    PokeF64(header, 34, 1.0);
    header[42] = site_.dstMode;
    header[43] = 0;
    EXPECT_EQ(Slice(after, 0, 44), header);

    // The celestial pole stands as high as the latitude (the pole of J2000
    // has moved a fifth of a degree by 2024).
    EXPECT_NEAR(PeekF64(after, RowAt(3) + kAltitude) / kDegree, 50.0, 0.5);
    EXPECT_EQ(after[RowAt(0) + kFlags], 0) << "redo mark cleared";
    EXPECT_EQ(after[RowAt(1) + kFlags], 1) << "the tick stays";
    EXPECT_EQ(Slice(after, RowAt(4), kRow), Slice(before, RowAt(4), kRow)) << "not walked";
}

TEST_F(ListRefreshTest, TheSameInstantAndSiteKeepTheCachedValues) {
    Walk();
    Bytes items = Items();
    PokeF64(items, RowAt(0) + kAltitude, 1.5);
    WriteFileBytes("user/lists/obs.000", items);
    EXPECT_EQ(Walk(), (std::vector<int>{1, 2, 3, 4}));
    EXPECT_EQ(Items(), items) << "no row written";
}

TEST_F(ListRefreshTest, AnotherSiteOrInstantPlacesEveryRowAgain) {
    struct Case {
        const char* what;
        double latitude, hours;
        uint8_t dstMode;
    } cases[] = {{"latitude", 40.0, 22.0, 0}, {"instant", 50.0, 23.0, 0}, {"summer time", 50.0, 22.0, 1}};
    for (const Case& c : cases) {
        site_ = MakeSite(50.0);
        instant_ = MakeInstant(site_, 22.0);
        Walk();
        Bytes items = Items();
        for (int i = 0; i < 4; ++i) PokeF64(items, RowAt(i) + kAltitude, 1.5);
        WriteFileBytes("user/lists/obs.000", items);

        site_ = MakeSite(c.latitude);
        site_.dstMode = c.dstMode;
        instant_ = MakeInstant(site_, c.hours);
        EXPECT_EQ(Walk(), (std::vector<int>{1, 2, 3, 4})) << c.what;
        const Bytes after = Items();
        EXPECT_EQ(PeekF64(after, 2), instant_.tDyn) << c.what;
        EXPECT_EQ(PeekF64(after, 18), c.latitude * kDegree) << c.what;
        EXPECT_EQ(after[42], c.dstMode) << c.what;
        for (int i = 0; i < 4; ++i) EXPECT_NE(PeekF64(after, RowAt(i) + kAltitude), 1.5) << c.what << " row " << i;
        EXPECT_NEAR(PeekF64(after, RowAt(3) + kAltitude) / kDegree, c.latitude, 0.5) << c.what;
    }
}

TEST_F(ListRefreshTest, ARowMarkedForRedoingIsPlacedAloneAndWrittenWithTheMarkCleared) {
    Walk();
    Bytes items = Items();
    PokeF64(items, RowAt(0) + kAltitude, 1.5);
    PokeF64(items, RowAt(2) + kAltitude, 1.5);
    items[RowAt(2) + kFlags] |= 2;
    WriteFileBytes("user/lists/obs.000", items);
    Walk();
    const Bytes after = Items();
    EXPECT_EQ(PeekF64(after, RowAt(0) + kAltitude), 1.5) << "cached";
    EXPECT_NE(PeekF64(after, RowAt(2) + kAltitude), 1.5) << "placed again";
    EXPECT_EQ(after[RowAt(2) + kFlags], 0);
    EXPECT_EQ(Slice(after, RowAt(0), kRow), Slice(items, RowAt(0), kRow));
}

TEST_F(ListRefreshTest, TheFilterTakesClassMagnitudeAndTicks) {
    struct Case {
        uint32_t mask;
        double limit;
        bool ticked;
        std::vector<int> passed;
    } cases[] = {
        {0xFFFFFFFFu, 99.0, false, {1, 2, 3, 4}},
        {16, 99.0, false, {1, 2, 3}},       // stars
        {32768, 99.0, false, {4}},          // fixed positions
        {0xFFFFFFFFu, 6.5, false, {1, 2}},  // the pole has no magnitude
        {0xFFFFFFFFu, 6.0, false, {1, 2}},  // no fainter than the limit
        {0xFFFFFFFFu, 99.0, true, {2}},
        {16, 4.0, true, {}},
    };
    for (const Case& c : cases) {
        ListFilter filter;
        filter.classMask = c.mask;
        filter.magnitudeLimit = c.limit;
        filter.tickedOnly = c.ticked;
        EXPECT_EQ(Walk(filter), c.passed) << c.mask << " " << c.limit << " " << c.ticked;
        const Bytes items = Items();
        for (int i = 0; i < 4; ++i) {
            const bool passed = std::find(c.passed.begin(), c.passed.end(), i + 1) != c.passed.end();
            EXPECT_EQ(items[RowAt(i) + kFilterPassed], passed ? 1 : 0) << "row " << i;
        }
        EXPECT_EQ(items[RowAt(4) + kFilterPassed], 255);
    }
}

TEST_F(ListRefreshTest, TheLogEntryFlagFollowsTheLogStore) {
    Walk();
    const Bytes before = Items();
    Walk(ListFilter{}, [](int objectClass, uint32_t pid, void*) {
        return objectClass == kClassSupplementalStar && pid == 2;
    });
    Bytes want = before;
    want[RowAt(1) + kComponent] |= 0x80;
    EXPECT_EQ(Items(), want) << "that row alone written";
    Walk();
    EXPECT_EQ(Items(), before);
}

TEST_F(ListRefreshTest, ACancelledWalkLeavesTheHeaderStale) {
    int cancel = 0;
    ListRefresh walk;
    ASSERT_EQ(ListRefreshBegin(&walk, slot_, site_, instant_, ListFilter{}, &cancel, nullptr, nullptr), 1);
    EXPECT_EQ(ListRefreshStep(&walk), 1);
    cancel = 1;
    EXPECT_EQ(ListRefreshStep(&walk), 0);
    EXPECT_EQ(ListRefreshEnd(&walk), 1);
    EXPECT_EQ(Items()[43], 1);
    EXPECT_EQ(Walk(), (std::vector<int>{1, 2, 3, 4}));
    EXPECT_EQ(Items()[43], 0);
}

}  // namespace
