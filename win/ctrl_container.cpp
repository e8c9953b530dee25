#include "win/ctrl_container.h"

namespace {
// One window class serves every container.
const char* gContainerClass = nullptr;
}  // namespace

void LCtrlContainer::createControl(LWin* parentWin, const char* controlClass, DWORD style,
                                   DWORD exStyle) {
  parent = parentWin;
  forwardTo = parentWin->hwnd;
  if (gContainerClass == nullptr) gContainerClass = FRegisterWinClass(nullptr);
  create(gContainerClass, "", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0, 0, 10, 10,
         parentWin->hwnd, nullptr);
  ctrl = CreateWindowExA(exStyle, controlClass, "", WS_CHILD | WS_VISIBLE | style, 0, 0, 10, 10,
                         hwnd, nullptr, GetModuleHandleA(nullptr), nullptr);
  if (ctrl == nullptr) FWinFail("CreateWindowEx()");
}

void LCtrlContainer::move(int x, int y, int width, int height) {
  MoveWindow(hwnd, x, y, width, height, TRUE);
}

void LCtrlContainer::setFont(HFONT font) {
  SendMessageA(ctrl, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
}

int LCtrlContainer::onSize(int width, int height) {
  MoveWindow(ctrl, 0, 0, width, height, TRUE);
  return 0;
}

int LCtrlContainer::onSetFocus() {
  SetFocus(ctrl);
  return 0;
}
