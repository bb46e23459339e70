#include "base/file_io.h"

namespace {

struct ArmedFault {
    FileOp op = FileOp::kWrite;
    int callsLeft = 0;  // 0: off
    FileFault fault = FileFault::kFail;
    bool fired = false;
};
ArmedFault g_fault;

bool FaultStrikes(FileOp op) {
    if (g_fault.callsLeft == 0 || g_fault.op != op) return false;
    if (--g_fault.callsLeft != 0) return false;
    g_fault.fired = true;
    return true;
}

}  // namespace

size_t FileRead(void* buffer, size_t size, FILE* stream) {
    if (FaultStrikes(FileOp::kRead)) {
        if (g_fault.fault == FileFault::kFail) return 0;
        return std::fread(buffer, 1, size / 2, stream);
    }
    return std::fread(buffer, 1, size, stream);
}

size_t FileWrite(const void* buffer, size_t size, FILE* stream) {
    if (FaultStrikes(FileOp::kWrite)) {
        if (g_fault.fault == FileFault::kFail) return 0;
        const size_t written = std::fwrite(buffer, 1, size / 2, stream);
        std::fflush(stream);
        return written;
    }
    return std::fwrite(buffer, 1, size, stream);
}

void FileFaultArm(FileOp op, int nth, FileFault fault) {
    g_fault = ArmedFault{op, nth > 0 ? nth : 0, fault, false};
}

void FileFaultDisarm() { g_fault.callsLeft = 0; }

bool FileFaultFired() { return g_fault.fired; }
