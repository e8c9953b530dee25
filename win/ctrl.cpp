#include "win/ctrl.h"

#include "win/dialog.h"
#include "win/lwin.h"

LCtrl::LCtrl(LDialog& dialog, int controlId) : id(controlId), dialog_(dialog) {
  dialog.addCtrl(this);
}

void LCtrl::bind() {
  hwnd = GetDlgItem(dialog_.hwnd, id);
  if (hwnd == nullptr) FWinFail("GetDlgItem()");
}

void LCtrl::enable(bool on) { EnableWindow(hwnd, on ? TRUE : FALSE); }

void LCtrl::show(bool on) { ShowWindow(hwnd, on ? SW_SHOW : SW_HIDE); }
