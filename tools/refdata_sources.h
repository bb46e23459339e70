// The public catalogues that make-refdata builds the reference set from,
// read into plain rows: the Bright Star Catalogue (one row per star, in HR
// order) and the IAU list of proper star names. Also the two codes the star
// records need that the catalogue gives only as text: the spectral type and
// the variable-star name.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

struct BrightStar {
    long hr = 0;
    long hd = 0;  // 0 none
    long sao = 0;
    int flamsteed = 0;
    int bayerLetter = 0;  // Greek letter row + 1, 0 none
    int bayerSuperscript = 0;
    int constellationRow = -1;  // of the Flamsteed/Bayer designation, -1 none
    double raDegrees = 0;       // J2000
    double decDegrees = 0;
    double pmRa = 0;  // arc seconds a year, on the sky (mu_alpha cos dec)
    double pmDec = 0;
    double magnitude = 99.9;  // V, 99.9 none
    double colour = 99.9;     // B-V, 99.9 none
    std::string spectral;
    std::string variable;  // the variable-star identification as given
};

struct StarName {
    std::string name;      // ASCII spelling
    std::string nameUtf8;  // with diacritics
    long hr = 0;           // 0: not a Bright Star Catalogue star
    std::string designation;
    std::string id;  // Bayer letter, Flamsteed number or variable name
    std::string constellation;
    std::string component;
    long hd = 0;
    long hip = 0;
    std::string approved;
};

// The rows of a catalogue CSV, each as a map from column name to field
// (the key "#line" holds the line number).
using CsvRow = std::map<std::string, std::string>;
bool ReadCatalogueCsv(const std::string& path, std::vector<CsvRow>* rows, std::string* error);

// Field readers: an empty field gives the fallback; anything that is not a
// whole number or a real gives false.
bool CsvWhole(const std::string& text, long fallback, long* value);
bool CsvReal(const std::string& text, double fallback, double* value);

// Read a catalogue CSV: '#' lines, one header line naming the columns, then
// rows. false with a message naming the line when a row cannot be read.
bool ReadBrightStars(const std::string& path, std::vector<BrightStar>* out, std::string* error);
bool ReadStarNames(const std::string& path, std::vector<StarName>* out, std::string* error);

// The `stars` spectral code of a catalogue spectral type: bits 0 to 3 the
// class (from 1 in "OBAFGKMRNSCP"), bits 4 to 10 subclass x 10 + 10 (0
// none), bits 11 and up the luminosity row (1 I ... 5 V). The old prefixes
// count as luminosity when no numeral follows: "g" giant III, "sg" subgiant
// IV, "d" dwarf V, "c" supergiant I; "sd" subdwarf has no row. A type whose
// class is none of the twelve (Wolf-Rayet "WN", "pec") gives 0.
uint16_t SpectralCodeOf(const std::string& type);

// The constellation row and name number of a variable-star name that has a
// number of its own: one letter R to Z (1 to 9), two letters RR to ZZ (10 to
// 54) or AA to QZ without J (55 to 334), or "V" and a number from 335. false
// for Greek-letter names, lone letters below R and anything else.
bool VariableNameNumber(const std::string& text, int* constellationRow, int* number);
