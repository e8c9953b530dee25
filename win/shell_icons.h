// The system's image lists and the index of a file's or folder's icon in
// them, found by name alone (the file need not exist).
#pragma once

#include <windows.h>

#include <commctrl.h>

HIMAGELIST FSystemImages(bool small);
// The icon of a name: a folder (open or closed) or a file of that name.
int FIconOf(const char* name, bool folder, bool open);
