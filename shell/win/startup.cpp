// Start-up, message loop and shutdown of ferry2.exe, in the program's order.
#include <windows.h>
#include <commctrl.h>

#include "astro/planet_files.h"
#include "data/resource.h"
#include "shell/data_roots.h"
#include "shell/help_path.h"
#include "base/platform.h"
#include "shell/win/app.h"
#include "stores/ddata_table.h"
#include "ui/win/controls.h"

namespace {

constexpr DWORD kErrorAlreadyExists = 183;
constexpr UINT kStopIcon = 0x10;

}  // namespace

int RegisterMainClass(HINSTANCE instance) {
    WNDCLASSEXA wc{};
    wc.cbSize = sizeof wc;
    wc.style = CS_HREDRAW | CS_VREDRAW;
    wc.lpfnWndProc = MainWindowProc;
    wc.cbClsExtra = 0;
    wc.cbWndExtra = DLGWINDOWEXTRA;
    wc.hInstance = instance;
    wc.hIcon = LoadIconA(instance, MAKEINTRESOURCEA(IDI_FERRY2));
    wc.hIconSm = wc.hIcon;
    wc.hCursor = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
    wc.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_BTNFACE + 1));
    wc.lpszMenuName = nullptr;
    wc.lpszClassName = "Ferry2";
    if (RegisterClassExA(&wc)) return 1;
    ShowMessageBox(nullptr, "RegisterClassEx Failed", "Error", MB_OK);
    WNDCLASSA plain{};
    plain.style = wc.style;
    plain.lpfnWndProc = wc.lpfnWndProc;
    plain.cbWndExtra = wc.cbWndExtra;
    plain.hInstance = instance;
    plain.hIcon = wc.hIcon;
    plain.hCursor = wc.hCursor;
    plain.hbrBackground = wc.hbrBackground;
    plain.lpszClassName = wc.lpszClassName;
    if (RegisterClassA(&plain)) return 1;
    ShowMessageBox(nullptr, "RegisterClass Failed Too", "Error", MB_OK);
    return 0;
}

void RegisterControlClasses(HINSTANCE instance) {
    INITCOMMONCONTROLSEX icc{sizeof(INITCOMMONCONTROLSEX), ICC_TAB_CLASSES | ICC_LISTVIEW_CLASSES};
    InitCommonControlsEx(&icc);
    RegisterHyperTextClass(instance);
    RegisterDibClass(instance);
    RegisterCalDateClass(instance);
    RegisterTableClass(instance);
    RegisterSymbolTextClass(instance);
    RegisterCShadeClass(instance);
}

HWND CreatePathDialog() {
    AppState& app = App();
    app.pathDialog = CreateDialogParamA(app.instanceHandle, "PathDlg", nullptr, PathDialogProc, 0);
    return app.pathDialog;
}

int Ferry2Run(HINSTANCE instance) {
    // The lock lives until the process ends; a second start leaves silently.
    AppState& app = App();
    app.instanceLock = CreateMutexA(nullptr, TRUE, "Ferry2");
    if (GetLastError() == kErrorAlreadyExists) return 0;

    app.instanceHandle = instance;
    app.busy = 0;
    if (!RegisterMainClass(instance)) return 0;

    LoadDdataTable(app.ddata);  // an unusable table does not stop start-up
    if (HRSRC found = FindResourceA(instance, "SatData", reinterpret_cast<LPCSTR>(RT_RCDATA)))
        app.satData = LoadResource(instance, found);

    if (!ResolveDataRoots("vesperal")) {
        ShowMessageBox(nullptr, kDataRootsMissingText, kDataRootsMissingTitle, kStopIcon);
        return 0;
    }

    RegisterControlClasses(instance);

    app.mainWindow = CreateDialogParamA(instance, "Ferry2", nullptr, nullptr, 0);
    if (!app.mainWindow) {
        // The loop still runs, with no window to end it.
        ShowMessageBox(nullptr, "CreateDlg failed", "Error", MB_OK);
    } else {
        const std::string module = platform::ModuleFileName();
        app.plannerHelpPath = ComposeHelpPath(module, "vesperal2.hlp");
        app.importerHelpPath = ComposeHelpPath(module, "ferry2.htm");
        app.helpCursor = LoadCursorA(instance, "HelpCursor");
        CreatePathDialog();
    }

    MSG msg;
    while (GetMessageA(&msg, nullptr, 0, 0) > 0) {
        if (app.mainWindow) {
            if (IsDialogMessageA(app.mainWindow, &msg)) continue;
            if (IsDialogMessageA(app.pathDialog, &msg)) continue;
        }
        TranslateMessage(&msg);
        DispatchMessageA(&msg);
    }

    PlanetFilesClose();
    app.ddata.fill(0);
    return static_cast<int>(msg.wParam);
}
