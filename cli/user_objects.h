// The user's own objects from the command line: `add-objects`,
// `user-objects`, `delete-object` and `compact`, over the four stores of
// stars (class 12), deep-sky objects (18), minor planets (14) and comets
// (13). The verbs parse their words here; each store's file of the cli
// does its work.
#pragma once

#include <string>
#include <vector>

#include "catalog/delete_cascade.h"

extern const char kUserObjectsSynopsis[];
extern const char kUserObjectsDetails[];

// `verb` is "add-objects", "user-objects", "delete-object" or "compact";
// `words` the arguments after it. Answers the exit status.
int RunUserObjects(const std::string& verb, const std::vector<std::string>& words);

// What the text imports were asked for beyond the file.
struct AddObjectsOptions {
    std::string format;        // "bowell" or "mp" for minor planets; "" the default
    bool numberedOnly = false;  // minor planets: only numbered ones
};

// One store's part, in its own file: each answers the exit status and
// prints its results on standard output, its errors on standard error.
int AddUserStars(const std::string& file, const AddObjectsOptions& options);
int ListUserStars();
int CompactUserStars();
int AddUserDeepSky(const std::string& file, const AddObjectsOptions& options);
int ListUserDeepSky();
int CompactUserDeepSky();
int AddUserMinorPlanets(const std::string& file, const AddObjectsOptions& options);
int ListUserMinorPlanets();
int CompactUserMinorPlanets();
int AddUserComets(const std::string& file, const AddObjectsOptions& options);
int ListUserComets();
int CompactUserComets();
// Class 12, 18, 14 or 13 and the PID; 1 when the store had no such object.
int DeleteUserStar(unsigned long pid);
int DeleteUserDeepSky(unsigned long pid);
int DeleteUserMinorPlanet(unsigned long pid);
int DeleteUserComet(unsigned long pid);

// The answer lines the four stores share on standard output:
// "N added, N replaced, N unchanged, N bad" after an import and
// "N kept, last PID N" after a compaction.
void PrintAddCounts(long added, long replaced, long unchanged, long bad);
void PrintCompacted(unsigned long kept, unsigned long lastPid);

// The cascade of an object deleted from the command line. The attachment
// stores are not reached from here yet, so a deleted object has no notes,
// links or images to take along: the cascade does nothing.
const DeleteCascade& NoAttachments();
