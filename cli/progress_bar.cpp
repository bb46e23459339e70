#include "cli/progress_bar.h"

#include <cstdio>

#ifdef _WIN32
#include <io.h>
#define FERRY2_ISATTY _isatty
#define FERRY2_STDERR 2
#else
#include <unistd.h>
#define FERRY2_ISATTY isatty
#define FERRY2_STDERR STDERR_FILENO
#endif

namespace {
constexpr int kWidth = 40;
}  // namespace

void ProgressBegin(ProgressBar* bar, const char* label, long total) {
    bar->shown = FERRY2_ISATTY(FERRY2_STDERR) != 0;
    bar->total = total > 0 ? total : 1;
    bar->lastPercent = -1;
    bar->label = label ? label : "";
    ProgressUpdate(bar, 0);
}

void ProgressUpdate(ProgressBar* bar, long done) {
    if (!bar->shown) return;
    if (done > bar->total) done = bar->total;
    if (done < 0) done = 0;
    const int percent = static_cast<int>(done * 100 / bar->total);
    if (percent == bar->lastPercent) return;
    bar->lastPercent = percent;
    const int filled = percent * kWidth / 100;
    std::fprintf(stderr, "\r%s [", bar->label);
    for (int i = 0; i < kWidth; ++i) std::fputc(i < filled ? '#' : '.', stderr);
    std::fprintf(stderr, "] %3d%%", percent);
    std::fflush(stderr);
}

void ProgressEnd(ProgressBar* bar) {
    if (!bar->shown) return;
    ProgressUpdate(bar, bar->total);
    std::fputc('\n', stderr);
    bar->shown = false;
}

void PercentProgressStep(int step, void* context) {
    auto* p = static_cast<PercentProgress*>(context);
    p->percent += step;
    ProgressUpdate(&p->bar, p->bar.total * p->percent / 100);
}
