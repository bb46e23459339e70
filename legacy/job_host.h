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

// What a job leaves unsaid in its message and log, for a front end that
// wants to report it: the jobs fill it when the host points at one.
struct JobOutcome {
    std::string unreadableFile;  // the legacy file, when the job stopped without a message
    std::string unopenedStore;   // the store, when it could not be opened
    int failedAdds = 0;          // ticked rows whose add failed; duplicates are not counted
};

struct LogLinks;

struct JobHost {
    FILE* log = nullptr;  // ferry2.log; null when it could not be opened
    std::string legacyRoot;
    const LogLinks* logLinks = nullptr;  // the Logs page's settled names, for the log import
    std::function<void(const char* text, const char* title)> showMessage;
    std::function<TickArray()> ticks;
    JobOutcome* outcome = nullptr;  // null when nobody asks
};

// Writes one formatted line to the log; does nothing when there is no log.
#if defined(__GNUC__)
__attribute__((format(printf, 2, 3)))
#endif
void LogPrintf(FILE* log, const char* format, ...);

inline void ShowJobMessage(const JobHost& host, const char* text, const char* title) {
    if (host.showMessage) host.showMessage(text, title);
}

inline void NoteUnreadableFile(const JobHost& host, const std::string& path) {
    if (host.outcome) host.outcome->unreadableFile = path;
}

inline void NoteUnopenedStore(const JobHost& host, const char* path) {
    if (host.outcome) host.outcome->unopenedStore = path;
}

inline void NoteFailedAdd(const JobHost& host) {
    if (host.outcome) ++host.outcome->failedAdds;
}

inline TickArray JobTicks(const JobHost& host) {
    return host.ticks ? host.ticks() : TickArray{};
}

// Whether row `index` of the tick array is ticked; rows past its end are not.
inline bool IsTicked(const TickArray& ticks, size_t index) {
    return index < ticks.count && ticks.data[index] != 0;
}
