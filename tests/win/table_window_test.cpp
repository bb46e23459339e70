// The Table control's message protocol, driven as its parent dialog would.
#include <windows.h>
#include <commctrl.h>
#include <gtest/gtest.h>

#include <vector>

#include "ui/table_model.h"
#include "win_support.h"

namespace {

struct Notice {
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};
std::vector<Notice> g_notices;

LRESULT CALLBACK ParentProc(HWND w, UINT m, WPARAM wp, LPARAM lp) {
    if (m == WM_COMMAND || m == kTmRowDoubleClick || m == kTmRowRightClick) {
        g_notices.push_back({m, wp, lp});
        return 0;
    }
    return DefWindowProcA(w, m, wp, lp);
}

class TableWindowTest : public ::testing::Test {
protected:
    void SetUp() override {
        HINSTANCE instance = ProgramInstance();
        static bool registered = [instance] {
            WNDCLASSA wc{};
            wc.lpfnWndProc = ParentProc;
            wc.hInstance = instance;
            wc.lpszClassName = "TableTestParent";
            return RegisterClassA(&wc) != 0;
        }();
        ASSERT_TRUE(registered);
        parent_ = CreateWindowExA(0, "TableTestParent", "parent", WS_OVERLAPPEDWINDOW, 0, 0, 400, 300,
                                  nullptr, nullptr, instance, nullptr);
        g_notices.clear();
    }
    void TearDown() override {
        DestroyWindow(parent_);
        PumpMessages();
    }

    HWND MakeTable(DWORD style, const char* title, int rows) {
        HWND t = CreateWindowExA(0, "Table", title, WS_CHILD | WS_VISIBLE | style, 0, 0, 300, 200, parent_,
                                 reinterpret_cast<HMENU>(1003), ProgramInstance(), nullptr);
        for (int i = 0; i < rows; ++i) {
            const std::string text = "Row " + std::to_string(i) + "\tx";
            SendMessageA(t, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
        }
        return t;
    }
    static HWND List(HWND t) { return GetDlgItem(t, kTableListId); }
    static LPARAM RowPoint(HWND t, int x, int row) {
        const int h = static_cast<int>(SendMessageA(List(t), LB_GETITEMHEIGHT, 0, 0));
        return MAKELPARAM(x, row * h + h / 2);
    }
    static uint8_t* Ticks(HWND t) { return reinterpret_cast<uint8_t*>(SendMessageA(t, kTmGetTicks, 0, 0)); }
    static void Click(HWND t, int x, int row) {
        SendMessageA(List(t), WM_LBUTTONDOWN, MK_LBUTTON, RowPoint(t, x, row));
        SendMessageA(List(t), WM_LBUTTONUP, 0, RowPoint(t, x, row));
    }
    std::vector<Notice> TickNotices() {
        std::vector<Notice> out;
        for (const Notice& n : g_notices)
            if (n.message == WM_COMMAND && HIWORD(n.wParam) == kTableTickChanged) out.push_back(n);
        return out;
    }

    HWND parent_ = nullptr;
};

TEST_F(TableWindowTest, TicksAreSetReadAndCounted) {
    HWND t = MakeTable(0, "Name\tKind", 4);
    EXPECT_EQ(SendMessageA(t, kTmGetTicks, 0, 0), 0);
    EXPECT_EQ(SendMessageA(t, kTmGetTickCount, 0, 0), 0);
    EXPECT_NE(SendMessageA(t, kTmSetTicks, 4, 0x101), 0);  // the fill is the low byte
    ASSERT_NE(Ticks(t), nullptr);
    EXPECT_EQ(SendMessageA(t, kTmGetTickCount, 0, 0), 4);
    for (int i = 0; i < 4; ++i) EXPECT_EQ(Ticks(t)[i], 1);
    EXPECT_EQ(SendMessageA(t, kTmGetColumnCount, 0, 0), 3);  // tick column + two titles

    // A zero-row array is still an array, with a tick column.
    HWND empty = MakeTable(0, "Only", 0);
    SendMessageA(empty, kTmSetTicks, 0, 1);
    EXPECT_NE(Ticks(empty), nullptr);
    EXPECT_EQ(SendMessageA(empty, kTmGetTickCount, 0, 0), 0);
    EXPECT_EQ(SendMessageA(empty, kTmGetColumnCount, 0, 0), 2);
}

TEST_F(TableWindowTest, ClickInTickColumnFlipsTheRowsByteAndTellsTheParent) {
    HWND t = MakeTable(0, "Name\tKind", 6);
    SendMessageA(t, kTmSetTicks, 6, 0);
    Click(t, 5, 5);
    EXPECT_EQ(Ticks(t)[5], 1);
    auto ticks = TickNotices();
    ASSERT_EQ(ticks.size(), 1u);
    EXPECT_EQ(LOWORD(ticks[0].wParam), 1003);
    EXPECT_EQ(LOWORD(ticks[0].lParam), 5);
    EXPECT_EQ(HIWORD(ticks[0].lParam), 1);
    Click(t, 5, 5);
    EXPECT_EQ(Ticks(t)[5], 0);
    EXPECT_EQ(HIWORD(TickNotices().back().lParam), 0);

    // Past the tick column the click selects the row, and the parent hears
    // the selection change under the Table's own id.
    g_notices.clear();
    Click(t, 60, 2);
    EXPECT_EQ(SendMessageA(t, LB_GETCURSEL, 0, 0), 2);
    EXPECT_TRUE(TickNotices().empty());
    bool selChange = false;
    for (const Notice& n : g_notices)
        selChange |= n.message == WM_COMMAND && HIWORD(n.wParam) == LBN_SELCHANGE && LOWORD(n.wParam) == 1003;
    EXPECT_TRUE(selChange);
}

TEST_F(TableWindowTest, TickClicksOffByStyleSelectTheRowInstead) {
    HWND t = MakeTable(kTableTickClickOff, "Name", 3);
    SendMessageA(t, kTmSetTicks, 3, 1);
    Click(t, 5, 1);
    EXPECT_EQ(Ticks(t)[1], 1);
    EXPECT_TRUE(TickNotices().empty());
    EXPECT_EQ(SendMessageA(t, LB_GETCURSEL, 0, 0), 1);
}

TEST_F(TableWindowTest, ItemDataGivesTheTickIndexWhenTheStyleAsksForIt) {
    HWND t = MakeTable(kTableUseItemData, "Name", 5);
    for (int i = 0; i < 5; ++i) SendMessageA(t, LB_SETITEMDATA, i, 4 - i);
    SendMessageA(t, kTmSetTicks, 5, 0);
    Click(t, 5, 0);
    EXPECT_EQ(Ticks(t)[4], 1);
    EXPECT_EQ(Ticks(t)[0], 0);
    EXPECT_EQ(LOWORD(TickNotices().back().lParam), 4);
}

std::vector<int> g_sortCalls;
void ReverseSort(int32_t* order, int rows, int column) {
    g_sortCalls.push_back(column);
    for (int i = 0; i < rows; ++i) order[i] = rows - 1 - i;
}

TEST_F(TableWindowTest, SortedRowsMapThroughTheCallersOrderAndItemData) {
    HWND t = MakeTable(0, "Name\tKind", 4);
    for (int i = 0; i < 4; ++i) SendMessageA(t, LB_SETITEMDATA, i, 10 + i);
    SendMessageA(t, kTmSetTicks, 20, 0);
    int32_t order[4] = {0, 1, 2, 3};
    EXPECT_EQ(SendMessageA(t, kTmSetSort, 0, reinterpret_cast<LPARAM>(ReverseSort)), 0);
    SendMessageA(t, kTmSetSort, reinterpret_cast<WPARAM>(order), reinterpret_cast<LPARAM>(ReverseSort));

    // Before any header click the natural order holds.
    Click(t, 5, 0);
    EXPECT_EQ(Ticks(t)[0], 1);

    HWND header = GetDlgItem(t, kTableHeaderId);
    NMHEADERA nm{};
    nm.hdr.hwndFrom = header;
    nm.hdr.idFrom = kTableHeaderId;
    nm.hdr.code = static_cast<UINT>(HDN_ITEMCLICKA);
    nm.iItem = 2;
    g_sortCalls.clear();
    SendMessageA(t, WM_NOTIFY, kTableHeaderId, reinterpret_cast<LPARAM>(&nm));
    ASSERT_EQ(g_sortCalls, std::vector<int>{2});
    EXPECT_EQ(order[0], 3);

    // Display row 0 is list row 3, whose item data is 13.
    Click(t, 5, 0);
    EXPECT_EQ(Ticks(t)[13], 1);
    EXPECT_EQ(LOWORD(TickNotices().back().lParam), 13);
}

TEST_F(TableWindowTest, SavedWidthsComeBackWithTheTickColumnForcedTo15) {
    HWND t = MakeTable(0, "Name\tKind", 2);
    SendMessageA(t, kTmSetTicks, 2, 1);
    HWND header = GetDlgItem(t, kTableHeaderId);
    // The user drags the tick column's divider.
    HDITEMA item{};
    item.mask = HDI_WIDTH;
    item.cxy = 60;
    NMHEADERA nm{};
    nm.hdr.hwndFrom = header;
    nm.hdr.idFrom = kTableHeaderId;
    nm.hdr.code = static_cast<UINT>(HDN_ENDTRACKA);
    nm.iItem = 0;
    nm.pitem = &item;
    SendMessageA(t, WM_NOTIFY, kTableHeaderId, reinterpret_cast<LPARAM>(&nm));
    auto* widths = reinterpret_cast<const uint16_t*>(SendMessageA(t, kTmGetColumnWidths, 0, 0));
    EXPECT_EQ(widths[0], 60);

    const uint16_t saved[3] = {60, 100, 120};
    SendMessageA(t, kTmSetColumnWidths, 3, reinterpret_cast<LPARAM>(saved));
    widths = reinterpret_cast<const uint16_t*>(SendMessageA(t, kTmGetColumnWidths, 0, 0));
    EXPECT_EQ(widths[0], 15);
    EXPECT_EQ(widths[1], 100);
    EXPECT_EQ(widths[2], 120);
    EXPECT_EQ(SendMessageA(t, kTmGetColumnCount, 0, 0), 3);
    HDITEMA got{};
    got.mask = HDI_WIDTH;
    SendMessageA(header, HDM_GETITEMA, 1, reinterpret_cast<LPARAM>(&got));
    EXPECT_EQ(got.cxy, 100);
}

TEST_F(TableWindowTest, OnlyTheNamedListMessagesPassThrough) {
    HWND t = MakeTable(0, "Name", 3);
    char text[32] = {};
    EXPECT_EQ(SendMessageA(t, LB_GETTEXT, 1, reinterpret_cast<LPARAM>(text)), 7);
    EXPECT_STREQ(text, "Row 1\tx");
    EXPECT_EQ(SendMessageA(t, LB_GETTEXTLEN, 2, 0), 7);
    EXPECT_EQ(SendMessageA(List(t), LB_GETCOUNT, 0, 0), 3);
    EXPECT_EQ(SendMessageA(t, LB_GETCOUNT, 0, 0), 0);  // not forwarded
    SendMessageA(t, LB_RESETCONTENT, 7, 7);
    EXPECT_EQ(SendMessageA(List(t), LB_GETCOUNT, 0, 0), 0);
}

TEST_F(TableWindowTest, NewTitleRebuildsTheColumns) {
    HWND t = MakeTable(0, "One", 0);
    EXPECT_EQ(SendMessageA(t, kTmGetColumnCount, 0, 0), 1);
    SetWindowTextA(t, "A\tB\tC");
    EXPECT_EQ(SendMessageA(t, kTmGetColumnCount, 0, 0), 3);
    char title[16] = {};
    GetWindowTextA(t, title, sizeof title);
    EXPECT_STREQ(title, "A\tB\tC");
}

TEST_F(TableWindowTest, DoubleAndRightClicksReportTheRowsTickIndex) {
    HWND t = MakeTable(kTableUseItemData, "Name", 3);
    for (int i = 0; i < 3; ++i) SendMessageA(t, LB_SETITEMDATA, i, 7 + i);
    SendMessageA(List(t), WM_LBUTTONDBLCLK, MK_LBUTTON, RowPoint(t, 40, 1));
    SendMessageA(List(t), WM_RBUTTONDOWN, MK_RBUTTON, RowPoint(t, 40, 2));
    ASSERT_GE(g_notices.size(), 2u);
    bool dbl = false, right = false;
    for (const Notice& n : g_notices) {
        dbl |= n.message == kTmRowDoubleClick && n.wParam == 8;
        right |= n.message == kTmRowRightClick && n.wParam == 9;
    }
    EXPECT_TRUE(dbl);
    EXPECT_TRUE(right);
    EXPECT_EQ(SendMessageA(t, LB_GETCURSEL, 0, 0), 2);  // the right click selected its row
}

}  // namespace
