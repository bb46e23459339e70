#include "cli/logs_page.h"

#include <cstdio>

#include "base/string_helpers.h"
#include "cli/exit_status.h"
#include "cli/shown_text.h"
#include "legacy/import_result.h"
#include "shell/log_page.h"

namespace {

bool StartsWith(const std::string& text, const char* head) { return text.rfind(head, 0) == 0; }

// The row of the name in the page's list, or -1.
int RowOf(const std::vector<std::string>& rows, const std::string& name) {
    for (size_t i = 0; i < rows.size(); ++i)
        if (rows[i] == name) return static_cast<int>(i);
    return -1;
}

// The page's questions answered from one settlement.
LogPageQuestions Answers(const LogSettlement& s, bool* unknownTarget) {
    LogPageQuestions ask;
    ask.instrumentType = [&s](const std::string&) {
        return s.kind == LogSettlement::kBinoculars ? kTypeBinoculars : kTypeTelescope;
    };
    ask.choose = [&s, unknownTarget](const char*, const std::vector<std::string>& names) {
        for (size_t i = 0; i < names.size(); ++i)
            if (NameCompare(names[i].c_str(), s.newName.c_str()) == 0) return static_cast<int>(i);
        *unknownTarget = true;
        return -1;
    };
    return ask;
}

void Complain(const char* what, const std::string& name) {
    std::fprintf(stderr, "ferry2-cli: %s %s\n", what, ShownText(name).c_str());
}

}  // namespace

bool ParseLogSettlement(const std::string& text, bool observer, LogSettlement* out, std::string* why) {
    const size_t eq = text.rfind('=');
    if (eq == std::string::npos || eq == 0 || eq + 1 == text.size()) {
        *why = observer ? "--observer takes OLD=NEW or OLD=+"
                        : "--instrument takes OLD=NEW, OLD=+telescope or OLD=+binoculars";
        return false;
    }
    LogSettlement s;
    s.observer = observer;
    s.oldName = text.substr(0, eq);
    const std::string target = text.substr(eq + 1);
    if (observer && target == "+") {
        s.kind = LogSettlement::kCreate;
    } else if (!observer && target == "+telescope") {
        s.kind = LogSettlement::kTelescope;
    } else if (!observer && target == "+binoculars") {
        s.kind = LogSettlement::kBinoculars;
    } else if (StartsWith(target, "+")) {
        *why = "unknown kind of new record " + target;
        return false;
    } else {
        s.newName = target;
    }
    *out = s;
    return true;
}

int ListLogsPage(const JobHost& host) {
    LogPage page;
    LogPageInit(&page);
    LogPageScan(&page, host);
    std::puts("List\tName");
    for (const std::string& name : page.names.observers) std::printf("observer\t%s\n", ShownField(name).c_str());
    for (const std::string& name : page.names.instruments)
        std::printf("instrument\t%s\n", ShownField(name).c_str());
    LogPageClose(&page);
    return kExitDone;
}

int ImportLogsPage(const JobHost& host, const std::vector<LogSettlement>& settlements, int* succeeded) {
    LogPage page;
    LogPageInit(&page);
    // The scan's message is the page's greeting; the import has its own.
    JobHost quiet = host;
    quiet.showMessage = nullptr;
    LogPageScan(&page, quiet);
    int status = kExitDone;
    for (const LogSettlement& s : settlements) {
        const int listId = s.observer ? kObserverList : kInstrumentList;
        const int row = RowOf(s.observer ? page.names.observers : page.names.instruments, s.oldName);
        if (row < 0) {
            Complain(s.observer ? "no unknown observer named" : "no unknown instrument named", s.oldName);
            status = kExitUsage;
            continue;
        }
        LogPageSelect(&page, listId, row);
        bool unknownTarget = false;
        const LogPageQuestions ask = Answers(s, &unknownTarget);
        const int settled = s.kind == LogSettlement::kLink ? LogPageLink(&page, ask) : LogPageCreate(&page, ask);
        if (unknownTarget) {
            Complain(s.observer ? "no stored observer named" : "no stored instrument named", s.newName);
            status = kExitUsage;
        } else if (!settled) {
            Complain("could not settle", s.oldName);
            status = kExitFailed;
        }
    }
    if (status != kExitDone) {
        LogPageClose(&page);
        return status;
    }
    if (!page.importEnabled) {
        for (const std::string& name : page.names.observers) Complain("unsettled observer", name);
        for (const std::string& name : page.names.instruments) Complain("unsettled instrument", name);
        LogPageClose(&page);
        return kExitFailed;
    }
    *succeeded = RunLogImport(&page, host);
    LogPageClose(&page);
    return kExitDone;
}
