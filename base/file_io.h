// The one place where the bytes of the stores and record files meet the C
// library. A test can arm a fault here to make one chosen read or write
// fail, the way a full disk or a bad sector would; unarmed, each call is a
// plain fread or fwrite.
#pragma once

#include <cstddef>
#include <cstdio>

// Reads or writes `size` bytes at the stream's position; returns the number
// of bytes moved, `size` on success.
size_t FileRead(void* buffer, size_t size, FILE* stream);
size_t FileWrite(const void* buffer, size_t size, FILE* stream);

enum class FileOp { kRead, kWrite };
enum class FileFault {
    kFail,   // nothing moves and 0 comes back
    kShort,  // half the bytes move (a written half is flushed to the file)
};

// Arms a fault for the nth call of `op` from now (1 = the next one). It
// fires once; other calls pass through. One fault at a time, for the whole
// process.
void FileFaultArm(FileOp op, int nth, FileFault fault);
void FileFaultDisarm();

// Whether the armed fault has fired since it was armed.
bool FileFaultFired();
