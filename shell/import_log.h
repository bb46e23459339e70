// ferry2.log: opened for appending when the legacy folder is accepted and
// closed at shutdown. No header, no time stamps, no explicit flush.
#pragma once

#include "base/file_utils.h"

FilePtr OpenImportLog();
