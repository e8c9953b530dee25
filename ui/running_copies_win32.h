// The other running copies of the program: the question by WM_COPYDATA
// whether one of them has an archive open.
#pragma once

#include <windows.h>

#include "ui/main_view.h"

// The first other main window (class "KST1414") that answers that it has
// exactly fullPath open, or null. `self` is skipped.
HWND FAskRunning(const char* fullPath, HWND self);

// Forwarding from a window (self) or from start-up (no window yet).
class TRunningWindows : public TRunningCopies {
 public:
  explicit TRunningWindows(HWND self) : self_(self) {}
  bool bringForwardCopyWith(const char* fullPath) override;

 private:
  HWND self_;
};
