// Variable-star names. Inside `vindex`, `vref` and the variable name lists
// a name is a constellation (row + 1) and a name number:
//   1 to 9        one letter, R to Z
//   10 to 54      two letters RR to ZZ, the second never before the first
//   55 to 334     two letters AA to QZ the same way, J left out
//   335 to 8999   "V%d", the V-number
//   9001 to 9024  a Greek letter, 9001 + its row
//   9100 to 9199  two-letter names outside the scheme ("KU", "CE", ...)
//   9200 to 9299  one letter A to Q, number + 80 as a byte
// A few typed names denote more than one number: a lookup by name answers
// a list of up to three.
#pragma once

#include <string>

inline constexpr int kMaxVariableNumbers = 3;

// The text of a name: "R And", "RR Lyr", "V1500 Cyg", "Alpha CVn" or, with
// a superscript, "Alpha2 CVn". "" for a number without a text form (0,
// 9000, 9025 to 9099, above 9299) or a constellation outside 1 to 88.
std::string variableName(int constellation, long number, int superscript = 0);

// The name numbers a letter word denotes in a constellation (from 1):
// the count written to `out`, 0 when the word is no variable name. A word
// that the Greek lookup takes is a Greek name, so "Ze" is Zeta but "ZE" is
// the two-letter name; otherwise letters compare without case.
int variableNumbersOf(const char* letters, int constellation, long out[kMaxVariableNumbers]);

// A typed variable name taken apart.
struct VariableDesignation {
    int constellation = 0;  // row + 1
    int superscript = 0;    // of a Greek name, 0 none
    int count = 0;
    long numbers[kMaxVariableNumbers] = {};
};

// "RR Lyr", "V1500 Cyg", "Alpha2 CVn", "Alpha 2 CVn": the letter word, for
// a Greek name an optional superscript digit (joined to the word or its
// own token), and the constellation abbreviation last. 1 on success.
int parseVariable(const char* text, VariableDesignation* out);
