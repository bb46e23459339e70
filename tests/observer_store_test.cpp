#include <cstring>

#include "base/prefix_match.h"
#include "stores/observer_store.h"
#include "support.h"

namespace {

// An 84-byte observer written by hand at the documented offsets.
Bytes ObserverBytes(const std::string& name, int32_t age, double pupil, double experience) {
    Bytes b(84, 0);
    std::memcpy(b.data(), name.data(), name.size());
    std::memcpy(&b[64], &age, 4);
    PokeF64(b, 68, pupil);
    PokeF64(b, 76, experience);
    return b;
}

Bytes ObserverFile(const std::vector<Bytes>& records, int count = -1) {
    Bytes out(2, 0);
    PokeI16(out, 0, static_cast<int16_t>(count < 0 ? records.size() : count));
    for (const Bytes& r : records) out.insert(out.end(), r.begin(), r.end());
    return out;
}

class ObserverStoreTest : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        MakeDirs("user");
    }
    static ObserverRecord Decoded(const Bytes& record) {
        ObserverRecord r;
        DecodeRecord<ObserverRecordLayout>(record.data(), r);
        return r;
    }
};

TEST(PrefixMatch, TheStoredNameIsThePrefix) {
    EXPECT_TRUE(PrefixMatch("Mar", "Mark Twain"));
    EXPECT_FALSE(PrefixMatch("Mark Twain", "Mar"));
    EXPECT_TRUE(PrefixMatch("mark", "MARK"));
    EXPECT_FALSE(PrefixMatch("Ann ", "Ann"));  // trailing blanks count
    EXPECT_FALSE(PrefixMatch(" Ann", "Ann"));
    EXPECT_TRUE(PrefixMatch("*x", "anyone"));
    EXPECT_TRUE(PrefixMatch("*", ""));
    EXPECT_TRUE(PrefixMatch("", "anyone"));
}

TEST(ObserverRecordImage, FieldsAtTheirOffsetsAndThePupilFromTheAge) {
    ObserverRecord r;
    ObserverInit(&r, "Ann", 40, 6.5, 0.5);
    const auto image = RecordImage<ObserverRecordLayout>(r);
    EXPECT_EQ(Bytes(image.begin(), image.end()), ObserverBytes("Ann", 40, 6.5, 0.5));

    EXPECT_NEAR(ComputePupilDiameter(40), 6.46, 0.005);
    EXPECT_NEAR(ComputePupilDiameter(0), 7.0, 1e-12);
    ObserverInit(&r, kDefaultObserverName, 40, 0.0, 0.5);
    EXPECT_STREQ(r.name, "Default Observer");
    EXPECT_DOUBLE_EQ(r.pupilDiameter, ComputePupilDiameter(40));
    ObserverInit(&r, std::string(80, 'n').c_str(), 20, -1.0, 0.0);
    EXPECT_EQ(std::strlen(r.name), 63u);
    EXPECT_DOUBLE_EQ(r.pupilDiameter, ComputePupilDiameter(20));
}

TEST_F(ObserverStoreTest, FindByPrefixThenEyeData) {
    const Bytes ann = ObserverBytes("Ann", 40, 6.5, 0.5), bob = ObserverBytes("Bob", 30, 7.0, 0.25);
    const struct {
        std::vector<Bytes> records;
        int16_t count;
        const char* name;
        double pupil, experience;
        int result, index;
    } cases[] = {
        {{bob, ann}, 2, "Ann", 6.5 + 0.009, 0.5 - 0.009, 1, 1},  // inside the tolerance
        {{bob, ann}, 2, "ann", 6.5, 0.75, 2, 1},                  // other experience
        {{bob, ann}, 2, "Ann", 6.4, 0.5, 2, 1},                   // other pupil
        {{bob, ann}, 2, "Carl", 6.5, 0.5, 0, 2},
        {{bob, ann}, 2, "", 6.5, 0.5, 0, 0},
        {{bob, ann}, 1, "Ann", 6.5, 0.5, 0, 1},  // a stale record past the count
        // The first matching record decides, even with other eye data.
        {{ObserverBytes("*club", 30, 7.0, 0.25), ann}, 2, "Ann", 6.5, 0.5, 2, 0},
        {{ObserverBytes("", 30, 7.0, 0.25)}, 1, "Zed", 7.0, 0.25, 1, 0},
        // A short stored name catches a long given name, not the reverse.
        {{ObserverBytes("Jo", 30, 7.0, 0.25)}, 1, "Joanna Smith", 7.0, 0.25, 1, 0},
        {{ObserverBytes("Joanna Smith", 30, 7.0, 0.25)}, 1, "Jo", 7.0, 0.25, 0, 1},
    };
    for (const auto& c : cases) {
        WriteFileBytes("user/observer.bin", ObserverFile(c.records, c.count));
        int count = 0, index = -1;
        FilePtr f = ObserverStoreOpen(&count);
        ObserverRecord found;
        ObserverInit(&found, c.name, 40, c.pupil, c.experience);
        EXPECT_EQ(ObserverFind(f.get(), &found, &index), c.result) << c.name;
        EXPECT_EQ(index, c.index) << c.name;
        if (c.result == 1) {  // the stored record comes back
            EXPECT_EQ(RecordImage<ObserverRecordLayout>(found),
                      RecordImage<ObserverRecordLayout>(Decoded(c.records[c.index])));
        }
    }
}

TEST_F(ObserverStoreTest, RecordsAreAddedWrittenAndDeletedInPlace) {
    const Bytes a = ObserverBytes("A", 1, 1, 0), b = ObserverBytes("B", 2, 2, 0.25),
                c = ObserverBytes("C", 3, 3, 0.5);
    {
        int count = -1;
        FilePtr f = ObserverStoreOpen(&count);
        ASSERT_EQ(count, 0);
        ObserverRecord r;
        EXPECT_EQ(ObserverRead(f.get(), 0, &r), 0);  // a fresh file has no first observer
        for (const Bytes* x : {&a, &b, &c}) {
            DecodeRecord<ObserverRecordLayout>(x->data(), r);
            ASSERT_EQ(ObserverAdd(f.get(), r), 1);
        }
        DecodeRecord<ObserverRecordLayout>(a.data(), r);
        r.age = 99;
        ASSERT_EQ(ObserverWrite(f.get(), 2, r), 1);
        EXPECT_EQ(ObserverWrite(f.get(), 3, r), 0);
        ASSERT_EQ(ObserverDelete(f.get(), 0), 1);
    }
    const Bytes changed = ObserverBytes("A", 99, 1, 0);
    EXPECT_EQ(ReadFileBytes("user/observer.bin"), ObserverFile({b, changed, changed}, 2));

    int count = 0;
    FilePtr f = ObserverStoreOpen(&count);
    char name[64];
    ASSERT_EQ(ObserverReadNextName(f.get(), name), 1);
    EXPECT_STREQ(name, "B");
}

TEST_F(ObserverStoreTest, BackupLiesUnderUser) {
    WriteFileBytes("user/observer.bin", ObserverFile({ObserverBytes("A", 1, 1, 0)}));
    ASSERT_EQ(ObserverBackup(), 1);
    EXPECT_EQ(ReadFileBytes("user/observer.bak"), ObserverFile({ObserverBytes("A", 1, 1, 0)}));
}

}  // namespace
