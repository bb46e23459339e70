// The parsers of typed designations: each takes the text (the catalogue
// word may still stand in front), fills the numbers, and answers 1 on
// success, 0 on failure (parseMcg and parseQuasarQ answer how many numbers
// they read). A failure is no error: the caller tries nothing more for
// that kind.
#pragma once

// A number with an optional suffix letter: "224", "NGC 224", "NGC 224A".
// Fails on empty text and on text that starts with '*'. An upper-case
// letter at the end is the suffix (code 1 for 'A'), 0 otherwise; when the
// text doesn't start with a digit, the reading starts after its first
// blank.
int parseNumberSuffix(const char* text, long* number, int* suffix);

// "Alpha And", "Alpha 2 Cen": letter word, optional superscript digit,
// constellation. Greek row and constellation row from 0, superscript 0 for
// none.
int parseBayer(const char* text, int* letterRow, int* superscript, int* constellationRow);

// "61 Cyg": number and constellation row; both must be 0 or more.
int parseFlamsteed(const char* text, int* number, int* constellationRow);

// "CCDM 00057+4549": RA part 0 to 23598, Dec part 1 to 8915 without its
// sign, and the sign. A text of one number reads Dec part 1, sign '+'.
int parseCcdm(const char* text, int* raPart, int* decPart, char* sign);

// "BD +12 345a": sign ('+' or '-'), zone in degrees, running number and
// suffix letter (upper case, ' ' for none). A leading catalogue word is
// passed over; the suffix is taken in either case.
int parseDm(const char* text, int* zone, char* sign, long* number, char* suffix);

// "MCG -01-02-003", "MCG 1 2 3A": zone, field, number and part letter code
// (0 none). Answers how many of the four were read; 3 or 4 is a number.
int parseMcg(const char* text, int* zone, int* field, int* number, int* part);

// "ESO 123 45A": field, number, suffix code.
int parseEso(const char* text, long* field, long* number, int* suffix);

// "PK 120+01.2": whole longitude and latitude in tenths. With the longitude
// alone the latitude stays -761, the bottom row of the PK index.
inline constexpr int kPkNoLatitude = -761;
int parsePk(const char* text, long* longitude, int* latitudeTenths);

// "TYC 1234-567 1", "GSC 1234-567": region, number, component; a missing
// component is 1, and a region alone reads number 1 and component 1.
int parseTycho(const char* text, int* region, int* number, int* component);

// A Hewitt-Burbidge number: "Q0042-2656", "Q 0042-2656A". With a sign in
// the text, RA part, Dec part and suffix character; without one, a single
// number into `raPart`. Answers how many values were read; the Dec part
// stays 0 and the suffix ' ' when not read.
int parseQuasarQ(const char* text, int* raPart, int* decPart, char* suffix);
