// The 24 Greek letter names of Bayer designations, Alpha (row 0) to Omega
// (row 23).
#pragma once

inline constexpr int kGreekLetters = 24;

// The name of a row; "" outside 0 to 23.
const char* greekLetterName(int row);

// The first row whose name starts with `text`: the text needs at least two
// characters and no more than the name has; its first character compares
// without case, every further one exactly. -1 when none does, so "Ze",
// "zet" and "Zeta" give 5 and "Et" gives Eta, but "ET" nothing.
int greekLetterRow(const char* text);
