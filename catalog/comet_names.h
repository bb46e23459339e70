// The names of a comet, made from its periodic number, type letter, name
// and IAU designation.
#pragma once

#include <string>

#include "catalog/comet_files.h"

// "%d%c/%s (%s)" of number, letter, IAU designation and name; without a
// number "%c/%s (%s)".
std::string cometFullName(const CometRecord& record);

// A list's short name: "%d%c/%s" of number, letter and name for a number
// from 1 to 32767, otherwise "%c/%s (%s)" of letter, designation and name.
std::string cometShortName(const CometRecord& record);

// "%c/%s" of letter and IAU designation when the designation is longer than
// one character and doesn't start with a blank; otherwise "".
std::string cometIauName(const CometRecord& record);

// What a search by name compares with: the name of a numbered comet, and
// "%s %s" of name and designation for one without a number.
std::string cometSearchText(const CometRecord& record);
