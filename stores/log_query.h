// A query of the log: which objects have an entry in a date range, in the
// selected classes and constellations, by one of the selected observers,
// at one of the selected locations, with one of the selected instruments.
//
// Only an object's first row decides: the walk over its rows stops at the
// first row, whether it passes or not, so a later row that would pass
// never counts. Callers of the log live with that narrow rule.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "stores/log_index.h"
#include "stores/log_records.h"

inline constexpr uint8_t kLogNotSelected = 255;
// A selected name keeps 64 characters.
inline constexpr size_t kLogQueryNameChars = 64;

struct LogQuery {
    // One byte per candidate: kLogNotSelected, or the candidate's code.
    uint8_t classes[kLogClassSlots];
    uint8_t constellations[kConstellationZones];
    std::vector<std::string> observers, locations, instruments;
    int startYear = 0, startMonth = 0, startDay = 0;
    int endYear = 0, endMonth = 0, endDay = 0;
};

// One object that passed.
struct LogQueryHit {
    uint8_t objectClass = 0;
    uint32_t logKey = 0;
    uint32_t classMask = 0;
};

// Nothing selected, no names, the range empty.
void LogQueryInit(LogQuery* query);
void LogQueryFree(LogQuery* query);
// Adds a name to a selection, cut to 64 characters.
void LogQuerySelectName(std::vector<std::string>* names, const char* name);

// Appends the objects that pass to `hits`, class by class in slot order.
// 1 when at least one did; 0 when none did, or when a name list is empty
// or no class or no constellation is selected.
int LogQueryRun(const LogQuery& query, std::vector<LogQueryHit>* hits);
