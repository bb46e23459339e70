// Help is a page of HTML beside the program; each window opens its section.
#include <windows.h>
#include <shellapi.h>

#include "shell/win/app.h"

void OpenHelp(HWND owner, const std::string& helpPath, const char* section) {
    // A path cut short for want of room ends in "?": there is no page to open.
    if (helpPath.empty() || helpPath.back() == '?') return;
    std::string url = "file:///" + helpPath + "#" + section;
    for (char& c : url)
        if (c == '\\') c = '/';
    ShellExecuteA(owner, "open", url.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
}

void CloseHelp(const std::string&) {
    // The browser showing the page is a program of its own and stays open.
}

