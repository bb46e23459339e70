// The smaller controls. For now each shows its title on the dialog face;
// their full behaviour comes with the dialogs that use them.
#include "ui/win/controls.h"

namespace {

LRESULT CALLBACK TitleControlProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_PAINT) {
        PAINTSTRUCT ps;
        HDC dc = BeginPaint(window, &ps);
        RECT rc;
        GetClientRect(window, &rc);
        FillRect(dc, &rc, GetSysColorBrush(COLOR_BTNFACE));
        char text[256] = {};
        GetWindowTextA(window, text, sizeof text);
        SetBkMode(dc, TRANSPARENT);
        HFONT font = reinterpret_cast<HFONT>(SendMessageA(GetParent(window), WM_GETFONT, 0, 0));
        HGDIOBJ old = font ? SelectObject(dc, font) : nullptr;
        DrawTextA(dc, text, -1, &rc, DT_SINGLELINE);
        if (old) SelectObject(dc, old);
        EndPaint(window, &ps);
        return 0;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

LRESULT CALLBACK ShadeProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CREATE:
            EnableWindow(window, FALSE);  // a panel never takes clicks
            return 0;
        case WM_PAINT: {
            PAINTSTRUCT ps;
            HDC dc = BeginPaint(window, &ps);
            RECT rc;
            GetClientRect(window, &rc);
            const bool raised = (GetWindowLongA(window, GWL_STYLE) & 2) != 0;
            HPEN light = CreatePen(PS_SOLID, 1, GetSysColor(raised ? 20 : 16));
            HPEN dark = CreatePen(PS_SOLID, 1, GetSysColor(raised ? 16 : 20));
            HGDIOBJ old = SelectObject(dc, light);
            MoveToEx(dc, rc.left, rc.bottom - 1, nullptr);
            LineTo(dc, rc.left, rc.top);
            LineTo(dc, rc.right - 1, rc.top);
            SelectObject(dc, dark);
            LineTo(dc, rc.right - 1, rc.bottom - 1);
            LineTo(dc, rc.left, rc.bottom - 1);
            SetPixel(dc, rc.left, rc.bottom - 1, GetSysColor(COLOR_BTNFACE));
            SetPixel(dc, rc.right - 1, rc.top, GetSysColor(COLOR_BTNFACE));
            SelectObject(dc, old);
            DeleteObject(light);
            DeleteObject(dark);
            EndPaint(window, &ps);
            return 0;
        }
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

ATOM RegisterSimpleClass(HINSTANCE instance, const char* name, WNDPROC proc) {
    WNDCLASSA wc{};
    wc.style = CS_HREDRAW | CS_VREDRAW;
    wc.lpfnWndProc = proc;
    wc.hInstance = instance;
    wc.hCursor = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
    wc.lpszClassName = name;
    return RegisterClassA(&wc);
}

}  // namespace

ATOM RegisterHyperTextClass(HINSTANCE instance) {
    return RegisterSimpleClass(instance, "HyperText", TitleControlProc);
}
ATOM RegisterDibClass(HINSTANCE instance) { return RegisterSimpleClass(instance, "Dib", TitleControlProc); }
ATOM RegisterCalDateClass(HINSTANCE instance) {
    return RegisterSimpleClass(instance, "CalDate", TitleControlProc);
}
ATOM RegisterSymbolTextClass(HINSTANCE instance) {
    return RegisterSimpleClass(instance, "SymbolText", TitleControlProc);
}
ATOM RegisterCShadeClass(HINSTANCE instance) { return RegisterSimpleClass(instance, "CShade", ShadeProc); }
