// Drives a running ferry2.exe from outside, for screenshots: presses OK in
// the path dialog, moves the main window to the next tab, or closes it.
//
//   ferry2-drive ok | next | close
#include <windows.h>
#include <commctrl.h>

#include <cstdio>
#include <cstring>

namespace {

HWND WaitForWindow(const char* title) {
    for (int i = 0; i < 100; ++i) {
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
        std::fprintf(stderr, "usage: ferry2-drive ok|next|close\n");
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
    if (std::strcmp(step, "close") == 0) {
        PostMessageA(main, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
        return 0;
    }
    return 2;
}
