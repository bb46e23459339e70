// `ferry2-cli body`: the place of a major solar-system body for an
// observer at an instant.
#pragma once

#include <string>
#include <vector>

extern const char kBodySynopsis[];
extern const char kBodyDetails[];

// `words` are the arguments after "body". Answers the exit status.
int RunBody(const std::vector<std::string>& words);
