// The text lines from which the user's stars and deep-sky objects are
// imported, and the number codes of their records. A line starts with a
// word for its kind, has a name of 32 columns, and from column 36 blank-
// separated fields: right ascension (hours), declination (degrees) and the
// equinox, then what the kind adds.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Lines longer than this are read in pieces.
inline constexpr int kSupplementalLineLength = 255;
// Where the fields of a line begin.
inline constexpr size_t kSupplementalFieldColumn = 35;

// The 32 name columns from `from`, without blanks at either end.
std::string supplementalLineName(const char* line, size_t from);

// The blank-separated fields from `from` on; none when the line is shorter.
std::vector<std::string> supplementalLineFields(const char* line, size_t from);

// Reads the place of a line: right ascension in hours and declination in
// degrees in any form of the sexagesimal parser, and the equinox, a year
// with an optional 'J' (Julian, also the default) or 'B' (Besselian) in
// either case. A place of J2000 is taken as it is; any other Julian one,
// and every Besselian one (from the FK4 system), is precessed to J2000.
// Answers 1 with the J2000 place in radians, 0 for a bad field, a year
// that isn't above 0 or a place out of range.
int supplementalPlace(const std::string& ra, const std::string& dec, const std::string& equinox,
                      double* raOut, double* decOut);

// Copies a name into a record field: at most 32 characters, so that the
// field always ends with its terminator; the rest of the field is zeros.
void setSupplementalName(char (&field)[33], const std::string& name);

// value x factor rounded half away from zero, as the records keep
// magnitudes (x 100), sizes (x 100) and position angles (x 10). 0 when the
// result doesn't fit 16 bits or the value isn't a number.
int scaledToI16(double value, double factor, int16_t* out);
