// `ferry2-cli log add|show|query|delete|export|import`: the observation log
// under user/log.
#pragma once

#include <string>
#include <vector>

extern const char kLogSynopsis[];
extern const char kLogDetails[];

// `words` are the arguments after "log". Answers the exit status.
int RunLog(const std::vector<std::string>& words);
