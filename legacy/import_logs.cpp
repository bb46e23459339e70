#include "legacy/import_logs.h"

#include <cstring>
#include <set>

#include "astro/angle_text.h"
#include "astro/numeric.h"
#include "base/counted_file.h"
#include "base/prefix_match.h"
#include "catalog/display_name.h"
#include "legacy/import_result.h"
#include "legacy/legacy_object_step.h"
#include "legacy/log_links.h"
#include "stores/instrument_makers.h"
#include "stores/instrument_store.h"
#include "stores/location_store.h"
#include "stores/log_store.h"

namespace {

// Julian days outside [kEarliestJd, kLatestJd] can't be real observations
// of a version 1.x log; such an entry is imported with kStandInJd instead.
// The upper bound is the start of 2010 in the planner's calendar.
constexpr double kEarliestJd = 1.0;
constexpr double kLatestJd = 2455197.5;
constexpr double kStandInJd = 2451544.4;

constexpr ObjectStepTexts kLogObjectTexts = {
    "Log: Error opening V1.x stellar data (skipped)\n",
    "Log: Error finding V1.x stellar database entry (skipped)\n",
    "Log: Error opening stellar database (skipped)\n",
    "Log: Error opening V1.x comet data (skipped)\n",
    "Log: Error opening comet database (skipped)\n",
    "Log: Error opening V1.x MP data (skipped)\n",
    "Log: Error opening MP database (skipped)\n",
    "Log: Unknown supplemental class (skipped)\n",
    "Log: No object PID (skipped)\n",
};

// The state of one run of the job. The moment is kept from one entry to
// the next: a report written before this entry's moment is made shows the
// one the job last had (all zero for the first entry), as the old program
// did.
struct LogJob {
    explicit LogJob(const JobHost& h) : host(h) {}
    const JobHost& host;
    ImportCounters c;
    int perClass = 0;
    Instant instant;
    StellarRecord starBuffer;
    InstrumentNameMemo instruments;  // the job adds no instruments
};

enum class Step { kNextEntry, kEndChain, kLeaveJob };
enum class Lookup { kFound, kNotFound, kLeaveJob };

// The name, cut to what the field holds, with its NUL.
void CopyName(char* out, size_t size, const char* name) {
    const size_t length = strnlen(name, size - 1);
    std::memmove(out, name, length);
    out[length] = '\0';
}

// The stored location of the entry's name at the same place replaces the
// entry's own, tail and all; otherwise the entry keeps its place with a
// zero tail. A store that can't be opened changes nothing.
void SettleLocation(LegacyLogEntry& entry, LocationTail* tail) {
    *tail = LocationTail{};
    int count = 0;
    FilePtr store = LocationStoreOpen(&count);
    if (!store) return;
    Site site = entry.site;
    LocationTail storedTail;
    int index = 0;
    if (LocationFind(store.get(), &site, &storedTail, &index) == 1) {
        entry.site = site;
        *tail = storedTail;
    }
}

// The observer of the entry's name, cleaned in place: the page's link
// first, then the store by prefix.
Lookup SettleObserver(const LogJob& job, LegacyLogEntry& entry, ObserverRecord* observer) {
    CleanObserverName(entry.observer);
    if (entry.observer[0] == '\0') CopyName(entry.observer, sizeof entry.observer, kBlankName);
    if (const ObserverLink* link = FindObserverLink(job.host.logLinks, entry.observer)) {
        *observer = link->record;
        return Lookup::kFound;
    }
    int count = 0;
    StoreDamage damage = StoreDamage::kNone;
    FilePtr store = ObserverStoreOpen(&count, &damage);
    if (!store) {
        LogStoreDamage(job.host, "Log", kObserverStorePath, damage);
        NoteUnopenedStore(job.host, kObserverStorePath);
        LogPrintf(job.host.log, "Log: unable to open observer database\n");
        return Lookup::kLeaveJob;
    }
    if (!FindObserverByPrefix(store.get(), entry.observer, observer)) {
        LogPrintf(job.host.log, "Log: observer not found -> %s (skipped)\n", entry.observer);
        return Lookup::kNotFound;
    }
    return Lookup::kFound;
}

// The instrument of the entry's name: "Naked Eye" as made here, else the
// page's link, then the store by exact name. An empty name becomes
// "(blank)" in place.
Lookup SettleInstrument(LogJob& job, LegacyLogEntry& entry, InstrumentRecord* instrument) {
    if (std::strcmp(entry.instrument, kNakedEyeName) == 0) {
        NakedEyeInit(instrument);
        return Lookup::kFound;
    }
    if (entry.instrument[0] == '\0') CopyName(entry.instrument, sizeof entry.instrument, kBlankName);
    if (const InstrumentLink* link = FindInstrumentLink(job.host.logLinks, entry.instrument)) {
        *instrument = link->record;
        return Lookup::kFound;
    }
    int count = 0;
    StoreDamage damage = StoreDamage::kNone;
    FilePtr store = InstrumentStoreOpen(&count, &damage);
    if (!store) {
        LogStoreDamage(job.host, "Log", kInstrumentStorePath, damage);
        NoteUnopenedStore(job.host, kInstrumentStorePath);
        LogPrintf(job.host.log, "Log: unable to open instrument database\n");
        return Lookup::kLeaveJob;
    }
    InstrumentRecord probe;
    CopyName(probe.name, sizeof probe.name, entry.instrument);
    int index = 0;
    if (!InstrumentFindByNameMemo(store.get(), &probe, count, &index, &job.instruments)) {
        LogPrintf(job.host.log, "Log: instrument not found -> %s (skipped)\n", entry.instrument);
        return Lookup::kNotFound;
    }
    *instrument = probe;
    return Lookup::kFound;
}

// The entry's moment at its site, all three stages, after the date guard.
void MakeEntryInstant(LogJob& job, LegacyLogEntry& entry) {
    if (entry.jd < kEarliestJd || entry.jd > kLatestJd) entry.jd = kStandInJd;
    job.instant.jd = entry.jd;
    InstantFromJd(&entry.site, &job.instant);
    InstantScales(&job.instant, 0.0);
    InstantSidereal(&entry.site, &job.instant);
}

// Settles everything the entry names and adds it to the log store. A
// skipped entry is reported and counted; kLeaveJob when a store the job
// needs can't be opened.
Step SettleAndAdd(LogJob& job, LegacyLogEntry& entry, const std::string& note) {
    const auto skip = [&] {
        ReportEntryNotImported(job.host.log, entry, job.instant, entry.observer, note);
        ++job.c.skipped;
        return Step::kNextEntry;
    };

    LocationTail tail;
    SettleLocation(entry, &tail);
    ObserverRecord observer;
    const Lookup who = SettleObserver(job, entry, &observer);
    if (who == Lookup::kLeaveJob) return Step::kLeaveJob;
    if (who == Lookup::kNotFound) return skip();
    InstrumentRecord instrument;
    const Lookup with = SettleInstrument(job, entry, &instrument);
    if (with == Lookup::kLeaveJob) return Step::kLeaveJob;
    if (with == Lookup::kNotFound) return skip();

    MakeEntryInstant(job, entry);
    const ObjectStepFrame frame{&job.host, &kLogObjectTexts, &entry.site, &job.instant, &job.starBuffer};
    ObjectRecord object;
    if (!LegacyObjectRecord(frame, ObjectRowPlace{}, LegacyObjectRef{entry.objectClass, entry.pid, entry.sizeUnit},
                            &object))
        return skip();

    LogEntry added;
    LogFillEntry(&added, entry.site, tail, job.instant, observer, instrument, object, entry.conditions);
    // A repeat of an entry the store holds answers with the older number
    // and counts as imported.
    if (LogAddEntry(&added, note.c_str()) < 0) {
        LogPrintf(job.host.log, "Log: error adding log entry\n");
        ReportEntryNotImported(job.host.log, entry, job.instant, entry.observer, note);
        NoteFailedAdd(job.host);
    } else {
        ++job.c.imported;
    }
    return Step::kNextEntry;
}

// One entry of slot `sc`; `numberInOut` becomes the chain's next number.
Step EntryStep(LogJob& job, int sc, long* numberInOut) {
    LegacyLogEntry entry;
    std::string note;
    const long next = ReadLegacyLogEntry(job.host.legacyRoot, sc, *numberInOut, &entry, &note);
    if (next == 0) {
        LogPrintf(job.host.log, "Log: internal error -> sc_index=%2d ret=%2d\n", sc, 0);
        return Step::kEndChain;
    }
    *numberInOut = next;
    if (SettleAndAdd(job, entry, note) == Step::kLeaveJob) return Step::kLeaveJob;
    ++job.c.counted;
    ++job.perClass;
    return Step::kNextEntry;
}

// The chain of one index row. A number met again would walk a loop for
// ever; it ends the chain as an entry that can't be read does.
Step WalkChain(LogJob& job, int sc, long first) {
    std::set<long> seen;
    long number = first;
    do {
        if (!seen.insert(number).second) {
            LogPrintf(job.host.log, "Log: internal error -> sc_index=%2d ret=%2d\n", sc, 0);
            return Step::kNextEntry;
        }
        const Step step = EntryStep(job, sc, &number);
        if (step == Step::kLeaveJob) return Step::kLeaveJob;
        if (step == Step::kEndChain) return Step::kNextEntry;
    } while (number > 0);
    return Step::kNextEntry;
}

// Every row of one slot's index file; false when the job must stop.
bool WalkSlot(LogJob& job, int sc) {
    job.perClass = 0;
    FilePtr index = OpenLegacyLogIndex(job.host.legacyRoot, sc);
    if (!index) {
        NoteUnreadableFile(job.host, LegacyLogIndexPath(job.host.legacyRoot, sc));
        LogPrintf(job.host.log, "Logs: error opening index file -> %d\n", sc);
        return false;
    }
    uint32_t count = 0;
    uint32_t num = 0;
    if (!ReadLegacyLogCount(index.get(), &count)) {
        LogPrintf(job.host.log, "Logs: error reading count in index file -> %d\n", sc);
        return false;
    }
    if (!ReadLegacyLogNum(index.get(), &num)) {
        LogPrintf(job.host.log, "Logs: error reading num in index file -> %d\n", sc);
        return false;
    }
    if (num == 0) {
        LogPrintf(job.host.log, "Logs: Warning no logs for index %d\n", sc);
    } else {
        if (!SeekLegacyLogRows(index.get())) {
            LogPrintf(job.host.log, "Logs: error seeking index file -> %d\n", sc);
            return false;
        }
        LogPrintf(job.host.log, "Logs: sc %d num=%d count=%d\n", sc, static_cast<int>(num),
                  static_cast<int>(count));
        for (uint32_t r = 0; r < num; ++r) {
            LegacyLogIndexRow row;
            if (!ReadLegacyLogRow(index.get(), &row)) {
                LogPrintf(job.host.log, "Logs: error reading index file -> %d %d\n", sc, static_cast<int>(r));
                return false;
            }
            if (WalkChain(job, sc, row.firstEntry) == Step::kLeaveJob) return false;
        }
    }
    index.reset();
    LogPrintf(job.host.log, "Log: %d for sc %d\n", job.perClass, sc);
    return true;
}

void ShowLogResult(const LogJob& job, int succeeded) {
    if (!succeeded) {
        ShowImportResult(job.host, 0, job.c);
        return;
    }
    char text[256];
    std::snprintf(text, sizeof text,
                  "%d log entries imported of %d (%d skipped).\r\nSee the ferry2.log file for details.\r\n"
                  "Note: duplicate logs are not imported twice.\n",
                  job.c.imported, job.c.counted, job.c.skipped);
    ShowJobMessage(job.host, text, kFerryMessageTitle);
}

}  // namespace

int FindObserverByPrefix(FILE* stream, const char* name, ObserverRecord* recordOut) {
    if (!stream || !name || name[0] == '\0') return 0;
    int count = 0;
    if (!CountedReadCount(stream, &count)) return 0;
    for (int i = 0; i < count; ++i) {
        ObserverRecord stored;
        if (!ReadRecord<ObserverRecordLayout>(stream, stored)) return 0;
        stored.name[sizeof stored.name - 1] = '\0';
        if (PrefixMatch(stored.name, name)) {
            if (recordOut) *recordOut = stored;
            return 1;
        }
    }
    return 0;
}

void ReportEntryNotImported(FILE* log, const LegacyLogEntry& entry, const Instant& instant,
                            const char* cleanedName, const std::string& note) {
    char clock[32];
    LogPrintf(log, "\n**** Log Entry not imported:\n");
    LogPrintf(log, "Date/time: %4d %2d %2d %s\n", instant.year, instant.month, instant.day,
              ClockText(clock, instant.localHours));
    LogPrintf(log, "Location: %s\n", entry.site.name);
    LogPrintf(log, "Observer: %s\n", cleanedName ? cleanedName : "");
    LogPrintf(log, "Instrument: %s\n", entry.instrument);
    std::string name;
    if (displayName(identityRecord(entry.objectClass, entry.pid), &name, nullptr, nullptr, nullptr))
        LogPrintf(log, "Target Name?: %s\n", name.c_str());
    LogPrintf(log, "Target Data: RA=%lf Dec=%lf Mag=%6.2lf\n", entry.ra * 12.0 / kPi, entry.dec * 180.0 / kPi,
              static_cast<double>(entry.magnitude));
    LogPrintf(log, "Conditions: %s\n", entry.conditions);
    LogPrintf(log, "Description: %s\n", note.c_str());
    LogPrintf(log, "****\n\n");
}

int ImportLogs(const JobHost& host) {
    LogJob job(host);
    int succeeded = 1;
    for (int sc = 0; sc < kLegacyLogSlots && succeeded; ++sc)
        if (!WalkSlot(job, sc)) succeeded = 0;
    ShowLogResult(job, succeeded);
    return succeeded;
}
