// The people who observe, user/observer.bin: an i16 count, then 84-byte
// records in the order of the observer list. No identifiers: an observer is
// found by name and eye data.
#pragma once

#include <cstdint>
#include <cstdio>

#include "base/file_utils.h"
#include "base/record_layout.h"
#include "base/store_damage.h"

struct ObserverRecord {
    char name[64] = {};          // at most 63 characters
    int32_t age = 0;             // years
    double pupilDiameter = 0;    // millimetres
    double experience = 0;       // 0, 0.25, 0.5, 0.75 or 1
};

struct ObserverRecordLayout {
    static constexpr size_t kSize = 84;
    template <class Io, class R>
    static constexpr void Fields(Io& io, R& r) {
        io.Text(0, r.name);
        io.I32(64, r.age);
        io.F64(68, r.pupilDiameter);
        io.F64(76, r.experience);
    }
};
static_assert(LayoutIsPacked<ObserverRecordLayout, ObserverRecord>());

inline constexpr const char* kObserverStorePath = "user/observer.bin";
inline constexpr const char* kObserverBackupPath = "user/observer.bak";
inline constexpr const char* kDefaultObserverName = "Default Observer";

// The eye's pupil at full dark adaptation: 7.0 * exp(-0.5 * (0.01 age)^2) mm.
double ComputePupilDiameter(double age);

// Fills a record; a pupil diameter of 0 or below is computed from the age.
// The name is cut to 63 characters.
void ObserverInit(ObserverRecord* recordOut, const char* name, int age, double pupilDiameter,
                  double experience);

// Opens user/observer.bin for update, making it empty when it is missing.
// Null when it can be neither opened nor made, or when it is damaged;
// `damageOut`, when given, tells the damage.
FilePtr ObserverStoreOpen(int* countOut, StoreDamage* damageOut = nullptr);
int ObserverReadNextName(FILE* stream, char (&nameOut)[64]);
int ObserverAdd(FILE* stream, const ObserverRecord& record);
int ObserverRead(FILE* stream, int index, ObserverRecord* recordOut);
int ObserverWrite(FILE* stream, int index, const ObserverRecord& record);
int ObserverDelete(FILE* stream, int index);

// 0: no stored name is a prefix of the given one (or the given name is
// empty); 1: found with the same eye data, and the stored record is copied
// over the given one; 2: found with other eye data. The first match decides.
int ObserverFind(FILE* stream, ObserverRecord* recordInOut, int* indexOut);

int ObserverBackup();
int ObserverRestore();
