// `ferry2-cli object`: one object filled by class and number, or a fixed
// position, with its place for an observer.
#pragma once

#include <string>
#include <vector>

extern const char kObjectSynopsis[];
extern const char kObjectDetails[];

// `words` are the arguments after "object". Answers the exit status.
int RunObject(const std::vector<std::string>& words);
