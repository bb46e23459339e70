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

// A bar that an exchange file's progress calls move: each call brings a
// step in per cent of the bar's total.
struct PercentProgress {
    ProgressBar bar;
    int percent = 0;
};
void PercentProgressStep(int step, void* context);
