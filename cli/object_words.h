// The object a command names: CLASS PID, or fixed RADEG DECDEG (J2000
// degrees), as `object` and `name` take it.
#pragma once

#include <string>
#include <vector>

#include "catalog/object_record.h"

// True with the record made, naming the object; false with the reason for
// the usage line in `why`.
bool ParseObjectWords(const std::vector<std::string>& args, ObjectRecord* record, std::string* why);
