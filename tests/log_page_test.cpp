#include <cstring>

#include "log_folder_fixture.h"
#include "shell/log_page.h"
#include "stores/instrument_store.h"
#include "stores/observer_store.h"

namespace {

using Names = std::vector<std::string>;

// user/instr.bin: records of 8750 bytes after a 4-byte head; the id at 0,
// the kind at 4, the mounting at 8717, the name at 8718, the main system
// from 31 with its aperture (mm) at +1 and its power at +4326.
constexpr size_t kRecord = 8750;
constexpr size_t kAperture = 31 + 1;
constexpr size_t kPower = 31 + 4326;

// user/observer.bin: records of 84 bytes after an i16 count; name, i32 age
// at 64, f64 pupil at 68, f64 experience at 76.
constexpr size_t kObserver = 84;

// The answers a user gives, and what the page asked.
struct Answers {
    int type = kTypeTelescope;
    int row = 0;
    std::vector<std::string> askedTypeFor;
    std::vector<std::string> choiceTitles;
    Names offered;

    LogPageQuestions Questions() {
        LogPageQuestions q;
        q.instrumentType = [this](const std::string& pending) {
            askedTypeFor.push_back(pending);
            return type;
        };
        q.choose = [this](const char* title, const Names& names) {
            choiceTitles.emplace_back(title);
            offered = names;
            return row;
        };
        return q;
    }
};

class LogPageTest : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        MakeDirs("user");
        WriteFileBytes("user/instr.bin", InstrumentStoreBytes({"Dob", "Mak"}, 2));
        WriteLegacyLogFolder("v1", 0, {{{"Bob", "Refractor"}, {"Cy", "Big Binos"}}});
        LogPageInit(&page_);
        Rescan();
    }
    void TearDown() override {
        LogPageClose(&page_);
        ScratchTest::TearDown();
    }
    void Rescan() {
        JobHost host;
        host.legacyRoot = "v1";
        LogPageScan(&page_, host);
    }
    int Create(int list, int row) {
        LogPageSelect(&page_, list, row);
        return LogPageCreate(&page_, answers_.Questions());
    }
    int Link(int list, int row) {
        LogPageSelect(&page_, list, row);
        return LogPageLink(&page_, answers_.Questions());
    }
    LogPage page_;
    Answers answers_;
};

TEST_F(LogPageTest, ScanFillsTheListsAndImportWaitsForThemToEmpty) {
    EXPECT_EQ(page_.selectedList, -1);
    EXPECT_EQ(page_.selectedRow, -1);
    EXPECT_EQ(page_.names.observers, (Names{"Bob", "Cy"}));
    EXPECT_EQ(page_.names.instruments, (Names{"Refractor", "Big Binos"}));
    EXPECT_FALSE(page_.importEnabled);
    // A folder without logs ends the scan at once, with Import enabled.
    std::filesystem::remove_all("v1/log");
    Rescan();
    EXPECT_TRUE(page_.importEnabled);
}

TEST_F(LogPageTest, CreateObserverAddsAndLinksItAtItsStorePlace) {
    Bytes store(2 + kObserver, 0);
    store[0] = 1;
    std::memcpy(&store[2], "Zoe", 3);
    WriteFileBytes("user/observer.bin", store);
    ASSERT_EQ(Create(kObserverList, 1), 1);
    const Bytes b = ReadFileBytes("user/observer.bin");
    ASSERT_EQ(b.size(), 2 + 2 * kObserver);
    EXPECT_EQ(PeekI16(b, 0), 2);
    EXPECT_STREQ(reinterpret_cast<const char*>(&b[2 + kObserver]), "Cy");
    EXPECT_EQ(PeekU32(b, 2 + kObserver + 64), 40u);
    EXPECT_NEAR(PeekF64(b, 2 + kObserver + 68), 6.4618, 1e-4);  // 7 exp(-0.08) mm
    EXPECT_EQ(PeekF64(b, 2 + kObserver + 76), 0.5);
    ASSERT_EQ(page_.links.undefinedObservers.size(), 1u);
    EXPECT_EQ(page_.links.undefinedObservers[0].key, "Cy");
    EXPECT_EQ(page_.links.undefinedObservers[0].index, 1);
    EXPECT_STREQ(page_.links.undefinedObservers[0].record.name, "Cy");
    EXPECT_EQ(page_.names.observers, (Names{"Bob"}));
    EXPECT_EQ(page_.selectedRow, -1);
    EXPECT_TRUE(answers_.askedTypeFor.empty());
}

// Create on the instrument list: the type asked with the row's name, then a
// record of the makers' defaults added and linked as made.
struct CreateCase {
    int type;
    uint8_t kind;
    uint8_t mounting;
    double aperture;
    double power;
    bool settled;
};

const CreateCase kCreateCases[] = {
    {kTypeTelescope, 0, 1, 25.4, 0.0, true},
    {kTypeBinoculars, 1, 0, 50.0, 7.0, true},
    {kTypeCancelled, 0, 0, 0.0, 0.0, false},
};

TEST_F(LogPageTest, CreateInstrumentMakesTheChosenKind) {
    for (const CreateCase& c : kCreateCases) {
        SCOPED_TRACE(c.type);
        WriteFileBytes("user/instr.bin", InstrumentStoreBytes({"Dob", "Mak"}, 2));
        LogPageClose(&page_);
        Rescan();
        answers_ = Answers{};
        answers_.type = c.type;
        EXPECT_EQ(Create(kInstrumentList, 0), c.settled ? 1 : 0);
        EXPECT_EQ(answers_.askedTypeFor, (Names{"Refractor"}));
        EXPECT_EQ(page_.pendingName, "Refractor");
        const Bytes b = ReadFileBytes("user/instr.bin");
        if (!c.settled) {
            EXPECT_EQ(b, InstrumentStoreBytes({"Dob", "Mak"}, 2));
            EXPECT_EQ(page_.names.instruments.size(), 2u);
            EXPECT_TRUE(page_.links.undefinedInstruments.empty());
            continue;
        }
        ASSERT_EQ(b.size(), 4 + 3 * kRecord);
        EXPECT_EQ(b[0], 3);  // next id
        EXPECT_EQ(b[2], 3);  // count
        const size_t r = 4 + 2 * kRecord;
        EXPECT_STREQ(reinterpret_cast<const char*>(&b[r + 8718]), "Refractor");
        EXPECT_EQ(b[r + 4], c.kind);
        EXPECT_EQ(b[r + 8717], c.mounting);
        EXPECT_EQ(b[r], 3);  // the new id
        EXPECT_NEAR(PeekF64(b, r + kAperture), c.aperture, 1e-9);
        EXPECT_EQ(PeekF64(b, r + kPower), c.power);
        ASSERT_EQ(page_.links.undefinedInstruments.size(), 1u);
        EXPECT_EQ(page_.links.undefinedInstruments[0].key, "Refractor");
        EXPECT_EQ(page_.links.undefinedInstruments[0].record.id, 3);
        EXPECT_EQ(page_.names.instruments, (Names{"Big Binos"}));
    }
}

TEST_F(LogPageTest, WithoutAValidSelectionNothingHappens) {
    EXPECT_EQ(Create(-1, -1), 0);
    EXPECT_EQ(Link(kObserverList, 2), 0);
    EXPECT_EQ(Create(kInstrumentList, -1), 0);
    EXPECT_TRUE(answers_.askedTypeFor.empty());
    EXPECT_TRUE(answers_.choiceTitles.empty());
    EXPECT_EQ(page_.names.observers.size() + page_.names.instruments.size(), 4u);
}

TEST_F(LogPageTest, LinkObserverTakesTheChosenStoredRecord) {
    // An empty store offers the default observer.
    answers_.row = -1;
    EXPECT_EQ(Link(kObserverList, 0), 0);
    EXPECT_EQ(answers_.offered, (Names{"Default Observer"}));
    EXPECT_EQ(page_.names.observers, (Names{"Bob", "Cy"}));

    ObserverRecord ann, ben;
    ObserverInit(&ann, "Ann", 30, 6.0, 1.0);
    ObserverInit(&ben, "Ben", 60, 5.0, 0.25);
    {
        int count = 0;
        FilePtr store = ObserverStoreOpen(&count);
        ObserverAdd(store.get(), ann);
        ObserverAdd(store.get(), ben);
    }
    answers_.row = 1;
    ASSERT_EQ(Link(kObserverList, 0), 1);
    EXPECT_EQ(answers_.choiceTitles.back(), "Select Observer");
    EXPECT_EQ(answers_.offered, (Names{"Ann", "Ben"}));
    ASSERT_EQ(page_.links.undefinedObservers.size(), 1u);
    const ObserverLink& link = page_.links.undefinedObservers[0];
    EXPECT_EQ(link.key, "Bob");
    EXPECT_EQ(link.index, 1);
    EXPECT_STREQ(link.record.name, "Ben");
    EXPECT_EQ(link.record.age, 60);
    EXPECT_EQ(page_.names.observers, (Names{"Cy"}));
    EXPECT_TRUE(page_.pendingName.empty());
}

TEST_F(LogPageTest, LinkInstrumentAsksTheTypeAsAGoAheadThenChooses) {
    answers_.type = kTypeCancelled;
    EXPECT_EQ(Link(kInstrumentList, 1), 0);
    EXPECT_EQ(answers_.askedTypeFor, (Names{"Big Binos"}));
    EXPECT_TRUE(answers_.choiceTitles.empty());

    answers_.type = kTypeBinoculars;
    answers_.row = 1;
    ASSERT_EQ(Link(kInstrumentList, 1), 1);
    EXPECT_EQ(answers_.choiceTitles, (Names{"Select Instrument"}));
    EXPECT_EQ(answers_.offered, (Names{"Dob", "Mak"}));
    ASSERT_EQ(page_.links.undefinedInstruments.size(), 1u);
    EXPECT_EQ(page_.links.undefinedInstruments[0].key, "Big Binos");
    EXPECT_STREQ(page_.links.undefinedInstruments[0].record.name, "Mak");
    EXPECT_EQ(ReadFileBytes("user/instr.bin"), InstrumentStoreBytes({"Dob", "Mak"}, 2));
}

TEST_F(LogPageTest, LastSettledRowEnablesImportAndClosingLosesTheLinks) {
    ASSERT_EQ(Create(kObserverList, 0), 1);  // "Bob" becomes a stored observer
    ASSERT_EQ(Link(kObserverList, 0), 1);    // "Cy" only linked
    ASSERT_EQ(Create(kInstrumentList, 1), 1);
    EXPECT_FALSE(page_.importEnabled);
    ASSERT_EQ(Link(kInstrumentList, 0), 1);
    EXPECT_TRUE(page_.importEnabled);
    EXPECT_EQ(page_.links.undefinedObservers.size(), 2u);
    EXPECT_EQ(page_.links.undefinedInstruments.size(), 2u);

    LogPageClose(&page_);
    EXPECT_TRUE(page_.links.undefinedObservers.empty());
    EXPECT_TRUE(page_.links.undefinedInstruments.empty());
    Rescan();
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
