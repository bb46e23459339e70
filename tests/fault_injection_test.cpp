// Every read and write of a store operation or an import job is made to
// fail in turn, outright or half-way, and the files are checked afterwards:
// the records that stood before stand unchanged, and a store is either whole
// or reported as damaged, never extended by blank records.
#include <cstring>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "job_support.h"
#include "legacy/import_instruments.h"
#include "legacy/import_locations.h"
#include "shell/folder_check.h"
#include "stores/eyepiece_pool.h"
#include "stores/instrument_store.h"
#include "stores/location_store.h"
#include "stores/observer_store.h"

namespace {

constexpr FileFault kFaults[] = {FileFault::kFail, FileFault::kShort};

ObserverRecord Observer(const char* name) {
    ObserverRecord r;
    ObserverInit(&r, name, 30 + name[0], 0.0, 0.5);
    return r;
}
InstrumentRecord Instrument(const char* name) {
    InstrumentRecord r;
    std::strncpy(r.name, name, sizeof r.name - 1);
    return r;
}

// A store file: where its count stands (an i16 at 0 or a u16 at 2; both read
// alike while small), how big its parts are, how it opens, how a store of
// three records A, B, C is made, and how record D is added, record B is
// written over with D and record B is deleted (the pool's own operations open
// the pool themselves).
struct StoreShape {
    const char* path;
    size_t header, record, countAt;
    FilePtr (*open)(StoreDamage*);
    void (*make)();
    int (*operations[3])(FILE*);
};
const StoreShape kLocations{
    "user/loc.bin", 2, 135, 0, [](StoreDamage* d) { return LocationStoreOpen(nullptr, d); },
    [] {
        WriteFileBytes("user/loc.bin", LocationFileBytes({LocationBytes("A", 0.1, 0.2, 1),
            LocationBytes("B", 0.3, 0.4, 2), LocationBytes("C", 0.5, 0.6, 3)}));
    },
    {[](FILE* f) { return LocationAdd(f, LocationDefaultSite(), {}); },
     [](FILE* f) { return LocationUpdate(f, 1, LocationDefaultSite(), {}, {}); },
     [](FILE* f) { return LocationDelete(f, 1); }}};
const StoreShape kObservers{
    "user/observer.bin", 2, 84, 0, [](StoreDamage* d) { return ObserverStoreOpen(nullptr, d); },
    [] {
        std::filesystem::remove("user/observer.bin");
        FilePtr f = ObserverStoreOpen(nullptr);
        for (const char* name : {"A", "B", "C"}) ObserverAdd(f.get(), Observer(name));
    },
    {[](FILE* f) { return ObserverAdd(f, Observer("D")); },
     [](FILE* f) { return ObserverWrite(f, 1, Observer("D")); },
     [](FILE* f) { return ObserverDelete(f, 1); }}};
const StoreShape kInstruments{
    "user/instr.bin", 4, 8750, 2, [](StoreDamage* d) { return InstrumentStoreOpen(nullptr, d); },
    [] { WriteFileBytes("user/instr.bin", InstrumentStoreBytes({"A", "B", "C"}, 3)); },
    {[](FILE* f) { InstrumentRecord r = Instrument("D"); return InstrumentAdd(f, &r); },
     [](FILE* f) { return InstrumentWrite(f, Instrument("D"), 1); },
     [](FILE* f) { return InstrumentDelete(f, 1); }}};
const StoreShape kPool{"user/eyep.bin", 4, 43, 2, EyepiecePoolOpen,
    [] {
        WriteFileBytes("user/eyep.bin", PoolBytes(3, {{"A", 10, 50, 1}, {"B", 20, 60, 2}, {"C", 30, 70, 3}}));
    },
    {[](FILE*) { return int{EyepieceAdd("D", 40, 80) != 0}; },
     [](FILE*) { return int{EyepieceWrite(1, "D", 40, 80) != 0}; }, [](FILE*) { return EyepieceDelete(1); }}};

int CountOf(const StoreShape& s, const Bytes& b) { return b[s.countAt] | b[s.countAt + 1] << 8; }
Bytes RecordOf(const StoreShape& s, const Bytes& b, int i) {
    return Slice(b, s.header + s.record * i, s.record);
}
StoreDamage OpenDamage(const StoreShape& s) {
    StoreDamage damage = StoreDamage::kNone;
    s.open(&damage);
    return damage;
}

// One run with a call failing: whether the fault fired, the result, and the
// store file before and after.
struct Outcome {
    bool fired;
    int result;
    Bytes before, after;
    void ExpectRecordsStand(const StoreShape& s, const std::vector<int>& records) const {
        for (int i : records) EXPECT_EQ(RecordOf(s, after, i), RecordOf(s, before, i)) << i;
    }
};

// Makes the files and runs with call n = 1, 2, ... of the kind failing until
// the fault no longer fires, handing each outcome to check; returns how many
// calls could be made to fail.
template <class Run, class Check>
int EachFailingCall(const std::string& what, FileOp op, FileFault fault, const char* path,
                    const std::function<void()>& make, Run run, Check check) {
    for (int n = 1; n < 200; ++n) {
        std::filesystem::remove("ferry2.log");
        make();
        Outcome o{false, 0, ReadFileBytes(path), {}};
        {
            ScopedFault armed(op, n, fault);
            o.result = run();
            o.fired = FileFaultFired();
        }
        SCOPED_TRACE(what + (op == FileOp::kWrite ? ": write " : ": read ") + std::to_string(n) +
                     (fault == FileFault::kFail ? " fails" : " is short"));
        o.after = ReadFileBytes(path);
        check(o);
        if (!o.fired) return n - 1;
    }
    ADD_FAILURE() << what << ": the fault still fires after 200 calls";
    return 0;
}

class FaultInjectionTest : public JobTest {
protected:
    void SetUp() override {
        JobTest::SetUp();
        MakeDirs("user");
        MakeDirs("legacy");
    }
};

TEST_F(FaultInjectionTest, StoreOperationsKeepOldRecordsWhicheverCallFails) {
    const struct {
        const char* what;
        std::vector<int> untouched;  // old records that must keep their bytes
        int countAfter;              // the count when the operation succeeds
    } kinds[] = {{"add", {0, 1, 2}, 4}, {"write", {0, 2}, 3}, {"delete", {0}, 2}};
    for (const StoreShape* s : {&kLocations, &kObservers, &kInstruments, &kPool}) {
        for (int k = 0; k < 3; ++k) {
            const auto run = [s, k] {
                if (s == &kPool) return s->operations[k](nullptr);
                FilePtr f = s->open(nullptr);
                return int{f && s->operations[k](f.get())};
            };
            // The instrument store writes its header first: a failed add may leave
            // the count raised over a missing record, which the next open finds.
            const bool headerFirst = s == &kInstruments && k == 0;
            const std::string what = s->path + (" " + std::string(kinds[k].what));
            for (FileOp op : {FileOp::kWrite, FileOp::kRead}) {
                for (FileFault fault : kFaults) {
                    const int calls = EachFailingCall(what, op, fault, s->path, s->make, run,
                                                      [&](const Outcome& o) {
                        const int count = CountOf(*s, o.after);
                        EXPECT_EQ(o.result, o.fired ? 0 : 1);
                        if (o.fired) o.ExpectRecordsStand(*s, kinds[k].untouched);
                        if (!o.fired) {
                            EXPECT_EQ(count, kinds[k].countAfter);
                        } else if (headerFirst && count == 4) {
                            EXPECT_EQ(OpenDamage(*s), StoreDamage::kCountBeyondFile);
                        } else {
                            EXPECT_TRUE(count == 3 || count == kinds[k].countAfter) << count;
                            EXPECT_EQ(OpenDamage(*s), StoreDamage::kNone);
                        }
                    });
                    EXPECT_GT(calls, 0) << what;
                }
            }
        }
    }
}

TEST_F(FaultInjectionTest, ImportsAddWholeRecordsOrLeaveTheStoreMarkedDamaged) {
    // Each job runs over a store of A, B, C and adds D and E.
    const struct {
        const char* what;
        const StoreShape& shape;
        const char* legacyPath;
        Bytes legacy;
        Job job;
        size_t nameAt;  // of a stored record, for the names of new ones
    } cases[] = {
        {"location import", kLocations, "legacy/loc.bin",
         LocationFileBytes({LocationBytes("D", 0.7, 0.8, 4), LocationBytes("E", 0.9, 1.0, 0)}),
         ImportLocations, 99},
        {"instrument import", kInstruments, "legacy/instr.bin",
         LegacyInstrumentFile({LegacyInstrumentBytes("D", 1), LegacyInstrumentBytes("E", 1)}),
         ImportInstruments, 8718},
    };
    const std::vector<uint8_t> ticks = {1, 1};
    for (const auto& c : cases) {
        for (FileFault fault : kFaults) {
            const auto run = [&] { return RunJob(c.job, &ticks); };
            const auto make = [&c] {
                c.shape.make();
                WriteFileBytes(c.legacyPath, c.legacy);
            };
            const int calls = EachFailingCall(c.what, FileOp::kWrite, fault, c.shape.path, make, run,
                                              [&](const Outcome& o) {
                o.ExpectRecordsStand(c.shape, {0, 1, 2});
                const int count = CountOf(c.shape, o.after);
                if (!o.fired) {
                    EXPECT_EQ(count, 5);
                } else if (OpenDamage(c.shape) == StoreDamage::kNone) {
                    // Every record behind the old ones is one of the new ones.
                    for (int i = 3; i < count; ++i) {
                        const char name = static_cast<char>(RecordOf(c.shape, o.after, i)[c.nameAt]);
                        EXPECT_TRUE(name == 'D' || name == 'E') << i;
                    }
                } else {
                    // Only the instrument store writes its header first; the
                    // next job names the damage and adds nothing.
                    EXPECT_STREQ(c.shape.path, kInstruments.path);
                    std::filesystem::remove("ferry2.log");
                    EXPECT_EQ(RunJob(c.job, &ticks), 0);
                    EXPECT_EQ(OnlyMessage(), Error("Imported 0 of 0, 0 skipped"));
                    EXPECT_EQ(ReadFileText("ferry2.log"),
                              "Instrument: user/instr.bin is damaged "
                              "(its count promises more records than the file holds)\n");
                    EXPECT_EQ(ReadFileBytes(c.shape.path), o.after);
                    std::vector<std::string> problems;
                    EXPECT_FALSE(CheckFolders("legacy", problems));
                    EXPECT_EQ(problems, std::vector<std::string>{
                                            "user/instr.bin: damaged (its count promises more "
                                            "records than the file holds)"});
                }
            });
            EXPECT_GT(calls, 0) << c.what;
        }
    }
}

TEST_F(FaultInjectionTest, AFailedInstrumentRecordWriteIsReportedAndTheNextJobSeesTheDamage) {
    WriteFileBytes(kInstruments.path, InstrumentStoreBytes({}));
    WriteFileBytes("legacy/instr.bin", LegacyInstrumentFile({LegacyInstrumentBytes("Dob", 1)}));
    const std::vector<uint8_t> ticks = {1};
    {
        ScopedFault recordWrite(FileOp::kWrite, 2, FileFault::kFail);  // the header is the first
        EXPECT_EQ(RunJob(ImportInstruments, &ticks), 1);
    }
    EXPECT_EQ(OnlyMessage(), Plain("Imported 0 of 0, 1 skipped"));
    EXPECT_EQ(ReadFileText("ferry2.log"), "Instrument: error adding new instrument -> Dob\n");
    EXPECT_EQ(ReadFileBytes(kInstruments.path), Bytes({1, 0, 1, 0}));
    EXPECT_EQ(OpenDamage(kInstruments), StoreDamage::kCountBeyondFile);
}

TEST_F(FaultInjectionTest, AFullDiskWhileSeedingThePoolLeavesNoPoolAndTheNextImportWorks) {
    const Bytes seed = PoolBytes(1, {{"Plossl 25mm", 25.0f, 52.0f, 1}});
    WriteFileBytes("eyep.bin", seed);
    WriteFileBytes(kInstruments.path, InstrumentStoreBytes({}));
    Bytes scope = LegacyInstrumentBytes("Dob", 1);
    AddLegacySlot(scope, 0, "Plossl 25mm", 25.0, 52.0);
    WriteFileBytes("legacy/instr.bin", LegacyInstrumentFile({scope}));
    const std::vector<uint8_t> ticks = {1};
    for (FileFault fault : kFaults) {
        std::filesystem::remove("ferry2.log");
        {
            ScopedFault full(FileOp::kWrite, 1, fault);
            EXPECT_EQ(RunJob(ImportInstruments, &ticks), 0);
        }
        EXPECT_EQ(OnlyMessage(), Error("Imported 0 of 0, 0 skipped"));
        EXPECT_EQ(ReadFileText("ferry2.log"), "Instrument: error opening eyepiece pool\n");
        EXPECT_FALSE(std::filesystem::exists(kPool.path));
    }
    EXPECT_EQ(RunJob(ImportInstruments, &ticks), 1);
    EXPECT_EQ(OnlyMessage(), Plain("Imported 1 of 1, 0 skipped"));
    EXPECT_EQ(ReadFileBytes(kPool.path), seed);
}

}  // namespace
