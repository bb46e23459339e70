// Moves every version 1.x log entry into the Vesperal 2 log store. There
// is no tick list: the job walks the twelve class index files and their
// chains of entry files in order. Each entry names its observer and
// instrument by text; the names go through the Logs page's links and then
// the stores. The object is resolved as the observing-list import does,
// placed for the entry's own site and moment. An entry the job can't take
// leaves a report block in ferry2.log.
#pragma once

#include <cstdio>
#include <string>

#include "astro/instant.h"
#include "legacy/job_host.h"
#include "legacy/legacy_logs.h"
#include "stores/observer_store.h"

// Looks through the open observer store, from its count on, for the first
// stored name that is a prefix of `name` (PrefixMatch, ignoring case) and
// copies that record out. 1 on a match; 0 for none, a read failure or an
// empty name.
int FindObserverByPrefix(FILE* stream, const char* name, ObserverRecord* recordOut);

// Writes the block that tells of an entry not imported. The date and
// clock come from `instant` as the caller has it, filled for this entry or
// not; the observer is the name as the job cleaned it. The target's name
// line is written only when the object of the entry's class and PID has a
// display name.
void ReportEntryNotImported(FILE* log, const LegacyLogEntry& entry, const Instant& instant,
                            const char* cleanedName, const std::string& note);

// The job. 1 when all twelve slots were walked, 0 when it had to stop;
// either way one message with the counts is shown, and the entries added
// stay. An entry the store already holds counts as imported.
int ImportLogs(const JobHost& host);
