// A progress bar on standard error for long work, drawn only when standard
// error is a terminal, so that scripts and logs see nothing of it.
#pragma once

struct ProgressBar {
    bool shown = false;  // standard error is a terminal
    long total = 0;
    int lastPercent = -1;
    const char* label = "";
};

// Starts a bar for `total` steps with a label ("Adding minor planets").
void ProgressBegin(ProgressBar* bar, const char* label, long total);
// Moves the bar to `done` of its total; redraws only when the percentage
// changes.
void ProgressUpdate(ProgressBar* bar, long done);
// Fills the bar and ends its line.
void ProgressEnd(ProgressBar* bar);
