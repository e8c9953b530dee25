#include "win/date_time_picker.h"

#include <commctrl.h>

namespace {
SYSTEMTIME systemTimeOf(const LDateTime& at) {
  SYSTEMTIME time = {};
  time.wYear = static_cast<WORD>(at.year);
  time.wMonth = static_cast<WORD>(at.month);
  time.wDay = static_cast<WORD>(at.day);
  time.wHour = static_cast<WORD>(at.hour);
  time.wMinute = static_cast<WORD>(at.minute);
  time.wSecond = static_cast<WORD>(at.second);
  return time;
}
}  // namespace

void LDatePicker::load() {
  SYSTEMTIME time = systemTimeOf(at_);
  SendMessageA(hwnd, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&time));
}

bool LDatePicker::save() {
  SYSTEMTIME time = {};
  if (SendMessageA(hwnd, DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&time)) != GDT_VALID)
    return true;
  at_.year = time.wYear;
  at_.month = time.wMonth;
  at_.day = time.wDay;
  return true;
}

void LTimePicker::load() {
  SYSTEMTIME time = systemTimeOf(at_);
  SendMessageA(hwnd, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&time));
  // Some implementations refuse GDT_NONE without a time to ignore.
  if (checked_ == 0)
    SendMessageA(hwnd, DTM_SETSYSTEMTIME, GDT_NONE, reinterpret_cast<LPARAM>(&time));
}

bool LTimePicker::save() {
  SYSTEMTIME time = {};
  LRESULT state = SendMessageA(hwnd, DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&time));
  checked_ = state == GDT_VALID ? 1 : 0;
  if (state != GDT_VALID) return true;
  at_.hour = time.wHour;
  at_.minute = time.wMinute;
  at_.second = time.wSecond;
  return true;
}
