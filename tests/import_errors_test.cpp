// How each import job ends when something is missing, short or full: its
// result, the message it shows, the log lines and what the store holds.
#include <filesystem>

#include "job_support.h"
#include "legacy/import_instruments.h"
#include "legacy/import_locations.h"

namespace {

void Write(const char* path, const Bytes& bytes) { WriteFileBytes(path, bytes); }
Bytes Loc(const char* name, double lon) { return LocationBytes(name, lon, 0); }
Bytes Scope(const char* name) { return LegacyInstrumentBytes(name, 1); }
Bytes ScopeWithSlot(const char* name) {
    Bytes r = Scope(name);
    AddLegacySlot(r, 0, name, 3.0, 30.0);
    return r;
}

class ImportErrorsTest : public JobTest {};

TEST_F(ImportErrorsTest, EachJobEndsInItsOwnForm) {
    constexpr const char* kNone = nullptr;  // no message shown
    const struct {
        const char* what;
        Job job;
        void (*setup)();
        int ticks;  // rows ticked; -1 for no tick array
        int result;
        const char* message;  // the counts; "!" before them for the error form
        const char* log;
        const char* store;  // its count, u16 after the nextId in the instrument store
        int count;          // -1: no store file
    } cases[] = {
        {"no tick array", ImportLocations, [] { Write("legacy/loc.bin", LocationFileBytes({})); }, -1,
         0, "!Imported 0 of 0, 0 skipped", "Location: Internal error\n", "user/loc.bin", 0},
        {"short legacy record", ImportLocations,
         [] {
             Bytes file = LocationFileBytes({Loc("First", 1), Loc("Second", 2), Loc("Third", 3)});
             file.resize(2 + 135 + 133);  // the second record loses its tail's last bytes
             Write("legacy/loc.bin", file);
         },
         3, 0, "!Imported 1 of 1, 0 skipped", "Location: error reading V1.x location database\n",
         "user/loc.bin", 1},
        {"damaged store, named once", ImportLocations,
         [] {
             Write("user/loc.bin", LocationFileBytes({Loc("A", 1), Loc("B", 2)}, 5));
             Write("legacy/loc.bin", LocationFileBytes({Loc("C", 3)}));
         },
         1, 0, "!Imported 0 of 0, 0 skipped",
         "Location: user/loc.bin is damaged (its count promises more records than the file holds)\n",
         "user/loc.bin", 5},
        {"no legacy file", ImportLocations, [] {}, 1, 0, kNone, "", "user/loc.bin", -1},
        {"no whole count", ImportLocations, [] { Write("legacy/loc.bin", {7}); }, 1, 0, kNone, "",
         "user/loc.bin", -1},
        {"store cannot be opened", ImportLocations,
         [] {
             std::filesystem::remove("user");
             Write("legacy/loc.bin", LocationFileBytes({Loc("A", 1)}));
         },
         1, 0, "!Imported 0 of 0, 0 skipped", "", "user/loc.bin", -1},
        {"full store", ImportLocations,  // a count at the top of its range takes no more
         [] {
             Write("user/loc.bin", {0xFF, 0x7F});
             std::filesystem::resize_file("user/loc.bin", 2 + 32767 * 135);  // blank, sparse
             Write("legacy/loc.bin", LocationFileBytes({Loc("A", 1), Loc("B", 2)}));
         },
         2, 1, "Imported 0 of 0, 2 skipped",
         "Location: error adding new location\nLocation: error adding new location\n", "user/loc.bin",
         32767},
        {"no pool seed", ImportInstruments,  // stops at the first eyepiece
         [] {
             Write("user/instr.bin", InstrumentStoreBytes({}));
             Write("legacy/instr.bin",
                   LegacyInstrumentFile({Scope("Bare"), ScopeWithSlot("With"), Scope("Never")}));
         },
         3, 0, "!Imported 1 of 1, 0 skipped", "Instrument: error opening eyepiece pool\n",
         "user/instr.bin", 1},
        {"pool shorter than its count is damaged", ImportInstruments,
         [] {
             Bytes pool = PoolBytes(3, {{"Plossl 25mm", 25.0f, 52.0f, 1}});
             pool[2] = 2;
             Write("user/eyep.bin", pool);
             Write("user/instr.bin", InstrumentStoreBytes({}));
             Write("legacy/instr.bin", LegacyInstrumentFile({ScopeWithSlot("Unknown")}));
         },
         1, 0, "!Imported 0 of 0, 0 skipped",
         "Instrument: user/eyep.bin is damaged (its count promises more records than the file holds)\n",
         "user/instr.bin", 0},
        {"no store, which is not made", ImportInstruments,
         [] { Write("legacy/instr.bin", LegacyInstrumentFile({Scope("Scope")})); }, 1, 0,
         "!Imported 0 of 0, 0 skipped", "", "user/instr.bin", -1},
        {"no legacy instruments", ImportInstruments, [] { Write("user/instr.bin", InstrumentStoreBytes({})); },
         1, 0, kNone, "", "user/instr.bin", 0},
        {"records past the file's end are passed over", ImportInstruments,
         [] {
             Write("user/instr.bin", InstrumentStoreBytes({}));
             Write("legacy/instr.bin", LegacyInstrumentFile({Scope("Only")}, 3));
         },
         3, 1, "Imported 1 of 1, 0 skipped", "", "user/instr.bin", 1},
        {"no instrument tick array", ImportInstruments,
         [] {
             Write("user/instr.bin", InstrumentStoreBytes({}));
             Write("legacy/instr.bin", LegacyInstrumentFile({Scope("Only")}));
         },
         -1, 0, "!Imported 0 of 0, 0 skipped", "Instrument: Internal error\n", "user/instr.bin", 0},
        {"no id left to give", ImportInstruments,
         [] {
             Write("user/instr.bin", InstrumentStoreBytes({}, 0xFFFF));
             Write("legacy/instr.bin", LegacyInstrumentFile({Scope("A"), Scope("B")}));
         },
         2, 1, "Imported 0 of 0, 2 skipped",
         "Instrument: error adding new instrument -> A\nInstrument: error adding new instrument -> B\n",
         "user/instr.bin", 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        std::filesystem::remove_all("user");
        std::filesystem::remove_all("legacy");
        std::filesystem::remove("ferry2.log");
        MakeDirs("user");
        MakeDirs("legacy");
        c.setup();
        const std::vector<uint8_t> ticks(c.ticks < 0 ? 0 : c.ticks, 1);
        EXPECT_EQ(RunJob(c.job, c.ticks < 0 ? nullptr : &ticks), c.result);
        if (!c.message) {
            EXPECT_TRUE(messages_.empty());
        } else {
            EXPECT_EQ(OnlyMessage(), c.message[0] == '!' ? Error(c.message + 1) : Plain(c.message));
        }
        EXPECT_EQ(ReadFileText("ferry2.log"), c.log);
        const Bytes store = ReadFileBytes(c.store);
        const size_t at = c.job == ImportInstruments ? 2 : 0;
        if (c.count < 0) {
            EXPECT_TRUE(store.empty());
        } else {
            ASSERT_GE(store.size(), at + 2);
            EXPECT_EQ(store[at] | store[at + 1] << 8, c.count);
        }
    }
}

}  // namespace
