#include "win/ctrl.h"

#include <string>

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

LStr LCtrl::text() const {
  int length = GetWindowTextLengthA(hwnd);
  LStr out;
  if (length <= 0) return out;
  std::string buffer(length + 1, '\0');
  int got = GetWindowTextA(hwnd, buffer.data(), length + 1);
  out.assign(buffer.data(), got);
  return out;
}

void LCtrl::setText(const char* text) {
  if (!SetWindowTextA(hwnd, text)) FWinFail("SetWindowText()");
}
