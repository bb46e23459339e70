// The misc pages: index.bin and page files against bytes written by hand,
// the order of names, numbers that are never handed out twice, replacing,
// the exchange file both ways, and what failing reads and writes leave.
#include <cstring>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "stores/misc_store.h"
#include "support.h"

namespace {

namespace fs = std::filesystem;
using MiscStoreTest = ScratchTest;

struct Row {
    std::string name;
    uint32_t number;
};

// u32 nextNumber, u32 count, 53-byte rows of name[49] and u32 number.
Bytes IndexBytes(uint32_t nextNumber, const std::vector<Row>& rows) {
    Bytes b(8 + 53 * rows.size(), 0);
    PokeU32(b, 0, nextNumber);
    PokeU32(b, 4, static_cast<uint32_t>(rows.size()));
    for (size_t i = 0; i < rows.size(); ++i) {
        std::memcpy(b.data() + 8 + 53 * i, rows[i].name.data(), rows[i].name.size());
        PokeU32(b, 8 + 53 * i + 49, rows[i].number);
    }
    return b;
}

// u16 55555, 2, 0, 'f', name[49], u32 strlen(text), then the text and NUL.
Bytes PageBytes(const std::string& name, const std::string& text) {
    Bytes b(58, 0);
    PokeU16(b, 0, 55555);
    b[2] = 2;
    b[4] = 'f';
    std::memcpy(b.data() + 5, name.data(), name.size());
    PokeU32(b, 54, static_cast<uint32_t>(text.size()));
    b.insert(b.end(), text.begin(), text.end());
    b.push_back(0);
    return b;
}

// A 103-byte exchange header of the kind, its description and the records.
Bytes ExchangeBytes(uint8_t kind, uint8_t major, const std::vector<Bytes>& records) {
    Bytes b(103, 0);
    PokeU16(b, 0, 55555);
    b[2] = major;
    b[4] = 'f';
    b[5] = kind;
    std::memcpy(b.data() + 6, "Spring", 6);
    PokeU32(b, 75, static_cast<uint32_t>(records.size() - 1));
    PokeU32(b, 99, 4);
    for (char c : std::string("Note")) b.push_back(static_cast<uint8_t>(c));
    b.push_back(0);
    for (const Bytes& r : records) b.insert(b.end(), r.begin(), r.end());
    return b;
}

MiscHeader Named(const char* name) {
    MiscHeader h;
    std::strncpy(h.name, name, sizeof h.name - 1);
    return h;
}

std::vector<std::string> Listed() {
    std::vector<MiscPage> pages;
    EXPECT_EQ(MiscReadAll(&pages), 1);
    std::vector<std::string> out;
    for (const MiscPage& p : pages)
        out.push_back(p.name + "#" + std::to_string(p.number) + "=" + p.text + (p.textRead ? "" : "!"));
    return out;
}

TEST_F(MiscStoreTest, PagesAndIndexAsBytesInNameOrder) {
    ASSERT_EQ(MiscAdd("Seeing", "Good"), 1);
    ASSERT_EQ(MiscAdd("aurora", "Red sky"), 1);
    ASSERT_EQ(MiscAdd("Moon", ""), 1);
    EXPECT_EQ(ReadFileBytes("user/log/misc/index.bin"),
              IndexBytes(3, {{"aurora", 1}, {"Moon", 2}, {"Seeing", 0}}));
    EXPECT_EQ(ReadFileBytes("user/log/misc/00000001.bin"), PageBytes("aurora", "Red sky"));
    EXPECT_EQ(ReadFileBytes("user/log/misc/00000002.bin"), PageBytes("Moon", ""));
    // A known name, in any case, changes nothing.
    EXPECT_EQ(MiscAdd("SEEING", "Poor"), 2);
    EXPECT_EQ(MiscAdd("", "x"), 0);
    EXPECT_EQ(ReadFileBytes("user/log/misc/00000000.bin"), PageBytes("Seeing", "Good"));
    // A long name keeps 48 characters and is found by them.
    const std::string longName(60, 'z');
    ASSERT_EQ(MiscAdd(longName.c_str(), "t"), 1);
    EXPECT_EQ(ReadFileBytes("user/log/misc/00000003.bin"), PageBytes(longName.substr(0, 48), "t"));
    EXPECT_EQ(MiscFind(longName.substr(0, 48).c_str()), 3);
}

TEST_F(MiscStoreTest, FindSearchesAHandWrittenIndex) {
    MakeDirs("user/log/misc");
    const std::vector<Row> rows = {{"Aldebaran", 7}, {"comet", 2}, {"Dew", 11}, {"log", 0},
                                   {"M31", 5},       {"seeing", 9}, {"Zodiacal", 3}};
    WriteFileBytes("user/log/misc/index.bin", IndexBytes(12, rows));
    for (const Row& r : rows) EXPECT_EQ(MiscFind(r.name.c_str()), static_cast<long>(r.number)) << r.name;
    for (const char* absent : {"", "A", "comets", "Mars", "zz"}) EXPECT_EQ(MiscFind(absent), -1) << absent;
    EXPECT_EQ(MiscFind("DEW"), 11);
    // A count the file can't hold finds nothing and adds nothing.
    Bytes damaged = IndexBytes(12, rows);
    PokeU32(damaged, 4, 8);
    WriteFileBytes("user/log/misc/index.bin", damaged);
    EXPECT_EQ(MiscFind("Dew"), -1);
    EXPECT_EQ(MiscAdd("New", "x"), 0);
    EXPECT_EQ(ReadFileBytes("user/log/misc/index.bin"), damaged);
}

TEST_F(MiscStoreTest, NumbersAreNeverReusedAndARenameGetsANewOne) {
    ASSERT_EQ(MiscAdd("Alpha", "a"), 1);
    ASSERT_EQ(MiscAdd("Beta", "b"), 1);
    ASSERT_EQ(MiscRemove(1), 1);
    EXPECT_EQ(MiscRemove(1), 0);
    EXPECT_FALSE(fs::exists("user/log/misc/00000001.bin"));
    EXPECT_EQ(ReadFileBytes("user/log/misc/index.bin"), IndexBytes(2, {{"Alpha", 0}}));
    ASSERT_EQ(MiscAdd("Beta", "b again"), 1);
    EXPECT_EQ(MiscFind("beta"), 2);

    // The same name in another spelling stays under its number.
    EXPECT_EQ(MiscReplace(0, Named("ALPHA"), "new text"), 0);
    EXPECT_EQ(ReadFileBytes("user/log/misc/00000000.bin"), PageBytes("ALPHA", "new text"));
    // Another page's name is refused; a new name moves the page.
    EXPECT_EQ(MiscReplace(0, Named("Beta"), "x"), -1);
    EXPECT_EQ(MiscReplace(7, Named("Gamma"), "x"), -1);
    EXPECT_EQ(MiscReplace(0, Named("Gamma"), "moved"), 3);
    EXPECT_FALSE(fs::exists("user/log/misc/00000000.bin"));
    EXPECT_EQ(Listed(), (std::vector<std::string>{"Beta#2=b again", "Gamma#3=moved"}));
    EXPECT_EQ(ReadFileBytes("user/log/misc/index.bin"), IndexBytes(4, {{"Beta", 2}, {"Gamma", 3}}));
}

TEST_F(MiscStoreTest, ExportAndImportGiveTheSameStore) {
    MakeDirs("one");
    MakeDirs("two");
    fs::current_path("one");
    for (const char* name : {"Dark site", "Filters", "Moon"}) ASSERT_EQ(MiscAdd(name, name), 1);
    ASSERT_EQ(MiscExport("../pages.bin", "Spring", "Note"), 3);
    const Bytes file = ReadFileBytes("../pages.bin");
    ASSERT_GT(file.size(), 103u + 5);
    EXPECT_EQ(file[5], 8);
    EXPECT_EQ(PeekU32(file, 75), 3u);
    EXPECT_EQ(Slice(file, 103, 5), (Bytes{'N', 'o', 't', 'e', 0}));
    EXPECT_EQ(Slice(file, 108, 58 + 10), PageBytes("Dark site", "Dark site"));
    EXPECT_EQ(Slice(file, file.size() - 59, 59), PageBytes("", ""));

    fs::current_path("../two");
    int calls = 0;
    ExchangeHeader header;
    std::string description;
    const auto count = [](int step, void* c) { *static_cast<int*>(c) += step; };
    ASSERT_EQ(MiscImport("../pages.bin", &header, &description, count, &calls), 3);
    EXPECT_EQ(calls, 30);
    EXPECT_STREQ(header.title, "Spring");
    EXPECT_EQ(description, "Note");
    fs::current_path("..");
    for (const char* f : {"index.bin", "00000000.bin", "00000001.bin", "00000002.bin"})
        EXPECT_EQ(ReadFileBytes(std::string("two/user/log/misc/") + f), ReadFileBytes(std::string("one/user/log/misc/") + f))
            << f;
}

TEST_F(MiscStoreTest, ImportSkipsEmptyNamesAndKeepsKnownPages) {
    ASSERT_EQ(MiscAdd("existing", "mine"), 1);
    const Bytes end = PageBytes("", "");
    WriteFileBytes("x.bin", ExchangeBytes(8, 2, {PageBytes("Alpha", "one"), PageBytes("", "orphan"),
                                                 PageBytes("Existing", "theirs"), end}));
    ExchangeHeader header;
    std::string description;
    EXPECT_EQ(MiscImport("x.bin", &header, &description, nullptr, nullptr), 1);
    EXPECT_EQ(Listed(), (std::vector<std::string>{"Alpha#1=one", "existing#0=mine"}));

    // Another kind, an older major, or a file cut short are refused.
    struct Bad {
        const char* what;
        Bytes bytes;
    };
    const Bad bad[] = {
        {"kind", ExchangeBytes(6, 2, {PageBytes("Beta", "b"), end})},
        {"major", ExchangeBytes(8, 1, {PageBytes("Beta", "b"), end})},
        {"cut", ExchangeBytes(8, 2, {PageBytes("Beta", "b")})},
    };
    for (const Bad& b : bad) {
        WriteFileBytes("bad.bin", b.bytes);
        description = "left over";
        EXPECT_EQ(MiscImport("bad.bin", &header, &description, nullptr, nullptr), -1) << b.what;
        EXPECT_EQ(description, "") << b.what;
    }
    EXPECT_EQ(MiscImport("missing.bin", &header, &description, nullptr, nullptr), -1);
}

TEST_F(MiscStoreTest, FailedReadsAndWritesLeaveThePagesThereWere) {
    struct Operation {
        const char* what;
        std::function<long()> run;
    };
    const Operation operations[] = {
        {"add", [] { return static_cast<long>(MiscAdd("Comet", "tail")); }},
        {"remove", [] { return static_cast<long>(MiscRemove(1)); }},
    };
    for (const Operation& op : operations)
        for (FileOp kind : {FileOp::kRead, FileOp::kWrite})
            for (FileFault fault : {FileFault::kFail, FileFault::kShort}) {
                int firedCount = 0;
                for (int n = 1; n < 6; ++n) {
                    SCOPED_TRACE(std::string(op.what) + " call " + std::to_string(n));
                    fs::remove_all("user");
                    ASSERT_EQ(MiscAdd("Alpha", "a"), 1);
                    ASSERT_EQ(MiscAdd("Beta", "b"), 1);
                    const Bytes index = ReadFileBytes("user/log/misc/index.bin");
                    const std::vector<std::string> before = Listed();
                    long result = 0;
                    bool fired = false;
                    {
                        ScopedFault armed(kind, n, fault);
                        result = op.run();
                        fired = FileFaultFired();
                    }
                    firedCount += fired ? 1 : 0;
                    if (fired) {
                        EXPECT_EQ(result, 0);
                        EXPECT_EQ(ReadFileBytes("user/log/misc/index.bin"), index);
                        EXPECT_EQ(Listed(), before);
                        EXPECT_FALSE(fs::exists("user/log/misc/00000002.bin"));
                    } else {
                        EXPECT_EQ(result, 1);
                    }
                    for (const auto& e : fs::directory_iterator("user/log/misc"))
                        EXPECT_NE(e.path().extension(), ".new") << e.path();
                }
                EXPECT_GT(firedCount, 0) << op.what;
            }
}

}  // namespace
