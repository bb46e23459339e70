// An object record as the JSON answers of ferry2-cli give it: every field
// by its name, angles in radians as stored.
#pragma once

#include <string>

#include "catalog/object_record.h"

// `"raApparent": ..., ... "constellationAbbr": "Lyr"`, without braces
// around it, so that a caller can add its own fields.
std::string ObjectRecordJson(const ObjectRecord& record);
