#include <string>
#include <vector>

#include "legacy/import_locations.h"
#include "job_support.h"

namespace {

class ImportLocationsTest : public JobTest {
protected:
    void SetUp() override {
        JobTest::SetUp();
        MakeDirs("user");
        MakeDirs("legacy");
    }
    int Run(const std::vector<uint8_t>* ticks) { return RunJob(ImportLocations, ticks); }
    int RunTicked(std::vector<uint8_t> ticks) { return Run(&ticks); }
};

TEST_F(ImportLocationsTest, TickedRecordsLandUnchangedAtTheEndOfTheStore) {
    const Bytes mine = LocationBytes("Mine", 0.1, 0.2, 1, 0);
    Bytes odd = LocationBytes("Odd", 1.0, 0.5, 4, 1);
    for (size_t i = 16; i < 99; ++i) odd[i] = static_cast<uint8_t>(i * 13);  // any reals at all
    odd[99 + 10] = 'Z';  // bytes after the name's NUL
    odd[134] = 0xEE;     // a nonzero spare
    const Bytes skipped = LocationBytes("Unticked", 2.0, 0.5);
    const Bytes third = LocationBytes("Third", 3.0, 0.5, 2, 0);
    WriteFileBytes("user/loc.bin", LocationFileBytes({mine}));
    WriteFileBytes("legacy/loc.bin", LocationFileBytes({odd, skipped, third}));

    EXPECT_EQ(RunTicked({1, 0, 7}), 1);
    EXPECT_EQ(OnlyMessage(), Plain("Imported 2 of 2, 0 skipped"));
    EXPECT_EQ(ReadFileBytes("user/loc.bin"), LocationFileBytes({mine, odd, third}));
    EXPECT_EQ(ReadFileText("ferry2.log"), "");
}

TEST_F(ImportLocationsTest, DuplicatesAreRefusedWhetherAtTheSamePlaceOrAnother) {
    WriteFileBytes("user/loc.bin", LocationFileBytes({LocationBytes("Home", 1.0, 0.5),
                                                      LocationBytes("Club", 2.0, 0.6)}));
    WriteFileBytes("legacy/loc.bin",
                   LocationFileBytes({
                       LocationBytes("Home", 1.0 + 7e-5, 0.5),  // same place
                       LocationBytes("Club", 2.5, 0.6),         // same name elsewhere
                       LocationBytes("Twin", 0.3, 0.1),
                       LocationBytes("Twin", 0.4, 0.1),  // refused: added just before
                       LocationBytes("", 0.5, 0.1),      // never a duplicate
                       LocationBytes("", 0.5, 0.1),
                       LocationBytes("home", 1.0, 0.5),  // case matters
                   }));

    EXPECT_EQ(RunTicked({1, 1, 1, 1, 1, 1, 1}), 1);
    EXPECT_EQ(OnlyMessage(), Plain("Imported 4 of 7, 3 skipped"));
    EXPECT_EQ(ReadFileText("ferry2.log"),
              "Location: Warning Home already exists (not added)\n"
              "Location: Warning Club already exists (not added)\n"
              "Location: Warning Twin already exists (not added)\n");
    EXPECT_EQ(PeekI16(ReadFileBytes("user/loc.bin"), 0), 6);
}

TEST_F(ImportLocationsTest, NothingTickedOrNothingThereGivesThreeZeros) {
    WriteFileBytes("legacy/loc.bin", LocationFileBytes({LocationBytes("A", 1, 0)}));
    EXPECT_EQ(RunTicked({0}), 1);
    EXPECT_EQ(OnlyMessage(), Plain("Imported 0 of 0, 0 skipped"));
    // A count of 0 under a page that still has a tick array.
    WriteFileBytes("legacy/loc.bin", LocationFileBytes({}));
    EXPECT_EQ(RunTicked({1}), 1);
    EXPECT_EQ(OnlyMessage(), Plain("Imported 0 of 0, 0 skipped"));
    // The store was made on the way, with a count of 0.
    EXPECT_EQ(ReadFileBytes("user/loc.bin"), (Bytes{0, 0}));
}

TEST_F(ImportLocationsTest, RowsPastTheTickArrayAreNotTickedAndNoLogIsHarmless) {
    WriteFileBytes("legacy/loc.bin", LocationFileBytes({LocationBytes("A", 1, 0), LocationBytes("A", 2, 0)}));
    std::vector<uint8_t> ticks = {1};
    JobHost host;  // no log, no message sink
    host.legacyRoot = "legacy";
    host.ticks = [&ticks] { return TickArray{ticks.data(), ticks.size()}; };
    EXPECT_EQ(ImportLocations(host), 1);
    ticks = {1, 1};
    EXPECT_EQ(ImportLocations(host), 1);  // both refused; the warnings go nowhere
    EXPECT_EQ(PeekI16(ReadFileBytes("user/loc.bin"), 0), 1);
}

}  // namespace
