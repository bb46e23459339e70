// The Table window: a header (child 101) over an owner-drawn list box
// (child 100). The rules live in TableModel; this draws and routes messages.
#include <windows.h>
#include <commctrl.h>

#include <string>
#include <vector>

#include "data/resource.h"
#include "ui/table_model.h"
#include "ui/win/controls.h"

namespace {

constexpr DWORD kHeaderStyle = 0x40800000;  // child, border
constexpr DWORD kListStyle = 0x40210051;    // child, scroll bar, owner-drawn fixed, strings, notify
constexpr DWORD kChildExStyle = 0x200;      // client edge
constexpr COLORREF kTickTransparent = RGB(0, 255, 0);

struct TableState {
    HWND listWindow = nullptr;
    HWND headerWindow = nullptr;
    HINSTANCE instance = nullptr;
    TableModel model;
    HBITMAP tickBitmap = nullptr;
    WNDPROC listWindowProc = nullptr;
};

TableState* StateOf(HWND table) { return reinterpret_cast<TableState*>(GetWindowLongPtrA(table, 0)); }

TableItemData ItemDataOf(HWND list) {
    return [list](int index) { return static_cast<intptr_t>(SendMessageA(list, LB_GETITEMDATA, index, 0)); };
}

std::string WindowTitle(HWND window) {
    char title[512] = {};
    GetWindowTextA(window, title, sizeof title);
    return title;
}

int HeaderClientWidth(const TableState& s) {
    RECT rc;
    GetClientRect(s.headerWindow, &rc);
    return rc.right - rc.left;
}

// Rebuilds the header items; returns the column count.
int RebuildHeader(HWND table, TableState& s, const std::string& text, int width) {
    const auto items = TableRebuildHeader(s.model, text, width, WindowTitle(table));
    const int count = static_cast<int>(SendMessageA(s.headerWindow, HDM_GETITEMCOUNT, 0, 0));
    for (int i = 0; i < count; ++i) SendMessageA(s.headerWindow, HDM_DELETEITEM, 0, 0);
    const int whole = HeaderClientWidth(s);
    int at = 0;
    for (const TableHeaderItem& item : items) {
        HDITEMA hd{};
        hd.mask = HDI_WIDTH | HDI_TEXT | HDI_FORMAT;
        hd.fmt = HDF_STRING | HDF_CENTER;
        hd.cxy = item.width == 0 ? whole : item.width;
        hd.pszText = const_cast<char*>(item.text.c_str());
        hd.cchTextMax = static_cast<int>(item.text.size());
        SendMessageA(s.headerWindow, HDM_INSERTITEMA, at++, reinterpret_cast<LPARAM>(&hd));
    }
    return s.model.columnCount;
}

void InvalidateRow(TableState& s, int row) {
    RECT rc;
    GetClientRect(s.listWindow, &rc);
    const int top = static_cast<int>(SendMessageA(s.listWindow, LB_GETTOPINDEX, 0, 0));
    rc.top += (row - top) * s.model.drawnRowHeight;
    rc.bottom = rc.top + s.model.drawnRowHeight;
    InvalidateRect(s.listWindow, &rc, FALSE);
}

void DrawRow(TableState& s, const DRAWITEMSTRUCT& di) {
    if (di.itemAction == ODA_FOCUS) return;
    s.model.drawnRowHeight = di.rcItem.bottom - di.rcItem.top;
    if (static_cast<int>(di.itemID) < 0) return;
    const int row = static_cast<int>(di.itemID);
    const bool sorted = s.model.sortColumn != 0 && s.model.sortOrder;
    const int mapped = sorted ? s.model.sortOrder[row] : row;
    const LRESULT len = SendMessageA(s.listWindow, LB_GETTEXTLEN, mapped, 0);
    if (len <= 0) return;
    std::string text(static_cast<size_t>(len) + 1, '\0');
    SendMessageA(s.listWindow, LB_GETTEXT, mapped, reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<size_t>(len));

    const bool selected = (di.itemState & ODS_SELECTED) != 0;
    const COLORREF back = GetSysColor(selected ? COLOR_HIGHLIGHT : COLOR_WINDOW);
    const COLORREF fore = GetSysColor(selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT);
    HBRUSH brush = CreateSolidBrush(back);
    FillRect(di.hDC, &di.rcItem, brush);
    DeleteObject(brush);

    int x = di.rcItem.left;
    if (s.model.hasTicks) {
        const int index = TableTickIndex(s.model, row, ItemDataOf(s.listWindow));
        if (index >= 0 && index < s.model.tickCount && s.model.ticks[static_cast<size_t>(index)] &&
            s.tickBitmap) {
            BITMAP bm;
            GetObjectA(s.tickBitmap, sizeof bm, &bm);
            HDC mem = CreateCompatibleDC(di.hDC);
            HGDIOBJ old = SelectObject(mem, s.tickBitmap);
            TransparentBlt(di.hDC, di.rcItem.left + 2, di.rcItem.top, bm.bmWidth, bm.bmHeight, mem, 0, 0,
                           bm.bmWidth, bm.bmHeight, kTickTransparent);
            SelectObject(mem, old);
            DeleteDC(mem);
        }
        x += s.model.columnWidths[0];
    }
    x += 4;
    SetBkColor(di.hDC, back);
    SetTextColor(di.hDC, fore);
    int column = s.model.hasTicks ? 1 : 0;
    for (const std::string& part : TableSplitRow(text)) {
        RECT rc = di.rcItem;
        rc.left = x;
        DrawTextA(di.hDC, part.c_str(), static_cast<int>(part.size()), &rc, DT_SINGLELINE);
        x += column < kTableMaxColumns ? s.model.columnWidths[static_cast<size_t>(column)] : 0;
        ++column;
    }
}

LRESULT CALLBACK ListRowProc(HWND list, UINT message, WPARAM wParam, LPARAM lParam) {
    HWND table = GetParent(list);
    TableState* s = StateOf(table);
    if (!s) return DefWindowProcA(list, message, wParam, lParam);
    const int x = static_cast<short>(LOWORD(lParam));
    const int y = static_cast<short>(HIWORD(lParam));
    const int top = static_cast<int>(CallWindowProcA(s->listWindowProc, list, LB_GETTOPINDEX, 0, 0));
    const int row = TableRowAt(top, y, s->model.rowHeight);
    switch (message) {
        case WM_LBUTTONDOWN:
            if (TableTickClickHits(s->model, x)) {
                SendMessageA(table, WM_COMMAND, MAKEWPARAM(kTableListId, kTableTickChanged), row);
                return 0;
            }
            break;
        case WM_LBUTTONDBLCLK: {
            const int index = TableTickIndex(s->model, row, ItemDataOf(list));
            SendMessageA(GetParent(table), kTmRowDoubleClick, index, lParam);
            return 0;
        }
        case WM_RBUTTONDOWN: {
            const int index = TableTickIndex(s->model, row, ItemDataOf(list));
            // Select the row as a left click would, without touching its tick.
            CallWindowProcA(s->listWindowProc, list, WM_LBUTTONDOWN, MK_LBUTTON, lParam);
            CallWindowProcA(s->listWindowProc, list, WM_LBUTTONUP, 0, lParam);
            POINT pt{x, y};
            ClientToScreen(list, &pt);
            SendMessageA(GetParent(table), kTmRowRightClick, index, MAKELPARAM(pt.x, pt.y));
            return 0;
        }
    }
    return CallWindowProcA(s->listWindowProc, list, message, wParam, lParam);
}

LRESULT OnCreate(HWND table, const CREATESTRUCTA& cs) {
    auto* s = new TableState;
    SetWindowLongPtrA(table, 0, reinterpret_cast<LONG_PTR>(s));
    TableModelInit(s->model, static_cast<uint32_t>(cs.style));
    s->instance = cs.hInstance;
    s->tickBitmap = LoadBitmapA(cs.hInstance, MAKEINTRESOURCEA(IDB_TICK));
    RECT rc;
    GetClientRect(table, &rc);
    s->headerWindow = CreateWindowExA(kChildExStyle, WC_HEADERA, "", kHeaderStyle, 0, 0, rc.right,
                                      kTableHeaderHeight, table,
                                      reinterpret_cast<HMENU>(static_cast<INT_PTR>(kTableHeaderId)),
                                      cs.hInstance, nullptr);
    const DWORD listStyle = (static_cast<DWORD>(cs.style) | kListStyle) & ~WS_VISIBLE;
    s->listWindow = CreateWindowExA(kChildExStyle, "listbox", "", listStyle, 0, kTableListTop, rc.right,
                                    rc.bottom - kTableListTop, table,
                                    reinterpret_cast<HMENU>(static_cast<INT_PTR>(kTableListId)),
                                    cs.hInstance, nullptr);
    if (HWND parent = GetParent(table)) {
        const WPARAM font = static_cast<WPARAM>(SendMessageA(parent, WM_GETFONT, 0, 0));
        SendMessageA(s->headerWindow, WM_SETFONT, font, 0);
        SendMessageA(s->listWindow, WM_SETFONT, font, 0);
    }
    // The Table's own style reaches the list box, and its item-data bit is the
    // list box's no-redraw bit: turn redrawing back on so the rows paint.
    SendMessageA(s->listWindow, WM_SETREDRAW, TRUE, 0);
    s->listWindowProc = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrA(s->listWindow, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(ListRowProc)));
    RebuildHeader(table, *s, "", 0);
    const int width = s->model.columnCount ? rc.right / s->model.columnCount : kTableDefaultWidth;
    RebuildHeader(table, *s, "", width);
    ShowWindow(s->headerWindow, SW_SHOW);
    ShowWindow(s->listWindow, SW_SHOW);
    return 0;
}

void OnDestroy(HWND table) {
    TableState* s = StateOf(table);
    if (!s) return;
    if (s->tickBitmap) DeleteObject(s->tickBitmap);
    DestroyWindow(s->listWindow);
    DestroyWindow(s->headerWindow);
    SetWindowLongPtrA(table, 0, 0);
    delete s;
}

LRESULT OnCommand(HWND table, TableState& s, WPARAM wParam, LPARAM lParam) {
    if (LOWORD(wParam) != kTableListId) return 0;
    HWND parent = GetParent(table);
    const int id = GetDlgCtrlID(table);
    if (HIWORD(wParam) == kTableTickChanged) {
        const int row = static_cast<int>(lParam);
        int index = 0;
        uint8_t value = 0;
        if (!TableFlipTick(s.model, row, ItemDataOf(s.listWindow), &index, &value)) return 0;
        SendMessageA(parent, WM_COMMAND, MAKEWPARAM(id, kTableTickChanged), MAKELPARAM(index, value));
        InvalidateRow(s, row);
    } else if (HIWORD(wParam) == LBN_SELCHANGE) {
        SendMessageA(parent, WM_COMMAND, MAKEWPARAM(id, LBN_SELCHANGE), lParam);
    }
    return 0;
}

LRESULT OnNotify(HWND table, TableState& s, const NMHDR& hdr) {
    if (hdr.idFrom != kTableHeaderId) return 0;
    const auto& nm = reinterpret_cast<const NMHEADERA&>(hdr);
    if (hdr.code == static_cast<UINT>(HDN_ENDTRACKA)) {
        if (nm.pitem && (nm.pitem->mask & HDI_WIDTH)) TableEndTrack(s.model, nm.iItem, nm.pitem->cxy);
        InvalidateRect(s.listWindow, nullptr, FALSE);
    } else if (hdr.code == static_cast<UINT>(HDN_ITEMCLICKA)) {
        const int rows = static_cast<int>(SendMessageA(s.listWindow, LB_GETCOUNT, 0, 0));
        if (TableHeaderClick(s.model, nm.iItem, rows)) InvalidateRect(s.listWindow, nullptr, TRUE);
    }
    (void)table;
    return 0;
}

bool IsForwardedListMessage(UINT message) {
    switch (message) {
        case LB_ADDSTRING:
        case LB_INSERTSTRING:
        case LB_DELETESTRING:
        case LB_RESETCONTENT:
        case LB_SETCURSEL:
        case LB_GETCURSEL:
        case LB_GETTEXT:
        case LB_GETTEXTLEN:
        case LB_GETITEMDATA:
        case LB_SETITEMDATA:
            return true;
    }
    return false;
}

LRESULT CALLBACK TableProc(HWND table, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_CREATE) return OnCreate(table, *reinterpret_cast<const CREATESTRUCTA*>(lParam));
    TableState* s = StateOf(table);
    if (!s) return DefWindowProcA(table, message, wParam, lParam);
    if (IsForwardedListMessage(message)) {
        if (message == LB_RESETCONTENT) wParam = lParam = 0;
        return SendMessageA(s->listWindow, message, wParam, lParam);
    }
    switch (message) {
        case WM_DESTROY:
            OnDestroy(table);
            return 0;
        case WM_SETTEXT: {
            const std::string text = lParam ? reinterpret_cast<const char*>(lParam) : "";
            RebuildHeader(table, *s, text, 0);
            if (s->model.columnCount != 0)
                RebuildHeader(table, *s, text, TableCommonWidth(s->model, HeaderClientWidth(*s)));
            break;
        }
        case WM_PAINT: {
            PAINTSTRUCT ps;
            HDC dc = BeginPaint(table, &ps);
            RECT rc;
            GetClientRect(table, &rc);
            FillRect(dc, &rc, GetSysColorBrush(COLOR_BTNFACE));
            EndPaint(table, &ps);
            return 0;
        }
        case WM_MEASUREITEM: {
            auto* mi = reinterpret_cast<MEASUREITEMSTRUCT*>(lParam);
            if (mi->CtlID != kTableListId) return 1;
            HDC dc = GetDC(s->listWindow ? s->listWindow : table);
            HFONT font = s->listWindow ? reinterpret_cast<HFONT>(SendMessageA(s->listWindow, WM_GETFONT, 0, 0))
                                       : nullptr;
            HGDIOBJ old = font ? SelectObject(dc, font) : nullptr;
            TEXTMETRICA tm;
            GetTextMetricsA(dc, &tm);
            if (old) SelectObject(dc, old);
            ReleaseDC(s->listWindow ? s->listWindow : table, dc);
            s->model.rowHeight = TableRowHeight(tm.tmHeight);
            mi->itemHeight = static_cast<UINT>(s->model.rowHeight);
            return TRUE;
        }
        case WM_DRAWITEM: {
            const auto* di = reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
            if (di->CtlID == kTableListId) DrawRow(*s, *di);
            return TRUE;
        }
        case WM_COMMAND:
            return OnCommand(table, *s, wParam, lParam);
        case WM_NOTIFY:
            return OnNotify(table, *s, *reinterpret_cast<const NMHDR*>(lParam));
        case kTmSetColumnWidths: {
            const int n = static_cast<int>(wParam) < kTableMaxColumns ? static_cast<int>(wParam) : kTableMaxColumns;
            const auto* widths = reinterpret_cast<const uint16_t*>(lParam);
            s->model.columnCount = n;
            for (int i = 0; i < n && widths; ++i) s->model.columnWidths[static_cast<size_t>(i)] = widths[i];
            RebuildHeader(table, *s, "", 0);
            return 0;
        }
        case kTmGetTicks:
            return reinterpret_cast<LRESULT>(TableTicks(s->model));
        case kTmSetTicks: {
            const int width = TableSetTicks(s->model, static_cast<int>(wParam),
                                            static_cast<uint8_t>(lParam & 0xFF), HeaderClientWidth(*s));
            return RebuildHeader(table, *s, "", width);
        }
        case kTmGetTickCount:
            return TableTickCountOf(s->model);
        case kTmGetColumnWidths:
            return reinterpret_cast<LRESULT>(s->model.columnWidths.data());
        case kTmGetColumnCount:
            return s->model.columnCount;
        case kTmSetSort: {
            if (!TableSetSort(s->model, reinterpret_cast<int32_t*>(wParam),
                              reinterpret_cast<TableSortCallback>(lParam)))
                return 0;
            const LONG_PTR style = GetWindowLongPtrA(s->headerWindow, GWL_STYLE);
            SetWindowLongPtrA(s->headerWindow, GWL_STYLE, style | HDS_BUTTONS);
            return 0;
        }
    }
    return DefWindowProcA(table, message, wParam, lParam);
}

}  // namespace

ATOM RegisterTableClass(HINSTANCE instance) {
    WNDCLASSA wc{};
    wc.style = CS_HREDRAW | CS_VREDRAW | CS_DBLCLKS;
    wc.lpfnWndProc = TableProc;
    wc.cbWndExtra = sizeof(void*);
    wc.hInstance = instance;
    wc.hCursor = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
    wc.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(6));
    wc.lpszClassName = "Table";
    return RegisterClassA(&wc);
}
