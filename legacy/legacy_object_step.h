// The object of a version 1.x row (a list row or a log entry) as a version 2
// ObjectRecord. Catalogue objects keep their class and PID. The user's own
// stars, comets and minor planets are copied into the version 2 stores
// first, and the record takes the PID they get there; a star the reference
// catalogues know by its name becomes that catalogue object.
//
// The list import and the log import share this step. They differ in the
// frame the catalogue search places a star for (the list import's fixed
// one, or the log entry's own site and moment) and in the lines they log
// (the list import's name the row's place, the log import's are short).
#pragma once

#include <cstdint>

#include "astro/instant.h"
#include "astro/site.h"
#include "catalog/object_record.h"
#include "catalog/user_stars.h"
#include "legacy/job_host.h"

// A row that has found no object keeps this PID.
inline constexpr uint32_t kNoObjectPid = 0xFFFFFFFFu;

// What a version 1.x row says of its object.
struct LegacyObjectRef {
    uint8_t objectClass = 0;  // the codes of ObjectClass
    uint32_t pid = 0;         // the version 1.x PID
    uint8_t sizeUnit = 0;     // goes to the record as it stands
};

// The lines the step logs when it skips a row, one per reason. Each is a
// printf format that may use the row's place (a string and two numbers, in
// that order) or nothing of it.
struct ObjectStepTexts {
    const char* openLegacyStars;
    const char* findLegacyStar;
    const char* openStars;
    const char* openLegacyComets;
    const char* openComets;
    const char* openLegacyMinorPlanets;
    const char* openMinorPlanets;
    const char* unknownClass;
    const char* noPid;
};

// Where the row stands, for the lines that name it.
struct ObjectRowPlace {
    const char* name = "";
    int row = 0;
    int count = 0;
};

// One job's use of the step. The star buffer lives as long as the job: a
// star the PID map can't find goes on with whatever the buffer last held,
// as the old program did.
struct ObjectStepFrame {
    const JobHost* host = nullptr;
    const ObjectStepTexts* texts = nullptr;
    Site* site = nullptr;  // where and when the catalogue search places a star
    Instant* instant = nullptr;
    StellarRecord* starBuffer = nullptr;
};

// Fills `record` with the row's object: 1, or 0 when the row is skipped,
// the reason then logged. A catalogue class (anything not of the user's
// stores, class 0 included) takes the row's PID as it stands. A user class
// other than star, comet and minor planet is skipped, and so is a row that
// found no PID. The run readers of comet.bin and mp.bin stop at the file's
// own record count.
int LegacyObjectRecord(const ObjectStepFrame& frame, const ObjectRowPlace& at, const LegacyObjectRef& ref,
                       ObjectRecord* record);
