// The user's observing locations, user/loc.bin: an i16 count, then records
// of a 132-byte Site image and a 3-byte tail, in the order the location list
// shows them. A location's identity is its name.
#pragma once

#include <cstdio>

#include "base/file_utils.h"
#include "base/store_damage.h"
#include "astro/site.h"

struct LocationTail {
    uint8_t zoneIndex = 0;  // 0 "GMT+", 1 "EST", 2 "CST", 3 "MST", 4 "PST"
    uint8_t elevationInFeet = 0;
    uint8_t tailSpare = 0;
};

struct LocationTailLayout {
    static constexpr size_t kSize = 3;
    template <class Io, class T>
    static constexpr void Fields(Io& io, T& t) {
        io.U8(0, t.zoneIndex);
        io.U8(1, t.elevationInFeet);
        io.U8(2, t.tailSpare);
    }
};
static_assert(LayoutIsPacked<LocationTailLayout, LocationTail>());

struct LocationRecord {
    Site site;
    LocationTail tail;
};

struct LocationRecordLayout {
    static constexpr size_t kSize = 135;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        NestedFields<SiteLayout>(io, 0, r.site);
        NestedFields<LocationTailLayout>(io, SiteLayout::kSize, r.tail);
    }
};
static_assert(LayoutIsPacked<LocationRecordLayout, LocationRecord>());

inline constexpr size_t kLocationRecordSize = LocationRecordLayout::kSize;

inline constexpr const char* kLocationStorePath = "user/loc.bin";
inline constexpr const char* kLocationBackupPath = "loc.bak";

// Reads one record, Site then tail, at the stream's position; 1 on success.
int LocationRecordRead(FILE* stream, Site& site, LocationTail& tail);
int LocationRecordWrite(FILE* stream, const Site& site, const LocationTail& tail);

// Opens user/loc.bin for update, making it with a count of 0 when it is
// missing. Null when it can be neither opened nor made, or when it is
// damaged; `damageOut`, when given, tells the damage.
FilePtr LocationStoreOpen(int* countOut, StoreDamage* damageOut = nullptr);

int LocationReadNext(FILE* stream, char (&nameOut)[33]);
int LocationAdd(FILE* stream, const Site& site, const LocationTail& tail);
int LocationRead(FILE* stream, int index, Site* siteOut, LocationTail* tailOut);
int LocationUpdate(FILE* stream, int index, const Site& site, const LocationTail& tail,
                   const DstRule& dstRule);
int LocationDelete(FILE* stream, int index);

// Looks for the site's name. 0: not there (or empty name); 1: there at the
// same place, and the stored record and tail are copied out; 2: the name
// stands for another place. `indexOut` is the place of the match.
int LocationFind(FILE* stream, Site* siteInOut, LocationTail* tailOut, int* indexOut);

int LocationBackup();
int LocationRestore();

// The site used when the store holds no first record.
Site LocationDefaultSite();
