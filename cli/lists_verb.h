// `ferry2-cli show-list`, `export-list` and `import-list`: the Vesperal 2
// observing lists under user/lists, and their exchange files.
#pragma once

#include <string>
#include <vector>

extern const char kListsSynopsis[];
extern const char kListsDetails[];

// True for the three verbs.
bool IsListsVerb(const std::string& verb);

// `words` are the arguments after the verb. Answers the exit status.
int RunLists(const std::string& verb, const std::vector<std::string>& words);
