// What the catalog verb's lookups share: their exit statuses, the lines
// they write to standard error, and the printing of the numbers found.
#pragma once

#include <string>

inline constexpr int kCatalogFound = 0;
inline constexpr int kCatalogNone = 1;
inline constexpr int kCatalogUsage = 2;

// "ferry2-cli catalog: WHY" on standard error; the usage status.
int CatalogUsage(const char* why);

// Names a catalogue file that would not open; the not-found status.
int CatalogMissing(int id);

// A whole decimal number, all of the text.
bool ParseWhole(const std::string& text, long* value);

// Prints each number that stands for an object, one a line: above 0, or
// with `zeroBased` from 0 (files whose records count from 0 answer -1 for
// none). The found status when one was printed.
int PrintNumbers(const long* numbers, int count, bool zeroBased);
