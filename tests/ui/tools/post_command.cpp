// Test tool: sends a command id to the program's main window, as a menu
// item would, for the commands that no menu, button or key reaches.
//
// Usage: post_command ID
#include <windows.h>

#include <cstdlib>

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  // The class by which copies of the program find each other.
  HWND main = FindWindowA("KST1414", nullptr);
  if (main == nullptr) return 1;
  return PostMessageA(main, WM_COMMAND, static_cast<WPARAM>(std::atoi(argv[1])), 0) ? 0 : 1;
}
