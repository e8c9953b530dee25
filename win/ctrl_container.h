// LCtrlContainer: a window around one child control of the system, so that
// the control's notifications reach virtual operations of the object. The
// container fills its parent's place for the control, passes its commands
// on to the parent and gives the focus to the control.
#pragma once

#include "win/lwin.h"

class LCtrlContainer : public LWin {
 public:
  HWND ctrl = nullptr;
  LWin* parent = nullptr;

  // Creates the container as a child of parent and the control of the
  // system class inside it.
  void createControl(LWin* parentWin, const char* controlClass, DWORD style, DWORD exStyle);
  void move(int x, int y, int width, int height);
  void setFont(HFONT font);

  int onSize(int width, int height) override;
  int onSetFocus() override;
};
