// The pages inside the tab control: ListDlg for Locations, Instruments and
// Observing Lists, LogDlg for the logs.
#include <cstring>

#include "data/resource.h"
#include "legacy/import_instruments.h"
#include "legacy/import_lists.h"
#include "legacy/import_locations.h"
#include "shell/page_content.h"
#include "shell/win/app.h"
#include "ui/table_model.h"

namespace {

// Puts the page's rows and ticks into its Table as the page fillers do.
void ApplyPageToTable(HWND table, const PageContent& content) {
    SetWindowTextA(table, content.columns.c_str());
    SendMessageA(table, LB_RESETCONTENT, 0, 0);
    for (const PageRow& row : content.rows) {
        const LRESULT at = SendMessageA(table, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(row.text.c_str()));
        SendMessageA(table, LB_SETITEMDATA, at, row.itemData);
    }
    if (!content.hasTicks) return;
    SendMessageA(table, kTmSetTicks, content.ticks.size(), 0);
    if (auto* ticks = reinterpret_cast<uint8_t*>(SendMessageA(table, kTmGetTicks, 0, 0)))
        std::memcpy(ticks, content.ticks.data(), content.ticks.size());
}

JobHost PageHost(HWND page) {
    AppState& app = App();
    JobHost host;
    host.log = app.importLog.get();
    host.legacyRoot = app.legacyRoot;
    host.showMessage = [](const char* text, const char* title) {
        ShowMessageBox(App().mainWindow, text, title, MB_OK);
    };
    host.ticks = [page] {
        HWND table = GetDlgItem(page, IDC_TABLE);
        TickArray ticks;
        ticks.data = reinterpret_cast<uint8_t*>(SendMessageA(table, kTmGetTicks, 0, 0));
        ticks.count = static_cast<size_t>(SendMessageA(table, kTmGetTickCount, 0, 0));
        return ticks;
    };
    return host;
}

// The jobs of the three list pages.
void RunPageJob(HWND page) {
    const JobHost host = PageHost(page);
    switch (App().currentPage) {
        case kLocationsPage: ImportLocations(host); break;
        case kInstrumentsPage: ImportInstruments(host); break;
        case kListsPage: ImportObservingLists(host); break;
        default: break;
    }
}

}  // namespace

void FillListPage(HWND page, int index) {
    AppState& app = App();
    PageContent content;
    FillPage(index, app.legacyRoot, app.importLog.get(), content);
    ApplyPageToTable(GetDlgItem(page, IDC_TABLE), content);
}

void FillLogPage(HWND page) {
    // The scan for undefined observers and instruments comes with the log
    // import; until then Import stays disabled.
    EnableWindow(GetDlgItem(page, IDC_IMPORT), FALSE);
}

INT_PTR CALLBACK ListPageProc(HWND page, UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
        case WM_INITDIALOG:
            return TRUE;
        case WM_COMMAND:
            if (LOWORD(wParam) == IDC_IMPORT) {
                RunPageJob(page);
                return TRUE;
            }
            break;
        case WM_CLOSE:
            DestroyWindow(page);
            return TRUE;
        case WM_DESTROY:
            return TRUE;
    }
    return FALSE;
}

INT_PTR CALLBACK LogPageProc(HWND page, UINT message, WPARAM, LPARAM) {
    switch (message) {
        case WM_INITDIALOG:
            return TRUE;
        case WM_CLOSE:
            DestroyWindow(page);
            return TRUE;
        case WM_DESTROY:
            App().undefinedObservers.clear();
            App().undefinedInstruments.clear();
            return TRUE;
    }
    return FALSE;
}
