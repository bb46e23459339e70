// The program's windows in-process: start-up, the path dialog, the tabs,
// the buttons of the Locations and Observing Lists pages, and the Logs page
// with its dialogs.
#include <windows.h>
#include <commctrl.h>
#include <gtest/gtest.h>

#include <cstring>
#include <functional>

#include "data/resource.h"
#include "base/file_utils.h"
#include "shell/win/app.h"
#include "legacy_log_fixtures.h"
#include "support.h"
#include "ui/table_model.h"
#include "win_support.h"

namespace {

class AppTest : public ScratchTest {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        InstallMessageRecorder();
        AppReset();
        App().instanceHandle = ProgramInstance();
        MakeDirs("user");
        MakeDirs("v1");
        WriteFileBytes("v1/charts.bin", {0, 0});
        WriteFileBytes("v1/loc.bin", LocationFileBytes({LocationBytes("Alpha", 1.0, 0.5),
                                                        LocationBytes("Beta", 2.0, 0.5),
                                                        LocationBytes("Alpha", 3.0, 0.5)}));
    }
    void TearDown() override {
        // The program leaves its lock to the process; tests share one process.
        if (App().instanceLock) CloseHandle(App().instanceLock);
        if (IsWindow(App().pathDialog)) DestroyWindow(App().pathDialog);
        if (IsWindow(App().mainWindow)) DestroyWindow(App().mainWindow);
        PumpMessages();
        AppReset();
        SetMessageBoxFunction(nullptr);
        ScratchTest::TearDown();
    }

    // The main window hidden and the path dialog up, as start-up leaves them.
    void StartAsking() {
        App().mainWindow = CreateDialogParamA(ProgramInstance(), "Ferry2", nullptr, nullptr, 0);
        ASSERT_NE(App().mainWindow, nullptr);
        ASSERT_NE(CreatePathDialog(), nullptr);
    }
    void PressOk(const char* folder) {
        HWND dialog = App().pathDialog;
        SetDlgItemTextA(dialog, IDC_LEGACY_PATH, folder);
        SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
    }
    static HWND PageTable() { return GetDlgItem(App().pageWindow, IDC_TABLE); }
    static std::vector<uint8_t> PageTicks() {
        HWND t = PageTable();
        auto* p = reinterpret_cast<uint8_t*>(SendMessageA(t, kTmGetTicks, 0, 0));
        const int n = static_cast<int>(SendMessageA(t, kTmGetTickCount, 0, 0));
        return p ? std::vector<uint8_t>(p, p + n) : std::vector<uint8_t>();
    }
    static void SelectTab(int index) {
        HWND main = App().mainWindow;
        HWND tabs = GetDlgItem(main, IDC_TABS);
        SendMessageA(tabs, TCM_SETCURSEL, index, 0);
        NMHDR hdr{tabs, IDC_TABS, static_cast<UINT>(TCN_SELCHANGE)};
        SendMessageA(main, WM_NOTIFY, IDC_TABS, reinterpret_cast<LPARAM>(&hdr));
    }
};

TEST_F(AppTest, PathDialogOffersTheRememberedFolderOrTheDefault) {
    StartAsking();
    char text[1024] = {};
    GetDlgItemTextA(App().pathDialog, IDC_LEGACY_PATH, text, sizeof text);
    EXPECT_STREQ(text, "C:\\Program Files\\Halcyonware\\Vesperal");
    DestroyWindow(App().pathDialog);
    WriteFileText("ferry2.ini", "D:\\Old Vesperal");
    CreatePathDialog();
    GetDlgItemTextA(App().pathDialog, IDC_LEGACY_PATH, text, sizeof text);
    EXPECT_STREQ(text, "D:\\Old Vesperal");
}

TEST_F(AppTest, FolderWithoutChartsKeepsTheDialogAndWritesNothing) {
    StartAsking();
    MakeDirs("empty");
    PressOk("empty");
    ASSERT_EQ(ShownMessages().size(), 1u);
    EXPECT_EQ(ShownMessages()[0].text, "Vesperal 1.x files not found. Check your path and try again.");
    EXPECT_EQ(ShownMessages()[0].title, "Ferry 2 Message");
    EXPECT_TRUE(IsWindow(App().pathDialog));
    EXPECT_FALSE(IsWindowVisible(App().mainWindow));
    EXPECT_FALSE(FileExists("ferry2.ini"));
    EXPECT_FALSE(FileExists("ferry2.log"));
}

TEST_F(AppTest, OkRemembersTheFolderOpensTheLogAndShowsTheLocationsPage) {
    StartAsking();
    PressOk("v1");
    EXPECT_TRUE(ShownMessages().empty());
    EXPECT_EQ(ReadFileText("ferry2.ini"), "v1");
    EXPECT_TRUE(FileExists("ferry2.log"));
    EXPECT_FALSE(IsWindow(App().pathDialog));
    EXPECT_TRUE(IsWindowVisible(App().mainWindow));
    EXPECT_EQ(App().legacyRoot, "v1");
    HWND tabs = GetDlgItem(App().mainWindow, IDC_TABS);
    EXPECT_EQ(SendMessageA(tabs, TCM_GETITEMCOUNT, 0, 0), 4);
    EXPECT_EQ(SendMessageA(tabs, TCM_GETCURSEL, 0, 0), 0);
    ASSERT_NE(App().pageWindow, nullptr);
    char row[64] = {};
    SendMessageA(PageTable(), LB_GETTEXT, 1, reinterpret_cast<LPARAM>(row));
    EXPECT_STREQ(row, "Beta");
    EXPECT_EQ(PageTicks(), (std::vector<uint8_t>{1, 1, 1}));
}

TEST_F(AppTest, CancelEndsTheProgramAndLeavesBothFilesAlone) {
    WriteFileText("ferry2.ini", "v1");
    StartAsking();
    SendMessageA(App().pathDialog, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), 0);
    EXPECT_FALSE(IsWindow(App().pathDialog));
    EXPECT_FALSE(IsWindow(App().mainWindow));
    EXPECT_TRUE(PumpMessages());  // the quit message
    EXPECT_EQ(ReadFileText("ferry2.ini"), "v1");
    EXPECT_FALSE(FileExists("ferry2.log"));
}

TEST_F(AppTest, ChangingTabsRebuildsThePageAndResetsTheTicks) {
    StartAsking();
    PressOk("v1");
    HWND first = App().pageWindow;
    SendMessageA(PageTable(), WM_COMMAND, MAKEWPARAM(kTableListId, kTableTickChanged), 1);
    EXPECT_EQ(PageTicks(), (std::vector<uint8_t>{1, 0, 1}));

    SelectTab(0);  // the selected tab again: nothing changes
    EXPECT_EQ(App().pageWindow, first);
    EXPECT_EQ(PageTicks(), (std::vector<uint8_t>{1, 0, 1}));

    SelectTab(3);  // no logs: nothing to settle, no message
    EXPECT_EQ(App().currentPage, 3);
    EXPECT_TRUE(IsWindowEnabled(GetDlgItem(App().pageWindow, IDC_IMPORT)));
    EXPECT_TRUE(ShownMessages().empty());
    SelectTab(0);
    EXPECT_NE(App().pageWindow, nullptr);
    EXPECT_EQ(PageTicks(), (std::vector<uint8_t>{1, 1, 1}));
}

TEST_F(AppTest, ImportCheckedOnLocationsRunsTheJobAgainstTheStore) {
    StartAsking();
    PressOk("v1");
    SendMessageA(PageTable(), WM_COMMAND, MAKEWPARAM(kTableListId, kTableTickChanged), 1);
    SendMessageA(App().pageWindow, WM_COMMAND, MAKEWPARAM(IDC_IMPORT, BN_CLICKED), 0);
    ASSERT_EQ(ShownMessages().size(), 1u);
    EXPECT_EQ(ShownMessages()[0].text, "Imported 1 of 2, 1 skipped");
    EXPECT_EQ(ShownMessages()[0].title, "Ferry 2 Message");
    EXPECT_EQ(ReadFileBytes("user/loc.bin"), LocationFileBytes({LocationBytes("Alpha", 1.0, 0.5)}));
    // The log reaches the disk when the main window closes.
    DestroyWindow(App().mainWindow);
    EXPECT_EQ(ReadFileText("ferry2.log"), "Location: Warning Alpha already exists (not added)\n");
}

TEST_F(AppTest, ListsPageLogsEachListItShows) {
    Bytes index(2, 0);
    PokeI16(index, 0, 2);
    for (const char* name : {"Messier", "Caldwell"}) {
        Bytes row(35, 0);
        std::memcpy(row.data(), name, std::strlen(name));
        row[33] = 2;
        index.insert(index.end(), row.begin(), row.end());
    }
    WriteFileBytes("v1/obs.idx", index);
    WriteFileBytes("v1/obs.001", Bytes(44 + 2 * 83, 0));
    StartAsking();
    PressOk("v1");
    SelectTab(2);
    // Only index row 1 is shown, but its tick is set at index 0.
    EXPECT_EQ(PageTicks(), (std::vector<uint8_t>{1, 0}));
    DestroyWindow(App().mainWindow);
    EXPECT_EQ(ReadFileText("ferry2.log"), "index=  0 ret=  1 n=  0 Caldwell\t   2\n");
}

TEST_F(AppTest, ImportCheckedOnObservingListsMakesTheTickedLists) {
    // Two lists of one catalogue star each; the second is unticked on the page.
    Bytes index(2, 0);
    PokeI16(index, 0, 2);
    Bytes object(83, 0);
    PokeU32(object, 26, 6990);
    object[30] = 5;
    for (const char* name : {"Summer", "Winter"}) {
        Bytes row(35, 0);
        std::memcpy(row.data(), name, std::strlen(name));
        row[33] = 1;
        index.insert(index.end(), row.begin(), row.end());
        Bytes list(44, 0);
        list.insert(list.end(), object.begin(), object.end());
        WriteFileBytes(std::string("v1/obs.00") + (name[0] == 'S' ? "0" : "1"), list);
    }
    WriteFileBytes("v1/obs.idx", index);
    StartAsking();
    PressOk("v1");
    SelectTab(2);
    SendMessageA(PageTable(), WM_COMMAND, MAKEWPARAM(kTableListId, kTableTickChanged), 1);
    SendMessageA(App().pageWindow, WM_COMMAND, MAKEWPARAM(IDC_IMPORT, BN_CLICKED), 0);
    ASSERT_EQ(ShownMessages().size(), 1u);
    EXPECT_EQ(ShownMessages()[0].text, "Imported 1 of 1, 0 lists skipped, 0 objects skipped");
    const Bytes store = ReadFileBytes("user/lists/obs.idx");
    ASSERT_EQ(store.size(), 2u + 58u);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(store.data() + 2)), "Summer");
    EXPECT_EQ(PeekI16(store, 2 + 48), 1);
    EXPECT_EQ(PeekU32(ReadFileBytes("user/lists/obs.000"), 44 + 141), 6990u);
}

// Answers the modal dialogs that the Logs page opens, in order: a thread
// timer, which the dialogs' own message loops dispatch, finds the dialog
// open and runs the next step on it. A dialog other than the one expected
// is cancelled and noted.
struct DialogStep {
    const char* title;
    std::function<void(HWND)> act;
};

class ScriptedDialogs {
public:
    explicit ScriptedDialogs(std::vector<DialogStep> steps) {
        steps_ = std::move(steps);
        next_ = 0;
        unexpected_.clear();
        timer_ = SetTimer(nullptr, 0, 20, Tick);
    }
    ~ScriptedDialogs() { KillTimer(nullptr, timer_); }
    static bool Done() { return next_ == steps_.size() && unexpected_.empty(); }
    static const std::vector<std::string>& Unexpected() { return unexpected_; }

private:
    static BOOL CALLBACK FindDialog(HWND window, LPARAM found) {
        char cls[16] = {};
        GetClassNameA(window, cls, sizeof cls);
        if (std::strcmp(cls, "#32770") != 0 || !IsWindowEnabled(window)) return TRUE;
        *reinterpret_cast<HWND*>(found) = window;
        return FALSE;
    }
    static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD) {
        HWND dialog = nullptr;
        EnumThreadWindows(GetCurrentThreadId(), FindDialog, reinterpret_cast<LPARAM>(&dialog));
        if (!dialog) return;
        char title[64] = {};
        GetWindowTextA(dialog, title, sizeof title);
        if (next_ < steps_.size() && std::strcmp(title, steps_[next_].title) == 0) {
            steps_[next_++].act(dialog);
            return;
        }
        unexpected_.push_back(title);
        SendMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
    }
    static inline std::vector<DialogStep> steps_;
    static inline size_t next_ = 0;
    static inline std::vector<std::string> unexpected_;
    UINT_PTR timer_ = 0;
};

void Press(HWND dialog, int id) {
    SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), reinterpret_cast<LPARAM>(GetDlgItem(dialog, id)));
}

std::string ItemText(HWND dialog, int id) {
    char text[512] = {};
    GetDlgItemTextA(dialog, id, text, sizeof text);
    return text;
}

// The rows of one of the Logs page's list boxes.
std::vector<std::string> ListRows(int id) {
    HWND box = GetDlgItem(App().pageWindow, id);
    std::vector<std::string> rows;
    const int n = static_cast<int>(SendMessageA(box, LB_GETCOUNT, 0, 0));
    for (int i = 0; i < n; ++i) {
        char row[80] = {};
        SendMessageA(box, LB_GETTEXT, i, reinterpret_cast<LPARAM>(row));
        rows.emplace_back(row);
    }
    return rows;
}

class LogsPageTest : public AppTest {
protected:
    using Rows = std::vector<std::string>;
    void SetUp() override {
        AppTest::SetUp();
        WriteFileBytes("user/instr.bin", InstrumentStoreBytes({"Dob", "Mak"}, 2));
        MakeDirs("legacy");
        WriteFileBytes("legacy/charts.bin", {0, 0});
        WriteLegacyLogChains(2, {{{"Zed", "Refractor"}, {"Amy", "Big Binos"}}, {{"Zed", "Dob"}}});
        StartAsking();
        PressOk("legacy");
        ShownMessages().clear();
    }
    static bool ImportEnabled() { return IsWindowEnabled(GetDlgItem(App().pageWindow, IDC_IMPORT)); }
    static void Pick(int list, int row) {
        HWND page = App().pageWindow;
        SendDlgItemMessageA(page, list, LB_SETCURSEL, row, 0);
        SendMessageA(page, WM_COMMAND, MAKEWPARAM(list, LBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(GetDlgItem(page, list)));
    }
    static void Click(int button) { Press(App().pageWindow, button); }
};

TEST_F(LogsPageTest, PageListsTheUnknownNamesInLogOrderAfterItsMessage) {
    SelectTab(3);
    EXPECT_EQ(ListRows(IDC_UNDEFINED_OBSERVERS), (Rows{"Zed", "Amy"}));
    EXPECT_EQ(ListRows(IDC_UNDEFINED_INSTRUMENTS), (Rows{"Refractor", "Big Binos"}));
    EXPECT_FALSE(ImportEnabled());
    ASSERT_EQ(ShownMessages().size(), 1u);
    EXPECT_EQ(ShownMessages()[0].title, "Vesperal 2 Log Import");
    EXPECT_EQ(ShownMessages()[0].text.substr(0, 40), "Before you can import log entries you mu");
}

TEST_F(LogsPageTest, CreateAndLinkTakeRowsOutAndTheLastEnablesImport) {
    SelectTab(3);
    Pick(IDC_UNDEFINED_OBSERVERS, 1);
    Click(IDC_CREATE_ENTRY);  // "Amy" becomes a stored observer
    EXPECT_EQ(ListRows(IDC_UNDEFINED_OBSERVERS), (Rows{"Zed"}));

    std::string typeText;
    {
        ScriptedDialogs answers({{"Select Instrument Type", [&](HWND d) {
                                      typeText = ItemText(d, IDC_TYPE_TEXT);
                                      EXPECT_EQ(IsDlgButtonChecked(d, IDC_TYPE_TELESCOPE), BST_CHECKED);
                                      Press(d, IDC_HELP_BUTTON);  // does nothing
                                      SendDlgItemMessageA(d, IDC_TYPE_BINOCULARS, BM_CLICK, 0, 0);
                                      Press(d, IDOK);
                                  }}});
        Pick(IDC_UNDEFINED_INSTRUMENTS, 1);
        Click(IDC_CREATE_ENTRY);
        EXPECT_TRUE(ScriptedDialogs::Done());
    }
    EXPECT_EQ(typeText, "Select the instrument type and click Ok. Find \"Big Binos\" in the instrument list and "
                        "select it. Default values have been created for the new instrument.  Customize them "
                        "appropriately.");
    EXPECT_EQ(ListRows(IDC_UNDEFINED_INSTRUMENTS), (Rows{"Refractor"}));
    EXPECT_EQ(ReadFileBytes("user/instr.bin")[4 + 2 * 8750 + 4], 1);  // binoculars

    {
        // Cancel in the choice keeps the row.
        ScriptedDialogs answers({{"Select Instrument Type", [](HWND d) { Press(d, IDOK); }},
                                 {"Select Instrument", [](HWND d) { Press(d, IDCANCEL); }}});
        Pick(IDC_UNDEFINED_INSTRUMENTS, 0);
        Click(IDC_LINK_ENTRY);
        EXPECT_TRUE(ScriptedDialogs::Done());
    }
    EXPECT_EQ(ListRows(IDC_UNDEFINED_INSTRUMENTS), (Rows{"Refractor"}));

    Rows offered;
    {
        ScriptedDialogs answers({{"Select Instrument Type", [](HWND d) { Press(d, IDOK); }},
                                 {"Select Instrument", [&](HWND d) {
                                      for (int i = 0; i < 3; ++i) {
                                          char row[40] = {};
                                          if (SendDlgItemMessageA(d, IDC_SELECT_LIST, LB_GETTEXT, i,
                                                                  reinterpret_cast<LPARAM>(row)) != LB_ERR)
                                              offered.emplace_back(row);
                                      }
                                      SendDlgItemMessageA(d, IDC_SELECT_LIST, LB_SETCURSEL, 1, 0);
                                      Press(d, IDOK);
                                  }},
                                 {"Select Observer", [](HWND d) { Press(d, IDOK); }}});
        Click(IDC_LINK_ENTRY);  // the instrument row is still selected in the page's state
        EXPECT_EQ(ListRows(IDC_UNDEFINED_INSTRUMENTS), Rows{});
        EXPECT_FALSE(ImportEnabled());
        Pick(IDC_UNDEFINED_OBSERVERS, 0);
        Click(IDC_LINK_ENTRY);
        EXPECT_TRUE(ScriptedDialogs::Done()) << ScriptedDialogs::Unexpected().size();
    }
    EXPECT_EQ(offered, (Rows{"Dob", "Mak", "Big Binos"}));
    EXPECT_EQ(ListRows(IDC_UNDEFINED_OBSERVERS), Rows{});
    EXPECT_TRUE(ImportEnabled());
    ASSERT_EQ(App().logPage.links.undefinedInstruments.size(), 2u);
    EXPECT_EQ(App().logPage.links.undefinedInstruments[1].key, "Refractor");
    EXPECT_STREQ(App().logPage.links.undefinedInstruments[1].record.name, "Mak");
    ASSERT_EQ(App().logPage.links.undefinedObservers.size(), 2u);
    EXPECT_STREQ(App().logPage.links.undefinedObservers[1].record.name, "Amy");

    // Import runs the log job with the page's links: no entry is skipped
    // for its observer or instrument. (Without reference catalogues here
    // the log store can't place the objects, so none is added.)
    ShownMessages().clear();
    Click(IDC_IMPORT);
    ASSERT_EQ(ShownMessages().size(), 1u);
    EXPECT_EQ(ShownMessages()[0].title, "Ferry 2 Message");
    EXPECT_EQ(ShownMessages()[0].text.substr(0, 38), "0 log entries imported of 3 (0 skipped");

    // Away and back: the links are gone, and only the names that were
    // linked, not made, come back.
    SelectTab(0);
    EXPECT_TRUE(App().logPage.links.undefinedObservers.empty());
    SelectTab(3);
    EXPECT_EQ(ListRows(IDC_UNDEFINED_OBSERVERS), (Rows{"Zed"}));
    EXPECT_EQ(ListRows(IDC_UNDEFINED_INSTRUMENTS), (Rows{"Refractor"}));
    EXPECT_FALSE(ImportEnabled());
}

TEST(AppStart, SecondInstanceEndsAtOnceWithoutASign) {
    InstallMessageRecorder();
    HANDLE first = CreateMutexA(nullptr, TRUE, "Ferry2");
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(Ferry2Run(ProgramInstance()), 0);
    EXPECT_TRUE(ShownMessages().empty());
    EXPECT_EQ(App().mainWindow, nullptr);
    if (App().instanceLock) CloseHandle(App().instanceLock);
    CloseHandle(first);
    SetMessageBoxFunction(nullptr);
    AppReset();
}

TEST_F(AppTest, UnregistrableClassEndsStartUpWithBothMessages) {
    // The class is taken already (the tests registered it), so both ways of
    // registering fail.
    RegisterMainClass(ProgramInstance());
    ShownMessages().clear();
    EXPECT_EQ(Ferry2Run(ProgramInstance()), 0);
    ASSERT_EQ(ShownMessages().size(), 2u);
    EXPECT_EQ(ShownMessages()[0].text, "RegisterClassEx Failed");
    EXPECT_EQ(ShownMessages()[0].title, "Error");
    EXPECT_EQ(ShownMessages()[1].text, "RegisterClass Failed Too");
    EXPECT_EQ(ShownMessages()[1].title, "Error");
}

TEST_F(AppTest, UnresolvedDataRootsStopStartUpWithTheStopMessage) {
    // No vesperal.ini in the working folder.
    ASSERT_TRUE(UnregisterClassA("Ferry2", ProgramInstance()));
    EXPECT_EQ(Ferry2Run(ProgramInstance()), 0);
    ASSERT_EQ(ShownMessages().size(), 1u);
    EXPECT_EQ(ShownMessages()[0].text,
              "Vesperal cannot find the database files.\r\nInsert the Vesperal 2 CDROM and try again.");
    EXPECT_EQ(ShownMessages()[0].title, "Vesperal 2 Error");
    EXPECT_EQ(ShownMessages()[0].flags, 0x10u);
    EXPECT_EQ(App().mainWindow, nullptr);
}

}  // namespace
