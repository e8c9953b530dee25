// The desktop program's command line and the place of its settings file.
#pragma once

#include <cstdint>

#include "lib/larr.h"
#include "lib/lstr.h"

struct TStartArgs {
  LStrs args;            // plain arguments: archives to open or files to add
  int32_t openLast = 0;  // -ol: open the newest recent archive when none is named
  LStr archivePath;      // -af:path
  LStr settingsName;     // -cf:path; empty keeps the default name
};

// Fills `out` from the words of the command line after the program's own
// name: -af:path, -ol[:0|1] and
// -cf:path, the rest plain arguments. An option that no descriptor takes,
// or a plain word beginning with "-" or "/", is the error box 3000
// "オプションが正しくありません : %s" (it throws).
void FParseCommandLine(const char* commandLine, TStartArgs& out);
// The settings file: a name that is not absolute is placed in "OrvaSoft"
// below the per-user local application data folder; an absolute path stands
// as it is. "" when the system has no such folder.
LStr FResolveSettingsPath(const char* name);
// The settings file's name when the command line names none.
extern const char* const kSettingsName;
