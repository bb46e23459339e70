// Helpers for the tests that run the program's windows in-process under Wine.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

struct ShownMessage {
    std::string text, title;
    UINT flags;
};

// Every message box the program shows lands here instead of on the screen.
std::vector<ShownMessage>& ShownMessages();
void InstallMessageRecorder();

// Registers the program's window classes once per process.
HINSTANCE ProgramInstance();

// Runs the message queue dry; true when a quit message was among it.
bool PumpMessages();
