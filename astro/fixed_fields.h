// Readers of fixed-column fields in catalogue and orbit-element lines.
#pragma once

// The digits and minus signs among the first `width` characters, read as a
// long; 0x7fffffff when there are none or they do not read.
long FixedInt(const char* text, int width);

// The first `width` characters without their blanks, read as a real; the
// parse sentinel 2147483647.0 for an all-blank field or a failed read.
double FixedReal(const char* text, int width);

// The first `width` characters, ended, in one shared buffer that each call
// overwrites.
const char* FixedText(const char* text, int width);
