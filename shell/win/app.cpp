#include "shell/win/app.h"

namespace {
AppState g_app;
MessageBoxFn g_messageBox = nullptr;
}  // namespace

AppState& App() { return g_app; }

void AppReset() {
    g_app.importLog.reset();
    g_app = AppState{};
}

MessageBoxFn SetMessageBoxFunction(MessageBoxFn fn) {
    MessageBoxFn previous = g_messageBox;
    g_messageBox = fn;
    return previous;
}

int ShowMessageBox(HWND owner, const char* text, const char* title, UINT flags) {
    if (g_messageBox) return g_messageBox(owner, text, title, flags);
    return MessageBoxA(owner, text, title, flags);
}
