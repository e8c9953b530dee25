// Test tool: prints the title of the window that the system holds to be in
// the foreground and exits 0; 1 when there is none. A virtual display with
// no window manager neither raises nor focuses a window that a program
// brings forward, but the system's foreground follows it.
//
// Usage: foreground_title
#include <windows.h>

#include <cstdio>

int main() {
  HWND front = GetForegroundWindow();
  if (front == nullptr) return 1;
  char title[1024] = {};
  GetWindowTextA(front, title, sizeof(title));
  std::puts(title);
  return 0;
}
