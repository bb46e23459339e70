#include "shell/import_log.h"

FilePtr OpenImportLog() { return OpenFile("ferry2.log", "a"); }
