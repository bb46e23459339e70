// The log's records against bytes written by hand at their offsets, the
// class slots both ways, the log keys and the file names.
#include <cstring>
#include <set>
#include <string>

#include "stores/log_records.h"
#include "stores/log_store.h"
#include "support.h"

namespace {

void PokeText(Bytes& b, size_t off, const char* text) { std::memcpy(b.data() + off, text, std::strlen(text)); }

template <class Layout, class R>
Bytes Image(const R& record) {
    const auto image = RecordImage<Layout>(record);
    return Bytes(image.begin(), image.end());
}

TEST(LogRecords, EntryHoldsItsFieldsAtTheirOffsets) {
    Site site;
    site.longitude = 1.25;
    site.dstMode = 2;
    std::strcpy(site.name, "Backyard");
    Instant instant;
    instant.jd = 2451545.25;
    ObserverRecord observer;
    std::strcpy(observer.name, "Ann");
    observer.age = 40;
    InstrumentRecord instrument;
    instrument.id = 7;
    std::strcpy(instrument.name, "Dob 8");
    ObjectRecord object = identityRecord(kClassSupplementalStar, 77);
    object.classMask = 16;
    LogEntry entry;
    entry.noteLength = 6;
    ASSERT_EQ(LogFillEntry(&entry, site, LocationTail{1, 2, 3}, instant, observer, instrument, object, "clear"), 1);

    Bytes want(9124, 0);
    want[2] = 2;
    want[4] = 'f';
    PokeF64(want, 5, 2451545.25);
    PokeF64(want, 13, 1.25);
    want[13 + 98] = 2;
    PokeText(want, 112, "Backyard");
    want[145] = 1;
    want[146] = 2;
    want[147] = 3;
    want[148] = 12;
    PokeU32(want, 149, 77);
    PokeU32(want, 153, 16);
    PokeText(want, 157, "Ann");
    PokeU32(want, 221, 40);
    PokeU16(want, 241, 7);
    PokeText(want, 8959, "Dob 8");
    PokeText(want, 8991, "clear");
    PokeU32(want, 9120, 6);
    EXPECT_EQ(Image<LogEntryLayout>(entry), want);

    // A remark of 128 characters or more fills the field with no NUL.
    const std::string longRemark(130, 'r');
    ASSERT_EQ(LogFillEntry(&entry, site, {}, instant, observer, instrument, object, longRemark.c_str()), 1);
    EXPECT_EQ(std::string(entry.remark, 128), longRemark.substr(0, 128));
    EXPECT_EQ(LogFillEntry(nullptr, site, {}, instant, observer, instrument, object, "x"), 0);
}

TEST(LogRecords, RowHoldsItsFieldsAtTheirOffsets) {
    Bytes want(9098, 0);
    PokeU32(want, 0, 9);
    want[4] = 5;
    PokeU32(want, 5, 1234);
    PokeU32(want, 9, 64);
    // The instant: three i16, then thirteen reals from 6 on in their order,
    // and 8 spare bytes last.
    PokeI16(want, 13, 3);
    PokeI16(want, 15, 5);
    PokeI16(want, 17, 2024);
    for (int i = 0; i < 13; ++i) PokeF64(want, 13 + 6 + 8 * i, 100.0 + i);
    want[123] = 0xAA;
    want[130] = 0x55;
    PokeF64(want, 131, -0.5);
    PokeText(want, 230, "Hill");
    PokeText(want, 263, "Ben");
    PokeText(want, 347 + 8718, "Refractor");
    want[9097] = 41;

    ObjectLogRow row;
    DecodeRecord<ObjectLogRowLayout>(want.data(), row);
    EXPECT_EQ(row.entryNumber, 9u);
    EXPECT_EQ(row.objectClass, 5);
    EXPECT_EQ(row.id, 1234u);
    EXPECT_EQ(row.classMask, 64u);
    EXPECT_EQ(row.instant.month, 3);
    EXPECT_EQ(row.instant.day, 5);
    EXPECT_EQ(row.instant.year, 2024);
    const double Instant::*reals[] = {&Instant::localHours, &Instant::utHours, &Instant::decimalYear,
                                      &Instant::jd, &Instant::gmst, &Instant::lmst, &Instant::last,
                                      &Instant::t, &Instant::deltaTDays, &Instant::tDyn,
                                      &Instant::meanObliquity, &Instant::nutLongitude,
                                      &Instant::nutObliquity};
    for (int i = 0; i < 13; ++i) EXPECT_EQ(row.instant.*reals[i], 100.0 + i) << i;
    EXPECT_EQ(row.site.longitude, -0.5);
    EXPECT_STREQ(row.site.name, "Hill");
    EXPECT_STREQ(row.observer.name, "Ben");
    EXPECT_STREQ(row.instrument.name, "Refractor");
    EXPECT_EQ(row.constellation, 41);
    // Written again, the spare bytes of the instant come back as read.
    EXPECT_EQ(Image<ObjectLogRowLayout>(row), want);
    // A new image of an engine Instant has them zero.
    Instant instant;
    instant.jd = 1.0;
    Bytes fresh(118, 0);
    PokeF64(fresh, 30, 1.0);
    EXPECT_EQ(Image<InstantLayout>(MakeInstantImage(instant)), fresh);
}

TEST(LogRecords, ClassSlotsBothWays) {
    struct Row {
        int slot;
        const char* name;
        uint32_t mask;
    };
    const Row rows[] = {
        {0, "constellations", 1},      {1, "major solar system", 2}, {2, "comets", 4},
        {3, "minor planets", 8},       {4, "stars", 16},             {5, "galaxies", 256},
        {6, "galaxy groups", 0x10000}, {7, "quasars", 512},          {8, "planetary nebulae", 1024},
        {9, "bright nebulae", 2048},   {10, "dark nebulae", 0x20000}, {11, "open clusters", 4096},
        {12, "globular clusters", 8192}, {13, "constellation", 32768},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        EXPECT_STREQ(ClassNameAt(r.slot), r.name);
        EXPECT_EQ(ClassMaskOfSlot(r.slot), r.mask);
        EXPECT_EQ(ClassSlotOf(r.mask), r.slot);
    }
    for (uint32_t star : {32u, 64u, 128u, 16u | 128u, 64u | 128u}) EXPECT_EQ(ClassSlotOf(star), 4) << star;
    for (uint32_t none : {0u, 16384u, 0x40000u}) EXPECT_EQ(ClassSlotOf(none), -1) << none;
    EXPECT_EQ(ClassMaskOfSlot(14), 0u);
    EXPECT_EQ(ClassMaskOfSlot(-1), 0u);
    EXPECT_EQ(ClassNameAt(14), nullptr);

    // The enumeration runs over the thirteen folders and comes round again.
    std::set<std::string> seen;
    const std::string first = ClassNameNext();
    seen.insert(first);
    for (int i = 1; i < 13; ++i) seen.insert(ClassNameNext());
    EXPECT_EQ(seen.size(), 13u);
    EXPECT_EQ(seen.count("constellation"), 0u);
    EXPECT_EQ(ClassNameNext(), first);
}

TEST(LogRecords, KeysAndFileNames) {
    struct Row {
        int objectClass;
        uint32_t id;
        uint32_t key;
    };
    const Row rows[] = {
        {kClassStar, 100, 100},
        {kClassComet, 7, 7},
        {kClassSupplementalStar, 100, 0x40000064},
        {kClassUserComet, 7, 0x40000007},
        {kClassUserMinorPlanet, 0x3FFFFFFF, 0x7FFFFFFF},
        {kClassSupplementalDeepSky, 0, 0x40000000},
    };
    for (const Row& r : rows) {
        EXPECT_EQ(logKey(r.objectClass, r.id), r.key) << r.objectClass;
        EXPECT_EQ(LogKeySplit(r.key).id, r.id);
        EXPECT_EQ(LogKeySplit(r.key).user, IsUserClass(r.objectClass));
    }
    EXPECT_EQ(LogPidPath(2), "user/log/comets/pid.bin");
    EXPECT_EQ(LogRowsPath(4, 1234, false), "user/log/stars/000001234.pix");
    EXPECT_EQ(LogRowsPath(2, 5, true), "user/log/comets/000000005s.pix");
    EXPECT_EQ(LogEntryPath(0, 0), "user/log/constellations/00000000.bin");
    EXPECT_EQ(LogEntryPath(12, 123456789), "user/log/globular clusters/123456789.bin");
    EXPECT_EQ(LogPidPath(13), "");
    EXPECT_EQ(LogRowsPath(13, 1, false), "");
    const char* folders[] = {"class", "night", "loc", "observer", "instrument", "cons"};
    for (int i = 0; i < 6; ++i) EXPECT_EQ(LogIndexFolderPath(i), std::string("user/log/") + folders[i]);
}

}  // namespace
