// The log's six secondary indexes under user/log: for each key of a member
// (a class slot, a night, an observer, an instrument, a location, a
// constellation) one .idx file listing the objects logged under it, and
// one .bin file of free commentary on the key.
//
// Index file:  u32 rowCount, then 12-byte rows: u32 logKey, u32 classSlot,
//              u32 entryNumber; sorted by classSlot, then logKey, both as
//              signed values; an object stands once per file, with the
//              number of the last entry that put it there. Rows past
//              rowCount mean nothing.
// Commentary:  u32 length (strlen + 1, 0 for none), then the text.
//
// The file names of the members differ in how they take a name: the
// observer's stands as it is, the instrument's is escaped in both files,
// the location's in its .idx only. Existing folders are named so. A name
// that would lead such a path out of its folder (holding '/' or '\', being
// "." or "..", or starting with a drive letter and a colon) gives no path:
// the file is then refused as one that can't be opened.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "base/file_utils.h"
#include "base/record_layout.h"
#include "catalog/constellation_files.h"
#include "catalog/object_record.h"

// The members, as bits of a commentary exchange's mask and of its records'
// kind.
enum IndexMember : uint16_t {
    kIndexClass = 1,
    kIndexNight = 2,
    kIndexObserver = 4,
    kIndexLoc = 8,
    kIndexInstrument = 16,
    kIndexCons = 32,
};
inline constexpr uint16_t kIndexAllMembers = 63;

// The key of one index file; which fields count depends on the member.
struct IndexKey {
    IndexMember member = kIndexClass;
    int number = 0;  // class slot, or constellation code 0 to 88
    int year = 0, month = 0, day = 0;  // a night
    std::string name;  // observer, instrument, location
};

IndexKey IndexClassKey(int slot);
IndexKey IndexNightKey(int year, int month, int day);
IndexKey IndexObserverKey(const char* name);
IndexKey IndexInstrumentKey(const char* name);
IndexKey IndexLocKey(const char* name);
IndexKey IndexConsKey(int code);

// The .idx (or with `commentary` the .bin) path of a key, relative to the
// data folder. Empty for a key that has no file: an empty name, a
// constellation code out of 0 to 88, a class slot out of 0 to 13, a name
// that would leave the folder.
std::string IndexPath(const IndexKey& key, bool commentary);

struct IndexRow {
    uint32_t logKey = 0;
    uint32_t classSlot = 0;
    uint32_t entryNumber = 0;
};

struct IndexRowLayout {
    static constexpr size_t kSize = 12;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U32(0, r.logKey);
        io.U32(4, r.classSlot);
        io.U32(8, r.entryNumber);
    }
};
static_assert(LayoutIsPacked<IndexRowLayout, IndexRow>());

inline constexpr long kIndexHead = 4;

// Opens the key's index for reading and writing, making it with a row
// count of 0 when it is missing; gives the count. Null for a key without a
// path, or a file that can't be opened, made or read.
FilePtr IndexOpen(const IndexKey& key, uint32_t* rowCountOut);
// The same, one per member.
FilePtr IndexOpenClass(int slot, uint32_t* rowCountOut);
FilePtr IndexOpenNight(int year, int month, int day, uint32_t* rowCountOut);
FilePtr IndexOpenObserver(const char* name, uint32_t* rowCountOut);
FilePtr IndexOpenInstrument(const char* name, uint32_t* rowCountOut);
FilePtr IndexOpenLoc(const char* name, uint32_t* rowCountOut);
FilePtr IndexOpenCons(int code, uint32_t* rowCountOut);

// Deletes the key's index file when its count is below 1; silent on any
// failure. The class files stay even when empty: nothing happens for them.
void IndexDropIfEmpty(const IndexKey& key);

// Compares the key pair with row `row` of the file: 0 equal (or a failed
// read), -1 when the row sorts above the key, 1 when below.
int IndexCompare(int classSlot, uint32_t logKey, FILE* file, long row);

// The row of the object, -1 for an empty file or no such row, -2 when the
// count can't be read. Gives the count.
long IndexFind(FILE* file, int classSlot, uint32_t logKey, uint32_t* rowCountOut);

// Puts the object in (or sets its row's entry number when it stands
// already). 0 on failure, with the rows as they were.
int IndexPut(FILE* file, const ObjectRecord& object, uint32_t entryNumber);
// Takes the object's row out; the rows above move down one place. 0 when
// it isn't there or on failure.
int IndexRemove(FILE* file, const ObjectRecord& object);

// Row `row` of the file, with bit 30 taken off the key: 1 for a reference
// object, 2 for a user object, 0 on failure.
int IndexReadRow(FILE* file, long row, IndexRow* rowOut);

// A walk over the .idx files of one member's folder.
struct IndexEnum {
    IndexMember member = kIndexClass;
    std::vector<std::string> names;  // the folder's .idx files
    size_t next = 0;
};

// One item of the walk; which fields are filled depends on the member.
struct IndexItem {
    int number = 0;  // class slot or constellation code
    int year = 0, month = 0, day = 0;
    std::string text;  // class: folder name; night: "%4d %3.3s %2d";
                       // observer, instrument, location: the name;
                       // cons: the constellation's name (long or short)
};

// 1 an item, 0 the end, -1 a file whose name doesn't parse (the walk goes
// on with the next call). A class file without rows is skipped. `longNames`
// asks for the constellations' long names.
int IndexFirst(IndexEnum* walk, IndexMember member, IndexItem* item, bool longNames = false);
int IndexNext(IndexEnum* walk, IndexItem* item, bool longNames = false);

// Commentary. Opens the key's .bin for reading and writing, making the
// folder and a file with a zero length when missing; rewound. Null for a
// key without a path.
FilePtr CommentOpen(const IndexKey& key);
// The text; a length of 0 or less gives an empty string. 0 on failure.
int CommentRead(FILE* file, std::string* textOut);
// Writes the length (a negative one as 0) and then the text. 1 or 0.
int CommentWrite(FILE* file, const char* text, long length);
// Adds the text after one blank unless the old text holds it already
// (case-sensitive, leading blanks of the new text not counted): 1 added,
// 2 already there, 0 failure. The new length is strlen + 1 of the merged
// text, but only `size` bytes of it are written.
int CommentAppend(FILE* file, const char* text, size_t size);

// One record of a commentary exchange file; its text (length + 1 bytes)
// follows.
struct CommentRecord {
    uint16_t kind = 0;  // an IndexMember; 0 ends the run
    uint32_t length = 0;  // strlen(text) + 1
    char keyText[128] = {};
};

struct CommentRecordLayout {
    static constexpr size_t kSize = 134;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.U16(0, r.kind);
        io.U32(2, r.length);
        io.Text(6, r.keyText);
    }
};
static_assert(LayoutIsPacked<CommentRecordLayout, CommentRecord>());
