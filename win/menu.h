// LMenu: a menu bar or popup menu that the object owns unless it was
// attached to a window.
#pragma once

#include <windows.h>

#include <cstdint>

#include "lib/lobj.h"

class LMenu : public LObj {
 public:
  HMENU handle = nullptr;
  bool owned = true;

  explicit LMenu(bool bar);
  ~LMenu() override;
  LMenu(const LMenu&) = delete;
  LMenu& operator=(const LMenu&) = delete;

  void append(int32_t id, const char* text);
  void separator();
  void appendPopup(LMenu& popup, const char* title);
  void check(int32_t id, bool on);
  void enable(int32_t id, bool on);
  void removeAll();
  // Shows the menu at a screen point; the command goes to owner as usual.
  void track(HWND owner, int x, int y);
};
