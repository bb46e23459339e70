// Orbit lists into the user's minor-planet store: the fixed columns of
// Lowell's list ("Bowell" format) and "MP " lines. An import runs in
// batches so that a caller can move a progress meter between them; at its
// end the store is sorted.
#pragma once

#include <cstdint>

#include "base/file_utils.h"
#include "catalog/user_minor_planets.h"

enum class MpTextFormat { kBowell, kMp };

// The line counts of an import batch that has no estimate of the file's
// lines: the remaining-lines field holds this marker.
inline constexpr long kMpLinesUnknown = -45253;

// What one line says: 1 a record, 0 a bad line, -1 a line that isn't
// counted (not a data line, or unnumbered when only numbered objects are
// wanted).
int parseBowellLine(const char* line, bool numberedOnly, UserMpRecord* out);
int parseMpLine(const char* line, bool numberedOnly, UserMpRecord* out);

struct MpImportState {
    FilePtr text;
    FilePtr store;
    uint32_t count = 0;
    MpTextFormat format = MpTextFormat::kBowell;
    bool numberedOnly = false;
    long linesPerBatch = 1;
    long totalLines = 0;      // the estimate, or kMpLinesUnknown
    long remainingLines = 0;  // estimate less the lines read, or kMpLinesUnknown
    long linesRead = 0;
    long added = 0, replaced = 0, unchanged = 0, bad = 0;
};

// Opens the text and the store and estimates the lines: the file's length
// over the first line's length plus two (CR and LF). `steps` is the wanted
// number of batches. 1, or 0 when either file can't be opened.
int beginMpImport(MpImportState* state, const char* path, MpTextFormat format, bool numberedOnly,
                  long steps);

// Reads one batch of lines into the store. 1 at a batch's end, 0 at the end
// of the file (the store then sorted), -1 when a write failed or the sort
// did (the counts so far stand).
int nextMpImportBatch(MpImportState* state);

// Closes both files and drops the derived index files.
void endMpImport(MpImportState* state);
