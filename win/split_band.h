// LSplitBand: the band that follows the pointer while a splitter is
// dragged. It is drawn inverted over the window and its children, and the
// same drawing takes it away again, so that the panes are laid out once,
// when the drag ends, instead of at every move. Main thread only.
#pragma once

#include <windows.h>

class LSplitBand {
 public:
  // Shows the band at place, in window's client coordinates, and takes
  // away the one shown before.
  void show(HWND window, const RECT& place);
  // Takes the band away; nothing when none is shown.
  void hide();

 private:
  void invert();

  HWND window_ = nullptr;
  RECT place_ = {};
  bool shown_ = false;
};
