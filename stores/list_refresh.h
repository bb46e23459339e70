// The walk that brings a list's computed columns up to date when the list
// is shown. The item file's header says for which instant and site the rows
// were last placed: when they are the ones asked for, the rows' values
// stand and only rows marked for redoing are placed again; otherwise every
// row is. Each call takes the rows up to the next one that passes the
// filter, so that the display fills as the walk goes.
#pragma once

#include <cstdint>

#include "astro/instant.h"
#include "astro/site.h"
#include "base/file_utils.h"
#include "catalog/object_record.h"

// Which rows pass. Magnitude limits of 90 and above are none.
struct ListFilter {
    uint32_t classMask = 0xFFFFFFFFu;  // display classes, as classMaskOf gives them
    double magnitudeLimit = 99.0;      // a row fainter than this fails
    bool tickedOnly = false;
};

// Whether an object has log entries. The log store's presence table is not
// there yet: until it comes the walk is handed this function, or null, and
// a null one counts every object as without entries.
using ListHasLogEntries = bool (*)(int objectClass, uint32_t pid, void* context);

struct ListRefresh {
    FilePtr items;
    int slot = -1;
    int itemCount = 0;
    int index = 0;           // the next row
    bool recompute = false;  // every row is placed again
    Site site;
    Instant instant;
    ListFilter filter;
    const int* cancel = nullptr;  // a nonzero value ends the walk
    ListHasLogEntries hasLogEntries = nullptr;
    void* logContext = nullptr;
};

// Opens the list's items and compares the header with the instant's
// dynamical time and the site's longitude, latitude, height, zone and
// summer-time mode. When one differs, or the header is stale, the header
// takes the present values and every row will be placed again. 1, or 0 when
// the list can't be opened or its header read or written.
int ListRefreshBegin(ListRefresh* walk, int slot, const Site& site, const Instant& instant,
                     const ListFilter& filter, const int* cancel, ListHasLogEntries hasLogEntries,
                     void* logContext);

// Works through rows until one passes the filter: its index + 1. 0 at the
// end or when the cancel flag is set, -1 when a row can't be read or
// written. A walk that places every row and stops before the end marks the
// header stale again, so that the rows it did not reach are placed next
// time.
//
// For each row: the log-entry flag (bit 7 of the component byte) is set
// from the log store; a row that takes no part in the walk (filterPassed
// 255) goes no further; the row is placed again when every row is, or when
// it is marked for redoing; then the filter. A row is written back, with
// its redo mark cleared, only when it changed. Rise and set are left as
// the row has them.
int ListRefreshStep(ListRefresh* walk);

// Closes the items. 1, or 0 when the close failed.
int ListRefreshEnd(ListRefresh* walk);
