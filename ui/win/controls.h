// Window classes of the control library, registered at start-up in the
// program's order.
#pragma once

#include <windows.h>

ATOM RegisterHyperTextClass(HINSTANCE instance);
ATOM RegisterDibClass(HINSTANCE instance);
ATOM RegisterCalDateClass(HINSTANCE instance);
ATOM RegisterTableClass(HINSTANCE instance);
ATOM RegisterSymbolTextClass(HINSTANCE instance);
ATOM RegisterCShadeClass(HINSTANCE instance);
