#include <cmath>
#include <cstring>

#include "stores/location_store.h"
#include "support.h"

namespace {

class LocationStoreTest : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        MakeDirs("user");
    }
    static Site Decode(const Bytes& record) {
        Site s;
        DecodeRecord<SiteLayout>(record.data(), s);
        return s;
    }
    static LocationTail Tail(const Bytes& record) {
        LocationTail t;
        DecodeRecord<LocationTailLayout>(record.data() + 132, t);
        return t;
    }
    // Writes user/loc.bin from hand-made records and opens it.
    FilePtr StoreWith(const std::vector<Bytes>& records) {
        WriteFileBytes("user/loc.bin", LocationFileBytes(records));
        int count = -1;
        FilePtr f = LocationStoreOpen(&count);
        EXPECT_EQ(count, static_cast<int>(records.size()));
        return f;
    }
};

TEST_F(LocationStoreTest, OpenMakesAMissingStoreWithCountZero) {
    int count = -1;
    {
        FilePtr f = LocationStoreOpen(&count);
        ASSERT_TRUE(f);
        EXPECT_EQ(count, 0);
    }
    EXPECT_EQ(ReadFileBytes("user/loc.bin"), (Bytes{0, 0}));
}

TEST_F(LocationStoreTest, ReadRefusesIndexesAtOrPastTheCount) {
    const Bytes a = LocationBytes("Alpha", 1.0, 0.5, 2, 1);
    // A stale record past the count is not readable.
    WriteFileBytes("user/loc.bin", LocationFileBytes({a, LocationBytes("Stale", 0, 0)}, 1));
    int count = 0;
    FilePtr f = LocationStoreOpen(&count);
    Site s;
    LocationTail t;
    ASSERT_EQ(LocationRead(f.get(), 0, &s, &t), 1);
    EXPECT_STREQ(s.name, "Alpha");
    EXPECT_EQ(t.zoneIndex, 2);
    EXPECT_EQ(t.elevationInFeet, 1);
    EXPECT_EQ(LocationRead(f.get(), 1, &s, &t), 0);
    EXPECT_EQ(LocationRead(f.get(), -1, &s, &t), 0);
}

TEST_F(LocationStoreTest, FindByExactNameThenPlaceWithinTheTolerances) {
    const Bytes other = LocationBytes("Other", 0, 0), site = LocationBytes("Site", 0.0, 0.0, 3, 1);
    const Bytes twin1 = LocationBytes("Twin", 1.0, 0.5), twin2 = LocationBytes("Twin", 2.0, 0.5);
    const Bytes unnamed = LocationBytes("", 1.0, 0.5), dateLine = LocationBytes("Date line", 3.14, 0.1);
    const struct {
        std::vector<Bytes> records;
        int16_t count;
        const char* name;
        double lon, lat;
        int result, index;
    } cases[] = {
        {{other, site}, 2, "Site", 7.27e-5, 0.0, 1, 1},  // exactly at the tolerances
        {{other, site}, 2, "Site", -7.27e-5, 4.85e-6, 1, 1},
        {{other, site}, 2, "Site", std::nextafter(7.27e-5, 1.0), 0.0, 2, 1},
        {{other, site}, 2, "Site", 0.0, std::nextafter(-4.85e-6, -1.0), 2, 1},
        {{other, site}, 1, "Site", 0.0, 0.0, 0, 1},  // a stale record past the count
        {{twin1, twin2}, 2, "Twin", 2.0, 0.5, 2, 0},  // the first name match decides
        {{twin1, twin2}, 2, "twin", 1.0, 0.5, 0, 2},
        {{twin1, twin2}, 2, "Twin ", 1.0, 0.5, 0, 2},
        {{unnamed, dateLine}, 2, "", 1.0, 0.5, 0, 0},  // an empty name never matches
        {{unnamed, dateLine}, 2, "Date line", -3.14, 0.1, 2, 1},  // no wrap of longitude
    };
    for (const auto& c : cases) {
        WriteFileBytes("user/loc.bin", LocationFileBytes(c.records, c.count));
        int count = 0, index = -1;
        FilePtr f = LocationStoreOpen(&count);
        Site found = Decode(LocationBytes(c.name, c.lon, c.lat));
        LocationTail tail;
        EXPECT_EQ(LocationFind(f.get(), &found, &tail, &index), c.result) << c.name;
        EXPECT_EQ(index, c.index) << c.name;
        if (c.result == 1) {  // the stored record is handed back
            const Bytes& stored = c.records[c.index];
            EXPECT_EQ(RecordImage<SiteLayout>(found), RecordImage<SiteLayout>(Decode(stored)));
            EXPECT_EQ(RecordImage<LocationTailLayout>(tail), RecordImage<LocationTailLayout>(Tail(stored)));
        }
    }
}

TEST_F(LocationStoreTest, DeleteMovesLaterRecordsDownAndLeavesStaleBytes) {
    const Bytes a = LocationBytes("A", 1, 1), b = LocationBytes("B", 2, 2), c = LocationBytes("C", 3, 3);
    {
        FilePtr f = StoreWith({a, b, c});
        ASSERT_EQ(LocationDelete(f.get(), 0), 1);
    }
    // Count 2, then B and C, then C again as stale bytes: no truncation.
    EXPECT_EQ(ReadFileBytes("user/loc.bin"), LocationFileBytes({b, c, c}, 2));
    {
        int count = 0;
        FilePtr f = LocationStoreOpen(&count);
        ASSERT_EQ(LocationDelete(f.get(), 1), 1);  // the last one: only the count moves
        EXPECT_EQ(LocationDelete(f.get(), 1), 0);
    }
    EXPECT_EQ(ReadFileBytes("user/loc.bin"), LocationFileBytes({b, c, c}, 1));
}

TEST_F(LocationStoreTest, UpdateRebuildsDerivedFieldsAndTheSummerTimeRule) {
    Bytes raw = LocationBytes("Spot", 0.3, 0.0);
    PokeF64(raw, 16, 10000.0);       // height
    PokeF64(raw, 24, 99.0);          // stale derived sin
    PokeF64(raw, 48, 6.0);           // limit
    raw[99 + 20] = 'x';              // stale byte after the name's NUL
    FilePtr f = StoreWith({raw});
    DstRule rule;
    rule.mode = 2;
    rule.startWeek = 1;
    rule.startMonth = 3;
    ASSERT_EQ(LocationUpdate(f.get(), 0, Decode(raw), LocationTail{2, 1, 0}, rule), 1);
    Site s;
    LocationTail t;
    ASSERT_EQ(LocationRead(f.get(), 0, &s, &t), 1);
    EXPECT_EQ(s.sinLatitude, 0.0);
    EXPECT_NEAR(s.horizonDip, -0.061668, 1e-15);
    EXPECT_NEAR(s.rhoCosPhi, 1.0015678552, 1e-10);
    EXPECT_EQ(s.nakedEyeLimit, 6.0);
    EXPECT_EQ(s.dstMode, 2);
    EXPECT_EQ(s.dstStartWeek, 1);
    EXPECT_EQ(s.dstStartMonth, 3);
    EXPECT_EQ(s.name[20], '\0');
    EXPECT_EQ(t.zoneIndex, 2);
    EXPECT_EQ(LocationUpdate(f.get(), 1, s, t, rule), 0);
}

TEST_F(LocationStoreTest, BackupAndRestoreCopyCountedRecordsThroughTheWorkingFolder) {
    const Bytes a = LocationBytes("A", 1, 1, 1, 0), b = LocationBytes("B", 2, 2, 2, 1);
    WriteFileBytes("user/loc.bin", LocationFileBytes({a, b, LocationBytes("Stale", 0, 0)}, 2));
    ASSERT_EQ(LocationBackup(), 1);
    EXPECT_EQ(ReadFileBytes("loc.bak"), LocationFileBytes({a, b}));

    {
        int count = 0;
        FilePtr f = LocationStoreOpen(&count);
        ASSERT_EQ(LocationDelete(f.get(), 0), 1);
    }
    ASSERT_EQ(LocationRestore(), 1);
    EXPECT_EQ(ReadFileBytes("user/loc.bin"), LocationFileBytes({a, b}));

    // A backup whose count promises more than it holds fails.
    WriteFileBytes("loc.bak", LocationFileBytes({a}, 2));
    EXPECT_EQ(LocationRestore(), 0);
    std::filesystem::remove("loc.bak");
    EXPECT_EQ(LocationRestore(), 0);
}

}  // namespace
