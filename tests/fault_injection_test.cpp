// Every read and write of a store operation or an import job is made to
// fail in turn, outright or half-way, and the files are checked afterwards:
// the records that stood before stand unchanged, and a store is either whole
// or reported as damaged, never extended by blank records.
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "job_support.h"
#include "legacy/import_instruments.h"
#include "legacy/import_locations.h"
#include "stores/eyepiece_pool.h"
#include "stores/instrument_store.h"
#include "stores/location_store.h"
#include "stores/observer_store.h"

namespace {

constexpr FileOp kOps[] = {FileOp::kWrite, FileOp::kRead};
constexpr FileFault kFaults[] = {FileFault::kFail, FileFault::kShort};
constexpr int kManyCalls = 200;  // far more than any operation below makes

const char* OpName(FileOp op) { return op == FileOp::kWrite ? "write" : "read"; }
const char* FaultName(FileFault f) { return f == FileFault::kFail ? "fails" : "is short"; }

// A store file: where its count stands and how big its parts are.
struct StoreShape {
    const char* path;
    size_t header;
    size_t record;
    size_t countAt;  // an i16 at 0 or a u16 at 2; both read alike while small
};
constexpr StoreShape kLocations{"user/loc.bin", 2, 135, 0};
constexpr StoreShape kObservers{"user/observer.bin", 2, 84, 0};
constexpr StoreShape kInstruments{"user/instr.bin", 4, 8750, 2};
constexpr StoreShape kPool{"user/eyep.bin", 4, 43, 2};

int CountOf(const StoreShape& s, const Bytes& b) { return b[s.countAt] | b[s.countAt + 1] << 8; }
Bytes RecordOf(const StoreShape& s, const Bytes& b, int i) {
    return Slice(b, s.header + s.record * i, s.record);
}

StoreDamage OpenDamage(const StoreShape& s) {
    const auto is = [&s](const StoreShape& t) { return std::strcmp(s.path, t.path) == 0; };
    StoreDamage damage = StoreDamage::kNone;
    if (is(kLocations)) LocationStoreOpen(nullptr, &damage);
    if (is(kObservers)) ObserverStoreOpen(nullptr, &damage);
    if (is(kInstruments)) InstrumentStoreOpen(nullptr, &damage);
    if (is(kPool)) EyepiecePoolOpen(&damage);
    return damage;
}

// Three records A, B, C in each store.
void MakeLocations() {
    WriteFileBytes(kLocations.path, LocationFileBytes({LocationBytes("A", 0.1, 0.2, 1),
                                                       LocationBytes("B", 0.3, 0.4, 2),
                                                       LocationBytes("C", 0.5, 0.6, 3)}));
}
void MakeObservers() {
    std::filesystem::remove(kObservers.path);
    FilePtr f = ObserverStoreOpen(nullptr);
    for (const char* name : {"A", "B", "C"}) {
        ObserverRecord r;
        ObserverInit(&r, name, 30 + name[0], 0.0, 0.5);
        ObserverAdd(f.get(), r);
    }
}
void MakeInstruments() { WriteFileBytes(kInstruments.path, InstrumentStoreBytes({"A", "B", "C"}, 3)); }
void MakePool() {
    WriteFileBytes(kPool.path, PoolBytes(3, {{"A", 10, 50, 1}, {"B", 20, 60, 2}, {"C", 30, 70, 3}}));
}

InstrumentRecord NamedInstrument(const char* name) {
    InstrumentRecord r;
    std::strncpy(r.name, name, sizeof r.name - 1);
    return r;
}
ObserverRecord NamedObserver(const char* name) {
    ObserverRecord r;
    ObserverInit(&r, name, 50, 0.0, 1.0);
    return r;
}

// Each operation opens its store, works, and closes it; its result.
int AddLocation() {
    FilePtr f = LocationStoreOpen(nullptr);
    return f && LocationAdd(f.get(), LocationDefaultSite(), LocationTail{});
}
int UpdateLocation() {
    FilePtr f = LocationStoreOpen(nullptr);
    return f && LocationUpdate(f.get(), 1, LocationDefaultSite(), LocationTail{}, DstRule{});
}
int DeleteLocation() {
    FilePtr f = LocationStoreOpen(nullptr);
    return f && LocationDelete(f.get(), 1);
}
int AddObserver() {
    FilePtr f = ObserverStoreOpen(nullptr);
    return f && ObserverAdd(f.get(), NamedObserver("D"));
}
int WriteObserver() {
    FilePtr f = ObserverStoreOpen(nullptr);
    return f && ObserverWrite(f.get(), 1, NamedObserver("D"));
}
int DeleteObserver() {
    FilePtr f = ObserverStoreOpen(nullptr);
    return f && ObserverDelete(f.get(), 1);
}
int AddInstrument() {
    FilePtr f = InstrumentStoreOpen(nullptr);
    InstrumentRecord r = NamedInstrument("D");
    return f && InstrumentAdd(f.get(), &r);
}
int WriteInstrument() {
    FilePtr f = InstrumentStoreOpen(nullptr);
    return f && InstrumentWrite(f.get(), NamedInstrument("D"), 1);
}
int DeleteInstrument() {
    FilePtr f = InstrumentStoreOpen(nullptr);
    return f && InstrumentDelete(f.get(), 1);
}
int AddEyepiece() { return EyepieceAdd("D", 40, 80) != 0; }
int WriteEyepiece() { return EyepieceWrite(1, "D", 40, 80) != 0; }
int DeleteEyepiece() { return EyepieceDelete(1); }

struct StoreCase {
    const char* what;
    StoreShape shape;
    void (*make)();
    int (*operation)();
    std::vector<int> untouched;  // old records that must keep their bytes
    int countAfter;              // the count when the operation succeeds
    bool headerFirst;            // a failure may leave the count raised
};

const StoreCase kStoreCases[] = {
    {"location add", kLocations, MakeLocations, AddLocation, {0, 1, 2}, 4, false},
    {"location update", kLocations, MakeLocations, UpdateLocation, {0, 2}, 3, false},
    {"location delete", kLocations, MakeLocations, DeleteLocation, {0}, 2, false},
    {"observer add", kObservers, MakeObservers, AddObserver, {0, 1, 2}, 4, false},
    {"observer write", kObservers, MakeObservers, WriteObserver, {0, 2}, 3, false},
    {"observer delete", kObservers, MakeObservers, DeleteObserver, {0}, 2, false},
    {"instrument add", kInstruments, MakeInstruments, AddInstrument, {0, 1, 2}, 4, true},
    {"instrument write", kInstruments, MakeInstruments, WriteInstrument, {0, 2}, 3, false},
    {"instrument delete", kInstruments, MakeInstruments, DeleteInstrument, {0}, 2, false},
    {"eyepiece add", kPool, MakePool, AddEyepiece, {0, 1, 2}, 4, false},
    {"eyepiece write", kPool, MakePool, WriteEyepiece, {0, 2}, 3, false},
    {"eyepiece delete", kPool, MakePool, DeleteEyepiece, {0}, 2, false},
};

class FaultInjectionTest : public JobTest {
protected:
    void SetUp() override {
        JobTest::SetUp();
        MakeDirs("user");
        MakeDirs("legacy");
    }
};

TEST_F(FaultInjectionTest, StoreOperationsKeepOldRecordsWhicheverCallFails) {
    for (const StoreCase& c : kStoreCases) {
        for (FileOp op : kOps) {
            for (FileFault fault : kFaults) {
                int calls = 0;
                for (int n = 1; n < kManyCalls; ++n) {
                    c.make();
                    const Bytes before = ReadFileBytes(c.shape.path);
                    int result;
                    bool fired;
                    {
                        ScopedFault armed(op, n, fault);
                        result = c.operation();
                        fired = FileFaultFired();
                    }
                    SCOPED_TRACE(std::string(c.what) + ": " + OpName(op) + " " +
                                 std::to_string(n) + " " + FaultName(fault));
                    const Bytes after = ReadFileBytes(c.shape.path);
                    if (!fired) {
                        EXPECT_EQ(result, 1);
                        EXPECT_EQ(CountOf(c.shape, after), c.countAfter);
                        break;
                    }
                    calls = n;
                    EXPECT_EQ(result, 0);
                    for (int i : c.untouched)
                        EXPECT_EQ(RecordOf(c.shape, after, i), RecordOf(c.shape, before, i)) << i;
                    const int count = CountOf(c.shape, after);
                    const StoreDamage damage = OpenDamage(c.shape);
                    if (c.headerFirst && count == 4) {
                        // The record under the raised count is missing.
                        EXPECT_EQ(damage, StoreDamage::kCountBeyondFile);
                    } else {
                        EXPECT_TRUE(count == 3 || count == c.countAfter) << count;
                        EXPECT_EQ(damage, StoreDamage::kNone);
                    }
                }
                EXPECT_GT(calls, 0) << c.what << " makes no " << OpName(op);
            }
        }
    }
}

// A location job over a store of A, B, C that adds D and E.
void MakeLocationJob() {
    MakeLocations();
    WriteFileBytes("legacy/loc.bin", LocationFileBytes({LocationBytes("D", 0.7, 0.8, 4),
                                                        LocationBytes("E", 0.9, 1.0, 0)}));
}
// An instrument job over a store of A, B, C that adds D and E.
void MakeInstrumentJob() {
    MakeInstruments();
    WriteFileBytes("legacy/instr.bin", LegacyInstrumentFile({LegacyInstrumentBytes("D", 1),
                                                             LegacyInstrumentBytes("E", 1)}));
}

struct JobCase {
    const char* what;
    StoreShape shape;
    void (*make)();
    int (*job)(const JobHost&);
    size_t nameAt;  // of a stored record, for the names of new ones
};
const JobCase kJobCases[] = {
    {"location import", kLocations, MakeLocationJob, ImportLocations, 99},
    {"instrument import", kInstruments, MakeInstrumentJob, ImportInstruments, 8718},
};

TEST_F(FaultInjectionTest, ImportsAddWholeRecordsOrLeaveTheStoreMarkedDamaged) {
    const std::vector<uint8_t> ticks = {1, 1};
    for (const JobCase& c : kJobCases) {
        for (FileFault fault : kFaults) {
            for (int n = 1; n < kManyCalls; ++n) {
                std::filesystem::remove("ferry2.log");
                c.make();
                const Bytes before = ReadFileBytes(c.shape.path);
                bool fired;
                {
                    ScopedFault armed(FileOp::kWrite, n, fault);
                    RunJob(c.job, &ticks);
                    fired = FileFaultFired();
                }
                SCOPED_TRACE(std::string(c.what) + ": write " + std::to_string(n) + " " +
                             FaultName(fault));
                const Bytes after = ReadFileBytes(c.shape.path);
                for (int i = 0; i < 3; ++i)
                    EXPECT_EQ(RecordOf(c.shape, after, i), RecordOf(c.shape, before, i)) << i;
                const int count = CountOf(c.shape, after);
                if (!fired) {
                    EXPECT_EQ(count, 5);
                    EXPECT_GT(n, 1);
                    break;
                }
                if (OpenDamage(c.shape) == StoreDamage::kNone) {
                    // Every record behind the old ones is one of the new ones.
                    for (int i = 3; i < count; ++i) {
                        const char name = static_cast<char>(RecordOf(c.shape, after, i)[c.nameAt]);
                        EXPECT_TRUE(name == 'D' || name == 'E') << i;
                    }
                    continue;
                }
                // Only the instrument store writes its header first; the next
                // job names the damage and adds nothing.
                EXPECT_STREQ(c.shape.path, kInstruments.path);
                std::filesystem::remove("ferry2.log");
                EXPECT_EQ(RunJob(c.job, &ticks), 0);
                EXPECT_EQ(OnlyMessage(), Error("Imported 0 of 0, 0 skipped"));
                EXPECT_EQ(ReadFileText("ferry2.log"),
                          "Instrument: user/instr.bin is damaged "
                          "(its count promises more records than the file holds)\n");
                EXPECT_EQ(ReadFileBytes(c.shape.path), after);
            }
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

    StoreDamage damage = StoreDamage::kNone;
    EXPECT_FALSE(InstrumentStoreOpen(nullptr, &damage));
    EXPECT_EQ(damage, StoreDamage::kCountBeyondFile);
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
