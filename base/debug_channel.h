// The debug console channel: notes for developers that never reach the
// user's log and never stop anything (a value that overflows its packed
// field, a malformed catalogue row). Output goes to a settable sink, by
// default stderr; the tests set one to read what was told.
#pragma once

using DebugSink = void (*)(const char* text);

// Sets the sink; a null sink restores the default (stderr).
void SetDebugSink(DebugSink sink);

// Formats with printf rules and hands the text to the sink in one piece.
void DebugPrint(const char* format, ...)
#if defined(__GNUC__)
    __attribute__((format(printf, 1, 2)))
#endif
    ;
