#include "legacy_log_fixtures.h"
#include "shell/log_page.h"
#include "stores/observer_store.h"

namespace {

using Names = std::vector<std::string>;

// user/instr.bin: a 4-byte head, then 8750-byte records: id at 0, kind at
// 4, the main system from 31 (aperture in mm at +1, power at +4326), the
// mounting at 8717, the name at 8718. user/observer.bin: an i16 count, then
// 84-byte records: name, i32 age at 64, f64 pupil at 68, f64 experience at 76.
constexpr size_t kThirdInstrument = 4 + 2 * 8750;
constexpr size_t kSecondObserver = 2 + 84;

class LogPageTest : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        MakeDirs("user");
        WriteFileBytes("user/instr.bin", InstrumentStoreBytes({"Dob", "Mak"}, 2));
        WriteLegacyLogChains(0, {{{"Bob", "Refractor"}, {"Cy", "Big Binos"}}});
        Rescan();
    }
    void TearDown() override {
        LogPageClose(&page_);
        ScratchTest::TearDown();
    }
    void Rescan() {
        LogPageClose(&page_);
        JobHost host;
        host.legacyRoot = "legacy";
        LogPageScan(&page_, host);
    }
    // Selects the row and presses Create (or Link); the user answers the
    // type question with `type` and the choice with `row`.
    int Press(bool create, int list, int row, int type = kTypeTelescope, int choice = 0) {
        asked_.clear();
        LogPageSelect(&page_, list, row);
        LogPageQuestions q;
        q.instrumentType = [&](const std::string& pending) {
            asked_.push_back("type " + pending);
            return type;
        };
        q.choose = [&](const char* title, const Names& names) {
            asked_.push_back(title);
            for (const std::string& n : names) asked_.push_back(" " + n);
            return choice;
        };
        return create ? LogPageCreate(&page_, q) : LogPageLink(&page_, q);
    }
    LogPage page_;
    Names asked_;
};

TEST_F(LogPageTest, CreateAddsTheDefaultRecordAndLinksItAsMade) {
    EXPECT_EQ(Press(true, -1, -1), 0);
    EXPECT_EQ(Press(true, kInstrumentList, 2), 0);
    EXPECT_EQ(Press(true, kInstrumentList, 0, kTypeCancelled), 0);
    EXPECT_EQ(asked_, (Names{"type Refractor"}));
    EXPECT_EQ(ReadFileBytes("user/instr.bin"), InstrumentStoreBytes({"Dob", "Mak"}, 2));

    ASSERT_EQ(Press(true, kInstrumentList, 1, kTypeBinoculars), 1);
    Bytes b = ReadFileBytes("user/instr.bin");
    ASSERT_EQ(b.size(), kThirdInstrument + 8750);
    EXPECT_EQ(b[0], 3);  // next id
    EXPECT_EQ(b[2], 3);  // count
    EXPECT_EQ(b[kThirdInstrument], 3);
    EXPECT_EQ(b[kThirdInstrument + 4], 1);
    EXPECT_EQ(PeekF64(b, kThirdInstrument + 32), 50.0);
    EXPECT_EQ(PeekF64(b, kThirdInstrument + 4357), 7.0);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(&b[kThirdInstrument + 8718])), "Big Binos");
    ASSERT_EQ(Press(true, kInstrumentList, 0, kTypeTelescope), 1);
    b = ReadFileBytes("user/instr.bin");
    EXPECT_EQ(b[kThirdInstrument + 8750 + 4], 0);
    EXPECT_NEAR(PeekF64(b, kThirdInstrument + 8750 + 32), 25.4, 1e-12);  // one inch
    EXPECT_EQ(b[kThirdInstrument + 8750 + 8717], 1);                     // equatorial
    ASSERT_EQ(page_.links.undefinedInstruments.size(), 2u);
    EXPECT_EQ(page_.links.undefinedInstruments[0].key, "Big Binos");
    EXPECT_EQ(page_.links.undefinedInstruments[0].record.id, 3);
    EXPECT_TRUE(page_.names.instruments.empty());

    ASSERT_EQ(Press(true, kObserverList, 1), 1);
    EXPECT_TRUE(asked_.empty());
    b = ReadFileBytes("user/observer.bin");
    ASSERT_EQ(b.size(), kSecondObserver);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(&b[2])), "Cy");
    EXPECT_EQ(PeekU32(b, 2 + 64), 40u);
    EXPECT_NEAR(PeekF64(b, 2 + 68), 6.4618, 1e-4);  // 7 exp(-0.5 * 0.4^2) mm
    EXPECT_EQ(PeekF64(b, 2 + 76), 0.5);
    ASSERT_EQ(page_.links.undefinedObservers.size(), 1u);
    EXPECT_EQ(page_.links.undefinedObservers[0].key, "Cy");
    EXPECT_EQ(page_.names.observers, (Names{"Bob"}));
    EXPECT_FALSE(page_.importEnabled);
}

TEST_F(LogPageTest, LinkTakesTheChosenStoredRecord) {
    // No observer stored: the default one is offered. Cancel keeps the row.
    EXPECT_EQ(Press(false, kObserverList, 0, kTypeTelescope, -1), 0);
    EXPECT_EQ(asked_, (Names{"Select Observer", " Default Observer"}));
    // The type is only a go-ahead for the choice, which offers every kind.
    EXPECT_EQ(Press(false, kInstrumentList, 1, kTypeCancelled), 0);
    EXPECT_EQ(asked_, (Names{"type Big Binos"}));
    ASSERT_EQ(Press(false, kInstrumentList, 1, kTypeBinoculars, 1), 1);
    EXPECT_EQ(asked_, (Names{"type Big Binos", "Select Instrument", " Dob", " Mak"}));
    EXPECT_EQ(page_.links.undefinedInstruments[0].key, "Big Binos");
    EXPECT_STREQ(page_.links.undefinedInstruments[0].record.name, "Mak");
    EXPECT_EQ(page_.names.instruments, (Names{"Refractor"}));
    EXPECT_EQ(page_.selectedRow, -1);

    ObserverRecord ann, ben;
    ObserverInit(&ann, "Ann", 30, 6.0, 1.0);
    ObserverInit(&ben, "Ben", 60, 5.0, 0.25);
    int count = 0;
    FilePtr store = ObserverStoreOpen(&count);
    ObserverAdd(store.get(), ann);
    ObserverAdd(store.get(), ben);
    store.reset();
    ASSERT_EQ(Press(false, kObserverList, 0, kTypeTelescope, 1), 1);
    const ObserverLink& link = page_.links.undefinedObservers[0];
    EXPECT_EQ(link.key, "Bob");
    EXPECT_EQ(link.index, 1);
    EXPECT_STREQ(link.record.name, "Ben");
    EXPECT_EQ(link.record.age, 60);
    EXPECT_TRUE(page_.pendingName.empty());
}

TEST_F(LogPageTest, LastRowEnablesImportAndClosingLosesTheLinks) {
    ASSERT_EQ(Press(true, kObserverList, 0), 1);  // "Bob" becomes a stored observer
    ASSERT_EQ(Press(false, kObserverList, 0), 1); // "Cy" is only linked
    ASSERT_EQ(Press(true, kInstrumentList, 1), 1);
    EXPECT_FALSE(page_.importEnabled);
    ASSERT_EQ(Press(false, kInstrumentList, 0), 1);
    EXPECT_TRUE(page_.importEnabled);
    Rescan();
    EXPECT_TRUE(page_.links.undefinedObservers.empty());
    EXPECT_TRUE(page_.links.undefinedInstruments.empty());
    EXPECT_EQ(page_.names.observers, (Names{"Cy"}));
    EXPECT_EQ(page_.names.instruments, (Names{"Refractor"}));
    EXPECT_FALSE(page_.importEnabled);
}

TEST(InstrumentTypeText, NamesThePendingInstrumentOrAsksForAPick) {
    EXPECT_EQ(InstrumentTypeText("Big Binos"),
              "Select the instrument type and click Ok. Find \"Big Binos\" in the instrument list and select "
              "it. Default values have been created for the new instrument.  Customize them appropriately.");
    EXPECT_EQ(InstrumentTypeText(""), "Select the instrument type and click Ok. Select an instrument from the list.");
}

}  // namespace
