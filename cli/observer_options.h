// The observer and the instant of the verbs that place objects: --site,
// --at and --dynamical, parsed one way for all of them, and the engine's
// Site and Instant made from them.
#pragma once

#include <string>
#include <vector>

#include "astro/instant.h"
#include "astro/site.h"

struct ObserverOptions {
    double longitude = 0;  // degrees east of Greenwich, as users write it
    double latitude = 51.4779;
    double height = 0;
    bool haveWhen = false;
    int year = 0, month = 0, day = 0;
    double hours = 0;
    bool dynamical = false;  // --at is dynamical time, not UT
};

extern const char kObserverOptionsHelp[];

// Takes the option at `words[*i]` and its value, moving `*i` past them.
// 1 taken, 0 not one of these options, -1 a bad value (the reason is in
// `why`).
int TakeObserverOption(const std::vector<std::string>& words, size_t* i, ObserverOptions* options,
                       std::string* why);

// Takes every observer option out of `words` into `options`, the other
// words into `rest` in their order. false on a bad value, with the reason
// in `why`.
bool SplitObserverOptions(const std::vector<std::string>& words, ObserverOptions* options,
                          std::vector<std::string>* rest, std::string* why);

// The site (longitude turned west-positive for the engine) and the instant
// with its three stages; the current UTC time when no --at was given.
void MakeSiteAndInstant(ObserverOptions* options, Site* site, Instant* instant);

// A moment typed as YYYY-MM-DDTHH:MM[:SS] (the seconds may have a
// fraction): the date and the decimal hours.
bool ParseMoment(const std::string& text, int* year, int* month, int* day, double* hours);

// `"instant": {...}` for the JSON answers: the instant as given, its Julian
// day (UT) and the time scale it was given in.
std::string InstantJson(const ObserverOptions& options, const Instant& instant);

// `"site": {...}, "instant": {...}` for the JSON answers, without braces
// around them: the site in the user's degrees, the instant as given, its
// Julian day (UT) and the time scale it was given in.
std::string ObserverJson(const ObserverOptions& options, const Instant& instant);

// A real number in full; false on trailing text, overflow or nothing.
bool ParseReal(const std::string& text, double* value);
