// The user's own objects of one store from the command line. Not built yet: the store
// comes with its own work, and until then every call says so.
#include <cstdio>

#include "cli/user_objects.h"

namespace {
int NotYet() {
    std::fprintf(stderr, "ferry2-cli: the user's star store is not built yet\n");
    return 1;
}
}  // namespace

int AddUserStars(const std::string&, const AddObjectsOptions&) { return NotYet(); }
int ListUserStars() { return NotYet(); }
int CompactUserStars() { return NotYet(); }
int DeleteUserStar(unsigned long) { return NotYet(); }
