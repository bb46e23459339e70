#include "shell/win/app.h"

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int) { return Ferry2Run(instance); }
