// Opens one page of the help (FHelpTarget) with the system's browser or
// help viewer; a missing or unopenable help is told to the user. Main thread
// only.
#pragma once

#include <windows.h>

// page: a name without extension ("index", "add", ...).
void FOpenHelpPage(HWND owner, const char* page);
