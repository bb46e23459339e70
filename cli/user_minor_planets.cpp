// The user's minor-planet store from the command line. Not built yet: the store
// comes with its own work, and until then every call says so.
#include <cstdio>

#include "cli/user_objects.h"

namespace {
int NotYet() {
    std::fprintf(stderr, "ferry2-cli: the user's minor-planet store is not built yet\n");
    return 1;
}
}  // namespace

int AddUserMinorPlanets(const std::string&, const AddObjectsOptions&) { return NotYet(); }
int ListUserMinorPlanets() { return NotYet(); }
int CompactUserMinorPlanets() { return NotYet(); }
int DeleteUserMinorPlanet(unsigned long) { return NotYet(); }
