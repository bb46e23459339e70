// `ferry2-cli orbit`: a comet or minor planet from its orbital elements,
// placed for a moment: its J2000.0 place, distances, angles and magnitude.
#pragma once

#include <string>
#include <vector>

extern const char kOrbitSynopsis[];
extern const char kOrbitDetails[];

// `words` are the arguments after "orbit". Answers the exit status.
int RunOrbit(const std::vector<std::string>& words);
