// Drives a running ferry2.exe from outside, for screenshots and end-to-end
// checks: presses OK in the path dialog, moves to the next tab, presses the
// page's import button, reads and answers the message that ends a job (or
// the Logs page's notice), settles a name of the Logs page, or closes the
// main window.
//
//   ferry2-drive ok | next | import | message | notice | close
//   ferry2-drive create observer NAME
//   ferry2-drive create instrument NAME telescope|binoculars
//   ferry2-drive link observer|instrument NAME STORED-NAME
#include <windows.h>
#include <commctrl.h>

#include <cstdio>
#include <cstring>
#include <cwchar>

namespace {

HWND WaitForWindow(const char* title) {
    for (int i = 0; i < 300; ++i) {  // up to 30 s: a first window under Wine can be slow
        HWND w = FindWindowA(nullptr, title);
        if (w && IsWindowVisible(w)) return w;
        Sleep(100);
    }
    return nullptr;
}

// Lets the program finish what the last step started (and paint it).
void Settle(HWND window) {
    for (int i = 0; i < 10; ++i) {
        DWORD_PTR result = 0;
        SendMessageTimeoutA(window, WM_NULL, 0, 0, SMTO_BLOCK, 2000, &result);
        Sleep(50);
    }
}

// Reads a message box of `title` and presses its OK; 1 when there was one.
int AnswerBox(const char* title) {
    // The message box's text is its static control 0xFFFF.
    HWND box = WaitForWindow(title);
    if (!box) return 0;
    char text[1024] = {};
    GetDlgItemTextA(box, 0xFFFF, text, sizeof text);
    std::printf("%s\n%s\n", title, text);
    PostMessageA(box, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
    return 1;
}

// Picks the row of exactly `text` in a list box, as a click would, telling
// the list's owner; false when no row holds it.
bool PickRow(HWND owner, int listId, const char* text) {
    // Read as wide text: a list of another process hands its strings over
    // reliably only so.
    wchar_t wanted[256] = {};
    MultiByteToWideChar(CP_ACP, 0, text, -1, wanted, 255);
    HWND list = GetDlgItem(owner, listId);
    const LRESULT count = SendMessageW(list, LB_GETCOUNT, 0, 0);
    for (LRESULT row = 0; row < count; ++row) {
        wchar_t item[256] = {};
        if (SendMessageW(list, LB_GETTEXTLEN, row, 0) >= 255) continue;
        SendMessageW(list, LB_GETTEXT, row, reinterpret_cast<LPARAM>(item));
        if (std::wcscmp(item, wanted) != 0) continue;
        SendMessageW(list, LB_SETCURSEL, row, 0);
        SendMessageW(owner, WM_COMMAND, MAKEWPARAM(listId, LBN_SELCHANGE), reinterpret_cast<LPARAM>(list));
        return true;
    }
    return false;
}

// Create New Entry or Link to Existing Entry on a row of the Logs page, and
// the dialogs that follow.
int Settle(HWND main, int argc, char** argv) {
    const bool create = std::strcmp(argv[1], "create") == 0;
    const bool observer = std::strcmp(argv[2], "observer") == 0;
    // The Logs page is the dialog under the tab control that holds the lists.
    HWND page = nullptr;
    for (HWND w = FindWindowExA(GetDlgItem(main, 1001), nullptr, "#32770", nullptr); w && !page;
         w = FindWindowExA(GetDlgItem(main, 1001), w, "#32770", nullptr))
        if (GetDlgItem(w, 1006)) page = w;
    if (!page) {
        std::fprintf(stderr, "ferry2-drive: no Logs page\n");
        return 1;
    }
    if (!PickRow(page, observer ? 1006 : 1007, argv[3])) {
        std::fprintf(stderr, "ferry2-drive: no row %s\n", argv[3]);
        return 1;
    }
    PostMessageA(page, WM_COMMAND, MAKEWPARAM(create ? 1009 : 1008, BN_CLICKED), 0);
    if (!observer) {
        HWND type = WaitForWindow("Select Instrument Type");
        if (!type) return 1;
        const bool binoculars = create && argc > 4 && std::strcmp(argv[4], "binoculars") == 0;
        CheckRadioButton(type, 1010, 1011, binoculars ? 1011 : 1010);
        PostMessageA(type, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
    }
    if (!create) {
        HWND choose = WaitForWindow(observer ? "Select Observer" : "Select Instrument");
        if (!choose || argc < 5 || !PickRow(choose, 1020, argv[4])) return 1;
        PostMessageA(choose, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
    }
    Settle(main);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    const bool settling = argc >= 4 && (std::strcmp(argv[1], "create") == 0 || std::strcmp(argv[1], "link") == 0);
    if (argc != 2 && !settling) {
        std::fprintf(stderr,
                     "usage: ferry2-drive ok|next|import|message|notice|close\n"
                     "       ferry2-drive create observer NAME | create instrument NAME telescope|binoculars\n"
                     "       ferry2-drive link observer|instrument NAME STORED-NAME\n");
        return 2;
    }
    const char* step = argv[1];
    if (std::strcmp(step, "ok") == 0) {
        HWND path = WaitForWindow("Ferry 2 (version 1.1)");
        if (!path) return 1;
        PostMessageA(path, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
        HWND main = WaitForWindow("Vesperal Importer (version 1.1)");
        if (!main) return 1;
        Settle(main);
        return 0;
    }
    HWND main = WaitForWindow("Vesperal Importer (version 1.1)");
    if (!main) return 1;
    if (settling) return Settle(main, argc, argv);
    if (std::strcmp(step, "next") == 0) {
        HWND tabs = GetDlgItem(main, 1001);
        // The tab control moves on and tells its parent, as for a key press.
        PostMessageA(tabs, WM_KEYDOWN, VK_RIGHT, 0);
        PostMessageA(tabs, WM_KEYUP, VK_RIGHT, 0);
        Settle(main);
        return 0;
    }
    if (std::strcmp(step, "import") == 0) {
        HWND page = FindWindowExA(GetDlgItem(main, 1001), nullptr, "#32770", nullptr);
        if (!page) return 1;
        PostMessageA(page, WM_COMMAND, MAKEWPARAM(101, BN_CLICKED), 0);
        return 0;
    }
    if (std::strcmp(step, "message") == 0) return AnswerBox("Ferry 2 Message") ? 0 : 1;
    if (std::strcmp(step, "notice") == 0) {
        // The page fills its lists once its notice is gone.
        if (!AnswerBox("Vesperal 2 Log Import")) return 1;
        for (int i = 0; i < 100 && FindWindowA(nullptr, "Vesperal 2 Log Import"); ++i) Sleep(100);
        Settle(main);
        return 0;
    }
    if (std::strcmp(step, "close") == 0) {
        PostMessageA(main, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
        return 0;
    }
    return 2;
}
