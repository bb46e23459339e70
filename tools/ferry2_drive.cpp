// Drives a running ferry2.exe from outside, for screenshots and end-to-end
// checks: presses OK in the path dialog, moves to the next tab, presses the
// page's import button, reads and answers the message that ends a job, or
// closes the main window.
//
//   ferry2-drive ok | next | import | message | close
#include <windows.h>
#include <commctrl.h>

#include <cstdio>
#include <cstring>

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

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: ferry2-drive ok|next|import|message|close\n");
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
    if (std::strcmp(step, "message") == 0) {
        // The message box's text is its static control 0xFFFF.
        HWND box = WaitForWindow("Ferry 2 Message");
        if (!box) return 1;
        char text[1024] = {};
        GetDlgItemTextA(box, 0xFFFF, text, sizeof text);
        std::printf("Ferry 2 Message\n%s\n", text);
        PostMessageA(box, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
        return 0;
    }
    if (std::strcmp(step, "close") == 0) {
        PostMessageA(main, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
        return 0;
    }
    return 2;
}
