// Opens one page of the help (FHelpTarget) with the system's browser or
// help viewer; a missing or unopenable help is told to the user. Main thread
// only.
#pragma once

#include <windows.h>

#include "win/dialog.h"

// page: a name without extension ("index", "add", ...).
void FOpenHelpPage(HWND owner, const char* page);

// A dialog whose help button and F1 open its own page of the help.
class THelpedDialog : public LDialog {
 public:
  THelpedDialog(const char* templateName, const char* helpPage)
      : LDialog(templateName), helpPage_(helpPage) {}
  int onHelp() override {
    FOpenHelpPage(hwnd, helpPage_);
    return 0;
  }

 private:
  const char* helpPage_;
};
