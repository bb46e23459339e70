// The main window: four tabs, one page at a time, Close and Help.
#include <windows.h>
#include <commctrl.h>

#include "data/resource.h"
#include "shell/import_log.h"
#include "shell/win/app.h"

namespace {

const char* const kTabTitles[4] = {"Locations", "Instruments", "Observing Lists", "Logs"};

// Shutdown when the main window goes: the link tables, help, the log, the loop.
void ShutDown() {
    AppState& app = App();
    LogPageClose(&app.logPage);
    CloseHelp(app.plannerHelpPath);
    CloseHelp(app.importerHelpPath);
    app.importLog.reset();
    PostQuitMessage(0);
}

}  // namespace

void InitMainWindow(HWND mainWindow) {
    AppState& app = App();
    app.importLog = OpenImportLog();  // writes are ignored when this fails
    HWND tabs = GetDlgItem(mainWindow, IDC_TABS);
    for (int i = 0; i < 4; ++i) {
        TCITEMA item{};
        item.mask = TCIF_TEXT;
        item.pszText = const_cast<char*>(kTabTitles[i]);
        SendMessageA(tabs, TCM_INSERTITEMA, i, reinterpret_cast<LPARAM>(&item));
    }
    app.pageWindow = nullptr;
    SendMessageA(tabs, TCM_SETCURSEL, 0, 0);
    ShowPage(mainWindow, 0, 1);
}

void ShowPage(HWND mainWindow, int index, int force) {
    AppState& app = App();
    const bool changed = index != app.currentPage || force;
    app.currentPage = index;
    if (app.pageWindow && changed) {
        DestroyWindow(app.pageWindow);
        app.pageWindow = nullptr;
    }
    if (app.pageWindow) return;
    HWND tabs = GetDlgItem(mainWindow, IDC_TABS);
    if (index == 3) {
        app.pageWindow = CreateDialogParamA(app.instanceHandle, "LogDlg", tabs, LogPageProc, 0);
        if (app.pageWindow) FillLogPage(app.pageWindow);
    } else {
        app.pageWindow = CreateDialogParamA(app.instanceHandle, "ListDlg", tabs, ListPageProc, 0);
        if (app.pageWindow) FillListPage(app.pageWindow, index);
    }
}

LRESULT CALLBACK MainWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    AppState& app = App();
    switch (message) {
        case WM_GETFONT:
            return SendMessageA(GetDlgItem(window, IDOK), WM_GETFONT, 0, 0);
        case WM_NOTIFY: {
            const NMHDR* hdr = reinterpret_cast<const NMHDR*>(lParam);
            if (hdr->idFrom == IDC_TABS && hdr->code == static_cast<UINT>(TCN_SELCHANGE)) {
                const int selected =
                    static_cast<int>(SendMessageA(GetDlgItem(window, IDC_TABS), TCM_GETCURSEL, 0, 0));
                ShowPage(window, selected, 0);
                return 0;
            }
            break;
        }
        case WM_COMMAND:
            switch (LOWORD(wParam)) {
                case IDOK:
                    DestroyWindow(window);
                    return 0;
                case IDCANCEL:
                    app.cancelSeen = 1;
                    break;
                case IDC_HELP_BUTTON:
                    OpenHelp(window, app.importerHelpPath, "contents");
                    return 0;
            }
            break;
        case WM_CLOSE:
            if (app.busy == 0) DestroyWindow(window);
            return 0;
        case WM_DESTROY:
            if (app.busy == 0) ShutDown();
            return 0;
    }
    return DefDlgProcA(window, message, wParam, lParam);
}
