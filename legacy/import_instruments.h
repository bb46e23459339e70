// Copies the ticked version 1.x instruments into user/instr.bin, widening
// each to the version 2 record and keeping only the eyepieces that the
// eyepiece pool knows.
#pragma once

#include <cstddef>

#include "legacy/job_host.h"

// Cuts the trailing blanks of `name` (at most `nameSize` bytes) in place,
// then writes its characters in lower case to `lowerOut`, which must hold
// `nameSize` bytes. No terminator is written: the caller clears the buffer.
void NormalizeEyepieceName(char* lowerOut, char* name, size_t nameSize);

// Returns 1 when the job ran to the end, else 0.
int ImportInstruments(const JobHost& host);
