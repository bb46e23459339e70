// The Logs page without its windows: the two lists of names that the
// Vesperal 2 stores don't know, the row the user last picked, the create
// and link actions that settle a name, and the link tables the log import
// reads. The window program shows this state in LogDlg and answers the
// page's questions with its dialogs; tests and the command line answer them
// directly.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "data/resource.h"
#include "legacy/job_host.h"
#include "legacy/log_links.h"
#include "legacy/scan_undefined.h"

// The lists are known by their control identifiers.
inline constexpr int kObserverList = IDC_UNDEFINED_OBSERVERS;
inline constexpr int kInstrumentList = IDC_UNDEFINED_INSTRUMENTS;

// InstTypeDlg's answers.
enum InstrumentTypeAnswer { kTypeCancelled = 0, kTypeTelescope = 1, kTypeBinoculars = 2 };

struct LogPage {
    UndefinedNames names;     // the rows of the lists 1006 and 1007
    LogLinks links;           // the names settled so far
    int selectedList = -1;    // the list last clicked
    int selectedRow = -1;     // its selected row
    std::string pendingName;  // the name InstTypeDlg shows; empty to pick only
    bool importEnabled = false;
};

// What the page asks the user.
struct LogPageQuestions {
    // InstTypeDlg on the page's pendingName: a kTypeXxx answer.
    std::function<int(const std::string& pendingName)> instrumentType;
    // A choice of one of `names` (titled `title`); the row chosen, or -1.
    std::function<int(const char* title, const std::vector<std::string>& names)> choose;
};

inline constexpr const char* kSelectObserverTitle = "Select Observer";
inline constexpr const char* kSelectInstrumentTitle = "Select Instrument";

// InstTypeDlg's text for a name to create, and for a pick from the list.
std::string InstrumentTypeText(const std::string& pendingName);

// A new page: nothing selected, no names, Import disabled.
void LogPageInit(LogPage* page);

// Disables Import, fills the lists by ScanUndefined and updates Import,
// however the scan ended. The scan's result.
int LogPageScan(LogPage* page, const JobHost& host);

// Import is enabled only when both lists are empty.
void UpdateImportButton(LogPage* page);

// The user picked `row` of list `listId` (-1 for none).
void LogPageSelect(LogPage* page, int listId, int row);

// The text of the selected row, or null when the selection is not valid.
const std::string* LogPageSelectedName(const LogPage& page);

// Create New Entry: a default observer, telescope or binoculars under the
// row's name, added to its store and linked; the row goes. 1 when a row
// went; 0 with no valid selection, on cancel or on a store failure, and the
// row stays.
int LogPageCreate(LogPage* page, const LogPageQuestions& ask);

// Link to Existing Entry: the row's name is linked to a record the user
// chooses from the store; the row goes. 1 or 0 as for LogPageCreate.
int LogPageLink(LogPage* page, const LogPageQuestions& ask);

// The page goes: the link tables are freed and everything is forgotten.
void LogPageClose(LogPage* page);

// The Import button: the log import with the page's links.
int RunLogImport(LogPage* page, JobHost host);
