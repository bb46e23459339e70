#include "shell/log_page.h"

#include <cstdio>

#include "legacy/import_logs.h"
#include "stores/default_instruments.h"
#include "stores/instrument_store.h"
#include "stores/observer_store.h"

namespace {

// A new observer's eyes: age 40, pupil computed from it, average experience.
constexpr int kNewObserverAge = 40;
constexpr double kNewObserverExperience = 0.5;

template <class Page>
auto ListOf(Page* page, int listId) -> decltype(&page->names.observers) {
    if (listId == kObserverList) return &page->names.observers;
    if (listId == kInstrumentList) return &page->names.instruments;
    return nullptr;
}

// The settled row leaves its list; nothing stays selected, as the list box
// shows it.
void RemoveSelectedRow(LogPage* page) {
    std::vector<std::string>* list = ListOf(page, page->selectedList);
    list->erase(list->begin() + page->selectedRow);
    page->selectedRow = -1;
}

int CreateObserver(LogPage* page, const std::string& name) {
    ObserverRecord record;
    ObserverInit(&record, name.c_str(), kNewObserverAge, 0.0, kNewObserverExperience);
    // The record joins the store whatever comes of the add: its place there
    // is what the link keeps.
    int count = 0;
    if (FilePtr store = ObserverStoreOpen(&count)) ObserverAdd(store.get(), record);
    AddObserverLink(&page->links, record, name.c_str(), count);
    return 1;
}

int CreateInstrument(LogPage* page, const std::string& name, const LogPageQuestions& ask) {
    page->pendingName = name;
    const int type = ask.instrumentType ? ask.instrumentType(page->pendingName) : kTypeCancelled;
    InstrumentRecord record;
    int made = 0;
    if (type == kTypeTelescope)
        made = CreateDefaultTelescope(&record, name.c_str());
    else if (type == kTypeBinoculars)
        made = CreateDefaultBinoculars(&record, name.c_str());
    // The link keeps the record as made: the defaults are what the entries
    // of this name are stored with.
    if (made) AddInstrumentLink(&page->links, record, name.c_str());
    return made;
}

int Choose(const LogPageQuestions& ask, const char* title, const std::vector<std::string>& names) {
    const int row = ask.choose ? ask.choose(title, names) : -1;
    return row >= 0 && row < static_cast<int>(names.size()) ? row : -1;
}

// The store's observers to choose from; with none stored, the default
// observer that a new folder starts with.
std::vector<ObserverRecord> ObserverChoices() {
    std::vector<ObserverRecord> records;
    int count = 0;
    if (FilePtr store = ObserverStoreOpen(&count)) {
        for (int i = 0; i < count; ++i) {
            ObserverRecord r;
            if (!ObserverRead(store.get(), i, &r)) break;
            r.name[sizeof r.name - 1] = '\0';
            records.push_back(r);
        }
    }
    if (records.empty()) {
        ObserverRecord r;
        ObserverInit(&r, kDefaultObserverName, kNewObserverAge, 0.0, kNewObserverExperience);
        records.push_back(r);
    }
    return records;
}

int LinkObserver(LogPage* page, const std::string& name, const LogPageQuestions& ask) {
    const std::vector<ObserverRecord> records = ObserverChoices();
    std::vector<std::string> names;
    for (const ObserverRecord& r : records) names.emplace_back(r.name);
    const int row = Choose(ask, kSelectObserverTitle, names);
    if (row < 0) return 0;
    AddObserverLink(&page->links, records[row], name.c_str(), row);
    return 1;
}

int LinkInstrument(LogPage* page, const std::string& name, const LogPageQuestions& ask) {
    // The type is asked only as a go-ahead; the list holds both kinds.
    page->pendingName = name;
    if (!ask.instrumentType || ask.instrumentType(page->pendingName) == kTypeCancelled) return 0;
    int count = 0;
    FilePtr store = InstrumentStoreOpen(&count);
    if (!store) return 0;
    std::vector<InstrumentRecord> records;
    std::vector<std::string> names;
    for (int i = 0; i < count; ++i) {
        InstrumentRecord r;
        if (!InstrumentRead(store.get(), i, &r)) continue;
        r.name[sizeof r.name - 1] = '\0';
        records.push_back(r);
        names.emplace_back(r.name);
    }
    store.reset();
    const int row = Choose(ask, kSelectInstrumentTitle, names);
    if (row < 0) return 0;
    AddInstrumentLink(&page->links, records[row], name.c_str());
    return 1;
}

}  // namespace

std::string InstrumentTypeText(const std::string& pendingName) {
    if (pendingName.empty())
        return "Select the instrument type and click Ok. Select an instrument from the list.";
    std::string text = "Select the instrument type and click Ok. Find \"";
    text += pendingName;
    text += "\" in the instrument list and select it. Default values have been created for the new "
            "instrument.  Customize them appropriately.";
    return text;
}

void LogPageInit(LogPage* page) {
    FreeLogLinks(&page->links);
    *page = LogPage{};
}

int LogPageScan(LogPage* page, const JobHost& host) {
    page->importEnabled = false;
    page->names = UndefinedNames{};
    const int status = ScanUndefined(host, &page->names);
    UpdateImportButton(page);
    return status;
}

void UpdateImportButton(LogPage* page) {
    page->importEnabled = page->names.observers.empty() && page->names.instruments.empty();
}

void LogPageSelect(LogPage* page, int listId, int row) {
    page->selectedList = listId;
    page->selectedRow = row;
}

const std::string* LogPageSelectedName(const LogPage& page) {
    const std::vector<std::string>* list = ListOf(&page, page.selectedList);
    if (!list || page.selectedRow < 0 || page.selectedRow >= static_cast<int>(list->size())) return nullptr;
    return &(*list)[page.selectedRow];
}

int LogPageCreate(LogPage* page, const LogPageQuestions& ask) {
    const std::string* selected = LogPageSelectedName(*page);
    if (!selected) return 0;
    const std::string name = *selected;
    const int settled = page->selectedList == kObserverList ? CreateObserver(page, name)
                                                            : CreateInstrument(page, name, ask);
    if (settled) RemoveSelectedRow(page);
    UpdateImportButton(page);
    return settled;
}

int LogPageLink(LogPage* page, const LogPageQuestions& ask) {
    const std::string* selected = LogPageSelectedName(*page);
    if (!selected) return 0;
    page->pendingName.clear();
    const std::string name = *selected;
    const int settled = page->selectedList == kObserverList ? LinkObserver(page, name, ask)
                                                            : LinkInstrument(page, name, ask);
    if (settled) RemoveSelectedRow(page);
    UpdateImportButton(page);
    return settled;
}

void LogPageClose(LogPage* page) { LogPageInit(page); }

int RunLogImport(LogPage* page, JobHost host) {
    host.logLinks = &page->links;
    return ImportLogs(host);
}
