// The commentary of the log's indexes packed into one exchange file (kind
// 7), and unpacked again into another installation's index folders.
//
// The file: the exchange header and the description, then for each member
// in the mask, in the order of its bit, one CommentRecord per key whose
// commentary is not empty, each followed by `length` + 1 bytes: the text,
// its NUL and one more NUL. A record of kind 0 and length 0, followed by
// its single NUL, closes the run.
#pragma once

#include <cstdint>
#include <string>

#include "stores/exchange_header.h"
#include "stores/log_index.h"

// Writes the commentary of every key that has an index file in the masked
// members; fills the record count and remembers the title and stamp in the
// log's registry. The number of records, or -1, with no file left behind.
int CommentExport(uint16_t mask, const char* path, const char* title, const char* description);

// Adds one record's text to its key's commentary: the answer of
// CommentAppend (1 added, 2 already there), 0 for a key that doesn't parse,
// an empty text or a failure.
int CommentImportRecord(const CommentRecord& record, const char* text);

// Reads a commentary exchange file into the index folders: the number of
// records added, or -1 for a file that can't be opened, isn't one, or ends
// before its closing record. The registry remembers the file's title and
// stamp at the end.
int CommentImport(const char* path, ExchangeHeader* headerOut, std::string* descriptionOut,
                  ExchangeProgress progress, void* context);
