#include "legacy/log_links.h"

#include <cstring>

namespace {

std::string KeyOf(const char* key) {
    return key ? std::string(key, strnlen(key, kLogLinkKeyChars)) : std::string();
}

}  // namespace

void AddObserverLink(LogLinks* links, const ObserverRecord& record, const char* key, int index) {
    if (links) links->undefinedObservers.push_back({record, KeyOf(key), index});
}

void AddInstrumentLink(LogLinks* links, const InstrumentRecord& record, const char* key) {
    if (links) links->undefinedInstruments.push_back({record, KeyOf(key)});
}

void FreeLogLinks(LogLinks* links) {
    if (!links) return;
    std::vector<ObserverLink>().swap(links->undefinedObservers);
    std::vector<InstrumentLink>().swap(links->undefinedInstruments);
}

const ObserverLink* FindObserverLink(const LogLinks* links, const char* key) {
    if (!links || !key) return nullptr;
    for (const ObserverLink& link : links->undefinedObservers)
        if (link.key == key) return &link;
    return nullptr;
}

const InstrumentLink* FindInstrumentLink(const LogLinks* links, const char* key) {
    if (!links || !key) return nullptr;
    for (const InstrumentLink& link : links->undefinedInstruments)
        if (link.key == key) return &link;
    return nullptr;
}
