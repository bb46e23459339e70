// One line of the Minor Planet Center's list of comet elements
// (CometEls.txt): fixed columns, 1-4 periodic number, 5 orbit type, 6-12
// packed provisional designation, 15-29 perihelion time (year, month,
// day.dddd, TT), 31-39 q, 42-49 e, 52-59 argument of perihelion, 62-69
// node, 72-79 inclination (degrees, J2000.0), 82-89 epoch YYYYMMDD (0h
// TT), 92-95 and 97-100 the magnitude parameters g and k, 103-158 the
// designation and name as read ("C/1995 O1 (Hale-Bopp)", "1P/Halley"), and
// from 160 the reference.
#pragma once

#include "catalog/comet_files.h"

// 1 and the packed record (PID 0, the default coefficient, the reference as
// source); -1 for a blank line or one that starts with '#', which is no
// comet; 0 for a line whose fields don't read or make no orbit.
int parseCometElementsLine(const char* line, CometRecord* out);
