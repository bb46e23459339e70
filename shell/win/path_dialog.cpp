// The path dialog: where the Vesperal 1.x folder lies.
#include <windows.h>
#include <shlobj.h>

#include "data/resource.h"
#include "shell/legacy_folder.h"
#include "shell/win/app.h"

namespace {

JobHost DialogHost(HWND owner) {
    JobHost host;
    host.showMessage = [owner](const char* text, const char* title) {
        ShowMessageBox(owner, text, title, MB_OK);
    };
    return host;
}

void OnOk(HWND dialog) {
    AppState& app = App();
    char text[1024] = {};
    GetDlgItemTextA(dialog, IDC_LEGACY_PATH, text, sizeof text);
    if (!AcceptLegacyFolder(text, DialogHost(dialog))) return;  // the dialog stays
    app.legacyRoot = text;
    DestroyWindow(dialog);
    InitMainWindow(app.mainWindow);
    ShowWindow(app.mainWindow, SW_SHOW);
}

void OnCancel(HWND dialog) {
    DestroyWindow(dialog);
    DestroyWindow(App().mainWindow);  // ends the program
}

}  // namespace

INT_PTR CALLBACK PathDialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
        case WM_INITDIALOG: {
            std::string folder = kDefaultLegacyFolder;
            ReadFerryIni(folder);
            SetDlgItemTextA(dialog, IDC_LEGACY_PATH, folder.c_str());
            return TRUE;
        }
        case WM_CLOSE:
            OnCancel(dialog);
            return TRUE;
        case WM_COMMAND:
            switch (LOWORD(wParam)) {
                case IDOK:
                    OnOk(dialog);
                    return TRUE;
                case IDCANCEL:
                    OnCancel(dialog);
                    return TRUE;
                case IDC_HELP_BUTTON:
                    OpenHelp(dialog, App().importerHelpPath, "path");
                    return TRUE;
                case IDC_BROWSE: {
                    std::string folder;
                    if (BrowseForFolder(dialog, "Select Vesperal 1.x Path", folder))
                        SetDlgItemTextA(dialog, IDC_LEGACY_PATH, folder.c_str());
                    return TRUE;
                }
            }
            break;
    }
    return FALSE;
}

int BrowseForFolder(HWND owner, const char* title, std::string& folderOut) {
    IMalloc* allocator = nullptr;
    if (SHGetMalloc(&allocator) != S_OK || !allocator) return 0;
    char* display = static_cast<char*>(allocator->Alloc(MAX_PATH));
    if (!display) {
        allocator->Release();
        return 0;
    }
    BROWSEINFOA info{};
    info.hwndOwner = owner;
    info.pszDisplayName = display;
    info.lpszTitle = title;
    info.ulFlags = BIF_RETURNONLYFSDIRS;
    int chosen = 0;
    if (LPITEMIDLIST item = SHBrowseForFolderA(&info)) {
        char path[MAX_PATH] = {};
        if (SHGetPathFromIDListA(item, path)) {
            folderOut = path;
            chosen = 1;
        }
        allocator->Free(item);
    }
    allocator->Free(display);
    allocator->Release();
    return chosen;
}
