// LStatusBar: the status bar, a direct child of its window, with parts
// given in character units (-1 takes the rest, -2 has no width); and
// LProgBar, a progress bar that lives in a part of it.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <cstdint>

#include "lib/lobj.h"

class LStatusBar : public LObj {
 public:
  HWND hwnd = nullptr;

  void create(HWND parent);
  // widths ends with 0.
  void setParts(const int32_t* widths);
  void setText(int32_t part, const char* text);
  void setFont(HFONT font);
  int height();
  RECT partRect(int32_t part);
};

class LProgBar : public LObj {
 public:
  HWND hwnd = nullptr;

  ~LProgBar() override;
  void create(HWND parent, const RECT& place);
  void setPos(int32_t percent);
};
