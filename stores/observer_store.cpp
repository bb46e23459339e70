#include "stores/observer_store.h"

#include <cmath>
#include <cstring>

#include "base/prefix_match.h"
#include "base/counted_file.h"

namespace {
// Eye data closer than this is the same.
constexpr double kEyeTolerance = 0.01;
}  // namespace

double ComputePupilDiameter(double age) {
    const double x = 0.01 * age;
    return 7.0 * std::exp(-0.5 * x * x);
}

void ObserverInit(ObserverRecord* recordOut, const char* name, int age, double pupilDiameter,
                  double experience) {
    *recordOut = ObserverRecord{};
    std::strncpy(recordOut->name, name ? name : "", sizeof recordOut->name - 1);
    recordOut->age = age;
    recordOut->pupilDiameter = pupilDiameter > 0.0 ? pupilDiameter : ComputePupilDiameter(age);
    recordOut->experience = experience;
}

FilePtr ObserverStoreOpen(int* countOut, StoreDamage* damageOut) {
    return CountedOpen(kObserverStorePath, ObserverRecordLayout::kSize, countOut, damageOut);
}

int ObserverReadNextName(FILE* stream, char (&nameOut)[64]) {
    ObserverRecord r;
    if (!ReadRecord<ObserverRecordLayout>(stream, r)) return 0;
    std::memcpy(nameOut, r.name, sizeof nameOut);
    nameOut[sizeof nameOut - 1] = '\0';
    return 1;
}

int ObserverAdd(FILE* stream, const ObserverRecord& record) {
    return CountedAdd<ObserverRecordLayout>(stream, record);
}

int ObserverRead(FILE* stream, int index, ObserverRecord* recordOut) {
    return recordOut ? CountedRead<ObserverRecordLayout>(stream, index, *recordOut) : 0;
}

int ObserverWrite(FILE* stream, int index, const ObserverRecord& record) {
    return CountedWrite<ObserverRecordLayout>(stream, index, record);
}

int ObserverDelete(FILE* stream, int index) {
    return CountedDelete<ObserverRecordLayout, ObserverRecord>(stream, index);
}

int ObserverFind(FILE* stream, ObserverRecord* recordInOut, int* indexOut) {
    *indexOut = 0;
    if (recordInOut->name[0] == '\0') return 0;
    int count = 0;
    if (!CountedReadCount(stream, &count)) return 0;
    char given[sizeof recordInOut->name];
    std::memcpy(given, recordInOut->name, sizeof given);
    given[sizeof given - 1] = '\0';
    while (*indexOut < count) {
        ObserverRecord stored;
        if (!ReadRecord<ObserverRecordLayout>(stream, stored)) break;
        stored.name[sizeof stored.name - 1] = '\0';
        if (!PrefixMatch(stored.name, given)) {
            ++*indexOut;
            continue;
        }
        if (std::fabs(stored.experience - recordInOut->experience) >= kEyeTolerance) return 2;
        if (std::fabs(stored.pupilDiameter - recordInOut->pupilDiameter) >= kEyeTolerance) return 2;
        *recordInOut = stored;
        return 1;
    }
    return 0;
}

int ObserverBackup() {
    return CountedCopyFile<ObserverRecordLayout, ObserverRecord>(kObserverStorePath, kObserverBackupPath);
}

int ObserverRestore() {
    return CountedCopyFile<ObserverRecordLayout, ObserverRecord>(kObserverBackupPath, kObserverStorePath);
}
