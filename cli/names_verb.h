// `ferry2-cli resolve`, `name` and `browse`: what a version 1.x name points
// at, what an object is called, and the designation lists.
#pragma once

#include <string>
#include <vector>

extern const char kNamesSynopsis[];
extern const char kNamesDetails[];

// True for the three verbs.
bool IsNamesVerb(const std::string& verb);

// `words` are the arguments after the verb. Answers the exit status.
int RunNames(const std::string& verb, const std::vector<std::string>& words);
