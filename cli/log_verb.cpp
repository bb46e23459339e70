#include "cli/log_verb.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "astro/calendar.h"
#include "base/string_helpers.h"
#include "catalog/constellation_names.h"
#include "catalog/display_name.h"
#include "catalog/object_fill.h"
#include "cli/exit_status.h"
#include "cli/observer_options.h"
#include "cli/progress_bar.h"
#include "cli/shown_text.h"
#include "stores/instrument_store.h"
#include "stores/location_store.h"
#include "stores/log_exchange.h"
#include "stores/log_index.h"
#include "stores/log_query.h"
#include "stores/log_store.h"
#include "stores/observer_store.h"

const char kLogSynopsis[] =
    "ferry2-cli log add --object CLASS:PID --at YYYY-MM-DDTHH:MM[:SS] --location NAME\n"
    "           --observer NAME --instrument NAME [--remark TEXT] [--note TEXT]\n"
    "       ferry2-cli log show [--class SLOT] [--night YYYY-MM-DD] [--observer NAME]\n"
    "           [--location NAME] [--instrument NAME] [--constellation ABBR]\n"
    "       ferry2-cli log query [--class SLOT] [--from YYYY-MM-DD] [--to YYYY-MM-DD]\n"
    "           [--observer NAME] [--location NAME] [--instrument NAME] [--constellation ABBR]\n"
    "       ferry2-cli log delete SLOT ENTRY\n"
    "       ferry2-cli log export FILE\n"
    "       ferry2-cli log import FILE\n";

const char kLogDetails[] =
    "  log add        adds one entry to the observation log under user/log: the\n"
    "                 object (class code and PID, as 'object' takes them) seen\n"
    "                 at the moment (UT) from the stored location, by the stored\n"
    "                 observer, with the stored instrument, each named as\n"
    "                 stored (case aside). Prints the entry's\n"
    "                 number within its class, or, when the log holds the same\n"
    "                 observation already (same observer, location and\n"
    "                 instrument, less than a minute apart, the same note), that\n"
    "                 entry's number: nothing is added then. A reference comet\n"
    "                 or minor planet that the user's stores hold too is logged\n"
    "                 as the user's object once that one has entries.\n"
    "  log show       lists the entries that pass every filter given, one line\n"
    "                 an entry after a header line: class slot, entry number,\n"
    "                 UT date and time, the object's name, observer, instrument,\n"
    "                 location, constellation and remark, separated by tabs. A\n"
    "                 night is the date on which the observing night began: an\n"
    "                 entry at 02:00 local time belongs to the date before.\n"
    "                 SLOT is a class folder's name (\"galaxies\"), the beginning\n"
    "                 of one, or its number. Names compare without case.\n"
    "  log query      the objects the planner's log query gives: those whose\n"
    "                 FIRST entry passes (a later entry that would pass does not\n"
    "                 count). Without a filter every name and class is taken.\n"
    "                 One line an object: class slot, class code, PID, whether\n"
    "                 it is a user object, and its name.\n"
    "  log delete SLOT ENTRY\n"
    "                 deletes one entry; the object leaves the log with its last\n"
    "                 entry. Entry numbers are never handed out again.\n"
    "  log export FILE\n"
    "                 writes every entry to a log exchange file, with the\n"
    "                 records of the user's own objects they name; prints the\n"
    "                 count.\n"
    "  log import FILE\n"
    "                 adds the entries of a log exchange file (entries the log\n"
    "                 holds already count as added); prints the count.\n";

namespace {

// Options of the form --name VALUE, in any order.
struct LogOptions {
    std::string object, at, location, observer, instrument, remark, note;
    std::string slot, night, from, to, constellation;
    bool haveNote = false, haveRemark = false;
};

bool TakeOptions(const std::vector<std::string>& words, size_t first, LogOptions* o, std::string* bad) {
    struct Named {
        const char* name;
        std::string* value;
        bool* seen;
    } named[] = {
        {"--object", &o->object, nullptr},     {"--at", &o->at, nullptr},
        {"--location", &o->location, nullptr}, {"--observer", &o->observer, nullptr},
        {"--instrument", &o->instrument, nullptr}, {"--remark", &o->remark, &o->haveRemark},
        {"--note", &o->note, &o->haveNote},    {"--class", &o->slot, nullptr},
        {"--night", &o->night, nullptr},       {"--from", &o->from, nullptr},
        {"--to", &o->to, nullptr},             {"--constellation", &o->constellation, nullptr},
    };
    for (size_t i = first; i < words.size(); ++i) {
        bool taken = false;
        for (const Named& n : named) {
            if (words[i] != n.name) continue;
            if (i + 1 >= words.size()) {
                *bad = std::string(n.name) + " takes a value";
                return false;
            }
            *n.value = words[++i];
            if (n.seen) *n.seen = true;
            taken = true;
            break;
        }
        if (!taken) {
            *bad = "unknown word " + words[i];
            return false;
        }
    }
    return true;
}

bool ParseDate(const std::string& text, int* year, int* month, int* day) {
    char tail = 0;
    return std::sscanf(text.c_str(), "%d-%d-%d%c", year, month, day, &tail) == 3 && *month >= 1 && *month <= 12 &&
           *day >= 1 && *day <= 31;
}

// A class folder by its name, the beginning of its name, or its slot
// number.
int ParseSlot(const std::string& text) {
    for (int slot = 0; slot < kLogClassFolders; ++slot)
        if (NameCompare(text.c_str(), ClassNameAt(slot)) == 0) return slot;
    for (int slot = 0; slot < kLogClassFolders && !text.empty(); ++slot)
        if (NameCompare(text.c_str(), std::string(ClassNameAt(slot)).substr(0, text.size()).c_str()) == 0)
            return slot;
    char* end = nullptr;
    const long n = std::strtol(text.c_str(), &end, 10);
    if (text.empty() || *end || n < 0 || n >= kLogClassFolders) return -1;
    return static_cast<int>(n);
}

int ParseConstellation(const std::string& text) {
    for (int zone = 0; zone < kConstellationZones; ++zone) {
        const char* abbreviation = constellationZoneAbbreviation(zone);
        if (abbreviation && NameCompare(text.c_str(), abbreviation) == 0) return zone;
    }
    return -1;
}

bool FindLocation(const std::string& name, Site* site, LocationTail* tail) {
    int count = 0;
    FilePtr store = LocationStoreOpen(&count);
    for (int i = 0; store && i < count; ++i)
        if (LocationRead(store.get(), i, site, tail) && NameCompare(site->name, name.c_str()) == 0) return true;
    return false;
}

bool FindObserver(const std::string& name, ObserverRecord* observer) {
    int count = 0;
    FilePtr store = ObserverStoreOpen(&count);
    for (int i = 0; store && i < count; ++i)
        if (ObserverRead(store.get(), i, observer) && NameCompare(observer->name, name.c_str()) == 0) return true;
    return false;
}

bool FindInstrument(const std::string& name, InstrumentRecord* instrument) {
    int count = 0;
    FilePtr store = InstrumentStoreOpen(&count);
    for (int i = 0; store && i < count; ++i)
        if (InstrumentRead(store.get(), i, instrument) && NameCompare(instrument->name, name.c_str()) == 0)
            return true;
    return false;
}

int RunAdd(const LogOptions& o) {
    int objectClass = 0;
    unsigned long pid = 0;
    char tail = 0;
    if (std::sscanf(o.object.c_str(), "%d:%lu%c", &objectClass, &pid, &tail) != 2 || objectClass < 1 ||
        objectClass > 255)
        return VerbUsage("log add", "--object takes CLASS:PID");
    int year = 0, month = 0, day = 0;
    double hours = 0;
    if (!ParseMoment(o.at, &year, &month, &day, &hours)) return VerbUsage("log add", "--at takes YYYY-MM-DDTHH:MM[:SS]");
    if (o.location.empty() || o.observer.empty() || o.instrument.empty())
        return VerbUsage("log add", "give --location, --observer and --instrument");
    Site site;
    LocationTail locationTail;
    if (!FindLocation(o.location, &site, &locationTail)) return VerbFailed("log add", "no stored location of that name");
    ObserverRecord observer;
    if (!FindObserver(o.observer, &observer)) return VerbFailed("log add", "no stored observer of that name");
    InstrumentRecord instrument;
    if (!FindInstrument(o.instrument, &instrument)) return VerbFailed("log add", "no stored instrument of that name");

    Instant instant;
    InstantSet(&instant, &site, month, day, year, hours, kUniversalTime);
    instant = LogInstantOf(instant.jd, site);
    ObjectRecord object = identityRecord(objectClass, static_cast<uint32_t>(pid));
    if (refillByIdentity(&object, 0.0, 0.0, &site, &instant) < 1 || ClassSlotOf(object.classMask) < 0)
        return VerbFailed("log add", "the catalogues and the user's stores don't know that object");
    LogEntry entry;
    LogFillEntry(&entry, site, locationTail, instant, observer, instrument, object,
                 o.haveRemark ? o.remark.c_str() : "");
    const long number = LogAddEntry(&entry, o.haveNote && !o.note.empty() ? o.note.c_str() : nullptr);
    if (number < 0) return VerbFailed("log add", "the entry could not be added");
    std::printf("%ld\n", number);
    return kExitDone;
}

std::string UtText(double jd) {
    Instant ut;
    ut.jd = jd;
    InstantFromJd(nullptr, &ut);
    const long minutes = static_cast<long>(ut.utHours * 60.0 + 0.5);
    char text[80];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d %02ld:%02ld", ut.year, ut.month, ut.day, minutes / 60,
                  minutes % 60);
    return text;
}

struct ShowFilter {
    int slot = -1;
    bool haveNight = false;
    LogNight night;
    int constellation = -1;
    const LogOptions* names = nullptr;
};

bool NameMatches(const std::string& wanted, const char* name) {
    return wanted.empty() || NameCompare(wanted.c_str(), name) == 0;
}

bool RowPasses(const ShowFilter& f, const ObjectLogRow& row) {
    if (f.haveNight) {
        const LogNight n = LogNightOf(row.instant.jd, row.site);
        if (n.year != f.night.year || n.month != f.night.month || n.day != f.night.day) return false;
    }
    if (f.constellation >= 0 && row.constellation != f.constellation) return false;
    return NameMatches(f.names->observer, row.observer.name) && NameMatches(f.names->location, row.site.name) &&
           NameMatches(f.names->instrument, row.instrument.name);
}

// The name as the index folder has it, case aside; the name as given when
// the folder has none like it.
std::string IndexedName(IndexMember member, const std::string& name) {
    IndexEnum walk;
    IndexItem item;
    for (int r = IndexFirst(&walk, member, &item); r != 0; r = IndexNext(&walk, &item))
        if (r > 0 && NameCompare(item.text.c_str(), name.c_str()) == 0) return item.text;
    return name;
}

// The index that narrows the walk most: the first filter given, in the
// order night, observer, instrument, location, constellation, class.
IndexKey WalkKey(const ShowFilter& f, int slot) {
    if (f.haveNight) return IndexNightKey(f.night.year, f.night.month, f.night.day);
    if (!f.names->observer.empty())
        return IndexObserverKey(IndexedName(kIndexObserver, f.names->observer).c_str());
    if (!f.names->instrument.empty())
        return IndexInstrumentKey(IndexedName(kIndexInstrument, f.names->instrument).c_str());
    if (!f.names->location.empty()) return IndexLocKey(IndexedName(kIndexLoc, f.names->location).c_str());
    if (f.constellation >= 0) return IndexConsKey(f.constellation);
    return IndexClassKey(slot);
}

bool ClassIndexWalk(const ShowFilter& f) {
    return !f.haveNight && f.names->observer.empty() && f.names->instrument.empty() && f.names->location.empty() &&
           f.constellation < 0;
}

void ShowObjectRows(const ShowFilter& f, const IndexRow& at, bool user) {
    const int slot = static_cast<int>(at.classSlot);
    if (!FileExists(LogRowsPath(slot, at.logKey, user).c_str())) return;
    uint32_t count = 0;
    FilePtr rows = LogOpenRows(ClassMaskOfSlot(slot), at.logKey, user, &count);
    for (uint32_t i = 0; rows && i < count; ++i) {
        ObjectLogRow row;
        if (LogReadRow(rows.get(), &row) < 0) return;
        if (!RowPasses(f, row)) continue;
        LogEntry entry;
        if (!LogReadEntry(row.classMask, row.entryNumber, &entry, nullptr)) continue;
        std::string name;
        displayName(identityRecord(row.objectClass, row.id), &name, nullptr, nullptr, nullptr);
        const char* cons = constellationZoneAbbreviation(row.constellation);
        std::printf("%d\t%u\t%s\t%s\t%s\t%s\t%s\t%s\t%s\n", slot, row.entryNumber, UtText(entry.jd).c_str(),
                    ShownField(name).c_str(), ShownField(row.observer.name).c_str(),
                    ShownField(row.instrument.name).c_str(), ShownField(row.site.name).c_str(), cons ? cons : "",
                    ShownField(std::string(entry.remark, strnlen(entry.remark, sizeof entry.remark))).c_str());
    }
}

int RunShow(const LogOptions& o) {
    ShowFilter f;
    f.names = &o;
    if (!o.slot.empty() && (f.slot = ParseSlot(o.slot)) < 0) return VerbUsage("log show", "--class takes a class folder");
    if (!o.night.empty()) {
        if (!ParseDate(o.night, &f.night.year, &f.night.month, &f.night.day))
            return VerbUsage("log show", "--night takes YYYY-MM-DD");
        f.haveNight = true;
    }
    if (!o.constellation.empty() && (f.constellation = ParseConstellation(o.constellation)) < 0)
        return VerbUsage("log show", "--constellation takes an abbreviation such as And");
    std::puts("Slot\tEntry\tUT\tObject\tObserver\tInstrument\tLocation\tConstellation\tRemark");
    // One index file names every class, except the class indexes themselves.
    const bool byClass = ClassIndexWalk(f);
    for (int slot = 0; slot < (byClass ? kLogClassFolders : 1); ++slot) {
        if (byClass && f.slot >= 0 && slot != f.slot) continue;
        const IndexKey key = WalkKey(f, slot);
        const std::string path = IndexPath(key, false);
        if (path.empty() || !FileExists(path.c_str())) continue;
        uint32_t count = 0;
        FilePtr index = IndexOpen(key, &count);
        for (uint32_t i = 0; index && i < count; ++i) {
            IndexRow row;
            const int kind = IndexReadRow(index.get(), static_cast<long>(i), &row);
            if (kind == 0) break;
            if (f.slot >= 0 && static_cast<int>(row.classSlot) != f.slot) continue;
            ShowObjectRows(f, row, kind == 2);
        }
    }
    return kExitDone;
}

// Every name an index folder knows, for a query without a name filter.
void SelectAll(IndexMember member, std::vector<std::string>* names) {
    IndexEnum walk;
    IndexItem item;
    for (int r = IndexFirst(&walk, member, &item); r != 0; r = IndexNext(&walk, &item))
        if (r > 0) LogQuerySelectName(names, item.text.c_str());
}

int RunQuery(const LogOptions& o) {
    LogQuery query;
    LogQueryInit(&query);
    const int slot = o.slot.empty() ? -1 : ParseSlot(o.slot);
    if (!o.slot.empty() && slot < 0) return VerbUsage("log query", "--class takes a class folder");
    for (int s = 0; s < kLogClassFolders; ++s)
        if (slot < 0 || s == slot) query.classes[s] = static_cast<uint8_t>(s);
    const int cons = o.constellation.empty() ? -1 : ParseConstellation(o.constellation);
    if (!o.constellation.empty() && cons < 0) return VerbUsage("log query", "--constellation takes an abbreviation");
    for (int c = 0; c < kConstellationZones; ++c)
        if (cons < 0 || c == cons) query.constellations[c] = static_cast<uint8_t>(c);
    query.startYear = -9999;
    query.startMonth = query.startDay = 1;
    query.endYear = 9999;
    query.endMonth = 12;
    query.endDay = 31;
    if (!o.from.empty() && !ParseDate(o.from, &query.startYear, &query.startMonth, &query.startDay))
        return VerbUsage("log query", "--from takes YYYY-MM-DD");
    if (!o.to.empty() && !ParseDate(o.to, &query.endYear, &query.endMonth, &query.endDay))
        return VerbUsage("log query", "--to takes YYYY-MM-DD");
    const struct {
        const std::string& given;
        IndexMember member;
        std::vector<std::string>* names;
    } lists[] = {{o.observer, kIndexObserver, &query.observers},
                 {o.location, kIndexLoc, &query.locations},
                 {o.instrument, kIndexInstrument, &query.instruments}};
    for (const auto& l : lists) {
        if (!l.given.empty())
            LogQuerySelectName(l.names, l.given.c_str());
        else
            SelectAll(l.member, l.names);
    }
    std::vector<LogQueryHit> hits;
    LogQueryRun(query, &hits);
    LogQueryFree(&query);
    std::puts("Slot\tClass\tPID\tUser\tObject");
    for (const LogQueryHit& hit : hits) {
        const LogKeyParts parts = LogKeySplit(hit.logKey);
        std::string name;
        displayName(identityRecord(hit.objectClass, parts.id), &name, nullptr, nullptr, nullptr);
        std::printf("%d\t%d\t%u\t%d\t%s\n", ClassSlotOf(hit.classMask), hit.objectClass, parts.id, parts.user ? 1 : 0,
                    ShownField(name).c_str());
    }
    return hits.empty() ? kExitFailed : kExitDone;
}

int RunDelete(const std::vector<std::string>& words) {
    if (words.size() != 3) return VerbUsage("log delete", "give the class folder and the entry number");
    const int slot = ParseSlot(words[1]);
    char* end = nullptr;
    const unsigned long number = std::strtoul(words[2].c_str(), &end, 10);
    if (slot < 0 || words[2].empty() || *end) return VerbUsage("log delete", "give the class folder and the entry number");
    LogEntry entry;
    if (!LogReadEntry(ClassMaskOfSlot(slot), static_cast<uint32_t>(number), &entry, nullptr))
        return VerbFailed("log delete", "no entry of that number in that class");
    const int result = LogDeleteEntry(entry, static_cast<uint32_t>(number));
    if (result == 1) return kExitDone;
    const std::string why = "the deletion stopped at stage " + std::to_string(result);
    return VerbFailed("log delete", why.c_str());
}

std::string BaseName(const std::string& path) {
    const size_t slash = path.find_last_of("/\\");
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

int RunExport(const std::vector<std::string>& words) {
    if (words.size() != 2) return VerbUsage("log export", "give the file to write");
    PercentProgress progress;
    ProgressBegin(&progress.bar, "Exporting", 100);
    const long count = LogExportAll(words[1].c_str(), BaseName(words[1]).c_str(), "", nullptr, PercentProgressStep, &progress);
    ProgressEnd(&progress.bar);
    if (count < 0) return VerbFailed("log export", "the log could not be read or the file written");
    std::printf("%ld\n", count);
    return kExitDone;
}

int RunImport(const std::vector<std::string>& words) {
    if (words.size() != 2) return VerbUsage("log import", "give the file to read");
    PercentProgress progress;
    ProgressBegin(&progress.bar, "Importing", 100);
    ExchangeHeader header;
    std::string description;
    const long count = LogImportFile(words[1].c_str(), &header, &description, PercentProgressStep, &progress);
    ProgressEnd(&progress.bar);
    if (count < 0) return VerbFailed("log import", "no log exchange file, or an entry could not be added");
    std::printf("%ld\n", count);
    return kExitDone;
}

}  // namespace

int RunLog(const std::vector<std::string>& words) {
    if (words.empty()) return VerbUsage("log", "give add, show, query, delete, export or import");
    const std::string& sub = words[0];
    if (sub == "delete") return RunDelete(words);
    if (sub == "export") return RunExport(words);
    if (sub == "import") return RunImport(words);
    if (sub != "add" && sub != "show" && sub != "query") return VerbUsage("log", "unknown log verb");
    LogOptions o;
    std::string bad;
    if (!TakeOptions(words, 1, &o, &bad)) return VerbUsage(("log " + sub).c_str(), bad.c_str());
    if (sub == "add") return RunAdd(o);
    if (sub == "show") return RunShow(o);
    return RunQuery(o);
}
