// LToolbar: the toolbar control in its container. Buttons send their id to
// the parent as commands; tool tips and the hot button reach virtual
// operations.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <cstdint>

#include "lib/lstr.h"
#include "win/ctrl_container.h"

class LToolbar : public LCtrlContainer {
 public:
  void create(LWin* parentWin);
  // Adds the system's standard or view pictures; returns the index of the
  // first one.
  int addSystemPictures(UINT_PTR bitmapId);
  // id 0 is a gap.
  void addButton(int32_t id, int image);
  void enable(int32_t id, bool on);
  // The height the toolbar wants.
  int height();

  // The tip of a button; cut at 98 characters.
  virtual LStr tipText(int32_t) { return LStr(); }
  // The pointer moved onto a button (id) or off the buttons (0).
  virtual void onHotButton(int32_t) {}

  int onNotify(NMHDR* header) override;

 private:
  wchar_t wideTip_[100] = {};
  char tip_[100] = {};
};
