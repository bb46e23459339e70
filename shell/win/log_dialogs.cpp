// The Logs page's two small modal dialogs: InstTypeDlg, which asks whether a
// name stands for a telescope or binoculars, and SelectEntryDlg, which
// offers the stored observers or instruments by name.
#include "data/resource.h"
#include "shell/log_page.h"
#include "shell/win/app.h"

namespace {

INT_PTR CALLBACK InstrumentTypeProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG: {
            const auto* pendingName = reinterpret_cast<const std::string*>(lParam);
            CheckRadioButton(dialog, IDC_TYPE_TELESCOPE, IDC_TYPE_BINOCULARS, IDC_TYPE_TELESCOPE);
            SetDlgItemTextA(dialog, IDC_TYPE_TEXT, InstrumentTypeText(*pendingName).c_str());
            return TRUE;
        }
        case WM_COMMAND:
            switch (LOWORD(wParam)) {
                case IDOK:
                    EndDialog(dialog, IsDlgButtonChecked(dialog, IDC_TYPE_BINOCULARS) == BST_CHECKED
                                          ? kTypeBinoculars
                                          : kTypeTelescope);
                    return TRUE;
                case IDCANCEL:
                    EndDialog(dialog, kTypeCancelled);
                    return TRUE;
                case IDC_HELP_BUTTON:  // this dialog has no help of its own
                    return TRUE;
            }
            break;
    }
    return FALSE;
}

struct SelectRequest {
    const char* title;
    const std::vector<std::string>* names;
};

// OK ends with the selected row, or -1 when none is.
void EndWithSelection(HWND dialog) {
    const LRESULT row = SendDlgItemMessageA(dialog, IDC_SELECT_LIST, LB_GETCURSEL, 0, 0);
    EndDialog(dialog, row == LB_ERR ? -1 : row);
}

INT_PTR CALLBACK SelectEntryProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG: {
            const auto* request = reinterpret_cast<const SelectRequest*>(lParam);
            SetWindowTextA(dialog, request->title);
            for (const std::string& name : *request->names)
                SendDlgItemMessageA(dialog, IDC_SELECT_LIST, LB_ADDSTRING, 0,
                                    reinterpret_cast<LPARAM>(name.c_str()));
            SendDlgItemMessageA(dialog, IDC_SELECT_LIST, LB_SETCURSEL, 0, 0);
            return TRUE;
        }
        case WM_COMMAND:
            switch (LOWORD(wParam)) {
                case IDC_SELECT_LIST:
                    if (HIWORD(wParam) == LBN_DBLCLK) EndWithSelection(dialog);
                    return TRUE;
                case IDOK:
                    EndWithSelection(dialog);
                    return TRUE;
                case IDCANCEL:
                    EndDialog(dialog, -1);
                    return TRUE;
            }
            break;
    }
    return FALSE;
}

}  // namespace

int InstrumentTypeDialog(HWND owner, const std::string& pendingName) {
    const INT_PTR answer = DialogBoxParamA(App().instanceHandle, "InstTypeDlg", owner, InstrumentTypeProc,
                                           reinterpret_cast<LPARAM>(&pendingName));
    // A dialog that could not be shown is a cancel.
    return answer == kTypeTelescope || answer == kTypeBinoculars ? static_cast<int>(answer) : kTypeCancelled;
}

int SelectEntryDialog(HWND owner, const char* title, const std::vector<std::string>& names) {
    SelectRequest request{title, &names};
    const INT_PTR row = DialogBoxParamA(App().instanceHandle, "SelectEntryDlg", owner, SelectEntryProc,
                                        reinterpret_cast<LPARAM>(&request));
    return row >= 0 ? static_cast<int>(row) : -1;
}
