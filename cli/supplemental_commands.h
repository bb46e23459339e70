// What the command lines of the user's star and deep-sky stores share: the
// list, the text import with its progress bar and counts, the delete by PID, the
// compaction, and the printing of a stored name.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/file_utils.h"
#include "catalog/delete_cascade.h"
#include "catalog/supplemental_store.h"

// One store's operations and words.
struct SupplementalCommands {
    const char* path;   // the data file, for the error lines
    const char* noun;   // "star", "deep-sky object"
    const char* label;  // of the progress bar
    int (*beginImport)(SupplementalImport*, const char*, int);
    int (*nextImportBatch)(SupplementalImport*, long*, long*, long*);
    void (*endImport)(SupplementalImport*);
    FilePtr (*open)(long*);
    FilePtr (*openForReading)(long*);
    // Prints the record of a row as one line of the list; 0 when it can't
    // be read.
    int (*printRow)(FILE*, long row);
    bool (*holds)(FILE*, uint32_t pid);
    int (*deleteByPid)(FILE*, uint32_t, const DeleteCascade&);
    int (*compact)(FilePtr&, const std::vector<uint8_t>&, const DeleteCascade&);
    long (*lastPid)(FILE*);  // the last PID issued, -1 when the head can't be read
};

// Each answers the exit status: 0 done, 1 failed.
int RunSupplementalList(const SupplementalCommands& store);
int RunSupplementalAdd(const SupplementalCommands& store, const std::string& file);
int RunSupplementalDelete(const SupplementalCommands& store, unsigned long pid);
int RunSupplementalCompact(const SupplementalCommands& store);

// A name field as a list prints it: escaped, and UTF-8 on POSIX.
std::string SupplementalNameShown(const char (&name)[33]);
