// TStatusLine: what the status bar's main part says. A report, such as the
// result of a command or the counts of the selected folder, is remembered;
// the help of a command under the pointer or of a highlighted menu item is
// shown over it for a while and never replaces it, so that when the help
// ends the report is back. Main thread only.
#pragma once

#include "lib/lstr.h"

class TStatusLine {
 public:
  // Remembers text (empty clears the part) and gives what to show.
  const char* report(const char* text);
  // The help of a command; null or empty ends the help. Gives what to show.
  const char* help(const char* text);

 private:
  LStr report_;
};
