// A dry run of an import: the job runs on a scratch copy of the stores and
// of the version 1.x folder, so that neither the user's Vesperal 2 files nor
// the version 1.x folder change (the list job would otherwise write
// us_pid.bin there). The caller prints what the job logged and showed, then
// throws the copy away.
#pragma once

#include <filesystem>
#include <string>

struct DryRun {
    std::filesystem::path home;     // the data folder the run started in
    std::filesystem::path scratch;  // removed by EndDryRun
    std::string legacyRoot;         // the copy of the version 1.x folder
    std::string logPath;            // the scratch ferry2.log, empty at the start
};

// Copies the data folder's user tree and its own files (not ferry2.log) to
// a scratch folder, and the version 1.x folder's files with its log tree
// beside it; makes the reference folders absolute and moves the working
// folder into the copy. 0, with nothing changed and the working folder
// where it was, when a step fails.
int BeginDryRun(const std::string& legacyRoot, DryRun* run);

// Back to the data folder; the copy goes.
void EndDryRun(DryRun* run);
