// Small string helpers of the text routines and the importers.
#pragma once

#include <string>

// Ordering of the lower-cased copies: below 0, 0 or above 0.
int StringCompareNoCase(const char* a, const char* b);

// The compare of observer, location, instrument and misc names: the same
// byte-wise folding.
inline int NameCompare(const char* a, const char* b) { return StringCompareNoCase(a, b); }

// printf into a string of whatever length the text takes.
std::string Format(const char* format, ...)
#if defined(__GNUC__)
    __attribute__((format(printf, 1, 2)))
#endif
    ;

// Remove blanks (spaces only) in place.
char* TrimRight(char* text);
char* TrimLeft(char* text);
void TrimRightString(std::string& text);
void TrimLeftString(std::string& text);

// The normal form of typed text, in place: blanks at both ends removed and
// every run of blanks inside made a single blank.
char* NormaliseBlanks(char* text);

// Copies `source` to `target` without its blanks.
void RemoveBlanks(const char* source, char* target);

// The part of `path` behind the last backslash or slash.
void BaseName(const char* path, char* target);
