// The pages inside the tab control: ListDlg for Locations, Instruments and
// Observing Lists, LogDlg for the logs.
#include <cstring>

#include "data/resource.h"
#include "legacy/import_instruments.h"
#include "legacy/import_lists.h"
#include "legacy/import_locations.h"
#include "shell/log_page.h"
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

void ApplyImportButton(HWND page, const LogPage& state) {
    EnableWindow(GetDlgItem(page, IDC_IMPORT), state.importEnabled ? TRUE : FALSE);
}

// The page's questions, answered by its dialogs over the main window.
LogPageQuestions WindowQuestions(HWND page) {
    HWND owner = GetAncestor(page, GA_ROOT);
    LogPageQuestions ask;
    ask.instrumentType = [owner](const std::string& pendingName) {
        return InstrumentTypeDialog(owner, pendingName);
    };
    ask.choose = [owner](const char* title, const std::vector<std::string>& names) {
        return SelectEntryDialog(owner, title, names);
    };
    return ask;
}

// Create New Entry or Link to Existing Entry on the selected row; a settled
// row leaves its list box.
void SettleSelectedName(HWND page, int button) {
    LogPage& state = App().logPage;
    const int list = state.selectedList;
    const int row = state.selectedRow;
    const LogPageQuestions ask = WindowQuestions(page);
    const int settled = button == IDC_CREATE_ENTRY ? LogPageCreate(&state, ask) : LogPageLink(&state, ask);
    if (settled) SendDlgItemMessageA(page, list, LB_DELETESTRING, row, 0);
    ApplyImportButton(page, state);
}

}  // namespace

void FillListPage(HWND page, int index) {
    AppState& app = App();
    PageContent content;
    FillPage(index, app.legacyRoot, app.importLog.get(), content);
    ApplyPageToTable(GetDlgItem(page, IDC_TABLE), content);
}

void FillLogPage(HWND page) {
    LogPage& state = App().logPage;
    // Import stays disabled while the scan runs; its message may show.
    EnableWindow(GetDlgItem(page, IDC_IMPORT), FALSE);
    LogPageScan(&state, PageHost(page));
    for (int list : {kObserverList, kInstrumentList}) {
        HWND box = GetDlgItem(page, list);
        SendMessageA(box, LB_RESETCONTENT, 0, 0);
        for (const std::string& name : list == kObserverList ? state.names.observers : state.names.instruments)
            SendMessageA(box, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name.c_str()));
    }
    ApplyImportButton(page, state);
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

INT_PTR CALLBACK LogPageProc(HWND page, UINT message, WPARAM wParam, LPARAM) {
    LogPage& state = App().logPage;
    switch (message) {
        case WM_INITDIALOG:
            LogPageInit(&state);
            return TRUE;
        case WM_COMMAND:
            switch (LOWORD(wParam)) {
                case IDC_UNDEFINED_OBSERVERS:
                case IDC_UNDEFINED_INSTRUMENTS:
                    if (HIWORD(wParam) == LBN_SELCHANGE) {
                        const int list = LOWORD(wParam);
                        const LRESULT row = SendDlgItemMessageA(page, list, LB_GETCURSEL, 0, 0);
                        LogPageSelect(&state, list, row == LB_ERR ? -1 : static_cast<int>(row));
                    }
                    return TRUE;
                case IDC_CREATE_ENTRY:
                case IDC_LINK_ENTRY:
                    SettleSelectedName(page, LOWORD(wParam));
                    return TRUE;
                case IDC_IMPORT: {
                    SetCursor(LoadCursorA(nullptr, IDC_WAIT));
                    RunLogImport(&state, PageHost(page));
                    SetCursor(LoadCursorA(nullptr, IDC_ARROW));
                    return TRUE;
                }
            }
            break;
        case WM_CLOSE:
            DestroyWindow(page);
            return TRUE;
        case WM_DESTROY:
            LogPageClose(&state);
            return TRUE;
    }
    return FALSE;
}
