#include "base/debug_channel.h"

#include <cstdarg>
#include <cstdio>

namespace {

void ToStderr(const char* text) { std::fputs(text, stderr); }

DebugSink gSink = ToStderr;

}  // namespace

void SetDebugSink(DebugSink sink) { gSink = sink ? sink : ToStderr; }

void DebugPrint(const char* format, ...) {
    char text[512];
    va_list args;
    va_start(args, format);
    std::vsnprintf(text, sizeof text, format, args);
    va_end(args);
    gSink(text);
}
