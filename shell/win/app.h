// The Windows program: process-wide state, start-up, the main window, the
// path dialog and the pages. Every decision lives in the core; this code
// gathers input, shows results and keeps the start-up order.
#pragma once

#include <windows.h>

#include <array>
#include <string>
#include <vector>

#include "base/file_utils.h"
#include "shell/log_page.h"

struct AppState {
    HANDLE instanceLock = nullptr;  // the "Ferry2" mutex, never closed by the program
    HINSTANCE instanceHandle = nullptr;
    HWND mainWindow = nullptr;
    HWND pathDialog = nullptr;
    std::string legacyRoot;  // at most 1023 characters
    FilePtr importLog;       // ferry2.log, from the accepted folder to shutdown
    int currentPage = 0;
    HWND pageWindow = nullptr;
    std::string plannerHelpPath;
    std::string importerHelpPath;
    HCURSOR helpCursor = nullptr;
    // Set to 0 at start and tested before closing; nothing sets it otherwise.
    int busy = 0;
    // Set by the command with identifier 2; nothing reads it.
    int cancelSeen = 0;
    LogPage logPage;  // the Logs page's lists and links, while the page stands
    std::array<uint8_t, 1536> ddata{};
    HGLOBAL satData = nullptr;
};

AppState& App();
// Back to a program that has not started (for tests).
void AppReset();

// Every message box of the program goes through here, so that tests can
// answer it without a click.
using MessageBoxFn = int (*)(HWND owner, const char* text, const char* title, UINT flags);
MessageBoxFn SetMessageBoxFunction(MessageBoxFn fn);  // null restores MessageBoxA
int ShowMessageBox(HWND owner, const char* text, const char* title, UINT flags);

// The whole program: start-up, message loop, shutdown. Returns the exit code.
int Ferry2Run(HINSTANCE instance);

// Start-up steps that tests run one by one.
int RegisterMainClass(HINSTANCE instance);
void RegisterControlClasses(HINSTANCE instance);
HWND CreatePathDialog();

LRESULT CALLBACK MainWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
INT_PTR CALLBACK PathDialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
INT_PTR CALLBACK ListPageProc(HWND page, UINT message, WPARAM wParam, LPARAM lParam);
INT_PTR CALLBACK LogPageProc(HWND page, UINT message, WPARAM wParam, LPARAM lParam);

int BrowseForFolder(HWND owner, const char* title, std::string& folderOut);
void InitMainWindow(HWND mainWindow);
void ShowPage(HWND mainWindow, int index, int force);

// Help: an HTML page beside the program, opened at a section.
void OpenHelp(HWND owner, const std::string& helpPath, const char* section);
void CloseHelp(const std::string& helpPath);

// Page fillers: a ListDlg page from the legacy folder, and the Logs page.
void FillListPage(HWND page, int index);
void FillLogPage(HWND page);

// The Logs page's dialogs: InstTypeDlg on a pending name (0 cancel, 1
// telescope, 2 binoculars), and the choice of one name from a list (the
// row, or -1).
int InstrumentTypeDialog(HWND owner, const std::string& pendingName);
int SelectEntryDialog(HWND owner, const char* title, const std::vector<std::string>& names);
