#include "catalog/constellation_names.h"

#include "base/string_helpers.h"

namespace {
constexpr const char kAbbreviations[kConstellationRows][4] = {
    "And", "Ant", "Aps", "Aqr", "Aql", "Ara", "Ari", "Aur", "Boo", "Cae", "Cam", "Cnc",
    "CVn", "CMa", "CMi", "Cap", "Car", "Cas", "Cen", "Cep", "Cet", "Cha", "Cir", "Col",
    "Com", "CrA", "CrB", "Crv", "Crt", "Cru", "Cyg", "Del", "Dor", "Dra", "Equ", "Eri",
    "For", "Gem", "Gru", "Her", "Hor", "Hya", "Hyi", "Ind", "Lac", "Leo", "LMi", "Lep",
    "Lib", "Lup", "Lyn", "Lyr", "Men", "Mic", "Mon", "Mus", "Nor", "Oct", "Oph", "Ori",
    "Pav", "Peg", "Per", "Phe", "Pic", "Psc", "PsA", "Pup", "Pyx", "Ret", "Sge", "Sgr",
    "Sco", "Scl", "Sct", "Ser", "Sex", "Tau", "Tel", "Tri", "TrA", "Tuc", "UMa", "UMi",
    "Vel", "Vir", "Vol", "Vul"};
constexpr int kSerpensCauda = 76;
}  // namespace

const char* constellationAbbreviation(int row) {
    return row >= 0 && row < kConstellationRows ? kAbbreviations[row] : "";
}

const char* constellationZoneAbbreviation(int zone) {
    return constellationAbbreviation(zone >= kSerpensCauda ? zone - 1 : zone);
}

int constellationRowOf(const char* abbreviation) {
    if (!abbreviation) return -1;
    for (int row = 0; row < kConstellationRows; ++row)
        if (StringCompareNoCase(abbreviation, kAbbreviations[row]) == 0) return row;
    return -1;
}
