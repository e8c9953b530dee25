#include "ui/running_copies_win32.h"

#include <cstring>

#include "ui/main_win_win32.h"

HWND FAskRunning(const char* fullPath, HWND self) {
  HWND first = FindWindowExA(nullptr, nullptr, kMainClass, nullptr);
  for (HWND other = first; other != nullptr;) {
    if (other != self) {
      COPYDATASTRUCT data = {};
      data.dwData = 0;
      data.cbData = static_cast<DWORD>(std::strlen(fullPath) + 1);
      data.lpData = const_cast<char*>(fullPath);
      if (SendMessageA(other, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data)) != 0) return other;
    }
    other = FindWindowExA(nullptr, other, kMainClass, nullptr);
    if (other == first) break;
  }
  return nullptr;
}

bool TRunningWindows::bringForwardCopyWith(const char* fullPath) {
  HWND other = FAskRunning(fullPath, self_);
  if (other == nullptr) return false;
  SetForegroundWindow(other);
  return true;
}
