// A read-only look at the observation log under user/log: whether the
// class tables, the object row files, the entry files and the six indexes
// agree with each other. Each problem becomes one line "path: text".
//
// What it looks for:
// - pid.bin: a file too short for its head or for its count, keys not in
//   ascending unsigned order;
// - each listed object's .pix: missing, too short for its count, holding
//   no rows, a row of another object or another class, a row naming an
//   entry number the class has not handed out yet, a row whose entry file
//   is missing or too short for an entry;
// - a .pix with rows whose object pid.bin does not list (an empty one is
//   what a reader of an unlogged object leaves behind, and no problem);
// - each .idx of the index folders: too short for its head or its count,
//   rows out of order (class slot, then key, as signed values) or naming
//   one object twice, a row naming an object that has no rows.
//
// A missing user/log, class folder or index folder is no problem: the
// store makes them at first use. Nothing is created or changed.
#pragma once

#include <string>
#include <vector>

// Appends one line per problem; true when nothing was found.
bool LogCheck(std::vector<std::string>& problems);
