// A read-only look at the files an import reads and writes: the stores of
// the version 2 folder (the working folder) that exist so far, the log
// under user/log among them, and the files of the version 1.x folder that
// the import pages read. Each problem becomes one line that names the file.
#pragma once

#include <string>
#include <vector>

// Appends one line per problem: a file that is no regular file, one too
// short for its header, a count out of range or beyond the end of the
// file, a record whose fixed name field holds no terminating NUL; in the
// observation log, files that disagree with each other (see log_check.h).
// Missing files are no problem. Writes nothing. True when nothing was found.
bool CheckFolders(const std::string& legacyRoot, std::vector<std::string>& problems);
