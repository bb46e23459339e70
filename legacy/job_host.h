// What a job may reach outside itself. The window program, the command line
// and the tests each provide one, so that the same job runs under all three.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <string>

inline constexpr const char* kFerryMessageTitle = "Ferry 2 Message";

// The tick array of a page: one byte per row, nonzero when ticked. A null
// `data` means the page has no tick array.
struct TickArray {
    uint8_t* data = nullptr;
    size_t count = 0;
};

struct JobHost {
    FILE* log = nullptr;  // ferry2.log; null when it could not be opened
    std::string legacyRoot;
    std::function<void(const char* text, const char* title)> showMessage;
    std::function<TickArray()> ticks;
};

// Writes one formatted line to the log; does nothing when there is no log.
#if defined(__GNUC__)
__attribute__((format(printf, 2, 3)))
#endif
void LogPrintf(FILE* log, const char* format, ...);

inline void ShowJobMessage(const JobHost& host, const char* text, const char* title) {
    if (host.showMessage) host.showMessage(text, title);
}

inline TickArray JobTicks(const JobHost& host) {
    return host.ticks ? host.ticks() : TickArray{};
}

// Whether row `index` of the tick array is ticked; rows past its end are not.
inline bool IsTicked(const TickArray& ticks, size_t index) {
    return index < ticks.count && ticks.data[index] != 0;
}
