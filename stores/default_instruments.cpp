#include "stores/default_instruments.h"

#include "stores/instrument_makers.h"
#include "stores/instrument_store.h"

namespace {

int AddNew(InstrumentRecord* recordOut, const InstrumentRecord& made) {
    int count = 0;
    FilePtr store = InstrumentStoreOpen(&count);
    if (!store) return 0;
    InstrumentRecord added = made;
    if (!InstrumentAdd(store.get(), &added)) return 0;
    if (recordOut) *recordOut = added;
    return 1;
}

}  // namespace

int CreateDefaultTelescope(InstrumentRecord* recordOut, const char* name) {
    InstrumentRecord made;
    NewTelescopeInit(&made, name);
    return AddNew(recordOut, made);
}

int CreateDefaultBinoculars(InstrumentRecord* recordOut, const char* name) {
    InstrumentRecord made;
    NewBinocularsInit(&made, name);
    return AddNew(recordOut, made);
}
