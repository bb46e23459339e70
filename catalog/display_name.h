// The name an object is shown by: its preferred designation, in a fixed
// order of catalogues per class, and on request a second name by the
// caller's preferences ("Vega" and "HR 7001").
#pragma once

#include <cstdint>
#include <string>

#include "catalog/designation_form.h"
#include "catalog/object_record.h"

// The primary name of the object that `record` names by class and PID, and
// its form. With `preferences` and `secondary` given, a second name: from
// the class's first kind on, the first alternative name that differs from
// the primary (exact compare); after a kind without such a name the walk
// goes on only while the class's go-on flag is set. 1 and the names
// written; 0 for an unknown object, with `primary` emptied. Each output may
// be null; a secondary that isn't found is left empty.
int displayName(const ObjectRecord& record, std::string* primary, const NamePreferences* preferences,
                std::string* secondary, DesignationForm* form);
