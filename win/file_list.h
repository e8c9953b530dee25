// The system's lists of full paths: a file drop, the clipboard's file list,
// and the open-file dialog.
#pragma once

#include <windows.h>

#include <shellapi.h>

#include <cstdint>

#include "lib/larr.h"
#include "lib/lstr.h"

// Appends the paths of a drop or of the clipboard's file list (each up to
// 10,000 bytes; empty ones are left out).
void FReadFileList(HDROP list, LStrs& paths);

// An open-file dialog: what it starts with, and what the user chose.
struct LOpenFiles {
  const char* title = nullptr;
  const char* filter = nullptr;  // pairs of NUL-ended texts, then a NUL
  int32_t filterIdx = 0;         // in: the filter shown; out: the one chosen
  LStr folder;                   // initial folder
  LStr name;                     // initial name
  bool several = false;          // more than one file may be chosen
  LStrs chosen;                  // full paths
};

// Shows the dialog over owner; false when cancelled.
bool FChooseFilesToOpen(HWND owner, LOpenFiles& request);
