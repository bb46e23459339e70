// The user's deep-sky store from the command line. Not built yet: the store
// comes with its own work, and until then every call says so.
#include <cstdio>

#include "cli/user_objects.h"

namespace {
int NotYet() {
    std::fprintf(stderr, "ferry2-cli: the user's deep-sky store is not built yet\n");
    return 1;
}
}  // namespace

int AddUserDeepSky(const std::string&, const AddObjectsOptions&) { return NotYet(); }
int ListUserDeepSky() { return NotYet(); }
int CompactUserDeepSky() { return NotYet(); }
int DeleteUserDeepSky(unsigned long) { return NotYet(); }
