// The 88 constellation abbreviations in their fixed row order (And is row
// 0, Vul row 87). Serpens is one row but two zones (75 and 76), so zone
// numbers above 75 take their text from the row below.
#pragma once

inline constexpr int kConstellationRows = 88;

// The abbreviation of a row; "" outside 0 to 87.
const char* constellationAbbreviation(int row);

// The text of a zone number 0 to 88.
const char* constellationZoneAbbreviation(int zone);

// The row of an abbreviation, compared whole and without case; -1 if none.
int constellationRowOf(const char* abbreviation);
