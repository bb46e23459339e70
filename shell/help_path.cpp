#include "shell/help_path.h"

namespace {
constexpr size_t kPathBuffer = 128;
// Room kept for an eight-dot-three name and its terminator, whatever the
// actual name's length.
constexpr size_t kShortNameRoom = 13;
}  // namespace

std::string ComposeHelpPath(const std::string& moduleFileName, const char* helpFileName) {
    std::string path = moduleFileName.substr(0, kPathBuffer - 1);
    size_t keep = path.size();
    while (keep > 0 && path[keep - 1] != '\\' && path[keep - 1] != ':') --keep;
    path.resize(keep);
    if (keep + kShortNameRoom >= kPathBuffer)
        path += "?";
    else
        path += helpFileName;
    return path;
}
