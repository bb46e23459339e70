// The name of an object under one designation kind: "HD 172167" for Vega
// asked for its HD number, "NGC 224" for M 31 asked for NGC. Each class
// reads its object once through its catalogue reader and prints the kind
// with the designation codecs.
#pragma once

#include <cstdint>
#include <string>

#include "catalog/designation_form.h"
#include "catalog/object_record.h"

// The name of object `id` (its PID) of the class of `source` under `kind`
// (the designation kinds of catalog/designation_kinds.h; the user classes
// take those of their reference class: 13 as 3, 14 as 4, 12 and 18 kind 1,
// the name). `source` gives the class and, for a fixed position, the place.
// 1 and the name (and its form) written; 0 when the object has no such name
// or can't be read (out emptied); -1 for a kind the class doesn't have.
// The outputs may be null.
int alternativeName(int kind, const ObjectRecord& source, uint32_t id, std::string* out,
                    DesignationForm* form);
