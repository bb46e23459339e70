// Log exchange files: entries carried from one installation to another.
//
//   ExchangeHeader of kind 6 and the description, then a run of records:
//   u32 length (strlen(note) + 1, at least 1), the 9124-byte LogEntry,
//   `length` bytes of note, the object block of a user object. A length
//   of 0 ends the run.
//
// A list exchange file carries the same run after each of its items when
// the list asks for log entries.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

#include "astro/instant.h"
#include "astro/site.h"
#include "base/file_utils.h"
#include "catalog/object_record.h"
#include "stores/exchange_header.h"

// Opens `path` ("w+b") and writes the header of kind 6 and the description.
// Null when it can't be made or written; a file begun is then removed.
FilePtr LogExportBegin(const char* path, const char* title, const char* description);

// Ends the run, writes the count into the header and records the title
// and stamp in the log's registry. 1 or 0.
int LogExportEnd(FILE* file, uint32_t count);

// Writes the run records of the object's entries (only entry `entryNumber`
// when it isn't negative), of the object as it is and of the user object a
// reference comet or minor planet resolves to, skipping entries not after
// `since` (a Julian date; null for all). Adds to `count`. 1, or 0 when an
// entry can't be read or a write fails.
int LogExportObject(FILE* file, const Site& site, const Instant& instant, const ObjectRecord& object,
                    long entryNumber, const double* since, uint32_t* count);

// Writes the run records of the object's entries and the run's end: what a
// list exchange file carries after an item. 1 or 0.
int LogExportObjectRun(FILE* file, const ObjectRecord& object);

// Which entries an export takes: empty names, a night year of -10000 or
// below and a negative constellation take no part.
struct LogExportFilter {
    std::string observer, location, instrument;
    int nightYear = -10000, nightMonth = 0, nightDay = 0;
    int constellation = -1;
};

// Every entry of every class, in slot order and index order, that passes
// the filter (null for none). The count; -1 on a failure, and the partial
// file is deleted.
long LogExportAll(const char* path, const char* title, const char* description, const LogExportFilter* filter,
                  ExchangeProgress progress, void* context);

// Reads records up to the end of the run and adds each entry, after its
// object block has made a user object again (the entry then takes that
// object's PID). A repeated entry counts as added. `recordCount` sets the
// pace of the progress calls (10 at each tenth). The count added; -1 on a
// short read or a failed add.
long LogImportRun(FILE* file, uint32_t recordCount, ExchangeProgress progress, void* context);

// Imports a log exchange file: magic, major from 2 and kind 6 required; the
// title and stamp are recorded in the registry. The count, or -1 with the
// description empty.
long LogImportFile(const char* path, ExchangeHeader* headerOut, std::string* descriptionOut,
                   ExchangeProgress progress, void* context);
