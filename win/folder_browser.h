// The system's folder browser, opened modally over its owner.
#pragma once

#include <windows.h>

#include "lib/lstr.h"

// Starts in `folder` and puts the chosen folder there; false when the user
// cancelled or chose no folder of the file system.
bool FBrowseForFolder(HWND owner, const char* title, LStr& folder);
