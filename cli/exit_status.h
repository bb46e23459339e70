// The exit status of every verb, and the one-line complaints on standard
// error that go with the failing ones: "ferry2-cli VERB: WHY".
#pragma once

#include <cstdio>

inline constexpr int kExitDone = 0;
inline constexpr int kExitFailed = 1;  // a job that failed, or nothing found
inline constexpr int kExitUsage = 2;   // a usage error, or start-up failed

inline int VerbComplaint(const char* verb, const char* why, int status) {
    std::fprintf(stderr, "ferry2-cli %s: %s\n", verb, why);
    return status;
}
inline int VerbUsage(const char* verb, const char* why) { return VerbComplaint(verb, why, kExitUsage); }
inline int VerbFailed(const char* verb, const char* why) { return VerbComplaint(verb, why, kExitFailed); }
