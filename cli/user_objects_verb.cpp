#include <cstdio>
#include <cstdlib>

#include "cli/exit_status.h"
#include "cli/observer_options.h"
#include "cli/user_objects.h"

const char kUserObjectsSynopsis[] =
    "ferry2-cli add-objects stars|deep-sky|minor-planets|comets FILE [--format bowell|mp] "
    "[--numbered-only]\n"
    "       ferry2-cli user-objects stars|deep-sky|minor-planets|comets\n"
    "       ferry2-cli delete-object CLASS PID\n"
    "       ferry2-cli compact stars|deep-sky|minor-planets|comets\n";

const char kUserObjectsDetails[] =
    "  add-objects KIND FILE\n"
    "                 reads a text file of objects into the user's store of\n"
    "                 that kind (user/stellar.bin, user/uds.bin,\n"
    "                 user/mp.bin, user/comet.bin) and prints how many were\n"
    "                 added, replaced or unchanged, and how many lines were\n"
    "                 bad. Minor planets come in the fixed columns of the\n"
    "                 Lowell orbit list (--format bowell, the default) or as\n"
    "                 \"MP \" lines (--format mp); --numbered-only keeps\n"
    "                 numbered ones.\n"
    "  user-objects KIND\n"
    "                 lists the store: PID, name, place or elements.\n"
    "  delete-object CLASS PID\n"
    "                 deletes a user object: class 12 a star, 18 a deep-sky\n"
    "                 object, 14 a minor planet, 13 a comet.\n"
    "  compact KIND   rewrites the store, the last PID issued brought down to\n"
    "                 the highest one kept.\n";

namespace {

int Usage(const std::string& verb, const char* why) { return VerbUsage(verb.c_str(), why); }

struct Kind {
    const char* word;
    int (*add)(const std::string&, const AddObjectsOptions&);
    int (*list)();
    int (*compact)();
};

constexpr Kind kKinds[] = {
    {"stars", AddUserStars, ListUserStars, CompactUserStars},
    {"deep-sky", AddUserDeepSky, ListUserDeepSky, CompactUserDeepSky},
    {"minor-planets", AddUserMinorPlanets, ListUserMinorPlanets, CompactUserMinorPlanets},
    {"comets", AddUserComets, ListUserComets, CompactUserComets},
};

const Kind* FindKind(const std::string& word) {
    for (const Kind& k : kKinds)
        if (word == k.word) return &k;
    return nullptr;
}

}  // namespace

void PrintAddCounts(long added, long replaced, long unchanged, long bad) {
    std::printf("%ld added, %ld replaced, %ld unchanged, %ld bad\n", added, replaced, unchanged, bad);
}

void PrintCompacted(unsigned long kept, unsigned long lastPid) {
    std::printf("%lu kept, last PID %lu\n", kept, lastPid);
}

const DeleteCascade& NoAttachments() {
    static const DeleteCascade nothing = [](int, uint32_t, uint32_t) {};
    return nothing;
}

int RunUserObjects(const std::string& verb, const std::vector<std::string>& w) {
    if (verb == "delete-object") {
        double cls = 0, pid = 0;
        if (w.size() != 2 || !ParseReal(w[0], &cls) || !ParseReal(w[1], &pid) || pid < 1 ||
            pid > 4294967295.0 || pid != static_cast<double>(static_cast<unsigned long long>(pid)))
            return Usage(verb, "delete-object takes CLASS (12, 13, 14 or 18) and PID");
        const unsigned long id = static_cast<unsigned long>(pid);
        if (cls == 12) return DeleteUserStar(id);
        if (cls == 18) return DeleteUserDeepSky(id);
        if (cls == 14) return DeleteUserMinorPlanet(id);
        if (cls == 13) return DeleteUserComet(id);
        return Usage(verb, "delete-object takes CLASS (12, 13, 14 or 18) and PID");
    }
    if (w.empty()) return Usage(verb, "say stars, deep-sky, minor-planets or comets");
    const Kind* kind = FindKind(w[0]);
    if (!kind) return Usage(verb, "say stars, deep-sky, minor-planets or comets");
    if (verb == "user-objects") return w.size() == 1 ? kind->list() : Usage(verb, "takes only the kind");
    if (verb == "compact") return w.size() == 1 ? kind->compact() : Usage(verb, "takes only the kind");
    // add-objects KIND FILE [--format bowell|mp] [--numbered-only]
    AddObjectsOptions options;
    std::string file;
    for (size_t i = 1; i < w.size(); ++i) {
        if (w[i] == "--format") {
            if (++i >= w.size() || (w[i] != "bowell" && w[i] != "mp"))
                return Usage(verb, "--format takes bowell or mp");
            options.format = w[i];
        } else if (w[i] == "--numbered-only") {
            options.numberedOnly = true;
        } else if (file.empty()) {
            file = w[i];
        } else {
            return Usage(verb, "takes one FILE");
        }
    }
    if (file.empty()) return Usage(verb, "takes the KIND and a FILE");
    if ((!options.format.empty() || options.numberedOnly) && std::string(kind->word) != "minor-planets")
        return Usage(verb, "--format and --numbered-only are for minor planets");
    return kind->add(file, options);
}
