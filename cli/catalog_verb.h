// `ferry2-cli catalog`: looks inside the reference catalogue files.
#pragma once

#include <string>
#include <vector>

extern const char kCatalogSynopsis[];
extern const char kCatalogDetails[];

// `words` are the arguments after "catalog". Answers the exit status.
int RunCatalog(const std::vector<std::string>& words);
