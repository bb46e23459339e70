// Runs an import job as the program does (log open, a tick array, messages
// caught) and keeps what it showed.
#pragma once

#include <string>
#include <vector>

#include "shell/import_log.h"
#include "legacy/job_host.h"
#include "support.h"

class JobTest : public ScratchTest {
protected:
    using Job = int (*)(const JobHost&);

    // Runs the job with the given ticks (null for no tick array) and the log
    // open as the program has it; returns the job's result.
    int RunJob(Job job, const std::vector<uint8_t>* ticks) {
        std::vector<uint8_t> copy = ticks ? *ticks : std::vector<uint8_t>();
        messages_.clear();
        FilePtr log = OpenImportLog();
        JobHost host;
        host.log = log.get();
        host.legacyRoot = "legacy";
        host.showMessage = [this](const char* text, const char* title) {
            messages_.push_back(title + std::string("|") + text);
        };
        if (ticks) host.ticks = [&copy] { return TickArray{copy.data(), copy.size()}; };
        return job(host);
    }

    std::string OnlyMessage() {
        EXPECT_EQ(messages_.size(), 1u);
        return messages_.empty() ? std::string() : messages_[0];
    }
    static std::string Plain(const char* counts) { return std::string("Ferry 2 Message|") + counts; }
    static std::string Error(const char* counts) {
        return std::string("Ferry 2 Message|") +
               "An error occurred during import. See the ferry2.log file for details.\r\n" + counts;
    }

    std::vector<std::string> messages_;
};
