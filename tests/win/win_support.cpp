#include "win_support.h"

#include "shell/win/app.h"

namespace {

int RecordMessage(HWND, const char* text, const char* title, UINT flags) {
    ShownMessages().push_back({text, title, flags});
    return IDOK;
}

}  // namespace

std::vector<ShownMessage>& ShownMessages() {
    static std::vector<ShownMessage> shown;
    return shown;
}

void InstallMessageRecorder() {
    ShownMessages().clear();
    SetMessageBoxFunction(RecordMessage);
}

HINSTANCE ProgramInstance() {
    static HINSTANCE instance = [] {
        HINSTANCE h = GetModuleHandleA(nullptr);
        RegisterMainClass(h);
        RegisterControlClasses(h);
        return h;
    }();
    return instance;
}

bool PumpMessages() {
    bool quit = false;
    MSG msg;
    while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
        if (msg.message == WM_QUIT) {
            quit = true;
            continue;
        }
        TranslateMessage(&msg);
        DispatchMessageA(&msg);
    }
    return quit;
}
