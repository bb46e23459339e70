// The names of version 1.x log entries that the Vesperal 2 stores don't
// know, each settled by the user: a record made for it or one chosen from
// the store. The Logs page keeps the tables while it stands (a tab change
// loses them); the log import looks a name up here before asking the
// stores.
#pragma once

#include <string>
#include <vector>

#include "stores/instrument_records.h"
#include "stores/observer_store.h"

// Keys keep 65 characters and a NUL, as the page's rows hold them.
inline constexpr size_t kLogLinkKeyChars = 65;

struct ObserverLink {
    ObserverRecord record;
    std::string key;  // the version 1.x name, cleaned
    int index = 0;    // what the observer dialog answered
};

struct InstrumentLink {
    InstrumentRecord record;
    std::string key;  // the version 1.x name
};

struct LogLinks {
    std::vector<ObserverLink> undefinedObservers;
    std::vector<InstrumentLink> undefinedInstruments;
};

void AddObserverLink(LogLinks* links, const ObserverRecord& record, const char* key, int index);
void AddInstrumentLink(LogLinks* links, const InstrumentRecord& record, const char* key);
// Empties both tables.
void FreeLogLinks(LogLinks* links);

// The link whose key is exactly `key`, or null.
const ObserverLink* FindObserverLink(const LogLinks* links, const char* key);
const InstrumentLink* FindInstrumentLink(const LogLinks* links, const char* key);
